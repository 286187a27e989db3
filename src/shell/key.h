// Keys of a keyboard, as far as the system tells them apart.
#pragma once

namespace vorn {

// A letter or a digit is its own upper-case character, as in keyOf(u'N').
enum Key : int {
    KeyNone = 0,
    KeyBackspace = 8,
    KeyTab = 9,
    KeyEnter = 13,
    KeyEscape = 27,
    KeyPageUp = 0x100,
    KeyPageDown,
    KeyEnd,
    KeyHome,
    KeyLeft,
    KeyUp,
    KeyRight,
    KeyDown,
    KeyDelete,
    KeyF2,
};

constexpr Key keyOf(char16_t letterOrDigit)
{
    return static_cast<Key>(letterOrDigit);
}

struct KeyModifiers {
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

} // namespace vorn
