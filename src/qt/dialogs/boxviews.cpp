#include "qt/dialogs/boxviews.h"

#include "qt/dialogs/widgets.h"

#include <QCheckBox>
#include <QFrame>
#include <QPushButton>
#include <QRadioButton>

namespace vorn::qt {

namespace {

class ModelCheckBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override {}
};

// A tap that would turn it on does not; but its group turns it off so when another goes on.
class ModelRadioButton : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

protected:
    void nextCheckState() override
    {
        if (isChecked())
            QRadioButton::nextCheckState();
    }
};

Qt::CheckState checkStateOf(BoxState state)
{
    switch (state) {
    case BoxState::Mixed:
        return Qt::PartiallyChecked;
    case BoxState::On:
        return Qt::Checked;
    case BoxState::Off:
        break;
    }
    return Qt::Unchecked;
}

} // namespace

BoxView::BoxView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new ModelCheckBox(captionText(control.form->label), parent))
{
    widget()->setMinimumHeight(BoxHeight);
    const auto* box = static_cast<QCheckBox*>(widget());
    QObject::connect(box, &QCheckBox::clicked, box,
                     [this] { settle(this->dialog().tapBox(id())); });
}

void BoxView::display()
{
    // Whether mixed is a state of its own the box itself decides, at each setting.
    static_cast<QCheckBox*>(widget())->setCheckState(checkStateOf(control().box));
}

RadioView::RadioView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new ModelRadioButton(captionText(control.form->label), parent))
{
    widget()->setMinimumHeight(BoxHeight);
    auto* button = static_cast<QRadioButton*>(widget());
    // Groups are told by the form; the toolkit's own would be all of one parent.
    button->setAutoExclusive(false);
    QObject::connect(button, &QRadioButton::clicked, button,
                     [this] { settle(this->dialog().tapBox(id())); });
}

void RadioView::display()
{
    static_cast<QRadioButton*>(widget())->setChecked(control().box == BoxState::On);
}

ButtonView::ButtonView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, makeButton(captionText(control.form->label), parent))
{
    const auto* button = static_cast<QPushButton*>(widget());
    QObject::connect(button, &QPushButton::clicked, button, [this] { this->dialog().press(id()); });
}

PictureView::PictureView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new QFrame(parent))
{
    static_cast<QFrame*>(widget())->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    widget()->setMinimumHeight(ListHeight);
}

} // namespace vorn::qt
