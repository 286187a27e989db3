#include "shell/chrome.h"

#include "platform/headless/recordingcanvas.h"
#include "resources/icons.h"
#include "shell/commandhandlers.h"
#include "shell/cursor.h"
#include "support/rects.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// Places in the window of a handheld.
constexpr Point Cancel = {9, 8};
constexpr Point Commit = {26, 8};
constexpr Point LeftTabs = {9, 312};
constexpr Point RightTabs = {28, 312};
constexpr Point Splitter = {162, 312};
constexpr Point ColumnOn = {217, 312};
constexpr Point RowBack = {232, 24};
constexpr Point RowOn = {232, 297};

class ChromeTest : public testing::Test {
protected:
    void press(Point at)
    {
        chromePress(at.x, at.y);
        session.endMessage();
    }
    void drag(Point at)
    {
        chromeDrag(at.x, at.y);
        session.endMessage();
    }
    void release(Point at)
    {
        chromeRelease(at.x, at.y);
        session.endMessage();
    }
    void tap(Point at)
    {
        press(at);
        release(at);
    }
    std::string view() const
    {
        return std::to_string(session.sheet().leftColumn) + ' ' +
               std::to_string(session.sheet().topRow);
    }
    ChromePart held() const { return session.app.chrome.held; }
    static Point middle(const Rect& area)
    {
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    }

    Session session;
};

// --- Where everything stands

TEST_F(ChromeTest, standsAroundTheGrid)
{
    const Chrome chrome = currentChrome();
    EXPECT_EQ(chrome.formulaBar.strip, (Rect{0, 0, 240, 17}));
    EXPECT_EQ(chrome.tabs.area, (Rect{38, 305, 161, 320}));
    EXPECT_EQ(chrome.horizontal.area, (Rect{165, 305, 225, 320}));
    EXPECT_EQ(chrome.horizontal.thumb, (Rect{180, 305, 192, 320}));
    EXPECT_EQ(chrome.vertical.area, (Rect{225, 17, 240, 305}));
    EXPECT_EQ(chrome.vertical.thumb.top, 32);
    EXPECT_EQ(chrome.corner, (Rect{225, 305, 240, 320}));
}

TEST_F(ChromeTest, hasTheButtonsOfTheFormulaBar)
{
    const struct {
        Rect area;
        int icon;
        bool idle, editing; // is it enabled?
    } cases[] = {
        {{0, 0, 18, 17},    IconCancel,     false, true},
        {{17, 0, 35, 17},   IconCommit,     false, true},
        {{34, 0, 52, 17},   IconFunction,   true,  true},
        {{225, 0, 240, 17}, IconQuickEntry, true,  true},
    };
    const FormulaBarLook idle = currentChrome().formulaBar;
    session.type(u"1");
    const FormulaBarLook editing = currentChrome().formulaBar;
    for (std::size_t button = 0; button < std::size(cases); ++button) {
        EXPECT_EQ(idle.buttons[button].area, cases[button].area);
        EXPECT_EQ(idle.buttons[button].icon, cases[button].icon);
        EXPECT_EQ(idle.buttons[button].enabled, cases[button].idle);
        EXPECT_EQ(editing.buttons[button].enabled, cases[button].editing);
        EXPECT_FALSE(idle.buttons[button].pressed);
    }
}

