#include "qt/windowlook.h"

#include "qt/fonts.h"
#include "shell/look.h"

#include <QApplication>
#include <QPalette>

namespace vorn::qt {

namespace {

QColor colourOf(Colour colour)
{
    return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour >> 16 & 0xFF)};
}

} // namespace

void useWindowLook()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QPalette palette(colourOf(ColourFace));
    palette.setColor(QPalette::WindowText, colourOf(ColourFaceText));
    palette.setColor(QPalette::ButtonText, colourOf(ColourFaceText));
    palette.setColor(QPalette::Text, colourOf(ColourBlack));
    palette.setColor(QPalette::Base, colourOf(ColourWhite));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, colourOf(ColourFaceTextDisabled));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xC4));
    palette.setColor(QPalette::HighlightedText, colourOf(ColourWhite));
    QApplication::setPalette(palette);
    QApplication::setFont(fontOf(interfaceFontLook()));
}

} // namespace vorn::qt
