// How cells look: styles and fonts, shared by index through two tables of the workbook.
//
// CellStyle, eight 16-bit words and a scratch word:
//   word bits  field
//   0    0-2   top line         0 3-5  left line     0 6-8 right line    0 9-15 top colour
//   1    all   number format index
//   2    all   font index
//   3    0     locked           3 1    formula hidden
//   4    0-6   fill colour      4 7-13 kept from files, not used
//   5    0-5   fill pattern     5 6-8  bottom line   5 9-15 bottom colour
//   6    0-6   left colour      6 7-13 right colour
//   7    0-2   horizontal       7 3    wrap          7 4-6 vertical alignment
//   8    all   number of the style in the file being written; not compared
#pragma once

#include <cstdint>
#include <string_view>

namespace vorn {

// The number of a style, a font or a number format outside of a save.
constexpr std::uint16_t NoFileIndex = 65535;

enum StyleField {
    StyleTopLine,
    StyleLeftLine,
    StyleRightLine,
    StyleTopColour,
    StyleFormat,
    StyleFont,
    StyleLocked,
    StyleHidden,
    StyleFill,
    StyleSecondFill,
    StylePattern,
    StyleBottomLine,
    StyleBottomColour,
    StyleLeftColour,
    StyleRightColour,
    StyleHorizontal,
    StyleWrap,
    StyleVertical,
    StyleFieldCount,
};

enum Alignment {
    AlignGeneral = 0,
    AlignLeft = 1,
    AlignCenter = 2,
    AlignRight = 3,
    AlignFill = 4,
    AlignJustify = 5,
    AlignCenterSelection = 6,
};

enum VerticalAlignment { AlignTop = 0, AlignMiddle = 1, AlignBottom = 2, AlignVerticalJustify = 3 };

// Colours of styles: from 8 up an entry of the palette, and two of the window.
constexpr int FirstPaletteColour = 8;
constexpr int ColourWindowText = 64;
constexpr int ColourWindow = 65;

struct CellStyle {
    static constexpr int WordCount = 8;

    std::uint16_t words[WordCount] = {};
    std::uint16_t fileIndex = NoFileIndex;

    int get(StyleField field) const;
    void set(StyleField field, int value);

    int format() const { return words[1]; }
    int font() const { return words[2]; }

    // Is a text broken into lines? What is justified is, too.
    bool wraps() const
    {
        return get(StyleWrap) != 0 || get(StyleVertical) == AlignVerticalJustify ||
               get(StyleHorizontal) == AlignJustify;
    }

    // Equal in all fields; the file's number does not count.
    bool sameAs(const CellStyle& other) const;
};
static_assert(sizeof(CellStyle) == 18);

// The style of a cell that nobody formatted: General, font 0, locked, aligned to the bottom.
CellStyle defaultStyle();

// What the format dialogs start from: white fill with pattern 1.
CellStyle dialogStyle();

enum FontAttribute : std::uint16_t { FontBold = 1, FontItalic = 2, FontStrikeout = 8 };

constexpr int ColourAutomatic = 32767;
constexpr int WeightNormal = 400;
constexpr int WeightBold = 700;
constexpr int FontNameMax = 32;

struct FontRecord {
    std::uint8_t reserved = 0; // carried to files: 55 in font 0
    std::uint8_t underline = 0;
    std::uint16_t attributes = 0;
    std::uint16_t height = 200; // twips, 20 to the point
    std::uint16_t colour = ColourAutomatic;
    std::uint16_t weight = WeightNormal;
    std::uint8_t family = 34; // pitch and family
    std::uint8_t charset = 1;
    char16_t name[FontNameMax] = {};
    std::uint8_t nameLength = 0;
    std::uint16_t fileIndex = NoFileIndex;

    std::u16string_view face() const { return {name, nameLength}; }
    void setFace(std::u16string_view face);

    // Equal in all that is seen; `reserved` and the file's number do not count.
    bool sameAs(const FontRecord& other) const;
};

// What font dialogs start from: font 0 of a workbook, in black.
FontRecord dialogFont();

// The six fonts of a new workbook. Font 4 is a copy of font 3 because the font table of Excel files
// skips the number 4.
constexpr int DefaultFontCount = 6;
FontRecord defaultFont(int index);

} // namespace vorn
