// Arguments that a function has taken off the stack and gives back when it ends, on every road out.
#pragma once

#include "core/pool.h"
#include "formula/machine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace vorn {

// The argument on top as a text: what popText makes of it.
class PoppedText {
public:
    PoppedText() : index_(popText()) {}
    ~PoppedText() { stringPool->release(index_); }
    PoppedText(const PoppedText&) = delete;
    PoppedText& operator=(const PoppedText&) = delete;

    // Zero-terminated.
    const char16_t* data() const { return stringPool->text(index_); }
    std::u16string_view view() const { return data(); }

private:
    std::int32_t index_;
};

// The argument on top as it is.
class PoppedValue {
public:
    PoppedValue() : value_(popRaw()) {}
    ~PoppedValue() { releaseValue(value_); }
    PoppedValue(const PoppedValue&) = delete;
    PoppedValue& operator=(const PoppedValue&) = delete;

    const CellValue& get() const { return value_; }

private:
    CellValue value_;
};

// A number without its fraction, within 32 bits; 0 for what is no number. Unlike cutToInteger it
// moves nothing first.
inline std::int32_t truncateToInteger(double number)
{
    if (std::isnan(number))
        return 0;
    return static_cast<std::int32_t>(std::clamp(number, -2147483648.0, 2147483647.0));
}

} // namespace vorn
