// Entries, and steps taken back and done again.

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/entry.h"
#include "editing/format.h"
#include "editing/undo.h"
#include "formula/bytecode.h"

#include <benchmark/benchmark.h>

namespace vorn {
namespace {

constexpr int FormulaRows = 16000;
constexpr int FormulaColumns = 20;
constexpr int CellRows = 10000;
constexpr int CellColumns = 10;
constexpr int AllRows = 16384;

// A document whose undo list goes with it.
class BenchDocument {
public:
    BenchDocument()
    {
        beforeCloseDocument = clearUndo;
        NewDocument(1, FileKindNative);
    }
    ~BenchDocument()
    {
        NewDocument(NewDocumentSheets, FileKindNative);
        beforeCloseDocument = nullptr;
    }
    BenchDocument(const BenchDocument&) = delete;
    BenchDocument& operator=(const BenchDocument&) = delete;
};

void storeNumber(int column, int row, double number)
{
    Cell cell;
    cell.value = CellValue::makeNumber(number);
    workbook->currentSheet->setCell(column, row, cell);
}

// =$A1*2+$B1 in every cell, each with code of its own.
void fillFormulas()
{
    for (int row = 0; row < FormulaRows; ++row) {
        storeNumber(0, row, row);
        storeNumber(1, row, 0.5);
        for (int column = 2; column < FormulaColumns + 2; ++column) {
            ByteCodeWriter writer;
            writer.emit(OpPushCell, CellRef{0, RowRelative});
            writer.emit(OpPushNumber, 2.0);
            writer.emit(OpMultiply);
            writer.emit(OpPushCell, CellRef{0, 1 | RowRelative});
            writer.emit(OpAdd);
            const CellPosition place{static_cast<std::uint16_t>(row),
                                     static_cast<std::uint16_t>(column), 0};
            Cell cell;
            cell.value = CellValue::makeFormula(newFormulaCell(place, writer.finishInPool()));
            workbook->currentSheet->setCell(column, row, cell);
        }
    }
    recalculate();
}

void fillNumbers(int columns, int rows)
{
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            storeNumber(column, row, row);
    }
}

void select(int columns, int rows)
{
    workbook->currentSheet->selection.select(
        {0, 0}, {static_cast<std::uint16_t>(rows - 1), static_cast<std::uint16_t>(columns - 1)});
}

// The pass alone, and an entry with its pass.
void passOverFormulas(benchmark::State& state)
{
    const BenchDocument document;
    fillFormulas();
    for (auto each : state)
        recalculate();
}
BENCHMARK(passOverFormulas)->Unit(benchmark::kMillisecond);

void enterConstant(benchmark::State& state)
{
    const BenchDocument document;
    fillFormulas();
    const std::u16string_view texts[] = {u"7", u"8"};
    std::size_t entry = 0;
    for (auto each : state)
        enterCell(texts[entry++ % 2]);
    if (workbook->currentSheet->valueOf(2, 0).number() != (entry % 2 == 0 ? 16.5 : 14.5))
        state.SkipWithError("wrong result");
}
BENCHMARK(enterConstant)->Unit(benchmark::kMillisecond);

void enterFormula(benchmark::State& state)
{
    const BenchDocument document;
    fillFormulas();
    workbook->currentSheet->selection.select({5, 100}, {5, 100});
    for (auto each : state)
        enterCell(u"=Sum(A1:B5)");
}
BENCHMARK(enterFormula)->Unit(benchmark::kMillisecond);

enum Road { Do, TakeBack, DoAgain };

// A format of as many cells as the arguments say, on one of its roads.
void boldCells(benchmark::State& state)
{
    const BenchDocument document;
    const auto road = static_cast<Road>(state.range(0));
    const auto columns = static_cast<int>(state.range(1));
    const auto rows = static_cast<int>(state.range(2));
    fillNumbers(columns, rows);
    select(columns, rows);
    for (auto each : state) {
        if (road != Do) {
            state.PauseTiming();
            if (undoList.position == 0)
                toggleBold();
            if (road == DoAgain)
                undo();
            state.ResumeTiming();
        }
        if (road == Do)
            toggleBold();
        else if (road == TakeBack)
            undo();
        else
            redo();
        if (road == TakeBack) {
            state.PauseTiming();
            redo();
            state.ResumeTiming();
        }
    }
    if (undoList.position == 0)
        state.SkipWithError("nothing was done");
    state.SetItemsProcessed(state.iterations() * columns * rows);
}
BENCHMARK(boldCells)
    ->ArgNames({"road", "columns", "rows"})
    ->Args({Do, CellColumns, CellRows})
    ->Args({TakeBack, CellColumns, CellRows})
    ->Args({DoAgain, CellColumns, CellRows})
    ->Unit(benchmark::kMillisecond);

// What a snapshot of whole columns costs grows with what is in them.
void snapshotOfColumns(benchmark::State& state)
{
    const BenchDocument document;
    const auto columns = static_cast<int>(state.range(0));
    const auto rows = static_cast<int>(state.range(1));
    fillNumbers(columns, rows);
    select(256, AllRows);
    for (auto each : state) {
        ByteCodeWriter program;
        emitSnapshot(program);
        benchmark::DoNotOptimize(program.size());
    }
    state.SetItemsProcessed(state.iterations() * columns * rows);
}
BENCHMARK(snapshotOfColumns)
    ->ArgNames({"columns", "rows"})
    ->Args({1, 1})
    ->Args({1, AllRows})
    ->Args({16, AllRows})
    ->Args({64, AllRows})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
