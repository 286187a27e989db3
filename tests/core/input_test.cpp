#include "core/input.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "numfmt/locale.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr int NotTouched = -99;

// What a parse gave: the value and, where a format was asked for, its suggestion.
struct Parsed {
    bool answer = false;
    std::string value;
    int format = NotTouched;
};

Parsed parsed(std::u16string_view text, TextRule rule = TextAllowed)
{
    Parsed result;
    CellValue value;
    result.answer = parseCellInput(value, text, {0, 0, 0}, &result.format, rule);
    result.value = describe(value);
    releaseValue(value);
    return result;
}

std::string parsedWithoutFormat(std::u16string_view text)
{
    CellValue value;
    EXPECT_TRUE(parseCellInput(value, text, {0, 0, 0}, nullptr));
    std::string result = describe(value);
    releaseValue(value);
    return result;
}

std::string quoted(const char16_t* text)
{
    std::string result = "\"";
    for (; *text != u'\0'; ++text)
        result += static_cast<char>(*text);
    return result + '"';
}

// A row whose value is null expects the typed text itself.
struct InputCase {
    const char16_t* text;
    const char* value;
    int format;
};

void expectInput(const InputCase& c)
{
    const Parsed result = parsed(c.text);
    EXPECT_TRUE(result.answer);
    EXPECT_EQ(result.value, c.value != nullptr ? c.value : quoted(c.text)) << quoted(c.text);
    EXPECT_EQ(result.format, c.format) << quoted(c.text);
    EXPECT_FALSE(errorStands()) << quoted(c.text);
}

TEST(Input, isNumberDateLogicalOrText)
{
    const TestDocument document;
    const InputCase cases[] = {
        {u" ",          nullptr,          -1},
        {u"abc",        nullptr,          -1},
        {u"'123",       "\"123\"",        -1},
        {u"'=1+1",      "\"=1+1\"",       -1},
        {u"'",          "\"\"",           -1},
        {u"''",         "\"'\"",          -1},
        {u" '5",        nullptr,          -1},
        {u"5",          "5",              -1},
        {u"-5",         "-5",             -1},
        {u"+5",         "5",              -1},
        {u"--5",        nullptr,          -1},
        {u"+-5",        nullptr,          -1},
        {u"- 5",        "-5",             -1},
        {u" 5 ",        "5",              -1},
        {u"-",          nullptr,          -1},
        {u"+",          nullptr,          -1},
        {u"%",          nullptr,          -1},
        {u"5%",         "0.05",           5 },
        {u"5 %",        "0.05",           5 },
        {u"-5%",        "-0.05",          5 },
        {u"5%%",        nullptr,          -1},
        {u"%5",         nullptr,          -1},
        {u"1e3",        "1000",           -1},
        {u"1E-2",       "0.01",           -1},
        {u"1e999",      nullptr,          -1},
        {u"-1e999",     nullptr,          -1},
        {u"1e",         nullptr,          -1},
        {u".5",         "0.5",            -1},
        {u"5.",         "5",              -1},
        {u".",          nullptr,          -1},
        {u"1.5.2",      nullptr,          -1},
        {u"0x10",       nullptr,          -1},
        {u"inf",        nullptr,          -1},
        {u"nan",        nullptr,          -1},
        {u"1,234",      nullptr,          -1},
        {u"$5",         nullptr,          -1},
        {u"(5)",        nullptr,          -1},
        {u"5 5",        nullptr,          -1},
        {u"5a",         nullptr,          -1},
        {u"A1",         nullptr,          -1},
        {u"A1:B2",      nullptr,          -1},
        {u"!!NA",       nullptr,          -1},
        {u"!!Ref",      nullptr,          -1},
        {u"\"quoted\"", "\"\"quoted\"\"", -1},
        {u"Sum",        nullptr,          -1},
        {u"Sheet2!A1",  nullptr,          -1},
        {u"then",       nullptr,          -1},
        {u"TRUE",       "TRUE",           -1},
        {u"true",       "TRUE",           -1},
        {u"FaLsE",      "FALSE",          -1},
        {u"-true",      nullptr,          -1},
        {u"true%",      nullptr,          -1},
        {u"true false", nullptr,          -1},
        {u"truest",     nullptr,          -1},
    };
    for (const InputCase& c : cases)
        expectInput(c);
}

