#include "shell/windowpaint.h"

#include "platform/headless/recordingcanvas.h"
#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "support/pixelcanvas.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Lines = std::vector<std::string>;

// A window of 240 by 320: with the formula bar 3 columns of 63 pixels and a part of the fourth,
// 16 rows of 17 and a part of the next.
class WindowPaintTest : public testing::Test {
protected:
    WindowPaintTest()
    {
        session.put(u"A1", u"1");
        session.put(u"B2", u"a text that is too long for its cell");
        session.put(u"A3", u"=A1+1");
        session.put(u"A20", u"below");
        paintChanges(first);
    }

    // What the pass at the end of a message paints.
    RecordingCanvas pass()
    {
        RecordingCanvas canvas;
        canvas.scrolls = canScroll;
        paintChanges(canvas);
        EXPECT_TRUE(canvas.isBalanced());
        return canvas;
    }

    // The same without the bars and tabs.
    RecordingCanvas gridPass()
    {
        RecordingCanvas chrome;
        paintChromeChanges(chrome, currentChrome(), session.app.painted.chrome);
        RecordingCanvas canvas = pass();
        auto& operations = canvas.operations;
        const auto start = std::search(operations.begin(), operations.end(),
                                       chrome.operations.begin(), chrome.operations.end());
        EXPECT_TRUE(start != operations.end() || chrome.operations.empty());
        operations.erase(start, start + static_cast<std::ptrdiff_t>(chrome.operations.size()));
        return canvas;
    }

    // Operations but for clips: inversions, moves, texts, and everything else.
    static std::string counts(const RecordingCanvas& canvas)
    {
        const int clips = canvas.count("clip") + canvas.count("exclude") + canvas.count("pop");
        const int inverts = canvas.count("invert");
        const int scrolls = canvas.count("scroll");
        const int texts = canvas.count("text");
        const int rest =
            static_cast<int>(canvas.operations.size()) - clips - inverts - scrolls - texts;
        return std::to_string(inverts) + " inverted, " + std::to_string(scrolls) + " moved, " +
               std::to_string(texts) + " texts, " + std::to_string(rest) + " others";
    }

    Session session;
    RecordingCanvas first;
    bool canScroll = true;
};

// --- Only what is asked for

TEST_F(WindowPaintTest, paintsEverythingAtFirst)
{
    EXPECT_GT(first.count("text"), 16 + 4);
    EXPECT_GT(first.count("pattern"), 16);
    EXPECT_GT(first.count("invert"), 0);
    EXPECT_EQ(counts(gridPass()), "0 inverted, 0 moved, 0 texts, 0 others") << "and then nothing";
}

TEST_F(WindowPaintTest, countsAMoveOfTheActiveCell)
{
    keyDown(KeyRight, {});
    const RecordingCanvas canvas = gridPass();
    EXPECT_EQ(counts(canvas), "13 inverted, 0 moved, 0 texts, 0 others");
    EXPECT_EQ(static_cast<int>(canvas.operations.size()), canvas.count("invert"));
    keyDown(KeyDown, {});
    EXPECT_EQ(counts(gridPass()), "16 inverted, 0 moved, 0 texts, 0 others");
    keyDown(KeyDown, {.shift = true});
    EXPECT_EQ(counts(gridPass()), "14 inverted, 0 moved, 0 texts, 0 others") << "a range grows";
}

TEST_F(WindowPaintTest, countsAScrollByARow)
{
    session.select(u"A10");
    pass();
    scrollIntoView(0, 16, ShowCell);
    const RecordingCanvas canvas = gridPass();
    EXPECT_EQ(session.sheet().topRow, 1);
    EXPECT_EQ(canvas.having("scroll"), (Lines{"scroll 0,31-225,305 by 0,-17"}));
    EXPECT_EQ(counts(canvas), "0 inverted, 1 moved, 2 texts, 14 others") << "the frame moves along";
    EXPECT_EQ(canvas.having("text"),
              (Lines{"text 0,286-26,303 \"17\" Tahoma 15 202020 center middle",
                     "text 0,303-26,320 \"18\" Tahoma 15 202020 center middle"}));
}

