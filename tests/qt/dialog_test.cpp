#include "qt/dialogs/dialogwindow.h"
#include "qt/dialoguser.h"
#include "qt/windowlook.h"

#include "core/workbook.h"
#include "shell/commandhandlers.h"
#include "shell/pagesheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

namespace vorn::qt {
namespace {

// --- A dialog with a control of every kind, whose rules a test writes

enum {
    Note = 10,
    Line = 11,
    Lines = 12,
    Plain = 13,
    Three = 14,
    One = 15,
    Two = 16,
    Other = 17,
    More = 18,
    Entries = 19,
    Folded = 20,
    Typed = 21,
    Labels = 22,
    Button = 23,
    Image = 24,
    Closed = 25,
};

// clang-format off
constexpr ControlForm ProbeControls[] = {
    {Note,    ControlKind::Label,     u""},
    {Line,    ControlKind::Edit,      u"Line:",   u"", 5},
    {Lines,   ControlKind::TextArea,  u"",        u"", 9},
    {Plain,   ControlKind::Box,       u"Box"},
    {Three,   ControlKind::TriBox,    u"R & D"},
    {One,     ControlKind::Radio,     u"One",     u"", 0, ControlStartsGroup},
    {Two,     ControlKind::Radio,     u"Two"},
    {Other,   ControlKind::Radio,     u"Other",   u"", 0, ControlStartsGroup},
    {More,    ControlKind::Radio,     u"More"},
    {Entries, ControlKind::List,      u"",        u"a|b|c", 0, ControlDoubleTapOk},
    {Folded,  ControlKind::Choice,    u"Folded:", u"x|y|z"},
    {Typed,   ControlKind::Combo,     u"Typed:",  u"left|right", 6},
    {Labels,  ControlKind::LabelList, u"",        u"Sheet1|Sheet2", 8},
    {Button,  ControlKind::Button,    u"Press & hold"},
    {Image,   ControlKind::Picture,   u""},
    {Closed,  ControlKind::Edit,      u"Closed:", u"", 0, ControlDisabled},
};
// clang-format on

constexpr DialogForm ProbeForm = {9, u"Probe [*] & co", u"probe_anchor", ProbeControls, ButtonOk};

constexpr ControlForm SmallControls[] = {
    {Line, ControlKind::Edit, u"Line:"}
};

class Probe : public DialogModel {
public:
    explicit Probe(const DialogForm& form = ProbeForm) : DialogModel(form) {}

    std::function<void(Probe&)> onOpen;
    std::function<void(Probe&, int)> onChange;
    std::function<void(Probe&, int)> onPress;
    std::vector<int> changes;
    std::vector<int> buttons;
    std::vector<std::u16string> labels;

    // What rules do, for the tests to do it.
    using DialogModel::beginLabelEdit;
    using DialogModel::close;
    using DialogModel::enable;
    using DialogModel::select;
    using DialogModel::setCaret;
    using DialogModel::setEntries;
    using DialogModel::setEntry;
    using DialogModel::setFocus;
    using DialogModel::setText;
    using DialogModel::showBox;

protected:
    void opened() override
    {
        if (onOpen)
            onOpen(*this);
    }
    void changed(int control) override
    {
        changes.push_back(control);
        if (onChange)
            onChange(*this, control);
    }
    void pressed(int button) override
    {
        buttons.push_back(button);
        if (onPress)
            onPress(*this, button);
        else
            close(button);
    }
    void labelEdited(int, std::u16string_view label) override { labels.emplace_back(label); }
};

class Dialogs : public DialogWindowTest {
protected:
    // Runs the probe; `step` is done in its window.
    bool run(const DialogUser::Step& step)
    {
        willDo(step);
        return runDialog(probe);
    }

