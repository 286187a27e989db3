// Lists of any kind: in full sight, folded, to be typed in, and those whose entries can be renamed.
#pragma once

#include "qt/dialogs/textviews.h"

class QComboBox;
class QListView;
class QString;
class QStringListModel;

namespace vorn::qt {

class ListView : public ControlView {
public:
    ListView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;

    QListView* view() const;

private:
    void selectionMoved();
    QStringListModel* entries() const;
};

class LabelListView : public ListView {
public:
    LabelListView(DialogModel& dialog, const Control& control, QWidget* parent);

    void beginLabelEdit() override;

protected:
    void display() override;

private:
    class Keys;
    class Editing;

    QWidget* editor() const;
    void endLabelEdit(const QString& text);
    void cancelLabelEdit();

    bool ending_ = false; // the model has the new label, and the line is about to go
};

class ChoiceView : public ControlView {
public:
    ChoiceView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;
};

class ComboView : public LineOfText {
public:
    ComboView(DialogModel& dialog, const Control& control, QWidget* parent);

protected:
    void display() override;
};

} // namespace vorn::qt
