// The drag of the handle: the selection grows to the right or down, one of both at a time, from
// what was selected; at the end the new part is filled.
//
// Shape:  its state is that of the pen.
#pragma once

#include "platform/geometry.h"

namespace vorn {

void beginFill();

// Right of what was selected it grows in columns, else below it in rows. Elsewhere it stays as it
// is, but on the first cell it shrinks to that one.
void moveFill(Point at);

void finishFill();

} // namespace vorn
