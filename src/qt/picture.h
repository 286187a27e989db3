// A picture of the whole window, for which no display is needed.
#pragma once

#include "qt/windowuser.h"

#include <QSize>
#include <QString>

namespace vorn::qt {

class MainWindow;

// Nobody is there: what the system says goes to the standard error stream, and what it asks is
// answered as by one who gives no answer.
class PictureUser : public WindowUser {
public:
    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon = BoxIcon::None) override;
    bool askFile(FileQuestion&) override { return false; }
    void runDialog(DialogModel&) override {}
    void showHelp(std::u16string_view) override {}

    // Was there anything to say?
    bool hasSpoken() const { return spoken_; }

private:
    bool spoken_ = false;
};

// Writes the window as it stands, as a PNG. False, with a line on the standard error stream, if
// that is not possible.
bool writePicture(MainWindow& window, const QString& path);

} // namespace vorn::qt
