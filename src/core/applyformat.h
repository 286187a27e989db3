// Formatting a range, and asking what the cells of a range have in common.
//
// A format is applied where it costs least: to the records of whole columns, to the objects of
// whole rows, and to cells only where these would not show it. A style that was converted once is
// remembered for the rest of the range.
//
// Shape:  masks say which fields of a template count. Ranges are sorted.
// Errors: ErrorMemory, sticky. The walk stops there; what was formatted before stays so.
#pragma once

#include "core/reference.h"
#include "core/style.h"

#include <bitset>

namespace vorn {

class Sheet;

// The fields of a style template. The numbers travel in undo programs.
enum StyleMaskFlag {
    MaskFormat = 0,
    MaskTopLine = 1,
    MaskLeftLine = 2,
    MaskBottomLine = 3,
    MaskRightLine = 4,
    MaskOutline = 5, // a thin line around the range, whatever the template says
    MaskTopColour = 6,
    MaskLeftColour = 7,
    MaskBottomColour = 8,
    MaskRightColour = 9,
    MaskFill = 10,
    MaskWithoutMeaning = 11, // its place counts
    MaskPattern = 12,
    MaskHorizontal = 13,
    MaskVertical = 14,
    MaskWrap = 15,
    MaskLocked = 16,
    MaskHidden = 17,
    MaskFont = 18, // then the FontMask says which fields of the font
    StyleMaskCount = 19,
};

enum FontMaskFlag {
    MaskBold = 0,
    MaskItalic = 1,
    MaskUnderline = 2,
    MaskSize = 3,
    MaskColour = 4,
    MaskFace = 5,
    FontMaskCount = 6,
};

using StyleMask = std::bitset<StyleMaskCount>;
using FontMask = std::bitset<FontMaskCount>;

// What is applied to a range, or what a range has in common.
struct FormatTemplate {
    CellStyle style;
    StyleMask styleMask;
    FontRecord font;
    FontMask fontMask;
};

void applyFormat(Sheet& sheet, const RangeRef& range, const FormatTemplate& format);

// The style and the font of the sheet's active cell. A flag is set if the whole range agrees with
// it in that field. Fonts agree in size by whole points, in weight by being bold or not. It costs
// what is stored, not what is selected.
FormatTemplate commonFormat(const Sheet& sheet, const RangeRef& range);

// Is the whole selection of the sheet so?
bool isBold(const Sheet& sheet);
bool isItalic(const Sheet& sheet);
bool isUnderlined(const Sheet& sheet);
bool isAligned(const Sheet& sheet, int alignment);

// The two steps of a conversion: the fields of a style that the mask names, but for the font and
// the outline; and the fields of a font. mergeFont answers whether anything changed.
void applyStyleChange(CellStyle& style, const CellStyle& from, const StyleMask& mask);
bool mergeFont(FontRecord& font, const FontRecord& from, const FontMask& mask);

} // namespace vorn