TEST(Input, suggestsAFormatForDatesAndTimes)
{
    const TestDocument document;
    const InputCase cases[] = {
        {u"1/2/2000",          "date 36527",             6 },
        {u"1/2/",              "date 36893",             6 },
        {u"1/2",               nullptr,                  -1},
        {u"1/2/99",            "date 36162",             6 },
        {u"1/2/29",            "date 47120",             6 },
        {u"1/2/30",            "date 10960",             6 },
        {u"12/31/1999",        "date 36525",             6 },
        {u"31/12/2000",        nullptr,                  -1},
        {u"2/29/2000",         "date 36585",             6 },
        {u"2/29/1900",         nullptr,                  -1},
        {u"2/30/2000",         nullptr,                  -1},
        {u"1/2/2000 12:00",    "date 36527.5",           14},
        {u"1/2/2000 10:00",    "date 36527.4166666667",  14},
        {u"1/2/2000 12:00:00", "date 36527.5",           14},
        {u"1/2/2000 6:00 pm",  "date 36527.75",          14},
        {u"1/2/2000 25:00",    nullptr,                  -1},
        {u"1/2/2000 12",       nullptr,                  -1},
        {u"12:00",             "date 0.5",               11},
        {u"6:00",              "date 0.25",              11},
        {u"12:30",             "date 0.520833333333333", 11},
        {u"0:00",              "date 0",                 11},
        {u"6:00 am",           "date 0.25",              10},
        {u"6:00pm",            "date 0.75",              10},
        {u"6:00 PM",           "date 0.75",              10},
        {u"12:00 pm",          "date 0.5",               10},
        {u"12:00 am",          "date 0",                 10},
        {u"13:00 pm",          nullptr,                  -1},
        {u"6:00 xm",           nullptr,                  -1},
        {u"18:00:00",          "date 0.75",              13},
        {u"6:00:00 pm",        "date 0.75",              12},
        {u"12:30:15 pm",       "date 0.521006944444444", 12},
        {u"24:00",             nullptr,                  -1},
        {u"12:60",             nullptr,                  -1},
        {u"12:",               nullptr,                  -1},
        {u"12:30:",            nullptr,                  -1},
        {u"-12:30",            nullptr,                  -1},
        {u"-1/2/99",           nullptr,                  -1},
        {u"12:30%",            nullptr,                  -1},
        {u"12:30 5",           nullptr,                  -1},
    };
    for (const InputCase& c : cases)
        expectInput(c);
}

TEST(Input, followsTheLocale)
{
    const TestDocument document("de_DE");
    const InputCase cases[] = {
        {u"1,5",            "1.5",           -1},
        {u"1.5",            nullptr,         -1},
        {u"-1,5",           "-1.5",          -1},
        {u"1;5",            nullptr,         -1},
        {u",5",             "0.5",           -1},
        {u"2,5%",           "0.025",         5 },
        {u"1,5e3",          "1500",          -1},
        {u"31.12.2000",     "date 36891",    6 },
        {u"12.31.2000",     nullptr,         -1},
        {u"1.2.",           "date 36923",    6 },
        {u"1.2",            nullptr,         -1},
        {u"1.2.2000 18:00", "date 36557.75", 14},
        {u"1/2/2000",       nullptr,         -1},
        {u"12:00",          "date 0.5",      11},
        {u"true",           "TRUE",          -1},
        {u"WAHR",           nullptr,         -1},
    };
    for (const InputCase& c : cases)
        expectInput(c);
}

TEST(Input, isBlankWithoutText)
{
    const TestDocument document;
    CellValue value = CellValue::makeNumber(1);
    int format = NotTouched;
    EXPECT_TRUE(parseCellInput(value, u"", {}, &format));
    EXPECT_EQ(value.tag, TagBlank);
    EXPECT_EQ(format, NotTouched);
    const char16_t zero[] = u"\0abc";
    EXPECT_TRUE(parseCellInput(value, {zero, 4}, {}, &format));
    EXPECT_EQ(value.tag, TagBlank);
    const char16_t withZero[] = u"12\0abc";
    EXPECT_TRUE(parseCellInput(value, {withZero, 6}, {}, &format));
    EXPECT_EQ(describe(value), "12");
}

TEST(Input, takesAPercentOnlyWithAFormat)
{
    const TestDocument document;
    EXPECT_EQ(parsedWithoutFormat(u"5%"), "5");
    EXPECT_EQ(parsedWithoutFormat(u"-50 %"), "-50");
    EXPECT_EQ(parsedWithoutFormat(u"5%%"), "\"5%%\"");
    EXPECT_EQ(parsedWithoutFormat(u"1/2/2000"), "date 36527");
    // Percents multiply by 0.01, which is not the same as a division by 100.
    CellValue value;
    int format = 0;
    parseCellInput(value, u"35%", {}, &format);
    EXPECT_EQ(value.number(), 35 * 0.01);
    EXPECT_NE(value.number(), 0.35);
}

