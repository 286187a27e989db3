#include "shell/cursor.h"
#include "shell/formulabar.h"

#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

const BarButton& button(const FormulaBar& bar, int id)
{
    for (const BarButton& each : bar.buttons) {
        if (each.id == id)
            return each;
    }
    return bar.buttons[0];
}

TEST(FormulaBar, isIdleAtFirst)
{
    const Session session;
    const FormulaBar& bar = session.app.formulaBar;
    EXPECT_FALSE(bar.isOpen());
    EXPECT_TRUE(bar.caretMode);
    EXPECT_TRUE(session.app.formulaBarVisible);
    EXPECT_FALSE(bar.canUndo());
    EXPECT_EQ(session.app.textEditor, &bar);
}

TEST(FormulaBar, laysOutItsButtonsAndItsControl)
{
    FormulaBar bar;
    bar.move({0, 0, 240, 17});
    EXPECT_EQ(button(bar, 9101).rect, (Rect{0, 0, 18, 17}));
    EXPECT_EQ(button(bar, 9100).rect, (Rect{17, 0, 35, 17}));
    EXPECT_EQ(button(bar, 9102).rect, (Rect{34, 0, 52, 17}));
    EXPECT_EQ(bar.rect, (Rect{52, 0, 225, 17}));
    EXPECT_EQ(button(bar, 9103).rect, (Rect{225, 0, 240, 17}));
}

TEST(FormulaBar, enablesItsButtonsWhileEditing)
{
    Session session;
    FormulaBar& bar = session.app.formulaBar;
    const auto enabled = [&bar](int id) { return button(bar, id).enabled; };
    for (const bool editing : {false, true, false}) {
        if (editing)
            session.type(u"x");
        else
            session.key(KeyEscape);
        EXPECT_EQ(enabled(9100), editing);
        EXPECT_EQ(enabled(9101), editing);
        EXPECT_TRUE(enabled(9102));
        EXPECT_TRUE(enabled(9103));
    }
}

TEST(FormulaBar, cutsCopiesAndPastesText)
{
    Session session;
    FormulaBar& bar = session.app.formulaBar;
    session.type(u"abcd");
    bar.line.setSelection(1, 3);
    bar.copy();
    EXPECT_EQ(session.machine.clipboard.text(), u"bc");
    EXPECT_EQ(session.editor(), "editing a[bc]d");
    bar.cut();
    EXPECT_EQ(session.editor(), "editing a|d");
    bar.line.setCaret(0);
    bar.paste();
    EXPECT_EQ(session.editor(), "editing bc|ad");
    bar.line.setSelection(0, -1);
    bar.clear();
    EXPECT_EQ(session.editor(), "editing |");
    EXPECT_TRUE(bar.canUndo());
    bar.undo();
    EXPECT_EQ(session.editor(), "editing [bcad]");
}

TEST(FormulaBar, leavesTheClipboardAloneWithoutASelection)
{
    Session session;
    session.machine.clipboard.putText(u"before");
    session.type(u"abc");
    session.app.formulaBar.copy();
    session.app.formulaBar.cut();
    EXPECT_EQ(session.machine.clipboard.text(), u"before");
    EXPECT_EQ(session.editor(), "editing abc|");
}

TEST(FormulaBar, showsTheActiveCellOnceItIsPainted)
{
    Session session;
    session.put(u"A1", u"=1+2");
    session.put(u"B1", u"text");
    FormulaBar& bar = session.app.formulaBar;
    refreshEditor();
    EXPECT_EQ(bar.line.text(), u"=1+2");
    keyDown(KeyRight, {});
    EXPECT_EQ(bar.line.text(), u"=1+2") << "not before the repaint pass";
    refreshEditor();
    EXPECT_EQ(bar.line.text(), u"text");
    keyDown(KeyRight, {});
    refreshEditor();
    EXPECT_EQ(bar.line.text(), u"");
}

TEST(FormulaBar, doesNotChangeWhatItShowsAlready)
{
    Session session;
    session.put(u"A1", u"text");
    refreshEditor();
    const unsigned version = session.app.formulaBar.line.version();
    refreshEditor();
    EXPECT_EQ(session.app.formulaBar.line.version(), version);
}

TEST(FormulaBar, keepsItsTextOnAHiddenFormula)
{
    Session session;
    session.put(u"A1", u"first");
    session.put(u"B1", u"=1+2");
    session.protect(u"B1", true, true);
    refreshEditor();
    session.key(KeyRight);
    EXPECT_EQ(session.app.formulaBar.line.text(), u"=1+2") << "without protection it is shown";
    session.key(KeyLeft);
    session.sheet().protectedSheet = true;
    session.key(KeyRight);
    EXPECT_EQ(session.selected(), "B1");
    EXPECT_EQ(session.app.formulaBar.line.text(), u"first");
}

