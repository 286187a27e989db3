#include "shell/entry.h"

#include "core/error.h"
#include "editing/undo.h"
#include "functions/table.h"
#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Texts = std::vector<std::string>;

constexpr int RowOfPi = 14; // a function without arguments

class EntryTest : public testing::Test {
protected:
    FormulaBar& bar() { return session.app.formulaBar; }

    Session session;
};

// --- Opening

TEST_F(EntryTest, opensOnce)
{
    beginEdit(u"one");
    EXPECT_TRUE(bar().editing);
    EXPECT_EQ(session.editor(), "editing |one");
    beginEdit(u"two");
    EXPECT_EQ(session.editor(), "editing |one") << "while it is open it stays as it is";
}

TEST_F(EntryTest, letsTheArrowsMoveTheCaretUnlessItWasOpenedByTyping)
{
    const struct {
        const char* behaviour;
        void (*open)();
        bool caretMode;
    } cases[] = {
        {"a text that a command begins with", [] { beginEdit(u"=1"); },   true },
        {"F2",                                [] { keyDown(KeyF2, {}); }, true },
        {"a tap",                             [] { tapEditor(); },        true },
        {"AutoSum",                           autoSumCommand,             true },
        {"a first character",                 [] { character(u'x'); },    false},
    };
    for (const auto& c : cases) {
        bar().caretMode = !c.caretMode;
        c.open();
        EXPECT_TRUE(bar().editing) << c.behaviour;
        EXPECT_EQ(bar().caretMode, c.caretMode) << c.behaviour;
        cancelEdit();
    }
}

TEST_F(EntryTest, scrollsTheActiveCellIntoViewWithOneMoreBehindIt)
{
    session.select(u"F30");
    session.sheet().leftColumn = 20;
    session.sheet().topRow = 100;
    beginEdit(u"");
    EXPECT_EQ(session.sheet().leftColumn, 5);
    EXPECT_EQ(session.sheet().topRow, 29);
    cancelEdit();
    session.sheet().leftColumn = 0;
    session.sheet().topRow = 0;
    beginEdit(u"");
    EXPECT_EQ(session.sheet().leftColumn, 4)
        << "three columns fit, and the cell is the second last";
    EXPECT_EQ(session.sheet().topRow, 15);
}

TEST_F(EntryTest, takesAnyCharacterFromTheBlankOn)
{
    const struct {
        char16_t unit;
        const char* editor;
    } cases[] = {
        {u'a',    "editing a|"},
        {u' ',    "editing  |"},
        {u'=',    "editing =|"},
        {u'~',    "editing ~|"},
        {u'\t',   "ready"     },
        {u'\b',   "ready"     },
        {u'\x1b', "ready"     },
        {u'\x1f', "ready"     },
        {u'\r',   "ready"     },
        {u'\n',   "ready"     },
    };
    for (const auto& c : cases) {
        character(c.unit);
        EXPECT_EQ(session.editor(), c.editor) << int{c.unit};
        cancelEdit();
    }
}

TEST_F(EntryTest, opensTheCellsTextAllSelected)
{
    session.put(u"A1", u"=1+2");
    session.key(KeyF2);
    EXPECT_EQ(session.editor(), "editing [=1+2]");
    session.key(KeyEscape);
    session.key(KeyDown);
    session.key(KeyF2);
    EXPECT_EQ(session.editor(), "editing |") << "an empty cell";
}

TEST_F(EntryTest, startsInTheFormulaBarAtATap)
{
    session.put(u"A1", u"text");
    EXPECT_TRUE(tapEditor());
    EXPECT_EQ(session.editor(), "editing |text");
    EXPECT_TRUE(tapEditor()) << "and goes on there";
    EXPECT_EQ(session.editor(), "editing |text");
}

// --- Protection

