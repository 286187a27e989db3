// What the system asks about the user's locale, once, at its start; and the texts of dates and
// times, whose month names and designators belong to the locale.
#pragma once

#include "platform/clock.h"

#include <string>
#include <string_view>

namespace vorn {

enum DateOrder { MonthFirst = 0, DayFirst = 1, YearFirst = 2 };

struct LocaleSettings {
    std::u16string decimal = u".";
    std::u16string list = u",";
    std::u16string thousands = u",";
    std::u16string dateSeparator = u"/";
    std::u16string timeSeparator = u":";
    bool clock24 = false;
    DateOrder dateOrder = MonthFirst;
    DateOrder longDateOrder = MonthFirst;
    std::u16string currency = u"$";
    // 0: $1, 1: 1$, 2: $ 1, 3: 1 $
    int currencyPosition = 0;
    // 0: ($1), 4: (1$), 14: ($ 1), 15: (1 $); any other value is a form with a minus.
    int negativeCurrency = 0;
    std::u16string am = u"AM";
    std::u16string pm = u"PM";
};

class LocaleSource {
public:
    virtual ~LocaleSource() = default;

    virtual LocaleSettings settings() = 0;

    // The text of a date by a pattern of d, dd, M, MM, MMM, MMMM, yy and yyyy; everything else in
    // the pattern stands for itself.
    virtual std::u16string dateText(const LocalTime& parts, std::u16string_view pattern) = 0;

    // The text of a time by a pattern of h, hh, H, HH, m, mm, s, ss and tt.
    virtual std::u16string timeText(const LocalTime& parts, std::u16string_view pattern) = 0;
};

} // namespace vorn
