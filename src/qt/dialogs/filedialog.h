// Asks for one file: the toolkit's dialog, with the system's rules for names.
#pragma once

#include "platform/userinterface.h"

#include <QFileDialog>

#include <string>

class QComboBox;
class QLineEdit;

namespace vorn::qt {

class FileDialog : public QFileDialog {
public:
    FileDialog(QWidget* parent, const FileQuestion& question, QSize room);

    // What was chosen: a path from the root on, whether there is a file or not.
    const std::u16string& path() const { return path_; }
    int filterIndex() const; // from 1

    void accept() override;

private:
    void makeNarrow();
    void tellTypes(const QStringList& filters);
    void followType();

    QLineEdit* name_ = nullptr;
    QComboBox* types_ = nullptr;
    std::u16string path_;
};

} // namespace vorn::qt
