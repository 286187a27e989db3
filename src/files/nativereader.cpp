// Reading a native file: the records in the order in which they come, and what belongs to the
// document as a whole. The stream is taken into memory at once and the records are looked at where
// they lie.
//
// A part of a sheet, as the clipboard holds it, is not a document: its records have other numbers
// and land in a document that is there. StreamNumbers is where the two will differ.

#include "files/native.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "files/nativerecords.h"
#include "files/nativesheetreader.h"
#include "files/nativetablereader.h"
#include "files/recordcursor.h"
#include "files/recordsource.h"
#include "files/streamnumbers.h"
#include "formula/bytecode.h"
#include "formula/checkcode.h"
#include "platform/codepages.h"
#include "platform/platform.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace vorn {

namespace {

// The count of bytes before byte code, in files as in memory.
constexpr std::uint32_t CodeCountBytes = 4;

// A formula knows its sheet by 16 bits, and so it knows names.
constexpr int SheetsMax = UINT16_MAX;
constexpr int NamesMax = UINT16_MAX + 1;

class NativeReader {
public:
    NativeReader(Stream& stream, std::uint32_t length)
        : source_(stream, length), sheets_(numbers_, source_.length())
    {
    }

    void load();

private:
    bool readHeader();
    bool isReadable(std::uint16_t writer, std::uint16_t required);
    void dispatch(std::uint16_t type, RecordCursor fields);
    void readReserved(std::uint16_t type, RecordCursor fields);
    void readText(RecordCursor fields);
    void reserve(Pool& pool, RecordCursor fields);
    bool isSoundCode(const RecordCursor& fields, CodeNeeds& needs);
    void readFormula(RecordCursor fields);
    void readName(RecordCursor fields);
    std::uint8_t* copyDefinition(RecordCursor fields);
    void readTask(RecordCursor fields);
    void readSheetName(RecordCursor fields);
    void startSheet();
    void readCodePage(RecordCursor fields);
    void activate(std::uint32_t index);
    void finish();

    bool isLegacy() const { return version_ < NativeVersion; }

