#include "shell/hittest.h"

#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {

static void PrintTo(const Place& place, std::ostream* out)
{
    *out << "kind " << static_cast<int>(place.kind) << " column " << place.column << " row "
         << place.row;
}

namespace {

using enum PlaceKind;

// Columns begin at 26 and are 63 wide, rows begin at 31 and are 17 high.
class HitTest : public testing::Test {
protected:
    HitTest()
    {
        session.app.clientArea = {0, 0, 400, 320};
        session.endMessage();
    }
    void hide(int first, int last) { session.sheet().columns.setColumnHidden(first, last, true); }
    void freeze(int firstColumn, int firstRow, int columns, int rows)
    {
        Sheet& sheet = session.sheet();
        sheet.titleColumns = sheet.titleRows = true;
        sheet.titles.set(firstColumn, firstRow, columns, rows);
    }
    // What lies at a place of the column titles, as "edge B" or "title C".
    static std::string across(int x, Pointer pointer = Pointer::Pen)
    {
        const Place place = placeAt(x, 20, pointer);
        const bool edge = place.kind == ColumnEdge;
        EXPECT_TRUE(edge || place.kind == ColumnTitle) << x;
        return (edge ? "edge " : "title ") + Session::narrow(columnName(place.column));
    }
    static std::string down(int y, Pointer pointer = Pointer::Pen)
    {
        const Place place = placeAt(10, y, pointer);
        const bool edge = place.kind == RowEdge;
        EXPECT_TRUE(edge || place.kind == RowTitle) << y;
        return (edge ? "edge " : "title ") + std::to_string(place.row + 1);
    }

