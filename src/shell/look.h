// The colours and the fonts of the window's own parts, in one place.
#pragma once

#include "platform/canvas.h"

namespace vorn {

constexpr Colour ColourGridline = rgb(0xC0, 0xC0, 0xC0);
constexpr Colour ColourFace = rgb(0xEC, 0xEC, 0xE8);       // of titles, buttons and other tabs
constexpr Colour ColourFaceLight = rgb(0xFF, 0xFF, 0xFF);  // its lit edges
constexpr Colour ColourFaceShadow = rgb(0xA4, 0xA4, 0xA0); // its dark edges
constexpr Colour ColourFaceText = rgb(0x20, 0x20, 0x20);
constexpr Colour ColourFaceTextDisabled = rgb(0xA0, 0xA0, 0xA0);
constexpr Colour ColourPressed = rgb(0xC4, 0xD2, 0xE6); // of titles whose cells are selected
constexpr Colour ColourTrack = rgb(0xDD, 0xDD, 0xD8);   // of a scroll bar, behind its thumb

constexpr Colour ColourTabCurrent = rgb(0xFF, 0xFF, 0xFF);

constexpr int TabFontHeight = 12;

// The titles of columns and rows, before zoom.
constexpr int TitleFontTwips = 210;

} // namespace vorn
