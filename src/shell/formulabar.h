// The one editor of cell texts. With the formula bar switched on it stands in a strip above the
// grid, with buttons, and shows the text of the active cell; with the bar off it exists only while
// a cell is edited, right over the cell.
//
// It is a model: `line` holds what the control of a window shows, and the rectangles say where the
// control and the buttons stand. What opens and closes it is in shell/entry.h.
//
// Shape:  one, in the Application.
#pragma once

#include "platform/geometry.h"
#include "resources/commandids.h"
#include "shell/editline.h"
#include "shell/texteditor.h"

#include <array>

namespace vorn {

struct BarButton {
    int id = 0;
    bool enabled = false;
    Rect rect;
};

constexpr int BarButtonCount = 4;

// The control of an editor that is out of view.
constexpr Rect OutOfSight = {-1, -1, -1, -1};

// Where the buttons stand in a strip, in their order.
std::array<Rect, BarButtonCount> barButtonRects(const Rect& strip);

class FormulaBar : public TextEditor {
public:
    EditLine line;

    bool editing = false;

    // Do Left and Right move the caret? Otherwise they commit and move to another cell.
    bool caretMode = true;

    // Where in the text the reference stands that point mode wrote last.
    int pointStart = 0;
    int pointLength = 0;

    // Where the control stands.
    Rect rect;

    // From left to right; enabled or not whether they are shown or not.
    std::array<BarButton, BarButtonCount> buttons = {
        {{CommandCancel, false, {}},
         {CommandCommit, false, {}},
         {CommandFunctionButton, true, {}},
         {CommandQuickEntry, true, {}}}
    };

    // Puts the buttons and the control in their places in a strip.
    void move(const Rect& strip);

    void startEditing();
    void stopEditing();

    // Closes it because the document goes.
    void abandon();

    // Shows another text, if it is another one.
    void show(std::u16string_view text);

    // --- What commands do to the text: an end of pointing.
    bool isOpen() const override { return editing; }
    bool canUndo() const override { return line.canUndo(); }
    void undo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    void clear() override;

private:
    void enableButtons(bool enabled);
};

} // namespace vorn
