#include "qt/canvas.h"

#include "qt/fonts.h"
#include "resources/icons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vorn::qt {
namespace {

constexpr double AllScales[] = {1, 1.25, 1.5, 2};
constexpr Colour Red = rgb(200, 0, 0);
constexpr Colour Green = rgb(0, 200, 0);

QRgb rgbOf(Colour colour)
{
    return qRgb(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

// A white picture of so many of the window's pixels, and a canvas on it.
class Picture {
public:
    explicit Picture(double scale = 1, int width = 60, int height = 40)
        : image(blank(scale, width, height)), all{0, 0, width, height}
    {
    }

    bool is(int x, int y, Colour colour) const { return image.pixel(x, y) == rgbOf(colour); }

    int count(Colour colour) const
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                found += is(x, y, colour) ? 1 : 0;
        }
        return found;
    }

    // The part of the picture that is no longer white.
    QRect painted() const
    {
        QRect area;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (!is(x, y, ColourWhite))
                    area |= QRect(x, y, 1, 1);
            }
        }
        return area;
    }

    QImage image;
    Rect all;
    QtCanvas canvas{image};

private:
    static QImage blank(double scale, int width, int height)
    {
        QImage image(static_cast<int>(std::ceil(width * scale)),
                     static_cast<int>(std::ceil(height * scale)), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        return image;
    }
};

FontLook textLook()
{
    FontLook look = interfaceFontLook();
    look.height = 14;
    return look;
}

TEST(QtCanvas, fillsAreAsWideAsTheNumbersSay)
{
    Picture picture;
    picture.canvas.fill({3, 5, 10, 7}, Red);
    EXPECT_EQ(picture.painted(), QRect(3, 5, 7, 2));
    EXPECT_EQ(picture.count(Red), 14);
}

TEST(QtCanvas, nothingIsPaintedWhereThereIsNoRoomOrNoColour)
{
    Picture picture;
    picture.canvas.fill({10, 5, 10, 9}, Red);
    picture.canvas.fill({10, 5, 3, 9}, Red);
    picture.canvas.fill({0, 0, 9, 9}, NoColour);
    picture.canvas.fill({-20, -20, -10, -10}, Red);
    picture.canvas.fill({1000, 0, 2000, 9}, Red);
    picture.canvas.invert({5, 5, 5, 5});
    EXPECT_TRUE(picture.painted().isEmpty());
    EXPECT_TRUE(picture.canvas.takeChanged().isEmpty());
}

TEST(QtCanvas, neighboursTouchAndDoNotOverlapAtAnyScale)
{
    for (const double scale : AllScales) {
        Picture picture(scale);
        // Each inversion turns its pixels once: one that two of them met would be white again.
        int left = 0;
        for (int width = 1; left < 60; left += width, width = width % 4 + 1) {
            for (int top = 0; top < 40; top += 5)
                picture.canvas.invert({left, top, std::min(left + width, 60), top + 5});
        }
        EXPECT_EQ(picture.count(ColourBlack), std::lround(60 * scale) * std::lround(40 * scale))
            << scale;
    }
}

TEST(QtCanvas, anInversionDoneTwiceRestoresEveryPixel)
{
    for (const double scale : AllScales) {
        Picture picture(scale);
        picture.canvas.fill({0, 0, 31, 40}, Red);
        picture.canvas.text({2, 2, 50, 20}, u"Text", textLook(), ColourBlack, {});
        const QImage before = picture.image.copy();
        const Rect areas[] = {
            {1, 1, 17, 23},
            {7, 3, 59, 31},
            {2, 9, 3,  10}
        };
        for (const Rect& area : areas)
            picture.canvas.invert(area);
        EXPECT_NE(picture.image, before) << scale;
        for (const Rect& area : areas)
            picture.canvas.invert(area);
        EXPECT_EQ(picture.image, before) << scale;
    }
}

TEST(QtCanvas, aPatternIsTheSameWhereverItIsBegun)
{
    for (const double scale : AllScales) {
        Picture whole(scale);
        whole.canvas.fillPattern(whole.all, Red, Green);
        Picture parts(scale);
        for (int left = 0; left < 60; left += 7) {
            for (int top = 0; top < 40; top += 3)
                parts.canvas.fillPattern({left, top, std::min(left + 7, 60), top + 3}, Red, Green);
        }
        EXPECT_EQ(whole.image, parts.image) << scale;
    }
}

