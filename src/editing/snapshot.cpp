// Code that puts back what is there now.

#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"

#include <utility>

namespace vorn {

void emitSelectRange(ByteCodeWriter& program, const RangeRef* range)
{
    const Sheet& sheet = *workbook->currentSheet;
    const Selection& selection = sheet.selection;
    int left = selection.range.firstColumn;
    int right = selection.range.lastColumn;
    int top = selection.range.firstRow;
    int bottom = selection.range.lastRow;
    if (range != nullptr) {
        left = range->firstColumn;
        right = range->lastColumn;
        top = range->firstRow;
        bottom = range->lastRow;
    } else {
        // A range may have been selected from any of its corners, which is the active cell.
        if (selection.activeColumn == right)
            std::swap(left, right);
        if (selection.activeRow == bottom)
            std::swap(top, bottom);
    }
    emitAction(program, ActionSelectSheet, {sheet.index});
    emitAction(program, ActionSelectRange, {left, right, top, bottom});
}

void emitSetCell(ByteCodeWriter& program, int column, int row, int style, const CellValue& value)
{
    emitInteger(program, column);
    emitInteger(program, row);
    emitInteger(program, static_cast<std::uint16_t>(style)); // -1 as 65,535
    program.emit(OpPushValue, value);
    emitAction(program, ActionSetCell);
}

namespace {

void emitCellCopy(ByteCodeWriter& program, int column, int row, const Cell& cell)
{
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                static_cast<std::uint16_t>(workbook->currentSheet->index)};
    Cell copy;
    if (cloneCell(cell, copy, position, KeepOffChain))
        emitSetCell(program, column, row, copy.style, copy.value);
    else
        program.abandon();
}

void emitRows(ByteCodeWriter& program, const Sheet& sheet, const RangeRef& range)
{
    for (int row = sheet.nextRow(range.firstRow - 1); row <= range.lastRow;
         row = sheet.nextRow(row)) {
        if (const Row* object = sheet.rowAt(row))
            emitAction(program, ActionSetRowAttributes,
                       {row, object->height, object->flags, object->style});
    }
}

// Columns beyond the table as well, since an edit may make records for them.
void emitColumns(ByteCodeWriter& program, const Sheet& sheet, const RangeRef& range)
{
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
        const ColumnAttr record = sheet.columns.attributes(column);
        emitAction(program, ActionSetColumnAttributes,
                   {column, record.width, record.style, record.flags});
    }
}

} // namespace

void emitPresentCell(ByteCodeWriter& program, int column, int row)
{
    emitCellCopy(program, column, row, workbook->currentSheet->cellCopy(column, row));
}

void emitSnapshot(ByteCodeWriter& program, RowFitting fitting)
{
    const Sheet& sheet = *workbook->currentSheet;
    const RangeRef& range = sheet.selection.range;
    emitSelectRange(program);
    emitAction(program, ActionEmptyCells);
    if (fitting == LeaveRows)
        emitRows(program, sheet, range);
    if (range.isWholeColumns())
        emitColumns(program, sheet, range);
    CellIterator iterator;
    iterator.start(sheet, range);
    while (const Cell* cell = iterator.nextPresentCell())
        emitCellCopy(program, iterator.column(), iterator.row(), *cell);
    if (fitting == LeaveRows)
        return;
    emitAction(program, ActionAutoFitRows);
    if (range.isWholeColumns())
        emitAction(program, ActionSetDefaultRow,
                   {sheet.defaultRowHeight, sheet.rowFlags & DefaultHeightCustomFlag});
    emitRows(program, sheet, range);
}

} // namespace vorn
