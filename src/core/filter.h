// The filter of a sheet: a block of rows below a header row, and for each of its columns a
// condition that a row has to satisfy to stay visible.
//
// Shape:  plain records. A text is in the private heap and belongs to its column; null is "none".
#pragma once

#include "core/growarray.h"
#include "core/reference.h"

#include <cstdint>

namespace vorn {

enum FilterKind : std::int32_t {
    FilterAll = 0,
    FilterTop = 1,
    FilterBlanks = 2,
    FilterNonBlanks = 3,
    FilterWhere = 4,
};

struct FilterColumn {
    std::int32_t kind = FilterAll;
    std::int32_t topCount = 10; // 1 to 100
    std::int32_t largest = 1;   // the largest values, or the smallest
    std::int32_t operator1 = 1; // 1 to 12
    std::int32_t both = 1;      // both comparisons have to hold, or one of them
    std::int32_t operator2 = 0; // 0 for none, else 1 to 12
    char16_t* text1 = nullptr;
    char16_t* text2 = nullptr;
};

// A sheet has at most one. `columns` has a record for each column of `range` while it is active.
struct SheetFilter {
    bool active = false;
    RangeRef range;
    GrowArray<FilterColumn> columns;

    SheetFilter() = default;
    ~SheetFilter() { clear(); }
    SheetFilter(const SheetFilter&) = delete;
    SheetFilter& operator=(const SheetFilter&) = delete;

    // Begins a filter over a range, with a default record for each of its columns. False, with
    // ErrorMemory and no filter, if memory is short.
    bool start(const RangeRef& newRange);

    // Takes the filter away, with the texts of its columns.
    void clear();
};

} // namespace vorn
