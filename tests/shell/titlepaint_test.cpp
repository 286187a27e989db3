#include "shell/titlepaint.h"

#include "platform/headless/recordingcanvas.h"
#include "shell/cursor.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Lines = std::vector<std::string>;

// Columns of 64 pixels from 26 on, rows of 17 from 14 on; 3 whole columns and 2 whole rows are
// seen.
class TitlePaintTest : public testing::Test {
protected:
    static constexpr Rect All = {0, 0, 1000, 1000};

    TitlePaintTest()
    {
        session.sheet().columns.setDefaultWidth(64 * 73 / 2);
        session.app.formulaBarVisible = false;
        session.app.clientArea = {0, 0, 225 + ScrollBarThickness, 50 + ScrollBarThickness};
    }

    RecordingCanvas painted(const Rect& area = All)
    {
        RecordingCanvas canvas;
        const GridLayout areas = currentLayout();
        paintTitles(canvas, Titles(session.sheet(), areas), session.sheet().selection.range, area);
        EXPECT_TRUE(canvas.isBalanced());
        return canvas;
    }

    // The labels, with a star behind those of pressed boxes.
    std::string labels(const Rect& area = All)
    {
        std::string all;
        bool pressed = false;
        for (const std::string& operation : painted(area).operations) {
            if (operation.starts_with("fill"))
                pressed = operation.ends_with("c4d2e6");
            if (!operation.starts_with("text"))
                continue;
            const std::size_t from = operation.find('"') + 1;
            all += all.empty() ? "" : " ";
            all += operation.substr(from, operation.find('"', from) - from) + (pressed ? "*" : "");
        }
        return all;
    }
    // Where titles change from one selection to another.
    std::string changed(std::u16string_view first, std::u16string_view last = {})
    {
        const RangeRef before = session.sheet().selection.range;
        session.select(first, last);
        const GridLayout areas = currentLayout();
        const Region region =
            titleChanges(Titles(session.sheet(), areas), session.sheet().selection.range, before);
        std::string all;
        for (const Rect& rect : region.rects()) {
            all += all.empty() ? "" : " ";
            all += std::to_string(rect.left) + ',' + std::to_string(rect.top) + '-' +
                   std::to_string(rect.right) + ',' + std::to_string(rect.bottom);
        }
        return all;
    }

    Session session;
};

TEST_F(TitlePaintTest, paintsABoxForEachColumnAndRow)
{
    session.select(u"A2", u"IV2");
    const Lines expected = {
        "clip 0,0-26,14",
        "fill 0,0-26,14 a4a4a0",
        "fill 0,0-25,13 ffffff",
        "fill 1,1-25,13 ecece8",
        "pop",
        "clip 26,0-90,14",
        "fill 26,0-90,14 a4a4a0",
        "fill 26,0-89,13 ffffff",
        "fill 27,1-89,13 ecece8",
        "text 26,0-90,14 \"A\" Tahoma 15 202020 center middle",
        "pop",
        "clip 0,14-26,50",
        "fill 0,14-26,31 a4a4a0",
        "fill 0,14-25,30 ffffff",
        "fill 1,15-25,30 ecece8",
        "text 0,14-26,31 \"1\" Tahoma 15 202020 center middle",
        "fill 0,31-26,48 a4a4a0",
        "fill 0,31-25,47 c4d2e6",
        "text 0,31-26,48 \"2\" Tahoma 15 202020 center middle",
        "fill 0,48-26,65 a4a4a0",
        "fill 0,48-25,64 ffffff",
        "fill 1,49-25,64 ecece8",
        "text 0,48-26,65 \"3\" Tahoma 15 202020 center middle",
        "pop",
    };
    EXPECT_EQ(painted({0, 0, 90, 50}).operations, expected);
}

TEST_F(TitlePaintTest, namesWhatIsSeen)
{
    EXPECT_EQ(labels(), "A B C D 1 2 3");
    session.sheet().leftColumn = 25;
    session.sheet().topRow = 998;
    EXPECT_EQ(labels(), "Z AA AB AC 999 1000 1001");
    session.sheet().columns.setColumnHidden(26, 27, true);
    session.sheet().setRowHidden(999, true);
    EXPECT_EQ(labels(), "Z AC AD AE 999 1001 1002") << "hidden ones have no box";
    session.sheet().leftColumn = 254;
    session.sheet().topRow = 16382;
    EXPECT_EQ(labels(), "IU IV 16383 16384") << "the sheet ends before the view";
    session.sheet().titles.set(1, 2, 1, 1);
    session.sheet().titleColumns = true;
    session.sheet().titleRows = true;
    EXPECT_EQ(labels(), "B IU IV 3 16383 16384") << "frozen ones come first";
}

