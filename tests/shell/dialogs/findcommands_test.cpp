#include "shell/dialogs/dialogtest.h"

#include "core/chain.h"
#include "core/error.h"
#include "editing/find.h"
#include "editing/undo.h"
#include "shell/commandhandlers.h"

namespace vorn {
namespace {

constexpr int Text = 1019, NewText = 1025, Order = 1021, Place = 1022, Entire = 1023, Case = 1024;
constexpr int Find = 1020, FindNextOfBox = 1036, ReplaceThis = 1074, All = 1035;

class FindCommands : public DialogTest {
protected:
    // Types a text into Find and presses its button.
    static Answer find(const std::u16string& text)
    {
        return [text](DialogModel& dialog) {
            EXPECT_EQ(dialog.number(), 123);
            dialog.enterText(Text, text);
            dialog.press(Find);
        };
    }

    static Answer replace(const std::u16string& text, const std::u16string& newText, int button)
    {
        return [text, newText, button](DialogModel& dialog) {
            EXPECT_EQ(dialog.number(), 144);
            dialog.enterText(Text, text);
            dialog.enterText(NewText, newText);
            dialog.press(button);
        };
    }

    // Notes where the cursor is, and presses a button of the box.
    Answer look(int button)
    {
        return [this, button](DialogModel& dialog) {
            EXPECT_TRUE(dialog.number() == 125 || dialog.number() == 145);
            EXPECT_EQ(dialog.title(), u"");
            seen.push_back(activeCell());
            dialog.press(button);
        };
    }

    Texts seen;
};

using FindCommand = FindCommands;
using ReplaceCommand = FindCommands;

TEST_F(FindCommand, showsAndKeepsItsSettings)
{
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Find");
        EXPECT_EQ(dialog.find(Text)->text, u"");
        EXPECT_EQ(dialog.find(Order)->selected, 0) << "Lines";
        EXPECT_EQ(dialog.find(Place)->selected, 0) << "Values";
        EXPECT_EQ(dialog.find(Entire)->box, BoxState::Off);
        EXPECT_EQ(dialog.find(Case)->box, BoxState::Off);
        EXPECT_EQ(dialog.focus(), Text);
        dialog.enterText(Text, u"needle");
        dialog.choose(Order, 1);
        dialog.choose(Place, 1);
        dialog.tapBox(Entire);
        dialog.tapBox(Case);
        EXPECT_EQ(findSettings.findText, u"") << "not before the button";
        dialog.press(Find);
    });
    findCommand();
    EXPECT_EQ(findSettings.findText, u"needle");
    EXPECT_TRUE(findSettings.byColumns);
    EXPECT_FALSE(findSettings.inValues);
    EXPECT_TRUE(findSettings.entireCells);
    EXPECT_TRUE(findSettings.caseSensitive);
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.find(Text)->text, u"needle");
        EXPECT_EQ(dialog.find(Text)->caret.end, 6) << "all of it selected";
        EXPECT_EQ(dialog.find(Order)->selected, 1);
        EXPECT_EQ(dialog.find(Place)->selected, 1);
        EXPECT_EQ(dialog.find(Entire)->box, BoxState::On);
        EXPECT_EQ(dialog.find(Case)->box, BoxState::On);
        dialog.enterText(Text, u"other");
        dialog.tapBox(Case);
        dialog.press(ButtonCancel);
    });
    findCommand();
    EXPECT_EQ(findSettings.findText, u"needle") << "Cancel stores nothing";
    EXPECT_TRUE(findSettings.caseSensitive);
    EXPECT_EQ(opened, (std::vector<int>{123, 123})) << "no hit, no box, no word";
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FindCommand, takesTwoHundredCharacters)
{
    willAnswer(find(std::u16string(201, u'n')));
    findCommand();
    EXPECT_EQ(findSettings.findText, std::u16string(200, u'n'));
}

