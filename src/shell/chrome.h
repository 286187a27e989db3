// What stands around the grid and is painted and driven by the system itself: the tabs of the
// sheets with their two buttons, the splitter, both scroll bars and the buttons of the formula bar.
//
// Units:  pixels of the client area.
// Shape:  `Chrome` is all that is seen of it, made anew whenever somebody looks. What a user does
//         to it comes in by press, drag and release, and is kept in ChromeState.
#pragma once

#include "platform/geometry.h"
#include "shell/scrollbar.h"
#include "shell/scrolling.h"
#include "shell/tabstrip.h"

#include <array>

namespace vorn {

class Canvas;

struct BarButtonLook {
    Rect area;
    int icon = 0;
    bool enabled = false;
    bool pressed = false; // its image then stands one unit further right and down

    bool operator==(const BarButtonLook&) const = default;
};

struct FormulaBarLook {
    Rect strip;
    std::array<BarButtonLook, 4> buttons;

    bool operator==(const FormulaBarLook&) const = default;
};

struct Chrome {
    FormulaBarLook formulaBar;
    TabsLook tabs;
    ScrollBarLook horizontal;
    ScrollBarLook vertical;
    Rect corner; // between the ends of both scroll bars

    bool operator==(const Chrome&) const = default;
};

// How all of it stands now.
Chrome currentChrome();

// Everything of it within `clip`.
void paintChrome(Canvas& canvas, const Chrome& chrome, const Rect& clip);

// Those of its parts that look otherwise than before.
void paintChromeChanges(Canvas& canvas, const Chrome& now, const Chrome& before);

// --- What the user does

enum class ChromePart { None, BarButton, TabButtons, Tabs, Splitter, HorizontalBar, VerticalBar };

// What is held down at the moment, and how far the tabs and the bars are.
struct ChromeState {
    int firstShown = 0;                     // the first tab that is seen
    int verticalRange = FirstVerticalRange; // of the vertical scroll bar, which follows the data
    ChromePart held = ChromePart::None;
    int heldPart = 0;   // the ScrollPart, the tab button, or the id of the formula bar's button
    bool inside = true; // is the pen still on it?
    int grip = 0;       // where on the thumb, or on the splitter, the pen went down
    Point last;         // where the pen was last: it rests while it comes there again
};

// The part at a place; None over the grid, its titles and the edit control.
ChromePart chromePartAt(int x, int y);

// The pen goes down on a part, moves and goes up. `chromeDrag` comes again and again while the pen
// rests: buttons and tracks then repeat. A button of the formula bar does its work when the pen
// goes up on it. Tapping a tab shows its sheet, the scroll bars scroll; both begin to point, or
// commit, while a cell is edited, and nothing is held if that is refused.
void chromePress(int x, int y);
void chromeDrag(int x, int y);
void chromeRelease(int x, int y);

// The second tap of two on a part, down and up: it does the same once more.
void chromeDoubleTap(int x, int y);

} // namespace vorn
