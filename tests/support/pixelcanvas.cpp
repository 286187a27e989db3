#include "support/pixelcanvas.h"

#include "platform/headless/textmeasure.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace vorn {

namespace {

// --- Grain

std::uint32_t mixed(std::uint32_t hash, std::uint32_t value)
{
    return (hash ^ value) * 0x9E3779B1U ^ (hash ^ value) >> 15;
}

std::uint32_t grainOf(const FontLook& font)
{
    std::uint32_t hash = mixed(0, static_cast<std::uint32_t>(font.height));
    hash = mixed(hash, static_cast<std::uint32_t>(font.weight));
    hash = mixed(hash,
                 (font.italic ? 1U : 0U) | (font.underline ? 2U : 0U) | (font.strikeout ? 4U : 0U));
    for (const char16_t unit : font.face)
        hash = mixed(hash, unit);
    return hash;
}

// Is a pixel of a thing's box set? The upper left one always is, so that nothing is invisible.
bool isSet(std::uint32_t grain, int x, int y)
{
    const std::uint32_t place = static_cast<std::uint32_t>(x) * 31 + static_cast<std::uint32_t>(y);
    return (x == 0 && y == 0) || (mixed(mixed(grain, place), place) >> 16 & 1) != 0;
}

// --- Lines of texts

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Cuts off as many words as fit into a line, one at least; a line feed ends it anyhow. The blank,
// or the line feed, behind it goes with it.
std::u16string_view cutLine(std::u16string_view& text, const FontLook& font, int width)
{
    FixedTextMeasure measure;
    const std::size_t paragraph = std::min(text.find(u'\n'), text.size());
    std::size_t end = std::min(text.find(u' '), paragraph);
    while (end < paragraph) {
        const std::size_t next = std::min(text.find(u' ', end + 1), paragraph);
        if (measure.textWidth(font, text.substr(0, next)) > width)
            break;
        end = next;
    }
    const std::u16string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::vector<std::u16string_view> linesOf(std::u16string_view text, const FontLook& font, int width,
                                         bool wrap)
{
    if (!wrap)
        return {text};
    std::vector<std::u16string_view> lines;
    while (!text.empty())
        lines.push_back(cutLine(text, font, width));
    return lines;
}

int startOf(int from, int to, int length, int place)
{
    constexpr int start = 0;
    constexpr int middle = 1;
    if (place == start)
        return from;
    return place == middle ? from + (to - from - length) / 2 : to - length;
}

// --- Shapes

Rect boundsOf(std::span<const Point> points)
{
    Rect bounds = {points[0].x, points[0].y, points[0].x + 1, points[0].y + 1};
    for (const Point& point : points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x + 1);
        bounds.bottom = std::max(bounds.bottom, point.y + 1);
    }
    return bounds;
}

bool isInside(std::span<const Point> points, int x, int y)
{
    bool inside = false;
    Point from = points.back();
    for (const Point& to : points) {
        if ((from.y > y) != (to.y > y) &&
            x < (to.x - from.x) * (y - from.y) / double(to.y - from.y) + from.x)
            inside = !inside;
        from = to;
    }
    return inside;
}

bool isInEllipse(const Rect& area, int x, int y)
{
    const double across = (2 * x + 1 - area.left - area.right) / double(std::max(area.width(), 1));
    const double down = (2 * y + 1 - area.top - area.bottom) / double(std::max(area.height(), 1));
    return across * across + down * down <= 1;
}

std::string hex(Colour colour)
{
    if (colour == PixelCanvas::Unpainted)
        return "unpainted";
    char text[8];
    std::snprintf(text, sizeof text, "%02x%02x%02x", colour & 0xff, colour >> 8 & 0xff,
                  colour >> 16 & 0xff);
    return text;
}

} // namespace

bool PixelCanvas::Region::contains(int x, int y) const
{
    return bounds.contains(x, y) && std::none_of(holes.begin(), holes.end(), [=](const Rect& hole) {
               return hole.contains(x, y);
           });
}

PixelCanvas::PixelCanvas(int width, int height)
    : width_(width), height_(height), pixels_(static_cast<std::size_t>(width * height), Unpainted),
      clips_({
          Region{{0, 0, width, height}, {}}
})
{
}

Colour PixelCanvas::at(int x, int y) const
{
    return pixels_[static_cast<std::size_t>(y * width_ + x)];
}

// Each pixel of the area within the clip gets what `colourAt(x, y, present)` answers, if it is a
// colour.
template <typename ColourAt>
void PixelCanvas::paint(const Rect& area, ColourAt colourAt)
{
    const Rect seen = area.intersected(clips_.back().bounds);
    for (int y = seen.top; y < seen.bottom; ++y) {
        for (int x = seen.left; x < seen.right; ++x) {
            if (!clips_.back().contains(x, y))
                continue;
            Colour& pixel = pixels_[static_cast<std::size_t>(y * width_ + x)];
            const Colour colour = colourAt(x, y, pixel);
            if (colour == NoColour)
                continue;
            pixel = colour;
            ++painted_;
        }
    }
}

void PixelCanvas::fill(const Rect& area, Colour colour)
{
    paint(area, [=](int, int, Colour) { return colour; });
}

void PixelCanvas::fillPattern(const Rect& area, Colour colour, Colour other)
{
    paint(area, [=](int x, int y, Colour) { return (x + y) % 2 == 0 ? colour : other; });
}

void PixelCanvas::invert(const Rect& area)
{
    paint(area, [](int, int, Colour present) { return present ^ 0xFFFFFF; });
}

