#include "editing/find.h"

#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "editing/view.h"
#include "formula/references.h"
#include "support/cells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class FindTest : public testing::Test {
protected:
    FindTest() { findSettings = {}; }
    ~FindTest() override
    {
        clearUndo();
        clearError();
        findSettings = {};
    }

    // Selects "B2" or "B2:C4"; the first corner is the active cell.
    static void select(std::u16string_view text)
    {
        CellValue reference;
        ASSERT_TRUE(parseReferenceText(text, reference));
        const bool oneCell = reference.tag == TagSheetCellRef;
        const CellRef first = oneCell ? reference.cellRef() : reference.rangeRef().first();
        workbook->currentSheet->selection.select(first,
                                                 oneCell ? first : reference.rangeRef().last());
        setSearchRange();
    }

    static std::u16string cursor()
    {
        const Selection& selection = workbook->currentSheet->selection;
        return cellRefToText(selection.activeColumn, selection.activeRow, RelativeForm);
    }

    static std::u16string input()
    {
        const Selection& selection = workbook->currentSheet->selection;
        return workbook->currentSheet->cellInput(selection.activeColumn, selection.activeRow);
    }

    // The hits from the first on, with blanks between them, until there is none; eight at most.
    static std::u16string hits(FindStart start)
    {
        std::u16string found;
        for (int count = 0; count < 8 && findNext(start); ++count, start = FindBehindActiveCell)
            found += (found.empty() ? u"" : u" ") + cursor();
        return found;
    }

    Cells cells;
};

TEST_F(FindTest, beginsWithItsDefaults)
{
    EXPECT_EQ(findSettings.findText, u"");
    EXPECT_EQ(findSettings.replaceText, u"");
    EXPECT_FALSE(findSettings.byColumns);
    EXPECT_TRUE(findSettings.inValues);
    EXPECT_FALSE(findSettings.caseSensitive);
    EXPECT_FALSE(findSettings.entireCells);
    EXPECT_EQ(findSettings.replaceAction, ActionFindNext);
    EXPECT_EQ(findSettings.findBoxRect.left, -1);
    EXPECT_EQ(findSettings.replaceBoxRect.left, -1);
}

TEST_F(FindTest, searchesTheSelectionIfItIsMoreThanOneCell)
{
    RangeRef whole;
    whole.set(0, 0, ColumnCount, RowCount);
    select(u"C5");
    EXPECT_EQ(findSettings.searchRange, whole);
    select(u"C6:C5");
    EXPECT_EQ(findSettings.searchRange, (RangeRef{4, 2, 5, 2}));
}

TEST_F(FindTest, goesOnInScanOrderFromBehindTheActiveCell)
{
    cells.fill("B2", {
                         {u"x", u"x", u"-"},
                         {u"-", u"x", u"x"},
                         {u"x", u"-", u"x"}
    });
    const struct {
        const char* behaviour;
        const char16_t* from;
        bool byColumns;
        FindStart start;
        const char16_t* first;
    } cases[] = {
        {"by lines, the next column",            u"B2",      false, FindBehindActiveCell, u"C2"},
        {"then the next line",                   u"C2",      false, FindBehindActiveCell, u"C3"},
        {"from an empty cell before all",        u"A1",      false, FindBehindActiveCell, u"B2"},
        {"from one between",                     u"E3",      false, FindBehindActiveCell, u"B4"},
        {"from the last hit round to the first", u"D4",      false, FindBehindActiveCell, u"B2"},
        {"from the end of the sheet round",      u"IV16384", false, FindBehindActiveCell, u"B2"},
        {"by columns, the next line",            u"C2",      true,  FindBehindActiveCell, u"C3"},
        {"then the next column",                 u"C3",      true,  FindBehindActiveCell, u"D3"},
        {"by columns over one that is no hit",   u"B2",      true,  FindBehindActiveCell, u"B4"},
        {"by columns from an empty column",      u"A9",      true,  FindBehindActiveCell, u"B2"},
        {"by columns round",                     u"D4",      true,  FindBehindActiveCell, u"B2"},
        {"by columns from the end round",        u"IV16384", true,  FindBehindActiveCell, u"B2"},
        {"the active cell first, if it counts",  u"C3",      false, FindInActiveCell,     u"C3"},
        {"but only if it is a hit",              u"B3",      false, FindInActiveCell,     u"C3"},
        {"and only if it is there",              u"A2",      false, FindInActiveCell,     u"B2"},
    };
    findSettings.findText = u"x";
    for (const auto& c : cases) {
        findSettings.byColumns = c.byColumns;
        select(c.from);
        EXPECT_TRUE(findNext(c.start)) << c.behaviour;
        EXPECT_EQ(cursor(), c.first) << c.behaviour;
    }
}

