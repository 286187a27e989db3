// Boxes, radio buttons and buttons; and the place of a picture.
#pragma once

#include "qt/dialogs/controlview.h"

class QAbstractButton;
class QPushButton;

namespace vorn::qt {

// What a tap makes of a box only the model knows; the widget never turns itself.
class BoxView : public ControlView {
public:
    BoxView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;
};

class RadioView : public ControlView {
public:
    RadioView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;
};

class ButtonView : public ControlView {
public:
    ButtonView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override {}
};

// An empty frame, which those who have a picture paint.
class PictureView : public ControlView {
public:
    PictureView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override {}
};

} // namespace vorn::qt