    Probe probe;
};

// --- What the user does, and what the rules do

TEST_F(Dialogs, showTheTitleAndTheTextsOfTheForm)
{
    probe.onOpen = [](Probe& it) { it.setText(Note, u"a <b>note</b>"); };
    run([](QDialog& window) {
        EXPECT_EQ(widget<QLabel>(window, Note).text(), u"a <b>note</b>");
        EXPECT_EQ(widget<QLabel>(window, Note).textFormat(), Qt::PlainText);
        EXPECT_EQ(widget<QCheckBox>(window, Three).text(), u"R && D") << "no key is named so";
        EXPECT_EQ(widget<QPushButton>(window, Button).text(), u"Press && hold");
        EXPECT_EQ(widget<QLineEdit>(window, Line).accessibleName(), u"Line:");
        EXPECT_EQ(window.windowTitle(), u"Probe [*][*] & co") << "which is shown with one";
    });
}

TEST_F(Dialogs, passOnWhatIsTyped)
{
    run([this](QDialog& window) {
        auto& line = widget<QLineEdit>(window, Line);
        QTest::keyClicks(&line, QStringLiteral("ab"));
        EXPECT_EQ(probe.find(Line)->text, u"ab");
        key(line, Qt::Key_Home);
        EXPECT_EQ(probe.find(Line)->caret.start, 0);
        QTest::keyClicks(&line, QStringLiteral("cd"));
        EXPECT_EQ(probe.find(Line)->text, u"cdab") << "the caret stays where the user has it";
        EXPECT_EQ(line.text(), u"cdab");
        EXPECT_EQ(line.cursorPosition(), 2);
        EXPECT_EQ(probe.find(Line)->caret.end, 2);
        QTest::keyClicks(&line, QStringLiteral("efgh"));
        EXPECT_EQ(probe.find(Line)->text, u"cdeab") << "five characters are all that it takes";
        EXPECT_EQ(line.text(), u"cdeab");
    });
    EXPECT_EQ(probe.changes, (std::vector<int>(5, int{Line})));
}

TEST_F(Dialogs, showWhatTheRulesMakeOfATextAndItsCaret)
{
    probe.onChange = [](Probe& it, int) {
        it.setText(Line, u"rule");
        it.setCaret(Line, {1, 3});
    };
    run([this](QDialog& window) {
        auto& line = widget<QLineEdit>(window, Line);
        QTest::keyClicks(&line, QStringLiteral("x"));
        EXPECT_EQ(line.text(), u"rule");
        EXPECT_EQ(line.selectedText(), u"ul");
        EXPECT_EQ(probe.find(Line)->caret.start, 1);
        EXPECT_EQ(probe.find(Line)->caret.end, 3);
    });
    EXPECT_EQ(probe.changes.size(), 1U) << "what a rule sets is no change";
}

TEST_F(Dialogs, selectTheTextInWhichTheUserBegins)
{
    const struct {
        const char* behaviour;
        CaretRange caret;
        QString selected;
    } cases[] = {
        {"a text with the caret at its end is typed over", {3, 3}, QStringLiteral("abc")},
        {"a caret elsewhere stays there",                  {1, 1}, QString()            },
        {"and so does a selection",                        {0, 2}, QStringLiteral("ab") },
    };
    for (const auto& c : cases) {
        Probe begun;
        begun.onOpen = [&](Probe& it) {
            it.setText(Line, u"abc");
            it.setCaret(Line, c.caret);
            it.setFocus(Line);
        };
        willDo([&](QDialog& window) {
            auto& line = widget<QLineEdit>(window, Line);
            EXPECT_EQ(window.focusWidget(), &line);
            EXPECT_EQ(line.selectedText(), c.selected) << c.behaviour;
        });
        runDialog(begun);
    }
}

TEST_F(Dialogs, passOnTextsOfSeveralLines)
{
    probe.onOpen = [](Probe& it) { it.setText(Lines, u"a\r\nb"); };
    run([this](QDialog& window) {
        auto& lines = widget<QPlainTextEdit>(window, Lines);
        EXPECT_EQ(lines.toPlainText(), u"a\nb");
        EXPECT_EQ(probe.find(Lines)->text, u"a\r\nb") << "as long as nobody types";
        EXPECT_EQ(lines.textCursor().position(), 3);
        key(lines, Qt::Key_Left);
        EXPECT_EQ(probe.find(Lines)->caret.start, 3) << "the line end counts two";
        QTest::keyClicks(&lines, QStringLiteral("x"));
        EXPECT_EQ(probe.find(Lines)->text, u"a\nxb");
        EXPECT_EQ(probe.find(Lines)->caret.start, 3);
        key(lines, Qt::Key_Return);
        EXPECT_EQ(probe.find(Lines)->text, u"a\nx\nb") << "Enter is a line end here";
        QTest::keyClicks(&lines, QStringLiteral("123456789"));
        EXPECT_EQ(probe.find(Lines)->text.size(), 9U);
        EXPECT_EQ(lines.toPlainText().size(), 9);
    });
}

TEST_F(Dialogs, showWhereTheRulesPutTheCaretOfSeveralLines)
{
    probe.onPress = [](Probe& it, int) {
        it.setText(Lines, u"if()");
        it.setCaret(Lines, {3, 3});
        it.setFocus(Lines);
    };
    run([](QDialog& window) {
        click(window, Button);
        auto& lines = widget<QPlainTextEdit>(window, Lines);
        EXPECT_EQ(lines.toPlainText(), u"if()");
        EXPECT_EQ(lines.textCursor().position(), 3);
        EXPECT_EQ(window.focusWidget(), &lines);
    });
}

TEST_F(Dialogs, leaveBoxesToTheModel)
{
    probe.onOpen = [](Probe& it) { it.showBox(Three, BoxState::Mixed); };
    run([this](QDialog& window) {
        auto& box = widget<QCheckBox>(window, Plain);
        box.click();
        EXPECT_EQ(probe.find(Plain)->box, BoxState::On);
        EXPECT_EQ(box.checkState(), Qt::Checked);
        key(box, Qt::Key_Space);
        EXPECT_EQ(probe.find(Plain)->box, BoxState::Off);
        EXPECT_EQ(box.checkState(), Qt::Unchecked);

        auto& three = widget<QCheckBox>(window, Three);
        EXPECT_EQ(three.checkState(), Qt::PartiallyChecked);
        three.click();
        EXPECT_EQ(probe.find(Three)->box, BoxState::Off) << "mixed goes off";
        EXPECT_EQ(three.checkState(), Qt::Unchecked);
        three.click();
        EXPECT_EQ(probe.find(Three)->box, BoxState::On);
        EXPECT_EQ(three.checkState(), Qt::Checked);
        three.click();
        EXPECT_EQ(probe.find(Three)->box, BoxState::Off) << "and never back to mixed";
    });
    EXPECT_EQ(probe.changes, (std::vector<int>{Plain, Plain, Three, Three, Three}));
}

TEST_F(Dialogs, haveOneRadioButtonOfAGroupOn)
{
    run([this](QDialog& window) {
        const auto shown = [&] {
            std::vector<bool> on;
            for (int button : {One, Two, Other, More}) {
                on.push_back(widget<QRadioButton>(window, button).isChecked());
                EXPECT_EQ(on.back(), probe.find(button)->box == BoxState::On) << button;
            }
            return on;
        };
        EXPECT_EQ(shown(), (std::vector<bool>{false, false, false, false}));
        widget<QRadioButton>(window, One).click();
        EXPECT_EQ(shown(), (std::vector<bool>{true, false, false, false}));
        widget<QRadioButton>(window, More).click();
        EXPECT_EQ(shown(), (std::vector<bool>{true, false, false, true}));
        widget<QRadioButton>(window, Two).click();
        EXPECT_EQ(shown(), (std::vector<bool>{false, true, false, true}));
        widget<QRadioButton>(window, Two).click();
        EXPECT_EQ(shown(), (std::vector<bool>{false, true, false, true})) << "none goes off";
        widget<QRadioButton>(window, Two).setFocus();
        key(widget<QRadioButton>(window, Two), Qt::Key_Left);
        EXPECT_EQ(shown(), (std::vector<bool>{true, false, false, true})) << "arrows go round";
    });
}

TEST_F(Dialogs, showTheRadioButtonThatARuleTurnsOn)
{
    probe.onOpen = [](Probe& it) { it.showBox(One, true); };
    probe.onPress = [](Probe& it, int) { it.showBox(Two, true); };
    run([](QDialog& window) {
        EXPECT_TRUE(widget<QRadioButton>(window, One).isChecked());
        click(window, Button);
        EXPECT_FALSE(widget<QRadioButton>(window, One).isChecked());
        EXPECT_TRUE(widget<QRadioButton>(window, Two).isChecked());
    });
    EXPECT_EQ(probe.changes, std::vector<int>{});
}

TEST_F(Dialogs, chooseFromLists)
{
    run([this](QDialog& window) {
        auto& list = widget<QListView>(window, Entries);
        list.setFocus();
        EXPECT_FALSE(list.selectionModel()->hasSelection()) << "coming there chooses nothing";
        EXPECT_EQ(probe.find(Entries)->selected, NoEntry);
        key(list, Qt::Key_Down);
        EXPECT_EQ(probe.find(Entries)->selected, 0) << "the first key goes to the first entry";
        key(list, Qt::Key_Down);
        EXPECT_EQ(probe.find(Entries)->selected, 1);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(2, 0)).center());
        EXPECT_EQ(probe.find(Entries)->selected, 2);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list.visualRect(list.model()->index(2, 0)).center());
        EXPECT_TRUE(list.selectionModel()->isSelected(list.model()->index(2, 0)))
            << "by hand nothing is left without a choice";

