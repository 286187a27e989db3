// How text gets from the user into a cell: the editor opens, its text is written, and at the end it
// is committed or dropped.
//
// Errors: a text that cannot be stored shows its message, and the editor stays open with it.
#pragma once

#include "platform/geometry.h"
#include "platform/textmeasure.h"

#include <string_view>

namespace vorn {

// What of an editor's text is stored in a cell.
constexpr int CommitTextMax = 1024;

enum CommitMove { StayAfterCommit, MoveAfterCommit };

// Is the user writing? While pointing the keys belong to the grid.
bool editorHasFocus();

// Opens the editor with a text, the caret before it; nothing if it is open.
void beginEdit(std::u16string_view text);

// Opens the editor with the text of the active cell, all of it selected, unless the cell is locked.
// A hidden formula stays hidden: its editor is empty.
void editActiveCell();

// The user types a first character over the active cell. The arrow keys then commit.
void beginEditByTyping(char16_t unit);

// The user taps into the formula bar, or into the open editor. False if the tap is refused.
bool tapEditor();

// Stores the text, unless it is what the cell holds, and closes the editor. False, with the message
// shown and the editor open, if it cannot be stored. True if nothing was open.
bool commitEdit(CommitMove move);

// Closes the editor and drops its text.
void cancelEdit();

// Goes where an entry leads: to the right, down, or nowhere.
void moveAfterEntry();

// --- What commands insert

// The row of a function, with parentheses to write in.
void insertFunction(int row);
void insertName(std::u16string_view name);

// Stores a text in the active cell in place of what is being written.
void enterQuickEntry(std::u16string_view text);

// --- The end of every repaint pass: the editor follows its cell, point mode its selection, and the
// formula bar shows the active cell, but for a hidden formula.
void refreshEditor();

// Where the editor stands over the active cell, and the font that it writes in there: the cell's.
Rect inCellEditorRect();
FontLook inCellEditorFont();

} // namespace vorn
