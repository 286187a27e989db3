// The drag of an edge in the titles: a line goes along with the pen, and at the end the column or
// the row has its new size, as one undo step. What is drawn to nothing is hidden; a hidden one is
// drawn open.
//
// Shape:  its state is that of the pen.
#pragma once

#include "shell/pen.h"

namespace vorn {

// `edge` is a ColumnEdge or a RowEdge, taken at `at`.
void beginResize(const Place& edge, Point at);
void moveResize(DragMode mode, Point at);

// All of a selection of whole columns, or rows, have the size if it is one of them. An edge that is
// where it was changes nothing.
void finishResize(DragMode mode);

} // namespace vorn
