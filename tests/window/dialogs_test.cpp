#include "window/windowtest.h"

namespace vorn {
namespace {

using WindowDialogs = WindowTest;

TEST_F(WindowDialogs, formatCellsByTheKeyboard)
{
    startWith("format.vn", "put A1 0.5");
    user.keys("ctrl+1");
    user.turnToDialog("Format Cells");
    user.keepPicture("format");
    user.keys("Tab End Up");
    user.keepPicture("percent");
    user.keys("Return");
    user.turnToMainWindow();
    EXPECT_EQ(savedText("format.vn", "50.00%\n"), "50.00%\n");
    leave();
}

TEST_F(WindowDialogs, turnTheirPagesByTheKeyboard)
{
    startWith("pages.vn", "put A1 centred");
    user.keys("ctrl+1");
    user.turnToDialog("Format Cells");
    user.keys("ctrl+Tab");
    user.look();
    user.keepPicture("second");
    user.keys("Down Down Return");
    user.turnToMainWindow();
    const auto isCentred = [](const std::string& style) {
        return style.find("halign=2") != std::string::npos;
    };
    EXPECT_PRED1(isCentred, savedAnswer("pages.vn", "style A1", isCentred));
    leave();
}

TEST_F(WindowDialogs, findATextByTheKeyboard)
{
    startWith("find.vn", "put B5 a needle\nselect A1");
    user.keys("ctrl+f");
    user.turnToDialog("Find");
    user.keepPicture("find");
    user.type("needle");
    const QImage before = user.look();
    user.keys("Return");
    user.lookAfter(before);
    user.turnToDialog("Found");
    user.keepPicture("found");
    user.keys("Escape");
    user.turnToMainWindow();
    user.type("found");
    user.keys("Return");
    EXPECT_EQ(savedText("find.vn --range B5", "found\n"), "found\n");
    leave();
}

} // namespace
} // namespace vorn
