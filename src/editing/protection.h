// Protection: a state of a sheet or of the whole workbook in which locked cells take no entry and
// hidden formulas are not shown.
#pragma once

namespace vorn {

// Is the workbook or the current sheet protected?
bool isProtected();

// Is the active cell locked under protection? Then the user is told so.
bool lockedCellRefused();

// Is the active cell's formula hidden under protection?
bool isHiddenFormula();

} // namespace vorn