TEST_F(ChromeTest, findsItsParts)
{
    const struct {
        const char* behaviour;
        int x, y;
        ChromePart part;
    } cases[] = {
        {"the first button of the bar",  0,   0,   ChromePart::BarButton    },
        {"the last on the left",         51,  16,  ChromePart::BarButton    },
        {"not the editor",               52,  8,   ChromePart::None         },
        {"up to the last button",        224, 8,   ChromePart::None         },
        {"which is the last",            225, 8,   ChromePart::BarButton    },
        {"not the corner of the titles", 5,   20,  ChromePart::None         },
        {"nor a cell",                   100, 100, ChromePart::None         },
        {"nor the last pixel of it",     224, 304, ChromePart::None         },
        {"the vertical bar",             225, 17,  ChromePart::VerticalBar  },
        {"to its end",                   239, 304, ChromePart::VerticalBar  },
        {"the buttons of the tabs",      0,   305, ChromePart::TabButtons   },
        {"both",                         37,  319, ChromePart::TabButtons   },
        {"the tabs",                     38,  305, ChromePart::Tabs         },
        {"to the end",                   160, 319, ChromePart::Tabs         },
        {"the splitter",                 161, 305, ChromePart::Splitter     },
        {"to its end",                   164, 319, ChromePart::Splitter     },
        {"the horizontal bar",           165, 305, ChromePart::HorizontalBar},
        {"to its end",                   224, 319, ChromePart::HorizontalBar},
        {"not the corner of the bars",   225, 305, ChromePart::None         },
        {"nor anything outside",         240, 100, ChromePart::None         },
        {"on any side",                  -1,  310, ChromePart::None         },
    };
    for (const auto& c : cases)
        EXPECT_EQ(chromePartAt(c.x, c.y), c.part) << c.behaviour;
    session.app.formulaBarVisible = false;
    EXPECT_EQ(chromePartAt(9, 8), ChromePart::None) << "there is no bar";
    EXPECT_EQ(chromePartAt(232, 0), ChromePart::VerticalBar);
}

TEST_F(ChromeTest, isGoneInFullScreen)
{
    session.app.formulaBarVisible = false;
    setFullScreen(true);
    const Chrome chrome = currentChrome();
    EXPECT_EQ(chrome.formulaBar, FormulaBarLook());
    EXPECT_EQ(chrome.tabs.tabs.size(), 0U);
    for (const Rect& area :
         {chrome.tabs.buttons, chrome.tabs.area, chrome.tabs.splitter, chrome.horizontal.area,
          chrome.horizontal.thumb, chrome.vertical.area, chrome.vertical.thumb, chrome.corner})
        EXPECT_EQ(area, Rect());
    for (int y = 0; y < 320; y += 4) {
        for (int x = 0; x < 240; x += 4)
            EXPECT_EQ(chromePartAt(x, y), ChromePart::None);
    }
    RecordingCanvas canvas;
    paintChrome(canvas, chrome, session.app.clientArea);
    EXPECT_EQ(canvas.operations.size(), 2U) << "the clip alone";
}

TEST_F(ChromeTest, survivesAnyWindow)
{
    const auto isWithin = [](const Rect& part, const Rect& area) {
        return part == Rect() || (!part.isEmpty() && part.intersected(area) == part);
    };
    for (int width : {0, 1, 5, 16, 20, 33, 50, 80, 90, 2000}) {
        for (int height : {0, 1, 5, 16, 20, 33, 50, 2000}) {
            const Rect client = {0, 0, width, height};
            session.app.resize(client);
            const Chrome chrome = currentChrome();
            for (const Rect& part :
                 {chrome.formulaBar.strip, chrome.formulaBar.buttons[0].area,
                  chrome.formulaBar.buttons[2].area, chrome.formulaBar.buttons[3].area,
                  chrome.tabs.buttons, chrome.tabs.area, chrome.tabs.splitter,
                  chrome.horizontal.area, chrome.horizontal.thumb, chrome.vertical.area,
                  chrome.vertical.thumb, chrome.corner})
                EXPECT_TRUE(isWithin(part, client)) << width << " by " << height;
            RecordingCanvas canvas;
            paintChrome(canvas, chrome, client);
            EXPECT_TRUE(canvas.isBalanced());
            for (int y = -1; y <= std::min(height, 60); y += 3) {
                for (int x = -1; x <= std::min(width, 60); x += 3) {
                    press({x, y});
                    drag({x + 2, y});
                    drag({x + 2, y});
                    session.app.chrome.held = ChromePart::None;
                }
            }
        }
    }
}

// --- The buttons of the formula bar

