// The clock of the machine, as far as the system looks at it.
#pragma once

namespace vorn {

// Local calendar time. Month and day count from 1; dayOfWeek is 0 for Sunday.
struct LocalTime {
    int year = 1899;
    int month = 12;
    int dayOfWeek = 6;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int milliseconds = 0;
};

class Clock {
public:
    virtual ~Clock() = default;

    virtual LocalTime localTime() = 0;

    // The milliseconds of the present second, 0 to 999: the seed of the random numbers.
    virtual unsigned milliseconds() = 0;
};

} // namespace vorn