TEST_F(FindCommand, goesFromHitToHitUntilItIsCancelled)
{
    put(u"A1", u"x");
    put(u"C1", u"xx");
    put(u"B2", u"x");
    willAnswer(find(u"x"), look(Find), look(ButtonOk), look(Find), look(Find), look(ButtonCancel));
    findCommand();
    EXPECT_EQ(seen, (Texts{u"A1", u"C1", u"B2", u"A1", u"C1"}));
    EXPECT_EQ(activeCell(), u"C1");
    EXPECT_EQ(undoList.steps.size(), 0);
    EXPECT_FALSE(workbook->modified);
}

TEST_F(FindCommand, endsWithoutAWordWhenThereIsNoOtherHit)
{
    put(u"B2", u"x");
    selectCells(u"B2");
    willAnswer(find(u"x"), look(Find));
    findCommand();
    EXPECT_EQ(seen, Texts{u"B2"});
    EXPECT_EQ(opened, (std::vector<int>{123, 125}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FindCommand, searchesTheSelectionThatItBeganWith)
{
    for (const char16_t* place : {u"A1", u"B2", u"C3", u"D4"})
        put(place, u"x");
    selectCells(u"B2:C3");
    willAnswer(find(u"x"), look(Find), look(Find), look(Find));
    findCommand();
    EXPECT_EQ(seen, (Texts{u"B2", u"C3", u"B2"})) << "though the cursor selects one cell";
}

TEST_F(FindCommand, leavesTheMemoryOfThePlaceToTheWindow)
{
    put(u"A1", u"x");
    willAnswer(find(u"x"), [](DialogModel& dialog) {
        ASSERT_NE(dialog.place, nullptr);
        EXPECT_EQ(dialog.place->left, -1);
        *dialog.place = {10, 20, 30, 40};
    });
    findCommand();
    EXPECT_EQ(findSettings.findBoxRect.left, 10);
    EXPECT_EQ(findSettings.replaceBoxRect.left, -1);
    willAnswer(find(u"x"), [](DialogModel& dialog) { EXPECT_EQ(dialog.place->bottom, 40); });
    findCommand();
}

TEST(FindSettings, areForgottenWithTheApplication)
{
    const TestPlatform machine;
    {
        const Application first;
        findSettings.findText = u"old";
        findSettings.inValues = false;
    }
    const Application second;
    EXPECT_EQ(findSettings.findText, u"");
    EXPECT_TRUE(findSettings.inValues);
}

// --- Replace

TEST_F(ReplaceCommand, showsAndKeepsItsSettings)
{
    findSettings.replaceAction = ActionReplaceAll;
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Replace");
        EXPECT_EQ(dialog.find(Text)->text, u"");
        EXPECT_EQ(dialog.find(NewText)->text, u"");
        EXPECT_EQ(dialog.find(Place), nullptr) << "it always looks in formulas";
        dialog.enterText(Text, std::u16string(201, u'a'));
        dialog.enterText(NewText, std::u16string(201, u'b'));
        dialog.choose(Order, 1);
        dialog.tapBox(Entire);
        dialog.tapBox(Case);
        dialog.press(Find);
    });
    replaceCommand();
    EXPECT_EQ(findSettings.findText, std::u16string(200, u'a'));
    EXPECT_EQ(findSettings.replaceText, std::u16string(200, u'b'));
    EXPECT_TRUE(findSettings.byColumns);
    EXPECT_TRUE(findSettings.entireCells);
    EXPECT_TRUE(findSettings.caseSensitive);
    EXPECT_FALSE(findSettings.inValues) << "and Find finds it so";
    EXPECT_EQ(findSettings.replaceAction, ActionFindNext);
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.find(NewText)->text.size(), 200U);
        EXPECT_EQ(dialog.find(Order)->selected, 1);
        dialog.enterText(NewText, u"c");
        dialog.press(ButtonCancel);
    });
    replaceCommand();
    EXPECT_EQ(findSettings.replaceText, std::u16string(200, u'b'));
}

