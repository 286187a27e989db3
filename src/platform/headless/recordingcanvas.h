// A canvas that writes down what is painted on it, an operation a line, for tests and for counting.
//
//   fill 0,0-10,20 c0c0c0            the colour in hex as red, green, blue; - for none
//   pattern 0,0-10,20 c0c0c0 ffffff
//   invert 0,0-10,20
//   polyline 0,0 10,0 10,5 000000 w1
//   polygon 0,0 10,0 10,5 000000 w1 in ffffff
//   rectangle 0,0-10,20 000000 w1 in -
//   ellipse 0,0-10,20 000000 w1 in -
//   text 0,0-10,20 "abc" Tahoma 14 000000 left bottom
//   icon 0,0-18,17 110
//   clip 0,0-10,20
//   exclude 0,0-10,20
//   pop
//   scroll 0,0-10,20 by 0,-17
//
// Behind the height of a text's font stand bold, italic, underline and strikeout, at its end wrap;
// an icon may be disabled. A character outside of ASCII is a backslash and its number.
#pragma once

#include "platform/canvas.h"

#include <string>
#include <vector>

namespace vorn {

class RecordingCanvas : public Canvas {
public:
    std::vector<std::string> operations;

    // Can it move what was painted?
    bool scrolls = true;

    // Those that begin with `prefix`: all fills, all texts.
    std::vector<std::string> having(std::string_view prefix) const;
    int count(std::string_view prefix) const { return static_cast<int>(having(prefix).size()); }

    // Is every clip taken back?
    bool isBalanced() const { return clips_ == 0; }

    void fill(const Rect& area, Colour colour) override;
    void fillPattern(const Rect& area, Colour colour, Colour other) override;
    void invert(const Rect& area) override;
    void polyline(std::span<const Point> points, Stroke stroke) override;
    void polygon(std::span<const Point> points, Stroke stroke, Colour inside) override;
    void rectangle(const Rect& area, Stroke stroke, Colour inside) override;
    void ellipse(const Rect& area, Stroke stroke, Colour inside) override;
    void text(const Rect& area, std::u16string_view text, const FontLook& font, Colour colour,
              TextPlace place) override;
    void icon(const Rect& area, int icon, bool enabled) override;
    void pushClip(const Rect& area) override;
    void pushExclude(const Rect& area) override;
    void popClip() override;
    bool scroll(const Rect& area, int dx, int dy) override;

private:
    int clips_ = 0;
};

} // namespace vorn
