// Numbers, dates and times as the lexer reads them. The clock of a test stands in March 2001.
#include "formula/lexer.h"

#include "core/error.h"
#include "numfmt/locale.h"
#include "support/testplatform.h"
#include "support/tokentext.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

struct TokenRow {
    const char* behaviour;
    std::u16string_view text;
    const char* tokens;
};

template <std::size_t count>
void expectTokens(const TokenRow (&rows)[count])
{
    for (const TokenRow& row : rows)
        EXPECT_EQ(tokenText(row.text), row.tokens) << row.behaviour;
}

TEST(LexerNumber, readsNumbers)
{
    const TestDocument document;
    expectTokens({
        {"a whole number",                   u"12",     "12 ."              },
        {"a fraction",                       u"1.5",    "1.5 ."             },
        {"a point in front",                 u".5",     "0.5 ."             },
        {"a point behind",                   u"5.",     "5 ."               },
        {"an exponent",                      u"1e3",    "1000 ."            },
        {"a small one",                      u"1E-2",   "0.01 ."            },
        {"too small to tell from nothing",   u"1e-400", "0 ."               },
        {"too large",                        u"1e999",  "!3"                },
        {"an e without digits is a word",    u"1e",     "1 ?e ."            },
        {"a letter ends the number",         u"2x",     "2 ?x ."            },
        {"no hexadecimal numbers",           u"0x10",   "0 cell:0009/c017 ."},
        {"a second point is none",           u"1.2.3",  "1.2 0.3 ."         },
        {"a lone point",                     u".",      "!2"                },
        {"two points",                       u"..",     "!2"                },
        {"a point before a word",            u".a",     "!2"                },
        {"digits of other scripts are none", u"\u0661", "!2"                },
    });
}

TEST(LexerNumber, readsLongRunsOfDigits)
{
    const TestDocument document;
    EXPECT_EQ(tokenText(u"1" + std::u16string(308, u'0')), "1e+308 .");
    EXPECT_EQ(tokenText(u"1" + std::u16string(309, u'0')), "!3");
    EXPECT_EQ(tokenText(std::u16string(100000, u'9')), "!3");
    EXPECT_EQ(tokenText(u"0." + std::u16string(100000, u'3')), "0.333333333333333 .");
    EXPECT_EQ(tokenText(std::u16string(100000, u'0') + u"5"), "5 .");
}

TEST(LexerNumber, takesTheDecimalSeparatorOfTheLocale)
{
    const TestDocument document("de_DE");
    ASSERT_EQ(localeInfo.decimal, u',');
    ASSERT_EQ(localeInfo.dateSeparator, u'.');
    expectTokens({
        {"the decimal separator",                u"1,5",        "1.5 ."       },
        {"the list separator",                   u"1;2",        "1 ; 2 ."     },
        {"a point means nothing in a number",    u"1.5",        "1 !2"        },
        {"but it separates the parts of a date", u"31.12.1999", "date:36525 ."},
        {"a point behind a fraction",            u"1,5.2",      "1.5 !2"      },
    });
}

TEST(LexerNumber, readsDates)
{
    const TestDocument document;
    expectTokens({
        {"month, day, year",                          u"1/2/2000",   "date:36527 ."    },
        {"leading zeros",                             u"01/02/2000", "date:36527 ."    },
        {"a year of two digits below 30",             u"1/1/29",     "date:47119 ."    },
        {"and from 30 on",                            u"1/1/30",     "date:10959 ."    },
        {"a year of one digit",                       u"1/1/0",      "date:36526 ."    },
        {"the last year of two digits",               u"1/1/99",     "date:36161 ."    },
        {"a year of three digits is taken as it is",  u"1/1/100",    "date:-657434 ."  },
        {"a date before the zero of the calendar",    u"1/1/1850",   "date:-18260 ."   },
        {"the last day",                              u"12/31/9999", "date:2958465 ."  },
        {"a leap day",                                u"2/29/2000",  "date:36585 ."    },
        {"no year is the present one",                u"3/4/",       "date:36954 ."    },
        {"also before another token",                 u"3/4/+1",     "date:36954 + 1 ."},
        {"blanks behind it",                          u"3/4/   +1",  "date:36954 + 1 ."},
        {"a number behind it",                        u"1/2/2000 7", "date:36527 7 ."  },
        {"one separator is a division",               u"3/4",        "3 / 4 ."         },
        {"so it is before a blank",                   u"3/4 /5",     "3 / 4 / 5 ."     },
        {"so it is without digits",                   u"3/a/4",      "3 / ?a / 4 ."    },
        {"one separator at the end",                  u"3/",         "3 / ."           },
        {"two in a row",                              u"3//4",       "3 / / 4 ."       },
        {"three numbers are a date and no divisions", u"1/2/3",      "date:37623 ."    },
        {"the fourth is a division",                  u"1/2/3/4",    "date:37623 / 4 ."},
        {"a fraction begins no date",                 u"1.5/2/3",    "1.5 / 2 / 3 ."   },
    });
}

