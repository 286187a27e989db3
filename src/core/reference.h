// References to cells, as byte code, the stack and selections hold them.
//
// Units:  rows 0 to 16,383 and columns 0 to 255, both from 0.
//
// CellRef, 4 bytes:
//   offset size meaning
//   0      2    row; if relative, the distance from the formula's row, wrapped to 16 bits
//   2      2    bits 0-7 column; if relative, the distance from the formula's column, modulo 256
//               bit 14 the column is relative, bit 15 the row is relative
//
// RangeRef, 8 bytes: two such corners, first row, first column, last row, last column. In byte code
// the corners stand as they were typed and may be out of order; selections are sorted.
#pragma once

#include <algorithm>
#include <cstdint>

namespace vorn {

constexpr int RowCount = 16384;
constexpr int ColumnCount = 256;
constexpr int LastRow = RowCount - 1;
constexpr int LastColumn = ColumnCount - 1;

constexpr std::uint16_t ColumnRelative = 0x4000;
constexpr std::uint16_t RowRelative = 0x8000;

// The sheet pair that says that no sheet was named: the reference is to the sheet that is current
// when it is used.
constexpr std::uint8_t NoFirstSheet = 255;
constexpr std::uint8_t NoLastSheet = 245;

struct CellRef {
    std::uint16_t row = 0;
    std::uint16_t column = 0;

    bool operator==(const CellRef&) const = default;
};
static_assert(sizeof(CellRef) == 4);

// The plain coordinates that a stored reference means for a formula in (baseColumn, baseRow). Rows
// and columns wrap inside the sheet; the flags are gone.
constexpr CellRef resolve(CellRef stored, int baseColumn, int baseRow)
{
    CellRef plain = stored;
    if ((stored.column & RowRelative) != 0)
        plain.row = static_cast<std::uint16_t>((stored.row + baseRow) & LastRow);
    if ((stored.column & ColumnRelative) != 0)
        plain.column = static_cast<std::uint16_t>(stored.column + baseColumn);
    plain.column &= 0xff;
    return plain;
}

struct RangeRef {
    std::uint16_t firstRow = 0;
    std::uint16_t firstColumn = 0;
    std::uint16_t lastRow = 0;
    std::uint16_t lastColumn = 0;

    bool operator==(const RangeRef&) const = default;

    CellRef first() const { return {firstRow, firstColumn}; }
    CellRef last() const { return {lastRow, lastColumn}; }

    // The tests below expect sorted corners.
    bool isMultiCell() const { return firstRow != lastRow || firstColumn != lastColumn; }
    bool isWholeColumns() const { return lastRow - firstRow == LastRow; }
    bool isWholeRows() const { return lastColumn - firstColumn == LastColumn; }
    bool isWholeSheet() const { return isWholeColumns() && isWholeRows(); }
    bool rowInRange(int row) const { return isWholeRows() && firstRow <= row && row <= lastRow; }
    bool columnInRange(int column) const
    {
        return isWholeColumns() && firstColumn <= column && column <= lastColumn;
    }
    bool contains(int column, int row) const
    {
        return firstRow <= row && row <= lastRow && firstColumn <= column && column <= lastColumn;
    }
    bool intersects(const RangeRef& other) const
    {
        return firstRow <= other.lastRow && other.firstRow <= lastRow &&
               firstColumn <= other.lastColumn && other.firstColumn <= lastColumn;
    }

    // Shrinks this range to what it shares with `other`; answers whether anything is left. A range
    // that shares nothing is left as it was.
    bool intersect(const RangeRef& other)
    {
        if (!intersects(other))
            return false;
        firstRow = std::max(firstRow, other.firstRow);
        firstColumn = std::max(firstColumn, other.firstColumn);
        lastRow = std::min(lastRow, other.lastRow);
        lastColumn = std::min(lastColumn, other.lastColumn);
        return true;
    }

    void set(int column, int row, int columns, int rows)
    {
        firstColumn = static_cast<std::uint16_t>(column);
        firstRow = static_cast<std::uint16_t>(row);
        lastColumn = static_cast<std::uint16_t>(column + columns - 1);
        lastRow = static_cast<std::uint16_t>(row + rows - 1);
    }
};
static_assert(sizeof(RangeRef) == 8);

// The range with these corners, sorted.
inline RangeRef sortedRange(CellRef a, CellRef b)
{
    return {std::min(a.row, b.row), std::min(a.column, b.column), std::max(a.row, b.row),
            std::max(a.column, b.column)};
}

// A cell of the workbook: what a formula's relative references are taken from.
struct CellPosition {
    std::uint16_t row = 0;
    std::uint16_t column = 0;
    std::uint16_t sheet = 0;

    bool operator==(const CellPosition&) const = default;
};

} // namespace vorn
