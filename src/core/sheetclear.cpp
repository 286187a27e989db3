// Clearing cells. A cleared cell must look as if nobody had touched it, but a row or a column whose
// style reaches beyond the cleared range keeps that style; there, the cell gets an explicit style
// 0, which makes it a real cell.

#include "core/sheet.h"

#include <algorithm>

namespace vorn {

void Sheet::clearContents(const RangeRef& range)
{
    CellIterator iterator;
    iterator.start(*this, range);
    while (const Cell* cell = iterator.nextOccupiedCell()) {
        Cell blank;
        blank.style = cell->style;
        setCell(iterator.column(), iterator.row(), blank);
    }
}

// The columns of the range that have a style, from the lowest to the highest.
bool Sheet::styledColumnSpan(const RangeRef& range, int& first, int& last) const
{
    first = -1;
    for (int column = range.firstColumn;
         column <= std::min<int>(range.lastColumn, columns.size() - 1); ++column) {
        if (columns.columnStyle(column) == 0)
            continue;
        if (first < 0)
            first = column;
        last = column;
    }
    return first >= 0;
}

void Sheet::storeStyleZero(int row, int firstColumn, int lastColumn, bool onlyStyled)
{
    Cell blank;
    blank.style = 0;
    for (int column = firstColumn; column <= lastColumn; ++column) {
        if (!onlyStyled || cellStyle(column, row) != 0)
            setCell(column, row, blank);
    }
}

void Sheet::resetRows(int first, int last)
{
    for (int row = nextRow(first - 1); row <= last; row = nextRow(row)) {
        Row& object = *rows_[row];
        object.flags = 0;
        object.style = 0;
        object.height = defaultRowHeight;
    }
}

void Sheet::clearAll(const RangeRef& range)
{
    if (range.isWholeColumns())
        columns.resetColumns(range.firstColumn, range.lastColumn);
    if (range.isWholeRows())
        resetRows(range.firstRow, range.lastRow);
    CellIterator iterator;
    iterator.start(*this, range);
    while (iterator.nextPresentCell() != nullptr)
        setCell(iterator.column(), iterator.row(), Cell{});
    if (range.isWholeSheet())
        return;
    if (range.isWholeColumns()) {
        for (int row = nextRow(range.firstRow - 1); row <= range.lastRow; row = nextRow(row)) {
            if (rowStyle(row) != 0)
                storeStyleZero(row, range.firstColumn, range.lastColumn, false);
        }
        return;
    }
    int first = 0;
    int last = -1;
    const bool columnsStyled = styledColumnSpan(range, first, last);
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        if (!range.isWholeRows() && rowStyle(row) > 0)
            storeStyleZero(row, range.firstColumn, range.lastColumn, false);
        else if (columnsStyled)
            storeStyleZero(row, first, last, true);
    }
}

void Sheet::rewriteWithStyleZero(int column, int row)
{
    Cell cell = cellCopy(column, row);
    cell.style = 0;
    setCellKeepChain(column, row, cell, false);
}

void Sheet::rewriteStyledCells(int row, int firstColumn, int lastColumn)
{
    for (int column = firstColumn; column <= lastColumn; ++column) {
        if (cellStyle(column, row) != 0)
            rewriteWithStyleZero(column, row);
    }
}

void Sheet::rewritePresentCells(const RangeRef& range)
{
    CellIterator iterator;
    iterator.start(*this, range);
    while (const Cell* cell = iterator.nextPresentCell()) {
        if (cell->style != 0)
            rewriteWithStyleZero(iterator.column(), iterator.row());
    }
}

void Sheet::clearFormatsOfRows(int first, int last)
{
    for (int row = nextRow(first - 1); row <= last; row = nextRow(row)) {
        Row& object = *rows_[row];
        object.style = 0;
        if ((object.flags & RowCustomHeightFlag) == 0)
            object.height = defaultRowHeight;
    }
}

void Sheet::clearFormats(const RangeRef& range)
{
    const bool wholeRows = range.isWholeRows();
    const bool wholeColumns = range.isWholeColumns();
    if (wholeRows)
        clearFormatsOfRows(range.firstRow, range.lastRow);
    if (wholeColumns) {
        const int last = std::min<int>(range.lastColumn, columns.size() - 1);
        columns.setColumnStyle(range.firstColumn, last, 0);
    }
    if (wholeRows && wholeColumns) {
        rewritePresentCells(range);
    } else if (wholeColumns) {
        for (int row = nextRow(range.firstRow - 1); row <= range.lastRow; row = nextRow(row)) {
            RangeRef part = range;
            part.firstRow = part.lastRow = static_cast<std::uint16_t>(row);
            if (rowStyle(row) != 0)
                rewriteStyledCells(row, range.firstColumn, range.lastColumn);
            else
                rewritePresentCells(part);
        }
    } else if (wholeRows) {
        rewritePresentCells(range);
        int first = 0;
        int last = -1;
        if (styledColumnSpan(range, first, last)) {
            for (int row = range.firstRow; row <= range.lastRow; ++row)
                rewriteStyledCells(row, first, last);
        }
    } else {
        for (int row = range.firstRow; row <= range.lastRow; ++row)
            rewriteStyledCells(row, range.firstColumn, range.lastColumn);
    }
}

} // namespace vorn
