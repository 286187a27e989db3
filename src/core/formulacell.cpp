#include "core/formulacell.h"

#include "core/memory.h"
#include "core/pool.h"

#include <new>

namespace vorn {

std::int32_t placeholderFormula = -1;

FormulaCell* newFormulaCell(CellPosition position, std::int32_t formula)
{
    void* place = blockResizer(nullptr, sizeof(FormulaCell));
    if (place == nullptr) {
        raiseError(ErrorMemory);
        return nullptr;
    }
    auto* cell = new (place) FormulaCell;
    cell->row = position.row;
    cell->column = position.column;
    cell->sheet = position.sheet;
    cell->formula = formula;
    return cell;
}

void deleteFormulaCell(FormulaCell* cell)
{
    releaseValue(cell->result);
    if (cell->formula != placeholderFormula)
        formulaPool->release(cell->formula);
    blockResizer(cell, 0);
}

} // namespace vorn
