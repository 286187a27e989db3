// Widths, styles and the hidden flag of a sheet's columns.
//
// Units:  widths in 1/256 of a character; pixels are width / 36.5, cut.
// Shape:  one record for each column up to the highest that has anything.
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/growarray.h"

#include <cstdint>

namespace vorn {

constexpr int DefaultColumnWidth = 2300;
constexpr int LeastDefaultWidth = 438;
constexpr std::uint16_t ColumnHiddenFlag = 1;

struct ColumnAttr {
    std::int32_t width = -1; // -1 for the sheet's default
    std::uint16_t style = 0;
    std::uint16_t flags = 0;

    bool operator==(const ColumnAttr&) const = default;
};

class ColumnTable {
public:
    int defaultWidth() const { return defaultWidth_; }

    // A width below 439 is kept as 438.
    void setDefaultWidth(int width);

    // Columns that have a record.
    int size() const { return records_.size(); }
    ColumnAttr attributes(int column) const;

    int columnWidth(int column) const;
    int visibleColumnWidth(int column) const
    {
        return columnHidden(column) ? 0 : columnWidth(column);
    }
    int columnPixels(int column) const;
    int columnStyle(int column) const { return attributes(column).style; }
    bool columnHidden(int column) const
    {
        return (attributes(column).flags & ColumnHiddenFlag) != 0;
    }

    // A width of 0 hides and keeps the width; any other shows the column.
    void setColumnWidth(int first, int last, int width);
    void setColumnHidden(int first, int last, bool hidden);
    void setColumnStyle(int first, int last, int style);
    void setColumnAttr(int first, int last, const ColumnAttr& record);

    // Takes records back to their defaults; makes none.
    void resetColumns(int first, int last);

    // The next run of equal columns that have something, searched from `first`. A default width
    // comes filled in. False behind the last.
    bool nextColumnRun(int& first, int& last, ColumnAttr& record) const;

private:
    bool reach(int column);

    std::uint16_t defaultWidth_ = DefaultColumnWidth;
    GrowArray<ColumnAttr> records_;
};

} // namespace vorn
