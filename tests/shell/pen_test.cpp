#include "shell/pen.h"

#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/pointmode.h"
#include "support/penhand.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class PenTest : public PenHand {};

// --- Selecting

TEST_F(PenTest, selectsAsItGoes)
{
    const struct {
        const char* behaviour;
        Points points;
        const char* selected;
    } cases[] = {
        {"a cell",                        {{120, 56}},                      "B2"                  },
        {"cells",                         {{57, 39}, {183, 73}},            "A1:C3 active A1"     },
        {"up and to the left",            {{183, 73}, {57, 39}},            "A1:C3 active C3"     },
        {"back to where it began",        {{57, 39}, {183, 73}, {60, 41}},  "A1"                  },
        {"to the other side",             {{120, 56}, {183, 73}, {57, 39}}, "A1:B2 active B2"     },
        {"a column",                      {{120, 24}},                      "B1:B16384 active B2" },
        {"columns",                       {{120, 24}, {183, 24}},           "B1:C16384 active B2" },
        {"backward, with the pen below",  {{120, 24}, {57, 200}},           "A1:B16384 active B2" },
        {"a row",                         {{10, 56}},                       "A2:IV2 active B2"    },
        {"rows",                          {{10, 56}, {10, 90}},             "A2:IV4 active B2"    },
        {"backward, with the pen beside", {{10, 56}, {200, 39}},            "A1:IV2 active B2"    },
        {"everything",                    {{5, 20}},                        "A1:IV16384 active B2"},
        {"and everything stays so",       {{5, 20}, {120, 60}},             "A1:IV16384 active B2"},
    };
    for (const auto& c : cases) {
        session.select(u"B2");
        drag(c.points);
        EXPECT_EQ(session.selected(), c.selected) << c.behaviour;
        EXPECT_EQ(sheet().leftColumn, 0) << c.behaviour;
        EXPECT_EQ(sheet().topRow, 0) << c.behaviour;
    }
}

TEST_F(PenTest, extendsWithShift)
{
    const struct {
        const char* behaviour;
        Points points;
        const char* selected;
    } cases[] = {
        {"to a cell",      {{183, 90}},            "B2:C4 active B2"     },
        {"and on",         {{183, 90}, {183, 39}}, "B1:C2 active B2"     },
        {"to a column",    {{183, 24}},            "B1:C16384 active B2" },
        {"to a row",       {{10, 90}},             "A2:IV4 active B2"    },
        {"to where it is", {{120, 56}},            "B2"                  },
        {"in any way",     {{5, 20}},              "A1:IV16384 active B2"},
    };
    for (const auto& c : cases) {
        session.select(u"B2");
        drag(c.points, Shift);
        EXPECT_EQ(session.selected(), c.selected) << c.behaviour;
    }
    tap({120, 56});
    EXPECT_EQ(session.selected(), "B2") << "a plain tap collapses it";
    tap({5, 20});
    tap({183, 90}, Shift);
    EXPECT_EQ(session.selected(), "B2:C4 active B2") << "it begins at the active cell";
}

TEST_F(PenTest, remembersWhatADragIs)
{
    const struct {
        const char* behaviour;
        Point at;
        DragMode mode;
        unsigned extend;
    } cases[] = {
        {"a cell",             {120, 56},  DragSelect,     1},
        {"a row title",        {10, 56},   DragSelect,     3},
        {"a column title",     {120, 24},  DragSelect,     5},
        {"the corner",         {5, 20},    DragSelect,     7},
        {"a column's edge",    {89, 24},   DragColumnSize, 0},
        {"a row's edge",       {10, 48},   DragRowSize,    0},
        {"the handle",         {89, 48},   DragFill,       0},
        {"between the bars",   {235, 315}, DragNone,       0},
        {"outside the window", {500, 500}, DragNone,       0},
    };
    for (const auto& c : cases) {
        session.select(u"A1");
        down(c.at);
        EXPECT_TRUE(pen().penDown) << c.behaviour;
        EXPECT_EQ(pen().dragMode, c.mode) << c.behaviour;
        if (c.mode == DragSelect) {
            EXPECT_EQ(pen().selectionExtend, c.extend) << c.behaviour;
        }
        up(c.at);
        EXPECT_FALSE(pen().penDown) << c.behaviour;
        EXPECT_EQ(pen().dragMode, DragNone) << c.behaviour;
    }
    EXPECT_EQ(steps(), 0);
}

