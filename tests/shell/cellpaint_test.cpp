#include "shell/cellpaint.h"

#include "support/dice.h"
#include "support/paintedsheet.h"
#include "support/pixelcanvas.h"

#include <algorithm>

namespace vorn {
namespace {

class CellPaint : public PaintedSheet {
protected:
    Lines clips() const { return painted().having("clip "); }

    // The black fills at the end of all, behind the last pane.
    Lines frozenLines(const Rect& clip = Area) const
    {
        const Lines operations = painted(clip).operations;
        const auto end = std::find(operations.rbegin(), operations.rend(), "pop").base();
        return {end, operations.end()};
    }
};

// --- Panes

TEST_F(CellPaint, paintsOnePaneOfASheetThatIsNotFrozen)
{
    EXPECT_EQ(clips(), Lines{"clip 0,0-250,100"});
    EXPECT_EQ(frozenLines(), Lines{});
}

TEST_F(CellPaint, paintsFrozenPanesBeforeTheOthers)
{
    freeze("A1:A2", true, true);
    EXPECT_EQ(clips(), (Lines{"clip 0,0-50,40", "clip 50,0-250,40", "clip 0,40-50,100",
                              "clip 50,40-250,100"}));
    freeze("A1:A2", false, true);
    EXPECT_EQ(clips(), (Lines{"clip 0,0-250,40", "clip 0,40-250,100"}));
    freeze("A1:A2", true, false);
    EXPECT_EQ(clips(), (Lines{"clip 0,0-50,100", "clip 50,0-250,100"}));
}

TEST_F(CellPaint, takesEachClipBackBeforeTheNextPane)
{
    freeze("A1:A1", true, true);
    int depth = 0;
    for (const std::string& each : painted().operations) {
        depth += each.starts_with("clip ") ? 1 : each == "pop" ? -1 : 0;
        EXPECT_LE(depth, 1) << each;
    }
}

TEST_F(CellPaint, drawsALineBehindWhatIsFrozen)
{
    freeze("A1:A2", true, true);
    EXPECT_EQ(frozenLines(), (Lines{"fill 0,40-250,41 000000", "fill 50,0-51,100 000000"}));
    sheet.topRow = 9;
    sheet.leftColumn = 7;
    EXPECT_EQ(frozenLines(), (Lines{"fill 0,40-250,41 000000", "fill 50,0-51,100 000000"}));
    freeze("A1:A2", false, true);
    EXPECT_EQ(frozenLines(), Lines{"fill 0,40-250,41 000000"});
    freeze("A1:A2", true, false);
    EXPECT_EQ(frozenLines(), Lines{"fill 50,0-51,100 000000"});
}

TEST_F(CellPaint, drawsOnlyThePartOfTheLinesThatIsAskedFor)
{
    freeze("A1:A2", true, true);
    EXPECT_EQ(frozenLines({40, 30, 60, 50}),
              (Lines{"fill 40,40-60,41 000000", "fill 50,30-51,50 000000"}));
    EXPECT_EQ(frozenLines({60, 50, 70, 60}), Lines{});
    freeze("A1:J30", true, true); // all that is seen, so that the lines lie outside
    EXPECT_EQ(frozenLines(), Lines{});
}

TEST_F(CellPaint, paintsFrozenColumnsWhereverTheViewIsScrolled)
{
    cells.put("A3", u"name");
    cells.put("H3", u"12");
    freeze("A1:A1", true, true);
    sheet.leftColumn = 7;
    EXPECT_EQ(texts(),
              (Lines{"2,40-348,59 \"name\" left bottom", "52,40-98,59 \"12\" right bottom"}));
}

TEST_F(CellPaint, cutsATextAtTheEdgeOfItsPane)
{
    cells.put("A3", u"a text that goes on");
    freeze("A1:A1", true, true);
    const Lines operations = painted().operations;
    const auto first = std::find(operations.begin(), operations.end(), "clip 0,20-50,100");
    ASSERT_NE(first, operations.end());
    const auto isText = [](const std::string& each) { return each.starts_with("text 2,40-"); };
    EXPECT_EQ(std::count_if(first, std::find(first, operations.end(), "pop"), isText), 1);
    // In the next pane it goes on, as in a sheet that is not frozen.
    EXPECT_EQ(std::count_if(operations.begin(), operations.end(), isText), 2);
    sheet.leftColumn = 3;
    ASSERT_EQ(texts().size(), 2U);
    EXPECT_TRUE(texts()[1].starts_with("-98,40-")) << "as far left as A then lies";
}

// --- The edge of the sheet

TEST_F(CellPaint, leavesWhiteWhatLiesBehindTheSheet)
{
    sheet.leftColumn = 253;
    sheet.topRow = 16382;
    style("IV16384", {
                         {StyleFill,    10},
                         {StylePattern, 1 }
    });
    PixelCanvas canvas(250, 100);
    paintPanes(canvas, GridView(Area, sheet), Area);
    EXPECT_EQ(canvas.at(120, 25), rgb(255, 0, 0));
    for (const Point& point : {
             Point{160, 5 },
             {5,   50},
             {160, 50},
             {249, 99}
    })
        EXPECT_EQ(canvas.at(point.x, point.y), ColourWhite) << point.x << ',' << point.y;
}

TEST_F(CellPaint, leavesNoPixelUnpainted)
{
    for (const int zoom : {10, 33, 100, 300}) {
        for (const int column : {0, 3, 255}) {
            sheet.zoom = zoom;
            sheet.leftColumn = column;
            sheet.topRow = column * 64;
            PixelCanvas canvas(250, 100);
            paintPanes(canvas, GridView(Area, sheet), Area);
            for (int y = 0; y < 100; ++y) {
                for (int x = 0; x < 250; ++x)
                    ASSERT_NE(canvas.at(x, y), PixelCanvas::Unpainted) << zoom << ' ' << column;
            }
        }
    }
}

TEST_F(CellPaint, paintsNothingOutsideOfWhatIsAskedFor)
{
    cells.put("A1", u"a text that is long enough for all of it");
    const Rect clip = {70, 10, 130, 50};
    PixelCanvas canvas(250, 100);
    paintPanes(canvas, GridView(Area, sheet), clip);
    EXPECT_EQ(canvas.painted() > 0, true);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 250; ++x)
            EXPECT_EQ(canvas.at(x, y) != PixelCanvas::Unpainted, clip.contains(x, y));
    }
    EXPECT_EQ(painted({300, 0, 400, 100}).operations, Lines{});
    EXPECT_EQ(painted({}).operations, Lines{});
}

