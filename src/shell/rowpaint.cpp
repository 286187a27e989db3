#include "shell/rowpaint.h"

#include "core/workbook.h"
#include "shell/cellcolours.h"
#include "shell/filtermark.h"
#include "shell/look.h"

#include <algorithm>
#include <utility>

namespace vorn {

// --- Columns

PaneColumns::PaneColumns(const GridAxis& axis, const Pane& pane, const Rect& seen)
{
    int edge = pane.rect.left;
    for (int column = pane.range.firstColumn - 1; column >= 0; --column)
        edge -= axis.pixels(column);
    for (int column = 0; column < ColumnCount; ++column) {
        edges_[static_cast<std::size_t>(column)] = edge;
        edge += axis.pixels(column);
    }
    edges_.back() = edge;

    firstOfPane_ = next(pane.range.firstColumn - 1);
    for (int column = firstOfPane_; column <= pane.range.lastColumn; column = next(column)) {
        if (right(column) <= seen.left || left(column) >= seen.right)
            continue;
        first_ = std::min(first_, column);
        last_ = column;
    }
}

int PaneColumns::next(int column) const
{
    do {
        ++column;
    } while (column < ColumnCount && !isShown(column));
    return column;
}

// --- The row and its styles

RowPainter::RowPainter(Canvas& canvas, const GridView& view, const Pane& pane, const Rect& seen)
    : canvas_(canvas), sheet_(view.rows.sheet()), rows_(view.rows), seen_(seen),
      columns_(view.columns, pane, seen), texts_(canvas, sheet_, seen),
      lastRowOfPane_(shownRowBefore(pane.range.lastRow + 1))
{
    gridlineTops_.fill(NoLine);
}

const CellStyle& RowPainter::styleOf(int column, int row) const
{
    return workbook->styles[sheet_.cellStyle(column, row)];
}

void RowPainter::load(Styles& styles, int row) const
{
    styles.row = row;
    const int behind = std::min(columns_.next(columns_.last()), LastColumn);
    for (int column = columns_.first(); column <= behind; column = columns_.next(column))
        styles.of[static_cast<std::size_t>(column)] = &styleOf(column, row);
}

// From the top down, the row painted before is mostly the one above.
void RowPainter::loadAbove()
{
    const int row = shownRowBefore(row_);
    if (row < 0)
        above_.row = -1;
    else if (above_.row != row)
        load(above_, row);
}

// What has no pixels has no lines to give; -1 if there is no other.
int RowPainter::shownRowBefore(int row) const
{
    do {
        --row;
    } while (row >= 0 && rows_.pixels(row) == 0);
    return row;
}

Rect RowPainter::cellRect(int column) const
{
    return {columns_.left(column), top_, columns_.right(column), bottom_};
}

void RowPainter::enter(int row, int top)
{
    row_ = row;
    top_ = top;
    bottom_ = top + rows_.pixels(row);
    std::swap(styles_, above_);
    load(styles_, row);
}

void RowPainter::paintGround(int row, int top)
{
    if (columns_.first() == ColumnCount)
        return;
    enter(row, top);
    paintFills();
    if (sheet_.showGridlines) {
        followBoard();
        paintLowerGridlines();
        followRightGridlines();
    }
}

void RowPainter::paintContents(int row, int top)
{
    if (columns_.first() == ColumnCount)
        return;
    enter(row, top);
    loadAbove();
    if (const Row* object = sheet_.rowAt(row))
        paintTexts(*object);
    paintBorders();
    if (sheet_.filter.active && sheet_.filter.range.firstRow == row)
        paintFilterMarks();
}

// --- Fills and gridlines

void RowPainter::paintFills()
{
    int start = columns_.first();
    for (int column = start; column <= columns_.last(); column = columns_.next(column)) {
        const int next = columns_.next(column);
        if (next <= columns_.last() && isOneFill(styles_[column], styles_[next]))
            continue;
        canvas_.fill({columns_.left(start), top_, columns_.right(column), bottom_},
                     fillColour(styles_[column]));
        start = next;
    }
}

// The dots belong to the sheet and not to the window, so that they still meet those that were moved
// along with it. Their board begins anew every few rows: from the first row on, its place would
// take a walk over all that is scrolled away.
void RowPainter::followBoard()
{
    constexpr int boardRows = 64;
    const int first = row_ - row_ % boardRows;
    if (first == boardRow_)
        return;
    endGround(top_);
    boardRow_ = first;
    int boardTop = top_;
    for (int row = first; row < row_; ++row)
        boardTop -= rows_.pixels(row);
    swapsDots_ = (columns_.left(0) + boardTop) % 2 != 0;
}

void RowPainter::paintGridline(const Rect& line)
{
    if (swapsDots_)
        canvas_.fillPattern(line, ColourWhite, ColourGridline);
    else
        canvas_.fillPattern(line, ColourGridline, ColourWhite);
}

void RowPainter::paintLowerGridlines()
{
    int start = columns_.first();
    for (int column = start; column <= columns_.last(); column = columns_.next(column)) {
        const int next = columns_.next(column);
        const bool filled = isFilled(styles_[column]);
        if (!filled && next <= columns_.last() && !isFilled(styles_[next]))
            continue;
        if (!filled)
            paintGridline({columns_.left(start), bottom_ - 1, columns_.right(column), bottom_});
        start = next;
    }
}

// A line at the right of a column goes on down to the next filled cell.
void RowPainter::followRightGridlines()
{
    for (int column = columns_.first(); column <= columns_.last(); column = columns_.next(column)) {
        int& lineTop = gridlineTops_[static_cast<std::size_t>(column)];
        if (isFilled(styles_[column]))
            endRightGridline(column, top_);
        else if (lineTop == NoLine)
            lineTop = top_;
    }
}

void RowPainter::endRightGridline(int column, int bottom)
{
    int& lineTop = gridlineTops_[static_cast<std::size_t>(column)];
    const int right = columns_.right(column);
    if (lineTop != NoLine)
        paintGridline({right - 1, lineTop, right, bottom});
    lineTop = NoLine;
}

void RowPainter::endGround(int bottom)
{
    for (int column = columns_.first(); column <= columns_.last(); column = columns_.next(column))
        endRightGridline(column, bottom);
}

// --- Texts

// From right to left, so that each text ends where the one behind it begins. Once that lies left of
// what is seen, nothing further left can reach it.
void RowPainter::paintTexts(const Row& row)
{
    int limit = columns_.left(nextOccupied(row, columns_.last()));
    for (int column = previousOccupied(row, columns_.last() + 1); column >= 0 && limit > seen_.left;
         column = previousOccupied(row, column)) {
        if (columns_.isShown(column))
            paintText(column, row.cells[column].value, limit);
        limit = columns_.left(column);
    }
}

void RowPainter::paintText(int column, const CellValue& stored, int overflowLimit)
{
    const CellValue& value = resultOf(stored);
    const CellStyle& style = column < columns_.first() ? styleOf(column, row_) : styles_[column];
    texts_.paint(value, style, cellRect(column),
                 limitOf(textReach(value, style), column, overflowLimit));
}

int RowPainter::limitOf(TextReach reach, int column, int overflowLimit) const
{
    if (reach == TextReach::Overflow)
        return overflowLimit;
    int behind = column + 1;
    if (reach == TextReach::Selection) {
        while (behind < ColumnCount && !sheet_.isOccupied(behind, row_) &&
               styleOf(behind, row_).get(StyleHorizontal) == AlignCenterSelection)
            ++behind;
    }
    return columns_.left(behind);
}

// --- Borders: black lines of one pixel, whatever line and colour the style names. Between two
// cells there is one line for both.

bool RowPainter::hasTopLine(int column) const
{
    return styles_[column].get(StyleTopLine) != 0 ||
           (above_.row >= 0 && above_[column].get(StyleBottomLine) != 0);
}

bool RowPainter::hasRightLine(int column) const
{
    const int next = columns_.next(column);
    return styles_[column].get(StyleRightLine) != 0 ||
           (next < ColumnCount && styles_[next].get(StyleLeftLine) != 0);
}

// A line reaches back over the line at the right of the cell before, so that corners are closed.
void RowPainter::paintTopLines()
{
    const auto paintLine = [this](int from, int right) {
        const int left = columns_.left(from) - (from == columns_.firstOfPane() ? 0 : 1);
        canvas_.fill({left, top_, right, top_ + 1}, ColourBlack);
    };
    bool before = false;
    int start = columns_.first();
    for (int column = start; column <= columns_.last(); column = columns_.next(column)) {
        const bool line = hasTopLine(column);
        if (line && !before)
            start = column;
        if (before && !line)
            paintLine(start, columns_.left(column));
        before = line;
    }
    const int behind = columns_.next(columns_.last());
    if (before)
        paintLine(start, columns_.right(columns_.last()));
    else if (behind < ColumnCount && hasTopLine(behind))
        paintLine(behind, columns_.left(behind));
}

void RowPainter::paintBorders()
{
    paintTopLines();
    for (int column = columns_.first(); column <= columns_.last(); column = columns_.next(column)) {
        const Rect cell = cellRect(column);
        const CellStyle& style = styles_[column];
        if (hasRightLine(column))
            canvas_.fill({cell.right - 1, cell.top, cell.right, cell.bottom}, ColourBlack);
        if (column == columns_.firstOfPane() && style.get(StyleLeftLine) != 0)
            canvas_.fill({cell.left, cell.top, cell.left + 1, cell.bottom}, ColourBlack);
        if (row_ == lastRowOfPane_ && style.get(StyleBottomLine) != 0)
            canvas_.fill({cell.left, cell.bottom - 1, cell.right, cell.bottom}, ColourBlack);
    }
}

void RowPainter::paintFilterMarks()
{
    const SheetFilter& filter = sheet_.filter;
    for (int column = columns_.first(); column <= columns_.last(); column = columns_.next(column)) {
        const int place = column - filter.range.firstColumn;
        if (place >= 0 && place < filter.columns.size())
            paintFilterMark(canvas_, cellRect(column), filter.columns[place].kind != FilterAll);
    }
}

} // namespace vorn
