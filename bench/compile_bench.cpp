// Formulas from text to byte code and back, and single fields as the lexer reads them for a text
// file.

#include "core/error.h"
#include "core/pool.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "formula/lexer.h"
#include "formula/printer.h"

#include <benchmark/benchmark.h>
#include <string_view>

namespace vorn {
namespace {

constexpr CellPosition Base{5, 5, 0};

constexpr std::u16string_view Product = u"=A1*2+B1";
constexpr std::u16string_view Total = u"=SUM(A1:A10)";
constexpr std::u16string_view Choice = u"=If(A1>10,\"large\",Round($B$1*1.19,2))";
constexpr std::u16string_view Sheets = u"=Sheet2!A1-Sum(Sheet1:Sheet3!B2:C9)/365";

// The formula's place in the pool, which the caller owns with its texts.
std::int32_t compile(std::u16string_view text)
{
    ByteCodeWriter writer;
    compileText(text, writer, Base, CompileFormula);
    return writer.finishInPool();
}

void compileFormulas(benchmark::State& state, std::u16string_view text)
{
    for (auto unused : state)
        formulaPool->release(compile(text));
    if (errorStands())
        state.SkipWithError("the formula does not compile");
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(compileFormulas, product, Product);
BENCHMARK_CAPTURE(compileFormulas, total, Total);
BENCHMARK_CAPTURE(compileFormulas, choice, Choice);
BENCHMARK_CAPTURE(compileFormulas, sheets, Sheets);

void printFormulas(benchmark::State& state, std::u16string_view text)
{
    const std::int32_t formula = compile(text);
    for (auto unused : state)
        benchmark::DoNotOptimize(printCode(formulaPool->code(formula), Base));
    formulaPool->release(formula);
    if (errorStands())
        state.SkipWithError("the formula cannot be printed");
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(printFormulas, product, Product);
BENCHMARK_CAPTURE(printFormulas, total, Total);
BENCHMARK_CAPTURE(printFormulas, choice, Choice);
BENCHMARK_CAPTURE(printFormulas, sheets, Sheets);

void readField(benchmark::State& state, std::u16string_view text)
{
    for (auto unused : state) {
        FormulaLexer lexer;
        lexer.reset(text, {});
        lexer.next();
        benchmark::DoNotOptimize(lexer.kind);
    }
    clearError();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(readField, wholeNumber, u"123456");
BENCHMARK_CAPTURE(readField, amount, u"1234.56");
BENCHMARK_CAPTURE(readField, longNumber, u"3.14159265358979312");
BENCHMARK_CAPTURE(readField, date, u"12/31/1999");
BENCHMARK_CAPTURE(readField, word, u"Springfield");

} // namespace
} // namespace vorn