TEST_F(PenTest, onlySelectsOnAProtectedSheet)
{
    session.sheet().protectedSheet = true;
    const struct {
        Points points;
        const char* selected;
    } cases[] = {
        {{{89, 24}, {99, 24}},  "B1:B16384 active B1"},
        {{{10, 48}, {10, 60}},  "A2:IV2 active A2"   },
        {{{89, 48}, {120, 48}}, "B2"                 },
    };
    for (const auto& c : cases) {
        session.select(u"A1");
        drag(c.points);
        EXPECT_EQ(session.selected(), c.selected);
    }
    EXPECT_EQ(pixels(0), 63);
    EXPECT_EQ(sheet().rowPixels(0), 17);
}

TEST_F(PenTest, keepsMenusUpToDate)
{
    const auto cutIsEnabled = [this] {
        return session.app.commandState.entry(CommandCut)->enabled;
    };
    refreshCommandState();
    ASSERT_TRUE(cutIsEnabled());
    session.sheet().protectedSheet = true;
    down({120, 56});
    EXPECT_FALSE(cutIsEnabled());
    session.sheet().protectedSheet = false;
    up({120, 56});
    EXPECT_TRUE(cutIsEnabled());
    session.sheet().protectedSheet = true;
    doubleTap(120, 56);
    EXPECT_FALSE(cutIsEnabled());
}

TEST_F(PenTest, tellsWhetherTwoTapsAreMoreThanOne)
{
    const struct {
        const char* behaviour;
        Point at;
        bool barOff, used;
    } cases[] = {
        {"a cell with the bar on",      {120, 56}, false, false},
        {"a cell with the bar off",     {120, 39}, true,  true },
        {"the edge of a column",        {89, 24},  false, true },
        {"the edge of a row",           {5, 48},   false, true },
        {"a title",                     {120, 24}, false, false},
        {"the buttons around the grid", {235, 60}, false, true },
        {"nowhere",                     {-5, -5},  false, false},
    };
    for (const auto& c : cases) {
        session.app.formulaBarVisible = !c.barOff;
        down(c.at);
        up(c.at);
        EXPECT_EQ(doubleTap(c.at.x, c.at.y), c.used) << c.behaviour;
        cancelEdit();
    }
    session.app.formulaBarVisible = true;
    session.type(u"=");
    down({120, 56});
    up({120, 56});
    EXPECT_FALSE(doubleTap(120, 56)) << "pointing";
    cancelEdit();
}

// --- Beyond the edges of the view

TEST_F(PenTest, keepsScrollingWhileItRestsBeyondAnEdge)
{
    const struct {
        const char* behaviour;
        Point from, to;
        int columns, rows; // the least that each tick adds
    } cases[] = {
        {"below",     {57, 200}, {57, 310},  0,  1 },
        {"above",     {57, 200}, {57, 20},   0,  -1},
        {"far above", {57, 200}, {57, -500}, 0,  -1},
        {"right",     {57, 200}, {235, 200}, 1,  0 },
        {"left",      {57, 200}, {10, 200},  -1, 0 },
        {"both",      {57, 200}, {600, 600}, 1,  1 },
    };
    for (const auto& c : cases) {
        scrollTo(100, 200);
        down(c.from);
        const Selection start = sheet().selection;
        move(c.to);
        for (int count = 0; count < 3; ++count) {
            const Selection former = sheet().selection;
            tick();
            const Selection& now = sheet().selection;
            const int columns = now.cornerColumn - former.cornerColumn;
            const int rows = now.cornerRow - former.cornerRow;
            EXPECT_TRUE(c.columns == 0 ? columns == 0 : columns * c.columns >= 1) << c.behaviour;
            EXPECT_TRUE(c.rows == 0 ? rows == 0 : rows * c.rows >= 1) << c.behaviour;
            EXPECT_TRUE(now.range.contains(start.activeColumn, start.activeRow)) << c.behaviour;
        }
        up(c.to);
    }
}

