#include "platform/posix/clock.h"

#include <ctime>

namespace vorn {

namespace {

constexpr long NanosecondsPerMillisecond = 1'000'000;

timespec presentTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return time;
}

} // namespace

LocalTime SystemClock::localTime()
{
    const timespec now = presentTime();
    std::tm parts{};
    ::tzset();
    ::localtime_r(&now.tv_sec, &parts);
    LocalTime time;
    time.year = parts.tm_year + 1900;
    time.month = parts.tm_mon + 1;
    time.dayOfWeek = parts.tm_wday;
    time.day = parts.tm_mday;
    time.hour = parts.tm_hour;
    time.minute = parts.tm_min;
    time.second = parts.tm_sec;
    time.milliseconds = static_cast<int>(now.tv_nsec / NanosecondsPerMillisecond);
    return time;
}

unsigned SystemClock::milliseconds()
{
    return static_cast<unsigned>(presentTime().tv_nsec / NanosecondsPerMillisecond);
}

} // namespace vorn
