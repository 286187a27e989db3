// Searches in ranges, and the sizes and places of references.

#include "core/workbook.h"
#include "functions/arguments.h"
#include "functions/searchkey.h"
#include "functions/table.h"

#include <algorithm>

namespace vorn {
namespace {

// The columns of a range that a row has cells in; `last` is before `first` if there are none.
struct Span {
    int first;
    int last;
};

Span storedSpan(const Row* row, const RangeRef& range)
{
    if (row == nullptr)
        return {range.firstColumn, range.firstColumn - 1};
    return {std::max<int>(range.firstColumn, row->firstColumn),
            std::min<int>(range.lastColumn, row->cells.size() - 1)};
}

// The rows of a range that a sheet may have cells in end here.
int lastStoredRow(const Sheet& sheet, const RangeRef& range)
{
    return std::min<int>(range.lastRow, sheet.lastRow());
}

// --- Tables

constexpr int NotFound = -1;

enum LookupMode { ExactOnly, OrLastBelow };

// The first column of a table, from the top: visit(row, stored value) answers whether to go on.
struct FirstColumn {
    const Sheet& sheet;
    const RangeRef& table;

    template <typename Visit>
    void walk(Visit visit) const
    {
        const Row* const* rows = sheet.rowObjects();
        if (rows == nullptr)
            return;
        const int column = table.firstColumn;
        const int lastRow = lastStoredRow(sheet, table);
        for (int row = table.firstRow; row <= lastRow; ++row) {
            const Row* object = rows[row];
            if (object == nullptr || column < object->firstColumn || column >= object->cells.size())
                continue;
            if (!visit(row, object->cells.data()[column].value))
                return;
        }
    }
};

// The first row, from the left.
struct FirstRow {
    const Sheet& sheet;
    const RangeRef& table;

    template <typename Visit>
    void walk(Visit visit) const
    {
        const Row* row = sheet.rowAt(table.firstRow);
        const Span span = storedSpan(row, table);
        for (int column = span.first; column <= span.last; ++column) {
            if (!visit(column, row->cells.data()[column].value))
                return;
        }
    }
};

// The first cell along an edge that equals the key.
template <typename Edge, typename Key>
int findEqual(const Edge& edge, const Key& key)
{
    int equal = NotFound;
    edge.walk([&](int place, const CellValue& stored) {
        if (!key.isEqual(stored))
            return true;
        equal = place;
        return false;
    });
    return equal;
}

// The same, or without one the last cell below the key, in whatever order the cells are.
template <typename Edge, typename Key>
int findEqualOrBelow(const Edge& edge, const Key& key)
{
    int equal = NotFound;
    int below = NotFound;
    edge.walk([&](int place, const CellValue& stored) {
        const Order order = key.order(stored);
        // Takes over the place if the key is above, without a branch: in a table without order
        // nobody can guess it.
        below ^= (below ^ place) & -static_cast<int>(order.isAbove);
        if (order.isEqual)
            equal = place;
        return !order.isEqual;
    });
    return equal != NotFound ? equal : below;
}

template <typename Edge>
int findKey(const Edge& edge, const CellValue& key, LookupMode mode)
{
    if (mode == ExactOnly)
        return searchEqual(key, [&](const auto& prepared) { return findEqual(edge, prepared); });
    return searchOrder(key, [&](const auto& prepared) { return findEqualOrBelow(edge, prepared); });
}

void pushCellValue(const Sheet& sheet, int column, int row)
{
    const CellValue* value = sheet.valuePointer(column, row);
    CellValue copy;
    if (value != nullptr)
        copyValue(*value, copy);
    pushRaw(copy);
}

// The arguments of the two lookups in tables.
struct Lookup {
    // Pops them all.
    Lookup()
    {
        if (machine.argumentCount >= 4 && !popLogical())
            mode = ExactOnly;
        index = popNumber() - 1;
        popRange(table);
        dereferenceTop();
        key = popRaw();
    }
    ~Lookup() { releaseValue(key); }
    Lookup(const Lookup&) = delete;
    Lookup& operator=(const Lookup&) = delete;