        auto& folded = widget<QComboBox>(window, Folded);
        EXPECT_EQ(folded.currentIndex(), -1);
        key(folded, Qt::Key_Down);
        EXPECT_EQ(probe.find(Folded)->selected, 0);
        key(folded, Qt::Key_End);
        EXPECT_EQ(probe.find(Folded)->selected, 2);
        EXPECT_EQ(folded.currentText(), u"z");
    });
    EXPECT_EQ(probe.changes, (std::vector<int>{Entries, Entries, Entries, Folded, Folded}));
}

TEST_F(Dialogs, showWhatRulesPutIntoLists)
{
    probe.onChange = [](Probe& it, int control) {
        if (control != Folded)
            return;
        it.setEntries(Entries, {u"p", u"q", u"r", u"s"});
        it.select(Entries, 3);
        it.setEntries(Folded, {u"only"});
    };
    run([](QDialog& window) {
        auto& list = widget<QListView>(window, Entries);
        auto& folded = widget<QComboBox>(window, Folded);
        key(folded, Qt::Key_Down);
        ASSERT_EQ(list.model()->rowCount(), 4);
        EXPECT_EQ(list.currentIndex().data().toString(), u"s");
        EXPECT_EQ(folded.count(), 1);
        EXPECT_EQ(folded.currentIndex(), -1);
    });
    EXPECT_EQ(probe.changes, std::vector<int>{Folded});
}

