// Whatever a user does, a canvas that is painted on pass after pass shows what one would show that
// was painted at once.
#include "shell/windowpaint.h"

#include "shell/commandhandlers.h"
#include "shell/commands.h"
#include "shell/cursor.h"
#include "support/dice.h"
#include "support/pixelcanvas.h"
#include "support/session.h"

#include <gtest/gtest.h>
#include <memory>

namespace vorn {
namespace {

class RandomUser {
public:
    explicit RandomUser(unsigned seed) : dice_(seed)
    {
        for (int sheet = 0; sheet < 2; ++sheet)
            fillSheet(*workbook->sheetAt(sheet));
        resize();
    }

    // One message, with its pass unless it is put off. Answers what came out wrong.
    std::string step()
    {
        act();
        session_.app.showError();
        if (dice_.oneIn(6))
            return {}; // the next pass has more to do
        if (dice_.oneIn(12))
            paintLocked();
        screen_->scrolls = !dice_.oneIn(20);
        paintChanges(*screen_);
        if (dice_.oneIn(8))
            paintWindow(*screen_, anyRect());
        return compare();
    }

    // What was done, the last at the end.
    std::string history() const { return history_; }

private:
    // --- The document

    CellStyle anyStyle()
    {
        CellStyle style = defaultStyle();
        for (const StyleField field :
             {StyleTopLine, StyleLeftLine, StyleRightLine, StyleBottomLine})
            style.set(field, dice_.oneIn(2) ? 1 : 0);
        if (dice_.oneIn(3)) {
            style.set(StyleFill, FirstPaletteColour + dice_.below(16));
            style.set(StylePattern, 1);
        }
        style.set(StyleHorizontal, dice_.below(7));
        style.set(StyleVertical, dice_.below(3));
        style.set(StyleWrap, dice_.oneIn(4) ? 1 : 0);
        return style;
    }
    std::u16string anyText()
    {
        constexpr const char16_t* texts[] = {
            u"1",   u"a longer text than its cell", u"-2.5", u"=A1+1", u"word", u"123456789012",
            u"TRUE"};
        return texts[dice_.below(7)];
    }
    void fillSheet(Sheet& sheet)
    {
        workbook->setCurrentSheet(&sheet);
        for (int count = 0; count < 120; ++count) {
            const int column = dice_.below(14);
            const int row = dice_.below(24);
            if (dice_.oneIn(2))
                sheet.setCellStyle(column, row, workbook->addStyle(anyStyle()));
            sheet.selection.select({row16(row), row16(column)}, {row16(row), row16(column)});
            if (dice_.oneIn(2))
                session_.app.enterCell(anyText());
        }
        for (int count = 0; count < 5; ++count) {
            const int column = dice_.below(14);
            sheet.columns.setColumnWidth(column, column, 200 + dice_.below(4000));
            sheet.setRowHeight(dice_.below(24), 100 + dice_.below(500), true);
        }
        sheet.columns.setColumnHidden(7, 7, true);
        sheet.setRowHidden(9, true);
    }
    static std::uint16_t row16(int row) { return static_cast<std::uint16_t>(row); }

    // --- What a user does

    void act()
    {
        switch (dice_.below(22)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
            return pressKey();
        case 6:
        case 7:
        case 8:
            return select();
        case 9:
        case 10:
        case 11:
        case 12:
            return scroll();
        case 13:
        case 14:
            return drag();
        case 15:
            return changeView();
        case 16:
            return changeLayout();
        case 17:
            return changeSheet();
        case 18:
        case 19:
            return type();
        case 20:
            return edit();
        default:
            return hide();
        }
    }
    void note(const std::string& what) { history_ += history_.empty() ? what : ", " + what; }

