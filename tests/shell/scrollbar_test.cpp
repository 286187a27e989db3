#include "shell/scrollbar.h"

#include "platform/headless/recordingcanvas.h"
#include "support/rects.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr BarDirection Across = BarDirection::Across;
constexpr BarDirection Down = BarDirection::Down;

// Both have a track of 70 pixels, from 15 to 85.
constexpr Rect AcrossArea = {0, 200, 100, 215};
constexpr Rect DownArea = {200, 0, 215, 100};

bool isWithin(const Rect& part, const Rect& area)
{
    return part == Rect() || (!part.isEmpty() && part.intersected(area) == part);
}

TEST(ScrollBar, hasItsPartsOneBehindTheOther)
{
    const ScrollReach reach = {0, 100, 50, 25};
    const ScrollBar across(Across, AcrossArea, reach);
    EXPECT_EQ(across.backButton(), (Rect{0, 200, 15, 215}));
    EXPECT_EQ(across.track(), (Rect{15, 200, 85, 215}));
    EXPECT_EQ(across.thumb(), (Rect{43, 200, 57, 215}));
    EXPECT_EQ(across.onButton(), (Rect{85, 200, 100, 215}));
    const ScrollBar down(Down, DownArea, reach);
    EXPECT_EQ(down.backButton(), (Rect{200, 0, 215, 15}));
    EXPECT_EQ(down.track(), (Rect{200, 15, 215, 85}));
    EXPECT_EQ(down.thumb(), (Rect{200, 43, 215, 57}));
    EXPECT_EQ(down.onButton(), (Rect{200, 85, 215, 100}));

    const struct {
        int place;
        ScrollPart part;
    } cases[] = {
        {-1,  ScrollNone    },
        {0,   ScrollLineBack},
        {14,  ScrollLineBack},
        {15,  ScrollPageBack},
        {42,  ScrollPageBack},
        {43,  ScrollThumb   },
        {56,  ScrollThumb   },
        {57,  ScrollPageOn  },
        {84,  ScrollPageOn  },
        {85,  ScrollLineOn  },
        {99,  ScrollLineOn  },
        {100, ScrollNone    },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(across.partAt(c.place, 207), c.part) << c.place;
        EXPECT_EQ(down.partAt(207, c.place), c.part) << c.place;
        EXPECT_EQ(across.partAt(c.place, 199), ScrollNone) << "above it";
        EXPECT_EQ(down.partAt(215, c.place), ScrollNone) << "on its right";
    }
}

TEST(ScrollBar, showsWithItsThumbWhereTheViewStands)
{
    const struct {
        const char* behaviour;
        ScrollReach reach;
        int from, to; // of the thumb
    } cases[] = {
        {"it begins at the start",               {0, 100, 0, 25},       15, 29},
        {"it ends at the end",                   {0, 100, 100, 25},     71, 85},
        {"also of a reach that begins later",    {40, 140, 40, 25},     15, 29},
        {"and ends there",                       {40, 140, 140, 25},    71, 85},
        {"it is long if much is seen",           {0, 30, 0, 40},        15, 55},
        {"it is never too short to be taken",    {0, 16383, 0, 16},     15, 27},
        {"wherever it stands",                   {0, 16383, 16383, 16}, 73, 85},
        {"it fills the track if all is in view", {0, 0, 0, 1},          15, 85},
        {"also if that is the last",             {255, 255, 255, 4},    15, 85},
        {"great numbers fit",                    {0, 1, 1, 2000000000}, 16, 85},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ScrollBar(Across, AcrossArea, c.reach).thumb(), (Rect{c.from, 200, c.to, 215}))
            << c.behaviour;
}

TEST(ScrollBar, goesToBothEndsWithItsThumb)
{
    const struct {
        const char* behaviour;
        int x, position;
    } cases[] = {
        {"where it was taken it stays", 45,     50 },
        {"a pixel on",                  46,     52 },
        {"a pixel back",                44,     48 },
        {"at the start of the track",   17,     0  },
        {"before it",                   16,     0  },
        {"however far",                 -30000, 0  },
        {"at its end",                  73,     100},
        {"behind it",                   74,     100},
        {"however far",                 30000,  100},
    };
    const ScrollReach reach = {0, 100, 50, 25};
    const ScrollBar across(Across, AcrossArea, reach);
    const ScrollBar down(Down, DownArea, reach);
    const int grip = across.gripAt(45, 207);
    EXPECT_EQ(grip, 2);
    EXPECT_EQ(down.gripAt(207, 45), 2);
    for (const auto& c : cases) {
        EXPECT_EQ(across.positionAt(c.x, -500, grip), c.position) << c.behaviour;
        EXPECT_EQ(down.positionAt(500, c.x, grip), c.position) << c.behaviour;
    }
}

TEST(ScrollBar, standsUnderThePenThatDragsIt)
{
    for (const ScrollReach& reach : {
             ScrollReach{0, 255,   0, 4 },
             {4, 255,   4, 3 },
             {0, 16383, 9, 16}
    }) {
        for (int x = 15; x < 85; ++x) {
            const ScrollBar bar(Across, AcrossArea, reach);
            ScrollReach dragged = reach;
            dragged.position = bar.positionAt(x, 207, 5);
            const ScrollBar after(Across, AcrossArea, dragged);
            EXPECT_GE(dragged.position, reach.first);
            EXPECT_LE(dragged.position, reach.last);
            EXPECT_EQ(after.thumb().left, std::clamp(x - 5, 15, 85 - bar.thumb().width())) << x;
            EXPECT_EQ(after.positionAt(x, 207, 5), dragged.position) << "and rests there";
        }
    }
}