    RecordSource source_;
    StreamNumbers numbers_;
    NativeTableReader tables_;
    NativeSheetReader sheets_;
    CodeNeeds needs_; // of all code so far, but for texts
    std::uint16_t version_ = 0;
    int sheet_ = -1; // index of the sheet whose records come
};

// --- The header

bool NativeReader::isReadable(std::uint16_t writer, std::uint16_t required)
{
    if (writer <= NativeVersion)
        return true;
    if (required > NativeVersion) {
        raiseError(ErrorTooNewFile);
        return false;
    }
    raiseError(ErrorNewerFile);
    showError();
    return true;
}

bool NativeReader::readHeader()
{
    std::uint16_t type = 0;
    RecordCursor fields;
    if (errorStands())
        return false;
    if (!source_.next(type, fields) || type != RecordHeader) {
        raiseError(ErrorFileFormat);
        return false;
    }
    version_ = fields.take16();
    const std::uint16_t writer = fields.take16();
    return isReadable(writer, fields.take16());
}

void NativeReader::load()
{
    if (!readHeader())
        return;
    if (isLegacy())
        tables_.beginLegacy();
    std::uint16_t type = 0;
    RecordCursor fields;
    while (!errorStands() && source_.next(type, fields) && type != RecordEnd)
        dispatch(type, fields);
    if (!errorStands())
        finish();
}

// --- The records

// One call for each type, so that the compiler tells of one that was forgotten. Types that are in
// no list are of a later version and passed over.
void NativeReader::dispatch(std::uint16_t type, RecordCursor fields)
{
    if (type >= FirstReservedRecord)
        return readReserved(type, fields);
    switch (static_cast<NativeRecord>(type)) {
    case RecordTextCount:
        return reserve(*stringPool, fields);
    case RecordFormulaCount:
        return reserve(*formulaPool, fields);
    case RecordText:
        return readText(fields);
    case RecordSheetStart:
        return startSheet();
    case RecordSheetName:
        return readSheetName(fields);
    case RecordFont:
        return tables_.readFont(fields);
    case RecordStyle:
        return tables_.readStyle(fields);
    case RecordSelection:
        return raiseError(ErrorFileFormat);
    case RecordRow:
        return sheets_.readRow(fields);
    case RecordFormula:
        return readFormula(fields);
    case RecordView:
        return sheets_.readView(fields);
    case RecordColumns:
        return sheets_.readColumns(fields);
    case RecordNumberFormat:
        return tables_.readNumberFormat(fields);
    case RecordDateFormat:
        return tables_.readDateFormat(fields);
    case RecordCodePage:
        return readCodePage(fields);
    case RecordName:
        return readName(fields);
    case RecordScroll:
        return sheets_.readScroll(fields);
    case RecordWorkbookProtection:
        workbook->protectedWorkbook = fields.take16() == 1;
        return;
    case RecordSheetProtection:
        return sheets_.readProtection(fields);
    case RecordTask:
        return readTask(fields);
    case RecordFilter:
        return sheets_.readFilter(fields);
    case RecordFilterColumn:
        return sheets_.readFilterColumn(fields);
    case RecordHeader: // a second one says nothing
    case RecordEnd:
    case RecordTableCounts: // counts are for those who number anew
    case RecordNameCount:
    case FirstReservedRecord:
    case RecordActiveSheet:
        return;
    }
}

void NativeReader::activate(std::uint32_t index)
{
    const bool exists = index < static_cast<std::uint32_t>(workbook->sheets.size());
    workbook->setCurrentSheet(workbook->sheetAt(exists ? static_cast<int>(index) : 0));
}

void NativeReader::readReserved(std::uint16_t type, RecordCursor fields)
{
    if (isLegacy())
        return;
    fields.take32();
    activate(type == RecordActiveSheet ? fields.take32() : 0);
}

void NativeReader::readCodePage(RecordCursor fields)
{
    const std::uint32_t page = fields.take32();
    if (page <= INT32_MAX && platform.codePages->isKnown(static_cast<int>(page)))
        workbook->codePage = static_cast<int>(page);
}

// --- Pools. Nobody owns an entry yet; one that stays without an owner is not saved again.

// Believes a count as far as there are bytes for so many entries.
void NativeReader::reserve(Pool& pool, RecordCursor fields)
{
    constexpr std::uint32_t LeastEntryBytes = 8; // the heads of a record and of what it holds
    const std::uint32_t most = source_.remaining() / LeastEntryBytes;
    pool.reserve(static_cast<std::int32_t>(std::min(fields.take32(), most)));
}

void NativeReader::readText(RecordCursor fields)
{
    const FiledText text = fields.takeCountedText();
    const std::size_t bytes = (std::size_t{text.length} + 1) * sizeof(char16_t);
    const std::int32_t index = stringPool->addSpace(bytes, 0); // its fill ends the text
    if (index == -1)
        return;
    assert(static_cast<std::uint32_t>(index) == numbers_.texts);
    getText(stringPool->units(index), text.bytes, text.length);
    ++numbers_.texts;
}

// Looks at a count of bytes and so many bytes of code, and notes what it needs; damage is raised.
bool NativeReader::isSoundCode(const RecordCursor& fields, CodeNeeds& needs)
{
    RecordCursor code = fields;
    const std::uint32_t length = code.take32();
    if (length > code.remaining() || !isSoundFormulaCode(code.position(), length, needs) ||
        needs.texts > numbers_.texts) {
        raiseError(ErrorFileRead);
        return false;
    }
    needs_.names = std::max(needs_.names, needs.names);
    needs_.isVolatile = needs_.isVolatile || needs.isVolatile;
    return true;
}

// Code without texts is in the file as it is in memory: the numbers of names are the same.
void NativeReader::readFormula(RecordCursor fields)
{
    CodeNeeds needs;
    if (!isSoundCode(fields, needs))
        return;
    const std::size_t bytes = CodeCountBytes + get32(fields.position());
    const std::int32_t index = formulaPool->add(fields.position(), bytes, 0);
    if (index == -1)
        return;
    assert(static_cast<std::uint32_t>(index) == numbers_.formulas);
    if (needs.texts != 0)
        byteCodeFromFileForm(formulaPool->code(index), {});
    ++numbers_.formulas;
}

// --- Names

// The block of a definition; null, perhaps with an error, if there is none.
std::uint8_t* NativeReader::copyDefinition(RecordCursor fields)
{
    CodeNeeds needs;
    if (fields.remaining() == 0 || !isSoundCode(fields, needs))
        return nullptr;
    const std::size_t bytes = CodeCountBytes + get32(fields.position());
    auto* block = static_cast<std::uint8_t*>(heapAlloc(bytes));
    if (block == nullptr)
        return nullptr;
    std::memcpy(block, fields.position(), bytes);
    // The numbers of names stand as they are, so the definition need not wait for the others.
    byteCodeFromFileForm(block + CodeCountBytes, {});
    return block;
}

// The text of a name; null, with ErrorMemory, if memory is short. An empty one, which only a
// damaged file has, is there too, so that nobody else has to think of it.
char16_t* copyNameText(std::u16string_view text)
{
    auto* copy = static_cast<char16_t*>(heapAlloc((text.size() + 1) * sizeof(char16_t)));
    if (copy != nullptr)
        *std::copy(text.begin(), text.end(), copy) = u'\0';
    return copy;
}

// Names are not compared with those that are there: formulas count them in the order of the file.
void NativeReader::readName(RecordCursor fields)
{
    if (workbook->names.size() == NamesMax) {
        raiseError(ErrorMemory);
        return;
    }
    DefinedName name;
    name.name = copyNameText(fields.takeCountedText().text());
    name.block = copyDefinition(fields);
    if (errorStands() || !workbook->names.append(name)) {
        heapFree(name.name);
        heapFree(name.block);
    }
}

// --- The workbook

// The area of a task's taps as it stands in the document: no reference, or one inside a sheet.
CellValue takeTapArea(RecordCursor& fields)
{
    CellValue area;
    area.tag = fields.take8();
    fields.take8();
    area.firstSheet = fields.take8();
    area.lastSheet = fields.take8();
    RangeRef range;
    range.firstRow = std::min<std::uint16_t>(fields.take16(), LastRow);
    range.firstColumn = std::min<std::uint16_t>(fields.take16(), LastColumn);
    range.lastRow = std::min<std::uint16_t>(fields.take16(), LastRow);
    range.lastColumn = std::min<std::uint16_t>(fields.take16(), LastColumn);
    if (area.tag == TagSheetCellRef)
        area.put(TagSheetCellRef, range.first());
    else if (area.tag == TagSheetRangeRef)
        area.put(TagSheetRangeRef, range);
    else
        area = CellValue{};
    return area;
}

void NativeReader::readTask(RecordCursor fields)
{
    const CellValue area = takeTapArea(fields);
    const bool onTap = fields.takeFlag32();
    const bool addToMenu = fields.takeFlag32();
    char16_t* name = duplicateString(fields.takeCountedText().text());
    char16_t* text = duplicateString(fields.takeCountedText().text());
    Task* task = errorStands() ? nullptr : workbook->addTask(name, text);
    if (task == nullptr) {
        heapFree(name);
        heapFree(text);
        return;
    }
    task->onTapArea = area;
    task->onTap = onTap ? 1 : 0;
    task->addToMenu = addToMenu ? 1 : 0;
}

void NativeReader::readSheetName(RecordCursor fields)
{
    if (workbook->sheets.size() < SheetsMax)
        workbook->addSheet(fields.takeCountedText().text());
    else
        raiseError(ErrorFileRead);
}

void NativeReader::startSheet()
{
    if (sheet_ < workbook->sheets.size())
        ++sheet_;
    Sheet* sheet = workbook->sheetAt(sheet_);
    sheets_.setSheet(sheet);
    if (sheet != nullptr)
        workbook->setCurrentSheet(sheet);
}

// --- The end

// Code behind the door may count on a sheet that is active, on names, fonts, formats and styles by
// any number that stands in the document.
void NativeReader::finish()
{
    if (workbook->sheets.size() == 0) {
        raiseError(ErrorFileFormat);
        return;
    }
    if (needs_.names > static_cast<std::uint32_t>(workbook->names.size())) {
        raiseError(ErrorFileRead);
        return;
    }
    tables_.finish();
    workbook->continueSheetNumbers();
    if (isLegacy() || workbook->currentSheet == nullptr)
        activate(0);
    // Results are trusted, but for those that change by themselves.
    if (needs_.isVolatile && !errorStands())
        recalculate();
}

} // namespace

void loadNative(TransferContext& context, std::uint32_t length)
{
    NativeReader(*context.stream, length).load();
}

} // namespace vorn
