#include "formula/machine.h"

#include "core/formulacell.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/operators.h"
#include "functions/table.h"

#include <algorithm>
#include <cmath>

namespace vorn {

MachineRegisters machine;

namespace {

// A run may pass its limit by what one instruction pushes; the records below the first ones are
// never reached.
CellValue stackRecords[StackSize];
CellValue* const stackBottom = stackRecords + StackSize;

// Room that the last instruction of a run may take beyond the limit.
constexpr int StackReserve = 20;

template <typename Operand>
Operand fetch()
{
    const auto operand = readOperand<Operand>(machine.instructionPointer);
    machine.instructionPointer += sizeof(Operand);
    return operand;
}

void pushCopy(const CellValue& value)
{
    copyValue(value, *--machine.stackTop);
}

void stopUnhealthy()
{
    machine.machineRunning = false;
    machine.machineHealthy = false;
}

void returnFromBlock()
{
    if (machine.callDepth < 1) {
        machine.machineRunning = false;
        return;
    }
    const CellValue result = popRaw();
    const CellValue address = popRaw();
    if (address.tag != TagReturnAddress) {
        // The block left other than one value: there is no way back.
        CellValue lost = result;
        releaseValue(lost);
        lost = address;
        releaseValue(lost);
        stopUnhealthy();
        return;
    }
    machine.instructionPointer = address.get<const std::uint8_t*>();
    pushRaw(result);
    --machine.callDepth;
}

void callFunction()
{
    const auto row = fetch<std::uint16_t>();
    machine.argumentCount = fetch<std::uint8_t>();
    if (row == FunctionRowIf && machine.argumentCount > CompiledIfMark) {
        // The tail of a compiled If: only the false path of one without an else comes here.
        machine.argumentCount = static_cast<std::uint8_t>(machine.argumentCount - CompiledIfMark);
        if (machine.argumentCount != 3) {
            pushLogical(false);
            return;
        }
    }
    if (row >= FunctionRowCount) {
        stopUnhealthy();
        return;
    }
    const auto handler = functionTable[row].handler;
    if (handler != nullptr) {
        handler();
        return;
    }
    popMany(machine.argumentCount);
    pushError(CellErrorName);
}

void callName()
{
    const auto index = fetch<std::uint16_t>();
    if (index >= workbook->names.size() || workbook->names[index].block == nullptr) {
        pushError(CellErrorName);
        return;
    }
    ++machine.callDepth;
    CellValue address;
    address.put(TagReturnAddress, machine.instructionPointer);
    pushRaw(address);
    machine.instructionPointer = blockCode(workbook->names[index].block);
}

void storeVariable()
{
    const auto index = fetch<std::uint16_t>();
    CellValue value = popRaw();
    if (index >= workbook->variables.size()) {
        releaseValue(value);
        stopUnhealthy();
        return;
    }
    releaseValue(workbook->variables[index].value);
    workbook->variables[index].value = value;
}

void loadVariable()
{
    const auto index = fetch<std::uint16_t>();
    if (index >= workbook->variables.size()) {
        stopUnhealthy();
        return;
    }
    pushCopy(workbook->variables[index].value);
}

void pushOperandValue()
{
    const auto value = fetch<CellValue>();
    pushCopy(value);
}

void pushOperandText()
{
    const auto index = fetch<std::int32_t>();
    pushText(stringPool->addRef(index));
}

// The whole of a column may be typed as rows 1 to 65536 elsewhere; here the sheet ends earlier.
RangeRef resolveRange(const RangeRef& stored)
{
    const CellRef first = resolve(stored.first(), machine.base.column, machine.base.row);
    CellRef last = resolve(stored.last(), machine.base.column, machine.base.row);
    if (last.row == UINT16_MAX)
        last.row = LastRow;
    return {first.row, first.column, last.row, last.column};
}

void pushCellReference()
{
    const auto stored = fetch<CellRef>();
    pushRaw(CellValue::makeCellRef(resolve(stored, machine.base.column, machine.base.row)));
}

void pushRangeReference()
{
    const auto stored = fetch<RangeRef>();
    pushRaw(CellValue::makeRangeRef(resolveRange(stored)));
}

void pushSheetReference(ValueTag tag)
{
    auto image = fetch<CellValue>();
    if (tag == TagSheetCellRef)
        image.put(tag, resolve(image.cellRef(), machine.base.column, machine.base.row));
    else
        image.put(tag, resolveRange(image.rangeRef()));
    pushRaw(image);
}

void pushBadReference(int operandBytes)
{
    machine.instructionPointer += operandBytes;
    pushError(CellErrorRef);
}

void jump()
{
    machine.instructionPointer += readOperand<std::int16_t>(machine.instructionPointer) + 3;
}

void jumpIfFalse()
{
    const bool condition = popCondition();
    machine.instructionPointer +=
        condition ? 2 : readOperand<std::int16_t>(machine.instructionPointer) + 2;
    machine.pendingError = 0;
}

void popAndRelease()
{
    CellValue value = popRaw();
    releaseValue(value);
}

// One call for each operation, so that the compiler tells of one that was forgotten.
void execute(OpCode opcode)
{
    switch (opcode) {
    case OpReturn:
        return returnFromBlock();
    case OpPushNumber:
        return pushNumber(fetch<double>());
    case OpCall:
        return callFunction();
    case OpPushValue:
        return pushOperandValue();
    case OpPushInt16:
        return pushRaw(CellValue::makeInteger(fetch<std::uint16_t>()));
    case OpAdd:
        return operateAdd();
    case OpSubtract:
        return operateSubtract();
    case OpMultiply:
        return operateMultiply();
    case OpDivide:
        return operateDivide();
    case OpUnaryPlus:
    case OpParen:
        return;
    case OpNegate:
        return operateNegate();
    case OpPushText:
        return pushOperandText();
    case OpPushCell:
        return pushCellReference();
    case OpPushInt32:
        return pushRaw(CellValue::makeInteger(fetch<std::uint32_t>()));
    case OpPushRange:
        return pushRangeReference();
    case OpPushSheetCell:
        return pushSheetReference(TagSheetCellRef);
    case OpPushSheetRange:
        return pushSheetReference(TagSheetRangeRef);
    case OpEqual:
        return operateEqual();
    case OpLess:
        return operateLess();
    case OpGreater:
        return operateGreater();
    case OpLessEqual:
        return operateLessEqual();
    case OpGreaterEqual:
        return operateGreaterEqual();
    case OpNotEqual:
        return operateNotEqual();
    case OpConcat:
        return operateConcat();
    case OpPower:
        return operatePower();
    case OpPercent:
        return operatePercent();
    case OpPushError:
        return pushError(fetch<std::uint16_t>() & 0xff);
    case OpPushLogical:
        return pushLogical(fetch<std::uint8_t>() != 0);
    case OpBadSheetCell:
    case OpBadSheetRange:
        return pushBadReference(12);
    case OpBadCell:
        return pushBadReference(4);
    case OpBadRange:
        return pushBadReference(8);
    case OpPushDate:
        return pushDate(fetch<double>());
    case OpJump:
        return jump();
    case OpJumpIfFalse:
        return jumpIfFalse();
    case OpCallName:
        return callName();
    case OpPop:
        return popAndRelease();
    case OpStoreVariable:
        return storeVariable();
    case OpLoadVariable:
        return loadVariable();
    }
    stopUnhealthy();
}

// Runs from the instruction pointer until the block ends or cannot go on. The limit is that of the
// run; where the stack's own end comes first, that is the limit.
void run()
{
    machine.runBase = machine.stackTop;
    const std::ptrdiff_t room = machine.runBase - stackRecords - StackReserve;
    const CellValue* const limit =
        machine.runBase - std::clamp<std::ptrdiff_t>(room, 0, StackRunLimit);
    while (machine.machineRunning) {
        if (machine.stackTop < limit) {
            machine.machineHealthy = false;
            break;
        }
        execute(static_cast<OpCode>(*machine.instructionPointer++));
    }
    machine.machineRunning = true;
}

void takeResult(FormulaCell& cell)
{
    dereferenceTop();
    CellValue result = popRaw();
    if (result.tag == TagNumber && !std::isfinite(result.number()))
        result = CellValue::makeError(CellErrorNum);
    releaseValue(cell.result);
    cell.result = result;
}

} // namespace

void resetMachine()
{
    machine = MachineRegisters{};
    machine.stackTop = stackBottom;
    machine.runBase = stackBottom;
}

void abandonRun()
{
    stopUnhealthy();
}

void evaluateFormulaCell(FormulaCell& cell)
{
    machine.pendingError = 0;
    machine.callDepth = 0;
    machine.base = cell.position();
    machine.instructionPointer = formulaPool->code(cell.formula);
    run();
    if (machine.machineHealthy && machine.stackTop == machine.runBase - 1)
        takeResult(cell);
    else
        popMany(static_cast<int>(machine.runBase - machine.stackTop));
    machine.machineHealthy = true;
    machine.pendingError = 0;
}

} // namespace vorn
