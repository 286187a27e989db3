#include "core/sheet.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

class SheetTest : public testing::Test {
protected:
    SheetTest() : sheet(*workbook->sheetAt(0)) {}

    std::string at(int column, int row) { return describe(sheet.valueOf(column, row)); }

    TestDocument document;
    Sheet& sheet;
};

TEST_F(SheetTest, storesCellsOfFourteenBytes)
{
    EXPECT_EQ(sizeof(Cell), 14U);
    const Cell cell = numberCell(1, 0x0203);
    const std::uint8_t image[14] = {4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xf0, 0x3f, 3, 2};
    EXPECT_EQ(std::memcmp(&cell, image, sizeof cell), 0);
    sheet.setCell(3, 4, cell);
    EXPECT_EQ(std::memcmp(sheet.cellAt(3, 4), image, sizeof cell), 0);
    const std::uint8_t blank[14] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255};
    const Cell none;
    EXPECT_EQ(std::memcmp(&none, blank, sizeof none), 0);
}

TEST_F(SheetTest, isEmptyWhenNew)
{
    EXPECT_EQ(sheet.lastRow(), 0);
    EXPECT_FALSE(sheet.hasRows());
    EXPECT_EQ(sheet.lastOccupiedColumn(0), -1);
    EXPECT_EQ(sheet.lastPresentColumn(0), -1);
    EXPECT_EQ(sheet.firstColumnOf(0), -1);
    EXPECT_EQ(sheet.rowCount(0), 0);
    EXPECT_EQ(sheet.lastOccupiedRow(0), -1);
    EXPECT_EQ(sheet.lastOccupiedRow(-1), -1);
    EXPECT_EQ(sheet.lastOccupiedColumnOfSheet(), -1);
    EXPECT_EQ(sheet.nextRow(-1), 16384);
    EXPECT_LT(sheet.previousRow(16384), 0);
    EXPECT_FALSE(sheet.rowHasData(0));
    for (int column : {0, 255}) {
        for (int row : {0, 16383})
            EXPECT_EQ(sheet.cellAt(column, row), nullptr);
    }
}

TEST_F(SheetTest, hasItsDefaults)
{
    EXPECT_EQ(sheet.index, 0);
    EXPECT_EQ(sheet.name(), u"Sheet1");
    EXPECT_FALSE(sheet.protectedSheet);
    EXPECT_FALSE(sheet.titleColumns);
    EXPECT_FALSE(sheet.titleRows);
    EXPECT_EQ(sheet.titles, RangeRef{});
    EXPECT_EQ(sheet.leftColumn, 0);
    EXPECT_EQ(sheet.topRow, 0);
    EXPECT_EQ(sheet.rowFlags, 0);
    EXPECT_EQ(sheet.defaultRowHeight, 255);
    EXPECT_EQ(sheet.zoom, 100);
    EXPECT_EQ(sheet.savedZoom, 100);
    EXPECT_TRUE(sheet.showGridlines);
    EXPECT_TRUE(sheet.showTitles);
    EXPECT_TRUE(sheet.showZeros);
    EXPECT_EQ(sheet.selection.range, RangeRef{});
    EXPECT_EQ(sheet.columns.defaultWidth(), 2300);
}

TEST_F(SheetTest, keepsThirtyNineCharactersOfAName)
{
    sheet.setName(std::u16string(60, u'n'));
    EXPECT_EQ(sheet.name(), std::u16string(39, u'n'));
    const char16_t withZero[] = u"ab\0cd";
    sheet.setName({withZero, 5});
    EXPECT_EQ(sheet.name(), u"ab");
}

