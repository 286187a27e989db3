// Byte code back to formula text. No text of a formula is kept: it is rebuilt from the code
// whenever somebody looks, in the spelling of the function table and with the separators of the
// moment.
//
// Any code can be printed: what makes no sense in a formula comes out as "!!Err".
//
// Errors: ErrorTooComplex, sticky, with an empty text, for a formula longer than PrintedTextMax or
//         nested deeper than one that can be typed.
#pragma once

#include "core/value.h"

#include <cstdint>
#include <string>

namespace vorn {

// Characters of a printed formula, its '=' among them.
constexpr int PrintedTextMax = 999;

// The formula of a cell, with its leading '='.
std::u16string printFormulaCell(const FormulaCell& cell);

// Any code, with a leading '='; relative references are taken from `base`.
std::u16string printCode(const std::uint8_t* code, CellPosition base);

} // namespace vorn
