#include "shell/pointmode.h"

#include "numfmt/locale.h"
#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr KeyModifiers Shift = {.shift = true};
constexpr KeyModifiers Ctrl = {.ctrl = true};

class PointModeTest : public testing::Test {
protected:
    FormulaBar& bar() { return session.app.formulaBar; }

    // A tap on a cell, as far as pointing goes.
    void tap(std::u16string_view cell)
    {
        if (yieldToGrid()) {
            const CellRef at = Session::place(cell);
            moveTo(at.column, at.row, SelectCell, ShowCell);
        }
        session.endMessage();
    }
    void showSheet(int index)
    {
        if (yieldToGrid())
            workbook->setCurrentSheet(workbook->sheetAt(index));
        session.endMessage();
    }

    Session session;
};

TEST_F(PointModeTest, beginsWhereAReferenceCanStand)
{
    const struct {
        const char* behaviour;
        std::u16string_view text;
        int caret; // -1 for the end
        bool points;
    } cases[] = {
        {"behind the equals sign",       u"=",       -1, true },
        {"behind a plus",                u"=1+",     -1, true },
        {"a minus",                      u"=1-",     -1, true },
        {"a star",                       u"=1*",     -1, true },
        {"a slash",                      u"=1/",     -1, true },
        {"a less",                       u"=1<",     -1, true },
        {"a greater",                    u"=1>",     -1, true },
        {"another equals sign",          u"=1=",     -1, true },
        {"an ampersand",                 u"=1&",     -1, true },
        {"an opening parenthesis",       u"=Sum(",   -1, true },
        {"a separator",                  u"=Sum(1,", -1, true },
        {"not behind a power sign",      u"=1^",     -1, false},
        {"nor a closing parenthesis",    u"=(1)",    -1, false},
        {"nor an operand",               u"=A1",     -1, false},
        {"nor a percent sign",           u"=1%",     -1, false},
        {"nor a colon",                  u"=A1:",    -1, false},
        {"nor a blank",                  u"=1+ ",    -1, false},
        {"nor another list separator",   u"=Sum(1;", -1, false},
        {"nor in a text",                u"1+",      -1, false},
        {"nor in a text with a formula", u" =1+",    -1, false},
        {"nor in nothing",               u"",        -1, false},
        {"not at the start",             u"=1+",     0,  false},
        {"in the middle",                u"=1+2",    3,  true },
        {"and not elsewhere there",      u"=1+2",    2,  false},
    };
    for (const auto& c : cases) {
        beginEdit(c.text);
        bar().line.setCaret(c.caret);
        EXPECT_EQ(enterPointMode(), c.points) << c.behaviour;
        EXPECT_EQ(session.app.pointMode, c.points) << c.behaviour;
        cancelEdit();
    }
    EXPECT_FALSE(enterPointMode()) << "nobody writes";
}

TEST_F(PointModeTest, followsTheSeparatorOfTheLocale)
{
    localeInfo.list = u';';
    session.type(u"=Sum(1,");
    EXPECT_FALSE(enterPointMode());
    session.type(u"\b;");
    EXPECT_TRUE(enterPointMode());
    loadLocale();
}

TEST_F(PointModeTest, looksAtTheEndOfWhatIsSelected)
{
    beginEdit(u"=1+2");
    bar().line.setSelection(0, 3);
    EXPECT_TRUE(enterPointMode());
    session.endMessage();
    EXPECT_EQ(session.editor(), "pointing =1+A1|2");
}

TEST_F(PointModeTest, beginsOnTheActiveCell)
{
    session.select(u"D4", u"B2");
    session.type(u"=");
    ASSERT_TRUE(enterPointMode());
    EXPECT_EQ(session.pointed(), "D4");
    EXPECT_EQ(session.selected(), "B2:D4 active D4") << "the selection of the sheet stays";
    EXPECT_EQ(session.app.pointSheet, &session.sheet());
    EXPECT_EQ(&session.app.activeSelection(), &session.app.pointSelection);
    EXPECT_TRUE(enterPointMode()) << "it goes on";
    leavePointMode();
    EXPECT_EQ(&session.app.activeSelection(), &session.sheet().selection);
    EXPECT_EQ(session.editor(), "editing =D4|");
    leavePointMode();
    EXPECT_EQ(session.editor(), "editing =D4|") << "nobody points";
}

TEST_F(PointModeTest, writesTheReferenceAtEachPass)
{
    session.select(u"B2");
    session.type(u"=1+");
    session.key(KeyDown);
    EXPECT_EQ(session.editor(), "pointing =1+B3|");
    EXPECT_EQ(bar().pointStart, 3);
    EXPECT_EQ(bar().pointLength, 2);
    session.key(KeyRight);
    EXPECT_EQ(session.editor(), "pointing =1+C3|") << "in place of the last one";
    session.key(KeyRight, Shift);
    EXPECT_EQ(session.editor(), "pointing =1+C3:D3|");
    session.key(KeyHome, Ctrl);
    EXPECT_EQ(session.editor(), "pointing =1+A1|");
    keyDown(KeyDown, {});
    EXPECT_EQ(session.editor(), "pointing =1+A1|") << "not before the pass";
    refreshEditor();
    EXPECT_EQ(session.editor(), "pointing =1+A2|");
    const unsigned version = bar().line.version();
    refreshEditor();
    EXPECT_EQ(bar().line.version(), version) << "the same reference is not written again";
}

