#include "qt/editcontrol.h"

#include "qt/windowsession.h"
#include "shell/entry.h"
#include "shell/keys.h"

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

TEST(EditControl, mirrorsTextAndCaretOfTheModel)
{
    WindowSession session;
    session.type(u"abc");
    EXPECT_EQ(session.shownLine(), "abc|");
    EXPECT_EQ(session.focus(), &session.control());
    session.press(Qt::Key_F2); // the arrows now move the caret
    const struct {
        const char* behaviour;
        int key;
        Qt::KeyboardModifiers held;
        const char* line;
    } steps[] = {
        {"Left moves the caret",       Qt::Key_Left,      Qt::NoModifier,      "ab|c" },
        {"Shift selects backwards",    Qt::Key_Left,      Qt::ShiftModifier,   "a[b]c"},
        {"from the same end",          Qt::Key_Left,      Qt::ShiftModifier,   "[ab]c"},
        {"and back",                   Qt::Key_Right,     Qt::ShiftModifier,   "a[b]c"},
        {"Backspace deletes it",       Qt::Key_Backspace, Qt::NoModifier,      "a|c"  },
        {"Undo of the line brings it", 'Z',               Qt::ControlModifier, "a[b]c"},
        {"End goes behind the text",   Qt::Key_End,       Qt::NoModifier,      "abc|" },
    };
    for (const auto& step : steps) {
        session.press(step.key, step.held);
        EXPECT_EQ(session.line(), step.line) << step.behaviour;
        EXPECT_EQ(session.shownLine(), step.line) << step.behaviour;
    }
}

TEST(EditControl, keepsTheCaretAtTheEndThatMoves)
{
    WindowSession session;
    session.type(u"abc");
    session.window.messages().send([&] { session.app.formulaBar.line.setSelection(3, 1); });
    EXPECT_EQ(session.control().cursorPosition(), 1);
    session.window.messages().send([&] { session.app.formulaBar.line.setSelection(1, 3); });
    EXPECT_EQ(session.control().cursorPosition(), 3);
}

TEST(EditControl, standsInTheStripWhereTheModelSays)
{
    WindowSession session;
    const Rect& rect = session.app.formulaBar.rect;
    EXPECT_FALSE(session.control().isHidden());
    EXPECT_EQ(session.control().geometry(),
              QRect(rect.left, rect.top, rect.width(), rect.height()));
    EXPECT_EQ(session.focus(), &session.sheet()) << "the keys are the grid's";
}

TEST(EditControl, isThereOnlyWhileEditingWithTheBarOff)
{
    WindowSession session;
    session.app.formulaBarVisible = false;
    session.app.resize(session.app.clientArea);
    session.window.messages().send([] {});
    session.settle();
    EXPECT_TRUE(session.control().isHidden());

    session.type(u"x");
    EXPECT_FALSE(session.control().isHidden());
    const Rect cell = inCellEditorRect();
    EXPECT_EQ(session.control().geometry(),
              QRect(cell.left, cell.top, cell.width(), cell.height()));

    session.press(Qt::Key_Return);
    EXPECT_TRUE(session.control().isHidden());
    EXPECT_EQ(session.input(0, 0), u"x");
    EXPECT_EQ(session.focus(), &session.sheet());
}

TEST(EditControl, isHiddenWhileTheModelPutsItOutOfSight)
{
    WindowSession session;
    session.type(u"x");
    session.app.formulaBar.rect = OutOfSight;
    session.control().follow();
    EXPECT_TRUE(session.control().isHidden());
}

TEST(EditControl, showsTheActiveCellOnTheRepaintPass)
{
    WindowSession session;
    session.window.messages().send([] { application->enterCell(u"=1+2"); });
    session.settle();
    EXPECT_EQ(session.control().text(), "=1+2");
    session.window.messages().send([] { keyDown(KeyDown, {}); });
    EXPECT_EQ(session.control().text(), "=1+2") << "not before";
    session.settle();
    EXPECT_EQ(session.control().text(), "");
}

TEST(EditControl, opensTheEditorWhenItIsTapped)
{
    WindowSession session;
    session.window.messages().send([] { application->enterCell(u"hello"); });
    session.settle();
    session.click(session.control(), {session.control().width() - 3.0, 8});
    EXPECT_TRUE(session.app.formulaBar.editing);
    EXPECT_EQ(session.focus(), &session.control());
    EXPECT_EQ(session.line(), "hello|") << "the caret stands where the tap was";
}

TEST(EditControl, tellsTheModelWhatTheMouseSelects)
{
    WindowSession session;
    session.type(u"hello");
    const QPointF end(session.control().width() - 3.0, 8);
    session.mouse(QEvent::MouseButtonPress, session.control(), end);
    session.mouse(QEvent::MouseMove, session.control(), {2, 8});
    session.mouse(QEvent::MouseButtonRelease, session.control(), {2, 8});
    EXPECT_EQ(session.line(), "[hello]");
    EXPECT_EQ(session.app.formulaBar.line.caret(), 0);
    session.type(u"x");
    EXPECT_EQ(session.line(), "x|");
    EXPECT_EQ(session.shownLine(), "x|");
}

