#include "qt/icons.h"

#include "resources/icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace vorn::qt {

namespace {

// Corners sharper than a right angle are cut, so that no thorn sticks out of a drawing.
constexpr double SharpestCorner = 2;

// From the grid of a drawing to the pixels of its place. Everything that a line of this width can
// make sharp is moved to where it is.
class Placing {
public:
    Placing(QPointF corner, double perUnit, int lineWidth)
        : corner_(corner), perUnit_(perUnit),
          pixels_(lineWidth == 0 ? 0 : std::max(std::lround(lineWidth * perUnit), 1L))
    {
    }

    // The toolkit draws lines of one pixel in a quick way of its own that is not quite exact.
    double lineWidth() const { return static_cast<double>(pixels_) + 1.0 / 256; }
    double length(double units) const { return units * perUnit_; }
    QPointF free(QPointF at) const { return corner_ + at * perUnit_; }

    // An odd line stands on the middle of a pixel, an even one and an edge between two pixels.
    QPointF sharp(QPointF at) const
    {
        const double half = pixels_ % 2 == 0 ? 0 : 0.5;
        const auto snap = [&](double units) {
            return std::floor(units * perUnit_ - half + 0.5) + half;
        };
        return corner_ + QPointF(snap(at.x()), snap(at.y()));
    }

private:
    QPointF corner_;
    double perUnit_;
    long pixels_;
};

// Reads a drawing's path, which is ours and well formed.
class PathReader {
public:
    PathReader(std::string_view text, const Placing& placing) : text_(text), placing_(placing) {}

    QPainterPath read()
    {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        while (!text_.empty()) {
            const char step = text_.front();
            text_.remove_prefix(1);
            addStep(path, step);
            skipBlanks();
        }
        return path;
    }

private:
    void addStep(QPainterPath& path, char step)
    {
        switch (step) {
        case 'M':
            path.moveTo(placing_.sharp(point()));
            break;
        case 'L':
            path.lineTo(placing_.sharp(point()));
            break;
        case 'C': {
            const QPointF first = placing_.free(point());
            const QPointF second = placing_.free(point());
            path.cubicTo(first, second, placing_.free(point()));
            break;
        }
        case 'O': {
            const QPointF middle = placing_.free(point());
            const double radius = placing_.length(number());
            path.addEllipse(middle, radius, radius);
            break;
        }
        default:
            path.closeSubpath();
        }
    }

    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }

    double number()
    {
        skipBlanks();
        double value = 0;
        const auto read = std::from_chars(text_.data(), text_.data() + text_.size(), value);
        text_.remove_prefix(static_cast<std::size_t>(read.ptr - text_.data()));
        return value;
    }

    void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(' '), text_.size())); }

    std::string_view text_;
    const Placing& placing_;
};

// What cannot be used now is pale and without colours, but dark stays darker than light.
QColor shade(Colour colour, bool enabled)
{
    const QColor full(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                      static_cast<int>(colour >> 16 & 0xFF));
    if (enabled)
        return full;
    constexpr int lightest = 250, darkest = 165;
    const int grey = darkest + qGray(full.rgb()) * (lightest - darkest) / 255;
    return {grey, grey, grey};
}

void drawPart(QPainter& painter, const IconPart& part, QPointF corner, double perUnit, bool enabled)
{
    const Placing placing(corner, perUnit, part.line == NoColour ? 0 : part.width);
    QPen pen(Qt::NoPen);
    if (part.line != NoColour) {
        pen = QPen(shade(part.line, enabled), placing.lineWidth(), Qt::SolidLine, Qt::SquareCap,
                   Qt::SvgMiterJoin);
        pen.setMiterLimit(SharpestCorner);
    }
    painter.setPen(pen);
    painter.setBrush(part.inside == NoColour ? QBrush() : QBrush(shade(part.inside, enabled)));
    painter.drawPath(PathReader(part.path, placing).read());
}

// Paints in the size that is asked for instead of scaling a picture.
class DrawnIconEngine : public QIconEngine {
public:
    explicit DrawnIconEngine(int icon) : icon_(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        drawIcon(*painter, rect, icon_, mode != QIcon::Disabled);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    // The size is that of the picture; the toolkit sets its scale.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawIcon(painter, picture.rect(), icon_, mode != QIcon::Disabled);
        return picture;
    }

    // Any size is as good as another; some that window managers ask for.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        return {
            {16,  16 },
            {24,  24 },
            {32,  32 },
            {48,  48 },
            {64,  64 },
            {128, 128}
        };
    }

    QIconEngine* clone() const override { return new DrawnIconEngine(icon_); }
    bool isNull() override { return findIcon(icon_) == nullptr; }

private:
    int icon_;
};

} // namespace

QIcon iconOf(int icon)
{
    return QIcon(new DrawnIconEngine(icon));
}

void drawIcon(QPainter& painter, const QRectF& area, int icon, bool enabled)
{
    const IconDrawing* drawing = findIcon(icon);
    if (drawing == nullptr || area.isEmpty())
        return;
    // In the pixels of what is painted on, where sharpness is decided; only a plain scale is
    // looked through.
    const QTransform before = painter.deviceTransform();
    const bool plain = before.type() <= QTransform::TxScale && before.m11() > 0;
    const QRectF place = plain ? before.mapRect(area) : area;
    painter.save();
    if (plain)
        painter.setWorldTransform(before.inverted() * painter.worldTransform());
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = std::floor(std::min(place.width(), place.height()));
    const QPointF corner(std::round(place.center().x() - side / 2),
                         std::round(place.center().y() - side / 2));
    for (const IconPart& part : drawing->parts)
        drawPart(painter, part, corner, side / IconGrid, enabled);
    painter.restore();
}

} // namespace vorn::qt