TEST(LexerNumber, refusesWhatIsNotInTheCalendar)
{
    const TestDocument document;
    expectTokens({
        {"a month above 12",               u"31/12/1999",                  "!32"},
        {"a month of zero",                u"0/1/2000",                    "!32"},
        {"a day of zero",                  u"1/0/2000",                    "!32"},
        {"a day past the month's end",     u"4/31/2000",                   "!32"},
        {"a leap day of a common year",    u"2/29/2001",                   "!32"},
        {"1900 is no leap year",           u"2/29/1900",                   "!32"},
        {"a year above 9,999",             u"1/1/10000",                   "!32"},
        {"a year of many digits",          u"1/1/99999999999999999999",    "!32"},
        {"a month of many digits",         u"99999999999999999999/1/2000", "!32"},
        {"an hour above 23",               u"24:00",                       "!32"},
        {"a minute above 59",              u"1:60",                        "!32"},
        {"a second above 59",              u"1:00:60",                     "!32"},
        {"an hour of many digits",         u"99999999999999999999:00",     "!32"},
        {"a minute of many digits",        u"1:99999999999999999999",      "!32"},
        {"a second of many digits",        u"1:1:99999999999999999999",    "!32"},
        {"an hour of 13 in the afternoon", u"13:00 pm",                    "!32"},
        {"no minutes",                     u"12:",                         "!32"},
        {"a blank for minutes",            u"12: 30",                      "!32"},
        {"no seconds",                     u"12:30:",                      "!32"},
        {"no minutes behind a date",       u"1/2/2000 12:",                "!32"},
    });
}

TEST(LexerNumber, readsTimes)
{
    const TestDocument document;
    expectTokens({
        {"hours and minutes",                      u"12:30",            "date:0.520833333333 ."       },
        {"with seconds",                           u"12:30:30",         "date:0.521180555556 ."       },
        {"midnight",                               u"0:00",             "date:0 ."                    },
        {"the last second",                        u"23:59:59",         "date:0.999988425926 ."       },
        {"one digit each",                         u"1:2:3",            "date:0.0430902777778 ."      },
        {"noon with a designator",                 u"12:30 pm",         "date:0.520833333333 ."       },
        {"the hour behind midnight",               u"12:30 am",         "date:0.0208333333333 ."      },
        {"the afternoon",                          u"1:30 pm",          "date:0.5625 ."               },
        {"in any case and without a blank",        u"1:30PM",           "date:0.5625 ."               },
        {"the morning",                            u"1:30 am",          "date:0.0625 ."               },
        {"an hour of zero in the afternoon",       u"0:30 pm",          "date:0.520833333333 ."       },
        {"a longer word is no designator",         u"1:30 pmx",         "date:0.0625 ?pmx ."          },
        {"nor is one with dots here",              u"1:30 p.m.",        "date:0.0625 ?p !2"           },
        {"a cell behind a time",                   u"1:30 A1",          "date:0.0625 cell:0000/c000 ."},
        {"a date and a time",                      u"1/2/2000 12:30",   "date:36527.5208333 ."        },
        {"with a designator",                      u"1/2/2000 1:30 pm", "date:36527.5625 ."           },
        {"without a year",                         u"3/4/ 12:00",       "date:36954.5 ."              },
        {"a time before the zero of the calendar", u"12/29/1899 12:00", "date:-1.5 ."                 },
    });
}

