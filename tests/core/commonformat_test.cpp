#include "core/applyformat.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class CommonFormat : public testing::Test {
protected:
    Sheet& sheet() { return *workbook->currentSheet; }

    // Selects, and answers whether the selection agrees in the field of a flag.
    FormatTemplate common(int column, int row, int columns, int rows)
    {
        select(column, row, columns, rows);
        return commonFormat(sheet(), sheet().selection.range);
    }
    void select(int column, int row, int columns, int rows)
    {
        RangeRef range;
        range.set(column, row, columns, rows);
        sheet().selection.select(range.first(), range.last());
    }

    static int styleWith(StyleField field, int value)
    {
        CellStyle style = defaultStyle();
        style.set(field, value);
        return workbook->addStyle(style);
    }
    static int styleWithFont(const FontRecord& font)
    {
        return styleWith(StyleFont, workbook->addFont(font));
    }
    void put(int column, int row, int style) { sheet().setCell(column, row, blankCell(style)); }

    static constexpr unsigned long AllFields =
        ((1UL << StyleMaskCount) - 1) & ~(1UL << MaskOutline) & ~(1UL << MaskWithoutMeaning);

    TestDocument document;
};

TEST_F(CommonFormat, ofAnEmptySheetIsTheDefault)
{
    const FormatTemplate format = common(0, 0, ColumnCount, RowCount);
    EXPECT_TRUE(format.style.sameAs(defaultStyle()));
    EXPECT_TRUE(format.font.sameAs(defaultFont(0)));
    EXPECT_EQ(format.styleMask.to_ulong(), AllFields);
    EXPECT_TRUE(format.fontMask.all());
}

TEST_F(CommonFormat, isThatOfTheActiveCell)
{
    put(1, 1, styleWith(StyleHorizontal, AlignRight));
    EXPECT_EQ(common(1, 1, 3, 3).style.get(StyleHorizontal), AlignRight);
    sheet().selection.select({3, 3}, {1, 1});
    EXPECT_EQ(commonFormat(sheet(), sheet().selection.range).style.get(StyleHorizontal),
              AlignGeneral);
}

TEST_F(CommonFormat, clearsTheFlagOfAFieldThatDiffers)
{
    const struct {
        StyleMaskFlag flag;
        StyleField field;
        int value;
    } cases[] = {
        {MaskFormat,       StyleFormat,       2 },
        {MaskTopLine,      StyleTopLine,      1 },
        {MaskLeftLine,     StyleLeftLine,     2 },
        {MaskBottomLine,   StyleBottomLine,   1 },
        {MaskRightLine,    StyleRightLine,    1 },
        {MaskTopColour,    StyleTopColour,    9 },
        {MaskLeftColour,   StyleLeftColour,   9 },
        {MaskBottomColour, StyleBottomColour, 9 },
        {MaskRightColour,  StyleRightColour,  9 },
        {MaskFill,         StyleFill,         10},
        {MaskPattern,      StylePattern,      1 },
        {MaskHorizontal,   StyleHorizontal,   2 },
        {MaskVertical,     StyleVertical,     1 },
        {MaskWrap,         StyleWrap,         1 },
        {MaskLocked,       StyleLocked,       0 },
        {MaskHidden,       StyleHidden,       1 },
    };
    int row = 0;
    for (const auto& c : cases) {
        put(1, row, styleWith(c.field, c.value));
        const FormatTemplate format = common(0, row, 2, 1);
        EXPECT_EQ(format.styleMask.to_ulong(), AllFields & ~(1UL << c.flag)) << c.flag;
        EXPECT_TRUE(format.fontMask.all()) << c.flag;
        ++row;
    }
}

TEST_F(CommonFormat, clearsTheFlagOfAFieldOfTheFontThatDiffers)
{
    for (int flag = 0; flag < FontMaskCount; ++flag) {
        FontRecord font = defaultFont(0);
        FontRecord other = defaultFont(3);
        other.height = 400;
        other.underline = 1;
        other.colour = 10;
        mergeFont(font, other, FontMask().set(static_cast<std::size_t>(flag)));
        put(1, flag, styleWithFont(font));
        const FormatTemplate format = common(0, flag, 2, 1);
        EXPECT_EQ(format.fontMask, FontMask().set().reset(static_cast<std::size_t>(flag))) << flag;
        EXPECT_EQ(format.styleMask.to_ulong(), AllFields & ~(1UL << MaskFont)) << flag;
    }
}

TEST_F(CommonFormat, agreesOnFontsThatLookTheSame)
{
    FontRecord font = defaultFont(0);
    font.height = 210;
    font.weight = 500;
    put(1, 0, styleWithFont(font));
    const FormatTemplate format = common(0, 0, 2, 1);
    EXPECT_TRUE(format.fontMask.all());
    EXPECT_EQ(format.styleMask.to_ulong(), AllFields);
}