TEST_F(FindTest, goesRoundForEverWhileThereAreOthers)
{
    cells.fill("A1", {
                         {u"x", u"y"},
                         {u"x", u"x"}
    });
    findSettings.findText = u"x";
    select(u"A1");
    EXPECT_EQ(hits(FindInActiveCell), u"A1 A2 B2 A1 A2 B2 A1 A2");
    findSettings.byColumns = true;
    EXPECT_EQ(hits(FindBehindActiveCell), u"B2 A1 A2 B2 A1 A2 B2 A1");
}

TEST_F(FindTest, endsWhereItBegan)
{
    cells.put("C3", u"only");
    findSettings.findText = u"only";
    for (bool byColumns : {false, true}) {
        findSettings.byColumns = byColumns;
        select(u"C3");
        EXPECT_EQ(hits(FindInActiveCell), u"C3") << "at once, and not again behind it";
        EXPECT_EQ(cursor(), u"C3");
        select(u"A1");
        EXPECT_EQ(hits(FindInActiveCell), u"C3");
    }
    findSettings.findText = u"none";
    select(u"B2");
    EXPECT_FALSE(findNext(FindInActiveCell));
    EXPECT_EQ(cursor(), u"B2") << "the cursor stays where nothing was found";
    EXPECT_TRUE(cells.document.machine.userInterface.boxes.empty()) << "and nothing is said";
}

TEST_F(FindTest, findsNothingInAnEmptySheet)
{
    findSettings.findText = u"x";
    for (bool byColumns : {false, true}) {
        findSettings.byColumns = byColumns;
        select(u"A1");
        EXPECT_FALSE(findNext(FindInActiveCell));
        select(u"IV16384");
        EXPECT_FALSE(findNext(FindBehindActiveCell));
    }
}

TEST_F(FindTest, searchesJustTheSelectionOfSeveralCells)
{
    cells.fill("A1", {
                         {u"x", u"x", u"x"},
                         {u"x", u"x", u"x"},
                         {u"x", u"x", u"x"}
    });
    findSettings.findText = u"x";
    select(u"B2:C3");
    EXPECT_EQ(hits(FindInActiveCell), u"B2 C2 B3 C3 B2 C2 B3 C3");
    select(u"C3:B2");
    EXPECT_EQ(hits(FindInActiveCell), u"C3 B2 C2 B3 C3 B2 C2 B3") << "the active cell is C3";
    findSettings.byColumns = true;
    select(u"B2:C3");
    EXPECT_EQ(hits(FindInActiveCell), u"B2 B3 C2 C3 B2 B3 C2 C3");
    select(u"B2:C2");
    EXPECT_EQ(hits(FindInActiveCell), u"B2 C2 B2 C2 B2 C2 B2 C2");
}

TEST_F(FindTest, movesTheCursorToOneCellAndShowsIt)
{
    class View : public DocumentView {
    public:
        void lockRepaint() override {}
        void unlockRepaint() override {}
        void markDirty(std::uint16_t) override {}
        void sheetChanged() override {}
        void activeCellMoved() override { ++moves; }
        int moves = 0;
    } view;
    cells.put("B3", u"x");
    findSettings.findText = u"x";
    select(u"A1:C4");
    documentView = &view;
    EXPECT_TRUE(findNext(FindBehindActiveCell));
    EXPECT_FALSE(findNext(FindBehindActiveCell));
    documentView = nullptr;
    EXPECT_EQ(workbook->currentSheet->selection.range, (RangeRef{2, 1, 2, 1}));
    EXPECT_EQ(view.moves, 1);
}

