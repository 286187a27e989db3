#include "shell/keys.h"

#include "core/error.h"
#include "resources/menu.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/pointmode.h"
#include "support/session.h"

#include <gtest/gtest.h>
#include <random>

namespace vorn {
namespace {

constexpr KeyModifiers Plain = {};
constexpr KeyModifiers Shift = {.shift = true};
constexpr KeyModifiers Ctrl = {.ctrl = true};

class KeysTest : public testing::Test {
protected:
    FormulaBar& bar() { return session.app.formulaBar; }

    Session session;
};

// --- In the editor

TEST_F(KeysTest, goByTheirOrderInTheEditor)
{
    const struct {
        const char* behaviour;
        std::u16string_view text;
        bool caretMode;
        Key key;
        const char* editor;
        const char* selected; // from C3 on
        const char* input;    // of C3
    } cases[] = {
        {"Tab commits and moves",                           u"7",   false, KeyTab,       "ready",           "D3", "7" },
        {"in caret mode, too",                              u"7",   true,  KeyTab,       "ready",           "D3", "7" },
        {"Tab never points",                                u"=1+", false, KeyTab,       "editing =1+|",    "C3", ""  },
        {"Escape drops the text",                           u"7",   false, KeyEscape,    "ready",           "C3", ""  },
        {"Left moves the caret",                            u"78",  true,  KeyLeft,      "editing 7|8",     "C3", ""  },
        {"Left commits",                                    u"78",  false, KeyLeft,      "ready",           "B3", "78"},
        {"Right moves the caret",                           u"78",  true,  KeyRight,     "editing 78|",     "C3", ""  },
        {"Right commits",                                   u"78",  false, KeyRight,     "ready",           "D3", "78"},
        {"Up commits",                                      u"78",  false, KeyUp,        "ready",           "C2", "78"},
        {"in caret mode, too",                              u"78",  true,  KeyUp,        "ready",           "C2", "78"},
        {"Down commits",                                    u"78",  false, KeyDown,      "ready",           "C4", "78"},
        {"in caret mode, too",                              u"78",  true,  KeyDown,      "ready",           "C4", "78"},
        {"Left points",                                     u"=1+", false, KeyLeft,      "pointing =1+B3|", "C3", ""  },
        {"but in caret mode it moves",                      u"=1+", true,  KeyLeft,      "editing =1|+",    "C3", ""  },
        {"Down points",                                     u"=1+", false, KeyDown,      "pointing =1+C4|", "C3", ""  },
        {"in caret mode, too",                              u"=1+", true,  KeyDown,      "pointing =1+C4|", "C3", ""  },
        {"Home is the control's",                           u"78",  false, KeyHome,      "editing |78",     "C3", ""  },
        {"in caret mode, too",                              u"78",  true,  KeyHome,      "editing |78",     "C3", ""  },
        {"End as well",                                     u"78",  false, KeyEnd,       "editing 78|",     "C3", ""  },
        {"a page is nothing to a line",                     u"78",  false, KeyPageDown,  "editing 78|",     "C3", ""  },
        {"Backspace",                                       u"78",  false, KeyBackspace, "editing 7|",      "C3", ""  },
        {"Delete, with nothing behind",                     u"78",  false, KeyDelete,    "editing 78|",     "C3", ""  },
        {"an arrow that cannot commit goes to the control", u"=1^", false, KeyLeft,      "editing =1|^",
         "C3",                                                                                                    ""  },
        {"and so does Up",                                  u"=1^", true,  KeyUp,        "editing =1|^",    "C3", ""  },
    };
    for (const auto& c : cases) {
        session.select(u"C3");
        session.app.enterCell(u"");
        session.type(c.text);
        bar().caretMode = c.caretMode;
        session.key(c.key);
        EXPECT_EQ(session.editor(), c.editor) << c.behaviour;
        EXPECT_EQ(session.selected(), c.selected) << c.behaviour;
        EXPECT_EQ(session.input(u"C3"), c.input) << c.behaviour;
        cancelEdit();
    }
}

TEST_F(KeysTest, flipCaretModeWithF2)
{
    session.type(u"78");
    EXPECT_FALSE(bar().caretMode);
    session.key(KeyF2);
    EXPECT_TRUE(bar().caretMode);
    EXPECT_EQ(session.editor(), "editing 78|");
    session.key(KeyF2);
    EXPECT_FALSE(bar().caretMode);
}

TEST_F(KeysTest, keepTheirModifiersInTheControl)
{
    session.type(u"78 9");
    session.key(KeyF2);
    session.key(KeyLeft, Ctrl);
    EXPECT_EQ(session.editor(), "editing 78 |9");
    session.key(KeyHome, Shift);
    EXPECT_EQ(session.editor(), "editing [78 ]9");
}

TEST_F(KeysTest, carryTheirModifiersToTheGrid)
{
    session.put(u"A9", u"1");
    session.type(u"=1+");
    session.key(KeyDown, Ctrl);
    EXPECT_EQ(session.editor(), "pointing =1+A9|");
    session.key(KeyEscape);
    session.type(u"7");
    session.key(KeyDown, Ctrl);
    EXPECT_EQ(session.selected(), "A9");
}

TEST_F(KeysTest, markAFullRepaintWhenTheyClose)
{
    for (const Key key : {KeyEscape, KeyTab, KeyDown}) {
        session.select(u"A1");
        session.app.enterCell(u"7");
        session.type(u"7"); // what the cell has already: nothing is stored
        session.app.repaintHints = 0;
        keyDown(key, Plain);
        EXPECT_NE(session.app.repaintHints & DirtyAll, 0);
    }
}

TEST_F(KeysTest, deleteWhatIsSelectedOrTheNext)
{
    session.type(u"abcd");
    bar().line.setSelection(1, 3);
    session.key(KeyDelete);
    EXPECT_EQ(session.editor(), "editing a|d");
    session.key(KeyDelete);
    EXPECT_EQ(session.editor(), "editing a|");
}

TEST_F(KeysTest, sayWhetherTheirCharacterIsToFollow)
{
    const struct {
        const char* behaviour;
        bool editing;
        Key key;
        bool used;
    } cases[] = {
        {"Enter is a character",  false, KeyEnter,     false},
        {"in the editor as well", true,  KeyEnter,     false},
        {"Backspace",             false, KeyBackspace, false},
        {"in the editor as well", true,  KeyBackspace, false},
        {"a letter",              false, keyOf(u'B'),  false},
        {"in the editor as well", true,  keyOf(u'B'),  false},
        {"Tab was used",          false, KeyTab,       true },
        {"in the editor as well", true,  KeyTab,       true },
        {"Escape",                false, KeyEscape,    true },
        {"in the editor as well", true,  KeyEscape,    true },
        {"an arrow",              false, KeyUp,        true },
        {"in the editor as well", true,  KeyUp,        true },
        {"Home",                  true,  KeyHome,      true },
        {"F2",                    false, KeyF2,        true },
        {"in the editor as well", true,  KeyF2,        true },
    };
    for (const auto& c : cases) {
        if (c.editing)
            beginEdit(u"5");
        EXPECT_EQ(keyDown(c.key, Plain), c.used) << c.behaviour;
        cancelEdit();
    }
}

// --- Commands

TEST_F(KeysTest, findTheirCommands)
{
    // Each is a command of the table; three of them can be seen from here.
    session.key(keyOf(u'A'), Ctrl);
    EXPECT_EQ(session.selected(), "A1:IV16384 active A1");
    session.type(u"text");
    bar().line.setSelection(0, 2);
    session.key(keyOf(u'C'), Ctrl);
    EXPECT_EQ(session.machine.clipboard.text(), u"te");
    session.key(keyOf(u'X'), Ctrl);
    EXPECT_EQ(session.editor(), "editing |xt");
    session.key(keyOf(u'V'), Ctrl);
    EXPECT_EQ(session.editor(), "editing te|xt");
    session.key(keyOf(u'Z'), Ctrl);
    EXPECT_EQ(session.editor(), "editing |xt");
    session.key(keyOf(u'A'), Ctrl);
    EXPECT_EQ(session.editor(), "editing |xt") << "selecting the sheet rests meanwhile";
    session.key(KeyEscape);
    session.sheet().zoom = 70;
    session.key(keyOf(u'N'), Ctrl);
    EXPECT_EQ(session.sheet().zoom, 100) << "a new document";
}

TEST_F(KeysTest, areNoCommandsWithShiftOrAlt)
{
    keyDown(keyOf(u'A'), {.shift = true, .ctrl = true});
    keyDown(keyOf(u'A'), {.ctrl = true, .alt = true});
    keyDown(keyOf(u'A'), Plain);
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(KeysTest, doNothingWithoutADocument)
{
    session.app.close();
    ASSERT_EQ(workbook, nullptr);
    EXPECT_TRUE(keyDown(KeyDown, Plain));
    EXPECT_TRUE(keyDown(keyOf(u'N'), Ctrl));
    character(u'x');
    EXPECT_FALSE(bar().editing);
}

// --- Anything at all

// The commands that no key is to reach here: they would end the program.
bool isHarmless(Key key, KeyModifiers modifiers)
{
    return !(modifiers.ctrl && key == keyOf(u'W'));
}

class RandomKeys {
public:
    explicit RandomKeys(unsigned seed) : dice_(seed) {}

    int roll(int most) { return static_cast<int>(dice_() % static_cast<unsigned>(most)); }

    void step(Session& session)
    {
        static constexpr unsigned selections[] = {SelectCell, SelectRows, SelectColumns};
        switch (roll(8)) {
        case 0:
        case 1:
        case 2:
            session.type({&Characters[static_cast<std::size_t>(roll(CharacterCount))], 1});
            break;
        case 3:
            command(session);
            break;
        case 4:
            if (yieldToGrid())
                moveTo(roll(300) - 20, roll(20000) - 1000, selections[roll(3)],
                       roll(2) == 0 ? ShowCell : ShowOneMore);
            session.endMessage();
            break;
        case 5:
            environment(session);
            break;
        default:
            key(session);
            break;
        }
    }

private:
    static constexpr std::u16string_view Characters =
        u"=+-*/<>&(),;:!'\"$%^ A1B2Sum\b\r\n\t\x1b\x7f\xd83d\xde00\xe4";
    static constexpr int CharacterCount = static_cast<int>(Characters.size());

    void key(Session& session)
    {
        static constexpr Key keys[] = {KeyPageUp, KeyPageDown, KeyEnd,    KeyHome,     KeyLeft,
                                       KeyUp,     KeyRight,    KeyDown,   KeyDelete,   KeyF2,
                                       KeyTab,    KeyEnter,    KeyEscape, KeyBackspace};
        const Key each = roll(6) == 0 ? keyOf(static_cast<char16_t>(u'A' + roll(26)))
                                      : keys[roll(static_cast<int>(std::size(keys)))];
        const KeyModifiers modifiers = {roll(3) == 0, roll(3) == 0, roll(6) == 0};
        if (isHarmless(each, modifiers))
            session.key(each, modifiers);
    }

    void command(Session& session)
    {
        static constexpr int ids[] = {904,   9100,  9101,  9102,  9103,  40006, 40007, 40008,
                                      40009, 40010, 40027, 40035, 40036, 40043, 40061, 40064};
        onCommand(static_cast<std::uint16_t>(ids[roll(static_cast<int>(std::size(ids)))]));
        session.endMessage();
    }

    void environment(Session& session)
    {
        Sheet& sheet = session.sheet();
        switch (roll(8)) {
        case 0:
            if (yieldToGrid())
                workbook->setCurrentSheet(workbook->sheetAt(roll(3)));
            break;
        case 1:
            sheet.columns.setColumnHidden(roll(256), roll(256), roll(2) == 0);
            break;
        case 2:
            sheet.setRowHidden(roll(200), roll(2) == 0);
            break;
        case 3:
            session.app.clientArea = {0, 0, roll(700), roll(500)};
            break;
        case 4:
            sheet.zoom = 10 + roll(290);
            break;
        case 5:
            session.app.formulaBarVisible = roll(2) == 0;
            break;
        case 6:
            session.app.moveAfterEnter = static_cast<MoveAfterEnter>(roll(3));
            break;
        default:
            tapEditor();
            break;
        }
        session.endMessage();
    }

    std::mt19937 dice_;
};

// What holds whatever the user does.
void expectSound(const Session& session)
{
    ASSERT_NE(workbook, nullptr);
    ASSERT_EQ(workbook->sheets.size(), 3);
    const FormulaBar& bar = session.app.formulaBar;
    ASSERT_TRUE(bar.editing || !session.app.pointMode);
    ASSERT_EQ(session.app.pointMode, session.app.pointSheet != nullptr);
    ASSERT_LE(bar.line.selectionEnd(), bar.line.length());
    ASSERT_EQ(session.app.repaintLock, 0);
    for (const Sheet* sheet : workbook->sheets) {
        ASSERT_TRUE(sheet->leftColumn >= 0 && sheet->leftColumn <= LastColumn);
        ASSERT_TRUE(sheet->topRow >= 0 && sheet->topRow <= LastRow);
        const RangeRef& range = sheet->selection.range;
        ASSERT_TRUE(range.firstColumn <= range.lastColumn && range.lastColumn <= LastColumn);
        ASSERT_TRUE(range.firstRow <= range.lastRow && range.lastRow <= LastRow);
        ASSERT_TRUE(range.contains(sheet->selection.activeColumn, sheet->selection.activeRow));
    }
}

TEST(AnyKeys, leaveTheDocumentSound)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        Session session;
        session.protect(u"C3", false);
        RandomKeys keys(seed);
        for (int step = 0; step < 1500; ++step) {
            keys.step(session);
            ASSERT_NO_FATAL_FAILURE(expectSound(session)) << "seed " << seed << " step " << step;
        }
    }
}

} // namespace
} // namespace vorn
