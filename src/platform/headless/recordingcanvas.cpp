#include "platform/headless/recordingcanvas.h"

#include <cstdio>

namespace vorn {

namespace {

std::string placeText(Point point)
{
    return std::to_string(point.x) + ',' + std::to_string(point.y);
}

std::string areaText(const Rect& area)
{
    return placeText({area.left, area.top}) + '-' + placeText({area.right, area.bottom});
}

std::string pointsText(std::span<const Point> points)
{
    std::string text;
    for (const Point& point : points)
        text += placeText(point) + ' ';
    return text;
}

std::string colourText(Colour colour)
{
    if (colour == NoColour)
        return "-";
    char text[8];
    std::snprintf(text, sizeof text, "%02x%02x%02x", colour & 0xff, colour >> 8 & 0xff,
                  colour >> 16 & 0xff);
    return text;
}

std::string strokeText(Stroke stroke)
{
    return colourText(stroke.colour) + " w" + std::to_string(stroke.width);
}

// Everything but plain ASCII as its number, which is enough to tell texts apart.
std::string plainText(std::u16string_view text)
{
    std::string plain;
    for (const char16_t unit : text) {
        if (unit >= u' ' && unit < 0x7f)
            plain += static_cast<char>(unit);
        else
            plain += "\\" + std::to_string(static_cast<unsigned>(unit));
    }
    return plain;
}

std::string fontText(const FontLook& font)
{
    std::string text = plainText(font.face) + ' ' + std::to_string(font.height);
    if (font.weight >= 600)
        text += " bold";
    if (font.italic)
        text += " italic";
    if (font.underline)
        text += " underline";
    if (font.strikeout)
        text += " strikeout";
    return text;
}

std::string placeText(TextPlace place)
{
    constexpr const char* across[] = {" left", " center", " right"};
    constexpr const char* down[] = {" top", " middle", " bottom"};
    std::string text = across[static_cast<int>(place.across)];
    text += down[static_cast<int>(place.down)];
    if (place.wrap)
        text += " wrap";
    return text;
}

} // namespace

std::vector<std::string> RecordingCanvas::having(std::string_view prefix) const
{
    std::vector<std::string> found;
    for (const std::string& operation : operations) {
        if (operation.starts_with(prefix))
            found.push_back(operation);
    }
    return found;
}

void RecordingCanvas::fill(const Rect& area, Colour colour)
{
    operations.push_back("fill " + areaText(area) + ' ' + colourText(colour));
}

void RecordingCanvas::fillPattern(const Rect& area, Colour colour, Colour other)
{
    operations.push_back("pattern " + areaText(area) + ' ' + colourText(colour) + ' ' +
                         colourText(other));
}

void RecordingCanvas::invert(const Rect& area)
{
    operations.push_back("invert " + areaText(area));
}

void RecordingCanvas::polyline(std::span<const Point> points, Stroke stroke)
{
    operations.push_back("polyline " + pointsText(points) + strokeText(stroke));
}

void RecordingCanvas::polygon(std::span<const Point> points, Stroke stroke, Colour inside)
{
    operations.push_back("polygon " + pointsText(points) + strokeText(stroke) + " in " +
                         colourText(inside));
}

void RecordingCanvas::rectangle(const Rect& area, Stroke stroke, Colour inside)
{
    operations.push_back("rectangle " + areaText(area) + ' ' + strokeText(stroke) + " in " +
                         colourText(inside));
}

void RecordingCanvas::ellipse(const Rect& area, Stroke stroke, Colour inside)
{
    operations.push_back("ellipse " + areaText(area) + ' ' + strokeText(stroke) + " in " +
                         colourText(inside));
}

void RecordingCanvas::text(const Rect& area, std::u16string_view text, const FontLook& font,
                           Colour colour, TextPlace place)
{
    operations.push_back("text " + areaText(area) + " \"" + plainText(text) + "\" " +
                         fontText(font) + ' ' + colourText(colour) + placeText(place));
}

void RecordingCanvas::icon(const Rect& area, int icon, bool enabled)
{
    operations.push_back("icon " + areaText(area) + ' ' + std::to_string(icon) +
                         (enabled ? "" : " disabled"));
}

void RecordingCanvas::pushClip(const Rect& area)
{
    ++clips_;
    operations.push_back("clip " + areaText(area));
}

void RecordingCanvas::pushExclude(const Rect& area)
{
    ++clips_;
    operations.push_back("exclude " + areaText(area));
}

void RecordingCanvas::popClip()
{
    --clips_;
    operations.emplace_back("pop");
}

bool RecordingCanvas::scroll(const Rect& area, int dx, int dy)
{
    if (scrolls)
        operations.push_back("scroll " + areaText(area) + " by " + placeText(Point{dx, dy}));
    return scrolls;
}

} // namespace vorn
