// The painting of cells: fills, gridlines, texts and borders of the panes.
//
// Units:  pixels of the client area.
// Shape:  the texts are measured with the platform's TextMeasure, which has to be that of the
//         canvas' machine.
#pragma once

#include "shell/gridlayout.h"

namespace vorn {

class Canvas;

// All panes as far as they meet `clip`, and the lines behind the frozen rows and columns.
void paintPanes(Canvas& canvas, const GridView& view, const Rect& clip);

} // namespace vorn