TEST_F(EntryTest, refusesALockedCellOncePerKey)
{
    session.put(u"A1", u"text");
    session.sheet().protectedSheet = true;
    const struct {
        const char* behaviour;
        void (*act)(Session&);
        std::size_t boxes;
    } cases[] = {
        {"a character",                [](Session& s) { s.type(u"x"); },            1},
        {"three characters",           [](Session& s) { s.type(u"xyz"); },          3},
        {"F2",                         [](Session& s) { s.key(KeyF2); },            1},
        {"Enter",                      [](Session& s) { s.key(KeyEnter); },         1},
        {"a tap into the formula bar", [](Session&) { EXPECT_FALSE(tapEditor()); }, 1},
        {"AutoSum",                    [](Session&) { autoSumCommand(); },          1},
        {"Insert Function",            [](Session&) { insertFunctionCommand(); },   1},
        {"Insert Name",                [](Session&) { insertNameCommand(); },       1},
        {"Quick Entry",                [](Session&) { quickEntryCommand(); },       1},
        {"an arrow is no entry",       [](Session& s) { s.key(KeyLeft); },          0},
        {"nor is Escape",              [](Session& s) { s.key(KeyEscape); },        0},
        {"nor Tab",                    [](Session& s) { s.key(KeyTab); },           0},
    };
    for (const auto& c : cases) {
        c.act(session);
        EXPECT_EQ(session.editor(), "ready") << c.behaviour;
        EXPECT_EQ(session.selected(), "A1") << c.behaviour;
        EXPECT_EQ(session.boxes(), Texts(c.boxes, "Locked cell")) << c.behaviour;
    }
    EXPECT_EQ(session.input(u"A1"), "text");
}

TEST_F(EntryTest, refusesEveryKeyInAnEditorThatStandsOnALockedCell)
{
    session.put(u"A1", u"text");
    session.type(u"abc");
    session.sheet().protectedSheet = true;
    const struct {
        const char* behaviour;
        void (*act)(Session&);
    } cases[] = {
        {"a character",       [](Session& s) { s.type(u"x"); }           },
        {"an arrow",          [](Session& s) { s.key(KeyLeft); }         },
        {"Home",              [](Session& s) { s.key(KeyHome); }         },
        {"Escape",            [](Session& s) { s.key(KeyEscape); }       },
        {"Enter",             [](Session& s) { s.key(KeyEnter); }        },
        {"Tab",               [](Session& s) { s.key(KeyTab); }          },
        {"a tap",             [](Session&) { EXPECT_FALSE(tapEditor()); }},
        {"the commit button", [](Session&) { commitCommand(); }          },
    };
    for (const auto& c : cases) {
        c.act(session);
        EXPECT_EQ(session.editor(), "editing abc|") << c.behaviour;
        EXPECT_EQ(session.boxes(), Texts{"Locked cell"}) << c.behaviour;
    }
    cancelCommand();
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "text");
}

TEST_F(EntryTest, warnsOfALockedCell)
{
    workbook->protectedWorkbook = true;
    session.type(u"x");
    ASSERT_EQ(session.machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(session.machine.userInterface.boxes[0].caption, u"Protection");
    EXPECT_EQ(session.machine.userInterface.boxes[0].text, u"Locked cell");
}

TEST_F(EntryTest, takesEntriesInUnlockedCells)
{
    session.protect(u"A1", false);
    session.sheet().protectedSheet = true;
    session.type(u"5");
    session.key(KeyEnter);
    EXPECT_EQ(session.input(u"A1"), "5");
    EXPECT_EQ(session.boxes(), Texts());
}

TEST_F(EntryTest, hidesAHiddenFormula)
{
    session.put(u"A1", u"=1+2");
    session.protect(u"A1", false, true);
    session.sheet().protectedSheet = true;
    session.key(KeyF2);
    EXPECT_EQ(session.editor(), "editing |");
    session.key(KeyEnter);
    EXPECT_EQ(session.input(u"A1"), "=1+2") << "an empty text that nobody changed is not stored";
    tapEditor();
    EXPECT_EQ(session.editor(), "editing |");
    session.type(u"7");
    session.key(KeyEnter);
    EXPECT_EQ(session.input(u"A1"), "7");
}

// --- Committing

TEST_F(EntryTest, storesTheTextAndCloses)
{
    session.type(u"1/2/2000");
    EXPECT_TRUE(commitEdit(StayAfterCommit));
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.shown(u"A1"), "1/2/00");
    EXPECT_TRUE(workbook->modified);
    EXPECT_TRUE(commitEdit(MoveAfterCommit)) << "nothing is open, nothing happens";
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(EntryTest, movesAsTheSettingSays)
{
    const struct {
        MoveAfterEnter move;
        const char* selected;
    } cases[] = {
        {MoveNowhere, "B2"},
        {MoveRight,   "C2"},
        {MoveDown,    "B3"},
    };
    for (const auto& c : cases) {
        session.app.moveAfterEnter = c.move;
        session.select(u"B2");
        session.type(u"5");
        session.key(KeyEnter);
        EXPECT_EQ(session.selected(), c.selected) << "Enter in the editor";
        session.select(u"B2");
        session.key(KeyEnter);
        EXPECT_EQ(session.selected(), c.selected) << "Enter in Ready";
        session.select(u"B2");
        session.type(u"5");
        commitCommand();
        EXPECT_EQ(session.selected(), c.selected) << "the commit button";
        session.select(u"B2");
        session.type(u"5");
        commitEdit(StayAfterCommit);
        EXPECT_EQ(session.selected(), "B2") << "a commit by something else";
        session.select(u"B2");
        commitCommand();
        EXPECT_EQ(session.selected(), "B2") << "there is nothing to commit";
    }
}

TEST_F(EntryTest, takesALineFeedForEnter)
{
    session.type(u"5\n");
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "5");
}

