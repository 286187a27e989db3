#include "numfmt/serial.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace vorn {

namespace {

// A constant and no division by 86,400: the two differ in the last digit, and times are compared.
constexpr double DaysPerSecond = 1.1574074074074073e-5;
constexpr double HalfSecond = 5.787037037037037e-06;
constexpr int SecondsPerDay = 86'400;
constexpr std::int64_t DaysToSerialZero = 693'959;
constexpr double FirstSerial = -657'434; // 1 January 100
constexpr double LastSerial = 2'958'465; // 31 December 9999
constexpr int LastYear = 9'999;
constexpr int DaysBeforeMonth[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

constexpr std::int64_t floorDivide(std::int64_t number, std::int64_t divisor)
{
    const std::int64_t quotient = number / divisor;
    return number % divisor < 0 ? quotient - 1 : quotient;
}

bool isLeapYear(std::int64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysOfMonth(int year, int month)
{
    const int leapDay = month == 2 && isLeapYear(year) ? 1 : 0;
    return DaysBeforeMonth[month] - DaysBeforeMonth[month - 1] + leapDay;
}

bool isWithin(int number, int first, int last)
{
    return number >= first && number <= last;
}

bool isInCalendar(int year, int month, int day)
{
    return isWithin(year, 0, LastYear) && isWithin(month, 1, 12) &&
           isWithin(day, 1, daysOfMonth(year, month));
}

bool isTimeOfDay(int hour, int minute, int second)
{
    return isWithin(hour, 0, 23) && isWithin(minute, 0, 59) && isWithin(second, 0, 59);
}

// Whole days of the serial of a day, for a month within its bounds.
std::int64_t serialDay(std::int64_t year, int month, int day)
{
    const std::int64_t leapDays =
        floorDivide(year, 4) - floorDivide(year, 100) + floorDivide(year, 400);
    // The year's own leap day is among those, but January and February lie before it.
    const int tooEarly = month <= 2 && isLeapYear(year) ? 1 : 0;
    return 365 * year + leapDays + DaysBeforeMonth[month - 1] + day - tooEarly - DaysToSerialZero;
}

} // namespace

bool partsToSerial(int year, int month, int day, int hour, int minute, int second, double& out,
                   DateCheck check)
{
    if (check == Validated &&
        !(isInCalendar(year, month, day) && isTimeOfDay(hour, minute, second)))
        return false;
    const std::int64_t months = std::int64_t{month} - 1;
    const std::int64_t carried = floorDivide(months, 12);
    const std::int64_t whole =
        serialDay(year + carried, static_cast<int>(months - 12 * carried) + 1, day);
    const double fraction = (second + 60.0 * (minute + 60.0 * hour)) * DaysPerSecond;
    const double days = static_cast<double>(whole);
    out = whole < 0 ? days - fraction : days + fraction;
    return true;
}

bool serialToParts(double serial, LocalTime& out)
{
    if (!(serial >= FirstSerial && serial <= LastSerial))
        return false;
    const double rounded = serial < 0 ? serial - HalfSecond : serial + HalfSecond;
    const double whole = std::trunc(rounded);
    const int seconds =
        std::min(static_cast<int>(std::fabs(rounded - whole) * SecondsPerDay), SecondsPerDay - 1);

    using namespace std::chrono;
    const sys_days zero = December / 30 / 1899;
    const sys_days date = zero + days(static_cast<int>(whole));
    const year_month_day parts(date);
    out.year = static_cast<int>(parts.year());
    out.month = static_cast<int>(static_cast<unsigned>(parts.month()));
    out.day = static_cast<int>(static_cast<unsigned>(parts.day()));
    out.dayOfWeek = static_cast<int>(weekday(date).c_encoding());
    out.hour = seconds / 3600;
    out.minute = seconds / 60 % 60;
    out.second = seconds % 60;
    out.milliseconds = 0;
    return true;
}

} // namespace vorn
