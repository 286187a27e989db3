// The sheet Format Cells as a whole, and its pages of alignment, borders and protection.
#include "shell/pagesheet.h"
#include "support/formatdialogs.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class FormatDialogs : public FormatDialogTest {};

// --- The sheet

TEST_F(FormatDialogs, areFivePagesOfOneSheet)
{
    formatCells([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Format Cells");
        std::vector<int> numbers;
        for (const DialogModel* each : dialog.pages())
            numbers.push_back(each->number());
        EXPECT_EQ(numbers, (std::vector<int>{133, 134, 135, 105, 161}));
        EXPECT_EQ(dialog.helpAnchor(), u"format");
    });
}

TEST_F(FormatDialogs, openOnThePageThatWasOpenLast)
{
    formatCells([](DialogModel& dialog) {
        auto& pages = static_cast<PageSheet&>(dialog);
        EXPECT_EQ(pages.page(), 0);
        pages.turnTo(3);
    });
    EXPECT_EQ(application.formatCellsPage, 3);
    formatCells([](DialogModel& dialog) {
        auto& pages = static_cast<PageSheet&>(dialog);
        EXPECT_EQ(pages.page(), 3);
        pages.turnTo(1);
        pages.press(ButtonCancel);
    });
    EXPECT_EQ(application.formatCellsPage, 1) << "also after Cancel";
}

TEST_F(FormatDialogs, makeNoStepWithoutAChange)
{
    putStyle(0, 0, StyleHorizontal, AlignJustify);
    putStyle(1, 0, StyleFont, 3);
    select(0, 0, 3, 3);
    formatCells([](DialogModel&) {});
    EXPECT_EQ(undoLabel(), u"");
    formatCells([](DialogModel& dialog) {
        page(dialog, FontTab).setBox(1009, BoxState::On);
        dialog.press(ButtonCancel);
    });
    EXPECT_EQ(undoLabel(), u"");
}

TEST_F(FormatDialogs, applyAllPagesInOneStep)
{
    select(1, 1, 2, 2);
    formatCells([](DialogModel& dialog) {
        chooseText(page(dialog, FormatTab), 1003, u"1000.00/-1000.00");
        chooseText(page(dialog, AlignmentTab), 1004, u"Right");
        page(dialog, FontTab).setBox(1009, BoxState::On);
        page(dialog, BorderTab).setBox(1016, BoxState::On);
        page(dialog, ProtectTab).setBox(1098, BoxState::Off);
    });
    EXPECT_EQ(undoList.position, 1);
    EXPECT_EQ(undoLabel(), u"Format Cells");
    EXPECT_EQ(styleAt(2, 2).format(), 2);
    EXPECT_EQ(styleAt(2, 2).get(StyleHorizontal), AlignRight);
    EXPECT_EQ(fontAt(2, 2).weight, 700);
    EXPECT_EQ(styleAt(2, 2).get(StyleTopLine), 1);
    EXPECT_EQ(styleAt(2, 2).get(StyleLocked), 0);
}

TEST_F(FormatDialogs, haveBoxesOfThreeStates)
{
    const struct {
        int page, box;
        StyleField field;
        int value; // other than the default
    } cases[] = {
        {AlignmentTab, 1045, StyleWrap,       1},
        {FontTab,      1009, StyleFont,       3},
        {FontTab,      1010, StyleFont,       3},
        {BorderTab,    1014, StyleLeftLine,   1},
        {BorderTab,    1015, StyleRightLine,  1},
        {BorderTab,    1016, StyleTopLine,    1},
        {BorderTab,    1017, StyleBottomLine, 1},
        {ProtectTab,   1098, StyleLocked,     0},
        {ProtectTab,   1058, StyleHidden,     1},
    };
    int row = 0;
    for (const auto& c : cases) {
        putStyle(0, row, c.field, c.value);
        select(0, row, 2);
        formatCells([&c](DialogModel& dialog) {
            DialogModel& tab = page(dialog, c.page);
            EXPECT_EQ(control(tab, c.box).box, BoxState::Mixed) << c.box;
            EXPECT_TRUE(tab.tapBox(c.box));
            EXPECT_EQ(control(tab, c.box).box, BoxState::Off) << c.box;
            EXPECT_TRUE(tab.tapBox(c.box));
            EXPECT_EQ(control(tab, c.box).box, BoxState::On) << c.box;
            EXPECT_TRUE(tab.tapBox(c.box));
            EXPECT_EQ(control(tab, c.box).box, BoxState::Off) << c.box;
        });
        EXPECT_EQ(undoList.position, row + 1) << c.box;
        if (c.field != StyleFont) {
            EXPECT_EQ(styleAt(0, row).get(c.field), 0) << c.box;
            EXPECT_EQ(styleAt(1, row).get(c.field), 0) << c.box;
        }
        ++row;
    }
}

