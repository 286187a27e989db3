// Between references and their texts.
#pragma once

#include "core/value.h"

#include <string>
#include <string_view>

namespace vorn {

enum ReferenceForm { RelativeForm, AbsoluteForm };

// "A" to "IV".
std::u16string columnName(int column);

// "B3", or "$B$3".
std::u16string cellRefToText(int column, int row, ReferenceForm form);

// One reference for a range of one cell, otherwise two joined by ':'.
std::u16string rangeToText(const RangeRef& range, ReferenceForm form);

// Reads a reference as a dialog takes it: an optional sheet prefix with '!', then a cell or a
// range. `out` becomes a value of tag 8 or 9 with plain coordinates; without a prefix its sheets
// are NoFirstSheet and NoLastSheet. Answers false if the text is no reference; the sticky error may
// then stand.
bool parseReferenceText(std::u16string_view text, CellValue& out);

} // namespace vorn