TEST_F(ChromeTest, runsAButtonWhenItIsLetGoOnIt)
{
    session.type(u"7");
    press(Commit);
    EXPECT_EQ(session.editor(), "editing 7|") << "not yet";
    EXPECT_TRUE(currentChrome().formulaBar.buttons[1].pressed);
    drag({26, 40});
    EXPECT_FALSE(currentChrome().formulaBar.buttons[1].pressed);
    drag({27, 9});
    EXPECT_TRUE(currentChrome().formulaBar.buttons[1].pressed);
    release({27, 9});
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "7");
    EXPECT_FALSE(currentChrome().formulaBar.buttons[1].pressed);
}

TEST_F(ChromeTest, doesNothingWhenAButtonIsLetGoElsewhere)
{
    const struct {
        const char* behaviour;
        Point place;
    } cases[] = {
        {"over the grid",         {100, 100}},
        {"on another button",     Cancel    },
        {"outside of the window", {26, -5}  },
    };
    session.type(u"7");
    for (const auto& c : cases) {
        press(Commit);
        drag(c.place);
        release(c.place);
        EXPECT_EQ(session.editor(), "editing 7|") << c.behaviour;
        EXPECT_EQ(held(), ChromePart::None) << c.behaviour;
    }
    tap(Cancel);
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "");
}

TEST_F(ChromeTest, holdsNoDisabledButton)
{
    press(Commit);
    EXPECT_EQ(held(), ChromePart::None);
    EXPECT_FALSE(currentChrome().formulaBar.buttons[1].pressed);
    release(Commit);
    EXPECT_EQ(session.editor(), "ready");
}

TEST_F(ChromeTest, takesTheUpperOfTwoButtonsInANarrowStrip)
{
    session.app.clientArea = {0, 0, 20, 100};
    session.type(u"7");
    tap({10, 8});
    EXPECT_EQ(session.editor(), "editing 7|") << "the last one lies on top, and has no list";
    tap({2, 8});
    EXPECT_EQ(session.editor(), "ready");
}

// --- The tabs

TEST_F(ChromeTest, showsTheSheetWhoseTabIsTapped)
{
    tap({100, 312});
    EXPECT_EQ(workbook->currentSheet->index, 1);
    EXPECT_EQ(held(), ChromePart::None);
    tap({100, 312});
    EXPECT_EQ(workbook->currentSheet->index, 1);
    tap({45, 312});
    EXPECT_EQ(workbook->currentSheet->index, 0);
    tap({140, 312});
    EXPECT_EQ(workbook->currentSheet->index, 2) << "a part of it is seen";
    EXPECT_EQ(session.app.chrome.firstShown, 1) << "and then all";
    tap({130, 312});
    EXPECT_EQ(workbook->currentSheet->index, 2) << "nothing is behind the last";
}

TEST_F(ChromeTest, scrollsTheTabsWhileAButtonIsHeld)
{
    for (int sheet = 0; sheet < 5; ++sheet)
        workbook->addSheet();
    const int& first = session.app.chrome.firstShown;
    press(RightTabs);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(currentChrome().tabs.pressed, 2);
    drag(RightTabs);
    EXPECT_EQ(first, 2) << "it repeats while the pen rests";
    drag({29, 312});
    EXPECT_EQ(first, 2) << "and not with every move";
    drag({29, 312});
    EXPECT_EQ(first, 3);
    drag(LeftTabs);
    drag(LeftTabs);
    EXPECT_EQ(first, 3) << "another button does nothing";
    EXPECT_EQ(currentChrome().tabs.pressed, 0);
    drag(RightTabs);
    drag(RightTabs);
    EXPECT_EQ(first, 4);
    release(RightTabs);
    drag(RightTabs);
    EXPECT_EQ(first, 4);
    for (int tap = 0; tap < 10; ++tap)
        this->tap(RightTabs);
    EXPECT_EQ(first, 6);
    for (int tap = 0; tap < 10; ++tap)
        this->tap(LeftTabs);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(workbook->currentSheet->index, 0) << "the sheet stays";
}