void PixelCanvas::segment(Point from, Point to, Stroke stroke)
{
    const int steps = std::max({std::abs(to.x - from.x), std::abs(to.y - from.y), 1});
    const int before = stroke.width / 2;
    for (int step = 0; step <= steps; ++step) {
        const int x = from.x + (to.x - from.x) * step / steps - before;
        const int y = from.y + (to.y - from.y) * step / steps - before;
        fill({x, y, x + stroke.width, y + stroke.width}, stroke.colour);
    }
}

void PixelCanvas::polyline(std::span<const Point> points, Stroke stroke)
{
    for (std::size_t at = 1; at < points.size(); ++at)
        segment(points[at - 1], points[at], stroke);
}

void PixelCanvas::polygon(std::span<const Point> points, Stroke stroke, Colour inside)
{
    if (points.empty())
        return;
    paint(boundsOf(points),
          [=](int x, int y, Colour) { return isInside(points, x, y) ? inside : NoColour; });
    polyline(points, stroke);
    segment(points.back(), points.front(), stroke);
}

void PixelCanvas::rectangle(const Rect& area, Stroke stroke, Colour inside)
{
    const Rect inner = area.shrunk(stroke.colour == NoColour ? 0 : stroke.width);
    paint(area,
          [=](int x, int y, Colour) { return inner.contains(x, y) ? inside : stroke.colour; });
}

void PixelCanvas::ellipse(const Rect& area, Stroke stroke, Colour inside)
{
    const Rect inner = area.shrunk(stroke.colour == NoColour ? 0 : stroke.width);
    paint(area, [=](int x, int y, Colour) {
        if (!isInEllipse(area, x, y))
            return NoColour;
        return isInEllipse(inner, x, y) ? inside : stroke.colour;
    });
}

// The boxes of one line's characters, cut to the text's area.
void PixelCanvas::characters(const Rect& line, const Rect& area, std::u16string_view text,
                             const FontLook& font, Colour colour)
{
    const int width = FixedTextMeasure().textWidth(font, u"x");
    Rect box = {line.left, line.top, line.left, line.bottom};
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isLowSurrogate(text[at]))
            continue;
        box = {box.right, line.top, box.right + width, line.bottom};
        const std::uint32_t grain = mixed(grainOf(font), text[at]);
        if (text[at] == u' ')
            continue;
        paint(box.intersected(area), [=](int x, int y, Colour) {
            return isSet(grain, x - box.left, y - box.top) ? colour : NoColour;
        });
    }
}

void PixelCanvas::text(const Rect& area, std::u16string_view text, const FontLook& font,
                       Colour colour, TextPlace place)
{
    FixedTextMeasure measure;
    const auto lines = linesOf(text, font, area.width(), place.wrap);
    const int height = static_cast<int>(lines.size()) * font.height;
    int top = startOf(area.top, area.bottom, height, static_cast<int>(place.down));
    for (const std::u16string_view line : lines) {
        const int width = measure.textWidth(font, line);
        const int left = startOf(area.left, area.right, width, static_cast<int>(place.across));
        characters({left, top, left + width, top + font.height}, area, line, font, colour);
        top += font.height;
    }
}

void PixelCanvas::icon(const Rect& area, int icon, bool enabled)
{
    const std::uint32_t grain = mixed(static_cast<std::uint32_t>(icon), enabled ? 1 : 2);
    const Colour colour = enabled ? ColourBlack : rgb(0x80, 0x80, 0x80);
    paint(area, [=](int x, int y, Colour) {
        return isSet(grain, x - area.left, y - area.top) ? colour : NoColour;
    });
}

void PixelCanvas::pushClip(const Rect& area)
{
    Region region = clips_.back();
    region.bounds = region.bounds.intersected(area);
    clips_.push_back(region);
}

void PixelCanvas::pushExclude(const Rect& area)
{
    Region region = clips_.back();
    region.holes.push_back(area);
    clips_.push_back(region);
}

void PixelCanvas::popClip()
{
    // One too many shows in isBalanced, and does no harm.
    clips_.pop_back();
    if (clips_.empty())
        clips_.resize(2, Region{
                             {0,                              0, width_, height_},
                             {}
        });
}

bool PixelCanvas::scroll(const Rect& area, int dx, int dy)
{
    if (!scrolls)
        return false;
    const Rect source = area.intersected({0, 0, width_, height_});
    const std::vector<Colour> before = pixels_;
    paint(source.moved(dx, dy).intersected(area), [&](int x, int y, Colour) {
        return before[static_cast<std::size_t>((y - dy) * width_ + x - dx)];
    });
    return true;
}

std::string difference(const PixelCanvas& a, const PixelCanvas& b, const Rect& area)
{
    if (a.width() != b.width() || a.height() != b.height())
        return "of other sizes";
    const Rect seen = area.intersected({0, 0, a.width(), a.height()});
    std::string first;
    int count = 0;
    for (int y = seen.top; y < seen.bottom; ++y) {
        for (int x = seen.left; x < seen.right; ++x) {
            if (a.at(x, y) == b.at(x, y))
                continue;
            if (count++ == 0)
                first = std::to_string(x) + ',' + std::to_string(y) + ": " + hex(a.at(x, y)) +
                        " and " + hex(b.at(x, y));
        }
    }
    return count == 0 ? "" : first + ", " + std::to_string(count) + " differ";
}

std::string difference(const PixelCanvas& a, const PixelCanvas& b)
{
    return difference(a, b, {0, 0, a.width(), a.height()});
}

} // namespace vorn
