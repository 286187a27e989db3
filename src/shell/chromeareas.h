// Where the parts around the grid stand, as far as the window shows them: in a small window they
// would overlap, or reach beyond its edges.
//
// Units:  pixels of the client area.
#pragma once

#include "platform/geometry.h"

namespace vorn {

// What is not there is empty.
struct ChromeAreas {
    Rect formulaBar;
    Rect tabButtons; // both
    Rect tabs;
    Rect splitter;
    Rect horizontalBar;
    Rect verticalBar;
    Rect corner; // between the ends of both scroll bars
};

ChromeAreas chromeAreas();

// What two areas share; Rect() for nothing.
Rect sharedArea(const Rect& area, const Rect& other);

} // namespace vorn
