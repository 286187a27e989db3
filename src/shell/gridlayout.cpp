#include "shell/gridlayout.h"

#include <algorithm>
#include <cstdint>

namespace vorn {

namespace {

// Rows below the data that the vertical scroll bar reaches.
constexpr int ScrollRangeSpare = 100;

// A rectangle that too small a window turned inside out is empty.
Rect rectOf(int left, int top, int right, int bottom)
{
    return {left, top, std::max(left, right), std::max(top, bottom)};
}

void layoutBottomRow(GridLayout& areas, int tabDivider)
{
    const Rect& window = areas.windowArea;
    const int top = areas.gridArea.bottom;
    const int bottom = window.bottom;
    const int splitter = std::max(window.left + TabSplitterLeftMargin,
                                  std::min(tabDivider, window.right - TabSplitterRightMargin));
    const int tabs = window.left + TabButtonsWidth;
    areas.tabButtons = rectOf(window.left, top, tabs, bottom);
    areas.tabArea = rectOf(tabs, top, splitter, bottom);
    areas.tabSplitter = rectOf(splitter, top, splitter + TabSplitterWidth, bottom);
    areas.horizontalBar = rectOf(splitter + TabSplitterWidth, top, areas.gridArea.right, bottom);
}

void layoutTitles(GridLayout& areas, int zoom)
{
    const Rect& grid = areas.gridArea;
    const int left = grid.left + zoomed(zoom, RowTitleWidth);
    const int top = grid.top + zoomed(zoom, ColumnTitleHeight);
    areas.columnTitles = rectOf(left, grid.top, grid.right, top);
    areas.rowTitles = rectOf(grid.left, top, left, grid.bottom);
    areas.cornerBox = rectOf(grid.left, grid.top, left, top);
    areas.cellArea = rectOf(left, top, grid.right, grid.bottom);
}

} // namespace

int zoomed(int zoom, int length)
{
    const std::int64_t pixels = std::int64_t{zoom} * length / 100;
    return static_cast<int>(std::clamp<std::int64_t>(pixels, 0, PixelsMax));
}

GridLayout layout(const LayoutRequest& request, const Sheet& sheet)
{
    GridLayout areas;
    const Rect& client = request.client;
    const int top = client.top + (request.formulaBar ? FormulaBarHeight : 0);
    if (request.formulaBar)
        areas.formulaBar = rectOf(client.left, client.top, client.right, top);
    areas.windowArea = rectOf(client.left, top, client.right, client.bottom);
    areas.gridArea = areas.windowArea;
    if (!request.fullScreen) {
        areas.gridArea = rectOf(client.left, top, client.right - ScrollBarThickness,
                                client.bottom - ScrollBarThickness);
        areas.verticalBar = rectOf(areas.gridArea.right, top, client.right, areas.gridArea.bottom);
        layoutBottomRow(areas, request.tabDivider);
    }
    areas.cellArea = areas.gridArea;
    if (sheet.showTitles && !request.fullScreen)
        layoutTitles(areas, sheet.zoom);
    return areas;
}

// --- One direction

GridAxis::GridAxis(const Sheet& sheet, bool columns, int start, int end)
    : sheet_(sheet), columns_(columns), start_(start), end_(end), scrollStart_(start),
      last_(columns ? LastColumn : LastRow), scrollFirst_(columns ? sheet.leftColumn : sheet.topRow)
{
    const RangeRef& titles = sheet.titles;
    const int first = columns ? titles.firstColumn : titles.firstRow;
    const int last = std::min<int>(columns ? titles.lastColumn : titles.lastRow, last_ - 1);
    if ((columns ? sheet.titleColumns : sheet.titleRows) && first <= last) {
        frozenFirst_ = first;
        frozenLast_ = last;
    }
    scrollFirst_ = std::clamp(scrollFirst_, leastScroll(), last_);
    scrollStart_ += sumOf(frozenFirst_, frozenLast_ + 1);
}

GridAxis GridAxis::ofColumns(const Sheet& sheet, int start, int end)
{
    return {sheet, true, start, end};
}

GridAxis GridAxis::ofRows(const Sheet& sheet, int start, int end)
{
    return {sheet, false, start, end};
}

bool GridAxis::isHidden(int index) const
{
    return columns_ ? sheet_.columns.columnHidden(index) : sheet_.rowHidden(index);
}

int GridAxis::pixels(int index) const
{
    return zoomed(sheet_.zoom,
                  columns_ ? sheet_.columns.columnPixels(index) : sheet_.rowPixels(index));
}

// The pixels of those from `from` up to, and without, `to`.
int GridAxis::sumOf(int from, int to) const
{
    int sum = 0;
    for (int index = from; index < to; ++index)
        sum += pixels(index);
    return sum;
}

// The one under a position before `edge`, where `index` begins.
int GridAxis::backFrom(int index, int edge, int position) const
{
    while (index > 0 && edge > position)
        edge -= pixels(--index);
    return index;
}

int GridAxis::at(int position) const
{
    int index = first();
    if (position < start_)
        return backFrom(index, start_, position);
    int edge = start_ + pixels(index);
    while (edge <= position) {
        if (index == last_)
            return last_ + 1;
        index = next(index);
        edge += pixels(index);
    }
    return index;
}

int GridAxis::edgeOf(int index, PastView pastView) const
{
    if (index < first())
        return start_ - sumOf(index, first());
    if (isFrozen(index))
        return start_ + sumOf(frozenFirst_, index);
    if (index < scrollFirst_)
        return scrollStart_ - sumOf(index, scrollFirst_);
    int edge = scrollStart_;
    for (int each = scrollFirst_; each < index; ++each) {
        if (pastView == StopPastView && edge > end_)
            break;
        edge += pixels(each);
    }
    return edge;
}

int GridAxis::lastVisible() const
{
    int index = first();
    int edge = start_ + pixels(index);
    while (edge < end_ && index < last_) {
        index = next(index);
        edge += pixels(index);
    }
    return index;
}

int GridAxis::countFrom(int index) const
{
    int room = end_ - scrollStart_;
    int count = 0;
    for (; index <= last_; ++index) {
        room -= pixels(index);
        if (room < 0)
            break;
        ++count;
    }
    if (room > 0)
        count += usualIn(room);
    return std::max(count, 1);
}

int GridAxis::usualCount() const
{
    return std::max(usualIn(end_ - scrollStart_), 1);
}

int GridAxis::usualIn(int room) const
{
    const int usual = pixels(last_ + 1);
    return usual > 0 ? room / usual : 0;
}

int GridAxis::scrolledTo(int index, int margin) const
{
    int target = std::min(index - countFrom(scrollFirst_) + 1 + margin, index);
    // The count was taken where the view stands. Where larger ones follow, fewer fit.
    while (target < index && target > scrollFirst_ && target + countFrom(target) <= index)
        ++target;
    if (target <= scrollFirst_)
        target = std::min(scrollFirst_, index);
    target = std::max(target, leastScroll());
    while (target < last_ && isHidden(target))
        ++target;
    return target;
}

int GridAxis::step(int index, int direction) const
{
    for (int each = index + direction; each >= 0 && each <= last_; each += direction) {
        if (!isHidden(each))
            return each;
    }
    return index;
}

// --- Both directions

namespace {

// A stretch of an axis that is painted by itself.
struct Stretch {
    int from;
    int to;
    int first;
    int last;

