#include "support/coderun.h"

#include "core/formulacell.h"
#include "core/pool.h"
#include "formula/machine.h"
#include "support/cells.h"
#include "support/rawcells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// No formula gives this error.
constexpr std::int32_t OldResult = 99;

// The result, which owns its text.
CellValue run(ByteCodeWriter& code, CellPosition position)
{
    Cell cell = formulaCell(code, position);
    FormulaCell& formula = *cell.value.formula();
    formula.result = CellValue::makeError(OldResult);
    const CellValue* base = machine.stackTop;
    evaluateFormulaCell(formula);
    EXPECT_EQ(machine.stackTop, base) << "the stack is not back at its base";
    EXPECT_TRUE(machine.machineRunning);
    EXPECT_TRUE(machine.machineHealthy);
    EXPECT_EQ(machine.pendingError, 0);
    CellValue result;
    copyValue(formula.result, result);
    releaseValue(cell.value, KeepOnChain);
    return result;
}

} // namespace

std::string outcome(ByteCodeWriter& code, CellPosition position)
{
    CellValue result = run(code, position);
    const bool kept = result.tag == TagError && result.error() == OldResult;
    const std::string words = kept ? "kept" : describe(result);
    releaseValue(result);
    return words;
}

std::string outcome(void (*write)(ByteCodeWriter&), CellPosition position)
{
    ByteCodeWriter code;
    write(code);
    return outcome(code, position);
}

CellValue outcomeValue(void (*write)(ByteCodeWriter&), CellPosition position)
{
    ByteCodeWriter code;
    write(code);
    return run(code, position);
}

void emitValue(ByteCodeWriter& code, const CellValue& value)
{
    code.emit(OpPushValue, value);
}

void emitText(ByteCodeWriter& code, std::u16string_view text)
{
    code.emit(OpPushText, stringPool->addText(text));
}

} // namespace vorn
