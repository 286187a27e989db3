#include "formula/references.h"

#include "core/error.h"
#include "core/workbook.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(References, nameTheColumns)
{
    const struct {
        int column;
        std::u16string_view name;
    } cases[] = {
        {0,   u"A" },
        {25,  u"Z" },
        {26,  u"AA"},
        {51,  u"AZ"},
        {52,  u"BA"},
        {255, u"IV"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(columnName(c.column), c.name);
}

TEST(References, areWrittenRelativeOrAbsolute)
{
    EXPECT_EQ(cellRefToText(0, 0, RelativeForm), u"A1");
    EXPECT_EQ(cellRefToText(0, 0, AbsoluteForm), u"$A$1");
    EXPECT_EQ(cellRefToText(255, 16383, RelativeForm), u"IV16384");
    EXPECT_EQ(cellRefToText(255, 16383, AbsoluteForm), u"$IV$16384");
    EXPECT_EQ(rangeToText({2, 1, 2, 1}, RelativeForm), u"B3");
    EXPECT_EQ(rangeToText({2, 1, 2, 1}, AbsoluteForm), u"$B$3");
    EXPECT_EQ(rangeToText({0, 0, 2, 1}, RelativeForm), u"A1:B3");
    EXPECT_EQ(rangeToText({0, 0, 2, 1}, AbsoluteForm), u"$A$1:$B$3");
    EXPECT_EQ(rangeToText({0, 0, 0, 1}, RelativeForm), u"A1:B1");
}

TEST(References, areReadWithTheirSheets)
{
    const TestDocument document;
    workbook->sheetAt(1)->setName(u"My Sheet");
    const struct {
        const char* behaviour;
        std::u16string_view text;
        ValueTag tag;
        int firstSheet, lastSheet;
        RangeRef range;
    } cases[] = {
        {"a cell",                 u"B3",                  TagSheetCellRef,  255, 245, {2, 1, 0, 0}      },
        {"an absolute cell",       u"$B$3",                TagSheetCellRef,  255, 245, {2, 1, 0, 0}      },
        {"with blanks around",     u" b3 ",                TagSheetCellRef,  255, 245, {2, 1, 0, 0}      },
        {"a range",                u"A1:$B$3",             TagSheetRangeRef, 255, 245, {0, 0, 2, 1}      },
        {"with dots",              u"A1..B3",              TagSheetRangeRef, 255, 245, {0, 0, 2, 1}      },
        {"with corners as typed",  u"B3:A1",               TagSheetRangeRef, 255, 245, {2, 1, 0, 0}      },
        {"the last cell",          u"IV16384",             TagSheetCellRef,  255, 245, {16383, 255, 0, 0}},
        {"a cell of a sheet",      u"Sheet3!B3",           TagSheetCellRef,  2,   2,   {2, 1, 0, 0}      },
        {"of a quoted one",        u"'my sheet'!B3",       TagSheetCellRef,  1,   1,   {2, 1, 0, 0}      },
        {"a range of some sheets", u"Sheet3:Sheet1!A1:B3", TagSheetRangeRef, 0,   2,   {0, 0, 2, 1}      },
    };
    for (const auto& c : cases) {
        CellValue value;
        EXPECT_TRUE(parseReferenceText(c.text, value)) << c.behaviour;
        EXPECT_EQ(value.tag, c.tag) << c.behaviour;
        EXPECT_EQ(value.firstSheet, c.firstSheet) << c.behaviour;
        EXPECT_EQ(value.lastSheet, c.lastSheet) << c.behaviour;
        EXPECT_EQ(value.rangeRef(), c.range) << c.behaviour;
        EXPECT_EQ(errorState.code, ErrorNone) << c.behaviour;
    }
}

TEST(References, areRefusedWhenTheyAreNone)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        std::u16string_view text;
        int error;
    } cases[] = {
        {"nothing",                     u"",             ErrorNone        },
        {"a word",                      u"Total",        ErrorNone        },
        {"a number",                    u"12",           ErrorNone        },
        {"a formula",                   u"=A1",          ErrorNone        },
        {"more than a reference",       u"A1+1",         ErrorNone        },
        {"two references",              u"A1 B2",        ErrorNone        },
        {"a character that is none",    u"A1#",          ErrorCharacter   },
        {"half a range",                u"A1:",          ErrorNone        },
        {"a sheet without a bang",      u"Sheet1",       ErrorBangExpected},
        {"a sheet and a blank",         u"Sheet1 A1",    ErrorBangExpected},
        {"a sheet without a reference", u"Sheet1!",      ErrorNone        },
        {"a sheet and a word",          u"Sheet1!Sum",   ErrorNone        },
        {"no such sheet",               u"'No Such'!A1", ErrorSheetName   },
        {"a bad reference",             u"$A0",          ErrorRowExpected },
    };
    for (const auto& c : cases) {
        CellValue value = CellValue::makeNumber(7);
        EXPECT_FALSE(parseReferenceText(c.text, value)) << c.behaviour;
        EXPECT_EQ(value.number(), 7) << c.behaviour;
        EXPECT_EQ(errorState.code, c.error) << c.behaviour;
        clearError();
    }
}

} // namespace
} // namespace vorn
