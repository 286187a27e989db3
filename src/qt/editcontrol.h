// The control that shows the editor of cell texts (shell/formulabar.h). It is a mirror: the text,
// the selection and the place are the model's, keys and characters go to the model, and what the
// mouse selects is told to the model. Its own keys, undo and clipboard are never used.
//
// Shape:  a child of the grid. It is hidden while there is no editor to show.
#pragma once

#include "platform/textmeasure.h"

#include <QLineEdit>

namespace vorn::qt {

class Messages;

class EditControl : public QLineEdit {
public:
    EditControl(Messages& messages, QWidget* parent);

    // Shows the model as it is.
    void follow();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void followPlace();
    void followLine();
    void useFont(const FontLook& look);
    void tellSelection();
    bool mayTap();
    void pasteSelected(const QPoint& place);

    Messages& messages_;
    FontLook font_;
    unsigned version_ = 0;   // of the line that is shown
    bool following_ = false; // changes are the model's
};

} // namespace vorn::qt
