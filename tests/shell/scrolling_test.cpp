#include "shell/scrolling.h"

#include "shell/cursor.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr BarDirection Across = BarDirection::Across;
constexpr BarDirection Down = BarDirection::Down;

// In the window of a handheld 3 columns and 16 rows are seen whole.
class ScrollingTest : public testing::Test {
protected:
    void standAt(int column, int row)
    {
        session.sheet().leftColumn = column;
        session.sheet().topRow = row;
        session.app.repaintHints = 0;
    }
    std::string view() const
    {
        return std::to_string(session.sheet().leftColumn) + ' ' +
               std::to_string(session.sheet().topRow);
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
    void freeze(int columns, int rows)
    {
        session.sheet().titleColumns = columns > 0;
        session.sheet().titleRows = rows > 0;
        session.sheet().titles.set(0, 0, columns, rows);
    }
    std::string reach(BarDirection direction) const
    {
        const ScrollReach found = scrollReach(direction);
        return std::to_string(found.first) + '-' + std::to_string(found.last) + " at " +
               std::to_string(found.position);
    }

    Session session;
};

TEST_F(ScrollingTest, measuresAsTheOtherTestsExpect)
{
    EXPECT_EQ(currentView().columns.countFrom(0), 3);
    EXPECT_EQ(currentView().rows.countFrom(0), 16);
}

TEST_F(ScrollingTest, movesByColumnsAndRows)
{
    const struct {
        const char* behaviour;
        int column, row, columns, rows;
        const char* view;
    } cases[] = {
        {"a row on",                   0,   0,     0,           1,           "0 1"      },
        {"a row back",                 0,   5,     0,           -1,          "0 4"      },
        {"a column on",                0,   0,     1,           0,           "1 0"      },
        {"a column back",              5,   0,     -1,          0,           "4 0"      },
        {"several of both",            10,  10,    -3,          4,           "7 14"     },
        {"up to the last",             254, 16382, 1,           1,           "255 16383"},
        {"and no further",             255, 16383, 1,           1,           "255 16383"},
        {"back to the first",          1,   1,     -1,          -1,          "0 0"      },
        {"and no further",             0,   0,     -1,          -1,          "0 0"      },
        {"however much is asked",      3,   3,     1000000000,  1000000000,  "255 16383"},
        {"in either direction",        3,   3,     -1000000000, -1000000000, "0 0"      },
        {"one may stay while it ends", 255, 3,     1,           1,           "255 4"    },
    };
    for (const auto& c : cases) {
        standAt(c.column, c.row);
        const std::string before = view();
        scrollBy(c.columns, c.rows);
        EXPECT_EQ(view(), c.view) << c.behaviour;
        EXPECT_EQ(session.app.repaintHints, view() == before ? 0 : DirtyScrolled) << c.behaviour;
    }
}

TEST_F(ScrollingTest, goesWhereItIsTold)
{
    const struct {
        const char* behaviour;
        int leftColumn, topRow;
        const char* view;
    } cases[] = {
        {"to a column and a row",   20,  30,    "20 30"    },
        {"to the first",            0,   0,     "0 0"      },
        {"to the last",             255, 16383, "255 16383"},
        {"not past it",             256, 16384, "255 16383"},
        {"one of both stays",       -1,  30,    "7 30"     },
        {"or the other",            20,  -1,    "20 9"     },
        {"or both",                 -1,  -1,    "7 9"      },
        {"where it stands already", 7,   9,     "7 9"      },
    };
    for (const auto& c : cases) {
        standAt(7, 9);
        scrollViewTo(c.leftColumn, c.topRow);
        EXPECT_EQ(view(), c.view) << c.behaviour;
        const bool stays = view() == "7 9";
        EXPECT_EQ(session.app.repaintHints, stays ? 0 : DirtyScrolled) << c.behaviour;
    }
}

TEST_F(ScrollingTest, passesHiddenOnesOver)
{
    hideRows(0, 3);
    hideRows(10, 12);
    hideColumns(2, 4);
    hideColumns(250, 255);
    const struct {
        const char* behaviour;
        int column, row, columns, rows;
        const char* view;
    } cases[] = {
        {"on",                                     1,   9,  1,    1,  "5 13" },
        {"back",                                   5,   13, -1,   -1, "1 9"  },
        {"each that is seen counts as one",        0,   8,  3,    3,  "6 14" },
        {"the first that is seen counts as first", 0,   0,  0,    1,  "0 5"  },
        {"there is nothing before it",             0,   0,  0,    -1, "0 0"  },
        {"nor before where it is",                 0,   4,  0,    -1, "0 4"  },
        {"the last that is seen is the last",      249, 0,  1,    0,  "249 0"},
        {"however far",                            0,   9,  1000, 0,  "249 9"},
    };
    for (const auto& c : cases) {
        standAt(c.column, c.row);
        scrollBy(c.columns, c.rows);
        EXPECT_EQ(view(), c.view) << c.behaviour;
    }
    standAt(0, 20);
    scrollViewTo(3, 10);
    EXPECT_EQ(view(), "5 13") << "the next that is seen";
    scrollViewTo(252, -1);
    EXPECT_EQ(view(), "249 13") << "or the last";
}

TEST_F(ScrollingTest, staysWhereEverythingIsHidden)
{
    hideColumns(0, 255);
    standAt(9, 0);
    scrollBy(1, 0);
    scrollBy(-1, 0);
    scrollViewTo(100, -1);
    scrollByPart(Across, ScrollPageOn);
    scrollByPart(Across, ScrollPageBack);
    EXPECT_EQ(view(), "9 0");
    EXPECT_EQ(reach(Across), "9-9 at 9");
}

TEST_F(ScrollingTest, keepsBehindFrozenOnes)
{
    freeze(1, 2);
    const struct {
        const char* behaviour;
        int columns, rows;
        const char* view;
    } cases[] = {
        {"on",             1,     1,     "4 6"},
        {"back",           -1,    -1,    "2 4"},
        {"not below them", -2,    -3,    "1 2"},
        {"however far",    -1000, -1000, "1 2"},
    };
    for (const auto& c : cases) {
        standAt(3, 5);
        scrollBy(c.columns, c.rows);
        EXPECT_EQ(view(), c.view) << c.behaviour;
    }
    scrollViewTo(0, 0);
    EXPECT_EQ(view(), "1 2");
    hideRows(2, 6);
    standAt(1, 7);
    scrollBy(0, -1);
    EXPECT_EQ(view(), "1 7") << "what is between is hidden";
}

// --- Pages

TEST_F(ScrollingTest, turnsPages)
{
    const struct {
        const char* behaviour;
        BarDirection direction;
        ScrollPart part;
        int column, row;
        const char* view;
    } cases[] = {
        {"a line on",                             Down,   ScrollLineOn,   0, 0,     "0 1"    },
        {"a line back",                           Down,   ScrollLineBack, 0, 1,     "0 0"    },
        {"a page on: the last row comes first",   Down,   ScrollPageOn,   0, 0,     "0 15"   },
        {"a page back: the first row comes last", Down,   ScrollPageBack, 0, 15,    "0 0"    },
        {"not past the first",                    Down,   ScrollPageBack, 0, 3,     "0 0"    },
        {"nor past the last",                     Down,   ScrollPageOn,   0, 16380, "0 16383"},
        {"at the last nothing more",              Down,   ScrollPageOn,   0, 16383, "0 16383"},
        {"columns alike",                         Across, ScrollPageOn,   4, 0,     "6 0"    },
        {"and back",                              Across, ScrollPageBack, 6, 0,     "4 0"    },
        {"a column on",                           Across, ScrollLineOn,   6, 0,     "7 0"    },
        {"a column back",                         Across, ScrollLineBack, 6, 0,     "5 0"    },
        {"the thumb does nothing",                Down,   ScrollThumb,    6, 6,     "6 6"    },
        {"nor does nothing",                      Down,   ScrollNone,     6, 6,     "6 6"    },
    };
    for (const auto& c : cases) {
        standAt(c.column, c.row);
        scrollByPart(c.direction, c.part);
        EXPECT_EQ(view(), c.view) << c.behaviour;
    }
}

TEST_F(ScrollingTest, turnsPagesOverHiddenAndTallOnes)
{
    hideRows(10, 59);
    standAt(0, 60);
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "0 0") << "ten rows fit before it";
    scrollByPart(Down, ScrollPageOn);
    EXPECT_EQ(view(), "0 65");
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "0 0");

    session.sheet().setRowHeight(100, 300 * 15, true);
    standAt(0, 99);
    scrollByPart(Down, ScrollPageOn);
    EXPECT_EQ(view(), "0 100") << "one at least, also to a row that is higher than the view";
    scrollByPart(Down, ScrollPageOn);
    EXPECT_EQ(view(), "0 101");
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "0 100");
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "0 99");
}

