#include "formula/machine.h"

#include "core/formulacell.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/operators.h"
#include "functions/table.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace vorn {

MachineRegisters machine;

namespace {

// A run may pass its limit by what one instruction pushes; the records below the first ones are
// never reached.
CellValue stackRecords[StackSize];
CellValue* const StackBottom = stackRecords + StackSize;

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
    CellValue result = popRaw();
    const CellValue address = topValue();
    if (address.tag != TagReturnAddress) {
        // The block left other than one value: there is no way back.
        releaseValue(result);
        stopUnhealthy();
        return;
    }
    ++machine.stackTop;
    machine.instructionPointer = address.get<const std::uint8_t*>();
    pushRaw(result);
    --machine.callDepth;
}

// A function takes its arguments and leaves one result. What ends the run may leave anything, the
// steps of undo programs leave nothing, and a sum that meets an error in a cell gives up where it
// is.
[[maybe_unused]] bool mayLeaveUnbalanced(int row)
{
    return !machine.machineHealthy || row >= FirstActionRow || row == FunctionRowSum;
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
    const auto handler = FunctionTable[row].handler;
    if (handler == nullptr) {
        popMany(machine.argumentCount);
        pushError(CellErrorName);
        return;
    }
    [[maybe_unused]] const CellValue* balanced = machine.stackTop + machine.argumentCount - 1;
    handler();
    assert(machine.stackTop == balanced || mayLeaveUnbalanced(row));
}

