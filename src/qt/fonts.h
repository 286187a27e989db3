// The system's fonts in the toolkit's: a font is asked for by the height of its line in pixels.
#pragma once

#include "platform/textmeasure.h"

#include <QFont>

namespace vorn::qt {

// The font whose line is as high as the look says, at a scale of 1. A face that the machine does
// not have is replaced by a legible one of the same kind.
QFont fontOf(const FontLook& look);

// The font of everything around the grid.
FontLook interfaceFontLook();

// Measures as QtCanvas paints.
class QtTextMeasure : public TextMeasure {
public:
    int textWidth(const FontLook& font, std::u16string_view text) override;
    int wrappedHeight(const FontLook& font, std::u16string_view text, int width) override;

    // What documents use first, even where another face stands for it, then the machine's by name.
    std::vector<FontFamily> fontFamilies() override;
};

} // namespace vorn::qt
