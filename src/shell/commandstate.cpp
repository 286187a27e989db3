#include "shell/commandstate.h"

#include "core/applyformat.h"
#include "core/workbook.h"
#include "editing/protection.h"
#include "editing/undo.h"
#include "platform/clipboard.h"
#include "platform/platform.h"
#include "resources/menu.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/recentfiles.h"
#include "shell/texteditor.h"

#include <algorithm>

namespace vorn {

namespace {

// The state of an entry or of a button; null if there is none.
template <typename States>
auto* findState(States& states, int id)
{
    const auto found = std::find_if(states.begin(), states.end(),
                                    [id](const auto& state) { return state.id == id; });
    return found == states.end() ? nullptr : &*found;
}

// What the states follow, looked up once.
struct Situation {
    enum Branch { Editing, Protected, Ready } branch = Ready;
    bool undo = false; // the editor's while it is open
    bool redo = false;
    bool clipboardCells = false;
    bool clipboardText = false;
};

Situation readSituation()
{
    Situation situation;
    const unsigned cells = application->clipboardFormat;
    situation.clipboardCells = cells != 0 && platform.clipboard->holds(cells);
    situation.clipboardText = platform.clipboard->holdsText();
    situation.undo = undoList.position > 0;
    situation.redo = undoList.position < undoList.steps.size();
    if (application->isEditing()) {
        situation.branch = Situation::Editing;
        situation.undo = application->textEditor->canUndo();
    } else if (isProtected()) {
        situation.branch = Situation::Protected;
    }
    return situation;
}

// --- The menu

bool enabledWhileEditing(const Command& command, const Situation& situation)
{
    switch (command.id) {
    case CommandCut:
    case CommandCopy:
    case CommandPaste: // whatever the clipboard holds
        return true;
    case CommandUndo:
        return situation.undo;
    default:
        return command.has(WhileEditing);
    }
}

bool enabledWhenReady(int id, const Situation& situation)
{
    switch (id) {
    case CommandPaste:
        return situation.clipboardCells || situation.clipboardText;
    case CommandPasteSpecial:
        return situation.clipboardCells;
    case CommandOptions:
        return !application->fullScreen;
    default:
        return true;
    }
}

bool isEnabled(const Command& command, const Situation& situation)
{
    if (situation.branch == Situation::Editing)
        return enabledWhileEditing(command, situation);
    if (command.id == CommandUndo)
        return situation.undo;
    if (command.id == CommandRedo)
        return situation.redo;
    if (situation.branch == Situation::Protected)
        return !command.has(Unprotected);
    return enabledWhenReady(command.id, situation);
}

bool isChecked(int id)
{
    const int zoom = workbook->currentSheet->zoom;
    switch (id) {
    case CommandZoom70:
        return zoom == 70;
    case CommandZoom80:
        return zoom == 80;
    case CommandZoom90:
        return zoom == 90;
    case CommandZoom100:
        return zoom == 100;
    case CommandFullScreen:
        return application->fullScreen;
    case CommandFilter:
        return workbook->currentSheet->filter.active;
    default:
        return false;
    }
}

std::u16string entryText(const MenuRow& row)
{
    switch (row.id) {
    case CommandFreezeTitles:
        return isFrozen() ? u"Unfreeze &Titles" : u"Freeze &Titles";
    case CommandProtectSheet:
        return workbook->currentSheet->protectedSheet ? u"Unprotect &Sheet" : u"Protect &Sheet";
    case CommandProtectWorkbook:
        return workbook->protectedWorkbook ? u"Unprotect &Workbook" : u"Protect &Workbook";
    case CommandUndo:
        return u"&Undo " + std::u16string(undoLabel());
    case CommandRedo:
        return u"&Redo " + std::u16string(redoLabel());
    default:
        return std::u16string(row.text);
    }
}

// The recent files stand where the placeholder does while there are none.
void addRecentFiles(std::vector<EntryState>& entries, const MenuRow& placeholder)
{
    bool any = false;
    for (int slot = 0; slot < RecentFileCount; ++slot) {
        const std::u16string& path = application->recentFiles[static_cast<std::size_t>(slot)];
        if (path.empty())
            continue;
        entries.push_back({CommandRecentFile1 + slot, true, false, recentFileText(slot, path)});
        any = true;
    }
    if (!any)
        entries.push_back({placeholder.id, false, false, std::u16string(placeholder.text)});
}

void refreshMenu(CommandState& state, const Situation& situation)
{
    state.entries.clear();
    for (const MenuRow& row : MenuBar) {
        if (row.kind != MenuItem::Entry)
            continue;
        if (row.id == CommandNoRecentFiles) {
            addRecentFiles(state.entries, row);
            continue;
        }
        if (row.id == CommandTasks)
            state.entries.insert(state.entries.end(), state.taskEntries.begin(),
                                 state.taskEntries.end());
        const Command& command = *findCommand(row.id);
        const bool enabled = !command.has(Switched) || isEnabled(command, situation);
        state.entries.push_back({row.id, enabled, isChecked(row.id), entryText(row)});
    }
}

// --- The toolbar

bool buttonEnabled(const ButtonState& button, const Situation& situation)
{
    const bool clipboardFull = situation.clipboardCells || situation.clipboardText;
    switch (button.id) {
    case CommandUndo:
        return situation.undo;
    case CommandPaste:
        if (situation.branch == Situation::Editing)
            return situation.clipboardText;
        return situation.branch == Situation::Ready && clipboardFull;
    case CommandCut:
    case CommandCopy:
    case CommandAutoSum:
        if (situation.branch == Situation::Editing)
            return button.enabled; // as it was before
        break;
    default:
        if (situation.branch == Situation::Editing)
            return false;
    }
    return situation.branch == Situation::Ready || !findCommand(button.id)->has(Unprotected);
}

void checkButton(CommandState& state, int id, bool checked)
{
    findState(state.buttons, id)->checked = checked;
}

// A check button is down if all of the selection is so.
void showCommonFormat(CommandState& state)
{
    const Sheet& sheet = *workbook->currentSheet;
    const FormatTemplate common = commonFormat(sheet, sheet.selection.range);
    const FontMask& agree = common.fontMask;
    const FontRecord& font = common.font;
    checkButton(state, CommandBold, agree[MaskBold] && font.weight == WeightBold);
    checkButton(state, CommandItalic, agree[MaskItalic] && (font.attributes & FontItalic) != 0);
    checkButton(state, CommandUnderline, agree[MaskUnderline] && font.underline != 0);
    const bool aligned = common.styleMask[MaskHorizontal];
    const int alignment = common.style.get(StyleHorizontal);
    checkButton(state, CommandAlignLeft, aligned && alignment == AlignLeft);
    checkButton(state, CommandAlignCenter, aligned && alignment == AlignCenter);
    checkButton(state, CommandAlignRight, aligned && alignment == AlignRight);
}

void refreshToolbar(CommandState& state, const Situation& situation)
{
    for (ButtonState& button : state.buttons)
        button.enabled = buttonEnabled(button, situation);
    checkButton(state, CommandFullScreen, application->fullScreen);
    if (situation.branch == Situation::Ready)
        showCommonFormat(state);
}

} // namespace

CommandState::CommandState()
{
    for (const ToolbarSlot& slot : Toolbar) {
        if (slot.style != ButtonStyle::Separator)
            buttons.push_back({slot.id});
    }
}

const EntryState* CommandState::entry(int id) const
{
    return findState(entries, id);
}

const ButtonState* CommandState::button(int id) const
{
    return findState(buttons, id);
}

void refreshCommandState()
{
    if (workbook == nullptr || workbook->currentSheet == nullptr)
        return;
    const Situation situation = readSituation();
    refreshMenu(application->commandState, situation);
    refreshToolbar(application->commandState, situation);
}

void clearTaskMenu()
{
    application->commandState.taskEntries.clear();
}

void updateTaskMenu()
{
    clearTaskMenu();
    for (int index = 0; index < workbook->tasks.size(); ++index) {
        const Task& task = workbook->tasks[index];
        if (task.addToMenu == 0)
            continue;
        const std::u16string name = task.name == nullptr ? u"" : task.name;
        application->commandState.taskEntries.push_back(
            {CommandFirstTask + index, true, false, name});
    }
}

} // namespace vorn
