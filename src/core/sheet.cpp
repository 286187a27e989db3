#include "core/sheet.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/input.h"
#include "core/workbook.h"
#include "numfmt/render.h"

#include <algorithm>
#include <new>

namespace vorn {
namespace {

bool insideSheet(int column, int row)
{
    return column >= 0 && column < ColumnCount && row >= 0 && row < RowCount;
}

bool isPresentCell(const Cell& cell)
{
    return cell.value.tag != TagBlank || cell.style >= 0;
}
bool isOccupiedCell(const Cell& cell)
{
    return cell.value.tag != TagBlank;
}

template <bool (*isThere)(const Cell&)>
int nextThere(const Row& row, int column)
{
    for (column = std::max<int>(column + 1, row.firstColumn); column < row.cells.size(); ++column) {
        if (isThere(row.cells[column]))
            return column;
    }
    return ColumnCount;
}

template <bool (*isThere)(const Cell&)>
int previousThere(const Row& row, int column)
{
    for (column = std::min(column, row.cells.size()) - 1; column >= row.firstColumn; --column) {
        if (isThere(row.cells[column]))
            return column;
    }
    return -1;
}

} // namespace

int nextOccupied(const Row& row, int column)
{
    return nextThere<isOccupiedCell>(row, column);
}
int nextPresent(const Row& row, int column)
{
    return nextThere<isPresentCell>(row, column);
}
int previousOccupied(const Row& row, int column)
{
    return previousThere<isOccupiedCell>(row, column);
}
int previousPresent(const Row& row, int column)
{
    return previousThere<isPresentCell>(row, column);
}

void Selection::select(CellRef first, CellRef second)
{
    range = sortedRange(first, second);
    activeRow = anchorRow = first.row;
    activeColumn = anchorColumn = first.column;
    cornerRow = second.row;
    cornerColumn = second.column;
}

Sheet::Sheet(int sheetIndex, std::u16string_view sheetName) : index(sheetIndex)
{
    setName(sheetName);
}

Sheet::~Sheet()
{
    for (Row* row : rows_) {
        if (row == nullptr)
            continue;
        for (std::int32_t column = row->cells.size() - 1; column >= 0; --column)
            releaseValue(row->cells[column].value);
        row->~Row();
        blockResizer(row, 0);
    }
}

void Sheet::setName(std::u16string_view name)
{
    name_ = name.substr(0, std::min<std::size_t>(name.find(u'\0'), SheetNameMax));
}

// --- Reading

Cell Sheet::cellCopy(int column, int row) const
{
    const Cell* cell = cellAt(column, row);
    return cell == nullptr ? Cell{} : *cell;
}

Cell Sheet::cellCopyStyled(int column, int row) const
{
    Cell cell = cellCopy(column, row);
    cell.style = static_cast<std::int16_t>(cellStyle(column, row));
    return cell;
}

CellValue Sheet::valueOf(int column, int row) const
{
    const CellValue* value = valuePointer(column, row);
    return value == nullptr ? CellValue{} : *value;
}

const CellValue* Sheet::valuePointer(int column, int row) const
{
    const Cell* cell = cellAt(column, row);
    return cell == nullptr ? nullptr : &resultOf(cell->value);
}

std::uint8_t Sheet::valueTag(int column, int row) const
{
    const CellValue* value = valuePointer(column, row);
    return value == nullptr ? std::uint8_t{TagBlank} : value->tag;
}

bool Sheet::isOccupied(int column, int row) const
{
    const Cell* cell = cellAt(column, row);
    return cell != nullptr && isOccupiedCell(*cell);
}

bool Sheet::isPresent(int column, int row) const
{
    const Cell* cell = cellAt(column, row);
    return cell != nullptr && isPresentCell(*cell);
}

int Sheet::cellStyle(int column, int row) const
{
    const Cell* cell = cellAt(column, row);
    if (cell != nullptr && cell->style >= 0)
        return cell->style;
    const Row* object = rowAt(row);
    if (object != nullptr && object->style > 0)
        return object->style;
    return columns.columnStyle(column);
}

std::u16string Sheet::cellText(int column, int row) const
{
    constexpr int NoWidth = 99999;
    std::u16string text;
    renderValue(valueOf(column, row), workbook->styles[cellStyle(column, row)].format(), NoWidth,
                text, nullptr);
    return text;
}

std::u16string Sheet::cellInput(int column, int row) const
{
    return valueText(cellCopy(column, row).value);
}

// --- Extents

int Sheet::rowCount(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? 0 : object->cells.size();
}

int Sheet::lastOccupiedColumn(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? -1 : previousOccupied(*object, ColumnCount);
}

int Sheet::lastPresentColumn(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? -1 : previousPresent(*object, ColumnCount);
}

int Sheet::firstColumnOf(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? -1 : object->firstColumn;
}

int Sheet::lastOccupiedRow(int column) const
{
    for (int row = rows_.size() - 1; row >= 0; --row) {
        if (column >= 0) {
            if (isOccupied(column, row))
                return row;
        } else if (const int last = lastOccupiedColumn(row); last >= 0) {
            return row | last << 16;
        }
    }
    return -1;
}

int Sheet::lastOccupiedColumnOfSheet() const
{
    int last = -1;
    for (int row = 0; row < rows_.size(); ++row)
        last = std::max(last, lastOccupiedColumn(row));
    return last;
}

int Sheet::nextRow(int row) const
{
    for (row = std::max(row, -1) + 1; row < rows_.size(); ++row) {
        if (rows_[row] != nullptr)
            return row;
    }
    return RowCount;
}

int Sheet::previousRow(int row) const
{
    for (row = std::min(row, rows_.size()) - 1; row >= 0; --row) {
        if (rows_[row] != nullptr)
            return row;
    }
    return -1;
}

bool Sheet::rowHasData(int row) const
{
    return lastOccupiedColumn(row) >= 0;
}

// --- Writing

Row* Sheet::ensureRow(int row)
{
    if (row < 0 || row >= RowCount)
        return nullptr;
    if (Row* object = rowObject(row))
        return object;
    void* place = blockResizer(nullptr, sizeof(Row));
    if (place == nullptr) {
        raiseError(ErrorMemory);
        return nullptr;
    }
    auto* object = new (place) Row;
    object->height = defaultRowHeight;
    if (row >= rows_.size() && !rows_.resize(row + 1)) {
        object->~Row();
        blockResizer(place, 0);
        return nullptr;
    }
    rows_[row] = object;
    return object;
}

void Sheet::store(int column, int row, const Cell& cell, bool maintain)
{
    if (errorState.code == ErrorMemory || !insideSheet(column, row))
        return;
    Row* object = rowObject(row);
    const bool isStored =
        object != nullptr && column >= object->firstColumn && column < object->cells.size();
    if (!isStored) {
        if (!isPresentCell(cell))
            return;
        const bool isNew = object == nullptr;
        object = ensureRow(row);
        if (object == nullptr)
            return;
        if (isNew || column < object->firstColumn)
            object->firstColumn = static_cast<std::int16_t>(column);
        if (column >= object->cells.size() && !object->cells.resize(column + 1))
            return;
    }
    Cell& place = object->cells[column];
    if (maintain) {
        // The chain is told of the new formula only when nothing can fail any more.
        releaseValue(place.value);
        if (cell.value.tag == TagFormula)
            calcChain.append(cell.value.formula());
    }
    place = cell;
}

Cell* Sheet::ensureCell(int column, int row)
{
    if (!insideSheet(column, row))
        return nullptr;
    if (cellAt(column, row) == nullptr) {
        // A blank is stored only if it has a style, so it gets one first.
        Cell blank;
        blank.style = 0;
        setCell(column, row, blank);
        blank.style = -1;
        setCell(column, row, blank);
        if (cellAt(column, row) == nullptr)
            return nullptr;
    }
    return &rows_[row]->cells[column];
}

void Sheet::setCellStyle(int column, int row, int style)
{
    if (cellStyle(column, row) == style)
        return;
    Cell cell = cellCopy(column, row);
    cell.style = static_cast<std::int16_t>(style);
    setCellKeepChain(column, row, cell, false);
}

void Sheet::swapCells(int columnA, int rowA, int columnB, int rowB)
{
    if (errorState.code == ErrorMemory)
        return;
    const Cell a = cellCopy(columnA, rowA);
    const Cell b = cellCopy(columnB, rowB);
    // What one place cannot take must not be lost from the other, so both are made first.
    if (!isPresentCell(a) && !isPresentCell(b))
        return;
    if (ensureCell(columnA, rowA) == nullptr || ensureCell(columnB, rowB) == nullptr)
        return;
    const auto place = [this](const Cell& cell, int column, int row) {
        if (cell.value.tag == TagFormula) {
            FormulaCell* formula = cell.value.formula();
            formula->row = static_cast<std::uint16_t>(row);
            formula->column = static_cast<std::uint16_t>(column);
        }
        setCellKeepChain(column, row, cell, false);
    };
    place(a, columnB, rowB);
    place(b, columnA, rowA);
}

void Sheet::swapRows(int firstColumn, int lastColumn, int rowA, int rowB)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        swapCells(column, rowA, column, rowB);
}

