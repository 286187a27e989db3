#include "core/applyformat.h"

#include "core/error.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class ApplyFormat : public testing::Test {
protected:
    Sheet& sheet() { return *workbook->currentSheet; }

    static RangeRef range(int column, int row, int columns, int rows)
    {
        RangeRef range;
        range.set(column, row, columns, rows);
        return range;
    }
    static RangeRef wholeColumns(int first, int count) { return range(first, 0, count, RowCount); }
    static RangeRef wholeRows(int first, int count) { return range(0, first, ColumnCount, count); }

    // Formats that set one thing.
    static FormatTemplate bold(bool on = true)
    {
        FormatTemplate format;
        format.styleMask.set(MaskFont);
        format.fontMask.set(MaskBold);
        format.font.weight = on ? WeightBold : WeightNormal;
        return format;
    }
    static FormatTemplate italic()
    {
        FormatTemplate format;
        format.styleMask.set(MaskFont);
        format.fontMask.set(MaskItalic);
        format.font.attributes = FontItalic;
        return format;
    }
    static FormatTemplate aligned(int alignment)
    {
        FormatTemplate format;
        format.styleMask.set(MaskHorizontal);
        format.style.set(StyleHorizontal, alignment);
        return format;
    }
    static FormatTemplate outline()
    {
        FormatTemplate format;
        format.styleMask.set(MaskOutline);
        return format;
    }

    void apply(const RangeRef& cells, const FormatTemplate& format)
    {
        applyFormat(sheet(), cells, format);
    }

    const CellStyle& styleAt(int column, int row)
    {
        return workbook->styles[sheet().cellStyle(column, row)];
    }
    const FontRecord& fontAt(int column, int row)
    {
        return workbook->fonts[styleAt(column, row).font()];
    }
    bool isBoldAt(int column, int row) { return fontAt(column, row).weight == WeightBold; }
    bool isItalicAt(int column, int row)
    {
        return (fontAt(column, row).attributes & FontItalic) != 0;
    }

    // The index of a style that differs from the default in one field.
    static int styleWith(StyleField field, int value)
    {
        CellStyle style = defaultStyle();
        style.set(field, value);
        return workbook->addStyle(style);
    }
    static int boldStyle() { return styleWith(StyleFont, 1); }

    void put(int column, int row, int style = -1)
    {
        sheet().setCell(column, row, numberCell(1, style));
    }

    TestDocument document;
};

TEST_F(ApplyFormat, formatsEveryCellOfARectangleEmptyOnesToo)
{
    put(1, 1);
    apply(range(1, 1, 3, 2), bold());
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 6; ++column) {
            const bool inside = range(1, 1, 3, 2).contains(column, row);
            EXPECT_EQ(isBoldAt(column, row), inside) << column << ',' << row;
            EXPECT_EQ(sheet().isPresent(column, row), inside) << column << ',' << row;
        }
    }
    EXPECT_EQ(sheet().valueOf(1, 1).number(), 1);
    EXPECT_EQ(sheet().lastRow(), 2);
}

TEST_F(ApplyFormat, sharesOneStyleAmongEqualCells)
{
    const int styles = workbook->styles.size();
    const int fonts = workbook->fonts.size();
    apply(range(0, 0, 20, 50), bold());
    EXPECT_EQ(workbook->styles.size(), styles + 1);
    EXPECT_EQ(workbook->fonts.size(), fonts + 1);
    apply(range(5, 5, 20, 50), bold());
    EXPECT_EQ(workbook->styles.size(), styles + 1) << "what is bold already adds nothing";
}

TEST_F(ApplyFormat, makesNoCellWhereNothingChanges)
{
    apply(range(0, 0, 256, 1000), bold(false));
    EXPECT_FALSE(sheet().hasRows());
    apply(wholeRows(0, 1000), bold(false));
    EXPECT_FALSE(sheet().hasRows());
    apply(wholeColumns(0, 256), bold(false));
    EXPECT_FALSE(sheet().hasRows());
    EXPECT_EQ(sheet().columns.size(), 0);
    EXPECT_EQ(workbook->styles.size(), 1);
}

TEST_F(ApplyFormat, keepsTheStyleOfACellThatDoesNotChange)
{
    // As a file may bring it: two styles that are equal.
    workbook->styles.append(workbook->styles[0]);
    put(0, 0, 1);
    apply(range(0, 0, 1, 1), bold(false));
    EXPECT_EQ(sheet().cellAt(0, 0)->style, 1);
}

