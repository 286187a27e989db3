#include "shell/commands.h"

#include "core/workbook.h"
#include "editing/clear.h"
#include "editing/protection.h"
#include "editing/undo.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/texteditor.h"

#include <algorithm>

namespace vorn {

namespace {

// The commands that have no work behind them so far: the clipboard, inserting and deleting cells,
// filling, sorting, filters, charts, tasks and the defining of names.
void laterCommand() {}
void runTask(int) {}

void doNothing() {}

void newCommand()
{
    application->newWorkbook();
}

void closeCommand()
{
    application->close();
}

void clearAllCommand()
{
    clearSelection(ClearAll);
}

void clearContentsCommand()
{
    clearSelection(ClearContents);
}

void clearFormatsCommand()
{
    clearSelection(ClearFormats);
}

template <int slot>
void openRecentSlot()
{
    openRecentCommand(slot);
}

template <int percent>
void zoomTo()
{
    setZoomOfAllSheets(percent);
}

constexpr Command Commands[] = {
#define COMMAND(id, name, handler, flags) {id, handler, flags},
#include "resources/commands.def"
#undef COMMAND
};

bool isTask(int id)
{
    return id >= CommandFirstTask && id <= CommandLastTask;
}

// What the editor does in place of the document.
void runInEditor(TextEditor& editor, int id)
{
    switch (id) {
    case CommandUndo:
        editor.undo();
        break;
    case CommandCut:
        editor.cut();
        break;
    case CommandCopy:
        editor.copy();
        break;
    case CommandPaste:
        editor.paste();
        break;
    case CommandClearAll:
    case CommandClearContents:
        editor.clear();
        break;
    default:
        break;
    }
}

CommandRoute routeWhileEditing(int id, bool pointing)
{
    switch (id) {
    case CommandUndo:
        return CommandRoute::ToEditor;
    case CommandCut:
    case CommandCopy:
    case CommandPaste:
    case CommandClearAll:
    case CommandClearContents:
        return pointing ? CommandRoute::Ignored : CommandRoute::ToEditor;
    default:
        break;
    }
    const Command* command = findCommand(id);
    return command != nullptr && command->has(WhileEditing) ? CommandRoute::Runs
                                                            : CommandRoute::Ignored;
}

void runCommand(int id)
{
    const Command& command = *findCommand(id);
    if (command.has(AsksFirst) && !application->PromptSaveChanges())
        return;
    command.run();
}

} // namespace

const Command* findCommand(int id)
{
    const auto* found = std::find_if(std::begin(Commands), std::end(Commands),
                                     [id](const Command& command) { return command.id == id; });
    return found == std::end(Commands) ? nullptr : found;
}

CommandRoute routeCommand(int id, CommandMode mode)
{
    if (id == CommandQuickEntry)
        return CommandRoute::Runs;
    if (mode.editing)
        return routeWhileEditing(id, mode.pointing);
    if (isTask(id))
        return CommandRoute::RunsTask;
    const Command* command = findCommand(id);
    if (command == nullptr || (mode.isProtected && command->has(Unprotected)))
        return CommandRoute::Ignored;
    return CommandRoute::Runs;
}

void onCommand(std::uint16_t id)
{
    if (workbook == nullptr)
        return;
    switch (routeCommand(id, {application->isEditing(), application->pointMode, isProtected()})) {
    case CommandRoute::Ignored:
        return;
    case CommandRoute::ToEditor:
        runInEditor(*application->textEditor, id);
        break;
    case CommandRoute::Runs:
        runCommand(id);
        break;
    case CommandRoute::RunsTask:
        runTask(id - CommandFirstTask);
        break;
    }
    refreshCommandState();
}

} // namespace vorn
