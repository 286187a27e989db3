#include "qt/dialogs/widgets.h"

#include "qt/strings.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int WordMax = 20; // characters without a place to break

constexpr QChar ZeroWidthSpace(0x200B);

} // namespace

QString captionText(std::u16string_view text)
{
    return toQt(text).replace(u'&', QStringLiteral("&&"));
}

QString titleText(std::u16string_view text)
{
    if (text.empty())
        return QStringLiteral("Vorn");
    return toQt(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString breakable(const QString& text)
{
    QString result;
    int word = 0;
    for (const QChar unit : text) {
        if (word >= WordMax && !unit.isLowSurrogate()) {
            result += ZeroWidthSpace;
            word = 0;
        }
        word = unit.isSpace() ? 0 : word + 1;
        result += unit;
    }
    return result;
}

QPushButton* makeButton(const QString& text, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setAutoDefault(false);
    button->setMinimumSize(ButtonWidth, ButtonHeight);
    return button;
}

void AskingWindow::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    if (frameGeometry() != geometry())
        return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

// --- Rows that wrap

FlowRow::FlowRow(QWidget* parent, Qt::Alignment side) : QWidget(parent), side_(side)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void FlowRow::add(QWidget* widget)
{
    widget->setParent(this);
    items_.push_back(widget);
    updateGeometry();
}

void FlowRow::addLead(QWidget* widget)
{
    widget->setParent(this);
    items_.insert(items_.begin(), widget);
    lead_ = widget;
    updateGeometry();
}

QSize FlowRow::sizeOf(const QWidget& item, Width width)
{
    QSize size = item.sizeHint().expandedTo(item.minimumSize());
    const auto* button = qobject_cast<const QPushButton*>(&item);
    if (width == Narrow && button != nullptr)
        size.setWidth(std::max(
            button->minimumWidth(),
            button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + 2 * Margin));
    return size;
}

QSize FlowRow::sizeOf(const Line& line)
{
    QSize size(-Gap, 0);
    for (const Placed& item : line)
        size = {size.width() + Gap + item.size.width(),
                std::max(size.height(), item.size.height())};
    return size.expandedTo({0, 0});
}

std::vector<FlowRow::Line> FlowRow::breakLines(int width, Width items) const
{
    std::vector<Line> lines;
    for (QWidget* item : items_) {
        const QSize size = sizeOf(*item, items);
        if (lines.empty() || sizeOf(lines.back()).width() + Gap + size.width() > width)
            lines.emplace_back();
        lines.back().push_back({item, size});
    }
    return lines;
}

std::vector<FlowRow::Line> FlowRow::linesFor(int width) const
{
    std::vector<Line> wanted = breakLines(width, Wanted);
    std::vector<Line> narrow = breakLines(width, Narrow);
    return narrow.size() < wanted.size() ? narrow : wanted;
}

int FlowRow::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    int height = -Gap;
    for (const Line& line : linesFor(width - margins.left() - margins.right()))
        height += Gap + sizeOf(line).height();
    return std::max(height, 0) + margins.top() + margins.bottom();
}

QSize FlowRow::sizeHint() const
{
    Line all;
    for (QWidget* item : items_)
        all.push_back({item, sizeOf(*item, Wanted)});
    return sizeOf(all).grownBy(contentsMargins());
}

QSize FlowRow::minimumSizeHint() const
{
    QSize least(0, 0);
    for (const QWidget* item : items_)
        least = least.expandedTo(sizeOf(*item, Narrow));
    return least.grownBy(contentsMargins());
}

void FlowRow::place()
{
    const QRect area = contentsRect();
    int top = area.top();
    for (const Line& line : linesFor(area.width())) {
        const QSize size = sizeOf(line);
        const int spare = std::max(area.width() - size.width(), 0);
        int left = area.left() + (side_ == Qt::AlignRight ? spare : 0);
        for (const Placed& item : line) {
            item.widget->setGeometry(item.widget == lead_ ? area.left() : left, top,
                                     std::min(item.size.width(), area.width()), size.height());
            left += item.size.width() + Gap;
        }
        top += size.height() + Gap;
    }
}

void FlowRow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

bool FlowRow::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

// --- A body that scrolls

ScrollingBody::ScrollingBody(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidget(content);
    setFocusPolicy(Qt::NoFocus);
    // The content stands on the window, or on the page of its tab, as if it did not scroll.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

int ScrollingBody::contentHeight(int width) const
{
    const QLayout* layout = widget()->layout();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                       : layout->totalSizeHint().height();
}

QSize ScrollingBody::sizeHint() const
{
    return widget()->sizeHint();
}

QSize ScrollingBody::minimumSizeHint() const
{
    return {widget()->minimumSizeHint().width(),
            std::min(widget()->minimumSizeHint().height(), ButtonHeight)};
}

// Lists shrink before anything has to scroll.
int ScrollingBody::leastHeight(int width) const
{
    const QLayout* layout = widget()->layout();
    return layout->hasHeightForWidth() ? layout->totalMinimumHeightForWidth(width)
                                       : layout->totalMinimumSize().height();
}

void ScrollingBody::place()
{
    const QSize room = maximumViewportSize();
    int width = std::max(room.width(), widget()->minimumSizeHint().width());
    if (leastHeight(width) > room.height())
        width = std::max(room.width() - verticalScrollBar()->sizeHint().width(),
                         widget()->minimumSizeHint().width());
    widget()->resize(width, std::max(leastHeight(width), room.height()));
}

void ScrollingBody::resizeEvent(QResizeEvent* event)
{
    place();
    QScrollArea::resizeEvent(event);
}

bool ScrollingBody::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        place();
    return QScrollArea::eventFilter(watched, event);
}

// --- Windows

QWidget* ownerOf(QWidget* parent)
{
    QWidget* asking = QApplication::activeModalWidget();
    return asking != nullptr ? asking : parent;
}

QSize roomFor(const QWidget* owner)
{
    const QScreen* screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
    return screen->availableSize();
}

void fitWindow(QDialog& window, QSize wanted, QSize room)
{
    window.setMaximumSize(room);
    window.setMinimumSize(window.minimumSizeHint().boundedTo(room));
    window.resize(wanted.boundedTo(room));
}

} // namespace vorn::qt
