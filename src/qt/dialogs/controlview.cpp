#include "qt/dialogs/controlview.h"

#include "qt/dialogs/boxviews.h"
#include "qt/dialogs/listviews.h"
#include "qt/dialogs/textviews.h"

#include <QWidget>

namespace vorn::qt {

ControlView::ControlView(DialogModel& dialog, const Control& control, QWidget* widget)
    : dialog_(dialog), control_(control), widget_(widget)
{
    widget_->setObjectName(QString::number(id()));
}

void ControlView::show()
{
    const bool outermost = !showing_;
    showing_ = true;
    widget_->setEnabled(control_.enabled);
    display();
    if (outermost)
        showing_ = false;
}

void ControlView::takeFocus()
{
    // The style shows the focus only to those who use the keys, and would else wait for a first
    // one.
    widget_->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    widget_->setFocus(Qt::OtherFocusReason);
}

void ControlView::settle(bool accepted)
{
    if (!accepted)
        show();
}

void ControlView::type(std::u16string_view text)
{
    typing_ = true;
    const bool accepted = dialog_.enterText(id(), text);
    typing_ = false;
    settle(accepted && control_.text == text);
}

std::unique_ptr<ControlView> makeControlView(DialogModel& dialog, const Control& control,
                                             QWidget* parent)
{
    switch (control.form->kind) {
    case ControlKind::Label:
        return std::make_unique<LabelView>(dialog, control, parent);
    case ControlKind::Edit:
        return std::make_unique<EditView>(dialog, control, parent);
    case ControlKind::TextArea:
        return std::make_unique<TextAreaView>(dialog, control, parent);
    case ControlKind::Box:
    case ControlKind::TriBox:
        return std::make_unique<BoxView>(dialog, control, parent);
    case ControlKind::Radio:
        return std::make_unique<RadioView>(dialog, control, parent);
    case ControlKind::List:
        return std::make_unique<ListView>(dialog, control, parent);
    case ControlKind::LabelList:
        return std::make_unique<LabelListView>(dialog, control, parent);
    case ControlKind::Choice:
        return std::make_unique<ChoiceView>(dialog, control, parent);
    case ControlKind::Combo:
        return std::make_unique<ComboView>(dialog, control, parent);
    case ControlKind::Button:
        return std::make_unique<ButtonView>(dialog, control, parent);
    case ControlKind::Picture:
        return std::make_unique<PictureView>(dialog, control, parent);
    }
    return nullptr;
}

} // namespace vorn::qt
