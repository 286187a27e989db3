// The user's settings: values of three types under names, which outlive the program.
//
// Shape:  values are read and set in memory; open takes in what is kept, keep writes it.
// Errors: silent. A value that is not there, or is of another type, is not read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    // Takes in what is kept; what was set and not kept is dropped. Where nothing can be read there
    // are no values.
    virtual void open() = 0;

    // Answers false, with `out` as it was, if the value is not there.
    virtual bool readNumber(std::string_view name, std::uint32_t& out) const = 0;
    virtual bool readText(std::string_view name, std::u16string& out) const = 0;
    virtual bool readBytes(std::string_view name, std::vector<unsigned char>& out) const = 0;

    // A text ends at its first null.
    virtual void setNumber(std::string_view name, std::uint32_t value) = 0;
    virtual void setText(std::string_view name, std::u16string_view value) = 0;
    virtual void setBytes(std::string_view name, const std::vector<unsigned char>& value) = 0;

    // Keeps all values, or, where that is refused, what was kept before. Answers which.
    virtual bool keep() = 0;
};

} // namespace vorn
