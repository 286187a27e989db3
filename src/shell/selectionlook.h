// What all of the selection has in common, as the check buttons of the toolbar show it.
//
// Costs what the sheet holds within the selection, and not what is selected.
#pragma once

#include "core/sheet.h"

namespace vorn {

// A thing is true, or has a value, if it is the same in every cell.
struct SelectionLook {
    static constexpr int Mixed = -1;

    bool bold = true; // weight 700
    bool italic = true;
    bool underline = true;
    int alignment = Mixed; // an Alignment
};

SelectionLook selectionLook(const Sheet& sheet, const RangeRef& range);

} // namespace vorn
