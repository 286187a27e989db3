// The handlers whose units are not there yet: each does nothing. A block goes when the unit comes
// that its title names.
#include "shell/commandhandlers.h"

namespace vorn {

// --- shell/entry.cpp
void autoSumCommand() {}
void insertFunctionCommand() {}
void insertNameCommand() {}
void quickEntryCommand() {}
void commitCommand() {}
void cancelCommand() {}

// --- shell/dialogs
void rowHeightCommand() {}
void columnWidthCommand() {}
void formatCellsCommand() {}

// --- shell/formatactions.cpp
void boldCommand() {}
void italicCommand() {}
void underlineCommand() {}
void alignLeftCommand() {}
void alignCenterCommand() {}
void alignRightCommand() {}
void hideColumnsCommand() {}
void showColumnsCommand() {}
void autofitColumnsCommand() {}
void hideRowsCommand() {}
void showRowsCommand() {}
void autofitRowsCommand() {}

} // namespace vorn
