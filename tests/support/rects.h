// How a failed comparison shows a rectangle.
#pragma once

#include "platform/geometry.h"

#include <ostream>

namespace vorn {

inline void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << rect.left << ',' << rect.top << '-' << rect.right << ',' << rect.bottom;
}

} // namespace vorn