TEST_F(EntryTest, doesNotStoreATextThatTheCellHas)
{
    const struct {
        const char* behaviour;
        std::u16string_view present, typed;
    } cases[] = {
        {"a text",                          u"abc",      u"abc"   },
        {"a number",                        u"5",        u"5"     },
        {"a formula as it is printed",      u"=1+2",     u"=1+2"  },
        {"a date as the input line has it", u"1/2/2000", u"1/2/00"},
        {"a text that reads as a number",   u"'123",     u"123"   },
        {"nothing in an empty cell",        u"",         u" \b"   },
    };
    for (const auto& c : cases) {
        session.put(u"A1", c.present);
        const int tag = session.sheet().valueTag(0, 0);
        workbook->modified = false;
        session.type(c.typed);
        session.key(KeyTab);
        EXPECT_EQ(session.editor(), "ready") << c.behaviour;
        EXPECT_FALSE(workbook->modified) << c.behaviour;
        EXPECT_EQ(session.sheet().valueTag(0, 0), tag) << c.behaviour;
        session.select(u"A1");
    }
}

TEST_F(EntryTest, keepsTheEditorWithAFormulaThatDoesNotCompile)
{
    session.put(u"A1", u"old");
    workbook->modified = false;
    session.type(u"=1+(2");
    bar().line.setCaret(3);
    EXPECT_FALSE(commitEdit(MoveAfterCommit));
    EXPECT_EQ(session.boxes(), Texts{"\")\" missing"}) << "the error is shown at once";
    EXPECT_EQ(errorState.code, ErrorNone);
    EXPECT_EQ(session.editor(), "editing =1+|(2") << "and the caret stays";
    EXPECT_EQ(session.app.repaintLock, 0);
    EXPECT_EQ(session.input(u"A1"), "old");
    EXPECT_FALSE(workbook->modified);
    EXPECT_FALSE(bar().caretMode) << "as it was";
}

TEST_F(EntryTest, holdsNoRepaintLockWhileItsBoxIsOpen)
{
    struct LockReader : SilentUserInterface {
        BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text,
                             BoxButtons buttons, BoxIcon icon) override
        {
            locks.push_back(application->repaintLock);
            return SilentUserInterface::messageBox(caption, text, buttons, icon);
        }
        std::vector<int> locks;
    } reader;
    platform.userInterface = &reader;
    session.type(u"=1+");
    EXPECT_FALSE(commitEdit(StayAfterCommit));
    EXPECT_EQ(reader.locks, std::vector<int>{0}) << "the window is painted under it";
    platform.userInterface = &session.machine.userInterface;
}

TEST_F(EntryTest, lowersTheRepaintLock)
{
    session.type(u"5");
    commitEdit(StayAfterCommit);
    EXPECT_EQ(session.app.repaintLock, 0);
    EXPECT_TRUE(bar().caretMode) << "for the next time";
}

TEST_F(EntryTest, cutsALongText)
{
    const std::u16string longText(1030, u'x');
    beginEdit(longText);
    EXPECT_TRUE(commitEdit(StayAfterCommit));
    EXPECT_EQ(session.input(u"A1").size(), 1024U);
}

