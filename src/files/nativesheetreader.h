// The reader of what a native file says about one sheet: view, columns, rows with their cells,
// filter. Coordinates outside of the sheet are clipped or dropped.
//
// Errors: ErrorFileRead for a row that comes twice. ErrorMemory where memory is refused, or where
//         the records ask for more than a document of such a length may.
#pragma once

#include "core/sheet.h"
#include "files/recordcursor.h"
#include "files/streamnumbers.h"

#include <cstdint>

namespace vorn {

// What a few bytes of a file can ask for: the table of a sheet's rows reaches down to its last one,
// a filter has a record for each of its columns. All of these together have a limit, which no
// document that somebody made comes near.
class RoomLimit {
public:
    explicit RoomLimit(std::uint32_t streamLength) : left_(Always + PerByte * streamLength) {}

    // Answers false, with ErrorMemory, when it is used up.
    bool take(std::uint64_t bytes);

private:
    static constexpr std::uint64_t Always = 64 << 20;
    static constexpr std::uint64_t PerByte = 16;

    std::uint64_t left_;
};

class NativeSheetReader {
public:
    NativeSheetReader(const StreamNumbers& numbers, std::uint32_t streamLength)
        : numbers_(numbers), room_(streamLength)
    {
    }

    // The sheet that the next records belong to; without one they are passed over.
    void setSheet(Sheet* sheet) { sheet_ = sheet; }

    void readScroll(RecordCursor record);
    void readView(RecordCursor record);
    void readProtection(RecordCursor record);
    void readColumns(RecordCursor record);
    void readRow(RecordCursor record);
    void readFilter(RecordCursor record);
    void readFilterColumn(RecordCursor record);

private:
    void scrollBehindTitles();
    Row* makeRow(int row);

    const StreamNumbers& numbers_;
    RoomLimit room_;
    Sheet* sheet_ = nullptr;
};

} // namespace vorn
