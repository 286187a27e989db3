#include "core/formulacell.h"

#include "core/chain.h"
#include "core/pool.h"
#include "core/sheet.h"

#include <new>

namespace vorn {

FormulaTable formulaTable;
std::int32_t placeholderFormula = -1;

// The links grow before the records, so that a record always has one.
bool FormulaTable::grow()
{
    const auto wanted = static_cast<std::int32_t>(used_ / ChunkRecords + 1) *
                        static_cast<std::int32_t>(ChunkRecords);
    if (links_.size() < wanted && !links_.resize(wanted))
        return false;
    if (!chunks_.append(nullptr))
        return false;
    void* place = blockResizer(nullptr, ChunkRecords * sizeof(FormulaCell));
    if (place == nullptr) {
        chunks_.resize(chunks_.size() - 1);
        raiseError(ErrorMemory);
        return false;
    }
    chunks_[chunks_.size() - 1] = static_cast<FormulaCell*>(place);
    return true;
}

FormulaCell* FormulaTable::add()
{
    FormulaHandle handle = firstFree_;
    if (handle != NoFormula) {
        firstFree_ = link(handle).next;
    } else {
        if (used_ / ChunkRecords >= static_cast<FormulaHandle>(chunks_.size()) && !grow())
            return nullptr;
        handle = used_++;
    }
    link(handle) = {};
    auto* cell = new (at(handle)) FormulaCell;
    cell->handle = handle;
    return cell;
}

void FormulaTable::remove(FormulaCell* cell)
{
    link(cell->handle) = {firstFree_, NoFormula, 0, 0};
    firstFree_ = cell->handle;
}

void FormulaTable::clear()
{
    for (FormulaCell* chunk : chunks_)
        blockResizer(chunk, 0);
    chunks_.clear();
    links_.clear();
    firstFree_ = NoFormula;
    used_ = 1;
}

FormulaCell* newFormulaCell(CellPosition position, std::int32_t formula)
{
    FormulaCell* cell = formulaTable.add();
    if (cell == nullptr)
        return nullptr;
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
    formulaTable.remove(cell);
}

bool cloneCell(const Cell& from, Cell& to, CellPosition position, ChainEntry entry)
{
    to.style = from.style;
    if (from.value.tag != TagFormula) {
        copyValue(from.value, to.value);
        return true;
    }
    const FormulaCell& original = *from.value.formula();
    FormulaCell* clone = newFormulaCell(position, original.formula);
    if (clone == nullptr) {
        to = Cell{};
        return false;
    }
    if (clone->formula != placeholderFormula)
        formulaPool->addRef(clone->formula);
    copyValue(original.result, clone->result);
    to.value = CellValue::makeFormula(clone);
    if (entry == JoinChain)
        calcChain.append(clone);
    return true;
}

} // namespace vorn
