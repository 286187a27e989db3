#include "qt/windowlook.h"

#include "qt/colours.h"
#include "qt/fonts.h"
#include "shell/look.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace vorn::qt {

namespace {

constexpr Colour ColourHighlight = rgb(0x2F, 0x6F, 0xC4);

constexpr Colour ColourHighlightUnfocused = rgb(0xD0, 0xD0, 0xD0);

constexpr int SmallWidth = 400;  // of a window
constexpr int SmallTabSpace = 8; // left and right of a tab's text together
constexpr int FocusInset = 3;    // of the frame inside a button

// The toolkit's own style draws a button with the keys as it draws the default one.
void drawButtonFocus(const QStyleOption& option, QPainter& painter)
{
    constexpr auto Wanted = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    if ((option.state & Wanted) != Wanted)
        return;
    painter.save();
    painter.setPen(QPen(option.palette.color(QPalette::Highlight), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(
        option.rect.adjusted(FocusInset, FocusInset, -FocusInset - 1, -FocusInset - 1));
    painter.restore();
}

// A list may have no entry on which the keys stand, so that its frame has to show where they go.
void drawListFocus(const QStyleOption& option, QPainter& painter)
{
    if (!option.state.testFlag(QStyle::State_HasFocus))
        return;
    painter.save();
    painter.setPen(option.palette.color(QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

// The text in a folded list keeps its beginning and its end where there is no room for all of it.
QStyleOptionComboBox shortened(const QStyleOptionComboBox& box, int room)
{
    const int icon = box.currentIcon.isNull() ? 0 : box.iconSize.width() + 4;
    QStyleOptionComboBox shorter = box;
    shorter.currentText =
        box.fontMetrics.elidedText(box.currentText, Qt::ElideMiddle, room - icon - 2);
    return shorter;
}

bool isList(const QWidget* widget)
{
    return qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

// An entry of a list that does not have the keys: what is chosen there is grey.
QStyleOptionViewItem unfocused(const QStyleOptionViewItem& entry)
{
    QStyleOptionViewItem quiet = entry;
    quiet.palette.setColor(QPalette::Highlight, colourOf(ColourHighlightUnfocused));
    quiet.palette.setColor(QPalette::HighlightedText, colourOf(ColourBlack));
    return quiet;
}

// The toolkit's own style, with bars as narrow as a small screen wants them: all of the menu bar
// fits into the width that the window has at first.
class WindowStyle : public QProxyStyle {
public:
    WindowStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override
    {
        switch (metric) {
        case PM_MenuBarItemSpacing:
            if (widget != nullptr && widget->width() > SmallWidth)
                break;
            return 0;
        case PM_MenuBarHMargin:
        case PM_MenuBarPanelWidth:
        case PM_ToolBarItemMargin:
            return 0;
        case PM_ToolBarFrameWidth:
            return 1;
        case PM_TabBarTabHSpace:
            if (widget == nullptr || widget->window()->width() > SmallWidth)
                break;
            return SmallTabSpace;
        case PM_ToolBarSeparatorExtent:
            return 5;
        default:
            break;
        }
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        const auto* entry = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        if (element == CE_ItemViewItem && entry != nullptr && isList(widget) &&
            !widget->hasFocus()) {
            const QStyleOptionViewItem quiet = unfocused(*entry);
            QProxyStyle::drawControl(element, &quiet, painter, widget);
            return;
        }
        const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (element == CE_ComboBoxLabel && box != nullptr && !box->editable) {
            const QRect room = subControlRect(CC_ComboBox, box, SC_ComboBoxEditField, widget);
            const QStyleOptionComboBox shorter = shortened(*box, room.width());
            QProxyStyle::drawControl(element, &shorter, painter, widget);
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
        if (element == CE_PushButton)
            drawButtonFocus(*option, *painter);
        else if (element == CE_ShapedFrame && isList(widget))
            drawListFocus(*option, *painter);
        else
            smoothMenuLine(element, *option, *painter);
    }

private:
    // The line below the menu bar is drawn piece by piece, and has gaps where the screen's scale is
    // no whole number.
    static void smoothMenuLine(ControlElement element, const QStyleOption& option,
                               QPainter& painter)
    {
        const bool plain = element == CE_MenuBarEmptyArea ||
                           (element == CE_MenuBarItem && !option.state.testFlag(State_Selected));
        if (plain) {
            const QRectF area = option.rect;
            const QRectF line(area.left(), area.bottom() - 1.5, area.width() + 1, 2.5);
            painter.fillRect(line, option.palette.window());
        }
    }
};

} // namespace

void useWindowLook()
{
    QApplication::setStyle(new WindowStyle); // which the program owns
    QPalette palette(colourOf(ColourFace));
    palette.setColor(QPalette::WindowText, colourOf(ColourFaceText));
    palette.setColor(QPalette::ButtonText, colourOf(ColourFaceText));
    palette.setColor(QPalette::Text, colourOf(ColourBlack));
    palette.setColor(QPalette::Base, colourOf(ColourWhite));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, colourOf(ColourFaceTextDisabled));
    palette.setColor(QPalette::Highlight, colourOf(ColourHighlight));
    palette.setColor(QPalette::HighlightedText, colourOf(ColourWhite));
    QApplication::setPalette(palette);
    QApplication::setFont(fontOf(interfaceFontLook()));
}

} // namespace vorn::qt
