// Places on the screen.
#pragma once

namespace vorn {

// Units: pixels of the client area, from its upper left corner. Right and bottom are the first
// pixels outside.
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
};

} // namespace vorn
