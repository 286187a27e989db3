#include "qt/windowuser.h"

#include "qt/dialogs/dialogs.h"
#include "qt/mainwindow.h"

#include <QGuiApplication>

namespace vorn::qt {

namespace {

// Whoever is asked is not to wait meanwhile.
class NoWaitCursor {
public:
    explicit NoWaitCursor(int depth) : waits_(depth > 0)
    {
        if (waits_)
            QGuiApplication::restoreOverrideCursor();
    }
    ~NoWaitCursor()
    {
        if (waits_)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    NoWaitCursor(const NoWaitCursor&) = delete;
    NoWaitCursor& operator=(const NoWaitCursor&) = delete;

private:
    bool waits_;
};

} // namespace

void WindowUser::setWindow(MainWindow* window)
{
    window_ = window;
}

BoxAnswer WindowUser::messageBox(std::u16string_view caption, std::u16string_view text,
                                 BoxButtons buttons, BoxIcon icon)
{
    const NoWaitCursor cursor(waitDepth_);
    return showMessageBox(window_, caption, text, buttons, icon);
}

bool WindowUser::askFile(FileQuestion& question)
{
    const NoWaitCursor cursor(waitDepth_);
    return showFileDialog(window_, question);
}

void WindowUser::runDialog(DialogModel& dialog)
{
    const NoWaitCursor cursor(waitDepth_);
    runDialogWindow(window_, dialog);
}

void WindowUser::setTitle(std::u16string_view title)
{
    if (window_ != nullptr)
        window_->showTitle(title);
}

// Only the first to raise it and the last to lower it are seen.
void WindowUser::showWaitCursor(bool wait)
{
    waitDepth_ += wait ? 1 : -1;
    if (wait && waitDepth_ == 1)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else if (!wait && waitDepth_ == 0)
        QGuiApplication::restoreOverrideCursor();
}

void WindowUser::showHelp(std::u16string_view anchor)
{
    openHelp(window_, anchor);
}

void WindowUser::requestRepaint()
{
    if (window_ != nullptr)
        window_->requestRepaint();
}

} // namespace vorn::qt