TEST(Input, givesNoTextWhereOnlyNumbersAreWanted)
{
    const TestDocument document;
    const struct {
        const char16_t* text;
        const char* value;
    } cases[] = {
        {u"abc",      "blank"     },
        {u"'5",       "blank"     },
        {u" ",        "blank"     },
        {u"",         "blank"     },
        {u"--5",      "blank"     },
        {u"5",        "5"         },
        {u"true",     "TRUE"      },
        {u"1/2/2000", "date 36527"},
        {u"A1",       "blank"     },
        {u"5%",       "0.05"      },
        {u"1e999",    "blank"     },
    };
    const std::int32_t next = stringPool->addText(u"probe");
    stringPool->release(next);
    for (const auto& c : cases) {
        const Parsed result = parsed(c.text, NumbersOnly);
        EXPECT_TRUE(result.answer);
        EXPECT_EQ(result.value, c.value);
        EXPECT_FALSE(errorStands());
    }
    EXPECT_EQ(stringPool->addText(u"probe"), next) << "nothing was entered in the pool";
}

TEST(Input, wipesAnErrorThatStoodBefore)
{
    const TestDocument document;
    for (const char16_t* text : {u"abc", u"5", u"1/2/2000", u"1e999"}) {
        raiseError(ErrorFileRead);
        const Parsed result = parsed(text);
        EXPECT_TRUE(result.answer);
        EXPECT_EQ(result.value, quoted(text)) << "an error that stands makes a text of anything";
        EXPECT_EQ(errorState.code, ErrorNone);
    }
    EXPECT_EQ(parsed(u"5").value, "5");
}

TEST(Input, keepsErrorsBeforeAFormula)
{
    const TestDocument document;
    raiseError(ErrorFileRead);
    const Parsed result = parsed(u"=1");
    EXPECT_FALSE(result.answer);
    EXPECT_EQ(result.value, "blank");
    EXPECT_EQ(errorState.code, ErrorFileRead);
}

TEST(Input, compilesAFormulaForItsPlace)
{
    const TestDocument document;
    CellValue value;
    int format = NotTouched;
    ASSERT_TRUE(parseCellInput(value, u"=B3", {1, 0, 2}, &format));
    ASSERT_EQ(value.tag, TagFormula);
    EXPECT_EQ(format, NoFormatSuggestion);
    const FormulaCell& formula = *value.formula();
    EXPECT_EQ(formula.position(), (CellPosition{1, 0, 2}));
    EXPECT_EQ(formula.result.tag, TagBlank);
    EXPECT_EQ(formulaPool->refCount(formula.formula), 1);
    EXPECT_EQ(calcChain.first(), nullptr) << "it joins the chain when it is stored";
    // One column right, one row down.
    const std::uint8_t code[] = {6, 0, 0, 0, OpPushCell, 1, 0, 1, 0xc0, OpReturn};
    EXPECT_EQ(std::memcmp(formulaPool->entry(formula.formula), code, sizeof code), 0);
    releaseValue(value);
}

TEST(Input, refusesAFormulaThatDoesNotCompile)
{
    const TestDocument document;
    const struct {
        const char16_t* text;
        int code;
    } cases[] = {
        {u"=1+",      ErrorEndOfFormula  },
        {u"=",        ErrorEndOfFormula  },
        {u"=)",       ErrorRedundantParen},
        {u"=Nothing", ErrorUnknownName   },
        {u"=1 2",     ErrorToken         },
    };
    for (const auto& c : cases) {
        CellValue value = CellValue::makeNumber(5);
        int format = NotTouched;
        EXPECT_FALSE(parseCellInput(value, c.text, {}, &format));
        EXPECT_EQ(value.tag, TagBlank);
        EXPECT_EQ(errorState.code, c.code);
        clearError();
    }
    EXPECT_EQ(formulaPool->beginScan(), 0);
    formulaPool->endScan();
}

