// What stands on the grid by inverting it: the frame of the selection with its inside and its
// handle, the frame of what is pointed at, and the line of a column or row that is made larger. As
// all of it is inverted, it is taken away by inverting it once more, and nothing under it has to be
// painted again.
//
// The frame stands astride the edge of the range: its inner side is the range's rectangle shrunk by
// 2 pixels, its outer one as far outside. Its innermost pixel meets the inverted inside and stays
// light, so that it looks 3 pixels thick, with a bright line before the inside. Where there is no
// room outside, at the edges of the cells' area, it moves inwards.
//
// Units:  pixels of the client area.
#pragma once

#include "shell/gridlayout.h"
#include "shell/region.h"

namespace vorn {

// A range's place with the area to which its frame is cut: where the range goes on beyond it, the
// frame has no side.
struct RangePlace {
    Rect rect;
    Rect area;
};

// False if nothing of the range is in view.
bool rangePlace(const GridLayout& areas, const GridView& view, const RangeRef& range,
                RangePlace& out);

// All that is inverted as things stand, with the areas of the grid.
Region inversions(const GridLayout& areas);

// Where the line of a resized column (x) or row (y) belongs now; PenState::NoLine for nowhere.
int resizeLine();

} // namespace vorn
