#include "numfmt/render.h"

#include "core/input.h"
#include "core/workbook.h"
#include "numfmt/locale.h"
#include "support/testplatform.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace vorn {
namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

std::u16string wide(std::string_view text)
{
    return {text.begin(), text.end()};
}

std::u16string rendered(const CellValue& value, int format)
{
    std::u16string text = u"what stood there before";
    EXPECT_TRUE(renderValue(value, format, 0, text, nullptr)) << "without a meter all is shown";
    return text;
}

std::u16string renderedNumber(double number, int format)
{
    return rendered(CellValue::makeNumber(number), format);
}

// A new format of the workbook.
int numberFormat(int decimals, bool thousands, const char16_t* positivePrefix = u"",
                 const char16_t* positiveSuffix = u"", const char16_t* negativePrefix = u"-",
                 const char16_t* negativeSuffix = u"")
{
    NumberFormat format;
    makeNumberFormat(format, false, thousands, decimals, positivePrefix, positiveSuffix,
                     negativePrefix, negativeSuffix);
    const int index = workbook->formats.size();
    return workbook->setFormat(format, index);
}

int dateFormat(const char16_t* datePattern, const char16_t* timePattern)
{
    NumberFormat format;
    makeDateFormat(format, datePattern, timePattern);
    const int index = workbook->formats.size();
    return workbook->setFormat(format, index);
}

// --- General

