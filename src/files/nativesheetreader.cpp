#include "files/nativesheetreader.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/sheet.h"
#include "files/nativerecords.h"

#include <algorithm>
#include <iterator>

namespace vorn {

namespace {

// The zooms that a sheet can have come to.
constexpr int LeastZoom = 10;
constexpr int GreatestZoom = 300;
constexpr int PlainZoom = 100;

// Wider than any column that can be made, and still harmless when all are added up.
constexpr std::int32_t GreatestWidth = 1'000'000;

// Another program's mark may stand above the height.
constexpr unsigned RowHeightMask = 0x7fff;

constexpr int FilterTopMax = 100;
constexpr int FilterOperatorMax = 12;

std::uint16_t clipRow(std::uint16_t row)
{
    return std::min<std::uint16_t>(row, LastRow);
}
std::uint16_t clipColumn(std::uint16_t column)
{
    return std::min<std::uint16_t>(column, LastColumn);
}

CellRef takeCell(RecordCursor& record)
{
    const std::uint16_t row = clipRow(record.take16());
    const std::uint16_t column = clipColumn(record.take16());
    return {row, column};
}

RangeRef takeRange(RecordCursor& record)
{
    const CellRef first = takeCell(record);
    const CellRef last = takeCell(record);
    return sortedRange(first, last);
}

std::int32_t within(std::uint32_t number, std::int32_t least, std::int32_t greatest,
                    std::int32_t otherwise)
{
    const bool fits = number <= static_cast<std::uint32_t>(greatest) &&
                      static_cast<std::int32_t>(number) >= least;
    return fits ? static_cast<std::int32_t>(number) : otherwise;
}

// A copy in the private heap; null for an empty text.
char16_t* heapText(const FiledText& text)
{
    return duplicateString(text.text());
}

} // namespace

bool RoomLimit::take(std::uint64_t bytes)
{
    if (bytes > left_) {
        raiseError(ErrorMemory);
        return false;
    }
    left_ -= bytes;
    return true;
}

// --- The view

// Titles stay where they are, so what scrolls begins behind them.
void NativeSheetReader::scrollBehindTitles()
{
    if (sheet_->titleColumns)
        sheet_->leftColumn = std::clamp(
            sheet_->leftColumn, std::min(sheet_->titles.lastColumn + 1, LastColumn), LastColumn);
    if (sheet_->titleRows)
        sheet_->topRow =
            std::clamp(sheet_->topRow, std::min(sheet_->titles.lastRow + 1, LastRow), LastRow);
}

void NativeSheetReader::readScroll(RecordCursor record)
{
    if (sheet_ == nullptr)
        return;
    const CellRef scrolled = takeCell(record);
    const CellRef anchor = takeCell(record);
    const CellRef active = takeCell(record);
    sheet_->topRow = scrolled.row;
    sheet_->leftColumn = scrolled.column;
    scrollBehindTitles();

    Selection& selection = sheet_->selection;
    selection.select(active, anchor);
    selection.anchorRow = anchor.row;
    selection.anchorColumn = anchor.column;
    selection.cornerRow = active.row;
    selection.cornerColumn = active.column;
}

void NativeSheetReader::readView(RecordCursor record)
{
    if (sheet_ == nullptr)
        return;
    sheet_->zoom = within(record.take32(), LeastZoom, GreatestZoom, PlainZoom);
    sheet_->showGridlines = record.takeFlag8();
    sheet_->showTitles = record.takeFlag8();
    sheet_->showZeros = record.takeFlag8();
    sheet_->titleColumns = record.takeFlag8();
    sheet_->titleRows = record.takeFlag8();
    sheet_->titles = takeRange(record);
    scrollBehindTitles();
}

void NativeSheetReader::readProtection(RecordCursor record)
{
    if (sheet_ != nullptr)
        sheet_->protectedSheet = record.take16() == 1;
}

// --- Columns

void NativeSheetReader::readColumns(RecordCursor record)
{
    const std::uint16_t first = record.take16();
    const std::uint16_t last = clipColumn(record.take16());
    ColumnAttr attributes;
    attributes.width = within(record.take32(), 0, GreatestWidth, -1);
    attributes.style = numbers_.styleIndex(record.take16());
    attributes.flags = record.take16();
    if (sheet_ == nullptr || first > last)
        return;
    const int more = std::max(last + 1 - sheet_->columns.size(), 0);
    if (room_.take(static_cast<std::uint64_t>(more) * sizeof(ColumnAttr)))
        sheet_->columns.setColumnAttr(first, last, attributes);
}

// --- Cells. Of all that a file holds they are the most, so one call reads a whole row of them.

namespace {

class CellReader {
public:
    CellReader(const StreamNumbers& numbers, const RecordCursor& record, CellPosition place)
        : styles_(workbook->styles.size()), numbers_(numbers), record_(record), place_(place)
    {
    }

    void readCells(Row& row, int first, int end);

private:
    bool readCell(Cell& cell);
    FormulaCell* makeFormula(std::uint32_t number) const;
    void readPayload(CellValue& value, std::uint8_t tag, const std::uint8_t* payload) const;

