// The tabs of the sheets, below the grid, and their two buttons. Of many sheets a part is seen,
// from one on; the buttons move on by one tab, until the last one fits.
//
// Units:  pixels of the client area; tabs count from 0, in the order of the sheets.
// Shape:  plain objects, made anew whenever somebody looks. Only tabs that are seen are measured,
//         for a workbook may have many.
#pragma once

#include "platform/geometry.h"

#include <string>
#include <vector>

namespace vorn {

class Canvas;

// The width of a tab's slanted side, with which it reaches over its neighbour.
constexpr int TabSpacing = 7;

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

constexpr int NoTab = -1;

// The tabs of the workbook that stands, in an area.
struct SheetTabs {
    Rect area;
    int firstShown = 0;
    int current = 0;

    // Those that are seen, or a part of them.
    std::vector<TabLook> seen() const;

    // NoTab beside them.
    int tabAt(int x) const;

    // Is all of the last one seen?
    bool lastFits() const;

    // The least first one with which all of a tab is seen; itself if it is wider than the area.
    int leastFirstFor(int tab) const;
};

// As they stand now.
SheetTabs currentTabs();

TabsLook currentTabsLook();

// Moves the tabs so that the current one is seen, and no room is left empty behind the last.
void showCurrentTab();

// Moves them by one in a direction, -1 or 1, where that is possible.
void scrollTabs(int direction);

// The button at a place: 1 for the left one, 2 for the right one, 0 for none.
int tabButtonAt(int x, int y);

// Shows a sheet, as a tap on its tab does: while a formula is written its cells can be pointed at,
// any other text is committed first. Nothing for the sheet that is shown, a number that no sheet
// has, and while a text stands that cannot be committed.
void selectTab(int sheet);

// Moves the splitter to a place, within its limits.
void moveSplitter(int left);

void paintTabs(Canvas& canvas, const TabsLook& look);
void paintTabsChange(Canvas& canvas, const TabsLook& now, const TabsLook& before);

} // namespace vorn
