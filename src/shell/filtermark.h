// The drop-down marks in the header row of a filter: a tap on one opens the conditions of its
// column.
//
// Units: pixels; a mark has its size at every zoom.
#pragma once

#include "platform/geometry.h"

namespace vorn {

class Canvas;

constexpr int FilterMarkSize = 14;

// Where the mark of a header cell is: at its right end, cut to the cell.
Rect filterMarkRect(const Rect& cell);

// Blue if its column hides rows, else black.
void paintFilterMark(Canvas& canvas, const Rect& cell, bool hidesRows);

} // namespace vorn