TEST(ScrollBar, isNotDraggedWhereAllIsInView)
{
    const ScrollBar bar(Across, AcrossArea, {7, 7, 7, 20});
    EXPECT_EQ(bar.partAt(15, 207), ScrollThumb);
    EXPECT_EQ(bar.partAt(84, 207), ScrollThumb);
    for (int x : {-1000, 50, 1000})
        EXPECT_EQ(bar.positionAt(x, 207, 35), 7);
}

TEST(ScrollBar, survivesAnySize)
{
    for (int length = 0; length <= 60; ++length) {
        for (int thickness : {0, 1, 15}) {
            const Rect area = {0, 0, length, thickness};
            const ScrollBar bar(Across, area, {0, 255, 100, 4});
            for (const Rect& part : {bar.backButton(), bar.track(), bar.thumb(), bar.onButton()})
                EXPECT_TRUE(isWithin(part, area)) << length << " by " << thickness;
            EXPECT_EQ(bar.thumb().isEmpty(), length < 30 + LeastThumbLength || thickness == 0);
            int former = ScrollNone;
            for (int x = 0; x < length && thickness > 0; ++x) {
                const ScrollPart part = bar.partAt(x, 0);
                if (part != ScrollNone) {
                    EXPECT_GE(part, former);
                    former = part;
                }
            }
            RecordingCanvas canvas;
            paintScrollBar(canvas, {Across, area, bar.thumb(), ScrollNone});
            EXPECT_EQ(canvas.operations.empty(), length == 0 || thickness == 0)
                << length << " by " << thickness;
        }
    }
}

// --- The look

constexpr ScrollBarLook Idle = {
    Across, AcrossArea, {43, 200, 57, 215},
      ScrollNone
};

TEST(ScrollBar, isPaintedFlat)
{
    RecordingCanvas canvas;
    paintScrollBar(canvas, Idle);
    EXPECT_EQ(canvas.operations, (std::vector<std::string>{
                                     "fill 15,200-85,215 ddddd8",
                                     "rectangle 43,200-57,215 a4a4a0 w1 in ecece8",
                                     "rectangle 0,200-15,215 a4a4a0 w1 in ecece8",
                                     "polygon 8,204 5,207 8,210 202020 w1 in 202020",
                                     "rectangle 85,200-100,215 a4a4a0 w1 in ecece8",
                                     "polygon 91,204 94,207 91,210 202020 w1 in 202020",
                                 }));
    canvas.operations.clear();
    paintScrollBar(canvas, {Down, DownArea, {}, ScrollNone});
    EXPECT_EQ(canvas.operations, (std::vector<std::string>{
                                     "fill 200,15-215,85 ddddd8",
                                     "rectangle 200,0-215,15 a4a4a0 w1 in ecece8",
                                     "polygon 204,8 207,5 210,8 202020 w1 in 202020",
                                     "rectangle 200,85-215,100 a4a4a0 w1 in ecece8",
                                     "polygon 204,91 207,94 210,91 202020 w1 in 202020",
                                 }));
}

TEST(ScrollBar, showsWhatIsHeld)
{
    const struct {
        ScrollPart pressed;
        const char* operation;
    } cases[] = {
        {ScrollLineBack, "rectangle 0,200-15,215 a4a4a0 w1 in c4d2e6"   },
        {ScrollLineBack, "polygon 9,205 6,208 9,211 202020 w1 in 202020"},
        {ScrollThumb,    "rectangle 43,200-57,215 a4a4a0 w1 in c4d2e6"  },
        {ScrollLineOn,   "rectangle 85,200-100,215 a4a4a0 w1 in c4d2e6" },
    };
    for (const auto& c : cases) {
        RecordingCanvas canvas;
        ScrollBarLook look = Idle;
        look.pressed = c.pressed;
        paintScrollBar(canvas, look);
        EXPECT_EQ(canvas.count(c.operation), 1) << c.operation;
    }
}

TEST(ScrollBar, isPaintedAgainOnlyWhereItChanged)
{
    ScrollBarLook moved = Idle;
    moved.thumb = {50, 200, 64, 215};
    ScrollBarLook pressed = moved;
    pressed.pressed = ScrollPageOn;
    RecordingCanvas canvas;
    paintScrollBarChange(canvas, Idle, Idle);
    EXPECT_EQ(canvas.operations.size(), 0U);
    paintScrollBarChange(canvas, moved, Idle);
    EXPECT_EQ(canvas.operations,
              (std::vector<std::string>{"fill 15,200-85,215 ddddd8",
                                        "rectangle 50,200-64,215 a4a4a0 w1 in ecece8"}));
    canvas.operations.clear();
    paintScrollBarChange(canvas, pressed, Idle);
    EXPECT_EQ(canvas.count("polygon"), 2);
}

} // namespace
} // namespace vorn
