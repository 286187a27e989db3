// The commands that size, hide and show rows and columns. Each is one undo step, "Row Height" or
// "Column Width".
//
// Units:  heights in twips, widths in 1/256 of a character; points and characters where it says so.
// Errors: ErrorMemory, sticky.
#pragma once

namespace vorn {

// Whether a command is for the rows or columns of the selection, or for one of them. One that lies
// in a selection of whole rows or columns stands for all of these.
enum SizeTarget { SizeSelection, SizeOne };

// A height of 0 hides. What is set this way is a height set by hand.
void setRowHeightCommand(int row, int height, SizeTarget target);
void setColumnWidthCommand(int column, int width, SizeTarget target);

// Refused in silence for the rows of whole columns and the columns of whole rows, and so for the
// whole sheet.
void hideRows(int row, bool hidden, SizeTarget target);
void hideColumns(int column, bool hidden, SizeTarget target);
void fitRows(int row, SizeTarget target);
void fitColumns(int column, SizeTarget target);

// --- What users read and type

constexpr double MostPoints = 409;
constexpr double MostCharacters = 255;

double pointsOfHeight(int height);
int heightOfPoints(double points);
double charactersOfWidth(int width);
int widthOfCharacters(double characters);

// --- What a drag of a boundary makes, from where it stood in pixels at the sheet's zoom

int heightAfterDrag(int pixels, int distance, int zoom);
int widthAfterDrag(int pixels, int distance, int zoom);

} // namespace vorn
