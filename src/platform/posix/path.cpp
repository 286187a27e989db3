#include "platform/posix/path.h"

namespace vorn {

namespace {

constexpr char32_t Replacement = 0xfffd;

bool isLead(char16_t unit)
{
    return (unit & 0xfc00) == 0xd800;
}
bool isTrail(char16_t unit)
{
    return (unit & 0xfc00) == 0xdc00;
}

void appendUtf8(std::string& out, char32_t character)
{
    const auto tail = [&out, character](int shift) {
        out += static_cast<char>(0x80 | ((character >> shift) & 0x3f));
    };
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xc0 | (character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        out += static_cast<char>(0xe0 | (character >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xf0 | (character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

void appendUtf16(std::u16string& out, char32_t character)
{
    if (character >= 0x10000) {
        out += static_cast<char16_t>(0xd800 + ((character - 0x10000) >> 10));
        character = 0xdc00 + (character & 0x3ff);
    }
    out += static_cast<char16_t>(character);
}

// How many bytes a character takes that begins with this one; 0 if none does.
std::size_t lengthByLead(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xc0 || lead >= 0xf8)
        return 0;
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

// Cuts the first character off the front of some UTF-8; Replacement for what is none.
char32_t takeCharacter(std::string_view& bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    const std::size_t length = lengthByLead(lead);
    if (length == 0 || length > bytes.size())
        return Replacement;
    char32_t character = length == 1 ? lead : lead & (0x7fU >> length);
    for (std::size_t at = 1; at < length; ++at)
        character = character << 6 | (static_cast<unsigned char>(bytes[at]) & 0x3fU);
    // Whatever was longer than it needs to be, or is no character, does not lead back here.
    std::string again;
    appendUtf8(again, character);
    const bool isSurrogate = character >= 0xd800 && character < 0xe000;
    if (isSurrogate || character > 0x10ffff || again != bytes.substr(0, length))
        return Replacement;
    bytes.remove_prefix(length);
    return character;
}

} // namespace

std::string pathBytes(std::u16string_view path)
{
    std::string out;
    for (std::size_t at = 0; at < path.size(); ++at) {
        char32_t character = path[at];
        if (character == 0)
            return {};
        if (isLead(path[at]) && at + 1 < path.size() && isTrail(path[at + 1]))
            character = 0x10000 + ((character & 0x3ff) << 10) + (path[++at] & 0x3ffU);
        else if (isLead(path[at]) || isTrail(path[at]))
            character = Replacement;
        appendUtf8(out, character);
    }
    return out;
}

std::u16string pathText(std::string_view bytes)
{
    std::u16string out;
    while (!bytes.empty()) {
        const char32_t character = takeCharacter(bytes);
        if (character == Replacement)
            return {};
        appendUtf16(out, character);
    }
    return out;
}

} // namespace vorn