TEST_F(ChromeTest, leavesTheEditorOpenForWhatIsNotTheGrids)
{
    session.type(u"abc");
    tap(RightTabs);
    tap(Splitter);
    EXPECT_EQ(session.editor(), "editing abc|");
}

// --- The splitter

TEST_F(ChromeTest, dragsTheSplitterByWhereItWasTaken)
{
    press({163, 312});
    drag({165, 312});
    EXPECT_EQ(currentChrome().tabs.splitter, (Rect{163, 305, 167, 320}));
    EXPECT_EQ(currentChrome().tabs.area.right, 163);
    EXPECT_EQ(currentChrome().horizontal.area.left, 167);
    drag({-500, -500});
    EXPECT_EQ(currentChrome().tabs.splitter.left, 32);
    drag({500, 0});
    EXPECT_EQ(currentChrome().tabs.splitter.left, 193);
    EXPECT_EQ(currentChrome().horizontal.area, (Rect{197, 305, 225, 320}));
    release({500, 0});
    drag({100, 312});
    EXPECT_EQ(session.app.tabDivider, 193);
    EXPECT_TRUE(session.app.tabDividerMoved);
}

TEST_F(ChromeTest, leavesTheSplitterWhereItIsOnlyTapped)
{
    press(Splitter);
    drag({162, 300});
    release({162, 300});
    EXPECT_EQ(session.app.tabDivider, 161);
    EXPECT_FALSE(session.app.tabDividerMoved);
}

// --- The scroll bars

TEST_F(ChromeTest, scrollsByItsButtons)
{
    tap(RowOn);
    EXPECT_EQ(view(), "0 1");
    tap(ColumnOn);
    EXPECT_EQ(view(), "1 1");
    tap(RowBack);
    EXPECT_EQ(view(), "1 0");
    tap(RowBack);
    EXPECT_EQ(view(), "1 0");
}

TEST_F(ChromeTest, scrollsOnWhileAButtonIsHeld)
{
    press(RowOn);
    EXPECT_EQ(currentChrome().vertical.pressed, ScrollLineOn);
    drag(RowOn);
    drag(RowOn);
    EXPECT_EQ(view(), "0 3");
    drag({100, 100});
    drag({100, 100});
    EXPECT_EQ(view(), "0 3") << "not beside it";
    EXPECT_EQ(currentChrome().vertical.pressed, 0);
    drag(RowOn);
    drag(RowOn);
    EXPECT_EQ(view(), "0 4");
    release(RowOn);
    drag(RowOn);
    EXPECT_EQ(view(), "0 4");
}

TEST_F(ChromeTest, turnsPagesUpToThePen)
{
    const Rect thumb = currentChrome().vertical.thumb;
    const Point at = {232, thumb.bottom + 40};
    press(at);
    EXPECT_EQ(view(), "0 15");
    for (int tick = 0; tick < 20; ++tick)
        drag(at);
    EXPECT_TRUE(currentChrome().vertical.thumb.contains(at.x, at.y))
        << "when the thumb is under the pen it stops";
    const std::string stopped = view();
    drag(at);
    release(at);
    EXPECT_EQ(view(), stopped);
    press({232, 33});
    for (int tick = 0; tick < 20; ++tick)
        drag({232, 33});
    EXPECT_EQ(view(), "0 0");
}

TEST_F(ChromeTest, dragsTheViewWithItsThumbs)
{
    const Point at = middle(currentChrome().vertical.thumb);
    press(at);
    EXPECT_EQ(currentChrome().vertical.pressed, ScrollThumb);
    EXPECT_EQ(view(), "0 0");
    drag(at);
    EXPECT_EQ(view(), "0 0") << "it rests";
    drag({at.x, 10000});
    EXPECT_EQ(view(), "0 100") << "the last row of the range";
    EXPECT_EQ(currentChrome().vertical.thumb.bottom, 290);
    EXPECT_EQ(currentChrome().vertical.pressed, ScrollThumb) << "however far the pen is";
    release({at.x, 10000});
    EXPECT_EQ(view(), "0 100");
    EXPECT_EQ(currentChrome().vertical.thumb.bottom, 290);

    const Point across = middle(currentChrome().horizontal.thumb);
    press(across);
    drag({10000, across.y});
    EXPECT_EQ(view(), "255 100");
    drag({-10000, across.y});
    EXPECT_EQ(view(), "0 100");
    release({-10000, across.y});
    EXPECT_EQ(held(), ChromePart::None);
}

