#include "core/columns.h"

#include "support/refusal.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

class ColumnTableTest : public testing::Test {
protected:
    ColumnTableTest() { clearError(); }
    ~ColumnTableTest() override { clearError(); }

    ColumnTable columns;
};

TEST_F(ColumnTableTest, hasNoRecordsAtFirst)
{
    EXPECT_EQ(columns.size(), 0);
    EXPECT_EQ(columns.defaultWidth(), 2300);
    for (int column : {0, 255}) {
        EXPECT_EQ(columns.columnWidth(column), 2300);
        EXPECT_EQ(columns.visibleColumnWidth(column), 2300);
        EXPECT_EQ(columns.columnPixels(column), 63);
        EXPECT_EQ(columns.columnStyle(column), 0);
        EXPECT_FALSE(columns.columnHidden(column));
    }
}

TEST_F(ColumnTableTest, keepsItsDefaultWidthAtAPixelCount)
{
    const struct {
        int asked, stored, pixels;
    } cases[] = {
        {2300,  2300,  63  },
        {439,   439,   12  },
        {438,   438,   12  },
        {437,   438,   12  },
        {0,     438,   12  },
        {-5,    438,   12  },
        {474,   474,   12  },
        {475,   475,   13  },
        {65535, 65535, 1795},
    };
    for (const auto& c : cases) {
        columns.setDefaultWidth(c.asked);
        EXPECT_EQ(columns.defaultWidth(), c.stored) << c.asked;
        EXPECT_EQ(columns.columnPixels(3), c.pixels) << c.asked;
    }
}

TEST_F(ColumnTableTest, cutsPixelsOfAWidth)
{
    const struct {
        int width, pixels;
    } cases[] = {
        {1,    0  },
        {36,   0  },
        {37,   1  },
        {73,   2  },
        {109,  2  },
        {110,  3  },
        {3650, 100},
        {3649, 99 }
    };
    for (const auto& c : cases) {
        columns.setColumnWidth(1, 1, c.width);
        EXPECT_EQ(columns.columnPixels(1), c.pixels) << c.width;
    }
}

TEST_F(ColumnTableTest, reachesTheHighestColumnThatHasAnything)
{
    columns.setColumnStyle(7, 7, 3);
    EXPECT_EQ(columns.size(), 8);
    columns.setColumnHidden(2, 4, true);
    EXPECT_EQ(columns.size(), 8);
    columns.setColumnWidth(255, 300, 100);
    EXPECT_EQ(columns.size(), 256);
    EXPECT_EQ(columns.columnWidth(255), 100);
    EXPECT_EQ(columns.attributes(6), ColumnAttr{});
    columns.setColumnStyle(-3, -1, 9);
    EXPECT_EQ(columns.size(), 256);
    EXPECT_EQ(columns.columnStyle(-1), 0);
    EXPECT_EQ(columns.columnStyle(256), 0);
}

TEST_F(ColumnTableTest, hidesAColumnOfNoWidthAndShowsItWithTheOldOne)
{
    columns.setColumnWidth(2, 2, 1000);
    columns.setColumnWidth(2, 2, 0);
    EXPECT_TRUE(columns.columnHidden(2));
    EXPECT_EQ(columns.columnWidth(2), 1000);
    EXPECT_EQ(columns.visibleColumnWidth(2), 0);
    EXPECT_EQ(columns.columnPixels(2), 0);
    columns.setColumnHidden(2, 2, false);
    EXPECT_EQ(columns.columnWidth(2), 1000);
    EXPECT_EQ(columns.visibleColumnWidth(2), 1000);
    columns.setColumnWidth(2, 2, 0);
    columns.setColumnWidth(2, 2, 500);
    EXPECT_FALSE(columns.columnHidden(2));
    EXPECT_EQ(columns.columnWidth(2), 500);
}

