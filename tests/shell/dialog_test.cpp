#include "shell/dialog.h"

#include "core/error.h"
#include "platform/platform.h"
#include "shell/pagesheet.h"
#include "support/testplatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>

namespace vorn {
namespace {

constexpr int Name = 11, Notes = 12, Flag = 21, Third = 22, RadioA = 31, RadioB = 32, RadioC = 33,
              RadioD = 34, Colours = 41, Fruits = 42, Sizes = 43, Labels = 44, Go = 51, Off = 52,
              Help = 61;

constexpr ControlForm Controls[] = {
    {Name,    ControlKind::Edit,      u"Name:",  u"",               5, 0                 },
    {Notes,   ControlKind::TextArea,  u"",       u"",               0, 0                 },
    {Flag,    ControlKind::Box,       u"Flag",   u"",               0, 0                 },
    {Third,   ControlKind::TriBox,    u"Third",  u"",               0, 0                 },
    {RadioA,  ControlKind::Radio,     u"A",      u"",               0, ControlStartsGroup},
    {RadioB,  ControlKind::Radio,     u"B",      u"",               0, 0                 },
    {RadioC,  ControlKind::Radio,     u"C",      u"",               0, ControlStartsGroup},
    {RadioD,  ControlKind::Radio,     u"D",      u"",               0, 0                 },
    {Colours, ControlKind::Choice,    u"Colour", u"Red|Green|Blue", 0, 0                 },
    {Fruits,  ControlKind::List,      u"",       u"Apple|Pear",     0, ControlDoubleTapOk},
    {Sizes,   ControlKind::Combo,     u"Size:",  u"8|10|12",        0, 0                 },
    {Labels,  ControlKind::LabelList, u"",       u"One|Two",        3, 0                 },
    {Go,      ControlKind::Button,    u"Go",     u"",               0, 0                 },
    {Off,     ControlKind::Button,    u"Off",    u"",               0, ControlDisabled   },
    {Help,    ControlKind::Label,     u"",       u"",               0, 0                 },
};

constexpr DialogForm Form = {900, u"Sample", u"sample", Controls};
constexpr DialogForm FormWithOkButton = {901, u"Sample", u"sample", Controls, Go};

// A dialog whose rules are what a test puts in, and which notes what it is asked.
class Sample : public DialogModel {
public:
    explicit Sample(const DialogForm& form = Form) : DialogModel(form) {}

    std::vector<std::string> calls;
    std::function<void()> onOpened = [] {};
    std::function<void(int)> onChanged = [](int) {};
    std::function<void(int)> onPressed = [this](int button) { close(button); };

    using DialogModel::beginLabelEdit;
    using DialogModel::close;
    using DialogModel::enable;
    using DialogModel::select;
    using DialogModel::setCaret;
    using DialogModel::setEntries;
    using DialogModel::setEntry;
    using DialogModel::setFocus;
    using DialogModel::setText;
    using DialogModel::setTitle;
    using DialogModel::showBox;
    using DialogModel::wholeNumber;

protected:
    void opened() override
    {
        calls.emplace_back("opened");
        onOpened();
    }
    void changed(int control) override
    {
        calls.push_back("changed " + std::to_string(control));
        onChanged(control);
    }
    void pressed(int button) override
    {
        calls.push_back("pressed " + std::to_string(button));
        onPressed(button);
    }
    void cancelled() override { calls.emplace_back("cancelled"); }
    void labelEdited(int control, std::u16string_view text) override
    {
        calls.push_back("label " + std::to_string(control) + ' ' +
                        std::string(text.begin(), text.end()));
    }
};

// An open Sample on a machine of its own.
struct Open {
    explicit Open(const DialogForm& form = Form) : dialog(form)
    {
        dialog.open();
        dialog.calls.clear();
    }
    const Control& at(int control) { return *dialog.find(control); }

