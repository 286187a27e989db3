#include "qt/dialogs/help.h"
#include "qt/dialogs/widgets.h"
#include "qt/dialoguser.h"
#include "support/tempfolder.h"

#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QTextBrowser>
#include <QUrl>

#include <filesystem>

namespace vorn::qt {
namespace {

class Boxes : public DialogWindowTest {
protected:
    BoxAnswer ask(BoxButtons buttons, const DialogUser::Step& step,
                  std::u16string_view text = u"Save changes?")
    {
        willDo(step);
        return user.messageBox(u"Vorn", text, buttons, BoxIcon::None);
    }

    static QStringList buttonsOf(QDialog& window)
    {
        QStringList texts;
        for (const QPushButton* button : window.findChildren<QPushButton*>())
            texts.append(button->text());
        return texts;
    }

    static void clickText(QDialog& window, const QString& text)
    {
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->text() == text)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        ADD_FAILURE() << "no button " << text.toStdString();
    }
};

TEST_F(Boxes, haveTheButtonsThatAreAskedFor)
{
    const struct {
        BoxButtons buttons;
        const char16_t* texts;
    } cases[] = {
        {BoxButtons::Ok,          u"OK"             },
        {BoxButtons::YesNo,       u"&Yes|&No"       },
        {BoxButtons::YesNoCancel, u"&Yes|&No|Cancel"},
    };
    for (const auto& c : cases) {
        ask(c.buttons, [&](QDialog& window) {
            EXPECT_EQ(buttonsOf(window).join(u'|'), c.texts);
            EXPECT_EQ(window.windowTitle(), u"Vorn");
            EXPECT_TRUE(window.findChildren<QPushButton*>().front()->isDefault());
        });
    }
}

TEST_F(Boxes, answerWithTheButton)
{
    const struct {
        BoxButtons buttons;
        const char* text;
        BoxAnswer answer;
    } cases[] = {
        {BoxButtons::Ok,          "OK",     BoxAnswer::Ok    },
        {BoxButtons::YesNo,       "&Yes",   BoxAnswer::Yes   },
        {BoxButtons::YesNo,       "&No",    BoxAnswer::No    },
        {BoxButtons::YesNoCancel, "&Yes",   BoxAnswer::Yes   },
        {BoxButtons::YesNoCancel, "&No",    BoxAnswer::No    },
        {BoxButtons::YesNoCancel, "Cancel", BoxAnswer::Cancel},
    };
    for (const auto& c : cases) {
        const BoxAnswer answer = ask(c.buttons, [&](QDialog& window) {
            clickText(window, QLatin1String(c.text));
            EXPECT_FALSE(window.isVisible());
        });
        EXPECT_EQ(answer, c.answer) << c.text;
    }
}

TEST_F(Boxes, answerToKeys)
{
    const struct {
        const char* behaviour;
        BoxButtons buttons;
        Qt::Key key;
        BoxAnswer answer;
    } cases[] = {
        {"Enter is the first button",         BoxButtons::YesNoCancel, Qt::Key_Return, BoxAnswer::Yes   },
        {"Escape does nothing",               BoxButtons::YesNoCancel, Qt::Key_Escape, BoxAnswer::Cancel},
        {"which is No where nothing else is", BoxButtons::YesNo,       Qt::Key_Escape, BoxAnswer::No    },
        {"and OK where nothing is asked",     BoxButtons::Ok,          Qt::Key_Escape, BoxAnswer::Ok    },
        {"a letter is enough",                BoxButtons::YesNoCancel, Qt::Key_N,      BoxAnswer::No    },
        {"for each button that has one",      BoxButtons::YesNo,       Qt::Key_Y,      BoxAnswer::Yes   },
    };
    for (const auto& c : cases) {
        const BoxAnswer answer = ask(c.buttons, [&](QDialog& window) {
            QTest::keyClick(window.focusWidget(), c.key);
            EXPECT_FALSE(window.isVisible()) << c.behaviour;
        });
        EXPECT_EQ(answer, c.answer) << c.behaviour;
    }
}

TEST_F(Boxes, areDeniedByTheCloseButtonOfTheFrame)
{
    const auto close = [](QDialog& window) { window.close(); };
    EXPECT_EQ(ask(BoxButtons::YesNoCancel, close), BoxAnswer::Cancel);
    EXPECT_EQ(ask(BoxButtons::YesNo, close), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::Ok, close), BoxAnswer::Ok);
}

TEST_F(Boxes, showPlainText)
{
    const std::u16string text = u"Could not find '<b>a & b</b>.vn'.\nTwo lines";
    ask(
        BoxButtons::Ok,
        [&](QDialog& window) {
            const auto* label = window.findChild<QLabel*>(QStringLiteral("text"));
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            EXPECT_EQ(label->text(), toQt(text));
        },
        text);
}

