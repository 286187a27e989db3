#include "core/autofit.h"

#include "core/error.h"
#include "core/sheet.h"
#include "core/style.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/rawcells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// The machine of the tests has characters of 7 pixels in a font of 14 pixels, which is 10 points.
class Autofit : public testing::Test {
protected:
    Sheet& sheet() { return *workbook->currentSheet; }

    static int styleOfHeight(int height, int field = -1, int value = 0)
    {
        FontRecord font = defaultFont(0);
        font.height = static_cast<std::uint16_t>(height);
        CellStyle style = defaultStyle();
        style.set(StyleFont, workbook->addFont(font));
        if (field >= 0)
            style.set(static_cast<StyleField>(field), value);
        return workbook->addStyle(style);
    }
    static int styleWith(StyleField field, int value) { return styleOfHeight(200, field, value); }

    void put(int column, int row, std::u16string_view text, int style = -1)
    {
        sheet().setCell(column, row, textCell(text, style));
    }

    static RangeRef range(int column, int row, int columns, int rows)
    {
        RangeRef range;
        range.set(column, row, columns, rows);
        return range;
    }

    // The width of a column of so many pixels.
    static int widthOf(int pixels) { return (pixels * 73 + 1) / 2; }

    Cells cells;
};

// --- Rows

TEST_F(Autofit, givesARowTheHeightOfItsTallestFont)
{
    const struct {
        const char* phrase;
        int first, second, height;
    } cases[] = {
        {"ten points",                   200, 200, 255},
        {"the taller one counts",        200, 400, 510},
        {"wherever it stands",           400, 200, 510},
        {"a small font makes a low row", 160, 160, 204},
        {"cut to whole twips",           210, 210, 267},
    };
    int row = 0;
    for (const auto& c : cases) {
        put(0, row, u"a", styleOfHeight(c.first));
        sheet().setCell(3, row, blankCell(styleOfHeight(c.second)));
        EXPECT_EQ(autofitRow(sheet(), row), c.height) << c.phrase;
        ++row;
    }
}

TEST_F(Autofit, takesTheFontThatShowsThrough)
{
    sheet().columns.setColumnStyle(1, 1, styleOfHeight(400));
    put(0, 0, u"a");
    EXPECT_EQ(autofitRow(sheet(), 0), 255) << "no cell in the tall column";
    put(1, 0, u"a");
    EXPECT_EQ(autofitRow(sheet(), 0), 510);
    sheet().setRowStyle(0, styleOfHeight(300));
    EXPECT_EQ(autofitRow(sheet(), 0), 382) << "the row hides the column";
}

TEST_F(Autofit, keepsTheHeightOfARowWithoutAnObject)
{
    sheet().defaultRowHeight = 400;
    EXPECT_EQ(autofitRow(sheet(), 7), 400);
    EXPECT_EQ(sheet().rowAt(7), nullptr);
}

TEST_F(Autofit, givesARowWithoutCellsTheHeightOfWhatWillBeTyped)
{
    sheet().setRowHeight(3, 800, true);
    EXPECT_EQ(autofitRow(sheet(), 3), 255);
    sheet().setRowStyle(3, styleOfHeight(400));
    EXPECT_EQ(autofitRow(sheet(), 3), 510);
}

TEST_F(Autofit, measuresAWrappedTextInTheWidthOfItsColumn)
{
    sheet().columns.setColumnWidth(0, 0, widthOf(35)); // five characters
    const int wrapped = styleWith(StyleWrap, 1);
    const int justified = styleWith(StyleHorizontal, AlignJustify);
    const int tall = styleOfHeight(400, StyleWrap, 1);
    const int small = styleOfHeight(100, StyleWrap, 1);
    const struct {
        const char* phrase;
        std::u16string_view text;
        int style, height;
    } cases[] = {
        {"one line: the font decides",         u"aa bb",       wrapped,   255},
        {"two lines",                          u"aaa bbb",     wrapped,   465},
        {"three",                              u"aaa bbb ccc", wrapped,   675},
        {"without wrap it is one",             u"aaa bbb ccc", -1,        255},
        {"what is justified wraps too",        u"aaa bbb",     justified, 465},
        {"a taller font has wider characters", u"aaa bbb",     tall,      885},
        {"a small font, and one line",         u"a",           small,     150},
    };
    int row = 0;
    for (const auto& c : cases) {
        put(0, row, c.text, c.style);
        EXPECT_EQ(autofitRow(sheet(), row), c.height) << c.phrase;
        ++row;
    }
}

TEST_F(Autofit, measuresTheResultOfAWrappedFormula)
{
    sheet().columns.setColumnWidth(0, 0, widthOf(35));
    cells.put("A1", u"=\"aaa \"&\"bbb\"");
    cells.put("A2", u"=123456789012");
    const int wrapped = styleWith(StyleWrap, 1);
    sheet().setCellStyle(0, 0, wrapped);
    sheet().setCellStyle(0, 1, wrapped);
    EXPECT_EQ(autofitRow(sheet(), 0), (28 + 3) * 15);
    EXPECT_EQ(autofitRow(sheet(), 1), 255) << "a number is never broken";
}