TEST(General, showsNumbersWithAboutFourteenDigits)
{
    const TestDocument document;
    const struct {
        double number;
        const char16_t* text;
    } cases[] = {
        {0,                   u"0"                  },
        {-0.0,                u"0"                  },
        {1,                   u"1"                  },
        {-1,                  u"-1"                 },
        {10,                  u"10"                 },
        {100,                 u"100"                },
        {0.5,                 u"0.5"                },
        {-0.5,                u"-0.5"               },
        {0.1,                 u"0.1"                },
        {0.1 + 0.2,           u"0.3"                },
        {1.0 / 3,             u"0.33333333333333"   },
        {2.0 / 3,             u"0.66666666666667"   },
        {10.0 / 3,            u"3.3333333333333"    },
        {100.0 / 3,           u"33.333333333333"    },
        {1e3 / 3,             u"333.33333333333"    },
        {1e4 / 3,             u"3333.3333333333"    },
        {1e5 / 3,             u"33333.333333333"    },
        {1e6 / 3,             u"333333.33333333"    },
        {1e7 / 3,             u"3333333.3333333"    },
        {1e8 / 3,             u"33333333.333333"    },
        {0.01 / 3,            u"0.0033333333333333" },
        {0.1 / 3,             u"0.033333333333333"  },
        {0.001 / 3,           u"0.00033333333333333"},
        {1234567.891,         u"1234567.891"        },
        {99999999.5,          u"99999999.5"         },
        {0.99999999999999989, u"1"                  },
        {9.99999999999999,    u"10"                 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(renderedNumber(c.number, FormatIndexGeneral), c.text) << c.number;
}

TEST(General, takesAnExponentForTheLargeAndTheSmall)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        double number;
        const char16_t* text;
    } cases[] = {
        {"the largest without",              100000000,              u"100000000"            },
        {"and below 0",                      -100000000,             u"-100000000"           },
        {"the next one",                     100000001,              u"1.00000001e8"         },
        {"below 0",                          -100000001,             u"-1.00000001e8"        },
        {"a fraction above it",              100000000.5,            u"1.000000005e8"        },
        {"the smallest without",             0.0001,                 u"0.0001"               },
        {"below 0",                          -0.0001,                u"-0.0001"              },
        {"the next one",                     0.00009,                u"9e-5"                 },
        {"below 0",                          -0.00009,               u"-9e-5"                },
        {"no plus sign, no zeros before",    1e9,                    u"1e9"                  },
        {"two digits of exponent",           1e10,                   u"1e10"                 },
        {"three",                            1e100,                  u"1e100"                },
        {"three downward",                   1.5e-300,               u"1.5e-300"             },
        {"zeros within the exponent stay",   1e-100,                 u"1e-100"               },
        {"fourteen digits behind the point", 123456789012345678.0,   u"1.23456789012346e17"  },
        {"the largest",                      1.7976931348623157e308, u"1.79769313486232e308" },
        {"the smallest",                     5e-324,                 u"4.94065645841247e-324"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(renderedNumber(c.number, FormatIndexGeneral), c.text) << c.behaviour;
}

TEST(General, showsWhatIsNoNumberSomehow)
{
    const TestDocument document;
    EXPECT_EQ(renderedNumber(Infinity, FormatIndexGeneral), u"inf");
    EXPECT_EQ(renderedNumber(-Infinity, FormatIndexGeneral), u"-inf");
    EXPECT_EQ(renderedNumber(std::copysign(NotANumber, 1), FormatIndexGeneral), u"nan");
    EXPECT_EQ(renderedNumber(Infinity, 2), u"inf");
    EXPECT_EQ(renderedNumber(1e308, FormatIndexPercent), u"inf") << "times 100 it is one";
}

// Against the printing of C, cut as told, on many numbers of all sizes.
TEST(General, agreesWithThePrintingOfC)
{
    const TestDocument document;
    std::mt19937_64 random(1);
    for (int round = 0; round < 200000; ++round) {
        const double mantissa = static_cast<double>(random() % 2000000000) / 1e9 - 1;
        const double number = mantissa * std::pow(10, static_cast<int>(random() % 40) - 20);
        const double size = std::fabs(number);
        char buffer[64];
        std::string expected;
        if (size > 1e8 || (size < 1e-4 && size > 0)) {
            std::snprintf(buffer, sizeof buffer, "%.14e", number);
            expected = buffer;
            const std::size_t split = expected.find('e');
            std::string mantissaText = expected.substr(0, split);
            mantissaText.erase(mantissaText.find_last_not_of('0') + 1);
            if (mantissaText.back() == '.')
                mantissaText.pop_back();
            mantissaText += 'e';
            mantissaText += std::to_string(std::stoi(expected.substr(split + 1)));
            expected = mantissaText;
        } else {
            int decimals = 17;
            for (int power = -3; power <= 7; ++power)
                decimals -= size >= std::stod("1e" + std::to_string(power)) ? 1 : 0;
            std::snprintf(buffer, sizeof buffer, "%.*f", decimals, number);
            expected = buffer;
            expected.erase(expected.find_last_not_of('0') + 1);
            if (expected.back() == '.')
                expected.pop_back();
        }
        ASSERT_EQ(renderedNumber(number, FormatIndexGeneral), wide(expected)) << expected;
    }
}

TEST(General, isAskedForByOtherUnits)
{
    const TestPlatform machine("de_DE");
    EXPECT_EQ(generalNumberText(1.5), u"1,5");
    EXPECT_EQ(generalNumberText(1.5e10), u"1,5e10");
    EXPECT_EQ(generalDateText(36526.5), u"1.1.00 12:00:00");
    EXPECT_EQ(fixedText(1.5, 2), u"1.50") << "the runtime's point, whatever the locale";
}

// --- Fixed decimals

TEST(FixedText, roundsAsTheLibraryDoes)
{
    const struct {
        double number;
        int decimals;
        const char16_t* text;
    } cases[] = {
        {0,       0,  u"0"                 },
        {-0.0,    0,  u"-0"                },
        {0.5,     0,  u"0"                 },
        {1.5,     0,  u"2"                 },
        {2.5,     0,  u"2"                 },
        {-2.5,    0,  u"-2"                },
        {0.125,   2,  u"0.12"              },
        {1.005,   2,  u"1.00"              },
        {2.675,   2,  u"2.67"              },
        {1e15,    1,  u"1000000000000000.0"},
        {123.456, 9,  u"123.456000000"     },
        {1.5,     -3, u"2"                 },
        {1.5,     20, u"1.500000000"       },
    };
    for (const auto& c : cases)
        EXPECT_EQ(fixedText(c.number, c.decimals), c.text) << c.number << " " << c.decimals;
    EXPECT_EQ(fixedText(1.7976931348623157e308, 9).size(), 319u);
}

TEST(NumberFormats, showDecimalsAndThousands)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        double number;
        int decimals;
        bool thousands;
        const char16_t* text;
    } cases[] = {
        {"no decimals",                          1234.5,       0,  false, u"1234"                         },
        {"two",                                  1234.5,       2,  false, u"1234.50"                      },
        {"nine",                                 0.5,          9,  false, u"0.500000000"                  },
        {"more count as nine",                   0.5,          15, false, u"0.500000000"                  },
        {"three digits have no separator",       123,          0,  true,  u"123"                          },
        {"four have one",                        1234,         0,  true,  u"1,234"                        },
        {"six have one",                         123456,       0,  true,  u"123,456"                      },
        {"seven have two",                       1234567.5,    2,  true,  u"1,234,567.50"                 },
        {"digits behind the point have none",    0.123456789,  9,  true,  u"0.123456789"                  },
        {"below 0",                              -1234,        0,  true,  u"-1,234"                       },
        {"below 0, three digits",                -123,         0,  true,  u"-123"                         },
        {"below 0 with decimals",                -1234567.891, 2,  true,  u"-1,234,567.89"                },
        {"a carry into the fourth digit",        999.999,      2,  true,  u"1,000.00"                     },
        {"zero",                                 0,            2,  true,  u"0.00"                         },
        {"a large number prints all its digits", 1e21,         0,  true,  u"1,000,000,000,000,000,000,000"},
        {"0 from below keeps its sign",          -0.001,       2,  false, u"-0.00"                        },
        {"and so does a zero with a sign",       -0.0,         0,  false, u"-0"                           },
    };
    for (const auto& c : cases)
        EXPECT_EQ(renderedNumber(c.number, numberFormat(c.decimals, c.thousands)), c.text)
            << c.behaviour;
}

