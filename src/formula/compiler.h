// Formula text to byte code, in one pass of recursive descent over the tokens, without a tree.
// Parentheses and unary plus stay in the code as instructions that do nothing, so that the printer
// can give the user back what was typed.
//
// Errors: the sticky code; the first one is what the user sees. ErrorTooComplex for a formula
//         nested deeper than CompileDepthMax and for a jump that does not fit its operand.
#pragma once

#include "core/value.h"
#include "formula/bytecode.h"

#include <string_view>

namespace vorn {

// Levels of nested parentheses, calls and signs.
constexpr int CompileDepthMax = 400;

enum CompileMode { CompileFormula, CompileTask };

// Compiles one expression (or, as a task, a list of statements) into `writer`. A leading '=' is
// skipped. Returns -1, or, with the sticky error set, the offset behind the '=' of the token that
// stood at the failure.
int compileText(std::u16string_view text, ByteCodeWriter& writer, CellPosition base,
                CompileMode mode);

} // namespace vorn
