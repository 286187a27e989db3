// Bytes of a file or of a block of memory, as all formats read and write them, and the two framings
// of records that the formats share.
//
// Units:  positions and sizes count bytes, from the start.
// Errors: sticky, and nothing stops at once: a writer runs to its end after a failure, and a reader
//         looks at the code between records.
#pragma once

#include "core/growarray.h"
#include "platform/codepages.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class File;

// The room in which one record is put together or taken apart, with space for the longest one. What
// a record does not fill is zero, so that a short one never shows the bytes of the one before.
class RecordBuffer {
public:
    static constexpr std::size_t Size = 65536;

    // Room for a new record of up to `size` bytes, all zero.
    std::uint8_t* begin(std::size_t size = Size);

    const std::uint8_t* data() const { return bytes_; }

private:
    std::size_t used_ = 0;
    std::uint8_t bytes_[Size] = {};
};

class Stream {
public:
    Stream() = default;
    virtual ~Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    // Where the next byte is read or written, by the stream's own count.
    std::uint32_t position() const { return position_; }

    virtual void Seek(std::uint32_t newPosition) = 0;
    virtual void Write(const void* data, std::uint32_t size) = 0;

    // Reads up to `size` bytes and answers how many there were.
    virtual std::uint32_t Read(void* data, std::uint32_t size) = 0;

    // --- Records with a 16-bit type and a 16-bit length before the data

    // `data` is not looked at for a length of 0.
    void WriteRecord(std::uint16_t type, std::uint16_t length, const void* data);

    // Answers false, with `type` and `length` as they were and `data` untouched, if there is no
    // whole record head. Data that end early are no failure of their own: the rest of `data` stays.
    bool ReadRecord(std::uint16_t& type, std::uint16_t& length, void* data);
    bool ReadRecord(std::uint16_t& type, std::uint16_t& length, RecordBuffer& buffer);

    // --- Records with a one-byte tag, whose size the reader knows from the tag

    void WriteTagged(std::uint8_t tag, std::uint16_t size, const void* data);

    // Writes in another place and comes back.
    void WriteAt(std::uint32_t place, const void* data, std::uint32_t size);

    // --- Text

    // Begins the reading of characters in a code page; false, with ErrorMemory, if there is no
    // room.
    bool beginText(int codePage);
    void endText();

    // The next character of a text, 0 at its end. A zero in the text is delivered as 1, and so is
    // what fills up a block of bytes that gave fewer characters: whoever reads text drops both.
    char16_t ReadChar()
    {
        if (charIndex_ == charCount_ && !refillChars())
            return u'\0';
        return charBuffer_.data()[charIndex_++];
    }

    // The characters that come next, as far as they are at hand; and the taking of some of them.
    // For readers that look for a character in a loop of their own.
    std::u16string_view charsAtHand() const
    {
        return {charBuffer_.data() + charIndex_, static_cast<std::size_t>(charCount_ - charIndex_)};
    }
    void skipChars(std::size_t count) { charIndex_ += static_cast<std::int32_t>(count); }

protected:
    // The next bytes of a text. The position does not count them, and a failure is the text's end.
    virtual std::uint32_t readTextBytes(void* data, std::uint32_t size);

    std::uint32_t position_ = 0;

private:
    bool readHead(std::uint16_t& type, std::uint16_t& length);
    bool refillChars();

    std::int32_t charIndex_ = 0;
    std::int32_t charCount_ = 0;
    GrowArray<char16_t> charBuffer_;
    std::unique_ptr<TextDecoder> decoder_;
    std::u16string decoded_;
};

// A stream over a file that the caller opened and closes. Bytes go through a block of memory; the
// last of them are written, and their failure is raised, by `flush` or at the stream's end.
//
// Errors: ErrorFileWrite if not all bytes could be written; the position then stays before them.
//         ErrorFileRead if not a single byte could be read. Fewer bytes than asked for are no
//         error, and the position counts what was asked for.
class FileStream : public Stream {
public:
    explicit FileStream(File& file) : file_(file) {}
    ~FileStream() override;

    void Seek(std::uint32_t newPosition) override;
    void Write(const void* data, std::uint32_t size) override;
    std::uint32_t Read(void* data, std::uint32_t size) override;

    void flush();

protected:
    std::uint32_t readTextBytes(void* data, std::uint32_t size) override;

private:
    static constexpr std::uint32_t BlockSize = 32768;

    // What the block holds: bytes read ahead of the position, or bytes not yet written.
    enum class Block { Empty, ReadAhead, Unwritten };

    struct Taken {
        std::uint32_t count;
        bool failed;
    };

    Taken take(std::uint8_t* data, std::uint32_t size);
    void emptyBlock();
    std::uint8_t* block();

    File& file_;
    std::unique_ptr<std::uint8_t[]> block_;
    Block holds_ = Block::Empty;
    std::uint32_t index_ = 0; // of ReadAhead: the next byte
    std::uint32_t count_ = 0; // bytes in the block
    std::uint64_t place_ = 0; // of the next byte in the file
};

// A stream over a growing block of memory: for the clipboard, and for a document that is put
// together before its file is opened.
//
// Errors: ErrorMemory if the block cannot grow. From then on nothing is written any more, since
//         bytes would be missing in between. Reading past the end gives fewer bytes and raises
//         nothing.
class MemoryStream : public Stream {
public:
    // How a full block grows: to what is needed, in steps of 1,024 bytes, which leaves little
    // unused in a block that is handed over; or at least by half, so that a long stream is seldom
    // moved.
    enum Growth { GrowsInSteps, GrowsByHalf };

    explicit MemoryStream(Growth growth = GrowsInSteps) : growth_(growth) {}

    // Reads a block that belongs to somebody else.
    MemoryStream(const void* bytes, std::uint32_t size);
    ~MemoryStream() override;

    void Seek(std::uint32_t newPosition) override { position_ = newPosition; }
    void Write(const void* data, std::uint32_t size) override;
    std::uint32_t Read(void* data, std::uint32_t size) override;

    const std::uint8_t* data() const { return bytes_; }

    // The highest place written, and the bytes allocated.
    std::uint32_t end() const { return end_; }
    std::uint32_t capacity() const { return capacity_; }

    // Hands over the block, which the caller frees with blockResizer.
    std::uint8_t* release();

private:
    static constexpr std::uint32_t GrowStep = 1024;

    bool reach(std::uint32_t size);
    bool growTo(std::uint64_t capacity);

    Growth growth_ = GrowsInSteps;
    const std::uint8_t* bytes_ = nullptr;
    std::uint8_t* owned_ = nullptr; // null for a block of somebody else
    std::uint32_t capacity_ = 0;
    std::uint32_t end_ = 0;
    bool writable_ = true;
};

} // namespace vorn
