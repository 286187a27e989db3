// Which fields of a style and a font are meant, when a format is applied or compared.
#pragma once

#include "core/style.h"

#include <bitset>

namespace vorn {

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

// Takes the fields that the mask names; the font and the outline are no fields of a style.
void applyStyleChange(CellStyle& style, const CellStyle& from, const StyleMask& mask);

// Takes the fields of a font that the mask names. Answers whether anything changed: a font that
// agrees in a field keeps what the agreement overlooks.
bool mergeFont(FontRecord& font, const FontRecord& from, const FontMask& mask);

// The fields in which two styles, or two fonts, agree. Fonts agree in size by whole points, in
// weight by being bold or not. The flags that name no field of a style are clear.
StyleMask agreeingFields(const CellStyle& a, const CellStyle& b);
FontMask agreeingFields(const FontRecord& a, const FontRecord& b);

} // namespace vorn
