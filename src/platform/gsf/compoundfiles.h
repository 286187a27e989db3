// Compound files through libgsf, in memory: the bytes themselves come from and go to the platform's
// files, so that what may be opened is decided in one place.
//
// Errors: a damaged file gives what can still be read of it, or nothing. Nothing is written
//         anywhere about it.
#pragma once

#include "platform/compoundfile.h"

namespace vorn {

class Files;

class GsfCompoundFiles : public CompoundFiles {
public:
    explicit GsfCompoundFiles(Files& files) : files_(files) {}

    std::unique_ptr<CompoundFile> open(std::u16string_view path) override;
    bool createWithStream(std::u16string_view path, std::u16string_view name,
                          const std::vector<unsigned char>& content) override;

private:
    Files& files_;
};

} // namespace vorn
