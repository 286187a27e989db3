// A user of the program's dialogs as they stand on the screen, of which a test has none. Each
// window that opens waits for the next step of the test, which uses its widgets.
#pragma once

#include "platform/headless/userinterface.h"
#include "platform/platform.h"
#include "qt/dialogs/dialogs.h"
#include "qt/strings.h"
#include "shell/application.h"
#include "support/testplatform.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn::qt {

class DialogUser : public SilentUserInterface {
public:
    using Step = std::function<void(QDialog&)>;

    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon) override
    {
        texts.emplace_back(text);
        comeSoon();
        return showMessageBox(nullptr, caption, text, buttons, icon);
    }

    bool askFile(FileQuestion& question) override
    {
        comeSoon();
        return showFileDialog(nullptr, question);
    }

    void runDialog(DialogModel& dialog) override
    {
        comeSoon();
        runDialogWindow(nullptr, dialog);
    }

    void showHelp(std::u16string_view anchor) override { helpAnchors.emplace_back(anchor); }

    // Does the next step as soon as the window that is about to open waits. A window that stays
    // open after its step, or has none, is closed.
    void comeSoon()
    {
        QTimer::singleShot(0, qApp, [this] {
            auto* window = static_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            const QPointer<QDialog> former = window;
            ASSERT_TRUE(QTest::qWaitForWindowActive(window));
            titles.push_back(fromQt(window->windowTitle()));
            if (always) {
                always(*window);
            } else if (!steps.empty()) {
                const Step step = std::move(steps.front());
                steps.pop_front();
                step(*window);
            }
            for (int tries = 0; tries < 3 && !former.isNull() && former->isVisible(); ++tries)
                former->reject();
        });
    }

    std::deque<Step> steps;
    Step always;                             // done in every window, in place of the steps
    std::vector<std::u16string> titles;      // of the windows that came
    std::vector<std::u16string> texts;       // of the boxes
    std::vector<std::u16string> helpAnchors; // that were asked for
};

// Where there is no screen, widgets that unfold complain.
class QuietPlugin {
public:
    QuietPlugin()
    {
        former = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                if (!text.startsWith(QStringLiteral("This plugin does not support")))
                    former(type, context, text);
            });
    }
    ~QuietPlugin() { qInstallMessageHandler(former); }
    QuietPlugin(const QuietPlugin&) = delete;
    QuietPlugin& operator=(const QuietPlugin&) = delete;

private:
    static inline QtMessageHandler former = nullptr;
};

// A program whose windows are answered so.
class DialogWindowTest : public testing::Test {
protected:
    DialogWindowTest() { platform.userInterface = &user; }

    template <typename... Some>
    void willDo(Some... some)
    {
        user.steps.clear();
        (user.steps.emplace_back(std::move(some)), ...);
    }

    // The widget of a control.
    template <typename Widget>
    static Widget& widget(QWidget& window, int control)
    {
        auto* found = window.findChild<Widget*>(QString::number(control));
        if (found == nullptr)
            ADD_FAILURE() << "no widget of that kind for " << control;
        EXPECT_NE(found, nullptr);
        return *found;
    }

    static void click(QWidget& window, int button)
    {
        QTest::mouseClick(&widget<QWidget>(window, button), Qt::LeftButton);
    }

    static void key(QWidget& target, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&target, key, modifiers);
    }

    const QuietPlugin quiet;
    TestPlatform machine;
    Application application;
    DialogUser user;
};

} // namespace vorn::qt
