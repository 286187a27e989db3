#include "shell/dialogs/dialogtest.h"

#include "shell/commandhandlers.h"

namespace vorn {
namespace {

constexpr int FormulaBar = 1071, Titles = 1026, Gridlines = 1027, Zeros = 1028;
constexpr int Move = 1081, ZoomOn = 1091, Zoom = 1019;

class Options : public DialogTest {
protected:
    void run(Answer answer)
    {
        willAnswer(std::move(answer));
        optionsCommand();
    }

    // Does something on a page, and confirms the sheet.
    void runPage(std::size_t page, const Answer& answer)
    {
        run([&](DialogModel& sheet) {
            answer(*sheet.pages()[page]);
            EXPECT_TRUE(sheet.press(ButtonOk));
        });
    }
};

TEST_F(Options, isASheetOfPages)
{
    run([](DialogModel& sheet) {
        EXPECT_EQ(sheet.title(), u"Options");
        ASSERT_EQ(sheet.pages().size(), 2U);
        EXPECT_EQ(sheet.pages()[0]->number(), 127);
        EXPECT_EQ(sheet.pages()[0]->title(), u"View");
        EXPECT_EQ(sheet.pages()[1]->number(), 152);
        EXPECT_EQ(sheet.pages()[1]->title(), u"General");
        for (const DialogModel* page : sheet.pages())
            EXPECT_EQ(page->helpAnchor(), u"options");
    });
    EXPECT_EQ(opened, std::vector<int>{127});
}

TEST_F(Options, showsAndSetsWhatIsSeenOfTheActiveSheet)
{
    struct {
        int control;
        bool& field;
    } cases[] = {
        {FormulaBar, app.formulaBarVisible                },
        {Titles,     workbook->currentSheet->showTitles   },
        {Gridlines,  workbook->currentSheet->showGridlines},
        {Zeros,      workbook->currentSheet->showZeros    },
    };
    for (auto& c : cases) {
        EXPECT_TRUE(c.field);
        for (bool now : {true, false}) {
            runPage(0, [&](DialogModel& page) {
                EXPECT_EQ(page.find(c.control)->box, now ? BoxState::On : BoxState::Off);
                page.tapBox(c.control);
                EXPECT_EQ(c.field, now) << "not before OK";
            });
            EXPECT_EQ(c.field, !now) << c.control;
        }
        for (const auto& other : cases)
            EXPECT_TRUE(other.field) << "the others are left alone";
    }
    EXPECT_TRUE(workbook->sheetAt(1)->showGridlines);
}

TEST_F(Options, areOfTheActiveSheetOnly)
{
    workbook->setCurrentSheet(workbook->sheetAt(1));
    runPage(0, [](DialogModel& page) { page.tapBox(Gridlines); });
    EXPECT_TRUE(workbook->sheetAt(0)->showGridlines);
    EXPECT_FALSE(workbook->sheetAt(1)->showGridlines);
}

TEST_F(Options, showsAndSetsWhereEnterGoes)
{
    const MoveAfterEnter moves[] = {MoveNowhere, MoveRight, MoveDown};
    for (MoveAfterEnter from : moves) {
        for (MoveAfterEnter to : moves) {
            app.moveAfterEnter = from;
            runPage(1, [&](DialogModel& page) {
                EXPECT_EQ(page.find(Move)->entries, (Texts{u"None", u"Right", u"Down"}));
                EXPECT_EQ(page.find(Move)->selected, from);
                page.choose(Move, to);
            });
            EXPECT_EQ(app.moveAfterEnter, to);
        }
    }
}

TEST_F(Options, showsAndSetsTheZoomOfFullScreen)
{
    runPage(1, [](DialogModel& page) {
        EXPECT_EQ(page.find(ZoomOn)->box, BoxState::On);
        EXPECT_EQ(page.find(Zoom)->text, u"90");
        page.tapBox(ZoomOn);
    });
    EXPECT_FALSE(app.fullScreenZoomOn);
    const struct {
        const char* behaviour;
        const char16_t* text;
        int zoom;
    } cases[] = {
        {"what is typed",               u"120",            120},
        {"the least",                   u"25",             25 },
        {"below it",                    u"24",             25 },
        {"far below it",                u"-3",             25 },
        {"the most",                    u"200",            200},
        {"above it",                    u"201",            200},
        {"far above it",                u"99999999999999", 200},
        {"nothing is 0",                u"",               25 },
        {"and so is what is no number", u"x",              25 },
    };
    for (const auto& c : cases) {
        runPage(1, [&](DialogModel& page) { page.enterText(Zoom, c.text); });
        EXPECT_EQ(app.fullScreenZoom, c.zoom) << c.behaviour;
    }
    EXPECT_TRUE(boxes().empty()) << "without a message";
}

TEST_F(Options, setsNothingWhenItIsCancelled)
{
    run([](DialogModel& sheet) {
        sheet.pages()[0]->tapBox(FormulaBar);
        sheet.pages()[1]->enterText(Zoom, u"50");
        sheet.press(ButtonCancel);
    });
    EXPECT_TRUE(app.formulaBarVisible);
    EXPECT_EQ(app.fullScreenZoom, 90);
}

TEST_F(Options, alwaysMarksTheWorkbookModifiedAndShowsTheSheetAnew)
{
    for (int button : {ButtonOk, ButtonCancel}) {
        workbook->modified = false;
        app.repaintHints = 0;
        run(press(button));
        EXPECT_TRUE(workbook->modified) << button;
        EXPECT_EQ(app.repaintHints, DirtyAll) << button;
    }
}

TEST_F(Options, opensOnThePageThatWasInFrontLast)
{
    run([](DialogModel& sheet) {
        sheet.turnTo(1);
        sheet.press(ButtonOk);
    });
    EXPECT_EQ(app.optionsPage, 1);
    run(press(ButtonCancel));
    EXPECT_EQ(app.optionsPage, 1);
}

} // namespace
} // namespace vorn
