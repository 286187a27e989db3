// Runs of the machine as a whole: programs that are no formulas, and where formulas leave the texts
// that they give.
#include "formula/machine.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/coderun.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class MachineProgram : public testing::Test {
protected:
    // Runs the code as a program and lets it go.
    static void runProgram(ByteCodeWriter& code)
    {
        const CellValue* top = machine.stackTop;
        std::uint8_t* block = code.finish();
        runCode(block);
        EXPECT_EQ(machine.stackTop, top);
        EXPECT_TRUE(machine.machineRunning);
        EXPECT_TRUE(machine.machineHealthy);
        EXPECT_EQ(machine.pendingError, 0);
        releaseByteCodeReferences(blockCode(block));
        heapFree(block);
    }

    TestDocument document;
};

TEST_F(MachineProgram, takesReferencesFromTheFirstCellOfTheCurrentSheet)
{
    workbook->variables.append({nullptr, {}});
    workbook->setCurrentSheet(workbook->sheetAt(1));
    workbook->sheetAt(1)->setCell(2, 3, numberCell(7));
    ByteCodeWriter code;
    code.emit(OpPushCell, CellRef{3, 2 | ColumnRelative | RowRelative});
    code.emit(OpPushNumber, 1.0);
    code.emit(OpAdd);
    code.emit(OpStoreVariable, std::uint16_t{0});
    runProgram(code);
    EXPECT_EQ(describe(workbook->variables[0].value), "8");
}

TEST_F(MachineProgram, leavesNothingOnTheStack)
{
    ByteCodeWriter code;
    code.emit(OpPushNumber, 1.0);
    emitText(code, u"left");
    code.emit(OpPushValue, textValue(u"left as well"));
    runProgram(code);
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

TEST_F(MachineProgram, losesAnErrorThatPends)
{
    ByteCodeWriter code;
    code.emit(OpPushError, std::uint16_t{CellErrorNum});
    code.emit(OpNegate);
    runProgram(code);
}

TEST_F(MachineProgram, endsAtAnInstructionThatIsNone)
{
    workbook->variables.append({nullptr, {}});
    ByteCodeWriter code;
    emitText(code, u"left");
    const std::uint8_t call[] = {OpCall, 255, 255, 1};
    code.append(call, sizeof call);
    code.emit(OpPushNumber, 1.0);
    code.emit(OpStoreVariable, std::uint16_t{0});
    runProgram(code);
    EXPECT_EQ(describe(workbook->variables[0].value), "blank");
}

TEST_F(MachineProgram, pushesACopyOfAFormula)
{
    workbook->variables.append({nullptr, {}});
    const CellValue formula = constantFormula(5, {3, 2, 1}).value;
    formula.formula()->result = textValue(u"result");
    ByteCodeWriter code;
    code.emit(OpPushValue, formula);
    code.emit(OpStoreVariable, std::uint16_t{0});
    std::uint8_t* block = code.finish();
    runCode(block);
    const CellValue copy = workbook->variables[0].value;
    ASSERT_EQ(copy.tag, TagFormula);
    EXPECT_NE(copy.formula(), formula.formula());
    EXPECT_EQ(copy.formula()->formula, formula.formula()->formula);
    EXPECT_EQ(formulaPool->refCount(copy.formula()->formula), 2);
    EXPECT_EQ(copy.formula()->position(), (CellPosition{3, 2, 1}));
    EXPECT_EQ(stringPool->refCount(copy.formula()->result.textIndex()), 2);
    EXPECT_EQ(calcChain.first(), nullptr);
    releaseByteCodeReferences(blockCode(block));
    heapFree(block);
    EXPECT_EQ(formulaPool->refCount(copy.formula()->formula), 1);
    releaseValue(workbook->variables[0].value);
    EXPECT_FALSE(formulaPool->isLive(0));
}

// --- Where a text result lies

TEST(MachineTexts, keepTheirPlaceAsResults)
{
    Cells cells;
    cells.put("A1", u"one");
    cells.put("B1", u"=A1&\"x\"");
    cells.put("B2", u"=A1&\"y\"");
    const auto place = [](int row) {
        return workbook->currentSheet->cellAt(1, row)->value.formula()->result.textIndex();
    };
    const std::int32_t first = place(0);
    const std::int32_t second = place(1);
    recalculate();
    EXPECT_EQ(place(0), first) << "the same text";
    EXPECT_EQ(place(1), second);
    cells.put("A1", u"another one");
    EXPECT_EQ(place(0), first) << "another text";
    EXPECT_EQ(place(1), second);
    EXPECT_EQ(cells.shown("B1"), "\"another onex\"");
    EXPECT_EQ(cells.shown("B2"), "\"another oney\"");
}

TEST(MachineTexts, areSharedWhenTheyArePassedOn)
{
    Cells cells;
    cells.put("A1", u"one");
    cells.put("B1", u"=A1");
    const auto resultOfB1 = [] {
        return workbook->currentSheet->cellAt(1, 0)->value.formula()->result.textIndex();
    };
    const auto textOfA1 = [] { return workbook->currentSheet->cellAt(0, 0)->value.textIndex(); };
    EXPECT_EQ(resultOfB1(), textOfA1());
    cells.put("A1", u"one");
    EXPECT_EQ(resultOfB1(), textOfA1());
    cells.put("A1", u"two");
    EXPECT_EQ(resultOfB1(), textOfA1());
    EXPECT_EQ(stringPool->refCount(textOfA1()), 2);
    cells.put("B1", u"=A1&\"\"");
    cells.put("A1", u"three");
    EXPECT_NE(resultOfB1(), textOfA1());
    EXPECT_EQ(stringPool->refCount(textOfA1()), 1);
}

TEST(MachineTexts, areLeftToOthersWhoHaveThem)
{
    Cells cells;
    cells.put("A1", u"one");
    cells.put("B1", u"=A1&\"x\"");
    CellValue kept;
    copyValue(workbook->currentSheet->valueOf(1, 0), kept);
    recalculate();
    EXPECT_EQ(stringPool->refCount(kept.textIndex()), 2) << "the same text is not made twice";
    cells.put("A1", u"two");
    EXPECT_EQ(describe(kept), "\"onex\"");
    EXPECT_EQ(cells.shown("B1"), "\"twox\"");
    EXPECT_EQ(stringPool->refCount(kept.textIndex()), 1);
    releaseValue(kept);
}

} // namespace
} // namespace vorn
