#include "shell/dialogs/dialogtest.h"

#include "core/error.h"
#include "shell/commandhandlers.h"

namespace vorn {
namespace {

class GoTo : public DialogTest {
protected:
    static Answer type(const std::u16string& reference)
    {
        return [reference](DialogModel& dialog) {
            dialog.enterText(1019, reference);
            dialog.press(ButtonOk);
        };
    }
};

TEST_F(GoTo, selectsWhatTheReferenceNames)
{
    const struct {
        const char* behaviour;
        const char16_t *text, *selection, *activeCell;
        int sheet;
    } cases[] = {
        {"a cell",                             u"B3",               u"B3",        u"B3",      1},
        {"in whatever case, with dollars",     u"$b$3",             u"B3",        u"B3",      1},
        {"a range",                            u"B3:D5",            u"B3:D5",     u"B3",      1},
        {"the first corner is the active one", u"D5:B3",            u"B3:D5",     u"D5",      1},
        {"the other two corners",              u"D3:B5",            u"B3:D5",     u"D3",      1},
        {"two dots as well",                   u"B3..D5",           u"B3:D5",     u"B3",      1},
        {"the last cell",                      u"IV16384",          u"IV16384",   u"IV16384", 1},
        {"whole columns",                      u"A1:C16384",        u"A1:C16384", u"A1",      1},
        {"another sheet",                      u"Sheet3!A2",        u"A2",        u"A2",      2},
        {"a quoted one",                       u"'Sheet1'!A2:B3",   u"A2:B3",     u"A2",      0},
        {"the same one",                       u"sheet2!C3",        u"C3",        u"C3",      1},
        {"the first of several",               u"Sheet1:Sheet3!C4", u"C4",        u"C4",      0},
    };
    for (const auto& c : cases) {
        workbook->setCurrentSheet(workbook->sheetAt(1));
        willAnswer(type(c.text));
        goToCommand();
        EXPECT_EQ(workbook->currentSheet->index, c.sheet) << c.behaviour;
        EXPECT_EQ(selection(), c.selection) << c.behaviour;
        EXPECT_EQ(activeCell(), c.activeCell) << c.behaviour;
    }
    EXPECT_TRUE(boxes().empty());
    EXPECT_FALSE(workbook->modified);
}

TEST_F(GoTo, tellsWhatIsWrongAndStaysOpen)
{
    const struct {
        const char* behaviour;
        const char16_t *text, *box;
    } cases[] = {
        {"no reference",                    u"foo",         u"Unexpected token"     },
        {"nothing",                         u"",            u"Unexpected token"     },
        {"a number",                        u"12",          u"Unexpected token"     },
        {"something behind it",             u"A1 B2",       u"Unexpected token"     },
        {"a list",                          u"A1,B2",       u"Unexpected token"     },
        {"a sheet that is not there",       u"'Sheet9'!A1", u"Sheet name expected"  },
        {"the same unquoted is but a word", u"Sheet9!A1",   u"Unexpected token"     },
        {"a sheet without its sign",        u"Sheet1 A1",   u"\"!\" expected"       },
        {"a sheet alone",                   u"Sheet1",      u"\"!\" expected"       },
        {"a sheet without a reference",     u"Sheet1!",     u"Unexpected token"     },
        {"a row that is too great",         u"$A$16385",    u"Row number is too big"},
        {"a column that is too great",      u"$IW$1",       u"Invalid column name"  },
    };
    for (const auto& c : cases) {
        selectCells(u"C7");
        machine.userInterface.boxes.clear();
        willAnswer([&](DialogModel& dialog) {
            dialog.enterText(1019, c.text);
            EXPECT_TRUE(dialog.press(ButtonOk));
            EXPECT_TRUE(dialog.isOpen()) << c.behaviour;
            EXPECT_EQ(dialog.focus(), 1019);
            EXPECT_EQ(boxes(), Texts{c.box}) << c.behaviour;
            EXPECT_EQ(dialog.find(1019)->text, c.text) << "as it was typed";
        });
        goToCommand();
        EXPECT_EQ(selection(), u"C7") << c.behaviour;
        EXPECT_FALSE(errorStands());
    }
}

TEST_F(GoTo, takesARightReferenceAfterAWrongOne)
{
    willAnswer([](DialogModel& dialog) {
        dialog.enterText(1019, u"wrong");
        dialog.press(ButtonOk);
        dialog.enterText(1019, u"D4");
        dialog.press(ButtonOk);
    });
    goToCommand();
    EXPECT_EQ(selection(), u"D4");
    EXPECT_EQ(boxes().size(), 1U);
}

TEST_F(GoTo, doesNothingWhenItIsCancelled)
{
    selectCells(u"C7");
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Go to");
        EXPECT_EQ(dialog.find(1019)->text, u"");
        dialog.enterText(1019, u"D4");
        dialog.press(ButtonCancel);
    });
    goToCommand();
    EXPECT_EQ(selection(), u"C7");
    EXPECT_EQ(opened, std::vector<int>{126});
}

} // namespace
} // namespace vorn
