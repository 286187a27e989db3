// Conditions on the values of cells, as Sumif, Countif and the database functions take them. A text
// that begins with >, <, >=, <= or <> compares with what stands behind the sign; everything else
// has to be equal. Values are compared in the order of sorting and with case, so kinds never mix: a
// date is no number, the text 5 is not the number 5, and a text lies above every number. A cell
// that does not exist lies above everything, so >2 and <>2 hold for it.
//
// Errors: none of its own; a sticky error that stands is left as it is, save that memory is short.
#pragma once

#include "core/sheet.h"
#include "core/value.h"
#include "formula/lexer.h"

#include <cstdint>

namespace vorn {

struct CriteriaCondition {
    std::uint16_t column = 0; // of the database; nothing to Sumif and Countif
    TokenKind comparison = TokenEqual;
    CellValue value; // owned
};

// The condition that a value states. Takes over what `criteria` owns.
CriteriaCondition readCondition(CellValue criteria);

// Does a value meet the condition? Null stands for a cell that does not exist.
bool meetsCondition(const CellValue* value, const CriteriaCondition& condition);

// A range argument of a function that looks at one sheet, the first one named.
struct SheetRange {
    const Sheet* sheet = nullptr;
    RangeRef range;

    // As the corners stand: 0 for a range whose corners are out of order.
    int columnCount() const;
    int rowCount() const;
};

// Pops a reference. What is none, or names a sheet that is gone, sets pendingError 23, and the
// answer is false.
bool popSheetRange(SheetRange& out);

} // namespace vorn
