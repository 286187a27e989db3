#include "support/pixelcanvas.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr Colour Red = rgb(255, 0, 0);
constexpr Colour Blue = rgb(0, 0, 255);

class PixelCanvasTest : public testing::Test {
protected:
    // How many pixels have a colour.
    static int count(const PixelCanvas& canvas, Colour colour)
    {
        int found = 0;
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x)
                found += canvas.at(x, y) == colour ? 1 : 0;
        }
        return found;
    }

    PixelCanvas canvas{60, 40};
    FontLook font;
};

TEST_F(PixelCanvasTest, fillsToTheSidesAndNoFurther)
{
    canvas.fill({2, 3, 5, 7}, Red);
    EXPECT_EQ(count(canvas, Red), 12);
    EXPECT_EQ(canvas.at(2, 3), Red);
    EXPECT_EQ(canvas.at(4, 6), Red);
    EXPECT_EQ(canvas.at(5, 6), PixelCanvas::Unpainted);
    EXPECT_EQ(canvas.painted(), 12);
}

TEST_F(PixelCanvasTest, cutsToItsEdges)
{
    canvas.fill({-5, -5, 1, 100}, Red);
    EXPECT_EQ(count(canvas, Red), 40);
}

TEST_F(PixelCanvasTest, setsAPatternByThePlaceOnTheCanvas)
{
    canvas.fillPattern({0, 0, 4, 2}, Red, Blue);
    PixelCanvas other(60, 40);
    other.fillPattern({0, 0, 1, 2}, Red, Blue);
    other.fillPattern({1, 0, 4, 2}, Red, Blue);
    EXPECT_EQ(difference(canvas, other), "");
    EXPECT_EQ(count(canvas, Red), 4);
    EXPECT_EQ(count(canvas, Blue), 4);
}

TEST_F(PixelCanvasTest, bringsBackWhatItInvertsTwice)
{
    canvas.fill({0, 0, 10, 10}, Red);
    canvas.invert({5, 5, 8, 8});
    EXPECT_EQ(canvas.at(5, 5), rgb(0, 255, 255));
    canvas.invert({5, 5, 8, 8});
    EXPECT_EQ(count(canvas, Red), 100);
}

TEST_F(PixelCanvasTest, paintsWithinTheClipInForce)
{
    canvas.pushClip({0, 0, 10, 10});
    canvas.pushExclude({2, 2, 4, 4});
    canvas.pushClip({0, 0, 4, 4});
    canvas.fill({0, 0, 60, 40}, Red);
    EXPECT_EQ(count(canvas, Red), 12);
    canvas.popClip();
    canvas.fill({0, 0, 60, 40}, Blue);
    EXPECT_EQ(count(canvas, Blue), 96);
    canvas.popClip();
    EXPECT_FALSE(canvas.isBalanced());
    canvas.popClip();
    EXPECT_TRUE(canvas.isBalanced());
}

TEST_F(PixelCanvasTest, noticesAClipTakenBackTooOften)
{
    canvas.popClip();
    EXPECT_FALSE(canvas.isBalanced());
}

TEST_F(PixelCanvasTest, paintsShapes)
{
    canvas.rectangle({0, 0, 10, 10}, {Red, 1}, Blue);
    EXPECT_EQ(count(canvas, Red), 36);
    EXPECT_EQ(count(canvas, Blue), 64);
    const Point line[] = {
        {20, 0 },
        {20, 10},
        {30, 10},
    };
    canvas.polyline(line, {Red, 1});
    EXPECT_EQ(count(canvas, Red), 36 + 21);
    canvas.ellipse({40, 0, 50, 10}, {NoColour, 1}, Red);
    EXPECT_EQ(canvas.at(45, 5), Red);
    EXPECT_EQ(canvas.at(40, 0), PixelCanvas::Unpainted);
    const Point triangle[] = {
        {0,  20},
        {10, 20},
        {5,  30},
    };
    canvas.polygon(triangle, {Red, 1}, Blue);
    EXPECT_EQ(canvas.at(5, 20), Red);
    EXPECT_EQ(canvas.at(5, 24), Blue);
    EXPECT_EQ(canvas.at(0, 24), PixelCanvas::Unpainted);
}

