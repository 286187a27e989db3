// The verbs of scripts that are about the keyboard and the editor.
#pragma once

#include "cli/script.h"

#include <string_view>

namespace vorn::cli {

// key NAME [shift] [ctrl] [alt]: a key to whatever has the focus.
bool keyVerb(Script& script, std::u16string_view argument);

// type TEXT: its characters, one by one.
bool typeVerb(Script& script, std::u16string_view argument);

// The mode of the editor and its text.
bool editorVerb(Script& script, std::u16string_view argument);

// size W H: the client area of the window.
bool sizeVerb(Script& script, std::u16string_view argument);

// What a window does when a message is over: whatever changed is shown.
void repaint(Script& script);

} // namespace vorn::cli
