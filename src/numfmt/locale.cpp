#include "numfmt/locale.h"

#include "platform/platform.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr std::size_t CurrencyMax = 5;
constexpr std::size_t DesignatorMax = 15;

char16_t firstOf(const std::u16string& text, char16_t fallback)
{
    return text.empty() ? fallback : text.front();
}

std::u16string withSeparator(std::u16string pattern, char16_t standard, char16_t separator)
{
    std::replace(pattern.begin(), pattern.end(), standard, separator);
    return pattern;
}

void setDatePatterns(LocaleInfo& info)
{
    const char16_t* shortDate = u"M/d/yy";
    const char16_t* longDate = u"M/d/yyyy";
    if (info.dateOrder == DayFirst) {
        shortDate = u"d/M/yy";
        longDate = u"d/M/yyyy";
    } else if (info.dateOrder == YearFirst) {
        shortDate = u"yy/M/d";
        longDate = u"yyyy/M/d";
    }
    info.shortDate = withSeparator(shortDate, u'/', info.dateSeparator);
    info.longDate = withSeparator(longDate, u'/', info.dateSeparator);
    // With a month's name a hyphen separates, whatever the locale puts between numbers.
    info.dayMonthYear = u"d-MMM-yy";
    info.dayMonth = u"d-MMM";
    info.monthYear = u"MMM-yy";
}

void setTimePatterns(LocaleInfo& info)
{
    info.time12 = withSeparator(u"h:mm tt", u':', info.timeSeparator);
    info.time24 = withSeparator(u"H:mm", u':', info.timeSeparator);
    info.time12Seconds = withSeparator(u"h:mm:ss tt", u':', info.timeSeparator);
    info.time24Seconds = withSeparator(u"H:mm:ss", u':', info.timeSeparator);
}

} // namespace

LocaleInfo localeInfo;

void loadLocale()
{
    const LocaleSettings settings = platform.localeSource->settings();
    LocaleInfo info;
    info.decimal = firstOf(settings.decimal, info.decimal);
    info.list = firstOf(settings.list, info.list);
    info.thousands = firstOf(settings.thousands, u'\0'); // there may be none
    info.dateSeparator = firstOf(settings.dateSeparator, info.dateSeparator);
    info.timeSeparator = firstOf(settings.timeSeparator, info.timeSeparator);
    info.clock24 = settings.clock24;
    info.dateOrder = settings.dateOrder;
    info.longDateOrder = settings.longDateOrder;
    info.currency = settings.currency.substr(0, CurrencyMax);
    info.currencyPosition = settings.currencyPosition;
    info.negativeCurrency = settings.negativeCurrency;
    info.am = settings.am.substr(0, DesignatorMax);
    info.pm = settings.pm.substr(0, DesignatorMax);
    setDatePatterns(info);
    setTimePatterns(info);
    localeInfo = std::move(info);
}

} // namespace vorn
