// A test document whose cells are named as in formulas, for tests that ask what a formula makes of
// what was typed.
//
// Shape:  owns the whole document. A value it answers is borrowed and holds until the next change.
#pragma once

#include "core/value.h"
#include "support/testplatform.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace vorn {

// A value with its kind, as rows of tests write it: 2.5, date 36526, "text", TRUE, !!Div0, blank,
// integer 3, cell 1,2, range 0,0:1,2, sheets 0-1 cell 1,2 (column before row).
// Numbers have up to 15 digits; a character outside of ASCII is written as \u and four hex digits.
std::string describe(const CellValue& value);

class Cells {
public:
    Cells() = default;
    ~Cells();
    Cells(const Cells&) = delete;
    Cells& operator=(const Cells&) = delete;

    // Types a text in a cell, as an entry does, and calculates. A place is "B2" or "Sheet2!B2".
    void put(std::string_view place, std::u16string_view text);

    // Types a rectangle of texts from a corner on and calculates once; an empty text types nothing.
    void fill(std::string_view corner,
              std::initializer_list<std::initializer_list<std::u16string_view>> rows);

    // Stores a value as it is, for those that cannot be typed. Takes over what it owns.
    void store(std::string_view place, const CellValue& value);

    // The cell's value, a formula's result in its place; blank for a missing cell.
    CellValue value(std::string_view place) const;
    std::string shown(std::string_view place) const { return describe(value(place)); }

    // What the cell shows by its number format.
    std::u16string text(std::string_view place) const;

    // The result of a formula that stands at `base` but in no cell, with or without its '='; blank
    // if it leaves none. It must compile.
    CellValue evaluate(std::u16string_view formula);

    // evaluate and describe; "refused 18" for a formula that does not compile, with the code.
    std::string answer(std::u16string_view formula);

    TestDocument document;
    CellPosition base;

private:
    bool run(std::u16string_view formula);

    CellValue formula_; // what was evaluated last
};

} // namespace vorn