TEST(LexerNumber, remembersWhatItSaw)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        std::u16string_view text;
        bool date, time, designator, seconds;
    } cases[] = {
        {"a date",                   u"1/2/2000",             true,  false, false, false},
        {"a date and a number",      u"1/2/2000 5",           true,  false, false, false},
        {"a time",                   u"12:30",                false, true,  false, false},
        {"a time with a designator", u"12:30 pm",             false, true,  true,  false},
        {"a time with seconds",      u"12:30:15",             false, true,  false, true },
        {"a time with both",         u"12:30:15 am",          false, true,  true,  true },
        {"a date and a time",        u"1/2/2000 12:30",       true,  true,  false, false},
        {"all of it",                u"1/2/2000 12:30:15 pm", true,  true,  true,  true },
    };
    FormulaLexer lexer;
    for (const auto& c : cases) {
        lexer.reset(c.text, {});
        lexer.next();
        EXPECT_EQ(lexer.kind, TokenDate) << c.behaviour;
        EXPECT_EQ(lexer.dateSeen, c.date) << c.behaviour;
        EXPECT_EQ(lexer.timeSeen, c.time) << c.behaviour;
        EXPECT_EQ(lexer.designatorSeen, c.designator) << c.behaviour;
        EXPECT_EQ(lexer.secondsSeen, c.seconds) << c.behaviour;
    }
}

TEST(LexerNumber, takesTheOrderOfTheLocale)
{
    const TestDocument document;
    localeInfo.dateOrder = DayFirst;
    EXPECT_EQ(tokenText(u"31/12/1999"), "date:36525 .");
    EXPECT_EQ(tokenText(u"12/31/1999"), "!32");
    EXPECT_EQ(tokenText(u"4/3/"), "date:36954 .");
    // A date cannot be typed with its year in front; the two others are then as in America.
    localeInfo.dateOrder = YearFirst;
    EXPECT_EQ(tokenText(u"12/31/1999"), "date:36525 .");
    EXPECT_EQ(tokenText(u"1999/12/31"), "!32");
}

TEST(LexerNumber, takesTheSeparatorsOfTheLocale)
{
    const TestDocument document;
    localeInfo.dateSeparator = u'-';
    localeInfo.timeSeparator = u'.';
    localeInfo.decimal = u',';
    localeInfo.list = u';';
    expectTokens({
        {"subtractions that look like a date are one", u"10-2-3",  "date:37896 ."         },
        {"one subtraction is none",                    u"10-2",    "10 - 2 ."             },
        {"blanks keep them apart",                     u"10 -2-3", "10 - 2 - 3 ."         },
        {"the slash is a division",                    u"1/2/3",   "1 / 2 / 3 ."          },
        {"a point separates a time",                   u"12.30",   "date:0.520833333333 ."},
        {"the colon does not",                         u"12:30",   "12 !2"                },
        {"a comma is in a number",                     u"12,5",    "12.5 ."               },
        {"a comma in front of it",                     u",5",      "0.5 ."                },
    });
}

TEST(LexerNumber, takesTheDesignatorsOfTheLocale)
{
    const TestDocument document;
    localeInfo.am = u"a.m.";
    localeInfo.pm = u"p.m.";
    EXPECT_EQ(tokenText(u"1:30 p.m."), "date:0.5625 .");
    EXPECT_EQ(tokenText(u"1:30 P.M."), "date:0.5625 .");
    EXPECT_EQ(tokenText(u"1:30 pm"), "date:0.0625 ?pm .");
    localeInfo.am.clear();
    localeInfo.pm.clear();
    EXPECT_EQ(tokenText(u"1:30 "), "date:0.0625 .");
    EXPECT_EQ(tokenText(u"1:30 am"), "date:0.0625 ?am .");
    // Letters above 127 end the word, so such a designator is never found.
    localeInfo.pm = u"\u5348\u5f8c";
    EXPECT_EQ(tokenText(u"1:30 \u5348\u5f8c"), "date:0.0625 !2");
}

TEST(LexerNumber, takesThePresentYearFromTheClock)
{
    const TestDocument document("en_US", "1995-06-01T00:00:00");
    EXPECT_EQ(tokenText(u"1/1/"), "date:34700 .");
}

} // namespace
} // namespace vorn
