#include "editing/rowcolumn.h"

#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr std::u16string_view RowLabel = u"Row Height";
constexpr std::u16string_view ColumnLabel = u"Column Width";

constexpr double PointsPerTwip = 0.05;
constexpr int TwipsPerPoint = 20;
constexpr int TwipsPerPixel = 15;

// A column's width is that of its characters and a margin. Below one character the two shrink
// together.
constexpr int WidthPerCharacter = 256;
constexpr int WidthMargin = 182;
constexpr int WidthOfOne = WidthPerCharacter + WidthMargin;
constexpr double NarrowWidthPerCharacter = 437.76;
constexpr double CharactersPerNarrowWidth = 0.0022843567251461987;

Sheet& currentSheet()
{
    return *workbook->currentSheet;
}

// Rows or columns, from the first to the last.
struct Span {
    int first, last;
};

Span rowsOf(int row, SizeTarget target)
{
    const RangeRef& range = currentSheet().selection.range;
    if (target == SizeSelection || range.rowInRange(row))
        return {range.firstRow, range.lastRow};
    return {row, row};
}

Span columnsOf(int column, SizeTarget target)
{
    const RangeRef& range = currentSheet().selection.range;
    if (target == SizeSelection || range.columnInRange(column))
        return {range.firstColumn, range.lastColumn};
    return {column, column};
}

bool isEveryRow(Span rows)
{
    return rows.last - rows.first == LastRow;
}

// Of a sheet without its columns nothing would be left, either.
bool isEveryColumn(Span columns)
{
    return columns.last - columns.first == LastColumn;
}

// The two programs of a step. Both begin by selecting what is selected.
class SizeStep {
public:
    SizeStep()
    {
        emitSelectRange(forward);
        emitSelectRange(backward);
    }

    void add(std::u16string_view label)
    {
        std::uint8_t* forwardProgram = forward.finish();
        addUndoStep(forwardProgram, backward.finish(), label);
    }

    // Code that gives a row or column back all that this unit changes.
    void restoreRow(int row)
    {
        const Sheet& sheet = currentSheet();
        emitAction(backward, ActionSetRow,
                   {row, sheet.rowHeight(row), sheet.rowHasCustomHeight(row) ? 1 : 0,
                    sheet.rowHidden(row) ? 1 : 0});
    }
    void restoreColumn(int column)
    {
        const ColumnAttr record = currentSheet().columns.attributes(column);
        emitAction(backward, ActionSetColumnAttributes,
                   {column, record.width, record.style, record.flags});
    }

    ByteCodeWriter forward;
    ByteCodeWriter backward;
};

// --- Rows

void setHeight(SizeStep& step, int row, int height)
{
    step.restoreRow(row);
    emitAction(step.forward, ActionSetRow, {row, height, 1, 0});
}

// The rows that have no object follow the default height, and cost nothing.
void setHeightOfAllRows(SizeStep& step, int height)
{
    const Sheet& sheet = currentSheet();
    emitAction(step.backward, ActionSetDefaultRow,
               {sheet.defaultRowHeight, sheet.rowFlags & DefaultHeightCustomFlag});
    emitAction(step.forward, ActionSetDefaultRow, {height, 1});
    for (int row = sheet.nextRow(-1); row < RowCount; row = sheet.nextRow(row))
        setHeight(step, row, height);
}

} // namespace

void setRowHeights(int row, int height, SizeTarget target)
{
    if (height < 1)
        return hideRows(row, true, target);
    height = std::min(height, GreatestRowHeight);
    const Span rows = rowsOf(row, target);
    SizeStep step;
    if (isEveryRow(rows)) {
        setHeightOfAllRows(step, height);
    } else {
        for (int each = rows.first; each <= rows.last; ++each)
            setHeight(step, each, height);
    }
    step.add(RowLabel);
}

void hideRows(int row, bool hidden, SizeTarget target)
{
    const Span rows = rowsOf(row, target);
    if (isEveryRow(rows))
        return;
    const Sheet& sheet = currentSheet();
    SizeStep step;
    for (int each = rows.first; each <= rows.last; ++each) {
        if (sheet.rowHidden(each) == hidden)
            continue;
        emitAction(step.backward, ActionHideRow, {each, hidden ? 0 : 1});
        emitAction(step.forward, ActionHideRow, {each, hidden ? 1 : 0});
    }
    step.add(RowLabel);
}

void fitRows(int row, SizeTarget target)
{
    const Span rows = rowsOf(row, target);
    if (isEveryRow(rows))
        return;
    const Sheet& sheet = currentSheet();
    SizeStep step;
    // A row without an object has no cells to fit.
    for (int each = sheet.nextRow(rows.first - 1); each <= rows.last; each = sheet.nextRow(each)) {
        step.restoreRow(each);
        emitAction(step.forward, ActionAutoFitRow, {each});
    }
    step.add(RowLabel);
}

// --- Columns

void setColumnWidths(int column, int width, SizeTarget target)
{
    if (width < 1)
        return hideColumns(column, true, target);
    const Span columns = columnsOf(column, target);
    SizeStep step;
    for (int each = columns.first; each <= columns.last; ++each) {
        step.restoreColumn(each);
        emitAction(step.forward, ActionSetColumnWidth, {each, width});
    }
    step.add(ColumnLabel);
}

void hideColumns(int column, bool hidden, SizeTarget target)
{
    const Span columns = columnsOf(column, target);
    if (isEveryColumn(columns))
        return;
    SizeStep step;
    for (int each = columns.first; each <= columns.last; ++each) {
        step.restoreColumn(each);
        emitAction(step.forward, ActionHideColumn, {each, hidden ? 1 : 0});
    }
    step.add(ColumnLabel);
}

void fitColumns(int column, SizeTarget target)
{
    const Span columns = columnsOf(column, target);
    if (isEveryColumn(columns))
        return;
    SizeStep step;
    for (int each = columns.first; each <= columns.last; ++each) {
        step.restoreColumn(each);
        emitAction(step.forward, ActionAutoFitColumn, {each});
    }
    step.add(ColumnLabel);
}

// --- What users read and type

double pointsOfHeight(int height)
{
    return height * PointsPerTwip;
}

int heightOfPoints(double points)
{
    return static_cast<int>(std::min(points, MostPoints) * TwipsPerPoint);
}

double charactersOfWidth(int width)
{
    return width < WidthOfOne ? width * CharactersPerNarrowWidth
                              : (width - WidthMargin) * (1.0 / WidthPerCharacter);
}

int widthOfCharacters(double characters)
{
    const double some = std::min(characters, MostCharacters);
    return static_cast<int>(some < 1 ? some * NarrowWidthPerCharacter
                                     : some * WidthPerCharacter + WidthMargin);
}

// --- Drags

int heightAfterDrag(int pixels, int distance, int zoom)
{
    return std::max(pixels + distance * 100 / zoom, 0) * TwipsPerPixel;
}

// A width is no whole number of pixels; rounded up, it shows the pixels that were dragged to.
int widthAfterDrag(int pixels, int distance, int zoom)
{
    return (std::max(pixels + distance * 100 / zoom, 0) * 73 + 1) / 2;
}

} // namespace vorn
