// The handlers whose units are not there yet: each does nothing. A block goes when the unit comes
// that its title names.
#include "shell/commandhandlers.h"

namespace vorn {

// --- shell/dialogs
void rowHeightCommand() {}
void columnWidthCommand() {}
void formatCellsCommand() {}

} // namespace vorn
