#include "window/windowtest.h"

namespace vorn {
namespace {

using WindowView = WindowTest;

TEST_F(WindowView, isThatOfAHandheldAtTheStart)
{
    user.start();
    EXPECT_EQ(user.mainWindow().size(), QSize(240, 320));
    leave();
}

TEST_F(WindowView, followsTheEdgeOfAColumn)
{
    startWith("narrow.vn", "put A1 1");
    constexpr int Pixels = 30;
    const QPoint edge(firstCell.right(), firstCell.top() - 6);
    user.drag(edge, edge - QPoint(Pixels, 0));
    user.look();
    user.keepPicture("narrower");
    EXPECT_EQ(user.findFirstCell().width(), firstCell.width() - Pixels / 2)
        << "of A and B the mean";
    user.keys("ctrl+z");
    EXPECT_EQ(user.findFirstCell().width(), firstCell.width());
    leave();
}

TEST_F(WindowView, fitsAColumnWhoseEdgeIsTappedTwice)
{
    startWith("fitted.vn", "put A1 1");
    user.doubleTap({firstCell.right(), firstCell.top() - 6});
    user.look();
    EXPECT_LT(user.findFirstCell().width(), firstCell.width()) << "no more than a digit has to fit";
    leave();
}

TEST_F(WindowView, changesToTheSheetOfATab)
{
    startWith("tabs.vn", "put A1 1");
    const QRect window = user.mainWindow();
    constexpr int OnTheSecondTab = 100;
    const QImage before = user.look();
    user.tap({window.left() + OnTheSecondTab, window.bottom() - 6});
    user.lookAfter(before);
    user.type("2");
    user.keys("Return");
    user.keepPicture("second");
    EXPECT_EQ(savedText("tabs.vn --sheet Sheet2", "2\n"), "2\n");
    EXPECT_EQ(savedText("tabs.vn --sheet Sheet1", "1\n"), "1\n");
    leave();
}

TEST_F(WindowView, freezesTitlesAndZooms)
{
    startWith("frozen.vn", "put A1 1\nput A2 2\nput B3 3");
    user.tap(cell(1, 2));
    user.keys("alt+o");
    user.keepPicture("menu");
    user.keys("t");
    user.wheelDown(cell(1, 4), 2);
    user.keys("alt+o z 8");
    user.keepPicture("frozen");
    const std::string zoomed = "zoom=80 left=B top=";
    const std::string view = savedAnswer("frozen.vn", "view", [&](const std::string& answer) {
        return answer.starts_with(zoomed) &&
               answer.find(" frozencols=A:A frozenrows=1:2 ") != std::string::npos;
    });
    ASSERT_EQ(view.substr(0, zoomed.size()), zoomed) << view;
    EXPECT_NE(view.find(" frozencols=A:A frozenrows=1:2 "), std::string::npos) << view;
    EXPECT_GT(std::atoi(view.c_str() + zoomed.size()), 3) << "the wheel has scrolled";
    leave();
}

TEST_F(WindowView, fillsTheScreenAndComesBack)
{
    startWith("full.vn", "put A1 1");
    const QImage before = user.look();
    user.keys("F11");
    user.lookAfter(before);
    user.keepPicture("full");
    const QRect alone = user.findFirstCell();
    EXPECT_EQ(alone.left(), user.mainWindow().left()) << "no titles";
    EXPECT_LT(alone.top(), firstCell.top()) << "no menu";
    EXPECT_LT(alone.width(), firstCell.width()) << "at 90 percent";
    user.keys("F11");
    EXPECT_EQ(user.findFirstCell(), firstCell);
    EXPECT_EQ(difference(before, user.look()), QRect());
    leave();
}

// What was painted step by step, each time as little as would do, is what a fresh look at the
// document shows.
TEST_F(WindowView, isTheSameStepByStepAndAtOnce)
{
    startWith("steps.vn", "put A1 1\nput B2 a text that is longer than its cell\nput A4 =A1/3");
    user.drag(cell(1, 4), cell(2, 6));
    user.wheelDown(cell(1, 4), 1);
    user.keys("Right Right Right Down Down");
    user.type("here");
    user.keys("Return ctrl+Home Down");
    user.type("there");
    user.keys("Return shift+Right");
    EXPECT_EQ(savedText("steps.vn --range A2", "there\n"), "there\n");
    user.keepPicture("steps");
    const QImage steps = user.look().copy(user.mainWindow());
    const QRect grid = QRect(firstCell.topLeft() - user.mainWindow().topLeft(),
                             QPoint(steps.width() - 1, steps.height() - 1));
    leave();

    user.start("steps.vn");
    user.expectTitle("steps.vn");
    const QImage atOnce = user.look().copy(user.mainWindow());
    EXPECT_EQ(difference(steps.copy(grid), atOnce.copy(grid)), QRect());
    leave();
}

class LargeWindowView : public WindowTest {
protected:
    LargeWindowView() : WindowTest({1280, 800}) {}
};

TEST_F(LargeWindowView, showsMoreOfTheSheet)
{
    startWith("large.vn", "put A1 1");
    user.keepPicture("small");
    user.resize({1280, 800});
    user.keepPicture("large");
    user.tap(cell(10, 24));
    user.type("far");
    user.keys("Return");
    EXPECT_EQ(savedText("large.vn --range K25", "far\n"), "far\n");
    leave();
}

} // namespace
} // namespace vorn