TEST_F(EntryTest, leavesALongTextAloneThatNobodyChanged)
{
    // Such texts come from files.
    const std::u16string longText(1030, u'x');
    session.put(u"A1", longText);
    ASSERT_EQ(session.input(u"A1").size(), 1030U);
    session.key(KeyF2);
    session.key(KeyEnter);
    EXPECT_EQ(session.input(u"A1").size(), 1030U);
}

TEST_F(EntryTest, writesOverAFormulaThatIsTooLongToPrint)
{
    std::u16string formula = u"=1";
    for (int i = 0; i < 500; ++i)
        formula += u"+1";
    session.put(u"A1", formula);
    ASSERT_EQ(session.boxes(), Texts());
    refreshEditor();
    session.key(KeyF2);
    EXPECT_EQ(session.editor(), "editing |");
    session.type(u"=1+1");
    session.key(KeyEnter);
    EXPECT_EQ(session.boxes(), Texts()) << "looking at it is no error";
    EXPECT_EQ(session.input(u"A1"), "=1+1");
}

TEST_F(EntryTest, storesTextLiterallyInACellOfText)
{
    CellStyle style = workbook->styles[0];
    int textFormat = 0;
    while (workbook->formats[textFormat].kind != FormatText)
        ++textFormat;
    style.set(StyleFormat, textFormat);
    session.sheet().setCellStyle(0, 0, workbook->addStyle(style));
    session.type(u"=1+");
    session.key(KeyEnter);
    EXPECT_EQ(session.boxes(), Texts());
    EXPECT_EQ(session.input(u"A1"), "=1+");
    EXPECT_EQ(session.sheet().valueTag(0, 0), TagText);
}

TEST_F(EntryTest, makesOneStepOfAChangeAndNoneWithout)
{
    session.select(u"C3");
    session.type(u"5");
    session.key(KeyDown);
    EXPECT_EQ(undoList.steps.size(), 1);
    EXPECT_EQ(undoLabel(), u"Typing in C3");
    session.key(KeyUp);
    session.type(u"5");
    session.key(KeyTab);
    session.select(u"C3");
    session.key(KeyF2);
    session.key(KeyEnter);
    session.type(u"6");
    session.key(KeyEscape);
    session.type(u"=1^");
    session.key(KeyEnter);
    session.key(KeyEscape);
    EXPECT_EQ(undoList.steps.size(), 1);
    onCommand(CommandUndo);
    EXPECT_EQ(session.input(u"C3"), "");
}

// --- Cancelling

TEST_F(EntryTest, dropsTheText)
{
    session.put(u"A1", u"old");
    session.type(u"new");
    session.app.repaintHints = 0;
    cancelEdit();
    EXPECT_EQ(session.app.repaintHints, DirtyAll);
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(bar().line.text(), u"");
    refreshEditor();
    EXPECT_EQ(bar().line.text(), u"old") << "the repaint pass brings the cell's text back";
    session.app.repaintHints = 0;
    cancelEdit();
    EXPECT_EQ(session.app.repaintHints, 0) << "nothing was open";
}

TEST_F(EntryTest, closesWithItsDocument)
{
    session.type(u"=");
    session.key(KeyDown);
    EXPECT_TRUE(session.app.pointMode);
    session.app.newWorkbook();
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_FALSE(session.app.pointMode);
    EXPECT_EQ(session.app.pointSheet, nullptr);
    session.type(u"x");
    EXPECT_EQ(session.editor(), "editing x|");
}

// --- Commands

TEST_F(EntryTest, sums)
{
    autoSumCommand();
    EXPECT_EQ(session.editor(), "editing =SUM(|)");
    session.type(u"1,2");
    session.key(KeyEnter);
    EXPECT_EQ(session.shown(u"A1"), "3");
}

TEST_F(EntryTest, sumsWithinAFormula)
{
    session.type(u"=1+xy");
    bar().line.setSelection(3, 5);
    autoSumCommand();
    EXPECT_EQ(session.editor(), "editing =1+SUM(|)");
    bar().line.setSelection(0, -1);
    autoSumCommand();
    EXPECT_EQ(session.editor(), "editing SUM(|)") << "no equals sign is put before it";
}