TEST_F(PixelCanvasTest, tellsTextsApart)
{
    FontLook bold;
    bold.weight = 700;
    FontLook large;
    large.height = 16;
    const struct {
        const char* other;
        std::u16string_view text;
        FontLook font;
        Colour colour;
        Rect area;
        TextPlace place;
    } cases[] = {
        {"letters",  u"abd", font,  Red,  {0, 0, 60, 40}, {}                        },
        {"length",   u"ab",  font,  Red,  {0, 0, 60, 40}, {}                        },
        {"weight",   u"abc", bold,  Red,  {0, 0, 60, 40}, {}                        },
        {"height",   u"abc", large, Red,  {0, 0, 60, 40}, {}                        },
        {"colour",   u"abc", font,  Blue, {0, 0, 60, 40}, {}                        },
        {"area",     u"abc", font,  Red,  {1, 0, 60, 40}, {}                        },
        {"side",     u"abc", font,  Red,  {0, 0, 60, 40}, {TextAcross::Right}       },
        {"place",    u"abc", font,  Red,  {0, 0, 60, 40}, {.down = TextDown::Top}   },
        {"a middle", u"abc", font,  Red,  {0, 0, 60, 40}, {.down = TextDown::Middle}},
    };
    canvas.text({0, 0, 60, 40}, u"abc", font, Red, {});
    for (const auto& c : cases) {
        PixelCanvas other(60, 40);
        other.text(c.area, c.text, c.font, c.colour, c.place);
        EXPECT_NE(difference(canvas, other), "") << c.other;
    }
}

TEST_F(PixelCanvasTest, cutsTextsToTheirAreaOnly)
{
    canvas.text({0, 0, 30, 20}, u"abcdefgh", font, Red, {});
    PixelCanvas other(60, 40);
    other.text({0, 0, 60, 20}, u"abcdefgh", font, Red, {});
    EXPECT_EQ(difference(canvas, other, {0, 0, 30, 40}), "");
    EXPECT_EQ(canvas.at(35, 6), PixelCanvas::Unpainted);
    EXPECT_EQ(other.at(35, 6), Red); // the first pixel of a letter
}

TEST_F(PixelCanvasTest, breaksTextsBetweenWords)
{
    canvas.text({0, 0, 30, 40}, u"abc de", font, Red, {.down = TextDown::Top, .wrap = true});
    PixelCanvas other(60, 40);
    other.text({0, 0, 30, 14}, u"abc", font, Red, {});
    other.text({0, 14, 30, 28}, u"de", font, Red, {});
    EXPECT_EQ(difference(canvas, other), "");
}

TEST_F(PixelCanvasTest, movesWhatStaysInside)
{
    canvas.fill({0, 0, 20, 20}, Blue);
    canvas.fill({0, 0, 20, 5}, Red);
    EXPECT_TRUE(canvas.scroll({0, 0, 20, 20}, 0, 5));
    EXPECT_EQ(canvas.at(0, 0), Red); // as it was
    EXPECT_EQ(canvas.at(0, 9), Red);
    EXPECT_EQ(canvas.at(0, 10), Blue);
    EXPECT_EQ(canvas.at(0, 20), PixelCanvas::Unpainted);
    canvas.scrolls = false;
    EXPECT_FALSE(canvas.scroll({0, 0, 20, 20}, 0, 5));
    EXPECT_EQ(canvas.at(0, 10), Blue);
}

TEST_F(PixelCanvasTest, namesTheFirstPixelThatDiffers)
{
    PixelCanvas other(60, 40);
    canvas.fill({3, 2, 5, 3}, Red);
    EXPECT_EQ(difference(canvas, other), "3,2: ff0000 and unpainted, 2 differ");
    EXPECT_EQ(difference(canvas, other, {0, 0, 60, 2}), "");
    EXPECT_EQ(difference(canvas, PixelCanvas(60, 41)), "of other sizes");
}

} // namespace
} // namespace vorn
