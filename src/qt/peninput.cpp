#include "qt/peninput.h"

#include "core/workbook.h"
#include "qt/keyboard.h"
#include "qt/messages.h"
#include "shell/application.h"
#include "shell/chrome.h"
#include "shell/cursor.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <cmath>

namespace vorn::qt {

namespace {

constexpr qreal NotchAngle = 120;
constexpr int RowsOfNotch = 3;

Point pointOf(const QPointF& position)
{
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

// The middle of all fingers.
QPointF middleOf(const QTouchEvent& event)
{
    QPointF sum;
    for (const QEventPoint& point : event.points())
        sum += point.position();
    return sum / static_cast<qreal>(event.pointCount());
}

bool isNear(Point one, Point other)
{
    const int limit = QGuiApplication::styleHints()->touchDoubleTapDistance();
    return std::abs(one.x - other.x) <= limit && std::abs(one.y - other.y) <= limit;
}

} // namespace

PenInput::PenInput(Messages& messages) : messages_(messages)
{
    timer_.setInterval(PenTimerMilliseconds);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        if (!messages_.isUnderWay())
            messages_.send([] { penTimer(); });
    });
}

void PenInput::down(Point place, KeyModifiers modifiers, Pointer pointer)
{
    messages_.send([=] { penDown(place.x, place.y, modifiers, pointer); });
}

// The second time at one place, and soon. Whoever typed in between means two taps, as one does who
// points at a cell twice in one formula; and where two taps are no more than one, the second may
// begin a drag.
void PenInput::downAgain(Point place, KeyModifiers modifiers, Pointer pointer)
{
    const bool isSecond = messages_.count() == tapEnd_;
    messages_.send([=] {
        if (!isSecond || !doubleTap(place.x, place.y))
            penDown(place.x, place.y, modifiers, pointer);
    });
}

void PenInput::up(Point place)
{
    if (application->pen.penDown)
        messages_.send([place] { penUp(place.x, place.y); });
    tapEnd_ = messages_.count();
}

void PenInput::lose()
{
    if (application->pen.penDown)
        messages_.send([] { penLost(); });
}

void PenInput::press(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        down(pointOf(event.position()), modifiersOf(event.modifiers()), Pointer::Pen);
}

void PenInput::move(const QMouseEvent& event)
{
    // Its release went elsewhere, to a menu perhaps.
    if (!event.buttons().testFlag(Qt::LeftButton))
        return lose();
    if (!application->pen.penDown)
        return;
    const Point place = pointOf(event.position());
    messages_.send([place] { penMove(place.x, place.y); });
}

void PenInput::release(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        up(pointOf(event.position()));
}

void PenInput::doubleClick(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        downAgain(pointOf(event.position()), modifiersOf(event.modifiers()), Pointer::Pen);
}

void PenInput::interrupt()
{
    interrupted_ = application->pen.penDown;
}

void PenInput::follow()
{
    const PenState& pen = application->pen;
    if (interrupted_ && !messages_.isUnderWay()) {
        interrupted_ = false;
        penLost();
    }
    if (pen.penDown && !timer_.isActive())
        timer_.start();
    else if (!pen.penDown && timer_.isActive())
        timer_.stop();
}

// --- Wheels

void PenInput::wheel(const QWheelEvent& event)
{
    if (event.modifiers().testFlag(Qt::ControlModifier) || workbook == nullptr)
        return;
    const bool across = event.modifiers().testFlag(Qt::ShiftModifier);
    // Devices that know pixels tell them only while they are touched.
    if (event.phase() != Qt::NoScrollPhase && !event.pixelDelta().isNull()) {
        const QPointF pixels = event.pixelDelta();
        scrollPixels(across ? pixels.transposed() : pixels);
        return;
    }
    const QPointF notches = QPointF(event.angleDelta()) / NotchAngle;
    scrollSteps(RowsOfNotch * (across ? notches.transposed() : notches));
}

// The content goes with what moves it; the view goes the other way.
void PenInput::scrollPixels(const QPointF& distance)
{
    const GridView view = currentView();
    const auto stepOf = [](const GridAxis& axis) {
        return static_cast<qreal>(qMax(1, axis.pixels(axis.scrollFirst())));
    };
    scrollSteps({distance.x() / stepOf(view.columns), distance.y() / stepOf(view.rows)});
}

void PenInput::scrollSteps(const QPointF& steps)
{
    rest_ += steps;
    const QPointF whole(std::trunc(rest_.x()), std::trunc(rest_.y()));
    if (whole.isNull())
        return;
    rest_ -= whole;
    const int columns = -static_cast<int>(whole.x());
    const int rows = -static_cast<int>(whole.y());
    messages_.send([columns, rows] { scrollBy(columns, rows); });
}

// --- Fingers

void PenInput::touch(const QTouchEvent& event)
{
    if (workbook == nullptr)
        return;
    switch (event.type()) {
    case QEvent::TouchBegin:
        fingerDown(event);
        break;
    case QEvent::TouchUpdate:
        fingersMove(event);
        break;
    case QEvent::TouchEnd:
        fingersUp();
        break;
    default: // the desktop took the fingers
        fingers_ = Fingers::None;
        lose();
        break;
    }
}

void PenInput::fingerDown(const QTouchEvent& event)
{
    const Point place = pointOf(event.points().front().position());
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    const bool second = sinceTap_.isValid() && !sinceTap_.hasExpired(interval);
    fingers_ = Fingers::One;
    fingersAt_ = middleOf(event);
    if (second && isNear(place, lastTap_)) {
        sinceTap_.invalidate();
        downAgain(place, modifiersOf(event.modifiers()), Pointer::Finger);
        return;
    }
    sinceTap_.start();
    lastTap_ = place;
    down(place, modifiersOf(event.modifiers()), Pointer::Finger);
}

void PenInput::fingersMove(const QTouchEvent& event)
{
    const QPointF middle = middleOf(event);
    if (event.pointCount() > 1 && fingers_ == Fingers::One) {
        lose();
        fingers_ = Fingers::Scrolling;
        rest_ = {};
    } else if (event.pointCount() > 1 && fingers_ == Fingers::Scrolling) {
        scrollPixels(middle - fingersAt_);
    } else if (fingers_ == Fingers::One && application->pen.penDown) {
        const Point place = pointOf(middle);
        messages_.send([place] { penMove(place.x, place.y); });
    }
    fingersAt_ = middle;
}

void PenInput::fingersUp()
{
    if (fingers_ == Fingers::One)
        up(pointOf(fingersAt_));
    fingers_ = Fingers::None;
}

} // namespace vorn::qt
