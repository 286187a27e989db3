// The sheet Format Cells with its pages, the dialogs that it opens, and the dialog of heights and
// widths, answered by hand.
#include "core/workbook.h"
#include "editing/undo.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"
#include "shell/pagesheet.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

using Texts = std::vector<std::u16string>;

enum { FormatTab = 133, AlignmentTab = 134, FontTab = 135, BorderTab = 105, ProtectTab = 161 };

class FormatDialogs : public testing::Test {
protected:
    static Sheet& sheet() { return *workbook->currentSheet; }

    static void select(int column, int row, int columns = 1, int rows = 1)
    {
        RangeRef range;
        range.set(column, row, columns, rows);
        sheet().selection.select(range.first(), range.last());
    }
    static const CellStyle& styleAt(int column, int row)
    {
        return workbook->styles[sheet().cellStyle(column, row)];
    }
    static const FontRecord& fontAt(int column, int row)
    {
        return workbook->fonts[styleAt(column, row).font()];
    }
    static void putStyle(int column, int row, StyleField field, int value)
    {
        CellStyle style = defaultStyle();
        style.set(field, value);
        sheet().setCellStyle(column, row, workbook->addStyle(style));
    }

    // A page of an open sheet.
    static DialogModel& page(DialogModel& dialog, int number)
    {
        for (DialogModel* candidate : dialog.pages()) {
            if (candidate->number() == number)
                return *candidate;
        }
        ADD_FAILURE() << "no page " << number;
        return dialog;
    }
    static const Control& control(const DialogModel& dialog, int number)
    {
        return *dialog.find(number);
    }
    static std::u16string chosen(const DialogModel& dialog, int number)
    {
        const Control& list = control(dialog, number);
        return list.selected == NoEntry ? u"none"
                                        : list.entries[static_cast<std::size_t>(list.selected)];
    }
    static bool chooseText(DialogModel& dialog, int number, std::u16string_view text)
    {
        return dialog.choose(number, control(dialog, number).entryOf(text));
    }

    // Runs Format Cells; `work` gets the open sheet, and leaves it open for OK.
    void formatCells(const std::function<void(DialogModel&)>& work)
    {
        answer(work);
        formatCellsCommand();
    }
    void answer(const std::function<void(DialogModel&)>& work)
    {
        machine.userInterface.dialogUser = [this, work](DialogModel& dialog) {
            if (next_) {
                std::exchange(next_, nullptr)(dialog);
                return;
            }
            work(dialog);
            dialog.press(ButtonOk);
        };
    }

    // Answers the next dialog that opens while another is open.
    void answerNext(const std::function<void(DialogModel&)>& work) { next_ = work; }

    TestPlatform machine;
    Application application;

private:
    std::function<void(DialogModel&)> next_;
};

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

// --- Format

TEST_F(FormatDialogs, listTheFormatsOfACategory)
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

TEST_F(FormatDialogs, showTheFormatOfTheSelection)
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

TEST_F(FormatDialogs, makeANumberFormat)
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

TEST_F(FormatDialogs, beginANewFormatWithTheChosenOne)
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

TEST_F(FormatDialogs, makeADateFormat)
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

TEST_F(FormatDialogs, keepTheDateDialogOpenOverTwoPartsOfAKind)
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

TEST_F(FormatDialogs, takeTheShortDateForNeitherDateNorTime)
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

TEST_F(FormatDialogs, deleteAFormatOfTheUser)
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

TEST_F(FormatDialogs, showTheShortDateAfterADateIsDeleted)
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

// --- Font

TEST_F(FormatDialogs, showTheFontOfTheSelection)
{
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        const DialogModel& tab = page(dialog, FontTab);
        EXPECT_EQ(control(tab, 1005).entries,
                  (Texts{u"Tahoma", u"Courier New", u"Arial", u"Fixed"}));
        EXPECT_EQ(chosen(tab, 1005), u"Tahoma");
        EXPECT_EQ(control(tab, 1006).entries, (Texts{u"8", u"9", u"10", u"11", u"12", u"14", u"16",
                                                     u"20", u"24", u"28", u"36"}));
        EXPECT_EQ(chosen(tab, 1006), u"10");
        EXPECT_EQ(control(tab, 1007).entries.size(), 16U);
        EXPECT_EQ(chosen(tab, 1007), u"Black");
        EXPECT_EQ(chosen(tab, 1008), u"White");
    });
}

