// Settings in a file: one group of lines "name=value", which an editor of texts can change. Numbers
// are decimal, texts are UTF-8 with a backslash before what would break the line, bytes are
// hexadecimal digits. Lines that the program does not know stay as they are.
//
// Errors: silent. A file that is missing, no regular file, too long or damaged is one without
//         values. It is written whole to another file, which then takes its place, so that a
//         program that is stopped leaves the old settings or the new.
#pragma once

#include "platform/settingsstore.h"

#include <memory>

namespace vorn {

class SettingsFile : public SettingsStore {
public:
    // The path is in the system's own bytes. Nothing is touched before open or keep.
    explicit SettingsFile(std::string path);
    ~SettingsFile() override;

    void open() override;
    bool readNumber(std::string_view name, std::uint32_t& out) const override;
    bool readText(std::string_view name, std::u16string& out) const override;
    bool readBytes(std::string_view name, std::vector<unsigned char>& out) const override;
    void setNumber(std::string_view name, std::uint32_t value) override;
    void setText(std::string_view name, std::u16string_view value) override;
    void setBytes(std::string_view name, const std::vector<unsigned char>& value) override;
    bool keep() override;

private:
    struct Lines;

    std::string path_;
    std::unique_ptr<Lines> lines_;
};

} // namespace vorn
