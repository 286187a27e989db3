// The verbs of scripts that are about commands and what they show of themselves, and about what
// the program remembers.
#pragma once

#include "cli/script.h"

#include <string_view>

namespace vorn::cli {

// command ID: what a menu entry, a button or a key of that number does.
bool commandVerb(Script& script, std::u16string_view argument);

// menu: a line for each entry, as whoever opens the menu now sees it. menu ID: that entry, or the
// button of that number.
bool menuVerb(Script& script, std::u16string_view argument);

// A line for each undo step.
bool historyVerb(Script& script, std::u16string_view argument);

// How the current sheet is shown.
bool viewVerb(Script& script, std::u16string_view argument);

// Writes and reads the settings.
bool settingsVerb(Script& script, std::u16string_view argument);

bool listsVerb(Script& script, std::u16string_view argument);
bool usedVerb(Script& script, std::u16string_view argument);
bool namesVerb(Script& script, std::u16string_view argument);

} // namespace vorn::cli