TEST_F(ScrollingTest, turnsPagesBehindFrozenOnes)
{
    freeze(1, 2);
    standAt(1, 2);
    scrollByPart(Down, ScrollPageOn);
    EXPECT_EQ(view(), "1 15") << "two rows fewer fit";
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "1 2");
    scrollByPart(Down, ScrollPageBack);
    EXPECT_EQ(view(), "1 2");
}

// --- While a cell is edited

TEST_F(ScrollingTest, commitsATextFirst)
{
    session.select(u"B2");
    session.type(u"abc");
    scrollBy(0, 20);
    session.endMessage();
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"B2"), "abc");
    EXPECT_EQ(view(), "0 20");
}

TEST_F(ScrollingTest, beginsToPoint)
{
    session.select(u"B2");
    session.type(u"=1+");
    scrollViewTo(-1, 20);
    session.endMessage();
    EXPECT_EQ(session.editor(), "pointing =1+B2|");
    EXPECT_EQ(view(), "0 20");
    scrollByPart(Across, ScrollLineOn);
    EXPECT_EQ(view(), "1 20");
    session.key(KeyEscape);
    EXPECT_EQ(view(), "0 0") << "it goes back where it was";
}

TEST_F(ScrollingTest, staysIfTheTextCannotBeCommitted)
{
    const struct {
        const char* behaviour;
        void (*scroll)();
    } cases[] = {
        {"by lines", [] { scrollBy(1, 1); }                  },
        {"to a row", [] { scrollViewTo(3, 4); }              },
        {"by pages", [] { scrollByPart(Down, ScrollPageOn); }},
    };
    session.type(u"=(1");
    for (const auto& c : cases) {
        c.scroll();
        session.endMessage();
        EXPECT_EQ(view(), "0 0") << c.behaviour;
        EXPECT_EQ(session.editor(), "editing =(1|") << c.behaviour;
        EXPECT_EQ(session.boxes().size(), 1U) << c.behaviour;
    }
}

