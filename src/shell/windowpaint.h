// The painting of the window as a whole: what has to be painted at the end of a message, and how
// little of it will do. The mark of the whole sheet (editing/view.h) has the grid painted anew; the
// other two only ask for a look: what is selected, pointed at and dragged, where the view stands
// and what the bars and tabs show is compared with what was painted last. What scrolled is moved,
// what is inverted is inverted again where it differs.
//
// Shape:  a canvas is painted on again and again and keeps what is on it. What stands there is
//         remembered in `application->painted`.
#pragma once

#include "core/sheet.h"
#include "shell/chrome.h"
#include "shell/gridlayout.h"
#include "shell/region.h"
#include "shell/titlepaint.h"

namespace vorn {

class Canvas;

// What was painted last.
struct PaintedWindow {
    const Sheet* sheet = nullptr; // to be compared only, never looked into; null for nothing
    GridLayout areas;
    Selection previousSelection;
    bool pointing = false;
    int previousLeftColumn = 0;
    int previousTopRow = 0;
    TitlesLook titles;
    Region inverted; // of the grid, by the selection and whatever else is painted by inverting
    Chrome chrome;
};

// Everything within `area` as it stands, whatever is asked for. It changes nothing of what is
// remembered, and so belongs on the canvas of paintChanges only where no change waits for it.
void paintWindow(Canvas& canvas, const Rect& area);

// What the marks ask for and what has changed; the first time, everything. It ends with endRepaint.
// Nothing is painted while the repaint lock is held, and without a document.
void paintChanges(Canvas& canvas);

// The end of a repaint pass, also of a shell that paints nothing: the marks are taken back, what
// was painted is remembered, the editor follows its cell.
void endRepaint();

// The canvas is lost, or another one comes: the next pass paints everything.
void forgetPainted();

} // namespace vorn
