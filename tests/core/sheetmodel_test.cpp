// A sheet against the plainest model of one: a map of cells, and the styles of rows and columns.
#include "core/chain.h"
#include "core/pool.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>

namespace vorn {
namespace {

// The sheet's far corner takes part, so that the limits do as well.
constexpr int Side = 9;
constexpr int RowOffset = RowCount - Side;

class Model {
public:
    struct ModelCell {
        std::string value = "blank";
        int style = -1;

        bool isPresent() const { return value != "blank" || style >= 0; }
    };
    using Place = std::pair<int, int>; // row, column

    std::map<Place, ModelCell> cells;
    std::map<int, int> rowStyles;
    std::map<int, int> columnStyles;

    ModelCell at(int column, int row) const
    {
        const auto found = cells.find({row, column});
        return found == cells.end() ? ModelCell{} : found->second;
    }

    int effectiveStyle(int column, int row) const
    {
        if (const int style = at(column, row).style; style >= 0)
            return style;
        const int rowStyle = styleIn(rowStyles, row);
        return rowStyle > 0 ? rowStyle : styleIn(columnStyles, column);
    }

    void set(int column, int row, const ModelCell& cell)
    {
        cells.erase({row, column});
        if (cell.isPresent())
            cells[{row, column}] = cell;
    }

    void setStyle(int column, int row, int style)
    {
        if (effectiveStyle(column, row) != style)
            set(column, row, {at(column, row).value, style});
    }

    void swap(int columnA, int rowA, int columnB, int rowB)
    {
        const ModelCell a = at(columnA, rowA);
        const ModelCell b = at(columnB, rowB);
        set(columnA, rowA, b);
        set(columnB, rowB, a);
    }

    template <typename Change>
    void forEachIn(const RangeRef& range, Change change)
    {
        for (int row = range.firstRow; row <= range.lastRow; ++row) {
            for (int column = range.firstColumn; column <= range.lastColumn; ++column)
                change(column, row);
        }
    }

    void clearContents(const RangeRef& range)
    {
        forEachIn(range, [this](int column, int row) {
            set(column, row, {"blank", at(column, row).style});
        });
    }

    // What is cleared looks untouched: style 0, by itself or because nothing shines through.
    void clearAll(const RangeRef& range)
    {
        forEachIn(range, [this](int column, int row) {
            const bool rowStyled = styleIn(rowStyles, row) > 0;
            set(column, row, {});
            if (rowStyled || effectiveStyle(column, row) != 0)
                set(column, row, {"blank", 0});
        });
    }

    void clearFormats(const RangeRef& range)
    {
        forEachIn(range, [this](int column, int row) { setStyle(column, row, 0); });
    }

private:
    static int styleIn(const std::map<int, int>& styles, int place)
    {
        const auto found = styles.find(place);
        return found == styles.end() ? 0 : found->second;
    }
};

class SheetModel : public testing::Test {
protected:
    SheetModel() : dice(1402) {}

    Sheet& sheet() { return *workbook->sheetAt(1); }

    int anyRow() { return dice.oneIn(2) ? dice.below(Side) : RowOffset + dice.below(Side); }
    int anyColumn() { return dice.oneIn(4) ? LastColumn - dice.below(2) : dice.below(Side); }

    // A small rectangle near the first or the last row.
    RangeRef anyRange()
    {
        RangeRef range;
        range.set(dice.below(Side), dice.oneIn(2) ? 0 : RowOffset, 1 + dice.below(Side),
                  1 + dice.below(Side));
        return range;
    }

    void setAnyCell()
    {
        const int column = anyColumn();
        const int row = anyRow();
        const int style = dice.below(4) - 1;
        Cell cell = blankCell(style);
        switch (dice.below(5)) {
        case 0:
            break;
        case 1:
            cell = numberCell(dice.below(100), style);
            break;
        case 2:
            cell = textCell(u"text", style);
            break;
        case 3:
            cell = logicalCell(dice.oneIn(2), style);
            break;
        default:
            cell = constantFormula(
                dice.below(100),
                {static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column), 1}, style);
            break;
        }
        model.set(column, row, {describe(cell.value), style});
        sheet().setCell(column, row, cell);
    }

