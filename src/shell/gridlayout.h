// Where everything stands in the main window, and which cells of a sheet are seen where. It is
// arithmetic alone: a window paints by it, taps are looked up in it, and keys move and scroll by it
// whether there is a window or not.
//
// From the top: the formula bar, the grid with its titles, and at the bottom the tabs of the sheets
// with the horizontal scroll bar; the vertical one stands on the right.
//
// Units:  pixels; columns and rows from 0. Sizes of cells and titles are zoomed by the sheet, and
//         what is left of a pixel is cut.
// Shape:  plain objects, made anew whenever somebody looks. A GridView borrows its sheet.
#pragma once

#include "core/sheet.h"
#include "platform/geometry.h"

#include <vector>

namespace vorn {

constexpr int FormulaBarHeight = 17;
constexpr int ScrollBarThickness = 15;
constexpr int ColumnTitleHeight = 14; // before zoom
constexpr int RowTitleWidth = 26;     // before zoom
constexpr int TabButtonsWidth = 38;
constexpr int TabSplitterWidth = 4;
constexpr int TabSplitterLeftMargin = 32;
constexpr int TabSplitterRightMargin = 47;

// The client area of a window that nobody gave a size.
constexpr Rect DefaultClientArea = {0, 0, 240, 320};

// Where the divider between the tabs and the scroll bar stands at first.
constexpr int firstTabDivider(int clientWidth)
{
    return clientWidth * 2 / 3 + 1;
}

struct LayoutRequest {
    Rect client = DefaultClientArea; // less menu and toolbar
    int tabDivider = firstTabDivider(240);
    bool formulaBar = true;
    bool fullScreen = false;
};

// What is not there is empty.
struct GridLayout {
    Rect formulaBar;
    Rect windowArea; // all below the formula bar
    Rect gridArea;   // less the scroll bars
    Rect columnTitles;
    Rect rowTitles;
    Rect cornerBox;
    Rect cellArea;
    Rect tabButtons;
    Rect tabArea;
    Rect tabSplitter;
    Rect horizontalBar;
    Rect verticalBar;

    bool operator==(const GridLayout&) const = default;
};

GridLayout layout(const LayoutRequest& request, const Sheet& sheet);

// No cell is larger on the screen, whatever a file says of its size.
constexpr int PixelsMax = 1 << 16;

// A length of an unzoomed sheet.
int zoomed(int zoom, int length);

// Walking from the left or the top beyond what is shown: far away only the fact counts, and a sheet
// is long.
enum PastView { StopPastView, WalkOn };

// The columns of a sheet as they follow one another on the screen, or the rows: first the frozen
// ones, then from the first scrolled one on. Positions are x, or y.
class GridAxis {
public:
    static GridAxis ofColumns(const Sheet& sheet, int start, int end);
    static GridAxis ofRows(const Sheet& sheet, int start, int end);

    const Sheet& sheet() const { return sheet_; }

    int last() const { return last_; } // of the sheet
    bool isHidden(int index) const;
    int pixels(int index) const; // 0 for a hidden one

    bool isFrozen() const { return frozenFirst_ <= frozenLast_; }
    bool isFrozen(int index) const { return frozenFirst_ <= index && index <= frozenLast_; }
    int frozenFirst() const { return frozenFirst_; }
    int frozenLast() const { return frozenLast_; }

    // The first that scrolls, as the view stands; it never lies among the frozen ones.
    int scrollFirst() const { return scrollFirst_; }

    // The first on the screen, and the first that scrolling can lead to.
    int first() const { return isFrozen() ? frozenFirst_ : scrollFirst_; }
    int leastScroll() const { return isFrozen() ? frozenLast_ + 1 : 0; }

    // Does it lie before what is seen, or under the frozen ones?
    bool isScrolledAway(int index) const { return !isFrozen(index) && index < scrollFirst_; }

    int start() const { return start_; }
    int end() const { return end_; }

    // Where the scrolling part begins: behind the frozen ones.
    int scrollStart() const { return scrollStart_; }

    // The one under a position. Before the area it is found by walking back, behind the sheet it is
    // last() + 1.
    int at(int position) const;

    // The left, or upper, edge of one. What lies before the first shown, or is scrolled away under
    // the frozen ones, has its place there, found by walking back.
    int edgeOf(int index, PastView pastView = StopPastView) const;

    // The last that begins within the area.
    int lastVisible() const;

    // How many from `index` on fit wholly beside the frozen ones, those without pixels among them;
    // 1 at least. Behind the sheet there is room for more of the usual size: at its end a page is
    // as long as elsewhere, and the view stays where it is.
    int countFrom(int index) const;

    // How many of the usual size fit there: the same wherever the view stands.
    int usualCount() const;

    // What is to be the first that scrolls, so that `index` is in view. With a margin of 1 one more
    // is shown behind it.
    int scrolledTo(int index, int margin) const;

    // The next in the given direction, 1 or -1, that is not hidden; `index` if there is none.
    int step(int index, int direction) const;

private:
    GridAxis(const Sheet& sheet, bool columns, int start, int end);

    int sumOf(int from, int to) const;
    int usualIn(int room) const;
    int backFrom(int index, int edge, int position) const;
    int next(int index) const { return index == frozenLast_ ? scrollFirst_ : index + 1; }

    const Sheet& sheet_;
    bool columns_;
    int start_;
    int end_;
    int scrollStart_;
    int last_;
    int scrollFirst_;
    int frozenFirst_ = 0;
    int frozenLast_ = -1;
};

// A part of the grid that is painted by itself.
struct Pane {
    Rect rect;
    RangeRef range;
};

// How far a frame that goes on beyond the view is put outside, so that no edge shows there.
constexpr int OutOfView = 5;

// The cells of a sheet as the layout shows them.
class GridView {
public:
    GridView(const Rect& cellArea, const Sheet& sheet);

    const GridAxis columns;
    const GridAxis rows;

    int columnAtX(int x) const { return columns.at(x); }
    int rowAtY(int y) const { return rows.at(y); }
    int xOfColumn(int column, PastView clamp = StopPastView) const
    {
        return columns.edgeOf(column, clamp);
    }
    int yOfRow(int row, PastView clamp = StopPastView) const { return rows.edgeOf(row, clamp); }
    int lastVisibleColumn() const { return columns.lastVisible(); }
    int lastVisibleRow() const { return rows.lastVisible(); }
    int visibleColumnCount(int fromColumn) const { return columns.countFrom(fromColumn); }
    int visibleRowCount(int fromRow) const { return rows.countFrom(fromRow); }

    // The pixels of a range, with its sides OutOfView where they are not seen. False if nothing of
    // it is in view.
    bool cellRect(const RangeRef& range, Rect& out) const;

    // The panes in the order in which they are painted: the corner of frozen rows and columns, the
    // frozen rows, the frozen columns, and what scrolls. None is empty.
    std::vector<Pane> panes() const;
};

// The range of the vertical scroll bar: it follows the data down to `lastRow` and the position, and
// stays as it is while the thumb keeps a useful size.
int verticalScrollRange(int presentRange, int lastRow, int topRow);

} // namespace vorn
