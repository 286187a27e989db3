#include "numfmt/locale.h"

#include "platform/platform.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// A locale that is made up.
class StubLocale : public LocaleSource {
public:
    LocaleSettings settings() override { return told; }
    std::u16string dateText(const LocalTime&, std::u16string_view) override { return {}; }
    std::u16string timeText(const LocalTime&, std::u16string_view) override { return {}; }

    LocaleSettings told;
};

class LoadLocale : public testing::Test {
protected:
    LoadLocale() { platform.localeSource = &locale; }

    TestPlatform machine;
    StubLocale locale;
    LocaleSettings& told = locale.told;
};

TEST_F(LoadLocale, makesTheDatePatternsFromOrderAndSeparator)
{
    const struct {
        DateOrder order;
        const char16_t *separator, *shortDate, *longDate;
    } cases[] = {
        {MonthFirst, u"/", u"M/d/yy", u"M/d/yyyy"},
        {DayFirst,   u"/", u"d/M/yy", u"d/M/yyyy"},
        {YearFirst,  u"/", u"yy/M/d", u"yyyy/M/d"},
        {MonthFirst, u".", u"M.d.yy", u"M.d.yyyy"},
        {DayFirst,   u".", u"d.M.yy", u"d.M.yyyy"},
        {YearFirst,  u"-", u"yy-M-d", u"yyyy-M-d"},
    };
    for (const auto& c : cases) {
        told.dateOrder = c.order;
        told.dateSeparator = c.separator;
        loadLocale();
        EXPECT_EQ(localeInfo.shortDate, c.shortDate);
        EXPECT_EQ(localeInfo.longDate, c.longDate);
        EXPECT_EQ(localeInfo.dateOrder, c.order);
    }
}

TEST_F(LoadLocale, keepsTheHyphensBetweenMonthNames)
{
    told.dateSeparator = u".";
    told.timeSeparator = u".";
    loadLocale();
    EXPECT_EQ(localeInfo.dayMonthYear, u"d-MMM-yy");
    EXPECT_EQ(localeInfo.dayMonth, u"d-MMM");
    EXPECT_EQ(localeInfo.monthYear, u"MMM-yy");
}

TEST_F(LoadLocale, makesTheTimePatternsFromTheSeparator)
{
    loadLocale();
    EXPECT_EQ(localeInfo.time12, u"h:mm tt");
    EXPECT_EQ(localeInfo.time24, u"H:mm");
    EXPECT_EQ(localeInfo.time12Seconds, u"h:mm:ss tt");
    EXPECT_EQ(localeInfo.time24Seconds, u"H:mm:ss");
    told.timeSeparator = u".";
    told.clock24 = true;
    loadLocale();
    EXPECT_EQ(localeInfo.time12, u"h.mm tt");
    EXPECT_EQ(localeInfo.time24, u"H.mm") << "the clock decides nothing here";
    EXPECT_EQ(localeInfo.time12Seconds, u"h.mm.ss tt");
    EXPECT_EQ(localeInfo.time24Seconds, u"H.mm.ss");
    EXPECT_TRUE(localeInfo.clock24);
}

TEST_F(LoadLocale, keepsTheFirstCharacterOfASeparator)
{
    told.decimal = u"·x";
    told.list = u"; ";
    told.thousands = u"' ";
    told.dateSeparator = u". ";
    told.timeSeparator = u":x";
    loadLocale();
    EXPECT_EQ(localeInfo.decimal, u'·');
    EXPECT_EQ(localeInfo.list, u';');
    EXPECT_EQ(localeInfo.thousands, u'\'');
    EXPECT_EQ(localeInfo.dateSeparator, u'.');
    EXPECT_EQ(localeInfo.timeSeparator, u':');
    EXPECT_EQ(localeInfo.runtimeDecimal, u'.');
}

TEST_F(LoadLocale, doesWithoutASeparatorThatIsNot)
{
    told.decimal = u"";
    told.list = u"";
    told.thousands = u"";
    told.dateSeparator = u"";
    told.timeSeparator = u"";
    loadLocale();
    EXPECT_EQ(localeInfo.decimal, u'.');
    EXPECT_EQ(localeInfo.list, u',');
    EXPECT_EQ(localeInfo.thousands, u'\0') << "there is none";
    EXPECT_EQ(localeInfo.shortDate, u"M/d/yy");
    EXPECT_EQ(localeInfo.time24, u"H:mm");
}

TEST_F(LoadLocale, cutsLongTexts)
{
    told.currency = u"abcdefgh";
    told.am = u"ante meridiem, in full";
    told.pm = u"1234567890123456";
    loadLocale();
    EXPECT_EQ(localeInfo.currency, u"abcde");
    EXPECT_EQ(localeInfo.am, u"ante meridiem, ");
    EXPECT_EQ(localeInfo.pm, u"123456789012345");
    told.currency = u"12345";
    loadLocale();
    EXPECT_EQ(localeInfo.currency, u"12345");
}

TEST_F(LoadLocale, takesOverTheRestAsItIs)
{
    told.longDateOrder = YearFirst;
    told.currencyPosition = 3;
    told.negativeCurrency = 15;
    told.am = u"fm";
    told.pm = u"em";
    loadLocale();
    EXPECT_EQ(localeInfo.longDateOrder, YearFirst);
    EXPECT_EQ(localeInfo.currencyPosition, 3);
    EXPECT_EQ(localeInfo.negativeCurrency, 15);
    EXPECT_EQ(localeInfo.am, u"fm");
    EXPECT_EQ(localeInfo.pm, u"em");
}

TEST(LocaleInfo, isTheMachinesLocale)
{
    const TestPlatform german("de_DE");
    EXPECT_EQ(localeInfo.decimal, u',');
    EXPECT_EQ(localeInfo.list, u';');
    EXPECT_EQ(localeInfo.shortDate, u"d.M.yy");
    EXPECT_EQ(localeInfo.currency, u"€");
    {
        const TestPlatform american;
        EXPECT_EQ(localeInfo.shortDate, u"M/d/yy");
    }
    EXPECT_EQ(localeInfo.shortDate, u"d.M.yy") << "a test leaves it as it was";
}

} // namespace
} // namespace vorn
