// Texts that are shown and texts that are typed.
#pragma once

#include "qt/dialogs/controlview.h"

class QLineEdit;
class QPlainTextEdit;

namespace vorn::qt {

class LabelView : public ControlView {
public:
    LabelView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;
};

// What a line edit and the model tell each other; an Edit and a Combo have one.
class LineOfText : public ControlView {
public:
    void selectText() override;

protected:
    using ControlView::ControlView;

    // To be called once the widget has its line.
    void watch(QLineEdit* line);
    void showLine();

private:
    void tellCaret();

    QLineEdit* line_ = nullptr;
};

class EditView : public LineOfText {
public:
    EditView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override { showLine(); }
};

// Line ends of the model may have two characters, those of the widget have one.
class TextAreaView : public ControlView {
public:
    TextAreaView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;

private:
    QPlainTextEdit* edit() const;
    void tellCaret();
    void showCaret();
};

} // namespace vorn::qt
