#include "shell/filldrag.h"

#include "core/workbook.h"
#include "editing/view.h"
#include "shell/application.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/pen.h"

#include <algorithm>

namespace vorn {

namespace {

void selectForFill(const RangeRef& range)
{
    Selection& selection = workbook->currentSheet->selection;
    selection.range = range;
    selection.activeColumn = std::min(selection.activeColumn, range.lastColumn);
    selection.activeRow = std::min(selection.activeRow, range.lastRow);
    selection.anchorColumn = selection.activeColumn;
    selection.anchorRow = selection.activeRow;
    selection.cornerColumn = range.lastColumn;
    selection.cornerRow = range.lastRow;
    application->markDirty(DirtySelection);
}

} // namespace

void beginFill()
{
    handleRect(application->pen.home);
    application->pen.dragMode = DragFill;
    application->pen.fillAnchor = workbook->currentSheet->selection.range;
}

void moveFill(Point at)
{
    const RangeRef& anchor = application->pen.fillAnchor;
    const GridView view = currentView();
    const int column = std::min(view.columnAtX(at.x), LastColumn);
    const int row = std::min(view.rowAtY(at.y), LastRow);
    RangeRef range = anchor;
    if (column > anchor.lastColumn) {
        range.lastColumn = static_cast<std::uint16_t>(column);
        selectForFill(range);
        if (!view.columns.isFrozen(column))
            scrollIntoView(column, view.rows.scrollFirst(), ShowCell);
    } else if (row > anchor.lastRow) {
        range.lastRow = static_cast<std::uint16_t>(row);
        selectForFill(range);
        if (!view.rows.isFrozen(row))
            scrollIntoView(view.columns.scrollFirst(), row, ShowCell);
    } else if (column == anchor.firstColumn && row == anchor.firstRow) {
        range.set(column, row, 1, 1);
        selectForFill(range);
    }
}

void finishFill()
{
    const RangeRef& range = workbook->currentSheet->selection.range;
    if (range.lastColumn > application->pen.fillAnchor.lastColumn)
        onCommand(CommandFillRight);
    else if (range.lastRow > application->pen.fillAnchor.lastRow)
        onCommand(CommandFillDown);
}

} // namespace vorn
