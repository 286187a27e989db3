#include "shell/dialogs/dialogtest.h"

#include "shell/commandhandlers.h"

namespace vorn {
namespace {

class ZoomDialog : public DialogTest {};

TEST_F(ZoomDialog, setsTheZoomOfAllSheets)
{
    workbook->currentSheet->zoom = 80;
    const struct {
        const char16_t* text;
        int zoom;
    } cases[] = {
        {u"25",   25 },
        {u"26",   26 },
        {u"199",  199},
        {u"200",  200},
        {u" 60 ", 60 },
    };
    for (const auto& c : cases) {
        workbook->modified = false;
        willAnswer([&](DialogModel& dialog) {
            dialog.enterText(1019, c.text);
            dialog.press(ButtonOk);
        });
        zoomCommand();
        for (const Sheet* sheet : workbook->sheets)
            EXPECT_EQ(sheet->zoom, c.zoom);
        EXPECT_TRUE(workbook->modified);
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ZoomDialog, beginsWithTheZoomOfTheActiveSheet)
{
    workbook->sheetAt(0)->zoom = 300;
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.title(), u"Zoom");
        EXPECT_EQ(dialog.helpAnchor(), u"");
        EXPECT_EQ(dialog.find(1019)->text, u"300");
        dialog.press(ButtonOk);
        EXPECT_TRUE(dialog.isOpen()) << "which is more than it takes";
    });
    zoomCommand();
    EXPECT_EQ(workbook->sheetAt(0)->zoom, 300);
}

TEST_F(ZoomDialog, refusesOtherNumbersWithAMessageAndStaysOpen)
{
    for (const char16_t* text : {u"24", u"201", u"0", u"-50", u"", u"fifty", u"50%", u"99.5"}) {
        machine.userInterface.boxes.clear();
        willAnswer([&](DialogModel& dialog) {
            dialog.enterText(1019, text);
            EXPECT_TRUE(dialog.press(ButtonOk));
            EXPECT_TRUE(dialog.isOpen());
            EXPECT_EQ(dialog.focus(), 1019);
        });
        zoomCommand();
        EXPECT_EQ(boxes(), Texts{u"The number must be between 25 and 200."});
        EXPECT_EQ(machine.userInterface.boxes[0].caption, u"Vorn");
        EXPECT_EQ(workbook->currentSheet->zoom, 100);
    }
    EXPECT_FALSE(workbook->modified);
}

class AboutDialog : public DialogTest {};

TEST_F(AboutDialog, namesTheProgramAndItsVersion)
{
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.number(), 143);
        EXPECT_EQ(dialog.title(), u"About Vorn");
        EXPECT_EQ(dialog.helpAnchor(), u"copyright");
        EXPECT_EQ(dialog.find(1111)->text, u"Vorn");
        EXPECT_TRUE(dialog.find(1112)->text.starts_with(u"Version "));
        EXPECT_GT(dialog.find(1112)->text.size(), 8U);
        dialog.press(ButtonOk);
    });
    aboutCommand();
    EXPECT_EQ(opened.size(), 1U);
    EXPECT_FALSE(workbook->modified);
}

} // namespace
} // namespace vorn