TEST_F(FindTest, testsOneTextAgainstTheOther)
{
    cells.put("A1", u"Straße Apple");
    const struct {
        const char* behaviour;
        const char16_t* needle;
        bool entire, caseSensitive, found;
    } cases[] = {
        {"a part",                              u"Apple",         false, false, true },
        {"in whatever case",                    u"aPPLE",         false, false, true },
        {"not if the case counts",              u"aPPLE",         false, true,  false},
        {"the same case",                       u"Apple",         false, true,  true },
        {"letters outside of ASCII",            u"STRAße",       false, false, true },
        {"a blank is a character",              u"e A",           false, false, true },
        {"no more than the text",               u"Apples",        false, false, false},
        {"the entire cell",                     u"Straße Apple", true,  false, true },
        {"the entire cell in whatever case",    u"straße apple", true,  false, true },
        {"the entire cell, if the case counts", u"straße apple", true,  true,  false},
        {"the same, with its case",             u"Straße Apple", true,  true,  true },
        {"a part is not the entire cell",       u"Apple",         true,  false, false},
        {"the empty text is in every text",     u"",              false, false, true },
        {"but is not the entire one",           u"",              true,  false, false},
    };
    select(u"A1");
    for (const auto& c : cases) {
        findSettings.findText = c.needle;
        findSettings.entireCells = c.entire;
        findSettings.caseSensitive = c.caseSensitive;
        EXPECT_EQ(findNext(FindInActiveCell), c.found) << c.behaviour;
    }
}

TEST_F(FindTest, looksAtWhatIsShownOrAtWhatWasTyped)
{
    cells.put("A1", u"5%");
    cells.put("B1", u"=A1*2");
    cells.put("C1", u"1/2/2000");
    cells.put("D1", u"=1/0");
    const struct {
        const char* behaviour;
        const char16_t* needle;
        bool inValues;
        const char16_t* hits;
    } cases[] = {
        {"the shown percent",          u"5.00%",  true,  u"A1"},
        {"not the number behind it",   u"0.05",   true,  u""  },
        {"that is what was typed",     u"0.05",   false, u"A1"},
        {"and not the shown percent",  u"5.00%",  false, u""  },
        {"a formula shows its result", u"0.1",    true,  u"B1"},
        {"and is searched as a text",  u"A1*",    false, u"B1"},
        {"with its sign",              u"=A1*2",  false, u"B1"},
        {"but not both",               u"A1",     true,  u""  },
        {"an error shows",             u"!!Div",  true,  u"D1"},
        {"a date shows by its format", u"1/2/00", true,  u"C1"},
    };
    for (const auto& c : cases) {
        findSettings.findText = c.needle;
        findSettings.inValues = c.inValues;
        select(u"IV1");
        EXPECT_EQ(hits(FindBehindActiveCell).substr(0, 2), c.hits) << c.behaviour;
    }
}

TEST_F(FindTest, searchesAThousandCharactersOfWhatIsShown)
{
    cells.put("A1", std::u16string(999, u'a') + u"x");
    cells.put("A2", std::u16string(1000, u'a') + u"y");
    select(u"A1");
    findSettings.findText = u"x";
    EXPECT_TRUE(findNext(FindInActiveCell));
    findSettings.findText = u"y";
    EXPECT_FALSE(findNext(FindInActiveCell));
    findSettings.inValues = false;
    EXPECT_TRUE(findNext(FindInActiveCell)) << "what was typed has no such limit";
}

TEST_F(FindTest, visitsNoCellThatHasOnlyAStyle)
{
    CellStyle style = workbook->styles[0];
    style.set(StyleWrap, 1);
    workbook->currentSheet->setCellStyle(1, 0, workbook->addStyle(style));
    ASSERT_TRUE(workbook->currentSheet->isPresent(1, 0));
    select(u"A1");
    EXPECT_FALSE(findNext(FindInActiveCell)) << "though the empty text is in every text";
}

// --- Replace in cell

