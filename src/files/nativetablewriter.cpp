#include "files/nativetablewriter.h"

#include "core/error.h"
#include "core/workbook.h"
#include "files/nativerecords.h"
#include "files/recordwriter.h"

namespace vorn {

namespace {

// What a record has instead of a number until all that are in use are known.
constexpr std::uint16_t InUse = 0;

template <typename Record>
void setNumbers(GrowArray<Record>& table, std::uint16_t number)
{
    for (Record& record : table)
        record.fileIndex = number;
}

template <typename Record>
void use(GrowArray<Record>& table, int index)
{
    if (index >= 0 && index < table.size())
        table[index].fileIndex = InUse;
}

// Numbers the records in use in the order of their table; answers how many there are.
template <typename Record>
std::uint16_t numberInOrder(GrowArray<Record>& table)
{
    std::uint16_t count = 0;
    for (Record& record : table) {
        if (record.fileIndex != NoFileIndex)
            record.fileIndex = count++;
    }
    return count;
}

template <typename Record>
std::uint16_t numberOf(const GrowArray<Record>& table, int index)
{
    return index >= 0 && index < table.size() ? table[index].fileIndex : std::uint16_t{0};
}

void useStylesOfRow(const Row& row)
{
    GrowArray<CellStyle>& styles = workbook->styles;
    use(styles, row.style);
    for (int column = row.firstColumn; column < row.cells.size(); ++column)
        use(styles, row.cells.data()[column].style);
}

void useStylesOfSheet(const Sheet& sheet)
{
    for (int column = 0; column < sheet.columns.size(); ++column)
        use(workbook->styles, sheet.columns.columnStyle(column));
    if (!sheet.hasRows())
        return;
    for (int row = 0; row <= sheet.lastRow(); ++row) {
        if (const Row* object = sheet.rowAt(row))
            useStylesOfRow(*object);
    }
}

// --- Records

void writeFont(RecordWriter& records, const FontRecord& font)
{
    records.begin(RecordFont);
    records.add8(font.reserved);
    records.add8(font.underline);
    records.add16(font.attributes);
    records.add16(font.height);
    records.add16(font.colour);
    records.add16(font.weight);
    records.add8(font.family);
    records.add8(font.charset);
    if (std::uint8_t* place = records.room(sizeof font.name))
        putText(place, {font.name, FontNameMax});
    records.add8(font.nameLength);
    records.end();
}

std::uint8_t filedDecimals(const NumberFormat& format)
{
    if (format.kind == FormatText)
        return DecimalsOfText;
    return format.general != 0 ? DecimalsOfGeneral : format.decimals;
}

void writeNumberFormat(RecordWriter& records, const NumberFormat& format)
{
    const bool isText = format.kind == FormatText;
    records.begin(RecordNumberFormat);
    records.add8(filedDecimals(format));
    records.add8(isText ? std::uint8_t{0} : format.thousands);
    for (const char16_t* affix : {format.positivePrefix, format.positiveSuffix,
                                  format.negativePrefix, format.negativeSuffix})
        records.addPlainText(isText ? std::u16string_view() : formatString(affix));
    records.end();
}

void writeDateFormat(RecordWriter& records, const NumberFormat& format)
{
    records.begin(RecordDateFormat);
    records.addPlainText(formatString(format.datePattern));
    records.addPlainText(formatString(format.timePattern));
    records.end();
}

void writeStyle(RecordWriter& records, const CellStyle& style)
{
    CellStyle filed = style;
    filed.set(StyleFormat, numberOf(workbook->formats, style.format()));
    filed.set(StyleFont, numberOf(workbook->fonts, style.font()));
    records.begin(RecordStyle);
    for (const std::uint16_t word : filed.words)
        records.add16(word);
    records.end();
}

template <typename Record>
std::uint16_t countNumbered(const GrowArray<Record>& table)
{
    std::uint16_t count = 0;
    for (const Record& record : table)
        count = static_cast<std::uint16_t>(count + (record.fileIndex != NoFileIndex ? 1 : 0));
    return count;
}

void writeCounts(RecordWriter& records)
{
    const std::uint16_t formats = countNumbered(workbook->formats);
    records.begin(RecordTableCounts);
    records.add16(countNumbered(workbook->styles));
    records.add16(countNumbered(workbook->fonts));
    records.add16(formats);
    records.add16(formats);
    records.end();
}

} // namespace

void numberTables()
{
    clearTableNumbers();
    use(workbook->styles, 0);
    for (int font = 0; font < DefaultFontCount; ++font)
        use(workbook->fonts, font);
    for (const Sheet* sheet : workbook->sheets)
        useStylesOfSheet(*sheet);
    for (const CellStyle& style : workbook->styles) {
        if (style.fileIndex != NoFileIndex)
            use(workbook->fonts, style.font());
    }
    // Formats are known by their place, the first sixteen to every program, so none is left out.
    setNumbers(workbook->formats, InUse);
    if (workbook->formats.size() >= NoFileIndex)
        raiseError(ErrorFileWrite);

    numberInOrder(workbook->styles);
    numberInOrder(workbook->fonts);
    numberInOrder(workbook->formats);
}

void writeTables(RecordWriter& records)
{
    writeCounts(records);
    for (const FontRecord& font : workbook->fonts) {
        if (font.fileIndex != NoFileIndex)
            writeFont(records, font);
    }
    for (const NumberFormat& format : workbook->formats) {
        if (format.kind == FormatDate)
            writeDateFormat(records, format);
        else
            writeNumberFormat(records, format);
    }
    for (const CellStyle& style : workbook->styles) {
        if (style.fileIndex != NoFileIndex)
            writeStyle(records, style);
    }
}

void clearTableNumbers()
{
    setNumbers(workbook->styles, NoFileIndex);
    setNumbers(workbook->fonts, NoFileIndex);
    setNumbers(workbook->formats, NoFileIndex);
}

std::uint16_t styleFileNumber(int style)
{
    return numberOf(workbook->styles, style);
}

} // namespace vorn
