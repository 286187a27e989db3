// Files by path. Paths are UTF-16 in the system and become what the machine wants behind this door.
//
// A file that stands open is locked against everybody who opens it through here, in this process or
// in another: for them it is one that cannot be opened. The lock is advisory, so programs that do
// not ask for it are not held up; where the machine has no locks, a file opens without one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class File {
public:
    virtual ~File() = default;

    // Reads up to `size` bytes. Returns how many, 0 at the end, -1 on a failure.
    virtual std::int64_t read(void* data, std::size_t size) = 0;

    // Writes all of `size` bytes and answers whether that was possible.
    virtual bool write(const void* data, std::size_t size) = 0;

    virtual bool seek(std::uint64_t position) = 0;

    // The length in bytes, -1 where there is none to tell.
    virtual std::int64_t size() = 0;

    // Makes sure that the first `size` bytes can be written, and a shorter file that long. False,
    // with the file as it was, if there is no room for them. Where room cannot be kept free, or a
    // file has no length, the answer is true, and a write may still fail.
    virtual bool reserve(std::uint64_t size) = 0;

    // Cuts off what lies behind `size` bytes. What has no length stays as it is.
    virtual bool cut(std::uint64_t size) = 0;

    // Waits until all that was written has reached the disk.
    virtual bool flush() = 0;
};

enum class CreateNew { Created, Exists, Failed };

class Files {
public:
    virtual ~Files() = default;

    // An existing regular file, or null: a missing one, a folder, one that may not be read, one
    // that stands open elsewhere.
    virtual std::unique_ptr<File> openToRead(std::u16string_view path) = 0;

    // The file as it is, to be written over from its beginning; a missing one is created empty.
    // Null, and nothing is touched, if that is refused or the file stands open elsewhere.
    virtual std::unique_ptr<File> openToWrite(std::u16string_view path) = 0;

    // Creates the file, or cuts the one that is there to nothing. Null as for openToWrite.
    virtual std::unique_ptr<File> create(std::u16string_view path) = 0;

    // Creates an empty file where none is.
    virtual CreateNew createNew(std::u16string_view path) = 0;

    virtual bool exists(std::u16string_view path) = 0;
    virtual bool remove(std::u16string_view path) = 0;
    virtual bool makeFolder(std::u16string_view path) = 0;

    // Where the user keeps documents, with a separator at its end; empty if nobody knows.
    virtual std::u16string documentsFolder() = 0;
};

} // namespace vorn