// --- Alignment

TEST_F(FormatDialogs, alignByTheirLists)
{
    formatCells([](DialogModel& dialog) {
        const DialogModel& tab = page(dialog, AlignmentTab);
        EXPECT_EQ(control(tab, 1004).entries,
                  (Texts{u"General", u"Left", u"Center", u"Right", u"Center Selection"}));
        EXPECT_EQ(control(tab, 1044).entries, (Texts{u"Top", u"Center", u"Bottom"}));
        EXPECT_EQ(chosen(tab, 1004), u"General");
        EXPECT_EQ(chosen(tab, 1044), u"Bottom");
    });
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        chooseText(page(dialog, AlignmentTab), 1004, u"Center Selection");
        chooseText(page(dialog, AlignmentTab), 1044, u"Top");
        page(dialog, AlignmentTab).tapBox(1045);
    });
    EXPECT_EQ(styleAt(0, 0).get(StyleHorizontal), 6);
    EXPECT_EQ(styleAt(0, 0).get(StyleVertical), 0);
    EXPECT_EQ(styleAt(0, 0).get(StyleWrap), 1);
    formatCells([](DialogModel& dialog) {
        EXPECT_EQ(chosen(page(dialog, AlignmentTab), 1004), u"Center Selection");
    });
    putStyle(0, 0, StyleHorizontal, AlignFill);
    formatCells([](DialogModel& dialog) {
        EXPECT_EQ(chosen(page(dialog, AlignmentTab), 1004), u"none");
        page(dialog, AlignmentTab).tapBox(1045);
    });
    EXPECT_EQ(styleAt(0, 0).get(StyleHorizontal), AlignFill) << "what has no name stays";
    EXPECT_EQ(styleAt(0, 0).get(StyleWrap), 1);
}

// --- Border and protection

TEST_F(FormatDialogs, drawBorders)
{
    select(1, 1, 2, 2);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, BorderTab);
        for (int box : {1014, 1015, 1016, 1017, 1018})
            EXPECT_EQ(control(tab, box).box, BoxState::Off) << box;
        EXPECT_FALSE(tab.setBox(1018, BoxState::Mixed)) << "an outline has two states";
        tab.tapBox(1017);
        tab.tapBox(1018);
    });
    EXPECT_EQ(styleAt(1, 1).get(StyleBottomLine), 1);
    EXPECT_EQ(styleAt(1, 1).get(StyleLeftLine), 1);
    EXPECT_EQ(styleAt(1, 1).get(StyleTopLine), 1);
    EXPECT_EQ(styleAt(1, 1).get(StyleRightLine), 0);
}

TEST_F(FormatDialogs, protectCells)
{
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, ProtectTab);
        EXPECT_EQ(control(tab, 1098).box, BoxState::On);
        EXPECT_EQ(control(tab, 1058).box, BoxState::Off);
        tab.tapBox(1098);
        tab.tapBox(1058);
    });
    EXPECT_EQ(styleAt(0, 0).get(StyleLocked), 0);
    EXPECT_EQ(styleAt(0, 0).get(StyleHidden), 1);
}

} // namespace
} // namespace vorn
