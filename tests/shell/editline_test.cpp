#include "shell/editline.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace vorn {
namespace {

constexpr KeyModifiers Plain = {};
constexpr KeyModifiers Shift = {.shift = true};
constexpr KeyModifiers Ctrl = {.ctrl = true};
constexpr KeyModifiers CtrlShift = {.shift = true, .ctrl = true};

// A text with its selection: "a[bc|]d" has its caret behind the c, "a[|bc]d" before the b, and
// "a|bcd" selects nothing.
EditLine lineOf(std::u16string_view picture)
{
    std::u16string text;
    int first = 0;
    int last = 0;
    int caret = 0;
    for (const char16_t unit : picture) {
        const int at = static_cast<int>(text.size());
        if (unit == u'[')
            first = at;
        else if (unit == u']')
            last = at;
        else if (unit == u'|')
            caret = at;
        else
            text += unit;
    }
    EditLine line;
    line.setText(text);
    if (first == last)
        line.setCaret(caret);
    else
        line.setSelection(caret == first ? last : first, caret);
    return line;
}

std::u16string pictureOf(const EditLine& line)
{
    std::u16string picture = line.text();
    const auto put = [&picture](int at, std::u16string_view sign) {
        picture.insert(static_cast<std::size_t>(at), sign);
    };
    if (!line.hasSelection()) {
        put(line.selectionEnd(), u"|");
        return picture;
    }
    put(line.selectionEnd(), u"]");
    put(line.selectionStart(), u"[");
    return picture;
}

TEST(EditLine, beginsEmpty)
{
    const EditLine line;
    EXPECT_EQ(line.text(), u"");
    EXPECT_EQ(line.selectionStart(), 0);
    EXPECT_EQ(line.selectionEnd(), 0);
    EXPECT_FALSE(line.canUndo());
}

TEST(EditLine, takesANewTextWithTheCaretBeforeIt)
{
    EditLine line = lineOf(u"a[bc|]d");
    line.character(u'x');
    line.setText(u"next");
    EXPECT_EQ(pictureOf(line), u"|next");
    EXPECT_FALSE(line.canUndo()) << "a new text has nothing to take back";
}

TEST(EditLine, selectsWithinTheText)
{
    const struct {
        const char* behaviour;
        int start, end;
        std::u16string_view picture;
    } cases[] = {
        {"a part",                        1,  3,  u"a[bc]d"},
        {"a place",                       2,  2,  u"ab|cd" },
        {"all, to the end of the text",   0,  -1, u"[abcd]"},
        {"the end",                       -1, -1, u"abcd|" },
        {"past the end is the end",       9,  99, u"abcd|" },
        {"from behind, the caret before", 3,  1,  u"a[bc]d"},
    };
    for (const auto& c : cases) {
        EditLine line;
        line.setText(u"abcd");
        line.setSelection(c.start, c.end);
        EXPECT_EQ(pictureOf(line), c.picture) << c.behaviour;
    }
}

TEST(EditLine, movesTheCaret)
{
    const struct {
        const char* behaviour;
        std::u16string_view before;
        Key key;
        KeyModifiers modifiers;
        std::u16string_view after;
    } cases[] = {
        {"Left",                                u"ab|c",         KeyLeft,   Plain,     u"a|bc"        },
        {"Left at the start",                   u"|abc",         KeyLeft,   Plain,     u"|abc"        },
        {"Right",                               u"ab|c",         KeyRight,  Plain,     u"abc|"        },
        {"Right at the end",                    u"abc|",         KeyRight,  Plain,     u"abc|"        },
        {"Up goes as Left does",                u"ab|c",         KeyUp,     Plain,     u"a|bc"        },
        {"Down goes as Right does",             u"a|bc",         KeyDown,   Plain,     u"ab|c"        },
        {"Home",                                u"ab|c",         KeyHome,   Plain,     u"|abc"        },
        {"End",                                 u"a|bc",         KeyEnd,    Plain,     u"abc|"        },
        {"Left of a selection, from the caret", u"[abc|]",       KeyLeft,   Plain,     u"ab|c"        },
        {"Shift selects",                       u"ab|c",         KeyLeft,   Shift,     u"a[b]c"       },
        {"and goes on",                         u"a[|b]c",       KeyLeft,   Shift,     u"[ab]c"       },
        {"or back",                             u"a[|b]c",       KeyRight,  Shift,     u"ab|c"        },
        {"Shift and Home",                      u"ab|c",         KeyHome,   Shift,     u"[ab]c"       },
        {"Shift and End",                       u"ab|c",         KeyEnd,    Shift,     u"ab[c]"       },
        {"a word to the left",                  u"ab cd  |",     KeyLeft,   Ctrl,      u"ab |cd  "    },
        {"a word to the right",                 u"a|b  cd",      KeyRight,  Ctrl,      u"ab  |cd"     },
        {"selecting a word",                    u"ab |cd",       KeyRight,  CtrlShift, u"ab [cd]"     },
        {"Page Up does nothing",                u"a|b",          KeyPageUp, Plain,     u"a|b"         },
        {"nor does Escape",                     u"a|b",          KeyEscape, Plain,     u"a|b"         },
        {"nor F2",                              u"a|b",          KeyF2,     Plain,     u"a|b"         },
        {"Delete takes the next",               u"a|bc",         KeyDelete, Plain,     u"a|c"         },
        {"of which there may be none",          u"abc|",         KeyDelete, Plain,     u"abc|"        },
        {"or the selection",                    u"a[bc|]d",      KeyDelete, Plain,     u"a|d"         },
        {"a pair is passed as one",             u"|\U0001F600b", KeyRight,  Plain,     u"\U0001F600|b"},
        {"both ways",                           u"\U0001F600|b", KeyLeft,   Plain,     u"|\U0001F600b"},
        {"and deleted as one",                  u"|\U0001F600b", KeyDelete, Plain,     u"|b"          },
    };
    for (const auto& c : cases) {
        EditLine line = lineOf(c.before);
        line.key(c.key, c.modifiers);
        EXPECT_EQ(pictureOf(line), c.after) << c.behaviour;
    }
}

TEST(EditLine, takesCharacters)
{
    const struct {
        const char* behaviour;
        std::u16string_view before;
        char16_t unit;
        std::u16string_view after;
    } cases[] = {
        {"a letter stands before the caret",   u"a|b",          u'x',    u"ax|b"},
        {"a blank is the least of them",       u"a|b",          u' ',    u"a |b"},
        {"a letter replaces the selection",    u"a[bc|]d",      u'x',    u"ax|d"},
        {"the backspace takes the one before", u"ab|c",         u'\b',   u"a|c" },
        {"of which there may be none",         u"|abc",         u'\b',   u"|abc"},
        {"or the selection",                   u"a[|bc]d",      u'\b',   u"a|d" },
        {"a pair goes as one",                 u"\U0001F600|b", u'\b',   u"|b"  },
        {"Tab is not a character",             u"a|b",          u'\t',   u"a|b" },
        {"nor is Escape",                      u"a|b",          u'\x1b', u"a|b" },
        {"nor a line end",                     u"a[b|]",        u'\r',   u"a[b]"},
    };
    for (const auto& c : cases) {
        EditLine line = lineOf(c.before);
        line.character(c.unit);
        EXPECT_EQ(pictureOf(line), c.after) << c.behaviour;
    }
}

TEST(EditLine, pastesOneLineOverTheSelection)
{
    const struct {
        const char* behaviour;
        std::u16string_view before, pasted, after;
    } cases[] = {
        {"at the caret",            u"a|b",     u"xyz",    u"axyz|b" },
        {"over the selection",      u"a[bc|]d", u"x",      u"ax|d"   },
        {"up to a line end",        u"a|b",     u"x\ny",   u"ax|b"   },
        {"of either kind",          u"a|b",     u"x\r\ny", u"ax|b"   },
        {"a tab stays",             u"a|b",     u"x\ty",   u"ax\ty|b"},
        {"nothing changes nothing", u"a|b",     u"",       u"a|b"    },
        {"nothing clears",          u"a[b|]",   u"\nx",    u"a|"     },
    };
    for (const auto& c : cases) {
        EditLine line = lineOf(c.before);
        line.paste(c.pasted);
        EXPECT_EQ(pictureOf(line), c.after) << c.behaviour;
    }
}

TEST(EditLine, clearsTheSelectionOnly)
{
    EditLine line = lineOf(u"a[bc|]d");
    EXPECT_EQ(line.selectedText(), u"bc");
    line.clear();
    EXPECT_EQ(pictureOf(line), u"a|d");
    EXPECT_EQ(line.selectedText(), u"");
    line.clear();
    EXPECT_EQ(pictureOf(line), u"a|d");
}

void typeAll(EditLine& line, std::u16string_view text)
{
    for (const char16_t unit : text)
        line.character(unit);
}

TEST(EditLine, takesBackWhatWasTypedInOneGo)
{
    EditLine line = lineOf(u"a|b");
    EXPECT_FALSE(line.canUndo());
    typeAll(line, u"xyz");
    EXPECT_TRUE(line.canUndo());
    line.undo();
    EXPECT_EQ(pictureOf(line), u"a|b");
    EXPECT_TRUE(line.canUndo()) << "the undoing can be undone";
    line.undo();
    EXPECT_EQ(pictureOf(line), u"a[xyz]b");
    line.undo();
    EXPECT_EQ(line.text(), u"ab");
}

TEST(EditLine, takesBackOnlyTheLastGroup)
{
    const struct {
        const char* behaviour;
        std::u16string_view before;
        void (*change)(EditLine&);
        std::u16string_view after;
    } cases[] = {
        {"nothing to take back",             u"a|b",     [](EditLine&) {},                                 u"a|b"   },
        {"a written-over selection",         u"a[bc|]d", [](EditLine& line) { typeAll(line, u"xy"); },
         u"a[bc]d"                                                                                                  },
        {"several backspaces",               u"abcd|",   [](EditLine& line) { typeAll(line, u"\b\b\b"); },
         u"a[bcd]"                                                                                                  },
        {"several deletions",                u"|abcd",
         [](EditLine& line) {
             line.key(KeyDelete, Plain);
             line.key(KeyDelete, Plain);
         },                                                                                                u"[ab]cd"},
        {"typing elsewhere begins anew",     u"|ab",
         [](EditLine& line) {
             typeAll(line, u"x");
             line.key(KeyEnd, Plain);
             typeAll(line, u"y");
         },                                                                                                u"xab|"  },
        {"erasing after typing begins anew", u"a|",      [](EditLine& line) { typeAll(line, u"xy\b"); },
         u"ax[y]"                                                                                                   },
        {"a paste",                          u"a|b",     [](EditLine& line) { line.paste(u"xyz"); },       u"a|b"   },
        {"a clearing",                       u"a[bc|]d", [](EditLine& line) { line.clear(); },             u"a[bc]d"},
        {"a caret that moved is no change",  u"a|b",
         [](EditLine& line) {
             typeAll(line, u"x");
             line.key(KeyHome, Plain);
         },                                                                                                u"a|b"   },
        {"what a program wrote for good",    u"a|b",
         [](EditLine& line) {
             typeAll(line, u"x");
             line.replaceSelection(u"yz", ForgetUndo);
         },                                                                                                u"axyz|b"},
    };
    for (const auto& c : cases) {
        EditLine line = lineOf(c.before);
        c.change(line);
        line.undo();
        EXPECT_EQ(pictureOf(line), c.after) << c.behaviour;
    }
}

TEST(EditLine, tellsItsMirrorOfEveryChange)
{
    EditLine line = lineOf(u"a|b");
    unsigned seen = line.version();
    const auto changed = [&] {
        const bool differs = line.version() != seen;
        seen = line.version();
        return differs;
    };
    line.character(u'x');
    EXPECT_TRUE(changed());
    line.key(KeyHome, Plain);
    EXPECT_TRUE(changed());
    line.undo();
    EXPECT_TRUE(changed());
    line.setText(u"ab");
    EXPECT_TRUE(changed());
    line.setSelection(0, -1);
    EXPECT_TRUE(changed());
    line.clear();
    EXPECT_TRUE(changed());
    line.key(KeyPageUp, Plain);
    line.clear();
    EXPECT_FALSE(changed()) << "nothing was to be cleared";
}

TEST(EditLine, holdsNoMoreThanAControl)
{
    EditLine line;
    line.setText(std::u16string(EditTextMax - 1, u'a'));
    line.setCaret(-1);
    line.paste(u"xyz");
    EXPECT_EQ(line.length(), EditTextMax);
    EXPECT_EQ(line.text().back(), u'x');
    line.character(u'z');
    EXPECT_EQ(line.length(), EditTextMax);
    line.setSelection(0, 2);
    line.paste(u"xyz");
    EXPECT_EQ(line.length(), EditTextMax) << "what is written over makes room";
    line.setText(std::u16string(EditTextMax + 5, u'a'));
    EXPECT_EQ(line.length(), EditTextMax + 5) << "a text from a cell is shown whole";
    line.character(u'x');
    EXPECT_EQ(line.length(), EditTextMax + 5);
    line.character(u'\b');
    EXPECT_EQ(line.length(), EditTextMax + 5) << "nothing stands before the caret";
}

TEST(EditLine, undoingEitherWayGivesTheSameTexts)
{
    std::mt19937 dice(20010304);
    const auto roll = [&dice](int most) {
        return static_cast<int>(dice() % static_cast<unsigned>(most));
    };
    EditLine line;
    for (int step = 0; step < 20000; ++step) {
        switch (roll(8)) {
        case 0:
        case 1:
        case 2:
            line.character(static_cast<char16_t>(u'a' + roll(26)));
            break;
        case 3:
            line.character(u'\b');
            break;
        case 4:
            line.key(static_cast<Key>(KeyEnd + roll(7)), {roll(2) == 0, roll(4) == 0, false});
            break;
        case 5:
            line.setSelection(roll(12), roll(12) - 1);
            break;
        case 6:
            line.paste(u"paste");
            break;
        default:
            line.clear();
            break;
        }
        const std::u16string text = line.text();
        line.undo();
        const bool again = line.canUndo();
        if (again)
            line.undo();
        ASSERT_EQ(line.text(), text) << "step " << step;
        ASSERT_LE(line.selectionEnd(), line.length());
        if (line.length() > 40)
            line.setText(u"");
    }
}

} // namespace
} // namespace vorn
