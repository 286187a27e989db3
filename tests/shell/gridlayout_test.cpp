#include "shell/gridlayout.h"

#include "core/workbook.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {

// How a failed comparison shows a rectangle.
static void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << rect.left << ',' << rect.top << '-' << rect.right << ',' << rect.bottom;
}

namespace {

constexpr Rect None = {};

// A sheet whose columns are 50 pixels wide and whose rows are 20 high, in an area of 5 columns and
// 10 rows at 100, 200.
class GridTest : public testing::Test {
protected:
    static constexpr Rect Area = {100, 200, 350, 400};

    GridTest()
    {
        sheet.columns.setDefaultWidth(1826);
        sheet.defaultRowHeight = 300;
    }

    void width(int column, int pixels)
    {
        sheet.columns.setColumnWidth(column, column, (pixels * 73 + 1) / 2);
    }
    void hideColumns(int first, int last) { sheet.columns.setColumnHidden(first, last, true); }
    void hideRows(int first, int last)
    {
        for (int row = first; row <= last; ++row)
            sheet.setRowHidden(row, true);
    }
    void freeze(int firstColumn, int lastColumn, int firstRow, int lastRow)
    {
        sheet.titleColumns = firstColumn <= lastColumn;
        sheet.titleRows = firstRow <= lastRow;
        sheet.titles.set(firstColumn, firstRow, lastColumn - firstColumn + 1,
                         lastRow - firstRow + 1);
    }
    GridView view() const { return {Area, sheet}; }

