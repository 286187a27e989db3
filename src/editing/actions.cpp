#include "editing/actions.h"

#include "core/chain.h"
#include "core/workbook.h"
#include "editing/clear.h"
#include "editing/view.h"
#include "formula/machine.h"

#include <algorithm>
#include <cstdint>

namespace vorn {

void emitInteger(ByteCodeWriter& program, int number)
{
    if (number >= 0 && number <= UINT16_MAX)
        program.emit(OpPushInt16, static_cast<std::uint16_t>(number));
    else
        program.emit(OpPushInt32, number);
}

void emitAction(ByteCodeWriter& program, ActionRow action, std::initializer_list<int> operands)
{
    for (const int operand : operands)
        emitInteger(program, operand);
    program.emitCall(action, FunctionTable[action].minArguments);
}

namespace {

Sheet& currentSheet()
{
    return *workbook->currentSheet;
}

bool popFlag()
{
    return popInteger() != 0;
}

std::uint16_t popWord()
{
    return static_cast<std::uint16_t>(popInteger());
}

} // namespace

// --- Cells

void callActionSetCell()
{
    Cell cell;
    cell.value = popRaw();
    cell.style = static_cast<std::int16_t>(popWord()); // no style, -1, comes as 65,535
    const std::uint16_t row = popWord();
    const std::uint16_t column = popWord();
    if (cell.value.tag == TagFormula) {
        FormulaCell& formula = *cell.value.formula();
        formula.row = row;
        formula.column = column;
        formula.sheet = static_cast<std::uint16_t>(currentSheet().index);
    }
    currentSheet().setCell(column, row, cell);
    if (errorState.code == ErrorMemory)
        releaseValue(cell.value);
}

void callActionEmptyCells()
{
    Sheet& sheet = currentSheet();
    const RangeRef range = sheet.selection.range;
    CellIterator iterator;
    iterator.start(sheet, range);
    while (iterator.nextPresentCell() != nullptr)
        sheet.setCell(iterator.column(), iterator.row(), Cell{});
    if (!range.isWholeRows())
        return;
    // A row that an edit made keeps its object for good, so that becomes one that nobody sees.
    for (int row = sheet.nextRow(range.firstRow - 1); row <= range.lastRow;
         row = sheet.nextRow(row)) {
        sheet.setRowHeight(row, sheet.defaultRowHeight, false);
        sheet.setRowHidden(row, false);
        sheet.setRowStyle(row, 0);
    }
}

void callActionClear()
{
    Sheet& sheet = currentSheet();
    switch (popInteger()) {
    case ClearAll:
        return sheet.clearAll(sheet.selection.range);
    case ClearContents:
        return sheet.clearContents(sheet.selection.range);
    case ClearFormats:
        return sheet.clearFormats(sheet.selection.range);
    default:
        return;
    }
}

void callActionRecalculate()
{
    recalculate();
}

// --- Sheet and selection

void callActionSelectSheet()
{
    Sheet* sheet = workbook->sheetAt(popInteger());
    if (sheet == nullptr || sheet == workbook->currentSheet)
        return;
    workbook->setCurrentSheet(sheet);
    machine.base.sheet = static_cast<std::uint16_t>(sheet->index);
    tellSheetChanged();
}

namespace {

// Does the active cell lie where no order of the corners can put it, as it may in whole rows and
// columns?
bool activeCellIsInside(const Selection& selection)
{
    const RangeRef& range = selection.range;
    return (selection.activeRow != range.firstRow && selection.activeRow != range.lastRow) ||
           (selection.activeColumn != range.firstColumn &&
            selection.activeColumn != range.lastColumn);
}

} // namespace

void callActionSelectRange()
{
    CellRef first;
    CellRef second;
    second.row = popWord();
    first.row = popWord();
    second.column = popWord();
    first.column = popWord();
    Selection& selection = currentSheet().selection;
    // What is selected already stays as it is, or each edit of a column would move the view.
    if (selection.range == sortedRange(first, second) && activeCellIsInside(selection))
        return;
    const Selection former = selection;
    selection.select(first, second);
    if (selection.range != former.range || selection.activeRow != former.activeRow ||
        selection.activeColumn != former.activeColumn)
        tellActiveCellMoved();
}

// --- Rows

namespace {

// Showing a row that nothing hides makes no object for it.
void hideRow(Sheet& sheet, int row, bool hidden)
{
    if (hidden != sheet.rowHidden(row))
        sheet.setRowHidden(row, hidden);
}

} // namespace

void callActionSetRow()
{
    const bool hidden = popFlag();
    const bool custom = popFlag();
    const int height = popInteger();
    const int row = popInteger();
    // The row gets an object whatever it is to look like, so that the same comes of it whether it
    // had one or not.
    currentSheet().setRowHidden(row, hidden);
    currentSheet().setRowHeight(row, height, custom);
}

namespace {

// Is nothing to be seen of a row but its height? A save may have left marks of its own in the
// flags.
bool isUntouched(const Row* row)
{
    return row != nullptr && (row->flags & (RowHiddenFlag | RowCustomHeightFlag)) == 0 &&
           row->style == 0 && previousPresent(*row, ColumnCount) < 0;
}

} // namespace

void callActionSetDefaultRow()
{
    Sheet& sheet = currentSheet();
    const bool custom = popFlag();
    sheet.defaultRowHeight = popWord();
    sheet.rowFlags = static_cast<std::uint16_t>((sheet.rowFlags & ~DefaultHeightCustomFlag) |
                                                (custom ? DefaultHeightCustomFlag : 0));
    // A row whose edit was undone has its object still, and follows like one without.
    for (int row = sheet.nextRow(-1); row < RowCount; row = sheet.nextRow(row)) {
        if (isUntouched(sheet.rowAt(row)))
            sheet.setRowHeight(row, sheet.defaultRowHeight, false);
    }
}

void callActionHideRow()
{
    const bool hidden = popFlag();
    hideRow(currentSheet(), popInteger(), hidden);
}

void callActionSetRowAttributes()
{
    const std::uint16_t style = popWord();
    const std::uint16_t flags = popWord();
    const std::uint16_t height = popWord();
    const int row = popInteger();
    if (currentSheet().rowAt(row) == nullptr)
        return;
    if (Row* object = currentSheet().ensureRow(row)) {
        object->height = height;
        object->flags = flags;
        object->style = style;
    }
}

// --- Columns

void callActionSetColumnWidth()
{
    const int width = popInteger();
    const int column = popInteger();
    currentSheet().columns.setColumnWidth(column, column, width);
}

void callActionHideColumn()
{
    const bool hidden = popFlag();
    const int column = popInteger();
    ColumnTable& columns = currentSheet().columns;
    if (hidden != columns.columnHidden(column))
        columns.setColumnHidden(column, column, hidden);
}

void callActionSetColumnAttributes()
{
    ColumnAttr record;
    record.flags = popWord();
    record.style = popWord();
    record.width = popInteger();
    const int column = popInteger();
    ColumnTable& columns = currentSheet().columns;
    // The table grows for what is to be seen; how long it is tells how far rows are formatted.
    if (record != columns.attributes(column))
        columns.setColumnAttr(column, column, record);
}

} // namespace vorn
