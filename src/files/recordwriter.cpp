#include "files/recordwriter.h"

#include "core/error.h"
#include "core/memory.h"
#include "files/nativerecords.h"
#include "files/stream.h"

#include <algorithm>
#include <cassert>

namespace vorn {

namespace {

// The block goes to the stream when the longest record might not fit any more.
constexpr std::size_t LongestRecord = RecordHeadBytes + PayloadMax;
constexpr std::size_t BlockBytes = 2 * LongestRecord;

} // namespace

RecordWriter::RecordWriter(Stream& stream)
    : stream_(stream), block_(static_cast<std::uint8_t*>(blockResizer(nullptr, BlockBytes)))
{
    if (block_ == nullptr)
        raiseError(ErrorMemory);
    record_ = cursor_ = limit_ = block_;
}

RecordWriter::~RecordWriter()
{
    blockResizer(block_, 0);
}

void RecordWriter::begin(std::uint16_t type)
{
    if (block_ == nullptr)
        return;
    if (block_ + BlockBytes - cursor_ < static_cast<std::ptrdiff_t>(LongestRecord))
        flush();
    record_ = cursor_;
    put16(record_, type);
    cursor_ = record_ + RecordHeadBytes;
    limit_ = cursor_ + PayloadMax;
    tooLong_ = false;
}

void RecordWriter::end()
{
    if (block_ == nullptr)
        return;
    if (tooLong_) {
        raiseError(ErrorFileWrite);
        cursor_ = record_;
        return;
    }
    const auto length = static_cast<std::uint32_t>(cursor_ - record_ - RecordHeadBytes);
    put16(record_ + 2, static_cast<std::uint16_t>(length));
    longest_ = std::max(longest_, length);
}

void RecordWriter::addBytes(const void* bytes, std::size_t count)
{
    std::uint8_t* place = room(count);
    if (place != nullptr && count != 0)
        std::memcpy(place, bytes, count);
}

void RecordWriter::addPlainText(std::u16string_view text)
{
    const std::size_t bytes = text.size() * sizeof(char16_t);
    if (std::uint8_t* place = room(bytes + sizeof(char16_t))) {
        putText(place, text);
        put16(place + bytes, 0);
    }
}

void RecordWriter::addCountedText(std::u16string_view text)
{
    add32(static_cast<std::uint32_t>((text.size() + 1) * sizeof(char16_t)));
    addPlainText(text);
}

void RecordWriter::addEmpty(std::uint16_t type)
{
    begin(type);
    end();
}

void RecordWriter::addNumber16(std::uint16_t type, std::uint16_t number)
{
    begin(type);
    add16(number);
    end();
}

void RecordWriter::addNumber32(std::uint16_t type, std::uint32_t number)
{
    begin(type);
    add32(number);
    end();
}

void RecordWriter::flush()
{
    if (cursor_ != block_)
        stream_.Write(block_, static_cast<std::uint32_t>(cursor_ - block_));
    record_ = cursor_ = limit_ = block_;
}

} // namespace vorn
