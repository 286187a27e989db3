#include "core/applyformat.h"

#include "core/error.h"
#include "core/growarray.h"
#include "core/sheet.h"
#include "core/workbook.h"

#include <algorithm>

namespace vorn {
namespace {

// The sides of a cell that lie on the edge of the range.
enum Edge : unsigned { EdgeLeft = 1, EdgeRight = 2, EdgeTop = 4, EdgeBottom = 8, EdgeSets = 16 };

void drawEdges(CellStyle& style, unsigned edges)
{
    constexpr struct {
        unsigned edge;
        StyleField line, colour;
    } sides[] = {
        {EdgeLeft,   StyleLeftLine,   StyleLeftColour  },
        {EdgeRight,  StyleRightLine,  StyleRightColour },
        {EdgeTop,    StyleTopLine,    StyleTopColour   },
        {EdgeBottom, StyleBottomLine, StyleBottomColour},
    };
    for (const auto& side : sides) {
        if ((edges & side.edge) == 0)
            continue;
        style.set(side.line, 1);
        style.set(side.colour, ColourWindowText);
    }
}

bool memoryIsShort()
{
    return errorState.code == ErrorMemory;
}

// What the format makes of each style, worked out once.
class StyleConverter {
public:
    explicit StyleConverter(const FormatTemplate& format) : format_(format) {}

    // The style of a cell that had `style` and lies with `edges` on the edge of the range. Without
    // a meaning once memory is short.
    int convert(int style, unsigned edges)
    {
        GrowArray<Converted>& known = known_[edges];
        if (style >= known.size() && !known.resize(std::max(style + 1, workbook->styles.size())))
            return style;
        if (known[style].style == Converted{}.style)
            known[style].style = static_cast<std::int16_t>(make(style, edges));
        return known[style].style;
    }

private:
    struct Converted {
        std::int16_t style = -1;
    };

    int make(int style, unsigned edges) const
    {
        const CellStyle old = workbook->styles[style];
        CellStyle changed = old;
        applyStyleChange(changed, format_.style, format_.styleMask);
        // A step may be done again when the format that it knew has been deleted.
        if (changed.format() >= workbook->formats.size())
            changed.set(StyleFormat, FormatIndexGeneral);
        FontRecord font = workbook->fonts[changed.font()];
        if (format_.styleMask[MaskFont] && mergeFont(font, format_.font, format_.fontMask))
            changed.set(StyleFont, workbook->addFont(font));
        drawEdges(changed, edges);
        // A loaded table may hold equal styles; a cell that does not change keeps its own.
        return memoryIsShort() || changed.sameAs(old) ? style : workbook->addStyle(changed);
    }

    const FormatTemplate& format_;
    GrowArray<Converted> known_[EdgeSets];
};

// One format on its way through a range: columns first, then row by row.
class FormatWalk {
public:
    FormatWalk(Sheet& sheet, const RangeRef& range, const FormatTemplate& format)
        : sheet_(sheet), range_(range), converter_(format), wholeColumns_(range.isWholeColumns()),
          wholeRows_(range.isWholeRows()), outline_(format.styleMask[MaskOutline])
    {
    }

    void run();

private:
    struct RowStyles {
        int before, now;
    };

    void convertColumns();
    bool emptyRowsChange();
    int nextRow(int row) const;
    bool showsAnything(int row) const;
    int shownColumns(int row) const;
    void convertRow(int row);
    RowStyles convertRowStyle(int row);
    int firstColumnToVisit(int row, int rowStyle) const;
    int lastColumnToVisit(int row, int rowStyle) const;
    bool onlyStoredCellsCount(int row, int rowStyle) const;
    void convertCell(int column, int row, RowStyles rowStyles);

    unsigned columnEdges(int column) const
    {
        if (!outline_)
            return 0;
        return (column == range_.firstColumn ? EdgeLeft : 0U) |
               (column == range_.lastColumn ? EdgeRight : 0U);
    }
    unsigned rowEdges(int row) const
    {
        if (!outline_)
            return 0;
        return (row == range_.firstRow ? EdgeTop : 0U) | (row == range_.lastRow ? EdgeBottom : 0U);
    }

