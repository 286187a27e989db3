#include "shell/scrolling.h"

#include "core/workbook.h"
#include "shell/application.h"
#include "shell/cursor.h"
#include "shell/pointmode.h"

#include <algorithm>

namespace vorn {

namespace {

Sheet& sheet()
{
    return *workbook->currentSheet;
}

GridAxis axisOf(BarDirection direction)
{
    const GridView view = currentView();
    return direction == BarDirection::Across ? view.columns : view.rows;
}

// The place to stop at for a wish: the next that is seen, or else the one before.
int stopAt(const GridAxis& axis, int wish)
{
    const int index = std::clamp(wish, axis.leastScroll(), axis.last());
    if (!axis.isHidden(index))
        return index;
    const int on = axis.step(index, 1);
    if (on != index)
        return on;
    const int back = axis.step(index, -1);
    return back != index && back >= axis.leastScroll() ? back : axis.scrollFirst();
}

int linesOn(const GridAxis& axis, int lines)
{
    const int direction = lines > 0 ? 1 : -1;
    const int start = stopAt(axis, axis.scrollFirst());
    int index = start;
    for (; lines != 0; lines -= direction) {
        const int next = axis.step(index, direction);
        if (next == index || next < axis.leastScroll())
            break;
        index = next;
    }
    return index == start ? axis.scrollFirst() : index;
}

// The last that is seen whole comes first.
int pageOn(const GridAxis& axis)
{
    const int present = axis.scrollFirst();
    const int target = stopAt(axis, present + axis.countFrom(present) - 1);
    return target > present ? target : linesOn(axis, 1);
}

// The first that is seen comes last, as far as what is before it fits.
int pageBack(const GridAxis& axis)
{
    const int present = axis.scrollFirst();
    int room = axis.end() - axis.scrollStart() - axis.pixels(present);
    int index = present;
    while (index > axis.leastScroll() && axis.pixels(index - 1) <= room)
        room -= axis.pixels(--index);
    const int target = stopAt(axis, index);
    return target < present ? target : linesOn(axis, -1);
}

int placeOfPart(const GridAxis& axis, ScrollPart part)
{
    switch (part) {
    case ScrollLineBack:
        return linesOn(axis, -1);
    case ScrollPageBack:
        return pageBack(axis);
    case ScrollPageOn:
        return pageOn(axis);
    case ScrollLineOn:
        return linesOn(axis, 1);
    case ScrollNone:
    case ScrollThumb:
        break;
    }
    return axis.scrollFirst();
}

bool thumbIsDragged()
{
    const ChromeState& state = application->chrome;
    return state.held == ChromePart::VerticalBar && state.heldPart == ScrollThumb;
}

int verticalRange()
{
    const int range = application->chrome.verticalRange;
    return thumbIsDragged() ? range : verticalScrollRange(range, sheet().lastRow(), sheet().topRow);
}

} // namespace

void setViewStart(int leftColumn, int topRow)
{
    if (leftColumn == sheet().leftColumn && topRow == sheet().topRow)
        return;
    sheet().leftColumn = leftColumn;
    sheet().topRow = topRow;
    followVerticalRange();
    application->markDirty(DirtyScrolled);
}

void scrollBy(int columns, int rows)
{
    if (workbook == nullptr || (columns == 0 && rows == 0) || !yieldToGrid())
        return;
    const GridView view = currentView();
    setViewStart(columns == 0 ? sheet().leftColumn : linesOn(view.columns, columns),
                 rows == 0 ? sheet().topRow : linesOn(view.rows, rows));
}

void scrollViewTo(int leftColumn, int topRow)
{
    if (workbook == nullptr || (leftColumn < 0 && topRow < 0) || !yieldToGrid())
        return;
    const GridView view = currentView();
    setViewStart(leftColumn < 0 ? sheet().leftColumn : stopAt(view.columns, leftColumn),
                 topRow < 0 ? sheet().topRow : stopAt(view.rows, topRow));
}

void scrollByPart(BarDirection direction, ScrollPart part)
{
    if (workbook == nullptr || part == ScrollNone || part == ScrollThumb || !yieldToGrid())
        return;
    const int place = placeOfPart(axisOf(direction), part);
    if (direction == BarDirection::Across)
        setViewStart(place, sheet().topRow);
    else
        setViewStart(sheet().leftColumn, place);
}

ScrollReach scrollReach(BarDirection direction)
{
    const GridAxis axis = axisOf(direction);
    ScrollReach reach;
    reach.first = stopAt(axis, axis.leastScroll());
    reach.last = direction == BarDirection::Across ? axis.last() : verticalRange();
    while (reach.last > reach.first && axis.isHidden(reach.last))
        --reach.last;
    reach.last = std::max(reach.last, reach.first);
    reach.position = std::clamp(axis.scrollFirst(), reach.first, reach.last);
    // Not a count of those in view, so that the thumb keeps its length.
    reach.page = axis.usualCount();
    return reach;
}

void followVerticalRange()
{
    application->chrome.verticalRange = verticalRange();
}

void resetVerticalRange()
{
    constexpr int none = -1;
    if (workbook != nullptr)
        application->chrome.verticalRange =
            verticalScrollRange(none, sheet().lastRow(), sheet().topRow);
}

} // namespace vorn
