// A line of text with a caret, a selection and one step of undo: what the edit control of a window
// does, without the window. The window's control mirrors it and hands it the keys.
//
// Units:  positions and lengths count UTF-16 units; position 0 stands before the first. The caret
//         goes from character to character and never into the middle of a surrogate pair, but where
//         it is put.
// Shape:  a plain object. `version` grows with every change of the text, the selection or the
//         caret, so that a mirror knows when to look.
// Errors: none. What goes beyond EditTextMax is not taken.
#pragma once

#include "shell/key.h"

#include <string>
#include <string_view>

namespace vorn {

// What a control lets its user write.
constexpr int EditTextMax = 32767;

// May the change be taken back by the user?
enum UndoRule { KeepForUndo, ForgetUndo };

class EditLine {
public:
    const std::u16string& text() const { return text_; }
    int length() const { return static_cast<int>(text_.size()); }
    int anchor() const { return anchor_; } // where the selection began
    int caret() const { return caret_; }   // its other end
    int selectionStart() const { return anchor_ < caret_ ? anchor_ : caret_; }
    int selectionEnd() const { return anchor_ < caret_ ? caret_ : anchor_; }
    bool hasSelection() const { return anchor_ != caret_; }
    std::u16string_view selectedText() const;
    unsigned version() const { return version_; }

    // A new text of any length, with the caret before it and nothing to undo.
    void setText(std::u16string_view text);

    // Selects from `start` to `end`, where the caret then stands; below 0 is the end of the text.
    void setSelection(int start, int end);
    void setCaret(int position) { setSelection(position, position); }

    // Writes over the selection; the caret then stands behind.
    void replaceSelection(std::u16string_view text, UndoRule rule = KeepForUndo);

    // A character as typed: what is below the blank does nothing, but for the backspace.
    void character(char16_t unit);

    // Left, Right, Home, End and Delete; Up and Down go as Left and Right do. With Shift the
    // selection grows, with Ctrl the caret goes by words. Other keys do nothing.
    void key(Key key, KeyModifiers modifiers);

    // Writes over the selection the first line of what is pasted.
    void paste(std::u16string_view text);

    // Deletes what is selected.
    void clear();

    // Undoing a second time brings back what was undone.
    bool canUndo() const { return undo_.inserted != 0 || !undo_.removed.empty(); }
    void undo();

private:
    // What the last changes did, taken together: in place of `removed` stand `inserted` units.
    struct Change {
        int start = 0;
        int inserted = 0;
        std::u16string removed;
    };

    void replace(int start, int end, std::u16string_view text, UndoRule rule);
    void remember(int start, std::u16string_view removed, int inserted);
    void erase(int start, int end);
    void moveCaret(int position, bool extend);
    int before(int position) const;
    int behind(int position) const;
    int wordBefore(int position) const;
    int wordBehind(int position) const;

    std::u16string text_;
    int anchor_ = 0;
    int caret_ = 0;
    unsigned version_ = 0;
    Change undo_;
};

} // namespace vorn
