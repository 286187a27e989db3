#include "shell/windowpaint.h"

#include "core/workbook.h"
#include "platform/canvas.h"
#include "shell/application.h"
#include "shell/cellpaint.h"
#include "shell/cursor.h"
#include "shell/entry.h"
#include "shell/look.h"
#include "shell/selectionpaint.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vorn {

namespace {

const Sheet& sheet()
{
    return *workbook->currentSheet;
}

PaintedWindow currentWindow()
{
    PaintedWindow window;
    window.sheet = &sheet();
    window.areas = currentLayout();
    window.previousSelection = application->activeSelection();
    window.pointing = application->pointMode;
    window.previousLeftColumn = sheet().leftColumn;
    window.previousTopRow = sheet().topRow;
    window.titles = titlesLook(Titles(sheet(), window.areas));
    window.inverted = inversions(window.areas);
    window.chrome = currentChrome();
    return window;
}

void invert(Canvas& canvas, const Region& region)
{
    for (const Rect& rect : region.rects())
        canvas.invert(rect);
}

// The grid as if nothing of it were inverted.
void paintGrid(Canvas& canvas, const PaintedWindow& now, const Rect& area)
{
    const Rect seen = now.areas.gridArea.intersected(area);
    if (seen.isEmpty())
        return;
    const Clip clip(canvas, seen);
    paintTitles(canvas, Titles(sheet(), now.areas), now.previousSelection.range, seen);
    const Rect cells = now.areas.cellArea.intersected(seen);
    if (!cells.isEmpty())
        paintPanes(canvas, GridView(now.areas.cellArea, sheet()), cells);
}

// What lies behind the bars and the tabs, and in the corner between them.
void paintGround(Canvas& canvas, const PaintedWindow& now, const Rect& area)
{
    Region ground(application->clientArea.intersected(area));
    ground.remove(now.areas.gridArea);
    for (const Rect& rect : ground.rects())
        canvas.fill(rect, ColourFace);
}

void paintAll(Canvas& canvas, const PaintedWindow& now, const Rect& area)
{
    paintGround(canvas, now, area);
    paintGrid(canvas, now, area);
    paintChrome(canvas, now.chrome, area);
}

// --- Scrolling

// One direction in which the view moved over the sheet.
struct Scroll {
    Rect part;    // of the grid, with the titles beside it, that moves
    int distance; // of what is seen, along the axis
};

// How far what is seen moves when `before` was the first that scrolls; enough to move it out of
// view if it is further.
int scrollDistance(const GridAxis& axis, int before)
{
    const int former = std::clamp(before, axis.leastScroll(), axis.last());
    const int present = axis.scrollFirst();
    const int room = std::max(axis.end() - axis.scrollStart(), 0);
    int distance = 0;
    for (int each = std::min(former, present); each < std::max(former, present) && distance < room;
         ++each)
        distance += axis.pixels(each);
    return present > former ? -distance : distance;
}

// Does one of them end at this place, or the other begin?
bool isBoundary(const GridAxis& axis, int position)
{
    return axis.at(position - 1) != axis.at(position);
}

// What has to be painted where rows moved: what comes into view, and lines that do not move along.
// The last row in view has a line of its own at its lower end, and one lies below the frozen rows.
void addRowStrips(Region& open, const GridAxis& rows, const Scroll& scroll)
{
    const auto strip = [&](int from, int to) {
        open.add(Rect{scroll.part.left, from, scroll.part.right, to}.intersected(scroll.part));
    };
    const int line = rows.isFrozen() ? 1 : 0;
    const auto& [part, distance] = scroll;
    if (distance < 0) {
        const int edge = part.bottom + distance;
        strip(isBoundary(rows, edge) ? edge - 1 : edge, part.bottom);
        strip(part.top, part.top + line);
    } else {
        strip(part.top, part.top + distance + line);
        if (isBoundary(rows, part.bottom))
            strip(part.bottom - 1, part.bottom);
    }
}

// The first column in view has a line of its own at its left.
void addColumnStrips(Region& open, const Scroll& scroll)
{
    const auto strip = [&](int from, int to) {
        open.add(Rect{from, scroll.part.top, to, scroll.part.bottom}.intersected(scroll.part));
    };
    const auto& [part, distance] = scroll;
    if (distance < 0) {
        strip(part.right + distance, part.right);
        strip(part.left, part.left + 1);
    } else {
        strip(part.left, part.left + distance + 1);
    }
}

// Moves what is seen, and what is inverted of it. False, with nothing moved, if nothing of it would
// stay or the canvas cannot.
bool movePart(Canvas& canvas, const Rect& part, int dx, int dy, Region& inverted)
{
    if (std::abs(dx) >= part.width() || std::abs(dy) >= part.height() ||
        !canvas.scroll(part, dx, dy))
        return false;
    inverted.scroll(part, dx, dy);
    return true;
}

// Moves the grid to where the view stands now. Answers what of it has to be painted then.
Region scrollGrid(Canvas& canvas, const PaintedWindow& now, Region& inverted)
{
    const PaintedWindow& painted = application->painted;
    const GridView view(now.areas.cellArea, sheet());
    const Rect& grid = now.areas.gridArea;
    const Scroll down = {
        Rect{grid.left, view.rows.scrollStart(), grid.right, grid.bottom}
        .intersected(grid),
        scrollDistance(view.rows, painted.previousTopRow)
    };
    const Scroll across = {
        Rect{view.columns.scrollStart(), grid.top, grid.right, grid.bottom}
        .intersected(grid),
        scrollDistance(view.columns, painted.previousLeftColumn)
    };
    Region open;
    if (down.distance != 0 && !down.part.isEmpty()) {
        if (movePart(canvas, down.part, 0, down.distance, inverted))
            addRowStrips(open, view.rows, down);
        else
            open.add(down.part);
    }
    if (across.distance != 0 && !across.part.isEmpty()) {
        if (movePart(canvas, across.part, across.distance, 0, inverted))
            addColumnStrips(open, across);
        else
            open.add(across.part);
    }
    return open;
}

// --- The pass

// Does the grid stand where it stood? The bars and tabs beside it are compared by themselves.
bool sameGrid(const GridLayout& a, const GridLayout& b)
{
    return a.gridArea == b.gridArea && a.cellArea == b.cellArea;
}

bool sameWindow(const GridLayout& a, const GridLayout& b)
{
    return a.formulaBar == b.formulaBar && a.windowArea == b.windowArea && a.gridArea == b.gridArea;
}

// What of the grid has to be painted anew, but for titles that only look otherwise. What can be
// moved is moved.
Region openGrid(Canvas& canvas, const PaintedWindow& now, Region& inverted)
{
    const PaintedWindow& painted = application->painted;
    if (!sameGrid(now.areas, painted.areas))
        return Region(now.areas.gridArea);
    if ((application->repaintHints & DirtyAll) != 0 || now.sheet != painted.sheet)
        return Region(now.titles == painted.titles ? now.areas.cellArea : now.areas.gridArea);
    return scrollGrid(canvas, now, inverted);
}

void paintGridChanges(Canvas& canvas, const PaintedWindow& now)
{
    const PaintedWindow& painted = application->painted;
    Region inverted = painted.inverted;
    const Region open = openGrid(canvas, now, inverted);
    Region titles = titleChanges(Titles(sheet(), now.areas), now.previousSelection.range,
                                 painted.previousSelection.range);
    titles.remove(open);
    for (const Region* region : {&open, &std::as_const(titles)}) {
        for (const Rect& rect : region->rects())
            paintGrid(canvas, now, rect);
        inverted.remove(*region);
    }
    invert(canvas, changes(inverted, now.inverted));
}

void paintWhatChanged(Canvas& canvas, const PaintedWindow& now)
{
    const PaintedWindow& painted = application->painted;
    if (painted.sheet == nullptr || !sameWindow(now.areas, painted.areas)) {
        paintAll(canvas, now, application->clientArea);
        invert(canvas, now.inverted);
        return;
    }
    paintGridChanges(canvas, now);
    paintChromeChanges(canvas, now.chrome, painted.chrome);
}

void remember(PaintedWindow&& now)
{
    application->painted = std::move(now);
    application->repaintHints = 0;
    application->pen.resizeDrawn = resizeLine();
    refreshEditor();
}

} // namespace

void paintWindow(Canvas& canvas, const Rect& area)
{
    if (workbook == nullptr)
        return;
    const PaintedWindow now = currentWindow();
    const Clip clip(canvas, area);
    paintAll(canvas, now, area);
    invert(canvas, now.inverted);
}

void paintChanges(Canvas& canvas)
{
    if (workbook == nullptr || application->repaintLock > 0)
        return;
    PaintedWindow now = currentWindow();
    paintWhatChanged(canvas, now);
    remember(std::move(now));
}

void endRepaint()
{
    if (workbook != nullptr)
        remember(currentWindow());
}

void forgetPainted()
{
    application->painted = {};
    application->pen.resizeDrawn = PenState::NoLine;
}

} // namespace vorn
