// Runs byte code that a test writes instruction by instruction, as the formula of a cell.
#pragma once

#include "core/value.h"
#include "formula/bytecode.h"

#include <string>

namespace vorn {

// Closes the code, runs it as a formula that stands at `position` and answers its result in words
// (support/cells.h), or "kept" if the run left the old result standing. Whatever the code did, the
// machine must be as it was before and the code must own its texts once; a run that leaves it
// otherwise fails the test.
std::string outcome(ByteCodeWriter& code, CellPosition position = {});

// The same for code that is written by a function.
std::string outcome(void (*write)(ByteCodeWriter&), CellPosition position = {});

// The bytes of the result beside the words, for those that look at them.
CellValue outcomeValue(void (*write)(ByteCodeWriter&), CellPosition position = {});

// Emits an instruction that pushes a value of any kind. The code takes over what the value owns.
void emitValue(ByteCodeWriter& code, const CellValue& value);

// Enters the text and emits what pushes it.
void emitText(ByteCodeWriter& code, std::u16string_view text);

} // namespace vorn
