#include "files/stream.h"

#include "core/error.h"
#include "core/memory.h"
#include "files/bytes.h"
#include "platform/files.h"
#include "platform/platform.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <string_view>

namespace vorn {

namespace {

// Bytes of a text that are decoded at a time.
constexpr std::uint32_t TextBlockSize = 2048;

constexpr std::uint32_t RecordHeadSize = 4;

} // namespace

// --- RecordBuffer

std::uint8_t* RecordBuffer::begin(std::size_t size)
{
    assert(size <= Size);
    std::memset(bytes_, 0, used_);
    used_ = size;
    return bytes_;
}

// --- Stream

void Stream::WriteRecord(std::uint16_t type, std::uint16_t length, const void* data)
{
    std::uint8_t head[RecordHeadSize];
    put16(head, type);
    put16(head + 2, length);
    Write(head, RecordHeadSize);
    if (length != 0)
        Write(data, length);
}

bool Stream::readHead(std::uint16_t& type, std::uint16_t& length)
{
    std::uint8_t head[RecordHeadSize];
    if (Read(head, RecordHeadSize) != RecordHeadSize) {
        // A part of a head is no error yet; asking once more is, where an early end is one.
        Read(head, 1);
        return false;
    }
    type = get16(head);
    length = get16(head + 2);
    return true;
}

bool Stream::ReadRecord(std::uint16_t& type, std::uint16_t& length, void* data)
{
    if (!readHead(type, length))
        return false;
    if (length != 0)
        Read(data, length);
    return true;
}

bool Stream::ReadRecord(std::uint16_t& type, std::uint16_t& length, RecordBuffer& buffer)
{
    if (!readHead(type, length))
        return false;
    std::uint8_t* data = buffer.begin(length);
    if (length != 0)
        Read(data, length);
    return true;
}

void Stream::WriteTagged(std::uint8_t tag, std::uint16_t size, const void* data)
{
    Write(&tag, 1);
    if (size != 0)
        Write(data, size);
}

void Stream::WriteAt(std::uint32_t place, const void* data, std::uint32_t size)
{
    const std::uint32_t present = position_;
    Seek(place);
    Write(data, size);
    Seek(present);
}

bool Stream::beginText(int codePage)
{
    endText();
    if (!charBuffer_.resize(TextBlockSize))
        return false;
    decoder_ = platform.codePages->decoder(codePage);
    return true;
}

void Stream::endText()
{
    decoder_.reset();
    charBuffer_.clear();
    charIndex_ = 0;
    charCount_ = 0;
}

std::uint32_t Stream::readTextBytes(void* /*data*/, std::uint32_t /*size*/)
{
    return 0;
}

bool Stream::refillChars()
{
    if (decoder_ == nullptr)
        return false;
    char bytes[TextBlockSize];
    const std::uint32_t count = readTextBytes(bytes, TextBlockSize);
    decoded_.clear();
    decoder_->decode({bytes, count}, count == 0, decoded_);
    if (count == 0)
        decoder_.reset();

    // A block counts as many characters as it has bytes. Only a character that the block before
    // left unfinished, and that turns out wrong, makes them more.
    const std::size_t size = std::max<std::size_t>(count, decoded_.size());
    if (size == 0 || !charBuffer_.resize(static_cast<std::int32_t>(size)))
        return false;
    char16_t* end =
        std::replace_copy(decoded_.begin(), decoded_.end(), charBuffer_.begin(), u'\0', u'\1');
    std::fill(end, charBuffer_.end(), u'\1');
    charIndex_ = 0;
    charCount_ = static_cast<std::int32_t>(size);
    return true;
}

// --- FileStream

FileStream::~FileStream()
{
    flush();
}

std::uint8_t* FileStream::block()
{
    if (!block_)
        block_ = std::make_unique_for_overwrite<std::uint8_t[]>(BlockSize);
    return block_.get();
}

void FileStream::emptyBlock()
{
    holds_ = Block::Empty;
    index_ = 0;
    count_ = 0;
}

void FileStream::flush()
{
    if (holds_ != Block::Unwritten)
        return;
    if (!file_.write(block_.get(), count_)) {
        raiseError(ErrorFileWrite);
        position_ -= count_;
        place_ -= count_;
    }
    emptyBlock();
}

void FileStream::Seek(std::uint32_t newPosition)
{
    flush();
    emptyBlock();
    file_.seek(newPosition);
    position_ = newPosition;
    place_ = newPosition;
}

void FileStream::Write(const void* data, std::uint32_t size)
{
    if (size == 0)
        return;
    if (holds_ == Block::ReadAhead) {
        file_.seek(place_);
        emptyBlock();
    }
    if (size > BlockSize - count_)
        flush();
    if (size > BlockSize) {
        if (!file_.write(data, size)) {
            raiseError(ErrorFileWrite);
            return;
        }
    } else {
        std::memcpy(block() + count_, data, size);
        count_ += size;
        holds_ = Block::Unwritten;
    }
    position_ += size;
    place_ += size;
}

std::uint32_t FileStream::Read(void* data, std::uint32_t size)
{
    if (size == 0)
        return 0;
    flush();
    const Taken taken = take(static_cast<std::uint8_t*>(data), size);
    if (taken.failed || taken.count == 0)
        raiseError(ErrorFileRead);
    if (taken.count != 0)
        position_ += size;
    return taken.count;
}

std::uint32_t FileStream::readTextBytes(void* data, std::uint32_t size)
{
    flush();
    return take(static_cast<std::uint8_t*>(data), size).count;
}

FileStream::Taken FileStream::take(std::uint8_t* data, std::uint32_t size)
{
    Taken taken{0, false};
    while (taken.count != size) {
        std::uint8_t* place = data + taken.count;
        const std::uint32_t left = size - taken.count;
        if (index_ != count_) {
            const std::uint32_t count = std::min(left, count_ - index_);
            std::memcpy(place, block_.get() + index_, count);
            index_ += count;
            taken.count += count;
            continue;
        }
        // A block and more goes straight to where it is wanted.
        const bool isLong = left >= BlockSize;
        const std::int64_t count = file_.read(isLong ? place : block(), isLong ? left : BlockSize);
        taken.failed = count < 0;
        if (count <= 0)
            break;
        emptyBlock();
        if (isLong) {
            taken.count += static_cast<std::uint32_t>(count);
        } else {
            holds_ = Block::ReadAhead;
            count_ = static_cast<std::uint32_t>(count);
        }
    }
    place_ += taken.count;
    return taken;
}

// --- MemoryStream

MemoryStream::MemoryStream(const void* bytes, std::uint32_t size)
    : bytes_(static_cast<const std::uint8_t*>(bytes)), capacity_(size), end_(size), writable_(false)
{
}

MemoryStream::~MemoryStream()
{
    blockResizer(owned_, 0);
}

// Makes the block at least `size` long.
bool MemoryStream::reach(std::uint32_t size)
{
    if (size <= capacity_)
        return true;
    const auto inSteps = [](std::uint64_t bytes) {
        return (bytes + GrowStep - 1) / GrowStep * GrowStep;
    };
    const std::uint64_t least = capacity_ + inSteps(size - capacity_);
    const std::uint64_t ample =
        growth_ == GrowsByHalf ? capacity_ + inSteps(capacity_ / 2) : std::uint64_t{0};
    return (ample > least && growTo(ample)) || growTo(least);
}

bool MemoryStream::growTo(std::uint64_t capacity)
{
    void* grown = capacity > UINT32_MAX ? nullptr : blockResizer(owned_, capacity);
    if (grown == nullptr)
        return false;
    owned_ = static_cast<std::uint8_t*>(grown);
    bytes_ = owned_;
    capacity_ = static_cast<std::uint32_t>(capacity);
    return true;
}

void MemoryStream::Write(const void* data, std::uint32_t size)
{
    if (size == 0 || !writable_)
        return;
    if (size > UINT32_MAX - position_ || !reach(position_ + size)) {
        raiseError(ErrorMemory);
        writable_ = false;
        return;
    }
    if (position_ > end_)
        std::memset(owned_ + end_, 0, position_ - end_);
    std::memcpy(owned_ + position_, data, size);
    position_ += size;
    end_ = std::max(end_, position_);
}

std::uint32_t MemoryStream::Read(void* data, std::uint32_t size)
{
    if (size == 0 || position_ >= end_)
        return 0;
    const std::uint32_t count = std::min(size, end_ - position_);
    std::memcpy(data, bytes_ + position_, count);
    position_ += count;
    return count;
}

std::uint8_t* MemoryStream::release()
{
    std::uint8_t* block = owned_;
    owned_ = nullptr;
    bytes_ = nullptr;
    capacity_ = 0;
    end_ = 0;
    position_ = 0;
    return block;
}

} // namespace vorn
