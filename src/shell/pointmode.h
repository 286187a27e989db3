// Pointing: while a formula is written, a cell that is tapped or reached with the arrow keys is
// written into the text as a reference, in place of the one that was pointed at before. The view
// may scroll and show other sheets meanwhile; it goes back where it was afterwards.
//
// Shape:  its state lies in the Application (point...) and in the FormulaBar.
#pragma once

namespace vorn {

// Begins to point, if a reference can stand where the caret is: behind an operator, an opening
// parenthesis or a separator of a formula. True also while somebody points already.
bool enterPointMode();

// Nothing if nobody points.
void leavePointMode();

// Writes the reference to what is selected into the text. Part of every repaint pass.
void writePointReference();

// The user wants to do something on the grid: to tap it, to scroll it, to see another sheet. While
// a cell is edited this begins to point or, where it cannot, commits. False if the text cannot be
// committed: then the editor stays, and the tap is to be ignored.
bool yieldToGrid();

} // namespace vorn
