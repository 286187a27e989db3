#include "editing/entry.h"

#include "core/input.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"
#include "formula/references.h"

namespace vorn {

bool storeCell(int column, int row, std::u16string_view text, int style)
{
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                static_cast<std::uint16_t>(workbook->currentSheet->index)};
    Cell cell;
    if (!parseTypedCell(cell, text, position, style))
        return false;
    ByteCodeWriter backward;
    emitSelectRange(backward);
    emitPresentCell(backward, column, row);
    emitAction(backward, ActionRecalculate);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitSetCell(forward, column, row, cell.style, cell.value);
    emitAction(forward, ActionRecalculate);
    addUndoStep(forward.finish(), backward.finish(),
                u"Typing in " + cellRefToText(column, row, RelativeForm));
    return errorState.code != ErrorMemory;
}

bool enterCell(std::u16string_view text)
{
    const Sheet& sheet = *workbook->currentSheet;
    const int column = sheet.selection.activeColumn;
    const int row = sheet.selection.activeRow;
    return storeCell(column, row, text, sheet.cellStyle(column, row));
}

} // namespace vorn
