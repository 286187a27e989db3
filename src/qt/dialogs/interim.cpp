#include "qt/dialogs/dialogs.h"

#include "qt/strings.h"

#include <QFileDialog>
#include <QMessageBox>

namespace vorn::qt {

void runDialogWindow(QWidget*, DialogModel&) {}

BoxAnswer showMessageBox(QWidget* parent, std::u16string_view caption, std::u16string_view text,
                         BoxButtons buttons, BoxIcon)
{
    QMessageBox box(parent);
    box.setWindowTitle(toQt(caption));
    box.setText(toQt(text));
    if (buttons == BoxButtons::Ok)
        box.setStandardButtons(QMessageBox::Ok);
    else if (buttons == BoxButtons::YesNo)
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    else
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Ok:
        return BoxAnswer::Ok;
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    default:
        return BoxAnswer::Cancel;
    }
}

bool showFileDialog(QWidget* parent, FileQuestion& question)
{
    const QString path = question.purpose == FileQuestion::Save
                             ? QFileDialog::getSaveFileName(parent)
                             : QFileDialog::getOpenFileName(parent);
    if (path.isEmpty())
        return false;
    question.path = fromQt(path);
    return true;
}

void openHelp(QWidget*, std::u16string_view) {}

} // namespace vorn::qt
