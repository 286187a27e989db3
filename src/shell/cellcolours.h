// Which colours the cells of a style have. A style names an entry of the palette, or something that
// is none.
#pragma once

#include "platform/canvas.h"

namespace vorn {

struct CellStyle;
struct FontRecord;

// Behind the texts. A style without a pattern is white, whatever its colour; so is one whose colour
// is not in the palette.
Colour fillColour(const CellStyle& style);

// Of texts; the first entry of the palette for what is not in it.
Colour textColour(const FontRecord& font);

// Does the style hide the gridlines? The colour alone decides, not the pattern: a coloured style
// without a pattern is white and has no gridlines.
bool isFilled(const CellStyle& style);

// May two neighbours be filled in one stroke? A pattern of 2 and above is filled cell by cell.
bool isOneFill(const CellStyle& left, const CellStyle& right);

} // namespace vorn
