// Heights of rows and widths of columns that fit what stands in them. A row is as high as its
// tallest font and its wrapped texts want; a column as wide as its widest cell, measured with the
// machine's own fonts.
//
// Units:  heights in twips, widths in 1/256 of a character.
#pragma once

#include "core/reference.h"

namespace vorn {

class Sheet;

// The height that the fonts of the column styles want, and at least that of a new sheet.
int defaultRowHeightForFonts(const Sheet& sheet);

// The height that the row's cells want. A row without an object keeps what it has.
int autofitRow(const Sheet& sheet, int row);

// Fits every row of the selection, or every row that exists if whole columns are selected; then the
// default height is brought up to date first. Whatever has a height set by hand keeps it.
void autofitRows(Sheet& sheet, const RangeRef& selection);

// The width that the column's cells want; without any, the present width.
int autofitColumn(const Sheet& sheet, int column);

} // namespace vorn