TEST_F(PointModeTest, writesWhatWasPointedAtBeforeItEnds)
{
    session.type(u"=");
    keyDown(KeyDown, {}); // no repaint pass in between
    character(u'+');
    EXPECT_EQ(session.editor(), "editing =A2+|");
}

TEST_F(PointModeTest, pointsAtWhatIsTapped)
{
    session.type(u"=Sum(");
    tap(u"B2");
    EXPECT_EQ(session.editor(), "pointing =Sum(B2|");
    tap(u"C7");
    EXPECT_EQ(session.editor(), "pointing =Sum(C7|") << "a second tap replaces the reference";
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(PointModeTest, commitsWhereATapCannotPoint)
{
    session.type(u"=1+2");
    session.app.moveAfterEnter = MoveDown;
    tap(u"C3");
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.selected(), "C3");
    EXPECT_EQ(session.input(u"A1"), "=1+2");
    EXPECT_TRUE(yieldToGrid()) << "nothing is in the way";
    session.type(u"5");
    EXPECT_TRUE(yieldToGrid());
    EXPECT_EQ(session.selected(), "C3") << "the commit itself does not move";
}

TEST_F(PointModeTest, ignoresTheTapWhereTheTextCannotBeCommitted)
{
    session.type(u"=1^");
    tap(u"C3");
    EXPECT_EQ(session.editor(), "editing =1^|");
    EXPECT_EQ(session.selected(), "A1");
    EXPECT_EQ(session.boxes(), std::vector<std::string>{"Unexpected end of formula"});
}

TEST_F(PointModeTest, namesOtherSheetsInApostrophes)
{
    session.select(u"C3");
    session.type(u"=");
    session.key(KeyDown);
    showSheet(1);
    EXPECT_EQ(session.editor(), "pointing ='Sheet2'!C4|");
    session.key(KeyRight, Shift);
    EXPECT_EQ(session.editor(), "pointing ='Sheet2'!C4:D4|");
    showSheet(0);
    EXPECT_EQ(session.editor(), "pointing =C4:D4|") << "its own sheet needs no name";
    showSheet(2);
    EXPECT_EQ(workbook->currentSheet->index, 2);
    session.type(u"*");
    EXPECT_EQ(session.editor(), "editing ='Sheet3'!C4:D4*|");
    EXPECT_EQ(workbook->currentSheet->index, 0) << "where it began is shown again";
}

TEST_F(PointModeTest, commitsIntoTheSheetWhereItBegan)
{
    workbook->sheetAt(1)->protectedSheet = true; // what is pointed at may be locked
    session.type(u"=1+");
    showSheet(1);
    session.app.moveAfterEnter = MoveRight;
    session.key(KeyEnter);
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(workbook->currentSheet->index, 0);
    EXPECT_EQ(session.selected(), "B1");
    EXPECT_EQ(session.boxes(), std::vector<std::string>());
    EXPECT_EQ(session.input(u"A1"), "=1+Sheet2!A1");
}

TEST_F(PointModeTest, bringsTheViewBack)
{
    session.sheet().leftColumn = 1;
    session.sheet().topRow = 2;
    session.select(u"C5");
    session.type(u"=");
    session.key(KeyDown, Ctrl);
    session.key(KeyRight, Ctrl);
    EXPECT_EQ(session.pointed(), "IV16384");
    EXPECT_GT(session.sheet().topRow, 16000);
    EXPECT_GT(session.sheet().leftColumn, 200);
    session.app.repaintHints = 0;
    session.type(u"+");
    EXPECT_EQ(session.sheet().topRow, 2);
    EXPECT_EQ(session.sheet().leftColumn, 1);
    EXPECT_NE(session.app.repaintHints & DirtyAll, 0);
    EXPECT_TRUE(editorHasFocus());
}

