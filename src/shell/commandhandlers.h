// What the commands do that take more than a line: the table of commands (shell/commands.cpp) names
// these functions, and each stands in the unit that its group is titled with.
//
// Errors: the sticky code, shown at the end of the message.
#pragma once

namespace vorn {

// --- shell/fileactions.cpp
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

// --- shell/viewactions.cpp
void setZoomOfAllSheets(int percent);
void toggleFreeze();
void toggleFullScreen();
void toggleSheetProtection();
void toggleWorkbookProtection();

} // namespace vorn
