// The user in front of the window: whatever the system says or asks appears there.
#pragma once

#include "platform/userinterface.h"

#include <QString>

namespace vorn::qt {

class MainWindow;

class WindowUser : public UserInterface {
public:
    // Null before there is a window, and after it: boxes then stand by themselves.
    void setWindow(MainWindow* window);

    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon = BoxIcon::None) override;
    bool askFile(FileQuestion& question) override;
    void runDialog(DialogModel& dialog) override;

    // The toolkit has no list of documents.
    void noteDocument(std::u16string_view) override {}

    void setTitle(std::u16string_view title) override;
    void showWaitCursor(bool wait) override;
    void showHelp(std::u16string_view anchor) override;
    void requestRepaint() override;

private:
    MainWindow* window_ = nullptr;
    int waitDepth_ = 0;
};

} // namespace vorn::qt
