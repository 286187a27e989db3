#include "shell/filtermark.h"

#include "shell/look.h"

namespace vorn {

namespace {

constexpr Colour ColourHidesRows = rgb(0, 0, 255);

// Half of the triangle's base, which is its height too.
constexpr int TriangleReach = 4;

Rect uncutRect(const Rect& cell)
{
    return {cell.right - FilterMarkSize, cell.bottom - FilterMarkSize, cell.right, cell.bottom};
}

} // namespace

Rect filterMarkRect(const Rect& cell)
{
    return uncutRect(cell).intersected(cell);
}

void paintFilterMark(Canvas& canvas, const Rect& cell, bool hidesRows)
{
    const Clip clip(canvas, filterMarkRect(cell));
    const Rect mark = uncutRect(cell);
    canvas.rectangle(mark, {ColourFaceShadow, 1}, ColourFace);
    const int x = mark.left + FilterMarkSize / 2;
    const int y = mark.top + (FilterMarkSize - TriangleReach) / 2;
    const Point triangle[] = {
        {x - TriangleReach, y                },
        {x + TriangleReach, y                },
        {x,                 y + TriangleReach},
    };
    canvas.polygon(triangle, {NoColour, 1}, hidesRows ? ColourHidesRows : ColourBlack);
}

} // namespace vorn
