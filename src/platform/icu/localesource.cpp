#include "platform/icu/localesource.h"

#include <cstdint>
#include <cstdlib>
#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>
#include <unicode/ures.h>

namespace vorn {

namespace {

using ResourceBundle = icu::LocalUResourceBundlePointer;
using DateFormat = icu::LocalUDateFormatPointer;
using NumberFormatter = icu::LocalUNumberFormatPointer;

constexpr const char* FallbackLocale = "en_US";
constexpr const char* FixedKeywords = "@calendar=gregorian;numbers=latn";
constexpr std::size_t LongestName = 40;
constexpr int TextRoom = 128;

// --- Which locale

std::string environmentLocale(const char* category)
{
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

bool hasData(const std::string& name)
{
    UErrorCode status = U_ZERO_ERROR;
    const ResourceBundle bundle(ures_open(nullptr, name.c_str(), &status));
    return U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
}

// The name of the locale that is used for `name`, without its character set.
std::string usableLocale(std::string_view name)
{
    std::string plain(name.substr(0, name.find_first_of(".@")));
    const bool nobodys = plain.empty() || plain == "C" || plain == "POSIX";
    if (nobodys || plain.size() > LongestName || !hasData(plain))
        return FallbackLocale;
    return plain;
}

// A language alone has no currency; its likely region has.
std::string withRegion(const std::string& name)
{
    char full[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    if (uloc_getCountry(name.c_str(), full, ULOC_FULLNAME_CAPACITY, &status) != 0)
        return name;
    status = U_ZERO_ERROR;
    uloc_addLikelySubtags(name.c_str(), full, ULOC_FULLNAME_CAPACITY, &status);
    return U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING ? full : name;
}

// --- Asking ICU

// The text that `ask` writes into a room of so many units; empty if it fails.
template <typename Ask>
std::u16string textFrom(Ask ask)
{
    char16_t text[TextRoom];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = ask(text, TextRoom, &status);
    return U_SUCCESS(status) ? std::u16string(text, static_cast<std::size_t>(length)) : u"";
}

DateFormat openDateFormat(UDateFormatStyle time, UDateFormatStyle date, const std::string& locale)
{
    // A zone is given because finding out the machine's own takes long and tells nothing here.
    UErrorCode status = U_ZERO_ERROR;
    DateFormat format(udat_open(time, date, locale.c_str(), u"GMT", -1, nullptr, 0, &status));
    return format;
}

std::u16string datePattern(const DateFormat& format)
{
    return textFrom([&](char16_t* text, int room, UErrorCode* status) {
        return udat_toPattern(format.getAlias(), 0, text, room, status);
    });
}

std::u16string dateSymbol(const DateFormat& format, UDateFormatSymbolType type, int index)
{
    return textFrom([&](char16_t* text, int room, UErrorCode* status) {
        return udat_getSymbols(format.getAlias(), type, index, text, room, status);
    });
}

NumberFormatter openNumberFormat(UNumberFormatStyle style, const std::string& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    NumberFormatter format(unum_open(style, nullptr, 0, locale.c_str(), nullptr, &status));
    return format;
}

std::u16string numberPattern(const NumberFormatter& format)
{
    return textFrom([&](char16_t* text, int room, UErrorCode* status) {
        return unum_toPattern(format.getAlias(), 0, text, room, status);
    });
}

std::u16string numberSymbol(const NumberFormatter& format, UNumberFormatSymbol type)
{
    return textFrom([&](char16_t* text, int room, UErrorCode* status) {
        return unum_getSymbol(format.getAlias(), type, text, room, status);
    });
}

// --- Reading patterns

bool isPatternLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// The letter of the first field of a pattern that is one of `letters`; 0 if there is none.
// `literal` receives what stands between that field and the next, without quotes.
char16_t findField(std::u16string_view pattern, std::u16string_view letters,
                   std::u16string& literal)
{
    char16_t found = 0;
    bool quoted = false;
    for (char16_t unit : pattern) {
        if (unit == u'\'') {
            quoted = !quoted;
        } else if (quoted || !isPatternLetter(unit)) {
            if (found != 0)
                literal += unit;
        } else if (found == 0) {
            if (letters.find(unit) != letters.npos)
                found = unit;
        } else if (unit != found) {
            break;
        }
    }
    return found;
}

// The character of a literal that can be typed between two numbers, in place of a blank or a word.
std::u16string separatorIn(std::u16string_view literal, std::u16string_view fallback)
{
    for (char16_t unit : literal) {
        if (u_isalpha(unit))
            break;
        if (u_ispunct(unit) || u_charType(unit) == U_MATH_SYMBOL)
            return {unit};
    }
    return std::u16string(fallback);
}

DateOrder orderOf(std::u16string_view pattern)
{
    std::u16string literal;
    switch (findField(pattern, u"dMLyu", literal)) {
    case u'd':
        return DayFirst;
    case u'y':
    case u'u':
        return YearFirst;
    default:
        return MonthFirst;
    }
}

// Reads the place of the currency sign from a pattern such as "¤#,##0.00;(¤#,##0.00)".
void readMoneyPattern(std::u16string_view pattern, LocaleSettings& settings)
{
    constexpr int inParentheses[] = {0, 4, 14, 15};
    constexpr int withMinus[] = {1, 5, 9, 8};
    const std::size_t end = pattern.find(u';');
    const std::u16string_view positive = pattern.substr(0, end);
    const std::size_t sign = positive.find(u'\u00a4');
    const std::size_t number = positive.find_first_of(u"#0");
    const std::size_t numberEnd = positive.find_last_of(u"#0");
    if (sign == positive.npos || number == positive.npos)
        return;
    const bool trails = sign > number;
    const std::u16string_view between = trails
                                            ? positive.substr(numberEnd + 1, sign - numberEnd - 1)
                                            : positive.substr(sign + 1, number - sign - 1);
    bool blank = false;
    for (char16_t unit : between)
        blank = blank || u_isUWhiteSpace(unit);
    settings.currencyPosition = (trails ? 1 : 0) + (blank ? 2 : 0);
    const bool parentheses = end != pattern.npos && pattern.find(u'(', end) != pattern.npos;
    settings.negativeCurrency =
        (parentheses ? inParentheses : withMinus)[settings.currencyPosition];
}

void readNumbers(const std::string& locale, LocaleSettings& settings)
{
    const NumberFormatter format = openNumberFormat(UNUM_DECIMAL, locale);
    if (format.isNull())
        return;
    settings.decimal = numberSymbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL);
    settings.thousands = numberSymbol(format, UNUM_GROUPING_SEPARATOR_SYMBOL);
    settings.list = settings.decimal == u"," ? u";" : u",";
}

void readMoney(const std::string& locale, LocaleSettings& settings)
{
    const NumberFormatter format = openNumberFormat(UNUM_CURRENCY_ACCOUNTING, locale);
    if (format.isNull())
        return;
    settings.currency = numberSymbol(format, UNUM_CURRENCY_SYMBOL);
    readMoneyPattern(numberPattern(format), settings);
}

void readDates(const std::string& locale, LocaleSettings& settings)
{
    const DateFormat shortDate = openDateFormat(UDAT_NONE, UDAT_SHORT, locale);
    const DateFormat longDate = openDateFormat(UDAT_NONE, UDAT_LONG, locale);
    if (shortDate.isNull() || longDate.isNull())
        return;
    const std::u16string pattern = datePattern(shortDate);
    std::u16string literal;
    findField(pattern, u"dMLyu", literal);
    settings.dateOrder = orderOf(pattern);
    settings.dateSeparator = separatorIn(literal, u"/");
    settings.longDateOrder = orderOf(datePattern(longDate));
}

void readTimes(const std::string& locale, LocaleSettings& settings)
{
    const DateFormat format = openDateFormat(UDAT_SHORT, UDAT_NONE, locale);
    if (format.isNull())
        return;
    std::u16string literal;
    const char16_t hour = findField(datePattern(format), u"hHkK", literal);
    settings.clock24 = hour == u'H' || hour == u'k';
    settings.timeSeparator = separatorIn(literal, u":");
    settings.am = dateSymbol(format, UDAT_AM_PMS, 0);
    settings.pm = dateSymbol(format, UDAT_AM_PMS, 1);
}

// --- Writing by a pattern

void appendNumber(std::u16string& out, int number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    if (text.size() < digits)
        out.append(digits - text.size(), u'0');
    out.append(text.begin(), text.end());
}

std::size_t runLength(std::u16string_view pattern, std::size_t begin)
{
    const std::size_t end = pattern.find_first_not_of(pattern[begin], begin);
    return (end == pattern.npos ? pattern.size() : end) - begin;
}

} // namespace

struct IcuLocaleSource::Names {
    // Many languages decline a month that stands with its day.
    std::u16string months[12];
    std::u16string monthsShort[12];
    std::u16string monthsAlone[12];
    std::u16string monthsAloneShort[12];
    std::u16string am;
    std::u16string pm;
};

IcuLocaleSource::IcuLocaleSource(std::string_view name)
{
    const auto choose = [name](const char* category) {
        return usableLocale(name.empty() ? environmentLocale(category) : std::string(name));
    };
    numbers_ = choose("LC_NUMERIC") + FixedKeywords;
    money_ = withRegion(choose("LC_MONETARY")) + FixedKeywords;
    times_ = choose("LC_TIME") + FixedKeywords;
}

IcuLocaleSource::~IcuLocaleSource() = default;

LocaleSettings IcuLocaleSource::settings()
{
    LocaleSettings settings;
    readNumbers(numbers_, settings);
    readMoney(money_, settings);
    readDates(times_, settings);
    readTimes(times_, settings);
    return settings;
}

const IcuLocaleSource::Names& IcuLocaleSource::names()
{
    if (names_)
        return *names_;
    names_ = std::make_unique<Names>();
    const DateFormat format = openDateFormat(UDAT_SHORT, UDAT_SHORT, times_);
    if (format.isNull())
        return *names_;
    for (int month = 0; month < 12; ++month) {
        names_->months[month] = dateSymbol(format, UDAT_MONTHS, month);
        names_->monthsShort[month] = dateSymbol(format, UDAT_SHORT_MONTHS, month);
        names_->monthsAlone[month] = dateSymbol(format, UDAT_STANDALONE_MONTHS, month);
        names_->monthsAloneShort[month] = dateSymbol(format, UDAT_STANDALONE_SHORT_MONTHS, month);
    }
    names_->am = dateSymbol(format, UDAT_AM_PMS, 0);
    names_->pm = dateSymbol(format, UDAT_AM_PMS, 1);
    return *names_;
}

std::u16string IcuLocaleSource::dateText(const LocalTime& parts, std::u16string_view pattern)
{
    std::u16string out;
    const bool withDay = pattern.find(u'd') != pattern.npos;
    const auto monthName = [&](std::size_t letters) -> const std::u16string& {
        const Names& all = names();
        const int month = parts.month - 1;
        if (letters == 3)
            return (withDay ? all.monthsShort : all.monthsAloneShort)[month];
        return (withDay ? all.months : all.monthsAlone)[month];
    };
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t letters = runLength(pattern, at);
        switch (pattern[at]) {
        case u'd':
            appendNumber(out, parts.day, letters);
            break;
        case u'M':
            if (letters <= 2)
                appendNumber(out, parts.month, letters);
            else
                out += monthName(letters);
            break;
        case u'y':
            appendNumber(out, letters <= 2 ? parts.year % 100 : parts.year, letters);
            break;
        default:
            out.append(pattern, at, letters);
            break;
        }
        at += letters;
    }
    return out;
}

std::u16string IcuLocaleSource::timeText(const LocalTime& parts, std::u16string_view pattern)
{
    std::u16string out;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t letters = runLength(pattern, at);
        switch (pattern[at]) {
        case u'h':
            appendNumber(out, (parts.hour + 11) % 12 + 1, letters);
            break;
        case u'H':
            appendNumber(out, parts.hour, letters);
            break;
        case u'm':
            appendNumber(out, parts.minute, letters);
            break;
        case u's':
            appendNumber(out, parts.second, letters);
            break;
        case u't':
            out += parts.hour < 12 ? names().am : names().pm;
            break;
        default:
            out.append(pattern, at, letters);
            break;
        }
        at += letters;
    }
    return out;
}

} // namespace vorn
