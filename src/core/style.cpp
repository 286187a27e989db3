#include "core/style.h"

#include <algorithm>

namespace vorn {
namespace {

// Where each field lies.
constexpr struct {
    std::uint8_t word, shift, bits;
} FieldPlaces[StyleFieldCount] = {
    {0, 0, 3 }, // StyleTopLine
    {0, 3, 3 }, // StyleLeftLine
    {0, 6, 3 }, // StyleRightLine
    {0, 9, 7 }, // StyleTopColour
    {1, 0, 16}, // StyleFormat
    {2, 0, 16}, // StyleFont
    {3, 0, 1 }, // StyleLocked
    {3, 1, 1 }, // StyleHidden
    {4, 0, 7 }, // StyleFill
    {4, 7, 7 }, // StyleSecondFill
    {5, 0, 6 }, // StylePattern
    {5, 6, 3 }, // StyleBottomLine
    {5, 9, 7 }, // StyleBottomColour
    {6, 0, 7 }, // StyleLeftColour
    {6, 7, 7 }, // StyleRightColour
    {7, 0, 3 }, // StyleHorizontal
    {7, 3, 1 }, // StyleWrap
    {7, 4, 3 }, // StyleVertical
};

unsigned fieldMask(StyleField field)
{
    return (1U << FieldPlaces[field].bits) - 1;
}

} // namespace

int CellStyle::get(StyleField field) const
{
    const auto& place = FieldPlaces[field];
    return static_cast<int>((words[place.word] >> place.shift) & fieldMask(field));
}

void CellStyle::set(StyleField field, int value)
{
    const auto& place = FieldPlaces[field];
    const unsigned mask = fieldMask(field);
    const unsigned cleared = words[place.word] & ~(mask << place.shift);
    words[place.word] = static_cast<std::uint16_t>(
        cleared | ((static_cast<unsigned>(value) & mask) << place.shift));
}

bool CellStyle::sameAs(const CellStyle& other) const
{
    return std::equal(words, words + WordCount, other.words);
}

CellStyle defaultStyle()
{
    CellStyle style;
    style.set(StyleLocked, 1);
    style.set(StyleFill, ColourWindowText);
    style.set(StyleSecondFill, ColourWindow);
    style.set(StyleVertical, AlignBottom);
    return style;
}

CellStyle dialogStyle()
{
    CellStyle style = defaultStyle();
    style.set(StyleFill, FirstPaletteColour + 1);
    style.set(StylePattern, 1);
    return style;
}

void FontRecord::setFace(std::u16string_view face)
{
    face = face.substr(0, FontNameMax);
    std::fill(name, name + FontNameMax, u'\0');
    face.copy(name, face.size());
    nameLength = static_cast<std::uint8_t>(face.size());
}

bool FontRecord::sameAs(const FontRecord& other) const
{
    return height == other.height && weight == other.weight && attributes == other.attributes &&
           colour == other.colour && underline == other.underline && family == other.family &&
           charset == other.charset && face() == other.face();
}

FontRecord dialogFont()
{
    FontRecord font;
    font.setFace(u"Tahoma");
    font.colour = FirstPaletteColour;
    return font;
}

FontRecord defaultFont(int index)
{
    struct Look {
        std::uint16_t weight, attributes;
    };
    constexpr Look looks[DefaultFontCount] = {
        {WeightNormal, 0                    }, // Tahoma
        {WeightBold,   FontBold             }, // the others Arial
        {WeightNormal, FontItalic           }, //
        {WeightBold,   FontBold | FontItalic}, //
        {WeightBold,   FontBold | FontItalic}, //
        {WeightNormal, 0                    }, //
    };
    FontRecord font;
    font.setFace(index == 0 ? u"Tahoma" : u"Arial");
    font.reserved = index == 0 ? 55 : 0;
    font.weight = looks[index].weight;
    font.attributes = looks[index].attributes;
    return font;
}

} // namespace vorn