TEST(EditControl, selectsAWordWithTwoTaps)
{
    WindowSession session;
    session.type(u"one two");
    session.mouse(QEvent::MouseButtonPress, session.control(), {6, 8});
    session.mouse(QEvent::MouseButtonRelease, session.control(), {6, 8});
    session.mouse(QEvent::MouseButtonDblClick, session.control(), {6, 8});
    session.mouse(QEvent::MouseButtonRelease, session.control(), {6, 8});
    EXPECT_EQ(session.app.formulaBar.line.selectedText().substr(0, 3), u"one");
    EXPECT_LE(session.app.formulaBar.line.selectedText().size(), 4U) << "with its blank at most";
}

TEST(EditControl, isNotOpenedOnALockedCell)
{
    WindowSession session;
    workbook->currentSheet->protectedSheet = true;
    session.click(session.control(), {20, 8});
    EXPECT_FALSE(session.app.formulaBar.editing);
    EXPECT_EQ(session.focus(), &session.sheet());
    ASSERT_EQ(session.machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(session.machine.userInterface.boxes[0].text, u"Locked cell");
}

TEST(EditControl, leavesTheOtherButtonsOfTheMouseWithoutEffect)
{
    WindowSession session;
    session.type(u"ab");
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        session.click(session.control(), {2, 8}, button);
        EXPECT_EQ(session.control().text(), toQt(session.app.formulaBar.line.text()));
    }
    EXPECT_EQ(session.control().contextMenuPolicy(), Qt::PreventContextMenu);
}

TEST(EditControl, usesTheClipboardOfTheModelOnly)
{
    WindowSession session;
    session.machine.clipboard.putText(u"12\n34");
    session.type(u"=");
    session.press('V', Qt::ControlModifier);
    EXPECT_EQ(session.line(), "=12|") << "the first line";
    EXPECT_EQ(session.shownLine(), "=12|");
    session.press(Qt::Key_F2);
    session.press(Qt::Key_Left, Qt::ShiftModifier);
    session.press('X', Qt::ControlModifier);
    EXPECT_EQ(session.machine.clipboard.text(), u"2");
    EXPECT_EQ(session.shownLine(), "=1|");
}

TEST(EditControl, givesTheKeysToTheGridWhilePointing)
{
    WindowSession session;
    session.type(u"=");
    session.press(Qt::Key_Right);
    EXPECT_TRUE(session.app.pointMode);
    EXPECT_EQ(session.focus(), &session.sheet());
    EXPECT_EQ(session.control().text(), "=B1");
    session.type(u"+");
    EXPECT_EQ(session.focus(), &session.control());
    EXPECT_EQ(session.shownLine(), "=B1+|");
    session.press(Qt::Key_Down);
    session.click(session.control(), {session.control().width() - 3.0, 8});
    EXPECT_FALSE(session.app.pointMode) << "a tap into the text ends it";
    EXPECT_EQ(session.shownLine(), "=B1+A2|");
}

TEST(EditControl, showsWhatIsComposedAndTellsWhatIsFinished)
{
    WindowSession session;
    session.type(u"ab");
    session.compose("~", {});
    EXPECT_EQ(session.line(), "ab|") << "nothing is finished";
    EXPECT_EQ(session.control().text(), "ab");
    EXPECT_EQ(session.control().displayText(), "ab") << "what is composed is no text yet";
    session.compose({}, QString::fromUtf8("ã"));
    EXPECT_EQ(session.line(), "abã|");
    EXPECT_EQ(session.shownLine(), "abã|");
}

TEST(EditControl, takesWhatIsComposedInPlaceOfTheSelection)
{
    WindowSession session;
    session.type(u"abc");
    session.window.messages().send([&] { session.app.formulaBar.line.setSelection(0, 2); });
    session.compose("x", {});
    EXPECT_EQ(session.line(), "|c");
    session.compose({}, "xy");
    EXPECT_EQ(session.shownLine(), "xy|c");
}

TEST(EditControl, replacesWhatAKeyboardOfTheScreenCorrects)
{
    WindowSession session;
    session.type(u"teh");
    QInputMethodEvent correction;
    correction.setCommitString("the", -3, 3);
    QCoreApplication::sendEvent(&session.control(), &correction);
    EXPECT_EQ(session.line(), "the|");
    EXPECT_EQ(session.shownLine(), "the|");
}

TEST(EditControl, beginsAnEditWithWhatIsComposedOnTheGrid)
{
    WindowSession session;
    session.compose({}, QString::fromUtf8("日本"));
    EXPECT_EQ(session.line(), "日本|");
    EXPECT_EQ(session.shownLine(), "日本|");
}

TEST(EditControl, mirrorsTextsLongerThanAnybodyCanType)
{
    WindowSession session;
    session.type(u"x");
    const std::u16string longText(EditTextMax + 1000, u'y');
    session.window.messages().send([&] { session.app.formulaBar.line.setText(longText); });
    EXPECT_EQ(session.control().text().size(), static_cast<qsizetype>(longText.size()));
}

TEST(EditControl, isNotLeftWithTab)
{
    WindowSession session;
    session.type(u"1");
    session.press(Qt::Key_Tab);
    EXPECT_EQ(session.input(0, 0), u"1");
    EXPECT_EQ(workbook->currentSheet->selection.activeColumn, 1);
    session.press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(workbook->currentSheet->selection.activeColumn, 0);
    EXPECT_EQ(session.focus(), &session.sheet());
}

} // namespace
} // namespace vorn::qt