TEST_F(ReplaceCommand, looksInFormulasEvenIfItIsCancelled)
{
    findSettings.inValues = true;
    findSettings.replaceAction = ActionReplaceAll;
    replaceCommand();
    EXPECT_EQ(opened, std::vector<int>{144});
    EXPECT_FALSE(findSettings.inValues);
    EXPECT_EQ(findSettings.replaceAction, ActionFindNext);
}

TEST_F(ReplaceCommand, asksAtEachHit)
{
    for (const char16_t* place : {u"A1", u"B1", u"C1", u"D1"})
        put(place, u"xyx");
    willAnswer(replace(u"x", u"-", Find), look(FindNextOfBox), look(ReplaceThis), look(ButtonOk),
               look(ButtonCancel));
    replaceCommand();
    EXPECT_EQ(seen, (Texts{u"A1", u"B1", u"C1", u"D1"}));
    EXPECT_EQ(input(u"A1"), u"xyx");
    EXPECT_EQ(input(u"B1"), u"-yx") << "one match, and not all in the cell";
    EXPECT_EQ(input(u"C1"), u"xyx") << "OK is Find Next";
    EXPECT_EQ(input(u"D1"), u"xyx");
    EXPECT_EQ(undoList.steps.size(), 1);
    EXPECT_EQ(opened, (std::vector<int>{144, 145, 145, 145, 145}));
}

