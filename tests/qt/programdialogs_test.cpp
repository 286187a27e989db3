// The windows of the dialogs that the program has: that each works, fits, and bears any user.
#include "qt/dialogs/dialogpanel.h"
#include "qt/dialogs/dialogwindow.h"
#include "qt/dialogs/help.h"
#include "qt/dialogs/samples.h"
#include "qt/dialogs/widgets.h"
#include "qt/dialoguser.h"

#include "core/input.h"
#include "core/workbook.h"
#include "editing/find.h"
#include "functions/table.h"
#include "shell/commandhandlers.h"
#include "shell/dialogs/ask.h"
#include "shell/dialogs/newformat.h"
#include "support/dice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTabBar>

namespace vorn::qt {
namespace {

// --- The dialogs of the program

class ProgramDialogs : public DialogWindowTest {
protected:
    static QString sample(QDialog& window)
    {
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (dynamic_cast<SampleWidget*>(label->parentWidget()) != nullptr)
                return label->text();
        }
        return {};
    }
};

TEST_F(ProgramDialogs, haveTheirOwnButtonAsOk)
{
    storeCellInput(1, 1, u"needle");
    willDo(
        [](QDialog& window) {
            EXPECT_EQ(window.findChild<QPushButton*>(QString::number(ButtonOk)), nullptr);
            EXPECT_TRUE(widget<QPushButton>(window, 1020).isDefault());
            auto& text = widget<QLineEdit>(window, 1019);
            EXPECT_EQ(window.focusWidget(), &text);
            QTest::keyClicks(&text, QStringLiteral("needle"));
            key(text, Qt::Key_Return);
            EXPECT_FALSE(window.isVisible());
        },
        [](QDialog& window) {
            EXPECT_EQ(workbook->currentSheet->selection.activeColumn, 1);
            EXPECT_EQ(window.findChild<QLineEdit*>(), nullptr);
            click(window, ButtonCancel);
        });
    findCommand();
    EXPECT_EQ(user.titles, (std::vector<std::u16string>{u"Find", u"Found"}));
    EXPECT_GE(findSettings.findBoxRect.left, 0) << "the box keeps its place";
}

TEST_F(ProgramDialogs, showErrorsOverThemselves)
{
    willDo(
        [](QDialog& window) {
            auto& text = widget<QLineEdit>(window, 1019);
            QTest::keyClicks(&text, QStringLiteral("?"));
            click(window, ButtonOk);
            EXPECT_TRUE(window.isVisible());
            EXPECT_EQ(window.focusWidget(), &text);
            text.selectAll();
            QTest::keyClicks(&text, QStringLiteral("C3"));
            click(window, ButtonOk);
        },
        [](QDialog& box) {
            EXPECT_NE(box.parentWidget(), nullptr);
            box.accept();
        });
    goToCommand();
    EXPECT_EQ(user.texts.size(), 1U);
    EXPECT_EQ(workbook->currentSheet->selection.activeRow, 2);
}

TEST_F(ProgramDialogs, renameAddAndDeleteSheets)
{
    const auto name = [](QDialog& window, const char16_t* text) {
        auto* line = widget<QListView>(window, 1029).viewport()->findChild<QLineEdit*>();
        ASSERT_NE(line, nullptr);
        line->setText(toQt(text));
        key(*line, Qt::Key_Return);
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    willDo(
        [&](QDialog& window) {
            auto& list = widget<QListView>(window, 1029);
            EXPECT_EQ(list.model()->rowCount(), 3);
            click(window, 1030);
            ASSERT_EQ(list.model()->rowCount(), 4);
            name(window, u"Fourth");
            EXPECT_EQ(list.model()->index(3, 0).data().toString(), u"Fourth");
            click(window, 1031);
            name(window, u"Sheet1"); // the box about it is the second window
            EXPECT_EQ(list.model()->index(3, 0).data().toString(), u"Fourth");
            key(list, Qt::Key_Home);
            click(window, 1032); // the third one
            EXPECT_EQ(list.model()->rowCount(), 3);
            click(window, ButtonOk);
        },
        [](QDialog& box) { box.reject(); }, [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Y); });
    sheetsCommand();
    ASSERT_EQ(user.texts.size(), 2U);
    EXPECT_EQ(user.texts[1], u"Delete sheet Sheet1?");
    ASSERT_EQ(workbook->sheets.size(), 3U);
    EXPECT_EQ(workbook->sheets[2]->name(), u"Fourth");
}

TEST_F(ProgramDialogs, helpWithTheCategoryOfFunctions)
{
    willDo([](QDialog& window) {
        auto& category = widget<QComboBox>(window, 1051);
        key(category, Qt::Key_End);
        EXPECT_EQ(category.currentText(), u"Database");
        auto& functions = widget<QListView>(window, 1056);
        key(functions, Qt::Key_Home);
        EXPECT_FALSE(widget<QLabel>(window, 1110).text().isEmpty());
        key(category, Qt::Key_F1);
    });
    EXPECT_EQ(askFunction(FunctionsOfFormulas), NoFunction);
    EXPECT_EQ(user.helpAnchors, std::vector<std::u16string>{u"fn_database"});
}

TEST_F(ProgramDialogs, showASampleOfTheFormatToBeMade)
{
    willDo([](QDialog& window) {
        widget<QComboBox>(window, 1053).lineEdit()->clear();
        QTest::keyClicks(widget<QComboBox>(window, 1053).lineEdit(), QStringLiteral("+"));
        key(widget<QComboBox>(window, 1019), Qt::Key_Home);
        key(widget<QComboBox>(window, 1019), Qt::Key_Down);
        auto& thousands = widget<QCheckBox>(window, 1052);
        if (!thousands.isChecked())
            thousands.click();
        EXPECT_TRUE(sample(window).startsWith(u"+1,234.0 ")) << sample(window).toStdString();
    });
    askNumberFormat(-1);
    willDo([](QDialog& window) {
        QString date;
        for (int part : {1063, 1055, 1064, 1065, 1066})
            date += widget<QComboBox>(window, part).currentText();
        EXPECT_EQ(sample(window), date);
        widget<QCheckBox>(window, 1058).click();
        EXPECT_EQ(sample(window), date + u' ' + widget<QComboBox>(window, 1053).currentText());
        widget<QCheckBox>(window, 1057).click();
        EXPECT_EQ(sample(window), widget<QComboBox>(window, 1053).currentText());
    });
    askDateFormat(-1);
}

TEST_F(ProgramDialogs, onlyTellAboutTheProgram)
{
    willDo([](QDialog& window) {
        EXPECT_EQ(widget<QLabel>(window, 1111).text(), u"Vorn");
        EXPECT_EQ(window.findChild<QPushButton*>(QString::number(ButtonCancel)), nullptr);
        key(window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    aboutCommand();
}

// --- All of them

// Opens each dialog that the program has.
void openEach()
{
    findCommand();
    replaceCommand();
    goToCommand();
    sheetsCommand();
    zoomCommand();
    optionsCommand();
    rowHeightCommand();
    columnWidthCommand();
    aboutCommand();
    formatCellsCommand();
    askFunction(FunctionsOfFormulas);
    askName();
    askQuickEntry();
    askNumberFormat(4);
    askDateFormat(-1);
}
constexpr int DialogCount = 15;

// Sees the models, and no windows.
class ModelUser : public SilentUserInterface {
public:
    ModelUser() { platform.userInterface = this; }
};

class HelpPage : public DialogWindowTest {
protected:
    HelpPage()
    {
        QFile file(helpFile(QCoreApplication::applicationDirPath() + QStringLiteral("/../..")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        page = QString::fromUtf8(file.readAll());
    }

    void expectPlace(std::u16string_view anchor)
    {
        EXPECT_EQ(page.count(QStringLiteral("id=\"%1\"").arg(toQt(anchor))), anchor.empty() ? 0 : 1)
            << toQt(anchor).toStdString();
    }

    QString page;
};

TEST_F(HelpPage, hasAPlaceForWhateverADialogAsksFor)
{
    int count = 0;
    ModelUser models;
    models.dialogUser = [&](DialogModel& dialog) {
        ++count;
        expectPlace(dialog.helpAnchor());
        for (DialogModel* each : dialog.pages())
            expectPlace(each->helpAnchor());
        if (dialog.number() != 129)
            return;
        const int categories = static_cast<int>(dialog.find(1051)->entries.size());
        for (int category = 0; category < categories; ++category) {
            dialog.choose(1051, category);
            expectPlace(dialog.helpAnchor());
        }
    };
    openEach();
    EXPECT_EQ(count, DialogCount);
}

TEST_F(HelpPage, tellsOfEveryFunction)
{
    for (int row = 0; row < FunctionRowCount; ++row) {
        const FunctionRow& function = FunctionTable[row];
        if (function.name.empty() || function.category == CategoryTask)
            continue;
        const QString usage = toQt(function.name) + u'(' + toQt(function.usage) + u')';
        EXPECT_TRUE(page.contains(QStringLiteral("<dt>") + usage + QStringLiteral("</dt>\n<dd>") +
                                  toQt(function.help)
                                      .trimmed()
                                      .toHtmlEscaped()
                                      .replace(QStringLiteral("&quot;"), QStringLiteral("\""))))
            << usage.toStdString();
    }
}

class DialogLayout : public DialogWindowTest {};

// Is there less room than the text needs?
bool isCut(const QWidget& part)
{
    if (const auto* button = qobject_cast<const QPushButton*>(&part); button != nullptr)
        return part.width() <
               part.fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + Margin;
    const auto* label = qobject_cast<const QLabel*>(&part);
    const bool hasText = qobject_cast<const QAbstractButton*>(&part) != nullptr ||
                         (label != nullptr && !label->wordWrap());
    return hasText && part.width() < part.minimumSizeHint().width();
}

void expectFits(const DialogWindow& window, QSize room, const std::string& name)
{
    EXPECT_LE(window.width(), room.width()) << name;
    EXPECT_LE(window.height(), room.height()) << name;
    const auto* body =
        static_cast<QAbstractScrollArea*>(window.front().parentWidget()->parentWidget());
    EXPECT_EQ(body->horizontalScrollBar()->maximum(), 0) << name << " scrolls sideways";
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
        EXPECT_GE(button->height(), ButtonHeight) << name << ' ' << button->text().toStdString();
        EXPECT_FALSE(isCut(*button)) << name << ' ' << button->text().toStdString();
    }
    for (const QWidget* part : window.findChildren<QWidget*>()) {
        // The tabs themselves scroll where there is little room.
        if (!part->isVisible() || part->window() != &window ||
            qobject_cast<QTabBar*>(part->parentWidget()) != nullptr)
            continue;
        const int right = part->mapTo(&window, QPoint(part->width(), 0)).x();
        if (qobject_cast<const QAbstractButton*>(part) != nullptr) {
            EXPECT_LE(right, window.width()) << name << ' ' << part->objectName().toStdString();
        }
        EXPECT_FALSE(isCut(*part)) << name << ' ' << part->objectName().toStdString();
    }
}

// A folder named by VORN_PICTURES gets pictures of all windows, for a look.
void keepPicture(QWidget& window, const std::string& name)
{
    const QString folder = qEnvironmentVariable("VORN_PICTURES");
    if (!folder.isEmpty())
        window.grab().save(folder + u'/' + QString::fromStdString(name) + QStringLiteral(".png"));
}

void lookAt(DialogModel& dialog, QSize room, const std::string& name)
{
    DialogWindow window(nullptr, dialog, room);
    window.show();
    QApplication::processEvents();
    const std::size_t count = window.panels().size();
    for (std::size_t page = 0; page < count; ++page) {
        if (count > 1)
            dialog.turnTo(static_cast<int>(page));
        QApplication::processEvents();
        const std::string whole = name + (count > 1 ? "-" + std::to_string(page) : "");
        expectFits(window, room, whole);
        keepPicture(window, whole);
    }
}

constexpr QSize Handheld(240, 320);
constexpr QSize Desktop(1280, 800);

TEST_F(DialogLayout, fitsEveryFormOnAHandheldAndOnADesktop)
{
    for (int number = 100; number < 200; ++number) {
        if (dialogForm(number) == nullptr)
            continue;
        for (QSize room : {Handheld, Desktop}) {
            DialogModel dialog(number);
            dialog.open();
            lookAt(dialog, room,
                   "form-" + std::to_string(number) + '-' + std::to_string(room.width()));
            EXPECT_EQ(dialog.observer, nullptr);
        }
    }
}

TEST_F(DialogLayout, fitsEveryDialogWithWhatStandsInIt)
{
    for (int row = 0; row < 30; ++row)
        storeCellInput(0, row, u"An entry of some length, number " + numberText(row, 0, KeepZeros));
    workbook->currentSheet->selection.select({31, 0}, {31, 0});
    ModelUser models;
    int count = 0;
    models.dialogUser = [&](DialogModel& dialog) {
        ++count;
        if (dialog.number() == 129)
            dialog.choose(1056, 0);
        for (QSize room : {Handheld, Desktop})
            lookAt(dialog, room,
                   "dialog-" + std::to_string(count) + '-' + std::to_string(room.width()));
    };
    openEach();
    EXPECT_EQ(count, DialogCount);
}

TEST_F(DialogLayout, leavesNoControlOut)
{
    for (int number = 100; number < 200; ++number) {
        if (dialogForm(number) == nullptr)
            continue;
        DialogModel dialog(number);
        dialog.open();
        DialogWindow window(nullptr, dialog, Desktop);
        window.show();
        for (const Control& control : dialog.controls()) {
            const QWidget& part = widget<QWidget>(window, control.form->id);
            EXPECT_TRUE(part.isVisible()) << number << ' ' << control.form->id;
            EXPECT_FALSE(part.size().isEmpty() && control.form->kind != ControlKind::Label)
                << number << ' ' << control.form->id;
        }
    }
}

// --- Whatever a user does

void doSomething(QDialog& window, Dice& dice)
{
    const auto parts = window.findChildren<QWidget*>();
    if (parts.isEmpty())
        return;
    QWidget* part = parts[dice.below(static_cast<int>(parts.size()))];
    if (!part->isVisible() || part->window() != &window || part->objectName() == u"help")
        return;
    const QPoint somewhere(dice.below(part->width() + 1), dice.below(part->height() + 1));
    static constexpr Qt::Key Keys[] = {
        Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Home,
        Qt::Key_End, Qt::Key_Space,  Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F2,
        Qt::Key_Tab, Qt::Key_Return, Qt::Key_Escape, Qt::Key_PageDown,  Qt::Key_9,
        Qt::Key_A,   Qt::Key_Minus,  Qt::Key_F1,
    };
    switch (dice.below(5)) {
    case 0:
        return QTest::mouseClick(part, Qt::LeftButton, {}, somewhere);
    case 1:
        return QTest::mouseDClick(part, Qt::LeftButton, {}, somewhere);
    case 2:
        return part->setFocus();
    default:
        return QTest::keyClick(part, Keys[dice.below(static_cast<int>(std::size(Keys)))]);
    }
}

TEST_F(ProgramDialogs, bearWhateverAUserDoes)
{
    constexpr int Rounds = 12, Deeds = 40;
    for (int row = 0; row < 5; ++row)
        storeCellInput(0, row, u"needle");
    int windows = 0;
    for (unsigned round = 0; round < Rounds; ++round) {
        Dice dice(round);
        int depth = 0;
        user.always = [&](QDialog& window) {
            ++windows;
            ++depth;
            const QPointer<QDialog> alive = &window;
            for (int deed = 0; deed < Deeds && depth < 4; ++deed) {
                if (alive.isNull() || !alive->isVisible())
                    break;
                doSomething(window, dice);
                // Lists that unfold are windows of their own, which wait for nobody.
                if (QWidget* unfolded = QApplication::activePopupWidget(); unfolded != nullptr)
                    unfolded->close();
            }
            --depth;
        };
        openEach();
        ASSERT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    EXPECT_GE(windows, int{Rounds} * DialogCount);
}

} // namespace
} // namespace vorn::qt