TEST_F(ApplyFormat, takesEachFieldAlone)
{
    FormatTemplate format;
    for (std::uint16_t& word : format.style.words)
        word = 0xffff;
    format.style.words[1] = 3; // a format that exists
    for (std::size_t flag = 0; flag < StyleMaskCount; ++flag) {
        if (flag == MaskFont || flag == MaskOutline)
            continue;
        format.styleMask = StyleMask().set(flag);
        CellStyle wanted = defaultStyle();
        applyStyleChange(wanted, format.style, format.styleMask);
        const int row = static_cast<int>(flag);
        apply(range(0, row, 1, 1), format);
        EXPECT_TRUE(styleAt(0, row).sameAs(wanted)) << flag;
        EXPECT_EQ(sheet().isPresent(0, row), !wanted.sameAs(defaultStyle())) << flag;
    }
}

TEST_F(ApplyFormat, leavesTheFontAloneWithoutItsFlag)
{
    FormatTemplate format = bold();
    format.styleMask.reset();
    apply(range(0, 0, 2, 2), format);
    EXPECT_FALSE(isBoldAt(0, 0));
}

TEST_F(ApplyFormat, italicKeepsEachCellsFace)
{
    FontRecord courier = defaultFont(0);
    courier.setFace(u"Courier New");
    put(0, 0, styleWith(StyleFont, workbook->addFont(courier)));
    put(1, 0);
    apply(range(0, 0, 2, 1), italic());
    EXPECT_TRUE(isItalicAt(0, 0));
    EXPECT_TRUE(isItalicAt(1, 0));
    EXPECT_EQ(fontAt(0, 0).face(), u"Courier New");
    EXPECT_EQ(fontAt(1, 0).face(), u"Tahoma");
}

TEST_F(ApplyFormat, aSizeOfTenAndAHalfIsTenAlready)
{
    FontRecord font = defaultFont(0);
    font.height = 210;
    put(0, 0, styleWith(StyleFont, workbook->addFont(font)));
    FormatTemplate format;
    format.styleMask.set(MaskFont);
    format.fontMask.set(MaskSize);
    format.font.height = 200;
    apply(range(0, 0, 1, 1), format);
    EXPECT_EQ(fontAt(0, 0).height, 210);
}

// --- Whole columns

TEST_F(ApplyFormat, changesOnlyTheRecordsOfWholeColumnsInAnEmptySheet)
{
    AllocationWatch watch;
    apply(wholeColumns(1, 3), bold());
    EXPECT_LT(watch.asked(), 10);
    EXPECT_FALSE(sheet().hasRows());
    EXPECT_EQ(sheet().columns.size(), 4);
    EXPECT_EQ(sheet().columns.columnStyle(0), 0);
    EXPECT_NE(sheet().columns.columnStyle(1), 0);
    EXPECT_TRUE(isBoldAt(3, LastRow));
    EXPECT_FALSE(isBoldAt(4, 0));
}

TEST_F(ApplyFormat, leavesCellsOfWholeColumnsToTheColumn)
{
    put(0, 0);
    put(0, 5, styleWith(StyleHorizontal, AlignRight));
    apply(wholeColumns(0, 2), bold());
    EXPECT_EQ(sheet().cellAt(0, 0)->style, -1) << "the column shows through";
    EXPECT_TRUE(isBoldAt(0, 0));
    EXPECT_TRUE(isBoldAt(0, 5));
    EXPECT_EQ(styleAt(0, 5).get(StyleHorizontal), AlignRight);
    EXPECT_EQ(sheet().rowCount(5), 1);
}

TEST_F(ApplyFormat, formatsTheCellsThatAStyledRowHidesFromTheColumn)
{
    sheet().setRowStyle(3, styleWith(StyleHorizontal, AlignRight));
    apply(wholeColumns(1, 2), bold());
    for (int column : {1, 2}) {
        EXPECT_TRUE(isBoldAt(column, 3)) << column;
        EXPECT_EQ(styleAt(column, 3).get(StyleHorizontal), AlignRight) << column;
    }
    EXPECT_FALSE(isBoldAt(0, 3));
    EXPECT_FALSE(isBoldAt(3, 3));
    EXPECT_EQ(styleAt(3, 3).get(StyleHorizontal), AlignRight);
    EXPECT_EQ(sheet().rowCount(3), 3);
}

