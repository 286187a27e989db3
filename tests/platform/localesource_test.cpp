#include "platform/icu/localesource.h"

#include "support/environment.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(IcuLocaleSource, tellsNumbersDatesAndTimesOfALocale)
{
    const struct {
        const char* locale;
        const char16_t *decimal, *list, *thousands, *dateSeparator, *timeSeparator;
        bool clock24;
        DateOrder order, longOrder;
        const char16_t *am, *pm;
    } cases[] = {
        {"en_US", u".", u",", u",",      u"/", u":", false, MonthFirst, MonthFirst, u"AM",     u"PM"    },
        {"en_GB", u".", u",", u",",      u"/", u":", true,  DayFirst,   DayFirst,   u"am",     u"pm"    },
        {"de_DE", u",", u";", u".",      u".", u":", true,  DayFirst,   DayFirst,   u"AM",     u"PM"    },
        {"fr_FR", u",", u";", u"\u202f", u"/", u":", true,  DayFirst,   DayFirst,   u"AM",     u"PM"    },
        {"da_DK", u",", u";", u".",      u".", u".", true,  DayFirst,   DayFirst,   u"AM",     u"PM"    },
        {"sv_SE", u",", u";", u"\u00a0", u"-", u":", true,  YearFirst,  DayFirst,   u"fm",     u"em"    },
        {"nl_NL", u",", u";", u".",      u"-", u":", true,  DayFirst,   DayFirst,   u"a.m.",   u"p.m."  },
        {"ja_JP", u".", u",", u",",      u"/", u":", true,  YearFirst,  YearFirst,  u"午前", u"午後"},
        {"ko_KR", u".", u",", u",",      u".", u":", false, YearFirst,  YearFirst,  u"오전", u"오후"},
        {"de_CH", u".", u",", u"’",    u".", u":", true,  DayFirst,   DayFirst,   u"AM",     u"PM"    },
    };
    for (const auto& c : cases) {
        const LocaleSettings settings = IcuLocaleSource(c.locale).settings();
        EXPECT_EQ(settings.decimal, c.decimal) << c.locale;
        EXPECT_EQ(settings.list, c.list) << c.locale;
        EXPECT_EQ(settings.thousands, c.thousands) << c.locale;
        EXPECT_EQ(settings.dateSeparator, c.dateSeparator) << c.locale;
        EXPECT_EQ(settings.timeSeparator, c.timeSeparator) << c.locale;
        EXPECT_EQ(settings.clock24, c.clock24) << c.locale;
        EXPECT_EQ(settings.dateOrder, c.order) << c.locale;
        EXPECT_EQ(settings.longDateOrder, c.longOrder) << c.locale;
        EXPECT_EQ(settings.am, c.am) << c.locale;
        EXPECT_EQ(settings.pm, c.pm) << c.locale;
    }
}

TEST(IcuLocaleSource, tellsWhereTheCurrencyStands)
{
    const struct {
        const char* locale;
        const char16_t* currency;
        int position, negative;
    } cases[] = {
        {"en_US", u"$",   0, 0 },
        {"tr_TR", u"₺", 0, 1 },
        {"nl_NL", u"€", 2, 14},
        {"pt_BR", u"R$",  2, 9 },
        {"de_DE", u"€", 3, 8 },
        {"fr_FR", u"€", 3, 15},
        {"da_DK", u"kr.", 3, 8 },
        {"ja_JP", u"￥", 0, 0 },
    };
    for (const auto& c : cases) {
        const LocaleSettings settings = IcuLocaleSource(c.locale).settings();
        EXPECT_EQ(settings.currency, c.currency) << c.locale;
        EXPECT_EQ(settings.currencyPosition, c.position) << c.locale;
        EXPECT_EQ(settings.negativeCurrency, c.negative) << c.locale;
    }
}