    void pressKey()
    {
        constexpr Key keys[] = {KeyLeft, KeyRight,  KeyUp,       KeyDown, KeyRight, KeyDown,
                                KeyHome, KeyPageUp, KeyPageDown, KeyEnd,  KeyTab};
        const Key key = keys[dice_.below(11)];
        const KeyModifiers modifiers = {
            .shift = dice_.oneIn(3), .ctrl = dice_.oneIn(12), .alt = dice_.oneIn(12)};
        note("key " + std::to_string(key));
        keyDown(key, modifiers);
    }
    void select()
    {
        if (session_.app.isEditing() && !session_.app.pointMode)
            return;
        const GridView view = currentView();
        const int column = std::min(view.columns.scrollFirst() + dice_.below(4), LastColumn);
        const int row = std::min(view.rows.scrollFirst() + dice_.below(6), LastRow);
        const bool frozen = dice_.oneIn(4);
        constexpr unsigned flags[] = {
            SelectCell, ExtendSelection, ExtendSelection, SelectRows, SelectColumns, 3, 5, 7};
        const unsigned flag = flags[dice_.below(8)];
        note("select " + std::to_string(column) + ' ' + std::to_string(row) + " flags " +
             std::to_string(flag));
        moveTo(frozen ? 0 : column, frozen ? 0 : row, flag, ShowCell);
    }
    void scroll()
    {
        Sheet& sheet = session_.sheet();
        const GridView view = currentView();
        const int far = dice_.oneIn(10) ? 300 : 4;
        const auto moved = [&](const GridAxis& axis) {
            const int by = dice_.below(2 * far + 1) - far;
            return std::clamp(axis.scrollFirst() + by, axis.leastScroll(), axis.last());
        };
        const int which = dice_.below(4);
        if (which != 0)
            sheet.topRow = moved(view.rows);
        if (which == 0 || which == 3)
            sheet.leftColumn = moved(view.columns);
        note("scroll to " + std::to_string(sheet.leftColumn) + ' ' + std::to_string(sheet.topRow));
        session_.app.markDirty(DirtyScrolled);
    }
    void drag()
    {
        PenState& pen = session_.app.pen;
        constexpr DragMode modes[] = {DragColumnSize, DragRowSize, DragNone};
        if (pen.dragMode == DragNone || dice_.oneIn(3))
            pen.dragMode = modes[dice_.below(3)];
        pen.resizeAt = dice_.below(200) - 10;
        note("drag " + std::to_string(pen.dragMode) + " to " + std::to_string(pen.resizeAt));
    }
    void changeView()
    {
        switch (dice_.below(3)) {
        case 0:
            note("freeze");
            return onCommand(CommandFreezeTitles);
        case 1:
            note("zoom");
            setZoomOfAllSheets(30 + dice_.below(170));
            return;
        default:
            note("full screen");
            return onCommand(CommandFullScreen);
        }
    }
    void changeLayout()
    {
        Sheet& sheet = session_.sheet();
        switch (dice_.below(6)) {
        case 0:
            note("resize");
            return resize();
        case 1:
            note("titles");
            sheet.showTitles = !sheet.showTitles;
            break;
        case 2:
            note("gridlines");
            sheet.showGridlines = !sheet.showGridlines;
            break;
        case 3:
            if (session_.app.isEditing())
                return;
            note("bar");
            session_.app.formulaBarVisible = !session_.app.formulaBarVisible;
            break;
        case 4:
            note("divider");
            session_.app.tabDivider = dice_.below(160);
            return;
        default:
            note("smaller");
            session_.app.resize({0, 0, screen_->width() - dice_.below(screen_->width()),
                                 screen_->height() - dice_.below(screen_->height())});
            return;
        }
        markRepaint();
    }
    void changeSheet()
    {
        if (session_.app.isEditing() && !session_.app.pointMode)
            return;
        note("sheet");
        workbook->setCurrentSheet(workbook->sheetAt(dice_.below(3)));
        session_.app.sheetChanged();
    }
    void type()
    {
        constexpr std::u16string_view texts[] = {u"=", u"+", u"A1", u"12", u"text", u"\r", u"\r"};
        const std::u16string_view text = texts[dice_.below(7)];
        note("type " + Session::narrow(text == u"\r" ? u"enter" : text));
        for (const char16_t unit : text)
            character(unit);
        if (dice_.oneIn(4)) {
            note("escape");
            keyDown(KeyEscape, {});
        }
    }
    void edit()
    {
        constexpr std::uint16_t commands[] = {CommandUndo, CommandUndo, CommandRedo, CommandBold,
                                              CommandSelectAll};
        const std::uint16_t command = commands[dice_.below(5)];
        // Formats of whole columns would make all of the sheet look the same.
        if (command == CommandBold && session_.app.activeSelection().range.isWholeColumns())
            return;
        note("command " + std::to_string(command));
        onCommand(command);
    }
    void hide()
    {
        Sheet& sheet = session_.sheet();
        const int column = dice_.below(14);
        sheet.columns.setColumnHidden(column, column, !sheet.columns.columnHidden(column));
        const int row = dice_.below(24);
        sheet.setRowHidden(row, !sheet.rowHidden(row));
        note("hide");
        markRepaint();
    }

    // --- The window

    void resize()
    {
        const int width = 60 + dice_.below(110);
        const int height = 50 + dice_.below(100);
        screen_ = std::make_unique<PixelCanvas>(width, height);
        forgetPainted();
        session_.app.resize({0, 0, width, height});
    }
    Rect anyRect()
    {
        const int left = dice_.below(160) - 10;
        const int top = dice_.below(140) - 10;
        return {left, top, left + dice_.below(80), top + dice_.below(80)};
    }
    void paintLocked()
    {
        const std::uint16_t hints = session_.app.repaintHints;
        const RepaintLock lock;
        const long before = screen_->painted();
        paintChanges(*screen_);
        EXPECT_EQ(screen_->painted(), before);
        EXPECT_EQ(session_.app.repaintHints, hints);
    }
    std::string compare() const
    {
        PixelCanvas fresh(screen_->width(), screen_->height());
        paintWindow(fresh, session_.app.clientArea);
        EXPECT_TRUE(fresh.isBalanced());
        EXPECT_TRUE(screen_->isBalanced());
        return difference(*screen_, fresh, session_.app.clientArea);
    }

    Dice dice_;
    Session session_;
    std::unique_ptr<PixelCanvas> screen_;
    std::string history_;
};

class WindowProperty : public testing::TestWithParam<unsigned> {};

TEST_P(WindowProperty, paintsInStepsWhatItPaintsAtOnce)
{
    RandomUser user(GetParam());
    for (int step = 0; step < 250; ++step) {
        const std::string wrong = user.step();
        ASSERT_EQ(wrong, "") << "step " << step << " after " << user.history();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WindowProperty, testing::Range(1U, 13U));

} // namespace
} // namespace vorn
