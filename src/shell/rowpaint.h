// The painting of the rows of a pane: first the ground of all of them, fills and gridlines, and
// then their contents, texts and borders. Nothing of a row's contents leaves the row, so this gives
// what painting row by row would give; but a vertical gridline becomes one line over many rows.
//
// Units:  pixels of the client area.
// Shape:  made for one painting of a pane. It paints what meets the part that is seen, and relies
//         on the canvas to cut off what goes beyond.
#pragma once

#include "core/style.h"
#include "shell/celltext.h"
#include "shell/gridlayout.h"

#include <array>
#include <limits>

namespace vorn {

class Canvas;

// Where the columns of a pane stand, and those outside of it, as if it went on to the edges of the
// sheet: a text that is seen in the pane may begin before it.
class PaneColumns {
public:
    PaneColumns(const GridAxis& axis, const Pane& pane, const Rect& seen);

    int left(int column) const { return edges_[static_cast<std::size_t>(column)]; }
    int right(int column) const { return left(column + 1); }
    bool isShown(int column) const { return left(column) < right(column); }

    // The next column that has pixels; ColumnCount if there is none.
    int next(int column) const;

    // The columns that are seen, both shown; first() is ColumnCount if there are none.
    int first() const { return first_; }
    int last() const { return last_; }

    // The first column of the pane that has pixels, seen or not.
    int firstOfPane() const { return firstOfPane_; }

private:
    std::array<int, ColumnCount + 1> edges_; // the last is where the sheet ends
    int firstOfPane_ = ColumnCount;
    int first_ = ColumnCount;
    int last_ = -1;
};

class RowPainter {
public:
    RowPainter(Canvas& canvas, const GridView& view, const Pane& pane, const Rect& seen);

    // Both are for rows with pixels that meet what is seen, from the top down, none left out. Once
    // the last one has its ground, `endGround` takes its lower edge.
    void paintGround(int row, int top);
    void endGround(int bottom);
    void paintContents(int row, int top);

private:
    // Styles of the columns that are seen, and of the one behind them.
    struct Styles {
        int row = -1;
        std::array<const CellStyle*, ColumnCount> of = {};

        const CellStyle& operator[](int column) const
        {
            return *of[static_cast<std::size_t>(column)];
        }
    };

    static constexpr int NoLine = std::numeric_limits<int>::min();

    void enter(int row, int top);
    const CellStyle& styleOf(int column, int row) const;
    void load(Styles& styles, int row) const;
    void loadAbove();
    int shownRowBefore(int row) const;
    Rect cellRect(int column) const;
    void paintFills();
    void followBoard();
    void paintGridline(const Rect& line);
    void paintLowerGridlines();
    void followRightGridlines();
    void endRightGridline(int column, int bottom);
    void paintTexts(const Row& row);
    void paintText(int column, const CellValue& stored, int overflowLimit);
    int limitOf(TextReach reach, int column, int overflowLimit) const;
    bool hasTopLine(int column) const;
    bool hasRightLine(int column) const;
    void paintTopLines();
    void paintBorders();
    void paintFilterMarks();

    Canvas& canvas_;
    const Sheet& sheet_;
    const GridAxis& rows_;
    const Rect seen_;
    const PaneColumns columns_;
    CellTextPainter texts_;
    int lastRowOfPane_; // the last one that has pixels

    int row_ = 0;
    int top_ = 0;
    int bottom_ = 0;
    Styles styles_; // of the row
    Styles above_;  // of the one that stands on it; its row is -1 if there is none

    // The board of the gridlines' dots: the row where it began, and which of its colours is first.
    int boardRow_ = -1;
    bool swapsDots_ = false;

    // Where the gridline at the right of each column began, as far as the ground is painted.
    std::array<int, ColumnCount> gridlineTops_;
};

} // namespace vorn
