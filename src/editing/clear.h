// Clearing what is selected.
//
// Errors: ErrorMemory, sticky; an edit that finds no room is dropped.
#pragma once

namespace vorn {

// The number is the operand of ActionClear.
enum ClearMode : int {
    ClearAll = 0,      // values and formats
    ClearContents = 1, // values; formats stay
    ClearFormats = 2,  // formats; values stay
};

// Clears the selection of the current sheet, as one step that can be undone.
void clearSelection(ClearMode mode);

} // namespace vorn
