#include "shell/hittest.h"

#include "core/workbook.h"
#include "editing/protection.h"
#include "shell/application.h"
#include "shell/cursor.h"

#include <algorithm>
#include <cstdlib>

namespace vorn {

namespace {

// How far from an edge a pen still takes it.
constexpr int ColumnEdgeReach = 4;
constexpr int RowEdgeReach = 3;

// How far a finger may miss something at most.
constexpr int FingerReach = 12;

constexpr int NoEdge = -1;

// The share of a column or a row of the sheet, at each of its ends, in which a finger may mean what
// lies at the end; the rest is the middle.
int fingerReach(const GridAxis& axis, int index)
{
    return std::min(FingerReach, axis.pixels(index) / 3);
}

int edgeReach(const GridAxis& axis, int index, int penReach, Pointer pointer)
{
    return pointer == Pointer::Finger ? std::max(penReach, fingerReach(axis, index)) : penReach;
}

// Whose far edge is where `index` begins, for somebody who comes from behind: a hidden one, else
// the one before on the screen.
int edgeBefore(const GridAxis& axis, int index)
{
    const int least = axis.isFrozen() ? axis.frozenFirst() : 0;
    if (index > least && axis.isHidden(index - 1))
        return index - 1;
    if (index == axis.first())
        return NoEdge;
    return index == axis.scrollFirst() && axis.isFrozen() ? axis.frozenLast() : index - 1;
}

int edgeAt(const GridAxis& axis, int position, int penReach, Pointer pointer)
{
    const int index = axis.at(position);
    const int start = index > axis.last() ? axis.edgeOf(axis.last()) + axis.pixels(axis.last())
                                          : axis.edgeOf(index);
    const int fromStart = position - start;
    if (index > axis.last())
        return fromStart <= penReach ? axis.last() : NoEdge;
    const int toEnd = axis.pixels(index) - fromStart;
    const int reach = edgeReach(axis, index, penReach, pointer);
    if (toEnd <= reach && toEnd <= fromStart)
        return index;
    if (fromStart <= reach) {
        const int before = edgeBefore(axis, index);
        if (before != NoEdge)
            return before;
    }
    return toEnd <= reach ? index : NoEdge;
}

// A finger's reach goes from the corner of the selection, in the middle of the handle.
bool isOnHandle(int x, int y, const GridView& view, Pointer pointer)
{
    Rect handle;
    if (isProtected() || !handleRect(handle))
        return false;
    if (handle.contains(x, y) || pointer == Pointer::Pen)
        return handle.contains(x, y);
    const int across = fingerReach(view.columns, std::min(view.columnAtX(x), LastColumn));
    const int down = fingerReach(view.rows, std::min(view.rowAtY(y), LastRow));
    const int cornerX = (handle.left + handle.right) / 2;
    const int cornerY = (handle.top + handle.bottom) / 2;
    return std::abs(x - cornerX) <= across && std::abs(y - cornerY) <= down;
}

bool isOnEditor(int x, int y)
{
    const FormulaBar& bar = application->formulaBar;
    return (application->formulaBarVisible || bar.editing) && bar.rect.contains(x, y);
}

Place placeOnGrid(const GridLayout& areas, int x, int y, Pointer pointer)
{
    const GridView view(areas.cellArea, *workbook->currentSheet);
    Place place;
    place.column = std::min(view.columnAtX(x), LastColumn);
    place.row = std::min(view.rowAtY(y), LastRow);
    if (areas.cellArea.contains(x, y)) {
        place.kind = isOnHandle(x, y, view, pointer) ? PlaceKind::FillHandle : PlaceKind::Cell;
    } else if (areas.columnTitles.contains(x, y)) {
        const int edge = isProtected() ? NoEdge : edgeAt(view.columns, x, ColumnEdgeReach, pointer);
        place.kind = edge == NoEdge ? PlaceKind::ColumnTitle : PlaceKind::ColumnEdge;
        place.column = edge == NoEdge ? place.column : edge;
    } else if (areas.rowTitles.contains(x, y)) {
        const int edge = isProtected() ? NoEdge : edgeAt(view.rows, y, RowEdgeReach, pointer);
        place.kind = edge == NoEdge ? PlaceKind::RowTitle : PlaceKind::RowEdge;
        place.row = edge == NoEdge ? place.row : edge;
    } else if (areas.cornerBox.contains(x, y)) {
        place.kind = PlaceKind::Corner;
    }
    return place;
}

PointerShape shapeOfDrag()
{
    switch (application->pen.dragMode) {
    case DragColumnSize:
        return PointerShape::ColumnSize;
    case DragRowSize:
        return PointerShape::RowSize;
    case DragFill:
        return PointerShape::Fill;
    case DragSelect:
        return application->pen.selectionExtend == ExtendSelection ? PointerShape::Cross
                                                                   : PointerShape::Arrow;
    case DragSplitter:
        if (application->chrome.held == ChromePart::Splitter)
            return PointerShape::Splitter;
        break;
    case DragNone:
        break;
    }
    return PointerShape::Arrow;
}

} // namespace

Place placeAt(int x, int y, Pointer pointer)
{
    if (workbook == nullptr)
        return {};
    Place place;
    // The editor of a cell may reach over what stands around the grid.
    if (isOnEditor(x, y))
        place.kind = PlaceKind::Editor;
    else if (chromePartAt(x, y) != ChromePart::None)
        place.kind = PlaceKind::Chrome;
    else
        place = placeOnGrid(currentLayout(), x, y, pointer);
    return place;
}

PointerShape pointerShapeAt(int x, int y)
{
    if (workbook != nullptr && application->pen.dragMode != DragNone)
        return shapeOfDrag();
    switch (placeAt(x, y).kind) {
    case PlaceKind::Cell:
        return PointerShape::Cross;
    case PlaceKind::ColumnEdge:
        return PointerShape::ColumnSize;
    case PlaceKind::RowEdge:
        return PointerShape::RowSize;
    case PlaceKind::FillHandle:
        return PointerShape::Fill;
    case PlaceKind::Editor:
        return PointerShape::Text;
    case PlaceKind::Chrome:
        return chromePartAt(x, y) == ChromePart::Splitter ? PointerShape::Splitter
                                                          : PointerShape::Arrow;
    case PlaceKind::Nothing:
    case PlaceKind::Corner:
    case PlaceKind::ColumnTitle:
    case PlaceKind::RowTitle:
        break;
    }
    return PointerShape::Arrow;
}

} // namespace vorn
