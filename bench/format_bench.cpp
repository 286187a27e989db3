// Formats over many cells: what is applied, taken back and asked for costs what the sheet holds.

#include "core/applyformat.h"
#include "core/autofit.h"
#include "core/workbook.h"
#include "editing/format.h"
#include "editing/rowcolumn.h"
#include "editing/undo.h"

#include <benchmark/benchmark.h>

namespace vorn {
namespace {

// A new document with a block of numbers, selected as the range.
void makeDocument(int columns, int rows, const RangeRef& selection)
{
    clearUndo();
    NewDocument(NewDocumentSheets, FileKindNative);
    Sheet& sheet = *workbook->currentSheet;
    Cell cell;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            cell.value = CellValue::makeNumber(row + column / 8.0);
            sheet.setCell(column, row, cell);
        }
    }
    sheet.selection.select(selection.first(), selection.last());
}

RangeRef block(int columns, int rows)
{
    RangeRef range;
    range.set(0, 0, columns, rows);
    return range;
}

constexpr int BlockColumns = 10;
constexpr int BlockRows = 10000;

// Bold on three whole columns of a sheet with so many rows of data, and off again.
void BoldWholeColumns(benchmark::State& state)
{
    makeDocument(BlockColumns, static_cast<int>(state.range(0)), block(3, RowCount));
    for (auto each : state)
        toggleBold();
    clearUndo();
}
BENCHMARK(BoldWholeColumns)->Arg(0)->Arg(RowCount)->Unit(benchmark::kMicrosecond);

// A font for 100,000 cells, one way and the other.
void FormatBlock(benchmark::State& state)
{
    makeDocument(BlockColumns, BlockRows, block(BlockColumns, BlockRows));
    for (auto each : state)
        toggleBold();
    state.SetItemsProcessed(state.iterations() * BlockColumns * BlockRows);
    clearUndo();
}
BENCHMARK(FormatBlock)->Unit(benchmark::kMillisecond);

// Of which this is the step without its programs.
void ApplyToBlock(benchmark::State& state)
{
    makeDocument(BlockColumns, BlockRows, block(BlockColumns, BlockRows));
    FormatTemplate format;
    format.styleMask.set(MaskHorizontal);
    for (auto each : state) {
        format.style.set(StyleHorizontal, (format.style.get(StyleHorizontal) + 1) % 4);
        applyFormat(*workbook->currentSheet, block(BlockColumns, BlockRows), format);
    }
    state.SetItemsProcessed(state.iterations() * BlockColumns * BlockRows);
}
BENCHMARK(ApplyToBlock)->Unit(benchmark::kMillisecond);

void UndoFormatOfBlock(benchmark::State& state)
{
    makeDocument(BlockColumns, BlockRows, block(BlockColumns, BlockRows));
    toggleBold();
    for (auto each : state) {
        undo();
        state.PauseTiming();
        redo();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * BlockColumns * BlockRows);
    clearUndo();
}
BENCHMARK(UndoFormatOfBlock)->Unit(benchmark::kMillisecond);

void RedoFormatOfBlock(benchmark::State& state)
{
    makeDocument(BlockColumns, BlockRows, block(BlockColumns, BlockRows));
    toggleBold();
    for (auto each : state) {
        state.PauseTiming();
        undo();
        state.ResumeTiming();
        redo();
    }
    state.SetItemsProcessed(state.iterations() * BlockColumns * BlockRows);
    clearUndo();
}
BENCHMARK(RedoFormatOfBlock)->Unit(benchmark::kMillisecond);

// A height for the whole sheet, with so many rows of data.
void HeightOfWholeSheet(benchmark::State& state)
{
    makeDocument(1, static_cast<int>(state.range(0)), block(ColumnCount, RowCount));
    int height = 300;
    for (auto each : state)
        setRowHeights(0, height ^= 1, SizeSelection);
    clearUndo();
}
BENCHMARK(HeightOfWholeSheet)->Arg(0)->Arg(RowCount)->Unit(benchmark::kMicrosecond);

// What the toolbar asks after each command, with everything selected.
void CommonFormatOfWholeSheet(benchmark::State& state)
{
    makeDocument(20, static_cast<int>(state.range(0)), block(ColumnCount, RowCount));
    for (auto each : state) {
        const FormatTemplate common =
            commonFormat(*workbook->currentSheet, block(ColumnCount, RowCount));
        benchmark::DoNotOptimize(common.styleMask.to_ulong());
    }
}
BENCHMARK(CommonFormatOfWholeSheet)->Arg(0)->Arg(RowCount)->Unit(benchmark::kMicrosecond);

void AutofitColumnOfNumbers(benchmark::State& state)
{
    makeDocument(1, RowCount, block(1, 1));
    for (auto each : state)
        benchmark::DoNotOptimize(autofitColumn(*workbook->currentSheet, 0));
    state.SetItemsProcessed(state.iterations() * RowCount);
}
BENCHMARK(AutofitColumnOfNumbers)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