TEST_F(Dialogs, doubleTapsAreOkWhereTheFormSaysSo)
{
    EXPECT_TRUE(run([](QDialog& window) {
        auto& list = widget<QListView>(window, Entries);
        const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
        EXPECT_FALSE(window.isVisible());
    }));
    EXPECT_EQ(probe.find(Entries)->selected, 1);
    EXPECT_EQ(probe.buttons, std::vector<int>{ButtonOk});
}

TEST_F(Dialogs, takeWhatIsTypedInACombo)
{
    run([this](QDialog& window) {
        auto& combo = widget<QComboBox>(window, Typed);
        key(combo, Qt::Key_Down);
        EXPECT_EQ(probe.find(Typed)->text, u"left");
        EXPECT_EQ(probe.find(Typed)->selected, 0);
        combo.lineEdit()->selectAll();
        QTest::keyClicks(combo.lineEdit(), QStringLiteral("RIGHT"));
        EXPECT_EQ(probe.find(Typed)->text, u"RIGHT");
        EXPECT_EQ(combo.currentText(), u"RIGHT") << "not completed, and not matched";
        EXPECT_EQ(probe.find(Typed)->selected, NoEntry);
        key(*combo.lineEdit(), Qt::Key_Home);
        QTest::keyClicks(combo.lineEdit(), QStringLiteral("xyz"));
        EXPECT_EQ(probe.find(Typed)->text, u"xRIGHT") << "six characters";
        EXPECT_EQ(combo.lineEdit()->cursorPosition(), 1);
        EXPECT_EQ(combo.count(), 2) << "what is typed becomes no entry";
    });
}

