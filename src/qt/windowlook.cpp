#include "qt/windowlook.h"

#include "qt/colours.h"
#include "qt/fonts.h"
#include "shell/look.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace vorn::qt {

namespace {

constexpr Colour ColourHighlight = rgb(0x2F, 0x6F, 0xC4);

constexpr int SmallWidth = 400; // of a window

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
        case PM_ToolBarSeparatorExtent:
            return 5;
        default:
            break;
        }
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    // The line below the menu bar is drawn piece by piece, and has gaps where the screen's scale is
    // no whole number.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        QProxyStyle::drawControl(element, option, painter, widget);
        const bool plain = element == CE_MenuBarEmptyArea ||
                           (element == CE_MenuBarItem && !option->state.testFlag(State_Selected));
        if (plain) {
            const QRectF area = option->rect;
            const QRectF line(area.left(), area.bottom() - 1.5, area.width() + 1, 2.5);
            painter->fillRect(line, option->palette.window());
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
