#include "shell/tabstrip.h"

#include "platform/headless/recordingcanvas.h"
#include "shell/commandhandlers.h"
#include "shell/cursor.h"
#include "support/rects.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// In the window of a handheld the tabs stand from 38 to 161. A tab of a name like "Sheet1" is 43
// pixels wide.
class TabStripTest : public testing::Test {
protected:
    // "Sheet1* 38-88 Sheet2 81-131": the tabs that are seen, with a star at the current one.
    static std::string seen()
    {
        std::string text;
        for (const TabLook& tab : currentTabs().seen()) {
            text += text.empty() ? "" : " ";
            text += Session::narrow(tab.text) + (tab.current ? "* " : " ") +
                    std::to_string(tab.area.left) + '-' + std::to_string(tab.area.right);
        }
        return text;
    }

    // "<Sheet2...>": the first that is seen, between the buttons that can scroll.
    static std::string shown()
    {
        const TabsLook look = currentTabsLook();
        return (look.canScrollLeft ? "<" : "") + Session::narrow(look.tabs.front().text) +
               (look.canScrollRight ? ">" : "");
    }
    void addSheets(int count)
    {
        for (int sheet = 0; sheet < count; ++sheet)
            workbook->addSheet();
    }
    static void rename(int sheet, std::u16string_view name) { workbook->renameSheet(sheet, name); }

    Session session;
    int& firstShown = session.app.chrome.firstShown;
};

TEST_F(TabStripTest, standsBesideItsButtons)
{
    const TabsLook look = currentTabsLook();
    EXPECT_EQ(look.buttons, (Rect{0, 305, 38, 320}));
    EXPECT_EQ(look.area, (Rect{38, 305, 161, 320}));
    EXPECT_EQ(look.splitter, (Rect{161, 305, 165, 320}));
    ASSERT_EQ(look.tabs.size(), 3U);
    EXPECT_EQ(look.tabs[0].area, (Rect{38, 305, 88, 317})) << "three pixels less high";
    EXPECT_EQ(look.tabs[1].area, (Rect{81, 305, 131, 317})) << "over the side of the first";
    EXPECT_TRUE(look.tabs[0].current);
    EXPECT_FALSE(look.tabs[1].current);
}

TEST_F(TabStripTest, givesEachNameItsRoom)
{
    rename(0, u"A");
    rename(1, u"");
    rename(2, u"Some name");
    EXPECT_EQ(seen(), "A* 38-58  51-65 Some name 58-126");
    session.app.clientArea = {0, 0, 100, 100};
    session.app.tabDivider = 50;
    EXPECT_EQ(seen(), "A* 38-58") << "as far as they are seen";
}

TEST_F(TabStripTest, findsTabsByTheMiddleOfTheirSides)
{
    addSheets(1);
    const struct {
        int x, tab;
    } cases[] = {
        {37,  NoTab},
        {38,  0    },
        {83,  0    },
        {84,  1    },
        {126, 1    },
        {127, 2    },
        {160, 2    },
        {161, NoTab},
    };
    for (const auto& c : cases)
        EXPECT_EQ(currentTabs().tabAt(c.x), c.tab) << c.x;
    firstShown = 2;
    EXPECT_EQ(currentTabs().tabAt(38), 2);
    EXPECT_EQ(currentTabs().tabAt(126), 3);
    EXPECT_EQ(currentTabs().tabAt(127), NoTab) << "behind the last";
}

TEST_F(TabStripTest, scrollsUntilTheLastFits)
{
    addSheets(3);
    EXPECT_EQ(shown(), "Sheet1>");
    const struct {
        int direction;
        const char* shown;
    } cases[] = {
        {-1, "Sheet1>" }, // nothing is before the first
        {1,  "<Sheet2>"},
        {1,  "<Sheet3>"},
        {1,  "<Sheet4>"},
        {1,  "<Sheet5" }, // both of the last fit
        {1,  "<Sheet5" },
        {-1, "<Sheet4>"},
    };
    for (const auto& c : cases) {
        scrollTabs(c.direction);
        EXPECT_EQ(shown(), c.shown);
    }
    session.app.resize({0, 0, 600, 320});
    EXPECT_EQ(shown(), "Sheet1") << "all of them fit";
    scrollTabs(1);
    EXPECT_EQ(shown(), "Sheet1");
}