    LookupMode mode = OrLastBelow;
    double index = 0; // of the column or row that answers, from 0
    RangeArgument table;
    CellValue key;

    // The sheet of the table, whose last line has the number `lastIndex`; null, with an error
    // pushed, if there is no answer to be had.
    const Sheet* sheetOrError(int lastIndex) const
    {
        // Asked this way round, what is no number is refused too.
        if (!(index >= 0)) {
            pushError(CellErrorVal);
            return nullptr;
        }
        const Sheet* sheet =
            table.firstSheet == table.lastSheet ? workbook->sheetAt(table.firstSheet) : nullptr;
        if (index > lastIndex || sheet == nullptr) {
            pushError(CellErrorRef);
            return nullptr;
        }
        return sheet;
    }
};

// --- Match

// Where the scan of Match stopped: the position from 1, and whether the cell there equals the key.
struct Stop {
    int position;
    bool exact;
};

// Scans a range row by row for the first cell whose order `stops`; behind the last cell if
// there is none. Cells that do not exist have their positions too, but are looked at only where
// they may stop the scan.
template <typename Key, typename Stops>
Stop scanRange(const Sheet& sheet, const RangeRef& range, const Key& key, Stops stops)
{
    const int width = range.lastColumn - range.firstColumn + 1;
    const int height = range.lastRow - range.firstRow + 1;
    if (width <= 0 || height <= 0)
        return {1, false};
    constexpr bool stopsAtMissing = stops(ToMissingCell);
    const int lastRow = stopsAtMissing ? range.lastRow : lastStoredRow(sheet, range);
    for (int row = range.firstRow; row <= lastRow; ++row) {
        const int start = (row - range.firstRow) * width + 1 - range.firstColumn;
        const Row* object = sheet.rowAt(row);
        const Span span = storedSpan(object, range);
        if (stopsAtMissing && (span.first > range.firstColumn || span.last < span.first))
            return {start + range.firstColumn, false};
        for (int column = span.first; column <= span.last; ++column) {
            const Order order = key.order(object->cells.data()[column].value);
            if (stops(order))
                return {start + column, order.isEqual};
        }
        if (stopsAtMissing && span.last < range.lastColumn)
            return {start + span.last + 1, false};
    }
    return {width * height + 1, false};
}

Stop scanForEqual(const Sheet& sheet, const RangeRef& range, const CellValue& key)
{
    // Most ranges are columns, and these take the road of the lookups.
    if (range.firstColumn == range.lastColumn) {
        const int row = findKey(FirstColumn{sheet, range}, key, ExactOnly);
        return {row - range.firstRow + 1, row != NotFound};
    }
    return searchEqual(key, [&](const auto& prepared) {
        return scanRange(sheet, range, EqualOnly{prepared},
                         [](Order order) { return order.isEqual; });
    });
}

// The three types of Match.
Stop scanByType(const Sheet& sheet, const RangeRef& range, const CellValue& key, int type)
{
    if (type == 0)
        return scanForEqual(sheet, range, key);
    return searchOrder(key, [&](const auto& prepared) {
        if (type > 0)
            return scanRange(sheet, range, prepared, [](Order order) { return !order.isAbove; });
        return scanRange(sheet, range, prepared,
                         [](Order order) { return order.isAbove || order.isEqual; });
    });
}

// --- References

// Columns or rows of a reference as its corners stand: a reversed one has none.
int columnsOf(const RangeRef& range)
{
    return std::max(0, range.lastColumn - range.firstColumn + 1);
}

int rowsOf(const RangeRef& range)
{
    return std::max(0, range.lastRow - range.firstRow + 1);
}

void pushSize(int (*sizeOf)(const RangeRef&))
{
    RangeArgument argument;
    if (tryPopRange(argument)) {
        pushNumber(sizeOf(argument.range));
        return;
    }
    popMany(1);
    pushError(CellErrorVal);
}

// Pops the reference that may be left out; the formula's own cell stands for it then. Answers
// false, with an error pushed, for what is no reference.
bool popOptionalReference(CellRef& corner)
{
    corner = {machine.base.row, machine.base.column};
    if (machine.argumentCount == 0)
        return true;
    RangeArgument argument;
    if (!tryPopRange(argument)) {
        popMany(1);
        pushError(CellErrorRef);
        return false;
    }
    corner = argument.range.first();
    return true;
}

void pushReference(const RangeArgument& sheets, int column, int row)
{
    const CellRef cell{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column)};
    CellValue reference = CellValue::makeCellRef(cell);
    // A sheet too far back for a reference to name can only be the formula's own.
    if (sheets.lastSheet <= SheetIndexMax) {
        reference.tag = TagSheetCellRef;
        reference.firstSheet = static_cast<std::uint8_t>(sheets.firstSheet);
        reference.lastSheet = static_cast<std::uint8_t>(sheets.lastSheet);
    }
    pushRaw(reference);
}

} // namespace

