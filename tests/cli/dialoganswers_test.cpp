#include "cli/dialoganswers.h"

#include "shell/dialog.h"
#include "shell/pagesheet.h"
#include "support/testplatform.h"

#include <functional>
#include <gtest/gtest.h>

namespace vorn::cli {
namespace {

TEST(ReadDialogAnswer, readsControlsAndTheButton)
{
    const struct {
        const char* behaviour;
        const char16_t* text;
        int dialog;
        std::vector<std::pair<int, std::u16string>> settings;
        int button;
    } cases[] = {
        {"a dialog alone is OK",                 u"126",                        126, {},                         ButtonOk    },
        {"a text",                               u"126 1019=A1:B2",             126, {{1019, u"A1:B2"}},         ButtonOk    },
        {"an empty text",                        u"126 1019=",                  126, {{1019, u""}},              ButtonOk    },
        {"a quoted text",                        u"126 1019=\"'My Sheet'!A1\"", 126, {{1019, u"'My Sheet'!A1"}}, ButtonOk    },
        {"an empty quoted text",                 u"126 1019=\"\"",              126, {{1019, u""}},              ButtonOk    },
        {"quotes and backslashes inside quotes",
         u"126 1019=\"a\\\"b\\\\c d\"",                                         126,
         {{1019, u"a\"b\\c d"}},
         ButtonOk                                                                                                            },
        {"line ends and tabs as they print",
         u"111 1099=\"a\\nb\\tc\"",                                             111,
         {{1099, u"a\nb\tc"}},
         ButtonOk                                                                                                            },
        {"both mean nothing outside of quotes",
         u"126 1019=a\"b\\c",                                                   126,
         {{1019, u"a\"b\\c"}},
         ButtonOk                                                                                                            },
        {"a value may hold =",                   u"157 1019==$A$1",             157, {{1019, u"=$A$1"}},         ButtonOk    },
        {"controls in the order written",
         u"123 1024=on 1019=x 1024=off",                                        123,
         {{1024, u"on"}, {1019, u"x"}, {1024, u"off"}},
         ButtonOk                                                                                                            },
        {"more blanks than one",
         u"123   1019=x   1024=on  ",                                           123,
         {{1019, u"x"}, {1024, u"on"}},
         ButtonOk                                                                                                            },
        {"the third state",                      u"134 1045=mixed",             134, {{1045, u"mixed"}},         ButtonOk    },
        {"OK by name",                           u"126 button=ok",              126, {},                         ButtonOk    },
        {"Cancel by name",                       u"126 1019=A1 button=cancel",  126, {{1019, u"A1"}},            ButtonCancel},
        {"both by number",                       u"126 button=2",               126, {},                         ButtonCancel},
        {"a button of the dialog",               u"144 button=1035",            144, {},                         1035        },
    };
    for (const auto& c : cases) {
        DialogAnswer answer;
        std::string reason;
        EXPECT_TRUE(readDialogAnswer(c.text, answer, reason)) << c.behaviour << ": " << reason;
        EXPECT_EQ(answer.dialog, c.dialog) << c.behaviour;
        EXPECT_EQ(answer.button, c.button) << c.behaviour;
        ASSERT_EQ(answer.settings.size(), c.settings.size()) << c.behaviour;
        for (std::size_t i = 0; i < c.settings.size(); ++i) {
            EXPECT_EQ(answer.settings[i].control, c.settings[i].first) << c.behaviour;
            EXPECT_EQ(answer.settings[i].value, c.settings[i].second) << c.behaviour;
        }
    }
}

TEST(ReadDialogAnswer, saysWhatIsWrong)
{
    const struct {
        const char16_t* text;
        const char* reason;
    } cases[] = {
        {u"99",                      "no dialog: '99'"                  },
        {u"12a",                     "no dialog: '12a'"                 },
        {u"99999999999126",          "no dialog: '99999999999126'"      },
        {u"126 1019",                "a value is missing: '1019'"       },
        {u"126 1019 =x",             "a value is missing: '1019'"       },
        {u"126 1019='My Sheet'!A1",  "a value is missing: 'Sheet'!A1'"  },
        {u"126 1020=x",              "no control of this dialog: '1020'"},
        {u"126 x=y",                 "no control of this dialog: 'x'"   },
        {u"126 1019=\"x",            "no quoted value: '1019=\"x'"      },
        {u"126 1019=\"x\\",          "no quoted value: '1019=\"x\\'"    },
        {u"126 1019=\"x\\q\"",       "no quoted value: '1019=\"x\\q\"'" },
        {u"126 1019=\"x\"y",         "no quoted value: '1019=\"x\"y'"   },
        {u"123 1024=yes",            "no value of control 1024: 'yes'"  },
        {u"123 1024=mixed",          "no value of control 1024: 'mixed'"},
        {u"142 1067=mixed",          "no value of control 1067: 'mixed'"},
        {u"123 1020=x",              "no value of control 1020: 'x'"    },
        {u"129 1110=x",              "no value of control 1110: 'x'"    },
        {u"160 1093=x",              "no value of control 1093: 'x'"    },
        {u"126 button=yes",          "no button to close by: 'yes'"     },
        {u"126 button=1019",         "no button to close by: '1019'"    },
        {u"126 button=",             "no button to close by: ''"        },
        {u"126 button=ok button=ok", "no button to close by: 'ok'"      },
    };
    for (const auto& c : cases) {
        DialogAnswer answer;
        std::string reason;
        EXPECT_FALSE(readDialogAnswer(c.text, answer, reason)) << c.reason;
        EXPECT_EQ(reason, c.reason);
    }
}

// A dialog that closes by whatever button is pressed, unless a test says otherwise.
class Plain : public DialogModel {
public:
    explicit Plain(int number) : DialogModel(number) {}

