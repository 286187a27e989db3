// The stack machine that runs all byte code: formulas, tasks, undo programs. It is a set of
// registers and one stack, not an object, because there is one user and one thread.
//
// Operands are turned into what an operation wants when they are popped. An error inside a formula
// is a value; a pop that meets one cannot push it, so it pends in `pendingError` until the next
// checkPending turns it into the result. The leftmost of several errors wins, since it is popped
// last.
//
// Shape:  the stack grows downward. A record on it owns its text. Every run has a base; a pop below
//         it, or of the way back from a name, ends the run unhealthy, and an unhealthy run leaves
//         the cell's last value as it was.
// Errors: never the sticky code, but for the steps of undo programs and the memory that they want.
#pragma once

#include "core/pool.h"
#include "core/sheet.h"
#include "core/value.h"

#include <cstdint>
#include <string_view>

namespace vorn {

// Records that one run may use above its base. An instruction pushes at most a few more, and a task
// may start a recalculation on top of its own values.
constexpr int StackRunLimit = 380;
constexpr int StackSize = 4 * 400;

// Defined names that one formula may call, in whatever depth. Forty names that each call the next
// one twice would take hours.
constexpr std::int64_t NameCallMax = 100'000;
constexpr std::int64_t NameCallsUnlimited = INT64_MAX;

struct MachineRegisters {
    const std::uint8_t* instructionPointer = nullptr;
    CellValue* stackTop = nullptr;
    CellValue* runBase = nullptr;
    // The cell that relative references are taken from.
    CellPosition base;
    std::uint8_t argumentCount = 0;
    // A CellError that waits to become a value, or 0.
    std::int32_t pendingError = 0;
    // Defined names that are being run.
    std::int32_t callDepth = 0;
    // Calls of names that are left to this run; one that needs more ends unhealthy.
    std::int64_t nameCallsLeft = NameCallsUnlimited;
    bool machineRunning = true;
    bool machineHealthy = true;
    // The tag of the value popped last, as the operators that keep dates ask for it.
    std::uint8_t poppedTag = TagBlank;
};

extern MachineRegisters machine;

// Empties the stack and sets the registers for a first run.
void resetMachine();

// Runs the formula of a cell and stores the outcome as its result. The old result stays when the
// run ends unhealthy or leaves other than one value.
void evaluateFormulaCell(FormulaCell& cell);

// Runs a block that is no formula: a program of undo. Relative references are taken from the first
// cell of the current sheet. It leaves nothing on the stack, and errors that pend are lost.
void runCode(const std::uint8_t* block);

// Ends the run that is going on; its outcome is dropped.
void abandonRun();

// --- Popping. All but popRaw dereference first: a reference becomes the value of its cell, a
// reference to several cells the error 23. A pop that fails sets pendingError and gives 0.

// Turns a reference on top of the stack into a value.
void dereferenceTop();

// Blank 0, logical 0 or 1, a text that reads as a plain number its number (any other text: 15),
// number and date their float.
double popNumberSlow();
inline double popNumber()
{
    if (machine.stackTop < machine.runBase && machine.stackTop->tag == TagNumber) {
        machine.poppedTag = TagNumber;
        return (machine.stackTop++)->number();
    }
    return popNumberSlow();
}

// As popNumber, but a text must read as a date, and blank and logical are 0.
double popDateNumber();

// Did the value popped last have the date tag?
inline bool poppedDate()
{
    return machine.poppedTag == TagDateTime;
}

// Blank and 0 are false; a text must read as a logical; a date fails.
bool popLogical();

// popLogical for a condition: a pop that fails is true.
bool popCondition();

// A whole number: the value moved 0.00001 away from zero, then cut, within 32 bits. A text fails.
std::int32_t popInteger();
std::int32_t cutToInteger(double number);

// A StringPool index that the caller must release; a number is rendered first. Blank is -1.
std::int32_t popText();

// The error number on top, or 0 for any other value.
std::int32_t popErrorNumber();

// The record as it is, with what it owns.
CellValue popRaw();

// What lies on top, without popping; a blank at the base of the run.
const CellValue& topValue();

// A reference of any kind: where it points. Sheets are sorted, corners are as they stand.
struct RangeArgument {
    int firstSheet = 0;
    int lastSheet = 0;
    RangeRef range;
};

// Reads a value of tags 6 to 9; answers false for any other.
bool readReference(const CellValue& value, RangeArgument& out);

// Pops a reference and starts a walk over its cells; answers false, with the stack as it was, if
// the top is no reference.
bool popRangeIterator(CellIterator& iterator);

// Pops a reference if the top is one; otherwise leaves the stack as it was and answers false.
bool tryPopRange(RangeArgument& out);

// Pops a reference; anything else is released, sets pendingError 23 and answers false.
bool popRange(RangeArgument& out);

// Pops and releases.
void popMany(int count);

// --- Pushing.

// Takes over what the value owns.
inline void pushRaw(const CellValue& value)
{
    *--machine.stackTop = value;
}

inline void pushNumber(double number)
{
    pushRaw(CellValue::makeNumber(number));
}
inline void pushDate(double serial)
{
    pushRaw(CellValue::makeDate(serial));
}
inline void pushLogical(bool logical)
{
    pushRaw(CellValue::makeLogical(logical));
}
inline void pushError(std::int32_t error)
{
    pushRaw(CellValue::makeError(error));
}
inline void pushBlank()
{
    pushRaw(CellValue{});
}

// Takes over one reference.
inline void pushText(std::int32_t textIndex)
{
    pushRaw(CellValue::makeTextIndex(textIndex));
}

// Enters the characters in the StringPool.
void pushNewText(std::u16string_view text);

inline void setPending(std::int32_t error)
{
    machine.pendingError = error;
}

// Called by a handler when it has popped its arguments: a pending error becomes the result, and the
// answer is false.
bool checkPendingSlow();
inline bool checkPending()
{
    return machine.pendingError == 0 || checkPendingSlow();
}

} // namespace vorn
