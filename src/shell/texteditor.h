// The editor of cell texts, as far as the commands and their states care: while it is open, Undo,
// Cut, Copy, Paste and Clear are its own and most other commands rest.
//
// Shape:  one, which the Application points to; null where there is none, and then nothing is ever
//         edited.
#pragma once

namespace vorn {

class TextEditor {
public:
    virtual ~TextEditor() = default;

    virtual bool isOpen() const = 0;

    // Can the last change of the text be taken back?
    virtual bool canUndo() const = 0;
    virtual void undo() = 0;

    // The selected characters and the clipboard.
    virtual void cut() = 0;
    virtual void copy() = 0;
    virtual void paste() = 0;
    virtual void clear() = 0;
};

} // namespace vorn