TEST(Input, takesAnySingleUnit)
{
    const TestDocument document;
    for (unsigned unit = 1; unit <= 0xffff; ++unit) {
        const char16_t text[] = {static_cast<char16_t>(unit), 0};
        CellValue value;
        int format = NotTouched;
        const bool answer = parseCellInput(value, text, {}, &format);
        if (unit == u'=') {
            ASSERT_FALSE(answer);
            ASSERT_EQ(errorState.code, ErrorEndOfFormula);
            clearError();
            continue;
        }
        ASSERT_TRUE(answer) << unit;
        ASSERT_FALSE(errorStands()) << unit;
        if (unit >= u'0' && unit <= u'9') {
            ASSERT_EQ(value.tag, TagNumber) << unit;
            ASSERT_EQ(value.number(), static_cast<double>(unit - u'0'));
            continue;
        }
        ASSERT_EQ(value.tag, TagText) << unit;
        const std::u16string expected = unit == u'\'' ? std::u16string() : text;
        ASSERT_EQ(std::u16string(valueTextPointer(value)), expected) << unit;
        releaseValue(value);
    }
}

TEST(Input, takesTextsOfAnyLength)
{
    const TestDocument document;
    for (const char16_t unit : {u'x', u'5', u'(', u'"', u'-', u' ', u'\'', u':', u'/'}) {
        const std::u16string text(100000, unit);
        CellValue value;
        ASSERT_TRUE(parseCellInput(value, text, {}, nullptr));
        ASSERT_EQ(value.tag, TagText);
        EXPECT_EQ(std::u16string(valueTextPointer(value)).size(),
                  unit == u'\'' ? text.size() - 1 : text.size());
        EXPECT_FALSE(errorStands());
        releaseValue(value);
    }
}

TEST(Input, isLeftAsItWasWhenAnyOneAllocationIsRefused)
{
    const TestDocument document;
    const std::u16string longText(30000, u't');
    for (const std::u16string& text :
         {std::u16string(u"=1+2&\"" + std::u16string(900, u'x') + u'"'), longText,
          std::u16string(u"5")}) {
        bool refusedOne = true;
        for (int refused = 1; refusedOne; ++refused) {
            NewDocument(1, FileKindNative);
            clearError();
            AllocationWatch watch(refused);
            CellValue value;
            const bool answer = parseCellInput(value, text, {}, nullptr);
            refusedOne = watch.refused();
            EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone) << refused;
            if (text.front() == u'=') {
                EXPECT_EQ(answer, !refusedOne);
                EXPECT_EQ(value.tag, refusedOne ? TagBlank : TagFormula);
            }
            EXPECT_EQ(calcChain.first(), nullptr);
            clearError();
            releaseValue(value);
            watch.relent();
            EXPECT_TRUE(parseCellInput(value, text, {}, nullptr));
            releaseValue(value);
            EXPECT_EQ(formulaPool->beginScan(), 0) << refused;
            formulaPool->endScan();
        }
    }
}

// --- Coercions

TEST(Input, readsPlainNumbers)
{
    const TestDocument document;
    const struct {
        const char16_t* text;
        bool answer;
        double number;
    } cases[] = {
        {u"5",        true,  5   },
        {u"-1.5",     true,  -1.5},
        {u"50%",      true,  50  },
        {u"1/2/2000", false, 0   },
        {u"true",     false, 0   },
        {u"abc",      false, 0   },
        {u"",         false, 0   },
        {u"'5",       false, 0   },
        {u"=5",       false, 0   },
        {u"12:30",    false, 0   },
        {u" 7 ",      true,  7   },
    };
    for (const auto& c : cases) {
        double number = 99;
        EXPECT_EQ(textToNumber(c.text, number), c.answer);
        EXPECT_EQ(number, c.number);
        EXPECT_FALSE(errorStands());
    }
}

TEST(Input, readsWholeDates)
{
    const TestDocument document;
    const struct {
        const char16_t* text;
        bool answer;
        double serial;
    } cases[] = {
        {u"1/2/2000",       true,  36527},
        {u"1/2/2000 12:00", false, -1   },
        {u"12:30",          false, -1   },
        {u"0:00",           true,  0    },
        {u"5",              false, -1   },
        {u"abc",            false, -1   },
        {u"",               false, -1   },
        {u"=1/2/2000",      false, -1   },
        {u"true",           false, -1   },
        {u"1/2/2000 0:00",  true,  36527},
    };
    for (const auto& c : cases) {
        double serial = -1;
        EXPECT_EQ(textToWholeDate(c.text, serial), c.answer);
        EXPECT_EQ(serial, c.serial);
        EXPECT_FALSE(errorStands());
    }
}

// --- Texts of values

