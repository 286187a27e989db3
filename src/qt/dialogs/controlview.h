// The widgets of a dialog's controls. A view shows what the model has of one control and passes on
// what the user does to it; what the model refuses is shown as it was.
//
// Shape: the widget belongs to the window, the view to the panel (dialogpanel.h). Each widget has
//        the number of its control as its object name.
#pragma once

#include "qt/dialogs/arrangement.h"
#include "shell/dialog.h"

#include <memory>

class QWidget;

namespace vorn::qt {

class ControlView {
public:
    ControlView(DialogModel& dialog, const Control& control, QWidget* widget);
    virtual ~ControlView() = default;
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    int id() const { return control_.form->id; }
    const Control& control() const { return control_; }
    QWidget* widget() const { return widget_; }

    // Shows the control as it is in the model.
    void show();

    virtual void takeFocus();

    // Renames the chosen entry in place.
    virtual void beginLabelEdit() {}

    // The user comes to a text for the first time: what is typed replaces all of it, unless a rule
    // has put the caret elsewhere.
    virtual void selectText() {}

protected:
    virtual void display() = 0;

    // Is what the widget tells the echo of what it was told?
    bool isShowing() const { return showing_; }

    // After something that the user did.
    void settle(bool accepted);

    // As `settle` for what was typed, of which the widget is right about the caret.
    void type(std::u16string_view text);

    // Is what is typed on its way through the model?
    bool isTyping() const { return typing_; }

    DialogModel& dialog() const { return dialog_; }

private:
    DialogModel& dialog_;
    const Control& control_;
    QWidget* widget_;
    bool showing_ = false;
    bool typing_ = false;
};

// A view for a control of any kind, with its widget in the parent.
std::unique_ptr<ControlView> makeControlView(DialogModel& dialog, const Control& control,
                                             QWidget* parent);

} // namespace vorn::qt
