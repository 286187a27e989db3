// Case and classes of characters, one UTF-16 unit at a time: a surrogate has no case and no class.
// ASCII is answered here, before anybody is asked, because nearly all of a workbook is ASCII.
#pragma once

namespace vorn {

class TextRules {
public:
    virtual ~TextRules() = default;

    virtual char16_t lower(char16_t unit) = 0;
    virtual char16_t upper(char16_t unit) = 0;
    virtual bool isLetter(char16_t unit) = 0;
    virtual bool isSpace(char16_t unit) = 0;
};

// The rules of the installed platform.
TextRules& textRules();

constexpr bool isAsciiLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr bool isAsciiDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

inline char16_t lowerUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    return textRules().lower(unit);
}

inline char16_t upperUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    return textRules().upper(unit);
}

inline bool isLetterUnit(char16_t unit)
{
    return unit < 0x80 ? isAsciiLetter(unit) : textRules().isLetter(unit);
}

inline bool isSpaceUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit == u' ' || (unit >= 9 && unit <= 13);
    return textRules().isSpace(unit);
}

} // namespace vorn
