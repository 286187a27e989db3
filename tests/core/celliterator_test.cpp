#include "core/chain.h"
#include "core/formulacell.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

constexpr RangeRef WholeSheet{0, 0, 16383, 255};

// What a walk meets: "sheet:column,row" in order.
template <typename Next>
std::string walked(CellIterator& iterator, Next next)
{
    std::string text;
    while ((iterator.*next)() != nullptr)
        text += std::to_string(iterator.sheet()) + ":" + std::to_string(iterator.column()) + "," +
                std::to_string(iterator.row()) + " ";
    EXPECT_EQ((iterator.*next)(), nullptr) << "the end stays the end";
    return text;
}

class CellIteratorTest : public testing::Test {
protected:
    CellIteratorTest()
    {
        Sheet& first = *workbook->sheetAt(0);
        first.setCell(1, 1, numberCell(11));
        first.setCell(3, 1, numberCell(31));
        first.setCell(2, 2, blankCell(4));
        first.setCell(0, 3, textCell(u"x"));
        first.setCell(3, 3, numberCell(33, 2));
        first.setCell(1, 9, numberCell(19));
        Sheet& second = *workbook->sheetAt(1);
        second.setCell(2, 0, blankCell(1));
        Sheet& third = *workbook->sheetAt(2);
        third.setCell(2, 2, numberCell(22));
    }

    TestDocument document;
    CellIterator iterator;
};

TEST_F(CellIteratorTest, walksOccupiedCellsByRows)
{
    iterator.start(*workbook->sheetAt(0), WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "0:1,1 0:3,1 0:0,3 0:3,3 0:1,9 ");
    iterator.start(*workbook->sheetAt(0), {1, 1, 3, 3});
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "0:1,1 0:3,1 0:3,3 ");
}

TEST_F(CellIteratorTest, walksPresentCellsByRows)
{
    iterator.start(*workbook->sheetAt(0), {0, 0, 8, 3});
    EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "0:1,1 0:3,1 0:2,2 0:0,3 0:3,3 ");
}

TEST_F(CellIteratorTest, walksDownTheColumns)
{
    iterator.start(*workbook->sheetAt(0), WholeSheet, CellIterator::ByColumns);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "0:0,3 0:1,1 0:1,9 0:3,1 0:3,3 ");
    iterator.start(*workbook->sheetAt(0), {0, 1, 3, 2}, CellIterator::ByColumns);
    EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "0:1,1 0:2,2 ");
}

TEST_F(CellIteratorTest, walksBackward)
{
    iterator.startBackward(*workbook->sheetAt(0), WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::previousPresentCell),
              "0:1,9 0:3,3 0:0,3 0:2,2 0:3,1 0:1,1 ");
    iterator.startBackward(*workbook->sheetAt(0), {1, 1, 3, 2});
    EXPECT_EQ(walked(iterator, &CellIterator::previousPresentCell), "0:2,2 0:1,1 ");
}

TEST_F(CellIteratorTest, goesThroughAPairOfSheetsInEitherOrder)
{
    const char* all = "0:1,1 0:3,1 0:0,3 0:3,3 0:1,9 2:2,2 ";
    iterator.start(0, 2, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), all);
    iterator.start(2, 0, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), all);
    iterator.start(1, 2, WholeSheet, CellIterator::ByColumns);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "2:2,2 ");
    iterator.start(1, 1, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "");
}

TEST_F(CellIteratorTest, passesOverSheetsThatAreNotThere)
{
    iterator.start(2, 254, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "2:2,2 ");
    iterator.start(200, 201, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "");
}

TEST_F(CellIteratorTest, staysInOneSheetForPresentCells)
{
    iterator.start(1, 2, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "1:2,0 ");
    iterator.start(0, 2, {0, 0, 1, 5}, CellIterator::ByColumns);
    EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "0:1,1 0:3,1 ");
}

TEST_F(CellIteratorTest, findsNothingInReversedRanges)
{
    for (const RangeRef& range : {
             RangeRef{9,     0,   0, 9},
             RangeRef{0,     9,   9, 0},
             RangeRef{9,     9,   0, 0},
             RangeRef{16383, 255, 0, 0}
    }) {
        for (const auto order : {CellIterator::ByRows, CellIterator::ByColumns}) {
            iterator.start(0, 2, range, order);
            EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "");
            iterator.start(*workbook->sheetAt(0), range, order);
            EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "");
        }
        iterator.startBackward(*workbook->sheetAt(0), range);
        EXPECT_EQ(walked(iterator, &CellIterator::previousPresentCell), "");
    }
}