    std::function<void()> onOpened = [] {};
    std::function<void(int)> onChanged = [](int) {};
    std::function<void(int)> onPressed = [this](int button) { close(button); };
    std::vector<int> changes;
    std::u16string label;

    using DialogModel::beginLabelEdit;
    using DialogModel::close;
    using DialogModel::enable;
    using DialogModel::select;
    using DialogModel::setEntries;
    using DialogModel::setText;
    using DialogModel::showBox;

protected:
    void opened() override { onOpened(); }
    void changed(int control) override
    {
        changes.push_back(control);
        onChanged(control);
    }
    void pressed(int button) override { onPressed(button); }
    void labelEdited(int, std::u16string_view text) override { label = text; }
};

class Answers : public testing::Test {
protected:
    Answers()
    {
        machine.userInterface.dialogUser = [this](DialogModel& dialog) {
            if (!answers.answer(dialog))
                cancelled.push_back(dialog.number());
        };
    }

    void add(std::u16string_view text)
    {
        DialogAnswer answer;
        std::string reason;
        ASSERT_TRUE(readDialogAnswer(text, answer, reason)) << reason;
        answers.add(std::move(answer));
    }

    TestPlatform machine;
    DialogAnswers answers;
    std::vector<int> cancelled; // dialogs that found no answer
};

using DialogAnswersTest = Answers;

TEST_F(DialogAnswersTest, cancelADialogWithoutOne)
{
    Plain dialog(126);
    EXPECT_FALSE(runDialog(dialog));
    EXPECT_EQ(cancelled, std::vector<int>{126});
}

TEST_F(DialogAnswersTest, goToTheNextOpeningOfThatDialog)
{
    add(u"126 1019=A1");
    add(u"138 1019=50");
    add(u"126 1019=B2 button=cancel");
    Plain zoom(138), first(126), second(126), third(126);
    EXPECT_TRUE(runDialog(zoom));
    EXPECT_EQ(zoom.find(1019)->text, u"50");
    EXPECT_TRUE(runDialog(first));
    EXPECT_EQ(first.find(1019)->text, u"A1");
    EXPECT_FALSE(runDialog(second));
    EXPECT_EQ(second.find(1019)->text, u"B2");
    EXPECT_TRUE(cancelled.empty()) << "cancelled by an answer";
    EXPECT_FALSE(runDialog(third));
    EXPECT_EQ(cancelled, std::vector<int>{126});
}

TEST_F(DialogAnswersTest, setControlsInTheOrderWrittenAndLeaveTheOthers)
{
    Plain dialog(123);
    dialog.onOpened = [&] {
        dialog.showBox(1023, true);
        dialog.select(1021, 1);
    };
    add(u"123 1024=on 1019=needle 1022=Formulas 1024=off");
    EXPECT_TRUE(runDialog(dialog));
    EXPECT_EQ(dialog.changes, (std::vector<int>{1024, 1019, 1022, 1024}));
    EXPECT_EQ(dialog.find(1024)->box, BoxState::Off);
    EXPECT_EQ(dialog.find(1019)->text, u"needle");
    EXPECT_EQ(dialog.find(1022)->selected, 1);
    EXPECT_EQ(dialog.find(1023)->box, BoxState::On);
    EXPECT_EQ(dialog.find(1021)->selected, 1);
    EXPECT_EQ(dialog.closedBy(), 1020) << "OK of this dialog is its own button";
}

TEST_F(DialogAnswersTest, chooseAnEntryByTextElseByIndex)
{
    const struct {
        const char* behaviour;
        const char16_t* answer;
        int entry; // -1: a problem
    } cases[] = {
        {"its text",                        u"113 1029=ten",     2 },
        {"its index",                       u"113 1029=2",       2 },
        {"the first index",                 u"113 1029=0",       0 },
        {"a text that looks like an index", u"113 1029=1",       3 },
        {"a text with a blank",             u"113 1029=\"a b\"", 1 },
        {"the first of two",                u"113 1029=twice",   4 },
        {"an index behind the last",        u"113 1029=6",       -1},
        {"no entry",                        u"113 1029=eleven",  -1},
        {"an entry in another case",        u"113 1029=TEN",     -1},
        {"no index below 0",                u"113 1029=-1",      -1},
        {"nothing, and no entry is empty",  u"113 1029=",        -1},
    };
    for (const auto& c : cases) {
        Plain dialog(113);
        dialog.onOpened = [&] {
            dialog.setEntries(1029, {u"x", u"a b", u"ten", u"1", u"twice", u"twice"});
        };
        answers.problem.clear();
        add(c.answer);
        EXPECT_EQ(runDialog(dialog), c.entry >= 0) << c.behaviour;
        EXPECT_EQ(dialog.find(1029)->selected, c.entry) << c.behaviour;
        EXPECT_EQ(answers.problem.empty(), c.entry >= 0) << c.behaviour;
    }
    EXPECT_EQ(answers.problem, "dialog 113: no entry of control 1029: ''");
    EXPECT_TRUE(cancelled.empty());
}

TEST_F(DialogAnswersTest, typeIntoABoxWithAnEditFieldWhatIsNoEntry)
{
    const struct {
        const char16_t* answer;
        const char16_t* text;
        int selected;
    } cases[] = {
        {u"137 1053=$", u"$", 1      },
        {u"137 1053=1", u"1", NoEntry},
        {u"137 1053=",  u"",  0      },
    };
    for (const auto& c : cases) {
        Plain dialog(137);
        dialog.onOpened = [&] { dialog.setEntries(1053, {u"", u"$"}); };
        add(c.answer);
        EXPECT_TRUE(runDialog(dialog));
        EXPECT_EQ(dialog.find(1053)->text, c.text);
        EXPECT_EQ(dialog.find(1053)->selected, c.selected);
    }
}

TEST_F(DialogAnswersTest, turnBoxesOnOffAndMixed)
{
    Plain dialog(105);
    dialog.onOpened = [&] { dialog.showBox(1015, BoxState::Mixed); };
    add(u"105 1014=on 1015=off 1016=mixed");
    EXPECT_TRUE(runDialog(dialog));
    EXPECT_EQ(dialog.find(1014)->box, BoxState::On);
    EXPECT_EQ(dialog.find(1015)->box, BoxState::Off);
    EXPECT_EQ(dialog.find(1016)->box, BoxState::Mixed);
    Plain radios(142);
    radios.onOpened = [&] { radios.showBox(1067, true); };
    add(u"142 1067=off 1068=on");
    EXPECT_TRUE(runDialog(radios));
    EXPECT_EQ(radios.find(1067)->box, BoxState::Off);
    EXPECT_EQ(radios.find(1068)->box, BoxState::On);
}

TEST_F(DialogAnswersTest, passOverWhatIsDisabled)
{
    Plain dialog(124);
    dialog.onOpened = [&] {
        for (int control : {1019, 1058})
            dialog.enable(control, false);
    };
    add(u"124 1058=on 1019=nothing 1025=on");
    EXPECT_TRUE(runDialog(dialog));
    EXPECT_EQ(dialog.find(1058)->box, BoxState::Off);
    EXPECT_EQ(dialog.find(1025)->box, BoxState::On);
    EXPECT_EQ(answers.problem, "");
}

TEST_F(DialogAnswersTest, comeOneAfterTheOtherWhileADialogStaysOpen)
{
    Plain dialog(138);
    dialog.onPressed = [&](int button) {
        if (dialog.find(1019)->text == u"75")
            dialog.close(button);
    };
    add(u"138 1019=5");
    add(u"138 1019=500");
    add(u"138 1019=75");
    EXPECT_TRUE(runDialog(dialog));
    EXPECT_EQ(dialog.find(1019)->text, u"75");
}

TEST_F(DialogAnswersTest, cancelADialogThatStaysOpenBehindTheLast)
{
    Plain dialog(138);
    dialog.onPressed = [](int) {};
    add(u"138 1019=5");
    EXPECT_FALSE(runDialog(dialog));
    EXPECT_TRUE(cancelled.empty()) << "it had found an answer when it opened";
}

TEST_F(DialogAnswersTest, renameALabelInPlace)
{
    Plain dialog(128);
    dialog.onOpened = [&] { dialog.setEntries(1029, {u"One", u"Two"}); };
    dialog.onPressed = [&](int button) {
        if (button == 1031)
            dialog.beginLabelEdit(1029);
        else
            dialog.close(button);
    };
    add(u"128 1029=Two button=1031");
    add(u"128 1029=\"New name\" 1029=One");
    EXPECT_TRUE(runDialog(dialog));
    EXPECT_EQ(dialog.label, u"New name");
    EXPECT_EQ(dialog.find(1029)->selected, 0) << "then the list is a list again";
}

TEST_F(DialogAnswersTest, goFirstToADialogThatAButtonOpens)
{
    Plain tasks(162), task(111), function(129);
    task.onPressed = [&](int button) {
        if (button == 1011)
            EXPECT_TRUE(runDialog(function));
        else
            task.close(button);
    };
    tasks.onPressed = [&](int button) {
        if (button == 1030)
            EXPECT_TRUE(runDialog(task));
        else
            tasks.close(button);
    };
    add(u"129");
    add(u"111 1019=First button=1011");
    add(u"162 button=1030");
    add(u"111 1099=text");
    add(u"162 1058=on");
    EXPECT_TRUE(runDialog(tasks));
    EXPECT_EQ(task.find(1019)->text, u"First");
    EXPECT_EQ(task.find(1099)->text, u"text");
    EXPECT_EQ(tasks.find(1058)->box, BoxState::On);
    EXPECT_FALSE(function.isOpen());
}

// --- Sheets of pages

class SheetAnswersTest : public Answers {
protected:
    bool run() { return runDialog(sheet); }

