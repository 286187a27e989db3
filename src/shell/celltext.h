// The texts of cells: what a value reads as, in which font, and where it stands.
//
// Units:  pixels.
// Shape:  made for one pass of painting over cells of one sheet: it keeps the look of the last font
//         and what was measured last.
#pragma once

#include "numfmt/render.h"
#include "platform/canvas.h"

namespace vorn {

class Sheet;
struct CellStyle;

// How far to the right a value may reach.
enum class TextReach {
    Cell,      // it stays in its own
    Overflow,  // up to the next cell that has a value
    Selection, // over the empty cells behind it that are centered with it
};
TextReach textReach(const CellValue& value, const CellStyle& style);

class CellTextPainter : private TextMeter {
public:
    // What lies outside of `seen` is neither rendered nor painted.
    CellTextPainter(Canvas& canvas, const Sheet& sheet, const Rect& seen);

    // The value of a cell (a formula's result, not the formula) at its place, up to the `limit`
    // that its reach gives it.
    void paint(const CellValue& value, const CellStyle& style, const Rect& cell, int limit);

private:
    int width(std::u16string_view text) override;
    bool fits(std::u16string_view text, int room);
    void useFont(int font);
    std::u16string_view textOf(const CellValue& value, const CellStyle& style, int room);
    std::u16string_view repeated(std::u16string_view text, int room);
    void paintAcross(std::u16string_view text, int alignment, const Rect& own, const Rect& all,
                     TextPlace place);
    void put(const Rect& area, std::u16string_view text, TextAcross across, TextPlace place);

    Canvas& canvas_;
    const Sheet& sheet_;
    const Rect seen_;
    int font_ = -1;
    FontLook look_;
    Colour colour_ = ColourBlack;
    std::u16string rendered_;
    std::u16string repeated_;
    std::u16string measured_;
    int measuredWidth_ = -1; // of `measured_` in the font; -1 for nothing measured
};

} // namespace vorn