TEST(QtCanvas, aPatternIsAChessboardOfTheWindowsPixels)
{
    Picture picture(2);
    picture.canvas.fillPattern(picture.all, Red, Green);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x)
            EXPECT_TRUE(picture.is(x, y, (x / 2 + y / 2) % 2 == 0 ? Red : Green)) << x << ',' << y;
    }
}

TEST(QtCanvas, linesOfAPatternAreEquallyThinAtEveryScale)
{
    for (const double scale : AllScales) {
        for (int top = 1; top < 12; ++top) {
            Picture picture(scale);
            picture.canvas.fillPattern({0, top, 60, top + 1}, top % 3 == 0 ? Red : Green,
                                       top % 3 == 0 ? Green : Red);
            int rows = 0;
            for (int y = 0; y < picture.image.height(); ++y) {
                for (int x = 0; x < 4; ++x) {
                    if (picture.is(x, y, Red)) {
                        ++rows;
                        break;
                    }
                }
            }
            EXPECT_EQ(rows, static_cast<int>(scale)) << scale << ' ' << top;
            EXPECT_EQ(picture.painted().width(), std::lround(60 * scale)) << scale;
        }
    }
}

TEST(QtCanvas, clipsNarrowAndComeBack)
{
    Picture picture;
    {
        const Clip outer(picture.canvas, {0, 0, 20, 20});
        {
            const Clip inner(picture.canvas, {10, 10, 40, 40});
            const Clip hole(picture.canvas, {12, 12, 14, 14}, ClipKind::Exclude);
            picture.canvas.fill(picture.all, Red);
        }
        EXPECT_EQ(picture.painted(), QRect(10, 10, 10, 10));
        EXPECT_EQ(picture.count(Red), 96);
        picture.canvas.fill(picture.all, Green);
        EXPECT_EQ(picture.count(Green), 400);
    }
    picture.canvas.fill(picture.all, Red);
    EXPECT_EQ(picture.count(Red), 60 * 40);
}

TEST(QtCanvas, clipsCutEverythingThatIsDrawn)
{
    const Rect window{20, 10, 30, 20};
    const Point corners[] = {
        {0,  0 },
        {59, 5 },
        {40, 39},
        {3,  30}
    };
    for (const double scale : AllScales) {
        Picture picture(scale);
        {
            const Clip clip(picture.canvas, window);
            const Clip hole(picture.canvas, {24, 14, 26, 16}, ClipKind::Exclude);
            picture.canvas.polygon(corners, {Red, 2}, Green);
            picture.canvas.ellipse(picture.all, {Red, 3}, Green);
            picture.canvas.text({0, 0, 60, 30}, u"WWWWWWWWWWWWWW", textLook(), Red, {});
            picture.canvas.icon(picture.all, IconSave, true);
        }
        Picture allowed(scale);
        allowed.canvas.fill(window, Red);
        EXPECT_TRUE(allowed.painted().contains(picture.painted())) << scale;
        const int hole = static_cast<int>(25 * scale), down = static_cast<int>(15 * scale);
        EXPECT_TRUE(picture.is(hole, down, ColourWhite)) << scale;
        EXPECT_FALSE(picture.painted().isEmpty()) << scale;
    }
}

TEST(QtCanvas, linesAlongAnAxisAreFillsWithBothEnds)
{
    const struct {
        const char* behaviour;
        Point from, to;
        int width;
        QRect painted;
    } cases[] = {
        {"the last point is included",      {3, 4},  {9, 4},   1, {3, 4, 7, 1}  },
        {"from right to left as well",      {9, 4},  {3, 4},   1, {3, 4, 7, 1}  },
        {"and downwards",                   {3, 4},  {3, 9},   1, {3, 4, 1, 6}  },
        {"a wide one lies on both sides",   {5, 10}, {15, 10}, 3, {4, 9, 13, 3} },
        {"of an even one more lies behind", {5, 10}, {15, 10}, 2, {5, 10, 12, 2}},
        {"two equal points are a point",    {5, 5},  {5, 5},   1, {5, 5, 1, 1}  },
    };
    for (const auto& c : cases) {
        Picture picture;
        const Point points[] = {c.from, c.to};
        picture.canvas.polyline(points, {Red, c.width});
        EXPECT_EQ(picture.painted(), c.painted) << c.behaviour;
        EXPECT_EQ(picture.count(Red), c.painted.width() * c.painted.height()) << c.behaviour;
    }
}

