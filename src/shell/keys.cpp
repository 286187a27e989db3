#include "shell/keys.h"

#include "core/workbook.h"
#include "editing/protection.h"
#include "editing/view.h"
#include "resources/menu.h"
#include "shell/application.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/entry.h"
#include "shell/pointmode.h"

namespace vorn {

namespace {

// 0 for a key that belongs to no command.
int commandOf(Key key, KeyModifiers modifiers)
{
    if (modifiers.shift || modifiers.alt)
        return 0;
    if (key == KeyDelete)
        return acceleratorCommand(DeleteKey, modifiers.ctrl);
    if (key < u'0' || key > u'Z')
        return 0;
    return acceleratorCommand(static_cast<char16_t>(key), modifiers.ctrl);
}

// In the editor Delete clears what is selected, as its command says; where nothing is, the control
// deletes the next character.
bool belongsToControl(Key key)
{
    return key == KeyDelete && editorHasFocus() && !application->formulaBar.line.hasSelection();
}

// Keys that are nothing without their character.
bool makesCharacter(Key key)
{
    return key < KeyPageUp && key != KeyTab && key != KeyEscape;
}

bool goesToControl(Key key, bool caretMode)
{
    switch (key) {
    case KeyUp:
    case KeyDown:
    case KeyTab:
        return false;
    case KeyLeft:
    case KeyRight:
        return caretMode;
    default:
        return true;
    }
}

bool gridKey(Key key, KeyModifiers modifiers)
{
    switch (key) {
    case KeyF2:
        if (!application->pointMode)
            editActiveCell();
        return true;
    case KeyEscape:
        if (application->pointMode)
            cancelEdit();
        return true;
    default:
        return handleKey(key, modifiers);
    }
}

bool isLineEnd(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

void enter()
{
    if (application->formulaBar.editing)
        commitEdit(MoveAfterCommit);
    else
        moveAfterEntry();
}

void write(char16_t unit)
{
    FormulaBar& bar = application->formulaBar;
    if (unit < u' ' && (!bar.editing || unit != KeyBackspace))
        return;
    if (bar.editing) {
        leavePointMode();
        bar.line.character(unit);
    } else {
        beginEditByTyping(unit);
    }
}

} // namespace

bool editorKey(Key key, KeyModifiers modifiers)
{
    FormulaBar& bar = application->formulaBar;
    if (!application->pointMode && lockedCellRefused())
        return true;
    leavePointMode();
    if (key == KeyEscape) {
        cancelEdit();
        return true;
    }
    if (goesToControl(key, bar.caretMode)) {
        if (key == KeyF2)
            bar.caretMode = !bar.caretMode;
        bar.line.key(key, modifiers);
        return !makesCharacter(key);
    }
    if (key != KeyTab && enterPointMode()) {
        handleKey(key, modifiers);
        return true;
    }
    if (!commitEdit(StayAfterCommit)) {
        bar.line.key(key, modifiers);
        return true;
    }
    markRepaint();
    handleKey(key, modifiers);
    return true;
}

bool keyDown(Key key, KeyModifiers modifiers)
{
    if (workbook == nullptr)
        return true;
    const int command = commandOf(key, modifiers);
    if (command != 0 && !belongsToControl(key)) {
        onCommand(static_cast<std::uint16_t>(command));
        return true;
    }
    const bool used = editorHasFocus() ? editorKey(key, modifiers) : gridKey(key, modifiers);
    refreshCommandState();
    return used;
}

bool character(char16_t unit)
{
    if (workbook == nullptr)
        return false;
    if (!application->pointMode && lockedCellRefused())
        return false;
    if (isLineEnd(unit))
        enter();
    else
        write(unit);
    // The editor may have something to take back now.
    refreshCommandState();
    return true;
}

} // namespace vorn