TEST_F(FindTest, replacesInTheTypedText)
{
    const struct {
        const char* behaviour;
        const char16_t *input, *needle, *replacement;
        ReplaceAction action;
        bool entire, caseSensitive;
        const char16_t* result;
    } cases[] = {
        {"the first match",                u"aXbXc",  u"X",  u"-",   ActionReplace,    false, false, u"a-bXc" },
        {"or all of them",                 u"aXbXc",  u"X",  u"-",   ActionReplaceAll, false, false, u"a-b-c" },
        {"in whatever case",               u"aXbxc",  u"x",  u"-",   ActionReplaceAll, false, false, u"a-b-c" },
        {"or with its case",               u"aXbxc",  u"x",  u"-",   ActionReplaceAll, false, true,  u"aXb-c" },
        {"keeping the case of the rest",   u"ABCxD",  u"X",  u"Q",   ActionReplace,    false, false,
         u"ABCQD"                                                                                             },
        {"with nothing",                   u"aXbXc",  u"X",  u"",    ActionReplaceAll, false, false, u"abc"   },
        {"with what contains it, once",    u"axb",    u"x",  u"xx",  ActionReplaceAll, false, false,
         u"axxb"                                                                                              },
        {"going on behind what it put",    u"aaa",    u"a",  u"ba",  ActionReplaceAll, false, false,
         u"bababa"                                                                                            },
        {"not in what two parts make up",  u"aabb",   u"ab", u"",    ActionReplaceAll, false, false,
         u"ab"                                                                                                },
        {"the text at the end",            u"abX",    u"X",  u"yz",  ActionReplaceAll, false, false, u"abyz"  },
        {"the whole cell, whatever is in", u"abc",    u"q",  u"new", ActionReplace,    true,  false,
         u"new"                                                                                               },
        {"a number's digits",              u"1231",   u"1",  u"9",   ActionReplaceAll, false, false, u"9239"  },
        {"a formula",                      u"=A9+A9", u"A9", u"B9",  ActionReplaceAll, false, false, u"=B9+B9"},
        {"before all with nothing",        u"abc",    u"",   u"-",   ActionReplace,    false, false, u"-abc"  },
    };
    for (const auto& c : cases) {
        cells.put("A1", c.input);
        select(u"A1");
        clearUndo();
        findSettings.findText = c.needle;
        findSettings.replaceText = c.replacement;
        findSettings.replaceAction = c.action;
        findSettings.entireCells = c.entire;
        findSettings.caseSensitive = c.caseSensitive;
        EXPECT_TRUE(replaceInCell()) << c.behaviour;
        EXPECT_EQ(input(), c.result) << c.behaviour;
        ASSERT_EQ(undoList.steps.size(), 1) << c.behaviour;
        EXPECT_EQ(undoLabel(), u"Typing in A1");
        undo();
        EXPECT_EQ(input(), c.input) << c.behaviour;
    }
}

TEST_F(FindTest, leavesACellAloneThatCannotBeReplacedIn)
{
    const std::u16string full(1022, u'a');
    const struct {
        const char* behaviour;
        std::u16string input;
        const char16_t *needle, *replacement;
        ReplaceAction action;
        bool stored;
    } cases[] = {
        {"up to 1,023 characters",               full + u"x",          u"x",                            u"y",                                   ActionReplace,     true                                                       },
        {"1,024 are too many",                   full + u"x",          u"x",                            u"yz",                                  ActionReplace,     false                                                      },
        {"and so they are for the second match", u"x" + full.substr(0, 1020) + u"x",                    u"x",                                   u"yz",
         ActionReplaceAll,                                                                                                                                                                                                      false},
        {"while the first alone has room",                                      u"x" + full.substr(0,                           1020) + u"x", u"x", u"yz",
         ActionReplace,                                                                    true},
        {"a text without the needle",                                  u"abc",                                                      u"q",                                                           u"y",                                                          ActionReplace,                  false},
        {"the empty text would be found without an end",                                 u"abc",                                                     u"",                                       u"y",                                       ActionReplaceAll,
         false                                                     },
        {"also if it is replaced with itself",                                  u"abc",                                                      u"",                                                  u"",                                                 ActionReplaceAll,          false},
    };
    for (const auto& c : cases) {
        cells.put("A1", c.input);
        select(u"A1");
        clearUndo();
        findSettings.findText = c.needle;
        findSettings.replaceText = c.replacement;
        findSettings.replaceAction = c.action;
        EXPECT_EQ(replaceInCell(), c.stored) << c.behaviour;
        EXPECT_EQ(input() == c.input, !c.stored) << c.behaviour;
        EXPECT_EQ(undoList.steps.size(), c.stored ? 1 : 0) << c.behaviour;
        EXPECT_FALSE(errorStands()) << c.behaviour;
    }
}

TEST_F(FindTest, raisesTheErrorOfAFormulaThatDoesNotCompile)
{
    cells.put("A1", u"=Sum(1)");
    select(u"A1");
    findSettings.findText = u")";
    EXPECT_FALSE(replaceInCell());
    EXPECT_EQ(errorState.code, ErrorRightParen);
    EXPECT_EQ(input(), u"=Sum(1)");
    EXPECT_EQ(undoList.steps.size(), 0);
}

} // namespace
} // namespace vorn