TEST_F(ReplaceCommand, endsAtItsFirstHit)
{
    put(u"A1", u"x");
    put(u"B1", u"x");
    willAnswer(replace(u"x", u"xx", Find), look(FindNextOfBox), look(ReplaceThis),
               look(ReplaceThis), look(ReplaceThis));
    replaceCommand();
    EXPECT_EQ(seen, (Texts{u"A1", u"B1", u"A1"})) << "the box is there once more";
    EXPECT_EQ(input(u"A1"), u"x") << "but does nothing then";
    EXPECT_EQ(input(u"B1"), u"xx");
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(ReplaceCommand, replacesAllWithoutAsking)
{
    put(u"A1", u"xyx");
    put(u"C1", u"X");
    put(u"B2", u"=\"x\"&A1");
    put(u"B3", u"none");
    selectCells(u"B2");
    willAnswer(replace(u"x", u"-", All));
    replaceCommand();
    EXPECT_EQ(opened, std::vector<int>{144});
    EXPECT_EQ(input(u"A1"), u"-y-");
    EXPECT_EQ(input(u"C1"), u"-");
    EXPECT_EQ(input(u"B2"), u"=\"-\"&A1");
    EXPECT_EQ(workbook->currentSheet->cellText(1, 1), u"--y-") << "calculated";
    EXPECT_EQ(undoList.steps.size(), 3) << "a step for each cell";
    EXPECT_EQ(activeCell(), u"C1") << "the last hit";
}

TEST_F(ReplaceCommand, replacesAllFromAHitOn)
{
    for (const char16_t* place : {u"A1", u"B1", u"C1"})
        put(place, u"xx");
    willAnswer(replace(u"x", u"-", Find), look(FindNextOfBox), look(All));
    replaceCommand();
    EXPECT_EQ(input(u"B1"), u"--");
    EXPECT_EQ(input(u"C1"), u"--");
    EXPECT_EQ(input(u"A1"), u"xx") << "where the walk began it ends";
    EXPECT_EQ(seen, (Texts{u"A1", u"B1"}));
}

TEST_F(ReplaceCommand, endsWhereItBeganIfTheReplacementIsFoundAgain)
{
    for (const char16_t* place : {u"A1", u"B1", u"A2"})
        put(place, u"a");
    willAnswer(replace(u"a", u"aa", All));
    replaceCommand();
    for (const char16_t* place : {u"A1", u"B1", u"A2"})
        EXPECT_EQ(input(place), u"aa");
    EXPECT_EQ(undoList.steps.size(), 3);
}

TEST_F(ReplaceCommand, keepsTenStepsOfUndo)
{
    for (int row = 0; row < 12; ++row)
        storeCellInput(0, row, u"x");
    willAnswer(replace(u"x", u"y", All));
    replaceCommand();
    EXPECT_EQ(undoList.steps.size(), 10);
    for (int step = 0; step < 11; ++step)
        undo();
    EXPECT_EQ(input(u"A2"), u"y");
    EXPECT_EQ(input(u"A3"), u"x");
    EXPECT_EQ(input(u"A12"), u"x");
}

TEST_F(ReplaceCommand, tellsOfAFormulaThatDoesNotCompileAndGoesOn)
{
    put(u"A1", u"=Sum(1)");
    put(u"B1", u"=Abs(2)");
    put(u"C1", u"text)");
    willAnswer(replace(u")", u"", All));
    replaceCommand();
    EXPECT_EQ(boxes(), (Texts{u"\")\" missing", u"\")\" missing"}));
    EXPECT_EQ(input(u"A1"), u"=Sum(1)");
    EXPECT_EQ(input(u"B1"), u"=Abs(2)");
    EXPECT_EQ(input(u"C1"), u"text");
    EXPECT_FALSE(errorStands());
}

TEST_F(ReplaceCommand, replacesEntireCells)
{
    put(u"A1", u"yes");
    put(u"A2", u"YES");
    put(u"A3", u"yes!");
    willAnswer([](DialogModel& dialog) {
        dialog.enterText(Text, u"yes");
        dialog.enterText(NewText, u"5%");
        dialog.setBox(Entire, BoxState::On);
        dialog.press(All);
    });
    replaceCommand();
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5.00%") << "as if it had been typed";
    EXPECT_EQ(workbook->currentSheet->cellText(0, 1), u"5.00%");
    EXPECT_EQ(input(u"A3"), u"yes!");
}

TEST_F(ReplaceCommand, searchesTheSelection)
{
    for (const char16_t* place : {u"A1", u"B2", u"B3", u"C4"})
        put(place, u"x");
    selectCells(u"B2:B3");
    willAnswer(replace(u"x", u"y", All));
    replaceCommand();
    EXPECT_EQ(input(u"A1"), u"x");
    EXPECT_EQ(input(u"B2"), u"y");
    EXPECT_EQ(input(u"B3"), u"y");
    EXPECT_EQ(input(u"C4"), u"x");
}

// The first hit becomes a number, which shows no final zero and is no hit any more; the other two
// are texts by their format and stay what they are.
TEST_F(ReplaceCommand, endsAlsoWhenItNeverComesBackToItsFirstHit)
{
    put(u"A1", u"'0.10");
    Sheet& sheet = *workbook->currentSheet;
    CellStyle style = workbook->styles[0];
    int textFormat = 0;
    while (workbook->formats[textFormat].kind != FormatText)
        ++textFormat;
    style.set(StyleFormat, textFormat);
    const int textStyle = workbook->addStyle(style);
    for (int row : {1, 2}) {
        sheet.setCellStyle(0, row, textStyle);
        storeCellInput(0, row, u"0.10");
    }
    willAnswer(replace(u"0.10", u"0.10", All));
    replaceCommand();
    EXPECT_EQ(input(u"A1"), u"0.1");
    EXPECT_EQ(input(u"A2"), u"0.10");
    EXPECT_EQ(input(u"A3"), u"0.10");
    EXPECT_LE(undoList.steps.size(), 10);
}

// What one round puts together, the next one finds: "aabb" is "abb", then "bb".
TEST_F(ReplaceCommand, goesRoundAgainWhileThatChangesSomething)
{
    put(u"A1", u"xab");
    put(u"A2", u"aabb");
    put(u"A3", u"aabb");
    willAnswer(replace(u"ab", u"b", All));
    replaceCommand();
    EXPECT_EQ(input(u"A1"), u"xb");
    EXPECT_EQ(input(u"A2"), u"bb");
    EXPECT_EQ(input(u"A3"), u"bb");
}

} // namespace
} // namespace vorn
