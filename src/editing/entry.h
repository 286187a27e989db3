// The entry of a text into a cell: it becomes a value, it may change the cell's number format, and
// both happen as one step of the undo list.
//
// Errors: false, with the sticky code and nothing changed, if a formula does not compile or memory
//         is short.
#pragma once

#include <string_view>

namespace vorn {

// Stores typed text in a cell of the current sheet; `style` is the style in force there. Nobody
// asks here whether the cell is locked or has that text already.
bool storeCell(int column, int row, std::u16string_view text, int style);

// The same for the active cell.
bool enterCell(std::u16string_view text);

} // namespace vorn
