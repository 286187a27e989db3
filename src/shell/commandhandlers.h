// What the commands do that take more than a line: the table of commands (shell/commands.cpp) names
// these functions, and each stands in the unit that its group is titled with.
//
// Errors: the sticky code, shown at the end of the message.
#pragma once

namespace vorn {

// --- shell/fileactions.cpp: whoever calls those that open asks about unsaved changes before
void openCommand();
void saveCommand();
void saveAsCommand();
void deleteFileCommand();
void filePropertiesCommand();
void openRecentCommand(int slot);

// --- shell/entry.cpp: what ends in the editor
void autoSumCommand();
void insertFunctionCommand();
void insertNameCommand();
void quickEntryCommand();
void commitCommand();
void cancelCommand();

// --- shell/dialogs: what asks first
void goToCommand();
void sheetsCommand();
void zoomCommand();
void aboutCommand();
void findCommand();
void replaceCommand();
void optionsCommand();
void rowHeightCommand();
void columnWidthCommand();
void formatCellsCommand();

// --- shell/formatactions.cpp: how the selection looks
void boldCommand();
void italicCommand();
void underlineCommand();
void alignLeftCommand();
void alignCenterCommand();
void alignRightCommand();
void hideColumnsCommand();
void showColumnsCommand();
void autofitColumnsCommand();
void hideRowsCommand();
void showRowsCommand();
void autofitRowsCommand();

// --- shell/viewactions.cpp: how the document is shown, and what keeps it from changes

// Every sheet of the workbook. The limits are the caller's.
void setZoomOfAllSheets(int percent);

// Freezes what lies above and to the left of the active cell in the view, or lets all of it go.
// Afterwards isFrozen tells which: a cell in the corner of the view freezes nothing.
bool isFrozen();
void toggleFreeze();

// Enters or leaves the full screen; nothing happens to the mode that is there already.
void setFullScreen(bool on);
void toggleFullScreen();

// What entering the full screen does to the sheets; also to those of a document that comes while it
// is on.
void zoomForFullScreen();

void toggleSheetProtection();
void toggleWorkbookProtection();

// All cells. The active one stays.
void selectWholeSheet();

} // namespace vorn
