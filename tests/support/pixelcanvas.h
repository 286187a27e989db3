// A canvas that really paints, a pixel for a pixel of the client area, for tests that compare what
// two ways of painting end in. Texts are rows of boxes, as wide as FixedTextMeasure measures their
// characters, and each character has a grain of its own: other texts, fonts, colours and places
// give other pixels, and a text that is cut is the same as far as it is seen.
#pragma once

#include "platform/canvas.h"

#include <string>
#include <vector>

namespace vorn {

class PixelCanvas : public Canvas {
public:
    // What nobody painted yet stays this colour, which no painting has.
    static constexpr Colour Unpainted = NoColour;

    PixelCanvas(int width, int height);

    // Can it move what was painted?
    bool scrolls = true;

    int width() const { return width_; }
    int height() const { return height_; }
    Colour at(int x, int y) const;

    // Is every clip taken back?
    bool isBalanced() const { return clips_.size() == 1; }

    // How many pixels were written, again or for the first time.
    long painted() const { return painted_; }

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
    struct Region {
        Rect bounds;
        std::vector<Rect> holes;

        bool contains(int x, int y) const;
    };

    template <typename ColourAt>
    void paint(const Rect& area, ColourAt colourAt);
    void segment(Point from, Point to, Stroke stroke);
    void characters(const Rect& line, const Rect& area, std::u16string_view text,
                    const FontLook& font, Colour colour);

    int width_;
    int height_;
    std::vector<Colour> pixels_;
    std::vector<Region> clips_;
    long painted_ = 0;
};

// Empty if both show the same within `area`, else the first pixel that differs, row by row, with
// both its colours: "12,34: c0c0c0 and ffffff, 7 differ". Canvases of other sizes differ.
std::string difference(const PixelCanvas& a, const PixelCanvas& b, const Rect& area);
std::string difference(const PixelCanvas& a, const PixelCanvas& b);

} // namespace vorn
