// What the Format Cells dialog works on: one field for each of its controls. It is made of what a
// selection has in common, and what the user changed of it makes the format to apply.
#pragma once

#include "core/formatmask.h"

#include <cstdint>
#include <string>

namespace vorn {

// The selection is mixed in that field, or the user left it alone.
constexpr int FormatMixed = -1;

struct FormatRequest {
    int numberFormat = FormatMixed; // index in the workbook's table
    int horizontal = FormatMixed;   // 0 to 3 as styles have it, then HorizontalCenterSelection
    int vertical = FormatMixed;     // 0 top, 1 center, 2 bottom
    int wrapText = FormatMixed;     // this and the others without a note: 0, 1
    std::u16string fontName;        // empty when mixed
    std::uint8_t fontPitch = 0;     // pitch and family, and character set, kept with the name
    std::uint8_t fontCharset = 0;
    int fontSize = FormatMixed;   // points
    int textColour = FormatMixed; // 0 to 15, an entry of the list of colours
    int backColour = FormatMixed;
    int bold = FormatMixed;
    int italic = FormatMixed;
    int underline = FormatMixed;
    int borderLeft = FormatMixed;
    int borderRight = FormatMixed;
    int borderTop = FormatMixed;
    int borderBottom = FormatMixed;
    int outline = FormatMixed;
    int locked = FormatMixed;
    int hidden = FormatMixed;

    bool operator==(const FormatRequest&) const = default;
};

// "Center Selection" in the list of horizontal alignments.
constexpr int HorizontalCenterSelection = 4;

// The list of colours, and the colours of styles and fonts.
constexpr int ColourEntryCount = 16;
constexpr int ColourEntryBlack = 0;
constexpr int ColourEntryWhite = 1;

// The palette index that an entry of the list stands for.
int colourOfEntry(int entry);

// The entry of a palette index; FormatMixed for a colour that the list does not have.
int entryOfColour(int colour);

// The same, where automatic text is black and an automatic background is white.
int entryOfTextColour(int colour);
int entryOfBackColour(int colour);

// The request that shows a common format: a field is FormatMixed where cells differ, and where the
// dialog has no name for what they share.
FormatRequest requestOfFormat(const FormatTemplate& common);

// The fields in which the two differ, as a format. What became FormatMixed is left alone.
FormatTemplate formatOfRequest(const FormatRequest& before, const FormatRequest& after);

} // namespace vorn
