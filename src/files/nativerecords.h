// The records of the native format, as its reader and its writer both know them
// (docs/formats/native.md).
//
// Shape:  a record is a 16-bit type, a 16-bit count of payload bytes, and the payload. Numbers are
//         little-endian and not aligned, texts are UTF-16.
#pragma once

#include "core/filter.h"

#include <cstdint>

namespace vorn {

enum NativeRecord : std::uint16_t {
    RecordHeader = 1,
    RecordEnd = 2,
    RecordTextCount = 3,
    RecordText = 4,
    RecordSheetStart = 5,
    RecordSheetName = 7,
    RecordFont = 8,
    RecordStyle = 9,
    RecordSelection = 10, // marks the stream as a part of a sheet
    RecordRow = 11,
    RecordFormulaCount = 12,
    RecordFormula = 13,
    RecordView = 14,
    RecordColumns = 15,
    RecordTableCounts = 16,
    RecordNumberFormat = 17,
    RecordDateFormat = 18,
    RecordCodePage = 19,
    RecordNameCount = 20,
    RecordName = 21,
    RecordScroll = 22,
    RecordWorkbookProtection = 23,
    RecordSheetProtection = 24,
    RecordTask = 25,
    RecordFilter = 26,
    RecordFilterColumn = 27,
    LastKnownRecord = 27,
    FirstReservedRecord = 32768, // from here up: a band for later versions
    RecordActiveSheet = 32769,
};

// The version of the format and of the program, and the lowest program version that reads it.
constexpr std::uint16_t NativeVersion = 3;

// What the header states as the largest payload, unless a longer one is in the file.
constexpr std::uint16_t UsualPayloadMax = 4096;
constexpr std::uint32_t PayloadMax = 65535;

constexpr std::uint32_t RecordHeadBytes = 4; // the type and the count
constexpr std::uint32_t FontRecordBytes = 77;
constexpr std::uint32_t StyleRecordBytes = 16;
constexpr std::uint32_t RowHeadBytes = 12;

// The longest cell of a row: tag, style, a float and the number of a formula.
constexpr std::uint32_t CellBytesMax = 15;

// The tag byte of a cell in a row.
constexpr std::uint8_t CellHole = 12;          // no cell at this column
constexpr std::uint8_t CellFormulaMark = 0x80; // the result of a formula, whose number follows

// Payload bytes by tag; 255 for tags that no cell in a file has.
constexpr std::uint8_t NoCellPayload = 255;
constexpr std::uint8_t CellPayloadSizes[14] = {0,   1,   1,   4,   8,   255, 255,
                                               255, 255, 255, 255, 255, 255, 8};

// Bits of a row's flag word that only stand in files.
constexpr std::uint16_t FiledRowStyleFlag = 1 << 7; // the row has a style
constexpr std::uint16_t FiledRowFlag = 1 << 8;      // always set

// The first byte of the record of the active sheet; the bytes around the index mean nothing.
constexpr std::uint8_t ActiveSheetMark = 11;
constexpr std::uint32_t ActiveSheetBytes = 12;

// Decimals byte of a number format record that says something else.
constexpr std::uint8_t DecimalsOfText = 254;
constexpr std::uint8_t DecimalsOfGeneral = 255;

// How a filter column's second comparison and its link stand in a file. A file says 0 for "And".
// Both conversions are here, so that there is one place if they should turn out exchanged.
struct FiledComparison {
    std::uint32_t second;
    std::uint32_t link;
};
constexpr FiledComparison fileComparison(const FilterColumn& column)
{
    return {static_cast<std::uint32_t>(column.operator2), column.both != 0 ? 0U : 1U};
}
constexpr void takeComparison(FilterColumn& column, FiledComparison filed)
{
    column.operator2 = static_cast<std::int32_t>(filed.second);
    column.both = filed.link == 0 ? 1 : 0;
}

} // namespace vorn
