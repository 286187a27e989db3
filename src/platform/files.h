// Files by path. Paths are UTF-16 in the system and become what the machine wants behind this door.
#pragma once

#include <cstdint>
#include <memory>
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
};

enum class CreateNew { Created, Exists, Failed };

class Files {
public:
    virtual ~Files() = default;

    // An existing regular file, or null: a missing one, a folder, one that may not be read.
    virtual std::unique_ptr<File> openToRead(std::u16string_view path) = 0;

    // Creates the file, or cuts the one that is there to nothing. Null if that is refused.
    virtual std::unique_ptr<File> create(std::u16string_view path) = 0;

    // Creates an empty file where none is.
    virtual CreateNew createNew(std::u16string_view path) = 0;

    virtual bool exists(std::u16string_view path) = 0;
    virtual bool remove(std::u16string_view path) = 0;
    virtual bool makeFolder(std::u16string_view path) = 0;
};

} // namespace vorn
