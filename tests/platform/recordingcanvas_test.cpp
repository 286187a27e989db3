#include "platform/headless/recordingcanvas.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Lines = std::vector<std::string>;

constexpr Rect Area = {1, 2, 30, 40};
constexpr Colour Red = rgb(255, 16, 0);

TEST(RecordingCanvas, writesDownWhatIsPainted)
{
    RecordingCanvas canvas;
    const Point points[] = {
        {0, 0 },
        {5, -1},
    };
    canvas.fill(Area, Red);
    canvas.fillPattern(Area, Red, ColourWhite);
    canvas.invert(Area);
    canvas.polyline(points, {Red, 2});
    canvas.polygon(points, {Red, 1}, NoColour);
    canvas.rectangle(Area, {NoColour, 1}, Red);
    canvas.ellipse(Area, {}, ColourWhite);
    canvas.icon(Area, 110, true);
    canvas.icon(Area, 111, false);
    EXPECT_EQ(canvas.operations,
              (Lines{"fill 1,2-30,40 ff1000", "pattern 1,2-30,40 ff1000 ffffff", "invert 1,2-30,40",
                     "polyline 0,0 5,-1 ff1000 w2", "polygon 0,0 5,-1 ff1000 w1 in -",
                     "rectangle 1,2-30,40 - w1 in ff1000", "ellipse 1,2-30,40 000000 w1 in ffffff",
                     "icon 1,2-30,40 110", "icon 1,2-30,40 111 disabled"}));
}

TEST(RecordingCanvas, writesDownHowTextsLook)
{
    RecordingCanvas canvas;
    FontLook font;
    font.face = u"Tahoma";
    canvas.text(Area, u"a&\u00e9", font, Red, {});
    font.weight = 700;
    font.italic = font.underline = font.strikeout = true;
    font.height = 9;
    canvas.text(Area, u"", font, Red, {TextAcross::Center, TextDown::Middle, true});
    canvas.text(Area, u"", font, Red, {TextAcross::Right, TextDown::Top, false});
    EXPECT_EQ(canvas.operations,
              (Lines{"text 1,2-30,40 \"a&\\233\" Tahoma 14 ff1000 left bottom",
                     "text 1,2-30,40 \"\" Tahoma 9 bold italic underline strikeout ff1000 center "
                     "middle wrap",
                     "text 1,2-30,40 \"\" Tahoma 9 bold italic underline strikeout ff1000 right "
                     "top"}));
}

TEST(RecordingCanvas, knowsWhetherAllClipsAreTakenBack)
{
    RecordingCanvas canvas;
    {
        const Clip only(canvas, Area);
        const Clip around(canvas, Area, ClipKind::Exclude);
        EXPECT_FALSE(canvas.isBalanced());
    }
    EXPECT_TRUE(canvas.isBalanced());
    EXPECT_EQ(canvas.operations, (Lines{"clip 1,2-30,40", "exclude 1,2-30,40", "pop", "pop"}));
    canvas.popClip();
    EXPECT_FALSE(canvas.isBalanced());
}

TEST(RecordingCanvas, scrollsOnlyIfItCan)
{
    RecordingCanvas canvas;
    EXPECT_TRUE(canvas.scroll(Area, 0, -17));
    canvas.scrolls = false;
    EXPECT_FALSE(canvas.scroll(Area, 0, -17));
    EXPECT_EQ(canvas.operations, Lines{"scroll 1,2-30,40 by 0,-17"});
}

TEST(RecordingCanvas, findsOperationsByTheirBeginning)
{
    RecordingCanvas canvas;
    canvas.fill(Area, Red);
    canvas.invert(Area);
    canvas.fill(Area, ColourWhite);
    EXPECT_EQ(canvas.having("fill "), (Lines{"fill 1,2-30,40 ff1000", "fill 1,2-30,40 ffffff"}));
    EXPECT_EQ(canvas.count("invert"), 1);
    EXPECT_EQ(canvas.count("text"), 0);
}

} // namespace
} // namespace vorn
