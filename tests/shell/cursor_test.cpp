#include "shell/cursor.h"

#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr KeyModifiers Plain = {};
constexpr KeyModifiers Shift = {.shift = true};
constexpr KeyModifiers Ctrl = {.ctrl = true};
constexpr KeyModifiers Alt = {.alt = true};
constexpr KeyModifiers CtrlShift = {.shift = true, .ctrl = true};
constexpr KeyModifiers AltShift = {.shift = true, .alt = true};

class CursorTest : public testing::Test {
protected:
    // What is selected after a key.
    std::string after(Key key, KeyModifiers modifiers = Plain)
    {
        EXPECT_TRUE(handleKey(key, modifiers));
        return session.selected();
    }
    void hideColumns(int first, int last)
    {
        session.sheet().columns.setColumnHidden(first, last, true);
    }
    void hideRows(int first, int last)
    {
        for (int row = first; row <= last; ++row)
            session.sheet().setRowHidden(row, true);
    }

    Session session;
};

// --- moveTo

TEST_F(CursorTest, staysInTheSheet)
{
    const struct {
        int column, row;
        const char* selected;
    } cases[] = {
        {255,     16383,   "IV16384"},
        {256,     0,       "IV1"    },
        {0,       16384,   "A16384" },
        {-1,      -1,      "A1"     },
        {1000000, 1000000, "IV16384"},
    };
    for (const auto& c : cases) {
        moveTo(c.column, c.row, SelectCell, ShowCell);
        EXPECT_EQ(session.selected(), c.selected);
    }
}

TEST_F(CursorTest, selectsAsItIsTold)
{
    const struct {
        const char* behaviour;
        int column, row;
        unsigned flags;
        const char* selected;
    } cases[] = {
        {"one cell",                      3, 4, SelectCell,                                   "D5"                  },
        {"up to a cell",                  3, 4, ExtendSelection,                              "B2:D5 active B2"     },
        {"up to a cell before it",        0, 0, ExtendSelection,                              "A1:B2 active B2"     },
        {"a whole row; the column stays", 0, 4, SelectRows,                                   "A5:IV5 active B5"    },
        {"a whole column; the row stays", 3, 0, SelectColumns,                                "D1:D16384 active D2" },
        {"up to a row",                   3, 4, ExtendSelection | SelectRows,                 "A2:IV5 active B2"    },
        {"up to a column",                3, 4, ExtendSelection | SelectColumns,              "B1:D16384 active B2" },
        {"all",                           0, 0, ExtendSelection | SelectRows | SelectColumns, "A1:IV16384 active B2"},
    };
    session.app.clientArea = {0, 0, 600, 400};
    for (const auto& c : cases) {
        session.select(u"B2");
        session.app.repaintHints = 0;
        moveTo(c.column, c.row, c.flags, ShowCell);
        EXPECT_EQ(session.selected(), c.selected) << c.behaviour;
        EXPECT_EQ(session.app.repaintHints, DirtySelection) << c.behaviour;
    }
}

TEST_F(CursorTest, bringsTheViewAlong)
{
    session.app.repaintHints = 0;
    moveTo(0, 16, SelectCell, ShowCell);
    EXPECT_EQ(session.sheet().topRow, 1);
    EXPECT_EQ(session.app.repaintHints, DirtySelection | DirtyScrolled);
    session.app.repaintHints = 0;
    scrollIntoView(0, 16, ShowCell);
    EXPECT_EQ(session.app.repaintHints, 0) << "it is in view already";
}

// --- The arrows

TEST_F(CursorTest, stepsAndStopsAtTheEdges)
{
    const struct {
        std::u16string_view from;
        Key key;
        const char* to;
    } cases[] = {
        {u"C3",      KeyLeft,  "B3"     },
        {u"C3",      KeyRight, "D3"     },
        {u"C3",      KeyUp,    "C2"     },
        {u"C3",      KeyDown,  "C4"     },
        {u"A1",      KeyLeft,  "A1"     },
        {u"A1",      KeyUp,    "A1"     },
        {u"IV16384", KeyRight, "IV16384"},
        {u"IV16384", KeyDown,  "IV16384"},
    };
    for (const auto& c : cases) {
        session.select(c.from);
        EXPECT_EQ(after(c.key), c.to);
    }
}

