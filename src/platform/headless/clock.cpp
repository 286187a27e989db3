#include "platform/headless/clock.h"

#include <chrono>

namespace vorn {

namespace {

constexpr std::string_view IsoForm = "0000-00-00T00:00:00";

bool hasIsoForm(std::string_view text)
{
    if (text.size() != IsoForm.size())
        return false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool digit = text[at] >= '0' && text[at] <= '9';
        if (IsoForm[at] == '0' ? !digit : text[at] != IsoForm[at])
            return false;
    }
    return true;
}

int numberAt(std::string_view text, std::size_t at, std::size_t digits)
{
    int number = 0;
    for (char digit : text.substr(at, digits))
        number = number * 10 + (digit - '0');
    return number;
}

} // namespace

bool parseIsoTime(std::string_view text, LocalTime& out)
{
    if (!hasIsoForm(text))
        return false;
    LocalTime time;
    time.year = numberAt(text, 0, 4);
    time.month = numberAt(text, 5, 2);
    time.day = numberAt(text, 8, 2);
    time.hour = numberAt(text, 11, 2);
    time.minute = numberAt(text, 14, 2);
    time.second = numberAt(text, 17, 2);
    const std::chrono::year_month_day date{std::chrono::year(time.year),
                                           std::chrono::month(static_cast<unsigned>(time.month)),
                                           std::chrono::day(static_cast<unsigned>(time.day))};
    if (!date.ok() || time.hour > 23 || time.minute > 59 || time.second > 59)
        return false;
    const std::chrono::weekday weekday{std::chrono::sys_days(date)};
    time.dayOfWeek = static_cast<int>(weekday.c_encoding());
    out = time;
    return true;
}

} // namespace vorn
