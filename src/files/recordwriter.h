// Puts the records of the native format together, many of them in one block of memory, before a
// stream sees them: most records are a few bytes long, and there may be a million.
//
// Units:  lengths are bytes of payload.
// Errors: ErrorFileWrite for a record that is too long for its 16-bit length; it is left out.
//         ErrorMemory without the block; then nothing is written at all.
#pragma once

#include "files/bytes.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vorn {

class Stream;

class RecordWriter {
public:
    explicit RecordWriter(Stream& stream);

    // What was not flushed is lost.
    ~RecordWriter();
    RecordWriter(const RecordWriter&) = delete;
    RecordWriter& operator=(const RecordWriter&) = delete;

    // A record is what is added between these two.
    void begin(std::uint16_t type);
    void end();

    void add8(std::uint8_t number)
    {
        if (std::uint8_t* place = room(1))
            *place = number;
    }
    void add16(std::uint16_t number)
    {
        if (std::uint8_t* place = room(2))
            put16(place, number);
    }
    void add32(std::uint32_t number)
    {
        if (std::uint8_t* place = room(4))
            put32(place, number);
    }
    void addBytes(const void* bytes, std::size_t count);

    // The count of bytes, then the units of the text and a zero.
    void addCountedText(std::u16string_view text);

    // The units of the text and a zero.
    void addPlainText(std::u16string_view text);

    // The next so many bytes of the record, for the caller to fill; null if they do not fit.
    std::uint8_t* room(std::size_t count)
    {
        if (count > static_cast<std::size_t>(limit_ - cursor_)) {
            tooLong_ = true;
            return nullptr;
        }
        std::uint8_t* place = cursor_;
        cursor_ += count;
        return place;
    }

    // Gives back what was asked for behind `place`.
    void cutAt(std::uint8_t* place) { cursor_ = place; }

    // Records that are only a type; and those of one number.
    void addEmpty(std::uint16_t type);
    void addNumber16(std::uint16_t type, std::uint16_t number);
    void addNumber32(std::uint16_t type, std::uint32_t number);

    // Hands what has been put together to the stream.
    void flush();

    // The longest payload so far.
    std::uint32_t longest() const { return longest_; }

private:
    Stream& stream_;
    std::uint8_t* block_;
    std::uint8_t* record_ = nullptr; // the head of the record that is being put together
    std::uint8_t* cursor_ = nullptr;
    std::uint8_t* limit_ = nullptr; // where its longest payload would end
    std::uint32_t longest_ = 0;
    bool tooLong_ = false;
};

} // namespace vorn
