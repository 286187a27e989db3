// References and sheets as a script or an option names them.
#pragma once

#include "core/sheet.h"

#include <string_view>

namespace vorn::cli {

// A reference and the sheet that it is to: the named one, else the active one.
struct Place {
    Sheet* sheet = nullptr;
    CellRef first;
    CellRef second;

    RangeRef range() const { return sortedRange(first, second); }
};

// Answers false if the text is no reference to a sheet that is there.
bool readPlace(std::u16string_view text, Place& out);

// The sheet of that name, or else of that number, from 1; null if there is neither.
Sheet* readSheet(std::u16string_view text);

// Cuts a reference, up to the first blank that is not within a quoted sheet name, off the front of
// `text`, and the blank with it.
std::u16string_view takeReference(std::u16string_view& text);

// Cuts the first word off the front of `text`, and the blank behind it.
std::u16string_view takeWord(std::u16string_view& text);

// Reads a whole number in decimal digits, 1 to `most`; 0 for anything else.
int readNumber(std::u16string_view text, int most);

} // namespace vorn::cli
