// The records of a native file in their order. The whole stream is taken into one block of memory
// and each record is looked at where it lies: there may be a million of a few bytes.
//
// Shape:  records are borrowed from the block and hold as long as it does.
// Errors: ErrorFileRead where the stream ends too early, ErrorMemory without the block.
#pragma once

#include "files/nativerecords.h"
#include "files/recordcursor.h"

#include <cstdint>

namespace vorn {

class Stream;

class RecordSource {
public:
    // Reads up to `length` bytes; a stream may have fewer.
    RecordSource(Stream& stream, std::uint32_t length);
    ~RecordSource();
    RecordSource(const RecordSource&) = delete;
    RecordSource& operator=(const RecordSource&) = delete;

    // Bytes that the stream really had, and those that are still to come.
    std::uint32_t length() const { return length_; }
    std::uint32_t remaining() const { return length_ - place_; }

    // The type and the fields of the next record; false if it is not whole. The type of the first
    // record is told as soon as it is known, and without an error if it is not that of a header:
    // what is no file of ours is to be told as that, however long its first record seems. It stands
    // here because handing `fields` over to a caller elsewhere costs more than finding them.
    bool next(std::uint16_t& type, RecordCursor& fields)
    {
        const std::uint8_t* head = block_ + place_;
        if (remaining() < RecordHeadBytes || remaining() - RecordHeadBytes < get16(head + 2))
            return endEarly(type);
        type = get16(head);
        const std::uint32_t size = get16(head + 2);
        fields = RecordCursor(head + RecordHeadBytes, size);
        place_ += RecordHeadBytes + size;
        return true;
    }

private:
    bool endEarly(std::uint16_t& type);

    std::uint8_t* block_;
    std::uint32_t length_ = 0;
    std::uint32_t place_ = 0;
};

} // namespace vorn
