// The handlers whose units are not there yet: each does nothing. A block goes when the unit comes
// that its title names.
#include "core/heap.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "shell/commandhandlers.h"

namespace vorn {

// --- editing/undo.cpp: the list, without the steps that make up a program
UndoList undoList;

namespace {

void releaseProgram(std::uint8_t* program)
{
    if (program != nullptr)
        releaseByteCodeReferences(blockCode(program));
    heapFree(program);
}

std::u16string_view labelAt(int index)
{
    if (index < 0 || index >= undoList.steps.size() || undoList.steps[index].label == nullptr)
        return {};
    return undoList.steps[index].label;
}

} // namespace

void addUndoStep(std::uint8_t* forward, std::uint8_t* backward, std::u16string_view label, bool)
{
    UndoStep step{forward, backward, duplicateString(label)};
    if (undoList.steps.append(step))
        ++undoList.position;
    workbook->modified = true;
}
void undo()
{
    if (undoList.position > 0)
        --undoList.position;
}
void redo()
{
    if (undoList.position < undoList.steps.size())
        ++undoList.position;
}
void clearUndo()
{
    for (UndoStep& step : undoList.steps) {
        releaseProgram(step.forward);
        releaseProgram(step.backward);
        heapFree(step.label);
    }
    undoList.steps.clear();
    undoList.position = 0;
}
std::u16string_view undoLabel()
{
    return labelAt(undoList.position - 1);
}
std::u16string_view redoLabel()
{
    return labelAt(undoList.position);
}
void emitSelectRange(ByteCodeWriter&, const RangeRef*) {}
void emitSnapshot(ByteCodeWriter&) {}

// --- shell/fileactions.cpp
void openCommand() {}
void saveCommand() {}
void saveAsCommand() {}
void deleteFileCommand() {}
void filePropertiesCommand() {}
void openRecentCommand(int) {}

// --- shell/entry.cpp
void autoSumCommand() {}
void insertFunctionCommand() {}
void insertNameCommand() {}
void quickEntryCommand() {}
void commitCommand() {}
void cancelCommand() {}

// --- shell/dialogs
void goToCommand() {}
void sheetsCommand() {}
void zoomCommand() {}
void aboutCommand() {}
void findCommand() {}
void replaceCommand() {}
void optionsCommand() {}
void rowHeightCommand() {}
void columnWidthCommand() {}
void formatCellsCommand() {}

// --- shell/formatactions.cpp
void boldCommand() {}
void italicCommand() {}
void underlineCommand() {}
void alignLeftCommand() {}
void alignCenterCommand() {}
void alignRightCommand() {}
void hideColumnsCommand() {}
void showColumnsCommand() {}
void autofitColumnsCommand() {}
void hideRowsCommand() {}
void showRowsCommand() {}
void autofitRowsCommand() {}

} // namespace vorn