// Where the style that differs may stand, seen from the selection C3:D4.
TEST_F(CommonFormat, seesEveryCellOfTheRangeAndNoOther)
{
    const struct {
        const char* phrase;
        void (*prepare)(Sheet&, int);
        bool agrees;
    } cases[] = {
        {"a cell",                                                [](Sheet& sheet, int style) { sheet.setCell(3, 3, blankCell(style)); },     false},
        {"a cell above",                                          [](Sheet& sheet, int style) { sheet.setCell(2, 1, blankCell(style)); },
         true                                                                                                                                      },
        {"a cell on the left",
         [](Sheet& sheet,                                                          int style) { sheet.setCell(1, 2, blankCell(style)); },     true },
        {"a cell on the right",
         [](Sheet& sheet,                                                          int style) { sheet.setCell(4, 2, blankCell(style)); },     true },
        {"a cell below",                                          [](Sheet& sheet, int style) { sheet.setCell(2, 4, blankCell(style)); },
         true                                                                                                                                      },
        {"a column",                                              [](Sheet& sheet, int style) { sheet.columns.setColumnStyle(3, 3, style); },
         false                                                                                                                                     },
        {"a column outside",
         [](Sheet& sheet,                                                          int style) { sheet.columns.setColumnStyle(4, 4, style); }, true },
        {"a row without cells",                                   [](Sheet& sheet, int style) { sheet.setRowStyle(3, style); },
         false                                                                                                                                     },
        {"a row outside",                                         [](Sheet& sheet, int style) { sheet.setRowStyle(4, style); },               true },
        {"a row whose cells all have another style",
         [](Sheet& sheet,                                                          int style) {
             sheet.setRowStyle(3, style);
             sheet.setCell(2, 3, blankCell(0));
             sheet.setCell(3, 3, blankCell(0));
         },                                                                                                          true },
        {"a row with a value that shows it",
         [](Sheet& sheet,                                                          int style) {
             sheet.setRowStyle(3, style);
             sheet.setCell(2, 3, blankCell(0));
             sheet.setCell(3, 3, numberCell(1));
         },                                                                                                          false},
        {"a row with a gap that shows it",
         [](Sheet& sheet,                                                          int style) {
             sheet.setRowStyle(3, style);
             sheet.setCell(2, 3, blankCell(0));
             sheet.setCell(5, 3, blankCell(0));
         },                                                                                                          false},
        {"a column that is covered in every row",
         [](Sheet& sheet,                                                          int style) {
             sheet.columns.setColumnStyle(3, 3, style);
             sheet.setCell(3, 2, blankCell(0));
             sheet.setCell(3, 3, blankCell(0));
         },                                                                                                          true },
        {"a column that shows in a row that has cells elsewhere",
         [](Sheet& sheet,                                                          int style) {
             sheet.columns.setColumnStyle(3, 3, style);
             sheet.setCell(3, 2, blankCell(0));
             sheet.setCell(9, 3, blankCell(0));
         },                                                                                                          false},
    };
    for (const auto& c : cases) {
        NewDocument(NewDocumentSheets, FileKindNative);
        c.prepare(sheet(), styleWith(StyleHorizontal, AlignRight));
        EXPECT_EQ(common(2, 2, 2, 2).styleMask[MaskHorizontal], c.agrees) << c.phrase;
    }
}

TEST_F(CommonFormat, seesRowsBehindTheLastThatExists)
{
    sheet().columns.setColumnStyle(0, 0, styleWith(StyleHorizontal, AlignRight));
    put(0, 0, 0);
    EXPECT_TRUE(common(0, 0, 1, 1).styleMask[MaskHorizontal]);
    EXPECT_FALSE(common(0, 0, 1, 2).styleMask[MaskHorizontal]);
    EXPECT_FALSE(common(0, 0, 1, RowCount).styleMask[MaskHorizontal]);
    EXPECT_TRUE(common(0, 1, 1, RowCount - 1).styleMask[MaskHorizontal]);
}

TEST_F(CommonFormat, saysBoldOnlyOfAWholeSelectionThatIs)
{
    FontRecord font = defaultFont(0);
    font.weight = WeightBold;
    font.attributes = FontItalic;
    font.underline = 1;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    style.set(StyleHorizontal, AlignRight);
    put(0, 0, workbook->addStyle(style));
    const struct {
        const char* phrase;
        int columns;
        bool is;
    } cases[] = {
        {"the cell itself",   1, true },
        {"with another cell", 2, false},
    };
    for (const auto& c : cases) {
        select(0, 0, c.columns, 1);
        EXPECT_EQ(isBold(sheet()), c.is) << c.phrase;
        EXPECT_EQ(isItalic(sheet()), c.is) << c.phrase;
        EXPECT_EQ(isUnderlined(sheet()), c.is) << c.phrase;
        EXPECT_EQ(isAligned(sheet(), AlignRight), c.is) << c.phrase;
        EXPECT_FALSE(isAligned(sheet(), AlignLeft)) << c.phrase;
    }
    select(1, 0, 3, 3);
    EXPECT_FALSE(isBold(sheet()) || isItalic(sheet()) || isUnderlined(sheet()));
    EXPECT_TRUE(isAligned(sheet(), AlignGeneral));
}

} // namespace
} // namespace vorn