TEST(NumberFormats, haveNoSizeLimit)
{
    const TestDocument document;
    const double largest = 1.7976931348623157e308;
    EXPECT_EQ(renderedNumber(largest, numberFormat(0, false)).size(), 309u);
    EXPECT_EQ(renderedNumber(largest, numberFormat(0, true)).size(), 411u);
    EXPECT_EQ(renderedNumber(-largest, numberFormat(9, true, u"", u"", u"((", u"))")).size(), 425u);
}

TEST(NumberFormats, tellTheSignByAffixesOnly)
{
    const TestDocument document;
    const int bare = numberFormat(0, false, u"", u"", u"", u"");
    EXPECT_EQ(renderedNumber(-5, bare), u"5") << "nothing else marks a negative number";
    const int both = numberFormat(1, false, u"+", u" up", u"<", u"> down");
    EXPECT_EQ(renderedNumber(5, both), u"+5.0 up");
    EXPECT_EQ(renderedNumber(-5, both), u"<5.0> down");
    EXPECT_EQ(renderedNumber(0, both), u"+0.0 up");
    EXPECT_EQ(renderedNumber(-0.01, both), u"<0.0> down");
}

TEST(NumberFormats, showPercents)
{
    const TestDocument document;
    EXPECT_EQ(renderedNumber(0.5, FormatIndexPercent), u"50.00%");
    EXPECT_EQ(renderedNumber(-0.5, FormatIndexPercent), u"-50.00%");
    EXPECT_EQ(renderedNumber(12.345678, FormatIndexPercent), u"1234.57%");
    const int prefixed = numberFormat(0, true, u"% ", u"");
    EXPECT_EQ(renderedNumber(12.34, prefixed), u"% 1,234");
}

TEST(NumberFormats, followTheLocale)
{
    const struct {
        const char* locale;
        const char16_t *grouped, *percent, *general, *exponent;
    } cases[] = {
        {"en_US", u"1,234.50",      u"50.00%", u"0.5", u"1.5e10"},
        {"de_DE", u"1.234,50",      u"50,00%", u"0,5", u"1,5e10"},
        {"fr_FR", u"1\u202f234,50", u"50,00%", u"0,5", u"1,5e10"},
        {"de_CH", u"1’234.50",    u"50.00%", u"0.5", u"1.5e10"},
    };
    for (const auto& c : cases) {
        const TestDocument document(c.locale);
        EXPECT_EQ(renderedNumber(1234.5, numberFormat(2, true)), c.grouped) << c.locale;
        EXPECT_EQ(renderedNumber(0.5, FormatIndexPercent), c.percent) << c.locale;
        EXPECT_EQ(renderedNumber(0.5, FormatIndexGeneral), c.general) << c.locale;
        EXPECT_EQ(renderedNumber(1.5e10, FormatIndexGeneral), c.exponent) << c.locale;
    }
}