    Sheet& sheet_;
    const RangeRef range_;
    StyleConverter converter_;
    const bool wholeColumns_;
    const bool wholeRows_;
    const bool outline_;
    int styledColumns_ = 0; // up to the last column with a style
    bool visitEmptyRows_ = false;
};

void FormatWalk::run()
{
    if (wholeColumns_)
        convertColumns();
    for (int column = 0; column < sheet_.columns.size(); ++column) {
        if (sheet_.columns.columnStyle(column) != 0)
            styledColumns_ = column + 1;
    }
    visitEmptyRows_ = !wholeColumns_ && (outline_ || emptyRowsChange());
    // The top line of whole columns is drawn even if nothing stands there yet. The bottom line is
    // only drawn in a row that shows something: one behind the end of the sheet is worth no row.
    if (wholeColumns_ && outline_ && sheet_.rowAt(range_.firstRow) == nullptr && !memoryIsShort())
        convertRow(range_.firstRow);
    for (int row = nextRow(range_.firstRow - 1); row <= range_.lastRow && !memoryIsShort();
         row = nextRow(row)) {
        if (!wholeColumns_ || row == range_.firstRow || showsAnything(row))
            convertRow(row);
    }
}

// A row that was used and emptied again has its object still, but is like one that never was: a
// format that is taken back and applied again must not meet another sheet.
bool FormatWalk::showsAnything(int row) const
{
    return shownColumns(row) > 0 || sheet_.rowStyle(row) != 0 || sheet_.rowHidden(row) ||
           sheet_.rowHasCustomHeight(row);
}

// Columns up to the last cell that is there, for the same reason not the last that ever was.
int FormatWalk::shownColumns(int row) const
{
    return sheet_.lastPresentColumn(row) + 1;
}

void FormatWalk::convertColumns()
{
    for (int column = range_.firstColumn; column <= range_.lastColumn; ++column) {
        const int style = sheet_.columns.columnStyle(column);
        const int changed = converter_.convert(style, columnEdges(column));
        if (memoryIsShort())
            return;
        if (changed != style)
            sheet_.columns.setColumnStyle(column, column, changed);
    }
}

// Does the format change a row that has no object?
bool FormatWalk::emptyRowsChange()
{
    if (wholeRows_)
        return styledColumns_ != 0 || converter_.convert(0, 0) != 0;
    for (int column = range_.firstColumn; column <= range_.lastColumn; ++column) {
        const int style = sheet_.columns.columnStyle(column);
        if (converter_.convert(style, 0) != style)
            return true;
    }
    return false;
}

int FormatWalk::nextRow(int row) const
{
    return visitEmptyRows_ ? row + 1 : sheet_.nextRow(row);
}

void FormatWalk::convertRow(int row)
{
    const RowStyles styles =
        wholeRows_ ? convertRowStyle(row) : RowStyles{sheet_.rowStyle(row), sheet_.rowStyle(row)};
    const int first = firstColumnToVisit(row, styles.now);
    // Downward, so that a row without cells gets its room at once.
    for (int column = lastColumnToVisit(row, styles.now); column >= first; --column) {
        if (memoryIsShort())
            return;
        convertCell(column, row, styles);
    }
}

FormatWalk::RowStyles FormatWalk::convertRowStyle(int row)
{
    const int style = sheet_.rowStyle(row);
    if (style == 0 && wholeColumns_)
        return {0, 0}; // the columns have it
    const int changed = converter_.convert(style, rowEdges(row));
    if (memoryIsShort())
        return {style, style};
    if (changed != style || (sheet_.rowAt(row) == nullptr && styledColumns_ != 0))
        sheet_.setRowStyle(row, changed);
    return {style, changed};
}

// Whole columns show their new style wherever a row neither has a style nor lies on an edge, so
// that only cells with a style of their own need a look.
bool FormatWalk::onlyStoredCellsCount(int row, int rowStyle) const
{
    return wholeColumns_ && !wholeRows_ && rowStyle == 0 && rowEdges(row) == 0;
}

int FormatWalk::firstColumnToVisit(int row, int rowStyle) const
{
    if (onlyStoredCellsCount(row, rowStyle))
        return std::max<int>(range_.firstColumn, sheet_.firstColumnOf(row));
    return range_.firstColumn;
}

int FormatWalk::lastColumnToVisit(int row, int rowStyle) const
{
    int columns = range_.lastColumn + 1;
    if (onlyStoredCellsCount(row, rowStyle))
        columns = shownColumns(row);
    else if (wholeRows_)
        columns = std::max({shownColumns(row), styledColumns_, outline_ ? 1 : 0});
    return std::min<int>(range_.lastColumn, columns - 1);
}

void FormatWalk::convertCell(int column, int row, RowStyles rowStyles)
{
    const Cell cell = sheet_.cellCopy(column, row);
    const int columnStyle = sheet_.columns.columnStyle(column);
    int before = cell.style;
    int shown = cell.style;
    if (cell.style < 0) {
        before = rowStyles.before > 0 ? rowStyles.before : columnStyle;
        shown = rowStyles.now > 0 ? rowStyles.now : columnStyle;
    }
    const int wanted = converter_.convert(before, columnEdges(column) | rowEdges(row));
    // A value in whole rows gets the style itself, to take it along when it is moved out of them.
    const bool ownStyle =
        wholeRows_ && !wholeColumns_ && wanted != before && cell.value.tag != TagBlank;
    if (memoryIsShort() || (wanted == shown && !ownStyle))
        return;
    Cell changed = cell;
    changed.style = static_cast<std::int16_t>(wanted);
    sheet_.setCellKeepChain(column, row, changed, false);
}

} // namespace

void applyFormat(Sheet& sheet, const RangeRef& range, const FormatTemplate& format)
{
    FormatWalk(sheet, range, format).run();
}

} // namespace vorn
