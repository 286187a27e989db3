#include "window/windowtest.h"

namespace vorn {
namespace {

using Dialogs = WindowTest;

TEST_F(Dialogs, formatCellsByTheKeyboard)
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

TEST_F(Dialogs, findATextByTheKeyboard)
{
    startWith("find.vn", "put B5 a needle\nselect A1");
    user.keys("ctrl+f");
    user.turnToDialog("Find");
    user.keepPicture("find");
    user.type("needle");
    user.keys("Return");
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
