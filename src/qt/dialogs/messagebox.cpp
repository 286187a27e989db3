#include "qt/dialogs/dialogs.h"
#include "qt/dialogs/widgets.h"
#include "qt/strings.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int LeastWidth = 180;
constexpr int MostWidth = 420; // where lines would be long to read

// A box of this program's own, and not the toolkit's: its text breaks anywhere if it has to, and
// scrolls where it is longer than the screen is high.
class MessageBox : public AskingWindow {
public:
    MessageBox(QWidget* parent, std::u16string_view caption, std::u16string_view text,
               BoxButtons buttons, BoxIcon icon);

    BoxAnswer answer() const { return answer_; }

    // Escape and the close button of the frame answer what changes nothing.
    void reject() override { finish(escape_); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLabel* makeSign(QWidget* content) const;
    void addButton(const QString& text, BoxAnswer answer);
    void addButtons(BoxButtons buttons);
    void finish(BoxAnswer answer);
    void fit(QWidget* content, const ScrollingBody& body);

    FlowRow* foot_;
    std::vector<std::pair<QPushButton*, BoxAnswer>> buttons_;
    BoxAnswer escape_ = BoxAnswer::Ok;
    BoxAnswer answer_ = BoxAnswer::Ok;
};

MessageBox::MessageBox(QWidget* parent, std::u16string_view caption, std::u16string_view text,
                       BoxButtons buttons, BoxIcon icon)
    : AskingWindow(parent), foot_(new FlowRow(this, Qt::AlignRight))
{
    setWindowTitle(titleText(caption));
    setObjectName(QStringLiteral("box"));
    auto* content = new QWidget(this);
    auto* line = new QHBoxLayout(content);
    line->setContentsMargins(Margin, Margin, Margin, Margin);
    line->setSpacing(Margin);
    if (icon == BoxIcon::Warning)
        line->addWidget(makeSign(content), 0, Qt::AlignTop);
    auto* label = new QLabel(content);
    label->setObjectName(QStringLiteral("text"));
    // A name with "<" in it is no page of a browser.
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(breakable(toQt(text)));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::NoFocus);
    line->addWidget(label, 1);
    addButtons(buttons);
    auto* body = new ScrollingBody(content, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    column->addWidget(body, 1);
    column->addWidget(foot_);
    foot_->setContentsMargins(Margin, 0, Margin, Margin);
    fit(label, *body);
}

QLabel* MessageBox::makeSign(QWidget* content) const
{
    auto* sign = new QLabel(content);
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    return sign;
}

void MessageBox::addButton(const QString& text, BoxAnswer answer)
{
    QPushButton* button = makeButton(text, this);
    connect(button, &QPushButton::clicked, this, [this, answer] { finish(answer); });
    foot_->add(button);
    buttons_.emplace_back(button, answer);
    // The last one is what Escape means: it is the one that does nothing.
    escape_ = answer;
}

void MessageBox::addButtons(BoxButtons buttons)
{
    if (buttons == BoxButtons::Ok) {
        addButton(tr("OK"), BoxAnswer::Ok);
    } else {
        addButton(tr("&Yes"), BoxAnswer::Yes);
        addButton(tr("&No"), BoxAnswer::No);
        if (buttons == BoxButtons::YesNoCancel)
            addButton(tr("Cancel"), BoxAnswer::Cancel);
    }
    buttons_.front().first->setDefault(true);
    buttons_.front().first->setFocus();
}

// The letter of a button is enough, without the Alt key.
void MessageBox::keyPressEvent(QKeyEvent* event)
{
    for (const auto& [button, answer] : buttons_) {
        const QKeySequence letter = button->shortcut();
        if (!letter.isEmpty() && letter[0].key() == event->key())
            return finish(answer);
    }
    QDialog::keyPressEvent(event);
}

void MessageBox::finish(BoxAnswer answer)
{
    answer_ = answer;
    done(0);
}

void MessageBox::fit(QWidget* content, const ScrollingBody& body)
{
    const QSize room = roomFor(parentWidget());
    const auto* label = static_cast<const QLabel*>(content);
    const QSize text = label->fontMetrics().size(0, label->text());
    const int around = body.widget()->sizeHint().width() - label->sizeHint().width();
    int width = std::max(foot_->sizeHint().width(), text.width() + around + 2 * Margin);
    width = std::clamp(width, LeastWidth, MostWidth);
    width = std::min(width, room.width());
    const int height = std::max(body.contentHeight(width), 2 * ButtonHeight);
    fitWindow(*this, {width, height + foot_->heightForWidth(width)}, room);
}

} // namespace

BoxAnswer showMessageBox(QWidget* parent, std::u16string_view caption, std::u16string_view text,
                         BoxButtons buttons, BoxIcon icon)
{
    const QPointer<MessageBox> box = new MessageBox(ownerOf(parent), caption, text, buttons, icon);
    box->exec();
    if (box.isNull())
        return buttons == BoxButtons::Ok      ? BoxAnswer::Ok
               : buttons == BoxButtons::YesNo ? BoxAnswer::No
                                              : BoxAnswer::Cancel;
    const BoxAnswer answer = box->answer();
    delete box.data();
    return answer;
}

} // namespace vorn::qt