TEST_F(Autofit, takesNoWrappedTextOfAHiddenColumn)
{
    put(0, 0, u"a b c d", styleWith(StyleWrap, 1));
    sheet().columns.setColumnHidden(0, 0, true);
    EXPECT_EQ(autofitRow(sheet(), 0), 255);
}

TEST_F(Autofit, givesNoRowMoreThanARowCanHave)
{
    std::u16string text;
    for (int word = 0; word < 500; ++word)
        text += u"aaaaaa ";
    sheet().columns.setColumnWidth(0, 0, widthOf(35));
    put(0, 0, text, styleOfHeight(400, StyleWrap, 1));
    EXPECT_EQ(autofitRow(sheet(), 0), 0x7fff);
}

TEST_F(Autofit, fitsTheRowsOfASelectionButForThoseSetByHand)
{
    const int tall = styleOfHeight(400);
    for (int row = 0; row < 4; ++row)
        put(0, row, u"a", tall);
    sheet().setRowHeight(1, 600, true);
    sheet().setRowHidden(2, true);
    autofitRows(sheet(), range(5, 0, 1, 3));
    EXPECT_EQ(sheet().rowHeight(0), 510);
    EXPECT_EQ(sheet().rowHeight(1), 600);
    EXPECT_TRUE(sheet().rowHasCustomHeight(1));
    EXPECT_EQ(sheet().rowHeight(2), 510);
    EXPECT_TRUE(sheet().rowHidden(2)) << "a hidden row stays so";
    EXPECT_EQ(sheet().rowHeight(3), 255) << "outside of the selection";
    EXPECT_FALSE(sheet().rowHasCustomHeight(0));
}

TEST_F(Autofit, makesNoRows)
{
    autofitRows(sheet(), range(0, 0, 256, 5000));
    autofitRows(sheet(), range(0, 0, 1, RowCount));
    EXPECT_FALSE(sheet().hasRows());
}

TEST_F(Autofit, takesTheDefaultHeightFromTheFontsOfTheColumns)
{
    EXPECT_EQ(defaultRowHeightForFonts(sheet()), 255);
    sheet().columns.setColumnStyle(2, 2, styleOfHeight(160));
    EXPECT_EQ(defaultRowHeightForFonts(sheet()), 255) << "never below that of a new sheet";
    sheet().columns.setColumnStyle(5, 5, styleOfHeight(400));
    EXPECT_EQ(defaultRowHeightForFonts(sheet()), 510);
}

TEST_F(Autofit, bringsTheDefaultHeightUpToDateForWholeColumns)
{
    put(0, 3, u"a");
    sheet().columns.setColumnStyle(5, 5, styleOfHeight(400));
    autofitRows(sheet(), range(5, 0, 1, 10));
    EXPECT_EQ(sheet().defaultRowHeight, 255) << "not for a few rows";
    autofitRows(sheet(), range(5, 0, 1, RowCount));
    EXPECT_EQ(sheet().defaultRowHeight, 510);
    EXPECT_EQ(sheet().rowHeight(3), 255) << "its only cell has 10 points";
    sheet().columns.setColumnStyle(5, 5, 0);
    sheet().rowFlags = 1;
    autofitRows(sheet(), range(5, 0, 1, RowCount));
    EXPECT_EQ(sheet().defaultRowHeight, 510) << "set by hand";
    sheet().rowFlags = 0;
    autofitRows(sheet(), range(5, 0, 1, RowCount));
    EXPECT_EQ(sheet().defaultRowHeight, 255) << "and lower again";
}

// --- Columns