TEST_F(ChromeTest, keepsItsRangeWhileTheThumbIsDragged)
{
    scrollViewTo(-1, 2000);
    Point at = middle(currentChrome().vertical.thumb);
    press(at);
    at.y -= 100;
    drag(at);
    const std::string halfway = view();
    EXPECT_EQ(session.app.chrome.verticalRange, 2100);
    for (int tick = 0; tick < 5; ++tick)
        drag(at);
    EXPECT_EQ(view(), halfway) << "it does not run away from the pen";
    drag({at.x, -10000});
    EXPECT_EQ(view(), "0 0");
    EXPECT_EQ(session.app.chrome.verticalRange, 2100);
    release({at.x, -10000});
    EXPECT_EQ(session.app.chrome.verticalRange, 100);
}

TEST_F(ChromeTest, reachesBothEndsBetweenHiddenAndFrozenOnes)
{
    session.sheet().titleRows = true;
    session.sheet().titles.set(0, 0, 1, 2);
    for (int row : {2, 3, 95, 96, 97, 98, 99, 100})
        session.sheet().setRowHidden(row, true);
    scrollViewTo(-1, 0);
    EXPECT_EQ(view(), "0 4");
    EXPECT_EQ(currentChrome().vertical.thumb.top, 32);
    const Point at = middle(currentChrome().vertical.thumb);
    press(at);
    drag({at.x, 10000});
    EXPECT_EQ(view(), "0 94");
    EXPECT_EQ(currentChrome().vertical.thumb.bottom, 290);
    drag({at.x, -10000});
    EXPECT_EQ(view(), "0 4");
}

TEST_F(ChromeTest, reachesTheLastCell)
{
    scrollViewTo(255, 16383);
    EXPECT_EQ(currentChrome().vertical.thumb.bottom, 290);
    EXPECT_EQ(currentChrome().horizontal.thumb.right, 210);
    tap(RowOn);
    tap(ColumnOn);
    EXPECT_EQ(view(), "255 16383");
}

TEST_F(ChromeTest, beginsToPointOrCommitsWhenTheBarsAreTapped)
{
    session.select(u"B2");
    session.type(u"=1+");
    press(RowOn);
    drag(RowOn);
    release(RowOn);
    EXPECT_EQ(session.editor(), "pointing =1+B2|");
    EXPECT_EQ(view(), "0 2");
    tap({100, 312});
    EXPECT_EQ(session.editor(), "pointing =1+'Sheet2'!B2|");
    session.key(KeyEscape);
    session.type(u"abc");
    tap(RowOn);
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"B2"), "abc");
    EXPECT_EQ(view(), "0 1");
}

TEST_F(ChromeTest, holdsNothingIfTheTextCannotBeCommitted)
{
    session.type(u"=(1");
    for (Point at : {
             RowOn, middle(currentChrome().vertical.thumb), Point{100, 312}
    }) {
        press(at);
        EXPECT_EQ(session.boxes().size(), 1U);
        EXPECT_EQ(held(), ChromePart::None);
        drag({at.x, 200});
        drag({at.x, 200});
        release({at.x, 200});
        EXPECT_EQ(session.boxes().size(), 0U) << "it is told once";
    }
    EXPECT_EQ(session.editor(), "editing =(1|");
    EXPECT_EQ(view(), "0 0");
    EXPECT_EQ(workbook->currentSheet->index, 0);
}