TEST_F(SheetTest, readsAnyPlaceWithoutHarm)
{
    sheet.setCell(5, 5, numberCell(1));
    const int places[] = {INT16_MIN, -1, 256, 16384, INT16_MAX};
    for (int column : places) {
        for (int row : places) {
            EXPECT_EQ(sheet.cellAt(column, row), nullptr);
            EXPECT_EQ(sheet.valuePointer(column, row), nullptr);
            EXPECT_EQ(sheet.valueTag(column, row), 0);
            EXPECT_FALSE(sheet.isOccupied(column, row));
            EXPECT_FALSE(sheet.isPresent(column, row));
            EXPECT_EQ(sheet.cellStyle(column, row), 0);
            EXPECT_EQ(sheet.cellCopy(column, row).style, -1);
            EXPECT_EQ(sheet.rowHeight(row), 255);
            EXPECT_EQ(sheet.rowCount(row), 0);
        }
        EXPECT_EQ(sheet.cellAt(column, 5), nullptr);
        EXPECT_EQ(sheet.cellAt(5, column), nullptr);
    }
}

TEST_F(SheetTest, writesNothingOutside)
{
    for (const auto& [column, row] : {
             std::pair{-1,  0    },
             {0,   -1   },
             {256, 0    },
             {0,   16384}
    }) {
        sheet.setCell(column, row, numberCell(1));
        EXPECT_EQ(sheet.ensureCell(column, row), nullptr);
    }
    EXPECT_EQ(sheet.ensureRow(-1), nullptr);
    EXPECT_EQ(sheet.ensureRow(16384), nullptr);
    EXPECT_FALSE(sheet.hasRows());
    EXPECT_FALSE(errorStands());
}

TEST_F(SheetTest, storesNoBlankWithoutStyleInAnEmptyPlace)
{
    sheet.setCell(3, 3, Cell{});
    EXPECT_FALSE(sheet.hasRows());
    EXPECT_EQ(sheet.rowAt(3), nullptr);
    sheet.setCell(3, 3, numberCell(1));
    sheet.setCell(7, 3, Cell{});
    sheet.setCell(1, 3, Cell{});
    EXPECT_EQ(sheet.rowCount(3), 4);
    EXPECT_EQ(sheet.firstColumnOf(3), 3);
}

TEST_F(SheetTest, storesABlankWithAStyleAsARealCell)
{
    sheet.setCell(3, 3, blankCell(0));
    EXPECT_TRUE(sheet.isPresent(3, 3));
    EXPECT_FALSE(sheet.isOccupied(3, 3));
    EXPECT_EQ(sheet.lastPresentColumn(3), 3);
    EXPECT_EQ(sheet.lastOccupiedColumn(3), -1);
    EXPECT_FALSE(sheet.rowHasData(3));
    EXPECT_EQ(sheet.lastOccupiedRow(3), -1);
}

TEST_F(SheetTest, storesTheVeryLastCell)
{
    sheet.setCell(255, 16383, numberCell(1));
    EXPECT_EQ(sheet.lastRow(), 16383);
    EXPECT_EQ(sheet.rowCount(16383), 256);
    EXPECT_EQ(sheet.firstColumnOf(16383), 255);
    for (int column = 0; column < 255; ++column)
        EXPECT_EQ(sheet.cellAt(column, 16383), nullptr) << column;
    EXPECT_EQ(at(255, 16383), "1");
    EXPECT_EQ(sheet.nextRow(-1), 16383);
    EXPECT_EQ(sheet.nextRow(16383), 16384);
}

TEST_F(SheetTest, growsARowByItsRule)
{
    const struct {
        const char* phrase;
        std::vector<int> columns;
        int count, capacity;
    } cases[] = {
        {"the first cell takes exactly its column", {200},      201, 201},
        {"a lower one takes nothing",               {5, 2},     6,   6  },
        {"the next one the least step",             {0, 1},     2,   5  },
        {"or what it needs",                        {0, 100},   101, 101},
        {"later an eighth",                         {199, 200}, 201, 225},
    };
    for (const auto& c : cases) {
        NewDocument(1, FileKindNative);
        Sheet& fresh = *workbook->sheetAt(0);
        for (int column : c.columns)
            fresh.setCell(column, 0, numberCell(column));
        EXPECT_EQ(fresh.rowCount(0), c.count) << c.phrase;
        EXPECT_EQ(fresh.rowAt(0)->cells.capacity(), c.capacity) << c.phrase;
    }
}

