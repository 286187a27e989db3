// Lookups in a table: 8,000 of them into 4,000 rows, for each row that they look at.

#include "core/chain.h"
#include "core/input.h"
#include "core/workbook.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace vorn {
namespace {

constexpr int TableRows = 4000;
constexpr int Lookups = 8000;
constexpr int KeyColumn = 3;     // D
constexpr int FormulaColumn = 4; // E

// The rows of a table in random order, and of each lookup the row that it will find.
struct Plan {
    std::vector<int> ranks;
    std::vector<int> found;

    Plan() : ranks(TableRows)
    {
        std::mt19937 random(1);
        std::iota(ranks.begin(), ranks.end(), 0);
        std::shuffle(ranks.begin(), ranks.end(), random);
        for (int lookup = 0; lookup < Lookups; ++lookup)
            found.push_back(static_cast<int>(random() % TableRows));
    }

    int rankOf(int lookup) const
    {
        return ranks[static_cast<std::size_t>(found[static_cast<std::size_t>(lookup)])];
    }

    // The rows that are looked at when a search ends at its match.
    std::int64_t rowsScanned() const
    {
        return std::accumulate(found.begin(), found.end(), std::int64_t{Lookups});
    }
};

// What a key is made of its rank: a number, a word, or a long name with a common beginning.
CellValue numberKey(int rank)
{
    return CellValue::makeNumber(rank * 1.5);
}

CellValue wordKey(int rank)
{
    std::u16string word;
    for (std::uint32_t rest = static_cast<std::uint32_t>(rank) * 2654435761U; rest != 0; rest /= 26)
        word += static_cast<char16_t>(u'a' + rest % 26);
    CellValue value;
    makeTextValue(value, word);
    return value;
}

CellValue namedKey(int rank)
{
    std::u16string name = u"Customer 0000";
    for (auto digit = name.rbegin(); rank != 0; ++digit, rank /= 10)
        *digit = static_cast<char16_t>(u'0' + rank % 10);
    CellValue value;
    makeTextValue(value, name);
    return value;
}

void storeValue(int column, int row, const CellValue& value)
{
    workbook->currentSheet->setCell(column, row, {value, -1});
}

void storeFormula(int column, int row, std::u16string_view text)
{
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                0};
    CellValue value;
    compileCellFormula(value, position, text);
    storeValue(column, row, value);
}

// The cell of a row in a column of letters: D7.
std::u16string placeName(char16_t column, int row)
{
    const std::string number = std::to_string(row + 1);
    return column + std::u16string(number.begin(), number.end());
}

void makeTable(const Plan& plan, CellValue (*makeKey)(int))
{
    NewDocument(1, FileKindNative);
    for (int row = 0; row < TableRows; ++row) {
        storeValue(0, row, makeKey(plan.ranks[static_cast<std::size_t>(row)]));
        storeValue(1, row, CellValue::makeNumber(row));
    }
    for (int lookup = 0; lookup < Lookups; ++lookup)
        storeValue(KeyColumn, lookup, makeKey(plan.rankOf(lookup)));
}

void countRows(benchmark::State& state, const Plan& plan)
{
    const std::int64_t rows = plan.rowsScanned();
    state.SetItemsProcessed(state.iterations() * rows);
    state.counters["per row"] = benchmark::Counter(static_cast<double>(rows),
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

// Runs formulas `before`KEY`behind` and checks that the last one finds its row.
void runLookups(benchmark::State& state, CellValue (*makeKey)(int), std::u16string_view before,
                std::u16string_view behind, int firstAnswer)
{
    const Plan plan;
    makeTable(plan, makeKey);
    for (int lookup = 0; lookup < Lookups; ++lookup) {
        std::u16string formula(before);
        formula += placeName(u'D', lookup);
        formula += behind;
        storeFormula(FormulaColumn, lookup, formula);
    }
    recalculate();
    for (auto each : state)
        recalculate();
    const double answer = workbook->currentSheet->valueOf(FormulaColumn, Lookups - 1).number();
    if (answer != plan.found.back() + firstAnswer)
        state.SkipWithError("wrong result");
    countRows(state, plan);
    NewDocument(NewDocumentSheets, FileKindNative);
}

void exactLookups(benchmark::State& state, CellValue (*makeKey)(int))
{
    runLookups(state, makeKey, u"=VLookup(", u",A$1:B$4000,2,FALSE)", 0);
}
BENCHMARK_CAPTURE(exactLookups, numbers, numberKey)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exactLookups, words, wordKey)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exactLookups, names, namedKey)->Unit(benchmark::kMillisecond);

void lookupsOrBelow(benchmark::State& state, CellValue (*makeKey)(int))
{
    runLookups(state, makeKey, u"=VLookup(", u",A$1:B$4000,2)", 0);
}
BENCHMARK_CAPTURE(lookupsOrBelow, numbers, numberKey)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookupsOrBelow, names, namedKey)->Unit(benchmark::kMillisecond);

void matches(benchmark::State& state, CellValue (*makeKey)(int))
{
    runLookups(state, makeKey, u"=Match(", u",A$1:A$16384,0)", 1);
}
BENCHMARK_CAPTURE(matches, numbers, numberKey)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(matches, names, namedKey)->Unit(benchmark::kMillisecond);

// The floor: the same searches over numbers that lie side by side.
void packedScan(benchmark::State& state)
{
    const Plan plan;
    std::vector<double> numbers;
    for (const int rank : plan.ranks)
        numbers.push_back(rank * 1.5);
    for (auto each : state) {
        std::ptrdiff_t places = 0;
        for (int lookup = 0; lookup < Lookups; ++lookup) {
            const double key = plan.rankOf(lookup) * 1.5;
            std::size_t place = 0;
            while (numbers[place] != key)
                ++place;
            places += static_cast<std::ptrdiff_t>(place);
        }
        benchmark::DoNotOptimize(places);
    }
    countRows(state, plan);
}
BENCHMARK(packedScan)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
