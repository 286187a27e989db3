// How much room texts take in the machine's fonts, and which fonts it has.
//
// Units: pixels.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// A font as a machine is asked for it.
struct FontLook {
    int height = 14; // of a line
    int weight = 400;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
    std::uint8_t charset = 1;
    std::uint8_t pitchAndFamily = 34;
    std::u16string face;

    bool operator==(const FontLook&) const = default;
};

// A font that the machine has.
struct FontFamily {
    std::u16string face;
    std::uint8_t pitchAndFamily = 34;
    std::uint8_t charset = 1;
    bool scalable = true;
    std::vector<int> points; // the sizes of one that is not scalable
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    // The width of a text in one line.
    virtual int textWidth(const FontLook& font, std::u16string_view text) = 0;

    // The height of a text that is broken into lines of at most `width`, between words only.
    virtual int wrappedHeight(const FontLook& font, std::u16string_view text, int width) = 0;

    // The fonts to offer, in the machine's order.
    virtual std::vector<FontFamily> fontFamilies() = 0;
};

} // namespace vorn
