// Formulas that make texts of texts.

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/input.h"
#include "core/pool.h"
#include "core/workbook.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace vorn {
namespace {

constexpr int FormulaRows = 16000;
constexpr int PhraseColumns = 2;

// Some words with a blank between them.
std::u16string phrase(std::mt19937& random)
{
    std::u16string text;
    for (auto words = 2 + random() % 3; words > 0; --words) {
        for (auto letters = 3 + random() % 8; letters > 0; --letters)
            text += static_cast<char16_t>(u'a' + random() % 26);
        text += u' ';
    }
    return text + u"end";
}

void storePhrases(Sheet& sheet)
{
    std::mt19937 random(1);
    for (int row = 0; row < FormulaRows; ++row) {
        for (int column = 0; column < PhraseColumns; ++column) {
            Cell cell;
            makeTextValue(cell.value, phrase(random));
            sheet.setCell(column, row, cell);
        }
    }
}

// Formulas of the first row, to be used in each: the places in them are relative.
constexpr const char16_t* Formulas[] = {
    u"=Left(A1,5)", u"=Mid(A1,3,6)", u"=Find(\"end\",A1)", u"=Substitute(A1,\" \",\"-\")",
    u"=Upper(A1)",  u"=A1&B1",
};
constexpr const char* FormulaNames[] = {"Left", "Mid", "Find", "Substitute", "Upper", "&"};
constexpr int FormulaKinds = static_cast<int>(std::size(Formulas));

// Fills a column with one formula, as if it was copied there.
void storeFormulas(Sheet& sheet, int column, const char16_t* text)
{
    const auto place = static_cast<std::uint16_t>(column);
    CellValue first;
    compileCellFormula(first, {0, place, 0}, text);
    const std::int32_t code = first.formula()->formula;
    for (int row = 0; row < FormulaRows; ++row) {
        const CellPosition position{static_cast<std::uint16_t>(row), place, 0};
        Cell cell;
        cell.value = CellValue::makeFormula(newFormulaCell(position, formulaPool->addRef(code)));
        sheet.setCell(column, row, cell);
    }
    releaseValue(first);
}

void countFormulas(benchmark::State& state, int count)
{
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["per formula"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Formulas of the kinds from `first` to `last`, a column for each.
void runFormulas(benchmark::State& state, std::size_t first, std::size_t last)
{
    NewDocument(1, FileKindNative);
    Sheet& sheet = *workbook->currentSheet;
    storePhrases(sheet);
    const auto columns = static_cast<int>(last - first + 1);
    for (int column = 0; column < columns; ++column)
        storeFormulas(sheet, PhraseColumns + column,
                      Formulas[first + static_cast<std::size_t>(column)]);
    recalculate();
    for (auto each : state)
        recalculate();
    const CellValue result = sheet.valueOf(PhraseColumns, FormulaRows - 1);
    if (result.tag != TagText && result.tag != TagNumber)
        state.SkipWithError("wrong result");
    countFormulas(state, columns * FormulaRows);
    NewDocument(NewDocumentSheets, FileKindNative);
}

void textFormulas(benchmark::State& state)
{
    const auto kind = static_cast<std::size_t>(state.range(0));
    state.SetLabel(FormulaNames[kind]);
    runFormulas(state, kind, kind);
}
BENCHMARK(textFormulas)->DenseRange(0, FormulaKinds - 1)->Unit(benchmark::kMillisecond);

void textFormulasOfEachKind(benchmark::State& state)
{
    runFormulas(state, 0, FormulaKinds - 1);
}
BENCHMARK(textFormulasOfEachKind)->Unit(benchmark::kMillisecond);

// The floor: the texts alone are copied into new blocks of the heap, in place of the former ones.
void bareCopies(benchmark::State& state)
{
    std::mt19937 random(1);
    std::vector<std::u16string> phrases;
    phrases.reserve(FormulaRows);
    for (int row = 0; row < FormulaRows; ++row)
        phrases.push_back(phrase(random));
    std::vector<void*> copies(FormulaRows);
    for (auto each : state) {
        for (std::size_t row = 0; row < phrases.size(); ++row) {
            const std::size_t bytes = (phrases[row].size() + 1) * sizeof(char16_t);
            heapFree(copies[row]);
            copies[row] = heapAlloc(bytes);
            std::memcpy(copies[row], phrases[row].c_str(), bytes);
        }
        benchmark::ClobberMemory();
    }
    countFormulas(state, FormulaRows);
    NewDocument(NewDocumentSheets, FileKindNative); // renews the heap
}
BENCHMARK(bareCopies)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vorn
