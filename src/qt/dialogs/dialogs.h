// The windows that ask: dialogs built from their models, message boxes, file dialogs, and the door
// to the help.
#pragma once

#include "platform/userinterface.h"

class QWidget;

namespace vorn::qt {

// Shows the model until it is closed (shell/dialog.h: who leaves it open has cancelled it).
void runDialogWindow(QWidget* parent, DialogModel& dialog);

BoxAnswer showMessageBox(QWidget* parent, std::u16string_view caption, std::u16string_view text,
                         BoxButtons buttons, BoxIcon icon);

// False, with the question as it was, for Cancel.
bool showFileDialog(QWidget* parent, FileQuestion& question);

// Opens the help file at an anchor in the machine's viewer; says so where there is none.
void openHelp(QWidget* parent, std::u16string_view anchor);

} // namespace vorn::qt
