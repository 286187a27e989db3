// The fast road over the values of a range, for functions: inlined loops in place of an iterator,
// since a sum over a column costs as little as the memory lets it.
#pragma once

#include "core/formulacell.h"
#include "core/sheet.h"
#include "core/workbook.h"

#include <algorithm>

namespace vorn {

// The value in a column of a row, a formula's result in its place; null if there is no cell. The
// row may be null.
inline const CellValue* storedValue(const Row* row, int column)
{
    if (row == nullptr || column < row->firstColumn || column >= row->cells.size())
        return nullptr;
    const CellValue& value = row->cells.data()[column].value;
    return value.tag == TagFormula ? &value.formula()->result : &value;
}

// The walk down one column, which is what most ranges are: a row costs one look.
template <typename Visit>
bool walkColumnValues(const Sheet& sheet, int column, int firstRow, int lastRow, Visit visit)
{
    for (int row = firstRow; row <= lastRow; ++row) {
        const CellValue* value = storedValue(sheet.rowAt(row), column);
        if (value != nullptr && !visit(*value))
            return false;
    }
    return true;
}

// Calls `visit(const CellValue&)` for each stored cell of a rectangle of one sheet, a formula's
// result in its place, row by row from the top. Cells that exist only for their style come as
// blanks. `visit` answers whether to go on; nothing may be written meanwhile. A range whose corners
// are out of order has no cells. Answers whether the walk came to its end.
template <typename Visit>
bool walkValues(const Sheet& sheet, const RangeRef& range, Visit visit)
{
    if (!sheet.hasRows())
        return true;
    const int lastRow = std::min<int>(range.lastRow, sheet.lastRow());
    if (range.firstColumn == range.lastColumn)
        return walkColumnValues(sheet, range.firstColumn, range.firstRow, lastRow, visit);
    for (int row = range.firstRow; row <= lastRow; ++row) {
        const Row* object = sheet.rowAt(row);
        if (object == nullptr)
            continue;
        const int first = std::max<int>(range.firstColumn, object->firstColumn);
        const int last = std::min<int>(range.lastColumn, object->cells.size() - 1);
        const Cell* cells = object->cells.data();
        for (int column = first; column <= last; ++column) {
            const CellValue& value = cells[column].value;
            if (!visit(value.tag == TagFormula ? value.formula()->result : value))
                return false;
        }
    }
    return true;
}

// The same on every sheet of a sorted pair, in ascending order; sheets that do not exist are
// skipped.
template <typename Visit>
bool walkValues(int firstSheet, int lastSheet, const RangeRef& range, Visit visit)
{
    for (int index = firstSheet; index <= lastSheet; ++index) {
        const Sheet* sheet = workbook->sheetAt(index);
        if (sheet != nullptr && !walkValues(*sheet, range, visit))
            return false;
    }
    return true;
}

} // namespace vorn