TEST_F(CursorTest, stepsOverHiddenOnes)
{
    hideColumns(3, 4);
    hideColumns(253, 255);
    hideRows(0, 1);
    hideRows(5, 8);
    const struct {
        const char* behaviour;
        std::u16string_view from;
        Key key;
        const char* to;
    } cases[] = {
        {"over hidden columns",         u"C3",  KeyRight, "F3" },
        {"and back",                    u"F3",  KeyLeft,  "C3" },
        {"over hidden rows",            u"C5",  KeyDown,  "C10"},
        {"and back",                    u"C10", KeyUp,    "C5" },
        {"hidden up to the edge: stay", u"IS3", KeyRight, "IS3"},
        {"at the top as well",          u"C3",  KeyUp,    "C3" },
        {"Tab, too",                    u"C3",  KeyTab,   "F3" },
        {"Tab at the edge",             u"IS3", KeyTab,   "IS3"},
    };
    for (const auto& c : cases) {
        session.select(c.from);
        EXPECT_EQ(after(c.key), c.to) << c.behaviour;
    }
}

TEST_F(CursorTest, leavesASelectionFromItsActiveCell)
{
    session.select(u"C3", u"E5");
    EXPECT_EQ(after(KeyDown), "C4");
    session.select(u"E5", u"C3");
    EXPECT_EQ(after(KeyRight), "F5");
}

TEST_F(CursorTest, extendsFromTheCorner)
{
    session.select(u"C3", u"E5");
    EXPECT_EQ(after(KeyDown, Shift), "C3:E6 active C3");
    EXPECT_EQ(after(KeyLeft, Shift), "C3:D6 active C3");
    session.select(u"C3");
    EXPECT_EQ(after(KeyUp, Shift), "C2:C3 active C3");
    EXPECT_EQ(after(KeyDown, Shift), "C3");
    EXPECT_EQ(after(KeyHome, Shift), "A3:C3 active C3");
    EXPECT_EQ(after(KeyHome, CtrlShift), "A1:C3 active C3");
}

TEST_F(CursorTest, keepsWholeRowsAndColumnsWhole)
{
    session.app.clientArea = {0, 0, 600, 400};
    session.select(u"B2");
    moveTo(0, 1, SelectRows, ShowCell);
    EXPECT_EQ(after(KeyDown, Shift), "A2:IV3 active B2");
    EXPECT_EQ(after(KeyRight, Shift), "A2:IV3 active B2");
    EXPECT_EQ(after(KeyUp, Shift), "A2:IV2 active B2");
    EXPECT_EQ(session.sheet().leftColumn, 0) << "the view does not run to the far end of the row";
    session.select(u"A2", u"IV3"); // the corner is at the far end
    EXPECT_EQ(after(KeyDown, Shift), "A2:IV4 active A2");
    EXPECT_EQ(session.sheet().leftColumn, 0);
    session.select(u"C1", u"C16384");
    EXPECT_EQ(after(KeyRight, Shift), "C1:D16384 active C1");
    EXPECT_EQ(after(KeyDown, Shift), "C1:D16384 active C1");
    EXPECT_EQ(session.sheet().topRow, 0);
    session.select(u"A1", u"IV16384");
    EXPECT_EQ(after(KeyRight, Shift), "A1:IV16384 active A1");
    EXPECT_EQ(after(KeyRight), "B1");
}