    int page = 0;
    Plain view{127}, general{152};
    PageSheet sheet{
        OptionsForm, {&view, &general},
         page
    };
};

TEST_F(SheetAnswersTest, areLookedForByTheNumbersOfThePages)
{
    add(u"152 1091=on");
    EXPECT_TRUE(run());
    EXPECT_EQ(general.find(1091)->box, BoxState::On);
    EXPECT_EQ(view.closedBy(), ButtonOk) << "a page without an answer keeps what it shows";
    EXPECT_EQ(page, 1);
}

TEST_F(SheetAnswersTest, aSheetWithoutAnyIsCancelledByItsFirstNumber)
{
    add(u"126");
    EXPECT_FALSE(run());
    EXPECT_EQ(cancelled, std::vector<int>{127});
}

TEST_F(SheetAnswersTest, severalPagesMayHaveOneEach)
{
    add(u"152 1019=50");
    add(u"127 1027=on");
    EXPECT_TRUE(run());
    EXPECT_EQ(general.find(1019)->text, u"50");
    EXPECT_EQ(view.find(1027)->box, BoxState::On);
}

TEST_F(SheetAnswersTest, cancelOfOnePageCancelsTheSheet)
{
    add(u"127 1027=on button=cancel");
    add(u"152 1019=50");
    EXPECT_FALSE(run());
    EXPECT_EQ(general.find(1019)->text, u"50") << "the other page had its answer all the same";
    EXPECT_TRUE(cancelled.empty());
}

TEST_F(SheetAnswersTest, aSecondAnswerOfAPageWaitsForTheNextOpening)
{
    add(u"127 1027=on");
    add(u"127 1026=on");
    EXPECT_TRUE(run());
    EXPECT_EQ(view.find(1026)->box, BoxState::Off);
    Plain viewAgain(127), generalAgain(152);
    PageSheet again(OptionsForm, {&viewAgain, &generalAgain}, page);
    EXPECT_TRUE(runDialog(again));
    EXPECT_EQ(viewAgain.find(1026)->box, BoxState::On);
}

TEST_F(SheetAnswersTest, aPageThatRefusesTakesAnother)
{
    general.onPressed = [&](int button) {
        if (general.find(1019)->text == u"50")
            general.close(button);
    };
    add(u"152 1019=5");
    add(u"152 1019=50");
    EXPECT_TRUE(run());
    EXPECT_EQ(general.find(1019)->text, u"50");
}

TEST_F(SheetAnswersTest, aSheetThatStaysOpenBehindTheLastIsCancelled)
{
    general.onPressed = [](int) {};
    add(u"152 1019=5");
    EXPECT_FALSE(run());
    EXPECT_TRUE(cancelled.empty());
}

TEST_F(SheetAnswersTest, aButtonOfAPageLeavesTheSheetOpen)
{
    Plain format(133), font(135);
    int lastPage = 0;
    PageSheet cells(FormatCellsForm, {&format, &font}, lastPage);
    int presses = 0;
    format.onPressed = [&](int button) {
        if (button == 1035)
            ++presses;
        else
            format.close(button);
    };
    add(u"133 button=1035");
    add(u"133 button=1035");
    add(u"133 button=ok");
    EXPECT_TRUE(runDialog(cells));
    EXPECT_EQ(presses, 2);
    add(u"133 button=1035");
    Plain formatAgain(133);
    formatAgain.onPressed = [](int) {};
    PageSheet again(FormatCellsForm, {&formatAgain}, lastPage);
    EXPECT_FALSE(runDialog(again)) << "no answer closes it";
}

} // namespace
} // namespace vorn::cli
