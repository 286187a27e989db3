// Any text as a formula: compiled, printed, compiled again and evaluated. What is printed must
// compile to the same code, but for the few things that a text does not tell.
//
// An input that begins with a zero byte holds UTF-16 units behind it, low byte first; in any other
// each byte is a character.

#include "core/error.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/input.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "formula/machine.h"
#include "formula/printer.h"
#include "formula/references.h"
#include "machine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vorn {
namespace {

constexpr CellPosition Base{6, 3, 1};

// What a printed number may differ by.
constexpr double ShownPrecision = 1e-13;

// An input changes nothing but the pool, where the texts of its formulas are left: beyond so many
// the document is made anew.
constexpr int LeftTextsMax = 1000;

void defineName(std::u16string_view name, ByteCodeWriter& writer)
{
    DefinedName record;
    record.name = duplicateString(name);
    record.block = writer.finish();
    workbook->names.append(record);
}

// A document with something of each kind in its cells, and a name that calls itself.
void prepareDocument()
{
    if (workbook->names.size() != 0 && stringPool->slotCount() <= LeftTextsMax)
        return;
    NewDocument(NewDocumentSheets, FileKindNative);
    const std::u16string_view inputs[] = {u"1",    u"2.5",    u"text", u"true", u"1/2/2000",
                                          u"=1/0", u"=A1:A2", u"3",    u"2.5"};
    for (int row = 0; const std::u16string_view input : inputs)
        storeCellInput(0, row++, input);
    ByteCodeWriter writer;
    compileText(u"A1*2", writer, {}, CompileFormula);
    defineName(u"Rent", writer);
    writer.emit(OpCallName, std::uint16_t{1});
    defineName(u"Endless", writer);
}

std::u16string inputText(const std::uint8_t* data, std::size_t size)
{
    std::u16string text;
    if (size == 0 || data[0] != 0)
        return {data, data + size};
    for (std::size_t i = 1; i + 1 < size; i += 2)
        text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
    return text;
}

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// A date may come back in another century. Two divisions between numbers read as a date. A number
// keeps 15 digits at most, which may take the largest ones out of their range.
bool readsBack(const std::uint8_t* code)
{
    int divisions = 0;
    for (; *code != OpReturn; code = nextInstruction(code)) {
        if (*code == OpPushDate)
            return false;
        if (*code == OpPushNumber && readOperand<double>(code + 1) > 1e308)
            return false;
        if (*code == OpDivide && ++divisions == 2)
            return false;
    }
    return true;
}

bool sameInstruction(const std::uint8_t* a, const std::uint8_t* b)
{
    if (*a != *b)
        return false;
    if (*a == OpPushNumber) {
        const auto first = readOperand<double>(a + 1);
        const auto second = readOperand<double>(b + 1);
        return std::abs(first - second) <= first * ShownPrecision;
    }
    if (*a == OpPushText)
        return std::u16string_view(stringPool->text(readOperand<std::int32_t>(a + 1))) ==
               stringPool->text(readOperand<std::int32_t>(b + 1));
    return std::equal(a, nextInstruction(a), b);
}

bool sameCode(const std::uint8_t* a, const std::uint8_t* b)
{
    for (; sameInstruction(a, b); b = nextInstruction(b)) {
        if (*a == OpReturn)
            return true;
        a = nextInstruction(a);
    }
    return false;
}

// The pool index of the code, -1 after a failure, whose offset then lies in the text.
std::int32_t compile(std::u16string_view text)
{
    ByteCodeWriter writer;
    const int offset = compileText(text, writer, Base, CompileFormula);
    require((offset >= 0) == errorStands());
    if (offset < 0)
        return writer.finishInPool();
    require(offset <= static_cast<int>(text.size()));
    clearError();
    return -1;
}

void printAndCompileAgain(const std::uint8_t* code)
{
    const std::u16string printed = printCode(code, Base);
    require(printed.empty() == (errorState.code == ErrorTooComplex));
    require(printed.size() <= PrintedTextMax);
    clearError();
    if (printed.empty() || !readsBack(code))
        return;
    const std::int32_t again = compile(printed);
    require(again != -1);
    require(sameCode(code, formulaPool->code(again)));
    formulaPool->release(again);
}

void evaluate(std::int32_t formula)
{
    FormulaCell* cell = newFormulaCell(Base, formula);
    const CellValue* stack = machine.stackTop;
    evaluateFormulaCell(*cell);
    require(machine.stackTop == stack && machine.pendingError == 0 && !errorStands());
    const std::uint8_t tag = cell->result.tag;
    require(tag <= TagNumber || tag == TagDateTime);
    require(tag != TagNumber || std::isfinite(cell->result.number()));
    valueText(cell->result);
    deleteFormulaCell(cell);
}

void tryText(std::u16string_view text)
{
    const std::int32_t formula = compile(text);
    if (formula != -1) {
        printAndCompileAgain(formulaPool->code(formula));
        evaluate(formula);
    }
    CellValue value;
    parseReferenceText(text, value);
    clearError();
    int format = NoFormatSuggestion;
    parseCellInput(value, text, Base, &format);
    releaseValue(value);
    clearError();
}

} // namespace
} // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vorn;
    static FuzzMachine machine;
    prepareDocument();
    tryText(inputText(data, size));
    return 0;
}
