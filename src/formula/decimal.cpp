#include "formula/decimal.h"

#include "platform/textrules.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace vorn {
namespace {

// Where the parts of a number stand in its text.
struct DecimalParts {
    std::u16string_view whole;
    std::u16string_view fraction;
    std::int64_t exponent = 0; // as written
};

std::u16string_view takeDigits(std::u16string_view text, std::size_t& position)
{
    const std::size_t start = position;
    while (position < text.size() && isAsciiDigit(text[position]))
        ++position;
    return text.substr(start, position - start);
}

// An exponent without digits is none: the letter is then left for the next token.
std::int64_t takeExponent(std::u16string_view text, std::size_t& position)
{
    // Beyond this no run of digits can bring a number back into the range of a float.
    constexpr std::int64_t ExponentMax = std::int64_t{1} << 40;

    std::size_t end = position;
    if (end == text.size() || (text[end] | 0x20) != u'e')
        return 0;
    ++end;
    const bool negative = end < text.size() && text[end] == u'-';
    if (negative || (end < text.size() && text[end] == u'+'))
        ++end;
    const std::u16string_view digits = takeDigits(text, end);
    if (digits.empty())
        return 0;
    position = end;
    std::int64_t exponent = 0;
    for (char16_t digit : digits)
        exponent = std::min(exponent * 10 + (digit - u'0'), ExponentMax);
    return negative ? -exponent : exponent;
}

// Up to 15 digits and a small power of ten are both exact as floats, so one operation rounds right.
bool readShort(const DecimalParts& parts, double& out)
{
    constexpr std::size_t ExactDigits = 15;
    static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr auto PowerMax = static_cast<std::int64_t>(std::size(powers)) - 1;

    if (parts.whole.size() + parts.fraction.size() > ExactDigits)
        return false;
    const auto scale = parts.exponent - static_cast<std::int64_t>(parts.fraction.size());
    if (scale > PowerMax || scale < -PowerMax)
        return false;
    std::int64_t digits = 0;
    for (char16_t digit : parts.whole)
        digits = digits * 10 + (digit - u'0');
    for (char16_t digit : parts.fraction)
        digits = digits * 10 + (digit - u'0');
    const auto mantissa = static_cast<double>(digits);
    out = scale >= 0 ? mantissa * powers[scale] : mantissa / powers[-scale];
    return true;
}

// The digits from the first that is not zero, as many as can decide how the number is rounded. Of
// those behind it only counts whether all are zero: otherwise one more digit says that there is
// more.
struct SignificantDigits {
    static constexpr std::size_t Max = 800;

    char digits[Max + 1 + 24]; // and room for an exponent
    std::size_t count = 0;
    std::int64_t dropped = 0;
    bool moreFollows = false;

    SignificantDigits() {} // leaves the room as it is

    void append(std::u16string_view run)
    {
        for (char16_t digit : run) {
            if (count == 0 && digit == u'0')
                continue;
            if (count < Max) {
                digits[count++] = static_cast<char>(digit);
                continue;
            }
            ++dropped;
            moreFollows = moreFollows || digit != u'0';
        }
    }
};

DecimalResult readLong(const DecimalParts& parts, double& out)
{
    SignificantDigits significant;
    significant.append(parts.whole);
    significant.append(parts.fraction);
    if (significant.count == 0) {
        out = 0;
        return DecimalRead;
    }
    std::int64_t scale =
        parts.exponent + significant.dropped - static_cast<std::int64_t>(parts.fraction.size());
    // Ten to the power of this is more than the number.
    const std::int64_t magnitude = scale + static_cast<std::int64_t>(significant.count);
    if (significant.moreFollows) {
        significant.digits[significant.count++] = '1';
        --scale;
    }
    char* end = significant.digits + significant.count;
    *end++ = 'e';
    end = std::to_chars(end, std::end(significant.digits), scale).ptr;
    const auto result = std::from_chars(significant.digits, end, out);
    if (result.ec == std::errc())
        return DecimalRead;
    if (magnitude > 0)
        return DecimalTooLarge;
    out = 0;
    return DecimalRead;
}

} // namespace

DecimalResult readDecimal(std::u16string_view text, std::size_t& position, char16_t point,
                          double& out)
{
    DecimalParts parts;
    std::size_t end = position;
    parts.whole = takeDigits(text, end);
    if (end < text.size() && text[end] == point) {
        ++end;
        parts.fraction = takeDigits(text, end);
    }
    if (parts.whole.empty() && parts.fraction.empty())
        return DecimalMissing;
    parts.exponent = takeExponent(text, end);
    position = end;
    return readShort(parts, out) ? DecimalRead : readLong(parts, out);
}

} // namespace vorn