TEST(NumberFormats, doWithoutAThousandsSeparatorThatIsNot)
{
    const TestDocument document;
    localeInfo.thousands = u'\0';
    EXPECT_EQ(renderedNumber(1234567, numberFormat(0, true)), u"1234567");
}

// --- Dates

TEST(DateFormats, showTheBuiltInForms)
{
    const TestDocument document;
    const struct {
        int format;
        const char16_t* text;
    } cases[] = {
        {FormatIndexShortDate,     u"3/4/01"      },
        {7,                        u"4-Mar-01"    },
        {8,                        u"4-Mar"       },
        {9,                        u"Mar-01"      },
        {FormatIndexTime12,        u"3:06 PM"     },
        {FormatIndexTime24,        u"15:06"       },
        {FormatIndexTime12Seconds, u"3:06:07 PM"  },
        {FormatIndexTime24Seconds, u"15:06:07"    },
        {FormatIndexDateTime,      u"3/4/01 15:06"},
    };
    const double serial = 36954 + 54367 / 86400.0; // 4 March 2001, 15:06:07
    for (const auto& c : cases)
        EXPECT_EQ(rendered(CellValue::makeDate(serial), c.format), c.text) << c.format;
}

TEST(DateFormats, followTheLocale)
{
    const double serial = 36954 + 54367 / 86400.0;
    const struct {
        const char* locale;
        const char16_t *shortDate, *named, *time, *general;
    } cases[] = {
        {"de_DE", u"4.3.01", u"4-März-01", u"3:06 PM",     u"4.3.01 15:06:07"},
        {"sv_SE", u"01-3-4", u"4-mars-01",  u"3:06 em",     u"01-3-4 15:06:07"},
        {"en_GB", u"4/3/01", u"4-Mar-01",   u"3:06 pm",     u"4/3/01 15:06:07"},
        {"da_DK", u"4.3.01", u"4-mar.-01",  u"3.06 PM",     u"4.3.01 15.06.07"},
        {"ja_JP", u"01/3/4", u"4-3月-01",  u"3:06 午後", u"01/3/4 15:06:07"},
    };
    for (const auto& c : cases) {
        const TestDocument document(c.locale);
        const CellValue value = CellValue::makeDate(serial);
        EXPECT_EQ(rendered(value, FormatIndexShortDate), c.shortDate) << c.locale;
        EXPECT_EQ(rendered(value, 7), c.named) << c.locale;
        EXPECT_EQ(rendered(value, FormatIndexTime12), c.time) << c.locale;
        EXPECT_EQ(rendered(value, FormatIndexGeneral), c.general) << c.locale;
    }
}

TEST(DateFormats, putABlankBetweenDateAndTime)
{
    const TestDocument document;
    const CellValue noon = CellValue::makeDate(36526.5);
    EXPECT_EQ(rendered(noon, dateFormat(u"yyyy", u"HH")), u"2000 12");
    EXPECT_EQ(rendered(noon, dateFormat(u"yyyy", u"")), u"2000");
    EXPECT_EQ(rendered(noon, dateFormat(u"", u"HH")), u"12");
    EXPECT_EQ(rendered(noon, dateFormat(u"", u"")), u"");
}