TEST_F(FormatDialogs, showNoFontForTwo)
{
    putStyle(0, 0, StyleFont, 3);
    select(0, 0, 2);
    formatCells([](DialogModel& dialog) {
        const DialogModel& tab = page(dialog, FontTab);
        EXPECT_EQ(chosen(tab, 1005), u"none");
        EXPECT_EQ(chosen(tab, 1006), u"10");
        EXPECT_EQ(control(tab, 1009).box, BoxState::Mixed);
    });
    EXPECT_EQ(undoLabel(), u"");
}

TEST_F(FormatDialogs, setAFont)
{
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FontTab);
        chooseText(tab, 1005, u"Courier New");
        chooseText(tab, 1006, u"20");
        chooseText(tab, 1007, u"Red");
        chooseText(tab, 1008, u"Light Gray");
        tab.setBox(1010, BoxState::On);
        tab.setBox(1011, BoxState::On);
    });
    const FontRecord& font = fontAt(0, 0);
    EXPECT_EQ(font.face(), u"Courier New");
    EXPECT_EQ(font.family, 49);
    EXPECT_EQ(font.height, 400);
    EXPECT_EQ(font.colour, 10);
    EXPECT_EQ(font.attributes, FontItalic);
    EXPECT_EQ(font.underline, 1);
    EXPECT_EQ(styleAt(0, 0).get(StyleFill), 22);
    EXPECT_EQ(sheet().rowHeight(0), 510);
}

TEST_F(FormatDialogs, offerTheColoursOfThePaletteByName)
{
    const struct {
        std::u16string_view name;
        int colour;
        std::uint32_t painted; // 0x00BBGGRR
    } colours[] = {
        {u"Black",        8,  0x000000},
        {u"White",        9,  0xFFFFFF},
        {u"Light Gray",   22, 0xC0C0C0},
        {u"Gray",         23, 0x808080},
        {u"Red",          10, 0x0000FF},
        {u"Green",        11, 0x00FF00},
        {u"Blue",         12, 0xFF0000},
        {u"Yellow",       13, 0x00FFFF},
        {u"Magenta",      14, 0xFF00FF},
        {u"Cyan",         15, 0xFFFF00},
        {u"Dark Red",     16, 0x000080},
        {u"Dark Green",   17, 0x008000},
        {u"Dark Blue",    18, 0x800000},
        {u"Dark Yellow",  19, 0x008080},
        {u"Dark Magenta", 20, 0x800080},
        {u"Dark Cyan",    21, 0x808000},
    };
    select(0, 0);
    for (const auto& c : colours) {
        formatCells([&c](DialogModel& dialog) {
            EXPECT_TRUE(chooseText(page(dialog, FontTab), 1008, c.name));
        });
        // White is what an automatic background shows, so it is no change there.
        const int fill = styleAt(0, 0).get(StyleFill);
        EXPECT_EQ(fill, c.colour);
        EXPECT_EQ(workbook->palette[fill - FirstPaletteColour], c.painted);
    }
}

TEST_F(FormatDialogs, offerASizeThatNoListHas)
{
    FontRecord font = defaultFont(0);
    font.height = 260;
    font.setFace(u"Unknown");
    putStyle(0, 0, StyleFont, workbook->addFont(font));
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FontTab);
        EXPECT_EQ(control(tab, 1005).entries.size(), 5U);
        EXPECT_EQ(chosen(tab, 1005), u"Unknown");
        EXPECT_EQ(control(tab, 1006).entries.size(), 12U);
        EXPECT_EQ(chosen(tab, 1006), u"13");
        chooseText(tab, 1005, u"Fixed");
        EXPECT_EQ(control(tab, 1006).entries, (Texts{u"8", u"10", u"13"}));
        EXPECT_EQ(chosen(tab, 1006), u"13");
        chooseText(tab, 1006, u"8");
        chooseText(tab, 1005, u"Arial");
        EXPECT_EQ(chosen(tab, 1006), u"8") << "another font has the size that was chosen";
        chooseText(tab, 1005, u"Unknown");
        chooseText(tab, 1006, u"36");
        chooseText(tab, 1005, u"Fixed");
        EXPECT_EQ(chosen(tab, 1006), u"36") << "also one that it does not offer";
    });
    EXPECT_EQ(fontAt(0, 0).face(), u"Fixed");
    EXPECT_EQ(fontAt(0, 0).height, 720);
}