    TestDocument document;
    Sheet& sheet = *workbook->currentSheet;
};

TEST_F(GridTest, measuresAsTheOtherTestsExpect)
{
    EXPECT_EQ(view().columns.pixels(0), 50);
    EXPECT_EQ(view().rows.pixels(0), 20);
    width(3, 70);
    EXPECT_EQ(view().columns.pixels(3), 70);
}

// --- The layout

class LayoutTest : public testing::Test {
protected:
    TestDocument document;
    Sheet& sheet = *workbook->currentSheet;
};

TEST_F(LayoutTest, putsEverythingInASmallWindow)
{
    const GridLayout areas = layout({}, sheet);
    EXPECT_EQ(areas.formulaBar, (Rect{0, 0, 240, 17}));
    EXPECT_EQ(areas.windowArea, (Rect{0, 17, 240, 320}));
    EXPECT_EQ(areas.gridArea, (Rect{0, 17, 225, 305}));
    EXPECT_EQ(areas.cornerBox, (Rect{0, 17, 26, 31}));
    EXPECT_EQ(areas.columnTitles, (Rect{26, 17, 225, 31}));
    EXPECT_EQ(areas.rowTitles, (Rect{0, 31, 26, 305}));
    EXPECT_EQ(areas.cellArea, (Rect{26, 31, 225, 305}));
    EXPECT_EQ(areas.verticalBar, (Rect{225, 17, 240, 305}));
    EXPECT_EQ(areas.tabButtons, (Rect{0, 305, 38, 320}));
    EXPECT_EQ(areas.tabArea, (Rect{38, 305, 161, 320}));
    EXPECT_EQ(areas.tabSplitter, (Rect{161, 305, 165, 320}));
    EXPECT_EQ(areas.horizontalBar, (Rect{165, 305, 225, 320}));
}

TEST_F(LayoutTest, givesTheGridWhatTheFormulaBarLeaves)
{
    const GridLayout areas = layout({.formulaBar = false}, sheet);
    EXPECT_EQ(areas.formulaBar, None);
    EXPECT_EQ(areas.windowArea, (Rect{0, 0, 240, 320}));
    EXPECT_EQ(areas.cellArea, (Rect{26, 14, 225, 305}));
}

TEST_F(LayoutTest, leavesOutTheTitles)
{
    sheet.showTitles = false;
    const GridLayout areas = layout({}, sheet);
    EXPECT_EQ(areas.columnTitles, None);
    EXPECT_EQ(areas.rowTitles, None);
    EXPECT_EQ(areas.cornerBox, None);
    EXPECT_EQ(areas.cellArea, areas.gridArea);
}

TEST_F(LayoutTest, zoomsTheTitles)
{
    const struct {
        int zoom, left, top;
    } cases[] = {
        {100, 26, 14},
        {70,  18, 9 },
        {150, 39, 21},
        {25,  6,  3 },
    };
    for (const auto& c : cases) {
        sheet.zoom = c.zoom;
        const GridLayout areas = layout({.formulaBar = false}, sheet);
        EXPECT_EQ(areas.cellArea, (Rect{c.left, c.top, 225, 305})) << c.zoom;
    }
}

TEST_F(LayoutTest, givesTheGridAllInFullScreen)
{
    const GridLayout areas = layout({.formulaBar = false, .fullScreen = true}, sheet);
    EXPECT_EQ(areas.gridArea, (Rect{0, 0, 240, 320}));
    EXPECT_EQ(areas.cellArea, areas.gridArea);
    for (const Rect& gone :
         {areas.columnTitles, areas.rowTitles, areas.cornerBox, areas.tabButtons, areas.tabArea,
          areas.tabSplitter, areas.horizontalBar, areas.verticalBar})
        EXPECT_EQ(gone, None);
    EXPECT_EQ(layout({.fullScreen = true}, sheet).gridArea, (Rect{0, 17, 240, 320}))
        << "the formula bar stays";
}

TEST_F(LayoutTest, keepsTheSplitterWithinItsLimits)
{
    const struct {
        const char* behaviour;
        int divider, splitter;
    } cases[] = {
        {"anywhere between",           100,    100},
        {"not too far left",           31,     32 },
        {"at the left limit",          32,     32 },
        {"at the right limit",         193,    193},
        {"not too far right",          194,    193},
        {"wherever it was dragged to", -30000, 32 },
        {"in either direction",        30000,  193},
    };
    for (const auto& c : cases)
        EXPECT_EQ(layout({.tabDivider = c.divider}, sheet).tabSplitter.left, c.splitter)
            << c.behaviour;
    EXPECT_EQ(layout({.tabDivider = 32}, sheet).tabArea, (Rect{38, 305, 38, 320}))
        << "the buttons of the tabs reach beyond the splitter";
}

TEST_F(LayoutTest, survivesAnyWindow)
{
    sheet.zoom = 300;
    for (int width : {0, 1, 14, 16, 40, 79, 80, 2000}) {
        for (int height : {0, 1, 16, 17, 33, 75, 2000}) {
            const GridLayout areas = layout(
                {
                    .client = {0, 0, width, height}
            },
                sheet);
            for (const Rect& area :
                 {areas.formulaBar, areas.windowArea, areas.gridArea, areas.columnTitles,
                  areas.rowTitles, areas.cornerBox, areas.cellArea, areas.tabButtons, areas.tabArea,
                  areas.tabSplitter, areas.horizontalBar, areas.verticalBar}) {
                EXPECT_GE(area.width(), 0) << width << " by " << height;
                EXPECT_GE(area.height(), 0) << width << " by " << height;
            }
        }
    }
}

// --- Which cell is where

TEST_F(GridTest, findsCellsByPixels)
{
    const struct {
        const char* behaviour;
        int x, column, y, row;
    } cases[] = {
        {"the first pixel",          100, 0, 200, 0 },
        {"the last of a cell",       149, 0, 219, 0 },
        {"the first of the next",    150, 1, 220, 1 },
        {"the last in view",         349, 4, 399, 9 },
        {"beyond the view",          350, 5, 400, 10},
        {"before the first is none", 99,  0, 199, 0 },
        {"however far",              -50, 0, -50, 0 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(view().columnAtX(c.x), c.column) << c.behaviour;
        EXPECT_EQ(view().rowAtY(c.y), c.row) << c.behaviour;
    }
}

TEST_F(GridTest, walksBackFromAScrolledView)
{
    sheet.leftColumn = 3;
    sheet.topRow = 10;
    const struct {
        int x, column, y, row;
    } cases[] = {
        {100,   3, 200,   10},
        {99,    2, 199,   9 },
        {50,    2, 180,   9 },
        {49,    1, 179,   8 },
        {-1000, 0, -1000, 0 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(view().columnAtX(c.x), c.column);
        EXPECT_EQ(view().rowAtY(c.y), c.row);
    }
}

TEST_F(GridTest, passesHiddenOnesOver)
{
    hideColumns(1, 2);
    hideRows(1, 3);
    EXPECT_EQ(view().columnAtX(149), 0);
    EXPECT_EQ(view().columnAtX(150), 3);
    EXPECT_EQ(view().rowAtY(220), 4);
    EXPECT_EQ(view().xOfColumn(1), 150);
    EXPECT_EQ(view().xOfColumn(3), 150);
    EXPECT_EQ(view().lastVisibleColumn(), 6);
    EXPECT_EQ(view().columns.pixels(1), 0);
    sheet.leftColumn = 3;
    EXPECT_EQ(view().columnAtX(99), 0) << "and backward";
}

TEST_F(GridTest, endsWithTheSheet)
{
    sheet.leftColumn = 254;
    sheet.topRow = 16380;
    EXPECT_EQ(view().columnAtX(199), 255);
    EXPECT_EQ(view().columnAtX(200), 256) << "nothing is behind the last";
    EXPECT_EQ(view().rowAtY(10000), 16384);
    EXPECT_EQ(view().lastVisibleColumn(), 255);
    EXPECT_EQ(view().lastVisibleRow(), 16383);
    EXPECT_EQ(view().visibleColumnCount(254), 5) << "a page is as long as anywhere";
    EXPECT_EQ(view().visibleRowCount(16380), 10);
    hideColumns(255, 255);
    EXPECT_EQ(view().columnAtX(150), 256);
}

TEST_F(GridTest, findsEdges)
{
    sheet.leftColumn = 3;
    EXPECT_EQ(view().xOfColumn(3), 100);
    EXPECT_EQ(view().xOfColumn(4), 150);
    EXPECT_EQ(view().xOfColumn(8), 350);
    EXPECT_EQ(view().xOfColumn(2), 50) << "a column before the first lies to the left";
    EXPECT_EQ(view().xOfColumn(0), -50);
    EXPECT_EQ(view().xOfColumn(200), 400) << "one step past the right edge is far enough";
    EXPECT_EQ(view().xOfColumn(200, WalkOn), 100 + 197 * 50);
    EXPECT_EQ(view().yOfRow(16383), 420);
    EXPECT_EQ(view().yOfRow(16383, WalkOn), 200 + 16383 * 20);
}

TEST_F(GridTest, countsWhatIsInView)
{
    const struct {
        const char* behaviour;
        int zoom, columns, lastColumn, rows, lastRow;
    } cases[] = {
        {"exactly five and ten",    100, 5,  4, 10, 9 },
        {"smaller ones, part seen", 90,  5,  5, 11, 11},
        {"half the size",           50,  10, 9, 20, 19},
        {"twice the size",          200, 2,  2, 5,  4 },
        {"hardly anything",         300, 1,  1, 3,  3 },
    };
    for (const auto& c : cases) {
        sheet.zoom = c.zoom;
        EXPECT_EQ(view().visibleColumnCount(0), c.columns) << c.behaviour;
        EXPECT_EQ(view().lastVisibleColumn(), c.lastColumn) << c.behaviour;
        EXPECT_EQ(view().visibleRowCount(0), c.rows) << c.behaviour;
        EXPECT_EQ(view().lastVisibleRow(), c.lastRow) << c.behaviour;
    }
    sheet.zoom = 100;
    hideRows(2, 4);
    EXPECT_EQ(view().visibleRowCount(0), 13) << "hidden rows take no room";
    width(0, 600);
    EXPECT_EQ(view().visibleColumnCount(0), 1) << "one is always there, if only a part of it";
}

TEST_F(GridTest, cutsZoomedPixels)
{
    const struct {
        int zoom, length, pixels;
    } cases[] = {
        {100, 63,         63       },
        {90,  63,         56       },
        {70,  17,         11       },
        {25,  3,          0        },
        {300, 63,         189      },
        {0,   63,         0        },
        {-5,  63,         0        },
        {300, 2147483647, PixelsMax},
    };
    for (const auto& c : cases)
        EXPECT_EQ(zoomed(c.zoom, c.length), c.pixels) << c.zoom << " of " << c.length;
}

// --- Frozen columns and rows

TEST_F(GridTest, keepsFrozenColumnsOnTheScreen)
{
    freeze(0, 1, 0, 2);
    sheet.leftColumn = 10;
    sheet.topRow = 50;
    EXPECT_EQ(view().columnAtX(100), 0);
    EXPECT_EQ(view().columnAtX(199), 1);
    EXPECT_EQ(view().columnAtX(200), 10) << "behind the frozen ones the scrolled ones go on";
    EXPECT_EQ(view().columnAtX(250), 11);
    EXPECT_EQ(view().rowAtY(259), 2);
    EXPECT_EQ(view().rowAtY(260), 50);
    EXPECT_EQ(view().xOfColumn(1), 150);
    EXPECT_EQ(view().xOfColumn(10), 200);
    EXPECT_EQ(view().xOfColumn(12), 300);
    EXPECT_EQ(view().xOfColumn(9), 150) << "scrolled away under the frozen ones";
    EXPECT_EQ(view().visibleColumnCount(10), 3);
    EXPECT_EQ(view().visibleRowCount(50), 7);
    EXPECT_EQ(view().lastVisibleColumn(), 12);
    EXPECT_EQ(view().lastVisibleRow(), 56);
}

TEST_F(GridTest, freezesFromWhereTheViewStood)
{
    freeze(3, 4, 0, -1);
    sheet.leftColumn = 5;
    EXPECT_EQ(view().columnAtX(100), 3);
    EXPECT_EQ(view().columnAtX(99), 2) << "what was left of it is found by walking back";
    EXPECT_EQ(view().columnAtX(200), 5);
    EXPECT_EQ(view().xOfColumn(2), 50);
    EXPECT_FALSE(view().rows.isFrozen());
    EXPECT_EQ(view().rowAtY(200), 0);
}

TEST_F(GridTest, neverScrollsFrozenColumnsIntoView)
{
    freeze(0, 1, 0, -1);
    sheet.leftColumn = 0; // as no command leaves it
    EXPECT_EQ(view().columns.scrollFirst(), 2);
    EXPECT_EQ(view().columnAtX(200), 2);
}

TEST_F(GridTest, takesFrozenColumnsOutOfOrderForNone)
{
    sheet.titleColumns = true;
    sheet.titles = {0, 5, 0, 3};
    EXPECT_FALSE(view().columns.isFrozen());
    EXPECT_EQ(view().columnAtX(349), 4);
    EXPECT_EQ(view().panes().size(), 1U);
}

TEST_F(GridTest, survivesFrozenColumnsWiderThanTheView)
{
    freeze(0, 9, 0, 20);
    sheet.leftColumn = 10;
    sheet.topRow = 21;
    EXPECT_EQ(view().visibleColumnCount(10), 1);
    EXPECT_EQ(view().lastVisibleColumn(), 4);
    EXPECT_EQ(view().lastVisibleRow(), 9);
    EXPECT_EQ(view().panes().size(), 1U);
    freeze(0, 255, 0, 16383);
    EXPECT_EQ(view().columns.scrollFirst(), 255);
    EXPECT_EQ(view().columnAtX(349), 4);
    EXPECT_EQ(view().columnAtX(100000), 256);
}

TEST_F(GridTest, cutsTheGridInPanes)
{
    const struct {
        const char* behaviour;
        int lastColumn, lastRow; // frozen from the first on
        std::vector<Pane> panes;
    } cases[] = {
        {"one when nothing is frozen",                                       -1, -1, {{Area, {0, 0, 9, 4}}}                                                      },
        {"two for frozen columns",
         0,                                                                      -1,
         {{{100, 200, 150, 400}, {0, 0, 9, 0}}, {{150, 200, 350, 400}, {0, 1, 9, 4}}}                                                                            },
        {"two for frozen rows",
         -1,
         0,                                                                          {{{100, 200, 350, 220}, {0, 0, 0, 4}}, {{100, 220, 350, 400}, {1, 0, 9, 4}}}},
        {"four for both, the corner first, then the rows, then the columns",
         1,                                                                      0,
         {{{100, 200, 200, 220}, {0, 0, 0, 1}},
          {{200, 200, 350, 220}, {0, 2, 0, 4}},
          {{100, 220, 200, 400}, {1, 0, 9, 1}},
          {{200, 220, 350, 400}, {1, 2, 9, 4}}}                                                                                                                  },
    };
    for (const auto& c : cases) {
        freeze(0, c.lastColumn, 0, c.lastRow);
        const std::vector<Pane> panes = view().panes();
        ASSERT_EQ(panes.size(), c.panes.size()) << c.behaviour;
        for (std::size_t i = 0; i < panes.size(); ++i) {
            EXPECT_EQ(panes[i].rect, c.panes[i].rect) << c.behaviour << " " << i;
            EXPECT_EQ(panes[i].range, c.panes[i].range) << c.behaviour << " " << i;
        }
    }
}

// --- The rectangle of a range

TEST_F(GridTest, framesARange)
{
    sheet.leftColumn = 2;
    sheet.topRow = 10;
    const struct {
        const char* behaviour;
        RangeRef range; // row, column, row, column
        Rect rect;      // empty for nothing
    } cases[] = {
        {"one cell",                    {10, 2, 10, 2},     {100, 200, 150, 220}},
        {"several",                     {11, 3, 12, 4},     {150, 220, 250, 260}},
        {"all in view",                 {10, 2, 19, 6},     {100, 200, 350, 400}},
        {"beyond the view to the left", {10, 1, 10, 2},     {95, 200, 150, 220} },
        {"to the right",                {10, 6, 10, 7},     {300, 200, 355, 220}},
        {"upward and downward",         {9, 2, 20, 2},      {100, 195, 150, 405}},
        {"the whole sheet",             {0, 0, 16383, 255}, {95, 195, 355, 405} },
        {"left of the view",            {10, 0, 10, 1},     None                },
        {"right of it",                 {10, 7, 10, 9},     None                },
        {"above it",                    {0, 2, 9, 2},       None                },
        {"below it",                    {20, 2, 30, 2},     None                },
    };
    for (const auto& c : cases) {
        Rect rect;
        EXPECT_EQ(view().cellRect(c.range, rect), !c.rect.isEmpty()) << c.behaviour;
        if (!c.rect.isEmpty()) {
            EXPECT_EQ(rect, c.rect) << c.behaviour;
        }
    }
    hideColumns(3, 3);
    Rect rect;
    EXPECT_FALSE(view().cellRect({10, 3, 10, 3}, rect)) << "nothing is seen of a hidden column";
}

TEST_F(GridTest, framesARangeAmongFrozenColumns)
{
    freeze(0, 1, 0, -1);
    sheet.leftColumn = 10;
    const struct {
        const char* behaviour;
        RangeRef range;
        int left, right; // equal for nothing
    } cases[] = {
        {"a frozen column",                 {0, 1, 0, 1},   150, 200},
        {"a scrolled one",                  {0, 10, 0, 10}, 200, 250},
        {"across the seam",                 {0, 1, 0, 10},  150, 250},
        {"from under the frozen ones",      {0, 5, 0, 10},  195, 250},
        {"from the frozen ones to under",   {0, 1, 0, 5},   150, 200},
        {"under the frozen ones, not seen", {0, 3, 0, 9},   0,   0  },
    };
    for (const auto& c : cases) {
        Rect rect;
        EXPECT_EQ(view().cellRect(c.range, rect), c.left != c.right) << c.behaviour;
        if (c.left != c.right) {
            EXPECT_EQ(rect.left, c.left) << c.behaviour;
            EXPECT_EQ(rect.right, c.right) << c.behaviour;
        }
    }
}

// --- Scrolling

TEST_F(GridTest, scrollsOnlyAsFarAsNeeded)
{
    const struct {
        const char* behaviour;
        int leftColumn, column, margin, target;
    } cases[] = {
        {"a cell in view stays",                  0,   3,   0, 0  },
        {"the last in view as well",              0,   4,   0, 0  },
        {"but not if one more is to be seen",     0,   4,   1, 1  },
        {"the next one becomes the last in view", 0,   5,   0, 1  },
        {"with one more behind it",               0,   5,   1, 2  },
        {"far away",                              0,   100, 0, 96 },
        {"to the left only as far as the cell",   50,  49,  0, 49 },
        {"however far",                           50,  3,   0, 3  },
        {"and there no margin is kept",           50,  49,  1, 49 },
        {"the last column",                       0,   255, 0, 251},
        {"with a margin, white beyond the sheet", 0,   255, 1, 252},
        {"the first",                             200, 0,   0, 0  },
    };
    for (const auto& c : cases) {
        sheet.leftColumn = c.leftColumn;
        EXPECT_EQ(view().columns.scrolledTo(c.column, c.margin), c.target) << c.behaviour;
    }
}

TEST_F(GridTest, neverScrollsTheCellItselfAway)
{
    width(7, 600);
    EXPECT_EQ(view().columns.scrolledTo(7, 1), 7);
    sheet.leftColumn = 7;
    EXPECT_EQ(view().columns.scrolledTo(7, 1), 7);
    EXPECT_EQ(view().columns.scrolledTo(8, 0), 8);
}

TEST_F(GridTest, scrollsFurtherWhereFewerFit)
{
    for (int column = 5; column < 10; ++column)
        width(column, 100);
    EXPECT_EQ(view().columns.scrolledTo(9, 0), 8) << "two wide ones fill the view";
    hideRows(10, 1000);
    EXPECT_EQ(view().visibleRowCount(0), 1001);
    EXPECT_EQ(view().rows.scrolledTo(3000, 0), 2991);
}

TEST_F(GridTest, skipsHiddenOnesWhenScrolling)
{
    hideColumns(1, 3);
    // Columns 0 and 4 to 7 are in view.
    EXPECT_EQ(view().columns.scrolledTo(8, 0), 4);
    sheet.leftColumn = 6;
    EXPECT_EQ(view().columns.scrolledTo(3, 0), 4);
    hideColumns(200, 255);
    EXPECT_EQ(view().columns.scrolledTo(255, 0), 255) << "there is nothing to skip to";
}

TEST_F(GridTest, scrollsBesideFrozenColumns)
{
    freeze(0, 1, 0, -1);
    const struct {
        const char* behaviour;
        int leftColumn, column, target;
    } cases[] = {
        {"three columns fit",                   2,  4, 2},
        {"the fourth scrolls",                  2,  5, 3},
        {"back to the first that scrolls",      10, 2, 2},
        {"all the way back to a frozen column", 10, 0, 2},
        {"and to the other one",                10, 1, 2},
    };
    for (const auto& c : cases) {
        sheet.leftColumn = c.leftColumn;
        EXPECT_EQ(view().columns.scrolledTo(c.column, 0), c.target) << c.behaviour;
    }
    freeze(3, 4, 0, -1);
    sheet.leftColumn = 9;
    EXPECT_EQ(view().columns.scrolledTo(1, 0), 5)
        << "what lies before the frozen ones cannot be shown";
}

TEST_F(GridTest, stepsOverHiddenOnes)
{
    hideColumns(0, 0);
    hideColumns(3, 4);
    hideColumns(250, 255);
    hideRows(5, 6);
    const struct {
        const char* behaviour;
        int column, direction, target;
    } cases[] = {
        {"the next",                             1,   1,  2  },
        {"over the hidden ones",                 2,   1,  5  },
        {"and back",                             5,   -1, 2  },
        {"hidden ones up to the edge: it stays", 249, 1,  249},
        {"at the other edge, too",               1,   -1, 1  },
        {"from a hidden one",                    4,   1,  5  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(view().columns.step(c.column, c.direction), c.target) << c.behaviour;
    EXPECT_EQ(view().rows.step(4, 1), 7);
    EXPECT_EQ(view().rows.step(16383, 1), 16383);
    EXPECT_EQ(view().rows.step(0, -1), 0);
}

TEST(VerticalScrollRange, followsTheData)
{
    const struct {
        const char* behaviour;
        int present, lastRow, topRow, range;
    } cases[] = {
        {"it stays while the position is near its end", 100,   5,     50,    100  },
        {"at its end",                                  100,   5,     100,   100  },
        {"passing it, it follows",                      100,   5,     101,   201  },
        {"or the data",                                 100,   3000,  101,   3100 },
        {"more than a hundred below it, it shrinks",    300,   5,     199,   299  },
        {"a hundred below it, it stays",                300,   5,     200,   300  },
        {"to the data again",                           16383, 20,    0,     120  },
        {"never beyond the sheet",                      100,   16300, 16300, 16383},
    };
    for (const auto& c : cases)
        EXPECT_EQ(verticalScrollRange(c.present, c.lastRow, c.topRow), c.range) << c.behaviour;
}

} // namespace
} // namespace vorn