TEST_F(CellPaint, paintsASheetWhoseRestIsHidden)
{
    for (int row = 2; row < RowCount; ++row)
        sheet.setRowHidden(row, true);
    sheet.columns.setColumnHidden(2, LastColumn, true);
    cells.put("A1", u"1");
    PixelCanvas canvas(250, 100);
    paintPanes(canvas, GridView(Area, sheet), Area);
    EXPECT_EQ(canvas.at(249, 99), ColourWhite);
    EXPECT_EQ(canvas.at(249, 5), ColourWhite);
}

// --- Parts and the whole

// A sheet with all that can be seen in cells, thrown together.
class CellPaintParts : public CellPaint {
protected:
    static constexpr Rect Wide = {7, 5, 307, 205};

    void fillSheet(unsigned seed)
    {
        Dice dice(seed);
        std::vector<int> fonts = {0, 1};
        FontRecord large = workbook->fonts[0];
        large.height = 320;
        large.colour = 12;
        fonts.push_back(workbook->addFont(large));
        for (int row = 0; row < 40; ++row) {
            for (int column = 0; column < 20; ++column)
                fillCell(dice, column, row, fonts);
        }
        for (int each = 0; each < 4; ++each) {
            width(dice.below(15), 5 + dice.below(120));
            sheet.setRowHeight(dice.below(30), 15 * (3 + dice.below(50)), true);
            sheet.columns.setColumnHidden(14 + each, 14 + each, dice.oneIn(2));
            sheet.setRowHidden(dice.below(30), true);
        }
        sheet.columns.setColumnHidden(4, 4, dice.oneIn(2));
        sheet.columns.setColumnStyle(3, 3,
                                     styled(0, {
                                                   {StyleFill,    13},
                                                   {StylePattern, 1 }
        }));
        sheet.filter.start(place("B3:F30"));
        sheet.filter.columns[1].kind = FilterBlanks;
    }