TEST(IcuLocaleSource, keepsToTheGregorianCalendarAndLatinDigits)
{
    for (const char* locale : {"ar_EG", "fa_IR", "th_TH", "hi_IN"}) {
        IcuLocaleSource source(locale);
        const LocaleSettings settings = source.settings();
        EXPECT_EQ(settings.decimal, u".") << locale;
        EXPECT_EQ(settings.thousands, u",") << locale;
        LocalTime time;
        time.year = 2001;
        EXPECT_EQ(source.dateText(time, u"d/M/yyyy"), u"30/12/2001") << locale;
    }
}

TEST(IcuLocaleSource, fallsBackToAmericanEnglish)
{
    const struct {
        const char* behaviour;
        const char* name;
    } cases[] = {
        {"the portable locale",       "C"                                           },
        {"with a character set",      "C.UTF-8"                                     },
        {"under its other name",      "POSIX"                                       },
        {"a language that is not",    "xx_YY"                                       },
        {"no name at all",            "nonsense"                                    },
        {"what looks like a path",    "../../etc/passwd"                            },
        {"a name too long to be one", "de_DE_de_DE_de_DE_de_DE_de_DE_de_DE_de_DE_de"},
        {"nothing but a modifier",    "@euro"                                       },
        {"nothing but separators",    "___"                                         },
    };
    for (const auto& c : cases) {
        const LocaleSettings settings = IcuLocaleSource(c.name).settings();
        EXPECT_EQ(settings.decimal, u".") << c.behaviour;
        EXPECT_EQ(settings.currency, u"$") << c.behaviour;
        EXPECT_EQ(settings.dateOrder, MonthFirst) << c.behaviour;
        EXPECT_FALSE(settings.clock24) << c.behaviour;
    }
}

TEST(IcuLocaleSource, takesALanguageWithoutRegionAndANameWithCharacterSet)
{
    for (const char* name : {"de", "de_DE.UTF-8", "de_DE@euro", "de_DE.ISO-8859-15@euro"}) {
        const LocaleSettings settings = IcuLocaleSource(name).settings();
        EXPECT_EQ(settings.decimal, u",") << name;
        EXPECT_EQ(settings.currency, u"€") << name;
        EXPECT_EQ(settings.currencyPosition, 3) << name;
    }
}

TEST(IcuLocaleSource, asksTheEnvironmentForEachOfItsThreeSubjects)
{
    const EnvironmentVariable all("LC_ALL", nullptr);
    const EnvironmentVariable language("LANG", "en_GB.UTF-8");
    const EnvironmentVariable numeric("LC_NUMERIC", "de_DE.UTF-8");
    const EnvironmentVariable monetary("LC_MONETARY", "");
    const EnvironmentVariable time("LC_TIME", "sv_SE.UTF-8");
    const LocaleSettings mixed = IcuLocaleSource().settings();
    EXPECT_EQ(mixed.decimal, u",") << "the variable of the numbers";
    EXPECT_EQ(mixed.currency, u"£") << "an empty variable leaves it to LANG";
    EXPECT_EQ(mixed.dateSeparator, u"-") << "the variable of the times";

    const EnvironmentVariable over("LC_ALL", "fr_FR.UTF-8");
    const LocaleSettings french = IcuLocaleSource().settings();
    EXPECT_EQ(french.currency, u"€") << "LC_ALL beats all three";
    EXPECT_EQ(french.dateSeparator, u"/");
    EXPECT_EQ(french.thousands, u"\u202f");
}

TEST(IcuLocaleSource, isAmericanInAnEnvironmentThatSaysNothing)
{
    const EnvironmentVariable all("LC_ALL", nullptr);
    const EnvironmentVariable language("LANG", nullptr);
    const EnvironmentVariable numeric("LC_NUMERIC", nullptr);
    const EnvironmentVariable monetary("LC_MONETARY", nullptr);
    const EnvironmentVariable time("LC_TIME", nullptr);
    EXPECT_EQ(IcuLocaleSource().settings().currency, u"$");
}

