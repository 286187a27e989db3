#include "platform/icu/textrules.h"

#include <unicode/uchar.h>

namespace vorn {

namespace {

// Texts are compared and changed unit by unit, so a mapping that needs two units is no mapping.
char16_t singleUnit(UChar32 mapped, char16_t unit)
{
    return mapped <= 0xffff ? static_cast<char16_t>(mapped) : unit;
}

} // namespace

char16_t IcuTextRules::lower(char16_t unit)
{
    return singleUnit(u_tolower(unit), unit);
}

char16_t IcuTextRules::upper(char16_t unit)
{
    return singleUnit(u_toupper(unit), unit);
}

bool IcuTextRules::isLetter(char16_t unit)
{
    return u_isalpha(unit) != 0;
}

bool IcuTextRules::isSpace(char16_t unit)
{
    return u_isUWhiteSpace(unit) != 0;
}

} // namespace vorn
