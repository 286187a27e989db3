#include "platform/headless/textmeasure.h"

#include <algorithm>

namespace vorn {

namespace {

int characterWidth(const FontLook& font)
{
    return (font.height + 1) / 2;
}

int characterCount(std::u16string_view text)
{
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char16_t unit) { return unit < 0xDC00 || unit > 0xDFFF; }));
}

// Cuts the first part off a text, up to and without the separator.
std::u16string_view cutUpTo(char16_t separator, std::u16string_view& text)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::u16string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

// The lines that one paragraph takes, of `room` characters each.
int lineCount(std::u16string_view paragraph, int room)
{
    int lines = 1;
    int used = 0;
    while (!paragraph.empty()) {
        const int length = characterCount(cutUpTo(u' ', paragraph));
        if (used != 0 && used + 1 + length > room) {
            ++lines;
            used = length;
        } else {
            used += length + (used != 0 ? 1 : 0);
        }
    }
    return lines;
}

} // namespace

int FixedTextMeasure::textWidth(const FontLook& font, std::u16string_view text)
{
    return characterCount(text) * characterWidth(font);
}

int FixedTextMeasure::wrappedHeight(const FontLook& font, std::u16string_view text, int width)
{
    const int room = width / std::max(characterWidth(font), 1);
    int lines = text.empty() || text.back() == u'\n' ? 1 : 0;
    while (!text.empty())
        lines += lineCount(cutUpTo(u'\n', text), room);
    return lines * font.height;
}

std::vector<FontFamily> FixedTextMeasure::fontFamilies()
{
    constexpr std::uint8_t swiss = 34;
    constexpr std::uint8_t fixedPitch = 49;
    constexpr std::uint8_t anyCharset = 1;
    return {
        {u"Tahoma",      swiss,      anyCharset, true,  {}         },
        {u"Courier New", fixedPitch, anyCharset, true,  {}         },
        {u"Arial",       swiss,      anyCharset, true,  {}         },
        {u"Fixed",       fixedPitch, anyCharset, false, {8, 10, 13}},
    };
}

} // namespace vorn