void callVLookup()
{
    const Lookup lookup;
    if (!checkPending())
        return;
    const RangeRef& table = lookup.table.range;
    const Sheet* sheet = lookup.sheetOrError(columnsOf(table) - 1);
    if (sheet == nullptr)
        return;
    const int row = findKey(FirstColumn{*sheet, table}, lookup.key, lookup.mode);
    if (row == NotFound)
        pushError(CellErrorNA);
    else
        pushCellValue(*sheet, table.firstColumn + static_cast<int>(lookup.index), row);
}

void callHLookup()
{
    const Lookup lookup;
    if (!checkPending())
        return;
    const RangeRef& table = lookup.table.range;
    const Sheet* sheet = lookup.sheetOrError(rowsOf(table) - 1);
    if (sheet == nullptr)
        return;
    const int column = findKey(FirstRow{*sheet, table}, lookup.key, lookup.mode);
    if (column == NotFound)
        pushError(CellErrorNA);
    else
        pushCellValue(*sheet, column, table.firstRow + static_cast<int>(lookup.index));
}

// Answers the position of an equal cell, or, for the types that look for an order, of the cell
// before the one where the order ends.
void callMatch()
{
    const std::int32_t type = machine.argumentCount >= 3 ? popInteger() : 1;
    RangeArgument argument;
    popRange(argument);
    dereferenceTop();
    const PoppedValue key;
    if (!checkPending())
        return;
    const Sheet* sheet = workbook->sheetAt(argument.firstSheet);
    if (sheet == nullptr) {
        pushError(CellErrorRef);
        return;
    }
    const Stop stop = scanByType(*sheet, argument.range, key.get(), type);
    const int position = stop.exact ? stop.position : stop.position - 1;
    if (position == 0 || (type == 0 && !stop.exact))
        pushError(CellErrorNA);
    else
        pushNumber(position);
}

// Answers a reference, so it may stand where one is wanted; the cell itself is not read.
void callIndex()
{
    const std::int32_t area = machine.argumentCount >= 4 ? popInteger() : 1;
    const std::int32_t column = popInteger();
    const std::int32_t row = popInteger();
    RangeArgument argument;
    popRange(argument);
    if (!checkPending())
        return;
    const RangeRef& range = argument.range;
    if (area != 1)
        pushError(CellErrorNA);
    else if (row < 1 || column < 1 || row > rowsOf(range) || column > columnsOf(range))
        pushError(CellErrorRef);
    else
        pushReference(argument, range.firstColumn + column - 1, range.firstRow + row - 1);
}

void callColumns()
{
    pushSize(columnsOf);
}

void callRows()
{
    pushSize(rowsOf);
}

void callRow()
{
    CellRef corner;
    if (popOptionalReference(corner))
        pushNumber(corner.row + 1);
}

void callColumn()
{
    CellRef corner;
    if (popOptionalReference(corner))
        pushNumber(corner.column + 1);
}

} // namespace vorn
