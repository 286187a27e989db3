#include "shell/tasktap.h"

#include "core/workbook.h"
#include "shell/commands.h"

#include <algorithm>

namespace vorn {

namespace {

bool holdsCell(const CellValue& area, int column, int row)
{
    if (area.tag == TagSheetCellRef)
        return area.cellRef().column == column && area.cellRef().row == row;
    if (area.tag != TagSheetRangeRef)
        return false;
    const RangeRef range = area.rangeRef();
    return sortedRange(range.first(), range.last()).contains(column, row);
}

bool holdsSheet(const CellValue& area, int sheet)
{
    if (area.firstSheet == NoFirstSheet && area.lastSheet == NoLastSheet)
        return true;
    return area.firstSheet <= sheet && sheet <= area.lastSheet;
}

bool waitsForTap(const Task& task, int column, int row)
{
    const CellValue& area = task.onTapArea;
    return task.onTap != 0 && area.reserved == 0 &&
           holdsSheet(area, workbook->currentSheet->index) && holdsCell(area, column, row);
}

} // namespace

int taskForTap(int column, int row)
{
    // Those behind have no command.
    const int count = std::min(workbook->tasks.size(), CommandLastTask - CommandFirstTask + 1);
    for (int index = 0; index < count; ++index) {
        if (waitsForTap(workbook->tasks[index], column, row))
            return index;
    }
    return NoTask;
}

bool runTaskForTap(int column, int row)
{
    const int task = taskForTap(column, row);
    if (task == NoTask)
        return false;
    onCommand(static_cast<std::uint16_t>(CommandFirstTask + task));
    return true;
}

} // namespace vorn
