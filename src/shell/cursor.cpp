#include "shell/cursor.h"

#include "core/workbook.h"
#include "editing/protection.h"
#include "shell/application.h"
#include "shell/scrolling.h"

#include <algorithm>

namespace vorn {

namespace {

struct CellPlace {
    int column;
    int row;
};

Sheet& sheet()
{
    return *workbook->currentSheet;
}

bool isUnlocked(int column, int row)
{
    return workbook->styles[sheet().cellStyle(column, row)].get(StyleLocked) == 0;
}

// Are there columns whose cells are unlocked where no row and no cell says otherwise?
bool anyUnlockedColumn()
{
    for (int column = 0; column <= LastColumn; ++column) {
        const bool locked =
            workbook->styles[sheet().columns.columnStyle(column)].get(StyleLocked) != 0;
        if (!locked && !sheet().columns.columnHidden(column))
            return true;
    }
    return false;
}

bool findUnlockedInRow(CellPlace& place, int fromColumn, int direction)
{
    if (sheet().rowHidden(place.row))
        return false;
    for (int column = fromColumn; column >= 0 && column <= LastColumn; column += direction) {
        if (!sheet().columns.columnHidden(column) && isUnlocked(column, place.row)) {
            place.column = column;
            return true;
        }
    }
    return false;
}

// The next unlocked cell in reading order that can be seen, or the one before; `from` if there is
// none. A row without an object is worth a look only if whole columns are unlocked.
CellPlace nextUnlockedCell(CellPlace from, int direction)
{
    const bool everyRow = anyUnlockedColumn();
    CellPlace place = from;
    int column = from.column + direction;
    while (place.row >= 0 && place.row <= LastRow) {
        if (findUnlockedInRow(place, column, direction))
            return place;
        column = direction > 0 ? 0 : LastColumn;
        if (everyRow)
            place.row += direction;
        else
            place.row = direction > 0 ? sheet().nextRow(place.row) : sheet().previousRow(place.row);
    }
    return from;
}

CellPlace tabTarget(CellPlace from, bool backward)
{
    const int direction = backward ? -1 : 1;
    if (isProtected())
        return nextUnlockedCell(from, direction);
    return {currentView().columns.step(from.column, direction), from.row};
}

// One less than a view: what was last on the one page is first on the next.
int pageLength(const GridAxis& axis)
{
    return std::max(1, axis.countFrom(axis.scrollFirst()) - 1);
}

// A page on, past hidden ones; back again where the rest of the sheet is hidden.
int pageTarget(const GridAxis& axis, int from, int direction)
{
    const int target = std::clamp(from + direction * pageLength(axis), 0, axis.last());
    if (!axis.isHidden(target))
        return target;
    const int onward = axis.step(target, direction);
    return onward != target ? onward : axis.step(target, -direction);
}

CellPlace endOfSheet()
{
    const int last = sheet().lastOccupiedRow(-1);
    return last < 0 ? CellPlace{0, 0} : CellPlace{last >> 16, last & 0xffff};
}

CellPlace targetOf(Key key, KeyModifiers modifiers, CellPlace from)
{
    const GridView view = currentView();
    const bool ctrl = modifiers.ctrl;
    const auto [column, row] = from;
    switch (key) {
    case KeyPageUp:
    case KeyPageDown: {
        const int direction = key == KeyPageUp ? -1 : 1;
        if (modifiers.alt)
            return {pageTarget(view.columns, column, direction), row};
        return {column, pageTarget(view.rows, row, direction)};
    }
    case KeyHome:
        return {0, ctrl ? 0 : row};
    case KeyEnd:
        return ctrl ? endOfSheet() : CellPlace{sheet().lastOccupiedColumn(row), row};
    case KeyLeft:
        return {ctrl ? sheet().edgeLeft(column, row) : view.columns.step(column, -1), row};
    case KeyRight:
        return {ctrl ? sheet().edgeRight(column, row) : view.columns.step(column, 1), row};
    case KeyUp:
        return {column, ctrl ? sheet().edgeUp(column, row) : view.rows.step(row, -1)};
    default: // KeyDown
        return {column, ctrl ? sheet().edgeDown(column, row) : view.rows.step(row, 1)};
    }
}

// Shift moves the corner of a selection, and of whole rows or columns along one side only.
CellPlace startOf(const Selection& selection, bool extend)
{
    const bool keepsColumn = !extend || selection.range.isWholeRows();
    const bool keepsRow = !extend || selection.range.isWholeColumns();
    return {keepsColumn ? selection.activeColumn : selection.cornerColumn,
            keepsRow ? selection.activeRow : selection.cornerRow};
}

unsigned extendFlagsOf(const Selection& selection, bool extend)
{
    if (!extend)
        return SelectCell;
    return ExtendSelection | (selection.range.isWholeRows() ? SelectRows : 0U) |
           (selection.range.isWholeColumns() ? SelectColumns : 0U);
}

} // namespace

GridLayout currentLayout()
{
    LayoutRequest request;
    request.client = application->clientArea;
    request.tabDivider = application->tabDivider;
    request.formulaBar = application->formulaBarVisible;
    request.fullScreen = application->fullScreen;
    return layout(request, sheet());
}

GridView currentView()
{
    return {currentLayout().cellArea, sheet()};
}

void moveTo(int column, int row, unsigned extendFlags, ScrollMargin margin)
{
    Selection& selection = application->activeSelection();
    const CellRef cell = {static_cast<std::uint16_t>(std::clamp(row, 0, LastRow)),
                          static_cast<std::uint16_t>(std::clamp(column, 0, LastColumn))};
    if ((extendFlags & ExtendSelection) == 0) {
        if ((extendFlags & SelectRows) == 0)
            selection.activeColumn = cell.column;
        if ((extendFlags & SelectColumns) == 0)
            selection.activeRow = cell.row;
        selection.anchorColumn = selection.activeColumn;
        selection.anchorRow = selection.activeRow;
    }
    selection.cornerColumn = cell.column;
    selection.cornerRow = cell.row;
    selection.range = sortedRange({selection.anchorRow, selection.anchorColumn}, cell);
    if ((extendFlags & SelectRows) != 0) {
        selection.range.firstColumn = 0;
        selection.range.lastColumn = LastColumn;
    }
    if ((extendFlags & SelectColumns) != 0) {
        selection.range.firstRow = 0;
        selection.range.lastRow = LastRow;
    }
    application->markDirty(DirtySelection);
    scrollIntoView(cell.column, cell.row, margin);
}

void scrollIntoView(int column, int row, ScrollMargin margin)
{
    const GridView view = currentView();
    setViewStart(view.columns.scrolledTo(column, margin), view.rows.scrolledTo(row, margin));
}

bool handleKey(Key key, KeyModifiers modifiers)
{
    const Selection& selection = application->activeSelection();
    switch (key) {
    case KeyTab: {
        const CellPlace target = tabTarget(startOf(selection, false), modifiers.shift);
        moveTo(target.column, target.row, SelectCell, ShowCell);
        return true;
    }
    case KeyPageUp:
    case KeyPageDown:
    case KeyHome:
    case KeyEnd:
    case KeyLeft:
    case KeyRight:
    case KeyUp:
    case KeyDown: {
        const CellPlace target = targetOf(key, modifiers, startOf(selection, modifiers.shift));
        const bool onward = key == KeyRight || key == KeyDown;
        moveTo(target.column, target.row, extendFlagsOf(selection, modifiers.shift),
               onward ? ShowOneMore : ShowCell);
        return true;
    }
    default:
        return false;
    }
}

} // namespace vorn