// A machine with more fonts and sizes than a dialog shows.
class ManyFonts : public FixedTextMeasure {
public:
    std::vector<FontFamily> fontFamilies() override
    {
        std::vector<FontFamily> families(20);
        for (std::size_t index = 0; index < families.size(); ++index)
            families[index].face = std::u16string(1, static_cast<char16_t>(u'A' + index));
        families[0].scalable = false;
        for (int points = 5; points < 25; ++points)
            families[0].points.push_back(points);
        return families;
    }
};

TEST_F(FormatDialogs, offerSixteenFontsAndTwelveFixedSizes)
{
    ManyFonts fonts;
    TextMeasure* former = platform.textMeasure;
    platform.textMeasure = &fonts;
    FontRecord font = defaultFont(0);
    font.setFace(u"B");
    putStyle(0, 0, StyleFont, workbook->addFont(font));
    select(0, 0);
    formatCells([](DialogModel& dialog) {
        DialogModel& tab = page(dialog, FontTab);
        EXPECT_EQ(control(tab, 1005).entries.size(), 16U);
        EXPECT_EQ(control(tab, 1005).entries.back(), u"P");
        chooseText(tab, 1005, u"A");
        EXPECT_EQ(control(tab, 1006).entries.size(), 12U);
        EXPECT_EQ(control(tab, 1006).entries.back(), u"16");
    });
    platform.textMeasure = former;
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

// --- Heights and widths

TEST_F(FormatDialogs, askForAHeightInPoints)
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

TEST_F(FormatDialogs, askForAWidthInCharacters)
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

TEST_F(FormatDialogs, showTheSizeOfTheActiveCell)
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

TEST_F(FormatDialogs, loseNothingOfASizeThatIsShownRounded)
{
    select(0, 0);
    answer([](DialogModel&) {});
    columnWidthCommand();
    EXPECT_EQ(sheet().columns.columnWidth(0), 2300);
}

TEST_F(FormatDialogs, staysOpenOverWhatIsNoSize)
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

TEST_F(FormatDialogs, readSizesAsTheLocaleWritesThem)
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

// --- The buttons

TEST_F(FormatDialogs, haveCommandsBeside)
{
    const struct {
        const char* phrase;
        void (*command)();
        std::u16string_view label;
        bool (*worked)();
    } cases[] = {
        {"bold",         boldCommand,           u"Bold",         [] { return fontAt(1, 1).weight == 700; }           },
        {"italic",       italicCommand,         u"Italic",       [] { return fontAt(1, 1).attributes == FontItalic; }},
        {"underline",    underlineCommand,      u"Underline",    [] { return fontAt(1, 1).underline == 1; }          },
        {"left",         alignLeftCommand,      u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 1; }                                                      },
        {"center",       alignCenterCommand,    u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 2; }                                                      },
        {"right",        alignRightCommand,     u"Alignment",
         [] { return styleAt(1, 1).get(StyleHorizontal) == 3; }                                                      },
        {"hide columns", hideColumnsCommand,    u"Column Width",
         [] { return sheet().columns.columnHidden(2); }                                                              },
        {"show columns", showColumnsCommand,    u"Column Width",
         [] { return !sheet().columns.columnHidden(2); }                                                             },
        {"fit columns",  autofitColumnsCommand, u"Column Width",
         [] { return sheet().columns.columnPixels(1) == 13; }                                                        },
        {"hide rows",    hideRowsCommand,       u"Row Height",   [] { return sheet().rowHidden(2); }                 },
        {"show rows",    showRowsCommand,       u"Row Height",   [] { return !sheet().rowHidden(2); }                },
        {"fit rows",     autofitRowsCommand,    u"Row Height",   [] { return sheet().rowHeight(1) == 255; }          },
    };
    sheet().setCell(1, 1, textCell(u"a"));
    sheet().setRowHeight(1, 700, true);
    select(1, 1, 2, 2);
    for (const auto& c : cases) {
        c.command();
        EXPECT_TRUE(c.worked()) << c.phrase;
        EXPECT_EQ(undoLabel(), c.label) << c.phrase;
    }
}

} // namespace
} // namespace vorn
