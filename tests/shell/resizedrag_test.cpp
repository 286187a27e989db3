#include "shell/resizedrag.h"

#include "editing/rowcolumn.h"
#include "support/penhand.h"

namespace vorn {
namespace {

class ResizeDragTest : public PenHand {};

TEST_F(ResizeDragTest, dragsTheEdgeOfAColumn)
{
    const struct {
        const char* behaviour;
        int zoom;
        int from, to;
        int pixels;
    } cases[] = {
        {"to the right",                 100, 89,  99,  73 },
        {"to the left",                  100, 89,  79,  53 },
        {"taken from beside",            100, 93,  103, 73 },
        {"from the other side",          100, 85,  95,  73 },
        {"to one pixel",                 100, 89,  27,  1  },
        {"to nothing",                   100, 89,  26,  0  },
        {"to less than nothing",         100, 89,  -90, 0  },
        {"out of the window",            100, 89,  389, 363},
        {"at half the size",             50,  44,  54,  83 },
        {"at half the size, to nothing", 50,  44,  13,  0  },
        {"at twice the size",            200, 178, 198, 73 },
        {"at 90 percent, to nothing",    90,  79,  23,  0  },
    };
    for (const auto& c : cases) {
        session.sheet().zoom = c.zoom;
        drag({
            {c.from,     20 },
            {c.from + 1, 20 },
            {c.to,       200}
        });
        EXPECT_EQ(pixels(0), c.pixels) << c.behaviour;
        EXPECT_EQ(sheet().columns.columnHidden(0), c.pixels == 0) << c.behaviour;
        EXPECT_EQ(undoLabel(), u"Column Width") << c.behaviour;
        undo();
        EXPECT_EQ(pixels(0), 63) << c.behaviour;
        redo();
        EXPECT_EQ(pixels(0), c.pixels) << c.behaviour;
        undo();
        EXPECT_EQ(session.selected(), "A1") << c.behaviour;
    }
}

TEST_F(ResizeDragTest, dragsTheEdgeOfARow)
{
    const struct {
        const char* behaviour;
        int zoom;
        int from, to;
        int pixels;
    } cases[] = {
        {"down",                     100, 48, 58,    27 },
        {"up",                       100, 48, 38,    7  },
        {"taken from beside",        100, 51, 61,    27 },
        {"to one pixel",             100, 48, 32,    1  },
        {"to nothing",               100, 48, 31,    0  },
        {"to less than nothing",     100, 48, -9,    0  },
        {"above what lost its sign", 100, 48, 65535, 0  },
        {"out of the window",        100, 48, 348,   317},
        {"at half the size",         50,  32, 42,    37 },
        {"at twice the size",        200, 79, 99,    27 },
    };
    for (const auto& c : cases) {
        session.sheet().zoom = c.zoom;
        drag({
            {5,   c.from    },
            {5,   c.from + 1},
            {200, c.to      }
        });
        EXPECT_EQ(sheet().rowPixels(0), c.pixels) << c.behaviour;
        EXPECT_EQ(sheet().rowHidden(0), c.pixels == 0) << c.behaviour;
        if (c.pixels != 0) {
            EXPECT_EQ(sheet().rowHeight(0), c.pixels * 15) << c.behaviour;
            EXPECT_TRUE(sheet().rowHasCustomHeight(0)) << c.behaviour;
        }
        EXPECT_EQ(undoLabel(), u"Row Height") << c.behaviour;
        undo();
        EXPECT_EQ(sheet().rowPixels(0), 17) << c.behaviour;
        redo();
        EXPECT_EQ(sheet().rowPixels(0), c.pixels) << c.behaviour;
        undo();
    }
}

TEST_F(ResizeDragTest, changesNothingByADragOfNothing)
{
    const struct {
        const char* behaviour;
        int zoom;
        Points points;
    } cases[] = {
        {"a tap",                  100, {{89, 24}}                     },
        {"from beside",            100, {{93, 24}}                     },
        {"there and back",         100, {{89, 24}, {150, 24}, {89, 24}}},
        {"a row",                  100, {{10, 47}, {10, 90}, {90, 47}} },
        {"less than a pixel",      300, {{267, 24}, {269, 24}}         },
        {"less than a pixel back", 300, {{267, 24}, {265, 24}}         },
        {"less than a pixel down", 300, {{10, 110}, {10, 112}}         },
    };
    widen(400);
    for (const auto& c : cases) {
        session.sheet().zoom = c.zoom;
        drag(c.points);
        EXPECT_EQ(steps(), 0) << c.behaviour;
        EXPECT_FALSE(workbook->modified) << c.behaviour;
        EXPECT_EQ(session.selected(), "A1") << c.behaviour;
    }
}

TEST_F(ResizeDragTest, takesTheLineOfAnEdgeAlong)
{
    down({92, 24});
    EXPECT_EQ(pen().resized, 0);
    EXPECT_EQ(pen().resizeAt, 89) << "it begins where the edge is";
    move({102, 24});
    EXPECT_EQ(pen().resizeAt, 99);
    EXPECT_EQ(pen().resizeStart, 89);
    EXPECT_EQ(pixels(0), 63) << "nothing changes before the end";
    tick();
    EXPECT_EQ(pen().resizeAt, 99);
    move({-100, 24});
    EXPECT_EQ(pen().resizeAt, 26) << "and no further than where the column begins";
    penLost();
    EXPECT_EQ(steps(), 0);
    up({-100, 24});
    EXPECT_EQ(steps(), 0);
}

TEST_F(ResizeDragTest, resizesAllOfASelectionOfWholeColumns)
{
    session.app.repaintHints = 0;
    session.select(u"A1", u"B16384");
    drag({152, 24}, {162, 24});
    EXPECT_EQ(pixels(0), 73);
    EXPECT_EQ(pixels(1), 73);
    EXPECT_EQ(pixels(2), 63);
    EXPECT_EQ(steps(), 1);
    undo();
    session.select(u"A1", u"B9");
    drag({152, 24}, {162, 24});
    EXPECT_EQ(pixels(0), 63) << "a part of them is not enough";
    EXPECT_EQ(pixels(1), 73);
    undo();
    session.select(u"B1", u"C16384");
    drag({89, 24}, {99, 24});
    EXPECT_EQ(pixels(0), 73) << "and one outside stands alone";
    EXPECT_EQ(pixels(1), 63);
    session.select(u"A1", u"IV2");
    drag({10, 65}, {10, 75});
    EXPECT_EQ(sheet().rowPixels(0), 27);
    EXPECT_EQ(sheet().rowPixels(1), 27);
    EXPECT_EQ(sheet().rowPixels(2), 17);
}

TEST_F(ResizeDragTest, neverHidesTheWholeSheet)
{
    tap({5, 20});
    drag({89, 24}, {20, 24});
    drag({10, 48}, {10, 20});
    EXPECT_EQ(steps(), 0);
    EXPECT_EQ(pixels(0), 63);
    drag({89, 24}, {99, 24});
    EXPECT_EQ(pixels(0), 73);
    EXPECT_EQ(pixels(255), 73);
}

TEST_F(ResizeDragTest, leavesSelectionAndViewAsTheyAre)
{
    widen(600);
    session.select(u"C5", u"B2");
    scrollTo(5, 100);
    drag({89, 24}, {99, 24});
    EXPECT_EQ(pixels(5), 73);
    drag({10, 48}, {10, 58});
    EXPECT_EQ(session.selected(), "B2:C5 active C5");
    EXPECT_EQ(sheet().leftColumn, 5);
    EXPECT_EQ(sheet().topRow, 100);
}

TEST_F(ResizeDragTest, drawsHiddenOnesOpen)
{
    session.sheet().columns.setColumnHidden(1, 2, true);
    drag({90, 24}, {70, 24});
    drag({90, 24}, {90, 24});
    EXPECT_EQ(steps(), 0) << "it is hidden already";
    drag({90, 24}, {110, 24});
    EXPECT_EQ(pixels(2), 20);
    EXPECT_EQ(pixels(1), 0);
    EXPECT_EQ(pixels(0), 63);
    undo();
    EXPECT_EQ(pixels(2), 0);
    drag({88, 24}, {98, 24});
    EXPECT_EQ(pixels(0), 73) << "from the left it is the one that is seen";
    EXPECT_EQ(pixels(2), 0);
    session.sheet().setRowHidden(1, true);
    drag({10, 49}, {10, 69});
    EXPECT_EQ(sheet().rowPixels(1), 20);
    EXPECT_EQ(sheet().rowPixels(0), 17);
}

TEST_F(ResizeDragTest, showsWhatWasDrawnOpenBeforeTheView)
{
    session.sheet().columns.setColumnHidden(0, 0, true);
    session.sheet().setRowHidden(0, true);
    scrollTo(1, 1);
    drag({27, 24}, {57, 24});
    EXPECT_EQ(pixels(0), 30);
    EXPECT_EQ(sheet().leftColumn, 0);
    EXPECT_EQ(sheet().topRow, 1);
    drag({10, 32}, {10, 52});
    EXPECT_EQ(sheet().rowPixels(0), 20);
    EXPECT_EQ(sheet().topRow, 0);
}

TEST_F(ResizeDragTest, resizesFrozenOnes)
{
    freeze(0, 0, 2, 1);
    scrollTo(5, 40);
    drag({154, 24}, {164, 24});
    EXPECT_EQ(pixels(1), 73);
    drag({10, 65}, {10, 75});
    EXPECT_EQ(sheet().rowPixels(40), 27) << "behind the frozen row the scrolled ones go on";
    EXPECT_EQ(sheet().leftColumn, 5);
    EXPECT_EQ(sheet().topRow, 40);
}

TEST_F(ResizeDragTest, makesNothingLargerThanItCanBe)
{
    session.sheet().zoom = 10;
    drag({8, 17}, {30000, 17});
    EXPECT_EQ(sheet().columns.columnWidth(0), widthOfCharacters(MostCharacters));
    undo();
    drag({1, 19}, {1, 30000});
    EXPECT_EQ(sheet().rowHeight(0), GreatestRowHeight);
}

} // namespace
} // namespace vorn
