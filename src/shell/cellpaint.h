// The painting of cells: fills, gridlines, texts and borders of the panes.
//
// Units:  pixels of the client area.
// Shape:  the texts are measured with the platform's TextMeasure, which has to be that of the
//         canvas' machine. What is painted of a part is the same whatever else is painted with it.
//
// A cell looks the same wherever it is scrolled to, with three exceptions. Whoever moves what was
// painted has to paint again, as far as they moved away from or into these places:
//  - the first pixel of a pane's first column, where alone left borders show;
//  - the lowest pixel of a pane's last row, where alone bottom borders show: it is the last row
//    that begins within the pane, and mostly goes on outside;
//  - the lines behind the frozen rows and columns, which lie in the first pixels of what scrolls.
#pragma once

#include "shell/gridlayout.h"

namespace vorn {

class Canvas;

// All panes as far as they meet `clip`, and the lines behind the frozen rows and columns.
void paintPanes(Canvas& canvas, const GridView& view, const Rect& clip);

} // namespace vorn
