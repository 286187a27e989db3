// Places on the screen.
#pragma once

namespace vorn {

// Units: pixels of the client area, from its upper left corner.
struct Point {
    int x = 0;
    int y = 0;

    bool operator==(const Point&) const = default;
};

// Right and bottom are the first pixels outside.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const Rect&) const = default;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool isEmpty() const { return right <= left || bottom <= top; }
    bool contains(int x, int y) const { return left <= x && x < right && top <= y && y < bottom; }
    bool meets(const Rect& other) const { return !intersected(other).isEmpty(); }

    // What both cover; empty, with any place, if they do not meet.
    Rect intersected(const Rect& other) const
    {
        return {left > other.left ? left : other.left, top > other.top ? top : other.top,
                right < other.right ? right : other.right,
                bottom < other.bottom ? bottom : other.bottom};
    }

    // Each side moved inwards; outwards for less than 0.
    Rect shrunk(int by) const { return {left + by, top + by, right - by, bottom - by}; }
    Rect moved(int dx, int dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
};

} // namespace vorn