TEST_F(ColumnTableTest, takesAWidthByTheColumnsState)
{
    const struct {
        const char* phrase;
        ColumnAttr before;
        int width;
        ColumnAttr after;
    } cases[] = {
        {"the default takes the record back",  {500, 0, 0}, 2300, {-1, 0, 0}  },
        {"and shows the column",               {500, 0, 1}, 2300, {-1, 0, 0}  },
        {"but not from a column with a style", {500, 4, 0}, 2300, {2300, 4, 0}},
        {"nor from one with other flags",      {500, 0, 2}, 2300, {2300, 0, 2}},
        {"of which only the hidden one goes",  {500, 4, 3}, 2300, {2300, 4, 2}},
        {"another width is kept",              {-1, 0, 0},  500,  {500, 0, 0} },
        {"and shows the column",               {-1, 0, 1},  500,  {500, 0, 0} },
        {"no width hides",                     {500, 4, 2}, 0,    {500, 4, 3} },
        {"also a default column",              {-1, 0, 0},  0,    {-1, 0, 1}  },
    };
    for (const auto& c : cases) {
        columns.setColumnAttr(3, 3, c.before);
        columns.setColumnWidth(3, 3, c.width);
        EXPECT_EQ(columns.attributes(3), c.after) << c.phrase;
    }
}

TEST_F(ColumnTableTest, changesRunsOfColumns)
{
    columns.setColumnStyle(1, 3, 5);
    columns.setColumnWidth(2, 4, 700);
    columns.setColumnHidden(3, 5, true);
    const ColumnAttr expected[] = {
        {-1,  0, 0},
        {-1,  5, 0},
        {700, 5, 0},
        {700, 5, 1},
        {700, 0, 1},
        {-1,  0, 1}
    };
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(columns.attributes(column), expected[column]) << column;
    columns.resetColumns(2, 200);
    EXPECT_EQ(columns.size(), 6);
    EXPECT_EQ(columns.attributes(1), expected[1]);
    for (int column = 2; column < 6; ++column)
        EXPECT_EQ(columns.attributes(column), ColumnAttr{}) << column;
}

TEST_F(ColumnTableTest, walksItsRunsOfEqualColumns)
{
    columns.setColumnAttr(1, 2, {500, 0, 0});
    columns.setColumnAttr(3, 3, {500, 0, 1});
    columns.setColumnAttr(6, 8, {-1, 4, 0});
    columns.setColumnAttr(9, 9, {-1, 0, 0});
    const struct {
        int first, last;
        ColumnAttr record;
    } runs[] = {
        {1, 2, {500, 0, 0} },
        {3, 3, {500, 0, 1} },
        {6, 8, {2300, 4, 0}},
    };
    int first = 0;
    int last = 0;
    ColumnAttr record;
    for (const auto& run : runs) {
        ASSERT_TRUE(columns.nextColumnRun(first, last, record));
        EXPECT_EQ(first, run.first);
        EXPECT_EQ(last, run.last);
        EXPECT_EQ(record, run.record);
        first = last + 1;
    }
    EXPECT_FALSE(columns.nextColumnRun(first, last, record));
    first = 200;
    EXPECT_FALSE(columns.nextColumnRun(first, last, record));
}

TEST_F(ColumnTableTest, walksToItsEnd)
{
    columns.setColumnHidden(250, 255, true);
    int first = 0;
    int last = 0;
    ColumnAttr record;
    ASSERT_TRUE(columns.nextColumnRun(first, last, record));
    EXPECT_EQ(first, 250);
    EXPECT_EQ(last, 255);
    first = last + 1;
    EXPECT_FALSE(columns.nextColumnRun(first, last, record));
}

TEST_F(ColumnTableTest, keepsWhatItHadWhenMemoryIsShort)
{
    columns.setColumnStyle(0, 0, 1);
    {
        const AllocationWatch watch(1);
        columns.setColumnStyle(0, 100, 2);
    }
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(columns.size(), 1);
    EXPECT_EQ(columns.columnStyle(0), 2);
    clearError();
    columns.setColumnStyle(0, 100, 3);
    EXPECT_EQ(columns.size(), 101);
    EXPECT_EQ(columns.columnStyle(100), 3);
}

} // namespace
} // namespace vorn