void Sheet::swapColumns(int firstRow, int lastRow, int columnA, int columnB)
{
    for (int row = firstRow; row <= lastRow; ++row)
        swapCells(columnA, row, columnB, row);
}

// --- Rows

int Sheet::rowHeight(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? defaultRowHeight : object->height;
}

int Sheet::rowStyle(int row) const
{
    const Row* object = rowAt(row);
    return object == nullptr ? 0 : object->style;
}

bool Sheet::rowHidden(int row) const
{
    const Row* object = rowAt(row);
    return object != nullptr && (object->flags & RowHiddenFlag) != 0;
}

bool Sheet::rowHasCustomHeight(int row) const
{
    const Row* object = rowAt(row);
    return object != nullptr && (object->flags & RowCustomHeightFlag) != 0;
}

namespace {

void setFlag(std::uint16_t& flags, std::uint16_t flag, bool on)
{
    flags = static_cast<std::uint16_t>(on ? flags | flag : flags & ~flag);
}

} // namespace

void Sheet::setRowHeight(int row, int height, bool custom)
{
    if (rowAt(row) == nullptr && height == defaultRowHeight)
        return;
    Row* object = ensureRow(row);
    if (object == nullptr)
        return;
    object->height = static_cast<std::uint16_t>(height & 0x7fff);
    setFlag(object->flags, RowCustomHeightFlag, custom);
}

void Sheet::setRowHidden(int row, bool hidden)
{
    if (Row* object = ensureRow(row))
        setFlag(object->flags, RowHiddenFlag, hidden);
}

void Sheet::setRowStyle(int row, int style)
{
    if (Row* object = ensureRow(row))
        object->style = static_cast<std::uint16_t>(style);
}

} // namespace vorn
