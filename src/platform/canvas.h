// What the window, its pictures and later the charts are painted on.
//
// Units:  pixels of the client area before any scale of the screen: a canvas may have several of
//         its own for one of these, and then draws texts and icons finer. Fills, inversions and
//         lines end exactly where the numbers say; nothing is blurred.
// Shape:  a rectangle's right and bottom are outside of it; an empty one paints nothing. All that
//         is painted is cut to the clip in force.
// Errors: none; a canvas that cannot paint paints nothing.
#pragma once

#include "platform/geometry.h"
#include "platform/textmeasure.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vorn {

using Colour = std::uint32_t; // 0x00BBGGRR, as palettes hold it

constexpr Colour rgb(unsigned red, unsigned green, unsigned blue)
{
    return red | green << 8 | blue << 16;
}

constexpr Colour ColourBlack = rgb(0, 0, 0);
constexpr Colour ColourWhite = rgb(255, 255, 255);
constexpr Colour NoColour = 0xFF000000; // where nothing is to be painted

// A line around a shape, or through points.
struct Stroke {
    Colour colour = ColourBlack;
    int width = 1;
};

enum class TextAcross { Left, Center, Right };
enum class TextDown { Top, Middle, Bottom };

// How a text stands in its rectangle. What does not fit is cut off. A wrapped text is broken into
// lines as TextMeasure::wrappedHeight breaks it.
struct TextPlace {
    TextAcross across = TextAcross::Left;
    TextDown down = TextDown::Bottom;
    bool wrap = false;
};

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void fill(const Rect& area, Colour colour) = 0;

    // The finest chessboard of two colours, the same for every pixel of the client area wherever
    // it is begun.
    virtual void fillPattern(const Rect& area, Colour colour, Colour other) = 0;

    // Turns each colour into its opposite; a second time brings all back.
    virtual void invert(const Rect& area) = 0;

    // Through all points, the last included; straight lines along an axis are as sharp as fills.
    virtual void polyline(std::span<const Point> points, Stroke stroke) = 0;

    // Shapes with a border and an inside, either of which may be NoColour.
    virtual void polygon(std::span<const Point> points, Stroke stroke, Colour inside) = 0;
    virtual void rectangle(const Rect& area, Stroke stroke, Colour inside) = 0;
    virtual void ellipse(const Rect& area, Stroke stroke, Colour inside) = 0;

    // `&` is no mark, and what lies behind the text stays.
    virtual void text(const Rect& area, std::u16string_view text, const FontLook& font,
                      Colour colour, TextPlace place) = 0;

    // One of the system's icons (resources/icons.h), as large as fits in the middle of the area.
    virtual void icon(const Rect& area, int icon, bool enabled) = 0;

    // --- The clip: what was in force before comes back with popClip.
    virtual void pushClip(const Rect& area) = 0;    // only there, within the clip in force
    virtual void pushExclude(const Rect& area) = 0; // everywhere else, within the clip in force
    virtual void popClip() = 0;

    // Moves what is seen in `area` and lies inside of it afterwards. What comes into view is as it
    // was and has to be painted. False, with nothing moved, if the canvas cannot: then all of the
    // area has to be painted.
    virtual bool scroll(const Rect& area, int dx, int dy) = 0;
};

enum class ClipKind { Only, Exclude };

// A clip for as long as it lives.
class Clip {
public:
    Clip(Canvas& canvas, const Rect& area, ClipKind kind = ClipKind::Only) : canvas_(canvas)
    {
        if (kind == ClipKind::Only)
            canvas.pushClip(area);
        else
            canvas.pushExclude(area);
    }
    ~Clip() { canvas_.popClip(); }
    Clip(const Clip&) = delete;
    Clip& operator=(const Clip&) = delete;

private:
    Canvas& canvas_;
};

} // namespace vorn
