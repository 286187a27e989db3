// The user's locale as the system holds it: read once at the start, then looked at everywhere.
#pragma once

#include "platform/localesource.h"

#include <string>

namespace vorn {

struct LocaleInfo {
    char16_t decimal = u'.';
    // The point that number printing below the locale uses.
    char16_t runtimeDecimal = u'.';
    char16_t list = u',';
    char16_t thousands = u',';
    char16_t dateSeparator = u'/';
    char16_t timeSeparator = u':';
    bool clock24 = false;
    DateOrder dateOrder = MonthFirst;
    DateOrder longDateOrder = MonthFirst;
    std::u16string currency; // at most 5 characters
    int currencyPosition = 0;
    int negativeCurrency = 0;
    std::u16string shortDate;
    std::u16string dayMonthYear;
    std::u16string dayMonth;
    std::u16string monthYear;
    std::u16string time12;
    std::u16string time24;
    std::u16string time12Seconds;
    std::u16string time24Seconds;
    std::u16string longDate;
    std::u16string am; // at most 15 characters, as pm
    std::u16string pm;
};

extern LocaleInfo localeInfo;

// Fills localeInfo from the platform's locale source. A separator keeps its first character only.
void loadLocale();

} // namespace vorn
