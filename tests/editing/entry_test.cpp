#include "editing/entry.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "support/cells.h"
#include "support/codetext.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class Entry : public testing::Test {
protected:
    static Sheet& sheet() { return *workbook->currentSheet; }

    static int styleWithFormat(int format)
    {
        CellStyle style = defaultStyle();
        style.set(StyleFormat, format);
        return workbook->addStyle(style);
    }
    static int formatAt(int column, int row)
    {
        return workbook->styles[sheet().cellStyle(column, row)].format();
    }

    // "1/5": the value and the stored style, or "none" where nothing is present.
    static std::string at(int column, int row)
    {
        if (!sheet().isPresent(column, row))
            return "none";
        const Cell cell = sheet().cellCopy(column, row);
        return describe(cell.value) + '/' + std::to_string(cell.style);
    }

    EditDocument document;
};

TEST_F(Entry, storesAValueOfEachKindAndTakesItBack)
{
    const struct {
        const char* phrase;
        const char16_t* text;
        const char* stored;
    } cases[] = {
        {"a number",                         u"-5",       "-5/0"        },
        {"a logical",                        u"True",     "TRUE/0"      },
        {"a text",                           u"abc",      "\"abc\"/0"   },
        {"an apostrophe makes a text",       u"'=1+1",    "\"=1+1\"/0"  },
        {"a lone apostrophe an empty one",   u"'",        "\"\"/0"      },
        {"a formula",                        u"=1+1",     "formula/0"   },
        {"an empty text empties the cell",   u"",         "blank/0"     },
        {"ten percent is a tenth",           u"10%",      "0.1/1"       },
        {"a date comes with its own format", u"1/2/2000", "date 36527/2"},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(EditDocument::enter("C3", c.text)) << c.phrase;
        EXPECT_EQ(at(2, 2), c.stored) << c.phrase;
        undo();
        EXPECT_EQ(at(2, 2), "none") << c.phrase;
        redo();
        EXPECT_EQ(at(2, 2), c.stored) << c.phrase;
        undo();
        EXPECT_EQ(poolFaults(), "") << c.phrase;
    }
}

TEST_F(Entry, changesTheFormatForDatesAndPercentsOnly)
{
    const struct {
        const char* phrase;
        int before;
        const char16_t* text;
        int after;
    } cases[] = {
        {"a number changes nothing",               2,  u"5",              2 },
        {"a date takes the date format",           0,  u"1/2/2000",       6 },
        {"a time takes the time",                  0,  u"12:30",          11},
        {"seconds show seconds",                   0,  u"12:30:15 pm",    12},
        {"a date with a time takes both",          0,  u"1/2/2000 10:00", 14},
        {"a date in a cell of dates keeps it",     7,  u"1/2/2000",       7 },
        {"a time in a cell of dates keeps it",     6,  u"12:30",          6 },
        {"a date in a cell of numbers changes it", 2,  u"1/2/2000",       6 },
        {"a percent takes the percent",            0,  u"10%",            5 },
        {"a percent replaces a currency",          3,  u"10%",            5 },
        {"a percent replaces a date as well",      6,  u"10%",            5 },
        {"a text changes nothing",                 6,  u"abc",            6 },
        {"a formula changes nothing",              6,  u"=5%",            6 },
        {"a text format takes no date",            15, u"1/2/2000",       15},
    };
    int row = 0;
    for (const auto& c : cases) {
        const int style = styleWithFormat(c.before);
        sheet().setCell(0, row, blankCell(style));
        sheet().selection.select({static_cast<std::uint16_t>(row), 0},
                                 {static_cast<std::uint16_t>(row), 0});
        EXPECT_TRUE(enterCell(c.text)) << c.phrase;
        EXPECT_EQ(formatAt(0, row), c.after) << c.phrase;
        undo();
        EXPECT_EQ(at(0, row), "blank/" + std::to_string(style)) << c.phrase;
        redo();
        EXPECT_EQ(formatAt(0, row), c.after) << c.phrase;
        ++row;
    }
}

TEST_F(Entry, takesATextFormatAtItsWord)
{
    sheet().columns.setColumnStyle(0, 0, styleWithFormat(15));
    for (const char16_t* text : {u"=1+1", u"'5", u"5", u"true", u"1/2/2000"}) {
        EXPECT_TRUE(EditDocument::enter("A1", text));
        EXPECT_EQ(sheet().cellInput(0, 0), text);
        EXPECT_EQ(sheet().valueTag(0, 0), TagText);
    }
    EXPECT_EQ(calcChain.first(), nullptr);
}

