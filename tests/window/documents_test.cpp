#include "window/windowtest.h"

#include <chrono>
#include <thread>

namespace vorn {
namespace {

using WindowDocuments = WindowTest;

TEST_F(WindowDocuments, areAskedAboutBeforeTheyClose)
{
    startWith("asked.vn", "put A1 1");
    user.type("2");
    user.keys("Return ctrl+w");
    user.turnToDialog("Vorn");
    user.keepPicture("question");
    user.keys("Escape");
    user.turnToMainWindow();
    EXPECT_TRUE(user.program().isRunning());
    // It goes on as if nothing had been asked.
    user.keys("Down");
    user.type("3");
    user.keys("Return ctrl+w");
    user.turnToDialog("Vorn");
    user.keys("alt+n");
    EXPECT_EQ(user.program().waitForEnd(), 0);
    EXPECT_EQ(user.answerOnce("show asked.vn", "1\n"), "1\n");
}

TEST_F(WindowDocuments, areSavedWhereThatIsTheAnswer)
{
    startWith("wanted.vn", "put A1 1");
    user.type("2");
    user.keys("Return ctrl+w");
    user.turnToDialog("Vorn");
    user.keys("alt+y");
    EXPECT_EQ(user.program().waitForEnd(), 0);
    EXPECT_EQ(user.answerOnce("show wanted.vn", "2\n"), "2\n");
}

TEST_F(WindowDocuments, closeWithoutAQuestionWhenNothingHasChanged)
{
    startWith("same.vn", "put A1 1");
    user.keys("ctrl+w");
    EXPECT_EQ(user.program().waitForEnd(), 0);
}

TEST_F(WindowDocuments, comeBackFromTheRecentList)
{
    user.start();
    user.type("first");
    user.keys("Return alt+f a");
    saveAs("first.vn");
    user.keys("ctrl+n");
    user.expectTitle("Vorn");
    user.keys("alt+f r");
    user.keepPicture("list");
    user.keys("1");
    user.expectTitle("first.vn");
    leave();

    // The list outlives the program.
    user.start();
    user.expectTitle("Vorn");
    user.keys("alt+f r 1");
    user.expectTitle("first.vn");
    leave();
}

TEST_F(WindowDocuments, openByTheFileDialog)
{
    user.makeDocument("there.vn", "put A1 there");
    user.start();
    user.keys("ctrl+o");
    user.turnToDialog("Open File");
    user.keepPicture("opening");
    user.type(user.folder().file("there.vn"));
    user.keys("Return");
    user.turnToMainWindow();
    user.expectTitle("there.vn");
    leave();
}

TEST_F(WindowDocuments, openInTheWindowThatRunsAlready)
{
    user.makeDocument("other.vn", "put A1 other");
    startWith("one.vn", "put A1 one");
    EXPECT_EQ(user.startSecond({"\"other.vn\""})->waitForEnd(), 0);
    user.expectTitle("other.vn");

    // What has changed there is asked about first.
    user.turnToMainWindow();
    user.type("changed");
    user.keys("Return");
    EXPECT_EQ(user.startSecond({"one.vn"})->waitForEnd(), 0);
    user.turnToDialog("Vorn");
    user.keys("Escape");
    user.turnToMainWindow();
    user.expectTitle("other.vn");
    EXPECT_EQ(savedText("other.vn", "changed\n"), "changed\n");
    leave();
}

TEST_F(WindowDocuments, openInAWindowOfTheirOwnWhenTheOtherClosesFirst)
{
    user.makeDocument("other.vn", "put A1 other");
    startWith("one.vn", "put A1 one");
    user.type("2");
    user.keys("Return ctrl+w");
    user.turnToDialog("Vorn");
    const auto second = user.startSecond({"other.vn"});
    // Longer than it would wait for a window that does not answer.
    std::this_thread::sleep_for(std::chrono::seconds(3));
    EXPECT_TRUE(second->isRunning());
    const QImage before = user.look();
    user.keys("alt+n");
    EXPECT_EQ(user.program().waitForEnd(), 0);
    user.lookAfter(before);
    EXPECT_TRUE(second->isRunning());
    user.keepPicture("window");
    // Whoever starts now finds the new one.
    EXPECT_EQ(user.startSecond({"one.vn"})->waitForEnd(), 0);
    EXPECT_TRUE(second->isRunning());
}

TEST_F(WindowDocuments, openInOneWindowForTwoStartsAtOnce)
{
    user.makeDocument("one.vn", "put A1 one");
    user.makeDocument("other.vn", "put A1 other");
    const auto one = user.startSecond({"one.vn"});
    const auto other = user.startSecond({"other.vn"});
    ASSERT_TRUE(waitUntil([&] { return !one->isRunning() || !other->isRunning(); }));
    Process& asking = one->isRunning() ? *other : *one;
    Process& window = one->isRunning() ? *one : *other;
    EXPECT_EQ(asking.waitForEnd(), 0);
    EXPECT_TRUE(window.isRunning());
}

TEST_F(WindowDocuments, areOpenedByNoWrongCall)
{
    user.start();
    EXPECT_EQ(user.startSecond({"--now", "noon"})->waitForEnd(), 2);
    EXPECT_EQ(user.startSecond({"\xff.vn"})->waitForEnd(), 2);
    EXPECT_NE(user.log().find("--now: "), std::string::npos);
    EXPECT_NE(user.log().find("vorn: FILE: "), std::string::npos);
    leave();
}

TEST_F(WindowDocuments, thatAreNotThereAreSaidToBeMissing)
{
    user.start("nowhere.vn");
    user.turnToDialog("Vorn");
    user.keepPicture("missing");
    user.keys("Return");
    user.turnToMainWindow();
    user.expectTitle("Vorn");
    leave();
}

} // namespace
} // namespace vorn
