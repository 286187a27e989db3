// Numbers, dates and times, which all begin with a digit.

#include "core/error.h"
#include "formula/decimal.h"
#include "formula/lexer.h"
#include "numfmt/locale.h"
#include "numfmt/serial.h"
#include "platform/platform.h"
#include "platform/textrules.h"

#include <algorithm>

namespace vorn {
namespace {

// Digit runs stop to grow here, far beyond everything that a row, a year or an hour may be.
constexpr int DigitRunMax = 1000000;

bool sameText(std::u16string_view a, std::u16string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char16_t left, char16_t right) {
        return lowerUnit(left) == lowerUnit(right);
    });
}

} // namespace

void FormulaLexer::scanNumber()
{
    if (takePlainNumber() || scanDate())
        return;
    kind = TokenNumber;
    switch (readDecimal(text, cursor, localeInfo.decimal, number)) {
    case DecimalRead:
        break;
    case DecimalMissing:
        raiseError(ErrorCharacter);
        break;
    case DecimalTooLarge:
        raiseError(ErrorNumberRange);
        break;
    }
}

// A number that cannot be the beginning of a date or time. Without one of their separators behind
// it, none can begin, unless a separator was taken for the decimal point.
bool FormulaLexer::takePlainNumber()
{
    const char16_t date = localeInfo.dateSeparator;
    const char16_t time = localeInfo.timeSeparator;
    const char16_t point = localeInfo.decimal;
    const std::size_t start = cursor;
    if (point == date || point == time || !readPlainDecimal(text, cursor, point, number))
        return false;
    if (standsAt(date) || standsAt(time)) {
        cursor = start;
        return false;
    }
    kind = TokenNumber;
    return true;
}

int FormulaLexer::scanDigits()
{
    int value = 0;
    for (; isAsciiDigit(at(cursor)); ++cursor)
        if (value < DigitRunMax)
            value = value * 10 + (at(cursor) - u'0');
    return value;
}

// A text that cannot be a date is left alone; one that has gone too far to be anything else, but is
// not in the calendar, is an error.
bool FormulaLexer::scanDate()
{
    const std::size_t start = cursor;
    LocalTime parts;
    const int first = scanDigits();
    timeSeen = standsAt(localeInfo.timeSeparator);
    dateSeen = false;
    designatorSeen = false;
    secondsSeen = false;
    if (timeSeen) {
        parts.hour = first;
    } else if (scanDayAndMonth(first, parts)) {
        timeSeen = hourFollows();
        if (timeSeen)
            parts.hour = scanDigits();
    } else {
        cursor = start;
        return false;
    }
    if ((timeSeen && !scanTime(parts)) ||
        !partsToSerial(parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second,
                       number, Validated))
        raiseError(ErrorDate);
    kind = TokenDate;
    return true;
}

// The parts of a date behind its first number. Without a year, but with its separator, the date is
// one of the present year.
bool FormulaLexer::scanDayAndMonth(int first, LocalTime& parts)
{
    if (!standsAt(localeInfo.dateSeparator) || !isAsciiDigit(at(cursor + 1)))
        return false;
    ++cursor;
    const int second = scanDigits();
    if (!standsAt(localeInfo.dateSeparator))
        return false;
    ++cursor;
    const bool dayFirst = localeInfo.dateOrder == DayFirst;
    parts.month = dayFirst ? second : first;
    parts.day = dayFirst ? first : second;
    parts.year = isAsciiDigit(at(cursor)) ? scanDigits() : platform.clock->localTime().year;
    if (parts.year < 100)
        parts.year += parts.year < 30 ? 2000 : 1900;
    dateSeen = true;
    return true;
}

// Skips the space behind a date; is it followed by digits and the time separator?
bool FormulaLexer::hourFollows()
{
    skipSpace();
    const std::size_t start = cursor;
    scanDigits();
    const bool follows = cursor != start && standsAt(localeInfo.timeSeparator);
    cursor = start;
    return follows;
}

bool FormulaLexer::scanTime(LocalTime& parts)
{
    ++cursor;
    if (!isAsciiDigit(at(cursor)))
        return false;
    parts.minute = scanDigits();
    secondsSeen = standsAt(localeInfo.timeSeparator);
    if (secondsSeen) {
        ++cursor;
        if (!isAsciiDigit(at(cursor)))
            return false;
        parts.second = scanDigits();
    }
    scanDesignator(parts);
    return true;
}

void FormulaLexer::scanDesignator(LocalTime& parts)
{
    const std::size_t start = cursor;
    skipSpace();
    const std::size_t wordStart = cursor;
    while (isAsciiLetter(at(cursor)) || at(cursor) == u'.')
        ++cursor;
    const std::u16string_view word = text.substr(wordStart, cursor - wordStart);
    const bool morning = !word.empty() && sameText(word, localeInfo.am);
    const bool afternoon = !word.empty() && sameText(word, localeInfo.pm);
    designatorSeen = morning || afternoon;
    if (!designatorSeen)
        cursor = start;
    if (morning && parts.hour == 12)
        parts.hour = 0;
    if (afternoon && parts.hour != 12)
        parts.hour += 12;
}

} // namespace vorn