TEST_F(SheetTest, hidesWhatLiesBelowTheFirstColumn)
{
    sheet.setCell(5, 0, numberCell(5));
    const Cell copy = sheet.cellCopy(4, 0);
    EXPECT_EQ(copy.value.tag, TagBlank);
    EXPECT_EQ(copy.style, -1);
    EXPECT_EQ(sheet.cellAt(4, 0), nullptr);
    sheet.setCell(2, 0, numberCell(2));
    EXPECT_EQ(sheet.firstColumnOf(0), 2);
    EXPECT_EQ(sheet.rowCount(0), 6);
    ASSERT_NE(sheet.cellAt(4, 0), nullptr);
    EXPECT_EQ(sheet.cellAt(4, 0)->style, -1);
}

TEST_F(SheetTest, neverShrinksARow)
{
    sheet.setCell(2, 7, numberCell(2));
    sheet.setCell(5, 7, numberCell(5));
    sheet.setCell(5, 7, Cell{});
    sheet.setCell(2, 7, Cell{});
    EXPECT_EQ(sheet.rowCount(7), 6);
    EXPECT_EQ(sheet.firstColumnOf(7), 2);
    EXPECT_NE(sheet.rowAt(7), nullptr);
    EXPECT_EQ(sheet.lastRow(), 7);
    EXPECT_EQ(sheet.lastOccupiedColumn(7), -1);
    EXPECT_FALSE(sheet.rowHasData(7));
}

TEST_F(SheetTest, beginsARowOfAttributesAtColumnA)
{
    sheet.setRowHidden(4, true);
    EXPECT_EQ(sheet.rowCount(4), 0);
    EXPECT_EQ(sheet.cellAt(0, 4), nullptr);
    sheet.setCell(5, 4, numberCell(5));
    EXPECT_EQ(sheet.firstColumnOf(4), 0);
    EXPECT_FALSE(sheet.isPresent(0, 4));
}

TEST_F(SheetTest, releasesWhatItOverwrites)
{
    const Cell text = textCell(u"old");
    sheet.setCell(0, 0, text);
    EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);
    sheet.setCell(0, 0, numberCell(1));
    EXPECT_FALSE(stringPool->isLive(text.value.textIndex()));

    const Cell formula = constantFormula(1, {0, 0, 0});
    const std::int32_t code = formula.value.formula()->formula;
    sheet.setCell(0, 0, formula);
    EXPECT_NE(calcChain.first(), nullptr);
    sheet.setCell(0, 0, blankCell(2));
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_FALSE(formulaPool->isLive(code));
}

TEST_F(SheetTest, releasesNothingWhenACellIsStoredAgain)
{
    Cell text = textCell(u"kept");
    sheet.setCell(0, 0, text);
    text.style = 5;
    sheet.setCellKeepChain(0, 0, text, false);
    EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);
    EXPECT_EQ(at(0, 0), "\"kept\"");
    EXPECT_EQ(sheet.cellStyle(0, 0), 5);

    Cell formula = constantFormula(1, {0, 1, 0});
    sheet.setCellKeepChain(1, 0, formula, false);
    EXPECT_EQ(calcChain.first(), nullptr);
    sheet.setCellKeepChain(2, 0, constantFormula(1, {0, 2, 0}), true);
    EXPECT_NE(calcChain.first(), nullptr);
}

TEST_F(SheetTest, readsAFormulaByItsResult)
{
    const Cell formula = constantFormula(4, {2, 1, 0}, 3);
    sheet.setCell(1, 2, formula);
    EXPECT_EQ(at(1, 2), "blank");
    EXPECT_TRUE(sheet.isOccupied(1, 2));
    EXPECT_EQ(sheet.valueTag(1, 2), TagBlank);
    recalculate();
    EXPECT_EQ(at(1, 2), "4");
    EXPECT_EQ(sheet.valueTag(1, 2), TagNumber);
    EXPECT_EQ(sheet.valuePointer(1, 2), &formula.value.formula()->result);
    EXPECT_EQ(sheet.cellCopy(1, 2).value.tag, TagFormula);
    EXPECT_EQ(sheet.cellCopy(1, 2).style, 3);
    EXPECT_EQ(describe(resultOf(sheet.cellAt(1, 2)->value)), "4");
}

