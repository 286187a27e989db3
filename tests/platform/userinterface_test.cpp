#include "platform/headless/userinterface.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SilentUserInterface, recordsTheBoxesAndTheirAnswers)
{
    SilentUserInterface user;
    user.messageBox(u"Vorn", u"Save changes?", BoxButtons::YesNoCancel);
    ASSERT_EQ(user.boxes.size(), 1u);
    EXPECT_EQ(user.boxes[0].caption, u"Vorn");
    EXPECT_EQ(user.boxes[0].text, u"Save changes?");
    EXPECT_EQ(user.boxes[0].buttons, BoxButtons::YesNoCancel);
    EXPECT_EQ(user.boxes[0].answer, BoxAnswer::Cancel);
}

TEST(SilentUserInterface, cancelsOrDeniesAQuestionNobodyAnswers)
{
    SilentUserInterface user;
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::Ok), BoxAnswer::Ok);
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::YesNo), BoxAnswer::No);
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST(SilentUserInterface, answersQuestionsFromTheQueueInTheirOrder)
{
    SilentUserInterface user;
    user.answers = {BoxAnswer::Yes, BoxAnswer::No};
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::Ok), BoxAnswer::Ok) << "that is no question";
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::YesNo), BoxAnswer::Yes);
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::YesNoCancel), BoxAnswer::No);
    EXPECT_EQ(user.messageBox(u"", u"", BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

TEST(SilentUserInterface, keepsTitleAndWaitCursor)
{
    SilentUserInterface user;
    user.setTitle(u"a.csv");
    user.showWaitCursor(true);
    EXPECT_EQ(user.title, u"a.csv");
    EXPECT_EQ(user.waitDepth, 1);
    user.showWaitCursor(false);
    EXPECT_EQ(user.waitDepth, 0);
}

} // namespace
} // namespace vorn
