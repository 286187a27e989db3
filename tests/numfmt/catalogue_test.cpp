#include "numfmt/catalogue.h"

#include "core/error.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/workbook.h"
#include "numfmt/locale.h"
#include "numfmt/render.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::u16string rendered(double number, int format)
{
    std::u16string text;
    renderValue(CellValue::makeNumber(number), format, 0, text, nullptr);
    return text;
}

// "prefix1suffix|prefix-1suffix" of a number format, as far as affixes go.
std::u16string affixes(const NumberFormat& format)
{
    return std::u16string(formatString(format.positivePrefix)) + u"#" +
           std::u16string(formatString(format.positiveSuffix)) + u"|" +
           std::u16string(formatString(format.negativePrefix)) + u"#" +
           std::u16string(formatString(format.negativeSuffix));
}

TEST(BuildFormats, makesTheNumberFormats)
{
    const TestDocument document;
    const struct {
        int index, general, decimals, percent, thousands;
        const char16_t* affixes;
    } cases[] = {
        {0, 1, 0, 0, 0, u"#|#"    },
        {1, 0, 0, 0, 0, u"#|-#"   },
        {2, 0, 2, 0, 0, u"#|-#"   },
        {3, 0, 0, 0, 1, u"$#|($#)"},
        {4, 0, 2, 0, 1, u"$#|($#)"},
        {5, 0, 2, 1, 0, u"#%|-#%" },
    };
    for (const auto& c : cases) {
        const NumberFormat& format = workbook->formats[c.index];
        EXPECT_EQ(format.kind, FormatNumber) << c.index;
        EXPECT_EQ(format.general, c.general) << c.index;
        EXPECT_EQ(format.decimals, c.decimals) << c.index;
        EXPECT_EQ(format.percent, c.percent) << c.index;
        EXPECT_EQ(format.thousands, c.thousands) << c.index;
        EXPECT_EQ(affixes(format), c.affixes) << c.index;
        EXPECT_EQ(format.datePattern, nullptr) << c.index;
        EXPECT_EQ(format.timePattern, nullptr) << c.index;
    }
}

TEST(BuildFormats, makesTheDateFormatsAndTheTextFormat)
{
    const TestDocument document("de_DE");
    const struct {
        int index;
        const char16_t *date, *time;
    } cases[] = {
        {FormatIndexShortDate,     u"d.M.yy",   u""          },
        {7,                        u"d-MMM-yy", u""          },
        {8,                        u"d-MMM",    u""          },
        {9,                        u"MMM-yy",   u""          },
        {FormatIndexTime12,        u"",         u"h:mm tt"   },
        {FormatIndexTime24,        u"",         u"H:mm"      },
        {FormatIndexTime12Seconds, u"",         u"h:mm:ss tt"},
        {FormatIndexTime24Seconds, u"",         u"H:mm:ss"   },
        {FormatIndexDateTime,      u"d.M.yy",   u"H:mm"      },
    };
    for (const auto& c : cases) {
        const NumberFormat& format = workbook->formats[c.index];
        EXPECT_EQ(format.kind, FormatDate) << c.index;
        EXPECT_EQ(format.general, 0) << c.index;
        EXPECT_EQ(formatString(format.datePattern), c.date) << c.index;
        EXPECT_EQ(formatString(format.timePattern), c.time) << c.index;
        EXPECT_EQ(format.datePattern == nullptr, *c.date == 0) << c.index;
    }
    EXPECT_EQ(workbook->formats[FormatIndexText].kind, FormatText);
    EXPECT_EQ(workbook->formats.size(), 16);
    EXPECT_EQ(workbook->lastBuiltInFormat, 15);
}

TEST(BuildFormats, placesTheCurrencyAsTheLocaleDoes)
{
    const struct {
        const char* behaviour;
        int position, negative;
        const char16_t* affixes;
    } cases[] = {
        {"in front, parentheses",                        0, 0,  u"C#|(C#)"  },
        {"in front, another form of parentheses",        0, 14, u"C#|(C#)"  },
        {"in front, a minus that keeps the parenthesis", 0, 1,  u"C#|-C#)"  },
        {"in front with a blank, parentheses",           2, 14, u"C #|(C #)"},
        {"in front with a blank, a minus",               2, 9,  u"C #|-C #)"},
        {"behind, parentheses",                          1, 4,  u"#C|(#C)"  },
        {"behind, a minus",                              1, 5,  u"#C|-#C"   },
        {"behind with a blank, parentheses",             3, 15, u"# C|(# C)"},
        {"behind with a blank, a minus",                 3, 8,  u"# C|-# C" },
        {"any other negative form is a minus",           1, 3,  u"#C|-#C"   },
    };
    const TestDocument document;
    for (const auto& c : cases) {
        localeInfo.currency = u"C";
        localeInfo.currencyPosition = c.position;
        localeInfo.negativeCurrency = c.negative;
        GrowArray<NumberFormat> formats;
        buildFormats(formats);
        EXPECT_EQ(affixes(formats[3]), c.affixes) << c.behaviour;
        EXPECT_EQ(affixes(formats[4]), c.affixes) << c.behaviour;
        for (NumberFormat& format : formats)
            freeFormatStrings(format);
    }
}

TEST(BuildFormats, rendersCurrenciesOfSeveralLocales)
{
    const struct {
        const char* locale;
        const char16_t *positive, *negative;
    } cases[] = {
        {"en_US", u"$1,234",         u"($1,234)"        },
        {"de_DE", u"1.234 €",      u"-1.234 €"      },
        {"fr_FR", u"1\u202f234 €", u"(1\u202f234 €)"},
        {"nl_NL", u"€ 1.234",      u"(€ 1.234)"     },
        {"pt_BR", u"R$ 1.234",       u"-R$ 1.234)"      },
        {"ja_JP", u"￥1,234",       u"(￥1,234)"      },
    };
    for (const auto& c : cases) {
        const TestDocument document(c.locale);
        EXPECT_EQ(rendered(1234, 3), c.positive) << c.locale;
        EXPECT_EQ(rendered(-1234, 3), c.negative) << c.locale;
    }
}

