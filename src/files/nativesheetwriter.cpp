#include "files/nativesheetwriter.h"

#include "core/pool.h"
#include "core/workbook.h"
#include "files/nativerecords.h"
#include "files/nativetablewriter.h"
#include "files/recordwriter.h"
#include "numfmt/catalogue.h"

#include <algorithm>
#include <array>

namespace vorn {

namespace {

// --- What belongs to the sheet as a whole

std::uint16_t unsigned16(int number)
{
    return static_cast<std::uint16_t>(number);
}

void addRange(RecordWriter& records, const RangeRef& range)
{
    records.add16(range.firstRow);
    records.add16(range.firstColumn);
    records.add16(range.lastRow);
    records.add16(range.lastColumn);
}

// The selection is filed as two corners, the active cell and the one that lies opposite to it. A
// range whose active cell is inside comes back as the part of it above and to the left of that.
CellRef oppositeCorner(const Selection& selection)
{
    const RangeRef& range = selection.range;
    return {selection.activeRow == range.firstRow ? range.lastRow : range.firstRow,
            selection.activeColumn == range.firstColumn ? range.lastColumn : range.firstColumn};
}

void writeScroll(RecordWriter& records, const Sheet& sheet)
{
    const CellRef opposite = oppositeCorner(sheet.selection);
    records.begin(RecordScroll);
    records.add16(unsigned16(sheet.topRow));
    records.add16(unsigned16(sheet.leftColumn));
    records.add16(opposite.row);
    records.add16(opposite.column);
    records.add16(sheet.selection.activeRow);
    records.add16(sheet.selection.activeColumn);
    records.end();
}

// A sheet that full-screen mode has brought to its zoom is filed with the one it will return to.
int filedZoom(const Sheet& sheet, const TransferContext& context)
{
    const bool isFullScreen = context.fullScreenZoom != 0 && sheet.zoom == context.fullScreenZoom;
    return isFullScreen ? sheet.savedZoom : sheet.zoom;
}

void writeView(RecordWriter& records, const Sheet& sheet, const TransferContext& context)
{
    records.begin(RecordView);
    records.add32(static_cast<std::uint32_t>(filedZoom(sheet, context)));
    for (const bool flag : {sheet.showGridlines, sheet.showTitles, sheet.showZeros,
                            sheet.titleColumns, sheet.titleRows})
        records.add8(flag ? 1 : 0);
    addRange(records, sheet.titles);
    records.end();
}

void writeColumns(RecordWriter& records, const ColumnTable& columns)
{
    ColumnAttr attributes;
    int last = 0;
    for (int first = 0; columns.nextColumnRun(first, last, attributes); first = last + 1) {
        records.begin(RecordColumns);
        records.add16(unsigned16(first));
        records.add16(unsigned16(last));
        records.add32(static_cast<std::uint32_t>(attributes.width));
        records.add16(styleFileNumber(attributes.style));
        records.add16(attributes.flags);
        records.end();
    }
}

void writeFilterColumn(RecordWriter& records, int index, const FilterColumn& column)
{
    const FiledComparison comparison = fileComparison(column);
    records.begin(RecordFilterColumn);
    records.add32(static_cast<std::uint32_t>(index));
    records.add32(static_cast<std::uint32_t>(column.kind));
    records.add32(static_cast<std::uint32_t>(column.topCount));
    records.add32(static_cast<std::uint32_t>(column.largest));
    records.add32(static_cast<std::uint32_t>(column.operator1));
    records.add32(comparison.second);
    records.add32(comparison.link);
    records.addPlainText(formatString(column.text1));
    records.addPlainText(formatString(column.text2));
    records.end();
}

void writeFilter(RecordWriter& records, const SheetFilter& filter)
{
    records.begin(RecordFilter);
    addRange(records, filter.range);
    records.end();
    for (int index = 0; index < filter.columns.size(); ++index)
        writeFilterColumn(records, index, filter.columns[index]);
}

// --- Cells

std::uint32_t textNumber(std::int32_t index)
{
    return static_cast<std::uint32_t>(index == -1 ? -1 : stringPool->fileIndex(index));
}

// -1 for a cell that has lost its code: its result is then all that there is to file.
std::int32_t formulaNumber(const FormulaCell& cell)
{
    return cell.formula == -1 ? -1 : formulaPool->fileIndex(cell.formula);
}

bool isFiledTag(std::uint8_t tag)
{
    return tag < std::size(CellPayloadSizes) && CellPayloadSizes[tag] != NoCellPayload;
}

std::uint8_t* putValue(std::uint8_t* place, const CellValue& value)
{
    switch (value.tag) {
    case TagLogical:
        *place = value.logical() ? 1 : 0;
        break;
    case TagError:
        *place = static_cast<std::uint8_t>(value.error());
        break;
    case TagText:
        put32(place, textNumber(value.textIndex()));
        break;
    case TagNumber:
    case TagDateTime:
        putDouble(place, value.number());
        break;
    default:
        return place;
    }
    return place + CellPayloadSizes[value.tag];
}

// Puts a cell that is there and answers what is behind it.
std::uint8_t* putCell(std::uint8_t* place, const CellValue& stored, std::uint16_t style)
{
    const FormulaCell* formula = stored.tag == TagFormula ? stored.formula() : nullptr;
    const CellValue& value = formula == nullptr ? stored : formula->result;
    const std::int32_t code = formula == nullptr ? -1 : formulaNumber(*formula);
    const unsigned tag = isFiledTag(value.tag) ? value.tag : unsigned{TagBlank};
    *place = static_cast<std::uint8_t>(tag | (code == -1 ? 0U : CellFormulaMark));
    put16(place + 1, style);
    place = putValue(place + 3, value);
    if (code == -1)
        return place;
    put32(place, static_cast<std::uint32_t>(code));
    return place + 4;
}

// --- Rows

class RowsWriter {
public:
    RowsWriter(RecordWriter& records, Sheet& sheet);

