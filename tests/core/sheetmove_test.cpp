#include "core/sheet.h"
#include "core/workbook.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class SheetMove : public testing::Test {
protected:
    SheetMove() : sheet(*workbook->sheetAt(0)) {}

    void fill(int firstColumn, int firstRow, int lastColumn, int lastRow)
    {
        for (int row = firstRow; row <= lastRow; ++row) {
            for (int column = firstColumn; column <= lastColumn; ++column)
                sheet.setCell(column, row, numberCell(1));
        }
    }

    TestDocument document;
    Sheet& sheet;
};

TEST_F(SheetMove, jumpsDownAndUpToTheEdgeOfTheData)
{
    fill(2, 5, 2, 8);
    fill(2, 12, 2, 13);
    sheet.setCell(2, 20, blankCell(1)); // a style alone is no data
    sheet.setCell(3, 30, numberCell(1));
    const struct {
        int row, down, up;
    } cases[] = {
        {0,     5,     0 },
        {4,     5,     0 },
        {5,     8,     0 },
        {6,     8,     5 },
        {8,     12,    5 },
        {9,     12,    8 },
        {10,    12,    8 },
        {12,    13,    8 },
        {13,    16383, 12},
        {14,    16383, 13},
        {25,    16383, 13},
        {40,    16383, 13},
        {16382, 16383, 13},
        {16383, 16383, 13},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(sheet.edgeDown(2, c.row), c.down) << c.row;
        EXPECT_EQ(sheet.edgeUp(2, c.row), c.up) << c.row;
    }
}

TEST_F(SheetMove, jumpsToTheLimitsOfTheSheet)
{
    fill(0, 0, 0, 1);
    fill(0, 16382, 0, 16383);
    EXPECT_EQ(sheet.edgeDown(0, 16382), 16383);
    EXPECT_EQ(sheet.edgeDown(0, 16383), 16383);
    EXPECT_EQ(sheet.edgeDown(0, 1), 16382);
    EXPECT_EQ(sheet.edgeUp(0, 1), 0);
    EXPECT_EQ(sheet.edgeUp(0, 0), 0);
    EXPECT_EQ(sheet.edgeUp(0, 16382), 1);
    EXPECT_EQ(sheet.edgeDown(7, 0), 16383);
    EXPECT_EQ(sheet.edgeUp(7, 16383), 0);
}

TEST_F(SheetMove, jumpsRightAndLeftToTheEdgeOfTheData)
{
    fill(5, 2, 8, 2);
    fill(12, 2, 13, 2);
    sheet.setCell(20, 2, blankCell(1));
    const struct {
        int column, right, left;
    } cases[] = {
        {0,   5,   0 },
        {4,   5,   0 },
        {5,   8,   0 },
        {6,   8,   5 },
        {8,   12,  5 },
        {9,   12,  8 },
        {12,  13,  8 },
        {13,  255, 12},
        {14,  255, 13},
        {20,  255, 13},
        {30,  255, 13},
        {254, 255, 13},
        {255, 255, 13},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(sheet.edgeRight(c.column, 2), c.right) << c.column;
        EXPECT_EQ(sheet.edgeLeft(c.column, 2), c.left) << c.column;
    }
}

TEST_F(SheetMove, jumpsToTheLimitsOfARow)
{
    fill(0, 0, 1, 0);
    fill(254, 0, 255, 0);
    EXPECT_EQ(sheet.edgeRight(254, 0), 255);
    EXPECT_EQ(sheet.edgeRight(255, 0), 255);
    EXPECT_EQ(sheet.edgeRight(1, 0), 254);
    EXPECT_EQ(sheet.edgeLeft(1, 0), 0);
    EXPECT_EQ(sheet.edgeLeft(0, 0), 0);
    EXPECT_EQ(sheet.edgeLeft(254, 0), 1);
    EXPECT_EQ(sheet.edgeRight(100, 50), 255) << "a row without an object";
    EXPECT_EQ(sheet.edgeLeft(100, 50), 0) << "a row without an object";
}

TEST_F(SheetMove, findsTheRegionAroundACell)
{
    // Two columns of data apart from each other, then an empty row, then another block.
    fill(2, 3, 2, 6);
    fill(6, 4, 7, 4);
    fill(1, 8, 3, 9);
    sheet.setCell(9, 7, blankCell(1));  // a style alone is no data
    sheet.setCell(20, 4, blankCell(1)); // nor does it widen a region
    sheet.setCell(0, 5, blankCell(1));
    const RangeRef upper{3, 2, 6, 7};
    const RangeRef lower{8, 1, 9, 3};
    const struct {
        const char* phrase;
        int column, row;
        bool found;
        RangeRef region;
    } cases[] = {
        {"in the data",                                    2, 4,   true,  upper       },
        {"in a gap between columns",                       4, 3,   true,  upper       },
        {"at its last column",                             7, 6,   true,  upper       },
        {"behind its last column",                         8, 4,   false, {}          },
        {"before its first column the region begins here", 0, 4,   true,  {3, 0, 6, 7}},
        {"in the empty row",                               2, 7,   false, {}          },
        {"in the block below",                             2, 9,   true,  lower       },
        {"in a row that is not there",                     2, 100, false, {}          },
        {"above everything",                               2, 0,   false, {}          },
    };
    for (const auto& c : cases) {
        RangeRef region;
        EXPECT_EQ(sheet.currentRegion(c.column, c.row, region), c.found) << c.phrase;
        EXPECT_EQ(region, c.region) << c.phrase;
    }
}

TEST_F(SheetMove, findsARegionAtTheLimitsOfTheSheet)
{
    fill(0, 0, 0, 1);
    fill(255, 16382, 255, 16383);
    RangeRef region;
    ASSERT_TRUE(sheet.currentRegion(0, 1, region));
    EXPECT_EQ(region, (RangeRef{0, 0, 1, 0}));
    ASSERT_TRUE(sheet.currentRegion(255, 16383, region));
    EXPECT_EQ(region, (RangeRef{16382, 255, 16383, 255}));
}

} // namespace
} // namespace vorn
