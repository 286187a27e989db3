#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

constexpr RangeRef WholeSheet{0, 0, 16383, 255};
constexpr RangeRef RowsTwoToFour{2, 0, 4, 255};
constexpr RangeRef ColumnsTwoToFour{0, 2, 16383, 4};
constexpr RangeRef Rectangle{2, 2, 4, 4};

class SheetClear : public testing::Test {
protected:
    SheetClear() : sheet(*workbook->sheetAt(0)) {}

    // "1/5": value and stored style, or "none" where nothing is present.
    std::string at(int column, int row)
    {
        if (!sheet.isPresent(column, row))
            return "none";
        const Cell cell = sheet.cellCopy(column, row);
        return describe(cell.value) + "/" + std::to_string(cell.style);
    }

    TestDocument document;
    Sheet& sheet;
};

TEST_F(SheetClear, clearsContentsAndKeepsFormats)
{
    sheet.setCell(2, 2, numberCell(1, 5));
    sheet.setCell(3, 2, textCell(u"x"));
    sheet.setCell(4, 2, blankCell(7));
    sheet.setCell(5, 2, numberCell(2, 5));
    sheet.setRowStyle(2, 9);
    sheet.columns.setColumnStyle(3, 3, 8);
    sheet.clearContents(Rectangle);
    EXPECT_EQ(at(2, 2), "blank/5");
    EXPECT_EQ(at(3, 2), "none");
    EXPECT_EQ(at(4, 2), "blank/7");
    EXPECT_EQ(at(5, 2), "2/5");
    EXPECT_EQ(sheet.rowStyle(2), 9);
    EXPECT_EQ(sheet.columns.columnStyle(3), 8);
}

TEST_F(SheetClear, takesClearedFormulasAndTextsWithIt)
{
    const Cell text = textCell(u"gone");
    sheet.setCell(2, 2, text);
    sheet.setCell(3, 3, constantFormula(1, {3, 3, 0}, 4));
    sheet.setCell(9, 9, constantFormula(1, {9, 9, 0}));
    sheet.clearContents(Rectangle);
    EXPECT_FALSE(stringPool->isLive(text.value.textIndex()));
    EXPECT_EQ(at(3, 3), "blank/4");
    ASSERT_NE(calcChain.first(), nullptr);
    EXPECT_EQ(calcChain.first()->row, 9);
    sheet.clearAll(WholeSheet);
    EXPECT_EQ(calcChain.first(), nullptr);
}

TEST_F(SheetClear, clearsAPlainRectangleToNothing)
{
    for (int column = 1; column < 6; ++column) {
        for (int row = 1; row < 6; ++row)
            sheet.setCell(column, row, numberCell(1, column - 2));
    }
    sheet.clearAll(Rectangle);
    for (int column = 1; column < 6; ++column) {
        for (int row = 1; row < 6; ++row)
            EXPECT_EQ(sheet.isPresent(column, row), !Rectangle.contains(column, row));
    }
}

// Where a style shines through from a row or a column beyond the range, style 0 covers it.
TEST_F(SheetClear, coversTheStylesBehindARectangle)
{
    sheet.columns.setColumnStyle(3, 3, 8);
    sheet.columns.setColumnStyle(6, 6, 8);
    sheet.setRowStyle(4, 9);
    sheet.setCell(2, 2, numberCell(1, 5));
    sheet.setCell(2, 4, numberCell(1, 5));
    sheet.setCell(3, 2, numberCell(1));
    sheet.clearAll(Rectangle);
    for (int row = 2; row <= 4; ++row) {
        for (int column = 2; column <= 4; ++column) {
            EXPECT_EQ(sheet.cellStyle(column, row), 0) << column << "," << row;
            EXPECT_FALSE(sheet.isOccupied(column, row));
            const bool covered = row == 4 || column == 3;
            EXPECT_EQ(at(column, row), covered ? "blank/0" : "none") << column << "," << row;
        }
    }
    EXPECT_EQ(sheet.cellStyle(6, 2), 8);
    EXPECT_EQ(sheet.cellStyle(6, 4), 9);
}