TEST_F(SheetTest, lendsATextWithoutCountingIt)
{
    const Cell text = textCell(u"lent");
    sheet.setCell(0, 0, text);
    const Cell copy = sheet.cellCopy(0, 0);
    const CellValue value = sheet.valueOf(0, 0);
    EXPECT_EQ(copy.value.textIndex(), value.textIndex());
    EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);
}

TEST_F(SheetTest, findsAStyleByCellRowAndColumn)
{
    constexpr int NoStyle = -1;
    const struct {
        const char* phrase;
        int cell, row, column, style;
    } cases[] = {
        {"nothing at all",                NoStyle, 0, 0, 0},
        {"the column's",                  NoStyle, 0, 3, 3},
        {"the row's before the column's", NoStyle, 4, 3, 4},
        {"the cell's before the row's",   5,       4, 3, 5},
        {"style 0 of a cell counts",      0,       4, 3, 0},
        {"style 0 of a row does not",     NoStyle, 0, 7, 7},
    };
    for (const auto& c : cases) {
        NewDocument(1, FileKindNative);
        Sheet& fresh = *workbook->sheetAt(0);
        if (c.row != 0)
            fresh.setRowStyle(6, c.row);
        fresh.columns.setColumnStyle(2, 2, c.column);
        fresh.setCell(2, 6, numberCell(1, c.cell));
        EXPECT_EQ(fresh.cellStyle(2, 6), c.style) << c.phrase;
        EXPECT_EQ(fresh.cellCopyStyled(2, 6).style, c.style) << c.phrase;
        EXPECT_EQ(fresh.cellCopy(2, 6).style, c.cell) << c.phrase;
    }
    workbook->sheetAt(0)->columns.setColumnStyle(9, 9, 8);
    EXPECT_EQ(workbook->sheetAt(0)->cellStyle(9, 16000), 8);
    EXPECT_EQ(workbook->sheetAt(0)->cellCopyStyled(9, 16000).style, 8);
}

TEST_F(SheetTest, writesAStyleOnlyWhereItIsAnother)
{
    sheet.columns.setColumnStyle(2, 2, 3);
    sheet.setCellStyle(2, 5, 3);
    EXPECT_FALSE(sheet.isPresent(2, 5));
    sheet.setCellStyle(2, 5, 4);
    EXPECT_TRUE(sheet.isPresent(2, 5));
    EXPECT_EQ(sheet.cellStyle(2, 5), 4);
    sheet.setCell(2, 6, numberCell(1));
    sheet.setCellStyle(2, 6, 3);
    EXPECT_EQ(sheet.cellAt(2, 6)->style, -1);
    sheet.setCellStyle(2, 6, 0);
    EXPECT_EQ(sheet.cellAt(2, 6)->style, 0);
    EXPECT_EQ(at(2, 6), "1");
}

TEST_F(SheetTest, restylesAFormulaWithoutTouchingTheChain)
{
    sheet.setCell(0, 0, constantFormula(1, {0, 0, 0}));
    sheet.setCell(1, 0, constantFormula(2, {0, 1, 0}));
    calcChain.sort();
    const FormulaCell* first = calcChain.first();
    sheet.setCellStyle(0, 0, 9);
    EXPECT_FALSE(calcChain.needsSort());
    EXPECT_EQ(calcChain.first(), first);
    EXPECT_EQ(sheet.cellAt(0, 0)->value.formula(), first);
}

TEST_F(SheetTest, makesABlankCell)
{
    Cell* cell = sheet.ensureCell(3, 4);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->value.tag, TagBlank);
    EXPECT_EQ(cell->style, -1);
    EXPECT_EQ(cell, sheet.cellAt(3, 4));
    EXPECT_FALSE(sheet.isPresent(3, 4));
    EXPECT_EQ(sheet.firstColumnOf(4), 3);
    sheet.setCell(3, 4, numberCell(7, 2));
    EXPECT_EQ(sheet.ensureCell(3, 4), sheet.cellAt(3, 4));
    EXPECT_EQ(at(3, 4), "7");
    EXPECT_EQ(sheet.cellStyle(3, 4), 2);
}