TEST_F(PenTest, goesOneRowUpForAPositionThatLostItsSign)
{
    scrollTo(0, 20);
    down({57, 100});
    ASSERT_EQ(session.selected(), "A25");
    move({57, 65530});
    EXPECT_EQ(session.selected(), "A20:A25 active A25");
    EXPECT_EQ(sheet().topRow, 19);
    tick();
    EXPECT_EQ(session.selected(), "A19:A25 active A25");
    move({57, 30001});
    EXPECT_EQ(session.selected(), "A18:A25 active A25");
    up({57, 30001});
    EXPECT_EQ(session.selected(), "A18:A25 active A25");
}

TEST_F(PenTest, staysInTheSheet)
{
    for (const Point far : {
             Point{2000000000,  100        },
             Point{-2000000000, 100        },
             Point{57,          -2000000000},
             Point{57,          2000000000 },
             Point{29000,       29000      }
    }) {
        for (const auto& [column, row] : {
                 std::pair{0,   0    },
                 std::pair{252, 16370}
        }) {
            scrollTo(column, row);
            drag({
                {57, 100},
                far
            });
            const RangeRef& range = sheet().selection.range;
            EXPECT_LE(range.firstColumn, range.lastColumn);
            EXPECT_LE(range.firstRow, range.lastRow);
            EXPECT_LE(range.lastColumn, LastColumn);
            EXPECT_LE(range.lastRow, LastRow);
        }
    }
    scrollTo(255, 16383);
    tap({200, 200});
    EXPECT_EQ(session.selected(), "IV16384") << "behind the sheet";
}

TEST_F(PenTest, wholeColumnsDoNotScrollDown)
{
    scrollTo(3, 50);
    drag({
        {57,  24 },
        {57,  600},
        {130, 600}
    });
    EXPECT_EQ(session.selected(), "D1:E16384 active D1");
    EXPECT_EQ(sheet().topRow, 50);
    scrollTo(3, 50);
    drag({
        {10,  56},
        {-10, 56},
        {600, 73}
    });
    EXPECT_EQ(session.selected(), "A52:IV53 active D52");
    EXPECT_EQ(sheet().leftColumn, 3);
    drag({57, 24}, {600, 24});
    EXPECT_GT(sheet().leftColumn, 3) << "along the titles the view follows";
}

TEST_F(PenTest, isNotMovedByAViewThatScrollsUnderIt)
{
    tap({57, 304});
    EXPECT_EQ(session.selected(), "A17");
    EXPECT_EQ(sheet().topRow, 1) << "A17 is shown as a whole";
    scrollTo(0, 0);
    down({220, 39});
    EXPECT_EQ(session.selected(), "D1");
    EXPECT_EQ(sheet().leftColumn, 1) << "D is shown as a whole";
    tick();
    move({221, 40});
    tick();
    EXPECT_EQ(session.selected(), "D1") << "though E lies under the pen now";
    EXPECT_EQ(sheet().leftColumn, 1);
    move({120, 39});
    EXPECT_EQ(session.selected(), "C1:D1 active D1");
    up({120, 39});
    EXPECT_EQ(session.selected(), "C1:D1 active D1");
}

// --- Frozen columns and rows

TEST_F(PenTest, doesNotScrollForATapOnWhatIsFrozen)
{
    freeze(0, 0, 2, 1);
    scrollTo(5, 40);
    tap({57, 39});
    EXPECT_EQ(session.selected(), "A1");
    tap({120, 56});
    EXPECT_EQ(session.selected(), "B41");
    tap({183, 39});
    EXPECT_EQ(session.selected(), "F1");
    tap({57, 24});
    tap({10, 39});
    EXPECT_EQ(sheet().leftColumn, 5);
    EXPECT_EQ(sheet().topRow, 40);
    drag({57, 39}, {120, 39});
    EXPECT_EQ(session.selected(), "A1:B1 active A1");
    EXPECT_EQ(sheet().leftColumn, 5);
    EXPECT_EQ(sheet().topRow, 40);
}

