#include "qt/dialogs/textviews.h"

#include "qt/dialogs/widgets.h"
#include "qt/strings.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>

namespace vorn::qt {

namespace {

// --- Texts of several lines

constexpr std::u16string_view LongLineEnd = u"\r\n";

QString withShortLineEnds(std::u16string_view text)
{
    return toQt(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

// The place of a character of the model in the widget: each long line end before it is one less.
int placeInWidget(std::u16string_view text, int place)
{
    int shorter = 0;
    for (std::size_t end = text.find(LongLineEnd);
         end != std::u16string_view::npos && static_cast<int>(end) < place;
         end = text.find(LongLineEnd, end + LongLineEnd.size()))
        ++shorter;
    return place - shorter;
}

int placeInModel(std::u16string_view text, int place)
{
    for (std::size_t end = text.find(LongLineEnd);
         end != std::u16string_view::npos && static_cast<int>(end) < place;
         end = text.find(LongLineEnd, end + LongLineEnd.size()))
        ++place;
    return place;
}

// As it was typed: toPlainText would turn blanks that do not break into others.
QString typedText(const QPlainTextEdit& edit)
{
    QTextCursor all(edit.document());
    all.select(QTextCursor::Document);
    return all.selectedText()
        .replace(QChar::ParagraphSeparator, u'\n')
        .replace(QChar::LineSeparator, u'\n');
}

} // namespace

LabelView::LabelView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new QLabel(parent))
{
    auto* label = static_cast<QLabel*>(widget());
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::NoFocus);
}

void LabelView::display()
{
    const bool ownText = !control().text.empty() || control().form->label.empty();
    static_cast<QLabel*>(widget())->setText(
        breakable(toQt(ownText ? std::u16string_view(control().text) : control().form->label)));
}

// --- One line

void LineOfText::watch(QLineEdit* line)
{
    line_ = line;
    if (control().form->textMax > 0)
        line->setMaxLength(control().form->textMax);
    QObject::connect(line, &QLineEdit::textEdited, line, [this](const QString& text) {
        type(fromQt(text));
        tellCaret();
    });
    QObject::connect(line, &QLineEdit::cursorPositionChanged, line, [this] { tellCaret(); });
    QObject::connect(line, &QLineEdit::selectionChanged, line, [this] { tellCaret(); });
}

// While something is typed, the model puts the caret behind the text; the user does not want it
// there.
void LineOfText::showLine()
{
    const QString text = toQt(control().text);
    const CaretRange caret = control().caret;
    const bool atEnd = caret.start == caret.end && caret.end == text.size();
    if (line_->text() != text)
        line_->setText(text);
    else if (isTyping() && atEnd)
        return;
    line_->setCursorPosition(caret.start);
    if (caret.start != caret.end)
        line_->setSelection(caret.start, caret.end - caret.start);
}

void LineOfText::selectText()
{
    const CaretRange caret = control().caret;
    if (caret.start == caret.end && caret.end == static_cast<int>(control().text.size()))
        line_->selectAll();
}

// Before the text of the widget is that of the model, its places mean nothing there.
void LineOfText::tellCaret()
{
    if (isShowing() || isTyping() || line_->text() != toQt(control().text))
        return;
    const int place = line_->cursorPosition();
    CaretRange caret = {place, place};
    if (line_->hasSelectedText())
        caret = {line_->selectionStart(), line_->selectionEnd()};
    dialog().moveCaret(id(), caret);
}

EditView::EditView(DialogModel& dialog, const Control& control, QWidget* parent)
    : LineOfText(dialog, control, new QLineEdit(parent))
{
    widget()->setMinimumHeight(FieldHeight);
    widget()->setMinimumWidth(FieldWidth);
    watch(static_cast<QLineEdit*>(widget()));
}

// --- Several lines

TextAreaView::TextAreaView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new QPlainTextEdit(parent))
{
    edit()->setMinimumHeight(ListHeight);
    edit()->setTabChangesFocus(true);
    QObject::connect(edit(), &QPlainTextEdit::textChanged, edit(), [this] {
        if (isShowing())
            return;
        type(fromQt(typedText(*edit())));
        tellCaret();
    });
    QObject::connect(edit(), &QPlainTextEdit::cursorPositionChanged, edit(),
                     [this] { tellCaret(); });
    QObject::connect(edit(), &QPlainTextEdit::selectionChanged, edit(), [this] { tellCaret(); });
}

QPlainTextEdit* TextAreaView::edit() const
{
    return static_cast<QPlainTextEdit*>(widget());
}

void TextAreaView::display()
{
    const QString text = withShortLineEnds(control().text);
    const CaretRange caret = control().caret;
    const bool atEnd =
        caret.start == caret.end && caret.end == static_cast<int>(control().text.size());
    if (typedText(*edit()) != text)
        edit()->setPlainText(text);
    else if (isTyping() && atEnd)
        return;
    showCaret();
}

void TextAreaView::showCaret()
{
    QTextCursor cursor = edit()->textCursor();
    cursor.setPosition(placeInWidget(control().text, control().caret.start));
    cursor.setPosition(placeInWidget(control().text, control().caret.end), QTextCursor::KeepAnchor);
    edit()->setTextCursor(cursor);
}

void TextAreaView::tellCaret()
{
    if (isShowing() || isTyping() || typedText(*edit()) != withShortLineEnds(control().text))
        return;
    const QTextCursor cursor = edit()->textCursor();
    dialog().moveCaret(id(), {placeInModel(control().text, cursor.selectionStart()),
                              placeInModel(control().text, cursor.selectionEnd())});
}

} // namespace vorn::qt
