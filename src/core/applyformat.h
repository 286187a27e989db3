// Formatting a range, and asking what the cells of a range have in common.
//
// A format is applied where it costs least: to the records of whole columns, to the objects of
// whole rows, and to cells only where these would not show it. A style that was converted once is
// remembered for the rest of the range.
//
// Shape:  masks say which fields of a template count. Ranges are sorted.
// Errors: ErrorMemory, sticky. The walk stops there; what was formatted before stays so.
#pragma once

#include "core/formatmask.h"
#include "core/reference.h"

namespace vorn {

class Sheet;

void applyFormat(Sheet& sheet, const RangeRef& range, const FormatTemplate& format);

// The style and the font of the sheet's active cell. A flag is set if the whole range agrees with
// it in that field. It costs what is stored, not what is selected.
FormatTemplate commonFormat(const Sheet& sheet, const RangeRef& range);

// Is the whole selection of the sheet so?
bool isBold(const Sheet& sheet);
bool isItalic(const Sheet& sheet);
bool isUnderlined(const Sheet& sheet);
bool isAligned(const Sheet& sheet, int alignment);

} // namespace vorn
