// Scrolling: from what scroll bars, wheels and fingers ask for to the first column and row that the
// view shows.
//
// Units:  columns and rows from 0. Hidden ones are no places to stop at, and frozen ones do not
//         scroll: the view begins behind them.
// Errors: as commitEdit.
#pragma once

#include "shell/scrollbar.h"

namespace vorn {

// The vertical scroll bar reaches at least so far before any document says otherwise.
constexpr int FirstVerticalRange = 100;

// Moves the view by columns and rows that are seen. What cannot be scrolled any further stays.
// While a cell is edited it begins to point, or commits; where it cannot nothing is scrolled.
void scrollBy(int columns, int rows);

// The same, to a column or a row; -1 leaves one as it is.
void scrollViewTo(int leftColumn, int topRow);

// What a tap on a part of a scroll bar does: a line, or a page, at whose edge one column or row is
// seen again. Nothing for the thumb.
void scrollByPart(BarDirection direction, ScrollPart part);

// What a scroll bar is to show. The horizontal one reaches to the last column, the vertical one
// follows the data.
ScrollReach scrollReach(BarDirection direction);

// Where the view begins, as it stands in the sheet: this is how everybody moves it. Nothing if it
// stands there.
void setViewStart(int leftColumn, int topRow);

// The range of the vertical scroll bar: taken along with the position, or measured anew for another
// sheet. While its thumb is dragged it stays, or the thumb would run away from the pen.
void followVerticalRange();
void resetVerticalRange();

} // namespace vorn
