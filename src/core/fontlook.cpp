#include "core/fontlook.h"

#include "core/style.h"

namespace vorn {

namespace {

constexpr int TwipsPerPixel = 14;
constexpr int LeastExactZoom = 85;
constexpr int SmallZoomGain = 8;

} // namespace

FontLook fontLook(const FontRecord& font, int zoom)
{
    const int percent = zoom < LeastExactZoom ? zoom + SmallZoomGain : zoom;
    FontLook look;
    look.height = font.height / TwipsPerPixel * percent / 100;
    look.weight = font.weight;
    look.italic = (font.attributes & FontItalic) != 0;
    look.underline = font.underline != 0;
    look.strikeout = (font.attributes & FontStrikeout) != 0;
    look.charset = font.charset;
    look.face = font.face();
    return look;
}

} // namespace vorn
