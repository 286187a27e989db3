#include "cli/utf8.h"

#include <cstdint>

namespace vorn::cli {

namespace {

constexpr char32_t Replacement = 0xfffd;
constexpr char32_t FirstBeyondUnit = 0x10000;

// What a lead byte announces: how many bytes follow, and the bounds of the first of them, which
// keep overlong forms, surrogates and what lies beyond Unicode out.
struct Lead {
    int following;
    char32_t bits;
    std::uint8_t least;
    std::uint8_t most;
};

Lead leadOf(std::uint8_t byte)
{
    if (byte >= 0xc2 && byte <= 0xdf)
        return {1, byte & 0x1fU, 0x80, 0xbf};
    if (byte >= 0xe0 && byte <= 0xef) {
        const std::uint8_t least = byte == 0xe0 ? 0xa0 : 0x80;
        const std::uint8_t most = byte == 0xed ? 0x9f : 0xbf;
        return {2, byte & 0x0fU, least, most};
    }
    if (byte >= 0xf0 && byte <= 0xf4) {
        const std::uint8_t least = byte == 0xf0 ? 0x90 : 0x80;
        const std::uint8_t most = byte == 0xf4 ? 0x8f : 0xbf;
        return {3, byte & 0x07U, least, most};
    }
    return {0, Replacement, 0, 0};
}

// Reads one character that is not ASCII and moves `position` behind it, or behind the longest
// beginning of one.
char32_t readCharacter(std::string_view bytes, std::size_t& position)
{
    const Lead lead = leadOf(static_cast<std::uint8_t>(bytes[position++]));
    char32_t character = lead.bits;
    std::uint8_t least = lead.least;
    std::uint8_t most = lead.most;
    for (int left = lead.following; left > 0; --left) {
        if (position == bytes.size())
            return Replacement;
        const auto byte = static_cast<std::uint8_t>(bytes[position]);
        if (byte < least || byte > most)
            return Replacement;
        character = (character << 6U) | (byte & 0x3fU);
        least = 0x80;
        most = 0xbf;
        ++position;
    }
    return character;
}

void appendUnits(std::u16string& out, char32_t character)
{
    if (character < FirstBeyondUnit) {
        out += static_cast<char16_t>(character);
        return;
    }
    const char32_t offset = character - FirstBeyondUnit;
    out += static_cast<char16_t>(0xd800U + (offset >> 10U));
    out += static_cast<char16_t>(0xdc00U + (offset & 0x3ffU));
}

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xd800 && unit <= 0xdbff;
}
bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xdc00 && unit <= 0xdfff;
}

char32_t characterAt(std::u16string_view text, std::size_t& position)
{
    const char16_t unit = text[position++];
    if (isHighSurrogate(unit) && position < text.size() && isLowSurrogate(text[position])) {
        const char32_t high = unit - 0xd800U;
        const char32_t low = text[position++] - 0xdc00U;
        return FirstBeyondUnit + (high << 10U) + low;
    }
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? Replacement : unit;
}

void appendBytes(std::string& out, char32_t character)
{
    const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
        return;
    }
    if (character < 0x800) {
        put(0xc0U | (character >> 6U));
    } else if (character < FirstBeyondUnit) {
        put(0xe0U | (character >> 12U));
        put(0x80U | ((character >> 6U) & 0x3fU));
    } else {
        put(0xf0U | (character >> 18U));
        put(0x80U | ((character >> 12U) & 0x3fU));
        put(0x80U | ((character >> 6U) & 0x3fU));
    }
    put(0x80U | (character & 0x3fU));
}

} // namespace

std::u16string fromUtf8(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        const auto byte = static_cast<std::uint8_t>(bytes[position]);
        if (byte < 0x80) {
            text += static_cast<char16_t>(byte);
            ++position;
        } else {
            appendUnits(text, readCharacter(bytes, position));
        }
    }
    return text;
}

void appendUtf8(std::string& out, std::u16string_view text)
{
    for (std::size_t position = 0; position < text.size();)
        appendBytes(out, characterAt(text, position));
}

std::string toUtf8(std::u16string_view text)
{
    std::string bytes;
    appendUtf8(bytes, text);
    return bytes;
}

} // namespace vorn::cli