TEST_F(PointModeTest, givesTheKeysToTheGrid)
{
    const struct {
        const char* behaviour;
        Key key;
        const char* editor;
    } cases[] = {
        {"an arrow moves on",             KeyDown,      "pointing =B4|" },
        {"so does Tab",                   KeyTab,       "pointing =C3|" },
        {"Home",                          KeyHome,      "pointing =A3|" },
        {"a page",                        KeyPageDown,  "pointing =B18|"},
        {"F2 does nothing",               KeyF2,        "pointing =B3|" },
        {"nor does Delete",               KeyDelete,    "pointing =B3|" },
        {"Escape drops the text",         KeyEscape,    "ready"         },
        {"Enter commits it",              KeyEnter,     "ready"         },
        {"Backspace goes on in the text", KeyBackspace, "editing =B|"   },
    };
    for (const auto& c : cases) {
        session.select(u"B2");
        session.type(u"=");
        session.key(KeyDown);
        EXPECT_FALSE(editorHasFocus());
        session.key(c.key);
        EXPECT_EQ(session.editor(), c.editor) << c.behaviour;
        EXPECT_EQ(session.input(u"B2"), c.key == KeyEnter ? "=B3" : "") << c.behaviour;
        cancelEdit();
        session.app.enterCell(u"");
        session.sheet().topRow = 0;
    }
}

TEST_F(PointModeTest, endsWithEveryEditOfTheText)
{
    const struct {
        const char* behaviour;
        void (*act)(FormulaBar&);
        const char* editor;
    } cases[] = {
        {"a character",                              [](FormulaBar&) { character(u'+'); },              "editing =A2+|"    },
        {"AutoSum",                                  [](FormulaBar&) { autoSumCommand(); },             "editing =A2SUM(|)"},
        {"a function",                               [](FormulaBar&) { insertFunction(3); },            "editing =A2Sum(|)"},
        {"a name",                                   [](FormulaBar&) { insertName(u"x"); },             "editing =A2x|"    },
        {"a tap into the text",                      [](FormulaBar&) { tapEditor(); },                  "editing =A2|"     },
        {"a key of the editor",                      [](FormulaBar&) { editorKey(KeyHome, {}); },       "editing |=A2"     },
        {"undo",                                     [](FormulaBar&) { onCommand(CommandUndo); },       "editing =A2|"     },
        {"Quick Entry, which is not chosen",         [](FormulaBar&) { onCommand(CommandQuickEntry); },
         "editing =A2|"                                                                                                    },
        {"a cancel",                                 [](FormulaBar&) { cancelCommand(); },              "ready"            },
        {"a commit",                                 [](FormulaBar&) { commitCommand(); },              "ready"            },
        {"a character that is none",                 [](FormulaBar&) { character(u'\t'); },             "pointing =A2|"    },
        {"the commands of the clipboard do nothing",
         [](FormulaBar& bar) {
             bar.line.setSelection(0, -1);
             for (const int id : {40008, 40009, 40010, 40035, 40036})
                 onCommand(static_cast<std::uint16_t>(id));
         },                                                                                             "pointing [=A2]"   },
    };
    for (const auto& c : cases) {
        session.machine.clipboard.putText(u"pasted");
        session.type(u"=");
        session.key(KeyDown);
        c.act(bar());
        EXPECT_EQ(session.editor(), c.editor) << c.behaviour;
        cancelEdit();
        session.app.enterCell(u"");
    }
}

TEST_F(PointModeTest, isOverWhenTheTextHasAnother)
{
    session.type(u"=");
    session.key(KeyDown);
    session.type(u"+");
    session.key(KeyRight);
    EXPECT_EQ(session.editor(), "pointing =A2+B1|") << "the second begins on the active cell again";
    session.type(u"\b\b\b");
    EXPECT_EQ(session.editor(), "editing =A2|");
    session.key(KeyDown);
    EXPECT_EQ(session.editor(), "ready");
}

TEST_F(PointModeTest, beginsAnewAnywhereInTheText)
{
    beginEdit(u"=1+");
    bar().line.setCaret(-1);
    session.key(KeyDown);
    tapEditor();
    bar().line.setCaret(1);
    EXPECT_TRUE(enterPointMode());
    refreshEditor();
    EXPECT_EQ(session.editor(), "pointing =A1|1+A2") << "nothing of the text is written over";
}

TEST_F(PointModeTest, asksOfNoLockWhileItLasts)
{
    workbook->sheetAt(1)->protectedSheet = true;
    for (const bool byKey : {true, false}) {
        session.type(u"=");
        showSheet(1);
        if (byKey)
            editorKey(KeyHome, {});
        else
            tapEditor();
        EXPECT_EQ(session.boxes(), std::vector<std::string>());
        EXPECT_EQ(session.editor(), byKey ? "editing |='Sheet2'!A1" : "editing ='Sheet2'!A1|");
        cancelEdit();
    }
}

TEST_F(PointModeTest, writesNoMoreThanTheControlHolds)
{
    beginEdit(u"=" + std::u16string(EditTextMax - 3, u'1') + u"+");
    bar().line.setCaret(-1);
    session.key(KeyDown);
    EXPECT_EQ(bar().line.length(), EditTextMax);
    session.key(KeyRight);
    EXPECT_EQ(bar().line.length(), EditTextMax);
    EXPECT_EQ(bar().line.text().back(), u'B');
}

} // namespace
} // namespace vorn
