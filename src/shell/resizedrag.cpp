#include "shell/resizedrag.h"

#include "core/workbook.h"
#include "editing/rowcolumn.h"
#include "shell/application.h"
#include "shell/cursor.h"

#include <algorithm>

namespace vorn {

namespace {

Sheet& sheet()
{
    return *workbook->currentSheet;
}

void resizeColumn(int column, int distance)
{
    const int width = widthAfterDrag(sheet().columns.columnPixels(column), distance, sheet().zoom);
    setColumnWidths(column, std::min(width, widthOfCharacters(MostCharacters)), SizeOne);
}

void resizeRow(int row, int distance)
{
    const int height = heightAfterDrag(sheet().rowPixels(row), distance, sheet().zoom);
    setRowHeights(row, std::min(height, GreatestRowHeight), SizeOne);
}

// One that was hidden may have its place before what is seen.
void showOpened(bool isColumn, int index)
{
    const GridView view = currentView();
    if (isColumn && view.columns.isScrolledAway(index))
        scrollIntoView(index, view.rows.scrollFirst(), ShowCell);
    else if (!isColumn && view.rows.isScrolledAway(index))
        scrollIntoView(view.columns.scrollFirst(), index, ShowCell);
}

} // namespace

void beginResize(const Place& edge, Point at)
{
    PenState& pen = application->pen;
    const GridView view = currentView();
    const bool isColumn = edge.kind == PlaceKind::ColumnEdge;
    const GridAxis& axis = isColumn ? view.columns : view.rows;
    pen.dragMode = isColumn ? DragColumnSize : DragRowSize;
    pen.resized = isColumn ? edge.column : edge.row;
    pen.resizeLeast = axis.edgeOf(pen.resized);
    pen.resizeStart = pen.resizeLeast + axis.pixels(pen.resized);
    pen.resizeAt = pen.resizeStart;
    pen.resizeGrip = (isColumn ? at.x : at.y) - pen.resizeStart;
}

void moveResize(DragMode mode, Point at)
{
    PenState& pen = application->pen;
    const int position = mode == DragColumnSize ? at.x : at.y;
    pen.resizeAt = std::max(position - pen.resizeGrip, pen.resizeLeast);
}

void finishResize(DragMode mode)
{
    const PenState& pen = application->pen;
    const bool isColumn = mode == DragColumnSize;
    const int index = pen.resized;
    const int distance = pen.resizeAt - pen.resizeStart;
    const bool hidden = isColumn ? sheet().columns.columnHidden(index) : sheet().rowHidden(index);
    if (distance == 0)
        return;
    if (pen.resizeAt <= pen.resizeLeast) {
        if (isColumn)
            hideColumns(index, true, SizeOne);
        else
            hideRows(index, true, SizeOne);
        return;
    }
    // At a large zoom a pixel or two may be no distance on the sheet.
    if (sheet().zoom <= 0 || distance * 100 / sheet().zoom == 0)
        return;
    if (isColumn)
        resizeColumn(index, distance);
    else
        resizeRow(index, distance);
    if (hidden)
        showOpened(isColumn, index);
}

} // namespace vorn
