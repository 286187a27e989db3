// The tables of a document in a native file: styles, fonts and number formats. A file holds the
// styles that something has, and the fonts that these have; and it numbers what it holds anew.
//
// Shape:  while a save goes on, the numbers stand in the records themselves (`fileIndex`).
// Errors: ErrorFileWrite if there are more formats than a file can count.
#pragma once

#include <cstdint>

namespace vorn {

class RecordWriter;

// Gives numbers to what the whole workbook uses.
void numberTables();

// Writes the records of what has a number.
void writeTables(RecordWriter& records);

// Takes all numbers back.
void clearTableNumbers();

// The number of a style in the file; that of the default style for an index that there is not.
std::uint16_t styleFileNumber(int style);

} // namespace vorn
