#include "editing/undo.h"

#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/view.h"
#include "formula/machine.h"

namespace vorn {

UndoList undoList;
ByteCodeWriter* undoRecorder = nullptr;

namespace {

void releaseProgram(std::uint8_t* program)
{
    if (program == nullptr)
        return;
    releaseByteCodeReferences(blockCode(program));
    heapFree(program);
}

void releaseStep(const UndoStep& step)
{
    releaseProgram(step.forward);
    releaseProgram(step.backward);
    heapFree(step.label);
}

// A new edit discards what was undone, from the end backwards.
void dropUndoneSteps()
{
    GrowArray<UndoStep>& steps = undoList.steps;
    while (steps.size() > undoList.position) {
        releaseStep(steps[steps.size() - 1]);
        steps.removeAt(steps.size() - 1);
    }
}

void dropOldestStep()
{
    releaseStep(undoList.steps[0]);
    undoList.steps.removeAt(0);
    --undoList.position;
}

// Appends a step, or releases it if there is no room for it. If undone steps were dropped for it,
// there is.
bool storeStep(const UndoStep& step)
{
    dropUndoneSteps();
    if (!undoList.steps.append(step)) {
        releaseStep(step);
        return false;
    }
    ++undoList.position;
    if (undoList.steps.size() > UndoStepMax)
        dropOldestStep();
    return true;
}

// Files number texts and formulas by their places in the pools, so that doing an edit again must
// take the same places as the first time.
void runProgram(const std::uint8_t* program)
{
    stringPool->sortFreed();
    formulaPool->sortFreed();
    runCode(program);
}

// What every change of the document by a step ends with.
void noteChange()
{
    markRepaint();
    workbook->modified = true;
}

} // namespace

void addUndoStep(std::uint8_t* forward, std::uint8_t* backward, std::u16string_view label, bool run)
{
    const UndoStep step{forward, backward, duplicateString(label)};
    // Where memory was short anywhere in the making of the step, nothing has happened yet.
    if (forward == nullptr || backward == nullptr || (run && errorState.code == ErrorMemory)) {
        releaseStep(step);
        return;
    }
    const RepaintLock lock;
    const bool stored = storeStep(step);
    if (!stored && run)
        return;
    if (run)
        runProgram(forward);
    noteChange();
    if (!stored)
        clearUndo(); // the steps before an edit without a way back do not know its document
}

void addRecordedStep(std::uint8_t* forward, ByteCodeWriter& recorder, std::u16string_view label)
{
    const UndoStep step{forward, nullptr, duplicateString(label)};
    if (forward == nullptr || errorState.code == ErrorMemory) {
        releaseStep(step);
        recorder.clear();
        return;
    }
    const RepaintLock lock;
    if (!storeStep(step)) {
        recorder.clear();
        return;
    }
    undoRecorder = &recorder;
    runProgram(forward);
    undoRecorder = nullptr;
    noteChange();
    emitAction(recorder, ActionRecalculate);
    UndoStep& stored = undoList.steps[undoList.position - 1];
    stored.backward = recorder.finish();
    if (stored.backward == nullptr)
        clearUndo();
}

void undo()
{
    if (undoList.position == 0)
        return;
    const RepaintLock lock;
    --undoList.position;
    runProgram(undoList.steps[undoList.position].backward);
    noteChange();
}

void redo()
{
    if (undoList.position == undoList.steps.size())
        return;
    const RepaintLock lock;
    runProgram(undoList.steps[undoList.position].forward);
    ++undoList.position;
    noteChange();
}

void clearUndo()
{
    undoList.position = 0;
    dropUndoneSteps();
    undoList.steps.clear();
}

namespace {

// What ActionFormat takes, and which of it is the number format.
constexpr std::uint32_t FormatOperands = 44;
constexpr std::uint32_t NumberFormatOperand = 1;

void dropFormatFrom(std::uint8_t* program, int format)
{
    std::uint8_t* pushes[FormatOperands] = {};
    std::uint32_t count = 0;
    for (std::uint8_t* code = program + sizeof(std::uint32_t); *code != OpReturn;
         code = nextInstruction(code)) {
        if (*code == OpCall && readOperand<std::uint16_t>(code + 1) == ActionFormat) {
            std::uint8_t* operand = pushes[(count + NumberFormatOperand) % FormatOperands] + 1;
            const auto index = readOperand<std::uint16_t>(operand);
            if (index == format)
                writeOperand(operand, std::uint16_t{FormatIndexGeneral});
            else if (index > format)
                writeOperand(operand, static_cast<std::uint16_t>(index - 1));
        }
        pushes[count++ % FormatOperands] = code;
    }
}

} // namespace

void dropFormatFromSteps(int format)
{
    for (const UndoStep& step : undoList.steps) {
        dropFormatFrom(step.forward, format);
        dropFormatFrom(step.backward, format);
    }
}

namespace {

std::u16string_view labelOf(int index)
{
    if (index < 0 || index >= undoList.steps.size() || undoList.steps[index].label == nullptr)
        return {};
    return undoList.steps[index].label;
}

} // namespace

std::u16string_view undoLabel()
{
    return labelOf(undoList.position - 1);
}

std::u16string_view redoLabel()
{
    return labelOf(undoList.position);
}

} // namespace vorn