    Session session;
};

TEST_F(HitTest, knowsTheGrid)
{
    const struct {
        const char* behaviour;
        int x, y;
        Place place;
    } cases[] = {
        {"the corner box",              0,   17,  {Corner, 0, 0}     },
        {"to its last pixel",           25,  30,  {Corner, 0, 0}     },
        {"a column title",              57,  17,  {ColumnTitle, 0, 0}},
        {"another",                     120, 30,  {ColumnTitle, 1, 0}},
        {"a row title",                 0,   39,  {RowTitle, 0, 0}   },
        {"another",                     25,  57,  {RowTitle, 0, 1}   },
        {"the first cell",              26,  31,  {Cell, 0, 0}       },
        {"a cell",                      100, 60,  {Cell, 1, 1}       },
        {"its first pixel",             89,  48,  {Cell, 1, 1}       },
        {"the last pixel of the cells", 384, 304, {Cell, 5, 16}      },
        {"the editor",                  200, 8,   {Editor, 0, 0}     },
        {"outside",                     -1,  -1,  {}                 },
        {"left of the cells",           -1,  60,  {}                 },
        {"between both bars",           390, 310, {}                 },
    };
    session.select(u"Z99");
    for (const auto& c : cases) {
        const Place place = placeAt(c.x, c.y);
        EXPECT_EQ(place.kind, c.place.kind) << c.behaviour;
        if (c.place.kind == Cell || c.place.kind == ColumnTitle) {
            EXPECT_EQ(place.column, c.place.column) << c.behaviour;
        }
        if (c.place.kind == Cell || c.place.kind == RowTitle) {
            EXPECT_EQ(place.row, c.place.row) << c.behaviour;
        }
    }
}

TEST_F(HitTest, findsNothingWhereNothingIs)
{
    const Place nothing;
    session.app.clientArea = {0, 0, 10, 10};
    for (const int at : {0, 5, 9, 100})
        EXPECT_EQ(placeAt(at, at).kind == Cell, false) << at;
    session.app.close();
    EXPECT_EQ(placeAt(100, 60), nothing);
    EXPECT_EQ(pointerShapeAt(100, 60), PointerShape::Arrow);
}

TEST_F(HitTest, findsTheEditorOfACellOverEverything)
{
    session.app.formulaBarVisible = false;
    session.select(u"B2");
    EXPECT_EQ(placeAt(100, 8).kind, ColumnTitle) << "the bar is gone, the grid is higher up";
    EXPECT_EQ(placeAt(100, 38).kind, Cell);
    editActiveCell();
    session.endMessage();
    EXPECT_EQ(placeAt(100, 38).kind, Editor);
    EXPECT_EQ(placeAt(384, 38).kind, Editor) << "to the right end of the grid";
    EXPECT_EQ(placeAt(88, 38).kind, Cell);
    EXPECT_EQ(placeAt(100, 48).kind, Cell);
    cancelEdit();
    EXPECT_EQ(placeAt(100, 38).kind, Cell);
}

TEST_F(HitTest, shrinksTitlesAndCellsWithTheZoom)
{
    session.sheet().zoom = 50;
    EXPECT_EQ(placeAt(12, 23).kind, Corner);
    EXPECT_EQ(across(13 + 31), "edge A");
    EXPECT_EQ(across(13 + 15), "title A");
    EXPECT_EQ(down(24 + 8), "edge 1");
    session.app.fullScreen = true;
    EXPECT_EQ(placeAt(12, 23).kind, Cell) << "there are no titles in full screen";
}

// --- Edges

TEST_F(HitTest, takesAnEdgeWithinFourPixels)
{
    EXPECT_EQ(across(84), "title A");
    for (int x = 85; x <= 93; ++x)
        EXPECT_EQ(across(x), "edge A") << x;
    EXPECT_EQ(across(94), "title B");
    EXPECT_EQ(across(26), "title A") << "nothing ends where the sheet begins";
}

TEST_F(HitTest, takesTheEdgeOfARowWithinThree)
{
    EXPECT_EQ(down(44), "title 1");
    for (int y = 45; y <= 51; ++y)
        EXPECT_EQ(down(y), "edge 1") << y;
    EXPECT_EQ(down(52), "title 2");
    EXPECT_EQ(down(31), "title 1");
}

TEST_F(HitTest, takesTheNearerEdgeOfANarrowColumn)
{
    session.sheet().columns.setColumnWidth(1, 1, 220); // 6 pixels
    EXPECT_EQ(across(88), "edge A");
    EXPECT_EQ(across(91), "edge A");
    EXPECT_EQ(across(92), "edge B") << "in the middle its own";
    EXPECT_EQ(across(95), "edge B");
    EXPECT_EQ(across(99), "edge B");
    EXPECT_EQ(across(100), "title C");
    session.sheet().columns.setColumnWidth(0, 0, 220);
    EXPECT_EQ(across(26), "title A") << "the first one has one edge only";
    EXPECT_EQ(across(28), "edge A");
}

TEST_F(HitTest, tellsHiddenColumnsFromTheOneThatIsSeen)
{
    const struct {
        const char* behaviour;
        int firstHidden, lastHidden, leftColumn;
        int x;
        const char* place;
    } cases[] = {
        {"left of the boundary it is the column seen there", 1,   1,   0,   88,  "edge A"  },
        {"right of it the hidden one",                       1,   1,   0,   89,  "edge B"  },
        {"within reach",                                     1,   1,   0,   93,  "edge B"  },
        {"and no further",                                   1,   1,   0,   94,  "title C" },
        {"of several the last",                              1,   3,   0,   90,  "edge D"  },
        {"the first column of the sheet",                    0,   0,   1,   26,  "edge A"  },
        {"also where the view begins with it",               0,   0,   0,   30,  "edge A"  },
        {"and no further",                                   0,   0,   1,   31,  "title B" },
        {"before a view that is scrolled",                   1,   1,   2,   26,  "edge B"  },
        {"what is scrolled away cannot be taken",            9,   9,   2,   26,  "title C" },
        {"the last column of the sheet, from the left",      255, 255, 254, 88,  "edge IU" },
        {"and from the right",                               255, 255, 254, 89,  "edge IV" },
        {"behind the sheet",                                 9,   9,   254, 156, "edge IV" },
        {"and no further",                                   9,   9,   254, 157, "title IV"},
    };
    for (const auto& c : cases) {
        session.sheet().columns.resetColumns(0, LastColumn);
        hide(c.firstHidden, c.lastHidden);
        session.sheet().leftColumn = c.leftColumn;
        EXPECT_EQ(across(c.x), c.place) << c.behaviour;
    }
}

TEST_F(HitTest, tellsHiddenRowsFromTheOneThatIsSeen)
{
    for (const int row : {1, 2})
        session.sheet().setRowHidden(row, true);
    EXPECT_EQ(down(47), "edge 1");
    EXPECT_EQ(down(48), "edge 3");
    EXPECT_EQ(down(52), "title 4");
}

TEST_F(HitTest, knowsWhatEndsAtTheFrozenBorder)
{
    freeze(0, 0, 2, 1);
    session.sheet().leftColumn = 5;
    session.sheet().topRow = 40;
    EXPECT_EQ(across(151), "edge B");
    EXPECT_EQ(across(152), "edge B") << "and not E, which is scrolled away";
    EXPECT_EQ(across(160), "title F");
    EXPECT_EQ(down(48), "edge 1");
    hide(4, 4);
    EXPECT_EQ(across(151), "edge B");
    EXPECT_EQ(across(152), "edge E") << "which is hidden before the first that scrolls";
    freeze(2, 0, 2, 1);
    hide(1, 1);
    EXPECT_EQ(across(26), "title C") << "what lies before the frozen ones cannot be shown";
}

TEST_F(HitTest, leavesAProtectedSheetAsItIs)
{
    EXPECT_EQ(across(89), "edge A");
    EXPECT_EQ(placeAt(89, 48).kind, FillHandle);
    for (const bool wholeWorkbook : {false, true}) {
        session.sheet().protectedSheet = !wholeWorkbook;
        workbook->protectedWorkbook = wholeWorkbook;
        EXPECT_EQ(across(88), "title A");
        EXPECT_EQ(across(89), "title B");
        EXPECT_EQ(down(48), "title 2");
        EXPECT_EQ(placeAt(89, 48), (Place{Cell, 1, 1}));
    }
}

// --- The handle

TEST_F(HitTest, putsTheHandleBeforeTheCells)
{
    for (const auto& [x, y] : {
             Point{87, 46},
             Point{91, 46},
             Point{87, 50},
             Point{91, 50}
    })
        EXPECT_EQ(placeAt(x, y).kind, FillHandle) << x << ' ' << y;
    for (const auto& [x, y] : {
             Point{86, 46},
             Point{92, 46},
             Point{87, 45},
             Point{87, 51}
    })
        EXPECT_EQ(placeAt(x, y).kind, Cell) << x << ' ' << y;
    session.select(u"B2", u"C3");
    EXPECT_EQ(placeAt(89, 48).kind, Cell);
    EXPECT_EQ(placeAt(215, 82).kind, FillHandle);
}

TEST_F(HitTest, hasNoHandleWhilePointing)
{
    session.type(u"=");
    ASSERT_TRUE(placeAt(89, 48).kind == FillHandle);
    session.key(KeyDown);
    ASSERT_TRUE(session.app.pointMode);
    EXPECT_EQ(placeAt(89, 48).kind, Cell);
    EXPECT_EQ(placeAt(89, 65).kind, Cell) << "what is pointed at has none either";
    EXPECT_EQ(across(89), "edge A") << "edges are there";
}

// --- Fingers

TEST_F(HitTest, letsAFingerMissEdgesAndKeepsTheMiddleOfTitles)
{
    constexpr Pointer Finger = Pointer::Finger;
    EXPECT_EQ(across(76, Finger), "title A");
    EXPECT_EQ(across(77, Finger), "edge A");
    EXPECT_EQ(across(101, Finger), "edge A");
    EXPECT_EQ(across(102, Finger), "title B");
    EXPECT_EQ(down(42, Finger), "title 1");
    EXPECT_EQ(down(43, Finger), "edge 1");
    EXPECT_EQ(down(53, Finger), "edge 1");
    EXPECT_EQ(down(54, Finger), "title 2");
    // 20 pixels: a third at each end.
    session.sheet().columns.setColumnWidth(1, 1, 731);
    EXPECT_EQ(across(95, Finger), "edge A");
    EXPECT_EQ(across(96, Finger), "title B");
    EXPECT_EQ(across(102, Finger), "title B");
    EXPECT_EQ(across(103, Finger), "edge B");
    session.sheet().protectedSheet = true;
    EXPECT_EQ(across(89, Finger), "title B");
}

TEST_F(HitTest, letsAFingerMissTheHandleAndKeepsTheMiddleOfCells)
{
    session.select(u"B2"); // its corner is at 152, 65
    const struct {
        const char* behaviour;
        int x, y;
        PlaceKind kind;
    } cases[] = {
        {"on it",                      152, 65, FillHandle},
        {"left of it",                 140, 65, FillHandle},
        {"further left",               139, 65, Cell      },
        {"right of it",                164, 65, FillHandle},
        {"further right",              165, 65, Cell      },
        {"above it",                   152, 60, FillHandle},
        {"further above",              152, 59, Cell      },
        {"below it",                   152, 70, FillHandle},
        {"further below",              152, 71, Cell      },
        {"the middle of its own cell", 120, 56, Cell      },
        {"of the one beside it",       183, 56, Cell      },
        {"of the one below",           120, 73, Cell      },
        {"of the one across",          183, 73, Cell      },
    };
    for (const auto& c : cases)
        EXPECT_EQ(placeAt(c.x, c.y, Pointer::Finger).kind, c.kind) << c.behaviour;
    session.sheet().protectedSheet = true;
    EXPECT_EQ(placeAt(152, 65, Pointer::Finger).kind, Cell);
}

// --- The shape of the pointer

TEST_F(HitTest, showsWhatAPlaceIsFor)
{
    const struct {
        int x, y;
        PointerShape shape;
    } cases[] = {
        {100, 60,  PointerShape::Cross     },
        {5,   20,  PointerShape::Arrow     },
        {57,  24,  PointerShape::Arrow     },
        {89,  24,  PointerShape::ColumnSize},
        {10,  39,  PointerShape::Arrow     },
        {10,  48,  PointerShape::RowSize   },
        {89,  48,  PointerShape::Fill      },
        {200, 8,   PointerShape::Text      },
        {390, 310, PointerShape::Arrow     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(pointerShapeAt(c.x, c.y), c.shape) << c.x << ' ' << c.y;
}

TEST_F(HitTest, keepsTheShapeOfADrag)
{
    const struct {
        int x, y;
        PointerShape shape;
    } cases[] = {
        {100, 60, PointerShape::Cross     },
        {57,  24, PointerShape::Arrow     },
        {89,  24, PointerShape::ColumnSize},
        {10,  48, PointerShape::RowSize   },
        {89,  48, PointerShape::Fill      },
    };
    for (const auto& c : cases) {
        session.select(u"A1");
        penDown(c.x, c.y);
        EXPECT_EQ(pointerShapeAt(200, 8), c.shape) << c.x << ' ' << c.y;
        EXPECT_EQ(pointerShapeAt(5, 500), c.shape) << c.x << ' ' << c.y;
        penLost();
        EXPECT_EQ(pointerShapeAt(200, 8), PointerShape::Text);
    }
}

} // namespace
} // namespace vorn