TEST_F(CursorTest, jumpsToTheEdgesOfTheData)
{
    session.put(u"B2", u"1");
    session.put(u"C2", u"1");
    session.put(u"D2", u"1");
    session.put(u"G2", u"1");
    session.put(u"B3", u"1");
    session.put(u"B7", u"1");
    const struct {
        const char* behaviour;
        std::u16string_view from;
        Key key;
        const char* to;
    } cases[] = {
        {"to the end of a block",    u"B2", KeyRight, "D2"    },
        {"to the next block",        u"D2", KeyRight, "G2"    },
        {"to the edge of the sheet", u"G2", KeyRight, "IV2"   },
        {"and back",                 u"G2", KeyLeft,  "D2"    },
        {"to the first column",      u"B2", KeyLeft,  "A2"    },
        {"down a block",             u"B2", KeyDown,  "B3"    },
        {"to the next",              u"B3", KeyDown,  "B7"    },
        {"to the last row",          u"B7", KeyDown,  "B16384"},
        {"up",                       u"B7", KeyUp,    "B3"    },
        {"to the first row",         u"B2", KeyUp,    "B1"    },
    };
    for (const auto& c : cases) {
        session.select(c.from);
        EXPECT_EQ(after(c.key, Ctrl), c.to) << c.behaviour;
    }
    session.select(u"B2");
    EXPECT_EQ(after(KeyRight, CtrlShift), "B2:D2 active B2");
}

// --- Home, End and the pages

TEST_F(CursorTest, goesToTheEndsOfRowsAndSheet)
{
    session.put(u"C3", u"1");
    session.put(u"F3", u"1");
    session.put(u"D8", u"1");
    session.put(u"G8", u"1");
    session.protect(u"Z20", false); // a style is no data
    const struct {
        const char* behaviour;
        std::u16string_view from;
        Key key;
        KeyModifiers modifiers;
        const char* to;
    } cases[] = {
        {"Home",                    u"E3", KeyHome, Plain,     "A3"             },
        {"Ctrl and Home",           u"E3", KeyHome, Ctrl,      "A1"             },
        {"End",                     u"A3", KeyEnd,  Plain,     "F3"             },
        {"End, from behind it",     u"Z3", KeyEnd,  Plain,     "F3"             },
        {"End of an empty row",     u"D4", KeyEnd,  Plain,     "A4"             },
        {"Ctrl and End",            u"A1", KeyEnd,  Ctrl,      "G8"             },
        {"End, extending",          u"B3", KeyEnd,  Shift,     "B3:F3 active B3"},
        {"Ctrl and End, extending", u"B3", KeyEnd,  CtrlShift, "B3:G8 active B3"},
    };
    for (const auto& c : cases) {
        session.select(c.from);
        EXPECT_EQ(after(c.key, c.modifiers), c.to) << c.behaviour;
    }
}

TEST_F(CursorTest, endsAnEmptySheetAtItsFirstCell)
{
    session.select(u"D9");
    EXPECT_EQ(after(KeyEnd, Ctrl), "A1");
}

// 16 rows and 3 columns fit.
TEST_F(CursorTest, turnsPages)
{
    const struct {
        const char* behaviour;
        std::u16string_view from;
        Key key;
        KeyModifiers modifiers;
        const char* to;
    } cases[] = {
        {"down",                          u"B2",     KeyPageDown, Plain,    "B17"             },
        {"up",                            u"B20",    KeyPageUp,   Plain,    "B5"              },
        {"up to the first row",           u"B10",    KeyPageUp,   Plain,    "B1"              },
        {"down to the last",              u"B16380", KeyPageDown, Plain,    "B16384"          },
        {"to the right",                  u"B2",     KeyPageDown, Alt,      "D2"              },
        {"to the left",                   u"F2",     KeyPageUp,   Alt,      "D2"              },
        {"to the left as far as it goes", u"B2",     KeyPageUp,   Alt,      "A2"              },
        {"to the right as far",           u"IV2",    KeyPageDown, Alt,      "IV2"             },
        {"extending",                     u"B2",     KeyPageDown, Shift,    "B2:B17 active B2"},
        {"extending to the right",        u"B2",     KeyPageDown, AltShift, "B2:D2 active B2" },
    };
    for (const auto& c : cases) {
        session.sheet().leftColumn = 0;
        session.sheet().topRow = 0;
        session.select(c.from);
        EXPECT_EQ(after(c.key, c.modifiers), c.to) << c.behaviour;
    }
}