TEST_F(ChromeTest, takesASecondTapAsAnother)
{
    const struct {
        const char* behaviour;
        Point place;
        const char* view;
    } cases[] = {
        {"a button of a bar", RowOn,      "0 1"},
        {"the splitter",      Splitter,   "0 1"},
        {"a tab",             {100, 312}, "0 0"},
        {"the same tab",      {100, 312}, "0 0"},
    };
    for (const auto& c : cases) {
        chromeDoubleTap(c.place.x, c.place.y);
        EXPECT_EQ(held(), ChromePart::None) << c.behaviour;
        EXPECT_EQ(view(), c.view) << c.behaviour;
    }
    EXPECT_EQ(workbook->currentSheet->index, 1);
}

TEST_F(ChromeTest, lastsUntilTheDocumentGoes)
{
    press(RowOn);
    session.app.chrome.firstShown = 2;
    session.app.newWorkbook();
    EXPECT_EQ(held(), ChromePart::None);
    EXPECT_EQ(session.app.chrome.firstShown, 0);
    drag(RowOn);
    drag(RowOn);
    EXPECT_EQ(view(), "0 0");
    press(RowOn);
    session.app.close();
    chromeDrag(RowOn.x, RowOn.y);
    chromeRelease(RowOn.x, RowOn.y);
    chromePress(RowOn.x, RowOn.y);
    chromeDoubleTap(RowOn.x, RowOn.y);
    scrollBy(1, 1);
    scrollViewTo(1, 1);
    selectTab(1);
    showCurrentTab();
    EXPECT_EQ(held(), ChromePart::None);
}

// --- The look

TEST_F(ChromeTest, paintsTheButtonsOfTheFormulaBar)
{
    session.type(u"7");
    press(Commit);
    RecordingCanvas canvas;
    paintChrome(canvas, currentChrome(), {0, 0, 240, 17});
    EXPECT_EQ(canvas.operations, (std::vector<std::string>{
                                     "clip 0,0-240,17",
                                     "rectangle 0,0-240,17 a4a4a0 w1 in ffffff",
                                     "rectangle 0,0-18,17 a4a4a0 w1 in ecece8",
                                     "icon 1,1-17,16 111",
                                     "rectangle 17,0-35,17 a4a4a0 w1 in c4d2e6",
                                     "icon 19,2-35,17 110",
                                     "rectangle 34,0-52,17 a4a4a0 w1 in ecece8",
                                     "icon 35,1-51,16 113",
                                     "rectangle 225,0-240,17 a4a4a0 w1 in ecece8",
                                     "icon 226,1-239,16 112",
                                     "pop",
                                 }));
    session.app.chrome.held = ChromePart::None;
    session.key(KeyEscape);
    canvas.operations.clear();
    paintChrome(canvas, currentChrome(), {0, 0, 240, 17});
    EXPECT_EQ(
        canvas.having("icon"),
        (std::vector<std::string>{"icon 1,1-17,16 111 disabled", "icon 18,1-34,16 110 disabled",
                                  "icon 35,1-51,16 113", "icon 226,1-239,16 112"}));
}