TEST_F(WindowPaintTest, countsAScrollWithTheCursor)
{
    session.select(u"A16");
    pass();
    keyDown(KeyDown, {});
    EXPECT_EQ(counts(gridPass()), "16 inverted, 1 moved, 3 texts, 19 others");
}

TEST_F(WindowPaintTest, countsTheTypingOfAValue)
{
    session.select(u"B4");
    pass();
    character(u'1');
    EXPECT_EQ(counts(gridPass()), "0 inverted, 0 moved, 0 texts, 0 others") << "the editor opens";
    character(u'2');
    EXPECT_EQ(counts(gridPass()), "0 inverted, 0 moved, 0 texts, 0 others")
        << "the text is the control's";
    character(u'\r');
    EXPECT_EQ(counts(gridPass()), "7 inverted, 0 moved, 4 texts, 38 others")
        << "the cells, but no title";
}

TEST_F(WindowPaintTest, paintsTwoButtonsWhenTheEditorOpens)
{
    for (const bool bar : {true, false}) {
        session.app.formulaBarVisible = bar;
        markRepaint();
        pass();
        keyDown(KeyF2, {});
        const RecordingCanvas canvas = pass();
        EXPECT_EQ(canvas.count("icon"), bar ? 2 : 0);
        EXPECT_EQ(canvas.count("text"), 0);
        // Over the cell the editor has a frame of its own, and that of the selection goes.
        EXPECT_EQ(canvas.count("invert"), bar ? 0 : 7);
        EXPECT_EQ(canvas.count("pattern"), 0);
        keyDown(KeyEscape, {});
        pass();
    }
}

TEST_F(WindowPaintTest, pointsWithoutPaintingCells)
{
    character(u'=');
    pass();
    keyDown(KeyDown, {});
    const RecordingCanvas canvas = pass();
    EXPECT_EQ(canvas.count("text"), 0);
    EXPECT_GT(canvas.count("invert"), 0);
}

// --- The selection

// Growing a large selection inverts what it grew by and what was its side.
TEST_F(WindowPaintTest, invertsOnlyWhatChanges)
{
    session.select(u"A1", u"C12");
    pass();
    moveTo(2, 12, ExtendSelection, ShowCell);
    const RecordingCanvas canvas = pass();
    EXPECT_EQ(canvas.operations.size(), canvas.having("invert").size());
    int pixels = 0;
    for (const std::string& operation : canvas.operations) {
        Rect area;
        ASSERT_EQ(std::sscanf(operation.c_str(), "invert %d,%d-%d,%d", &area.left, &area.top,
                              &area.right, &area.bottom),
                  4);
        pixels += area.width() * area.height();
    }
    EXPECT_LT(pixels, 3 * 63 * (17 + 8)) << "a row, and both lower sides";
}

TEST_F(WindowPaintTest, paintsTitlesOfWhatIsSelected)
{
    session.select(u"B1", u"B16384");
    EXPECT_EQ(pass().having("text"),
              (Lines{"text 89,17-152,31 \"B\" Tahoma 15 202020 center middle"}));
    session.select(u"C1", u"C16384");
    EXPECT_EQ(pass().having("text"),
              (Lines{"text 89,17-152,31 \"B\" Tahoma 15 202020 center middle",
                     "text 152,17-215,31 \"C\" Tahoma 15 202020 center middle"}));
    session.select(u"A2", u"IV3");
    EXPECT_EQ(pass().having("text"),
              (Lines{"text 152,17-215,31 \"C\" Tahoma 15 202020 center middle",
                     "text 0,48-26,65 \"2\" Tahoma 15 202020 center middle",
                     "text 0,65-26,82 \"3\" Tahoma 15 202020 center middle"}));
}

TEST_F(WindowPaintTest, selectsAllWithoutPaintingCells)
{
    onCommand(CommandSelectAll);
    const RecordingCanvas canvas = pass();
    EXPECT_EQ(canvas.count("text"), 4 + 17) << "all titles";
    EXPECT_EQ(canvas.count("pattern"), 0) << "and no cell";
}

// --- Scrolling

