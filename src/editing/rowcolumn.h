// The commands that size, hide and show rows and columns. Each is one undo step, "Row Height" or
// "Column Width", on the current sheet.
//
// Units:  heights in twips, widths in 1/256 of a character; points and characters where it says so.
// Errors: ErrorMemory, sticky.
#pragma once

namespace vorn {

// What a command is for: the rows or columns of the selection, or one of them. One that lies in a
// selection of whole rows or columns stands for all of these.
enum SizeTarget { SizeSelection, SizeOne };

// A height or width below 1 hides. A height that is set counts as set by hand.
void setRowHeights(int row, int height, SizeTarget target);
void setColumnWidths(int column, int width, SizeTarget target);

// Refused in silence for the rows of whole columns and the columns of whole rows: a sheet never
// disappears as a whole.
void hideRows(int row, bool hidden, SizeTarget target);
void hideColumns(int column, bool hidden, SizeTarget target);
void fitRows(int row, SizeTarget target);
void fitColumns(int column, SizeTarget target);

// --- What users read and type. More than the most counts as the most; below 1 hides.

constexpr double MostPoints = 409;
constexpr double MostCharacters = 255;

double pointsOfHeight(int height);
int heightOfPoints(double points);
double charactersOfWidth(int width);
int widthOfCharacters(double characters);

// --- What the drag of a boundary makes of a row or column of so many pixels at zoom 100. The
// distance is measured at the zoom of the sheet; 0 hides.

int heightAfterDrag(int pixels, int distance, int zoom);
int widthAfterDrag(int pixels, int distance, int zoom);

} // namespace vorn