TEST_F(SheetClear, coversTheStyledColumnsOfWholeRows)
{
    sheet.columns.setColumnStyle(2, 2, 8);
    sheet.columns.setColumnStyle(4, 4, 8);
    sheet.setRowStyle(3, 9);
    sheet.setRowHeight(3, 500, true);
    sheet.setRowHidden(4, true);
    sheet.setCell(7, 3, numberCell(1, 5));
    sheet.clearAll(RowsTwoToFour);
    EXPECT_EQ(sheet.rowStyle(3), 0);
    EXPECT_EQ(sheet.rowHeight(3), 255);
    EXPECT_FALSE(sheet.rowHasCustomHeight(3));
    EXPECT_FALSE(sheet.rowHidden(4));
    for (int row = 2; row <= 4; ++row) {
        for (int column = 0; column < 10; ++column)
            EXPECT_EQ(at(column, row), column == 2 || column == 4 ? "blank/0" : "none")
                << column << "," << row;
    }
    EXPECT_EQ(at(2, 5), "none");
    EXPECT_EQ(sheet.cellStyle(2, 5), 8);
}

TEST_F(SheetClear, resetsOnlyRowsThatExist)
{
    sheet.clearAll(RowsTwoToFour);
    EXPECT_FALSE(sheet.hasRows());
}

TEST_F(SheetClear, coversTheStyledRowsOfWholeColumns)
{
    sheet.columns.setColumnAttr(3, 3, {500, 8, 1});
    sheet.columns.setColumnStyle(6, 6, 8);
    sheet.setRowStyle(9, 4);
    sheet.setCell(3, 1, numberCell(1, 5));
    sheet.setCell(3, 9, numberCell(1, 5));
    sheet.clearAll(ColumnsTwoToFour);
    EXPECT_EQ(sheet.columns.attributes(3), ColumnAttr{}) << "width and hidden go back as well";
    EXPECT_EQ(sheet.columns.columnStyle(6), 8);
    EXPECT_EQ(at(3, 1), "none");
    for (int column = 1; column <= 5; ++column)
        EXPECT_EQ(at(column, 9), column >= 2 && column <= 4 ? "blank/0" : "none") << column;
    EXPECT_EQ(sheet.rowStyle(9), 4);
}

TEST_F(SheetClear, clearsAWholeSheetToNothing)
{
    sheet.columns.setColumnAttr(3, 3, {500, 8, 1});
    sheet.setRowStyle(9, 4);
    sheet.setRowHeight(9, 700, true);
    sheet.setCell(3, 9, numberCell(1, 5));
    sheet.setCell(255, 16383, blankCell(5));
    sheet.clearAll(WholeSheet);
    EXPECT_EQ(sheet.columns.attributes(3), ColumnAttr{});
    EXPECT_EQ(sheet.rowStyle(9), 0);
    EXPECT_EQ(sheet.rowHeight(9), 255);
    EXPECT_EQ(at(3, 9), "none");
    EXPECT_EQ(at(255, 16383), "none");
    EXPECT_EQ(sheet.lastRow(), 16383) << "rows stay";
}

TEST_F(SheetClear, clearsFormatsOfARectangle)
{
    sheet.columns.setColumnStyle(3, 3, 8);
    sheet.setRowStyle(4, 9);
    sheet.setCell(2, 2, numberCell(1, 5));
    sheet.setCell(2, 3, numberCell(2, 0));
    sheet.setCell(4, 2, numberCell(3));
    sheet.setCell(3, 2, textCell(u"kept"));
    sheet.setCell(5, 5, numberCell(4, 5));
    sheet.clearFormats(Rectangle);
    for (int row = 2; row <= 4; ++row) {
        for (int column = 2; column <= 4; ++column)
            EXPECT_EQ(sheet.cellStyle(column, row), 0) << column << "," << row;
    }
    EXPECT_EQ(at(2, 2), "1/0");
    EXPECT_EQ(at(2, 3), "2/0");
    EXPECT_EQ(at(4, 2), "3/-1") << "was plain before";
    EXPECT_EQ(at(3, 2), "\"kept\"/0");
    EXPECT_EQ(at(3, 3), "blank/0") << "covers the column";
    EXPECT_EQ(at(2, 4), "blank/0") << "covers the row";
    EXPECT_EQ(at(4, 3), "none");
    EXPECT_EQ(at(5, 5), "4/5");
    EXPECT_EQ(sheet.rowStyle(4), 9);
}

