#include "functions/criteria.h"

#include "core/error.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/machine.h"
#include "support/cells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

CriteriaCondition conditionOf(std::u16string_view text)
{
    CellValue criteria;
    makeTextValue(criteria, text);
    return readCondition(criteria);
}

TEST(Criteria, areReadAsASignAndAValue)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        const char16_t* text;
        TokenKind comparison;
        const char* value;
    } cases[] = {
        {"greater than a number",                    u">5",         TokenGreater,      "5"         },
        {"less than a number",                       u"<-2.5",      TokenLess,         "-2.5"      },
        {"the sign of two characters comes first",   u">=5",        TokenGreaterEqual, "5"         },
        {"at most",                                  u"<=5",        TokenLessEqual,    "5"         },
        {"unequal",                                  u"<>5",        TokenNotEqual,     "5"         },
        {"blanks around the sign do not matter",     u"  >  5",     TokenGreater,      "5"         },
        {"a date behind the sign",                   u">=1/2/2000", TokenGreaterEqual, "date 36527"},
        {"a logical behind the sign",                u"<true",      TokenLess,         "TRUE"      },
        {"a text behind the sign",                   u"<>abc",      TokenNotEqual,     "\"abc\""   },
        {"its blanks are part of it",                u"<> abc",     TokenNotEqual,     "\" abc\""  },
        {"a percent counts as it is written",        u">50%",       TokenGreater,      "50"        },
        {"an apostrophe makes a text of a number",   u">'5",        TokenGreater,      "\"5\""     },
        {"an = behind the sign stays, as text",      u">==5",       TokenGreaterEqual, "\"=5\""    },
        {"no formula is compiled behind a sign",     u"<>=1+1",     TokenNotEqual,     "\"=1+1\""  },
        {"a second sign is text",                    u"><5",        TokenGreater,      "\"<5\""    },
        {"a sign with nothing behind it",            u"<>",         TokenNotEqual,     "blank"     },
        {"a single = is no sign",                    u"=5",         TokenEqual,        "\"=5\""    },
        {"a text that reads as a number stays text", u"5",          TokenEqual,        "\"5\""     },
        {"a word",                                   u"abc",        TokenEqual,        "\"abc\""   },
        {"a sign inside of a text is none",          u"a>5",        TokenEqual,        "\"a>5\""   },
        {"an empty text",                            u"",           TokenEqual,        "\"\""      },
        {"what the lexer cannot read is text",       u"#>5",        TokenEqual,        "\"#>5\""   },
        {"an apostrophe is kept where no sign is",   u"'5",         TokenEqual,        "\"'5\""    },
        {"a reference is text",                      u">A1",        TokenGreater,      "\"A1\""    },
    };
    for (const auto& c : cases) {
        CriteriaCondition condition = conditionOf(c.text);
        EXPECT_EQ(condition.comparison, c.comparison) << c.behaviour;
        EXPECT_EQ(describe(condition.value), c.value) << c.behaviour;
        EXPECT_FALSE(errorStands()) << c.behaviour;
        releaseValue(condition.value);
    }
}

TEST(Criteria, ofOtherKindsHaveToBeEqual)
{
    const CellValue values[] = {CellValue::makeBlank(), CellValue::makeLogical(true),
                                CellValue::makeError(CellErrorNA), CellValue::makeNumber(5),
                                CellValue::makeDate(5)};
    for (const CellValue& value : values) {
        const CriteriaCondition condition = readCondition(value);
        EXPECT_EQ(condition.comparison, TokenEqual) << describe(value);
        EXPECT_EQ(describe(condition.value), describe(value));
    }
}

TEST(Criteria, areReadWhateverErrorStandsAndLeaveIt)
{
    const TestDocument document;
    for (const char16_t* text : {u">5", u"#", u">'", u">\"x"}) {
        raiseError(ErrorFileOpen);
        CriteriaCondition condition = conditionOf(text);
        EXPECT_EQ(condition.comparison, *text == u'>' ? TokenGreater : TokenEqual);
        EXPECT_EQ(errorState.code, ErrorFileOpen);
        clearError();
        releaseValue(condition.value);
    }
}

TEST(Criteria, ownWhatTheyCompareWith)
{
    const TestDocument document;
    const auto liveTexts = [] {
        const std::int32_t count = stringPool->beginScan();
        stringPool->endScan();
        return count;
    };
    const std::int32_t before = liveTexts();
    for (const char16_t* text : {u">abc", u">5", u"<>", u"abc", u""}) {
        CriteriaCondition condition = conditionOf(text);
        releaseValue(condition.value);
        EXPECT_EQ(liveTexts(), before);
    }
}