TEST_F(WindowPaintTest, movesWhatScrolls)
{
    const auto freeze = [this](int columns, int rows) {
        Sheet& sheet = session.sheet();
        sheet.titleColumns = columns > 0;
        sheet.titleRows = rows > 0;
        sheet.titles.set(0, 0, std::max(columns, 1), std::max(rows, 1));
        sheet.leftColumn = columns;
        sheet.topRow = rows;
        markRepaint();
        pass();
    };
    const struct {
        const char* behaviour;
        int frozenColumns, frozenRows;
        int right, down;
        Lines scrolls;
    } cases[] = {
        {"down",                  0, 0, 0, 1,   {"scroll 0,31-225,305 by 0,-17"} },
        {"by two rows",           0, 0, 0, 2,   {"scroll 0,31-225,305 by 0,-34"} },
        {"to the right",          0, 0, 1, 0,   {"scroll 26,17-225,305 by -63,0"}},
        {"both ways",
         0,                          0,
         1,                                1,
         {"scroll 0,31-225,305 by 0,-17", "scroll 26,17-225,305 by -63,0"}       },
        {"further than the view", 0, 0, 0, 100, {}                               },
        {"under frozen rows",     0, 1, 0, 1,   {"scroll 0,48-225,305 by 0,-17"} },
        {"beside frozen rows",    0, 1, 1, 0,   {"scroll 26,17-225,305 by -63,0"}},
        {"under frozen columns",  1, 0, 1, 0,   {"scroll 89,17-225,305 by -63,0"}},
        {"beside frozen columns", 1, 0, 0, 1,   {"scroll 0,31-225,305 by 0,-17"} },
        {"under both",
         1,                          1,
         1,                                1,
         {"scroll 0,48-225,305 by 0,-17", "scroll 89,17-225,305 by -63,0"}       },
    };
    for (const auto& c : cases) {
        freeze(c.frozenColumns, c.frozenRows);
        session.sheet().leftColumn += c.right;
        session.sheet().topRow += c.down;
        session.app.markDirty(DirtyScrolled);
        EXPECT_EQ(pass().having("scroll"), c.scrolls) << c.behaviour;
    }
}

TEST_F(WindowPaintTest, paintsAllThatCannotBeMoved)
{
    canScroll = false;
    session.sheet().topRow = 1;
    session.app.markDirty(DirtyScrolled);
    EXPECT_EQ(pass().count("text"), 17 + 2) << "all rows in view, but no title of a column";
}

// The pixels of a window after each pass are those of one that is painted at once.
class WindowPaintScreenTest : public WindowPaintTest {
protected:
    void open(int width, int height)
    {
        screen = PixelCanvas(width, height);
        forgetPainted();
        session.app.resize({0, 0, width, height});
        paintChanges(screen);
    }
    std::string scrolledTo(int column, int row)
    {
        session.sheet().leftColumn = column;
        session.sheet().topRow = row;
        session.app.markDirty(DirtyScrolled);
        paintChanges(screen);
        PixelCanvas fresh(screen.width(), screen.height());
        paintWindow(fresh, session.app.clientArea);
        return difference(screen, fresh);
    }

    PixelCanvas screen{1, 1};
};

TEST_F(WindowPaintScreenTest, losesItsFrameWhenThatIsInvertedAgain)
{
    session.select(u"A1", u"B3");
    open(200, 200);
    for (const Rect& rect : session.app.painted.inverted.rects())
        screen.invert(rect);
    session.select(u"Z99"); // out of view
    PixelCanvas without(200, 200);
    paintWindow(without, session.app.clientArea);
    EXPECT_EQ(difference(screen, without), "");
}

// The last row in view has a line below it, the first column one before it.
TEST_F(WindowPaintScreenTest, movesLinesAtTheEdgesOfTheView)
{
    CellStyle style = defaultStyle();
    style.set(StyleBottomLine, 1);
    style.set(StyleLeftLine, 1);
    const int lined = workbook->addStyle(style);
    for (int row = 0; row < 12; ++row) {
        for (int column = 0; column < 8; ++column)
            session.sheet().setCellStyle(column, row, lined);
    }
    for (int more = -1; more <= 1; ++more) {
        open(26 + 2 * 63 + ScrollBarThickness + more,
             FormulaBarHeight + 14 + 5 * 17 + ScrollBarThickness + more);
        for (const int to : {1, 2, 4, 3, 2, 0}) {
            EXPECT_EQ(scrolledTo(0, to), "") << "to row " << to << " with " << more;
            EXPECT_EQ(scrolledTo(to, to), "") << "to column " << to << " with " << more;
            EXPECT_EQ(scrolledTo(0, to), "") << "and back with " << more;
        }
    }
}