    void doAnything()
    {
        switch (dice.below(12)) {
        case 0:
            return clear(&Sheet::clearContents, &Model::clearContents);
        case 1:
            return clear(&Sheet::clearAll, &Model::clearAll);
        case 2:
            return clear(&Sheet::clearFormats, &Model::clearFormats);
        case 3:
            return swapAnything();
        case 4: {
            const int column = anyColumn();
            const int row = anyRow();
            const int style = dice.below(4);
            model.setStyle(column, row, style);
            return sheet().setCellStyle(column, row, style);
        }
        case 5:
            return styleALine();
        default:
            return setAnyCell();
        }
    }

    void clear(void (Sheet::*clearSheet)(const RangeRef&),
               void (Model::*clearModel)(const RangeRef&))
    {
        const RangeRef range = anyRange();
        (sheet().*clearSheet)(range);
        (model.*clearModel)(range);
    }

    void swapAnything()
    {
        const int columnA = anyColumn();
        const int rowA = anyRow();
        const int columnB = anyColumn();
        const int rowB = anyRow();
        model.swap(columnA, rowA, columnB, rowB);
        sheet().swapCells(columnA, rowA, columnB, rowB);
    }

    // Only now and then, or styles would be everywhere.
    void styleALine()
    {
        const int style = dice.below(3);
        if (dice.oneIn(2)) {
            const int row = anyRow();
            model.rowStyles[row] = style;
            sheet().setRowStyle(row, style);
        } else {
            const int column = anyColumn();
            model.columnStyles[column] = style;
            sheet().columns.setColumnStyle(column, column, style);
        }
    }

    void expectSameCell(int column, int row)
    {
        const Model::ModelCell expected = model.at(column, row);
        const Cell cell = sheet().cellCopy(column, row);
        ASSERT_EQ(describe(cell.value), expected.value) << column << "," << row;
        ASSERT_EQ(cell.style, expected.style) << column << "," << row;
        ASSERT_EQ(sheet().isPresent(column, row), expected.isPresent());
        ASSERT_EQ(sheet().isOccupied(column, row), expected.value != "blank");
        ASSERT_EQ(sheet().cellStyle(column, row), model.effectiveStyle(column, row));
        if (cell.value.tag == TagFormula) {
            const CellPosition position{static_cast<std::uint16_t>(row),
                                        static_cast<std::uint16_t>(column), 1};
            ASSERT_EQ(cell.value.formula()->position(), position);
            ++formulas;
        }
        texts += cell.value.tag == TagText ? 1 : 0;
    }

    void expectSameSheet()
    {
        formulas = texts = 0;
        for (int index = 0; index < 2 * Side; ++index) {
            const int row = index < Side ? index : RowOffset + index - Side;
            int lastOccupied = -1;
            int lastPresent = -1;
            for (int column = 0; column < ColumnCount; ++column) {
                ASSERT_NO_FATAL_FAILURE(expectSameCell(column, row));
                const Model::ModelCell cell = model.at(column, row);
                lastOccupied = cell.value != "blank" ? column : lastOccupied;
                lastPresent = cell.isPresent() ? column : lastPresent;
            }
            ASSERT_EQ(sheet().lastOccupiedColumn(row), lastOccupied) << row;
            ASSERT_EQ(sheet().lastPresentColumn(row), lastPresent) << row;
            ASSERT_EQ(sheet().rowHasData(row), lastOccupied >= 0) << row;
        }
        expectSameOwnership();
    }

    // Every text is owned once, every formula stands on the chain, and there are no others.
    void expectSameOwnership()
    {
        ASSERT_EQ(stringPool->beginScan(), texts);
        stringPool->endScan();
        ASSERT_EQ(formulaPool->beginScan(), formulas);
        formulaPool->endScan();
        int onChain = 0;
        for (FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell))
            ++onChain;
        ASSERT_EQ(onChain, formulas);
    }

    TestDocument document;
    Dice dice;
    Model model;
    int formulas = 0;
    int texts = 0;
};

TEST_F(SheetModel, isTheSameAsTheSheetWhateverIsDone)
{
    for (int round = 0; round < 60; ++round) {
        NewDocument(3, FileKindNative);
        model = {};
        for (int step = 0; step < 150; ++step) {
            doAnything();
            if (step % 10 == 9) {
                ASSERT_NO_FATAL_FAILURE(expectSameSheet()) << "round " << round << " step " << step;
            }
        }
        EXPECT_FALSE(errorStands());
    }
}

} // namespace
} // namespace vorn
