// Snapshots, and the other code that tells what is there.
#include "core/autofit.h"
#include "core/chain.h"
#include "core/error.h"
#include "core/heap.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"
#include "formula/machine.h"
#include "support/cells.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class Snapshot : public testing::Test {
protected:
    Snapshot() : sheet(*workbook->sheetAt(0))
    {
        CellStyle style = defaultStyle();
        for (int index = 1; index <= 3; ++index) {
            style.set(StyleHorizontal, index);
            workbook->addStyle(style);
        }
    }
    ~Snapshot() override { release(); }

    void take()
    {
        ByteCodeWriter writer;
        emitSnapshot(writer);
        release();
        code = writer.finish();
    }

    // Bytes of the snapshot beyond those of an empty selection.
    std::uint32_t sizeOf(std::string_view place)
    {
        EditDocument::select(place);
        ByteCodeWriter writer;
        emitSnapshot(writer);
        return writer.size();
    }

    void release()
    {
        if (code == nullptr)
            return;
        releaseByteCodeReferences(blockCode(code));
        heapFree(code);
        code = nullptr;
    }

    EditDocument document;
    Sheet& sheet;
    std::uint8_t* code = nullptr;
};

// Values, styles, formulas, attributes of a row and of columns.
void fill(Sheet& sheet)
{
    for (int row = 0; row < 12; ++row) {
        sheet.setCell(0, row, numberCell(row, row % 3));
        sheet.setCell(1, row, textCell(u"text"));
        const auto place = static_cast<std::uint16_t>(row);
        sheet.setCell(2, row, constantFormula(row, {place, 2, 0}, 1));
        sheet.setCell(3, row, blankCell(2));
    }
    sheet.setRowHeight(3, 400, true);
    sheet.setRowStyle(4, 2);
    sheet.setRowHidden(5, true);
    sheet.columns.setColumnWidth(1, 2, 5000);
    sheet.columns.setColumnStyle(2, 2, 1);
    sheet.columns.setColumnHidden(4, 4, true);
    recalculate();
}

TEST_F(Snapshot, bringsBackWhatEveryKindOfSelectionHeld)
{
    fill(sheet);
    const std::string whole = describeSheets();
    for (const char* place : {"B3", "A1:B2", "B4:D9", "A1:IV3", "A4:IV16384", "B1:C16384",
                              "E1:IV16384", "A1:IV16384", "F20:G30"}) {
        EditDocument::select(place);
        take();
        // Everything that commands do to a selection, and cells where there were none.
        const RangeRef range = sheet.selection.range;
        sheet.clearAll(range);
        for (int row = range.firstRow; row <= std::min<int>(range.lastRow, 30); ++row) {
            for (int column = range.firstColumn; column <= std::min<int>(range.lastColumn, 9);
                 ++column)
                sheet.setCell(column, row, textCell(u"new", 3));
            if (range.isWholeRows()) {
                sheet.setRowStyle(row, 3);
                sheet.setRowHeight(row, 600, true);
                sheet.setRowHidden(row, true);
            }
        }
        if (range.isWholeColumns())
            sheet.columns.setColumnAttr(range.firstColumn, range.lastColumn, {6000, 3, 1});
        EXPECT_NE(describeSheets(), whole) << place;
        runCode(code);
        recalculate();
        EXPECT_EQ(describeSheets(), whole) << place;
        release();
        EXPECT_EQ(poolFaults(), "") << place;
    }
}

// Of an edit that fits rows, the heights come back as well: those that fit by chance, and the
// default one.
TEST_F(Snapshot, bringsBackHeightsThatWereFitted)
{
    FontRecord font = dialogFont();
    font.height = 400;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    const int large = workbook->addStyle(style);
    fill(sheet);
    sheet.setRowHeight(2, 300, false); // as nothing in it wants it
    sheet.defaultRowHeight = 280;
    const std::string before = describeSheets();
    for (const char* place : {"A1:D12", "A2:C14", "A1:IV3", "A4:IV30", "B1:C16384", "A1:IV16384"}) {
        EditDocument::select(place);
        ByteCodeWriter writer;
        emitSnapshot(writer, FitRows);
        code = writer.finish();
        const RangeRef range = sheet.selection.range;
        for (int row = range.firstRow; row <= std::min<int>(range.lastRow, 40); ++row)
            sheet.setCell(range.firstColumn, row, numberCell(1, large));
        if (range.isWholeColumns())
            sheet.columns.setColumnStyle(range.firstColumn, range.lastColumn, large);
        autofitRows(sheet, range);
        EXPECT_NE(describeSheets(), before) << place;
        runCode(code);
        EXPECT_EQ(describeSheets(), before) << place;
        release();
    }
}

