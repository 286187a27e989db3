#include "qt/mainwindow.h"

#include "core/error.h"
#include "qt/windowsession.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "shell/windowpaint.h"
#include "support/tempfolder.h"

#include <QCloseEvent>
#include <QFile>
#include <QLocalSocket>
#include <QPaintEvent>
#include <QPointingDevice>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace vorn::qt {
namespace {

std::vector<std::u16string> boxesOf(WindowSession& session)
{
    std::vector<std::u16string> texts;
    for (const auto& box : session.machine.userInterface.boxes)
        texts.push_back(box.text);
    session.machine.userInterface.boxes.clear();
    return texts;
}

const Selection& selection()
{
    return workbook->currentSheet->selection;
}

// The middle of a cell that is in view.
QPointF middleOf(int column, int row)
{
    const GridView view = currentView();
    return {view.xOfColumn(column) + view.columns.pixels(column) / 2.0,
            view.yOfRow(row) + view.rows.pixels(row) / 2.0};
}

TEST(MainWindow, isAsLargeAsAHandheldAtFirst)
{
    WindowSession session;
    EXPECT_EQ(session.window.size(), QSize(240, 320));
    const Rect& client = session.app.clientArea;
    EXPECT_EQ(client.width(), 240);
    EXPECT_EQ(client.height(), 320 - session.window.commandBars().height());
    EXPECT_LE(session.window.minimumWidth(), 240);
    session.window.resize(1280, 800);
    session.settle();
    EXPECT_EQ(client.width(), 1280);
    EXPECT_EQ(client.height(), 800 - session.window.commandBars().height());
}

TEST(MainWindow, showsWhatTheStartLeftAndThenOpensTheFile)
{
    const TempFolder folder;
    TestPlatform machine;
    Application app;
    raiseError(ErrorInitialization);
    MainWindow window;
    EXPECT_TRUE(machine.userInterface.boxes.empty()) << "the window comes first";
    window.begin(folder.write("a.csv", "1,2\n"));
    ASSERT_EQ(machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(machine.userInterface.boxes[0].text, u"Vorn initialization error");
    EXPECT_EQ(workbook->currentSheet->cellInput(0, 0), u"1");
    window.messages().send([] {});
    EXPECT_EQ(machine.userInterface.boxes.size(), 1U) << "once";
}

TEST(MainWindow, saysThatAFileIsMissingAndGoesOn)
{
    const TempFolder folder;
    TestPlatform machine;
    Application app;
    MainWindow window;
    window.begin(folder.path("none.vn"));
    ASSERT_EQ(machine.userInterface.boxes.size(), 1U);
    EXPECT_TRUE(machine.userInterface.boxes[0].text.starts_with(u"Could not find '"));
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_FALSE(workbook->modified);
}

TEST(MainWindow, showsTheTitleAsItIs)
{
    WindowSession session;
    session.window.showTitle(u"a[*].vn - Vorn");
    EXPECT_EQ(session.window.windowTitle().replace("[*][*]", "[*]"), "a[*].vn - Vorn");
    EXPECT_FALSE(session.window.isWindowModified());
}

TEST(MainWindow, readsTheSettingsWhenItIsMade)
{
    TestPlatform machine;
    machine.settings.open();
    machine.settings.setNumber("FmlBar", 0);
    machine.settings.keep();
    Application app;
    EXPECT_TRUE(app.formulaBarVisible);
    const MainWindow window;
    EXPECT_FALSE(app.formulaBarVisible);
}

TEST(MainWindow, closesAtOnceWithoutChanges)
{
    WindowSession session;
    session.window.resize(400, 300);
    session.window.close();
    EXPECT_TRUE(session.app.quitRequested);
    EXPECT_TRUE(session.window.isHidden());
    EXPECT_TRUE(boxesOf(session).empty());
    std::vector<unsigned char> bands;
    session.machine.settings.open();
    EXPECT_TRUE(session.machine.settings.readBytes("CommandBand", bands));
    ASSERT_EQ(bands.size(), CommandBandSize);
    EXPECT_EQ(bands[12] | bands[13] << 8, 400) << "the width that the bars had";
    session.window.close(); // a second time changes nothing
    EXPECT_TRUE(boxesOf(session).empty());
}

TEST(MainWindow, keepsTheBandsOfItsFirstSizeToo)
{
    WindowSession session;
    ASSERT_EQ(session.app.commandBand.size(), CommandBandSize);
    EXPECT_EQ(session.app.commandBand[12] | session.app.commandBand[13] << 8, 240);
    session.press(Qt::Key_F11);
    EXPECT_EQ(session.app.commandBand[12] | session.app.commandBand[13] << 8, 240)
        << "in full screen there are none to keep";
}

TEST(MainWindow, asksAboutChangesHoweverItIsClosed)
{
    const struct {
        const char* behaviour;
        void (*close)(WindowSession&);
    } cases[] = {
        {"the desktop closes it", [](WindowSession& session) { session.window.close(); }                 },
        {"the key",               [](WindowSession& session) { session.press('W', Qt::ControlModifier); }},
        {"the menu",
         [](WindowSession& session) {
             session.window.commandBars().entry(CommandClose)->trigger();
         }                                                                                               },
    };
    for (const auto& c : cases) {
        WindowSession session;
        session.type(u"1");
        session.press(Qt::Key_Return);
        session.machine.userInterface.answers = {BoxAnswer::Cancel, BoxAnswer::No};
        c.close(session);
        EXPECT_EQ(boxesOf(session), std::vector<std::u16string>{u"Save changes?"}) << c.behaviour;
        EXPECT_FALSE(session.app.quitRequested) << c.behaviour;
        EXPECT_FALSE(session.window.isHidden()) << c.behaviour;
        EXPECT_EQ(session.input(0, 0), u"1") << c.behaviour;
        c.close(session);
        EXPECT_TRUE(session.app.quitRequested) << c.behaviour;
        session.settle();
    }
}

// Another start of the program, as the window hears it.
class OtherStart {
public:
    OtherStart(const QString& address, const Request& request)
    {
        socket_.connectToServer(address);
        socket_.write(requestBytes(request));
        socket_.flush();
    }

    // All that it heard, once there is `count` of it or the connection has ended.
    std::string heard(qsizetype count)
    {
        std::string text;
        const auto hasEnded = [&] {
            return socket_.bytesAvailable() >= count ||
                   socket_.state() == QLocalSocket::UnconnectedState;
        };
        EXPECT_TRUE(QTest::qWaitFor(hasEnded, 3000));
        for (const char byte : socket_.readAll())
            text += static_cast<char>('0' + byte);
        return text;
    }

    bool isDropped()
    {
        return QTest::qWaitFor([&] { return socket_.state() == QLocalSocket::UnconnectedState; },
                               3000);
    }
    void giveUp() { socket_.abort(); }

private:
    QLocalSocket socket_;
};

// A window that other starts can ask.
struct SharedSession : WindowSession {
    SharedSession()
    {
        EXPECT_TRUE(window.listen(address));
        other = folder.write("a.csv", "other\n");
    }

    // The answers that another start hears that wants this opened.
    std::string open(const std::u16string& line)
    {
        const std::string answers = OtherStart(address, {RequestOpen, line}).heard(2);
        settle();
        return answers;
    }

    TempFolder folder;
    QString address = QFile::decodeName(folder.file("socket").c_str());
    std::u16string other;
};

TEST(MainWindow, opensOnRequestAfterAsking)
{
    SharedSession session;
    session.type(u"1");
    session.press(Qt::Key_Return);
    session.machine.userInterface.answers = {BoxAnswer::Cancel, BoxAnswer::No};
    EXPECT_EQ(session.open(session.other), "21");
    EXPECT_EQ(session.input(0, 0), u"1");
    EXPECT_EQ(session.open(session.other), "21");
    EXPECT_EQ(session.input(0, 0), u"other");
    EXPECT_TRUE(session.app.recentFiles[0].empty()) << "it adds nothing to the recent files";
    EXPECT_EQ(boxesOf(session).size(), 2U);
}

TEST(MainWindow, letsRequestsWaitForTheEndOfAMessage)
{
    SharedSession session;
    const std::u16string later = session.folder.write("b.csv", "later\n");
    OtherStart first(session.address, {RequestOpen, session.other});
    OtherStart second(session.address, {RequestOpen, later});
    OtherStart quitter(session.address, {RequestOpen, u"/nowhere.vn"});
    session.window.messages().send([&] {
        EXPECT_EQ(first.heard(1), "2");
        EXPECT_EQ(second.heard(1), "2");
        EXPECT_EQ(quitter.heard(1), "2");
        EXPECT_EQ(OtherStart(session.address, {RequestFront, {}}).heard(1), "1")
            << "which does not disturb";
        quitter.giveUp();
        session.window.messages().send([] {});
        EXPECT_EQ(session.input(0, 0), u"") << "a message in a message is not the last";
    });
    EXPECT_EQ(first.heard(1), "1");
    EXPECT_EQ(second.heard(1), "1");
    EXPECT_EQ(session.input(0, 0), u"later") << "each in its turn";
    EXPECT_TRUE(boxesOf(session).empty()) << "and nothing for one who did not wait";
}

TEST(MainWindow, dropsRequestsThatWaitWhenItCloses)
{
    SharedSession session;
    OtherStart waiting(session.address, {RequestOpen, session.other});
    session.window.messages().send([&] {
        EXPECT_EQ(waiting.heard(1), "2");
        session.app.close();
    });
    ASSERT_TRUE(session.app.quitRequested);
    EXPECT_TRUE(waiting.isDropped());
    EXPECT_EQ(waiting.heard(1), "") << "it was never taken";
    EXPECT_FALSE(QFile::exists(session.address)) << "whoever asks again finds nobody";
}

TEST(MainWindow, takesNoRequestOnceItHasClosed)
{
    SharedSession session;
    OtherStart late(session.address, {RequestOpen, u"/late.vn"});
    session.window.close();
    EXPECT_TRUE(late.isDropped());
    EXPECT_EQ(late.heard(1), "");
    EXPECT_TRUE(boxesOf(session).empty());
}

// A user at whose boxes something happens.
struct InterruptedUser : SilentUserInterface {
    BoxAnswer messageBox(std::u16string_view, std::u16string_view, BoxButtons, BoxIcon) override
    {
        meanwhile();
        return BoxAnswer::Ok;
    }
    std::function<void()> meanwhile;
};

TEST(MainWindow, opensTheFileOfItsOwnStartBeforeThoseOfOthers)
{
    const TempFolder folder;
    const QString address = QFile::decodeName(folder.file("socket").c_str());
    TestPlatform machine;
    InterruptedUser user;
    platform.userInterface = &user;
    Application app;
    raiseError(ErrorInitialization);
    MainWindow window;
    ASSERT_TRUE(window.listen(address));
    OtherStart other(address, {RequestOpen, folder.write("b.csv", "other\n")});
    user.meanwhile = [&] { EXPECT_EQ(other.heard(1), "2"); };
    window.begin(folder.write("a.csv", "own\n"));
    EXPECT_EQ(other.heard(1), "1");
    EXPECT_EQ(workbook->currentSheet->cellInput(0, 0), u"other");
}

TEST(MainWindow, countsWhatIsBeingWrittenAsAChange)
{
    SharedSession session;
    const auto close = [&session] {
        QCloseEvent event;
        QCoreApplication::sendEvent(&session.window, &event);
        session.settle();
    };
    session.type(u"abc");
    session.machine.userInterface.answers = {BoxAnswer::Cancel, BoxAnswer::Cancel};
    close();
    EXPECT_EQ(session.input(0, 0), u"abc") << "it is stored, and then asked about";
    EXPECT_EQ(boxesOf(session), std::vector<std::u16string>{u"Save changes?"});
    session.type(u"d");
    session.open(session.other);
    EXPECT_EQ(session.input(0, 0), u"d");
    EXPECT_EQ(boxesOf(session).size(), 1U);
    session.type(u"=1+");
    close();
    EXPECT_FALSE(session.app.quitRequested) << "what cannot be stored is to be mended first";
    EXPECT_TRUE(session.app.formulaBar.editing);
    session.press(Qt::Key_Escape);
}

TEST(MainWindow, saysWhyARequestFails)
{
    SharedSession session;
    session.type(u"1");
    session.press(Qt::Key_Return);
    session.machine.userInterface.answers = {BoxAnswer::No, BoxAnswer::Ok};
    const std::u16string missing = session.folder.path("none.vn");
    EXPECT_EQ(session.open(missing), "21");
    EXPECT_EQ(boxesOf(session), (std::vector<std::u16string>{
                                    u"Save changes?", u"Could not find '" + missing + u"'."}));
    EXPECT_EQ(session.input(0, 0), u"1") << "the document stays";

    session.machine.userInterface.answers = {BoxAnswer::No, BoxAnswer::Ok};
    EXPECT_EQ(session.open(u'"' + std::u16string(299, u'x')), "21");
    EXPECT_EQ(boxesOf(session).size(), 2U);
    EXPECT_EQ(session.input(0, 0), u"") << "such a line is opened all the same";
    EXPECT_EQ(workbook->sheets.size(), 3);
}

TEST(MainWindow, entersAndLeavesFullScreenWithItsOwnKey)
{
    WindowSession session;
    session.press(Qt::Key_F11);
    EXPECT_TRUE(session.app.fullScreen);
    EXPECT_TRUE(session.window.commandBars().isHidden());
    EXPECT_TRUE(session.window.isFullScreen());
    EXPECT_EQ(session.app.clientArea.height(), session.window.height());
    session.press(Qt::Key_F11);
    EXPECT_FALSE(session.app.fullScreen);
    EXPECT_FALSE(session.window.commandBars().isHidden());
    EXPECT_FALSE(session.window.isFullScreen());
}

TEST(MainWindow, tapsAndDragsOnTheGrid)
{
    WindowSession session;
    session.click(session.sheet(), middleOf(1, 2));
    EXPECT_EQ(selection().activeColumn, 1);
    EXPECT_EQ(selection().activeRow, 2);
    session.mouse(QEvent::MouseButtonPress, session.sheet(), middleOf(0, 0));
    EXPECT_TRUE(session.app.pen.penDown);
    session.mouse(QEvent::MouseMove, session.sheet(), middleOf(1, 3));
    session.mouse(QEvent::MouseButtonRelease, session.sheet(), middleOf(1, 3));
    EXPECT_FALSE(session.app.pen.penDown);
    EXPECT_EQ(selection().range, (RangeRef{0, 0, 3, 1}));
    session.mouse(QEvent::MouseMove, session.sheet(), middleOf(1, 5));
    EXPECT_EQ(selection().range, (RangeRef{0, 0, 3, 1})) << "a mouse that is not pressed";
    session.click(session.sheet(), middleOf(0, 5), Qt::RightButton);
    EXPECT_EQ(selection().range, (RangeRef{0, 0, 3, 1})) << "the other button";
}

TEST(MainWindow, opensTheEditorInTheCellWithADoubleTap)
{
    WindowSession session;
    session.app.formulaBarVisible = false;
    session.click(session.sheet(), middleOf(1, 1));
    session.mouse(QEvent::MouseButtonDblClick, session.sheet(), middleOf(1, 1));
    session.mouse(QEvent::MouseButtonRelease, session.sheet(), middleOf(1, 1));
    session.settle();
    EXPECT_TRUE(session.app.formulaBar.editing);
    EXPECT_EQ(session.focus(), &session.control());
}

TEST(MainWindow, takesASecondPressThatMeansNoMoreForAnotherFirst)
{
    WindowSession session;
    session.click(session.sheet(), middleOf(0, 1));
    session.mouse(QEvent::MouseButtonDblClick, session.sheet(), middleOf(0, 1));
    session.mouse(QEvent::MouseMove, session.sheet(), middleOf(1, 3));
    session.mouse(QEvent::MouseButtonRelease, session.sheet(), middleOf(1, 3));
    EXPECT_EQ(selection().range, (RangeRef{1, 0, 3, 1})) << "it drags";
}

TEST(MainWindow, takesTwoPressesWithAKeyBetweenForTwo)
{
    WindowSession session;
    session.type(u"=");
    session.click(session.sheet(), middleOf(1, 1));
    session.type(u"+");
    session.mouse(QEvent::MouseButtonDblClick, session.sheet(), middleOf(1, 1));
    session.mouse(QEvent::MouseButtonRelease, session.sheet(), middleOf(1, 1));
    session.settle();
    EXPECT_EQ(session.app.formulaBar.line.text(), u"=B2+B2");
}

TEST(MainWindow, letsThePenGoWhenADialogTakesItAway)
{
    WindowSession session;
    session.mouse(QEvent::MouseButtonPress, session.sheet(), middleOf(0, 0));
    ASSERT_TRUE(session.app.pen.penDown);
    session.window.messages().send([&] {
        QEvent blocked(QEvent::WindowBlocked);
        QCoreApplication::sendEvent(&session.window, &blocked);
    });
    EXPECT_FALSE(session.app.pen.penDown);
}

TEST(MainWindow, letsThePenGoWhenItsReleaseIsNotSeen)
{
    WindowSession session;
    const auto press = [&] {
        session.mouse(QEvent::MouseButtonPress, session.sheet(), middleOf(0, 0));
        session.mouse(QEvent::MouseMove, session.sheet(), middleOf(0, 2));
        EXPECT_TRUE(session.app.pen.penDown);
    };
    press();
    session.hover(session.sheet(), middleOf(0, 4));
    EXPECT_FALSE(session.app.pen.penDown) << "the mouse comes back without a button";
    press();
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(&session.sheet(), &menu);
    EXPECT_FALSE(session.app.pen.penDown) << "a menu opens";
    EXPECT_EQ(selection().range, (RangeRef{0, 0, 2, 0}));
}

TEST(MainWindow, letsAFingerGoThatTheDesktopTakes)
{
    WindowSession session;
    const int width = workbook->currentSheet->columns.columnWidth(0);
    penDown(89, 24);
    penMove(120, 24);
    ASSERT_EQ(session.app.pen.dragMode, DragColumnSize);
    QTouchEvent cancel(QEvent::TouchCancel);
    QCoreApplication::sendEvent(&session.sheet(), &cancel);
    EXPECT_FALSE(session.app.pen.penDown);
    EXPECT_EQ(workbook->currentSheet->columns.columnWidth(0), width);
}

TEST(MainWindow, showsWhileEditingWhatCanBeUndone)
{
    WindowSession session;
    session.type(u"a");
    session.type(u"b");
    EXPECT_TRUE(session.app.commandState.entry(CommandUndo)->enabled);
    session.press(Qt::Key_Escape);
    EXPECT_FALSE(session.app.commandState.entry(CommandUndo)->enabled);
}

TEST(MainWindow, refusesAWholeTextOnce)
{
    WindowSession session;
    workbook->currentSheet->protectedSheet = true;
    session.compose({}, QStringLiteral("three"));
    EXPECT_EQ(session.machine.userInterface.boxes.size(), 1U);
}

// A touch screen below the grid, whose fingers have numbers.
class TouchScreen {
public:
    explicit TouchScreen(WindowSession& session) : sheet_(session.sheet()) {}

    void press(int finger, QPointF at)
    {
        keepOther(finger);
        sequence_.press(finger, at.toPoint(), &sheet_).commit();
        down_[finger] = true;
    }
    void move(int finger, QPointF at)
    {
        keepOther(finger);
        sequence_.move(finger, at.toPoint(), &sheet_).commit();
    }
    void release(int finger, QPointF at)
    {
        keepOther(finger);
        sequence_.release(finger, at.toPoint(), &sheet_).commit();
        down_[finger] = false;
    }
    void tap(QPointF at)
    {
        press(0, at);
        release(0, at);
    }
    void moveBoth(QPointF first, QPointF second)
    {
        sequence_.move(0, first.toPoint(), &sheet_).move(1, second.toPoint(), &sheet_).commit();
    }

private:
    // The other finger stays where it is.
    void keepOther(int finger)
    {
        if (down_[1 - finger])
            sequence_.stationary(1 - finger);
    }

    SheetWidget& sheet_;
    std::unique_ptr<QPointingDevice> device_{QTest::createTouchDevice()};
    QTest::QTouchEventWidgetSequence sequence_ = QTest::touchEvent(&sheet_, device_.get(), false);
    bool down_[2] = {};
};

TEST(MainWindow, takesOneFingerForAPen)
{
    WindowSession session;
    TouchScreen screen(session);
    screen.press(0, middleOf(0, 1));
    screen.move(0, middleOf(1, 2));
    EXPECT_TRUE(session.app.pen.penDown);
    screen.release(0, middleOf(1, 2));
    EXPECT_FALSE(session.app.pen.penDown);
    EXPECT_EQ(selection().range, (RangeRef{1, 0, 2, 1}));
}

TEST(MainWindow, opensTheEditorWithTwoTapsOfAFinger)
{
    WindowSession session;
    session.app.formulaBarVisible = false;
    TouchScreen screen(session);
    for (int tap = 0; tap < 2; ++tap) {
        EXPECT_FALSE(session.app.formulaBar.editing);
        screen.tap(middleOf(0, 1));
    }
    EXPECT_TRUE(session.app.formulaBar.editing);
}

TEST(MainWindow, takesTwoTapsOfAFingerInTwoPlacesForTwo)
{
    WindowSession session;
    session.app.formulaBarVisible = false;
    TouchScreen screen(session);
    for (const int row : {0, 8}) {
        screen.tap(middleOf(0, row));
    }
    EXPECT_FALSE(session.app.formulaBar.editing);
    EXPECT_EQ(selection().activeRow, 8);
}

void turnWheel(WindowSession& session, QPoint angle, Qt::KeyboardModifiers held = Qt::NoModifier,
               QPoint pixels = {}, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    QWheelEvent event({50, 50}, {50, 50}, pixels, angle, Qt::NoButton, held, phase, false);
    QCoreApplication::sendEvent(&session.sheet(), &event);
    session.settle();
}

TEST(MainWindow, scrollsWithTheWheel)
{
    const struct {
        const char* behaviour;
        QPoint angle;
        Qt::KeyboardModifiers held;
        int leftColumn;
        int topRow;
    } steps[] = {
        {"a notch is three rows",          {0, -120},  Qt::NoModifier,      0, 3},
        {"a part of one waits",            {0, -60},   Qt::NoModifier,      0, 4},
        {"for the rest of it",             {0, -60},   Qt::NoModifier,      0, 6},
        {"and back",                       {0, 120},   Qt::NoModifier,      0, 3},
        {"with Shift it goes by columns",  {0, -120},  Qt::ShiftModifier,   3, 3},
        {"as a wheel that leans does",     {120, 0},   Qt::NoModifier,      0, 3},
        {"no further than the first cell", {600, 600}, Qt::NoModifier,      0, 0},
        {"with Ctrl it does nothing",      {0, -120},  Qt::ControlModifier, 0, 0},
    };
    WindowSession session;
    for (const auto& step : steps) {
        turnWheel(session, step.angle, step.held);
        EXPECT_EQ(workbook->currentSheet->leftColumn, step.leftColumn) << step.behaviour;
        EXPECT_EQ(workbook->currentSheet->topRow, step.topRow) << step.behaviour;
    }
}

TEST(MainWindow, scrollsByThePixelsOfATouchpad)
{
    WindowSession session;
    const int row = currentView().rows.pixels(0);
    for (int pixel = 0; pixel < row; ++pixel) {
        EXPECT_EQ(workbook->currentSheet->topRow, 0);
        turnWheel(session, {0, -8}, Qt::NoModifier, {0, -1}, Qt::ScrollUpdate);
    }
    EXPECT_EQ(workbook->currentSheet->topRow, 1);
}

TEST(MainWindow, scrollsWithTwoFingers)
{
    WindowSession session;
    TouchScreen screen(session);
    const int row = currentView().rows.pixels(0);
    screen.press(0, {60, 150});
    screen.press(1, {100, 150});
    EXPECT_FALSE(session.app.pen.penDown) << "the second finger ends what the first one did";
    const RangeRef before = selection().range;
    screen.moveBoth({60, 150.0 - 2 * row}, {100, 150.0 - 2 * row});
    EXPECT_EQ(workbook->currentSheet->topRow, 2);
    screen.release(1, {100, 150.0 - 2 * row});
    screen.move(0, {60, 20});
    screen.release(0, {60, 20});
    EXPECT_EQ(workbook->currentSheet->topRow, 2) << "one finger of two does nothing more";
    EXPECT_EQ(selection().range, before);
}

TEST(MainWindow, letsAFingerOnTheEditControlBeAMouse)
{
    WindowSession session;
    session.window.messages().send([] { application->enterCell(u"hello"); });
    session.settle();
    TouchScreen screen(session);
    const QRect place = session.control().geometry();
    screen.tap(QPointF(place.right() - 3, place.top() + 8));
    EXPECT_TRUE(session.app.formulaBar.editing);
    EXPECT_EQ(session.line(), "hello|");
}

TEST(MainWindow, showsWithThePointerWhatAPressWouldDo)
{
    WindowSession session;
    const GridView view = currentView();
    const GridLayout areas = currentLayout();
    const qreal edge = view.xOfColumn(0) + view.columns.pixels(0);
    const qreal titles = (areas.columnTitles.top + areas.columnTitles.bottom) / 2.0;
    const struct {
        const char* behaviour;
        QPointF at;
        Qt::CursorShape shape;
    } cases[] = {
        {"a cell", middleOf(1,   3),                              Qt::CrossCursor},
        {"a title",        {edge / 2, titles},            Qt::ArrowCursor                 },
        {"a column's edge",        {edge, titles},    Qt::SplitHCursor},
        {"the tabs",        {60, areas.tabArea.top + 5.0},           Qt::ArrowCursor         },
        {"the tabs' splitter",
         {areas.tabSplitter.left + 1.0, areas.tabArea.top + 5.0},
         Qt::SplitHCursor},
    };
    for (const auto& c : cases) {
        session.hover(session.sheet(), c.at);
        EXPECT_EQ(session.sheet().cursor().shape(), c.shape) << c.behaviour;
    }
    EXPECT_EQ(session.control().cursor().shape(), Qt::IBeamCursor);
}

// What of a widget goes to the screen.
class ScreenWatch : public QObject {
public:
    explicit ScreenWatch(QWidget& widget)
    {
        settle();
        widget.installEventFilter(this);
    }

    // The toolkit brings widgets to the screen a moment later.
    static void settle() { QTest::qWait(50); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
            ++paints;
        }
        return false;
    }

    QRegion painted;
    int paints = 0;
};

TEST(MainWindow, paintsOnceWhenTheMessagesAreOver)
{
    WindowSession session;
    ScreenWatch watch(session.sheet());
    session.window.messages().send([] { application->markDirty(DirtyAll); });
    session.window.messages().send([] { application->markDirty(DirtyAll); });
    EXPECT_NE(session.app.repaintHints, 0) << "not within a message";
    EXPECT_EQ(watch.paints, 0);
    watch.settle();
    EXPECT_EQ(session.app.repaintHints, 0);
    EXPECT_EQ(watch.paints, 1);
}

TEST(MainWindow, putsOnlyWhatChangedOnTheScreen)
{
    WindowSession session;
    session.click(session.sheet(), middleOf(0, 2));
    ScreenWatch watch(session.sheet());
    session.press(Qt::Key_Down);
    watch.settle();
    const QPoint cell = middleOf(0, 3).toPoint();
    EXPECT_TRUE(watch.painted.intersects(QRect(cell - QPoint(20, 8), cell + QPoint(20, 8))));
    EXPECT_FALSE(watch.painted.contains(cell + QPoint(0, 100))) << "cells further below";
    EXPECT_FALSE(watch.painted.contains(session.sheet().rect().bottomLeft())) << "the tabs";
}

TEST(MainWindow, paintsNothingWhileItIsLocked)
{
    WindowSession session;
    ScreenWatch watch(session.sheet());
    session.app.lockRepaint();
    session.window.messages().send([] { application->markDirty(DirtyAll); });
    watch.settle();
    EXPECT_EQ(watch.paints, 0);
    const int asked = session.machine.userInterface.repaints;
    session.app.unlockRepaint();
    EXPECT_EQ(session.machine.userInterface.repaints, asked + 1);
    session.window.requestRepaint(); // as the user interface passes it on
    watch.settle();
    EXPECT_EQ(watch.paints, 1);
}

} // namespace
} // namespace vorn::qt
