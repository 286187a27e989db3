#include "shell/selectionpaint.h"

#include "core/workbook.h"
#include "shell/application.h"
#include "shell/cursor.h"
#include "shell/pen.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr int FrameOutside = 2;   // of the range's edge
constexpr int FrameThickness = 3; // as it is seen
constexpr int InsideMargin = 4;   // from the frame's outer side
constexpr int ActiveMargin = 2;
constexpr int EditedOutside = 1;
constexpr int EditedThickness = 2;
constexpr int HandleBefore = 2; // the corner
constexpr int HandleBehind = 3;

// Is it scrolled away under the frozen ones?
bool isScrolledUnder(const GridAxis& axis, int index)
{
    return axis.isFrozen() && index > axis.frozenLast() && axis.isScrolledAway(index);
}

// Finds what a range's frame is cut to. A side that is scrolled away under the frozen ones is put
// beyond it, though all before that side may be in view.
void placeSpan(const GridAxis& axis, int first, int last, int& to, int& areaFrom, int& areaTo)
{
    areaFrom = isScrolledUnder(axis, first) ? axis.scrollStart() : axis.start();
    areaTo = axis.end();
    if (isScrolledUnder(axis, last)) {
        areaTo = std::min(axis.scrollStart(), axis.end());
        to = axis.scrollStart() + OutOfView;
    }
}

// A rectangle grown by some pixels, but not beyond the area where its side is in it.
Rect grownWithin(const RangePlace& place, int by)
{
    const auto& [rect, area] = place;
    Rect grown = rect.shrunk(-by);
    if (rect.left >= area.left)
        grown.left = std::max(grown.left, area.left);
    if (rect.top >= area.top)
        grown.top = std::max(grown.top, area.top);
    if (rect.right <= area.right)
        grown.right = std::min(grown.right, area.right);
    if (rect.bottom <= area.bottom)
        grown.bottom = std::min(grown.bottom, area.bottom);
    return grown;
}

// What is left of `outer`, grown by `outside`, behind so many pixels. A side that had no room
// outside lies in the cell, where the text begins behind two pixels: it takes one less.
Rect shrunkFrom(const RangePlace& place, const Rect& outer, int outside, int by)
{
    const auto taken = [by](int missing) { return std::max(by - missing / 2, FrameOutside); };
    const Rect full = place.rect.shrunk(-outside);
    return {outer.left + taken(outer.left - full.left), outer.top + taken(outer.top - full.top),
            outer.right - taken(full.right - outer.right),
            outer.bottom - taken(full.bottom - outer.bottom)};
}

Region frame(const RangePlace& place, int outside, int thickness)
{
    const Rect outer = grownWithin(place, outside);
    Region region(outer);
    region.remove(shrunkFrom(place, outer, outside, thickness));
    region.cut(place.area);
    return region;
}

// The inside of a range, without its active cell.
Region inside(const RangePlace& place, const GridView& view, CellRef active)
{
    const Rect outer = grownWithin(place, FrameOutside);
    Region region(shrunkFrom(place, outer, FrameOutside, InsideMargin));
    Rect cell;
    if (view.cellRect({active.row, active.column, active.row, active.column}, cell))
        region.remove(cell.shrunk(ActiveMargin));
    region.cut(place.area);
    return region;
}

// Around the lower right corner, if that is in view; at the edges of the cells' area all of it is
// still to be hit.
bool handleOf(const RangePlace& place, const Rect& cellArea, Rect& out)
{
    if (place.rect.right > place.area.right || place.rect.bottom > place.area.bottom)
        return false;
    const int x = std::min(place.rect.right, cellArea.right - HandleBehind);
    const int y = std::min(place.rect.bottom, cellArea.bottom - HandleBehind);
    out = {x - HandleBefore, y - HandleBefore, x + HandleBehind, y + HandleBehind};
    return out.meets(cellArea);
}

// The square, and the notch that parts it from the frame.
void addHandle(Region& region, const Rect& handle, const Rect& cellArea)
{
    Region square({handle.left + 1, handle.top + 1, handle.right, handle.bottom});
    square.cut(cellArea);
    region.remove(handle);
    region.add(square);
}

Region selectionRegion(const GridLayout& areas, const GridView& view)
{
    const Selection& selection = workbook->currentSheet->selection;
    // The editor over the cell has a frame of its own.
    const bool isCovered = application->formulaBar.editing && !application->formulaBarVisible;
    RangePlace place;
    if ((isCovered && !selection.range.isMultiCell()) ||
        !rangePlace(areas, view, selection.range, place))
        return {};
    Region region = frame(place, FrameOutside, FrameThickness);
    region.add(inside(place, view, {selection.activeRow, selection.activeColumn}));
    Rect handle;
    if (handleOf(place, areas.cellArea, handle))
        addHandle(region, handle, areas.cellArea);
    return region;
}

// While somebody points, what is pointed at has the frame, and the cell that is edited a thinner
// one. Where they meet, one would take the other away if both were inverted.
Region pointedRegion(const GridLayout& areas, const GridView& view)
{
    Region region;
    RangePlace place;
    const Sheet* sheet = workbook->currentSheet;
    const Selection& edited = sheet->selection;
    RangeRef cell;
    cell.set(edited.activeColumn, edited.activeRow, 1, 1);
    if (sheet == application->pointSheet && rangePlace(areas, view, cell, place))
        region.add(frame(place, EditedOutside, EditedThickness));
    if (rangePlace(areas, view, application->pointSelection.range, place))
        region.add(frame(place, FrameOutside, FrameThickness));
    return region;
}

Rect lineRect(const GridLayout& areas)
{
    const int at = resizeLine();
    if (at == PenState::NoLine)
        return {};
    const Rect& grid = areas.gridArea;
    const Rect line = application->pen.dragMode == DragColumnSize
                          ? Rect{at, grid.top, at + 1, grid.bottom}
                          : Rect{grid.left, at, grid.right, at + 1};
    return line.intersected(grid);
}

} // namespace

bool rangePlace(const GridLayout& areas, const GridView& view, const RangeRef& range,
                RangePlace& out)
{
    if (areas.cellArea.isEmpty() || !view.cellRect(range, out.rect))
        return false;
    placeSpan(view.columns, range.firstColumn, range.lastColumn, out.rect.right, out.area.left,
              out.area.right);
    placeSpan(view.rows, range.firstRow, range.lastRow, out.rect.bottom, out.area.top,
              out.area.bottom);
    return true;
}

Region inversions(const GridLayout& areas)
{
    const GridView view(areas.cellArea, *workbook->currentSheet);
    Region region =
        application->pointMode ? pointedRegion(areas, view) : selectionRegion(areas, view);
    region.toggle(lineRect(areas));
    return region;
}

int resizeLine()
{
    const PenState& pen = application->pen;
    const bool resizes = pen.dragMode == DragColumnSize || pen.dragMode == DragRowSize;
    return resizes ? pen.resizeAt : PenState::NoLine;
}

bool handleRect(Rect& out)
{
    if (workbook == nullptr || application->pointMode)
        return false;
    const GridLayout areas = currentLayout();
    const GridView view(areas.cellArea, *workbook->currentSheet);
    RangePlace place;
    return rangePlace(areas, view, workbook->currentSheet->selection.range, place) &&
           handleOf(place, areas.cellArea, out);
}

} // namespace vorn
