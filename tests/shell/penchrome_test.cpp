// The pen on what stands around the grid.
#include "shell/pen.h"

#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/pointmode.h"
#include "support/penhand.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class PenOnChromeTest : public PenHand {
protected:
    // All tabs are to be seen.
    PenOnChromeTest()
    {
        session.app.resize({0, 0, 400, 320});
        session.endMessage();
    }
    static Point middle(const Rect& area)
    {
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    }
    static Point tab(std::size_t index) { return middle(currentChrome().tabs.tabs.at(index).area); }
    static Point button(std::size_t index)
    {
        return middle(currentChrome().formulaBar.buttons.at(index).area);
    }
    // The last pixels of a scroll bar are its button.
    static Point lineDown()
    {
        const Rect bar = currentChrome().vertical.area;
        return {bar.left + 5, bar.bottom - 5};
    }
    int shownSheet() const { return sheet().index; }
};

TEST_F(PenOnChromeTest, showsSheetsByTheirTabs)
{
    ASSERT_EQ(placeAt(tab(1).x, tab(1).y).kind, PlaceKind::Chrome);
    tap(tab(1));
    EXPECT_EQ(shownSheet(), 1);
    EXPECT_FALSE(pen().penDown);
    tapTwice(tab(0));
    EXPECT_EQ(shownSheet(), 0);
    session.app.formulaBarVisible = false;
    session.endMessage();
    addTask(u"A1:IV16384");
    tapTwice(tab(1));
    EXPECT_EQ(shownSheet(), 1);
    EXPECT_EQ(session.editor(), "ready") << "a double tap there is for no cell";
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(PenOnChromeTest, pointsOnTheSheetOfATab)
{
    session.type(u"=1+");
    tap(tab(2));
    EXPECT_EQ(session.editor(), "pointing =1+'Sheet3'!A1|");
    drag({57, 39}, {120, 56});
    EXPECT_EQ(session.editor(), "pointing =1+'Sheet3'!A1:B2|");
    tap(tab(0));
    tap({120, 56});
    EXPECT_EQ(session.editor(), "pointing =1+B2|");
}

TEST_F(PenOnChromeTest, holdsTheSplitter)
{
    const Point at = middle(currentChrome().tabs.splitter);
    const int divider = session.app.tabDivider;
    EXPECT_EQ(pointerShapeAt(at.x, at.y), PointerShape::Splitter);
    down(at);
    EXPECT_EQ(pen().dragMode, DragSplitter);
    EXPECT_EQ(pointerShapeAt(5, 5), PointerShape::Splitter);
    move({at.x - 20, at.y - 200});
    EXPECT_EQ(session.app.tabDivider, divider - 20);
    up({at.x - 30, at.y});
    EXPECT_EQ(session.app.tabDivider, divider - 30);
    EXPECT_EQ(session.app.chrome.held, ChromePart::None);
    move({at.x, at.y});
    EXPECT_EQ(session.app.tabDivider, divider - 30);
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(PenOnChromeTest, repeatsAButtonWhileItIsHeld)
{
    down(lineDown());
    EXPECT_EQ(sheet().topRow, 1);
    tick();
    EXPECT_EQ(sheet().topRow, 2);
    tick();
    EXPECT_EQ(sheet().topRow, 3);
    up(lineDown());
    tick();
    EXPECT_EQ(sheet().topRow, 3);
    doubleTap(lineDown().x, lineDown().y);
    EXPECT_EQ(sheet().topRow, 4);
    EXPECT_EQ(session.app.chrome.held, ChromePart::None);
}

TEST_F(PenOnChromeTest, pressesTheButtonsOfTheFormulaBar)
{
    session.type(u"12");
    tap(button(1));
    EXPECT_EQ(session.editor(), "ready");
    EXPECT_EQ(session.input(u"A1"), "12");
    session.type(u"13");
    tap(button(0));
    EXPECT_EQ(session.input(u"A1"), "12") << "it cancels";
    session.type(u"14");
    drag(button(1), {120, 56});
    EXPECT_EQ(session.editor(), "editing 14|") << "the pen left it";
    EXPECT_EQ(session.selected(), "A1");
}

TEST_F(PenOnChromeTest, holdsNothingWhereTheTextCannotBeCommitted)
{
    for (const Point at : {tab(1), lineDown()}) {
        session.type(u"=1+)");
        down(at);
        EXPECT_EQ(session.boxes().size(), 1U);
        EXPECT_FALSE(pen().penDown);
        tick();
        up(at);
        EXPECT_EQ(session.boxes().size(), 0U);
        EXPECT_EQ(session.editor(), "editing =1+)|");
        EXPECT_EQ(shownSheet(), 0);
        EXPECT_EQ(sheet().topRow, 0);
        cancelEdit();
    }
}

TEST_F(PenOnChromeTest, letsGoOfWhatWasLost)
{
    down(lineDown());
    penLost();
    EXPECT_EQ(session.app.chrome.held, ChromePart::None);
    tick();
    up(lineDown());
    EXPECT_EQ(sheet().topRow, 1);
    down(lineDown());
    session.app.newWorkbook();
    EXPECT_EQ(session.app.chrome.held, ChromePart::None);
    tick();
    EXPECT_EQ(sheet().topRow, 0);
}
} // namespace
} // namespace vorn
