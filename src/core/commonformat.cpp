#include "core/applyformat.h"

#include "core/sheet.h"
#include "core/workbook.h"

#include <algorithm>

namespace vorn {
namespace {

// What a range has in common, found by a look at each different style.
class CommonFormat {
public:
    CommonFormat(const Sheet& sheet, const RangeRef& range) : sheet_(sheet), range_(range)
    {
        const Selection& selection = sheet.selection;
        common_.style =
            workbook->styles[sheet.cellStyle(selection.activeColumn, selection.activeRow)];
        common_.font = workbook->fonts[common_.style.font()];
        common_.styleMask = agreeingFields(common_.style, common_.style);
        common_.fontMask.set();
    }

    FormatTemplate find()
    {
        const int lastRow = std::min<int>(range_.lastRow, sheet_.hasRows() ? sheet_.lastRow() : -1);
        bool missingRow = lastRow < range_.lastRow;
        for (int row = range_.firstRow; row <= lastRow; ++row) {
            if (const Row* object = sheet_.rowAt(row))
                seeRow(*object);
            else
                missingRow = true;
        }
        if (missingRow)
            seeColumns(range_.firstColumn, range_.lastColumn);
        common_.styleMask[MaskFont] = common_.fontMask.all();
        return common_;
    }

private:
    void seeRow(const Row& row)
    {
        const int first = std::max<int>(range_.firstColumn, row.firstColumn);
        const int last = std::min<int>(range_.lastColumn, row.cells.size() - 1);
        for (int column = first; column <= last; ++column) {
            const int style = row.cells.data()[column].style;
            if (style >= 0)
                see(style);
            else
                see(row.style > 0 ? row.style : sheet_.columns.columnStyle(column));
        }
        seeGap(row, range_.firstColumn, std::min<int>(first - 1, range_.lastColumn));
        seeGap(row, std::max(last + 1, first), range_.lastColumn);
    }

    // Columns of a row in which it stores nothing.
    void seeGap(const Row& row, int first, int last)
    {
        if (first > last)
            return;
        if (row.style > 0)
            see(row.style);
        else
            seeColumns(first, last);
    }

    void seeColumns(int first, int last)
    {
        const int lastStyled = sheet_.columns.size() - 1;
        for (int column = first; column <= std::min(last, lastStyled); ++column)
            see(sheet_.columns.columnStyle(column));
        if (last > lastStyled)
            see(0);
    }

    void see(int index)
    {
        const auto place = static_cast<std::size_t>(index);
        if (seen_[place])
            return;
        seen_[place] = true;
        const CellStyle& style = workbook->styles[index];
        common_.styleMask &= agreeingFields(common_.style, style);
        common_.fontMask &= agreeingFields(common_.font, workbook->fonts[style.font()]);
    }

    const Sheet& sheet_;
    const RangeRef range_;
    FormatTemplate common_;
    std::bitset<INT16_MAX + 1> seen_;
};

FormatTemplate commonFormatOfSelection(const Sheet& sheet)
{
    return commonFormat(sheet, sheet.selection.range);
}

} // namespace

FormatTemplate commonFormat(const Sheet& sheet, const RangeRef& range)
{
    return CommonFormat(sheet, range).find();
}

bool isBold(const Sheet& sheet)
{
    const FormatTemplate common = commonFormatOfSelection(sheet);
    return common.fontMask[MaskBold] && common.font.weight == WeightBold;
}

bool isItalic(const Sheet& sheet)
{
    const FormatTemplate common = commonFormatOfSelection(sheet);
    return common.fontMask[MaskItalic] && (common.font.attributes & FontItalic) != 0;
}

bool isUnderlined(const Sheet& sheet)
{
    const FormatTemplate common = commonFormatOfSelection(sheet);
    return common.fontMask[MaskUnderline] && common.font.underline != 0;
}

bool isAligned(const Sheet& sheet, int alignment)
{
    const FormatTemplate common = commonFormatOfSelection(sheet);
    return common.styleMask[MaskHorizontal] && common.style.get(StyleHorizontal) == alignment;
}

} // namespace vorn