TEST_F(ChromeTest, paintsWhatLiesWithinTheClip)
{
    const struct {
        const char* behaviour;
        Rect clip;
        int icons, texts, arrows, fills;
    } cases[] = {
        {"everything",         {0, 0, 240, 320},     4, 3, 6, 1},
        {"the strip",          {0, 0, 240, 5},       4, 0, 0, 0},
        {"the tabs",           {40, 310, 60, 320},   0, 3, 2, 0},
        {"the vertical bar",   {230, 50, 231, 60},   0, 0, 2, 0},
        {"the horizontal bar", {200, 310, 201, 320}, 0, 0, 2, 0},
        {"the corner",         {230, 310, 231, 311}, 0, 0, 0, 1},
        {"the grid",           {50, 50, 100, 100},   0, 0, 0, 0},
        {"nothing",            {},                   0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        RecordingCanvas canvas;
        paintChrome(canvas, currentChrome(), c.clip);
        EXPECT_EQ(canvas.count("icon"), c.icons) << c.behaviour;
        EXPECT_EQ(canvas.count("text"), c.texts) << c.behaviour;
        EXPECT_EQ(canvas.count("polygon") - canvas.count("text"), c.arrows) << c.behaviour;
        EXPECT_EQ(canvas.count("fill 225,305-240,320 ecece8"), c.fills) << c.behaviour;
        EXPECT_TRUE(canvas.isBalanced()) << c.behaviour;
    }
}

TEST_F(ChromeTest, paintsAgainOnlyWhatChanged)
{
    const Chrome before = currentChrome();
    const auto operations = [&before] {
        RecordingCanvas canvas;
        paintChromeChanges(canvas, currentChrome(), before);
        return canvas.operations;
    };
    EXPECT_EQ(operations().size(), 0U);
    scrollViewTo(-1, 50);
    EXPECT_EQ(operations(),
              (std::vector<std::string>{"fill 225,32-240,290 ddddd8",
                                        "rectangle 225,144-240,179 a4a4a0 w1 in ecece8"}))
        << "the track of the bar that scrolled";
    scrollViewTo(-1, 0);
    EXPECT_EQ(currentChrome(), before);
    session.type(u"7");
    EXPECT_EQ(operations(), (std::vector<std::string>{
                                "rectangle 0,0-18,17 a4a4a0 w1 in ecece8", "icon 1,1-17,16 111",
                                "rectangle 17,0-35,17 a4a4a0 w1 in ecece8", "icon 18,1-34,16 110"}))
        << "the buttons that may be pressed now";
    session.key(KeyEscape);
    session.select(u"C3");
    session.put(u"B2", u"abc");
    EXPECT_EQ(operations().size(), 0U) << "what the cells hold is not seen here";
    session.app.resize({0, 0, 300, 400});
    RecordingCanvas all;
    paintChrome(all, currentChrome(), {});
    paintChrome(all, currentChrome(), session.app.clientArea);
    EXPECT_EQ(operations().size(), all.operations.size() - 4) << "everything, without the clips";
}

class CountingUser : public SilentUserInterface {
public:
    void requestRepaint() override { ++requests; }
    int requests = 0;
};

TEST_F(ChromeTest, asksToBePaintedWhenItLooksOtherwise)
{
    for (int sheet = 0; sheet < 5; ++sheet)
        workbook->addSheet();
    session.type(u"7");
    CountingUser user;
    platform.userInterface = &user;
    const struct {
        const char* behaviour;
        void (*message)(int, int);
        Point place;
        bool asks;
    } cases[] = {
        {"a button goes down",       chromePress,   Commit,     true },
        {"the pen rests on it",      chromeDrag,    Commit,     false},
        {"it leaves the button",     chromeDrag,    {100, 100}, true },
        {"it moves elsewhere",       chromeDrag,    {101, 100}, false},
        {"it comes back",            chromeDrag,    Commit,     true },
        {"it leaves it again",       chromeDrag,    {100, 100}, true },
        {"and goes up there",        chromeRelease, {100, 100}, true },
        {"nothing is held any more", chromeRelease, {100, 100}, false},
        {"the tabs scroll",          chromePress,   RightTabs,  true },
        {"the button goes up",       chromeRelease, RightTabs,  true },
        {"the splitter is taken",    chromePress,   Splitter,   true },
        {"it moves",                 chromeDrag,    {150, 310}, true },
        {"it does not move along",   chromeDrag,    {150, 315}, false},
        {"the splitter goes up",     chromeRelease, {150, 315}, true },
        {"a place where nothing is", chromePress,   {100, 100}, false},
    };
    for (const auto& c : cases) {
        user.requests = 0;
        session.app.repaintHints = 0;
        c.message(c.place.x, c.place.y);
        EXPECT_EQ(user.requests > 0, c.asks) << c.behaviour;
        EXPECT_EQ(session.app.repaintHints, 0) << "the grid stays: " << c.behaviour;
    }
}

} // namespace
} // namespace vorn
