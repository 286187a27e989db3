#include "shell/filldrag.h"

#include "support/penhand.h"

namespace vorn {
namespace {

class FillDragTest : public PenHand {};

TEST_F(FillDragTest, growsAlongOneAxisForAFill)
{
    widen(500);
    const struct {
        const char* behaviour;
        std::u16string_view first, second;
        Points points;
        const char* selected;
    } cases[] = {
        {"to the right",          u"A1", u"A1", {{89, 48}, {120, 40}},               "A1:B1 active A1"},
        {"down",                  u"A1", u"A1", {{89, 48}, {57, 100}},               "A1:A5 active A1"},
        {"right before down",     u"A1", u"A1", {{89, 48}, {183, 100}},              "A1:C1 active A1"},
        {"down after right",      u"A1", u"A1", {{89, 48}, {183, 40}, {57, 60}},     "A1:A2 active A1"},
        {"and back",              u"A1", u"A1", {{89, 48}, {183, 40}, {57, 40}},     "A1"             },
        {"a tap on it",           u"A1", u"A1", {{91, 50}},                          "A1"             },
        {"a range",               u"B2", u"C3", {{215, 82}, {300, 120}},             "B2:E3 active B2"},
        {"down, right kept",      u"B2", u"C3", {{215, 82}, {300, 120}, {150, 120}}, "B2:C6 active B2"},
        {"left of it too",        u"B2", u"C3", {{215, 82}, {57, 120}},              "B2:C6 active B2"},
        {"not inside",            u"B2", u"C3", {{215, 82}, {150, 120}, {183, 73}},  "B2:C6 active B2"},
        {"nor left of it",        u"B2", u"C3", {{215, 82}, {57, 56}},               "B2:C3 active B2"},
        {"nor above it",          u"B2", u"C3", {{215, 82}, {150, 39}},              "B2:C3 active B2"},
        {"but on its first cell", u"B2", u"C3", {{215, 82}, {150, 120}, {120, 56}},  "B2"             },
        {"and on",                u"B2", u"C3", {{215, 82}, {120, 56}, {300, 56}},   "B2:E3 active B2"},
        {"the active cell stays", u"C3", u"B2", {{215, 82}, {300, 120}},             "B2:E3 active C3"},
        {"into the titles",       u"A1", u"A1", {{89, 48}, {183, 20}},               "A1:C1 active A1"},
    };
    for (const auto& c : cases) {
        session.select(c.first, c.second);
        drag(c.points);
        EXPECT_EQ(session.selected(), c.selected) << c.behaviour;
    }
    tap({120, 39}, Shift);
    EXPECT_EQ(session.selected(), "A1:B1 active A1") << "what it leaves can be extended";
}

TEST_F(FillDragTest, waitsUntilTheHandleIsLeft)
{
    down({91, 50}); // which is over B2
    tick();
    move({90, 49});
    tick();
    EXPECT_EQ(session.selected(), "A1");
    move({100, 49});
    EXPECT_EQ(session.selected(), "A1:B1 active A1");
    up({100, 49});
    EXPECT_EQ(session.selected(), "A1:B1 active A1");
}

TEST_F(FillDragTest, scrollsWhileItFills)
{
    down({89, 48});
    move({57, 320});
    const int row = sheet().selection.range.lastRow;
    tick();
    EXPECT_GT(sheet().selection.range.lastRow, row);
    EXPECT_GT(sheet().topRow, 0);
    EXPECT_EQ(sheet().leftColumn, 0);
    move({230, 320});
    const int column = sheet().selection.range.lastColumn;
    tick();
    EXPECT_GT(sheet().selection.range.lastColumn, column);
    EXPECT_EQ(sheet().selection.range.lastRow, 0);
    for (int count = 0; count < 300; ++count)
        tick();
    EXPECT_EQ(session.selected(), "A1:IV1 active A1");
    up({230, 320});
}

} // namespace
} // namespace vorn
