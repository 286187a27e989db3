// The cursor of the grid: the active cell and what is selected, where the keys lead, and how the
// view follows. While somebody points, all of it is about what is pointed at.
//
// Units:  columns and rows from 0; whatever is asked for ends at the edges of the sheet.
#pragma once

#include "shell/gridlayout.h"
#include "shell/key.h"

namespace vorn {

// Where everything stands just now.
GridLayout currentLayout();
GridView currentView();

// How a selection grows.
enum ExtendFlag : unsigned {
    SelectCell = 0,
    ExtendSelection = 1, // the anchor stays and the corner moves
    SelectRows = 2,      // whole rows
    SelectColumns = 4,   // whole columns
};

// How much is to be seen behind the cell, to the right and below.
enum ScrollMargin : int { ShowCell = 0, ShowOneMore = 1 };

// Selects a cell, or up to it, and brings it into view. Of whole rows the active cell keeps its
// column, of whole columns its row.
void moveTo(int column, int row, unsigned extendFlags, ScrollMargin margin);

void scrollIntoView(int column, int row, ScrollMargin margin);

// What Tab, the page keys, Home, End and the arrows do on the grid. False for any other key.
bool handleKey(Key key, KeyModifiers modifiers);

} // namespace vorn
