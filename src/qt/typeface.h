// A font made ready to measure and to draw: which of the machine's fonts stands for a look, how
// large it has to be, and a table of its letters, so that a text of plain letters needs no shaping.
//
// Units:  pixels at a scale of 1, with fractions. Widths are those of the font's design at its
// size,
//         never rounded letter by letter, so that a text is as wide at every scale of the screen.
// Shape:  one for each look, kept as long as the looks are few; typefaceOf may free what it has
//         given before.
#pragma once

#include "platform/textmeasure.h"

#include <QFont>
#include <QRawFont>

#include <optional>
#include <string_view>
#include <vector>

namespace vorn::qt {

// The face that stands for one that a document asks for: itself where the machine has it.
QString familyFor(std::u16string_view face, std::uint8_t pitchAndFamily);

// A letter of a font; 0 is the glyph of what a font does not have.
struct Letter {
    std::uint32_t glyph = 0;
    double advance = 0;
};

class Typeface {
public:
    explicit Typeface(const FontLook& look);

    // As the toolkit's own widgets are given it, with all that the look says.
    const QFont& font() const { return font_; }

    // Without the lines through or under it.
    const QFont& plainFont() const { return plain_; }

    bool underline() const { return font_.underline(); }
    bool strikeout() const { return font_.strikeOut(); }
    int lineHeight() const { return lineHeight_; }
    double baseline() const { return baseline_; } // from the top of a line

    // Does every letter stand for itself, one after the other? All others have to be shaped.
    bool isPlain(std::u16string_view text);

    // Of a plain text.
    Letter letter(char16_t unit) { return letters_[unit]; }
    double plainWidth(std::u16string_view text);

    // The same font for a screen of that scale.
    const QRawFont& at(double scale);

private:
    bool loadLetter(char16_t unit);

    QFont font_;
    QFont plain_;
    QRawFont raw_;
    QRawFont scaled_;
    double scale_ = 1;
    int lineHeight_;
    double baseline_ = 0;
    std::vector<Letter> letters_;
    std::vector<char> states_; // of the letters: asked for yet, and what was found
};

Typeface& typefaceOf(const FontLook& look);

} // namespace vorn::qt
