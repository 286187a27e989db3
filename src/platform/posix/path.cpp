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

} // namespace vorn