TEST(QtCanvas, aLineOfOnePointIsAPoint)
{
    Picture picture;
    const Point point{7, 8};
    picture.canvas.polyline({&point, 1}, {Red, 1});
    picture.canvas.polyline({}, {Red, 1});
    EXPECT_EQ(picture.painted(), QRect(7, 8, 1, 1));
}

TEST(QtCanvas, slantedLinesReachBothEndsAndKeepTheirAxisPartsSharp)
{
    for (const double scale : AllScales) {
        Picture picture(scale);
        const Point points[] = {
            {5,  5 },
            {25, 5 },
            {45, 25}
        };
        picture.canvas.polyline(points, {ColourBlack, 1});
        // Above and below the flat part, as far as no line joins it, there is no soft edge.
        const int top = static_cast<int>(std::floor(5 * scale + 0.5));
        const int bottom = static_cast<int>(std::floor(6 * scale + 0.5));
        for (int x = static_cast<int>(6 * scale); x < static_cast<int>(23 * scale); ++x) {
            EXPECT_TRUE(picture.is(x, top - 1, ColourWhite)) << scale;
            EXPECT_TRUE(picture.is(x, top, ColourBlack)) << scale;
            EXPECT_TRUE(picture.is(x, bottom, ColourWhite)) << scale;
        }
        const auto at = [&](int x, int y) {
            return qGray(picture.image.pixel(static_cast<int>((x + 0.5) * scale),
                                             static_cast<int>((y + 0.5) * scale)));
        };
        EXPECT_LT(at(5, 5), 10) << scale;
        EXPECT_LT(at(35, 15), 120) << scale;
        EXPECT_LT(at(45, 25), 120) << scale;
        EXPECT_EQ(at(47, 27), 255) << scale;
    }
}

TEST(QtCanvas, shapesHaveABorderAnInsideOrEither)
{
    const struct {
        const char* behaviour;
        Colour border, inside;
    } cases[] = {
        {"both",           Red,      Green   },
        {"only a border",  Red,      NoColour},
        {"only an inside", NoColour, Green   },
        {"nothing at all", NoColour, NoColour},
    };
    for (const auto& c : cases) {
        const Rect area{10, 10, 30, 30};
        const Point corners[] = {
            {10, 10},
            {29, 10},
            {29, 29},
            {10, 29}
        };
        Picture box, many, round;
        box.canvas.rectangle(area, {c.border, 1}, c.inside);
        many.canvas.polygon(corners, {c.border, 1}, c.inside);
        round.canvas.ellipse(area, {c.border, 1}, c.inside);
        const Colour middle = c.inside == NoColour ? ColourWhite : c.inside;
        const Colour edge = c.border != NoColour ? c.border : middle;
        EXPECT_TRUE(box.is(20, 20, middle) && box.is(10, 10, edge) && box.is(29, 29, edge))
            << c.behaviour;
        EXPECT_TRUE(many.is(20, 20, middle) && many.is(10, 20, edge)) << c.behaviour;
        EXPECT_TRUE(round.is(20, 20, middle) && round.is(10, 10, ColourWhite)) << c.behaviour;
        for (const Picture* picture : {&box, &many, &round})
            EXPECT_EQ(picture->painted() | QRect(10, 10, 20, 20), QRect(10, 10, 20, 20))
                << c.behaviour;
        if (c.border != NoColour) {
            EXPECT_EQ(box.count(Red), 4 * 19) << c.behaviour;
            EXPECT_EQ(many.count(Red), 4 * 19) << c.behaviour;
        }
    }
}

TEST(QtCanvas, aRectangleTooSmallForItsBorderIsAllBorder)
{
    Picture picture;
    picture.canvas.rectangle({5, 5, 8, 20}, {Red, 2}, Green);
    EXPECT_EQ(picture.painted(), QRect(5, 5, 3, 15));
    EXPECT_EQ(picture.count(Red), 45);
}

// --- Texts

