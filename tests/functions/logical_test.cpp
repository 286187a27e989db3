// If as an ordinary call, which only a file can bring. What is typed becomes jumps.
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/machine.h"
#include "functions/table.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// Runs the handler over what lies on the stack and takes its one result.
CellValue callIfWith(int argumentCount, const CellValue* base)
{
    machine.argumentCount = static_cast<std::uint8_t>(argumentCount);
    FunctionTable[FunctionRowIf].handler();
    EXPECT_EQ(machine.stackTop, base - 1);
    return popRaw();
}

TEST(If, choosesByItsCondition)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    const struct {
        const char* behaviour;
        CellValue condition;
        double chosen;
    } cases[] = {
        {"true",     CellValue::makeLogical(true),  1},
        {"false",    CellValue::makeLogical(false), 2},
        {"a number", CellValue::makeNumber(-0.5),   1},
        {"zero",     CellValue::makeNumber(0),      2},
        {"a blank",  CellValue::makeBlank(),        2},
    };
    for (const auto& c : cases) {
        pushRaw(c.condition);
        pushNumber(1);
        pushNumber(2);
        const CellValue result = callIfWith(3, base);
        EXPECT_EQ(result.tag, TagNumber) << c.behaviour;
        EXPECT_EQ(result.number(), c.chosen) << c.behaviour;
    }
}

TEST(If, isFalseWithoutASecondValue)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    pushLogical(false);
    pushNumber(1);
    const CellValue no = callIfWith(2, base);
    EXPECT_EQ(no.tag, TagLogical);
    EXPECT_FALSE(no.logical());
    pushLogical(true);
    pushNumber(1);
    EXPECT_EQ(callIfWith(2, base).number(), 1);
}

TEST(If, givesTheErrorOfItsCondition)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    const struct {
        const char* behaviour;
        CellValue condition;
        int error;
    } cases[] = {
        {"an error",               CellValue::makeError(CellErrorDiv0), CellErrorDiv0},
        {"a date is no condition", CellValue::makeDate(1),              CellErrorVal },
    };
    for (const auto& c : cases) {
        pushRaw(c.condition);
        pushNumber(1);
        pushNumber(2);
        const CellValue result = callIfWith(3, base);
        EXPECT_EQ(result.tag, TagError) << c.behaviour;
        EXPECT_EQ(result.error(), c.error) << c.behaviour;
    }
}

TEST(If, keepsTheKindOfWhatItChooses)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    CellValue reference;
    reference.put(TagCellRef, CellRef{2, 1});
    pushLogical(true);
    pushRaw(reference);
    pushError(CellErrorNA);
    EXPECT_EQ(callIfWith(3, base).tag, TagCellRef);
    pushLogical(false);
    pushRaw(reference);
    pushError(CellErrorNA);
    EXPECT_EQ(callIfWith(3, base).tag, TagError);
    pushLogical(false);
    pushNumber(1);
    pushDate(2);
    EXPECT_EQ(callIfWith(3, base).tag, TagDateTime);
}

TEST(If, releasesTheTextThatItDoesNotChoose)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    for (bool condition : {true, false}) {
        const std::int32_t first = stringPool->addText(u"first");
        const std::int32_t second = stringPool->addText(u"second");
        pushLogical(condition);
        pushText(first);
        pushText(second);
        CellValue result = callIfWith(3, base);
        EXPECT_EQ(result.textIndex(), condition ? first : second);
        EXPECT_FALSE(stringPool->isLive(condition ? second : first));
        EXPECT_EQ(stringPool->refCount(result.textIndex()), 1);
        releaseValue(result);
    }
    const std::int32_t lost = stringPool->addText(u"lost");
    pushError(CellErrorDiv0);
    pushText(lost);
    callIfWith(2, base);
    EXPECT_FALSE(stringPool->isLive(lost));
}

TEST(If, runsAsAPlainCallInAFormula)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpPushLogical, std::uint8_t{0});
    writer.emit(OpPushNumber, 1.0);
    writer.emit(OpPushNumber, 2.0);
    writer.emitCall(FunctionRowIf, 3);
    FormulaCell* cell = newFormulaCell({}, writer.finishInPool());
    resetMachine();
    evaluateFormulaCell(*cell);
    EXPECT_EQ(cell->result.tag, TagNumber);
    EXPECT_EQ(cell->result.number(), 2);
    deleteFormulaCell(cell);
}

} // namespace
} // namespace vorn