// A file may say that the view begins among the frozen ones.
TEST_F(WindowPaintScreenTest, scrollsFromUnderTheFrozenOnes)
{
    Sheet& sheet = session.sheet();
    sheet.titleRows = true;
    sheet.titleColumns = true;
    sheet.titles.set(0, 0, 1, 3);
    sheet.leftColumn = 0;
    sheet.topRow = 0;
    open(200, 200);
    EXPECT_EQ(scrolledTo(0, 2), "") << "as far as it is seen it did not move";
    EXPECT_EQ(scrolledTo(0, 4), "");
    EXPECT_EQ(scrolledTo(0, 1), "");
    EXPECT_EQ(scrolledTo(2, 1), "");
}

// --- Lines of a resize

TEST_F(WindowPaintTest, drawsTheLineOfAResizeAndTakesItAway)
{
    PenState& pen = session.app.pen;
    pen.dragMode = DragColumnSize;
    pen.resizeAt = 150;
    EXPECT_EQ(pass().operations, (Lines{"invert 150,17-151,305"}));
    EXPECT_EQ(pen.resizeDrawn, 150);
    EXPECT_EQ(pass().operations, Lines()) << "it stays where it is";
    pen.resizeAt = 160;
    EXPECT_EQ(pass().operations, (Lines{"invert 150,17-151,305", "invert 160,17-161,305"}));
    EXPECT_EQ(pen.resizeDrawn, 160);
    pen.dragMode = DragNone;
    EXPECT_EQ(pass().operations, (Lines{"invert 160,17-161,305"}));
    EXPECT_EQ(pen.resizeDrawn, PenState::NoLine);
    pen.dragMode = DragRowSize;
    pen.resizeAt = 200;
    EXPECT_EQ(pass().operations, (Lines{"invert 0,200-225,201"}));
    forgetPainted();
    EXPECT_EQ(pen.resizeDrawn, PenState::NoLine);
}

// --- Marks

TEST_F(WindowPaintTest, fallsBackToTheWholeGrid)
{
    const struct {
        const char* behaviour;
        void (*change)();
    } cases[] = {
        {"the mark",             [] { markRepaint(); }                                  },
        {"the mark, and others",
         [] {
             markRepaint();
             keyDown(KeyDown, {});
         }                                                                              },
        {"another sheet",        [] { workbook->setCurrentSheet(workbook->sheetAt(1)); }},
        {"another zoom",         [] { workbook->currentSheet->zoom = 80; }              },
        {"without titles",       [] { workbook->currentSheet->showTitles = false; }     },
        {"another size",
         [] {
             application->resize({0, 0, 200, 300});
         }                                                                              },
        {"without the bar",      [] { application->formulaBarVisible = false; }         },
        {"full screen",          [] { setFullScreen(true); }                            },
        {"the canvas is lost",   [] { forgetPainted(); }                                },
    };
    for (const auto& c : cases) {
        c.change();
        const RecordingCanvas canvas = pass();
        EXPECT_GT(canvas.count("pattern"), 20) << c.behaviour;
        EXPECT_EQ(canvas.count("scroll"), 0) << c.behaviour;
        EXPECT_EQ(session.app.repaintHints, 0) << c.behaviour;
    }
}

TEST_F(WindowPaintTest, leavesTheGridAloneWhereOnlyBarsChange)
{
    session.app.tabDivider += 20;
    const RecordingCanvas canvas = pass();
    EXPECT_EQ(canvas.count("pattern"), 0);
    EXPECT_EQ(canvas.count("invert"), 0);
}