LocalTime afternoon()
{
    LocalTime time;
    time.year = 2001;
    time.month = 3;
    time.day = 4;
    time.hour = 15;
    time.minute = 6;
    time.second = 7;
    return time;
}

TEST(IcuLocaleSource, writesDatesByPattern)
{
    const struct {
        const char *behaviour, *locale;
        const char16_t *pattern, *text;
    } cases[] = {
        {"numbers without padding",                 "en_US", u"M/d/yy",     u"3/4/01"       },
        {"numbers with padding",                    "en_US", u"MM/dd/yyyy", u"03/04/2001"   },
        {"a month's short name",                    "en_US", u"d-MMM-yy",   u"4-Mar-01"     },
        {"a month's name",                          "en_US", u"MMMM d",     u"March 4"      },
        {"nothing",                                 "en_US", u"",           u""             },
        {"signs and letters of no meaning",         "en_US", u"[Q] d.",     u"[Q] 4."       },
        {"a month in German",                       "de_DE", u"d-MMM-yy",   u"4-März-01"   },
        {"a month that is declined with its day",   "ru_RU", u"d MMMM",     u"4 марта" },
        {"and is not without",                      "ru_RU", u"MMMM yyyy",  u"март 2001"},
        {"a month in Japanese",                     "ja_JP", u"MMM-yy",     u"3月-01"      },
        {"the separators are those of the pattern", "de_DE", u"yyyy-M-d",   u"2001-3-4"     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(IcuLocaleSource(c.locale).dateText(afternoon(), c.pattern), c.text)
            << c.behaviour;
}

TEST(IcuLocaleSource, namesEveryMonth)
{
    IcuLocaleSource source("en_US");
    const char16_t* names[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                               u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    LocalTime time;
    for (int month = 1; month <= 12; ++month) {
        time.month = month;
        EXPECT_EQ(source.dateText(time, u"MMM"), names[month - 1]);
    }
}

TEST(IcuLocaleSource, writesEarlyAndLateYears)
{
    IcuLocaleSource source("en_US");
    LocalTime time = afternoon();
    time.year = 100;
    EXPECT_EQ(source.dateText(time, u"M/d/yy"), u"3/4/00");
    EXPECT_EQ(source.dateText(time, u"M/d/yyyy"), u"3/4/0100");
    time.year = 9999;
    EXPECT_EQ(source.dateText(time, u"M/d/yyyy"), u"3/4/9999");
}

TEST(IcuLocaleSource, writesTimesByPattern)
{
    IcuLocaleSource source("en_US");
    LocalTime time = afternoon();
    EXPECT_EQ(source.timeText(time, u"h:mm tt"), u"3:06 PM");
    EXPECT_EQ(source.timeText(time, u"hh:mm:ss tt"), u"03:06:07 PM");
    EXPECT_EQ(source.timeText(time, u"H:mm:ss"), u"15:06:07");
    EXPECT_EQ(source.timeText(time, u"H.m.s"), u"15.6.7");
    EXPECT_EQ(source.timeText(time, u""), u"");
    const struct {
        int hour;
        const char16_t *twelve, *twentyFour;
    } hours[] = {
        {0,  u"12 AM", u"00"},
        {1,  u"1 AM",  u"01"},
        {11, u"11 AM", u"11"},
        {12, u"12 PM", u"12"},
        {13, u"1 PM",  u"13"},
        {23, u"11 PM", u"23"},
    };
    for (const auto& c : hours) {
        time.hour = c.hour;
        EXPECT_EQ(source.timeText(time, u"h tt"), c.twelve) << c.hour;
        EXPECT_EQ(source.timeText(time, u"HH"), c.twentyFour) << c.hour;
    }
    EXPECT_EQ(IcuLocaleSource("ja_JP").timeText(time, u"h:mm tt"), u"11:06 午後");
}

} // namespace
} // namespace vorn
