#include "shell/flatbutton.h"

#include "platform/canvas.h"
#include "shell/look.h"

#include <algorithm>
#include <array>

namespace vorn {

namespace {

constexpr int ArrowSize = 3;  // from its middle to each of its sides
constexpr int ArrowSpace = 3; // between its sides and the edge of the button

std::array<Point, 3> arrowPoints(const Rect& area, Arrow arrow)
{
    const int least = std::min(area.width(), area.height());
    const int size = std::clamp((least - 1) / 2 - ArrowSpace, 0, ArrowSize);
    const int x = area.left + (area.width() - 1) / 2;
    const int y = area.top + (area.height() - 1) / 2;
    const int tail = size / 2;
    const int head = size - tail;
    switch (arrow) {
    case Arrow::Left:
        return {
            Point{x + tail, y - size},
            {x - head, y       },
            {x + tail, y + size}
        };
    case Arrow::Right:
        return {
            Point{x - tail, y - size},
            {x + head, y       },
            {x - tail, y + size}
        };
    case Arrow::Up:
        return {
            Point{x - size, y + tail},
            {x,        y - head},
            {x + size, y + tail}
        };
    case Arrow::Down:
        break;
    }
    return {
        Point{x - size, y - tail},
        {x,        y + head},
        {x + size, y - tail}
    };
}

} // namespace

void paintButton(Canvas& canvas, const Rect& area, PushState state)
{
    if (!area.isEmpty())
        canvas.rectangle(area, {ColourFaceShadow},
                         state == PushState::Pressed ? ColourPressed : ColourFace);
}

void paintArrowButton(Canvas& canvas, const Rect& area, Arrow arrow, PushState state)
{
    if (area.isEmpty())
        return;
    paintButton(canvas, area, state);
    const Colour colour = state == PushState::Disabled ? ColourFaceTextDisabled : ColourFaceText;
    canvas.polygon(arrowPoints(imageArea(area, state), arrow), {colour}, colour);
}

void paintEditField(Canvas& canvas, const Rect& area)
{
    if (!area.isEmpty())
        canvas.rectangle(area, {ColourFaceShadow}, ColourWhite);
}

Rect imageArea(const Rect& area, PushState state)
{
    const int by = state == PushState::Pressed ? 1 : 0;
    return area.moved(by, by);
}

} // namespace vorn
