#include "qt/dialogs/widgets.h"

#include "qt/strings.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
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

std::vector<std::vector<QWidget*>> FlowRow::linesFor(int width) const
{
    std::vector<std::vector<QWidget*>> lines;
    int used = 0;
    for (QWidget* item : items_) {
        const int itemWidth = item->sizeHint().expandedTo(item->minimumSize()).width();
        if (lines.empty() || used + Gap + itemWidth > width) {
            lines.emplace_back();
            used = itemWidth;
        } else {
            used += Gap + itemWidth;
        }
        lines.back().push_back(item);
    }
    return lines;
}

namespace {

int lineHeight(const std::vector<QWidget*>& line)
{
    int height = 0;
    for (const QWidget* item : line)
        height = std::max(height, item->sizeHint().expandedTo(item->minimumSize()).height());
    return height;
}

int lineWidth(const std::vector<QWidget*>& line)
{
    int width = -Gap;
    for (const QWidget* item : line)
        width += Gap + item->sizeHint().expandedTo(item->minimumSize()).width();
    return std::max(width, 0);
}

} // namespace

int FlowRow::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    int height = -Gap;
    for (const auto& line : linesFor(width - margins.left() - margins.right()))
        height += Gap + lineHeight(line);
    return std::max(height, 0) + margins.top() + margins.bottom();
}

QSize FlowRow::sizeHint() const
{
    return QSize(lineWidth(items_), lineHeight(items_)).grownBy(contentsMargins());
}

QSize FlowRow::minimumSizeHint() const
{
    int width = 0;
    for (QWidget* item : items_)
        width = std::max(width, lineWidth({item}));
    return QSize(width, lineHeight(items_)).grownBy(contentsMargins());
}

void FlowRow::place()
{
    const QRect area = contentsRect();
    int top = area.top();
    for (const auto& line : linesFor(area.width())) {
        const int height = lineHeight(line);
        const int spare = std::max(area.width() - lineWidth(line), 0);
        int left = area.left() + (side_ == Qt::AlignRight ? spare : 0);
        for (QWidget* item : line) {
            const int itemWidth = std::min(lineWidth({item}), area.width());
            item->setGeometry(item == lead_ ? area.left() : left, top, itemWidth, height);
            left += itemWidth + Gap;
        }
        top += height + Gap;
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