TEST_F(CursorTest, turnsPagesOfAnyWindow)
{
    session.app.clientArea = {0, 0, 240, 60};
    EXPECT_EQ(after(KeyPageDown), "A2") << "less than a row fits, and it goes on all the same";
    session.app.clientArea = {0, 0, 2000, 1700};
    session.select(u"A1");
    EXPECT_EQ(after(KeyPageDown), "A97");
    session.app.fullScreen = true;
    session.select(u"A1");
    EXPECT_EQ(after(KeyPageDown), "A99");
}

TEST_F(CursorTest, landsOnNoHiddenRow)
{
    hideRows(19, 20); // below the view
    session.select(u"A5");
    EXPECT_EQ(after(KeyPageDown), "A22");
}

TEST_F(CursorTest, turnsBackWhereTheRestIsHidden)
{
    hideRows(9, LastRow);
    session.select(u"A5");
    EXPECT_EQ(after(KeyPageDown), "A9");
    EXPECT_EQ(after(KeyPageDown), "A9");
}

TEST_F(CursorTest, staysAtTheEndOfTheSheet)
{
    session.select(u"IT16382");
    for (int times = 0; times < 9; ++times) {
        after(KeyRight);
        after(KeyDown);
    }
    const int left = session.sheet().leftColumn;
    const int top = session.sheet().topRow;
    EXPECT_GT(currentView().visibleColumnCount(left), 1);
    for (int times = 0; times < 9; ++times) {
        after(KeyRight);
        after(KeyDown);
    }
    EXPECT_EQ(session.selected(), "IV16384");
    EXPECT_EQ(session.sheet().leftColumn, left) << "a key that moves nothing scrolls nothing";
    EXPECT_EQ(session.sheet().topRow, top);
    const int page = currentView().visibleRowCount(top) - 1;
    EXPECT_GT(page, 9);
    EXPECT_EQ(after(KeyPageUp), "IV" + std::to_string(16384 - page));
}

TEST_F(CursorTest, leavesOtherKeysAlone)
{
    for (const Key key : {KeyEnter, KeyEscape, KeyF2, KeyDelete, KeyBackspace, keyOf(u'A')})
        EXPECT_FALSE(handleKey(key, Plain));
    EXPECT_EQ(session.selected(), "A1");
}

// --- How far the view goes along

TEST_F(CursorTest, showsOneMoreOnTheWayRightAndDown)
{
    const struct {
        const char* behaviour;
        std::u16string_view from;
        Key key;
        KeyModifiers modifiers;
        int leftColumn, topRow;
    } cases[] = {
        {"Right, before the last in view",  u"A1",  KeyRight,    Plain, 0,   0    },
        {"onto it, one more is shown",      u"B1",  KeyRight,    Plain, 1,   0    },
        {"Down, before the last in view",   u"A14", KeyDown,     Plain, 0,   0    },
        {"onto it, one more is shown",      u"A15", KeyDown,     Plain, 0,   1    },
        {"Tab shows no more than the cell", u"B1",  KeyTab,      Plain, 0,   0    },
        {"and scrolls when it must",        u"C1",  KeyTab,      Plain, 1,   0    },
        {"a page down neither",             u"A1",  KeyPageDown, Plain, 0,   0    },
        {"the last row leaves a white one", u"A1",  KeyDown,     Ctrl,  0,   16369},
        {"and the last column",             u"A1",  KeyRight,    Ctrl,  254, 0    },
    };
    for (const auto& c : cases) {
        session.sheet().leftColumn = 0;
        session.sheet().topRow = 0;
        session.select(c.from);
        after(c.key, c.modifiers);
        EXPECT_EQ(session.sheet().leftColumn, c.leftColumn) << c.behaviour;
        EXPECT_EQ(session.sheet().topRow, c.topRow) << c.behaviour;
    }
}