TEST_F(Autofit, givesAColumnTheWidthOfItsWidestCell)
{
    put(1, 0, u"abc");
    put(1, 9000, u"abcdefghijkl");
    put(1, 9001, u"abcdef");
    put(2, 0, u"abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(autofitColumn(sheet(), 1), widthOf(12 * 7 + 6));
    sheet().columns.setColumnWidth(1, 1, autofitColumn(sheet(), 1));
    EXPECT_EQ(sheet().columns.columnPixels(1), 12 * 7 + 6);
}

TEST_F(Autofit, givesBackEveryNumberOfPixels)
{
    // A width is no whole number of pixels; what was measured must still fit.
    for (int characters = 1; characters < 60; ++characters) {
        put(0, 0, std::u16string(static_cast<std::size_t>(characters), u'x'));
        sheet().columns.setColumnWidth(0, 0, autofitColumn(sheet(), 0));
        ASSERT_EQ(sheet().columns.columnPixels(0), characters * 7 + 6);
    }
}

TEST_F(Autofit, keepsTheWidthOfAColumnWithoutCells)
{
    EXPECT_EQ(autofitColumn(sheet(), 0), DefaultColumnWidth);
    sheet().columns.setColumnWidth(0, 0, 3001);
    sheet().setCell(0, 0, blankCell(styleOfHeight(400)));
    EXPECT_EQ(autofitColumn(sheet(), 0), 3001) << "cells without a value are none";
}

TEST_F(Autofit, measuresWhatTheCellShowsInItsOwnFont)
{
    const struct {
        const char* phrase;
        Cell cell;
        int pixels; // without the margin
    } cases[] = {
        {"a text",               textCell(u"abcd"),                       28                                                        },
        {"in a taller font",     textCell(u"abcd",                        styleOfHeight(400)),                                        56},
        {"a logical value",                      logicalCell(true),                                             28                                                                },
        {"an error",                      errorCell(CellErrorDiv0),                                                    42},
        {"a number by its format",                      numberCell(1234.5,                                      styleWith(StyleFormat,                                                          4)), 63},
        {"and not as General",                   numberCell(1.23456789,                                                        styleWith(StyleFormat,                                                         2)), 28},
        {"a date",dateCell(36526,styleWith(StyleFormat,6)), 42},
        {"a date in General",                      dateCell(36526.5),                                                      105                                                                                                                   },
    };
    for (const auto& c : cases) {
        sheet().setCell(0, 0, c.cell);
        EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(c.pixels + 6)) << c.phrase;
    }
}

TEST_F(Autofit, triesWidthsForAGeneralNumber)
{
    const struct {
        const char* phrase;
        double number;
        int pixels; // without the margin
    } cases[] = {
        {"an integer",                 12345,   36},
        {"of an even width",           123456,  42},
        {"six decimals count as full", 1.0 / 3, 56},
        {"fewer are shown whole",      0.25,    28},
        {"a negative one",             -12345,  42},
    };
    for (const auto& c : cases) {
        sheet().setCell(0, 0, numberCell(c.number));
        EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(c.pixels + 6)) << c.phrase;
    }
}

TEST_F(Autofit, givesAGeneralNumberAtMost294Pixels)
{
    sheet().setCell(0, 0, numberCell(12345678, styleOfHeight(3000)));
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(294 + 6));
    put(0, 1, std::u16string(100, u'x'));
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(706)) << "a text is not limited";
}

TEST_F(Autofit, takesTheWidestOfNumbersInAnyOrder)
{
    sheet().setCell(0, 0, numberCell(12345678));
    sheet().setCell(0, 1, numberCell(1));
    put(0, 2, u"abcde");
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(56 + 6));
    sheet().setCell(0, 3, numberCell(99999999.5));
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(70 + 6));
}

TEST_F(Autofit, skipsWhatIsCenteredAcrossCells)
{
    put(0, 0, u"a title over many columns", styleWith(StyleHorizontal, AlignCenterSelection));
    EXPECT_EQ(autofitColumn(sheet(), 0), DefaultColumnWidth);
    put(0, 1, u"abc");
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(27));
}

TEST_F(Autofit, stopsAWrappedTextAtThePresentWidth)
{
    const int wrapped = styleWith(StyleWrap, 1);
    put(0, 0, u"a wrapped text that is wide", wrapped);
    sheet().columns.setColumnWidth(0, 0, widthOf(50));
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(50));
    put(0, 1, u"abcdefghijkl");
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(90));
    put(1, 0, u"abc", wrapped);
    EXPECT_EQ(autofitColumn(sheet(), 1), widthOf(27)) << "a short one may make it narrower";
}

TEST_F(Autofit, fitsAtTheZoomOfTheSheet)
{
    put(0, 0, u"abcdefghij");
    const struct {
        int zoom, characterPixels;
    } cases[] = {
        {100, 7 },
        {200, 14},
        {50,  4 }, // a font of 8 pixels
        {70,  5 }, // of 10
    };
    for (const auto& c : cases) {
        sheet().zoom = c.zoom;
        sheet().columns.setColumnWidth(0, 0, autofitColumn(sheet(), 0));
        const int pixels = 10 * c.characterPixels + 6;
        EXPECT_GE(sheet().columns.columnPixels(0) * c.zoom / 100, pixels) << c.zoom;
        EXPECT_LT((sheet().columns.columnPixels(0) - 1) * c.zoom / 100, pixels) << c.zoom;
    }
}

TEST_F(Autofit, measuresAHiddenColumnLikeAnyOther)
{
    put(0, 0, u"a wrapped text that is wide", styleWith(StyleWrap, 1));
    sheet().columns.setColumnWidth(0, 0, widthOf(50));
    sheet().columns.setColumnHidden(0, 0, true);
    EXPECT_EQ(autofitColumn(sheet(), 0), widthOf(50));
}

} // namespace
} // namespace vorn
