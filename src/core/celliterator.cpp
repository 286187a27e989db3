#include "core/sheet.h"
#include "core/workbook.h"

#include <algorithm>

namespace vorn {
namespace {

// The part of a range that lies in the sheet: code from elsewhere can name rows beyond it, and the
// row behind the last one is where walks find that they are at the end.
RangeRef insideSheet(RangeRef range)
{
    range.lastRow = std::min<std::uint16_t>(range.lastRow, LastRow);
    range.lastColumn = std::min<std::uint16_t>(range.lastColumn, LastColumn);
    return range;
}

} // namespace

void CellIterator::start(const Sheet& sheet, const RangeRef& range, Order order)
{
    single_ = &sheet;
    sheet_ = lastSheet_ = sheet.index;
    range_ = insideSheet(range);
    order_ = order;
    enterSheet();
}

void CellIterator::start(int firstSheet, int lastSheet, const RangeRef& range, Order order)
{
    single_ = nullptr;
    sheet_ = std::min(firstSheet, lastSheet);
    lastSheet_ = std::max(firstSheet, lastSheet);
    range_ = insideSheet(range);
    order_ = order;
    enterSheet();
}

const Sheet* CellIterator::sheetObject() const
{
    return single_ != nullptr ? single_ : workbook->sheetAt(sheet_);
}

// The position before the first cell.
void CellIterator::enterSheet()
{
    row_ = range_.firstRow - (order_ == ByColumns ? 1 : 0);
    column_ = range_.firstColumn - (order_ == ByRows ? 1 : 0);
}

template <int (*nextInRow)(const Row&, int)>
const Cell* CellIterator::advance()
{
    for (; sheet_ <= lastSheet_; ++sheet_, enterSheet()) {
        const Sheet* sheet = sheetObject();
        if (sheet == nullptr)
            continue;
        while (row_ <= range_.lastRow) {
            if (const Row* row = sheet->rowAt(row_)) {
                column_ = nextInRow(*row, column_);
                if (column_ <= range_.lastColumn && column_ < ColumnCount)
                    return &row->cells[column_];
            }
            row_ = sheet->nextRow(row_);
            column_ = range_.firstColumn - 1;
        }
    }
    return nullptr;
}

template <bool (Sheet::*isThere)(int, int) const>
const Cell* CellIterator::advanceDown()
{
    for (; sheet_ <= lastSheet_; ++sheet_, enterSheet()) {
        const Sheet* sheet = sheetObject();
        if (sheet == nullptr)
            continue;
        while (column_ <= range_.lastColumn) {
            row_ = sheet->nextRow(row_);
            if (row_ > range_.lastRow) {
                row_ = range_.firstRow - 1;
                ++column_;
            } else if ((sheet->*isThere)(column_, row_)) {
                return sheet->cellAt(column_, row_);
            }
        }
    }
    return nullptr;
}

const Cell* CellIterator::nextOccupiedCell()
{
    return order_ == ByRows ? advance<nextOccupied>() : advanceDown<&Sheet::isOccupied>();
}

const Cell* CellIterator::nextPresentCell()
{
    lastSheet_ = std::min(lastSheet_, sheet_);
    return order_ == ByRows ? advance<nextPresent>() : advanceDown<&Sheet::isPresent>();
}

const CellValue* CellIterator::nextValue()
{
    const Cell* cell = nextOccupiedCell();
    return cell == nullptr ? nullptr : &resultOf(cell->value);
}

void CellIterator::startBackward(const Sheet& sheet, const RangeRef& range)
{
    single_ = &sheet;
    sheet_ = lastSheet_ = sheet.index;
    range_ = insideSheet(range);
    row_ = range_.lastRow;
    column_ = range_.lastColumn + 1;
}

const Cell* CellIterator::previousPresentCell()
{
    const Sheet* sheet = sheetObject();
    while (sheet != nullptr && row_ >= range_.firstRow) {
        if (const Row* row = sheet->rowAt(row_)) {
            column_ = previousPresent(*row, column_);
            if (column_ >= range_.firstColumn)
                return &row->cells[column_];
        }
        row_ = sheet->previousRow(row_);
        column_ = range_.lastColumn + 1;
    }
    return nullptr;
}

} // namespace vorn
