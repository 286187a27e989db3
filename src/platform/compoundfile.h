// A compound file: a small file system in one file, in which Excel workbooks keep their stream.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class CompoundFile {
public:
    virtual ~CompoundFile() = default;

    // The names of the streams at the root, as the file spells them.
    virtual std::vector<std::u16string> streamNames() = 0;

    // Reads one whole stream of the root. False if it is not there or cannot be read to its end.
    virtual bool readStream(std::u16string_view name, std::vector<unsigned char>& out) = 0;
};

class CompoundFiles {
public:
    virtual ~CompoundFiles() = default;

    // Null if the path cannot be opened or is no compound file.
    virtual std::unique_ptr<CompoundFile> open(std::u16string_view path) = 0;

    // Writes a compound file that holds the one stream `name`. False if that is refused.
    virtual bool createWithStream(std::u16string_view path, std::u16string_view name,
                                  const std::vector<unsigned char>& content) = 0;
};

} // namespace vorn