    bool isEmpty() const { return to <= from || last < first; }
};

Stretch frozenStretch(const GridAxis& axis)
{
    return {axis.start(), std::min(axis.scrollStart(), axis.end()), axis.frozenFirst(),
            axis.frozenLast()};
}

Stretch scrolledStretch(const GridAxis& axis)
{
    return {axis.scrollStart(), axis.end(), axis.scrollFirst(),
            std::max(axis.scrollFirst(), axis.lastVisible())};
}

// Both sides of what is seen of a span; false if nothing is.
bool visibleSpan(const GridAxis& axis, int first, int last, int& from, int& to)
{
    const auto isScrolledUnder = [&axis](int index) {
        return axis.isFrozen() && axis.frozenLast() < index && index < axis.scrollFirst();
    };
    from = axis.edgeOf(first);
    to = axis.edgeOf(last) + axis.pixels(last);
    if (isScrolledUnder(first))
        from = axis.scrollStart() - OutOfView;
    if (isScrolledUnder(last))
        to = axis.scrollStart();
    const int shownFrom = isScrolledUnder(first) ? axis.scrollStart() : axis.start();
    if (to <= shownFrom || from >= axis.end() || from >= to)
        return false;
    if (from < axis.start())
        from = axis.start() - OutOfView;
    if (to > axis.end())
        to = axis.end() + OutOfView;
    return true;
}

} // namespace

GridView::GridView(const Rect& cellArea, const Sheet& sheet)
    : columns(GridAxis::ofColumns(sheet, cellArea.left, cellArea.right)),
      rows(GridAxis::ofRows(sheet, cellArea.top, cellArea.bottom))
{
}

bool GridView::cellRect(const RangeRef& range, Rect& out) const
{
    return visibleSpan(columns, range.firstColumn, range.lastColumn, out.left, out.right) &&
           visibleSpan(rows, range.firstRow, range.lastRow, out.top, out.bottom);
}

std::vector<Pane> GridView::panes() const
{
    std::vector<Pane> panes;
    for (const Stretch& down : {frozenStretch(rows), scrolledStretch(rows)}) {
        for (const Stretch& across : {frozenStretch(columns), scrolledStretch(columns)}) {
            if (down.isEmpty() || across.isEmpty())
                continue;
            Pane pane;
            pane.rect = {across.from, down.from, across.to, down.to};
            pane.range.set(across.first, down.first, across.last - across.first + 1,
                           down.last - down.first + 1);
            panes.push_back(pane);
        }
    }
    return panes;
}

int verticalScrollRange(int presentRange, int lastRow, int topRow)
{
    if (topRow <= presentRange && topRow >= presentRange - ScrollRangeSpare)
        return presentRange;
    return std::min(std::max(lastRow, topRow) + ScrollRangeSpare, LastRow);
}

} // namespace vorn
