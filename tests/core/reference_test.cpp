#include "core/reference.h"

#include <cstring>
#include <gtest/gtest.h>

namespace vorn {
namespace {

template <std::size_t size, typename Record>
void expectBytes(const Record& record, const std::uint8_t (&bytes)[size], const char* what)
{
    static_assert(sizeof(Record) == size);
    EXPECT_EQ(std::memcmp(&record, bytes, size), 0) << what;
}

TEST(CellRef, holdsTheRowBeforeTheColumn)
{
    expectBytes(CellRef{0x1234, 0xc056}, {0x34, 0x12, 0x56, 0xc0}, "a cell");
    expectBytes(RangeRef{1, 2, 0x3fff, 255}, {1, 0, 2, 0, 0xff, 0x3f, 255, 0}, "a range");
}

TEST(CellRef, isResolvedAgainstTheFormulasCell)
{
    const struct {
        const char* phrase;
        CellRef stored;
        int baseColumn, baseRow;
        CellRef plain;
    } cases[] = {
        {"absolute both ways",                {5, 6},           100, 200,   {5, 6}      },
        {"the base counts for nothing",       {16383, 255},     255, 16383, {16383, 255}},
        {"relative row",                      {3, 0x8007},      100, 200,   {203, 7}    },
        {"relative column",                   {3, 0x4007},      100, 200,   {3, 107}    },
        {"relative both ways",                {3, 0xc007},      100, 200,   {203, 107}  },
        {"one row up",                        {0xffff, 0x8001}, 0,   10,    {9, 1}      },
        {"a row above the first is the last", {0xffff, 0x8001}, 0,   0,     {16383, 1}  },
        {"a row past the last is the first",  {1, 0x8001},      0,   16383, {0, 1}      },
        {"one column left",                   {0, 0x40ff},      10,  0,     {0, 9}      },
        {"a column before A is IV",           {0, 0x40ff},      0,   0,     {0, 255}    },
        {"a column past IV is A",             {0, 0x4001},      255, 0,     {0, 0}      },
        {"other bits of the column vanish",   {1, 0x3f02},      0,   0,     {1, 2}      },
    };
    for (const auto& c : cases)
        EXPECT_EQ(resolve(c.stored, c.baseColumn, c.baseRow), c.plain) << c.phrase;
}

TEST(RangeRef, answersItsTests)
{
    struct Answers {
        bool multiCell, wholeColumns, wholeRows, wholeSheet;
    };
    const struct {
        const char* phrase;
        RangeRef range;
        Answers answers;
    } cases[] = {
        {"one cell",               {3, 4, 3, 4},       {false, false, false, false}},
        {"two rows",               {3, 4, 4, 4},       {true, false, false, false} },
        {"two columns",            {3, 4, 3, 5},       {true, false, false, false} },
        {"one whole column",       {0, 4, 16383, 4},   {true, true, false, false}  },
        {"a row short of that",    {0, 4, 16382, 4},   {true, false, false, false} },
        {"one whole row",          {7, 0, 7, 255},     {true, false, true, false}  },
        {"a column short of that", {7, 1, 7, 255},     {true, false, false, false} },
        {"the whole sheet",        {0, 0, 16383, 255}, {true, true, true, true}    },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.range.isMultiCell(), c.answers.multiCell) << c.phrase;
        EXPECT_EQ(c.range.isWholeColumns(), c.answers.wholeColumns) << c.phrase;
        EXPECT_EQ(c.range.isWholeRows(), c.answers.wholeRows) << c.phrase;
        EXPECT_EQ(c.range.isWholeSheet(), c.answers.wholeSheet) << c.phrase;
    }
}

TEST(RangeRef, hasARowOnlyIfItIsOfWholeRows)
{
    const RangeRef rows{3, 0, 5, 255};
    EXPECT_FALSE(rows.rowInRange(2));
    EXPECT_TRUE(rows.rowInRange(3));
    EXPECT_TRUE(rows.rowInRange(5));
    EXPECT_FALSE(rows.rowInRange(6));
    EXPECT_FALSE((RangeRef{3, 0, 5, 254}.rowInRange(4)));
    const RangeRef columns{0, 3, 16383, 5};
    EXPECT_FALSE(columns.columnInRange(2));
    EXPECT_TRUE(columns.columnInRange(3));
    EXPECT_TRUE(columns.columnInRange(5));
    EXPECT_FALSE(columns.columnInRange(6));
    EXPECT_FALSE((RangeRef{1, 3, 16383, 5}.columnInRange(4)));
}

TEST(RangeRef, containsItsCornersAndNothingBeside)
{
    const RangeRef range{3, 10, 5, 20};
    const struct {
        int column, row;
        bool inside;
    } cases[] = {
        {10, 3,  true },
        {20, 5,  true },
        {10, 5,  true },
        {20, 3,  true },
        {15, 4,  true },
        {9,  3,  false},
        {21, 5,  false},
        {10, 2,  false},
        {20, 6,  false},
        {4,  15, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(range.contains(c.column, c.row), c.inside) << c.column << "," << c.row;
}

TEST(RangeRef, intersectsWhereCellsAreShared)
{
    const RangeRef range{10, 10, 20, 20};
    const struct {
        const char* phrase;
        RangeRef other;
        bool shared;
        RangeRef common;
    } cases[] = {
        {"itself",            {10, 10, 20, 20}, true,  {10, 10, 20, 20}},
        {"a part",            {12, 13, 14, 15}, true,  {12, 13, 14, 15}},
        {"what holds it",     {0, 0, 99, 99},   true,  {10, 10, 20, 20}},
        {"a corner",          {20, 20, 30, 30}, true,  {20, 20, 20, 20}},
        {"the other corner",  {0, 20, 10, 30},  true,  {10, 20, 10, 20}},
        {"the row below",     {21, 10, 30, 20}, false, range           },
        {"the row above",     {0, 10, 9, 20},   false, range           },
        {"the column before", {10, 0, 20, 9},   false, range           },
        {"the column behind", {10, 21, 20, 30}, false, range           },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(range.intersects(c.other), c.shared) << c.phrase;
        EXPECT_EQ(c.other.intersects(range), c.shared) << c.phrase;
        RangeRef part = range;
        EXPECT_EQ(part.intersect(c.other), c.shared) << c.phrase;
        EXPECT_EQ(part, c.common) << c.phrase;
    }
}

TEST(RangeRef, isMadeFromACornerAndASize)
{
    RangeRef range;
    range.set(2, 7, 1, 1);
    EXPECT_EQ(range, (RangeRef{7, 2, 7, 2}));
    range.set(0, 0, 256, 16384);
    EXPECT_TRUE(range.isWholeSheet());
}

TEST(RangeRef, sortsTwoCorners)
{
    const RangeRef sorted{1, 2, 8, 9};
    EXPECT_EQ(sortedRange({1, 2}, {8, 9}), sorted);
    EXPECT_EQ(sortedRange({8, 9}, {1, 2}), sorted);
    EXPECT_EQ(sortedRange({1, 9}, {8, 2}), sorted);
    EXPECT_EQ(sortedRange({8, 2}, {1, 9}), sorted);
}

} // namespace
} // namespace vorn
