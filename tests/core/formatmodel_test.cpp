// Formats on a sheet of every make, against the plainest way to apply them: to each cell of the
// range, one by one.
#include "core/applyformat.h"
#include "core/error.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "support/dice.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>

namespace vorn {
namespace {

// What is looked at: the corners of the sheet.
constexpr int Side = 7;
constexpr int Far = 2;

struct Look {
    CellStyle style; // its font index is not looked at
    FontRecord font;

    bool operator==(const Look& other) const
    {
        CellStyle a = style;
        CellStyle b = other.style;
        a.set(StyleFont, 0);
        b.set(StyleFont, 0);
        return a.sameAs(b) && font.sameAs(other.font);
    }
};

struct Edges {
    bool left, right, top, bottom;
};

void drawLine(CellStyle& style, bool on, StyleField line, StyleField colour)
{
    if (!on)
        return;
    style.set(line, 1);
    style.set(colour, 64);
}

Look formatted(Look look, const FormatTemplate& format, Edges edges)
{
    applyStyleChange(look.style, format.style, format.styleMask);
    if (format.styleMask[MaskFont])
        mergeFont(look.font, format.font, format.fontMask);
    if (format.styleMask[MaskOutline]) {
        drawLine(look.style, edges.left, StyleLeftLine, StyleLeftColour);
        drawLine(look.style, edges.right, StyleRightLine, StyleRightColour);
        drawLine(look.style, edges.top, StyleTopLine, StyleTopColour);
        drawLine(look.style, edges.bottom, StyleBottomLine, StyleBottomColour);
    }
    return look;
}

class FormatModel : public testing::Test {
protected:
    FormatModel() : dice(1404) {}

    Sheet& sheet() { return *workbook->currentSheet; }

    int anyRow() { return dice.oneIn(6) ? LastRow - dice.below(Far) : dice.below(Side); }
    int anyColumn() { return dice.oneIn(6) ? LastColumn - dice.below(Far) : dice.below(Side); }

    RangeRef anyRange()
    {
        RangeRef range = sortedRange({static_cast<std::uint16_t>(dice.below(Side)),
                                      static_cast<std::uint16_t>(dice.below(Side))},
                                     {static_cast<std::uint16_t>(dice.below(Side)),
                                      static_cast<std::uint16_t>(dice.below(Side))});
        if (dice.oneIn(3)) {
            range.firstRow = 0;
            range.lastRow = LastRow;
        }
        if (dice.oneIn(3)) {
            range.firstColumn = 0;
            range.lastColumn = LastColumn;
        }
        return range;
    }

    FontRecord anyFont()
    {
        FontRecord font = defaultFont(dice.below(2));
        font.weight = dice.oneIn(2) ? WeightBold : WeightNormal;
        font.attributes = static_cast<std::uint16_t>(dice.below(4));
        font.underline = static_cast<std::uint8_t>(dice.below(2));
        font.height = static_cast<std::uint16_t>(190 + 10 * dice.below(4));
        return font;
    }

    // Few different values, so that formats often change nothing.
    CellStyle anyStyle()
    {
        CellStyle style = defaultStyle();
        if (dice.oneIn(2))
            style.set(StyleHorizontal, dice.below(3));
        if (dice.oneIn(2))
            style.set(StyleFill, 9 + dice.below(2));
        if (dice.oneIn(4))
            style.set(StyleLeftLine, dice.below(2));
        return style;
    }

    FormatTemplate anyFormat()
    {
        FormatTemplate format;
        format.style = anyStyle();
        format.font = anyFont();
        for (int count = dice.below(3); count >= 0; --count)
            format.styleMask.set(static_cast<std::size_t>(dice.below(StyleMaskCount)));
        if (dice.oneIn(2))
            format.styleMask.set(MaskHorizontal);
        if (dice.oneIn(2))
            format.styleMask.set(MaskFont);
        for (int count = dice.below(3); count >= 0; --count)
            format.fontMask.set(static_cast<std::size_t>(dice.below(FontMaskCount)));
        return format;
    }

    int anyStyleIndex()
    {
        if (dice.oneIn(4))
            return 0;
        CellStyle style = anyStyle();
        if (dice.oneIn(2))
            style.set(StyleFont, workbook->addFont(anyFont()));
        return workbook->addStyle(style);
    }

