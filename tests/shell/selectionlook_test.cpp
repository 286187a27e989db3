#include "shell/selectionlook.h"

#include "core/workbook.h"
#include "support/dice.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

int styleOf(bool bold, bool italic, bool underline, int alignment)
{
    FontRecord font = workbook->fonts[0];
    font.weight = bold ? WeightBold : WeightNormal;
    font.attributes = italic ? FontItalic : 0;
    font.underline = underline ? 1 : 0;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    style.set(StyleHorizontal, alignment);
    return workbook->addStyle(style);
}

RangeRef rangeOf(int column, int row, int columns, int rows)
{
    RangeRef range;
    range.set(column, row, columns, rows);
    return range;
}

TEST(SelectionLook, isPlainInAnEmptySheet)
{
    const TestDocument document;
    for (const RangeRef& range : {rangeOf(0, 0, 1, 1), rangeOf(0, 0, 256, 16384)}) {
        const SelectionLook look = selectionLook(*workbook->currentSheet, range);
        EXPECT_FALSE(look.bold);
        EXPECT_FALSE(look.italic);
        EXPECT_FALSE(look.underline);
        EXPECT_EQ(look.alignment, AlignGeneral);
    }
}

TEST(SelectionLook, isWhatAllCellsHave)
{
    const TestDocument document;
    Sheet& sheet = *workbook->currentSheet;
    sheet.setCellStyle(0, 0, styleOf(true, true, false, AlignLeft));
    sheet.setCellStyle(1, 0, styleOf(true, false, true, AlignLeft));
    sheet.setCellStyle(2, 0, styleOf(true, false, true, AlignRight));
    const struct {
        const char* behaviour;
        RangeRef range;
        bool bold, italic, underline;
        int alignment;
    } cases[] = {
        {"one cell",                   rangeOf(0, 0, 1, 1), true,  true,  false, AlignLeft           },
        {"two with a common side",     rangeOf(0, 0, 2, 1), true,  false, false, AlignLeft           },
        {"two with another",           rangeOf(1, 0, 2, 1), true,  false, true,  SelectionLook::Mixed},
        {"all three",                  rangeOf(0, 0, 3, 1), true,  false, false, SelectionLook::Mixed},
        {"with a cell beyond",         rangeOf(0, 0, 4, 1), false, false, false, SelectionLook::Mixed},
        {"with a row below",           rangeOf(0, 0, 1, 2), false, false, false, SelectionLook::Mixed},
        {"from a plain row to a bold", rangeOf(0, 5, 1, 9), false, false, false, AlignGeneral        },
    };
    for (const auto& c : cases) {
        const SelectionLook look = selectionLook(sheet, c.range);
        EXPECT_EQ(look.bold, c.bold) << c.behaviour;
        EXPECT_EQ(look.italic, c.italic) << c.behaviour;
        EXPECT_EQ(look.underline, c.underline) << c.behaviour;
        EXPECT_EQ(look.alignment, c.alignment) << c.behaviour;
    }
}

TEST(SelectionLook, goesByTheWeightAndNotByTheBit)
{
    const TestDocument document;
    FontRecord font = workbook->fonts[0];
    font.attributes = FontBold;
    font.weight = 600;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    workbook->currentSheet->setCellStyle(0, 0, workbook->addStyle(style));
    EXPECT_FALSE(selectionLook(*workbook->currentSheet, rangeOf(0, 0, 1, 1)).bold);
}

TEST(SelectionLook, seesTheStylesOfColumnsAndRows)
{
    const TestDocument document;
    Sheet& sheet = *workbook->currentSheet;
    const int bold = styleOf(true, false, false, AlignGeneral);
    sheet.columns.setColumnStyle(1, 2, bold);
    EXPECT_TRUE(selectionLook(sheet, rangeOf(1, 0, 2, 16384)).bold);
    EXPECT_FALSE(selectionLook(sheet, rangeOf(1, 0, 3, 16384)).bold);
    EXPECT_FALSE(selectionLook(sheet, rangeOf(0, 0, 2, 16384)).bold);
    sheet.setRowStyle(7, bold);
    EXPECT_TRUE(selectionLook(sheet, rangeOf(0, 7, 256, 1)).bold);
    EXPECT_FALSE(selectionLook(sheet, rangeOf(0, 7, 256, 2)).bold);
    EXPECT_FALSE(selectionLook(sheet, rangeOf(0, 6, 256, 2)).bold);
}

// Against every cell looked at by itself.
TEST(SelectionLook, isThatOfACellByCellComparison)
{
    const TestDocument document;
    Sheet& sheet = *workbook->currentSheet;
    Dice dice(1);
    std::vector<int> styles = {0};
    for (int index = 0; index < 4; ++index)
        styles.push_back(styleOf(true, index % 2 == 0, index < 2, index % 3));
    const auto anyStyle = [&] { return styles[static_cast<std::size_t>(dice.below(5))]; };
    for (int round = 0; round < 300; ++round) {
        if (round % 20 == 0) {
            sheet.clearAll(rangeOf(0, 0, 256, 16384));
            for (int column = 0; column < 6; ++column)
                sheet.columns.setColumnStyle(column, column, styles[1]);
        }
        sheet.setCellStyle(dice.below(6), dice.below(6), anyStyle());
        if (dice.below(3) == 0)
            sheet.setRowStyle(dice.below(6), anyStyle());
        if (dice.below(9) == 0)
            sheet.columns.setColumnStyle(0, dice.below(6), anyStyle());
        const RangeRef range =
            rangeOf(dice.below(6), dice.below(6), 1 + dice.below(5), 1 + dice.below(5));
        SelectionLook expected;
        for (int row = range.firstRow; row <= range.lastRow; ++row) {
            for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
                const CellStyle& style = workbook->styles[sheet.cellStyle(column, row)];
                const FontRecord& font = workbook->fonts[style.font()];
                expected.bold = expected.bold && font.weight == WeightBold;
                expected.italic = expected.italic && (font.attributes & FontItalic) != 0;
                expected.underline = expected.underline && font.underline != 0;
                const int alignment = style.get(StyleHorizontal);
                const bool first = row == range.firstRow && column == range.firstColumn;
                if (first || expected.alignment == alignment)
                    expected.alignment = alignment;
                else
                    expected.alignment = SelectionLook::Mixed;
            }
        }
        const SelectionLook look = selectionLook(sheet, range);
        EXPECT_EQ(look.bold, expected.bold) << round;
        EXPECT_EQ(look.italic, expected.italic) << round;
        EXPECT_EQ(look.underline, expected.underline) << round;
        EXPECT_EQ(look.alignment, expected.alignment) << round;
    }
}

} // namespace
} // namespace vorn
