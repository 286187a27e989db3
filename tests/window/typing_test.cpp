#include "window/windowtest.h"

namespace vorn {
namespace {

using WindowTyping = WindowTest;

TEST_F(WindowTyping, calculatesAndIsSavedByTheFileDialog)
{
    user.start();
    user.expectTitle("Vorn");
    firstCell = user.findFirstCell();
    const QImage empty = user.look();
    user.keepPicture("start");

    user.type("12");
    user.keys("Return Down");
    user.type("30");
    user.keys("Return Down");
    user.type("=A1+A2");
    user.keepPicture("editing");
    user.keys("Return ctrl+Home");
    const QRect result = firstCell.translated(0, 2 * firstCell.height());
    EXPECT_FALSE(difference(empty.copy(result), user.look().copy(result)).isEmpty());

    user.keys("ctrl+s");
    user.turnToDialog("Save File As");
    user.keepPicture("saving");
    saveAs("sums.vn");
    EXPECT_EQ(user.answerOnce("show sums.vn", "12\n30\n42\n"), "12\n30\n42\n");
    EXPECT_EQ(user.answerOnce("show sums.vn --range A3 --as input", "=A1+A2\n"), "=A1+A2\n");
    user.keepPicture("saved");
    leave();
}

TEST_F(WindowTyping, takesReferencesFromThePen)
{
    startWith("points.vn", "put A1 4\nput B1 5");
    user.tap(cell(1, 3));
    user.type("=");
    user.tap(cell(1, 0));
    user.type("*Sum(");
    user.drag(cell(0, 0), cell(1, 0));
    user.keepPicture("pointing");
    user.type(")");
    user.keys("Return");
    EXPECT_EQ(savedText("points.vn --range B4 --as input", "=B1*Sum(A1:B1)\n"), "=B1*Sum(A1:B1)\n");
    EXPECT_EQ(savedText("points.vn --range B4", "45\n"), "45\n");
    leave();
}

TEST_F(WindowTyping, isTakenBackByEscape)
{
    startWith("kept.vn", "put A1 old");
    const QImage before = user.look();
    user.keys("F2");
    user.type(" and new");
    user.keepPicture("editing");
    user.keys("Escape ctrl+Home");
    EXPECT_EQ(difference(before, user.look()), QRect());
    user.type("new");
    user.keys("Return");
    EXPECT_EQ(savedText("kept.vn", "new\n"), "new\n");
    leave();
}

TEST_F(WindowTyping, isUndoneByTheMenuAndByAKey)
{
    startWith("undone.vn", "put A1 1");
    const QImage before = user.look();
    user.type("2");
    user.keys("Return Down");
    user.type("3");
    user.keys("Return");
    EXPECT_EQ(savedText("undone.vn", "2\n3\n"), "2\n3\n");
    user.keys("alt+e");
    user.keepPicture("menu");
    user.keys("u");
    EXPECT_EQ(savedText("undone.vn", "2\n"), "2\n");
    user.keys("ctrl+z ctrl+Home");
    EXPECT_EQ(savedText("undone.vn", "1\n"), "1\n");
    EXPECT_EQ(difference(before, user.look()), QRect());
    user.keys("ctrl+y");
    EXPECT_EQ(savedText("undone.vn", "2\n"), "2\n");
    leave();
}

TEST_F(WindowTyping, goesToCellsSelectedByADrag)
{
    startWith("square.vn", "put A1 1\nput B1 2\nput C1 3\nput A2 4\nput B2 5\nput C2 6\n"
                           "put A3 7\nput B3 8\nput C3 9");
    user.drag(cell(0, 0), cell(1, 1));
    user.keepPicture("selected");
    user.keys("Delete");
    EXPECT_EQ(savedText("square.vn", "\t\t3\n\t\t6\n7\t8\t9\n"), "\t\t3\n\t\t6\n7\t8\t9\n");
    EXPECT_EQ(savedAnswer("square.vn", "selection", "Sheet1!A1:B2 active A1\n"),
              "Sheet1!A1:B2 active A1\n");
    leave();
}

} // namespace
} // namespace vorn