TEST_F(TabStripTest, showsTheCurrentTab)
{
    addSheets(6);
    const struct {
        const char* behaviour;
        int first, current, after;
    } cases[] = {
        {"it is seen",                        3,  4, 3},
        {"it is seen in part",                1,  3, 2},
        {"it lies on the left",               5,  2, 2},
        {"it lies on the right",              0,  6, 5},
        {"it is the last",                    0,  8, 7},
        {"there is room behind the last one", 8,  8, 7},
        {"also for others",                   8,  7, 7},
        {"tabs are gone that were shown",     99, 8, 7},
        {"it is the first",                   -5, 0, 0},
    };
    for (const auto& c : cases) {
        firstShown = c.first;
        workbook->setCurrentSheet(workbook->sheetAt(c.current));
        showCurrentTab();
        EXPECT_EQ(firstShown, c.after) << c.behaviour;
    }
}

TEST_F(TabStripTest, livesWithLongNamesInANarrowArea)
{
    const std::u16string name(SheetNameMax, u'W');
    rename(1, name);
    EXPECT_EQ(seen(), "Sheet1* 38-88 " + Session::narrow(name) + " 81-329");
    selectTab(1);
    EXPECT_EQ(firstShown, 1) << "as much of it as there is room for";
    EXPECT_EQ(shown(), "<" + Session::narrow(name) + ">");
    EXPECT_EQ(currentTabs().tabAt(160), 1);
    scrollTabs(1);
    EXPECT_EQ(shown(), "<Sheet3");
    rename(2, std::u16string(SheetNameMax, u'M'));
    EXPECT_EQ(shown(), "<" + std::string(SheetNameMax, 'M')) << "there is nothing behind it";
    scrollTabs(1);
    EXPECT_EQ(firstShown, 2);
}

// --- Many sheets

class CountingMeasure : public FixedTextMeasure {
public:
    int textWidth(const FontLook& font, std::u16string_view text) override
    {
        ++count;
        return FixedTextMeasure::textWidth(font, text);
    }
    int count = 0;
};

TEST_F(TabStripTest, measuresOnlyWhatIsSeen)
{
    CountingMeasure measure;
    platform.textMeasure = &measure;
    addSheets(297);
    for (int sheet : {0, 150, 299}) {
        selectTab(sheet);
        measure.count = 0;
        currentTabsLook();
        EXPECT_LT(measure.count, 10) << sheet;
        measure.count = 0;
        showCurrentTab();
        EXPECT_LT(measure.count, 20) << sheet;
    }
    EXPECT_EQ(shown(), "<Sheet299");
    for (int tap = 0; tap < 400; ++tap)
        scrollTabs(-1);
    EXPECT_EQ(shown(), "Sheet1>");
    for (int tap = 0; tap < 400; ++tap)
        scrollTabs(1);
    EXPECT_EQ(shown(), "<Sheet299");
}

// --- The document

TEST_F(TabStripTest, followsTheDocument)
{
    addSheets(5);
    documentView->sheetChanged();
    EXPECT_EQ(shown(), "Sheet1>");
    selectTab(7);
    EXPECT_EQ(firstShown, 6);
    while (workbook->sheets.size() > 2)
        workbook->removeSheet(0);
    documentView->sheetChanged();
    EXPECT_EQ(shown(), "Sheet7") << "the first is current, and both fit";
    rename(0, u"A longer name");
    documentView->sheetChanged();
    EXPECT_EQ(seen(), "A longer name* 38-130 Sheet8 123-173");
    EXPECT_EQ(shown(), "A longer name>");
    scrollTabs(1);
    EXPECT_EQ(firstShown, 1);
    session.app.newWorkbook();
    EXPECT_EQ(shown(), "Sheet1>");
    EXPECT_EQ(firstShown, 0);
}