TEST(DateFormats, showInGeneralWhatThereIs)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        double serial;
        const char16_t* text;
    } cases[] = {
        {"a date",                             36526,      u"1/1/00"         },
        {"a time, always to the second",       0.5,        u"12:00:00"       },
        {"both",                               36526.75,   u"1/1/00 18:00:00"},
        {"zero is midnight",                   0,          u"0:00:00"        },
        {"as with a sign",                     -0.0,       u"0:00:00"        },
        {"day 1",                              1,          u"12/31/99"       },
        {"the day before day 0",               -1,         u"12/29/99"       },
        {"a date and time before day 0",       -18260.5,   u"1/1/50 12:00:00"},
        {"an evening hour on a 24 hour clock", 0.75,       u"18:00:00"       },
        {"a time just before midnight",        1 - 1e-9,   u"0:00:00"        },
        {"the last day",                       2958465,    u"12/31/99"       },
        {"behind it",                          2958466,    u"!!ErrDateTime"  },
        {"before the first",                   -657435,    u"!!ErrDateTime"  },
        {"no number",                          NotANumber, u"!!ErrDateTime"  },
        {"an infinity",                        Infinity,   u"!!ErrDateTime"  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(rendered(CellValue::makeDate(c.serial), FormatIndexGeneral), c.text)
            << c.behaviour;
}

TEST(DateFormats, showNothingForAnImpossibleSerial)
{
    const TestDocument document;
    for (double serial : {2958466.0, -657435.0, NotANumber, 1e300})
        for (int format = FormatIndexShortDate; format <= FormatIndexDateTime; ++format)
            EXPECT_EQ(rendered(CellValue::makeDate(serial), format), u"") << serial;
}

// --- Values and formats that do not match

TEST(RenderValue, showsAValueInGeneralWhereTheFormatIsForAnotherKind)
{
    const TestDocument document;
    EXPECT_EQ(renderedNumber(1.5, FormatIndexShortDate), u"1.5") << "a number is no date";
    EXPECT_EQ(renderedNumber(1.5, FormatIndexText), u"1.5");
    const CellValue date = CellValue::makeDate(36526);
    EXPECT_EQ(rendered(date, 2), u"1/1/00") << "nor a date a number";
    EXPECT_EQ(rendered(date, FormatIndexPercent), u"1/1/00");
    EXPECT_EQ(rendered(date, FormatIndexText), u"1/1/00");
}

TEST(RenderValue, showsOtherValuesWhateverTheFormat)
{
    const TestDocument document;
    CellValue text;
    makeTextValue(text, u"some text");
    for (int format :
         {FormatIndexGeneral, 2, FormatIndexPercent, FormatIndexShortDate, FormatIndexText}) {
        EXPECT_EQ(rendered(text, format), u"some text");
        EXPECT_EQ(rendered(CellValue::makeLogical(true), format), u"true");
        EXPECT_EQ(rendered(CellValue::makeLogical(false), format), u"false");
        EXPECT_EQ(rendered(CellValue::makeError(CellErrorDiv0), format), u"!!Div0");
        EXPECT_EQ(rendered(CellValue::makeBlank(), format), u"");
    }
    releaseValue(text);
}

TEST(RenderValue, takesAFormatThatIsNotThereForGeneral)
{
    const TestDocument document;
    for (int format : {-1, 16, 1000000})
        EXPECT_EQ(renderedNumber(1.5, format), u"1.5") << format;
}

// --- Fitting

// Every character is 10 pixels wide, a point 4.
class TypewriterMeter : public TextMeter {
public:
    int width(std::u16string_view text) override
    {
        ++measured;
        int pixels = 0;
        for (char16_t unit : text)
            pixels += unit == u'.' ? 4 : 10;
        return pixels;
    }

    int measured = 0;
};

struct Fitted {
    std::u16string text;
    bool inFull;
};

Fitted fitted(const CellValue& value, int format, int maxWidth)
{
    TypewriterMeter meter;
    Fitted result;
    result.inFull = renderValue(value, format, maxWidth, result.text, &meter);
    return result;
}

const std::u16string Filling(100, u'#');

TEST(Fitting, leavesWhatFits)
{
    const TestDocument document;
    const Fitted exact = fitted(CellValue::makeNumber(12345), FormatIndexGeneral, 50);
    EXPECT_EQ(exact.text, u"12345");
    EXPECT_TRUE(exact.inFull);
    EXPECT_TRUE(fitted(CellValue::makeBlank(), FormatIndexGeneral, 0).inFull);
}

TEST(Fitting, takesDecimalsOfGeneralNumbers)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        double number;
        const char16_t* text;
        int width;
        bool inFull;
    } cases[] = {
        {"all that fits",                             3.14159265358979, u"3.1415927",    84,  true },
        {"eight decimals at most",                    3.14159265358979, u"3.14159265",   104, true },
        {"six count as full",                         3.14159265358979, u"3.141593",     74,  true },
        {"five do not",                               3.14159265358979, u"3.14159",      64,  false},
        {"two",                                       3.14159265358979, u"3.14",         34,  false},
        {"two, with a pixel to spare",                3.14159265358979, u"3.14",         35,  false},
        {"one",                                       3.14159265358979, u"3.1",          33,  false},
        {"none",                                      3.14159265358979, u"3",            23,  false},
        {"not even the whole part",                   3.14159265358979, u"#",            9,   false},
        {"a rounding that needs a digit more",        99.99,            u"100",          43,  false},
        {"zeros at the end go",                       1.5000001,        u"1.5",          64,  false},
        {"and the point with them",                   2.0000001,        u"2",            64,  false},
        {"a small number becomes zero",               0.000123456,      u"0.00012",      64,  false},
        {"or loses everything",                       0.000123456,      u"0",            44,  false},
        {"below zero without its sign",               -0.000123456,     u"0",            44,  false},
        {"a sign takes room",                         -3.14159265,      u"-3.14",        44,  false},
        {"an exponent is given up",                   0.0000123456,     u"0.0000123",    93,  true },
        {"a large number has no shorter form",        123456789012.0,   u"#",            104, false},
        {"a large number that fits without decimals", 1.23456789012e11, u"123456789012", 125,
         false                                                                                     },
        {"room for all but the last digits",          1234.56789012345, u"1234.56789",   95,  false},
    };
    for (const auto& c : cases) {
        const Fitted result = fitted(CellValue::makeNumber(c.number), FormatIndexGeneral, c.width);
        EXPECT_EQ(result.text, *c.text == u'#' ? Filling : c.text) << c.behaviour;
        EXPECT_EQ(result.inFull, c.inFull) << c.behaviour;
    }
}

