// The text that a cell shows: a value rendered by a number format, and fitted to a width if it
// must.
#pragma once

#include "core/value.h"

#include <string>
#include <string_view>

namespace vorn {

// Measures a text in pixels, in the font that is in force.
class TextMeter {
public:
    virtual ~TextMeter() = default;
    virtual int width(std::u16string_view text) = 0;
};

// Renders `value` by the workbook's format `formatIndex` into `out`. With a `meter`, a number or
// date that is wider than `maxWidth` pixels loses decimals (General) or becomes a row of '#'.
// Answers true when the text shows the value in full, six decimals counting as full.
bool renderValue(const CellValue& value, int formatIndex, int maxWidth, std::u16string& out,
                 TextMeter* meter);

// The General form of a number: about 14 digits, an exponent below 0.0001 and above 100,000,000.
std::u16string generalNumberText(double number);

// The General form of a date serial: short date, time to the second, or both.
std::u16string generalDateText(double serial);

// `number` with `decimals` digits (0 to 9) behind the runtime's point, as the library rounds it.
std::u16string fixedText(double number, int decimals);

} // namespace vorn
