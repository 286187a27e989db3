// How the menu and the toolbar stand: which entries and buttons are enabled, which are checked, and
// how the entries read. A window draws them from this table by their command ids, with the layout
// from resources/menu.h; a script prints it.
//
// Shape:  the table shows the last refreshCommandState. The entries are in menu order, with those
//         of the recent files and of the tasks in their places.
#pragma once

#include <string>
#include <vector>

namespace vorn {

struct EntryState {
    int id = 0;
    bool enabled = true;
    bool checked = false;
    std::u16string text; // with its '&', and a tab before the key
};

struct ButtonState {
    int id = 0;
    bool enabled = true;
    bool checked = false;
};

struct CommandState {
    CommandState();

    std::vector<EntryState> entries;
    std::vector<ButtonState> buttons;    // the slots of the toolbar that are no separators
    std::vector<EntryState> taskEntries; // as they were last put into the menu

    // Null for an id that has no entry, or no button.
    const EntryState* entry(int id) const;
    const ButtonState* button(int id) const;
};

// Sets the states of all entries and buttons by the document, the editor and the clipboard. Runs
// after nearly every command and at every tap, so that nobody ever sees an old state. Without a
// document the states stay as they are.
void refreshCommandState();

// Takes the entries of tasks out of the menu, or puts those of the tasks that want one into it. In
// between their numbers may change.
void clearTaskMenu();
void updateTaskMenu();

} // namespace vorn