TEST_F(ApplyFormat, formatsTheStyledRowsOfColumnsThatHaveTheFormatAlready)
{
    sheet().setRowStyle(3, styleWith(StyleLocked, 0));
    FormatTemplate locked;
    locked.styleMask.set(MaskLocked);
    locked.style.set(StyleLocked, 1);
    apply(wholeColumns(1, 1), locked);
    EXPECT_EQ(styleAt(1, 3).get(StyleLocked), 1);
    EXPECT_EQ(styleAt(2, 3).get(StyleLocked), 0);
    EXPECT_EQ(sheet().columns.size(), 0);
}

// --- Whole rows

TEST_F(ApplyFormat, givesWholeRowsAnObjectAndNoCells)
{
    apply(wholeRows(2, 3), bold());
    for (int row : {2, 3, 4}) {
        ASSERT_NE(sheet().rowAt(row), nullptr) << row;
        EXPECT_NE(sheet().rowStyle(row), 0) << row;
        EXPECT_EQ(sheet().rowCount(row), 0) << row;
        EXPECT_TRUE(isBoldAt(255, row)) << row;
    }
    EXPECT_EQ(sheet().rowAt(1), nullptr);
    EXPECT_EQ(sheet().lastRow(), 4);
}

TEST_F(ApplyFormat, givesValuesInWholeRowsTheStyleItself)
{
    put(1, 2);
    apply(wholeRows(2, 1), bold());
    EXPECT_GT(sheet().cellAt(1, 2)->style, 0);
    sheet().swapCells(1, 2, 1, 7);
    EXPECT_TRUE(isBoldAt(1, 7)) << "and takes it along";
}

TEST_F(ApplyFormat, keepsTheStylesOfColumnsUnderWholeRows)
{
    const int red = styleWith(StyleFill, 10);
    sheet().columns.setColumnStyle(1, 1, red);
    apply(wholeRows(2, 1), bold());
    EXPECT_TRUE(isBoldAt(0, 2));
    EXPECT_TRUE(isBoldAt(1, 2));
    EXPECT_EQ(styleAt(1, 2).get(StyleFill), 10);
    EXPECT_EQ(styleAt(0, 2).get(StyleFill), 64);
    EXPECT_EQ(sheet().rowCount(2), 2);
}

TEST_F(ApplyFormat, keepsAColumnThatHasTheFormatFromBeingCoveredByARow)
{
    CellStyle style = defaultStyle();
    style.set(StyleFont, 1);
    style.set(StyleFill, 10);
    sheet().columns.setColumnStyle(1, 1, workbook->addStyle(style));
    FormatTemplate format = bold();
    apply(wholeRows(2, 1), format);
    EXPECT_TRUE(isBoldAt(1, 2));
    EXPECT_EQ(styleAt(1, 2).get(StyleFill), 10);
}

TEST_F(ApplyFormat, makesRowsForColumnsThatLoseAFormatThere)
{
    sheet().columns.setColumnStyle(1, 1, styleWith(StyleHorizontal, AlignRight));
    apply(wholeRows(2, 1), aligned(AlignGeneral));
    ASSERT_NE(sheet().rowAt(2), nullptr);
    EXPECT_EQ(sheet().rowStyle(2), 0);
    EXPECT_EQ(styleAt(1, 2).get(StyleHorizontal), AlignGeneral);
    EXPECT_EQ(styleAt(1, 3).get(StyleHorizontal), AlignRight);
}

TEST_F(ApplyFormat, convertsTheStyleThatARowHas)
{
    sheet().setRowStyle(2, boldStyle());
    sheet().setCell(3, 2, numberCell(1));
    apply(wholeRows(2, 1), italic());
    for (int column : {0, 3, 100}) {
        EXPECT_TRUE(isBoldAt(column, 2)) << column;
        EXPECT_TRUE(isItalicAt(column, 2)) << column;
    }
}

TEST_F(ApplyFormat, showsNoColumnThroughARowThatBecomesPlain)
{
    sheet().columns.setColumnStyle(1, 1, styleWith(StyleFill, 10));
    sheet().setRowStyle(2, styleWith(StyleHorizontal, AlignRight));
    ASSERT_EQ(styleAt(1, 2).get(StyleFill), 64);
    apply(wholeRows(2, 1), aligned(AlignGeneral));
    EXPECT_EQ(sheet().rowStyle(2), 0);
    EXPECT_EQ(styleAt(1, 2).get(StyleFill), 64) << "the row hid the column before";
}