TEST_F(TabStripTest, comesBackFromFullScreen)
{
    addSheets(5);
    setFullScreen(true);
    EXPECT_EQ(currentTabsLook(), TabsLook());
    selectTab(7);
    EXPECT_EQ(firstShown, 0);
    setFullScreen(false);
    EXPECT_EQ(shown(), "<Sheet7");
}

// --- Another sheet

TEST_F(TabStripTest, showsAnotherSheet)
{
    session.app.repaintHints = 0;
    selectTab(2);
    EXPECT_EQ(workbook->currentSheet->index, 2);
    EXPECT_EQ(firstShown, 1);
    EXPECT_EQ(session.app.repaintHints, DirtyAll);
    EXPECT_FALSE(workbook->modified) << "nothing of the document changed";
}

TEST_F(TabStripTest, doesNothingForTheSheetThatIsShown)
{
    const struct {
        const char* behaviour;
        int sheet;
    } cases[] = {
        {"the current one",       0  },
        {"none behind the last",  3  },
        {"none before the first", -1 },
        {"none far away",         300},
    };
    session.type(u"=1+");
    session.app.repaintHints = 0;
    for (const auto& c : cases) {
        selectTab(c.sheet);
        EXPECT_EQ(session.editor(), "editing =1+|") << c.behaviour;
        EXPECT_EQ(workbook->currentSheet->index, 0) << c.behaviour;
        EXPECT_EQ(session.app.repaintHints, 0) << c.behaviour;
    }
}

TEST_F(TabStripTest, commitsATextBeforeAnotherSheet)
{
    session.type(u"abc");
    selectTab(1);
    session.endMessage();
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(workbook->currentSheet->index, 1);
    selectTab(0);
    EXPECT_EQ(session.input(u"A1"), "abc");
}

TEST_F(TabStripTest, staysIfTheTextCannotBeCommitted)
{
    session.type(u"=(1");
    selectTab(1);
    session.endMessage();
    EXPECT_EQ(workbook->currentSheet->index, 0);
    EXPECT_EQ(session.editor(), "editing =(1|");
    EXPECT_EQ(session.boxes().size(), 1U);
}

TEST_F(TabStripTest, goesOnPointingOnAnotherSheet)
{
    session.select(u"B2");
    session.type(u"=1+");
    selectTab(1);
    session.endMessage();
    EXPECT_EQ(session.editor(), "pointing =1+'Sheet2'!B2|");
    EXPECT_EQ(workbook->currentSheet->index, 1);
    selectTab(2);
    session.endMessage();
    EXPECT_EQ(session.editor(), "pointing =1+'Sheet3'!B2|");
    EXPECT_EQ(firstShown, 1);
    session.key(KeyEscape);
    EXPECT_EQ(workbook->currentSheet->index, 0) << "it goes back where it was";
    EXPECT_EQ(firstShown, 0) << "and the tab is seen";
}

// --- The splitter

TEST_F(TabStripTest, keepsTheSplitterWithinItsLimits)
{
    const struct {
        const char* behaviour;
        int left, divider;
    } cases[] = {
        {"anywhere between",   100,    100},
        {"at the left limit",  32,     32 },
        {"not further left",   31,     32 },
        {"however far",        -30000, 32 },
        {"at the right limit", 193,    193},
        {"not further right",  194,    193},
        {"however far",        30000,  193},
    };
    for (const auto& c : cases) {
        session.app.tabDivider = 161;
        session.app.tabDividerMoved = false;
        moveSplitter(c.left);
        EXPECT_EQ(session.app.tabDivider, c.divider) << c.behaviour;
        EXPECT_TRUE(session.app.tabDividerMoved) << c.behaviour;
    }
    session.app.resize({0, 0, 600, 320});
    EXPECT_EQ(session.app.tabDivider, 193) << "it stays where it was put";
}

TEST_F(TabStripTest, goesWithTheWindowUntilItIsMoved)
{
    moveSplitter(161);
    EXPECT_FALSE(session.app.tabDividerMoved);
    session.app.resize({0, 0, 600, 320});
    EXPECT_EQ(session.app.tabDivider, 401);
}

