#include "shell/cellcolours.h"

#include "core/workbook.h"

namespace vorn {

namespace {

// Entries of the palette that stand for what a style leaves open.
constexpr int BlackEntry = 0;
constexpr int WhiteEntry = 1;

constexpr int FirstRealPattern = 2;

bool isInPalette(int entry)
{
    return entry >= 0 && entry < PaletteSize;
}

Colour colourOf(int entry, int otherwise)
{
    return workbook->palette[isInPalette(entry) ? entry : otherwise];
}

} // namespace

Colour fillColour(const CellStyle& style)
{
    if (style.get(StylePattern) == 0)
        return workbook->palette[WhiteEntry];
    return colourOf(style.get(StyleFill) - FirstPaletteColour, WhiteEntry);
}

Colour textColour(const FontRecord& font)
{
    return colourOf(font.colour - FirstPaletteColour, BlackEntry);
}

bool isFilled(const CellStyle& style)
{
    const int entry = style.get(StyleFill) - FirstPaletteColour;
    if (!isInPalette(entry) || entry == WhiteEntry)
        return false;
    return entry != BlackEntry || style.get(StyleSecondFill) != 0;
}

bool isOneFill(const CellStyle& left, const CellStyle& right)
{
    return left.get(StylePattern) < FirstRealPattern &&
           left.get(StylePattern) == right.get(StylePattern) &&
           left.get(StyleFill) == right.get(StyleFill);
}

} // namespace vorn
