// The numbers of the commands.
#pragma once

namespace vorn {

enum CommandId : int {
#define COMMAND(id, name, handler, flags) name = id,
#include "resources/commands.def"
#undef COMMAND
};

// A task with an entry in the menu has the first of these and its place in the list of tasks.
constexpr int CommandFirstTask = 41000;
constexpr int CommandLastTask = 42000;

} // namespace vorn
