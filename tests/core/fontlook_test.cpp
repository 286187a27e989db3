#include "core/fontlook.h"

#include "core/style.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

FontRecord fontOfHeight(int height)
{
    FontRecord font = defaultFont(0);
    font.height = static_cast<std::uint16_t>(height);
    return font;
}

TEST(FontLook, hasAFourteenthOfTheHeight)
{
    const struct {
        const char* phrase;
        int height, pixels;
    } cases[] = {
        {"ten points",            200, 14},
        {"rounded down",          223, 15},
        {"the next whole number", 224, 16},
        {"column titles",         210, 15},
        {"nothing",               0,   0 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(fontLook(fontOfHeight(c.height)).height, c.pixels) << c.phrase;
}

TEST(FontLook, growsWithTheZoomAndStaysReadableBelow85)
{
    const struct {
        int zoom, pixels; // of 100 pixels
    } cases[] = {
        {100, 100},
        {200, 200},
        {300, 300},
        {90,  90 },
        {85,  85 },
        {84,  92 },
        {70,  78 },
        {10,  18 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(fontLook(fontOfHeight(1400), c.zoom).height, c.pixels) << c.zoom;
}

TEST(FontLook, hasWhatIsSeenOfTheFont)
{
    FontRecord font = defaultFont(3);
    font.underline = 33;
    font.charset = 204;
    font.family = 18;
    const FontLook look = fontLook(font);
    EXPECT_EQ(look.weight, 700);
    EXPECT_TRUE(look.italic);
    EXPECT_TRUE(look.underline);
    EXPECT_FALSE(look.strikeout);
    EXPECT_EQ(look.charset, 204);
    EXPECT_EQ(look.pitchAndFamily, 34) << "the machine chooses by the face";
    EXPECT_EQ(look.face, u"Arial");

    font.attributes = FontStrikeout | FontBold;
    EXPECT_TRUE(fontLook(font).strikeout);
    EXPECT_FALSE(fontLook(font).italic);
}

} // namespace
} // namespace vorn
