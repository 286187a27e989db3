// A pen, a finger and a mouse on the window of a session, for tests of what they do.
//
// At the first size of the window columns begin at 26 and are 63 wide, rows begin at 31 and are 17
// high. A, B and C are seen whole and D in part; of row 17 two pixels are seen.
#pragma once

#include "core/heap.h"
#include "editing/undo.h"
#include "shell/pen.h"
#include "support/session.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {

inline constexpr KeyModifiers Plain = {};
inline constexpr KeyModifiers Shift = {.shift = true};

class PenHand : public testing::Test {
protected:
    PenHand() { session.endMessage(); }

    using Points = std::vector<Point>;

    PenState& pen() { return session.app.pen; }
    const Sheet& sheet() const { return session.sheet(); }

    void down(Point at, KeyModifiers modifiers = Plain, Pointer pointer = Pointer::Pen)
    {
        penDown(at.x, at.y, modifiers, pointer);
        session.endMessage();
    }
    void move(Point to)
    {
        penMove(to.x, to.y);
        session.endMessage();
    }
    void up(Point at)
    {
        penUp(at.x, at.y);
        session.endMessage();
    }
    void drag(const Points& points, KeyModifiers modifiers = Plain, Pointer pointer = Pointer::Pen)
    {
        down(points.front(), modifiers, pointer);
        for (const Point& point : points)
            move(point);
        up(points.back());
    }
    void drag(Point from, Point to, KeyModifiers modifiers = Plain, Pointer pointer = Pointer::Pen)
    {
        drag(Points{from, to}, modifiers, pointer);
    }
    void finger(Point from, Point to) { drag(Points{from, to}, Plain, Pointer::Finger); }
    void finger(Point at) { finger(at, at); }
    void tap(Point at, KeyModifiers modifiers = Plain) { drag(Points{at}, modifiers); }
    void tapTwice(Point at)
    {
        tap(at);
        doubleTap(at.x, at.y);
        session.endMessage();
        up(at);
    }
    void tick()
    {
        penTimer();
        session.endMessage();
    }
    void widen(int width) { session.app.clientArea.right = width; }
    void freeze(int firstColumn, int firstRow, int columns, int rows)
    {
        session.sheet().titleColumns = session.sheet().titleRows = true;
        session.sheet().titles.set(firstColumn, firstRow, columns, rows);
    }
    void scrollTo(int leftColumn, int topRow)
    {
        session.sheet().leftColumn = leftColumn;
        session.sheet().topRow = topRow;
    }
    void addTask(std::u16string_view area)
    {
        Task* task = workbook->addTask(duplicateString(u"Task"), duplicateString(u"1"));
        ASSERT_NE(task, nullptr);
        ASSERT_TRUE(parseReferenceText(area, task->onTapArea));
        task->onTap = 1;
    }
    static int steps() { return undoList.position; }
    int pixels(int column) const { return sheet().columns.columnPixels(column); }

    Session session;
};

} // namespace vorn
