// The pen, the finger and the mouse on the main window: what a tap, a double tap and a drag do.
//
// Units:  pixels of the client area; while the pen is down also outside of it.
// Shape:  each call is one message; the end of the message and the repaint pass are the caller's.
//         What a drag needs to know lies in `application->pen`. A drag ends, and changes nothing
//         more, when the document goes, when another sheet comes or pointing begins or ends under
//         it, and when a box or a dialog comes in between.
// Errors: the sticky code.
#pragma once

#include "core/reference.h"
#include "platform/geometry.h"
#include "shell/hittest.h"
#include "shell/key.h"

namespace vorn {

class Sheet;

// What a drag does.
enum DragMode : int {
    DragNone = 0,
    DragSelect = 1,
    DragColumnSize = 2,
    DragRowSize = 3,
    DragFill = 4,
    DragSplitter = 6, // and whatever else of the chrome is held
};

// While the pen is down, its last move comes again this often.
constexpr int PenTimerMilliseconds = 200;

struct PenState {
    bool penDown = false;
    DragMode dragMode = DragNone;

    // How a selection grows: 1 from a cell, 3 from a row title, 5 from a column title, 7 from the
    // corner.
    unsigned selectionExtend = 0;

    // What went down, and where.
    Pointer pointer = Pointer::Pen;
    Point down;

    // The last move, which the timer repeats.
    Point last;

    // What was hit. Until the pen has left it, it has not moved: neither does a hand that trembles
    // move anything, nor a view that scrolls under the pen to show the cell that was tapped.
    Rect home;
    bool hasLeftHome = false;

    // A finger hit something from beside it. If it never leaves, it meant what lies there.
    bool besideTarget = false;

    // On what the drag began; the sheet is only to be compared.
    const Sheet* sheet = nullptr;
    bool pointing = false;

    // A column or a row that is made larger: where its edge was, where it is now, and where its
    // line was drawn last (NoLine for nowhere). An edge is the first pixel behind what it ends;
    // `resizeLeast` is where that begins, and `resizeGrip` how far from the edge it was taken.
    static constexpr int NoLine = -1;
    int resized = 0;
    int resizeStart = 0;
    int resizeAt = 0;
    int resizeLeast = 0;
    int resizeGrip = 0;
    int resizeDrawn = NoLine; // belongs to whoever paints

    // What was selected when a fill began.
    RangeRef fillAnchor;
};

// With Shift a tap extends the selection.
void penDown(int x, int y, KeyModifiers modifiers = {}, Pointer pointer = Pointer::Pen);

// Nothing while the pen is up, as all that follows.
void penMove(int x, int y);
void penUp(int x, int y);

// The last move once more.
void penTimer();

// The pen will not go up any more, since something else has it. What it held is let go as it is.
void penLost();

// The second tap of two at one place. Its first one came as down and up before; of the second one
// nothing else comes, and an up behind it does nothing. False if two taps mean no more than one
// there: then whoever has the pen may take the second for another first, which can begin a drag.
bool doubleTap(int x, int y);

} // namespace vorn
