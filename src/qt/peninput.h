// The mouse, the pen and the fingers of the toolkit, handed to the system (shell/pen.h). One finger
// is a pen, two fingers scroll, and so do wheels. While the pen is down its last move comes again
// with a timer.
//
// Units:  pixels of the grid's widget.
#pragma once

#include "platform/geometry.h"
#include "shell/pen.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTimer>
#include <QTouchEvent>
#include <QWheelEvent>

namespace vorn::qt {

class Messages;

class PenInput {
public:
    explicit PenInput(Messages& messages);

    void press(const QMouseEvent& event);
    void move(const QMouseEvent& event);
    void release(const QMouseEvent& event);
    void doubleClick(const QMouseEvent& event);
    void wheel(const QWheelEvent& event);
    void touch(const QTouchEvent& event);

    // A dialog takes the pen away; its release will not be seen.
    void interrupt();

    // Somebody else has the pen now: what it held is let go.
    void lose();

    // After each message.
    void follow();

private:
    void down(Point place, KeyModifiers modifiers, Pointer pointer);
    void downAgain(Point place, KeyModifiers modifiers, Pointer pointer);
    void up(Point place);
    void fingerDown(const QTouchEvent& event);
    void fingersMove(const QTouchEvent& event);
    void fingersUp();
    void scrollPixels(const QPointF& distance);
    void scrollSteps(const QPointF& steps);

    enum class Fingers { None, One, Scrolling };

    Messages& messages_;
    QTimer timer_;
    bool interrupted_ = false;
    unsigned tapEnd_ = 0; // how many messages there were at the end of the last tap

    Fingers fingers_ = Fingers::None;
    QPointF fingersAt_;
    QElapsedTimer sinceTap_;
    Point lastTap_;

    QPointF rest_; // of columns and rows, that were not enough for a whole one
};

} // namespace vorn::qt