TEST(QtCanvas, textsStandWhereTheirPlaceSays)
{
    const Rect area{10, 5, 110, 45};
    const struct {
        const char* behaviour;
        TextPlace place;
        bool left, right, top, bottom; // in the half of the area, or if neither, in the middle
    } cases[] = {
        {"left and below",  {TextAcross::Left, TextDown::Bottom},   true,  false, false, true },
        {"right and above", {TextAcross::Right, TextDown::Top},     false, true,  true,  false},
        {"in the middle",   {TextAcross::Center, TextDown::Middle}, false, false, false, false},
    };
    for (const double scale : AllScales) {
        for (const auto& c : cases) {
            Picture picture(scale, 120, 50);
            picture.canvas.text(area, u"Hxg", textLook(), ColourBlack, c.place);
            const QRectF ink(picture.painted());
            const double left = ink.left() / scale - area.left;
            const double right = area.right - ink.right() / scale;
            const double top = ink.top() / scale - area.top;
            const double bottom = area.bottom - ink.bottom() / scale;
            EXPECT_TRUE(c.left ? left >= 0 && left < 3 : left > 30) << c.behaviour << scale;
            EXPECT_TRUE(c.right ? right >= 0 && right < 3 : right > 30) << c.behaviour << scale;
            EXPECT_TRUE(c.top ? top >= 0 && top < 5 : top > 10) << c.behaviour << scale;
            EXPECT_TRUE(c.bottom ? bottom >= 0 && bottom < 3 : bottom > 10) << c.behaviour << scale;
            if (!c.left && !c.right) {
                EXPECT_NEAR(left, right, 2) << c.behaviour << scale;
            }
        }
    }
}

TEST(QtCanvas, aTextFitsTheWidthThatIsMeasured)
{
    QtTextMeasure measure;
    const FontLook look = textLook();
    const std::u16string_view texts[] = {u"1,234.50", u"Quarterly", u"e\u0301a\u0308o\u0302",
                                         u"\u05E9\u05DC\u05D5\u05DD", u"12/31/2001"};
    for (const double scale : AllScales) {
        for (const std::u16string_view text : texts) {
            const int width = measure.textWidth(look, text);
            Picture tight(scale, 200, 30), wide(scale, 200, 30);
            tight.canvas.text({40, 5, 40 + width, 25}, text, look, ColourBlack, {});
            wide.canvas.text({40, 5, 190, 25}, text, look, ColourBlack, {});
            EXPECT_EQ(tight.image, wide.image) << scale;
            // And it is not much narrower either.
            const double ink = tight.painted().width() / scale;
            EXPECT_LE(ink, width + 1) << scale;
            EXPECT_GT(ink, width * 3 / 4) << scale;
        }
    }
}

TEST(QtCanvas, whatDoesNotFitIsCutOff)
{
    const std::u16string_view texts[] = {u"Wider than its place",
                                         u"\u05E9\u05DC\u05D5\u05DD x y z"};
    for (const double scale : AllScales) {
        for (const std::u16string_view text : texts) {
            for (const TextAcross across :
                 {TextAcross::Left, TextAcross::Center, TextAcross::Right}) {
                Picture picture(scale, 100, 40), place(scale, 100, 40);
                const Rect area{30, 12, 50, 22};
                picture.canvas.text(area, text, textLook(), ColourBlack, {across});
                place.canvas.fill(area, Red);
                EXPECT_TRUE(place.painted().contains(picture.painted())) << scale;
                EXPECT_FALSE(picture.painted().isEmpty()) << scale;
            }
        }
    }
}

// Of a long text only a part is shaped: what is seen is what a part shows that is drawn whole.
TEST(QtCanvas, aLongTextLooksAsItsVisiblePartDoes)
{
    constexpr std::size_t length = 20000, part = 150;
    const struct {
        const char* behaviour;
        char16_t first;
        char16_t letters;
        TextAcross across;
        bool fromStart;
    } cases[] = {
        {"begins at the left",           u'a',      26, TextAcross::Left,  true },
        {"ends at the right",            u'a',      26, TextAcross::Right, false},
        {"runs to the left, and on",     u'\u05D0', 20, TextAcross::Left,  false},
        {"runs to the left, and begins", u'\u05D0', 20, TextAcross::Right, true },
        {"of a script that is shaped",   u'\u4E00', 90, TextAcross::Left,  true },
    };
    for (const auto& c : cases) {
        std::u16string text;
        for (std::size_t at = 0; at < length; ++at)
            text += static_cast<char16_t>(c.first + at * at % 89 % c.letters);
        Picture whole(1, 100, 20), seen(1, 100, 20);
        whole.canvas.text(whole.all, text, textLook(), ColourBlack, {c.across});
        seen.canvas.text(seen.all, text.substr(c.fromStart ? 0 : length - part, part), textLook(),
                         ColourBlack, {c.across});
        EXPECT_FALSE(whole.painted().isEmpty()) << c.behaviour;
        EXPECT_EQ(whole.image, seen.image) << c.behaviour;
    }
}

