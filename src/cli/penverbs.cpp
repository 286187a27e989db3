#include "cli/penverbs.h"

#include "cli/keyverbs.h"
#include "cli/place.h"
#include "cli/utf8.h"
#include "core/workbook.h"
#include "shell/cursor.h"
#include "shell/pen.h"

#include <string>
#include <vector>

namespace vorn::cli {

namespace {

// What the message of a pen can hold: 16 bits, and those above half of it stand for less than 0.
constexpr int PositionMax = 65535;

bool readPosition(std::u16string_view text, int& out)
{
    const bool negative = text.starts_with(u'-');
    if (negative)
        text.remove_prefix(1);
    const int number = readNumber(text, PositionMax);
    out = negative ? -number : number;
    return number != 0 || text == u"0";
}

// Pairs of numbers, and nothing else.
bool readPoints(std::u16string_view text, std::vector<Point>& out)
{
    while (!text.empty()) {
        Point point;
        const bool readX = readPosition(takeWord(text), point.x);
        const bool readY = readPosition(takeWord(text), point.y);
        if (!readX || !readY)
            return false;
        out.push_back(point);
    }
    return true;
}

// A pen goes down in the window, or the window never learns of it.
bool isInWindow(Script& script, Point at)
{
    return script.app.clientArea.contains(at.x, at.y) ||
           script.fail("outside of the window: '" + std::to_string(at.x) + ' ' +
                       std::to_string(at.y) + '\'');
}

bool readTap(Script& script, std::u16string_view argument, Point& out)
{
    std::vector<Point> points;
    if (!readPoints(argument, points) || points.size() != 1)
        return script.fail("no place: '" + toUtf8(argument) + '\'');
    out = points.front();
    return isInWindow(script, out);
}

// Down, moves and up are messages of their own.
void endMessage(Script& script)
{
    script.app.showError();
    repaint(script);
}

void tap(Script& script, Point at)
{
    penDown(at.x, at.y);
    endMessage(script);
    penUp(at.x, at.y);
    endMessage(script);
}

// Where the middle of a cell is on the screen; false if it is out of view.
bool middleOf(const cli::Place& cell, Point& out)
{
    if (cell.sheet != workbook->currentSheet)
        return false;
    const GridLayout areas = currentLayout();
    const GridView view = currentView();
    const int column = cell.first.column;
    const int row = cell.first.row;
    out = {view.xOfColumn(column) + view.columns.pixels(column) / 2,
           view.yOfRow(row) + view.rows.pixels(row) / 2};
    return areas.cellArea.contains(out.x, out.y) && view.columnAtX(out.x) == column &&
           view.rowAtY(out.y) == row;
}

} // namespace

bool tapVerb(Script& script, std::u16string_view argument)
{
    Point at;
    if (!readTap(script, argument, at))
        return false;
    tap(script, at);
    return true;
}

bool doubletapVerb(Script& script, std::u16string_view argument)
{
    Point at;
    if (!readTap(script, argument, at))
        return false;
    tap(script, at);
    doubleTap(at.x, at.y);
    endMessage(script);
    penUp(at.x, at.y);
    return true;
}

bool dragVerb(Script& script, std::u16string_view argument)
{
    std::vector<Point> points;
    if (!readPoints(argument, points) || points.size() < 2)
        return script.fail("no places: '" + toUtf8(argument) + '\'');
    const Point start = points.front();
    if (!isInWindow(script, start))
        return false;
    penDown(start.x, start.y);
    for (const Point& point : points) {
        endMessage(script);
        if (&point != &points.front())
            penMove(point.x, point.y);
    }
    endMessage(script);
    penUp(points.back().x, points.back().y);
    return true;
}

bool tapcellVerb(Script& script, std::u16string_view argument)
{
    cli::Place cell;
    if (!readPlace(argument, cell) || cell.first != cell.second)
        return script.fail("no cell: '" + toUtf8(argument) + '\'');
    Point middle;
    if (!middleOf(cell, middle))
        return script.fail("not in view: '" + toUtf8(argument) + '\'');
    tap(script, middle);
    return true;
}

} // namespace vorn::cli
