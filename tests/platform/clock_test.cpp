#include "platform/headless/clock.h"

#include "platform/posix/clock.h"
#include "support/environment.h"

#include <chrono>
#include <ctime>
#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(ParseIsoTime, readsOneFormOnly)
{
    LocalTime time;
    ASSERT_TRUE(parseIsoTime("2001-03-04T05:06:07", time));
    EXPECT_EQ(time.year, 2001);
    EXPECT_EQ(time.month, 3);
    EXPECT_EQ(time.day, 4);
    EXPECT_EQ(time.dayOfWeek, 0) << "a Sunday";
    EXPECT_EQ(time.hour, 5);
    EXPECT_EQ(time.minute, 6);
    EXPECT_EQ(time.second, 7);
    EXPECT_EQ(time.milliseconds, 0);
    EXPECT_TRUE(parseIsoTime("2000-02-29T23:59:59", time)) << "a leap day, the last second";
}

TEST(ParseIsoTime, refusesTheRestAndLeavesWhatWas)
{
    const struct {
        const char* behaviour;
        const char* text;
    } cases[] = {
        {"nothing",                     ""                    },
        {"a date alone",                "2001-03-04"          },
        {"a blank for the T",           "2001-03-04 05:06:07" },
        {"a zone behind",               "2001-03-04T05:06:07Z"},
        {"other separators",            "2001/03/04T05:06:07" },
        {"a sign",                      "-001-03-04T05:06:07" },
        {"month 0",                     "2001-00-04T05:06:07" },
        {"month 13",                    "2001-13-04T05:06:07" },
        {"day 0",                       "2001-03-00T05:06:07" },
        {"a leap day of a common year", "2001-02-29T05:06:07" },
        {"hour 24",                     "2001-03-04T24:00:00" },
        {"minute 60",                   "2001-03-04T05:60:00" },
        {"second 60",                   "2001-03-04T05:06:60" },
        {"letters",                     "2001-03-04Tab:06:07" },
    };
    for (const auto& c : cases) {
        LocalTime time;
        time.year = 1;
        EXPECT_FALSE(parseIsoTime(c.text, time)) << c.behaviour;
        EXPECT_EQ(time.year, 1) << c.behaviour;
    }
}

TEST(FixedClock, standsStill)
{
    LocalTime time;
    time.milliseconds = 321;
    FixedClock clock(time);
    EXPECT_EQ(clock.milliseconds(), 321u);
    EXPECT_EQ(clock.localTime().year, 1899);
    EXPECT_EQ(clock.localTime().dayOfWeek, 6);
}

TEST(SystemClock, tellsTheTimeOfTheZone)
{
    const EnvironmentVariable zone("TZ", "UTC-5"); // five hours ahead
    SystemClock clock;
    // std::time may lag behind the precise clock by a tick, and so by a second.
    const auto present = [] {
        return std::chrono::system_clock::to_time_t(
            std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
    };
    const std::time_t before = present();
    const LocalTime now = clock.localTime();
    const std::time_t after = present();
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour - 5;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    const std::time_t told = ::timegm(&parts);
    EXPECT_GE(told, before);
    EXPECT_LE(told, after);
    EXPECT_LT(now.milliseconds, 1000);
    EXPECT_LT(clock.milliseconds(), 1000u);
}

} // namespace
} // namespace vorn
