// From the numbers that a stream gives to texts, formulas and styles to what they are in the
// document. In a whole document both are the same, because its pools and tables start out empty; so
// it only matters whether there is one.
#pragma once

#include "core/workbook.h"

#include <cstdint>

namespace vorn {

struct StreamNumbers {
    // Records read so far.
    std::uint32_t texts = 0;
    std::uint32_t formulas = 0;

    // The StringPool index of a text; an unknown one is the empty text.
    std::int32_t textIndex(std::uint32_t number) const
    {
        return number < texts ? static_cast<std::int32_t>(number) : -1;
    }

    // The FormulaPool index of a formula, -1 for an unknown one.
    std::int32_t formulaIndex(std::uint32_t number) const
    {
        return number < formulas ? static_cast<std::int32_t>(number) : -1;
    }

    // An unknown style is the default one.
    std::uint16_t styleIndex(std::uint16_t number) const
    {
        return number < workbook->styles.size() ? number : std::uint16_t{0};
    }
};

} // namespace vorn