// --- Swapping

TEST_F(SheetTest, swapsCellsOfEveryKind)
{
    enum Kind { None, Blank, Number, Text, Formula };
    const auto put = [](Sheet& target, Kind kind, int column, int row) {
        const CellPosition position{static_cast<std::uint16_t>(row),
                                    static_cast<std::uint16_t>(column), 0};
        if (kind == Blank)
            target.setCell(column, row, blankCell(column + 1));
        if (kind == Number)
            target.setCell(column, row, numberCell(column, column + 1));
        if (kind == Text)
            target.setCell(column, row, textCell(u"text", column + 1));
        if (kind == Formula)
            target.setCell(column, row, constantFormula(column, position, column + 1));
    };
    for (const Kind a : {None, Blank, Number, Text, Formula}) {
        for (const Kind b : {None, Blank, Number, Text, Formula}) {
            NewDocument(1, FileKindNative);
            Sheet& fresh = *workbook->sheetAt(0);
            put(fresh, a, 3, 2);
            put(fresh, b, 1, 9);
            calcChain.sort();
            const Cell cellA = fresh.cellCopy(3, 2);
            const Cell cellB = fresh.cellCopy(1, 9);
            fresh.swapCells(3, 2, 1, 9);
            const Cell newA = fresh.cellCopy(3, 2);
            const Cell newB = fresh.cellCopy(1, 9);
            EXPECT_EQ(std::memcmp(&newA, &cellB, sizeof newA), 0) << a << " " << b;
            EXPECT_EQ(std::memcmp(&newB, &cellA, sizeof newB), 0) << a << " " << b;
            EXPECT_FALSE(calcChain.needsSort()) << a << " " << b;
            if (a == Formula) {
                EXPECT_EQ(newB.value.formula()->position(), (CellPosition{9, 1, 0}));
            }
            if (b == Formula) {
                EXPECT_EQ(newA.value.formula()->position(), (CellPosition{2, 3, 0}));
            }
        }
    }
}

TEST_F(SheetTest, swapsACellWithItself)
{
    sheet.setCell(1, 1, textCell(u"same", 4));
    sheet.swapCells(1, 1, 1, 1);
    EXPECT_EQ(at(1, 1), "\"same\"");
    EXPECT_EQ(stringPool->refCount(sheet.cellAt(1, 1)->value.textIndex()), 1);
}

TEST_F(SheetTest, swapsAlongALine)
{
    for (int column = 0; column < 4; ++column) {
        sheet.setCell(column, 0, numberCell(column));
        sheet.setCell(column, 5, numberCell(10 + column));
    }
    sheet.swapRows(1, 2, 0, 5);
    const double top[] = {0, 11, 12, 3};
    const double bottom[] = {10, 1, 2, 13};
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(sheet.valueOf(column, 0).number(), top[column]);
        EXPECT_EQ(sheet.valueOf(column, 5).number(), bottom[column]);
    }
    sheet.swapColumns(0, 4, 0, 3);
    EXPECT_EQ(sheet.valueOf(0, 0).number(), 3);
    EXPECT_EQ(sheet.valueOf(3, 0).number(), 0);
    EXPECT_EQ(sheet.valueOf(0, 5).number(), 10);
    EXPECT_EQ(sheet.valueOf(3, 5).number(), 13);
}

TEST_F(SheetTest, swapsNothingWhileMemoryIsShort)
{
    sheet.setCell(0, 0, constantFormula(1, {0, 0, 0}));
    sheet.setCell(1, 0, numberCell(5));
    raiseError(ErrorMemory);
    sheet.swapCells(0, 0, 1, 0);
    EXPECT_EQ(sheet.cellAt(0, 0)->value.tag, TagFormula);
    EXPECT_EQ(sheet.cellAt(0, 0)->value.formula()->position(), (CellPosition{0, 0, 0}));
    EXPECT_EQ(at(1, 0), "5");
    clearError();
}

// --- Extents

