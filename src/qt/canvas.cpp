#include "qt/canvas.h"

#include "qt/icons.h"
#include "qt/textlines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace vorn::qt {

namespace {

// More parts than this are not told apart.
constexpr std::size_t ChangedPartsMax = 16;

QRgb onScreen(Colour colour)
{
    return qRgb(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

QRect around(std::span<const QPointF> points, double margin)
{
    double left = points[0].x(), right = left, top = points[0].y(), bottom = top;
    for (const QPointF& point : points) {
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        top = std::min(top, point.y());
        bottom = std::max(bottom, point.y());
    }
    return QRectF(left, top, right - left, bottom - top)
        .adjusted(-margin, -margin, margin, margin)
        .toAlignedRect();
}

qint64 pixelCount(const QRect& area)
{
    return static_cast<qint64>(area.width()) * area.height();
}

QRgb* rowOf(QImage& image, int y)
{
    void* row = image.scanLine(y); // rows are aligned to what a pixel takes
    return static_cast<QRgb*>(row);
}

} // namespace

QtCanvas::QtCanvas(QImage& image)
    : image_(image), scale_(image.devicePixelRatio()), clips_{QRegion(image.rect())}
{
}

QtCanvas::~QtCanvas() = default;

QRegion QtCanvas::takeChanged()
{
    stopDrawing();
    QRegion region;
    for (const QRect& part : changed_) {
        const QRectF area(part.x() / scale_, part.y() / scale_, part.width() / scale_,
                          part.height() / scale_);
        region += area.toAlignedRect();
    }
    changed_.clear();
    return region;
}

// --- Places.

int QtCanvas::edge(int position) const
{
    constexpr double limit = 1 << 28;
    const double place = std::clamp(position * scale_ + 0.5, -limit, limit);
    const int cut = static_cast<int>(place); // towards 0, and much faster than std::floor
    return cut > place ? cut - 1 : cut;
}

// The window's pixel that a pixel of the picture belongs to.
int QtCanvas::squareAt(int position) const
{
    int square = static_cast<int>(position / scale_);
    while (edge(square + 1) <= position)
        ++square;
    while (edge(square) > position)
        --square;
    return square;
}

QRect QtCanvas::onPicture(const Rect& area) const
{
    if (area.isEmpty())
        return {};
    const int left = edge(area.left), top = edge(area.top);
    return {left, top, edge(area.right) - left, edge(area.bottom) - top};
}

QPointF QtCanvas::middleOf(Point point) const
{
    return {(edge(point.x) + edge(point.x + 1)) / 2.0, (edge(point.y) + edge(point.y + 1)) / 2.0};
}

// --- Access to the picture.

void QtCanvas::stopDrawing()
{
    if (painter_.isActive())
        painter_.end();
}

QImage& QtCanvas::pixels()
{
    uchar* memory = image_.bits(); // leaves the old pixels to others who hold the picture
    if (pixels_.constBits() != memory) {
        stopDrawing();
        pixels_ =
            QImage(memory, image_.width(), image_.height(), image_.bytesPerLine(), image_.format());
    }
    return pixels_;
}

QPainter* QtCanvas::painterFor(const QRect& touched, const QRect* limit)
{
    const QRect seen = touched & clips_.back().boundingRect();
    if (seen.isEmpty() || (limit != nullptr && !limit->intersects(seen)))
        return nullptr;
    QImage& target = pixels();
    if (!painter_.isActive()) {
        painter_.begin(&target);
        painter_.setRenderHint(QPainter::Antialiasing);
        painterClip_ = {};
    }
    const bool inside = limit == nullptr || limit->contains(touched);
    QRegion clip; // to clip costs time, and most of what is drawn need not be
    if (!inside)
        clip = clips_.back() & *limit;
    if (!inside && clip.isEmpty())
        return nullptr;
    if (inside && (clips_.back().rectCount() != 1 || seen != touched))
        clip = clips_.back();
    if (clip != painterClip_) {
        painterClip_ = clip;
        painter_.setClipRegion(clip, clip.isEmpty() ? Qt::NoClip : Qt::ReplaceClip);
    }
    touch(inside ? seen : seen & *limit);
    return &painter_;
}

// Parts that lie side by side become one, and so do parts that hardly leave room between them.
void QtCanvas::touch(const QRect& touched)
{
    QRect* nearest = nullptr;
    qint64 leastWaste = std::numeric_limits<qint64>::max();
    for (QRect& part : changed_) {
        if (part.contains(touched))
            return;
        const qint64 waste = pixelCount(part | touched) - pixelCount(part) - pixelCount(touched);
        if (waste < leastWaste) {
            leastWaste = waste;
            nearest = &part;
        }
    }
    if (nearest != nullptr && (leastWaste <= 0 || changed_.size() >= ChangedPartsMax))
        *nearest |= touched;
    else
        changed_.push_back(touched);
}

template <typename PaintRow>
void QtCanvas::paintRows(const Rect& area, PaintRow paintRow)
{
    const QRect whole = onPicture(area);
    if (!whole.intersects(clips_.back().boundingRect()))
        return;
    QImage& target = pixels();
    for (const QRect& part : clips_.back()) {
        const QRect seen = whole & part;
        if (seen.isEmpty())
            continue;
        for (int y = seen.top(); y <= seen.bottom(); ++y)
            paintRow(rowOf(target, y) + seen.left(), seen.left(), seen.width(), y);
        touch(seen);
    }
}

// --- Fills.

void QtCanvas::fill(const Rect& area, Colour colour)
{
    if (colour == NoColour)
        return;
    paintRows(area, [pixel = onScreen(colour)](QRgb* row, int, int count, int) {
        std::fill_n(row, count, pixel);
    });
}

// Where squares of the board differ in size, the first colour keeps to the smallest: a line of it
// is as thin everywhere.
void QtCanvas::fillPattern(const Rect& area, Colour colour, Colour other)
{
    const std::array<QRgb, 2> colours{onScreen(colour), onScreen(other)};
    const QRgb lighter = colours[qGray(colours[0]) < qGray(colours[1]) ? 1 : 0];
    const int side = std::max(static_cast<int>(scale_), 1);
    paintRows(area, [&](QRgb* row, int left, int count, int y) {
        const int down = squareAt(y);
        const bool between = y - edge(down) >= side;
        int across = squareAt(left);
        int begin = edge(across), next = edge(across + 1);
        for (int i = 0; i < count; ++i) {
            const int x = left + i;
            if (x >= next) {
                begin = next;
                next = edge(++across + 1);
            }
            row[i] = between || x - begin >= side ? lighter : colours[(across + down) & 1];
        }
    });
}

void QtCanvas::invert(const Rect& area)
{
    constexpr QRgb allColours = 0x00FFFFFF;
    paintRows(area, [](QRgb* row, int, int count, int) {
        for (int i = 0; i < count; ++i)
            row[i] ^= allColours;
    });
}

bool QtCanvas::scroll(const Rect& area, int dx, int dy)
{
    const double right = dx * scale_, down = dy * scale_;
    const QRegion& clip = clips_.back();
    if (right != std::floor(right) || down != std::floor(down) || clip.rectCount() != 1)
        return false;
    const QRect whole = onPicture(area) & clip.boundingRect();
    const int byX = static_cast<int>(right), byY = static_cast<int>(down);
    const QRect target = whole & whole.translated(byX, byY);
    if (target.isEmpty())
        return true;
    QImage& picture = pixels();
    const std::size_t bytes = static_cast<std::size_t>(target.width()) * sizeof(QRgb);
    const int step = byY > 0 ? -1 : 1; // each row before it is written over
    const int first = byY > 0 ? target.bottom() : target.top();
    for (int i = 0; i < target.height(); ++i) {
        const int y = first + i * step;
        std::memmove(rowOf(picture, y) + target.left(),
                     rowOf(picture, y - byY) + target.left() - byX, bytes);
    }
    touch(target);
    return true;
}

// --- Lines and shapes.

// Points of which no two neighbours lie on one axis.
void QtCanvas::drawSlanted(std::span<const Point> points, Stroke stroke)
{
    QPolygonF path;
    for (const Point point : points)
        path.append(middleOf(point));
    // The toolkit draws lines of one pixel in a quick way of its own that is not quite exact.
    const double width = std::max(stroke.width * scale_, 1.0) + 1.0 / 256;
    QPainter* painter = painterFor(around(path, width + 1));
    if (painter == nullptr)
        return;
    painter->setPen(
        QPen(QColor(onScreen(stroke.colour)), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(path);
}

void QtCanvas::polyline(std::span<const Point> points, Stroke stroke)
{
    if (stroke.colour == NoColour || stroke.width <= 0 || points.empty())
        return;
    const auto alongAxis = [](Point a, Point b) { return a.x == b.x || a.y == b.y; };
    const auto fillLine = [&](Point from, Point to) {
        const int before = (stroke.width - 1) / 2;
        const int behind = stroke.width - before;
        fill({std::min(from.x, to.x) - before, std::min(from.y, to.y) - before,
              std::max(from.x, to.x) + behind, std::max(from.y, to.y) + behind},
             stroke.colour);
    };
    if (points.size() == 1)
        fillLine(points[0], points[0]);
    for (std::size_t i = 0; i + 1 < points.size();) {
        std::size_t end = i + 1;
        if (alongAxis(points[i], points[end])) {
            fillLine(points[i], points[end]);
        } else {
            while (end + 1 < points.size() && !alongAxis(points[end], points[end + 1]))
                ++end;
            drawSlanted(points.subspan(i, end - i + 1), stroke);
        }
        i = end;
    }
}

void QtCanvas::polygon(std::span<const Point> points, Stroke stroke, Colour inside)
{
    if (points.empty())
        return;
    const bool stroked = stroke.colour != NoColour && stroke.width > 0;
    if (inside != NoColour) {
        // A border goes through the middles of its points; without one the points are corners.
        QPolygonF path;
        for (const Point point : points)
            path.append(stroked ? middleOf(point) : QPointF(edge(point.x), edge(point.y)));
        if (QPainter* painter = painterFor(around(path, 1))) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(QColor(onScreen(inside)));
            painter->drawPolygon(path);
            painter->setBrush(Qt::NoBrush);
        }
    }
    if (stroked) {
        std::vector<Point> closed(points.begin(), points.end());
        closed.push_back(points.front());
        polyline(closed, stroke);
    }
}

void QtCanvas::rectangle(const Rect& area, Stroke stroke, Colour inside)
{
    const int width = stroke.colour == NoColour ? 0 : std::max(stroke.width, 0);
    const Rect inner = area.shrunk(width);
    if (width > 0 && inner.isEmpty())
        fill(area, stroke.colour);
    if (inner.isEmpty())
        return;
    fill(inner, inside);
    fill({area.left, area.top, area.right, inner.top}, stroke.colour);
    fill({area.left, inner.bottom, area.right, area.bottom}, stroke.colour);
    fill({area.left, inner.top, inner.left, inner.bottom}, stroke.colour);
    fill({inner.right, inner.top, area.right, inner.bottom}, stroke.colour);
}

void QtCanvas::ellipse(const Rect& area, Stroke stroke, Colour inside)
{
    const QRect whole = onPicture(area);
    QPainter* painter = painterFor(whole);
    if (painter == nullptr)
        return;
    const double width =
        stroke.colour == NoColour || stroke.width <= 0 ? 0 : std::max(stroke.width * scale_, 1.0);
    painter->setPen(width > 0 ? QPen(QColor(onScreen(stroke.colour)), width) : QPen(Qt::NoPen));
    painter->setBrush(inside == NoColour ? QBrush() : QBrush(QColor(onScreen(inside))));
    const double half = width / 2;
    painter->drawEllipse(QRectF(whole).adjusted(half, half, -half, -half));
    painter->setBrush(Qt::NoBrush);
}

void QtCanvas::icon(const Rect& area, int icon, bool enabled)
{
    const QRect place = onPicture(area);
    if (QPainter* painter = painterFor(place)) {
        drawIcon(*painter, place, icon, enabled);
        painter->setBrush(Qt::NoBrush);
    }
}

// --- Texts.

void QtCanvas::text(const Rect& area, std::u16string_view text, const FontLook& font, Colour colour,
                    TextPlace place)
{
    if (text.empty() || colour == NoColour ||
        !onPicture(area).intersects(clips_.back().boundingRect()))
        return;
    Typeface& typeface = typefaceOf(font);
    if (place.wrap) {
        drawLines(area, breakLines(typeface, text, area.width()), typeface, colour, place);
    } else {
        // A line in the middle is known to fit, or is seen in its middle.
        if (place.across != TextAcross::Center)
            text = seenPart(typeface, text, area.width(),
                            place.across == TextAcross::Left ? LineSide::Left : LineSide::Right);
        const TextLine line{text, lineWidth(typeface, text)};
        drawLines(area, {&line, 1}, typeface, colour, place);
    }
}

void QtCanvas::drawLines(const Rect& area, std::span<const TextLine> lines, Typeface& typeface,
                         Colour colour, TextPlace place)
{
    const QRect limit = onPicture(area);
    const int height = typeface.lineHeight();
    const int room = area.height() - static_cast<int>(lines.size()) * height;
    int top = area.top;
    if (place.down != TextDown::Top)
        top += place.down == TextDown::Middle ? room / 2 : room;
    for (const TextLine& line : lines) {
        const double width = line.width * scale_;
        double left = limit.left();
        if (place.across == TextAcross::Right)
            left = limit.left() + limit.width() - width;
        else if (place.across == TextAcross::Center)
            left = std::floor(limit.left() + (limit.width() - width) / 2 + 0.5);
        // Letters may reach out of their line a little: slanted ones, and capitals with marks.
        const double margin = height * scale_ / 4;
        const QRectF lineArea(left, edge(top), width, height * scale_);
        const QRect touched = lineArea.adjusted(-margin, -margin, margin, margin).toAlignedRect();
        const bool cut = room < 0 || line.width > area.width();
        if (QPainter* painter = painterFor(touched, cut ? &limit : nullptr)) {
            painter->setPen(QColor(onScreen(colour)));
            const double foot = std::floor((top + typeface.baseline()) * scale_ + 0.5);
            drawLine(*painter, typeface, line, {left, foot}, scale_);
        }
        top += height;
    }
}

// --- The clip.

void QtCanvas::pushClip(const Rect& area)
{
    clips_.push_back(clips_.back() & onPicture(area));
}

void QtCanvas::pushExclude(const Rect& area)
{
    clips_.push_back(clips_.back() - onPicture(area));
}

void QtCanvas::popClip()
{
    if (clips_.size() > 1)
        clips_.pop_back();
}

} // namespace vorn::qt
