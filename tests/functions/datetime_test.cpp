#include "core/error.h"
#include "core/formulacell.h"
#include "core/input.h"
#include "formula/machine.h"
#include "support/formularows.h"

#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr double SecondsOfDay = 86400;

// A cell of each kind, and a date with a time.
class DateFunctions : public testing::Test {
protected:
    DateFunctions()
    {
        cells.fill("A1", {{u"36526.75"},
                          {u"3/4/2001 12:30:15"},
                          {u"'12"},
                          {u"abc"},
                          {u"TRUE"},
                          {},
                          {u"=1/0"},
                          {u"'"},
                          {u"'3/4/2001 12:30:15"}});
        cells.store("A10", CellValue::makeNumber(std::numeric_limits<double>::quiet_NaN()));
        cells.put("Sheet2!A1", u"5/6/1999");
    }

    Cells cells;
};

// Serials of whole days, counted by the library's own calendar.
constexpr std::chrono::sys_days DayZero{std::chrono::year{1899} / 12 / 30};

int serialOf(int year, unsigned month, unsigned day)
{
    const std::chrono::sys_days date{std::chrono::year{year} / static_cast<int>(month) /
                                     static_cast<int>(day)};
    return static_cast<int>((date - DayZero).count());
}

std::string dateAnswer(int year, unsigned month, unsigned day)
{
    return "date " + std::to_string(serialOf(year, month, day));
}

