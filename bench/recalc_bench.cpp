// The pass over the formulas, and the sort of their chain.

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>
#include <vector>

namespace vorn {
namespace {

constexpr int FormulaRows = 16000;
constexpr int FormulaColumns = 20;
constexpr int FormulaTotal = FormulaRows * FormulaColumns;

CellRef inColumn(int column)
{
    return {0, static_cast<std::uint16_t>(column | RowRelative)};
}

// =$A1*2+$B1
void emitFormula(ByteCodeWriter& writer)
{
    writer.emit(OpPushCell, inColumn(0));
    writer.emit(OpPushNumber, 2.0);
    writer.emit(OpMultiply);
    writer.emit(OpPushCell, inColumn(1));
    writer.emit(OpAdd);
}

void storeFormula(Sheet& sheet, int column, int row, ByteCodeWriter& writer)
{
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                static_cast<std::uint16_t>(sheet.index)};
    Cell cell;
    cell.value = CellValue::makeFormula(newFormulaCell(position, writer.finishInPool()));
    sheet.setCell(column, row, cell);
}

void storeNumber(Sheet& sheet, int column, int row, double number)
{
    Cell cell;
    cell.value = CellValue::makeNumber(number);
    sheet.setCell(column, row, cell);
}

void recalculateFormulas(benchmark::State& state)
{
    NewDocument(1, FileKindNative);
    Sheet& sheet = *workbook->currentSheet;
    for (int row = 0; row < FormulaRows; ++row) {
        storeNumber(sheet, 0, row, row);
        storeNumber(sheet, 1, row, 0.5);
        for (int column = 0; column < FormulaColumns; ++column) {
            ByteCodeWriter writer;
            emitFormula(writer);
            storeFormula(sheet, column + 2, row, writer);
        }
    }
    recalculate();
    for (auto each : state)
        recalculate();
    if (sheet.valueOf(5, 100).number() != 200.5)
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * FormulaTotal);
    NewDocument(NewDocumentSheets, FileKindNative);
}
BENCHMARK(recalculateFormulas)->Unit(benchmark::kMillisecond);

// The floor: the same instructions over the same records, with no sheets and no checks.
struct BareFormula {
    CellValue result;
    const std::uint8_t* code;
};

CellValue runBare(const std::uint8_t* code, const CellValue* cells)
{
    CellValue stack[16];
    CellValue* top = stack + 16;
    for (;;) {
        switch (*code++) {
        case OpReturn:
            return *top;
        case OpPushNumber:
            *--top = CellValue::makeNumber(readOperand<double>(code));
            code += sizeof(double);
            break;
        case OpPushCell:
            *--top = cells[readOperand<CellRef>(code).column & 0xff];
            code += sizeof(CellRef);
            break;
        case OpMultiply:
            top[1] = CellValue::makeNumber(top[1].number() * top[0].number());
            ++top;
            break;
        case OpAdd:
            top[1] = CellValue::makeNumber(top[1].number() + top[0].number());
            ++top;
            break;
        default:
            return {};
        }
    }
}

void bareLoop(benchmark::State& state)
{
    std::vector<std::uint8_t*> blocks;
    std::vector<BareFormula> formulas;
    std::vector<CellValue> cells;
    for (int row = 0; row < FormulaRows; ++row) {
        cells.push_back(CellValue::makeNumber(row));
        cells.push_back(CellValue::makeNumber(0.5));
        for (int column = 0; column < FormulaColumns; ++column) {
            ByteCodeWriter writer;
            emitFormula(writer);
            blocks.push_back(writer.finish());
            formulas.push_back({{}, blockCode(blocks.back())});
        }
    }
    for (auto each : state) {
        std::size_t index = 0;
        for (BareFormula& formula : formulas) {
            formula.result = runBare(formula.code, &cells[index / FormulaColumns * 2]);
            ++index;
        }
        benchmark::DoNotOptimize(formulas.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * FormulaTotal);
    NewDocument(NewDocumentSheets, FileKindNative); // renews the heap that the blocks lie in
}
BENCHMARK(bareLoop)->Unit(benchmark::kMillisecond);

enum EntryOrder { InOrder, InReverse, Shuffled };

// A chain of cells, each of which reads the one before it, entered in some order.
void sortChain(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(1));
    std::vector<int> order(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        order[static_cast<std::size_t>(index)] = index;
    if (state.range(0) == InReverse)
        std::reverse(order.begin(), order.end());
    if (state.range(0) == Shuffled)
        std::shuffle(order.begin(), order.end(), std::mt19937(1));
    // By rows, as tables are filled.
    const int columns = count / FormulaRows;
    for (auto each : state) {
        state.PauseTiming();
        NewDocument(1, FileKindNative);
        Sheet& sheet = *workbook->currentSheet;
        for (const int index : order) {
            const int before = index == 0 ? LastRow * columns : index - 1;
            ByteCodeWriter writer;
            writer.emit(OpPushCell, CellRef{static_cast<std::uint16_t>(before / columns),
                                            static_cast<std::uint16_t>(before % columns)});
            writer.emit(OpPushNumber, 1.0);
            writer.emit(OpAdd);
            storeFormula(sheet, index % columns, index / columns, writer);
        }
        state.ResumeTiming();
        calcChain.sort();
    }
    const FormulaCell* first = calcChain.first();
    if (first->row != 0 || first->column != 0)
        state.SkipWithError("wrong order");
    state.SetItemsProcessed(state.iterations() * count);
    NewDocument(NewDocumentSheets, FileKindNative);
}
BENCHMARK(sortChain)
    ->ArgNames({
        "order", "formulas"
})
    ->ArgsProduct({{InOrder, InReverse, Shuffled}, {64000, 512000}})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