    const int styles_; // how many there are
    const StreamNumbers& numbers_;
    RecordCursor record_;
    CellPosition place_;
};

// The row gets its cells at their final size at once. A hole takes a byte, so there are never more
// than bytes.
void CellReader::readCells(Row& row, int first, int end)
{
    end = std::min(end, first + static_cast<int>(record_.remaining()));
    if (first >= end || !row.cells.resize(end))
        return;
    int stored = 0;
    for (int column = first; column < end && record_.remaining() != 0; ++column) {
        if (*record_.position() == CellHole) {
            record_.skip(1);
            continue;
        }
        place_.column = static_cast<std::uint16_t>(column);
        if (!readCell(row.cells.data()[column]))
            break;
        if (stored == 0)
            row.firstColumn = static_cast<std::int16_t>(column);
        stored = column + 1;
    }
    row.cells.resize(stored);
}

// Answers false at the end of what can be understood.
bool CellReader::readCell(Cell& cell)
{
    const std::uint8_t* item = record_.position();
    const bool hasFormula = (*item & CellFormulaMark) != 0;
    const auto tag = static_cast<std::uint8_t>(*item & ~CellFormulaMark);
    if (tag >= std::size(CellPayloadSizes) || CellPayloadSizes[tag] == NoCellPayload)
        return false;
    const std::uint32_t formulaPlace = 3U + CellPayloadSizes[tag];
    const std::uint32_t size = formulaPlace + (hasFormula ? 4U : 0U);
    if (size > record_.remaining())
        return false;
    record_.skip(size);

    const int style = get16(item + 1);
    cell.style = static_cast<std::int16_t>(style < styles_ ? style : 0);
    CellValue* value = &cell.value;
    if (hasFormula) {
        if (FormulaCell* formula = makeFormula(get32(item + formulaPlace))) {
            cell.value.put(TagFormula, formula->handle);
            value = &formula->result;
        }
    }
    readPayload(*value, tag, item + 3);
    return true;
}

// The record of a formula, on the chain. Null for a number that is none and, with an error that
// ends the load, without memory: the cell then keeps the result alone.
FormulaCell* CellReader::makeFormula(std::uint32_t number) const
{
    const std::int32_t formula = numbers_.formulaIndex(number);
    FormulaCell* cell = formula == -1 ? nullptr : newFormulaCell(place_, formula);
    if (cell == nullptr)
        return nullptr;
    formulaPool->addRef(formula);
    calcChain.append(cell);
    return cell;
}

// Into a blank value, field by field: a whole value put together first is a slow copy.
void CellReader::readPayload(CellValue& value, std::uint8_t tag, const std::uint8_t* payload) const
{
    switch (tag) {
    case TagLogical:
        value.put(TagLogical, static_cast<std::int32_t>(*payload != 0));
        break;
    case TagError:
        value.put(TagError, static_cast<std::int32_t>(*payload));
        break;
    case TagText:
        value.put(TagText, stringPool->addRef(numbers_.textIndex(get32(payload))));
        break;
    case TagNumber:
        value.put(TagNumber, getDouble(payload));
        break;
    case TagDateTime:
        value.put(TagDateTime, getDouble(payload));
        break;
    default:
        break;
    }
}

} // namespace

// --- Rows

Row* NativeSheetReader::makeRow(int row)
{
    const int rows = sheet_->hasRows() ? sheet_->lastRow() + 1 : 0;
    const int more = std::max(row + 1 - rows, 0);
    if (!room_.take(static_cast<std::uint64_t>(more) * sizeof(Row*)))
        return nullptr;
    return sheet_->ensureRow(row);
}

void NativeSheetReader::readRow(RecordCursor record)
{
    const std::uint16_t row = record.take16();
    const std::uint16_t first = record.take16();
    const std::uint16_t end = record.take16();
    const std::uint16_t height = record.take16();
    const std::uint16_t flags = record.take16();
    const std::uint16_t style = numbers_.styleIndex(record.take16());
    if (sheet_ == nullptr || row > LastRow)
        return;
    Row* object = makeRow(row);
    if (object == nullptr)
        return;
    if (object->cells.size() != 0) {
        // What stands there may hold the last owner of a text that comes again later.
        raiseError(ErrorFileRead);
        return;
    }
    object->height = static_cast<std::uint16_t>(height & RowHeightMask);
    object->flags = flags;
    object->style = style;
    const CellPosition place{row, 0, static_cast<std::uint16_t>(sheet_->index)};
    CellReader(numbers_, record, place).readCells(*object, first, std::min<int>(end, ColumnCount));
}

// --- The filter

void NativeSheetReader::readFilter(RecordCursor record)
{
    if (sheet_ == nullptr)
        return;
    const RangeRef range = takeRange(record);
    const auto columns = static_cast<std::uint64_t>(range.lastColumn - range.firstColumn + 1);
    if (room_.take(columns * sizeof(FilterColumn)))
        sheet_->filter.start(range);
}

void NativeSheetReader::readFilterColumn(RecordCursor record)
{
    const std::uint32_t index = record.take32();
    if (sheet_ == nullptr || index >= static_cast<std::uint32_t>(sheet_->filter.columns.size()))
        return;
    FilterColumn& column = sheet_->filter.columns[static_cast<std::int32_t>(index)];
    column.kind = within(record.take32(), FilterAll, FilterWhere, FilterAll);
    column.topCount = within(record.take32(), 1, FilterTopMax, FilterColumn().topCount);
    column.largest = record.takeFlag32() ? 1 : 0;
    column.operator1 = within(record.take32(), 1, FilterOperatorMax, FilterColumn().operator1);
    const std::int32_t second = within(record.take32(), 0, FilterOperatorMax, 0);
    takeComparison(column, {static_cast<std::uint32_t>(second), record.take32()});
    heapFree(column.text1);
    heapFree(column.text2);
    column.text1 = heapText(record.takePlainText());
    column.text2 = heapText(record.takePlainText());
}

} // namespace vorn