TEST_F(Dialogs, renameInPlace)
{
    probe.onOpen = [](Probe& it) { it.select(Labels, 1); };
    probe.onPress = [](Probe& it, int button) {
        if (button == Button)
            it.beginLabelEdit(Labels);
        else
            it.close(button);
    };
    run([this](QDialog& window) {
        auto& list = widget<QListView>(window, Labels);
        const auto editor = [&] {
            auto* line = list.viewport()->findChild<QLineEdit*>();
            return line != nullptr && line->isVisible() ? line : nullptr;
        };
        click(window, Button);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editor()->text(), u"Sheet2");
        EXPECT_EQ(editor()->selectedText(), u"Sheet2") << "what is typed replaces it";
        QTest::keyClicks(editor(), QStringLiteral("abcdefghijk"));
        EXPECT_EQ(editor()->text(), u"abcdefgh") << "eight characters";
        key(*editor(), Qt::Key_Return);
        QApplication::processEvents();
        EXPECT_TRUE(window.isVisible()) << "this Enter ends the renaming only";
        EXPECT_EQ(probe.labels, std::vector<std::u16string>{u"abcdefgh"});
        EXPECT_EQ(probe.labelInEdit(), NoControl);
        EXPECT_EQ(list.model()->index(1, 0).data().toString(), u"Sheet2")
            << "the rule did not take it";

        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        key(list, Qt::Key_F2);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(probe.labelInEdit(), int{Labels});
        QTest::keyClicks(editor(), QStringLiteral("x"));
        key(*editor(), Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "and this Escape";
        EXPECT_EQ(probe.labels.size(), 1U);
        EXPECT_EQ(probe.labelInEdit(), NoControl);
    });
}

TEST_F(Dialogs, endARenamingWhenTheUserGoesElsewhere)
{
    probe.onOpen = [](Probe& it) { it.select(Labels, 0); };
    probe.onPress = [](Probe& it, int button) {
        if (button == Button)
            it.beginLabelEdit(Labels);
        else
            it.close(button);
    };
    run([this](QDialog& window) {
        auto& list = widget<QListView>(window, Labels);
        click(window, Button);
        auto* line = list.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(line, nullptr);
        QTest::keyClicks(line, QStringLiteral("new"));
        widget<QLineEdit>(window, Line).setFocus();
        EXPECT_EQ(probe.labels, std::vector<std::u16string>{u"new"});
    });
}

TEST_F(Dialogs, pressButtons)
{
    const auto Tap = Qt::Key_unknown;
    const struct {
        const char* behaviour;
        int control;
        Qt::Key key;
        int button; // that the rules are told of; ButtonCancel for none
    } cases[] = {
        {"a button of the dialog", Button,       Tap,            Button      },
        {"OK",                     ButtonOk,     Tap,            ButtonOk    },
        {"Cancel",                 ButtonCancel, Tap,            ButtonCancel},
        {"Enter in a line is OK",  Line,         Qt::Key_Return, ButtonOk    },
        {"and in a list",          Entries,      Qt::Key_Enter,  ButtonOk    },
        {"and on a box",           Plain,        Qt::Key_Return, ButtonOk    },
        {"and on a combo",         Typed,        Qt::Key_Return, ButtonOk    },
        {"Escape is Cancel",       Line,         Qt::Key_Escape, ButtonCancel},
    };
    for (const auto& c : cases) {
        Probe pressed;
        willDo([&](QDialog& window) {
            if (c.key == Tap)
                click(window, c.control);
            else
                key(widget<QWidget>(window, c.control), c.key);
            EXPECT_FALSE(window.isVisible()) << c.behaviour;
        });
        EXPECT_EQ(runDialog(pressed), c.button != ButtonCancel) << c.behaviour;
        EXPECT_EQ(pressed.closedBy(), c.button) << c.behaviour;
        EXPECT_EQ(pressed.buttons.size(), c.button == ButtonCancel ? 0U : 1U) << c.behaviour;
    }
}

TEST_F(Dialogs, areCancelledByTheCloseButtonOfTheFrame)
{
    EXPECT_FALSE(run([](QDialog& window) {
        window.close();
        EXPECT_FALSE(window.isVisible());
    }));
    EXPECT_EQ(probe.buttons, std::vector<int>{});
}

TEST_F(Dialogs, stayOpenUntilTheModelCloses)
{
    probe.onPress = [](Probe& it, int button) {
        it.setFocus(Line);
        if (it.find(Line)->text == u"good")
            it.close(button);
    };
    EXPECT_TRUE(run([](QDialog& window) {
        click(window, ButtonOk);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(window.focusWidget(), &widget<QLineEdit>(window, Line));
        QTest::keyClicks(&widget<QLineEdit>(window, Line), QStringLiteral("good"));
        click(window, ButtonOk);
        EXPECT_FALSE(window.isVisible());
    }));
}

TEST_F(Dialogs, haveNoWindowIfTheyCloseAtOnce)
{
    probe.onOpen = [](Probe& it) { it.close(ButtonOk); };
    EXPECT_TRUE(runDialog(probe));
    EXPECT_EQ(user.titles, std::vector<std::u16string>{});
    runDialogWindow(nullptr, probe);
    EXPECT_EQ(probe.observer, nullptr);
}

