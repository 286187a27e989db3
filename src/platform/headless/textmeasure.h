// Fonts of a machine without a screen: every character is as wide as any other, so that what is
// fitted to a text is the same everywhere.
//
// A character is half as wide as its font is high, rounded up: 7 pixels for the 14 of 10 points. A
// pair of surrogates is one character. A line is as high as the font.
#pragma once

#include "platform/textmeasure.h"

namespace vorn {

class FixedTextMeasure : public TextMeasure {
public:
    int textWidth(const FontLook& font, std::u16string_view text) override;

    // Lines end at a line feed and break at blanks; a word that is wider than the line stays whole.
    int wrappedHeight(const FontLook& font, std::u16string_view text, int width) override;

    // "Tahoma", "Courier New" and "Arial", and "Fixed", which has three sizes.
    std::vector<FontFamily> fontFamilies() override;
};

} // namespace vorn
