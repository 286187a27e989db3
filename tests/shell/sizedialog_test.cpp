// The dialog of heights and widths.
#include "support/formatdialogs.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class SizeDialog : public FormatDialogTest {};

TEST_F(SizeDialog, asksForAHeightInPoints)
{
    const struct {
        const char* phrase;
        std::u16string_view typed;
        int height;
        bool hidden;
    } cases[] = {
        {"points",             u"20",    400,  false},
        {"parts of a point",   u"12.25", 245,  false},
        {"blanks around it",   u" 15 ",  300,  false},
        {"too many",           u"500",   8180, false},
        {"none hides",         u"0",     255,  true },
        {"less than none too", u"-1",    255,  true },
    };
    int row = 0;
    for (const auto& c : cases) {
        select(1, row);
        answer([&c](DialogModel& dialog) {
            EXPECT_EQ(dialog.number(), 146);
            EXPECT_EQ(dialog.title(), u"Row height");
            EXPECT_EQ(control(dialog, 1019).text, u"12.75");
            EXPECT_EQ(dialog.focus(), 1019);
            dialog.enterText(1019, c.typed);
        });
        rowHeightCommand();
        EXPECT_EQ(sheet().rowHeight(row), c.height) << c.phrase;
        EXPECT_EQ(sheet().rowHidden(row), c.hidden) << c.phrase;
        EXPECT_EQ(sheet().rowHasCustomHeight(row), !c.hidden) << c.phrase;
        EXPECT_EQ(undoLabel(), u"Row Height") << c.phrase;
        ++row;
    }
}

TEST_F(SizeDialog, asksForAWidthInCharacters)
{
    const struct {
        const char* phrase;
        std::u16string_view typed;
        int width;
        bool hidden;
    } cases[] = {
        {"characters",    u"10",  2742,  false},
        {"less than one", u"0.5", 218,   false},
        {"too many",      u"300", 65462, false},
        {"none hides",    u"0",   2300,  true },
    };
    int column = 0;
    for (const auto& c : cases) {
        select(column, 1);
        answer([&c](DialogModel& dialog) {
            EXPECT_EQ(dialog.number(), 146);
            EXPECT_EQ(dialog.title(), u"Column width");
            EXPECT_EQ(control(dialog, 1019).text, u"8.27");
            dialog.enterText(1019, c.typed);
        });
        columnWidthCommand();
        EXPECT_EQ(sheet().columns.columnWidth(column), c.width) << c.phrase;
        EXPECT_EQ(sheet().columns.columnHidden(column), c.hidden) << c.phrase;
        EXPECT_EQ(undoLabel(), u"Column Width") << c.phrase;
        ++column;
    }
}

TEST_F(SizeDialog, showsTheSizeOfTheActiveCell)
{
    sheet().setRowHeight(2, 333, true);
    sheet().columns.setColumnWidth(2, 2, 2742);
    select(2, 2, 3, 3);
    answer([](DialogModel& dialog) { EXPECT_EQ(control(dialog, 1019).text, u"16.65"); });
    rowHeightCommand();
    EXPECT_EQ(sheet().rowHeight(4), 333) << "OK gives its height to the others";
    answer([](DialogModel& dialog) { EXPECT_EQ(control(dialog, 1019).text, u"10.00"); });
    columnWidthCommand();
    EXPECT_EQ(sheet().columns.columnWidth(4), 2742);
    sheet().columns.setColumnHidden(2, 2, true);
    answer([](DialogModel& dialog) {
        EXPECT_EQ(control(dialog, 1019).text, u"0.00");
        dialog.press(ButtonCancel);
    });
    columnWidthCommand();
}

TEST_F(SizeDialog, losesNothingOfASizeThatIsShownRounded)
{
    select(0, 0);
    answer([](DialogModel&) {});
    columnWidthCommand();
    EXPECT_EQ(sheet().columns.columnWidth(0), 2300);
}

TEST_F(SizeDialog, staysOpenOverWhatIsNoSize)
{
    select(0, 0);
    for (const char16_t* typed : {u"", u"abc", u"1/2/99"}) {
        answer([typed](DialogModel& dialog) {
            dialog.enterText(1019, typed);
            dialog.press(ButtonOk);
            EXPECT_TRUE(dialog.isOpen());
        });
        rowHeightCommand();
    }
    EXPECT_EQ(undoLabel(), u"");
    EXPECT_FALSE(sheet().rowHidden(0));
}

TEST_F(SizeDialog, readsSizesAsTheLocaleWritesThem)
{
    const TestPlatform german("de_DE");
    machine.userInterface.dialogUser = nullptr;
    UserInterface* former = platform.userInterface;
    platform.userInterface = &machine.userInterface;
    select(0, 0);
    answer([](DialogModel& dialog) {
        EXPECT_EQ(control(dialog, 1019).text, u"12,75");
        dialog.enterText(1019, u"20,5");
    });
    rowHeightCommand();
    EXPECT_EQ(sheet().rowHeight(0), 410);
    platform.userInterface = former;
}

} // namespace
} // namespace vorn