TEST_F(SheetTest, tellsHowFarItReaches)
{
    sheet.setCell(3, 2, numberCell(1));
    sheet.setCell(6, 2, blankCell(1));
    sheet.setCell(1, 5, numberCell(1));
    sheet.setCell(8, 5, textCell(u""));
    sheet.setCell(2, 9, blankCell(1));
    sheet.setRowHidden(12, true);
    EXPECT_EQ(sheet.lastRow(), 12);
    EXPECT_EQ(sheet.rowCount(2), 7);
    EXPECT_EQ(sheet.lastOccupiedColumn(2), 3);
    EXPECT_EQ(sheet.lastPresentColumn(2), 6);
    EXPECT_EQ(sheet.lastOccupiedColumn(5), 8);
    EXPECT_EQ(sheet.lastOccupiedColumn(9), -1);
    EXPECT_EQ(sheet.lastOccupiedRow(1), 5);
    EXPECT_EQ(sheet.lastOccupiedRow(3), 2);
    EXPECT_EQ(sheet.lastOccupiedRow(2), -1);
    EXPECT_EQ(sheet.lastOccupiedRow(200), -1);
    EXPECT_EQ(sheet.lastOccupiedRow(-1), 5 | 8 << 16);
    EXPECT_EQ(sheet.lastOccupiedColumnOfSheet(), 8);
    EXPECT_TRUE(sheet.rowHasData(2));
    EXPECT_FALSE(sheet.rowHasData(9));
    EXPECT_FALSE(sheet.rowHasData(12));
}