TEST_F(DateFunctions, dateCarriesMonthsAndDays)
{
    const struct {
        const char* behaviour;
        std::u16string_view formula;
        int year;
        unsigned month, day;
    } cases[] = {
        {"a date",                                  u"Date(2001,3,4)",          2001, 3,  4 },
        {"a leap day",                              u"Date(2000,2,29)",         2000, 2,  29},
        {"of a year that has none",                 u"Date(1900,2,29)",         1900, 3,  1 },
        {"a year below 100 is of the last century", u"Date(99,1,1)",            1999, 1,  1 },
        {"also where a short date means this one",  u"Date(1,1,1)",             1901, 1,  1 },
        {"also a blank",                            u"Date(A6,1,1)",            1900, 1,  1 },
        {"also one below 0",                        u"Date(-1,1,1)",            1899, 1,  1 },
        {"also a fraction below 100",               u"Date(99.9,1,1)",          1999, 1,  1 },
        {"the year 100 is itself",                  u"Date(100,1,1)",           100,  1,  1 },
        {"the last day",                            u"Date(9999,12,31)",        9999, 12, 31},
        {"a month past 12 carries",                 u"Date(2001,13,1)",         2002, 1,  1 },
        {"by years",                                u"Date(2001,38,1)",         2004, 2,  1 },
        {"month 0 is the last of the year before",  u"Date(2001,0,1)",          2000, 12, 1 },
        {"a negative month carries downward",       u"Date(2001,-1,1)",         2000, 11, 1 },
        {"to the first of a year",                  u"Date(2001,-11,1)",        2000, 1,  1 },
        {"and past it",                             u"Date(2001,-12,1)",        1999, 12, 1 },
        {"a day past the month's end carries",      u"Date(2001,1,32)",         2001, 2,  1 },
        {"past a leap day",                         u"Date(2000,2,30)",         2000, 3,  1 },
        {"by years",                                u"Date(2001,1,366)",        2002, 1,  1 },
        {"day 0 is the last of the month before",   u"Date(2001,1,0)",          2000, 12, 31},
        {"a leap day too",                          u"Date(2000,3,0)",          2000, 2,  29},
        {"a negative day carries downward",         u"Date(2001,1,-30)",        2000, 12, 1 },
        {"fractions are cut",                       u"Date(2001.9,3.9,4.9)",    2001, 3,  4 },
        {"with no hair given",                      u"Date(2001,3,4.999999)",   2001, 3,  4 },
        {"toward zero",                             u"Date(2001,-0.9,-0.9)",    2000, 11, 30},
        {"texts that read as numbers",              uR"(Date("2001","3","4"))", 2001, 3,  4 },
        {"a logical",                               u"Date(2001,TRUE,A5)",      2001, 1,  1 },
        {"a cell's text",                           u"Date(2001,A3,1)",         2001, 12, 1 },
        {"a date as day of a year",                 u"Date(0,1,Sheet2!A1-1)",   1999, 5,  6 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(cells.answer(c.formula), dateAnswer(c.year, c.month, c.day)) << c.behaviour;
}

TEST_F(DateFunctions, dateRefusesOnlyWhatIsNoNumber)
{
    expectAnswers(cells, {
                             {"a word",                      u"Date(A4,1,1)",          "!!Val"     },
                             {"an empty text",               u"Date(2001,A8,1)",       "!!Val"     },
                             {"a text that reads as a date", u"Date(A9,1,1)",          "!!Val"     },
                             {"an error",                    u"Date(2001,A7,1)",       "!!Div0"    },
                             {"the leftmost of three",       uR"(Date(NA(),1/0,"x"))", "!!NA"      },
                             {"a range",                     u"Date(A1:A2,1,1)",       "!!Ref"     },
                             {"too few parts",               u"Date(2001,1)",          "refused 17"},
    });
    for (const char16_t* formula : {u"Date(1e300,1e300,1e300)", u"Date(-1e300,-1e300,-1e300)",
                                    u"Date(A10,A10,A10)", u"Date(2001,2147483647,1)"})
        EXPECT_EQ(cells.evaluate(formula).tag, TagDateTime) << std::u16string(formula).size();
}

TEST_F(DateFunctions, aDateStaysOneInSums)
{
    expectAnswers(cells, {
                             {"a later date",     u"Date(2001,3,4)+1",              "date 36955"},
                             {"a difference too", u"Date(2001,3,4)-Date(2001,3,1)", "date 3"    },
    });
}

TEST_F(DateFunctions, timeIsTheFractionOfADay)
{
    const struct {
        const char* behaviour;
        std::u16string_view formula;
        double seconds;
    } cases[] = {
        {"a time",                             u"Time(12,30,15)",       45015},
        {"midnight",                           u"Time(0,0,0)",          0    },
        {"the last second",                    u"Time(23,59,59)",       86399},
        {"hours past 24 wrap",                 u"Time(25,0,0)",         3600 },
        {"by days",                            u"Time(49,0,0)",         3600 },
        {"24 hours are none",                  u"Time(24,0,0)",         0    },
        {"minutes carry",                      u"Time(0,90,0)",         5400 },
        {"seconds carry",                      u"Time(0,0,3661)",       3661 },
        {"negative minutes carry downward",    u"Time(2,-30,0)",        5400 },
        {"negative seconds too",               u"Time(0,1,-1)",         59   },
        {"before midnight the time is signed", u"Time(-1,0,0)",         -3600},
        {"fractions are cut",                  u"Time(1.9,1.9,1.9)",    3661 },
        {"texts that read as numbers",         uR"(Time("1","2","3"))", 3723 },
        {"a cell's text",                      u"Time(A3,0,0)",         43200},
        {"a logical and a blank",              u"Time(A5,A6,A6)",       3600 },
        {"a number of days as hours",          u"Time(A1-36525,0,0)",   3600 },
    };
    for (const auto& c : cases) {
        const CellValue value = cells.evaluate(c.formula);
        ASSERT_EQ(value.tag, TagDateTime) << c.behaviour;
        EXPECT_NEAR(value.number(), c.seconds / SecondsOfDay, 1e-15) << c.behaviour;
    }
}

TEST_F(DateFunctions, timeRefusesOnlyWhatIsNoNumber)
{
    expectAnswers(cells, {
                             {"a word",                      u"Time(1,A4,1)",          "!!Val" },
                             {"a text that reads as a time", uR"(Time("12:30",0,0))",  "!!Val" },
                             {"an error",                    u"Time(1,1,A7)",          "!!Div0"},
                             {"the leftmost of three",       uR"(Time(NA(),1/0,"x"))", "!!NA"  },
                             {"a range",                     u"Time(1,A1:A2,1)",       "!!Ref" },
    });
    for (const char16_t* formula :
         {u"Time(1e300,1e300,1e300)", u"Time(-1e300,-1e300,-1e300)", u"Time(A10,A10,A10)"}) {
        const CellValue value = cells.evaluate(formula);
        EXPECT_EQ(value.tag, TagDateTime);
        EXPECT_LT(std::abs(value.number()), 1);
    }
}

TEST_F(DateFunctions, partsOfADate)
{
    expectAnswers(cells, {
                             {"of a number",                      u"Day(36526)",          "1"     },
                             {"of a number",                      u"Month(36526)",        "1"     },
                             {"of a number",                      u"Year(36526)",         "2000"  },
                             {"of a date",                        u"Day(A2)",             "4"     },
                             {"of a date",                        u"Month(A2)",           "3"     },
                             {"of a date",                        u"Year(A2)",            "2001"  },
                             {"of a text that reads as a date",   u"Day(A9)",             "4"     },
                             {"of a text that reads as a date",   u"Month(A9)",           "3"     },
                             {"of a text that reads as a date",   uR"(Year("3/4/2001"))", "2001"  },
                             {"of a text that reads as a number", u"Day(A3)",             "!!Val" },
                             {"of a text that reads as a number", uR"(Month("12"))",      "!!Val" },
                             {"of a text that reads as a number", u"Year(A3)",            "!!Val" },
                             {"of a word",                        u"Day(A4)",             "!!Val" },
                             {"of the empty text",                u"Month(A8)",           "!!Val" },
                             {"of a word",                        u"Year(A4)",            "!!Val" },
                             {"of a logical, which is day 0",     u"Day(A5)",             "30"    },
                             {"of a logical",                     u"Month(TRUE)",         "12"    },
                             {"of a logical",                     u"Year(TRUE)",          "1899"  },
                             {"of a blank, which is day 0",       u"Day(A6)",             "30"    },
                             {"of a blank",                       u"Month(A6)",           "12"    },
                             {"of a blank",                       u"Year(A6)",            "1899"  },
                             {"of day 0",                         u"Day(0)",              "30"    },
                             {"of day 0",                         u"Year(0)",             "1899"  },
                             {"of an error",                      u"Day(A7)",             "!!Div0"},
                             {"of an error",                      u"Month(A7)",           "!!Div0"},
                             {"of an error",                      u"Year(A7)",            "!!Div0"},
                             {"of another sheet's date",          u"Day(Sheet2!A1)",      "6"     },
                             {"of another sheet's date",          u"Month(Sheet2!A1)",    "5"     },
                             {"of another sheet's date",          u"Year(Sheet2!A1:A1)",  "1999"  },
                             {"of a range",                       u"Day(A1:A2)",          "!!Ref" },
                             {"of a range",                       u"Month(A2:A1)",        "!!Ref" },
                             {"of a range",                       u"Year(A1:A2)",         "!!Ref" },
    });
}

TEST_F(DateFunctions, partsOfATime)
{
    expectAnswers(cells, {
                             {"of a number",                             u"Hour(0.5)",           "12"    },
                             {"of a number",                             u"Minute(0.53125)",     "45"    },
                             {"of a number",                             u"Second(1/86400)",     "1"     },
                             {"of a date and time",                      u"Hour(A2)",            "12"    },
                             {"of a date and time",                      u"Minute(A2)",          "30"    },
                             {"of a date and time",                      u"Second(A2)",          "15"    },
                             {"of a text that reads as a time",          uR"(Hour("12:30"))",    "12"    },
                             {"of a text that reads as a time",          uR"(Minute("12:30"))",  "30"    },
                             {"of a text that reads as a date and time", u"Second(A9)",          "15"    },
                             {"in the afternoon",                        uR"(Hour("1:30 pm"))",  "13"    },
                             {"of a text that reads as a number",        uR"(Hour("0.5"))",      "!!Val" },
                             {"of a text that reads as a number",        u"Minute(A3)",          "!!Val" },
                             {"of a text that reads as a number",        u"Second(A3)",          "!!Val" },
                             {"of a word",                               u"Hour(A4)",            "!!Val" },
                             {"of the empty text",                       u"Minute(A8)",          "!!Val" },
                             {"of a word",                               u"Second(A4)",          "!!Val" },
                             {"of a logical",                            u"Hour(A5)",            "0"     },
                             {"of a logical",                            u"Minute(A5)",          "0"     },
                             {"of a logical",                            u"Second(A5)",          "0"     },
                             {"of a blank",                              u"Hour(A6)",            "0"     },
                             {"of a blank",                              u"Minute(A6)",          "0"     },
                             {"of a blank",                              u"Second(A6)",          "0"     },
                             {"of an error",                             u"Hour(A7)",            "!!Div0"},
                             {"of an error",                             u"Minute(A7)",          "!!Div0"},
                             {"of an error",                             u"Second(A7)",          "!!Div0"},
                             {"half a second rounds up",                 u"Second(0.6/86400)",   "1"     },
                             {"less rounds down",                        u"Second(0.4/86400)",   "0"     },
                             {"into the next minute",                    u"Minute(59.6/86400)",  "1"     },
                             {"into the next hour",                      u"Hour(3599.6/86400)",  "1"     },
                             {"into the next day",                       u"Hour(86399.6/86400)", "0"     },
                             {"into the next day",                       u"Day(86399.6/86400)",  "31"    },
                             {"of a range",                              u"Hour(A1:A2)",         "!!Ref" },
                             {"of a range",                              u"Minute(A1:A2)",       "!!Ref" },
                             {"of a range",                              u"Second(A2:A1)",       "!!Ref" },
    });
}

TEST_F(DateFunctions, partsOutsideOfTheCalendarAreRefused)
{
    for (const char16_t* function : {u"Day", u"Month", u"Year", u"Hour", u"Minute", u"Second"}) {
        const std::u16string name = function;
        const struct {
            const char* behaviour;
            const char16_t* argument;
            bool isRefused;
        } cases[] = {
            {"the last day",                      u"(2958465)",       false},
            {"past the last day",                 u"(2958466)",       true },
            {"a serial below 0",                  u"(-1)",            true },
            {"a hair below 0",                    u"(-1e-9)",         true },
            {"a date that has a negative serial", u"(Date(100,1,1))", true },
            {"a text of such a date",             uR"(("1/1/1850"))", true },
            {"a huge serial",                     u"(1e300)",         true },
            {"what is no number",                 u"(A10)",           true },
        };
        for (const auto& c : cases) {
            const std::string answer = cells.answer(name + c.argument);
            EXPECT_EQ(answer == "!!Val", c.isRefused)
                << std::string(name.begin(), name.end()) << " of " << c.behaviour << ": " << answer;
        }
    }
}

// The whole calendar from day 0 on, against the library's.
TEST_F(DateFunctions, agreeWithTheGregorianCalendar)
{
    cells.put("B1", u"0");
    cells.put("C1", u"=Year(B1)");
    cells.put("C2", u"=Month(B1)");
    cells.put("C3", u"=Day(B1)");
    cells.put("C4", u"=Weekday(B1)");
    cells.put("C5", u"=Date(C1,C2,C3)");
    // A stride that meets every day of the year and every weekday.
    for (int serial = 0; serial <= 2958465; serial += 89) {
        cells.store("B1", CellValue::makeNumber(serial));
        const std::chrono::sys_days date = DayZero + std::chrono::days{serial};
        const std::chrono::year_month_day parts{date};
        const std::chrono::weekday weekday{date};
        ASSERT_EQ(cells.value("C1").number(), static_cast<int>(parts.year())) << serial;
        ASSERT_EQ(cells.value("C2").number(), static_cast<unsigned>(parts.month())) << serial;
        ASSERT_EQ(cells.value("C3").number(), static_cast<unsigned>(parts.day())) << serial;
        ASSERT_EQ(cells.value("C4").number(), weekday.c_encoding() + 1) << serial;
        ASSERT_EQ(cells.value("C5").number(), serial);
    }
}

TEST_F(DateFunctions, everySecondOfADayComesBack)
{
    cells.put("B1", u"0");
    cells.put("C1", u"=Time(0,0,B1)");
    cells.put("C2", u"=Hour(C1)*3600+Minute(C1)*60+Second(C1)");
    for (int second = 0; second < 86400; second += 7) {
        cells.store("B1", CellValue::makeNumber(second));
        ASSERT_EQ(cells.value("C2").number(), second);
    }
}

TEST_F(DateFunctions, weekdayCountsByItsType)
{
    expectAnswers(cells, {
                             {"a Sunday",                                                 u"Weekday(Date(2001,3,4))",   "1"     },
                             {"a Saturday",                                               u"Weekday(Date(2001,3,3))",   "7"     },
                             {"type 1",                                                   u"Weekday(A2,1)",             "1"     },
                             {"type 2 begins on Monday",                                  u"Weekday(Date(2001,3,5),2)", "1"     },
                             {"and ends on Sunday",                                       u"Weekday(A2,2)",             "7"     },
                             {"type 3 begins with 0 on Monday",                           u"Weekday(Date(2001,3,5),3)", "0"     },
                             {"and ends with 6 on Sunday",                                u"Weekday(A2,3)",             "6"     },
                             {"with 5 on Saturday",                                       u"Weekday(0,3)",              "5"     },
                             {"any other type counts from Sunday",                        u"Weekday(A2,4)",             "1"     },
                             {"0 too",                                                    u"Weekday(A2,0)",             "1"     },
                             {"a type that is not whole too",                             u"Weekday(A2,2.5)",           "1"     },
                             {"a blank type too",                                         u"Weekday(A2,A6)",            "1"     },
                             {"a type as text",                                           uR"(Weekday(A2,"2"))",        "7"     },
                             {"a logical type",                                           u"Weekday(A2,TRUE)",          "1"     },
                             {"a blank cell is a Saturday",                               u"Weekday(A6)",               "7"     },
                             {"a logical is the day behind it",                           u"Weekday(A5)",               "1"     },
                             {"a number",                                                 u"Weekday(A1)",               "7"     },
                             {"a text that reads as a number",                            u"Weekday(A3)",               "5"     },
                             {"a text that reads as a date is refused, unlike elsewhere",
                              uR"(Weekday("3/4/2001"))",                                                                "!!Val" },
                             {"a cell's too",                                             u"Weekday(A9)",               "!!Val" },
                             {"a word",                                                   u"Weekday(A4)",               "!!Val" },
                             {"a serial below 0 has its weekday",                         u"Weekday(-1)",               "6"     },
                             {"past the calendar",                                        u"Weekday(2958466)",          "!!Val" },
                             {"before it",                                                u"Weekday(-657435)",          "!!Val" },
                             {"what is no number",                                        u"Weekday(A10)",              "!!Val" },
                             {"an error",                                                 u"Weekday(A7,2)",             "!!Div0"},
                             {"the leftmost of two",                                      u"Weekday(NA(),1/0)",         "!!NA"  },
                             {"another sheet's date",                                     u"Weekday(Sheet2!A1)",        "5"     },
                             {"a range",                                                  u"Weekday(A1:A2)",            "!!Ref" },
    });
}

TEST_F(DateFunctions, nowAndTodayAreDatesOfTheClock)
{
    const CellValue now = cells.evaluate(u"Now()");
    EXPECT_EQ(now.tag, TagDateTime);
    EXPECT_NEAR(now.number(), serialOf(2001, 3, 4) + (5 * 3600 + 6 * 60 + 7) / SecondsOfDay, 1e-11);
    expectAnswers(cells, {
                             {"today has no time",           u"Today()",             dateAnswer(2001,  3, 4)},
                             {"the hour",                           u"Hour(Now())",                                                 "5"                                                       },
                             {"the minute",                          u"Minute(Now())","6"},
                             {"the second",                          u"Second(Now())",                                                 "7"                                                                                                        },
                             {"the day",                          u"Day(Now())","4"},
                             {"tomorrow is a date",                          u"Today()+1",                                                 dateAnswer(2001,                                                                                                                                               3, 5)},
                             {"an argument is one too many",              u"Now(1)","refused 18"},
                             {"an argument is one too many", u"Today(1)", "refused 18"                  },
    });
}

TEST(DateFunctionsByClock, nowIsWhatTheClockOfTheMachineSays)
{
    const TestDocument other(TestLocale, "1999-12-31T23:59:59");
    CellValue formula;
    ASSERT_TRUE(compileCellFormula(formula, {}, u"=Year(Now())*10000+Second(Now())"));
    evaluateFormulaCell(*formula.formula());
    EXPECT_EQ(describe(formula.formula()->result), "19990059");
    releaseValue(formula);
}

TEST_F(DateFunctions, datevalueIsThePlainNumberOfDays)
{
    expectAnswers(cells, {
                             {"a date",                        uR"(Datevalue("3/4/2001"))",         "36954" },
                             {"a date of this year",           uR"(Datevalue("3/4/"))",             "36954" },
                             {"a date and time",               uR"(Datevalue("3/4/2001 12:30"))",   "36954" },
                             {"a time has none",               uR"(Datevalue("12:30"))",            "0"     },
                             {"a date before day 0",           uR"(Datevalue("12/29/1899"))",       "-1"    },
                             {"it is cut toward zero",         uR"(Datevalue("12/29/1899 12:00"))", "-1"    },
                             {"a date in a cell, by its text", u"Datevalue(A2)",                    "36954" },
                             {"a text in a cell",              u"Datevalue(A9)",                    "36954" },
                             {"another sheet's date",          u"Datevalue(Sheet2!A1)",             "36286" },
                             {"a number",                      u"Datevalue(36954)",                 "!!Val" },
                             {"a text that reads as a number", u"Datevalue(A3)",                    "!!Val" },
                             {"a word",                        uR"(Datevalue("x"))",                "!!Val" },
                             {"a refused date",                uR"(Datevalue("2/30/2001"))",        "!!Val" },
                             {"a logical",                     u"Datevalue(A5)",                    "!!Val" },
                             {"a blank",                       u"Datevalue(A6)",                    "!!Val" },
                             {"the empty text",                u"Datevalue(A8)",                    "!!Val" },
                             {"a formula is not calculated",   u"Datevalue(\"=Today()\")",          "!!Val" },
                             {"nor complained of",             uR"(Datevalue("=1+"))",              "!!Val" },
                             {"an error",                      u"Datevalue(A7)",                    "!!Div0"},
                             {"a range",                       u"Datevalue(A1:A2)",                 "!!Ref" },
    });
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST_F(DateFunctions, timevalueIsThePlainFractionOfADay)
{
    const struct {
        const char* behaviour;
        std::u16string_view formula;
        double seconds;
    } cases[] = {
        {"a time",                    uR"(Timevalue("12:30"))",          45000},
        {"a time with seconds",       uR"(Timevalue("1:02:03"))",        3723 },
        {"in the afternoon",          uR"(Timevalue("1:30 pm"))",        48600},
        {"a date and time",           uR"(Timevalue("3/4/2001 12:30"))", 45000},
        {"a date has none",           uR"(Timevalue("3/4/2001"))",       0    },
        {"a date and time in a cell", u"Timevalue(A2)",                  45015},
        {"a text in a cell",          u"Timevalue(A9)",                  45015},
        {"another sheet's date",      u"Timevalue(Sheet2!A1)",           0    },
    };
    for (const auto& c : cases) {
        const CellValue value = cells.evaluate(c.formula);
        ASSERT_EQ(value.tag, TagNumber) << c.behaviour;
        EXPECT_NEAR(value.number(), c.seconds / SecondsOfDay, 1e-11) << c.behaviour;
    }
    expectAnswers(cells, {
                             {"a number",                      u"Timevalue(0.5)",        "!!Val" },
                             {"a text that reads as a number", u"Timevalue(A3)",         "!!Val" },
                             {"a word",                        u"Timevalue(A4)",         "!!Val" },
                             {"a refused time",                uR"(Timevalue("25:00"))", "!!Val" },
                             {"a logical",                     u"Timevalue(A5)",         "!!Val" },
                             {"a blank",                       u"Timevalue(A6)",         "!!Val" },
                             {"an error",                      u"Timevalue(A7)",         "!!Div0"},
                             {"a range",                       u"Timevalue(A1:A2)",      "!!Ref" },
    });
}

} // namespace
} // namespace vorn
