// Which task a tap on a cell belongs to.
#pragma once

namespace vorn {

constexpr int NoTask = -1;

// The first task of the workbook that runs when that cell of the current sheet is tapped.
int taskForTap(int column, int row);

// Runs it, as its entry in the menu would. False if no task waits for a tap there.
bool runTaskForTap(int column, int row);

} // namespace vorn
