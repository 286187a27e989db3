// The open document in words: all that a native file has to bring back, whatever the numbers under
// which the tables and pools hold it. Two documents with the same lines are the same to a user.
#pragma once

#include <string>
#include <vector>

namespace vorn {

// A line for each sheet, row, cell, name, text and so on. What a file does not carry is left out:
// empty rows that differ in nothing but a flag, cells that are blank and have no style, styles and
// fonts that nothing has, global tasks, and which column widths are the default one.
std::vector<std::string> describeDocument();

} // namespace vorn
