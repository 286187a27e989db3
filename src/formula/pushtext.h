// The pushing of a text that is made on the way.
#pragma once

#include "core/growarray.h"
#include "formula/machine.h"

#include <cstddef>
#include <cstdint>

namespace vorn {

// Pushes a text of `size` units that `write` puts where it is told. All but long texts are made on
// the native stack, since most formulas make short ones and an allocation costs more than they do.
// Without memory for a long one the result is empty.
template <typename Write>
void pushWrittenText(std::size_t size, Write write)
{
    constexpr std::size_t ShortMax = 1000;
    if (size <= ShortMax) {
        char16_t units[ShortMax];
        write(units);
        pushNewText({units, size});
        return;
    }
    GrowArray<char16_t> units;
    if (size > INT32_MAX || !units.resize(static_cast<std::int32_t>(size))) {
        pushText(-1);
        return;
    }
    write(units.data());
    pushNewText({units.data(), size});
}

} // namespace vorn
