#include "support/nativefile.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/style.h"
#include "core/workbook.h"
#include "files/native.h"
#include "files/stream.h"
#include "formula/bytecode.h"
#include "formula/printer.h"
#include "support/codetext.h"

#include <bit>
#include <vector>

namespace vorn {

Fields& Fields::add(std::uint64_t number, int count)
{
    for (int byte = 0; byte < count; ++byte)
        bytes_ += static_cast<char>(number >> (8 * byte) & 0xff);
    return *this;
}

Fields& Fields::addDouble(double number)
{
    return add(std::bit_cast<std::uint64_t>(number), 8);
}

Fields& Fields::addBytes(std::string_view more)
{
    bytes_ += more;
    return *this;
}

Fields& Fields::addUnits(std::u16string_view text)
{
    for (const char16_t unit : text)
        add16(unit);
    return *this;
}

Fields& Fields::addCounted(std::u16string_view text)
{
    return add32(static_cast<std::uint32_t>(2 * text.size() + 2)).addPlain(text);
}

Fields& Fields::addPlain(std::u16string_view text)
{
    return addUnits(text).add16(0);
}

Fields& Fields::addCode(std::string_view code)
{
    const std::vector<std::uint8_t> bytes = codeBytes(code);
    add32(static_cast<std::uint32_t>(bytes.size()));
    bytes_.append(bytes.begin(), bytes.end());
    return *this;
}

Fields& Fields::addLogical(unsigned logical, unsigned style)
{
    return addCell(1, style).add8(logical);
}
Fields& Fields::addError(unsigned error, unsigned style)
{
    return addCell(2, style).add8(error);
}
Fields& Fields::addText(std::uint32_t number, unsigned style)
{
    return addCell(3, style).add32(number);
}
Fields& Fields::addNumber(double number, unsigned style)
{
    return addCell(4, style).addDouble(number);
}
Fields& Fields::addDate(double serial, unsigned style)
{
    return addCell(13, style).addDouble(serial);
}
Fields& Fields::addFormula(double result, unsigned style, std::uint32_t number)
{
    return addCell(4 | CellFormulaMark, style).addDouble(result).add32(number);
}

Fields rowFields(unsigned row, unsigned first, unsigned end, unsigned height, unsigned flags,
                 unsigned style)
{
    Fields fields;
    for (const unsigned field : {row, first, end, height, flags, style})
        fields.add16(field);
    return fields;
}

Fields styleFields(unsigned format, unsigned font)
{
    CellStyle style = defaultStyle();
    style.set(StyleFormat, static_cast<int>(format));
    style.set(StyleFont, static_cast<int>(font));
    Fields fields;
    for (const unsigned word : style.words)
        fields.add16(word);
    return fields;
}

Fields fontFields(std::u16string_view face, unsigned height)
{
    Fields fields;
    fields.add8(0).add8(0).add16(0).add16(height).add16(32767).add16(400).add8(34).add8(1);
    fields.addUnits(face);
    for (std::size_t unit = face.size(); unit < 32; ++unit)
        fields.add16(0);
    return fields.add8(static_cast<unsigned>(face.size()));
}

Fields formatFields(unsigned decimals, unsigned thousands,
                    std::initializer_list<std::u16string_view> affixes)
{
    Fields fields;
    fields.add8(decimals).add8(thousands);
    for (const std::u16string_view affix : affixes)
        fields.addPlain(affix);
    return fields;
}

NativeFile::NativeFile(unsigned version, unsigned writer, unsigned required)
{
    add(RecordHeader, Fields().add16(version).add16(writer).add16(required).add16(UsualPayloadMax));
}

NativeFile& NativeFile::add(unsigned type, const Fields& fields)
{
    bytes_ += Fields()
                  .add16(type)
                  .add16(static_cast<unsigned>(fields.bytes().size()))
                  .addBytes(fields.bytes())
                  .bytes();
    return *this;
}

NativeFile& NativeFile::addSheets(std::initializer_list<std::u16string_view> names)
{
    for (const std::u16string_view name : names)
        add(RecordSheetName, Fields().addCounted(name));
    return *this;
}

NativeFile& NativeFile::addTables(int styles)
{
    add(RecordFont, fontFields(u"Tahoma"));
    for (int format = 0; format < 16; ++format)
        add(RecordNumberFormat, formatFields(DecimalsOfGeneral, 0, {u"", u"", u"", u""}));
    for (int style = 0; style < styles; ++style)
        add(RecordStyle, styleFields(0, 0));
    return *this;
}

NativeFile& NativeFile::addText(std::u16string_view text)
{
    return add(RecordText, Fields().addCounted(text));
}

NativeFile& NativeFile::addFormula(std::string_view code)
{
    return add(RecordFormula, Fields().addCode(code));
}

namespace {

void addPools(NativeFile& file)
{
    file.add(RecordTextCount, Fields().add32(4));
    for (const std::u16string_view text : {u"apples", u"", u"pears", u"of a name"})
        file.addText(text);
    file.add(RecordNameCount, Fields().add32(3));
    // "Twice" calls "Origin", which comes later; the one between is deleted.
    file.add(RecordName,
             Fields().addCounted(u"Twice").addCode("24:0200 24:0200 05 0b:03000000 17 00"));
    file.add(RecordName, Fields().addCounted(u"Gone"));
    file.add(RecordName, Fields().addCounted(u"Origin").addCode("0c:00000000 00"));
    file.add(RecordFormulaCount, Fields().add32(4));
    file.addFormula("0c:ffff00c0 01:0000000000000040 07 00");
    file.addFormula("1c:01 23:0800 0b:00000000 22:0b00 0b:02000000 22:0300 02:25000d 00");
    file.addFormula("0e:0000004005000040 02:030001 24:0000 05 00");
    file.addFormula("0f:0800020201000100 00000000 1f:01000100 05 1b:2a00 17 00");
}

void addWorkbook(NativeFile& file)
{
    file.add(RecordWorkbookProtection, Fields().add16(1));
    Fields task;
    task.add8(9).add8(0).add8(0).add8(1).add16(2).add16(1).add16(6).add16(3);
    task.add32(1).add32(1).addCounted(u"Greet").addCounted(u"MsgBox(\"hello\")");
    file.add(RecordTask, task);
    file.addSheets({u"First", u"Second sheet", u"Third"});
}

void addRichTables(NativeFile& file)
{
    file.add(RecordTableCounts, Fields().add16(3).add16(7).add16(18).add16(18));
    for (const std::u16string_view face :
         {u"Tahoma", u"Arial", u"Arial", u"Arial", u"Arial", u"Arial", u"Courier New"})
        file.add(RecordFont, fontFields(face, 210));
    for (int format = 0; format < 15; ++format)
        file.add(RecordNumberFormat, formatFields(DecimalsOfGeneral, 0, {u"", u"", u"", u""}));
    file.add(RecordNumberFormat, formatFields(DecimalsOfText, 0, {u"", u"", u"", u""}));
    file.add(RecordNumberFormat, formatFields(3, 1, {u"+", u"%", u"(", u"%)"}));
    file.add(RecordDateFormat, Fields().addPlain(u"yyyy").addPlain(u"H:mm"));
    file.add(RecordStyle, styleFields(0, 0));
    file.add(RecordStyle, styleFields(16, 6));
    file.add(RecordStyle, styleFields(17, 1));
}

void addFirstSheet(NativeFile& file)
{
    file.add(RecordSheetStart);
    file.add(RecordScroll, Fields().add16(7).add16(5).add16(9).add16(4).add16(3).add16(6));
    Fields view;
    view.add32(125).add8(1).add8(0).add8(1).add8(1).add8(1);
    file.add(RecordView, view.add16(0).add16(0).add16(2).add16(1));
    file.add(RecordSheetProtection, Fields().add16(1));
    file.add(RecordColumns, Fields().add16(1).add16(3).add32(4000).add16(1).add16(1));
    file.add(RecordRow, rowFields(0, 1, 10, 300, 0x1c0, 2)
                            .addBlank(1)
                            .addLogical(1, 0)
                            .addHole()
                            .addError(7, 0)
                            .addText(0, 1)
                            .addNumber(2.5, 1)
                            .addDate(36526.25, 2)
                            .addFormula(5, 0, 0)
                            .addHole());
    Fields results = rowFields(1, 0, 5);
    results.addCell(3 | CellFormulaMark, 1).add32(2).add32(1);
    results.addCell(2 | CellFormulaMark, 0).add8(23).add32(2);
    results.addCell(0 | CellFormulaMark, 0).add32(3);
    results.addCell(1 | CellFormulaMark, 0).add8(0).add32(0);
    results.addCell(13 | CellFormulaMark, 2).addDouble(1).add32(0);
    file.add(RecordRow, results);
    file.add(RecordRow, rowFields(9, 0, 0, 0x8200, 0x120, 0));
    file.add(RecordFilter, Fields().add16(0).add16(4).add16(20).add16(6));
    Fields column;
    column.add32(1).add32(4).add32(10).add32(1).add32(3).add32(6).add32(1);
    file.add(RecordFilterColumn, column.addPlain(u"a").addPlain(u"zz"));
}

} // namespace

NativeFile richFile()
{
    NativeFile file;
    file.add(RecordCodePage, Fields().add32(1252));
    addPools(file);
    addWorkbook(file);
    addRichTables(file);
    addFirstSheet(file);
    file.add(RecordSheetStart);
    file.add(RecordRow, rowFields(1, 1, 2).addNumber(11, 0));
    file.add(RecordSheetStart);
    file.add(RecordActiveSheet, Fields().add32(11).add32(1).add32(0));
    return file;
}

int loadBytes(std::string_view bytes)
{
    NewDocument(0, FileKindNative);
    return loadInPlace(bytes);
}

int loadInPlace(std::string_view bytes)
{
    MemoryStream stream(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(bytes.size()));
    const int code = errorState.code;
    clearError();
    return code;
}

namespace {

std::size_t lookAtSheet(const Sheet& sheet)
{
    std::size_t length = sheet.name().size();
    CellIterator cells;
    cells.start(sheet, {0, 0, LastRow, LastColumn});
    while (cells.nextPresentCell() != nullptr)
        length += sheet.cellText(cells.column(), cells.row()).size() +
                  sheet.cellInput(cells.column(), cells.row()).size();
    for (int column = 0; column < ColumnCount; ++column)
        length += static_cast<std::size_t>(sheet.columns.columnPixels(column));
    for (int row = 0; row <= sheet.lastRow(); ++row)
        length += static_cast<std::size_t>(sheet.rowPixels(row));
    for (const FilterColumn& column : sheet.filter.columns)
        length += formatString(column.text1).size() + formatString(column.text2).size();
    return length;
}

} // namespace

std::size_t lookAtEverything()
{
    std::size_t length = 0;
    for (int pass = 0; pass < 2; ++pass) {
        for (const Sheet* sheet : workbook->sheets)
            length += lookAtSheet(*sheet);
        recalculate();
    }
    for (const DefinedName& name : workbook->names) {
        length += formatString(name.name).size();
        if (name.block != nullptr)
            length += printCode(blockCode(name.block), {}).size();
    }
    for (const Task& task : workbook->tasks)
        length += formatString(task.name).size() + formatString(task.text).size();
    for (const CellStyle& style : workbook->styles)
        length += workbook->fonts[style.font()].face().size() +
                  static_cast<std::size_t>(workbook->formats[style.format()].kind);
    // A formula that is too long to print is no trouble.
    if (errorState.code == ErrorTooComplex)
        clearError();
    return length;
}

} // namespace vorn
