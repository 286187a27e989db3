#include "shell/pen.h"

#include "core/workbook.h"
#include "editing/rowcolumn.h"
#include "editing/view.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/entry.h"
#include "shell/filldrag.h"
#include "shell/pointmode.h"
#include "shell/resizedrag.h"
#include "shell/scrolling.h"
#include "shell/tasktap.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr unsigned ExtendAll = ExtendSelection | SelectRows | SelectColumns;

// What a finger moves while it only taps.
constexpr int FingerTremble = 3;

// No window is wider; a y beyond it is one above the window that lost its sign.
constexpr int PositionMax = 30000;

// As far as it takes to lie outside of any window.
constexpr int FarAway = 2 * PositionMax;

PenState& pen()
{
    return application->pen;
}

Point withinReach(int x, int y)
{
    if (y > PositionMax)
        y = currentLayout().gridArea.top - 1;
    return {std::clamp(x, -PositionMax, PositionMax), std::max(y, -PositionMax)};
}

// Does what the drag is about still stand?
bool dragStands()
{
    if (pen().dragMode == DragNone || pen().dragMode == DragSplitter)
        return true;
    return pen().sheet == workbook->currentSheet && pen().pointing == application->pointMode;
}

void endDrag()
{
    pen().penDown = false;
    pen().dragMode = DragNone;
}

// --- Selecting

// Does what is selected stay in view however the rest is scrolled?
bool isInFrozenPart(const GridAxis& axis, int corner, int anchor, unsigned flags)
{
    return axis.isFrozen(corner) && ((flags & ExtendSelection) == 0 || axis.isFrozen(anchor));
}

// Whole columns are selected without scrolling down to anywhere, whole rows without scrolling to
// the right, and what is frozen without scrolling at all.
void selectTo(int column, int row, unsigned flags)
{
    const Sheet& sheet = *workbook->currentSheet;
    const Selection& selection = application->activeSelection();
    const GridView view = currentView();
    const int left = sheet.leftColumn;
    const int top = sheet.topRow;
    const bool onlyRows = (flags & SelectRows) != 0;
    const bool onlyColumns = (flags & SelectColumns) != 0;
    moveTo(onlyRows ? view.columns.scrollFirst() : column,
           onlyColumns ? view.rows.scrollFirst() : row, flags, ShowCell);
    const bool keepsLeft =
        onlyRows || isInFrozenPart(view.columns, column, selection.anchorColumn, flags);
    const bool keepsTop = onlyColumns || isInFrozenPart(view.rows, row, selection.anchorRow, flags);
    setViewStart(keepsLeft ? left : sheet.leftColumn, keepsTop ? top : sheet.topRow);
}

// `whole` is SelectCell, SelectRows or SelectColumns.
void beginSelecting(const Place& place, unsigned whole, KeyModifiers modifiers)
{
    const GridView view = currentView();
    Rect& home = pen().home;
    home = {-FarAway, -FarAway, FarAway, FarAway};
    if (whole != SelectRows) {
        home.left = view.xOfColumn(place.column);
        home.right = home.left + view.columns.pixels(place.column);
    }
    if (whole != SelectColumns) {
        home.top = view.yOfRow(place.row);
        home.bottom = home.top + view.rows.pixels(place.row);
    }
    pen().dragMode = DragSelect;
    pen().selectionExtend = ExtendSelection | whole;
    if (!modifiers.shift)
        return selectTo(place.column, place.row, whole);
    Selection& selection = application->activeSelection();
    selection.anchorColumn = selection.activeColumn;
    selection.anchorRow = selection.activeRow;
    selectTo(place.column, place.row, pen().selectionExtend);
}

void selectAll()
{
    pen().dragMode = DragSelect;
    pen().selectionExtend = ExtendAll;
    selectWholeSheet();
}

void moveSelecting(Point at)
{
    if (pen().selectionExtend == ExtendAll)
        return;
    const GridView view = currentView();
    selectTo(std::min(view.columnAtX(at.x), LastColumn), std::min(view.rowAtY(at.y), LastRow),
             pen().selectionExtend);
}

void finishSelecting()
{
    const Selection& selection = workbook->currentSheet->selection;
    if (pen().selectionExtend != ExtendSelection || application->pointMode ||
        selection.range.isMultiCell())
        return;
    runTaskForTap(selection.activeColumn, selection.activeRow);
}

// --- The pen goes down

void beginDrag(const Place& place, Point at, KeyModifiers modifiers)
{
    pen().sheet = workbook->currentSheet;
    pen().pointing = application->pointMode;
    pen().hasLeftHome = false;
    pen().home = {};
    switch (place.kind) {
    case PlaceKind::Corner:
        selectAll();
        break;
    case PlaceKind::ColumnTitle:
        beginSelecting(place, SelectColumns, modifiers);
        break;
    case PlaceKind::RowTitle:
        beginSelecting(place, SelectRows, modifiers);
        break;
    case PlaceKind::Cell:
        beginSelecting(place, SelectCell, modifiers);
        break;
    case PlaceKind::ColumnEdge:
    case PlaceKind::RowEdge:
        beginResize(place, at);
        break;
    case PlaceKind::FillHandle:
        beginFill();
        break;
    case PlaceKind::Nothing:
    case PlaceKind::Chrome:
    case PlaceKind::Editor:
        break;
    }
}