TEST_F(ScrollingTest, leavesTheEditorWhereNothingIsAsked)
{
    session.type(u"abc");
    scrollBy(0, 0);
    scrollViewTo(-1, -1);
    scrollByPart(Down, ScrollThumb);
    EXPECT_EQ(session.editor(), "editing abc|");
}

// --- How far the bars reach

TEST_F(ScrollingTest, reachesAllColumns)
{
    EXPECT_EQ(reach(Across), "0-255 at 0");
    standAt(255, 0);
    EXPECT_EQ(reach(Across), "0-255 at 255");
    freeze(2, 0);
    EXPECT_EQ(reach(Across), "2-255 at 255");
    hideColumns(2, 4);
    hideColumns(200, 255);
    EXPECT_EQ(reach(Across), "5-199 at 199") << "both ends can be scrolled to";
    standAt(2, 0);
    EXPECT_EQ(reach(Across), "5-199 at 5");
}

TEST_F(ScrollingTest, reachesTheRowsOfTheData)
{
    const auto fill = [this](int row) {
        session.sheet().setRowHeight(row, 400, true);
        return session.sheet().lastRow();
    };
    EXPECT_EQ(reach(Down), "0-100 at 0") << "a short sheet";
    EXPECT_EQ(fill(40), 40);
    EXPECT_EQ(reach(Down), "0-100 at 0");
    scrollViewTo(-1, 100);
    EXPECT_EQ(reach(Down), "0-100 at 100");
    scrollBy(0, 1);
    EXPECT_EQ(reach(Down), "0-201 at 101") << "the position passes the end";
    scrollViewTo(-1, 300);
    EXPECT_EQ(reach(Down), "0-400 at 300");
    scrollBy(0, -1);
    EXPECT_EQ(reach(Down), "0-399 at 299") << "it lies more than 100 before the end";
    scrollViewTo(-1, 0);
    EXPECT_EQ(reach(Down), "0-140 at 0") << "data and 100 more";
    EXPECT_EQ(fill(5000), 5000);
    scrollViewTo(-1, 20);
    EXPECT_EQ(reach(Down), "0-5100 at 20");
    scrollViewTo(-1, 16383);
    EXPECT_EQ(reach(Down), "0-16383 at 16383");
    scrollViewTo(-1, 16300);
    EXPECT_EQ(reach(Down), "0-16383 at 16300");
}

