#include "formula/decimal.h"

#include "platform/textrules.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace vorn {
namespace {

// Beyond this exponent no run of digits can bring a number back into the range of a float.
constexpr std::int64_t ExponentMax = std::int64_t{1} << 40;

// Whole numbers of so many digits are exact as floats.
constexpr std::size_t ExactDigits = 15;

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
        if (count == 0)
            run.remove_prefix(std::min(run.find_first_not_of(u'0'), run.size()));
        const std::size_t kept = std::min(run.size(), Max - count);
        for (std::size_t i = 0; i < kept; ++i)
            digits[count + i] = static_cast<char>(run[i]);
        count += kept;
        run.remove_prefix(kept);
        dropped += static_cast<std::int64_t>(run.size());
        moreFollows = moreFollows || run.find_first_not_of(u'0') != run.npos;
    }
};

DecimalResult convert(const DecimalParts& parts, double& out)
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

// The digits and the power of ten that they are divided by are exact, so the one division rounds as
// the best conversion would.
bool readPlainDecimal(std::u16string_view text, std::size_t& position, char16_t point, double& out)
{
    static constexpr double powers[ExactDigits + 1] = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

    // One digit more than is exact can be taken, so that the count is tested only once.
    const std::size_t start = position;
    const std::size_t limit = std::min(text.size(), start + ExactDigits + 2);
    std::size_t end = start;
    std::int64_t digits = 0;
    for (; end < limit && isAsciiDigit(text[end]); ++end)
        digits = digits * 10 + (text[end] - u'0');
    std::size_t count = end - start;
    std::size_t places = 0;
    if (end < limit && text[end] == point) {
        const std::size_t fraction = ++end;
        for (; end < limit && isAsciiDigit(text[end]); ++end)
            digits = digits * 10 + (text[end] - u'0');
        places = end - fraction;
        count += places;
    }
    if (count == 0 || count > ExactDigits ||
        (end < text.size() && (isAsciiDigit(text[end]) || (text[end] | 0x20) == u'e')))
        return false;
    position = end;
    out = static_cast<double>(digits) / powers[places];
    return true;
}

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
    return convert(parts, out);
}

} // namespace vorn