TEST_F(SheetTest, stepsOverItsRows)
{
    for (int row : {0, 4, 9})
        sheet.setCell(0, row, numberCell(1));
    const struct {
        int from, next, previous;
    } cases[] = {
        {-30000, 0,     -1},
        {-1,     0,     -1},
        {0,      4,     -1},
        {1,      4,     0 },
        {4,      9,     0 },
        {5,      9,     4 },
        {9,      16384, 4 },
        {10,     16384, 9 },
        {16383,  16384, 9 },
        {30000,  16384, 9 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(sheet.nextRow(c.from), c.next) << c.from;
        EXPECT_EQ(sheet.previousRow(c.from), c.previous) << c.from;
    }
}

TEST_F(SheetTest, stepsOverTheCellsOfARow)
{
    sheet.setCell(3, 0, numberCell(1));
    sheet.setCell(5, 0, blankCell(0));
    sheet.setCell(8, 0, numberCell(1));
    sheet.setCell(9, 0, numberCell(1));
    sheet.setCell(9, 0, Cell{});
    const struct {
        int from, occupied, present, occupiedBelow, presentBelow;
    } cases[] = {
        {-100, 3,   3,   -1, -1},
        {-1,   3,   3,   -1, -1},
        {2,    3,   3,   -1, -1},
        {3,    8,   5,   -1, -1},
        {4,    8,   5,   3,  3 },
        {5,    8,   8,   3,  3 },
        {6,    8,   8,   3,  5 },
        {8,    256, 256, 3,  5 },
        {9,    256, 256, 8,  8 },
        {255,  256, 256, 8,  8 },
        {256,  256, 256, 8,  8 },
        {999,  256, 256, 8,  8 },
    };
    const Row& row = *sheet.rowAt(0);
    for (const auto& c : cases) {
        EXPECT_EQ(nextOccupied(row, c.from), c.occupied) << c.from;
        EXPECT_EQ(nextPresent(row, c.from), c.present) << c.from;
        EXPECT_EQ(previousOccupied(row, c.from), c.occupiedBelow) << c.from;
        EXPECT_EQ(previousPresent(row, c.from), c.presentBelow) << c.from;
    }
}

// --- Rows

TEST_F(SheetTest, givesRowsTheirHeight)
{
    EXPECT_EQ(sheet.rowHeight(3), 255);
    EXPECT_EQ(sheet.rowPixels(3), 17);
    sheet.setRowHeight(3, 255, true);
    EXPECT_EQ(sheet.rowAt(3), nullptr) << "the default height makes no row";
    sheet.setRowHeight(3, 400, false);
    EXPECT_EQ(sheet.rowHeight(3), 400);
    EXPECT_EQ(sheet.rowPixels(3), 26);
    EXPECT_FALSE(sheet.rowHasCustomHeight(3));
    sheet.setRowHeight(3, 255, true);
    EXPECT_EQ(sheet.rowHeight(3), 255);
    EXPECT_TRUE(sheet.rowHasCustomHeight(3));
    sheet.setRowHeight(3, 300, false);
    EXPECT_FALSE(sheet.rowHasCustomHeight(3));
}

TEST_F(SheetTest, takesTheDefaultHeightOfTheMoment)
{
    sheet.defaultRowHeight = 300;
    EXPECT_EQ(sheet.rowHeight(7), 300);
    sheet.setRowHeight(7, 300, false);
    EXPECT_EQ(sheet.rowAt(7), nullptr);
    sheet.setCell(0, 7, numberCell(1));
    sheet.defaultRowHeight = 400;
    EXPECT_EQ(sheet.rowHeight(7), 300);
    EXPECT_EQ(sheet.rowHeight(8), 400);
}

TEST_F(SheetTest, hidesRows)
{
    sheet.setRowHidden(5, false);
    EXPECT_NE(sheet.rowAt(5), nullptr) << "the row is made either way";
    EXPECT_FALSE(sheet.rowHidden(5));
    sheet.setRowHidden(5, true);
    EXPECT_TRUE(sheet.rowHidden(5));
    EXPECT_EQ(sheet.rowAt(5)->flags, 1 << 5);
    EXPECT_EQ(sheet.rowHeight(5), 255);
    EXPECT_EQ(sheet.visibleRowHeight(5), 0);
    EXPECT_EQ(sheet.rowPixels(5), 0);
    sheet.setRowHeight(5, 500, true);
    EXPECT_TRUE(sheet.rowHidden(5));
    EXPECT_EQ(sheet.rowAt(5)->flags, 1 << 5 | 1 << 6);
    sheet.setRowHidden(5, false);
    EXPECT_EQ(sheet.visibleRowHeight(5), 500);
    EXPECT_TRUE(sheet.rowHasCustomHeight(5));
    EXPECT_FALSE(sheet.rowHidden(6));
    EXPECT_FALSE(sheet.rowHasCustomHeight(6));
}

TEST_F(SheetTest, selectsARangeBetweenTwoCorners)
{
    Selection selection;
    selection.select({8, 2}, {3, 6});
    EXPECT_EQ(selection.range, (RangeRef{3, 2, 8, 6}));
    EXPECT_EQ(selection.activeRow, 8);
    EXPECT_EQ(selection.activeColumn, 2);
    EXPECT_EQ(selection.anchorRow, 8);
    EXPECT_EQ(selection.anchorColumn, 2);
    EXPECT_EQ(selection.cornerRow, 3);
    EXPECT_EQ(selection.cornerColumn, 6);
}

TEST_F(SheetTest, showsACellInItsFormat)
{
    CellStyle style = defaultStyle();
    style.set(StyleFormat, FormatIndexPercent);
    const int percent = workbook->addStyle(style);
    sheet.setCell(0, 0, numberCell(0.5, percent));
    EXPECT_EQ(sheet.cellText(0, 0), u"50.00%");
    EXPECT_EQ(sheet.cellInput(0, 0), u"0.5");
    sheet.columns.setColumnStyle(1, 1, percent);
    sheet.setCell(1, 0, constantFormula(2, {0, 1, 0}));
    recalculate();
    EXPECT_EQ(sheet.cellText(1, 0), u"200.00%");
    EXPECT_EQ(sheet.cellInput(1, 0), u"=2");
    EXPECT_EQ(sheet.cellText(2, 0), u"");
    EXPECT_EQ(sheet.cellInput(2, 0), u"");
}

// --- Memory

TEST_F(SheetTest, storesNothingWhileMemoryIsShort)
{
    sheet.setCell(0, 0, numberCell(1));
    raiseError(ErrorMemory);
    sheet.setCell(0, 0, numberCell(2));
    sheet.setCell(1, 0, numberCell(2));
    EXPECT_EQ(at(0, 0), "1");
    EXPECT_EQ(sheet.cellAt(1, 0), nullptr);
    EXPECT_EQ(sheet.ensureCell(1, 0), nullptr);
    Cell text = textCell(u"the caller's");
    sheet.setCell(0, 0, text);
    EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);
    releaseValue(text.value);
    clearError();
    sheet.setCell(0, 0, numberCell(2));
    EXPECT_EQ(at(0, 0), "2");
}