    void disturb()
    {
        switch (dice.below(4)) {
        case 0:
            sheet().setCell(anyColumn(), anyRow(), numberCell(1, anyStyleIndex() - 1));
            break;
        case 1:
            sheet().setCell(anyColumn(), anyRow(), Cell{});
            break;
        case 2:
            sheet().setRowStyle(anyRow(), anyStyleIndex());
            break;
        case 3: {
            const int column = anyColumn();
            sheet().columns.setColumnStyle(column, column, anyStyleIndex());
            break;
        }
        }
    }

    Look lookAt(int column, int row)
    {
        const CellStyle& style = workbook->styles[sheet().cellStyle(column, row)];
        return {style, workbook->fonts[style.font()]};
    }

    template <typename Visit>
    static void forEachPlace(Visit visit)
    {
        for (int row = 0; row < RowCount; row = row == Side ? RowCount - Far : row + 1) {
            for (int column = 0; column < ColumnCount;
                 column = column == Side ? ColumnCount - Far : column + 1)
                visit(column, row);
        }
    }

    // The ends of the sheet are not worth cells: these lines may be missing.
    static void forgetFarLines(Look& look, const RangeRef& range, int column, int row)
    {
        if (range.isWholeRows() && column == LastColumn) {
            look.style.set(StyleRightLine, 0);
            look.style.set(StyleRightColour, 0);
        }
        if (range.isWholeColumns() && row == LastRow) {
            look.style.set(StyleBottomLine, 0);
            look.style.set(StyleBottomColour, 0);
        }
    }

    void applyAndCompare(int step)
    {
        const RangeRef range = anyRange();
        const FormatTemplate format = anyFormat();
        std::map<std::pair<int, int>, Look> wanted;
        forEachPlace([&](int column, int row) {
            Look look = lookAt(column, row);
            if (range.contains(column, row))
                look = formatted(look, format,
                                 {column == range.firstColumn, column == range.lastColumn,
                                  row == range.firstRow, row == range.lastRow});
            wanted[{column, row}] = look;
        });
        applyFormat(sheet(), range, format);
        forEachPlace([&](int column, int row) {
            Look is = lookAt(column, row);
            Look should = wanted[{column, row}];
            if (format.styleMask[MaskOutline]) {
                forgetFarLines(is, range, column, row);
                forgetFarLines(should, range, column, row);
            }
            ASSERT_TRUE(is == should)
                << "step " << step << ", column " << column << ", row " << row << " of "
                << range.firstColumn << ',' << range.firstRow << " to " << range.lastColumn << ','
                << range.lastRow << ", mask " << format.styleMask << ' ' << format.fontMask;
        });
    }

    // What a range has in common, cell by cell. Of whole rows and columns the corners stand for all
    // the others: the places between are like the last one before them.
    void compareCommon(int step)
    {
        const RangeRef range = anyRange();
        sheet().selection.select(range.first(), range.last());
        const Look active = lookAt(range.firstColumn, range.firstRow);
        StyleMask styleMask = agreeingFields(active.style, active.style);
        FontMask fontMask = FontMask().set();
        forEachPlace([&](int column, int row) {
            if (!range.contains(column, row))
                return;
            const Look look = lookAt(column, row);
            styleMask &= agreeingFields(active.style, look.style);
            fontMask &= agreeingFields(active.font, look.font);
        });
        styleMask[MaskFont] = fontMask.all();
        const FormatTemplate common = commonFormat(sheet(), range);
        ASSERT_TRUE((Look{common.style, common.font}) == active) << step;
        ASSERT_EQ(common.styleMask, styleMask) << step;
        ASSERT_EQ(common.fontMask, fontMask) << step;
    }

    Dice dice;
    TestDocument document;
};

TEST_F(FormatModel, agreesWithFormattingCellByCell)
{
    for (int round = 0; round < 150; ++round) {
        NewDocument(NewDocumentSheets, FileKindNative);
        for (int step = 0; step < 20; ++step) {
            for (int count = dice.below(4); count > 0; --count)
                disturb();
            applyAndCompare(round * 100 + step);
            compareCommon(round * 100 + step);
            if (HasFatalFailure())
                return;
        }
    }
    EXPECT_EQ(errorState.code, ErrorNone);
}

} // namespace
} // namespace vorn