TEST(QtCanvas, aWrappedTextIsAsHighAsMeasured)
{
    QtTextMeasure measure;
    const FontLook look = textLook();
    const std::u16string_view text = u"Hag several words go\nhere, line by line gH";
    for (const int width : {30, 60, 90}) {
        const int height = measure.wrappedHeight(look, text, width);
        Picture top(1, 200, 200), bottom(1, 200, 200);
        top.canvas.text({0, 0, width, 200}, text, look, ColourBlack,
                        {TextAcross::Left, TextDown::Top, true});
        bottom.canvas.text({0, 0, width, height}, text, look, ColourBlack,
                           {TextAcross::Left, TextDown::Bottom, true});
        EXPECT_EQ(top.image, bottom.image) << width;
        EXPECT_GT(top.painted().bottom(), height - look.height) << width;
        EXPECT_LT(top.painted().bottom(), height) << width;
    }
}

TEST(QtCanvas, anAmpersandIsALetter)
{
    Picture with, without;
    with.canvas.text(with.all, u"a&b", textLook(), ColourBlack, {});
    without.canvas.text(without.all, u"ab", textLook(), ColourBlack, {});
    EXPECT_GT(with.painted().width(), without.painted().width() + 4);
}

TEST(QtCanvas, whatLiesBehindATextStays)
{
    Picture picture;
    picture.canvas.fill(picture.all, Green);
    const int before = picture.count(Green);
    picture.canvas.text({10, 10, 50, 30}, u"ab", textLook(), ColourBlack, {});
    EXPECT_LT(picture.count(Green), before);
    EXPECT_GT(picture.count(Green), before - 200);
    EXPECT_EQ(picture.count(ColourWhite), 0);
}

TEST(QtCanvas, linesUnderAndThroughATextAreSharpAndAsLongAsIt)
{
    QtTextMeasure measure;
    for (const double scale : AllScales) {
        for (const bool under : {true, false}) {
            Picture picture(scale, 100, 30);
            FontLook look = textLook();
            (under ? look.underline : look.strikeout) = true;
            const std::u16string_view text = u"i   i"; // hardly any ink of its own
            picture.canvas.text({10, 5, 90, 25}, text, look, Red, {});
            int rows = 0, longest = 0;
            for (int y = 0; y < picture.image.height(); ++y) {
                int red = 0;
                for (int x = 0; x < picture.image.width(); ++x)
                    red += picture.is(x, y, Red) ? 1 : 0;
                rows += red > 8 ? 1 : 0;
                longest = std::max(longest, red);
            }
            EXPECT_NEAR(longest, measure.textWidth(look, text) * scale, 2) << under << scale;
            EXPECT_GE(rows, 1) << under << scale;
            EXPECT_LE(rows, 2) << under << scale;
        }
    }
}

TEST(QtCanvas, anIconStandsInTheMiddle)
{
    Picture picture(1, 60, 40);
    picture.canvas.icon({10, 5, 50, 21}, IconSave, true);
    EXPECT_TRUE(QRect(22, 5, 16, 16).contains(picture.painted()));
    EXPECT_GE(picture.painted().width(), 14);
    Picture none;
    none.canvas.icon({10, 5, 50, 21}, 77, true);
    EXPECT_TRUE(none.painted().isEmpty());
}

// --- Scrolling, and what has changed

