// The client area of the main window: everything below menu and toolbar. The system paints it on a
// picture that is kept, and only what changed there goes to the screen. The edit control stands on
// it.
//
// Units:  the system's pixels are the toolkit's; the picture has as many for each as the screen.
#pragma once

#include "qt/canvas.h"
#include "qt/editcontrol.h"
#include "qt/peninput.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace vorn::qt {

class SheetWidget : public QWidget {
public:
    SheetWidget(Messages& messages, QWidget* parent);
    ~SheetWidget() override;

    // Soon, once for all that ask before.
    void requestRepaint();

    // The repaint pass, if one was asked for.
    void repaintChanges();

    // After each message: the edit control, the focus and the pen.
    void follow();

    // A dialog opens.
    void interrupt() { penInput_.interrupt(); }

    const EditControl& editControl() const { return edit_; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void renewPicture();
    void showPointer(const QPointF& place);
    bool isOnControl(const QTouchEvent& event) const;
    void followFocus();

    Messages& messages_;
    PenInput penInput_;
    QImage image_;
    std::unique_ptr<QtCanvas> canvas_; // on image_
    EditControl edit_;
    bool passRequested_ = false;
};

} // namespace vorn::qt
