// What stands around the grid and is painted and driven by the system itself: the tabs of the
// sheets with their two buttons, the splitter, both scroll bars and the buttons of the formula bar.
//
// Units:  pixels of the client area; tabs count from 0, in the order of the sheets.
// Shape:  `Chrome` is all that is seen of it, made anew whenever somebody looks. What a user does
//         to it comes in by press, drag and release, and is kept in ChromeState.
#pragma once

#include "platform/geometry.h"

#include <array>
#include <string>
#include <vector>

namespace vorn {

class Canvas;

// A scroll bar: two buttons, and between them the track with its thumb. Empty where there is none.
struct ScrollBarLook {
    Rect area;
    Rect thumb;
    int pressed = 0; // the ScrollPart that is held down

    bool operator==(const ScrollBarLook&) const = default;
};

struct TabLook {
    Rect area; // its slanted sides reach into its neighbours
    std::u16string text;
    bool current = false;

    bool operator==(const TabLook&) const = default;
};

struct TabsLook {
    Rect buttons; // both, each one half
    Rect area;
    Rect splitter;
    std::vector<TabLook> tabs; // from firstShown on, as far as they are seen
    bool canScrollLeft = false;
    bool canScrollRight = false;
    int pressed = 0; // 1 for the left button, 2 for the right one

    bool operator==(const TabsLook&) const = default;
};

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

// Parts of a scroll bar, in the direction in which it scrolls.
enum ScrollPart : int {
    ScrollNone = 0,
    ScrollLineBack,
    ScrollPageBack,
    ScrollThumb,
    ScrollPageOn,
    ScrollLineOn,
};

// What is held down at the moment.
struct ChromeState {
    int firstShown = 0;    // the first tab that is seen
    int verticalRange = 0; // of the vertical scroll bar; it follows the data by steps
    ChromePart held = ChromePart::None;
    int heldPart = 0;   // the ScrollPart, the tab button, or the id of the formula bar's button
    bool inside = true; // is the pen still on it?
    int grip = 0;       // where on the thumb, or on the splitter, the pen went down
};

// The part at a place; None over the grid, its titles and the edit control.
ChromePart chromePartAt(int x, int y);

// The pen goes down on a part, moves and goes up. `chromeDrag` comes again and again while the pen
// rests: buttons then repeat. Tapping a tab shows its sheet, the scroll bars scroll; both begin to
// point, or commit, while a cell is edited.
void chromePress(int x, int y);
void chromeDrag(int x, int y);
void chromeRelease(int x, int y);

// The second tap of two on a part.
void chromeDoubleTap(int x, int y);

// --- Scrolling, for whoever else scrolls: a wheel, two fingers. Columns and rows that cannot be
// scrolled any further stay. While a cell is edited it begins to point, or commits.
void scrollBy(int columns, int rows);

// The same, to a column or a row; -1 leaves one as it is.
void scrollViewTo(int leftColumn, int topRow);

// --- Tabs

// Moves the tabs so that the current one is seen.
void showCurrentTab();

// Shows a sheet, as a tap on its tab does. Nothing for a number that no sheet has.
void selectTab(int sheet);

} // namespace vorn
