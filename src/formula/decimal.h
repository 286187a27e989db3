// Decimal numbers in text: digits, a point, digits, an exponent. Any length is read exactly, with
// the rounding of one correct conversion, and nothing is allocated.
#pragma once

#include <cstddef>
#include <string_view>

namespace vorn {

// Reads a number of up to 15 digits that has no exponent. Nearly all numbers are such, and they are
// read much faster than all. Answers false, with nothing read, for any other text.
bool readPlainDecimal(std::u16string_view text, std::size_t& position, char16_t point, double& out);

enum DecimalResult { DecimalRead, DecimalMissing, DecimalTooLarge };

// Reads the number that begins at `position`, with `point` as its decimal separator, and moves
// `position` behind it. A number too small for a float is 0. Without any digit nothing is read; a
// number that is too large leaves `out` as it was.
DecimalResult readDecimal(std::u16string_view text, std::size_t& position, char16_t point,
                          double& out);

} // namespace vorn