void callName()
{
    const auto index = fetch<std::uint16_t>();
    if (index >= workbook->names.size() || workbook->names[index].block == nullptr) {
        pushError(CellErrorName);
        return;
    }
    if (--machine.nameCallsLeft < 0) {
        stopUnhealthy();
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

// A formula in an undo program is a record off the chain, which the program keeps: the stack gets
// one of its own over the same code.
void pushFormulaCopy(const CellValue& value)
{
    Cell copy;
    cloneCell({value}, copy, value.formula()->position(), KeepOffChain);
    pushRaw(copy.value);
}

void pushOperandValue()
{
    const auto value = fetch<CellValue>();
    if (value.tag == TagFormula)
        pushFormulaCopy(value);
    else
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

// The number that a record means, if it is one or a reference to one in `sheet`.
inline bool plainNumber(const CellValue& record, const Sheet& sheet, double& out)
{
    const CellValue* value = &record;
    if (record.tag == TagCellRef) {
        const CellRef reference = record.cellRef();
        const Cell* cell = sheet.cellAt(reference.column, reference.row);
        if (cell == nullptr)
            return false;
        value = &resultOf(cell->value);
    }
    out = value->number();
    return value->tag == TagNumber;
}

// The four operations on plain numbers; anything that needs a second thought is left to the
// handlers.
inline bool plainOperation(std::uint8_t opcode, double left, double right, double& out)
{
    switch (opcode) {
    case OpAdd:
        out = left + right;
        return true;
    case OpSubtract:
        out = left - right;
        return true;
    case OpMultiply:
        out = left * right;
        return true;
    case OpDivide:
        out = left / right;
        return right != 0;
    default:
        return false;
    }
}

// Runs ahead through plain arithmetic on numbers and cells, which is what most formulas are made
// of, with the registers at hand; stops before the first instruction that is anything else. What it
// does is what the handlers do, and so it leaves an error that pends to them.
void runArithmetic(const CellValue* limit)
{
    const Sheet* sheet = workbook->sheetAt(machine.base.sheet);
    const CellPosition base = machine.base;
    const CellValue* const runBase = machine.runBase;
    const std::uint8_t* instruction = machine.instructionPointer;
    CellValue* top = machine.stackTop;
    const bool isClean = sheet != nullptr && machine.pendingError == 0;
    for (; isClean && top >= limit; instruction += 1 + operandSize(*instruction)) {
        if (*instruction == OpPushCell) {
            const auto stored = readOperand<CellRef>(instruction + 1);
            *--top = CellValue::makeCellRef(resolve(stored, base.column, base.row));
        } else if (*instruction == OpPushNumber) {
            *--top = CellValue::makeNumber(readOperand<double>(instruction + 1));
        } else {
            double left = 0;
            double right = 0;
            double result = 0;
            if (runBase - top < 2 || *instruction < OpAdd || *instruction > OpDivide ||
                !plainNumber(top[0], *sheet, right) || !plainNumber(top[1], *sheet, left) ||
                !plainOperation(*instruction, left, right, result))
                break;
            *++top = CellValue::makeNumber(result);
        }
    }
    machine.instructionPointer = instruction;
    machine.stackTop = top;
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
        runArithmetic(limit);
        if (machine.stackTop < limit) {
            machine.machineHealthy = false;
            break;
        }
        execute(static_cast<OpCode>(*machine.instructionPointer++));
    }
    machine.machineRunning = true;
}

void startRun(CellPosition base, const std::uint8_t* code)
{
    machine.pendingError = 0;
    machine.callDepth = 0;
    machine.nameCallsLeft = NameCallsUnlimited;
    machine.base = base;
    machine.instructionPointer = code;
}

// Takes off the stack what the run left there and makes the machine ready for the next one.
void endRun()
{
    if (machine.stackTop != machine.runBase)
        popMany(static_cast<int>(machine.runBase - machine.stackTop));
    machine.machineRunning = true;
    machine.machineHealthy = true;
    machine.pendingError = 0;
    machine.nameCallsLeft = NameCallsUnlimited;
}

// A text that a formula made keeps the place of the one before in the pool, where nobody else has
// that: files number texts by their places, and calculating once more must not make another file of
// a document. A text that was only passed on is shared with whoever has it. Takes over the new
// text.
void storeText(FormulaCell& cell, std::int32_t text)
{
    const std::int32_t former = cell.result.textIndex();
    const bool isMade = text != -1 && stringPool->refCount(text) == 1;
    if (isMade && former != -1 && stringPool->refCount(former) == 1) {
        stringPool->exchange(former, text);
        stringPool->release(text);
    } else if (isMade && std::u16string_view(stringPool->text(former)) == stringPool->text(text)) {
        stringPool->release(text);
    } else {
        stringPool->release(former);
        cell.result = CellValue::makeTextIndex(text);
    }
}

void storeResult(FormulaCell& cell, const CellValue& result)
{
    if (result.tag == TagText && cell.result.tag == TagText) {
        storeText(cell, result.textIndex());
        return;
    }
    releaseValue(cell.result);
    cell.result = result;
}

// The only place where a number that is none, or beyond all bounds, becomes an error; a date does
// not.
void takeResult(FormulaCell& cell)
{
    dereferenceTop();
    if (machine.stackTop->tag != TagNumber) {
        storeResult(cell, popRaw());
        return;
    }
    const double number = (machine.stackTop++)->number();
    storeResult(cell, std::isfinite(number) ? CellValue::makeNumber(number)
                                            : CellValue::makeError(CellErrorNum));
}

} // namespace

void resetMachine()
{
    machine = MachineRegisters{};
    machine.stackTop = StackBottom;
    machine.runBase = StackBottom;
}

void abandonRun()
{
    stopUnhealthy();
}

void evaluateFormulaCell(FormulaCell& cell)
{
    startRun(cell.position(), formulaPool->code(cell.formula));
    machine.nameCallsLeft = NameCallMax;
    run();
    if (machine.machineHealthy && machine.stackTop == machine.runBase - 1)
        takeResult(cell);
    endRun();
}

void runCode(const std::uint8_t* block)
{
    const auto sheet = static_cast<std::uint16_t>(workbook->currentSheet->index);
    startRun({0, 0, sheet}, blockCode(block));
    run();
    endRun();
}

} // namespace vorn
