// Clearing what is selected.
//
// Errors: ErrorMemory, sticky; an edit that finds no room is dropped.
#pragma once

#include "editing/actions.h"

namespace vorn {

// Clears the selection of the current sheet, as one step that can be undone.
void clearSelection(ClearMode mode);

} // namespace vorn
