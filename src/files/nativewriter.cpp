#include "files/native.h"

#include "core/pool.h"
#include "core/workbook.h"
#include "files/nativerecords.h"
#include "files/nativesheetwriter.h"
#include "files/nativetablewriter.h"
#include "files/recordwriter.h"
#include "files/stream.h"
#include "formula/bytecode.h"
#include "formula/filecode.h"
#include "numfmt/catalogue.h"

#include <algorithm>

namespace vorn {

namespace {

// Where the header states the largest payload.
constexpr std::uint32_t LargestPayloadOffset = 6;

void writeHeader(RecordWriter& records)
{
    records.begin(RecordHeader);
    records.add16(NativeVersion); // of the format
    records.add16(NativeVersion); // of the program
    records.add16(NativeVersion); // the lowest that reads it
    records.add16(UsualPayloadMax);
    records.end();
}

// A header that promised less than is there is put right, now that all payloads are known.
void patchHeader(Stream& stream, std::uint32_t start, std::uint32_t longest)
{
    if (longest <= UsualPayloadMax)
        return;
    std::uint8_t bytes[2];
    put16(bytes, static_cast<std::uint16_t>(longest));
    stream.WriteAt(start + RecordHeadBytes + LargestPayloadOffset, bytes, sizeof bytes);
}

// --- Pools. An entry that nobody owns is left out and has no number.

void writeTexts(RecordWriter& records)
{
    records.addNumber32(RecordTextCount, static_cast<std::uint32_t>(stringPool->beginScan()));
    std::int32_t number = 0;
    for (std::int32_t index = 0; index < stringPool->slotCount(); ++index) {
        if (!stringPool->slotIsLive(index) || stringPool->refCount(index) <= 0)
            continue;
        stringPool->setFileIndex(index, number++);
        records.begin(RecordText);
        records.addCountedText(stringPool->text(index));
        records.end();
    }
}

// A block of byte code: its count of bytes, then the instructions in file form.
void addCode(RecordWriter& records, const void* block)
{
    const std::uint32_t length = blockLength(block);
    records.add32(length);
    if (std::uint8_t* place = records.room(length)) {
        std::copy_n(blockCode(block), length, place);
        byteCodeToFileForm(place, KeepNameIndices);
    }
}

void writeNames(RecordWriter& records)
{
    records.addNumber32(RecordNameCount, static_cast<std::uint32_t>(workbook->names.size()));
    for (const DefinedName& name : workbook->names) {
        records.begin(RecordName);
        records.addCountedText(formatString(name.name));
        if (name.block != nullptr)
            addCode(records, name.block);
        records.end();
    }
}

void writeFormulas(RecordWriter& records)
{
    records.addNumber32(RecordFormulaCount, static_cast<std::uint32_t>(formulaPool->beginScan()));
    std::int32_t number = 0;
    for (std::int32_t index = 0; index < formulaPool->slotCount(); ++index) {
        if (!formulaPool->slotIsLive(index) || formulaPool->refCount(index) <= 0)
            continue;
        formulaPool->setFileIndex(index, number++);
        records.begin(RecordFormula);
        addCode(records, formulaPool->entry(index));
        records.end();
    }
}

// --- What belongs to the workbook as a whole

// The area in which a tap runs the task, with zeros where it means nothing.
void addTapArea(RecordWriter& records, const CellValue& area)
{
    const bool isCell = area.tag == TagSheetCellRef;
    if (!isCell && area.tag != TagSheetRangeRef) {
        records.addBytes(CellValue{}.payload, sizeof area.payload);
        records.add32(0);
        return;
    }
    const RangeRef range = area.rangeRef();
    records.add8(area.tag);
    records.add8(0);
    records.add8(area.firstSheet);
    records.add8(area.lastSheet);
    records.add16(range.firstRow);
    records.add16(range.firstColumn);
    records.add16(isCell ? std::uint16_t{0} : range.lastRow);
    records.add16(isCell ? std::uint16_t{0} : range.lastColumn);
}

void writeTask(RecordWriter& records, const Task& task)
{
    records.begin(RecordTask);
    addTapArea(records, task.onTapArea);
    records.add32(static_cast<std::uint32_t>(task.onTap));
    records.add32(static_cast<std::uint32_t>(task.addToMenu));
    records.addCountedText(formatString(task.name));
    records.addCountedText(formatString(task.text));
    records.end();
}

void writeWorkbook(RecordWriter& records)
{
    records.addNumber16(RecordWorkbookProtection, workbook->protectedWorkbook ? 1 : 0);
    for (const Task& task : workbook->tasks) {
        if (task.global == 0)
            writeTask(records, task);
    }
    for (const Sheet* sheet : workbook->sheets) {
        records.begin(RecordSheetName);
        records.addCountedText(sheet->name());
        records.end();
    }
}

void writeActiveSheet(RecordWriter& records)
{
    const Sheet* active = workbook->currentSheet;
    records.begin(RecordActiveSheet);
    if (std::uint8_t* place = records.room(ActiveSheetBytes)) {
        std::fill_n(place, ActiveSheetBytes, std::uint8_t{0});
        place[0] = ActiveSheetMark;
        put32(place + 4, static_cast<std::uint32_t>(active == nullptr ? 0 : active->index));
    }
    records.end();
}

} // namespace

void saveNative(TransferContext& context)
{
    const std::uint32_t start = context.stream->position();
    RecordWriter records(*context.stream);
    writeHeader(records);
    records.addNumber32(RecordCodePage, static_cast<std::uint32_t>(workbook->codePage));
    writeTexts(records);
    writeNames(records);
    writeFormulas(records);
    writeWorkbook(records);
    numberTables();
    writeTables(records);
    for (Sheet* sheet : workbook->sheets)
        writeSheet(records, *sheet, context);
    writeActiveSheet(records);
    records.addEmpty(RecordEnd);
    records.flush();
    patchHeader(*context.stream, start, records.longest());

    stringPool->endScan();
    formulaPool->endScan();
    clearTableNumbers();
}

} // namespace vorn
