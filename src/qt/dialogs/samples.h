// Samples of what a dialog would make. They only look at the model, and no model knows of them.
#pragma once

#include "shell/dialog.h"

#include <QWidget>

#include <string>

namespace vorn::qt {

class SampleWidget : public QWidget {
public:
    using QWidget::QWidget;

    // What the controls show has changed.
    virtual void refresh() = 0;
};

// The sample of a dialog; null for those that have none.
SampleWidget* makeSample(const DialogModel& dialog, QWidget* parent);

// What a number, or a date and time, would look like with the settings of the dialogs that make
// new formats.
std::u16string sampleOfNumberFormat(const DialogModel& dialog);
std::u16string sampleOfDateFormat(const DialogModel& dialog);

} // namespace vorn::qt
