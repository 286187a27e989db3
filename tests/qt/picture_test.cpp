#include "qt/picture.h"

#include "qt/mainwindow.h"
#include "qt/strings.h"
#include "shell/application.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

TEST(Picture, showsTheWholeWindow)
{
    const TempFolder folder;
    TestPlatform machine;
    Application app;
    MainWindow window;
    window.resize(300, 200);
    window.show();
    window.begin({});
    const QString path = toQt(folder.path("out"));
    EXPECT_TRUE(writePicture(window, path));
    const QImage picture(path, "png");
    EXPECT_EQ(picture.size(), QSize(300, 200));
    const QColor menu = picture.pixelColor(299, 1);
    EXPECT_EQ(menu, window.palette().color(QPalette::Window));
    const Rect cells = app.painted.areas.cellArea;
    const int top = window.sheetWidget().y();
    EXPECT_EQ(picture.pixelColor(cells.right - 3, top + cells.bottom - 3), QColor(Qt::white));
}

TEST(Picture, saysWhenItCannotBeWritten)
{
    const TempFolder folder;
    TestPlatform machine;
    Application app;
    MainWindow window;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(writePicture(window, toQt(folder.path("none/out.png"))));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("none/out.png"), std::string::npos);
}

TEST(Picture, isSeenByNobodyWhoAnswers)
{
    const struct {
        BoxButtons buttons;
        BoxAnswer answer;
    } cases[] = {
        {BoxButtons::Ok,          BoxAnswer::Ok    },
        {BoxButtons::YesNo,       BoxAnswer::No    },
        {BoxButtons::YesNoCancel, BoxAnswer::Cancel},
    };
    PictureUser user;
    EXPECT_FALSE(user.hasSpoken());
    for (const auto& c : cases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(user.messageBox(u"Vorn", u"A text \u20ac", c.buttons), c.answer);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "vorn: A text €\n");
    }
    EXPECT_TRUE(user.hasSpoken());
    FileQuestion question;
    EXPECT_FALSE(user.askFile(question));
}

TEST(WindowUser, showsOneWaitCursorHoweverManyAskForIt)
{
    WindowUser user;
    user.showWaitCursor(true);
    user.showWaitCursor(true);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    user.showWaitCursor(false);
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    user.showWaitCursor(false);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace vorn::qt