// An exact fit at a trial is taken, and no longer form is looked for.
TEST(Fitting, looksForMoreDecimalsOnlyWithRoomToSpare)
{
    const TestDocument document;
    EXPECT_EQ(fitted(CellValue::makeNumber(3.14159265358979), FormatIndexGeneral, 34).text,
              u"3.14");
    // At 4 decimals a width of exactly 54 is no room to spare for more.
    EXPECT_EQ(fitted(CellValue::makeNumber(3.14159265358979), FormatIndexGeneral, 54).text,
              u"3.1416");
    EXPECT_EQ(fitted(CellValue::makeNumber(3.14159265358979), FormatIndexGeneral, 63).text,
              u"3.1416");
}

TEST(Fitting, putsTheLocalesPointBack)
{
    const TestDocument document("de_DE");
    EXPECT_EQ(fitted(CellValue::makeNumber(3.14159265358979), FormatIndexGeneral, 50).text,
              u"3,142");
}

TEST(Fitting, fillsWhatHasAFormatAndDoesNotFit)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        CellValue value;
        int format;
    } cases[] = {
        {"fixed decimals",            CellValue::makeNumber(1234.5),       2                   },
        {"a percent",                 CellValue::makeNumber(12.5),         FormatIndexPercent  },
        {"a date",                    CellValue::makeDate(36526),          FormatIndexShortDate},
        {"a date in General",         CellValue::makeDate(36526),          FormatIndexGeneral  },
        {"a number in a date format", CellValue::makeNumber(123456),       FormatIndexShortDate},
        {"a number in a text format", CellValue::makeNumber(123456),       FormatIndexText     },
        {"an error",                  CellValue::makeError(CellErrorDiv0), FormatIndexGeneral  },
        {"a serial that has no date", CellValue::makeDate(1e9),            FormatIndexGeneral  },
    };
    for (const auto& c : cases) {
        const Fitted result = fitted(c.value, c.format, 45);
        EXPECT_EQ(result.text, Filling) << c.behaviour;
        EXPECT_FALSE(result.inFull) << c.behaviour;
    }
}

TEST(Fitting, neverTouchesTextsAndLogicals)
{
    const TestDocument document;
    CellValue text;
    makeTextValue(text, u"a long text");
    TypewriterMeter meter;
    std::u16string out;
    EXPECT_TRUE(renderValue(text, FormatIndexGeneral, 1, out, &meter));
    EXPECT_EQ(out, u"a long text");
    EXPECT_TRUE(renderValue(CellValue::makeLogical(true), FormatIndexGeneral, 1, out, &meter));
    EXPECT_EQ(out, u"true");
    EXPECT_EQ(meter.measured, 0);
    releaseValue(text);
}

TEST(Fitting, endsForWhatIsNoNumber)
{
    const TestDocument document;
    EXPECT_EQ(fitted(CellValue::makeNumber(Infinity), FormatIndexGeneral, 5).text, Filling);
    EXPECT_EQ(fitted(CellValue::makeNumber(NotANumber), FormatIndexGeneral, 5).text, Filling);
}

} // namespace
} // namespace vorn
