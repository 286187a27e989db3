#include "core/chain.h"
#include "core/formulacell.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

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

TEST_F(CellIteratorTest, isTheSameAsALoopOverAllCells)
{
    Dice dice(1604);
    for (int round = 0; round < 200; ++round) {
        NewDocument(1, FileKindNative);
        Sheet& sheet = *workbook->sheetAt(0);
        for (int count = dice.below(40); count > 0; --count)
            sheet.setCell(dice.below(12), dice.below(12),
                          dice.oneIn(3) ? blankCell(dice.below(3) - 1) : numberCell(1));
        const RangeRef range{
            static_cast<std::uint16_t>(dice.below(8)), static_cast<std::uint16_t>(dice.below(8)),
            static_cast<std::uint16_t>(dice.below(14)), static_cast<std::uint16_t>(dice.below(14))};
        std::string byRows;
        std::string byColumns;
        std::vector<std::string> present;
        for (int a = 0; a < 14; ++a) {
            for (int b = 0; b < 14; ++b) {
                if (range.contains(b, a) && sheet.isOccupied(b, a))
                    byRows += "0:" + std::to_string(b) + "," + std::to_string(a) + " ";
                if (range.contains(a, b) && sheet.isOccupied(a, b))
                    byColumns += "0:" + std::to_string(a) + "," + std::to_string(b) + " ";
                if (range.contains(b, a) && sheet.isPresent(b, a))
                    present.push_back("0:" + std::to_string(b) + "," + std::to_string(a) + " ");
            }
        }
        iterator.start(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), byRows);
        iterator.start(sheet, range, CellIterator::ByColumns);
        ASSERT_EQ(walked(iterator, &CellIterator::nextOccupiedCell), byColumns);
        std::string forward;
        for (const std::string& place : present)
            forward += place;
        iterator.start(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::nextPresentCell), forward);
        std::string backward;
        std::for_each(present.rbegin(), present.rend(),
                      [&backward](const std::string& place) { backward += place; });
        iterator.startBackward(sheet, range);
        ASSERT_EQ(walked(iterator, &CellIterator::previousPresentCell), backward);
    }
}

} // namespace
} // namespace vorn
