#include "core/filter.h"

#include "core/heap.h"

namespace vorn {

bool SheetFilter::start(const RangeRef& newRange)
{
    clear();
    if (!columns.resize(newRange.lastColumn - newRange.firstColumn + 1))
        return false;
    range = newRange;
    active = true;
    return true;
}

void SheetFilter::clear()
{
    for (FilterColumn& column : columns) {
        heapFree(column.text1);
        heapFree(column.text2);
    }
    columns.clear();
    range = {};
    active = false;
}

} // namespace vorn