TEST(Criteria, compareInTheOrderOfKindsAndWithCase)
{
    const TestDocument document;
    CellValue text;
    makeTextValue(text, u"abc");
    const CellValue blank;
    const CellValue five = CellValue::makeNumber(5);
    const CellValue date = CellValue::makeDate(1);
    const CellValue truth = CellValue::makeLogical(false);
    const CellValue error = CellValue::makeError(CellErrorNull);
    const struct {
        const char* behaviour;
        const char16_t* criteria;
        const CellValue* value;
        bool meets;
    } cases[] = {
        {"a greater number",                      u">4",    &five,   true },
        {"an equal number is not greater",        u">5",    &five,   false},
        {"but at least as great",                 u">=5",   &five,   true },
        {"and at most as great",                  u"<=5",   &five,   true },
        {"and not unequal",                       u"<>5",   &five,   false},
        {"a lesser number",                       u"<6",    &five,   true },
        {"any date lies above any number",        u">1000", &date,   true },
        {"so no date is below one",               u"<1000", &date,   false},
        {"any text lies above any number",        u">1000", &text,   true },
        {"a logical lies above",                  u">1000", &truth,  true },
        {"an error lies above",                   u">1000", &error,  true },
        {"a blank lies above",                    u">1000", &blank,  true },
        {"a cell that does not exist lies above", u">1000", nullptr, true },
        {"and is unequal to everything",          u"<>x",   nullptr, true },
        {"to a blank too",                        u"<>",    nullptr, true },
        {"but a blank is equal to a blank",       u"<>",    &blank,  false},
        {"nothing is not below anything",         u"<x",    nullptr, false},
        {"the same text",                         u"abc",   &text,   true },
        {"the same text in another case",         u"ABC",   &text,   false},
        {"which is unequal",                      u"<>ABC", &text,   true },
        {"small letters lie above capital ones",  u">ABD",  &text,   true },
        {"a text criterion never meets a number", u"5",     &five,   false},
    };
    for (const auto& c : cases) {
        CriteriaCondition condition = conditionOf(c.criteria);
        EXPECT_EQ(meetsCondition(c.value, condition), c.meets) << c.behaviour;
        releaseValue(condition.value);
    }
    releaseValue(text);
}

TEST(SheetRange, countsItsCellsAsTheCornersStand)
{
    const struct {
        const char* behaviour;
        RangeRef range;
        int columns, rows;
    } cases[] = {
        {"one cell",                   {4, 4, 4, 4},         1,   1    },
        {"a rectangle",                {1, 2, 3, 5},         4,   3    },
        {"whole columns",              {0, 0, LastRow, 255}, 256, 16384},
        {"corners next to each other", {2, 2, 1, 1},         0,   0    },
        {"corners far out of order",   {9, 9, 1, 1},         0,   0    },
        {"rows alone out of order",    {9, 1, 1, 2},         2,   0    },
    };
    for (const auto& c : cases) {
        const SheetRange cells{nullptr, c.range};
        EXPECT_EQ(cells.columnCount(), c.columns) << c.behaviour;
        EXPECT_EQ(cells.rowCount(), c.rows) << c.behaviour;
    }
}

TEST(SheetRange, isTheFirstSheetOfAReference)
{
    const TestDocument document;
    CellValue reference = CellValue::makeRangeRef({1, 2, 3, 4});
    reference.tag = TagSheetRangeRef;
    reference.firstSheet = 1;
    reference.lastSheet = 2;
    SheetRange cells;

    pushRaw(reference);
    EXPECT_TRUE(popSheetRange(cells));
    EXPECT_EQ(cells.sheet, workbook->sheetAt(1));
    EXPECT_EQ(cells.range, (RangeRef{1, 2, 3, 4}));
    EXPECT_EQ(machine.pendingError, 0);

    reference.firstSheet = 7;
    reference.lastSheet = 7;
    pushRaw(reference);
    EXPECT_FALSE(popSheetRange(cells)) << "the sheet is gone";
    EXPECT_EQ(machine.pendingError, CellErrorRef);
    setPending(0);

    pushNumber(1);
    EXPECT_FALSE(popSheetRange(cells)) << "a number is no range";
    EXPECT_EQ(machine.pendingError, CellErrorRef);
    EXPECT_EQ(machine.stackTop, machine.runBase);
    setPending(0);
}

} // namespace
} // namespace vorn
