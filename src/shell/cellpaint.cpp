#include "shell/cellpaint.h"

#include "platform/canvas.h"
#include "shell/rowpaint.h"

namespace vorn {

namespace {

// Visits the rows with pixels that meet what is seen, each with its upper edge. Answers the lower
// edge of the last.
template <typename Visit>
int forEachRow(const GridAxis& rows, const Pane& pane, const Rect& seen, Visit visit)
{
    int top = pane.rect.top;
    for (int row = pane.range.firstRow; row <= pane.range.lastRow && top < seen.bottom; ++row) {
        const int height = rows.pixels(row);
        if (height > 0 && top + height > seen.top)
            visit(row, top);
        top += height;
    }
    return top;
}

void paintPane(Canvas& canvas, const GridView& view, const Pane& pane, const Rect& seen)
{
    const Clip clip(canvas, seen);
    // The sheet may end before the pane does.
    if (pane.range.lastColumn == LastColumn || pane.range.lastRow == LastRow)
        canvas.fill(seen, ColourWhite);
    RowPainter painter(canvas, view, pane, seen);
    const int end =
        forEachRow(view.rows, pane, seen, [&](int row, int top) { painter.paintGround(row, top); });
    painter.endGround(end);
    forEachRow(view.rows, pane, seen, [&](int row, int top) { painter.paintContents(row, top); });
}

void paintLine(Canvas& canvas, const Rect& line, const Rect& clip)
{
    const Rect seen = line.intersected(clip);
    if (!seen.isEmpty())
        canvas.fill(seen, ColourBlack);
}

void paintFrozenLines(Canvas& canvas, const GridView& view, const Rect& clip)
{
    const GridAxis& columns = view.columns;
    const GridAxis& rows = view.rows;
    const Rect cells = {columns.start(), rows.start(), columns.end(), rows.end()};
    const Rect seen = cells.intersected(clip);
    if (rows.isFrozen())
        paintLine(canvas, {cells.left, rows.scrollStart(), cells.right, rows.scrollStart() + 1},
                  seen);
    if (columns.isFrozen())
        paintLine(canvas,
                  {columns.scrollStart(), cells.top, columns.scrollStart() + 1, cells.bottom},
                  seen);
}

} // namespace

void paintPanes(Canvas& canvas, const GridView& view, const Rect& clip)
{
    for (const Pane& pane : view.panes()) {
        const Rect seen = pane.rect.intersected(clip);
        if (!seen.isEmpty())
            paintPane(canvas, view, pane, seen);
    }
    paintFrozenLines(canvas, view, clip);
}

} // namespace vorn
