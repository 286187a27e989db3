// What editing tells whoever shows the document.
//
// Shape:  one at a time, installed by the shell; null when nobody shows anything.
#pragma once

#include <cstdint>

namespace vorn {

// Marks of markDirty.
constexpr std::uint16_t DirtySelection = 4; // only what is selected
constexpr std::uint16_t DirtyAll = 8;       // the whole sheet
constexpr std::uint16_t DirtyScrolled = 16; // the view moved over the sheet

class DocumentView {
public:
    virtual ~DocumentView() = default;

    // While the lock is held, as many times as it was raised, nothing is painted.
    virtual void lockRepaint() = 0;
    virtual void unlockRepaint() = 0;
    virtual void markDirty(std::uint16_t marks) = 0;

    // The current sheet is another one, or has another name or place: its tab is to be shown.
    virtual void sheetChanged() = 0;

    // The active cell moved and is to be in view.
    virtual void activeCellMoved() = 0;
};

extern DocumentView* documentView;

// The same, where there may be no view.
void markRepaint();
void tellSheetChanged();
void tellActiveCellMoved();

// Holds the lock for as long as it lives.
class RepaintLock {
public:
    RepaintLock();
    ~RepaintLock();
    RepaintLock(const RepaintLock&) = delete;
    RepaintLock& operator=(const RepaintLock&) = delete;
};

} // namespace vorn
