// The look that all buttons around the grid share.
#pragma once

#include "platform/geometry.h"

namespace vorn {

class Canvas;

enum class PushState { Idle, Pressed, Disabled };
enum class Arrow { Left, Right, Up, Down };

void paintButton(Canvas& canvas, const Rect& area, PushState state);
void paintArrowButton(Canvas& canvas, const Rect& area, Arrow arrow, PushState state);

// A field to write in, as the edit control that will lie over it.
void paintEditField(Canvas& canvas, const Rect& area);

// Where the image of a button stands: while it is pressed, one unit further right and down.
Rect imageArea(const Rect& area, PushState state);

} // namespace vorn
