#include "qt/editcontrol.h"

#include "core/workbook.h"
#include "qt/colours.h"
#include "qt/fonts.h"
#include "qt/keyboard.h"
#include "qt/messages.h"
#include "qt/strings.h"
#include "shell/application.h"
#include "shell/commandstate.h"
#include "shell/entry.h"
#include "shell/look.h"
#include "shell/pointmode.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QScopedValueRollback>

#include <limits>

namespace vorn::qt {

namespace {

FormulaBar& formulaBar()
{
    return application->formulaBar;
}

} // namespace

EditControl::EditControl(Messages& messages, QWidget* parent)
    : QLineEdit(parent), messages_(messages)
{
    setFrame(false);
    setMaxLength(std::numeric_limits<int>::max());
    setAcceptDrops(false);
    setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase); // formulas are no prose
    setContextMenuPolicy(Qt::PreventContextMenu);
    // The window says who has the focus, by what the model says.
    setFocusPolicy(Qt::NoFocus);
    setVisible(false);
    font_.height = 0;
    connect(this, &QLineEdit::selectionChanged, this, &EditControl::tellSelection);
    connect(this, &QLineEdit::cursorPositionChanged, this, &EditControl::tellSelection);
}

// --- Showing the model

void EditControl::follow()
{
    if (workbook == nullptr) {
        setVisible(false);
        return;
    }
    const bool exists = application->formulaBarVisible || formulaBar().editing;
    const bool shown = exists && !formulaBar().rect.isEmpty();
    if (shown)
        followPlace();
    followLine();
    if (isHidden() == shown)
        setVisible(shown);
}

void EditControl::followPlace()
{
    const Rect& rect = formulaBar().rect;
    const QRect place(rect.left, rect.top, rect.width(), rect.height());
    if (geometry() != place)
        setGeometry(place);
    useFont(application->formulaBarVisible ? interfaceFontLook() : inCellEditorFont());
}

void EditControl::useFont(const FontLook& look)
{
    if (look == font_)
        return;
    font_ = look;
    setFont(fontOf(look));
}

void EditControl::followLine()
{
    const EditLine& line = formulaBar().line;
    if (line.version() == version_)
        return;
    version_ = line.version();
    const QScopedValueRollback guard(following_, true);
    const QString shown = toQt(line.text());
    if (text() != shown)
        setText(shown);
    setSelection(line.anchor(), line.caret() - line.anchor());
    if (!line.hasSelection())
        setCursorPosition(line.caret());
}

// --- Telling the model

void EditControl::tellSelection()
{
    if (following_ || workbook == nullptr)
        return;
    EditLine& line = formulaBar().line;
    const int caret = cursorPosition();
    int anchor = caret;
    if (hasSelectedText())
        anchor = caret == selectionStart() ? selectionEnd() : selectionStart();
    line.setSelection(anchor, caret);
    version_ = line.version();
}

void EditControl::keyPressEvent(QKeyEvent* event)
{
    sendKey(messages_, *event);
    event->accept();
}

void EditControl::keyReleaseEvent(QKeyEvent* event)
{
    event->accept();
}

bool EditControl::focusNextPrevChild(bool)
{
    return false; // Tab is a key like any other
}

// What is finished goes to the model. What is still being composed is only shown.
void EditControl::inputMethodEvent(QInputMethodEvent* event)
{
    EditLine& line = formulaBar().line;
    if (event->replacementLength() > 0) {
        const int start = qMax(0, line.caret() + event->replacementStart());
        line.setSelection(start, start + event->replacementLength());
    }
    if (!event->commitString().isEmpty())
        sendText(messages_, event->commitString());
    if (workbook == nullptr)
        return;
    if (!event->preeditString().isEmpty() && line.hasSelection())
        messages_.send([&line] {
            line.clear();
            refreshCommandState();
        });
    QInputMethodEvent composed(event->preeditString(), event->attributes());
    const QScopedValueRollback guard(following_, true);
    QLineEdit::inputMethodEvent(&composed);
    event->accept();
}

// Asks the system whether the text may be tapped; it then shows the text that is edited.
bool EditControl::mayTap()
{
    bool taken = false;
    messages_.send([&taken] { taken = tapEditor(); });
    return taken;
}

void EditControl::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() == Qt::RightButton || workbook == nullptr || !mayTap())
        return;
    if (event->button() == Qt::LeftButton)
        QLineEdit::mousePressEvent(event);
    else if (event->button() == Qt::MiddleButton)
        pasteSelected(event->position().toPoint());
}

void EditControl::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
    if (event->buttons().testFlag(Qt::LeftButton) && editorHasFocus())
        QLineEdit::mouseMoveEvent(event);
}

// With the left button only: the control would write what the others bring.
void EditControl::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() == Qt::LeftButton)
        QLineEdit::mouseReleaseEvent(event);
}

void EditControl::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() == Qt::LeftButton && editorHasFocus())
        QLineEdit::mouseDoubleClickEvent(event);
}

// What is selected anywhere on the desktop is pasted with the middle button, where there is such
// a thing.
void EditControl::pasteSelected(const QPoint& place)
{
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    if (!clipboard.supportsSelection())
        return;
    const std::u16string pasted = fromQt(clipboard.text(QClipboard::Selection));
    const int caret = cursorPositionAt(place);
    messages_.send([&pasted, caret] {
        formulaBar().line.setCaret(caret);
        formulaBar().line.paste(pasted);
        refreshCommandState();
    });
}

// The control selects, or does not, as the focus comes and goes; here that is not its business.
void EditControl::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(following_, true);
    QLineEdit::focusInEvent(event);
    version_ = formulaBar().line.version() - 1;
    followLine();
}

void EditControl::focusOutEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(following_, true);
    QLineEdit::focusOutEvent(event);
    version_ = formulaBar().line.version() - 1;
    followLine();
}

void EditControl::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    // As thin as the screen can, at any scale.
    const qreal pixel = 1 / devicePixelRatioF();
    painter.setPen(QPen(colourOf(ColourFaceShadow), 0));
    painter.drawRect(QRectF(rect()).adjusted(0, 0, -pixel, -pixel));
}

} // namespace vorn::qt
