// Takes the fields of one record apart, in order. A record may be shorter than its fields: what is
// missing reads as zeros, and a text ends where the record does.
//
// Units:  sizes are bytes, lengths of texts UTF-16 units.
// Shape:  borrows the record's bytes, and so do the texts that it gives.
#pragma once

#include "files/bytes.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <string>

namespace vorn {

// The units of a text as they lie in a record, which may be at any address.
struct FiledText {
    const std::uint8_t* bytes = nullptr;
    std::uint32_t length = 0;

    std::u16string text() const
    {
        std::u16string copy(length, u'\0');
        getText(copy.data(), bytes, length);
        return copy;
    }
};

class RecordCursor {
public:
    RecordCursor() = default;
    RecordCursor(const std::uint8_t* bytes, std::uint32_t size) : bytes_(bytes), end_(bytes + size)
    {
    }

    const std::uint8_t* position() const { return bytes_; }
    std::uint32_t remaining() const { return static_cast<std::uint32_t>(end_ - bytes_); }

    std::uint8_t take8() { return remaining() >= 1 ? *bytes_++ : std::uint8_t{0}; }
    std::uint16_t take16() { return remaining() >= 2 ? get16(skip(2)) : takeCut16(); }
    std::uint32_t take32() { return remaining() >= 4 ? get32(skip(4)) : takeCut32(); }

    // A flag of a byte, or of 32 bits.
    bool takeFlag8() { return take8() != 0; }
    bool takeFlag32() { return take32() != 0; }

    // A count of bytes, its own end among them, and the units of a text.
    FiledText takeCountedText()
    {
        const std::uint32_t filed = take32();
        const std::uint32_t size = std::min(filed, remaining());
        const FiledText text = upToZero(bytes_, size / 2);
        skip(size);
        return text;
    }

    // The units of a text up to a zero.
    FiledText takePlainText()
    {
        const FiledText text = upToZero(bytes_, remaining() / 2);
        skip(std::min((text.length + 1) * 2, remaining()));
        return text;
    }

    // Passes `size` of the remaining bytes and answers where they began.
    const std::uint8_t* skip(std::uint32_t size)
    {
        assert(size <= remaining());
        const std::uint8_t* start = bytes_;
        bytes_ += size;
        return start;
    }

private:
    std::uint16_t takeCut16() { return take8(); }
    std::uint32_t takeCut32()
    {
        const std::uint32_t low = take16();
        return low | static_cast<std::uint32_t>(take16()) << 16;
    }

    static FiledText upToZero(const std::uint8_t* bytes, std::uint32_t length)
    {
        std::uint32_t end = 0;
        while (end < length && get16(bytes + 2 * std::size_t{end}) != 0)
            ++end;
        return {bytes, end};
    }

    const std::uint8_t* bytes_ = nullptr;
    const std::uint8_t* end_ = nullptr;
};

} // namespace vorn
