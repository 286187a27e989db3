#include "support/formatdialogs.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class FontPages : public FormatDialogTest {};

TEST_F(FontPages, showsTheFontOfTheSelection)
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

TEST_F(FontPages, showsNoFontForTwo)
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

TEST_F(FontPages, setsAFont)
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

TEST_F(FontPages, offersTheColoursOfThePaletteByName)
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

TEST_F(FontPages, offersASizeThatNoListHas)
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

TEST_F(FontPages, offersSixteenFontsAndTwelveFixedSizes)
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

} // namespace
} // namespace vorn
