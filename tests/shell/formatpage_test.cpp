// The page of formats, and the dialogs that make new ones.
#include "support/formatdialogs.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class FormatPages : public FormatDialogTest {};

TEST_F(FormatPages, listsTheFormatsOfACategory)
{
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        EXPECT_EQ(control(tab, 1051).entries, (Texts{u"Number", u"Date & Time"}));
        EXPECT_EQ(chosen(tab, 1051), u"Number");
        EXPECT_EQ(control(tab, 1003).entries.size(), 7U);
        EXPECT_EQ(chosen(tab, 1003), u"General");
        EXPECT_TRUE(tab.choose(1051, 1));
        EXPECT_EQ(control(tab, 1003).entries.size(), 9U);
        EXPECT_EQ(chosen(tab, 1003), u"none");
    });
    EXPECT_EQ(undoLabel(), u"") << "a category alone is no choice";
}

TEST_F(FormatPages, showsTheFormatOfTheSelection)
{
    const struct {
        int format;
        std::u16string_view category, sample;
    } cases[] = {
        {0,  u"Number",      u"General"           },
        {5,  u"Number",      u"1000.00%/-1000.00%"},
        {15, u"Number",      u"Text"              },
        {7,  u"Date & Time", u"23-May-99"         },
        {14, u"Date & Time", u"5/23/99 15:45"     },
    };
    for (const auto& c : cases) {
        putStyle(0, 0, StyleFormat, c.format);
        select(0, 0);
        formatCells([&c](DialogModel& dialog) {
            EXPECT_EQ(chosen(page(dialog, FormatTab), 1051), c.category);
            EXPECT_EQ(chosen(page(dialog, FormatTab), 1003), c.sample);
        });
    }
    putStyle(0, 0, StyleFormat, 7);
    select(0, 0, 1, 2);
    formatCells([](DialogModel& dialog) {
        EXPECT_EQ(chosen(page(dialog, FormatTab), 1051), u"Number");
        EXPECT_EQ(chosen(page(dialog, FormatTab), 1003), u"none") << "the selection is mixed";
    });
    EXPECT_EQ(undoLabel(), u"");
    EXPECT_EQ(styleAt(0, 0).format(), 7);
}

TEST_F(FormatPages, makesANumberFormat)
{
    select(0, 0);
    formatCells([this](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        answerNext([](DialogModel& maker) {
            EXPECT_EQ(maker.number(), 137);
            EXPECT_EQ(maker.title(), u"Number Format");
            EXPECT_EQ(control(maker, 1053).entries, (Texts{u"", u"$"}));
            EXPECT_EQ(control(maker, 1054).entries, (Texts{u"", u"%"}));
            EXPECT_EQ(control(maker, 1055).entries, (Texts{u"", u"$", u"-", u"(", u"-$", u"($"}));
            EXPECT_EQ(control(maker, 1057).entries, (Texts{u"", u"%", u")"}));
            EXPECT_EQ(control(maker, 1055).text, u"-");
            EXPECT_EQ(chosen(maker, 1019), u"0");
            EXPECT_EQ(control(maker, 1052).box, BoxState::Off);
            maker.enterText(1053, u"about ");
            chooseText(maker, 1055, u"(");
            chooseText(maker, 1057, u")");
            chooseText(maker, 1019, u"3");
            maker.setBox(1052, BoxState::On);
            maker.press(ButtonOk);
        });
        EXPECT_TRUE(tab.press(1035));
        EXPECT_EQ(chosen(tab, 1003), u"about 1,000.000/(1,000.000)");
        EXPECT_TRUE(control(tab, 1032).enabled) << "a user's format can be deleted";
    });
    EXPECT_EQ(styleAt(0, 0).format(), 16);
}

TEST_F(FormatPages, beginsANewFormatWithTheChosenOne)
{
    formatCells([this](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        chooseText(tab, 1003, u"$1,000.00/($1,000.00)");
        answerNext([](DialogModel& maker) {
            EXPECT_EQ(control(maker, 1053).text, u"$");
            EXPECT_EQ(control(maker, 1055).text, u"($");
            EXPECT_EQ(control(maker, 1057).text, u")");
            EXPECT_EQ(chosen(maker, 1019), u"2");
            EXPECT_EQ(control(maker, 1052).box, BoxState::On);
            maker.press(ButtonOk);
        });
        tab.press(1035);
        EXPECT_EQ(chosen(tab, 1003), u"$1,000.00/($1,000.00)") << "an equal one is used again";
        EXPECT_EQ(workbook->formats.size(), 16);
        answerNext([](DialogModel& maker) {
            chooseText(maker, 1019, u"7");
            maker.press(ButtonCancel);
        });
        tab.press(1035);
        EXPECT_EQ(workbook->formats.size(), 16) << "cancelled";
        EXPECT_EQ(chosen(tab, 1003), u"$1,000.00/($1,000.00)");
    });
}

