// The icons of the program, by the numbers that the toolbar (resources/menu.h) and the formula bar
// know them by, and how they are drawn.
//
// Units:  a grid of 16 by 16, from the upper left corner. Lines run through the middles of squares
//         if they are one wide and along the edges of squares if they are two wide, so that at 16
//         pixels everything along an axis falls on whole pixels. They reach half of their width
//         beyond their ends.
// Shape:  parts from back to front. A path is letters with their numbers behind them, parted by
//         blanks: M x y begins, L x y goes on straight, C x y x y x y goes on in a curve, O x y r
//         is a circle, Z closes.
#pragma once

#include "platform/canvas.h"

#include <span>
#include <string_view>

namespace vorn {

enum Icon : int {
    IconUndo = 0,
    IconCut = 1,
    IconCopy = 2,
    IconPaste = 3,
    IconAutoSum = 4,
    IconChart = 5,
    IconBold = 6,
    IconItalic = 7,
    IconUnderline = 8,
    IconNew = 9,
    IconOpen = 10,
    IconSave = 11,
    IconAlignLeft = 12,
    IconAlignCenter = 13,
    IconAlignRight = 14,
    IconFind = 15,
    IconSort = 16,
    IconFormat = 18,
    IconFullScreen = 19,

    // Of the formula bar.
    IconCommit = 110,
    IconCancel = 111,
    IconQuickEntry = 112,
    IconFunction = 113,

    IconVorn = 128, // of the program itself
};

constexpr int IconGrid = 16;

struct IconPart {
    Colour inside; // NoColour for an open line
    Colour line;   // NoColour for a shape without a border
    int width;     // of the line
    std::string_view path;
};

struct IconDrawing {
    int icon;
    std::span<const IconPart> parts;
};

extern const std::span<const IconDrawing> IconDrawings;

// Null if there is no such icon.
const IconDrawing* findIcon(int icon);

} // namespace vorn