TEST_F(PenTest, dragsOverTheFrozenBorder)
{
    freeze(0, 0, 2, 1);
    scrollTo(5, 40);
    drag({57, 39}, {183, 56});
    EXPECT_EQ(session.selected(), "A1:F41 active A1");
    EXPECT_EQ(sheet().leftColumn, 5);
    EXPECT_EQ(sheet().topRow, 40);
    drag({183, 56}, {57, 39});
    EXPECT_EQ(session.selected(), "A1:F41 active F41");
    EXPECT_EQ(sheet().leftColumn, 2) << "all that is selected comes into view";
    EXPECT_EQ(sheet().topRow, 1);
}

// --- While a cell is edited

TEST_F(PenTest, commitsBeforeItSelects)
{
    session.type(u"12");
    tap({120, 56});
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "12");
    EXPECT_EQ(session.selected(), "B2");
    session.type(u"13");
    tap({120, 24});
    EXPECT_EQ(session.input(u"B2"), "13");
    EXPECT_EQ(session.selected(), "B1:B16384 active B2");
    session.type(u"14");
    drag({89, 24}, {99, 24});
    EXPECT_EQ(session.input(u"B2"), "14");
    EXPECT_EQ(pixels(0), 73) << "an edge is no reason to lose the text either";
}

TEST_F(PenTest, isIgnoredWhereTheTextCannotBeCommitted)
{
    for (const Point at : {
             Point{120, 56},
             Point{120, 24},
             Point{10,  56},
             Point{5,   20},
             Point{89,  24},
             Point{89,  48}
    }) {
        session.select(u"A1");
        session.type(u"=1+)");
        down(at);
        EXPECT_EQ(session.boxes().size(), 1U);
        EXPECT_EQ(session.editor(), "editing =1+)|");
        EXPECT_FALSE(pen().penDown) << "its going up went to the box";
        move({183, 90});
        tick();
        up({183, 90});
        EXPECT_EQ(session.selected(), "A1");
        EXPECT_EQ(pixels(0), 63);
        doubleTap(at.x, at.y);
        EXPECT_EQ(session.editor(), "editing =1+)|");
        EXPECT_EQ(session.boxes().size(), 0U) << "once is enough";
        cancelEdit();
    }
    EXPECT_EQ(steps(), 0);
}

TEST_F(PenTest, opensTheEditorByATapIntoIt)
{
    session.put(u"A1", u"abc");
    session.endMessage();
    drag({150, 8}, {180, 100});
    EXPECT_EQ(session.editor().substr(0, 7), "editing");
    EXPECT_EQ(session.selected(), "A1");
    tap({120, 56});
    EXPECT_EQ(session.editor(), "ready");
    session.select(u"A1");
    session.sheet().protectedSheet = true;
    down({150, 8});
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.boxes(), std::vector<std::string>{"Locked cell"});
    EXPECT_FALSE(pen().penDown);
}

TEST_F(PenTest, points)
{
    session.type(u"=1+");
    tap({120, 56});
    EXPECT_EQ(session.editor(), "pointing =1+B2|");
    tap({183, 73});
    EXPECT_EQ(session.editor(), "pointing =1+C3|") << "another tap takes its place";
    drag({57, 39}, {183, 73});
    EXPECT_EQ(session.editor(), "pointing =1+A1:C3|");
    tap({120, 90}, Shift);
    EXPECT_EQ(session.editor(), "pointing =1+A1:B4|");
    tap({120, 24});
    EXPECT_EQ(session.editor(), "pointing =1+B1:B16384|");
    drag({10, 39}, {10, 56});
    EXPECT_EQ(session.editor(), "pointing =1+A1:IV2|");
    tap({5, 20});
    EXPECT_EQ(session.editor(), "pointing =1+A1:IV16384|");
    EXPECT_EQ(session.selected(), "A1") << "what is selected stays";
    tap({89, 48});
    EXPECT_EQ(session.editor(), "pointing =1+B2|") << "there is no handle";
    drag({89, 24}, {99, 24});
    EXPECT_EQ(pixels(0), 73) << "there are edges";
    EXPECT_EQ(session.editor(), "pointing =1+B2|");
    tap({150, 8});
    EXPECT_EQ(session.editor(), "editing =1+B2|") << "a tap into the editor ends it";
}