TEST_F(Boxes, breakWordsThatAreLongerThanALine)
{
    EXPECT_EQ(breakable(QStringLiteral("short words only")), u"short words only");
    EXPECT_EQ(breakable(QStringLiteral("abcdefghijklmnopqrst")), u"abcdefghijklmnopqrst");
    EXPECT_EQ(breakable(QStringLiteral("abcdefghijklmnopqrstu")), u"abcdefghijklmnopqrst\u200Bu");
    EXPECT_EQ(breakable(toQt(u"abcdefghijklmnopqrs\U0001F4C8x")),
              toQt(u"abcdefghijklmnopqrs\U0001F4C8\u200Bx"))
        << "a character stays whole";

    const std::u16string path = u"/home/" + std::u16string(300, u'x') + u".vn";
    ask(
        BoxButtons::YesNo,
        [&](QDialog& window) {
            EXPECT_LE(window.width(), 420);
            const auto* label = window.findChild<QLabel*>(QStringLiteral("text"));
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
        },
        path + u" already exists. Do you want to replace it?");
}

TEST_F(Boxes, scrollWhereTheyAreHigherThanTheScreen)
{
    std::u16string text;
    for (int line = 0; line < 500; ++line)
        text += u"line\n";
    ask(
        BoxButtons::YesNo,
        [](QDialog& window) {
            EXPECT_LE(window.height(), window.screen()->availableSize().height());
            for (const QPushButton* button : window.findChildren<QPushButton*>()) {
                EXPECT_LE(button->mapTo(&window, QPoint(0, button->height())).y(), window.height());
            }
        },
        text);
}

TEST_F(Boxes, belongToTheWindowThatAsks)
{
    QDialog* outer = nullptr;
    willDo(
        [&](QDialog& window) {
            outer = &window;
            user.messageBox(u"Vorn", u"inner", BoxButtons::Ok, BoxIcon::Warning);
        },
        [&](QDialog& window) { EXPECT_EQ(window.parentWidget(), outer); });
    user.messageBox(u"Vorn", u"outer", BoxButtons::Ok, BoxIcon::None);
    EXPECT_NE(outer, nullptr);
}

TEST_F(Boxes, answerNothingWhenTheirOwnerGoes)
{
    auto* owner = new QDialog;
    owner->show();
    QTimer::singleShot(0, qApp, [owner] { delete owner; });
    EXPECT_EQ(showMessageBox(owner, u"Vorn", u"text", BoxButtons::YesNoCancel, BoxIcon::None),
              BoxAnswer::Cancel);
}

// --- The help

// Takes what would go to the machine's viewer: it shows pages itself.
class Viewer {
public:
    Viewer() { QDesktopServices::setUrlHandler(QStringLiteral("file"), &pages_, "setSource"); }
    ~Viewer() { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    QUrl shown() const { return pages_.source(); }

private:
    QTextBrowser pages_;
};

class HelpFile : public DialogWindowTest {};

TEST_F(HelpFile, isFoundWhereAProgramHasIt)
{
    const struct {
        const char* behaviour;
        const char* file;
    } cases[] = {
        {"beside the program",            "bin/vorn.htm"           },
        {"where an installation puts it", "share/doc/vorn/vorn.htm"},
    };
    for (const auto& c : cases) {
        const TempFolder folder;
        std::filesystem::create_directories(folder.file("bin"));
        const QString program = QString::fromStdString(folder.file("bin"));
        EXPECT_EQ(helpFile(program), QString()) << c.behaviour;
        std::filesystem::create_directories(
            std::filesystem::path(folder.file(c.file)).parent_path());
        folder.write(c.file, "<html></html>");
        EXPECT_EQ(helpFile(program), QString::fromStdString(folder.file(c.file))) << c.behaviour;
    }
}

// The build that these tests are part of.
QString buildFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../.."));
}

TEST_F(HelpFile, isFoundInTheSourcesOfABuild)
{
    EXPECT_TRUE(helpFile(buildFolder()).endsWith(u"docs/help/vorn.htm"));
}

TEST_F(HelpFile, opensAtAnAnchor)
{
    const Viewer viewer;
    openHelpOf(buildFolder(), nullptr, u"fn_math_trig");
    EXPECT_EQ(viewer.shown().toLocalFile(), helpFile(buildFolder()));
    EXPECT_EQ(viewer.shown().fragment(), u"fn_math_trig");
    openHelpOf(buildFolder(), nullptr, u"");
    EXPECT_FALSE(viewer.shown().hasFragment());
    EXPECT_EQ(user.titles.size(), 0U);
}

TEST_F(HelpFile, saysSoWhereThereIsNone)
{
    const Viewer viewer;
    const TempFolder folder;
    user.comeSoon();
    willDo([](QDialog& window) {
        EXPECT_TRUE(window.findChild<QLabel*>(QStringLiteral("text"))
                        ->text()
                        .contains(QStringLiteral("vorn.htm")));
    });
    openHelpOf(QString::fromStdString(folder.file("")), nullptr, u"find");
    EXPECT_EQ(user.titles, std::vector<std::u16string>{u"Vorn"});
    EXPECT_EQ(viewer.shown(), QUrl());
}

} // namespace
} // namespace vorn::qt
