#include "numfmt/serial.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace vorn {
namespace {

TEST(PartsToSerial, countsDaysFromTheEndOf1899)
{
    const struct {
        const char* behaviour;
        int year, month, day;
        double serial;
    } cases[] = {
        {"day 0",                                  1899, 12, 30, 0      },
        {"the day after",                          1899, 12, 31, 1      },
        {"the first of 1900",                      1900, 1,  1,  2      },
        {"the last of February 1900",              1900, 2,  28, 60     },
        {"the first of March, without a leap day", 1900, 3,  1,  61     },
        {"a leap day",                             2000, 2,  29, 36585  },
        {"the day behind it",                      2000, 3,  1,  36586  },
        {"the first of 2000",                      2000, 1,  1,  36526  },
        {"the day before day 0",                   1899, 12, 29, -1     },
        {"the last day",                           9999, 12, 31, 2958465},
        {"the first day that shows",               100,  1,  1,  -657434},
    };
    for (const auto& c : cases) {
        double serial = 0.5;
        EXPECT_TRUE(partsToSerial(c.year, c.month, c.day, 0, 0, 0, serial, Validated))
            << c.behaviour;
        EXPECT_EQ(serial, c.serial) << c.behaviour;
    }
}

TEST(PartsToSerial, addsTheTimeAsAFraction)
{
    const struct {
        const char* behaviour;
        int year, hour, minute, second;
        double serial;
    } cases[] = {
        {"midnight",                             1899, 0,  0,  0,  0              },
        {"noon",                                 1899, 12, 0,  0,  0.5            },
        {"a second",                             1899, 0,  0,  1,  1 / 86400.0    },
        {"the last second",                      1899, 23, 59, 59, 86399 / 86400.0},
        {"half past twelve",                     1899, 12, 30, 0,  12.5 / 24      },
        {"before day 0 the day counts downward", 1898, 6,  0,  0,  -365.25        },
    };
    for (const auto& c : cases) {
        double serial = 0;
        EXPECT_TRUE(partsToSerial(c.year, 12, 30, c.hour, c.minute, c.second, serial, Validated));
        EXPECT_NEAR(serial, c.serial, 1e-15 * std::max(1.0, std::fabs(c.serial))) << c.behaviour;
    }
}

// The same constant everywhere, and not a division: equal times must be equal floats.
TEST(PartsToSerial, multipliesSecondsByOneConstant)
{
    double serial = 0;
    partsToSerial(1899, 12, 30, 1, 0, 0, serial, Validated);
    EXPECT_EQ(serial, 3600 * 1.1574074074074073e-5);
}

TEST(PartsToSerial, refusesWhatIsNotInTheCalendar)
{
    const struct {
        const char* behaviour;
        int year, month, day, hour, minute, second;
    } cases[] = {
        {"a year above 9,999",          10000, 1,          1,  0,  0,  0 },
        {"a year below 0",              -1,    1,          1,  0,  0,  0 },
        {"month 0",                     2000,  0,          1,  0,  0,  0 },
        {"month 13",                    2000,  13,         1,  0,  0,  0 },
        {"a month below 0",             2000,  -1,         1,  0,  0,  0 },
        {"day 0",                       2000,  1,          0,  0,  0,  0 },
        {"a day below 0",               2000,  1,          -1, 0,  0,  0 },
        {"31 April",                    2000,  4,          31, 0,  0,  0 },
        {"30 February",                 2000,  2,          30, 0,  0,  0 },
        {"a leap day of a common year", 2001,  2,          29, 0,  0,  0 },
        {"29 February 1900",            1900,  2,          29, 0,  0,  0 },
        {"32 December",                 2000,  12,         32, 0,  0,  0 },
        {"hour 24",                     2000,  1,          1,  24, 0,  0 },
        {"an hour below 0",             2000,  1,          1,  -1, 0,  0 },
        {"minute 60",                   2000,  1,          1,  0,  60, 0 },
        {"second 60",                   2000,  1,          1,  0,  0,  60},
        {"a number beyond all reason",  2000,  2147483647, 1,  0,  0,  0 },
    };
    for (const auto& c : cases) {
        double serial = 7;
        EXPECT_FALSE(
            partsToSerial(c.year, c.month, c.day, c.hour, c.minute, c.second, serial, Validated))
            << c.behaviour;
        EXPECT_EQ(serial, 7) << c.behaviour;
    }
}

TEST(PartsToSerial, carriesOverWhenUnchecked)
{
    const struct {
        const char* behaviour;
        int year, month, day, hour, minute, second;
        double serial;
    } cases[] = {
        {"month 13 is the next January",       2000,  13,  1,   0,  0,  0,   36892                },
        {"month 24 its December",              2000,  24,  1,   0,  0,  0,   37226                },
        {"month 0 is the last December",       2000,  0,   1,   0,  0,  0,   36495                },
        {"month -11 the last January",         2000,  -11, 1,   0,  0,  0,   36161                },
        {"month -12 the December before",      2000,  -12, 1,   0,  0,  0,   36130                },
        {"day 0 is the day before the first",  2000,  1,   0,   0,  0,  0,   36525                },
        {"day 32 runs on into the next month", 2000,  1,   32,  0,  0,  0,   36557                },
        {"day 366 of a leap year is its last", 2000,  1,   366, 0,  0,  0,   36891                },
        {"day -30 runs back",                  2000,  1,   -30, 0,  0,  0,   36495                },
        {"29 February 1900 is 1 March",        1900,  2,   29,  0,  0,  0,   61                   },
        {"hour 24 is a day",                   2000,  1,   1,   24, 0,  0,   36527                },
        {"minutes and seconds below 0",        2000,  1,   1,   0,  -1, -60, 36526 - 120 / 86400.0},
        {"a year above 9,999",                 10000, 1,   1,   0,  0,  0,   2958466              },
    };
    for (const auto& c : cases) {
        double serial = 0;
        EXPECT_TRUE(
            partsToSerial(c.year, c.month, c.day, c.hour, c.minute, c.second, serial, Unchecked));
        EXPECT_NEAR(serial, c.serial, 1e-9) << c.behaviour;
    }
}

TEST(PartsToSerial, takesAnyNumbersWhenUnchecked)
{
    for (int extreme : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        double serial = 0;
        EXPECT_TRUE(
            partsToSerial(extreme, extreme, extreme, extreme, extreme, extreme, serial, Unchecked));
        EXPECT_TRUE(std::isfinite(serial));
        EXPECT_EQ(serial < 0, extreme < 0);
    }
}

TEST(SerialToParts, takesASerialApart)
{
    const struct {
        const char* behaviour;
        double serial;
        int year, month, day, hour, minute, second;
    } cases[] = {
        {"day 0",                          0,                   1899, 12, 30, 0,  0,  0 },
        {"noon of day 0",                  0.5,                 1899, 12, 30, 12, 0,  0 },
        {"the first of 2000",              36526,               2000, 1,  1,  0,  0,  0 },
        {"the end of February 1900",       60,                  1900, 2,  28, 0,  0,  0 },
        {"the day behind it",              61,                  1900, 3,  1,  0,  0,  0 },
        {"a leap day",                     36585,               2000, 2,  29, 0,  0,  0 },
        {"the day behind it",              36586,               2000, 3,  1,  0,  0,  0 },
        {"the last day of a leap year",    36891,               2000, 12, 31, 0,  0,  0 },
        {"the last day",                   2958465,             9999, 12, 31, 0,  0,  0 },
        {"the first day",                  -657434,             100,  1,  1,  0,  0,  0 },
        {"a century that is no leap year", -36463,              1800, 3,  1,  0,  0,  0 },
        {"noon before day 0",              -365.5,              1898, 12, 30, 12, 0,  0 },
        {"less than half a second is cut", 0.4 / 86400,         1899, 12, 30, 0,  0,  0 },
        {"more is rounded up",             0.6 / 86400,         1899, 12, 30, 0,  0,  1 },
        {"also over midnight",             1 - 0.4 / 86400,     1899, 12, 31, 0,  0,  0 },
        {"and over the end of a year",     36526 - 0.4 / 86400, 2000, 1,  1,  0,  0,  0 },
        {"but not if it is further away",  1 - 0.6 / 86400,     1899, 12, 30, 23, 59, 59},
        {"below 0 it rounds away from 0",  -1 - 0.6 / 86400,    1899, 12, 29, 0,  0,  1 },
    };
    for (const auto& c : cases) {
        LocalTime parts;
        parts.milliseconds = 5;
        ASSERT_TRUE(serialToParts(c.serial, parts)) << c.behaviour;
        EXPECT_EQ(parts.year, c.year) << c.behaviour;
        EXPECT_EQ(parts.month, c.month) << c.behaviour;
        EXPECT_EQ(parts.day, c.day) << c.behaviour;
        EXPECT_EQ(parts.hour, c.hour) << c.behaviour;
        EXPECT_EQ(parts.minute, c.minute) << c.behaviour;
        EXPECT_EQ(parts.second, c.second) << c.behaviour;
        EXPECT_EQ(parts.milliseconds, 0) << c.behaviour;
    }
}

TEST(SerialToParts, refusesWhatIsOutsideOfTheCalendar)
{
    const struct {
        const char* behaviour;
        double serial;
    } cases[] = {
        {"behind the last day", 2958465.001                             },
        {"before the first",    -657434.001                             },
        {"far away",            1e300                                   },
        {"far back",            -1e300                                  },
        {"an infinity",         std::numeric_limits<double>::infinity() },
        {"what is no number",   std::numeric_limits<double>::quiet_NaN()},
    };
    for (const auto& c : cases) {
        LocalTime parts;
        parts.year = 7;
        EXPECT_FALSE(serialToParts(c.serial, parts)) << c.behaviour;
        EXPECT_EQ(parts.year, 7) << c.behaviour;
    }
}

// Every day there is, counted on by hand and not by the calendar of the library.
TEST(SerialToParts, isTheInverseOnEveryDay)
{
    int year = 100;
    int month = 1;
    int day = 1;
    int weekday = 5; // a Friday
    for (int serial = -657434; serial <= 2958465; ++serial) {
        LocalTime parts;
        ASSERT_TRUE(serialToParts(serial, parts));
        ASSERT_TRUE(parts.year == year && parts.month == month && parts.day == day) << serial;
        ASSERT_EQ(parts.dayOfWeek, weekday) << serial;
        double back = 0;
        ASSERT_TRUE(partsToSerial(year, month, day, 0, 0, 0, back, Validated));
        ASSERT_EQ(back, serial);

        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        const bool isShort = month == 4 || month == 6 || month == 9 || month == 11;
        const int last = month == 2 ? (leap ? 29 : 28) : isShort ? 30 : 31;
        weekday = (weekday + 1) % 7;
        if (++day > last) {
            day = 1;
            if (++month > 12) {
                month = 1;
                ++year;
            }
        }
    }
}

TEST(SerialToParts, findsEverySecondOfADay)
{
    for (int day : {0, 36526, 2958464, -657433, -1}) {
        for (int second = 0; second < 86400; ++second) {
            LocalTime date;
            ASSERT_TRUE(serialToParts(day, date));
            double serial = 0;
            partsToSerial(date.year, date.month, date.day, 0, 0, second, serial, Unchecked);
            LocalTime parts;
            ASSERT_TRUE(serialToParts(serial, parts));
            ASSERT_EQ(parts.day, date.day) << day << " " << second;
            ASSERT_EQ(parts.second + 60 * (parts.minute + 60 * parts.hour), second) << day;
        }
    }
}

TEST(SerialToParts, knowsTheDayOfTheWeek)
{
    LocalTime parts;
    serialToParts(36526, parts);
    EXPECT_EQ(parts.dayOfWeek, 6) << "1 January 2000 was a Saturday";
    serialToParts(0, parts);
    EXPECT_EQ(parts.dayOfWeek, 6) << "and so was day 0";
    serialToParts(1, parts);
    EXPECT_EQ(parts.dayOfWeek, 0);
}

} // namespace
} // namespace vorn
