#include "shell/rowpaint.h"

#include "shell/filtermark.h"
#include "support/paintedsheet.h"
#include "support/pixelcanvas.h"

namespace vorn {
namespace {

constexpr int Red = 10;
constexpr int Green = 11;

class RowPaint : public PaintedSheet {
protected:
    static constexpr Rect SecondRow = {0, 20, 250, 40};

    RowPaint() { sheet.showGridlines = false; }

    // Fills of the second row that are not black, and those that are.
    Lines fills() const { return fillsOf(SecondRow, false); }
    Lines lines(const Rect& clip = SecondRow) const { return fillsOf(clip, true); }

    Lines fillsOf(const Rect& clip, bool black) const
    {
        Lines found;
        for (const std::string& fill : painted(clip).having("fill ")) {
            if (fill.ends_with(" 000000") == black)
                found.push_back(fill.substr(5, black ? fill.size() - 12 : std::string::npos));
        }
        return found;
    }

    Lines gridlines() const
    {
        Lines found;
        for (const std::string& line : painted(SecondRow).having("pattern ")) {
            EXPECT_TRUE(line.ends_with(" c0c0c0 ffffff")) << line;
            found.push_back(line.substr(8, line.size() - 22));
        }
        return found;
    }

    void colour(std::string_view where, int fill, int pattern = 1)
    {
        style(where, {
                         {StyleFill,    fill   },
                         {StylePattern, pattern}
        });
    }
};

// --- Fills

TEST_F(RowPaint, fillsARowWithoutColoursAtOnce)
{
    EXPECT_EQ(fills(), Lines{"0,20-250,40 ffffff"});
}

TEST_F(RowPaint, fillsInRunsOfOneColour)
{
    colour("B2:C2", Red);
    colour("D2", Green);
    EXPECT_EQ(fills(), (Lines{"0,20-50,40 ffffff", "50,20-150,40 ff0000", "150,20-200,40 00ff00",
                              "200,20-250,40 ffffff"}));
}

TEST_F(RowPaint, fillsOnWhenOnlyTheTextLooksOtherwise)
{
    colour("A2:E2", Red);
    style("C2", {
                    {StyleFont, 1}
    });
    EXPECT_EQ(fills(), Lines{"0,20-250,40 ff0000"});
}

TEST_F(RowPaint, fillsRealPatternsCellByCell)
{
    colour("A2:C2", Red, 2);
    colour("D2:E2", Red, 1);
    EXPECT_EQ(fills(), (Lines{"0,20-50,40 ff0000", "50,20-100,40 ff0000", "100,20-150,40 ff0000",
                              "150,20-250,40 ff0000"}));
}

TEST_F(RowPaint, fillsWhiteWhereThereIsNoPattern)
{
    colour("B2", Red, 0);
    colour("C2:D2", Red + 1, 0);
    EXPECT_EQ(fills(), (Lines{"0,20-50,40 ffffff", "50,20-100,40 ffffff", "100,20-200,40 ffffff",
                              "200,20-250,40 ffffff"}));
}

TEST_F(RowPaint, takesTheStyleOfTheCellThenOfTheRowThenOfTheColumn)
{
    const int red = styled(0, {
                                  {StyleFill,    Red},
                                  {StylePattern, 1  }
    });
    const int green = styled(0, {
                                    {StyleFill,    Green},
                                    {StylePattern, 1    }
    });
    sheet.columns.setColumnStyle(2, 2, red);
    EXPECT_EQ(sheet.rowAt(1), nullptr);
    EXPECT_EQ(fills(),
              (Lines{"0,20-100,40 ffffff", "100,20-150,40 ff0000", "150,20-250,40 ffffff"}));
    sheet.setRowStyle(1, green);
    EXPECT_EQ(fills(), Lines{"0,20-250,40 00ff00"});
    sheet.setCellStyle(4, 1, red);
    EXPECT_EQ(fills(), (Lines{"0,20-200,40 00ff00", "200,20-250,40 ff0000"}));
}

TEST_F(RowPaint, fillsOverHiddenColumns)
{
    colour("B2", Red);
    sheet.columns.setColumnHidden(1, 1, true);
    EXPECT_EQ(fills(), Lines{"0,20-250,40 ffffff"});
}

TEST_F(RowPaint, fillsOnlyColumnsThatAreSeen)
{
    EXPECT_EQ(painted({60, 25, 110, 30}).having("fill "), Lines{"fill 50,20-150,40 ffffff"});
}

// --- Gridlines

TEST_F(RowPaint, drawsGridlinesAtTheRightAndBelow)
{
    sheet.showGridlines = true;
    EXPECT_EQ(gridlines(), (Lines{"0,39-250,40", "49,20-50,40", "99,20-100,40", "149,20-150,40",
                                  "199,20-200,40", "249,20-250,40"}));
    sheet.showGridlines = false;
    EXPECT_EQ(gridlines(), Lines{});
}

TEST_F(RowPaint, leavesFilledCellsWithoutGridlines)
{
    sheet.showGridlines = true;
    colour("A2:B2", Red);
    colour("D2", Green, 0);
    EXPECT_EQ(gridlines(),
              (Lines{"100,39-150,40", "200,39-250,40", "149,20-150,40", "249,20-250,40"}));
}

TEST_F(RowPaint, keepsGridlinesInWhiteCells)
{
    sheet.showGridlines = true;
    colour("A2:E2", 9);
    EXPECT_EQ(gridlines().size(), 6U);
}

TEST_F(RowPaint, drawsOneGridlineForAColumn)
{
    sheet.showGridlines = true;
    colour("B3", Red);
    const Lines found = painted().having("pattern ");
    EXPECT_EQ(std::count(found.begin(), found.end(), "pattern 49,0-50,100 c0c0c0 ffffff"), 1);
    EXPECT_EQ(std::count(found.begin(), found.end(), "pattern 99,0-100,40 c0c0c0 ffffff"), 1);
    EXPECT_EQ(std::count(found.begin(), found.end(), "pattern 99,60-100,100 c0c0c0 ffffff"), 1);
    EXPECT_EQ(found.size(), 6U + 6U); // the row of B3 has two lines below
}

TEST_F(RowPaint, drawsGridlinesUnderTexts)
{
    sheet.showGridlines = true;
    cells.put("A2", u"reaches far over B");
    const Lines operations = painted().operations;
    const auto text = std::find_if(operations.begin(), operations.end(),
                                   [](const auto& each) { return each.starts_with("text"); });
    ASSERT_NE(text, operations.end());
    EXPECT_TRUE(std::none_of(text, operations.end(),
                             [](const auto& each) { return each.starts_with("pattern"); }));
}

// --- Borders

TEST_F(RowPaint, drawsEachLineAsOneBlackPixel)
{
    const struct {
        const char* phrase;
        StyleField field;
        Lines second, third;
    } cases[] = {
        {"above: reaches back over the line before", StyleTopLine,    {"49,20-100,21"}, {}              },
        {"right",                                    StyleRightLine,  {"99,20-100,40"}, {}              },
        {"left: the cell before draws it",           StyleLeftLine,   {"49,20-50,40"},  {}              },
        {"below: the cell below draws it",           StyleBottomLine, {},               {"49,40-100,41"}},
    };
    for (const auto& c : cases) {
        for (const int line : {1, 2, 5, 7}) {
            style("B2", {
                            {c.field,        line},
                            {StyleTopColour, Red }
            });
            EXPECT_EQ(lines(), c.second) << c.phrase << line;
            EXPECT_EQ(lines({0, 40, 250, 60}), c.third) << c.phrase << line;
        }
        style("B2", {
                        {c.field, 0}
        });
    }
}

TEST_F(RowPaint, drawsOneLineBetweenTwoCellsThatBothHaveIt)
{
    style("A2", {
                    {StyleRightLine, 1}
    });
    style("B2", {
                    {StyleLeftLine, 2},
                    {StyleTopLine,  1}
    });
    style("B1", {
                    {StyleBottomLine, 5}
    });
    EXPECT_EQ(lines(), (Lines{"49,20-100,21", "49,20-50,40"}));
}

TEST_F(RowPaint, drawsLinesAboveInOneStroke)
{
    style("B2:C2", {
                       {StyleTopLine, 1}
    });
    style("D1", {
                    {StyleBottomLine, 1}
    });
    EXPECT_EQ(lines(), Lines{"49,20-200,21"});
}

TEST_F(RowPaint, drawsLeftLinesOnlyInTheFirstColumn)
{
    style("A2:C2", {
                       {StyleLeftLine, 1}
    });
    EXPECT_EQ(lines(), (Lines{"49,20-50,40", "0,20-1,40", "99,20-100,40"}));
    sheet.leftColumn = 1;
    EXPECT_EQ(lines(), (Lines{"49,20-50,40", "0,20-1,40"}));
    sheet.leftColumn = 3; // the right line of what is scrolled away
    EXPECT_EQ(lines(), Lines{});
}

TEST_F(RowPaint, drawsLinesBelowOnlyInTheLastRow)
{
    style("B4:B5", {
                       {StyleBottomLine, 1}
    });
    EXPECT_EQ(lines(Area), (Lines{"49,80-100,81", "50,99-100,100"}));
    sheet.topRow = 1; // a sixth row begins below the area
    EXPECT_EQ(lines(Area), (Lines{"49,60-100,61", "49,80-100,81"}));
    sheet.topRow = 4; // only the line above the first row is left, and the one below it
    EXPECT_EQ(lines(Area), (Lines{"49,0-100,1", "49,20-100,21"}));
}

TEST_F(RowPaint, drawsTheLowerLineOfARowThatIsScrolledAway)
{
    style("B2", {
                    {StyleBottomLine, 1}
    });
    sheet.topRow = 2;
    EXPECT_EQ(lines(Area), Lines{"49,0-100,1"});
}

TEST_F(RowPaint, drawsNoLinesOfHiddenCells)
{
    style("B2",
          {
              {StyleTopLine,    1},
              {StyleLeftLine,   1},
              {StyleRightLine,  1},
              {StyleBottomLine, 1}
    });
    sheet.columns.setColumnHidden(1, 1, true);
    EXPECT_EQ(lines(Area), Lines{});
    sheet.columns.setColumnHidden(1, 1, false);
    sheet.setRowHidden(1, true);
    EXPECT_EQ(lines(Area), Lines{});
}

TEST_F(RowPaint, drawsLinesOfNeighboursAcrossHiddenOnes)
{
    style("A1", {
                    {StyleBottomLine, 1}
    });
    style("D3", {
                    {StyleLeftLine, 1}
    });
    sheet.setRowHidden(1, true);
    sheet.columns.setColumnHidden(1, 2, true);
    EXPECT_EQ(lines(Area), (Lines{"0,20-50,21", "49,20-50,40"}));
}

TEST_F(RowPaint, closesTheCornersOfABox)
{
    style("B2",
          {
              {StyleTopLine,    1},
              {StyleLeftLine,   1},
              {StyleRightLine,  1},
              {StyleBottomLine, 1}
    });
    PixelCanvas canvas(250, 100);
    paintPanes(canvas, GridView(Area, sheet), Area);
    for (int x = 49; x < 100; ++x) {
        EXPECT_EQ(canvas.at(x, 20), ColourBlack) << x;
        EXPECT_EQ(canvas.at(x, 40), ColourBlack) << x;
    }
    for (int y = 20; y <= 40; ++y) {
        EXPECT_EQ(canvas.at(49, y), ColourBlack) << y;
        EXPECT_EQ(canvas.at(99, y), ColourBlack) << y;
    }
    EXPECT_EQ(canvas.at(48, 20), ColourWhite);
    EXPECT_EQ(canvas.at(100, 40), ColourWhite);
}

// --- Marks of a filter

class FilterMarks : public RowPaint {
protected:
    // The triangles, and the clips around them.
    Lines marks() const
    {
        Lines found;
        for (const std::string& each : painted(SecondRow).operations) {
            if (each.starts_with("polygon "))
                found.push_back(each.substr(each.rfind(' ') + 1));
            else if (each.starts_with("rectangle "))
                found.push_back(each.substr(10, each.find(' ', 10) - 10));
        }
        return found;
    }
};

TEST_F(FilterMarks, standInTheHeaderRowAtTheRightOfEachColumn)
{
    EXPECT_EQ(marks(), Lines{});
    ASSERT_TRUE(sheet.filter.start(place("B2:C9")));
    EXPECT_EQ(marks(), (Lines{"86,26-100,40", "000000", "136,26-150,40", "000000"}));
    EXPECT_EQ(painted({0, 40, 250, 100}).count("polygon"), 0);
    EXPECT_EQ(painted({0, 0, 250, 20}).count("polygon"), 0);
    EXPECT_EQ(painted({100, 20, 150, 40}).count("polygon"), 1);
    sheet.filter.clear();
    EXPECT_EQ(marks(), Lines{});
}

TEST_F(FilterMarks, areBlueWhereTheirColumnHidesRows)
{
    ASSERT_TRUE(sheet.filter.start(place("A2:E9")));
    constexpr FilterKind kinds[] = {FilterAll, FilterTop, FilterBlanks, FilterNonBlanks,
                                    FilterWhere};
    for (int place = 0; place < 5; ++place)
        sheet.filter.columns[place].kind = kinds[place];
    const Lines found = marks();
    ASSERT_EQ(found.size(), 10U);
    EXPECT_EQ((Lines{found[1], found[3], found[5], found[7], found[9]}),
              (Lines{"000000", "0000ff", "0000ff", "0000ff", "0000ff"}));
}

TEST_F(FilterMarks, areCutToTheirCells)
{
    width(1, 9);
    ASSERT_TRUE(sheet.filter.start(place("B2:C9")));
    sheet.setRowHeight(1, 150, true);
    const Lines clips = painted().having("clip ");
    EXPECT_EQ(clips, (Lines{"clip 0,0-250,100", "clip 50,20-59,30", "clip 95,20-109,30"}));
}

TEST_F(FilterMarks, areNotSeenInHiddenColumns)
{
    ASSERT_TRUE(sheet.filter.start(place("B2:C9")));
    sheet.columns.setColumnHidden(1, 1, true);
    EXPECT_EQ(marks(), (Lines{"86,26-100,40", "000000"}));
    sheet.setRowHidden(1, true);
    EXPECT_EQ(marks(), Lines{});
}

TEST_F(FilterMarks, areWhereTheyAreHit)
{
    EXPECT_EQ(filterMarkRect({50, 20, 100, 40}), (Rect{86, 26, 100, 40}));
    EXPECT_EQ(filterMarkRect({50, 20, 59, 30}), (Rect{50, 20, 59, 30}));
    EXPECT_TRUE(filterMarkRect({50, 20, 50, 40}).isEmpty());
}

} // namespace
} // namespace vorn