TEST_F(SheetTest, storesWhileAnotherErrorStands)
{
    raiseError(ErrorFileRead);
    sheet.setCell(0, 0, numberCell(1));
    EXPECT_EQ(at(0, 0), "1");
    clearError();
}

TEST_F(SheetTest, keepsWhatItHadWhenAnyOneAllocationIsRefused)
{
    // Storing asks for a row, for the list of rows and for the cells of the row.
    bool refusedOne = true;
    int refusals = 0;
    for (int refused = 1; refusedOne; ++refused) {
        NewDocument(1, FileKindNative);
        Sheet& fresh = *workbook->sheetAt(0);
        const Cell formula = constantFormula(1, {5, 3, 0});
        const Cell text = textCell(u"text");
        AllocationWatch watch(refused);
        fresh.setCell(3, 5, formula);
        const bool storedFirst = !errorStands();
        fresh.setCell(9, 5, text);
        const bool storedSecond = !errorStands();
        refusedOne = watch.refused();
        refusals += refusedOne ? 1 : 0;

        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone);
        EXPECT_EQ(fresh.isOccupied(3, 5), storedFirst);
        EXPECT_EQ(fresh.isOccupied(9, 5), storedSecond);
        EXPECT_EQ(calcChain.first(), storedFirst ? formula.value.formula() : nullptr);
        EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);

        // What was not stored is still the caller's, and can be stored once there is memory.
        clearError();
        if (!storedFirst)
            fresh.setCell(3, 5, formula);
        if (!storedSecond)
            fresh.setCell(9, 5, text);
        EXPECT_TRUE(fresh.isOccupied(3, 5));
        EXPECT_EQ(describe(fresh.valueOf(9, 5)), "\"text\"");
        EXPECT_EQ(fresh.firstColumnOf(5), 3);
    }
    EXPECT_EQ(refusals, 4);
}

TEST_F(SheetTest, makesNoRowWhenAnyOneAllocationIsRefused)
{
    for (int refused = 1; refused <= 3; ++refused) {
        NewDocument(1, FileKindNative);
        Sheet& fresh = *workbook->sheetAt(0);
        AllocationWatch watch(refused);
        const Row* row = fresh.ensureRow(100);
        EXPECT_EQ(row == nullptr, refused <= 2);
        EXPECT_EQ(errorState.code, refused <= 2 ? ErrorMemory : ErrorNone);
        EXPECT_EQ(watch.liveBlocks(), refused <= 2 ? 0 : 2);
        EXPECT_EQ(fresh.nextRow(-1), refused <= 2 ? 16384 : 100);
        clearError();
        EXPECT_NE(fresh.ensureRow(100), nullptr);
    }
}

TEST_F(SheetTest, givesBackWhatItsCellsOwn)
{
    workbook->addSheet(u"Doomed");
    Sheet& doomed = *workbook->sheetAt(3);
    const Cell text = textCell(u"text");
    stringPool->addRef(text.value.textIndex());
    const Cell formula = constantFormula(1, {1, 0, 3});
    const std::int32_t code = formula.value.formula()->formula;
    formulaPool->addRef(code);
    doomed.setCell(0, 0, text);
    doomed.setCell(0, 1, formula);
    recalculate();
    workbook->removeSheet(3);
    EXPECT_EQ(stringPool->refCount(text.value.textIndex()), 1);
    EXPECT_EQ(formulaPool->refCount(code), 1);
    EXPECT_EQ(calcChain.first(), nullptr);
}

} // namespace
} // namespace vorn