    void fillCell(Dice& dice, int column, int row, const std::vector<int>& fonts)
    {
        constexpr const char16_t* values[] = {
            u"abc",  u"two words", u"12.3456789",
            u"TRUE", u"=1/0",      u"a text that goes on over other cells"};
        const std::u16string name = cellRefToText(column, row, RelativeForm);
        if (dice.oneIn(3))
            cells.put(std::string(name.begin(), name.end()), values[dice.below(6)]);
        if (!dice.oneIn(2))
            return;
        Fields fields = {
            {StyleHorizontal, dice.oneIn(2) ? 0 : dice.below(8)             },
            {StyleVertical,   dice.below(4)                                 },
            {StyleWrap,       dice.oneIn(4) ? 1 : 0                         },
            {StyleFill,       dice.oneIn(3) ? 8 + dice.below(8) : 64        },
            {StylePattern,    dice.below(3)                                 },
            {StyleTopLine,    dice.oneIn(5) ? 1 : 0                         },
            {StyleLeftLine,   dice.oneIn(5) ? 1 : 0                         },
            {StyleRightLine,  dice.oneIn(5) ? 1 : 0                         },
            {StyleBottomLine, dice.oneIn(5) ? 1 : 0                         },
            {StyleFont,       fonts[static_cast<std::size_t>(dice.below(3))]},
        };
        sheet.setCellStyle(column, row, styled(0, fields));
    }

    void expectPartsLikeTheWhole(const char* phrase, int across, int down) const
    {
        const GridView view(Wide, sheet);
        PixelCanvas whole(Wide.right + 10, Wide.bottom + 10);
        paintPanes(whole, view, Wide);
        PixelCanvas parts(whole.width(), whole.height());
        for (int top = Wide.top; top < Wide.bottom; top += down) {
            for (int left = Wide.left; left < Wide.right; left += across)
                paintPanes(parts, view, {left, top, left + across, top + down});
        }
        EXPECT_EQ(difference(whole, parts), "") << phrase << " at " << sheet.zoom << " from "
                                                << sheet.leftColumn << ',' << sheet.topRow;
        EXPECT_TRUE(whole.isBalanced() && parts.isBalanced());
    }

    // What scrolls is moved on the canvas, and only what comes into view and the lowest pixel of
    // the row that was the last are painted.
    void expectMovedLikeTheWhole(int from, int by)
    {
        PixelCanvas moved(Wide.right, Wide.bottom);
        sheet.topRow = from;
        const GridView before(Wide, sheet);
        paintPanes(moved, before, Wide);
        const int bottomLine = before.yOfRow(before.lastVisibleRow() + 1) - 1;
        sheet.topRow = from + by;
        const GridView after(Wide, sheet);
        const int dy = after.yOfRow(from + by) - before.yOfRow(from + by);
        moved.scroll(Wide, 0, dy);
        paintPanes(moved, after, {Wide.left, Wide.bottom + dy, Wide.right, Wide.bottom});
        paintPanes(moved, after, {Wide.left, bottomLine + dy, Wide.right, bottomLine + dy + 1});
        PixelCanvas whole(Wide.right, Wide.bottom);
        paintPanes(whole, after, Wide);
        EXPECT_EQ(difference(whole, moved), "") << "from " << from << " by " << by;
    }

    void expectAllPartsLikeTheWhole() const
    {
        expectPartsLikeTheWhole("columns of one pixel", 1, 1000);
        expectPartsLikeTheWhole("rows of one pixel", 1000, 1);
        expectPartsLikeTheWhole("strips", 37, 1000);
        expectPartsLikeTheWhole("bands", 1000, 29);
        expectPartsLikeTheWhole("tiles", 33, 23);
    }
};