TEST_F(WindowPaintTest, waitsForTheLock)
{
    keyDown(KeyDown, {});
    {
        const RepaintLock lock;
        EXPECT_EQ(pass().operations, Lines());
        EXPECT_EQ(session.app.repaintHints, DirtySelection) << "it waits";
    }
    EXPECT_GT(pass().count("invert"), 0);
}

TEST_F(WindowPaintTest, paintsNothingWithoutADocument)
{
    session.app.close();
    EXPECT_EQ(pass().operations, Lines());
    RecordingCanvas canvas;
    paintWindow(canvas, session.app.clientArea);
    EXPECT_EQ(canvas.operations, Lines());
    endRepaint();
}

TEST_F(WindowPaintTest, remembersWhatItPainted)
{
    session.select(u"B2", u"C3");
    session.sheet().leftColumn = 1;
    session.sheet().topRow = 2;
    session.app.repaintHints = DirtyScrolled;
    endRepaint();
    const PaintedWindow& painted = session.app.painted;
    EXPECT_EQ(session.app.repaintHints, 0);
    EXPECT_EQ(painted.sheet, workbook->currentSheet);
    EXPECT_EQ(painted.areas, currentLayout());
    EXPECT_EQ(painted.previousSelection.range, session.sheet().selection.range);
    EXPECT_EQ(painted.previousSelection.activeColumn, 1);
    EXPECT_EQ(painted.previousLeftColumn, 1);
    EXPECT_EQ(painted.previousTopRow, 2);
    EXPECT_EQ(session.app.formulaBar.line.text(), u"a text that is too long for its cell");
    EXPECT_EQ(pass().operations, Lines());
}

// --- The window at once

TEST_F(WindowPaintTest, paintsAPartWithoutRememberingIt)
{
    keyDown(KeyDown, {});
    const PaintedWindow before = session.app.painted;
    RecordingCanvas canvas;
    paintWindow(canvas, {0, 0, 100, 100});
    EXPECT_GT(canvas.operations.size(), 10U);
    EXPECT_TRUE(canvas.isBalanced());
    EXPECT_EQ(session.app.painted.inverted, before.inverted);
    EXPECT_EQ(session.app.painted.previousSelection.range, before.previousSelection.range);
    EXPECT_EQ(session.app.repaintHints, DirtySelection);
}

TEST_F(WindowPaintTest, leavesNoPixelUnpainted)
{
    const struct {
        int width, height;
    } sizes[] = {
        {240, 320},
        {320, 240},
        {10,  10 },
        {20,  100},
        {100, 20 },
        {41,  60 },
        {1,   1  },
        {90,  48 },
        {300, 33 },
    };
    for (int options = 0; options < 16; ++options) {
        session.app.formulaBarVisible = (options & 1) != 0;
        session.app.fullScreen = (options & 2) != 0;
        session.sheet().showTitles = (options & 4) != 0;
        session.sheet().leftColumn = (options & 8) != 0 ? 255 : 0;
        session.sheet().topRow = (options & 8) != 0 ? 16383 : 0;
        for (const auto& size : sizes) {
            session.app.resize({0, 0, size.width, size.height});
            PixelCanvas canvas(size.width, size.height);
            paintWindow(canvas, session.app.clientArea);
            int unpainted = 0;
            for (int y = 0; y < size.height; ++y) {
                for (int x = 0; x < size.width; ++x)
                    unpainted += canvas.at(x, y) > 0xFFFFFF ? 1 : 0;
            }
            EXPECT_EQ(unpainted, 0) << size.width << 'x' << size.height << ' ' << options;
        }
    }
}

TEST_F(WindowPaintTest, staysWithinItsArea)
{
    const Rect area = {30, 20, 150, 200};
    PixelCanvas canvas(240, 320);
    paintWindow(canvas, area);
    PixelCanvas whole(240, 320);
    paintWindow(whole, session.app.clientArea);
    EXPECT_EQ(difference(canvas, whole, area), "");
    for (int y = 0; y < 320; ++y) {
        for (int x = 0; x < 240; ++x)
            ASSERT_TRUE(area.contains(x, y) || canvas.at(x, y) == PixelCanvas::Unpainted);
    }
}

} // namespace
} // namespace vorn
