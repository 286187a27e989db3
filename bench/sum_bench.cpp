// Walks over ranges: running sums down a column, and a sum over the selected rows of a database.

#include "core/chain.h"
#include "core/input.h"
#include "core/workbook.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

constexpr int SumRows = 4000;
constexpr std::int64_t SumCells = std::int64_t{SumRows} * (SumRows + 1) / 2;

std::u16string digits(int number)
{
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

void storeValue(int column, int row, const CellValue& value)
{
    Cell cell;
    cell.value = value;
    workbook->currentSheet->setCell(column, row, cell);
}

void storeText(int column, int row, std::u16string_view text)
{
    CellValue value;
    makeTextValue(value, text);
    storeValue(column, row, value);
}

bool resultIs(int column, int row, double number)
{
    const CellValue value = workbook->currentSheet->valueOf(column, row);
    return value.tag == TagNumber && value.number() == number;
}

// =SUM(A$1:A1), =SUM(A$1:A2) and so on beside a column of numbers.
void runningSums(benchmark::State& state)
{
    NewDocument(1, FileKindNative);
    for (int row = 0; row < SumRows; ++row) {
        storeValue(0, row, CellValue::makeNumber(row + 1));
        storeCellInput(1, row, u"=SUM(A$1:A" + digits(row + 1) + u")");
    }
    recalculate();
    for (auto each : state)
        recalculate();
    if (!resultIs(1, SumRows - 1, static_cast<double>(SumCells)))
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * SumCells);
    NewDocument(NewDocumentSheets, FileKindNative);
}
BENCHMARK(runningSums)->Unit(benchmark::kMillisecond);

// The floor: the same sums over the same cells, side by side in one array.
void runningSumsFloor(benchmark::State& state)
{
    std::vector<Cell> cells(SumRows);
    for (int row = 0; row < SumRows; ++row)
        cells[static_cast<std::size_t>(row)].value = CellValue::makeNumber(row + 1);
    std::vector<double> sums(SumRows);
    for (auto each : state) {
        for (std::size_t last = 0; last < SumRows; ++last) {
            double sum = 0;
            for (std::size_t row = 0; row <= last; ++row)
                if (cells[row].value.tag == TagNumber)
                    sum += cells[row].value.number();
            sums[last] = sum;
        }
        benchmark::DoNotOptimize(sums.data());
        benchmark::ClobberMemory();
    }
    if (sums.back() != static_cast<double>(SumCells))
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * SumCells);
}
BENCHMARK(runningSumsFloor)->Unit(benchmark::kMillisecond);

constexpr int DatabaseRows = 16000;

// Fields: Kind, one of ten texts; Year, one of a hundred numbers; Amount, 2 in each row.
void storeDatabase()
{
    NewDocument(1, FileKindNative);
    storeText(0, 0, u"Kind");
    storeText(1, 0, u"Year");
    storeText(2, 0, u"Amount");
    for (int row = 1; row <= DatabaseRows; ++row) {
        storeText(0, row, u"kind " + digits(row % 10));
        storeValue(1, row, CellValue::makeNumber(1900 + row % 100));
        storeValue(2, row, CellValue::makeNumber(2));
    }
    storeText(5, 0, u"kind");
    storeText(5, 1, u"kind 3");
    storeText(6, 0, u"year");
    storeText(6, 1, u">=1950");
}

void sumDatabase(benchmark::State& state, std::u16string_view criteria, double sum)
{
    storeDatabase();
    storeCellInput(8, 0, u"=Dsum(A1:C16001,\"Amount\"," + std::u16string(criteria) + u")");
    recalculate();
    for (auto each : state)
        recalculate();
    if (!resultIs(8, 0, sum))
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * DatabaseRows);
    NewDocument(NewDocumentSheets, FileKindNative);
}

void dsumByText(benchmark::State& state)
{
    sumDatabase(state, u"F1:F2", 2 * DatabaseRows / 10.0);
}
BENCHMARK(dsumByText)->Unit(benchmark::kMicrosecond);

void dsumByNumber(benchmark::State& state)
{
    sumDatabase(state, u"G1:G2", 2 * DatabaseRows / 2.0);
}
BENCHMARK(dsumByNumber)->Unit(benchmark::kMicrosecond);

// The floor: the comparison and the sum over packed cells of the two columns.
void dsumByNumberFloor(benchmark::State& state)
{
    std::vector<Cell> cells(std::size_t{DatabaseRows} * 3);
    for (std::size_t row = 0; row < DatabaseRows; ++row) {
        cells[row * 3 + 1].value = CellValue::makeNumber(1900.0 + static_cast<double>(row % 100));
        cells[row * 3 + 2].value = CellValue::makeNumber(2);
    }
    double sum = 0;
    for (auto each : state) {
        sum = 0;
        for (std::size_t row = 0; row < DatabaseRows; ++row)
            if (cells[row * 3 + 1].value.number() >= 1950)
                sum += cells[row * 3 + 2].value.number();
        benchmark::DoNotOptimize(sum);
    }
    if (sum != 2 * DatabaseRows / 2.0)
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * DatabaseRows);
}
BENCHMARK(dsumByNumberFloor)->Unit(benchmark::kMicrosecond);

// A condition over a column of which only the top holds anything.
void countifOfWholeColumn(benchmark::State& state)
{
    storeDatabase();
    storeCellInput(8, 0, u"=Countif(B1:B16384,\">=1950\")");
    recalculate();
    for (auto each : state)
        recalculate();
    // The half of the rows, the name above them and what is missing below.
    if (!resultIs(8, 0, DatabaseRows / 2.0 + 1 + (16384 - DatabaseRows - 1)))
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(state.iterations() * DatabaseRows);
    NewDocument(NewDocumentSheets, FileKindNative);
}
BENCHMARK(countifOfWholeColumn)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace vorn