TEST_F(ScrollingTest, reachesOnlyRowsThatAreSeen)
{
    hideRows(0, 4);
    hideRows(60, 16383);
    EXPECT_EQ(reach(Down), "5-59 at 5");
    scrollViewTo(-1, 16383);
    EXPECT_EQ(view(), "0 59");
    EXPECT_EQ(reach(Down), "5-59 at 59");
}

TEST_F(ScrollingTest, takesTheRangeAlongHoweverTheViewMoves)
{
    moveTo(0, 1000, SelectCell, ShowCell);
    const int top = session.sheet().topRow;
    EXPECT_EQ(top, 985);
    EXPECT_EQ(session.app.chrome.verticalRange, 1085);
    moveTo(0, 990, SelectCell, ShowCell);
    EXPECT_EQ(session.app.chrome.verticalRange, 1085) << "the view stays";
    moveTo(0, 0, SelectCell, ShowCell);
    EXPECT_EQ(session.app.chrome.verticalRange, 100);
}

TEST_F(ScrollingTest, measuresAnotherSheetAnew)
{
    workbook->sheetAt(1)->setRowHeight(700, 400, true);
    scrollViewTo(-1, 2000);
    EXPECT_EQ(reach(Down), "0-2100 at 2000");
    selectTab(1);
    EXPECT_EQ(reach(Down), "0-800 at 0");
    selectTab(2);
    EXPECT_EQ(reach(Down), "0-100 at 0");
    selectTab(0);
    EXPECT_EQ(reach(Down), "0-2100 at 2000");
    session.app.newWorkbook();
    EXPECT_EQ(reach(Down), "0-100 at 0");
}

TEST_F(ScrollingTest, showsWithItsThumbHowMuchIsSeen)
{
    EXPECT_EQ(scrollReach(Across).page, 3);
    EXPECT_EQ(scrollReach(Down).page, 16);
    session.sheet().setRowHeight(3, 300 * 15, true);
    EXPECT_EQ(scrollReach(Down).page, 16) << "the same wherever the view stands";
    session.sheet().zoom = 200;
    EXPECT_EQ(scrollReach(Down).page, 7);
    session.app.clientArea = {0, 0, 1, 1};
    EXPECT_EQ(scrollReach(Across).page, 1);
    EXPECT_EQ(scrollReach(Down).page, 1);
}

} // namespace
} // namespace vorn
