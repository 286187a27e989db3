#include "core/chain.h"

#include "core/pool.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/machine.h"

#include <algorithm>

namespace vorn {

CalcChain calcChain;

void CalcChain::reset()
{
    anchor_.next = nullptr;
    tail_ = &anchor_;
    placedEnd_ = &anchor_;
    needsSort_ = false;
    cycleFound_ = false;
}

void CalcChain::linkBehind(FormulaCell* place, FormulaCell* cell)
{
    cell->previous = place;
    cell->next = place->next;
    if (cell->next != nullptr)
        cell->next->previous = cell;
    place->next = cell;
}

void CalcChain::unlink(FormulaCell* cell)
{
    cell->previous->next = cell->next;
    if (cell->next != nullptr)
        cell->next->previous = cell->previous;
}

void CalcChain::append(FormulaCell* cell)
{
    linkBehind(tail_, cell);
    tail_ = cell;
    cell->flags = ChainMember;
    needsSort_ = true;
}

void CalcChain::remove(FormulaCell* cell)
{
    if ((cell->flags & ChainMember) == 0)
        return;
    if (tail_ == cell)
        tail_ = cell->previous;
    unlink(cell);
    cell->next = nullptr;
    cell->previous = nullptr;
    cell->flags = 0;
    needsSort_ = true;
}

// The cursor is always the record behind placedEnd_. A record comes under it twice: first its
// references are followed, which brings what it reads in front of it; when the cursor has worked
// its way through those, the record is placed.
void CalcChain::sort()
{
    if (!needsSort_)
        return;
    cycleFound_ = false;
    for (FormulaCell* cell = anchor_.next; cell != nullptr; cell = cell->next)
        cell->flags = ChainMember;
    placedEnd_ = &anchor_;
    while (FormulaCell* cursor = placedEnd_->next) {
        if ((cursor->flags & ChainScanned) == 0) {
            cursor->flags |= ChainScanned;
            scanReferences(*cursor);
            if (placedEnd_->next != cursor)
                continue;
        }
        cursor->flags |= ChainPlaced;
        placedEnd_ = cursor;
    }
    tail_ = placedEnd_;
    needsSort_ = false;
}

// Only these four instructions are looked at. What a formula reads through a name, or through a
// reference that a function builds, may be calculated after it and show one pass later.
void CalcChain::scanReferences(const FormulaCell& cell)
{
    const std::uint8_t* instruction = formulaPool->code(cell.formula);
    for (; *instruction != OpReturn; instruction = nextInstruction(instruction)) {
        const std::uint8_t* operand = instruction + 1;
        int firstSheet = cell.sheet;
        int lastSheet = cell.sheet;
        if (*instruction == OpPushSheetCell || *instruction == OpPushSheetRange) {
            firstSheet = operand[2];
            lastSheet = operand[3];
            operand += 4;
        }
        RangeRef stored;
        if (*instruction == OpPushCell || *instruction == OpPushSheetCell) {
            const auto corner = readOperand<CellRef>(operand);
            stored = {corner.row, corner.column, corner.row, corner.column};
        } else if (*instruction == OpPushRange || *instruction == OpPushSheetRange) {
            stored = readOperand<RangeRef>(operand);
        } else {
            continue;
        }
        const CellRef first = resolve(stored.first(), cell.column, cell.row);
        const CellRef last = resolve(stored.last(), cell.column, cell.row);
        scanRange(firstSheet, lastSheet, {first.row, first.column, last.row, last.column});
    }
}

void CalcChain::scanRange(int firstSheet, int lastSheet, const RangeRef& range)
{
    for (int index = firstSheet; index <= lastSheet; ++index) {
        const Sheet* sheet = workbook->sheetAt(index);
        if (sheet == nullptr || !sheet->hasRows())
            continue;
        const int lastRow = std::min<int>(range.lastRow, sheet->lastRow());
        for (int row = range.firstRow; row <= lastRow; ++row) {
            const Row* object = sheet->rowAt(row);
            if (object == nullptr)
                continue;
            const int first = std::max<int>(range.firstColumn, object->firstColumn);
            const int last = std::min<int>(range.lastColumn, object->cells.size() - 1);
            for (int column = first; column <= last; ++column) {
                const CellValue& value = object->cells[column].value;
                if (value.tag == TagFormula)
                    moveBefore(value.formula());
            }
        }
    }
}

// All placed records stand up to placedEnd_ and all others behind it, so there is no need to look
// for the record on the chain.
void CalcChain::moveBefore(FormulaCell* cell)
{
    if ((cell->flags & ChainMember) == 0 || (cell->flags & ChainPlaced) != 0)
        return;
    if ((cell->flags & ChainScanned) != 0)
        cycleFound_ = true;
    unlink(cell);
    linkBehind(placedEnd_, cell);
}

void recalculate()
{
    const MachineRegisters registers = machine;
    calcChain.sort();
    const ErrorState errors = errorState;
    clearError();
    for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = cell->next)
        evaluateFormulaCell(*cell);
    errorState = errors;
    machine = registers;
}

} // namespace vorn
