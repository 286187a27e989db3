// The window of a dialog, made from its model: its controls, or the pages of a sheet, and the
// buttons at its foot. Enter is OK, Escape and the close button of the frame are Cancel, F1 is the
// help.
#pragma once

#include "qt/dialogs/widgets.h"
#include "shell/dialog.h"

#include <memory>
#include <vector>

class QPushButton;
class QTabWidget;

namespace vorn::qt {

class DialogPanel;

class DialogWindow : public AskingWindow {
public:
    // `dialog` is open. It gets what it wants of the room, in pixels.
    DialogWindow(QWidget* parent, DialogModel& dialog, QSize room);
    DialogWindow(QWidget* parent, DialogModel& dialog);
    ~DialogWindow() override;

    const std::vector<DialogPanel*>& panels() const { return panels_; }
    DialogPanel& front() const;

    // Asks the model, which may refuse.
    void accept() override;
    void reject() override;

    void setVisible(bool visible) override;

private:
    class SheetWatch;

    void addPanel();
    void addPages();
    void turnPageBy(int pages);
    void addFoot();
    QWidget* makeHelpButton();
    void showHelp();
    void fit(QSize room);
    void standInPlace();
    void stayOnScreen();
    void keepPlace();
    void turnTo(int page);
    void leave();

    DialogModel& dialog_;
    FlowRow* foot_;
    QTabWidget* tabs_ = nullptr;
    std::vector<DialogPanel*> panels_;
    std::vector<ScrollingBody*> bodies_;
    std::unique_ptr<SheetWatch> watch_; // of a sheet; a plain dialog is watched by its panel
};

} // namespace vorn::qt
