// The controls of one dialog, or of one page of a sheet, as they stand on a window. The panel
// watches its model for as long as it lives.
#pragma once

#include "qt/dialogs/controlview.h"

#include <QWidget>

#include <functional>
#include <vector>

class QGridLayout;

namespace vorn::qt {

class FlowRow;
class SampleWidget;

class DialogPanel : public QWidget, private DialogObserver {
public:
    // Buttons that have no place on the panel go to the foot, before those that stand there
    // already.
    DialogPanel(DialogModel& dialog, FlowRow& foot, QWidget* parent);
    ~DialogPanel() override;

    // Watches the model no more. To be called before any widget of the window goes.
    void letGo();

    // Puts the caret where the model has it, or else into the first control that takes it.
    void takeFocus();

    // The tab key goes through the controls as they stand, and then to `last`.
    void orderTabs(QWidget* last);

    ControlView* find(int control) const;

    // Are all its controls at the foot?
    bool isBare() const { return rows_ == 0; }

    // Called when the model closes.
    std::function<void()> onClosed;

private:
    void controlChanged(int control) override;
    void focusMoved(int control) override;
    void labelEditBegun(int control) override;
    void pageTurned() override {}
    void dialogClosed() override;

    void groupRadios();
    void addRow(const ArrangedRow& row);
    void addFields(const ArrangedRow& row);
    void addFlow(const ArrangedRow& row);
    void addList(const ArrangedRow& row);
    void addNote(const ArrangedRow& row);
    void addBorders(const ArrangedRow& row);
    void addSample();
    void addCaption(const ArrangedRow& row, QWidget* field);
    QWidget* place(int control);
    QWidget* makeFields(std::span<const int> controls);
    void moveButtonsTo(FlowRow& foot);
    void nameForAssistants(const ArrangedRow& row);

    DialogModel& dialog_;
    QGridLayout* grid_;
    std::vector<std::unique_ptr<ControlView>> views_; // as the controls of the model
    std::vector<int> placed_;                         // controls that have their place
    SampleWidget* sample_ = nullptr;
    int rows_ = 0;
};

} // namespace vorn::qt