TEST_F(CursorTest, scrollsBackOnlyAsFarAsTheCell)
{
    session.sheet().leftColumn = 10;
    session.sheet().topRow = 50;
    session.select(u"K51");
    after(KeyUp);
    EXPECT_EQ(session.sheet().topRow, 49);
    after(KeyLeft);
    EXPECT_EQ(session.sheet().leftColumn, 9);
    after(KeyHome, Ctrl);
    EXPECT_EQ(session.sheet().topRow, 0);
    EXPECT_EQ(session.sheet().leftColumn, 0);
}

TEST_F(CursorTest, scrollsBesideWhatIsFrozen)
{
    Sheet& sheet = session.sheet();
    sheet.titleColumns = sheet.titleRows = true;
    sheet.titles.set(0, 0, 1, 2);
    sheet.leftColumn = 6;
    sheet.topRow = 40;
    session.select(u"G41");
    after(KeyUp, Ctrl);
    EXPECT_EQ(session.selected(), "G1");
    EXPECT_EQ(sheet.topRow, 2) << "back to the first that scrolls";
    after(KeyDown);
    after(KeyDown);
    EXPECT_EQ(session.selected(), "G3");
    EXPECT_EQ(sheet.topRow, 2);
    after(KeyHome);
    EXPECT_EQ(sheet.leftColumn, 1);
}

// --- Tab under protection

TEST_F(CursorTest, tabsToUnlockedCells)
{
    for (const std::u16string_view cell : {u"B2", u"D2", u"A5", u"IV9"})
        session.protect(cell, false);
    session.sheet().protectedSheet = true;
    for (const char* next : {"B2", "D2", "A5", "IV9", "IV9"})
        EXPECT_EQ(after(KeyTab), next);
    for (const char* previous : {"A5", "D2", "B2", "B2"})
        EXPECT_EQ(after(KeyTab, Shift), previous);
    session.sheet().protectedSheet = false;
    EXPECT_EQ(after(KeyTab), "C2");
    EXPECT_EQ(after(KeyTab, Shift), "B2");
    workbook->protectedWorkbook = true;
    EXPECT_EQ(after(KeyTab), "D2") << "the workbook protects every sheet";
}

TEST_F(CursorTest, staysWhereNothingIsUnlocked)
{
    session.put(u"C9", u"1");
    session.select(u"B2", u"C3");
    session.sheet().protectedSheet = true;
    EXPECT_EQ(after(KeyTab), "B2");
    EXPECT_EQ(after(KeyTab, Shift), "B2");
}

TEST_F(CursorTest, tabsThroughUnlockedRowsAndColumns)
{
    CellStyle style = workbook->styles[0];
    style.set(StyleLocked, 0);
    const int unlocked = workbook->addStyle(style);
    style.set(StyleLocked, 1);
    style.set(StyleHidden, 1);
    const int locked = workbook->addStyle(style);
    Sheet& sheet = session.sheet();
    sheet.columns.setColumnStyle(2, 2, unlocked);
    sheet.setRowStyle(1, locked);
    sheet.setCellStyle(2, 3, locked);
    sheet.setRowStyle(5, unlocked);
    sheet.protectedSheet = true;
    for (const char* next : {"C1", "C3", "C5", "A6", "B6"})
        EXPECT_EQ(after(KeyTab), next);
    session.select(u"C16384");
    EXPECT_EQ(after(KeyTab), "C16384");
    session.select(u"A7");
    EXPECT_EQ(after(KeyTab, Shift), "IV6");
    session.select(u"A2");
    EXPECT_EQ(after(KeyTab, Shift), "C1");
}

TEST_F(CursorTest, tabsPastUnlockedCellsThatAreHidden)
{
    for (const std::u16string_view cell : {u"B2", u"C2", u"B3", u"D4"})
        session.protect(cell, false);
    hideColumns(1, 1);
    hideRows(1, 1);
    session.sheet().protectedSheet = true;
    EXPECT_EQ(after(KeyTab), "D4");
    EXPECT_EQ(after(KeyTab, Shift), "D4");
}

} // namespace
} // namespace vorn