TEST(Input, givesTheTextOfAnyValue)
{
    const TestDocument document;
    const struct {
        CellValue value;
        const char16_t* text;
    } cases[] = {
        {CellValue::makeBlank(),              u""               },
        {CellValue::makeLogical(true),        u"true"           },
        {CellValue::makeLogical(false),       u"false"          },
        {CellValue::makeError(7),             u"!!Div0"         },
        {CellValue::makeError(99),            u"Err99"          },
        {textValue(u"a text"),                u"a text"         },
        {CellValue::makeTextIndex(-1),        u""               },
        {CellValue::makeNumber(0.1),          u"0.1"            },
        {CellValue::makeNumber(-1234567.891), u"-1234567.891"   },
        {CellValue::makeNumber(1e300),        u"1e300"          },
        {CellValue::makeDate(36526),          u"1/1/00"         },
        {CellValue::makeDate(36526.5),        u"1/1/00 12:00:00"},
        {CellValue::makeDate(0.5),            u"12:00:00"       },
        {CellValue::makeDate(0),              u"0:00:00"        },
        {CellValue::makeDate(1e9),            u"!!ErrDateTime"  },
        {CellValue::makeInteger(4000000000U), u"4000000000"     },
        {CellValue::makeCellRef({1, 2}),      u""               },
    };
    for (const auto& c : cases)
        EXPECT_EQ(valueText(c.value), c.text) << describe(c.value);
    EXPECT_EQ(dateTimeText(36526.75), u"1/1/00 18:00:00");
}

TEST(Input, givesTheTextOfAFormula)
{
    const TestDocument document;
    CellValue value;
    ASSERT_TRUE(parseCellInput(value, u"= sum( b3 ,true)", {1, 0, 0}, nullptr));
    EXPECT_EQ(valueText(value), u"=Sum(B3,true)");
    releaseValue(value);
}

TEST(Input, givesTextsInTheLocale)
{
    const TestDocument document("de_DE");
    EXPECT_EQ(valueText(CellValue::makeNumber(1.5)), u"1,5");
    EXPECT_EQ(valueText(CellValue::makeDate(36526)), u"1.1.00");
    EXPECT_EQ(numberText(1234.5, 2, KeepZeros), u"1234,50");
    EXPECT_EQ(numberText(1234.5, 2, TrimZeros), u"1234,5");
}

TEST(Input, printsPlainNumbers)
{
    const TestDocument document;
    const struct {
        double number;
        int decimals;
        ZeroRule zeros;
        const char16_t* text;
    } cases[] = {
        {1.5,           0,  KeepZeros, u"2"           },
        {1.5,           1,  KeepZeros, u"1.5"         },
        {1.5,           3,  KeepZeros, u"1.500"       },
        {1.5,           3,  TrimZeros, u"1.5"         },
        {2,             3,  TrimZeros, u"2"           },
        {100,           0,  TrimZeros, u"100"         },
        {100,           2,  TrimZeros, u"100"         },
        {-0.25,         9,  KeepZeros, u"-0.250000000"},
        {-0.25,         9,  TrimZeros, u"-0.25"       },
        {0,             4,  TrimZeros, u"0"           },
        {1.23456789012, 12, KeepZeros, u"1.234567890" },
        {1.5,           -3, KeepZeros, u"2"           },
    };
    for (const auto& c : cases)
        EXPECT_EQ(numberText(c.number, c.decimals, c.zeros), c.text) << c.number;
    EXPECT_EQ(numberText(1e308, 9, TrimZeros).size(), 309U);
}

// --- Entry

class InputEntry : public testing::Test {
protected:
    InputEntry() : sheet(*workbook->sheetAt(0)) {}

    int styleWithFormat(int format)
    {
        CellStyle style = defaultStyle();
        style.set(StyleFormat, format);
        return workbook->addStyle(style);
    }

    int formatAt(int column, int row)
    {
        return workbook->styles[sheet.cellStyle(column, row)].format();
    }

    TestDocument document;
    Sheet& sheet;
};