TEST_F(Dialogs, doNotLetDisabledControlsBeUsed)
{
    probe.onPress = [](Probe& it, int) {
        it.enable(Closed, true);
        it.enable(Line, false);
        it.enable(Button, false);
    };
    run([this](QDialog& window) {
        EXPECT_FALSE(widget<QLineEdit>(window, Closed).isEnabled());
        EXPECT_TRUE(widget<QLineEdit>(window, Line).isEnabled());
        click(window, Button);
        EXPECT_TRUE(widget<QLineEdit>(window, Closed).isEnabled());
        EXPECT_FALSE(widget<QLineEdit>(window, Line).isEnabled());
        click(window, Button);
        EXPECT_EQ(probe.buttons.size(), 1U) << "the button is one of them now";
    });
}

TEST_F(Dialogs, forgetTheModelWhenTheWindowGoes)
{
    const DialogUser::Step seen = [this](QDialog&) { EXPECT_NE(probe.observer, nullptr); };
    run(seen);
    EXPECT_EQ(probe.observer, nullptr);
    probe.setText(Line, u"nobody looks");
}

TEST_F(Dialogs, canOpenOthersFromARule)
{
    probe.onPress = [this](Probe& it, int button) {
        if (button == ButtonOk)
            return it.close(button);
        Probe inner;
        EXPECT_TRUE(runDialog(inner));
        it.setText(Line, inner.find(Line)->text);
    };
    QDialog* outer = nullptr;
    willDo(
        [&](QDialog& window) {
            outer = &window;
            click(window, Button);
            EXPECT_EQ(widget<QLineEdit>(window, Line).text(), u"deep");
            click(window, ButtonOk);
        },
        [&](QDialog& window) {
            EXPECT_NE(&window, outer);
            EXPECT_EQ(window.parentWidget(), outer) << "it belongs to the one that asked";
            outer->reject();
            EXPECT_TRUE(outer->isVisible()) << "which waits for it";
            QTest::keyClicks(&widget<QLineEdit>(window, Line), QStringLiteral("deep"));
            click(window, ButtonOk);
        });
    EXPECT_TRUE(runDialog(probe));
    EXPECT_EQ(user.titles.size(), 2U);
}

TEST_F(Dialogs, openTheHelpAtTheirAnchor)
{
    run([](QDialog& window) {
        key(widget<QLineEdit>(window, Line), Qt::Key_F1);
        QTest::mouseClick(window.findChild<QWidget*>(QStringLiteral("help")), Qt::LeftButton);
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_EQ(user.helpAnchors, (std::vector<std::u16string>{u"probe_anchor", u"probe_anchor"}));
}

TEST_F(Dialogs, goWithTheirOwnerIfItGoes)
{
    auto* owner = new QDialog;
    owner->show();
    QTimer::singleShot(0, qApp, [owner] { delete owner; });
    probe.open();
    runDialogWindow(owner, probe);
    EXPECT_EQ(probe.observer, nullptr);
    EXPECT_TRUE(probe.isOpen());
}

TEST_F(Dialogs, keepTheirPlaceIfTheModelHasOne)
{
    ScreenRect place;
    const auto runSmall = [&](const DialogUser::Step& step) {
        Probe small({9, u"Small", u"", SmallControls});
        small.place = &place;
        willDo(step);
        runDialog(small);
    };
    runSmall([](QDialog& window) { window.move(31, 43); });
    EXPECT_EQ(place.left, 31);
    EXPECT_EQ(place.top, 43);
    EXPECT_GT(place.right, place.left);
    EXPECT_GT(place.bottom, place.top);
    runSmall([](QDialog& window) { EXPECT_EQ(window.pos(), QPoint(31, 43)); });
    place = {5000, 5000, 5100, 5100};
    runSmall([](QDialog& window) {
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry()))
            << "a place that the screen does not have";
    });
}

// --- How it looks

// Dialogs in the style of the program, which the other tests do without.
class DialogLook : public Dialogs {
protected:
    DialogLook()
    {
        useWindowLook();
        probe.onOpen = [](Probe& it) { it.setFocus(Line); };
    }
    ~DialogLook() override
    {
        QApplication::setStyle(style);
        QApplication::setPalette(QPalette());
        QApplication::setFont(font);
    }