TEST_F(TabStripTest, fillsTheRoomThatTheSplitterGives)
{
    selectTab(2);
    EXPECT_EQ(shown(), "<Sheet2");
    moveSplitter(173);
    EXPECT_EQ(shown(), "<Sheet2");
    moveSplitter(174);
    EXPECT_EQ(shown(), "Sheet1");
    moveSplitter(32);
    EXPECT_EQ(firstShown, 0);
    EXPECT_EQ(currentTabsLook().buttons, (Rect{0, 305, 32, 320})) << "it is not under the splitter";
    EXPECT_EQ(currentTabsLook().area, Rect());
}

// --- The look

TEST_F(TabStripTest, paintsTheCurrentTabOverTheOthers)
{
    selectTab(1);
    moveSplitter(193);
    RecordingCanvas canvas;
    paintTabs(canvas, currentTabsLook());
    EXPECT_EQ(canvas.operations,
              (std::vector<std::string>{
                  "rectangle 0,305-19,320 a4a4a0 w1 in ecece8",
                  "polygon 10,309 7,312 10,315 a0a0a0 w1 in a0a0a0",
                  "rectangle 19,305-38,320 a4a4a0 w1 in ecece8",
                  "polygon 27,309 30,312 27,315 a0a0a0 w1 in a0a0a0",
                  "clip 38,305-193,320",
                  "fill 38,305-193,320 ddddd8",
                  "fill 38,305-193,306 a4a4a0",
                  "polygon 124,305 131,316 166,316 173,305 a4a4a0 w1 in ecece8",
                  "text 127,305-171,317 \"Sheet3\" Tahoma 12 202020 center middle",
                  "polygon 38,305 45,316 80,316 87,305 a4a4a0 w1 in ecece8",
                  "text 41,305-85,317 \"Sheet1\" Tahoma 12 202020 center middle",
                  "polygon 81,305 88,316 123,316 130,305 a4a4a0 w1 in ffffff",
                  "fill 82,305-130,306 ffffff",
                  "text 84,305-128,317 \"Sheet2\" Tahoma 12 bold 202020 center middle",
                  "pop",
                  "fill 193,305-197,320 ffffff",
                  "fill 193,305-194,320 a4a4a0",
                  "fill 196,305-197,320 a4a4a0",
              }));
}

TEST_F(TabStripTest, showsWhichButtonsCanScroll)
{
    addSheets(2);
    scrollTabs(1);
    TabsLook look = currentTabsLook();
    look.pressed = 2;
    RecordingCanvas canvas;
    paintTabs(canvas, look);
    EXPECT_EQ(canvas.count("polygon 10,309 7,312 10,315 202020 w1 in 202020"), 1);
    EXPECT_EQ(canvas.count("rectangle 19,305-38,320 a4a4a0 w1 in c4d2e6"), 1);
    EXPECT_EQ(canvas.count("polygon 28,310 31,313 28,316 202020 w1 in 202020"), 1);
}

TEST_F(TabStripTest, isPaintedAgainOnlyWhereItChanged)
{
    const TabsLook before = currentTabsLook();
    TabsLook pressed = before;
    pressed.pressed = 2;
    TabsLook moved = before;
    moved.area.right += 10;
    moved.splitter = moved.splitter.moved(10, 0);
    selectTab(1);
    const TabsLook other = currentTabsLook();
    const struct {
        const char* behaviour;
        const TabsLook& now;
        int buttons, strips, splitters;
    } cases[] = {
        {"nothing",          before,  0, 0, 0},
        {"a button is held", pressed, 2, 0, 0},
        {"another sheet",    other,   0, 1, 0},
        {"the splitter",     moved,   2, 1, 1},
    };
    for (const auto& c : cases) {
        RecordingCanvas canvas;
        paintTabsChange(canvas, c.now, before);
        EXPECT_EQ(canvas.count("rectangle"), c.buttons) << c.behaviour;
        EXPECT_EQ(canvas.count("clip"), c.strips) << c.behaviour;
        EXPECT_EQ(canvas.count("fill 161,305-165,320") + canvas.count("fill 171,305-175,320"),
                  c.splitters)
            << c.behaviour;
        EXPECT_TRUE(canvas.isBalanced()) << c.behaviour;
    }
}

} // namespace
} // namespace vorn