TEST_F(InputEntry, changesTheFormatWhereTheInputAsksForIt)
{
    const struct {
        const char* phrase;
        int before;
        const char16_t* text;
        int after;
    } cases[] = {
        {"a number changes nothing",               0,  u"5",              0 },
        {"a date takes the short date",            0,  u"1/2/2000",       6 },
        {"a date with a time takes both",          0,  u"1/2/2000 10:00", 14},
        {"a time takes the time",                  0,  u"12:30",          11},
        {"a date in a cell of dates keeps it",     7,  u"1/2/2000",       7 },
        {"a time in a cell of dates keeps it",     6,  u"12:30",          6 },
        {"a date in a cell of numbers changes it", 2,  u"1/2/2000",       6 },
        {"a percent takes the percent",            0,  u"5%",             5 },
        {"a percent replaces another number",      2,  u"5%",             5 },
        {"a percent replaces a date as well",      6,  u"5%",             5 },
        {"a text changes nothing",                 6,  u"abc",            6 },
        {"a logical changes nothing",              6,  u"true",           6 },
        {"a formula changes nothing",              6,  u"=5%",            6 },
        {"a text format takes no date",            15, u"1/2/2000",       15},
    };
    int row = 0;
    for (const auto& c : cases) {
        sheet.setCell(0, row, blankCell(styleWithFormat(c.before)));
        EXPECT_TRUE(storeCellInput(0, row, c.text)) << c.phrase;
        EXPECT_EQ(formatAt(0, row), c.after) << c.phrase;
        ++row;
    }
}

TEST_F(InputEntry, keepsTheOtherPartsOfTheStyle)
{
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    style.set(StyleFont, 3);
    sheet.columns.setColumnStyle(2, 2, workbook->addStyle(style));
    EXPECT_TRUE(storeCellInput(2, 0, u"5%"));
    style.set(StyleFormat, 5);
    EXPECT_TRUE(workbook->styles[sheet.cellStyle(2, 0)].sameAs(style));
    EXPECT_EQ(workbook->styles.size(), 3);
    EXPECT_TRUE(storeCellInput(2, 1, u"6%"));
    EXPECT_EQ(workbook->styles.size(), 3);
}

TEST_F(InputEntry, takesATextFormatAtItsWord)
{
    sheet.setCell(0, 0, blankCell(styleWithFormat(15)));
    for (const char16_t* text : {u"=1+1", u"'5", u"5", u"true"}) {
        EXPECT_TRUE(storeCellInput(0, 0, text));
        EXPECT_EQ(describe(sheet.valueOf(0, 0)), quoted(text));
    }
    EXPECT_EQ(calcChain.first(), nullptr);
}

TEST_F(InputEntry, forgetsAnApostrophe)
{
    EXPECT_TRUE(storeCellInput(0, 0, u"'123"));
    EXPECT_EQ(sheet.cellInput(0, 0), u"123");
    EXPECT_TRUE(storeCellInput(0, 0, sheet.cellInput(0, 0)));
    EXPECT_EQ(describe(sheet.valueOf(0, 0)), "123");
}

TEST_F(InputEntry, leavesTheCellWhenAFormulaDoesNotCompile)
{
    sheet.setCell(0, 0, numberCell(7, 0));
    EXPECT_FALSE(storeCellInput(0, 0, u"=1+"));
    EXPECT_EQ(errorState.code, ErrorEndOfFormula);
    EXPECT_EQ(describe(sheet.valueOf(0, 0)), "7");
    clearError();
}

TEST_F(InputEntry, storesFormulasOfTheCurrentSheet)
{
    workbook->setCurrentSheet(workbook->sheetAt(1));
    EXPECT_TRUE(storeCellInput(2, 3, u"=1"));
    ASSERT_NE(calcChain.first(), nullptr);
    EXPECT_EQ(calcChain.first()->position(), (CellPosition{3, 2, 1}));
    EXPECT_EQ(sheet.cellAt(2, 3), nullptr);
}

TEST_F(InputEntry, leavesNothingBehindWhenAnyOneAllocationIsRefused)
{
    for (const char16_t* text : {u"=1+2", u"some text", u"12%", u"1/2/2000"}) {
        bool refusedOne = true;
        for (int refused = 1; refusedOne; ++refused) {
            NewDocument(1, FileKindNative);
            AllocationWatch watch(refused);
            const bool stored = storeCellInput(3, 9, text);
            refusedOne = watch.refused();
            EXPECT_EQ(stored, !refusedOne) << refused;
            EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone) << refused;
            EXPECT_EQ(workbook->sheetAt(0)->isPresent(3, 9), stored) << refused;
            if (!stored) {
                EXPECT_EQ(calcChain.first(), nullptr);
                EXPECT_EQ(stringPool->beginScan(), 0) << refused;
                stringPool->endScan();
                EXPECT_EQ(formulaPool->beginScan(), 0) << refused;
                formulaPool->endScan();
            }
            clearError();
        }
    }
}

} // namespace
} // namespace vorn