    static QColor highlight() { return QApplication::palette().color(QPalette::Highlight); }

    // The colour behind an entry, right of its text.
    static QColor entryColour(QListView& list, int row)
    {
        const QRect area = list.visualRect(list.model()->index(row, 0));
        return list.viewport()->grab().toImage().pixelColor(area.right() - 4, area.center().y());
    }

    static QColor frameColour(QWidget& list)
    {
        return list.grab().toImage().pixelColor(list.width() / 2, 0);
    }

    const QString style = QApplication::style()->objectName();
    const QFont font = QApplication::font();
};

TEST_F(DialogLook, showsTheFocusBeforeAnyKey)
{
    for (const int control : {Entries, Folded, Button, Plain}) {
        probe.onOpen = [control](Probe& it) { it.setFocus(control); };
        run([control](QDialog& window) {
            auto& part = widget<QWidget>(window, control);
            EXPECT_TRUE(part.hasFocus()) << control;
            const QImage with = part.grab().toImage();
            widget<QLineEdit>(window, Line).setFocus();
            EXPECT_NE(with, part.grab().toImage()) << control;
        });
    }
}

TEST_F(DialogLook, framesTheListThatHasTheKeys)
{
    run([](QDialog& window) {
        auto& list = widget<QListView>(window, Entries);
        EXPECT_NE(frameColour(list), highlight());
        list.setFocus();
        EXPECT_FALSE(list.currentIndex().isValid());
        EXPECT_EQ(frameColour(list), highlight()) << "though there is no entry to show it";
        const QString pictures = qEnvironmentVariable("VORN_PICTURES");
        if (!pictures.isEmpty())
            window.grab().save(pictures + QStringLiteral("/list-with-keys.png"));
    });
}

TEST_F(DialogLook, showsWhatIsChosenInGreyWhereTheKeysAreNot)
{
    run([](QDialog& window) {
        auto& list = widget<QListView>(window, Entries);
        list.setFocus();
        key(list, Qt::Key_Down);
        EXPECT_GT(entryColour(list, 0).saturation(), 128) << "blue";
        widget<QLineEdit>(window, Line).setFocus();
        const QColor grey = entryColour(list, 0);
        EXPECT_EQ(grey.saturation(), 0) << grey.name().toStdString();
        EXPECT_NE(grey, entryColour(list, 1)) << "still to be told from the others";
    });
}

TEST_F(DialogLook, tellsTheButtonWithTheKeysFromTheDefaultOne)
{
    run([](QDialog& window) {
        auto& button = widget<QPushButton>(window, ButtonOk);
        EXPECT_TRUE(button.isDefault());
        EXPECT_FALSE(button.hasFocus());
        const QImage without = button.grab().toImage();
        button.setFocus();
        EXPECT_NE(button.grab().toImage(), without);
    });
}

TEST_F(DialogLook, namesFacesOfSymbolsInLetters)
{
    std::vector<std::u16string> faces;
    for (const QString& family : QFontDatabase::families())
        faces.push_back(fromQt(family));
    Probe fonts(*dialogForm(135));
    fonts.onOpen = [&faces](Probe& it) { it.setEntries(1005, faces); };
    willDo([](QDialog& window) {
        const auto& box = widget<QComboBox>(window, 1005);
        int shown = 0;
        for (int entry = 0; entry < box.count(); ++entry) {
            const QVariant own = box.itemData(entry, Qt::FontRole);
            const auto systems = QFontDatabase::writingSystems(box.itemText(entry));
            if (!systems.contains(QFontDatabase::Latin)) {
                EXPECT_FALSE(own.isValid()) << box.itemText(entry).toStdString();
            }
            shown += own.isValid() ? 1 : 0;
        }
        EXPECT_GT(shown, 0) << "letters are shown in the face itself";
    });
    runDialog(fonts);
}

TEST_F(DialogLook, keepsTheEndOfALongEntry)
{
    run([](QDialog& window) {
        auto& box = widget<QComboBox>(window, Folded);
        box.setFixedWidth(120);
        box.setCurrentIndex(0);
        QImage pictures[2];
        for (int end = 0; end < 2; ++end) {
            box.setItemText(0, QString(80, u'a') + (end == 0 ? u'l' : u'W'));
            pictures[end] = box.grab().toImage();
        }
        EXPECT_NE(pictures[0], pictures[1]);
    });
}

