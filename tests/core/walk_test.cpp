#include "core/walk.h"

#include "core/chain.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

constexpr RangeRef WholeSheet{0, 0, 16383, 255};

class WalkValues : public testing::Test {
protected:
    WalkValues()
    {
        Sheet& first = *workbook->sheetAt(0);
        first.setCell(3, 1, numberCell(31));
        first.setCell(1, 1, numberCell(11));
        first.setCell(2, 4, blankCell(5));
        first.setCell(3, 4, constantFormula(34, {4, 3, 0}));
        workbook->sheetAt(2)->setCell(0, 0, numberCell(9));
        recalculate();
    }

    // The values in the order of the walk, up to `limit`.
    template <typename... Where>
    std::string walked(int limit, const Where&... where)
    {
        std::string text;
        int count = 0;
        completed = walkValues(where..., [&](const CellValue& value) {
            text += describe(value) + " ";
            return ++count < limit;
        });
        return text;
    }

    TestDocument document;
    bool completed = false;
};

TEST_F(WalkValues, meetsStoredCellsRowByRow)
{
    // Between two cells of a row lies one that was never stored: it is met as a blank, as cells
    // are that exist for their style only.
    EXPECT_EQ(walked(99, *workbook->sheetAt(0), WholeSheet), "11 blank 31 blank 34 ");
    EXPECT_TRUE(completed);
    EXPECT_EQ(walked(99, *workbook->sheetAt(0), RangeRef{1, 2, 4, 2}), "blank blank ");
}

TEST_F(WalkValues, stopsWhenAsked)
{
    EXPECT_EQ(walked(2, *workbook->sheetAt(0), WholeSheet), "11 blank ");
    EXPECT_FALSE(completed);
    EXPECT_EQ(walked(5, 0, 2, WholeSheet), "11 blank 31 blank 34 ");
    EXPECT_FALSE(completed);
}

TEST_F(WalkValues, goesThroughSheets)
{
    EXPECT_EQ(walked(99, 0, 2, WholeSheet), "11 blank 31 blank 34 9 ");
    EXPECT_TRUE(completed);
    EXPECT_EQ(walked(99, 1, 254, WholeSheet), "9 ");
    EXPECT_EQ(walked(99, 3, 9, WholeSheet), "");
    EXPECT_TRUE(completed);
}

TEST_F(WalkValues, findsNothingInReversedRanges)
{
    for (const RangeRef& range : {
             RangeRef{9, 0, 0, 9},
             RangeRef{0, 9, 9, 0},
             RangeRef{9, 9, 0, 0}
    })
        EXPECT_EQ(walked(99, 0, 2, range), "");
    EXPECT_EQ(walked(99, *workbook->sheetAt(1), WholeSheet), "");
}

TEST_F(WalkValues, goesDownOneColumn)
{
    Sheet& sheet = *workbook->sheetAt(1);
    sheet.setCell(2, 1, numberCell(1));
    sheet.setCell(5, 2, numberCell(9)); // column 2 lies before all that this row has
    sheet.setCell(1, 3, numberCell(9)); // and here behind it
    sheet.setCell(2, 6, blankCell(4));
    sheet.setCell(2, 7, constantFormula(7, {7, 2, 1}));
    sheet.setCell(2, 9, textCell(u"end"));
    recalculate();
    EXPECT_EQ(walked(99, sheet, RangeRef{0, 2, 16383, 2}), "1 blank 7 \"end\" ");
    EXPECT_EQ(walked(99, sheet, RangeRef{2, 2, 7, 2}), "blank 7 ");
    EXPECT_EQ(walked(2, sheet, RangeRef{0, 2, 16383, 2}), "1 blank ");
    EXPECT_FALSE(completed);
    EXPECT_EQ(walked(99, sheet, RangeRef{7, 2, 2, 2}), "");
    EXPECT_EQ(walked(99, sheet, RangeRef{0, 200, 65535, 200}), "");
}

TEST_F(WalkValues, endsWithTheSheet)
{
    Sheet& sheet = *workbook->sheetAt(1);
    sheet.setCell(255, 16383, numberCell(5));
    EXPECT_EQ(walked(99, sheet, RangeRef{0, 0, 65535, 65535}), "5 ");
    EXPECT_EQ(walked(99, sheet, RangeRef{16383, 255, 16383, 255}), "5 ");
}

} // namespace
} // namespace vorn
