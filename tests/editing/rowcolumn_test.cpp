#include "editing/rowcolumn.h"

#include "core/workbook.h"
#include "editing/undo.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

class RowColumn : public testing::Test {
protected:
    static Sheet& sheet() { return *workbook->currentSheet; }
    static ColumnTable& columns() { return sheet().columns; }

    // "255", "600 custom hidden" and so on.
    static std::string row(int number)
    {
        return std::to_string(sheet().rowHeight(number)) +
               (sheet().rowHasCustomHeight(number) ? " custom" : "") +
               (sheet().rowHidden(number) ? " hidden" : "");
    }
    static std::string column(int number)
    {
        return std::to_string(columns().columnWidth(number)) +
               (columns().columnHidden(number) ? " hidden" : "");
    }

    static void checkRoad(const std::string& before)
    {
        const std::string after = describeSheets();
        for (int turn = 0; turn < 2; ++turn) {
            undo();
            EXPECT_EQ(describeSheets(), before);
            redo();
            EXPECT_EQ(describeSheets(), after);
        }
        EXPECT_EQ(poolFaults(), "");
    }

    EditDocument document;
};

// --- Units

TEST_F(RowColumn, readsHeightsInPoints)
{
    const struct {
        const char* phrase;
        double points;
        int height;
    } cases[] = {
        {"twenty to the point",     12.75, 255 },
        {"cut to whole twips",      12.79, 255 },
        {"nothing",                 0,     0   },
        {"less than one",           0.04,  0   },
        {"one",                     0.05,  1   },
        {"below nothing",           -3,    -60 },
        {"the most",                409,   8180},
        {"more than the most",      500,   8180},
        {"much more than the most", 1e300, 8180},
    };
    for (const auto& c : cases)
        EXPECT_EQ(heightOfPoints(c.points), c.height) << c.phrase;
    EXPECT_DOUBLE_EQ(pointsOfHeight(255), 12.75);
    EXPECT_DOUBLE_EQ(pointsOfHeight(0), 0);
    EXPECT_DOUBLE_EQ(pointsOfHeight(8180), 409);
}

TEST_F(RowColumn, readsWidthsInCharacters)
{
    const struct {
        const char* phrase;
        double characters;
        int width;
    } cases[] = {
        {"from one up: characters and a margin", 1,     438  },
        {"ten",                                  10,    2742 },
        {"a part of one",                        8.5,   2358 },
        {"below one both shrink",                0.5,   218  },
        {"just below one",                       0.999, 437  },
        {"nothing",                              0,     0    },
        {"hardly anything",                      0.002, 0    },
        {"below nothing",                        -2,    -875 },
        {"the most",                             255,   65462},
        {"more than the most",                   1000,  65462},
    };
    for (const auto& c : cases)
        EXPECT_EQ(widthOfCharacters(c.characters), c.width) << c.phrase;
    EXPECT_DOUBLE_EQ(charactersOfWidth(0), 0);
    EXPECT_DOUBLE_EQ(charactersOfWidth(438), 1);
    EXPECT_DOUBLE_EQ(charactersOfWidth(437), 437 * 0.0022843567251461987);
    EXPECT_DOUBLE_EQ(charactersOfWidth(2742), 10);
    EXPECT_DOUBLE_EQ(charactersOfWidth(65462), 255);
}

TEST_F(RowColumn, givesBackEveryWidth)
{
    for (int width = 438; width <= 65462; width += 7)
        ASSERT_EQ(widthOfCharacters(charactersOfWidth(width)), width);
}

TEST_F(RowColumn, measuresDragsAtTheZoom)
{
    const struct {
        const char* phrase;
        int pixels, distance, zoom, height, width;
    } cases[] = {
        {"as far as the pen",          17, 3,   100, 300, 730 },
        {"half as far at double zoom", 17, 6,   200, 300, 730 },
        {"twice as far at half",       17, 6,   50,  435, 1059},
        {"back",                       17, -3,  100, 210, 511 },
        {"to nothing",                 17, -17, 100, 0,   0   },
        {"beyond nothing",             17, -99, 100, 0,   0   },
        {"one pixel is left",          17, -16, 100, 15,  37  },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(heightAfterDrag(c.pixels, c.distance, c.zoom), c.height) << c.phrase;
        EXPECT_EQ(widthAfterDrag(c.pixels, c.distance, c.zoom), c.width) << c.phrase;
    }
}

