// The pen, the finger and the mouse on the main window: what a tap, a double tap and a drag do.
//
// Units:  pixels of the client area; while the pen is down also outside of it.
// Shape:  each call is one message; the end of the message and the repaint pass are the caller's.
//         What a drag needs to know lies in `application->pen`.
// Errors: the sticky code.
#pragma once

#include "core/reference.h"
#include "platform/geometry.h"
#include "shell/key.h"

namespace vorn {

// What a drag does.
enum DragMode : int {
    DragNone = 0,
    DragSelect = 1,
    DragColumnSize = 2,
    DragRowSize = 3,
    DragFill = 4,
    DragSplitter = 6, // and whatever else of the chrome is held
};

// A finger is wider than a pen.
enum class Pointer { Pen, Finger };

// While the pen is down, its last move comes again this often.
constexpr int PenTimerMilliseconds = 200;

struct PenState {
    bool penDown = false;
    DragMode dragMode = DragNone;

    // How a selection grows: 1 from a cell, 3 from a row title, 5 from a column title, 7 from the
    // corner.
    unsigned selectionExtend = 0;

    // The last move, which the timer repeats.
    Point last;

    // A column or a row that is made larger: where its edge was taken, where it is, and where its
    // line was drawn last (NoLine for nowhere).
    static constexpr int NoLine = -1;
    int resized = 0;
    int resizeStart = 0;
    int resizeAt = 0;
    int resizeDrawn = NoLine;

    // What was selected when a fill began.
    RangeRef fillAnchor;
};

// What lies at a place of the window.
enum class PlaceKind {
    Nothing,
    Chrome,      // see shell/chrome.h
    Editor,      // the edit control
    Corner,      // the box that selects everything
    ColumnTitle, // `column`
    RowTitle,    // `row`
    ColumnEdge,  // the right edge of `column`
    RowEdge,     // the lower edge of `row`
    FillHandle,
    Cell
};

struct Place {
    PlaceKind kind = PlaceKind::Nothing;
    int column = 0;
    int row = 0;
};

// A finger is let hit edges and the handle from further away where nothing else is missed by it.
Place placeAt(int x, int y, Pointer pointer = Pointer::Pen);

// The handle of the selection; false if it is out of view, or there is none while pointing.
bool handleRect(Rect& out);

void penDown(int x, int y, KeyModifiers modifiers = {}, Pointer pointer = Pointer::Pen);
void penMove(int x, int y);
void penUp(int x, int y);

// The last move once more. Nothing while the pen is up.
void penTimer();

// The second tap of two at one place. Its first one came as down and up before.
void doubleTap(int x, int y);

} // namespace vorn