    TestPlatform machine;
    Sample dialog;
};

using Calls = std::vector<std::string>;

// --- Forms

TEST(DialogForm, standsForEveryDialogByNumber)
{
    const struct {
        int number;
        const char16_t* title;
        const char16_t* anchor;
        std::size_t controls;
        int okButton;
    } cases[] = {
        {105, u"Border",             u"format",        5,  ButtonOk},
        {111, u"Define Task",        u"task",          7,  ButtonOk},
        {112, u"",                   u"",              1,  ButtonOk},
        {113, u"",                   u"",              1,  ButtonOk},
        {123, u"Find",               u"find",          6,  1020    },
        {124, u"Sort",               u"sort",          9,  ButtonOk},
        {125, u"",                   u"",              1,  1020    },
        {126, u"Go to",              u"goto",          1,  ButtonOk},
        {127, u"View",               u"options",       4,  ButtonOk},
        {128, u"Sheets",             u"sheets",        4,  ButtonOk},
        {129, u"Insert function",    u"functions",     3,  ButtonOk},
        {133, u"Format",             u"format",        4,  ButtonOk},
        {134, u"Alignment",          u"format",        3,  ButtonOk},
        {135, u"Font",               u"format",        7,  ButtonOk},
        {137, u"Number Format",      u"number_format", 6,  ButtonOk},
        {138, u"Zoom",               u"",              1,  ButtonOk},
        {139, u"Date & Time Format", u"number_format", 8,  ButtonOk},
        {141, u"Delete Cells",       u"insert_delete", 2,  ButtonOk},
        {142, u"Insert Cells",       u"insert_delete", 2,  ButtonOk},
        {143, u"About Vorn",         u"copyright",     2,  ButtonOk},
        {144, u"Replace",            u"replace",       7,  1020    },
        {145, u"",                   u"",              3,  1036    },
        {146, u"",                   u"",              1,  ButtonOk},
        {147, u"Series",             u"series",        5,  ButtonOk},
        {152, u"General",            u"options",       3,  ButtonOk},
        {154, u"Paste Special",      u"paste_special", 4,  ButtonOk},
        {155, u"Custom Lists",       u"options",       3,  ButtonOk},
        {156, u"Insert Name",        u"insert_name",   1,  ButtonOk},
        {157, u"Define Name",        u"define_name",   4,  ButtonOk},
        {158, u"Quick Entry",        u"",              1,  ButtonOk},
        {160, u"Chart",              u"chart",         4,  ButtonOk},
        {161, u"Protect",            u"format",        2,  ButtonOk},
        {162, u"Task",               u"task",          9,  ButtonOk},
        {163, u"Filter - Show Rows", u"filter",        13, ButtonOk},
    };
    for (const auto& c : cases) {
        const DialogForm* form = dialogForm(c.number);
        ASSERT_NE(form, nullptr) << c.number;
        EXPECT_EQ(form->number, c.number);
        EXPECT_EQ(form->title, c.title) << c.number;
        EXPECT_EQ(form->helpAnchor, c.anchor) << c.number;
        EXPECT_EQ(form->controls.size(), c.controls) << c.number;
        EXPECT_EQ(form->okButton, c.okButton) << c.number;
    }
    for (int number : {0, 1, 104, 106, 164, -1})
        EXPECT_EQ(dialogForm(number), nullptr) << number;
}

TEST(DialogForm, hasControlsThatCanBeToldApart)
{
    for (int number = 100; number < 170; ++number) {
        const DialogForm* form = dialogForm(number);
        if (form == nullptr)
            continue;
        std::set<int> seen = {ButtonOk, ButtonCancel};
        for (const ControlForm& control : form->controls)
            EXPECT_TRUE(seen.insert(control.id).second) << number << ' ' << control.id;
        EXPECT_TRUE(seen.count(form->okButton)) << number;
    }
}

TEST(DialogForm, saysWhatEachControlIs)
{
    const struct {
        int dialog, control;
        ControlKind kind;
        const char16_t* label;
        const char16_t* entries;
        int textMax;
    } cases[] = {
        {105, 1014, ControlKind::TriBox,    u"Left",                     u"",                            0  },
        {105, 1015, ControlKind::TriBox,    u"Right",                    u"",                            0  },
        {105, 1016, ControlKind::TriBox,    u"Top",                      u"",                            0  },
        {105, 1017, ControlKind::TriBox,    u"Bottom",                   u"",                            0  },
        {105, 1018, ControlKind::Box,       u"Outline",                  u"",                            0  },
        {111, 1011, ControlKind::Button,    u"fn()",                     u"",                            0  },
        {111, 1019, ControlKind::Edit,      u"",                         u"",                            100},
        {123, 1019, ControlKind::Edit,      u"",                         u"",                            200},
        {123, 1020, ControlKind::Button,    u"Find",                     u"",                            0  },
        {123, 1021, ControlKind::Choice,    u"Search by:",               u"Lines|Columns",               0  },
        {123, 1022, ControlKind::Choice,    u"Look in:",                 u"Values|Formulas",             0  },
        {123, 1023, ControlKind::Box,       u"Entire cells",             u"",                            0  },
        {123, 1024, ControlKind::Box,       u"Case sensitive",           u"",                            0  },
        {124, 1024, ControlKind::Choice,    u"",                         u"Ascending|Descending",        0  },
        {124, 1058, ControlKind::Box,       u"Header row",               u"",                            0  },
        {125, 1020, ControlKind::Button,    u"Find next",                u"",                            0  },
        {127, 1071, ControlKind::Box,       u"Formula bar",              u"",                            0  },
        {127, 1026, ControlKind::Box,       u"Column and row titles",    u"",                            0  },
        {127, 1027, ControlKind::Box,       u"Gridlines",                u"",                            0  },
        {127, 1028, ControlKind::Box,       u"Zero values",              u"",                            0  },
        {128, 1029, ControlKind::LabelList, u"",                         u"",                            39 },
        {128, 1030, ControlKind::Button,    u"New",                      u"",                            0  },
        {128, 1031, ControlKind::Button,    u"Rename",                   u"",                            0  },
        {128, 1032, ControlKind::Button,    u"Delete",                   u"",                            0  },
        {129, 1051, ControlKind::Choice,    u"Category:",                u"",                            0  },
        {129, 1056, ControlKind::List,      u"",                         u"",                            0  },
        {129, 1110, ControlKind::Label,     u"",                         u"",                            0  },
        {134, 1044, ControlKind::Choice,    u"",                         u"Top|Center|Bottom",           0  },
        {144, 1019, ControlKind::Edit,      u"Find:",                    u"",                            200},
        {144, 1025, ControlKind::Edit,      u"Replace with:",            u"",                            200},
        {144, 1020, ControlKind::Button,    u"Find Next",                u"",                            0  },
        {144, 1035, ControlKind::Button,    u"Replace All",              u"",                            0  },
        {145, 1036, ControlKind::Button,    u"Find Next",                u"",                            0  },
        {145, 1074, ControlKind::Button,    u"Replace",                  u"",                            0  },
        {147, 1076, ControlKind::Choice,    u"Type:",                    u"Linear|Growth|Date|Autofill", 0  },
        {152, 1081, ControlKind::Choice,    u"Move after Enter:",        u"None|Right|Down",             0  },
        {152, 1091, ControlKind::Box,       u"Full Screen Zoom:",        u"",                            0  },
        {154, 1085, ControlKind::Box,       u"Only results of formulas", u"",                            0  },
        {160, 1097, ControlKind::Choice,    u"Series:",                  u"Cols|Rows",                   0  },
        {163, 1107, ControlKind::Radio,     u"Where cells:",             u"",                            0  },
    };
    for (const auto& c : cases) {
        const DialogForm* form = dialogForm(c.dialog);
        ASSERT_NE(form, nullptr);
        const ControlForm* control = nullptr;
        for (const ControlForm& candidate : form->controls) {
            if (candidate.id == c.control)
                control = &candidate;
        }
        ASSERT_NE(control, nullptr) << c.dialog << ' ' << c.control;
        EXPECT_EQ(control->kind, c.kind) << c.dialog << ' ' << c.control;
        EXPECT_EQ(control->label, c.label) << c.dialog << ' ' << c.control;
        EXPECT_EQ(control->entries, c.entries) << c.dialog << ' ' << c.control;
        EXPECT_EQ(control->textMax, c.textMax) << c.dialog << ' ' << c.control;
    }
}

// --- What is shown

TEST(DialogModel, isMadeFromItsForm)
{
    Open open;
    EXPECT_EQ(open.dialog.number(), 900);
    EXPECT_EQ(open.dialog.title(), u"Sample");
    EXPECT_EQ(open.dialog.helpAnchor(), u"sample");
    EXPECT_EQ(open.dialog.controls().size(), std::size(Controls));
    EXPECT_EQ(open.at(Colours).entries, (std::vector<std::u16string>{u"Red", u"Green", u"Blue"}));
    EXPECT_EQ(open.at(Colours).selected, NoEntry);
    EXPECT_TRUE(open.at(Name).entries.empty());
    EXPECT_EQ(open.at(Third).box, BoxState::Off);
    EXPECT_TRUE(open.at(Go).enabled);
    EXPECT_FALSE(open.at(Off).enabled);
    EXPECT_EQ(open.dialog.find(1), nullptr);
    EXPECT_EQ(open.dialog.focus(), NoControl);
    EXPECT_TRUE(open.dialog.pages().empty());
}

TEST(DialogModel, showsWhatItsRulesSetAndAsksNoRuleAboutIt)
{
    Open open;
    Sample& dialog = open.dialog;
    dialog.setTitle(u"Another");
    dialog.setText(Name, u"Hello, longer than could be typed");
    dialog.setText(Help, u"line");
    dialog.setEntries(Fruits, {u"Fig", u"Date", u"Kiwi"});
    dialog.select(Fruits, 1);
    dialog.setEntry(Fruits, 2, u"Plum");
    dialog.showBox(Third, BoxState::Mixed);
    dialog.showBox(Flag, true);
    dialog.enable(Off, true);
    dialog.setFocus(Notes);
    EXPECT_EQ(dialog.title(), u"Another");
    EXPECT_EQ(open.at(Name).text, u"Hello, longer than could be typed");
    EXPECT_EQ(open.at(Help).text, u"line");
    EXPECT_EQ(open.at(Fruits).entries, (std::vector<std::u16string>{u"Fig", u"Date", u"Plum"}));
    EXPECT_EQ(open.at(Fruits).selected, 1);
    EXPECT_EQ(open.at(Third).box, BoxState::Mixed);
    EXPECT_EQ(open.at(Flag).box, BoxState::On);
    EXPECT_TRUE(open.at(Off).enabled);
    EXPECT_EQ(dialog.focus(), Notes);
    EXPECT_TRUE(dialog.calls.empty());
    dialog.setEntries(Fruits, {u"Fig"});
    EXPECT_EQ(open.at(Fruits).selected, NoEntry) << "other entries, no choice";
}

TEST(DialogModel, keepsTheTextOfAComboAndItsChoiceInStep)
{
    Open open;
    Sample& dialog = open.dialog;
    dialog.select(Sizes, 2);
    EXPECT_EQ(open.at(Sizes).text, u"12");
    dialog.setText(Sizes, u"9");
    EXPECT_EQ(open.at(Sizes).selected, NoEntry);
    EXPECT_TRUE(dialog.enterText(Sizes, u"10"));
    EXPECT_EQ(open.at(Sizes).selected, 1);
    EXPECT_TRUE(dialog.choose(Sizes, 0));
    EXPECT_EQ(open.at(Sizes).text, u"8");
    dialog.setEntries(Sizes, {u"7", u"8"});
    EXPECT_EQ(open.at(Sizes).text, u"8");
    EXPECT_EQ(open.at(Sizes).selected, 1);
}

// --- What the user does

TEST(DialogModel, takesTextUpToItsLimitAndTellsTheRules)
{
    Open open;
    EXPECT_TRUE(open.dialog.enterText(Name, u"abcde"));
    EXPECT_EQ(open.at(Name).text, u"abcde");
    EXPECT_TRUE(open.dialog.enterText(Name, u"abcdefg"));
    EXPECT_EQ(open.at(Name).text, u"abcde");
    EXPECT_EQ(open.at(Name).caret.end, 5);
    EXPECT_TRUE(open.dialog.enterText(Notes, std::u16string(5000, u'x')));
    EXPECT_EQ(open.at(Notes).text.size(), 5000U);
    EXPECT_TRUE(open.dialog.enterText(Notes, u""));
    EXPECT_EQ(open.at(Notes).text, u"");
    EXPECT_EQ(open.dialog.focus(), Notes);
    EXPECT_EQ(open.dialog.calls, (Calls{"changed 11", "changed 11", "changed 12", "changed 12"}));
}

TEST(DialogModel, keepsTheCaretWithinTheText)
{
    Open open;
    open.dialog.enterText(Notes, u"if end");
    EXPECT_TRUE(open.dialog.moveCaret(Notes, {3, 3}));
    EXPECT_EQ(open.at(Notes).caret.start, 3);
    EXPECT_TRUE(open.dialog.moveCaret(Notes, {-1, 99}));
    EXPECT_EQ(open.at(Notes).caret.start, 0);
    EXPECT_EQ(open.at(Notes).caret.end, 6);
    open.dialog.setCaret(Notes, {2, 100});
    EXPECT_EQ(open.at(Notes).caret.end, 6);
    EXPECT_FALSE(open.dialog.moveCaret(Flag, {0, 0}));
    EXPECT_EQ(open.dialog.calls, Calls{"changed 12"}) << "no rule hears of the caret";
}

TEST(DialogModel, choosesEntriesThatAreThere)
{
    Open open;
    EXPECT_TRUE(open.dialog.choose(Colours, 2));
    EXPECT_EQ(open.at(Colours).selected, 2);
    EXPECT_TRUE(open.dialog.choose(Colours, 2)) << "again is a choice as well";
    EXPECT_FALSE(open.dialog.choose(Colours, 3));
    EXPECT_FALSE(open.dialog.choose(Colours, -1));
    EXPECT_FALSE(open.dialog.choose(Name, 0));
    EXPECT_EQ(open.at(Colours).selected, 2);
    EXPECT_EQ(open.dialog.calls, (Calls{"changed 41", "changed 41"}));
}

TEST(DialogModel, turnsBoxesByTap)
{
    const struct {
        const char* behaviour;
        int control;
        BoxState from, to;
    } cases[] = {
        {"off goes on",                        Flag,   BoxState::Off,   BoxState::On },
        {"on goes off",                        Flag,   BoxState::On,    BoxState::Off},
        {"a third state: off goes on",         Third,  BoxState::Off,   BoxState::On },
        {"on goes off, and not mixed",         Third,  BoxState::On,    BoxState::Off},
        {"mixed goes off",                     Third,  BoxState::Mixed, BoxState::Off},
        {"a radio button goes on",             RadioA, BoxState::Off,   BoxState::On },
        {"and does not go off by its own tap", RadioA, BoxState::On,    BoxState::On },
    };
    for (const auto& c : cases) {
        Open open;
        open.dialog.showBox(c.control, c.from);
        EXPECT_TRUE(open.dialog.tapBox(c.control)) << c.behaviour;
        EXPECT_EQ(open.at(c.control).box, c.to) << c.behaviour;
        EXPECT_EQ(open.dialog.calls, Calls{"changed " + std::to_string(c.control)});
    }
}

TEST(DialogModel, setsABoxOnlyToAStateThatItHas)
{
    Open open;
    EXPECT_TRUE(open.dialog.setBox(Third, BoxState::Mixed));
    EXPECT_EQ(open.at(Third).box, BoxState::Mixed);
    EXPECT_FALSE(open.dialog.setBox(Flag, BoxState::Mixed));
    EXPECT_FALSE(open.dialog.setBox(RadioA, BoxState::Off));
    EXPECT_FALSE(open.dialog.setBox(Name, BoxState::On));
    EXPECT_FALSE(open.dialog.tapBox(Name));
    EXPECT_FALSE(open.dialog.tapBox(9999));
    EXPECT_EQ(open.dialog.calls, Calls{"changed 22"});
}

TEST(DialogModel, hasOneRadioButtonOnInEachGroup)
{
    Open open;
    open.dialog.showBox(RadioA, true);
    open.dialog.showBox(RadioD, true);
    open.dialog.setBox(RadioB, BoxState::On);
    EXPECT_EQ(open.at(RadioA).box, BoxState::Off);
    EXPECT_EQ(open.at(RadioB).box, BoxState::On);
    EXPECT_EQ(open.at(RadioC).box, BoxState::Off);
    EXPECT_EQ(open.at(RadioD).box, BoxState::On);
    open.dialog.setBox(RadioC, BoxState::On);
    EXPECT_EQ(open.at(RadioB).box, BoxState::On) << "the other group is left alone";
    EXPECT_EQ(open.at(RadioD).box, BoxState::Off);
}

TEST(DialogModel, refusesWhatCannotBeDoneByHand)
{
    Open open;
    for (int control : {Name, Flag, Colours, Go})
        open.dialog.enable(control, false);
    EXPECT_FALSE(open.dialog.enterText(Name, u"x"));
    EXPECT_FALSE(open.dialog.moveCaret(Name, {0, 0}));
    EXPECT_FALSE(open.dialog.setBox(Flag, BoxState::On));
    EXPECT_FALSE(open.dialog.tapBox(Flag));
    EXPECT_FALSE(open.dialog.choose(Colours, 0));
    EXPECT_FALSE(open.dialog.press(Go));
    EXPECT_FALSE(open.dialog.enterText(Flag, u"x"));
    EXPECT_FALSE(open.dialog.press(Name));
    EXPECT_FALSE(open.dialog.press(9999));
    EXPECT_TRUE(open.dialog.calls.empty());
    EXPECT_TRUE(open.dialog.isOpen());
    Sample notOpen;
    EXPECT_FALSE(notOpen.enterText(Name, u"x"));
    EXPECT_FALSE(notOpen.press(ButtonOk));
    EXPECT_TRUE(notOpen.calls.empty());
}

TEST(DialogModel, closesByTheButtonThatTheRulesSay)
{
    const struct {
        const char* behaviour;
        const DialogForm& form;
        int pressed, asked, closedBy;
    } cases[] = {
        {"OK",                               Form,             ButtonOk,     ButtonOk,  ButtonOk    },
        {"another button",                   Form,             Go,           Go,        Go          },
        {"OK of a form that has its own OK", FormWithOkButton, ButtonOk,     Go,        Go          },
        {"that button itself",               FormWithOkButton, Go,           Go,        Go          },
        {"Cancel",                           Form,             ButtonCancel, NoControl, ButtonCancel},
    };
    for (const auto& c : cases) {
        Open open(c.form);
        EXPECT_TRUE(open.dialog.press(c.pressed)) << c.behaviour;
        EXPECT_FALSE(open.dialog.isOpen()) << c.behaviour;
        EXPECT_EQ(open.dialog.closedBy(), c.closedBy) << c.behaviour;
        EXPECT_EQ(open.dialog.calls,
                  Calls{c.asked == NoControl ? "cancelled" : "pressed " + std::to_string(c.asked)})
            << c.behaviour;
        EXPECT_FALSE(open.dialog.press(ButtonOk)) << "it closes once";
    }
}

TEST(DialogModel, staysOpenWhereTheRulesDoNotCloseIt)
{
    Open open;
    open.dialog.onPressed = [&](int) { open.dialog.setFocus(Name); };
    EXPECT_TRUE(open.dialog.press(ButtonOk));
    EXPECT_TRUE(open.dialog.isOpen());
    EXPECT_EQ(open.dialog.focus(), Name);
}

TEST(DialogModel, showsTheStickyErrorOverItselfWhileItIsOpen)
{
    Open open;
    open.dialog.onPressed = [](int) { raiseError(ErrorToken); };
    open.dialog.press(Go);
    ASSERT_EQ(open.machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(open.machine.userInterface.boxes[0].text, u"Unexpected token");
    EXPECT_TRUE(open.dialog.isOpen());
    EXPECT_FALSE(errorStands());
    open.dialog.onChanged = [](int) { raiseError(ErrorSheetName); };
    open.dialog.setBox(Flag, BoxState::On);
    EXPECT_EQ(open.machine.userInterface.boxes.size(), 2U);
    open.dialog.onPressed = [&](int button) {
        raiseError(ErrorMemory);
        open.dialog.close(button);
    };
    open.dialog.press(ButtonOk);
    EXPECT_EQ(open.machine.userInterface.boxes.size(), 2U) << "who opened it will show it";
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
}

TEST(DialogModel, refusesTheUserWhileARuleRuns)
{
    Open open;
    Sample& dialog = open.dialog;
    dialog.onChanged = [&](int) {
        EXPECT_FALSE(dialog.enterText(Name, u"again"));
        EXPECT_FALSE(dialog.press(ButtonOk));
        EXPECT_FALSE(dialog.choose(Colours, 0));
        EXPECT_FALSE(dialog.endLabelEdit(u"x"));
    };
    EXPECT_TRUE(dialog.enterText(Name, u"once"));
    EXPECT_EQ(dialog.calls, Calls{"changed 11"});
    EXPECT_EQ(open.at(Name).text, u"once");
}

// A window that echoes all that it is told, as widgets do that are set and signal it.
class EchoingWindow : public DialogObserver {
public:
    explicit EchoingWindow(DialogModel& dialog) : dialog_(dialog) { dialog.observer = this; }
    ~EchoingWindow() override { dialog_.observer = nullptr; }

    void controlChanged(int control) override
    {
        told.push_back(control);
        const Control& shown = *dialog_.find(control);
        if (shown.isText())
            dialog_.enterText(control, shown.text);
        if (shown.isList())
            dialog_.choose(control, shown.selected);
        if (shown.isBox())
            dialog_.setBox(control, shown.box);
    }
    void focusMoved(int control) override { focus = control; }
    void labelEditBegun(int control) override { label = control; }
    void pageTurned() override { ++turns; }
    void dialogClosed() override { closed = true; }

    std::vector<int> told;
    int focus = NoControl;
    int label = NoControl;
    int turns = 0;
    bool closed = false;

private:
    DialogModel& dialog_;
};

TEST(DialogModel, tellsItsWindowWhatToShowAndMindsNoEcho)
{
    Open open;
    Sample& dialog = open.dialog;
    EchoingWindow window(dialog);
    dialog.onChanged = [&](int) {
        dialog.setText(Notes, u"from the rules");
        dialog.setFocus(Sizes);
    };
    dialog.showBox(RadioA, true);
    window.told.clear();
    dialog.calls.clear();
    dialog.setBox(RadioB, BoxState::On);
    EXPECT_EQ(window.told, (std::vector<int>{RadioA, RadioB, Notes}));
    EXPECT_EQ(dialog.calls, Calls{"changed 32"});
    EXPECT_EQ(window.focus, Sizes);
    dialog.press(ButtonOk);
    EXPECT_TRUE(window.closed);
}

// --- Labels

TEST(DialogModel, editsTheChosenLabelInPlace)
{
    Open open;
    Sample& dialog = open.dialog;
    EchoingWindow window(dialog);
    EXPECT_FALSE(dialog.editLabel(Labels)) << "none is chosen";
    EXPECT_FALSE(dialog.endLabelEdit(u"x"));
    EXPECT_FALSE(dialog.editLabel(Fruits)) << "not that kind of list";
    dialog.choose(Labels, 1);
    dialog.calls.clear();
    EXPECT_TRUE(dialog.editLabel(Labels));
    EXPECT_EQ(window.label, Labels);
    EXPECT_EQ(dialog.labelInEdit(), Labels);
    EXPECT_TRUE(dialog.endLabelEdit(u"Three"));
    EXPECT_EQ(dialog.labelInEdit(), NoControl);
    EXPECT_EQ(dialog.calls, Calls{"label 44 Thr"}) << "cut to what the label takes";
    EXPECT_FALSE(dialog.endLabelEdit(u"x"));
}

TEST(DialogModel, endsTheEditOfALabelWithWhateverElseIsDone)
{
    Open open;
    Sample& dialog = open.dialog;
    dialog.onPressed = [](int) {};
    dialog.select(Labels, 0);
    const std::function<bool()> others[] = {
        [&] { return dialog.press(Go); },
        [&] { return dialog.setBox(Flag, BoxState::On); },
        [&] { return dialog.choose(Labels, 1); },
        [&] { return dialog.cancelLabelEdit(); },
    };
    for (const auto& other : others) {
        dialog.editLabel(Labels);
        EXPECT_TRUE(other());
        EXPECT_EQ(dialog.labelInEdit(), NoControl);
        EXPECT_FALSE(dialog.endLabelEdit(u"x"));
    }
    EXPECT_FALSE(dialog.cancelLabelEdit());
}

TEST(DialogModel, takesADoubleTapForOkWhereTheListIsOfThatKind)
{
    Open open;
    EXPECT_TRUE(open.dialog.doubleTap(Colours, 1));
    EXPECT_TRUE(open.dialog.isOpen());
    EXPECT_FALSE(open.dialog.doubleTap(Fruits, 2)) << "no such entry";
    EXPECT_TRUE(open.dialog.doubleTap(Fruits, 1));
    EXPECT_EQ(open.dialog.closedBy(), ButtonOk);
    EXPECT_EQ(open.dialog.calls, (Calls{"changed 41", "changed 42", "pressed 1"}));
}

TEST(DialogModel, readsWholeNumbers)
{
    const struct {
        const char16_t* text;
        int number;
    } cases[] = {
        {u"",            0         },
        {u"0",           0         },
        {u"75",          75        },
        {u" 75 ",        75        },
        {u"007",         7         },
        {u"-25",         -25       },
        {u"-",           0         },
        {u"7 5",         0         },
        {u"75%",         0         },
        {u"7.5",         0         },
        {u"seventy",     0         },
        {u"99999999999", 2147483647},
    };
    Open open;
    for (const auto& c : cases) {
        open.dialog.setText(Name, c.text);
        EXPECT_EQ(open.dialog.wholeNumber(Name), c.number) << std::string(c.text, c.text + 3);
    }
}

// --- Running

TEST(RunDialog, cancelsADialogThatNobodyAnswers)
{
    TestPlatform machine;
    Sample dialog;
    EXPECT_FALSE(runDialog(dialog));
    EXPECT_EQ(dialog.calls, (Calls{"opened", "cancelled"}));
    EXPECT_FALSE(dialog.isOpen());
}

TEST(RunDialog, answersWhetherItWasConfirmed)
{
    TestPlatform machine;
    for (int button : {ButtonOk, ButtonCancel, Go}) {
        Sample dialog;
        machine.userInterface.dialogUser = [&](DialogModel& shown) { shown.press(button); };
        EXPECT_EQ(runDialog(dialog), button != ButtonCancel);
        EXPECT_EQ(dialog.closedBy(), button);
    }
}

TEST(RunDialog, asksNobodyAboutADialogThatClosesAsItOpens)
{
    TestPlatform machine;
    machine.userInterface.dialogUser = [](DialogModel&) { ADD_FAILURE(); };
    Sample dialog;
    dialog.onOpened = [&] { dialog.close(ButtonOk); };
    EXPECT_TRUE(runDialog(dialog));
}

TEST(RunDialog, opensADialogFromAButtonOfAnother)
{
    TestPlatform machine;
    Sample outer;
    Sample inner(FormWithOkButton);
    outer.onPressed = [&](int button) {
        if (button == ButtonOk)
            return outer.close(button);
        EXPECT_TRUE(runDialog(inner));
    };
    machine.userInterface.dialogUser = [&](DialogModel& shown) {
        if (&shown == &outer) {
            EXPECT_TRUE(outer.press(Go));
            EXPECT_TRUE(outer.isOpen());
            outer.press(ButtonOk);
        } else {
            EXPECT_FALSE(outer.press(ButtonCancel)) << "it waits for the other";
            inner.press(Go);
        }
    };
    EXPECT_TRUE(runDialog(outer));
    EXPECT_EQ(inner.closedBy(), Go);
}

// --- Sheets of pages

constexpr int SamplePages[] = {900, 901};
constexpr PageSheetForm SampleSheet = {u"Pages", SamplePages};
constexpr DialogForm SecondForm = {902, u"Second", u"second", Controls};

struct OpenSheet {
    explicit OpenSheet(int rememberedPage = 0)
        : remembered(rememberedPage), second(SecondForm),
          sheet(SampleSheet, {&first, &second}, remembered)
    {
        sheet.open();
        first.calls.clear();
        second.calls.clear();
    }

    TestPlatform machine;
    int remembered;
    Sample first;
    Sample second;
    PageSheet sheet;
};

TEST(PageSheet, hasTheNumberOfItsFirstPageAndItsOwnTitle)
{
    OpenSheet open;
    EXPECT_EQ(open.sheet.number(), 900);
    EXPECT_EQ(open.sheet.title(), u"Pages");
    EXPECT_EQ(open.sheet.pages().size(), 2U);
    EXPECT_EQ(open.sheet.pages()[1], &open.second);
    EXPECT_TRUE(open.second.isOpen());
}

TEST(PageSheet, namesThePagesOfBothSheets)
{
    EXPECT_EQ(FormatCellsForm.title, u"Format Cells");
    EXPECT_EQ(std::vector<int>(FormatCellsForm.pages.begin(), FormatCellsForm.pages.end()),
              (std::vector<int>{133, 134, 135, 105, 161}));
    EXPECT_EQ(OptionsForm.title, u"Options");
    EXPECT_EQ(std::vector<int>(OptionsForm.pages.begin(), OptionsForm.pages.end()),
              (std::vector<int>{127, 152, 155}));
}

TEST(PageSheet, putsOkToEveryPageInOrder)
{
    OpenSheet open;
    EXPECT_TRUE(open.sheet.press(ButtonOk));
    EXPECT_EQ(open.sheet.closedBy(), ButtonOk);
    EXPECT_EQ(open.first.calls, Calls{"pressed 1"});
    EXPECT_EQ(open.second.calls, Calls{"pressed 1"});
    EXPECT_FALSE(open.first.isOpen());
}

TEST(PageSheet, staysOpenWithThePageInFrontThatRefuses)
{
    OpenSheet open;
    EchoingWindow window(open.sheet);
    bool refuse = true;
    open.second.onPressed = [&](int button) {
        if (refuse)
            raiseError(ErrorToken);
        else
            open.second.close(button);
    };
    EXPECT_TRUE(open.sheet.press(ButtonOk));
    EXPECT_TRUE(open.sheet.isOpen());
    EXPECT_TRUE(open.first.isOpen()) << "it is asked again later";
    EXPECT_EQ(open.sheet.page(), 1);
    EXPECT_EQ(window.turns, 1);
    EXPECT_EQ(open.machine.userInterface.boxes.size(), 1U);
    refuse = false;
    EXPECT_TRUE(open.sheet.press(ButtonOk));
    EXPECT_FALSE(open.sheet.isOpen());
    EXPECT_EQ(open.first.calls, (Calls{"pressed 1", "pressed 1"}));
}

TEST(PageSheet, cancelsEveryPage)
{
    OpenSheet open;
    EXPECT_TRUE(open.sheet.press(ButtonCancel));
    EXPECT_EQ(open.sheet.closedBy(), ButtonCancel);
    EXPECT_EQ(open.first.calls, Calls{"cancelled"});
    EXPECT_EQ(open.second.calls, Calls{"cancelled"});
}

TEST(PageSheet, opensOnThePageThatWasInFrontLast)
{
    for (int button : {ButtonOk, ButtonCancel}) {
        OpenSheet open;
        EXPECT_EQ(open.sheet.page(), 0);
        open.sheet.turnTo(1);
        EXPECT_EQ(&open.sheet.front(), &open.second);
        EXPECT_EQ(open.sheet.helpAnchor(), u"second");
        open.sheet.press(button);
        EXPECT_EQ(open.remembered, 1) << button;
    }
    EXPECT_EQ(OpenSheet(1).sheet.page(), 1);
    EXPECT_EQ(OpenSheet(7).sheet.page(), 1) << "a page that is not there";
    EXPECT_EQ(OpenSheet(-1).sheet.page(), 0);
}

TEST(PageSheet, runsThroughTheSameDoorAsADialog)
{
    TestPlatform machine;
    int remembered = 0;
    Sample first;
    Sample second(SecondForm);
    PageSheet sheet(SampleSheet, {&first, &second}, remembered);
    machine.userInterface.dialogUser = [&](DialogModel& shown) {
        ASSERT_EQ(shown.pages().size(), 2U);
        shown.pages()[1]->enterText(Name, u"abc");
        shown.press(ButtonOk);
    };
    EXPECT_TRUE(runDialog(sheet));
    EXPECT_EQ(second.find(Name)->text, u"abc");
}

} // namespace
} // namespace vorn
