// The verbs of scripts that are about the pen on the main window.
#pragma once

#include "cli/script.h"

#include <string_view>

namespace vorn::cli {

// tap X Y, doubletap X Y: pixels of the client area.
bool tapVerb(Script& script, std::u16string_view argument);
bool doubletapVerb(Script& script, std::u16string_view argument);

// drag X Y X Y...: the pen goes down at the first place, over the others, and up at the last one.
// All but the first may lie outside of the window.
bool dragVerb(Script& script, std::u16string_view argument);

// tapcell REF: the middle of a cell that is in view.
bool tapcellVerb(Script& script, std::u16string_view argument);

} // namespace vorn::cli
