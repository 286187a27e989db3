// The handlers whose units are not there yet: each does nothing. A block goes when the unit comes
// that its title names.
#include "shell/commandhandlers.h"

namespace vorn {

// --- editing/format.cpp and rowcolumn.cpp
void boldCommand() {}
void italicCommand() {}
void underlineCommand() {}
void alignLeftCommand() {}
void alignCenterCommand() {}
void alignRightCommand() {}
void autofitColumnsCommand() {}
void hideColumnsCommand() {}
void showColumnsCommand() {}
void autofitRowsCommand() {}
void hideRowsCommand() {}
void showRowsCommand() {}

// --- shell/dialogs
void rowHeightCommand() {}
void columnWidthCommand() {}
void formatCellsCommand() {}

} // namespace vorn
