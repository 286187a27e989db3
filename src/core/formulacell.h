// The record of one formula, owned by the cell that holds it. It knows where the cell stands,
// because the cell does not tell, and everything that moves a cell must move this with it.
//
// 40 bytes on a 64-bit machine; it is in no file:
//   offset size meaning
//   0      12   result: the last value computed, never a formula; owns its text
//   12     6    row, column, sheet of the owning cell
//   18     1    flags of the calculation chain
//   20     4    FormulaPool index of the code; one reference is owned
//   24     8    next on the chain, null at the end
//   32     8    previous on the chain, null when not on it
#pragma once

#include "core/value.h"

#include <cstdint>

namespace vorn {

enum ChainFlag : std::uint8_t {
    ChainMember = 1,  // on the chain
    ChainScanned = 2, // its references have been followed
    ChainPlaced = 4,  // it and all that it reads stand in their final places
};

struct FormulaCell {
    CellValue result;
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t sheet = 0;
    std::uint8_t flags = 0;
    std::int32_t formula = -1;
    FormulaCell* next = nullptr;
    FormulaCell* previous = nullptr;

    CellPosition position() const { return {row, column, sheet}; }
};
static_assert(sizeof(FormulaCell) == 40);
static_assert(offsetof(FormulaCell, row) == 12 && offsetof(FormulaCell, formula) == 20);

// The formula that stands for all imported ones that could not be translated; -1 when there is
// none. Cells that hold it do not own it.
extern std::int32_t placeholderFormula;

// A new record, not on the chain, that takes over one reference to `formula`. Null, with
// ErrorMemory, if memory is short; the reference then stays with the caller.
FormulaCell* newFormulaCell(CellPosition position, std::int32_t formula);

// Releases the result and the formula of a record that is not on the chain, and frees it.
void deleteFormulaCell(FormulaCell* cell);

} // namespace vorn
