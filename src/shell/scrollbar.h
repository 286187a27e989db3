// A scroll bar: two buttons, and between them the track with its thumb. It is arithmetic, and the
// look of what came of it; what is scrolled is up to others.
//
// Units:  pixels of the client area; positions are columns or rows.
// Shape:  plain objects, made anew whenever somebody looks.
#pragma once

#include "platform/geometry.h"

namespace vorn {

class Canvas;

enum class BarDirection { Across, Down };

// Parts of a scroll bar, in the direction in which it scrolls.
enum ScrollPart : int {
    ScrollNone = 0,
    ScrollLineBack,
    ScrollPageBack,
    ScrollThumb,
    ScrollPageOn,
    ScrollLineOn,
};

// How far can be scrolled, and where the view stands.
struct ScrollReach {
    int first = 0;
    int last = 0;
    int position = 0; // from first to last
    int page = 1;     // what is seen at once
};

// How a bar is seen. Empty where there is none.
struct ScrollBarLook {
    BarDirection direction = BarDirection::Across;
    Rect area;
    Rect thumb;
    int pressed = 0; // the ScrollPart that is held down

    bool operator==(const ScrollBarLook&) const = default;
};

// The thumb is never shorter; a track without room for it has none.
constexpr int LeastThumbLength = 12;

class ScrollBar {
public:
    ScrollBar(BarDirection direction, const Rect& area, const ScrollReach& reach = {});

    Rect backButton() const { return part(start_, trackStart_); }
    Rect onButton() const { return part(trackEnd_, end_); }
    Rect track() const { return part(trackStart_, trackEnd_); }

    // As long, compared with the track, as the page compared with all there is.
    Rect thumb() const;

    ScrollPart partAt(int x, int y) const;

    // How far behind the thumb's beginning a place lies.
    int gripAt(int x, int y) const { return along(x, y) - thumbStart_; }

    // Where the view is to go when the thumb is dragged to a place by its grip: to the ends of the
    // reach at the ends of the track, and nowhere while the thumb stays where it is.
    int positionAt(int x, int y, int grip) const;

private:
    int along(int x, int y) const { return direction_ == BarDirection::Across ? x : y; }
    Rect part(int from, int to) const;

    BarDirection direction_;
    Rect area_;
    ScrollReach reach_;
    int start_;
    int end_;
    int trackStart_;
    int trackEnd_;
    int thumbStart_;
    int thumbLength_;
};

void paintScrollBar(Canvas& canvas, const ScrollBarLook& look);

// The same where a bar looked otherwise before: its track alone if only the thumb moved.
void paintScrollBarChange(Canvas& canvas, const ScrollBarLook& now, const ScrollBarLook& before);

} // namespace vorn
