#include "shell/dialogs/dialogtest.h"

#include "core/chain.h"
#include "editing/undo.h"
#include "shell/commandhandlers.h"

namespace vorn {
namespace {

constexpr int Names = 1029, New = 1030, Rename = 1031, Delete = 1032;

class Sheets : public DialogTest {
protected:
    void run(Answer answer)
    {
        willAnswer(std::move(answer));
        sheetsCommand();
    }

    static Texts names()
    {
        Texts texts;
        for (const Sheet* sheet : workbook->sheets)
            texts.emplace_back(sheet->name());
        return texts;
    }

    static bool isShown(const DialogModel& dialog)
    {
        return dialog.find(Names)->entries == names();
    }
};

TEST_F(Sheets, listsTheSheetsWithTheActiveOneChosen)
{
    workbook->setCurrentSheet(workbook->sheetAt(1));
    run([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Sheets");
        EXPECT_EQ(dialog.find(Names)->entries, (Texts{u"Sheet1", u"Sheet2", u"Sheet3"}));
        EXPECT_EQ(dialog.find(Names)->selected, 1);
    });
    EXPECT_FALSE(workbook->modified);
}

TEST_F(Sheets, makesTheChosenSheetTheActiveOneByOk)
{
    run([](DialogModel& dialog) {
        dialog.choose(Names, 2);
        EXPECT_EQ(workbook->currentSheet->index, 0) << "not before";
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(workbook->currentSheet->index, 2);
    EXPECT_FALSE(workbook->modified);
    run([](DialogModel& dialog) {
        dialog.choose(Names, 0);
        dialog.press(ButtonCancel);
    });
    EXPECT_EQ(workbook->currentSheet->index, 2);
}

TEST_F(Sheets, appendsASheetAndEditsItsName)
{
    put(u"A1", u"=1");
    put(u"B1", u"=A1+1");
    run([](DialogModel& dialog) {
        EXPECT_TRUE(dialog.press(New));
        EXPECT_EQ(names(), (Texts{u"Sheet1", u"Sheet2", u"Sheet3", u"Sheet4"}));
        EXPECT_TRUE(isShown(dialog));
        EXPECT_EQ(dialog.find(Names)->selected, 3);
        EXPECT_EQ(dialog.labelInEdit(), Names);
        EXPECT_TRUE(workbook->modified);
        EXPECT_EQ(workbook->currentSheet->index, 0);
        EXPECT_TRUE(dialog.endLabelEdit(u"Totals"));
        EXPECT_EQ(workbook->sheetAt(3)->name(), u"Totals");
        EXPECT_TRUE(isShown(dialog));
        EXPECT_TRUE(dialog.press(ButtonCancel));
    });
    EXPECT_EQ(names().size(), 4U) << "Cancel takes nothing back";
    EXPECT_EQ(workbook->currentSheet->index, 0);
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"2") << "the chain was calculated";
}

TEST_F(Sheets, namesANewSheetByANumberThatIsNeverGivenTwice)
{
    machine.userInterface.answers = {BoxAnswer::Yes};
    run([](DialogModel& dialog) {
        dialog.press(New);
        dialog.endLabelEdit(u"Sheet4");
        dialog.choose(Names, 3);
        dialog.press(Delete);
        dialog.press(New);
        EXPECT_EQ(names().back(), u"Sheet5");
    });
    workbook->renameSheet(0, u"Sheet6");
    run([](DialogModel& dialog) {
        dialog.press(New);
        EXPECT_EQ(names().front(), u"Sheet6");
        EXPECT_EQ(names().back(), u"Sheet6") << "nobody looks whether the name is free";
    });
}

TEST_F(Sheets, renamesTheChosenSheet)
{
    const std::u16string longest(39, u'n');
    const std::u16string tooLong(40, u'n');
    const char16_t* exists = u"A sheet with the name you specified already exists";
    const struct {
        const char* behaviour;
        std::u16string_view typed, name;
        bool modified;
        const char16_t* box;
    } cases[] = {
        {"another name",                   u"Totals",    u"Totals",   true,  u""   },
        {"trailing blanks are cut",        u"To tals  ", u"To tals",  true,  u""   },
        {"leading ones stay",              u"  Totals",  u"  Totals", true,  u""   },
        {"an empty name is ignored",       u"",          u"Sheet2",   false, u""   },
        {"so is one of blanks",            u"   ",       u"Sheet2",   false, u""   },
        {"its own name in another case",   u"SHEET2",    u"SHEET2",   true,  u""   },
        {"its own name as it is",          u"Sheet2",    u"Sheet2",   true,  u""   },
        {"another's name",                 u"Sheet3",    u"Sheet2",   false, exists},
        {"another's name in another case", u"SHEET1",    u"Sheet2",   false, exists},
        {"another's name with a blank",    u"Sheet1 ",   u"Sheet2",   false, exists},
        {"39 characters",                  longest,      longest,     true,  u""   },
        {"and no more",                    tooLong,      longest,     true,  u""   },
    };
    for (const auto& c : cases) {
        app.newWorkbook();
        machine.userInterface.boxes.clear();
        run([&](DialogModel& dialog) {
            dialog.choose(Names, 1);
            EXPECT_TRUE(dialog.press(Rename)) << c.behaviour;
            EXPECT_EQ(dialog.labelInEdit(), Names);
            EXPECT_TRUE(dialog.endLabelEdit(c.typed));
            EXPECT_TRUE(isShown(dialog)) << c.behaviour;
            EXPECT_TRUE(dialog.isOpen());
        });
        EXPECT_EQ(workbook->sheetAt(1)->name(), c.name) << c.behaviour;
        EXPECT_EQ(workbook->modified, c.modified) << c.behaviour;
        EXPECT_EQ(boxes(), *c.box == 0 ? Texts{} : Texts{c.box}) << c.behaviour;
    }
}

TEST_F(Sheets, renamesByATapOnTheChosenNameAsWell)
{
    run([](DialogModel& dialog) {
        dialog.choose(Names, 2);
        EXPECT_TRUE(dialog.editLabel(Names));
        dialog.endLabelEdit(u"Last");
    });
    EXPECT_EQ(workbook->sheetAt(2)->name(), u"Last");
}

TEST_F(Sheets, deletesASheetWhenThatIsConfirmed)
{
    put(u"A1", u"=Sheet2!A1+1");
    put(u"Sheet2!A1", u"1");
    recalculate();
    app.enterCell(u"x");
    machine.userInterface.answers = {BoxAnswer::No, BoxAnswer::Yes};
    workbook->modified = false;
    run([](DialogModel& dialog) {
        dialog.choose(Names, 1);
        dialog.press(Delete);
        EXPECT_EQ(names().size(), 3U) << "No";
        EXPECT_FALSE(workbook->modified);
        dialog.press(Delete);
        EXPECT_EQ(names(), (Texts{u"Sheet1", u"Sheet3"}));
        EXPECT_TRUE(isShown(dialog));
        EXPECT_EQ(dialog.find(Names)->selected, 0);
    });
    EXPECT_EQ(boxes(), (Texts{u"Delete sheet Sheet2?", u"Delete sheet Sheet2?"}));
    EXPECT_EQ(machine.userInterface.boxes[0].caption, u"Vorn");
    EXPECT_EQ(machine.userInterface.boxes[0].buttons, BoxButtons::YesNo);
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(undoList.steps.size(), 0);
}

TEST_F(Sheets, recalculatesWhatReferredToADeletedSheet)
{
    put(u"A1", u"=Sheet2!A1+1");
    put(u"Sheet2!A1", u"1");
    recalculate();
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"2");
    machine.userInterface.answers = {BoxAnswer::Yes};
    run([](DialogModel& dialog) {
        dialog.choose(Names, 1);
        dialog.press(Delete);
    });
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"!!Ref");
}

TEST_F(Sheets, makesTheFirstSheetTheActiveOneAfterADeletion)
{
    workbook->setCurrentSheet(workbook->sheetAt(2));
    machine.userInterface.answers = {BoxAnswer::Yes};
    run([](DialogModel& dialog) {
        dialog.choose(Names, 1);
        dialog.press(Delete);
    });
    EXPECT_EQ(workbook->currentSheet->index, 0);
}

TEST_F(Sheets, keepsTheLastSheet)
{
    machine.userInterface.answers = {BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::Yes};
    run([](DialogModel& dialog) {
        dialog.press(Delete);
        dialog.press(Delete);
        dialog.press(Delete);
        EXPECT_EQ(names(), Texts{u"Sheet3"});
    });
    EXPECT_EQ(boxes().size(), 2U) << "and does not ask";
}

TEST_F(Sheets, leavesUndoStepsOfInsertingAndRenamingAlone)
{
    app.enterCell(u"x");
    const int steps = undoList.steps.size();
    run([](DialogModel& dialog) {
        dialog.press(New);
        dialog.endLabelEdit(u"Another");
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(undoList.steps.size(), steps);
    EXPECT_EQ(workbook->currentSheet->name(), u"Another") << "the new one is the chosen one";
}

TEST_F(Sheets, areShownAnewHoweverItEnds)
{
    for (int button : {ButtonOk, ButtonCancel}) {
        app.repaintHints = 0;
        run(press(button));
        EXPECT_EQ(app.repaintHints, DirtyAll);
    }
}

} // namespace
} // namespace vorn