TEST_F(CellIteratorTest, meetsTheEndsOfTheSheet)
{
    Sheet& sheet = *workbook->sheetAt(1);
    sheet.setCell(0, 0, numberCell(1));
    sheet.setCell(255, 0, numberCell(1));
    sheet.setCell(0, 16383, numberCell(1));
    sheet.setCell(255, 16383, numberCell(1));
    const RangeRef beyond{0, 0, 65535, 65535};
    for (const RangeRef& range : {WholeSheet, beyond}) {
        iterator.start(sheet, range);
        EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell),
                  "1:0,0 1:255,0 1:0,16383 1:255,16383 ");
        iterator.startBackward(sheet, range);
        EXPECT_EQ(walked(iterator, &CellIterator::previousPresentCell),
                  "1:255,16383 1:0,16383 1:255,0 1:2,0 1:0,0 ");
    }
    iterator.start(sheet, WholeSheet, CellIterator::ByColumns);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell),
              "1:0,0 1:0,16383 1:255,0 1:255,16383 ");
}

TEST_F(CellIteratorTest, walksAnEmptySheetAtOnce)
{
    Sheet* empty = workbook->addSheet(u"Empty");
    iterator.start(*empty, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextPresentCell), "");
    iterator.startBackward(*empty, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::previousPresentCell), "");
}

TEST_F(CellIteratorTest, givesValuesWithResultsInPlaceOfFormulas)
{
    Sheet& sheet = *workbook->sheetAt(2);
    sheet.setCell(5, 5, constantFormula(6, {5, 5, 2}));
    recalculate();
    iterator.start(sheet, WholeSheet);
    const CellValue* first = iterator.nextValue();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(describe(*first), "22");
    const CellValue* second = iterator.nextValue();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(describe(*second), "6");
    EXPECT_EQ(iterator.nextValue(), nullptr);
}

TEST_F(CellIteratorTest, bearsChangesAtAndBehindItsPosition)
{
    Sheet& sheet = *workbook->sheetAt(0);
    iterator.start(sheet, WholeSheet);
    int cells = 0;
    while (iterator.nextOccupiedCell() != nullptr) {
        ++cells;
        sheet.setCell(iterator.column(), iterator.row(), Cell{});
        sheet.setCell(0, 0, numberCell(cells));
    }
    EXPECT_EQ(cells, 5);
    iterator.start(sheet, WholeSheet);
    EXPECT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), "0:0,0 ");
}

// Rows and cells that come while the walk is on: it holds places, so its memory may move.
TEST_F(CellIteratorTest, bearsARowThatGrowsUnderIt)
{
    Sheet& sheet = *workbook->sheetAt(0);
    iterator.start(sheet, {1, 0, 1, 255});
    int cells = 0;
    while (iterator.nextOccupiedCell() != nullptr) {
        if (++cells == 1) {
            for (int column = 200; column < 256; ++column)
                sheet.setCell(column, 1, numberCell(1));
            for (int row = 20; row < 200; ++row)
                sheet.setCell(0, row, numberCell(1));
        }
    }
    EXPECT_EQ(cells, 2 + 56);
}

// What a walk over a small sheet must meet, found by a look at every place.
std::string everyPlace(const Sheet& sheet, const RangeRef& range, CellIterator::Order order,
                       bool (Sheet::*isThere)(int, int) const)
{
    constexpr int side = 14;
    std::string text;
    for (int place = 0; place < side * side; ++place) {
        const bool byRows = order == CellIterator::ByRows;
        const int column = byRows ? place % side : place / side;
        const int row = byRows ? place / side : place % side;
        if (range.contains(column, row) && (sheet.*isThere)(column, row))
            text += "0:" + std::to_string(column) + "," + std::to_string(row) + " ";
    }
    return text;
}

// The places of a walk in reverse.
std::string reversed(const std::string& places)
{
    std::string text;
    for (std::size_t end = places.size(); end > 0;) {
        const std::size_t blank = end >= 2 ? places.rfind(' ', end - 2) : std::string::npos;
        const std::size_t begin = blank == std::string::npos ? 0 : blank + 1;
        text += places.substr(begin, end - begin);
        end = begin;
    }
    return text;
}

TEST_F(CellIteratorTest, isTheSameAsALoopOverAllCells)
{
    Dice dice(1604);
    for (int round = 0; round < 200; ++round) {
        NewDocument(1, FileKindNative);
        Sheet& sheet = *workbook->sheetAt(0);
        for (int count = dice.below(40); count > 0; --count)
            sheet.setCell(dice.below(12), dice.below(12),
                          dice.oneIn(3) ? blankCell(dice.below(3) - 1) : numberCell(1));
        RangeRef range;
        range.set(dice.below(8), dice.below(8), dice.below(7), dice.below(7));
        iterator.start(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::nextOccupiedCell),
                  everyPlace(sheet, range, CellIterator::ByRows, &Sheet::isOccupied));
        iterator.start(sheet, range, CellIterator::ByColumns);
        ASSERT_EQ(walked(iterator, &CellIterator::nextOccupiedCell),
                  everyPlace(sheet, range, CellIterator::ByColumns, &Sheet::isOccupied));
        const std::string present =
            everyPlace(sheet, range, CellIterator::ByRows, &Sheet::isPresent);
        iterator.start(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::nextPresentCell), present);
        iterator.startBackward(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::previousPresentCell), reversed(present));
    }
}

} // namespace
} // namespace vorn
