// A set of pixels, of any shape that a few rectangles make: what is inverted on the canvas, what
// has to be painted again. Some dozens of rectangles are many for it.
//
// Units:  pixels of the client area.
// Shape:  the rectangles do not overlap, and come from top to bottom and from left to right. Equal
//         sets have equal rectangles, however they were made.
#pragma once

#include "platform/geometry.h"

#include <vector>

namespace vorn {

class Region {
public:
    Region() = default;
    explicit Region(const Rect& area) { add(area); }

    const std::vector<Rect>& rects() const { return rects_; }
    bool isEmpty() const { return rects_.empty(); }

    void add(const Rect& area);
    void add(const Region& other);
    void remove(const Rect& area);
    void remove(const Region& other);
    void toggle(const Rect& area); // what is in of it goes out, and the other way round
    void cut(const Rect& area);    // only what lies in there stays

    // As Canvas::scroll moves what is seen: what lies in the area moves and stays within it. What
    // came into view is not in the set.
    void scroll(const Rect& area, int dx, int dy);

    // What lies in one of both only.
    friend Region changes(const Region& a, const Region& b);

    bool operator==(const Region&) const = default;

private:
    std::vector<Rect> rects_;
};

} // namespace vorn