TEST_F(FormatPages, makesADateFormat)
{
    select(0, 0);
    formatCells([this](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        tab.choose(1051, 1);
        answerNext([](DialogModel& maker) {
            EXPECT_EQ(maker.number(), 139);
            EXPECT_EQ(maker.title(), u"Date & Time Format");
            const Texts parts = {u"", u"23", u"5", u"May", u"99", u"1999"};
            const Texts separators = {u"", u"/", u"-"};
            for (int part : {1063, 1064, 1066})
                EXPECT_EQ(control(maker, part).entries, parts) << part;
            for (int separator : {1055, 1065})
                EXPECT_EQ(control(maker, separator).entries, separators) << separator;
            EXPECT_EQ(control(maker, 1053).entries,
                      (Texts{u"3:45 PM", u"15:45", u"3:45:10 PM", u"15:45:10"}));
            EXPECT_EQ(control(maker, 1057).box, BoxState::On);
            EXPECT_EQ(control(maker, 1058).box, BoxState::Off);
            EXPECT_EQ(chosen(maker, 1063), u"5") << "the short date to begin with";
            EXPECT_EQ(chosen(maker, 1055), u"/");
            chooseText(maker, 1063, u"1999");
            chooseText(maker, 1055, u"-");
            chooseText(maker, 1064, u"May");
            chooseText(maker, 1065, u"-");
            chooseText(maker, 1066, u"23");
            maker.setBox(1058, BoxState::On);
            chooseText(maker, 1053, u"15:45:10");
            maker.press(ButtonOk);
        });
        tab.press(1035);
        EXPECT_EQ(chosen(tab, 1003), u"1999-May-23 15:45:10");
    });
    EXPECT_EQ(styleAt(0, 0).format(), 16);
}

TEST_F(FormatPages, keepsTheDateDialogOpenOverTwoPartsOfAKind)
{
    formatCells([this](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        tab.choose(1051, 1);
        answerNext([](DialogModel& maker) {
            chooseText(maker, 1064, u"May");
            maker.press(ButtonOk);
            EXPECT_TRUE(maker.isOpen());
            chooseText(maker, 1063, u"23");
            maker.press(ButtonOk);
            EXPECT_FALSE(maker.isOpen());
        });
        tab.press(1035);
        EXPECT_EQ(chosen(tab, 1003), u"23/May/99");
    });
    ASSERT_EQ(machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(machine.userInterface.boxes[0].text, u"Invalid date format!");
}

TEST_F(FormatPages, takesTheShortDateForNeitherDateNorTime)
{
    formatCells([this](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        tab.choose(1051, 1);
        tab.choose(1003, 4);
        answerNext([](DialogModel& maker) {
            EXPECT_EQ(control(maker, 1057).box, BoxState::Off);
            EXPECT_EQ(control(maker, 1058).box, BoxState::On);
            maker.setBox(1058, BoxState::Off);
            maker.press(ButtonOk);
        });
        tab.press(1035);
        EXPECT_EQ(chosen(tab, 1003), u"5/23/99");
    });
    EXPECT_EQ(styleAt(0, 0).format(), 6);
}

TEST_F(FormatPages, deletesAFormatOfTheUser)
{
    NumberFormat record;
    makeNumberFormat(record, false, false, 1, u"", u"", u"-", u"");
    workbook->setFormat(record, -1);
    makeNumberFormat(record, false, false, 3, u"", u"", u"-", u"");
    workbook->setFormat(record, -1);
    putStyle(0, 0, StyleFormat, 17);
    putStyle(1, 0, StyleFormat, 16);
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        EXPECT_EQ(chosen(tab, 1003), u"1000.000/-1000.000");
        EXPECT_TRUE(control(tab, 1032).enabled);
        chooseText(tab, 1003, u"General");
        EXPECT_FALSE(control(tab, 1032).enabled);
        EXPECT_FALSE(tab.press(1032));
        chooseText(tab, 1003, u"1000.0/-1000.0");
        EXPECT_TRUE(tab.press(1032));
        EXPECT_EQ(control(tab, 1003).entries.size(), 8U);
        EXPECT_EQ(chosen(tab, 1003), u"General");
        EXPECT_FALSE(control(tab, 1032).enabled);
        EXPECT_EQ(styleAt(1, 0).format(), 0) << "a cell that had it";
        EXPECT_EQ(styleAt(0, 0).format(), 16) << "a cell that had the one behind it";
        chooseText(tab, 1003, u"1000.000/-1000.000");
    });
    EXPECT_EQ(undoLabel(), u"") << "the format of the selection is the same as before";
    formatCells([](DialogModel& dialog) { page(dialog, FormatTab).press(1032); });
    EXPECT_EQ(styleAt(0, 0).format(), 0);
    EXPECT_EQ(workbook->formats.size(), 16);
    EXPECT_EQ(undoLabel(), u"") << "the cells were General already";
}

TEST_F(FormatPages, showsTheShortDateAfterADateIsDeleted)
{
    NumberFormat record;
    makeDateFormat(record, u"yyyy", u"");
    workbook->setFormat(record, -1);
    putStyle(0, 0, StyleFormat, 16);
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FormatTab);
        EXPECT_EQ(chosen(tab, 1003), u"1999");
        tab.press(1032);
        EXPECT_EQ(chosen(tab, 1003), u"5/23/99");
    });
    EXPECT_EQ(styleAt(0, 0).format(), 6);
    EXPECT_EQ(undoLabel(), u"Format Cells");
}

} // namespace
} // namespace vorn
