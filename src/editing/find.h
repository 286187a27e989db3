// Find and replace: a walk over the texts of the cells from the active one on, round once and back
// to it. The cursor moves to each hit; what the user wants to do there is asked elsewhere.
//
// Shape:  one set of settings, kept between uses; a new Application begins with a new one.
// Errors: finding has none. Replacing has those of an entry: the sticky code, with the cell as it
//         was.
#pragma once

#include "core/reference.h"
#include "platform/userinterface.h"

#include <string>

namespace vorn {

constexpr int FindTextMax = 200;

// Of the text that a cell shows no more than this is searched.
constexpr int SearchedTextMax = 1000;

// A text of this length or more cannot come out of a replacement.
constexpr int ReplacedTextMax = 1024;

enum ReplaceAction : int { ActionFindNext = 0, ActionReplace = 1, ActionReplaceAll = 2 };

struct FindSettings {
    std::u16string findText;
    std::u16string replaceText;
    bool byColumns = false;
    bool inValues = true; // in what cells show, else in what was typed
    bool caseSensitive = false;
    bool entireCells = false; // the whole text must match
    ReplaceAction replaceAction = ActionFindNext;
    RangeRef searchRange;
    ScreenRect findBoxRect; // where the boxes that stay in sight stood last
    ScreenRect replaceBoxRect;
};

extern FindSettings findSettings;

// What is selected, if that is more than one cell; else the whole sheet.
void setSearchRange();

enum FindStart {
    FindBehindActiveCell,
    FindInActiveCell // and then behind it
};

// Moves the cursor to the next cell whose text matches. False, with the cursor where it was, if
// there is none; the active cell itself only counts for FindInActiveCell.
bool findNext(FindStart start);

// Rewrites the text of the active cell as one step of undo: the first match in it, or all of them
// for ActionReplaceAll. False if nothing was stored.
bool replaceInCell();

} // namespace vorn