// Looks at each dialog in a window on a small screen.
class HandheldUser : public SilentUserInterface {
public:
    std::function<void(DialogWindow&)> look;

    void runDialog(DialogModel& dialog) override
    {
        DialogWindow window(nullptr, dialog, QSize(240, 320));
        window.show();
        QApplication::processEvents();
        look(window);
    }
};

TEST_F(DialogLook, hasRoomForAllTabsOnAHandheld)
{
    int count = 0;
    HandheldUser handheld;
    handheld.look = [&count](DialogWindow& window) {
        ++count;
        const QTabBar& bar = *window.findChild<QTabWidget*>()->tabBar();
        ASSERT_EQ(bar.count(), 5);
        EXPECT_LE(window.width(), 240);
        EXPECT_GE(bar.tabRect(0).left(), 0);
        EXPECT_LE(bar.tabRect(4).right(), bar.width());
        for (const auto* arrow : bar.findChildren<QToolButton*>())
            EXPECT_FALSE(arrow->isVisible());
        const QString pictures = qEnvironmentVariable("VORN_PICTURES");
        if (!pictures.isEmpty())
            window.grab().save(pictures + QStringLiteral("/tabs-240.png"));
    };
    platform.userInterface = &handheld;
    formatCellsCommand();
    platform.userInterface = &user;
    EXPECT_EQ(count, 1);
}

// --- Sheets of pages

class Pages : public DialogWindowTest {
protected:
    static QTabWidget& tabs(QDialog& window) { return *window.findChild<QTabWidget*>(); }
};

TEST_F(Pages, areTabs)
{
    application.formatCellsPage = 2;
    willDo([this](QDialog& window) {
        ASSERT_EQ(tabs(window).count(), 5);
        EXPECT_EQ(tabs(window).tabText(0), u"Format");
        EXPECT_EQ(tabs(window).tabText(4), u"Protect");
        EXPECT_EQ(tabs(window).currentIndex(), 2) << "the one that was in front last";
        key(*tabs(window).tabBar(), Qt::Key_Right);
        EXPECT_EQ(tabs(window).currentIndex(), 3);
        key(window, Qt::Key_F1);
        click(window, ButtonOk);
        EXPECT_FALSE(window.isVisible());
    });
    formatCellsCommand();
    EXPECT_EQ(application.formatCellsPage, 3);
    EXPECT_EQ(user.helpAnchors, std::vector<std::u16string>{u"format"});
}

TEST_F(Pages, areConfirmedTogether)
{
    willDo([](QDialog& window) {
        auto& view = *window.findChild<QWidget*>(QStringLiteral("127"));
        auto& general = *window.findChild<QWidget*>(QStringLiteral("152"));
        widget<QCheckBox>(view, 1027).click();
        key(widget<QComboBox>(general, 1081), Qt::Key_End);
        click(window, ButtonOk);
    });
    optionsCommand();
    EXPECT_FALSE(workbook->currentSheet->showGridlines);
    EXPECT_EQ(application.moveAfterEnter, MoveDown);
}

TEST_F(Pages, comeToTheFrontIfTheyRefuse)
{
    static constexpr int Numbers[] = {31, 32};
    const PageSheetForm SheetForm = {u"Sheet", Numbers};
    Probe good({31, u"Good", u"", SmallControls});
    Probe bad({32, u"Bad", u"", SmallControls});
    bad.onPress = [](Probe& it, int button) {
        it.setFocus(Line);
        if (!it.find(Line)->text.empty())
            it.close(button);
    };
    int page = 0;
    PageSheet sheet(SheetForm, {&good, &bad}, page);
    willDo([](QDialog& window) {
        click(window, ButtonOk);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(tabs(window).currentIndex(), 1);
        auto& line = widget<QLineEdit>(*window.findChild<QWidget*>(QStringLiteral("32")), Line);
        EXPECT_EQ(window.focusWidget(), &line);
        QTest::keyClicks(&line, QStringLiteral("x"));
        click(window, ButtonOk);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_TRUE(runDialog(sheet));
    EXPECT_EQ(good.buttons.size(), 2U);
    for (const DialogModel* each :
         {static_cast<DialogModel*>(&sheet), static_cast<DialogModel*>(&good),
          static_cast<DialogModel*>(&bad)})
        EXPECT_EQ(each->observer, nullptr);
}

} // namespace
} // namespace vorn::qt