TEST_F(SheetClear, clearsFormatsOfWholeRowsButHandSetHeights)
{
    sheet.columns.setColumnStyle(3, 3, 8);
    sheet.setRowStyle(2, 9);
    sheet.setRowHeight(2, 700, true);
    sheet.setRowHeight(3, 700, false);
    sheet.setRowHidden(3, true);
    sheet.setCell(1, 2, numberCell(1, 5));
    sheet.setCell(2, 2, numberCell(2));
    sheet.setCell(3, 2, numberCell(3, 5));
    sheet.clearFormats(RowsTwoToFour);
    EXPECT_EQ(sheet.rowStyle(2), 0);
    EXPECT_EQ(sheet.rowHeight(2), 700);
    EXPECT_TRUE(sheet.rowHasCustomHeight(2));
    EXPECT_EQ(sheet.rowHeight(3), 255);
    EXPECT_TRUE(sheet.rowHidden(3));
    EXPECT_EQ(at(1, 2), "1/0");
    EXPECT_EQ(at(2, 2), "2/0") << "a present cell without a style gets one";
    EXPECT_EQ(at(3, 2), "3/0");
    EXPECT_EQ(at(3, 4), "blank/0") << "covers the column, also in a row that was not there";
    EXPECT_EQ(at(2, 4), "none");
    EXPECT_EQ(sheet.columns.columnStyle(3), 8);
}

TEST_F(SheetClear, clearsFormatsOfWholeColumns)
{
    sheet.columns.setColumnAttr(3, 3, {500, 8, 0});
    sheet.columns.setColumnStyle(6, 6, 8);
    sheet.setRowStyle(9, 4);
    sheet.setCell(3, 1, numberCell(1, 5));
    sheet.setCell(3, 2, numberCell(2));
    sheet.setCell(3, 9, numberCell(3));
    sheet.setCell(6, 9, numberCell(4));
    sheet.clearFormats(ColumnsTwoToFour);
    EXPECT_EQ(sheet.columns.attributes(3), (ColumnAttr{500, 0, 0})) << "the width stays";
    EXPECT_EQ(sheet.columns.columnStyle(6), 8);
    EXPECT_EQ(at(3, 1), "1/0");
    EXPECT_EQ(at(3, 2), "2/0");
    EXPECT_EQ(at(3, 9), "3/0");
    EXPECT_EQ(at(2, 9), "blank/0") << "covers the row";
    EXPECT_EQ(at(4, 9), "blank/0");
    EXPECT_EQ(at(5, 9), "none");
    EXPECT_EQ(at(2, 2), "none");
    EXPECT_EQ(at(6, 9), "4/-1");
    EXPECT_EQ(sheet.rowStyle(9), 4);
    EXPECT_EQ(sheet.columns.size(), 7) << "the table does not grow";
}

TEST_F(SheetClear, clearsFormatsOfAWholeSheet)
{
    sheet.columns.setColumnAttr(3, 3, {500, 8, 0});
    sheet.setRowStyle(9, 4);
    sheet.setCell(3, 9, numberCell(1, 5));
    sheet.setCell(4, 9, numberCell(2));
    sheet.setCell(5, 9, blankCell(6));
    sheet.clearFormats(WholeSheet);
    EXPECT_EQ(sheet.columns.columnStyle(3), 0);
    EXPECT_EQ(sheet.columns.columnWidth(3), 500);
    EXPECT_EQ(sheet.rowStyle(9), 0);
    EXPECT_EQ(at(3, 9), "1/0");
    EXPECT_EQ(at(4, 9), "2/0");
    EXPECT_EQ(at(5, 9), "blank/0");
    EXPECT_EQ(at(6, 9), "none");
}

TEST_F(SheetClear, leavesFormulasInTheirPlaceOnTheChain)
{
    sheet.setCell(2, 2, constantFormula(1, {2, 2, 0}, 5));
    sheet.setCell(3, 3, constantFormula(1, {3, 3, 0}, 5));
    calcChain.sort();
    const FormulaCell* first = calcChain.first();
    sheet.clearFormats(WholeSheet);
    EXPECT_FALSE(calcChain.needsSort());
    EXPECT_EQ(calcChain.first(), first);
    EXPECT_EQ(sheet.cellAt(2, 2)->value.formula(), first);
}

TEST_F(SheetClear, walksAnEmptySheetAtOnce)
{
    sheet.clearContents(WholeSheet);
    sheet.clearAll(ColumnsTwoToFour);
    sheet.clearFormats(ColumnsTwoToFour);
    EXPECT_FALSE(sheet.hasRows());
}

} // namespace
} // namespace vorn