TEST_F(EntryTest, insertsFunctions)
{
    ASSERT_EQ(FunctionTable[RowOfPi].maxArguments, 0);
    const struct {
        const char* behaviour;
        std::u16string_view typed; // nothing: the editor is closed
        int start, end;
        int row;
        const char* editor;
    } cases[] = {
        {"opening the editor",                u"",      0, 0, FunctionRowSum, "editing =Sum(|)"  },
        {"no arguments, nothing between",     u"",      0, 0, RowOfPi,        "editing =Pi()|"   },
        {"at the caret",                      u"=1+",   3, 3, FunctionRowSum, "editing =1+Sum(|)"},
        {"over the selection",                u"=1+ab", 3, 5, FunctionRowSum, "editing =1+Sum(|)"},
        {"at the start, with an equals sign", u"abc",   0, 3, FunctionRowSum, "editing =Sum(|)"  },
        {"before what is there",              u"abc",   0, 0, RowOfPi,        "editing =Pi()|abc"},
    };
    for (const auto& c : cases) {
        session.type(c.typed);
        if (!c.typed.empty())
            bar().line.setSelection(c.start, c.end);
        insertFunction(c.row);
        EXPECT_EQ(session.editor(), c.editor) << c.behaviour;
        EXPECT_EQ(session.app.usedFunctions[0], c.row) << c.behaviour;
        cancelEdit();
    }
}

TEST_F(EntryTest, insertsNames)
{
    insertName(u"rate");
    EXPECT_EQ(session.editor(), "editing =rate|");
    session.type(u"*");
    insertName(u"rate");
    EXPECT_EQ(session.editor(), "editing =rate*rate|");
    bar().line.setSelection(0, -1);
    insertName(u"rate");
    EXPECT_EQ(session.editor(), "editing =rate|");
}

TEST_F(EntryTest, entersAQuickEntryAndMoves)
{
    session.app.moveAfterEnter = MoveDown;
    enterQuickEntry(u"pear");
    EXPECT_EQ(session.input(u"A1"), "pear");
    EXPECT_EQ(session.selected(), "A2");
    session.type(u"half writ");
    enterQuickEntry(u"plum");
    EXPECT_EQ(session.editor(), "ready") << "it takes the place of what was being written";
    EXPECT_EQ(session.input(u"A2"), "plum");
    EXPECT_EQ(session.selected(), "A3");
}

TEST_F(EntryTest, changesNothingIfTheDialogIsCancelled)
{
    session.type(u"=1+");
    insertFunctionCommand();
    insertNameCommand();
    quickEntryCommand();
    EXPECT_EQ(session.editor(), "editing =1+|");
    cancelEdit();
    insertFunctionCommand();
    insertNameCommand();
    quickEntryCommand();
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "");
}

TEST_F(EntryTest, takesTheEditingCommandsToItself)
{
    session.type(u"abcd");
    onCommand(CommandUndo);
    EXPECT_EQ(session.editor(), "editing a|") << "the editor opened with the first character";
    onCommand(CommandUndo);
    EXPECT_EQ(session.editor(), "editing a[bcd]");
    bar().line.setSelection(1, 3);
    onCommand(CommandCopy);
    EXPECT_EQ(session.machine.clipboard.text(), u"bc");
    onCommand(CommandCut);
    EXPECT_EQ(session.editor(), "editing a|d");
    onCommand(CommandPaste);
    EXPECT_EQ(session.editor(), "editing abc|d");
    bar().line.setSelection(0, 1);
    onCommand(CommandClearContents);
    EXPECT_EQ(session.editor(), "editing |bcd");
    bar().line.setSelection(0, 1);
    onCommand(CommandClearAll);
    EXPECT_EQ(session.editor(), "editing |cd");
    onCommand(CommandClearAll);
    EXPECT_EQ(session.editor(), "editing |cd") << "nothing is selected";
}

TEST_F(EntryTest, letsMostCommandsRest)
{
    session.type(u"abc");
    for (const int id : {int{CommandAbout}, int{CommandNew}, int{CommandSelectAll},
                         int{CommandZoom70}, int{CommandRedo}})
        onCommand(static_cast<std::uint16_t>(id));
    EXPECT_EQ(session.editor(), "editing abc|");
    EXPECT_EQ(session.selected(), "A1");
    EXPECT_EQ(session.sheet().zoom, 100);
    EXPECT_EQ(session.boxes(), Texts());
}

} // namespace
} // namespace vorn
