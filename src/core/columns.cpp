#include "core/columns.h"

#include "core/reference.h"

namespace vorn {

void ColumnTable::setDefaultWidth(int width)
{
    defaultWidth_ = static_cast<std::uint16_t>(std::clamp(width, LeastDefaultWidth, 65535));
}

ColumnAttr ColumnTable::attributes(int column) const
{
    return column >= 0 && column < records_.size() ? records_[column] : ColumnAttr{};
}

int ColumnTable::columnWidth(int column) const
{
    const int width = attributes(column).width;
    return width > 0 ? width : defaultWidth_;
}

int ColumnTable::columnPixels(int column) const
{
    return static_cast<int>(visibleColumnWidth(column) / 36.5);
}

bool ColumnTable::reach(int column)
{
    if (column < 0 || column > LastColumn)
        return false;
    return column < records_.size() || records_.resize(column + 1);
}

void ColumnTable::setColumnWidth(int first, int last, int width)
{
    for (int column = first; column <= last && reach(column); ++column) {
        ColumnAttr& record = records_[column];
        const bool otherFlags = (record.flags & ~ColumnHiddenFlag) != 0;
        if (width == 0) {
            record.flags |= ColumnHiddenFlag;
        } else if (width != defaultWidth_ || record.style != 0 || otherFlags) {
            record.width = width;
            record.flags = static_cast<std::uint16_t>(record.flags & ~ColumnHiddenFlag);
        } else {
            record = {};
        }
    }
}

void ColumnTable::setColumnHidden(int first, int last, bool hidden)
{
    for (int column = first; column <= last && reach(column); ++column) {
        const unsigned others = records_[column].flags & ~unsigned{ColumnHiddenFlag};
        records_[column].flags =
            static_cast<std::uint16_t>(others | (hidden ? ColumnHiddenFlag : 0U));
    }
}

void ColumnTable::setColumnStyle(int first, int last, int style)
{
    for (int column = first; column <= last && reach(column); ++column)
        records_[column].style = static_cast<std::uint16_t>(style);
}

void ColumnTable::setColumnAttr(int first, int last, const ColumnAttr& record)
{
    for (int column = first; column <= last && reach(column); ++column)
        records_[column] = record;
}

void ColumnTable::resetColumns(int first, int last)
{
    for (int column = std::max(first, 0); column <= std::min(last, size() - 1); ++column)
        records_[column] = {};
}

bool ColumnTable::nextColumnRun(int& first, int& last, ColumnAttr& record) const
{
    while (first < size() && records_[first] == ColumnAttr{})
        ++first;
    if (first >= size())
        return false;
    last = first;
    while (last + 1 < size() && records_[last + 1] == records_[first])
        ++last;
    record = records_[first];
    if (record.width == -1)
        record.width = defaultWidth_;
    return true;
}

} // namespace vorn
