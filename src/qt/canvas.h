// The canvas of the window: a picture that is painted on again and again. It remembers which part
// of it was painted since it was last asked, so that no more than that goes to the screen.
//
// Units:  the system's pixels; one of them is `scale` pixels of the picture, which need not be a
//         whole number.
#pragma once

#include "platform/canvas.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <vector>

namespace vorn::qt {

class QtCanvas : public Canvas {
public:
    // Borrows the picture, which has to have the scale as its device pixel ratio.
    explicit QtCanvas(QImage& image);
    ~QtCanvas() override;

    // What was painted since the last call, in the system's pixels.
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
    QImage& image_;
    QPainter painter_;
    QRegion changed_;
    std::vector<QRegion> clips_;
};

} // namespace vorn::qt