TEST_F(Entry, keepsTheOtherPartsOfTheStyle)
{
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    style.set(StyleFont, 3);
    sheet().setRowStyle(4, workbook->addStyle(style));
    EXPECT_TRUE(EditDocument::enter("B5", u"5%"));
    style.set(StyleFormat, 5);
    EXPECT_TRUE(workbook->styles[sheet().cellCopy(1, 4).style].sameAs(style));
    undo();
    EXPECT_EQ(at(1, 4), "none") << "the cell had no style of its own";
}

TEST_F(Entry, isOneStepWithTheNameOfTheCell)
{
    const struct {
        const char* place;
        const char16_t* label;
    } cases[] = {
        {"A1",        u"Typing in A1"     },
        {"C3",        u"Typing in C3"     },
        {"IV16384",   u"Typing in IV16384"},
        {"Sheet2!B2", u"Typing in B2"     },
    };
    int steps = 0;
    for (const auto& c : cases) {
        EXPECT_TRUE(EditDocument::enter(c.place, u"1"));
        EXPECT_EQ(undoLabel(), c.label);
        EXPECT_EQ(undoList.steps.size(), ++steps);
    }
}

TEST_F(Entry, storesInTheActiveCellOfASelection)
{
    EXPECT_TRUE(EditDocument::enter("D4:B2", u"5"));
    EXPECT_EQ(EditDocument::input("D4"), u"5");
    EXPECT_EQ(undoLabel(), u"Typing in D4");
    EditDocument::select("A9");
    undo();
    const Selection& selection = sheet().selection;
    EXPECT_EQ(selection.range, (RangeRef{1, 1, 3, 3}));
    EXPECT_EQ(selection.activeColumn, 3);
    EXPECT_EQ(selection.activeRow, 3);
    EXPECT_EQ(EditDocument::input("D4"), u"");
}

TEST_F(Entry, recalculatesOnEveryRoad)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"1"));
    EXPECT_TRUE(EditDocument::enter("B1", u"=A1*10"));
    EXPECT_TRUE(EditDocument::enter("A1", u"2"));
    EXPECT_EQ(sheet().cellText(1, 0), u"20");
    undo();
    EXPECT_EQ(sheet().cellText(1, 0), u"10");
    redo();
    EXPECT_EQ(sheet().cellText(1, 0), u"20");
}

TEST_F(Entry, changesNothingWhenAFormulaDoesNotCompile)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"7"));
    const std::string before = describeSheets();
    workbook->modified = false;
    EXPECT_FALSE(EditDocument::enter("A1", u"=1+"));
    EXPECT_EQ(errorState.code, ErrorEndOfFormula);
    EXPECT_EQ(describeSheets(), before);
    EXPECT_EQ(undoList.steps.size(), 1);
    EXPECT_FALSE(workbook->modified);
    clearError();
}

TEST_F(Entry, storesACellOutOfTheSelection)
{
    EditDocument::select("A1");
    EXPECT_TRUE(storeCell(5, 6, u"1/2/2000", 0));
    EXPECT_EQ(undoLabel(), u"Typing in F7");
    EXPECT_EQ(formatAt(5, 6), 6);
    EXPECT_EQ(sheet().selection.activeColumn, 0);
    EXPECT_TRUE(storeCell(5, 6, u"x", 0)) << "the style is the caller's";
    EXPECT_EQ(formatAt(5, 6), 0);
    undo();
    EXPECT_EQ(formatAt(5, 6), 6);
}

TEST_F(Entry, makesAStepOfTheSameTextToo)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"'123"));
    EXPECT_TRUE(EditDocument::enter("A1", u"123"));
    EXPECT_EQ(sheet().valueTag(0, 0), TagNumber);
    EXPECT_EQ(undoList.steps.size(), 2) << "whether the text is new is asked by the editor";
}

// As docs/undo.md has it.
TEST_F(Entry, writesTwoPrograms)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"5"));
    const std::string select = "04:0000 02:810001 04:0000 04:0000 04:0000 04:0000 02:8c0004 ";
    const UndoStep& step = undoList.steps[0];
    EXPECT_EQ(codeText(blockCode(step.forward)),
              select +
                  "04:0000 04:0000 04:0000 03:040000000000000000001440 02:800004 02:950000 00");
    EXPECT_EQ(codeText(blockCode(step.backward)),
              select +
                  "04:0000 04:0000 04:ffff 03:000000000000000000000000 02:800004 02:950000 00");
}

} // namespace
} // namespace vorn