// A box about a text that cannot be committed may have swallowed the pen's going up.
void pressGrid(Point at, KeyModifiers modifiers)
{
    if (!yieldToGrid() || !pen().penDown)
        return endDrag();
    const Place place = placeAt(at.x, at.y, pen().pointer);
    pen().besideTarget = place != placeAt(at.x, at.y);
    beginDrag(place, at, modifiers);
    if (pen().besideTarget)
        pen().home = {at.x - FingerTremble, at.y - FingerTremble, at.x + FingerTremble + 1,
                      at.y + FingerTremble + 1};
}

void pressChrome(Point at)
{
    chromePress(at.x, at.y);
    if (workbook == nullptr || application->chrome.held == ChromePart::None)
        return endDrag();
    pen().dragMode = DragSplitter;
    if (!pen().penDown)
        penLost();
}

void press(Point at, KeyModifiers modifiers)
{
    switch (placeAt(at.x, at.y, pen().pointer).kind) {
    case PlaceKind::Nothing:
        break;
    case PlaceKind::Chrome:
        pressChrome(at);
        break;
    case PlaceKind::Editor:
        if (!tapEditor())
            endDrag();
        break;
    default:
        pressGrid(at, modifiers);
        break;
    }
}

void drag(Point at)
{
    if (pen().dragMode == DragSplitter)
        return chromeDrag(at.x, at.y);
    if (!pen().hasLeftHome && pen().home.contains(at.x, at.y))
        return;
    pen().hasLeftHome = true;
    if (pen().dragMode == DragSelect)
        moveSelecting(at);
    else if (pen().dragMode == DragFill)
        moveFill(at);
    else if (pen().dragMode != DragNone)
        moveResize(pen().dragMode, at);
}

void finish(DragMode mode, Point at)
{
    switch (mode) {
    case DragNone:
        break;
    case DragSelect:
        finishSelecting();
        break;
    case DragColumnSize:
    case DragRowSize:
        finishResize(mode);
        break;
    case DragFill:
        finishFill();
        break;
    case DragSplitter:
        chromeRelease(at.x, at.y);
        break;
    }
}

// These answer whether the two taps are more than twice one.
bool doubleTapCell(const Place& place)
{
    if (application->pointMode)
        return false;
    if (runTaskForTap(place.column, place.row))
        return true;
    if (application->formulaBarVisible)
        return false;
    editActiveCell();
    return true;
}

bool doubleTapGrid(const Place& place)
{
    // The first tap was refused: the text has to be mended before anything else.
    if (editorHasFocus())
        return true;
    switch (place.kind) {
    case PlaceKind::ColumnEdge:
        fitColumns(place.column, SizeOne);
        return true;
    case PlaceKind::RowEdge:
        fitRows(place.row, SizeOne);
        return true;
    case PlaceKind::FillHandle:
    case PlaceKind::Cell:
        return doubleTapCell(place);
    default:
        return false;
    }
}

} // namespace

void penDown(int x, int y, KeyModifiers modifiers, Pointer pointer)
{
    if (workbook == nullptr)
        return;
    penLost();
    const Point at = withinReach(x, y);
    pen().penDown = true;
    pen().pointer = pointer;
    pen().besideTarget = false;
    pen().down = at;
    pen().last = {x, y};
    press(at, modifiers);
    refreshCommandState();
}

void penMove(int x, int y)
{
    if (workbook == nullptr || !pen().penDown)
        return;
    pen().last = {x, y};
    if (dragStands())
        drag(withinReach(x, y));
    else
        endDrag();
}

void penUp(int x, int y)
{
    if (workbook == nullptr || !pen().penDown)
        return;
    if (pen().last != Point{x, y})
        penMove(x, y);
    const bool onlyTapped = pen().besideTarget && !pen().hasLeftHome;
    if (onlyTapped && dragStands())
        beginDrag(placeAt(pen().down.x, pen().down.y), pen().down, {});
    const DragMode mode = dragStands() ? pen().dragMode : DragNone;
    // What follows may open boxes and dialogs, and the pen is up meanwhile.
    endDrag();
    finish(mode, withinReach(x, y));
    refreshCommandState();
}

void penTimer()
{
    penMove(application->pen.last.x, application->pen.last.y);
}

void penLost()
{
    if (pen().dragMode == DragSplitter)
        application->chrome.held = ChromePart::None;
    endDrag();
}

bool doubleTap(int x, int y)
{
    if (workbook == nullptr)
        return true;
    penLost();
    const Place place = placeAt(x, y, pen().pointer);
    const bool isChrome = place.kind == PlaceKind::Chrome;
    if (isChrome)
        chromeDoubleTap(x, y);
    const bool used = isChrome || doubleTapGrid(place);
    refreshCommandState();
    return used;
}

} // namespace vorn
