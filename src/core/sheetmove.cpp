// Where the data ends: jumps to its edge, and the region around a cell.

#include "core/sheet.h"

#include <algorithm>

namespace vorn {

int Sheet::edgeDown(int column, int row) const
{
    if (row >= LastRow)
        return LastRow;
    if (isOccupied(column, row) && isOccupied(column, row + 1)) {
        while (row < LastRow && isOccupied(column, row + 1))
            ++row;
        return row;
    }
    for (row = nextRow(row); row <= LastRow; row = nextRow(row)) {
        if (isOccupied(column, row))
            return row;
    }
    return LastRow;
}

int Sheet::edgeUp(int column, int row) const
{
    if (row <= 0)
        return 0;
    if (isOccupied(column, row) && isOccupied(column, row - 1)) {
        while (row > 0 && isOccupied(column, row - 1))
            --row;
        return row;
    }
    for (row = previousRow(row); row >= 0; row = previousRow(row)) {
        if (isOccupied(column, row))
            return row;
    }
    return 0;
}

int Sheet::edgeRight(int column, int row) const
{
    const Row* object = rowAt(row);
    if (object == nullptr || column >= LastColumn)
        return LastColumn;
    if (isOccupied(column, row) && isOccupied(column + 1, row)) {
        while (column < LastColumn && isOccupied(column + 1, row))
            ++column;
        return column;
    }
    return std::min(nextOccupied(*object, column), LastColumn);
}

int Sheet::edgeLeft(int column, int row) const
{
    const Row* object = rowAt(row);
    if (object == nullptr || column <= 0)
        return 0;
    if (isOccupied(column, row) && isOccupied(column - 1, row)) {
        while (column > 0 && isOccupied(column - 1, row))
            --column;
        return column;
    }
    return std::max(previousOccupied(*object, column), 0);
}

bool Sheet::currentRegion(int column, int row, RangeRef& out) const
{
    if (!rowHasData(row))
        return false;
    int firstRow = row;
    while (firstRow > 0 && rowHasData(firstRow - 1))
        --firstRow;
    int lastRow = row;
    while (lastRow < LastRow && rowHasData(lastRow + 1))
        ++lastRow;
    int firstColumn = column;
    int lastColumn = -1;
    for (int each = firstRow; each <= lastRow; ++each) {
        const Row& object = *rowAt(each);
        firstColumn = std::min(firstColumn, nextOccupied(object, -1));
        lastColumn = std::max(lastColumn, previousOccupied(object, ColumnCount));
    }
    if (column > lastColumn)
        return false;
    out.set(firstColumn, firstRow, lastColumn - firstColumn + 1, lastRow - firstRow + 1);
    return true;
}

} // namespace vorn