TEST_F(PenTest, pointsOnOtherSheets)
{
    session.type(u"=");
    ASSERT_TRUE(yieldToGrid());
    workbook->setCurrentSheet(workbook->sheetAt(1));
    session.endMessage();
    drag({57, 39}, {120, 56});
    EXPECT_EQ(session.editor(), "pointing ='Sheet2'!A1:B2|");
    EXPECT_EQ(workbook->sheetAt(1)->selection.range, RangeRef()) << "its own selection stays";
    session.key(KeyEnter);
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0));
}

// --- Fingers

TEST_F(PenTest, takesAFingersTapForWhatItMeant)
{
    finger({80, 24});
    EXPECT_EQ(session.selected(), "A1:A16384 active A1") << "beside the edge lies the title";
    finger({80, 24}, {82, 25});
    EXPECT_EQ(pixels(0), 63) << "it may tremble";
    finger({80, 24}, {90, 24});
    EXPECT_EQ(pixels(0), 73) << "but a drag is meant for the edge";
    undo();
    session.select(u"A1");
    finger({97, 50});
    EXPECT_EQ(session.selected(), "B2") << "beside the handle lies the cell";
    session.select(u"A1");
    finger({97, 50}, {120, 40});
    EXPECT_EQ(session.selected(), "A1:B1 active A1");
    session.select(u"A1");
    finger({89, 48});
    EXPECT_EQ(session.selected(), "A1") << "on the handle nothing else is meant";
    down({97, 50}, Plain, Pointer::Finger);
    tick();
    tick();
    up({97, 50});
    EXPECT_EQ(session.selected(), "B2") << "however long it rests";
}

// --- Tasks and double taps

TEST_F(PenTest, fitsAColumnByADoubleTapOnItsEdge)
{
    session.put(u"A1", u"a text that is wider than the column is");
    session.put(u"B1", u"x");
    clearUndo();
    const int before = pixels(0);
    tapTwice({91, 24});
    EXPECT_GT(pixels(0), before);
    EXPECT_EQ(undoLabel(), u"Column Width");
    EXPECT_EQ(steps(), 1);
    undo();
    EXPECT_EQ(pixels(0), before);
    session.select(u"A1", u"B16384");
    tapTwice({89, 24});
    EXPECT_GT(pixels(0), before);
    EXPECT_LT(pixels(1), before) << "all that is selected";
}

TEST_F(PenTest, fitsARowByADoubleTapOnItsEdge)
{
    session.put(u"A1", u"x");
    session.sheet().setRowHeight(0, 900, true);
    clearUndo();
    tapTwice({10, 91 + 3});
    EXPECT_LT(sheet().rowPixels(0), 60);
    EXPECT_EQ(undoLabel(), u"Row Height");
    undo();
    EXPECT_EQ(sheet().rowPixels(0), 60);
    clearUndo();
    session.sheet().protectedSheet = true;
    tapTwice({10, 91});
    tapTwice({89, 24});
    EXPECT_EQ(steps(), 0);
}

TEST_F(PenTest, opensTheEditorOfACellByADoubleTap)
{
    session.put(u"B2", u"abc");
    tapTwice({120, 56});
    EXPECT_EQ(session.editor(), "ready") << "the formula bar is there";
    session.app.formulaBarVisible = false;
    session.endMessage();
    tapTwice({120, 39});
    EXPECT_EQ(session.selected(), "B2");
    EXPECT_EQ(session.editor(), "editing [abc]");
    doubleTap(120, 39);
    EXPECT_EQ(session.editor(), "editing [abc]");
    session.key(KeyEscape);
    for (const Point title : {
             Point{120, 7 },
             Point{10,  39},
             Point{5,   5 }
    }) {
        tapTwice(title);
        EXPECT_EQ(session.editor(), "ready") << "titles have no text";
    }
}

