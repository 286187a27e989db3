// The canvas of the window: a picture that is painted on again and again. It remembers which part
// of it was painted since it was last asked, so that no more than that goes to the screen.
//
// Units:  the system's pixels; one of them is `scale` pixels of the picture, which need not be a
//         whole number. An edge lies on the nearest pixel of the picture, whatever it is an edge
//         of: neighbours touch, and what is inverted twice is as it was.
// Shape:  the picture is RGB32 or ARGB32_Premultiplied. Copies of it that others hold stay as they
//         are when it is painted on.
#pragma once

#include "platform/canvas.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <vector>

namespace vorn::qt {

class Typeface;
struct TextLine;

class QtCanvas : public Canvas {
public:
    // Borrows the picture, which has to have the scale as its device pixel ratio and keeps its size
    // as long as the canvas lives.
    explicit QtCanvas(QImage& image);
    ~QtCanvas() override;

    // What was painted since the last call, in the system's pixels; rather a little more than that
    // than many small parts.
    QRegion takeChanged();

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
    // From the system's pixels to those of the picture.
    int edge(int position) const;
    int squareAt(int position) const;
    QRect onPicture(const Rect& area) const;
    QPointF middleOf(Point point) const;

    // The picture to write to, pixel by pixel.
    QImage& pixels();

    // To draw within the clip and `limit`, where nothing but `touched` will be drawn; null if
    // none of it would be seen.
    QPainter* painterFor(const QRect& touched, const QRect* limit = nullptr);

    void stopDrawing();
    void touch(const QRect& touched);

    template <typename PaintRow>
    void paintRows(const Rect& area, PaintRow paintRow);

    void drawLines(const Rect& area, std::span<const TextLine> lines, Typeface& typeface,
                   Colour colour, TextPlace place);
    void drawSlanted(std::span<const Point> points, Stroke stroke);

    QImage& image_;
    double scale_;
    QImage pixels_; // the same memory, without a scale
    QPainter painter_;
    QRegion painterClip_;        // what the painter is clipped to; empty for not at all
    std::vector<QRegion> clips_; // the one in force is the last; never empty
    std::vector<QRect> changed_; // on the picture
};

} // namespace vorn::qt
