#include "qt/sheetwidget.h"

#include "core/workbook.h"
#include "qt/keyboard.h"
#include "qt/messages.h"
#include "shell/application.h"
#include "shell/cursor.h"
#include "shell/entry.h"
#include "shell/hittest.h"
#include "shell/windowpaint.h"

#include <QPainter>

namespace vorn::qt {

namespace {

Qt::CursorShape cursorOf(PointerShape shape)
{
    switch (shape) {
    case PointerShape::Arrow:
        break;
    case PointerShape::Cross:
        return Qt::CrossCursor;
    case PointerShape::ColumnSize:
    case PointerShape::Splitter:
        return Qt::SplitHCursor;
    case PointerShape::RowSize:
        return Qt::SplitVCursor;
    case PointerShape::Fill:
        return Qt::SizeFDiagCursor;
    case PointerShape::Text:
        return Qt::IBeamCursor;
    }
    return Qt::ArrowCursor;
}

} // namespace

SheetWidget::SheetWidget(Messages& messages, QWidget* parent)
    : QWidget(parent), messages_(messages), penInput_(messages), edit_(messages, this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setAttribute(Qt::WA_InputMethodEnabled);
    setMouseTracking(true);      // for the shape of the pointer
    setFocusPolicy(Qt::NoFocus); // see followFocus
    setMinimumSize(1, 1);
    renewPicture();
}

SheetWidget::~SheetWidget() = default;

// --- Painting

void SheetWidget::renewPicture()
{
    const qreal scale = devicePixelRatioF();
    const QSize pixels(qCeil(width() * scale), qCeil(height() * scale));
    canvas_.reset();
    image_ = QImage(pixels.expandedTo({1, 1}), QImage::Format_RGB32);
    image_.setDevicePixelRatio(scale);
    image_.fill(Qt::white);
    canvas_ = std::make_unique<QtCanvas>(image_);
    forgetPainted();
    requestRepaint();
}

void SheetWidget::requestRepaint()
{
    if (passRequested_)
        return;
    passRequested_ = true;
    QMetaObject::invokeMethod(
        this, [this] { repaintChanges(); }, Qt::QueuedConnection);
}

void SheetWidget::repaintChanges()
{
    if (!passRequested_)
        return;
    passRequested_ = false;
    paintChanges(*canvas_);
    update(canvas_->takeChanged());
    edit_.follow();
}

void SheetWidget::resizeEvent(QResizeEvent*)
{
    renewPicture();
    application->resize({0, 0, width(), height()});
}

void SheetWidget::paintEvent(QPaintEvent*)
{
    const qreal scale = devicePixelRatioF();
    if (!qFuzzyCompare(image_.devicePixelRatio(), scale))
        renewPicture();
    // What is about to be shown would be replaced at once.
    repaintChanges();
    QPainter painter(this);
    // Each pixel of the picture is one of the screen, whatever the scale: a picture without a
    // scale of its own is neither stretched nor smoothed.
    const QImage pixels(image_.constBits(), image_.width(), image_.height(), image_.bytesPerLine(),
                        image_.format());
    painter.scale(1 / scale, 1 / scale);
    painter.drawImage(0, 0, pixels);
}

// --- Following the system

void SheetWidget::follow()
{
    edit_.follow();
    followFocus();
    penInput_.follow();
}

void SheetWidget::followFocus()
{
    QWidget& wanted = editorHasFocus() ? static_cast<QWidget&>(edit_) : *this;
    if (!wanted.hasFocus())
        wanted.setFocus();
}

// --- What the user does

bool SheetWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
        if (isOnControl(static_cast<const QTouchEvent&>(*event))) {
            event->ignore(); // the toolkit then makes a mouse of the finger
            return true;
        }
        [[fallthrough]];
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        penInput_.touch(static_cast<const QTouchEvent&>(*event));
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

bool SheetWidget::isOnControl(const QTouchEvent& event) const
{
    return childAt(event.points().front().position().toPoint()) == &edit_;
}

void SheetWidget::keyPressEvent(QKeyEvent* event)
{
    sendKey(messages_, *event);
    event->accept();
}

// A menu that opens takes the pen along, and so does another window.
void SheetWidget::focusOutEvent(QFocusEvent* event)
{
    if (!messages_.isUnderWay())
        penInput_.lose();
    QWidget::focusOutEvent(event);
}

bool SheetWidget::focusNextPrevChild(bool)
{
    return false; // Tab is a key of the grid
}

void SheetWidget::inputMethodEvent(QInputMethodEvent* event)
{
    sendText(messages_, event->commitString());
    event->accept();
}

// Where whoever composes a text shows it.
QVariant SheetWidget::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImEnabled)
        return true;
    if (query != Qt::ImCursorRectangle || workbook == nullptr)
        return QWidget::inputMethodQuery(query);
    const Rect cell = inCellEditorRect();
    return QRect(cell.left, cell.top, 1, cell.height());
}

void SheetWidget::mousePressEvent(QMouseEvent* event)
{
    penInput_.press(*event);
}

void SheetWidget::mouseMoveEvent(QMouseEvent* event)
{
    penInput_.move(*event);
    showPointer(event->position());
}

void SheetWidget::showPointer(const QPointF& place)
{
    if (workbook == nullptr)
        return;
    const Qt::CursorShape shape = cursorOf(pointerShapeAt(qFloor(place.x()), qFloor(place.y())));
    if (cursor().shape() != shape)
        setCursor(shape);
}

void SheetWidget::mouseReleaseEvent(QMouseEvent* event)
{
    penInput_.release(*event);
    showPointer(event->position());
}

void SheetWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    penInput_.doubleClick(*event);
}

void SheetWidget::wheelEvent(QWheelEvent* event)
{
    penInput_.wheel(*event);
    event->accept();
}

} // namespace vorn::qt