TEST_F(PenTest, keepsToProtectionInADoubleTap)
{
    session.put(u"B2", u"=1+2");
    session.app.formulaBarVisible = false;
    session.sheet().protectedSheet = true;
    tapTwice({120, 39});
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.boxes(), std::vector<std::string>{"Locked cell"});
    session.protect(u"B2", false, true);
    tapTwice({120, 39});
    EXPECT_EQ(session.editor(), "editing |") << "the formula is hidden";
    cancelEdit();
    session.app.formulaBarVisible = true;
    session.protect(u"B2", true);
    tapTwice({120, 56});
    EXPECT_EQ(session.boxes().size(), 0U) << "with the bar nobody wanted to edit";
}

TEST_F(PenTest, letsTheTaskOfACellHaveItsDoubleTap)
{
    session.app.formulaBarVisible = false;
    addTask(u"B2:C3");
    tapTwice({120, 39});
    EXPECT_EQ(session.selected(), "B2");
    EXPECT_EQ(session.editor(), "ready");
    tapTwice({57, 39});
    EXPECT_EQ(session.editor(), "editing |");
    session.type(u"=");
    tapTwice({120, 56});
    EXPECT_EQ(session.editor(), "pointing =B3|") << "pointing goes on";
}

// --- What ends a drag

TEST_F(PenTest, doesNothingWhileItIsUp)
{
    move({120, 56});
    tick();
    up({120, 56});
    EXPECT_EQ(session.selected(), "A1");
    EXPECT_FALSE(pen().penDown);
    tap({120, 56});
    move({183, 90});
    tick();
    up({183, 90});
    EXPECT_EQ(session.selected(), "B2");
    doubleTap(120, 56);
    move({183, 90});
    up({183, 90});
    EXPECT_EQ(session.selected(), "B2") << "a double tap begins nothing";
}

TEST_F(PenTest, beginsAnewIfItsGoingUpWasLost)
{
    down({89, 24});
    move({99, 24});
    down({120, 56});
    EXPECT_EQ(pen().dragMode, DragSelect);
    up({120, 56});
    EXPECT_EQ(pixels(0), 63);
    EXPECT_EQ(session.selected(), "B2");
}

TEST_F(PenTest, movesToWhereItGoesUp)
{
    down({57, 39});
    up({120, 56});
    EXPECT_EQ(session.selected(), "A1:B2 active A1");
    down({89, 24});
    up({99, 24});
    EXPECT_EQ(pixels(0), 73);
}

TEST_F(PenTest, endsWithWhatItWasAbout)
{
    down({89, 24});
    move({99, 24});
    workbook->setCurrentSheet(workbook->sheetAt(1));
    up({99, 24});
    EXPECT_EQ(pixels(0), 63) << "another sheet";
    EXPECT_EQ(steps(), 0);

    down({57, 39});
    workbook->setCurrentSheet(workbook->sheetAt(0));
    move({183, 90});
    EXPECT_EQ(session.selected(), "A1");
    EXPECT_FALSE(pen().penDown);

    session.type(u"=");
    down({120, 56});
    EXPECT_EQ(session.editor(), "pointing =B2|");
    session.key(KeyEscape);
    move({183, 90});
    EXPECT_EQ(session.selected(), "A1") << "what was dragged was pointed at";
    up({183, 90});
}

TEST_F(PenTest, endsWithTheDocument)
{
    down({89, 24});
    move({99, 24});
    session.app.newWorkbook();
    EXPECT_FALSE(pen().penDown);
    move({120, 24});
    up({120, 24});
    EXPECT_EQ(pixels(0), 63);
    EXPECT_EQ(steps(), 0);
    down({57, 39});
    session.app.close();
    penMove(120, 56);
    penTimer();
    penUp(120, 56);
    doubleTap(120, 56);
    penDown(120, 56);
    penMove(57, 39);
    penUp(57, 39);
    EXPECT_FALSE(pen().penDown);
}

} // namespace
} // namespace vorn
