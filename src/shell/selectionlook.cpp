#include "shell/selectionlook.h"

#include "core/workbook.h"

#include <algorithm>

namespace vorn {

namespace {

// Takes the styles of the selection in, one by one, until nothing is left in common.
class Comparison {
public:
    // Answers whether it is worth to go on.
    bool add(int style)
    {
        if (style == lastStyle_)
            return true;
        lastStyle_ = style;
        const CellStyle& record = workbook->styles[style];
        const FontRecord& font = workbook->fonts[record.font()];
        look_.bold = look_.bold && font.weight == WeightBold;
        look_.italic = look_.italic && (font.attributes & FontItalic) != 0;
        look_.underline = look_.underline && font.underline != 0;
        const int alignment = record.get(StyleHorizontal);
        if (first_)
            look_.alignment = alignment;
        else if (look_.alignment != alignment)
            look_.alignment = SelectionLook::Mixed;
        first_ = false;
        return look_.bold || look_.italic || look_.underline ||
               look_.alignment != SelectionLook::Mixed;
    }

    const SelectionLook& look() const { return look_; }

private:
    SelectionLook look_;
    int lastStyle_ = -1;
    bool first_ = true;
};

// The cells of one row from the first to the last of the range. Behind the last cell and the last
// column record all columns look alike.
bool addRow(Comparison& comparison, const Sheet& sheet, const RangeRef& range, int row)
{
    const Row* object = sheet.rowAt(row);
    const int stored = object == nullptr ? 0 : object->cells.size();
    const int end = std::min<int>(range.lastColumn, std::max(stored, sheet.columns.size()));
    bool goOn = true;
    for (int column = range.firstColumn; goOn && column <= end; ++column)
        goOn = comparison.add(sheet.cellStyle(column, row));
    return goOn && comparison.add(sheet.cellStyle(range.lastColumn, row));
}

} // namespace

SelectionLook selectionLook(const Sheet& sheet, const RangeRef& range)
{
    Comparison comparison;
    bool plainRowSeen = false; // all rows without an object look alike
    bool goOn = true;
    const int end = std::min<int>(range.lastRow, sheet.lastRow() + 1);
    for (int row = range.firstRow; goOn && row <= end; ++row) {
        if (sheet.rowAt(row) == nullptr && plainRowSeen)
            continue;
        plainRowSeen = plainRowSeen || sheet.rowAt(row) == nullptr;
        goOn = addRow(comparison, sheet, range, row);
    }
    if (goOn && !plainRowSeen && range.lastRow > end)
        addRow(comparison, sheet, range, range.lastRow);
    return comparison.look();
}

} // namespace vorn