TEST_F(ApplyFormat, makesNoCellsInManyRowsUnderManyPlainColumns)
{
    sheet().columns.setColumnWidth(255, 255, 5000);
    apply(wholeRows(1, RowCount - 1), bold());
    EXPECT_EQ(sheet().rowCount(1), 0);
    EXPECT_EQ(sheet().rowCount(LastRow), 0);
    EXPECT_TRUE(isBoldAt(255, LastRow));
    EXPECT_FALSE(isBoldAt(255, 0));
}

// --- The whole sheet

TEST_F(ApplyFormat, leavesPlainRowsOfTheWholeSheetToTheColumns)
{
    put(1, 1);
    sheet().setRowStyle(4, styleWith(StyleHorizontal, AlignRight));
    put(2, 7, styleWith(StyleFill, 10));
    apply(wholeColumns(0, ColumnCount), bold());
    EXPECT_EQ(sheet().columns.size(), ColumnCount);
    EXPECT_EQ(sheet().rowStyle(1), 0);
    EXPECT_EQ(sheet().cellAt(1, 1)->style, -1);
    EXPECT_TRUE(isBoldAt(1, 1));
    EXPECT_TRUE(isBoldAt(9, 4));
    EXPECT_EQ(styleAt(9, 4).get(StyleHorizontal), AlignRight);
    EXPECT_EQ(sheet().rowCount(4), 0);
    EXPECT_TRUE(isBoldAt(2, 7));
    EXPECT_EQ(styleAt(2, 7).get(StyleFill), 10);
    EXPECT_EQ(sheet().lastRow(), 7);
}

// --- The outline

// The lines of a cell as letters.
std::string linesOf(const CellStyle& style)
{
    std::string lines;
    const struct {
        char letter;
        StyleField line, colour;
    } sides[] = {
        {'l', StyleLeftLine,   StyleLeftColour  },
        {'r', StyleRightLine,  StyleRightColour },
        {'t', StyleTopLine,    StyleTopColour   },
        {'b', StyleBottomLine, StyleBottomColour},
    };
    for (const auto& side : sides) {
        if (style.get(side.line) != 0) {
            EXPECT_EQ(style.get(side.line), 1);
            EXPECT_EQ(style.get(side.colour), 64);
            lines += side.letter;
        }
    }
    return lines;
}

TEST_F(ApplyFormat, drawsTheOutlineOnTheEdgeAlone)
{
    apply(range(1, 1, 3, 3), outline());
    const char* wanted[5][5] = {
        {"", "",   "",  "",   ""},
        {"", "lt", "t", "rt", ""},
        {"", "l",  "",  "r",  ""},
        {"", "lb", "b", "rb", ""},
        {"", "",   "",  "",   ""},
    };
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 5; ++column)
            EXPECT_EQ(linesOf(styleAt(column, row)), wanted[row][column]) << column << ',' << row;
    }
    EXPECT_FALSE(sheet().isPresent(2, 2)) << "a cell within is unchanged";
}

TEST_F(ApplyFormat, drawsTheOutlineOfOneCellOnAllSides)
{
    apply(range(2, 2, 1, 1), outline());
    EXPECT_EQ(linesOf(styleAt(2, 2)), "lrtb");
}

TEST_F(ApplyFormat, drawsTheOutlineOverWhatTheTemplateSays)
{
    FormatTemplate format = outline();
    format.styleMask.set(MaskLeftLine).set(MaskTopLine).set(MaskTopColour);
    format.style.set(StyleTopColour, 10);
    apply(range(1, 1, 2, 2), format);
    EXPECT_EQ(linesOf(styleAt(1, 1)), "lt");
    EXPECT_EQ(linesOf(styleAt(2, 2)), "rb");
}

TEST_F(ApplyFormat, drawsTheOutlineOfWholeColumnsInTheirRecords)
{
    put(1, 4, boldStyle());
    apply(wholeColumns(1, 3), outline());
    EXPECT_EQ(linesOf(styleAt(1, 9)), "l");
    EXPECT_EQ(linesOf(styleAt(2, 9)), "");
    EXPECT_EQ(linesOf(styleAt(3, 9)), "r");
    EXPECT_EQ(linesOf(styleAt(1, 4)), "l");
    EXPECT_TRUE(isBoldAt(1, 4));
    EXPECT_EQ(linesOf(styleAt(1, 0)), "lt") << "the top line needs cells";
    EXPECT_EQ(linesOf(styleAt(2, 0)), "t");
    EXPECT_EQ(linesOf(styleAt(0, 0)), "");
    EXPECT_EQ(sheet().lastRow(), 4) << "and the end of the sheet is not worth a row";
}