TEST(QtCanvas, scrollingMovesWhatStaysInTheArea)
{
    const struct {
        const char* behaviour;
        int dx, dy;
    } cases[] = {
        {"up",        0,  -6},
        {"down",      0,  6 },
        {"left",      -9, 0 },
        {"right",     9,  0 },
        {"both ways", 5,  -4},
    };
    const Rect area{10, 10, 50, 35};
    for (const auto& c : cases) {
        Picture picture;
        for (int i = 0; i < 40; ++i)
            picture.canvas.fill({i, i, 60 - i, 40 - i / 2},
                                rgb(static_cast<unsigned>(i) * 6, 9, 9));
        const QImage before = picture.image.copy();
        EXPECT_TRUE(picture.canvas.scroll(area, c.dx, c.dy)) << c.behaviour;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x) {
                const bool moved = area.contains(x, y) && area.contains(x - c.dx, y - c.dy);
                const QRgb expected = moved ? before.pixel(x - c.dx, y - c.dy) : before.pixel(x, y);
                ASSERT_EQ(picture.image.pixel(x, y), expected) << c.behaviour << x << ',' << y;
            }
        }
    }
}

TEST(QtCanvas, aScrollByPartsOfPixelsIsRefused)
{
    Picture picture(1.5);
    picture.canvas.fill({0, 0, 20, 20}, Red);
    const QImage before = picture.image.copy();
    EXPECT_FALSE(picture.canvas.scroll(picture.all, 0, 3));
    EXPECT_EQ(picture.image, before);
    EXPECT_TRUE(picture.canvas.scroll(picture.all, 0, 4));
    EXPECT_EQ(picture.image.copy(0, 6, 90, 54), before.copy(0, 0, 90, 54));
}

TEST(QtCanvas, aScrollByMoreThanTheAreaMovesNothing)
{
    Picture picture;
    picture.canvas.fill({0, 0, 20, 20}, Red);
    const QImage before = picture.image.copy();
    EXPECT_TRUE(picture.canvas.scroll({0, 0, 30, 30}, 0, 30));
    EXPECT_EQ(picture.image, before);
}

TEST(QtCanvas, tellsWhatWasPaintedOnce)
{
    for (const double scale : AllScales) {
        Picture picture(scale);
        picture.canvas.takeChanged();
        picture.canvas.fill({3, 3, 7, 9}, Red);
        picture.canvas.invert({40, 20, 50, 30});
        const QRegion changed = picture.canvas.takeChanged();
        EXPECT_TRUE(changed.contains(QRect(3, 3, 4, 6))) << scale;
        EXPECT_TRUE(changed.contains(QRect(40, 20, 10, 10))) << scale;
        EXPECT_FALSE(changed.intersects(QRect(10, 0, 25, 40))) << scale;
        EXPECT_TRUE(picture.canvas.takeChanged().isEmpty()) << scale;
    }
}

TEST(QtCanvas, whatChangedIsCutToTheClip)
{
    Picture picture;
    const Clip clip(picture.canvas, {5, 5, 15, 15});
    picture.canvas.fill(picture.all, Red);
    picture.canvas.text(picture.all, u"Text", textLook(), ColourBlack, {});
    EXPECT_TRUE(QRegion(5, 5, 10, 10).contains(picture.canvas.takeChanged().boundingRect()));
}

TEST(QtCanvas, manySmallPartsAreToldAsFewLargerOnes)
{
    Picture picture;
    QRegion painted;
    for (int i = 0; i < 400; ++i) {
        const int x = i * 7 % 60, y = i * 3 % 40;
        picture.canvas.fill({x, y, x + 1, y + 1}, Red);
        painted += QRect(x, y, 1, 1);
    }
    const QRegion changed = picture.canvas.takeChanged();
    EXPECT_LT(changed.rectCount(), 64);
    EXPECT_EQ(painted - changed, QRegion());
}

TEST(QtCanvas, aCopyThatIsHeldStaysAsItIs)
{
    Picture picture;
    picture.canvas.text(picture.all, u"Text", textLook(), ColourBlack, {});
    const QImage held = picture.image;
    const QImage before = held.copy();
    picture.canvas.fill({0, 0, 20, 20}, Red);
    picture.canvas.text(picture.all, u"More", textLook(), ColourBlack, {TextAcross::Right});
    EXPECT_EQ(held, before);
    EXPECT_NE(picture.image, before);
    EXPECT_TRUE(picture.is(1, 1, Red));
}

} // namespace
} // namespace vorn::qt
