// How the controls of a dialog stand on its window: rows from top to bottom. Most forms say enough
// to derive the rows from them; the others have theirs in one table, in arrangement.cpp, which is
// the place to change for a dialog that should look otherwise.
//
// Buttons that no row has stand at the foot of the window, before OK and Cancel.
#pragma once

#include "resources/dialogs.h"

#include <string_view>
#include <vector>

namespace vorn::qt {

enum class RowKind {
    Fields,  // side by side behind a caption, as wide as the window lets them
    Flow,    // one behind the other in their own width, on more lines where there is no room
    List,    // one that takes the spare height, with the others in a column at its side
    Note,    // a text of several lines
    Borders, // boxes above, left, right and below of a sample of the cell
    Sample,  // no control: what the dialog would make
};

struct ArrangedRow {
    RowKind kind = RowKind::Flow;
    // What stands before the fields where neither the form says it nor a box is there to do so; a
    // blank keeps the place of a caption free.
    std::u16string_view caption;
    std::vector<int> controls;
};

// The control that stands in the place of the caption is the first one if it is a box.
std::vector<ArrangedRow> arrangementOf(int dialog, std::span<const ControlForm> controls);

// Dialogs that only tell something have no Cancel.
bool hasCancel(int dialog);

// The title of the window of a dialog that has none.
std::u16string_view titleOfUntitled(int dialog);

// How the entries of a choice are shown.
enum class EntryLook {
    Plain,
    Colours, // each with a patch of its colour
    Faces,   // each in the font that it names
};
EntryLook entryLookOf(int dialog, int control);

} // namespace vorn::qt