// --- Heights

TEST_F(RowColumn, setsTheHeightOfTheSelectedRowsByHand)
{
    document.enter("A3", u"1");
    document.select("B2:D4");
    const std::string before = describeSheets();
    setRowHeights(1, 600, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Row Height");
    EXPECT_EQ(row(0), "255");
    for (int number : {1, 2, 3})
        EXPECT_EQ(row(number), "600 custom");
    EXPECT_EQ(row(4), "255");
    checkRoad(before);
}

TEST_F(RowColumn, setsTheHeightOfOneRow)
{
    document.select("B2:D4");
    setRowHeights(2, 600, SizeOne);
    EXPECT_EQ(row(1), "255");
    EXPECT_EQ(row(2), "600 custom");
    EXPECT_EQ(row(3), "255");
}

TEST_F(RowColumn, setsAllWholeRowsForOneOfThem)
{
    document.select("A2:IV4");
    setRowHeights(2, 600, SizeOne);
    for (int number : {1, 2, 3})
        EXPECT_EQ(row(number), "600 custom");
    setRowHeights(7, 300, SizeOne);
    EXPECT_EQ(row(7), "300 custom") << "one outside of them is one";
    EXPECT_EQ(row(1), "600 custom");
}

TEST_F(RowColumn, showsAHiddenRowThatGetsAHeight)
{
    document.select("A2");
    hideRows(1, true, SizeSelection);
    const std::string before = describeSheets();
    setRowHeights(1, 300, SizeSelection);
    EXPECT_EQ(row(1), "300 custom");
    checkRoad(before);
}

TEST_F(RowColumn, setsTheHeightOfTheWholeSheetByItsDefault)
{
    document.enter("A3", u"1");
    sheet().setRowHeight(5, 900, true);
    sheet().setRowHidden(6, true);
    for (const char* place : {"A1:IV16384", "B1:C16384"}) {
        document.select(place);
        const std::string before = describeSheets();
        AllocationWatch watch;
        setRowHeights(0, 600, SizeSelection);
        EXPECT_LT(watch.asked(), 20) << place;
        EXPECT_EQ(sheet().defaultRowHeight, 600);
        EXPECT_EQ(sheet().rowFlags, 1);
        EXPECT_EQ(row(0), "600");
        EXPECT_EQ(row(LastRow), "600");
        for (int number : {2, 5, 6})
            EXPECT_EQ(row(number), "600 custom") << number;
        EXPECT_EQ(sheet().lastRow(), 6);
        checkRoad(before);
        undo();
        EXPECT_EQ(sheet().rowFlags, 0);
    }
}

TEST_F(RowColumn, hidesWithAHeightOfZero)
{
    document.select("A2");
    setRowHeights(1, 600, SizeSelection);
    const std::string before = describeSheets();
    setRowHeights(1, 0, SizeSelection);
    EXPECT_EQ(row(1), "600 custom hidden");
    checkRoad(before);
    hideRows(1, false, SizeSelection);
    EXPECT_EQ(row(1), "600 custom") << "and has its height again";
}

TEST_F(RowColumn, givesNoRowMoreThanARowCanHave)
{
    document.select("A1");
    setRowHeights(0, 40000, SizeSelection);
    EXPECT_EQ(row(0), "32767 custom");
}

TEST_F(RowColumn, hidesAndShowsRows)
{
    document.enter("A3", u"1");
    document.select("B2:B4");
    const std::string before = describeSheets();
    hideRows(1, true, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Row Height");
    for (int number : {1, 2, 3})
        EXPECT_EQ(row(number), "255 hidden");
    EXPECT_EQ(row(4), "255");
    checkRoad(before);
    const std::string hidden = describeSheets();
    document.select("B1:B9");
    hideRows(0, false, SizeSelection);
    EXPECT_EQ(row(2), "255");
    checkRoad(hidden);
    EXPECT_EQ(describeSheets(), before);
}

TEST_F(RowColumn, restoresWhichRowsWereHidden)
{
    sheet().setRowHidden(2, true);
    document.select("A2:A4");
    const std::string before = describeSheets();
    hideRows(1, true, SizeSelection);
    checkRoad(before);
    undo();
    hideRows(1, false, SizeSelection);
    checkRoad(before);
}

// --- Widths

TEST_F(RowColumn, setsTheWidthOfTheSelectedColumns)
{
    document.select("B2:D4");
    const std::string before = describeSheets();
    setColumnWidths(1, 5000, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Column Width");
    EXPECT_EQ(column(0), "2300");
    for (int number : {1, 2, 3})
        EXPECT_EQ(column(number), "5000");
    EXPECT_EQ(column(4), "2300");
    checkRoad(before);
}

TEST_F(RowColumn, setsAllWholeColumnsForOneOfThem)
{
    document.select("B1:D16384");
    setColumnWidths(2, 5000, SizeOne);
    for (int number : {1, 2, 3})
        EXPECT_EQ(column(number), "5000");
    setColumnWidths(7, 3000, SizeOne);
    EXPECT_EQ(column(7), "3000");
    EXPECT_EQ(column(1), "5000");
    document.select("B2:D4");
    setColumnWidths(2, 4000, SizeOne);
    EXPECT_EQ(column(1), "5000");
    EXPECT_EQ(column(2), "4000");
}

TEST_F(RowColumn, setsWidthsBeyond16Bits)
{
    document.select("A1");
    const std::string before = describeSheets();
    setColumnWidths(0, 100000, SizeSelection);
    EXPECT_EQ(column(0), "100000");
    checkRoad(before);
}

TEST_F(RowColumn, setsTheWidthOfEveryColumn)
{
    document.select("A2:IV4");
    const std::string before = describeSheets();
    setColumnWidths(0, 5000, SizeSelection);
    EXPECT_EQ(column(0), "5000");
    EXPECT_EQ(column(255), "5000");
    checkRoad(before);
}

TEST_F(RowColumn, restoresARecordAsItWas)
{
    // A column with a style, whose width follows the default.
    columns().setColumnStyle(1, 1, workbook->addStyle(dialogStyle()));
    document.select("B1");
    const std::string before = describeSheets();
    setColumnWidths(1, 5000, SizeSelection);
    checkRoad(before);
    undo();
    EXPECT_EQ(columns().attributes(1).width, -1);
}

TEST_F(RowColumn, hidesAndShowsColumns)
{
    columns().setColumnWidth(2, 2, 5000);
    document.select("B2:D2");
    const std::string before = describeSheets();
    hideColumns(1, true, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Column Width");
    EXPECT_EQ(column(1), "2300 hidden");
    EXPECT_EQ(column(2), "5000 hidden");
    checkRoad(before);
    const std::string hidden = describeSheets();
    hideColumns(1, false, SizeSelection);
    EXPECT_EQ(column(2), "5000") << "its width was kept";
    checkRoad(hidden);
}

TEST_F(RowColumn, hidesWithAWidthOfZero)
{
    document.select("B2");
    const std::string before = describeSheets();
    setColumnWidths(1, 0, SizeSelection);
    EXPECT_EQ(column(1), "2300 hidden");
    checkRoad(before);
    setColumnWidths(1, 3000, SizeSelection);
    EXPECT_EQ(column(1), "3000") << "a width shows the column";
}

// --- What is refused

TEST_F(RowColumn, neverHidesAllOfASheet)
{
    const struct {
        const char* phrase;
        const char* selection;
        bool rows, columns; // that the commands work on
    } cases[] = {
        {"cells",               "B2:C3",      true,  true },
        {"whole columns",       "B1:C16384",  false, true },
        {"whole rows",          "A2:IV3",     true,  false},
        {"the whole sheet",     "A1:IV16384", false, false},
        {"all rows but one",    "B2:C16384",  true,  true },
        {"all columns but one", "B2:IV3",     true,  true },
    };
    for (const auto& c : cases) {
        document.enter("B2", u"1");
        document.select(c.selection);
        clearUndo();
        hideRows(1, true, SizeSelection);
        hideRows(1, false, SizeSelection);
        setRowHeights(1, 0, SizeSelection);
        fitRows(1, SizeSelection);
        EXPECT_EQ(undoList.position, c.rows ? 4 : 0) << c.phrase;
        clearUndo();
        hideColumns(1, true, SizeSelection);
        hideColumns(1, false, SizeSelection);
        setColumnWidths(1, 0, SizeSelection);
        fitColumns(1, SizeSelection);
        EXPECT_EQ(undoList.position, c.columns ? 4 : 0) << c.phrase;
        NewDocument(NewDocumentSheets, FileKindNative);
    }
}

TEST_F(RowColumn, hidesOneRowBesideWholeColumns)
{
    document.select("B1:C16384");
    hideRows(4, true, SizeOne);
    EXPECT_EQ(row(4), "255 hidden");
    EXPECT_EQ(row(3), "255");
    document.select("A2:IV3");
    hideColumns(4, true, SizeOne);
    EXPECT_EQ(column(4), "2300 hidden");
}

// --- Fitting

TEST_F(RowColumn, fitsTheSelectedRowsAlsoThoseSetByHand)
{
    FontRecord tall = defaultFont(0);
    tall.height = 400;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(tall));
    for (int number : {1, 2, 3}) {
        sheet().setCell(0, number, textCell(u"a", workbook->addStyle(style)));
        sheet().setRowHeight(number, 900, true);
    }
    sheet().setRowHidden(2, true);
    document.select("C2:C3");
    const std::string before = describeSheets();
    fitRows(1, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Row Height");
    EXPECT_EQ(row(1), "510");
    EXPECT_EQ(row(2), "510 hidden");
    EXPECT_EQ(row(3), "900 custom");
    checkRoad(before);
}

TEST_F(RowColumn, makesNoRowsToFitThem)
{
    document.select("A1:A16383");
    fitRows(0, SizeSelection);
    EXPECT_FALSE(sheet().hasRows());
    EXPECT_EQ(undoLabel(), u"Row Height");
}

TEST_F(RowColumn, fitsTheSelectedColumns)
{
    document.enter("B9", u"a rather long text");
    document.enter("D1", u"ab");
    columns().setColumnWidth(2, 2, 1234);
    document.select("B1:D1");
    const std::string before = describeSheets();
    fitColumns(1, SizeSelection);
    EXPECT_EQ(undoLabel(), u"Column Width");
    EXPECT_EQ(columns().columnPixels(1), 18 * 7 + 6);
    EXPECT_EQ(column(2), "1234") << "an empty column keeps its width";
    EXPECT_EQ(columns().columnPixels(3), 2 * 7 + 6);
    EXPECT_EQ(column(0), "2300");
    checkRoad(before);
}

TEST_F(RowColumn, fitsOneColumn)
{
    document.enter("B1", u"a rather long text");
    document.enter("C1", u"a rather long text");
    document.select("B1:C2");
    fitColumns(2, SizeOne);
    EXPECT_EQ(column(1), "2300");
    EXPECT_EQ(columns().columnPixels(2), 18 * 7 + 6);
}

// --- Sheets

TEST_F(RowColumn, takesTheStepBackOnItsOwnSheet)
{
    document.select("Sheet2!B2");
    setRowHeights(1, 600, SizeSelection);
    document.select("Sheet1!A1");
    undo();
    EXPECT_EQ(sheet().name(), u"Sheet2");
    EXPECT_EQ(row(1), "255");
    EXPECT_EQ(sheet().selection.activeColumn, 1);
}

} // namespace
} // namespace vorn