TEST_F(TitlePaintTest, pressesWholeColumnsAndRows)
{
    const struct {
        const char* behaviour;
        std::u16string_view first, last;
        const char* labels;
    } cases[] = {
        {"a cell presses none",  u"B2", u"B2",      "A B C D 1 2 3"       },
        {"a range neither",      u"A1", u"C3",      "A B C D 1 2 3"       },
        {"whole columns",        u"B1", u"C16384",  "A B* C* D 1 2 3"     },
        {"whole rows",           u"A2", u"IV9",     "A B C D 1 2* 3*"     },
        {"the whole sheet both", u"A1", u"IV16384", "A* B* C* D* 1* 2* 3*"},
        {"columns less one row", u"B2", u"C16384",  "A B C D 1 2 3"       },
    };
    for (const auto& c : cases) {
        session.select(c.first, c.last);
        EXPECT_EQ(labels(), c.labels) << c.behaviour;
        const bool all = c.last == u"IV16384";
        EXPECT_EQ(painted({0, 0, 5, 5}).operations.at(2).ends_with("c4d2e6"), all) << c.behaviour;
    }
}

TEST_F(TitlePaintTest, fillsWhatIsBehindTheSheet)
{
    session.sheet().leftColumn = 254;
    session.sheet().topRow = 16383;
    const RecordingCanvas canvas = painted();
    EXPECT_EQ(canvas.having("fill 154,0-225,14"), (Lines{"fill 154,0-225,14 ecece8"}));
    EXPECT_EQ(canvas.having("fill 0,31-26,50"), (Lines{"fill 0,31-26,50 ecece8"}));
}

TEST_F(TitlePaintTest, paintsOnlyWhatMeetsTheArea)
{
    EXPECT_EQ(labels({30, 0, 40, 10}), "A");
    EXPECT_EQ(labels({90, 0, 91, 1}), "B");
    EXPECT_EQ(labels({0, 31, 300, 48}), "2");
    EXPECT_EQ(labels({26, 14, 300, 300}), "") << "the cells are not its";
    EXPECT_EQ(painted({26, 14, 300, 300}).operations, Lines());
    EXPECT_EQ(labels({0, 50, 300, 300}), "") << "below the grid";
}

TEST_F(TitlePaintTest, hasNothingToPaintWithoutTitles)
{
    session.sheet().showTitles = false;
    EXPECT_EQ(painted().operations, Lines());
    session.sheet().showTitles = true;
    session.app.fullScreen = true;
    EXPECT_EQ(painted().operations, Lines());
}

TEST_F(TitlePaintTest, writesAsTheZoomSays)
{
    const struct {
        int zoom, height;
    } cases[] = {
        {100, 15},
        {200, 30},
        {85,  12},
        {84,  13},
        {25,  4 },
    };
    for (const auto& c : cases) {
        const FontLook font = titleFont(c.zoom);
        EXPECT_EQ(font.height, c.height) << c.zoom;
        EXPECT_EQ(font.face, u"Tahoma");
        EXPECT_EQ(font.weight, 400);
    }
}

// A character is half as wide as its line is high.
TEST_F(TitlePaintTest, writesSmallerWhatIsTooWide)
{
    session.sheet().topRow = 16383;
    session.sheet().columns.setColumnWidth(1, 1, 9 * 73 / 2);
    const RecordingCanvas canvas = painted();
    EXPECT_EQ(canvas.having("text 0,14"),
              (Lines{"text 0,14-26,31 \"16384\" Tahoma 9 202020 center middle"}));
    EXPECT_EQ(canvas.having("text 26,0"),
              (Lines{"text 26,0-90,14 \"A\" Tahoma 15 202020 center middle"}))
        << "a wide column";
    EXPECT_EQ(canvas.having("text 90,0"),
              (Lines{"text 90,0-98,14 \"B\" Tahoma 11 202020 center middle"}))
        << "a narrow one";
}

TEST_F(TitlePaintTest, tellsWhatChanges)
{
    const struct {
        const char* behaviour;
        std::u16string_view first, last;
        const char* changed;
    } cases[] = {
        {"cells press nothing",              u"B2", u"C3",      ""                       },
        {"a column",                         u"B1", u"B16384",  "90,0-154,14"            },
        {"one more",                         u"B1", u"C16384",  "154,0-218,14"           },
        {"the other way, only what is seen", u"A1", u"B16384",  "26,0-90,14 154,0-218,14"},
        {"from columns to rows",             u"A2", u"IV3",     "26,0-154,14 0,31-26,50" },
        {"the whole sheet",                  u"A1", u"IV16384", "0,0-225,14 0,14-26,31"  },
        {"the same again",                   u"A1", u"IV16384", ""                       },
        {"and a cell",                       u"A1", u"A1",      "0,0-225,14 0,14-26,50"  },
        {"out of view nothing changes",      u"Z1", u"Z16384",  ""                       },
    };
    for (const auto& c : cases)
        EXPECT_EQ(changed(c.first, c.last), c.changed) << c.behaviour;
}

} // namespace
} // namespace vorn