TEST(MakeNumberFormat, multipliesForAPercentSignInAnyAffix)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        const char16_t* affixes[4];
        int percent;
    } cases[] = {
        {"none",            {u"", u"", u"", u""},     0},
        {"positive prefix", {u"%", u"", u"", u""},    1},
        {"positive suffix", {u"", u" % ", u"", u""},  1},
        {"negative prefix", {u"", u"", u"-%", u""},   1},
        {"negative suffix", {u"", u"", u"", u"100%"}, 1},
    };
    for (const auto& c : cases) {
        NumberFormat format;
        makeNumberFormat(format, false, false, 0, c.affixes[0], c.affixes[1], c.affixes[2],
                         c.affixes[3]);
        EXPECT_EQ(format.percent, c.percent) << c.behaviour;
        freeFormatStrings(format);
    }
}

TEST(MakeNumberFormat, takesAnEmptyAffixForNone)
{
    const TestDocument document;
    NumberFormat format;
    makeNumberFormat(format, false, true, 9, u"", u"x", u"", u"");
    EXPECT_EQ(format.positivePrefix, nullptr);
    EXPECT_EQ(formatString(format.positivePrefix), u"");
    EXPECT_EQ(formatString(format.positiveSuffix), u"x");
    EXPECT_EQ(format.decimals, 9);
    EXPECT_EQ(format.thousands, 1);
    freeFormatStrings(format);
    EXPECT_EQ(format.positiveSuffix, nullptr);
}

TEST(EqualFormats, comparesWhatIsSeen)
{
    const TestDocument document;
    const auto number = [](int decimals, std::u16string_view prefix) {
        NumberFormat format;
        makeNumberFormat(format, false, false, decimals, prefix, u"", u"-", u"");
        return format;
    };
    const auto date = [](std::u16string_view datePattern, std::u16string_view timePattern) {
        NumberFormat format;
        makeDateFormat(format, datePattern, timePattern);
        return format;
    };
    NumberFormat text;
    makeTextFormat(text);
    NumberFormat general;
    makeNumberFormat(general, true, false, 0, u"", u"", u"", u"");
    NumberFormat saved = number(2, u"a");
    saved.fileIndex = 99;
    const struct {
        const char* behaviour;
        NumberFormat a, b;
        bool equal;
    } cases[] = {
        {"the same", number(2,  u"a"),          number(2,        u"a"),true},
        {"other decimals",          number(2,    u"a"), number(3,        u"a"),false},
        {"another affix",     number(2,              u"a"),              number(2,                 u"b"),false},
        {"an affix and none",     number(2,         u"a"),                       number(2,    u""),false},
        {"the number in a file does not count",  number(2,       u"a"),saved,      true},
        {"General is not a format of no decimals",     general,   number(0,                    u""),                              false},
        {"dates",  date(u"d",     u"H"),date(u"d",u"H"),true},
        {"another pattern",     date(u"d", u"H"),                date(u"M",                                               u"H"),              false},
        {"no time",date(u"d", u"H"),date(u"d",u""),false},
        {"dates and numbers",  date(u"",      u""),               number(0,                               u""), false},
        {"text",          text, text,      true           },
        {"text and dates",     text,              date(u"",                       u""),                         false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(equalFormats(c.a, c.b), c.equal) << c.behaviour;
        EXPECT_EQ(equalFormats(c.b, c.a), c.equal) << c.behaviour;
    }
}

TEST(BuildFormats, losesNothingWhenMemoryIsShort)
{
    const TestDocument document;
    const std::size_t before = heapSize();
    blockResizer = [](void* block, std::size_t bytes) -> void* {
        return bytes == 0 ? resizeBlock(block, 0) : nullptr;
    };
    GrowArray<NumberFormat> formats;
    buildFormats(formats);
    blockResizer = resizeBlock;
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(formats.size(), 0);
    EXPECT_EQ(heapSize(), before);
}

TEST(SetFormat, findsABuiltInFormat)
{
    const TestDocument document;
    NumberFormat format;
    makeNumberFormat(format, false, false, 2, u"", u"%", u"-", u"%");
    EXPECT_EQ(workbook->setFormat(format, -1), FormatIndexPercent);
    EXPECT_EQ(workbook->formats.size(), 16);
    EXPECT_NE(format.positiveSuffix, nullptr) << "the caller still holds its strings";
    freeFormatStrings(format);
}

TEST(RemoveFormat, movesTheStylesBehindIt)
{
    const TestDocument document;
    for (const char16_t* prefix : {u"a", u"b"}) {
        NumberFormat format;
        makeNumberFormat(format, false, false, 0, prefix, u"", u"", u"");
        workbook->setFormat(format, -1);
    }
    CellStyle style = defaultStyle();
    style.set(StyleFormat, 16);
    const int first = workbook->addStyle(style);
    style.set(StyleFormat, 17);
    const int second = workbook->addStyle(style);
    EXPECT_FALSE(workbook->removeFormat(15)) << "a built-in stays";
    EXPECT_TRUE(workbook->removeFormat(16));
    EXPECT_EQ(workbook->formats.size(), 17);
    EXPECT_EQ(formatString(workbook->formats[16].positivePrefix), u"b");
    EXPECT_EQ(workbook->styles[first].format(), FormatIndexGeneral);
    EXPECT_EQ(workbook->styles[second].format(), 16);
}

} // namespace
} // namespace vorn