TEST_F(CellPaintParts, lookAsTheyDoInTheWhole)
{
    fillSheet(1);
    expectAllPartsLikeTheWhole();
    sheet.leftColumn = 2;
    sheet.topRow = 3;
    expectAllPartsLikeTheWhole();
}

TEST_F(CellPaintParts, lookAsTheyDoInTheWholeBesideFrozenOnes)
{
    fillSheet(2);
    freeze("A1:B2", true, true);
    expectAllPartsLikeTheWhole();
    sheet.leftColumn = 5;
    sheet.topRow = 9;
    expectAllPartsLikeTheWhole();
}

TEST_F(CellPaintParts, lookAsTheyDoInTheWholeAtAnyZoom)
{
    fillSheet(3);
    for (const int zoom : {10, 47, 85, 150, 300}) {
        sheet.zoom = zoom;
        sheet.leftColumn = zoom % 7;
        expectPartsLikeTheWhole("strips", 37, 1000);
        expectPartsLikeTheWhole("bands", 1000, 29);
        expectPartsLikeTheWhole("tiles", 33, 23);
    }
}

TEST_F(CellPaintParts, lookAsTheyDoInTheWholeAtTheEndOfTheSheet)
{
    cells.put("IU16383", u"a text that goes on over the last cell");
    style("IT16382:IV16384", {
                                 {StyleBottomLine, 1},
                                 {StyleRightLine,  1},
                                 {StyleLeftLine,   1}
    });
    sheet.leftColumn = 252;
    sheet.topRow = 16380;
    expectAllPartsLikeTheWhole();
}

TEST_F(CellPaintParts, lookTheSameWhenTheyAreMoved)
{
    fillSheet(4);
    sheet.defaultRowHeight = 255; // an odd number of pixels
    for (const int from : {0, 3, 30, 57, 130}) {
        for (const int step : {1, 2, 7})
            expectMovedLikeTheWhole(from, step);
    }
}

// --- What it costs

TEST_F(CellPaint, paintsADenseWindowInAFewThousandOperations)
{
    constexpr Rect window = {26, 31, 1265, 785};
    sheet.columns.setDefaultWidth(DefaultColumnWidth);
    sheet.defaultRowHeight = DefaultRowHeight;
    for (int row = 0; row < 60; ++row) {
        for (int column = 0; column < 30; ++column)
            sheet.setCell(column, row, {CellValue::makeNumber(row * 30 + column), 0});
    }
    RecordingCanvas canvas;
    paintPanes(canvas, GridView(window, sheet), window);
    EXPECT_EQ(canvas.count("text"), 20 * 45);
    EXPECT_EQ(canvas.count("fill"), 45);
    EXPECT_EQ(canvas.count("pattern"), 45 + 20);
    EXPECT_LT(canvas.operations.size(), 1100U);
}

TEST_F(CellPaint, paintsALongSheetAsAShortOne)
{
    const auto fill = [this](int columns, int rows) {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column)
                sheet.setCell(column, row, {CellValue::makeNumber(1), 0});
        }
    };
    fill(6, 6);
    const Lines operations = painted().operations;
    fill(50, 16000);
    EXPECT_EQ(painted().operations, operations);
}

TEST_F(CellPaint, paintsAStripForWhatAStripCosts)
{
    for (int row = 0; row < 10; ++row) {
        for (int column = 0; column < 10; ++column)
            sheet.setCell(column, row, {CellValue::makeNumber(1), 0});
    }
    const RecordingCanvas column = painted({101, 0, 149, 100});
    EXPECT_EQ(column.count("text"), 5);
    EXPECT_LE(column.operations.size(), 5U + 5U + 6U + 2U);
    const RecordingCanvas row = painted({0, 41, 250, 59});
    EXPECT_EQ(row.count("text"), 5);
    EXPECT_LE(row.operations.size(), 5U + 1U + 6U + 2U);
    EXPECT_LE(painted({101, 41, 149, 59}).operations.size(), 1U + 1U + 2U + 2U);
}

} // namespace
} // namespace vorn