TEST_F(ApplyFormat, drawsTheOutlineOfWholeRowsInTheirObjects)
{
    apply(wholeRows(1, 3), outline());
    EXPECT_EQ(linesOf(styleAt(9, 1)), "t");
    EXPECT_EQ(linesOf(styleAt(9, 2)), "");
    EXPECT_EQ(linesOf(styleAt(9, 3)), "b");
    EXPECT_EQ(linesOf(styleAt(0, 1)), "lt");
    EXPECT_EQ(linesOf(styleAt(0, 2)), "l");
    EXPECT_EQ(linesOf(styleAt(0, 3)), "lb");
    EXPECT_EQ(sheet().rowCount(1), 1) << "the end of the sheet is not worth a cell";
}

TEST_F(ApplyFormat, drawsTheOutlineOfTheWholeSheet)
{
    apply(wholeColumns(0, ColumnCount), outline());
    EXPECT_EQ(linesOf(styleAt(0, 0)), "lt");
    EXPECT_EQ(linesOf(styleAt(7, 0)), "t");
    EXPECT_EQ(linesOf(styleAt(0, 7)), "l");
    EXPECT_EQ(linesOf(styleAt(7, 7)), "");
    EXPECT_EQ(linesOf(styleAt(255, 0)), "rt");
}

// --- Failure

// What was typed there and taken back leaves an object and room for cells, and no trace else.
TEST_F(ApplyFormat, drawsTheOutlineAsIfNobodyHadBeenThere)
{
    for (const RangeRef& where : {range(0, 4, 256, 1), wholeColumns(1, 3)}) {
        NewDocument(1, FileKindNative);
        apply(where, outline());
        const bool last = sheet().isPresent(255, 4);
        const bool bottom = sheet().isPresent(1, 16383);
        NewDocument(1, FileKindNative);
        for (const int row : {4, 16383}) {
            sheet().setCell(255, row, numberCell(1));
            sheet().setCell(255, row, Cell{});
        }
        apply(where, outline());
        EXPECT_EQ(sheet().isPresent(255, 4), last);
        EXPECT_EQ(sheet().isPresent(1, 16383), bottom);
        sheet().setRowHidden(16383, true);
        apply(where, outline());
        EXPECT_EQ(sheet().isPresent(1, 16383), where.isWholeColumns())
            << "a row that shows something gets the bottom line";
    }
}

TEST_F(ApplyFormat, stopsWhereMemoryIsShort)
{
    // Every allocation is refused in turn; what was formatted before stays, and no cell has a style
    // that the table does not have.
    for (int refused = 1;; ++refused) {
        NewDocument(NewDocumentSheets, FileKindNative);
        clearError();
        sheet().columns.setColumnStyle(7, 7, styleWith(StyleFill, 10));
        put(2, 2, boldStyle());
        AllocationWatch watch(refused);
        apply(wholeColumns(0, 3), italic());
        apply(wholeRows(4, 3), italic());
        apply(range(1, 1, 5, 40), italic());
        const bool failed = watch.refused();
        watch.relent();
        EXPECT_EQ(errorState.code, failed ? ErrorMemory : ErrorNone);
        clearError();
        for (int row = 0; row < 45; ++row) {
            for (int column = 0; column < 10; ++column)
                ASSERT_LT(sheet().cellStyle(column, row), workbook->styles.size());
        }
        EXPECT_TRUE(isBoldAt(2, 2));
        if (!failed) {
            EXPECT_GT(refused, 5);
            break;
        }
    }
}

TEST_F(ApplyFormat, changesNothingWhileMemoryIsShort)
{
    put(0, 0);
    raiseError(ErrorMemory);
    apply(wholeColumns(0, 1), bold());
    apply(wholeRows(0, 1), bold());
    apply(range(0, 0, 1, 1), bold());
    clearError();
    EXPECT_FALSE(isBoldAt(0, 0));
}

} // namespace
} // namespace vorn
