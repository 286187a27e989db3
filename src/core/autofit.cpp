#include "core/autofit.h"

#include "core/fontlook.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "numfmt/render.h"
#include "platform/platform.h"

#include <algorithm>

namespace vorn {
namespace {

// What surrounds the text of a cell, in pixels.
constexpr int CellMargin = 6;
constexpr int WrappedMargin = 3;

constexpr int TwipsPerPixel = 15;

// A General number gives up some decimals rather than make its column wider than this.
constexpr int GreatestNumberWidth = 294;
constexpr int NumberWidthStep = 2;

int lineHeight(int style)
{
    return workbook->fonts[workbook->styles[style].font()].height * 255 / 200;
}

// --- Rows

// The height of a wrapped text; 0 for a cell that holds none.
int wrappedHeight(const Sheet& sheet, int column, const Cell& cell, int styleIndex)
{
    const CellStyle& style = workbook->styles[styleIndex];
    const CellValue& value = resultOf(cell.value);
    const int width = sheet.columns.columnPixels(column);
    if (value.tag != TagText || !style.wraps() || width == 0)
        return 0;
    const int pixels = platform.textMeasure->wrappedHeight(fontLook(workbook->fonts[style.font()]),
                                                           valueTextPointer(value), width);
    return (pixels + WrappedMargin) * TwipsPerPixel;
}

// --- Columns

// The pixels that a column wants, at the sheet's zoom.
class ColumnFit : private TextMeter {
public:
    ColumnFit(const Sheet& sheet, int column)
        : sheet_(sheet), column_(column),
          present_(static_cast<int>(sheet.columns.columnWidth(column) / 36.5) * sheet.zoom / 100)
    {
    }

    int widest() const { return widest_; }

    void add(int row, const CellValue& value)
    {
        const CellStyle& style = workbook->styles[sheet_.cellStyle(column_, row)];
        if (style.get(StyleHorizontal) == AlignCenterSelection)
            return;
        useFont(style.font());
        int width = textWidth(value, style.format()) + CellMargin;
        if (style.wraps() && value.tag == TagText)
            width = std::min(width, present_);
        widest_ = std::max(widest_, width);
    }

private:
    int width(std::u16string_view text) override
    {
        return platform.textMeasure->textWidth(look_, text);
    }

    void useFont(int font)
    {
        if (font == font_)
            return;
        font_ = font;
        look_ = fontLook(workbook->fonts[font], sheet_.zoom);
    }

    int textWidth(const CellValue& value, int format)
    {
        if (value.tag == TagText)
            return width(valueTextPointer(value));
        if (value.tag == TagNumber && workbook->formats[format].general != 0)
            return numberWidth(value, format);
        renderValue(value, format, 0, text_, nullptr);
        return width(text_);
    }

    // The least width that shows the number in full. What is narrower than the widest cell so far
    // need not be tried.
    int numberWidth(const CellValue& value, int format)
    {
        int room = std::max(widest_ - CellMargin, 0);
        while (room < GreatestNumberWidth && !renderValue(value, format, room, text_, this))
            room += NumberWidthStep;
        return room;
    }

    const Sheet& sheet_;
    const int column_;
    const int present_;
    int widest_ = 0;
    int font_ = -1;
    FontLook look_;
    std::u16string text_;
};

} // namespace

int defaultRowHeightForFonts(const Sheet& sheet)
{
    int height = DefaultRowHeight;
    for (int column = 0; column < ColumnCount; ++column)
        height = std::max(height, lineHeight(sheet.columns.columnStyle(column)));
    return height;
}

int autofitRow(const Sheet& sheet, int row)
{
    const Row* object = sheet.rowAt(row);
    if (object == nullptr)
        return sheet.rowHeight(row);
    int height = 0;
    for (int column = nextPresent(*object, -1); column < ColumnCount;
         column = nextPresent(*object, column)) {
        const int style = sheet.cellStyle(column, row);
        height = std::max({height, lineHeight(style),
                           wrappedHeight(sheet, column, object->cells[column], style)});
    }
    // A row without cells is as high as the text that will be typed there.
    if (height == 0)
        height = object->style > 0 ? lineHeight(object->style) : sheet.defaultRowHeight;
    return std::min(height, GreatestRowHeight);
}

void autofitRows(Sheet& sheet, const RangeRef& selection)
{
    if (selection.isWholeColumns() && (sheet.rowFlags & DefaultHeightCustomFlag) == 0)
        sheet.defaultRowHeight = static_cast<std::uint16_t>(defaultRowHeightForFonts(sheet));
    for (int row = sheet.nextRow(selection.firstRow - 1); row <= selection.lastRow;
         row = sheet.nextRow(row)) {
        if (!sheet.rowHasCustomHeight(row))
            sheet.setRowHeight(row, autofitRow(sheet, row), false);
    }
}

int autofitColumn(const Sheet& sheet, int column)
{
    ColumnFit fit(sheet, column);
    for (int row = sheet.nextRow(-1); row < RowCount; row = sheet.nextRow(row)) {
        if (sheet.isOccupied(column, row))
            fit.add(row, sheet.valueOf(column, row));
    }
    if (fit.widest() == 0)
        return sheet.columns.columnWidth(column);
    // Rounded up both times: a pixel less, and the widest text would not fit.
    const int pixels = (fit.widest() * 100 + sheet.zoom - 1) / sheet.zoom;
    return (pixels * 73 + 1) / 2;
}

} // namespace vorn
