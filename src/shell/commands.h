// The commands: whatever a user asks for in the menu, the toolbar, by a key or at the formula bar
// comes in as one number. What each does is in the units that shell/commandhandlers.h names.
//
// Errors: the sticky code, which the end of the message shows.
#pragma once

#include "resources/commandids.h"

#include <cstdint>

namespace vorn {

enum CommandFlag : unsigned {
    NoFlags = 0,
    AsksFirst = 1,    // about unsaved changes; it goes no further if the document is to stay
    WhileEditing = 2, // works while the editor is open
    Switched = 4,     // its entry is switched on and off as the document goes
    Unprotected = 8,  // rests while the document is protected
};

struct Command {
    int id;
    void (*run)();
    unsigned flags;

    bool has(CommandFlag flag) const { return (flags & flag) != 0; }
};

// Null for a number that is no command of the table; tasks are not in it.
const Command* findCommand(int id);

// What a command does just now.
enum class CommandRoute {
    Ignored,
    ToEditor, // the editor takes it in place of the document
    Runs,
    RunsTask
};

// The modes that decide about it.
struct CommandMode {
    bool editing = false;
    bool pointing = false;
    bool isProtected = false;
};

CommandRoute routeCommand(int id, CommandMode mode);

// Carries a command out, and brings the states of menu and toolbar up to date. Without a document,
// which is so after Close, it does nothing.
void onCommand(std::uint16_t id);

} // namespace vorn