TEST_F(Snapshot, selectsWhatItWasTakenOf)
{
    EditDocument::select("Sheet2!D4:B2");
    take();
    EditDocument::select("Sheet2!A1");
    EditDocument::select("Sheet1!F6");
    runCode(code);
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(1));
    const Selection& selection = workbook->currentSheet->selection;
    EXPECT_EQ(selection.range, (RangeRef{1, 1, 3, 3}));
    EXPECT_EQ(selection.activeColumn, 3);
    EXPECT_EQ(selection.activeRow, 3);
    EXPECT_EQ(sheet.selection.activeColumn, 5) << "the other sheet keeps its own";
}

TEST_F(Snapshot, holdsFormulasOffTheChainOverTheSameCode)
{
    sheet.setCell(0, 0, constantFormula(5, {0, 0, 0}));
    const std::int32_t formula = sheet.cellAt(0, 0)->value.formula()->formula;
    take();
    EXPECT_EQ(formulaPool->refCount(formula), 2);
    EXPECT_EQ(calcChain.next(calcChain.first()), nullptr);
    sheet.setCell(0, 0, Cell{});
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(formulaPool->refCount(formula), 1);
    runCode(code);
    EXPECT_EQ(sheet.cellInput(0, 0), u"=5");
    EXPECT_EQ(sheet.cellAt(0, 0)->value.formula()->formula, formula);
    release();
    EXPECT_EQ(poolFaults(), "");
}

TEST_F(Snapshot, costsWhatIsThereAndNotWhatIsSelected)
{
    const std::uint32_t nothing = sizeOf("A1");
    EXPECT_EQ(sizeOf("A1:IV16383"), nothing) << "no cell and no row";
    EXPECT_EQ(sizeOf("B1:IV16383"), nothing);
    const std::uint32_t columns = sizeOf("A1:A16384");
    EXPECT_LT(columns - nothing, 32U) << "one record of a column";
    EXPECT_LE(sizeOf("A1:IV16384") - nothing, 256 * (columns - nothing));
    sheet.setCell(7, 9000, numberCell(1));
    const std::uint32_t cell = sizeOf("A1:IV16383") - nothing;
    EXPECT_LT(cell, 64U) << "a row and a cell";
    sheet.setCell(7, 9001, numberCell(1));
    EXPECT_EQ(sizeOf("A1:IV16383") - nothing, 2 * cell);
}

TEST_F(Snapshot, isWholeOrNotThereWhateverAllocationIsRefused)
{
    for (int row = 0; row < 400; ++row) {
        const auto place = static_cast<std::uint16_t>(row);
        sheet.setCell(0, row, textCell(u"text"));
        for (int column = 1; column < 5; ++column)
            sheet.setCell(column, row,
                          constantFormula(row, {place, static_cast<std::uint16_t>(column), 0}));
    }
    const std::string before = describeSheets();
    EditDocument::select("A1:H1000");
    bool refusedOne = true;
    int refusals = 0;
    for (int refused = 1; refusedOne; ++refused) {
        {
            const AllocationWatch watch(refused);
            take();
            refusedOne = watch.refused();
        }
        EXPECT_EQ(code == nullptr, refusedOne) << refused;
        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone) << refused;
        clearError();
        refusals += refusedOne ? 1 : 0;
        release();
        EXPECT_EQ(poolFaults(), "") << refused;
        EXPECT_EQ(describeSheets(), before) << refused;
    }
    EXPECT_GT(refusals, 5);
}

TEST_F(Snapshot, copiesACellAsItIs)
{
    const Cell cells[] = {numberCell(3, 2), numberCell(3), textCell(u"x", 1),
                          blankCell(2),     Cell{},        constantFormula(1, {0, 0, 0}, 1)};
    for (const Cell& cell : cells) {
        sheet.setCell(0, 0, cell);
        const std::string before = describeSheets();
        ByteCodeWriter writer;
        emitPresentCell(writer, 0, 0);
        code = writer.finish();
        sheet.setCell(0, 0, numberCell(9, 0));
        runCode(code);
        EXPECT_EQ(describeSheets(), before);
        release();
    }
    sheet.setCell(0, 0, Cell{});
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(liveFormulas(), 0);
}

} // namespace
} // namespace vorn