    void writeRows();

private:
    bool isWorthARecord(const Row& row, int end) const;
    void writeRow(int row, Row& object, int end);

    RecordWriter& records_;
    Sheet& sheet_;
    std::array<std::uint16_t, ColumnCount> columnStyles_; // their numbers in the file
};

RowsWriter::RowsWriter(RecordWriter& records, Sheet& sheet) : records_(records), sheet_(sheet)
{
    for (int column = 0; column < ColumnCount; ++column)
        columnStyles_[static_cast<std::size_t>(column)] =
            styleFileNumber(sheet.columns.columnStyle(column));
}

bool RowsWriter::isWorthARecord(const Row& row, int end) const
{
    constexpr unsigned HeightBits = 0x7fff;
    return end != 0 || row.style != 0 || (row.height & HeightBits) != sheet_.defaultRowHeight;
}

void RowsWriter::writeRow(int row, Row& object, int end)
{
    const bool hasStyle = object.style != 0;
    const unsigned flags = object.flags & ~unsigned{FiledRowStyleFlag};
    object.flags = static_cast<std::uint16_t>(flags | (hasStyle ? FiledRowStyleFlag : 0U));
    const int first = end == 0 ? 0 : nextPresent(object, -1);

    records_.begin(RecordRow);
    records_.add16(unsigned16(row));
    records_.add16(unsigned16(first));
    records_.add16(unsigned16(end));
    records_.add16(object.height);
    records_.add16(object.flags | FiledRowFlag);
    const std::uint16_t rowStyle = styleFileNumber(object.style);
    records_.add16(rowStyle);

    const auto most = static_cast<std::size_t>(end - first) * CellBytesMax;
    std::uint8_t* place = records_.room(most);
    if (place == nullptr)
        return;
    for (int column = first; column < end; ++column) {
        const Cell& cell = object.cells.data()[column];
        if (cell.value.tag == TagBlank && cell.style < 0) {
            *place++ = CellHole;
            continue;
        }
        // A reader would take "no style" for the default one, so what the cell has from its row or
        // its column is filed as its own.
        std::uint16_t style = hasStyle ? rowStyle : columnStyles_[static_cast<std::size_t>(column)];
        if (cell.style >= 0)
            style = styleFileNumber(cell.style);
        place = putCell(place, cell.value, style);
    }
    records_.cutAt(place);
    records_.end();
}

void RowsWriter::writeRows()
{
    for (int row = sheet_.nextRow(-1); row < RowCount; row = sheet_.nextRow(row)) {
        Row& object = *sheet_.ensureRow(row);
        const int end = sheet_.lastPresentColumn(row) + 1;
        if (isWorthARecord(object, end))
            writeRow(row, object, end);
    }
}

} // namespace

void writeSheet(RecordWriter& records, Sheet& sheet, const TransferContext& context)
{
    records.addEmpty(RecordSheetStart);
    writeScroll(records, sheet);
    writeView(records, sheet, context);
    if (sheet.protectedSheet)
        records.addNumber16(RecordSheetProtection, 1);
    writeColumns(records, sheet.columns);
    RowsWriter(records, sheet).writeRows();
    if (sheet.filter.active)
        writeFilter(records, sheet.filter);
}

} // namespace vorn
