#include "cli/shellverbs.h"

#include "cli/place.h"
#include "cli/utf8.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "formula/bytecode.h"
#include "formula/printer.h"
#include "formula/references.h"
#include "functions/table.h"
#include "resources/menu.h"
#include "shell/commands.h"
#include "shell/settings.h"

namespace vorn::cli {

namespace {

// What else the field of a message holds; a command has 16 bits.
constexpr int CommandMax = 65535;

bool failAt(Script& script, std::string_view what, std::u16string_view argument)
{
    return script.fail(std::string(what) + " '" + toUtf8(argument) + '\'');
}

void printState(Output& out, int id, bool enabled, bool checked, std::u16string_view text)
{
    out << id << (enabled ? " enabled" : " disabled") << (checked ? " checked " : " unchecked ");
    out.quoted(text);
    out.endLine();
}

void printEntry(Output& out, const EntryState& entry)
{
    printState(out, entry.id, entry.enabled, entry.checked, entry.text);
}

std::u16string_view tipOf(int id)
{
    for (const ToolbarSlot& slot : Toolbar) {
        if (slot.id == id)
            return slot.tip;
    }
    return {};
}

void printTexts(Output& out, const std::vector<std::u16string>& texts)
{
    for (const std::u16string& text : texts) {
        out << text;
        out.endLine();
    }
}

// "A:B", or "-" where nothing is frozen.
std::u16string frozenText(bool frozen, std::u16string_view first, std::u16string_view last)
{
    return frozen ? std::u16string(first) + u':' + std::u16string(last) : u"-";
}

std::u16string rowText(int row)
{
    return fromUtf8(std::to_string(row + 1));
}

} // namespace

bool commandVerb(Script& script, std::u16string_view argument)
{
    const int id = readNumber(argument, CommandMax);
    if (id == 0)
        return failAt(script, "no command:", argument);
    onCommand(static_cast<std::uint16_t>(id));
    return true;
}

bool menuVerb(Script& script, std::u16string_view argument)
{
    refreshCommandState();
    const CommandState& state = script.app.commandState;
    if (argument.empty()) {
        for (const EntryState& entry : state.entries)
            printEntry(script.out, entry);
        return true;
    }
    const int id = readNumber(argument, CommandMax);
    if (const EntryState* entry = state.entry(id))
        printEntry(script.out, *entry);
    else if (const ButtonState* button = state.button(id))
        printState(script.out, id, button->enabled, button->checked, tipOf(id));
    else
        return failAt(script, "no entry and no button:", argument);
    return true;
}

bool historyVerb(Script& script, std::u16string_view)
{
    for (int index = 0; index < undoList.steps.size(); ++index) {
        const char16_t* label = undoList.steps[index].label;
        script.out << (index < undoList.position ? "done " : "undone ")
                   << (label == nullptr ? u"" : label);
        script.out.endLine();
    }
    return true;
}

bool viewVerb(Script& script, std::u16string_view)
{
    const Sheet& sheet = *workbook->currentSheet;
    const RangeRef& titles = sheet.titles;
    script.out << "zoom=" << sheet.zoom << " left=" << columnName(sheet.leftColumn)
               << " top=" << sheet.topRow + 1 << " frozencols="
               << frozenText(sheet.titleColumns, columnName(titles.firstColumn),
                             columnName(titles.lastColumn))
               << " frozenrows="
               << frozenText(sheet.titleRows, rowText(titles.firstRow), rowText(titles.lastRow))
               << " gridlines=" << (sheet.showGridlines ? 1 : 0)
               << " titles=" << (sheet.showTitles ? 1 : 0) << " zeros=" << (sheet.showZeros ? 1 : 0)
               << " fullscreen=" << (script.app.fullScreen ? 1 : 0);
    script.out.endLine();
    return true;
}

bool settingsVerb(Script&, std::u16string_view)
{
    saveSettings();
    loadSettings();
    return true;
}

// Each list without the comma behind its last item, as users see them.
bool listsVerb(Script& script, std::u16string_view)
{
    std::vector<std::u16string> lists = script.app.customLists;
    for (std::u16string& list : lists) {
        if (list.ends_with(u','))
            list.pop_back();
    }
    printTexts(script.out, lists);
    return true;
}

bool usedVerb(Script& script, std::u16string_view)
{
    for (int row : script.app.usedFunctions) {
        if (row == NoFunction)
            continue;
        script.out << FunctionTable[row].name;
        script.out.endLine();
    }
    return true;
}

bool namesVerb(Script& script, std::u16string_view)
{
    const Sheet& sheet = *workbook->currentSheet;
    const CellPosition base{sheet.selection.activeRow, sheet.selection.activeColumn,
                            static_cast<std::uint16_t>(sheet.index)};
    for (const DefinedName& name : workbook->names) {
        if (name.block == nullptr)
            continue; // deleted
        script.out << name.name << "\t" << printCode(blockCode(name.block), base);
        script.out.endLine();
    }
    return true;
}

} // namespace vorn::cli