TEST(FormulaBar, showsNothingWhileItIsOff)
{
    Session session;
    session.app.formulaBarVisible = false;
    session.put(u"A1", u"text");
    refreshEditor();
    EXPECT_EQ(session.app.formulaBar.line.text(), u"");
    EXPECT_EQ(session.app.formulaBar.rect, Rect()) << "there is no control between edits";
}

// --- The editor in the cell

class InCellEditorTest : public testing::Test {
protected:
    InCellEditorTest() { session.app.formulaBarVisible = false; }

    const Rect& rect()
    {
        refreshEditor();
        return session.app.formulaBar.rect;
    }

    Session session;
};

// Without the formula bar the cells begin at 26, 14; columns are 63 wide and rows 17 high.
TEST_F(InCellEditorTest, coversTheCellUpToTheEdgeOfTheGrid)
{
    session.select(u"B3");
    session.type(u"x");
    EXPECT_EQ(rect(), (Rect{89, 48, 225, 65}));
    session.key(KeyEscape);
    EXPECT_EQ(rect(), Rect());
}

TEST_F(InCellEditorTest, isZoomedWithTheCell)
{
    session.sheet().zoom = 50;
    session.select(u"B3");
    session.type(u"x");
    EXPECT_EQ(rect(), (Rect{13 + 31, 7 + 16, 225, 7 + 24}));
}

TEST_F(InCellEditorTest, writesInTheFontOfTheCell)
{
    FontRecord font = workbook->fonts[0];
    font.height = 420;
    font.weight = WeightBold;
    CellStyle style = workbook->styles[0];
    style.set(StyleFont, workbook->addFont(font));
    session.sheet().setCellStyle(1, 2, workbook->addStyle(style));
    session.select(u"B3");
    const struct {
        int zoom, height;
    } cases[] = {
        {100, 30},
        {85,  25},
        {84,  27}, // from here on eight percent larger
        {50,  17},
    };
    for (const auto& c : cases) {
        session.sheet().zoom = c.zoom;
        EXPECT_EQ(inCellEditorFont().height, c.height) << c.zoom;
    }
    EXPECT_EQ(inCellEditorFont().weight, WeightBold);
    session.select(u"A1");
    EXPECT_EQ(inCellEditorFont().weight, WeightNormal);
}

TEST_F(InCellEditorTest, followsItsCell)
{
    session.select(u"B3");
    session.type(u"x");
    session.sheet().columns.setColumnWidth(0, 0, 365);
    EXPECT_EQ(rect().left, 36);
}

TEST_F(InCellEditorTest, goesOutOfSightWithItsCell)
{
    const struct {
        const char* behaviour;
        int leftColumn, topRow;
        bool seen;
    } cases[] = {
        {"it is in view",    0, 0, true },
        {"just so",          1, 2, true },
        {"left of the view", 2, 2, false},
        {"or above it",      1, 3, false},
    };
    session.select(u"B3");
    session.type(u"x");
    for (const auto& c : cases) {
        session.sheet().leftColumn = c.leftColumn;
        session.sheet().topRow = c.topRow;
        EXPECT_EQ(rect() != OutOfSight, c.seen) << c.behaviour;
    }
}

TEST_F(InCellEditorTest, neverLiesOverTheBars)
{
    session.select(u"A21");
    session.type(u"=");
    while (session.sheet().topRow > 3)
        session.key(KeyUp);
    EXPECT_EQ(rect().bottom, currentLayout().gridArea.bottom) << "cut where its row is";
    while (session.sheet().topRow > 0)
        session.key(KeyUp);
    EXPECT_EQ(rect(), OutOfSight) << "below the view";
    session.key(KeyEscape);
    session.key(KeyEscape);
    session.sheet().setRowHeight(4, 6000, true);
    session.select(u"A5");
    session.key(KeyF2);
    EXPECT_EQ(rect().bottom, currentLayout().gridArea.bottom) << "higher than the view";
}

TEST_F(InCellEditorTest, goesOutOfSightWhileAnotherSheetIsPointedAt)
{
    session.type(u"=");
    session.key(KeyDown);
    EXPECT_NE(rect(), OutOfSight);
    workbook->setCurrentSheet(workbook->sheetAt(1));
    EXPECT_EQ(rect(), OutOfSight);
    session.type(u"+");
    EXPECT_NE(rect(), OutOfSight);
}

TEST_F(InCellEditorTest, staysInSightInAFrozenRow)
{
    session.sheet().titleRows = true;
    session.sheet().titles.set(0, 0, 1, 1);
    session.sheet().topRow = 40;
    session.type(u"x");
    EXPECT_EQ(rect().top, 14);
    EXPECT_EQ(session.sheet().topRow, 1);
}

} // namespace
} // namespace vorn
