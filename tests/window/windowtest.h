// The ways of a user through the real window. What a test has changed it looks up in the saved
// document, with vorn-cli, and on the screen where it can be seen only there.
#pragma once

#include "window/user.h"

#include <gtest/gtest.h>

namespace vorn {

class WindowTest : public testing::Test {
protected:
    // `screen` has to have room for the dialogs around the small window.
    explicit WindowTest(QSize screen = {640, 480})
        : user(testing::UnitTest::GetInstance()->current_test_info()->name(), screen)
    {
    }

    void TearDown() override
    {
        if (HasFailure()) {
            user.keepPicture("failed");
            ADD_FAILURE() << "It said: " << user.log();
        }
    }

    // Starts with a document that a script makes, and finds its cells.
    void startWith(const std::string& name, const std::string& script)
    {
        user.makeDocument(name, script);
        user.start(name);
        user.expectTitle(name);
        firstCell = user.findFirstCell();
    }

    // The middle of a cell, counted from 0, in a sheet of equal columns and rows that is not
    // scrolled.
    QPoint cell(int column, int row) const
    {
        return firstCell.center() + QPoint(column * firstCell.width(), row * firstCell.height());
    }

    // Gives the name to the open dialog for files.
    void saveAs(const std::string& name)
    {
        user.turnToDialog("Save File As");
        user.type(user.folder().file(name));
        user.keys("Return");
        user.turnToMainWindow();
        user.expectTitle(name);
    }

    // Saves the document, which has a name, and looks it up.
    std::string savedText(const std::string& arguments, const std::string& expected)
    {
        user.keys("ctrl+s");
        return user.answerOnce("show " + arguments, expected);
    }

    // The same by a script that opens the document.
    template <typename Expected>
    std::string savedAnswer(const std::string& name, const std::string& question,
                            const Expected& expected)
    {
        user.keys("ctrl+s");
        user.folder().write("question.txt", "open " + name + "\n" + question + "\n");
        return user.answerOnce("script question.txt", expected);
    }

    // Closes without a save, and sees that the program ends as it should.
    void leave()
    {
        user.turnToMainWindow();
        user.keys("ctrl+w");
        if (user.asksOrEnds("Vorn"))
            user.keys("alt+n");
        EXPECT_EQ(user.program().waitForEnd(), 0);
    }

    User user;
    QRect firstCell;
};

} // namespace vorn
