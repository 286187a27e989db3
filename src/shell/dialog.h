// Dialogs without a window. A DialogModel is made from a form (resources/dialogs.h); it holds what
// each control shows and lets through, and a class derived from it holds the rules: what stands in
// the controls at first, what a change brings with it, what a button does. A window draws any model
// and passes on what its user does; a script answers one by the numbers of its controls; a test
// calls the same operations. None of them knows the rules.
//
// What the rules set is only shown: it is no change and calls no rule. While a rule runs, the
// operations of the user are refused, so that a window that echoes what it is told does no harm. A
// rule may open another dialog, with runDialog, or a message box.
//
// Shape:  a model opens once and closes once. It holds what came of it until it is destroyed.
//         Controls keep their addresses, their entries do not.
// Errors: whatever a rule leaves as the sticky error is shown over the dialog, which stays open,
//         unless the rule closed it.
#pragma once

#include "platform/userinterface.h"
#include "resources/dialogs.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

enum class BoxState : int { Mixed = -1, Off = 0, On = 1 };

constexpr int NoEntry = -1;
constexpr int NoControl = 0;

// Where the caret stands in a text, and what is selected.
struct CaretRange {
    int start = 0;
    int end = 0;
};

// What a control shows.
struct Control {
    const ControlForm* form;
    std::u16string text;                 // of a Label, Edit, TextArea or Combo
    std::vector<std::u16string> entries; // of a list of any kind
    int selected = NoEntry;              // of these; NoEntry for none
    BoxState box = BoxState::Off;        // of a Box, TriBox or Radio
    CaretRange caret;
    bool enabled = true;

    bool isList() const;
    bool isBox() const;
    bool isText() const; // can be typed into

    // The entry with this text; NoEntry if there is none.
    int entryOf(std::u16string_view entryText) const;
};

// A window that shows a dialog. It is told of all that is to be shown otherwise, also where it
// passed that on itself.
class DialogObserver {
public:
    virtual ~DialogObserver() = default;

    virtual void controlChanged(int control) = 0;
    virtual void focusMoved(int control) = 0;

    // The chosen entry of a LabelList is to be renamed in place: endLabelEdit or cancelLabelEdit is
    // what comes of it.
    virtual void labelEditBegun(int control) = 0;

    // Another page of a PageSheet is in front.
    virtual void pageTurned() = 0;

    virtual void dialogClosed() = 0;
};

class DialogModel {
public:
    explicit DialogModel(int number);
    virtual ~DialogModel() = default;
    DialogModel(const DialogModel&) = delete;
    DialogModel& operator=(const DialogModel&) = delete;

    // --- What is shown

    int number() const { return form_.number; }
    std::u16string_view title() const { return title_; }
    virtual std::u16string_view helpAnchor() const { return form_.helpAnchor; }
    const std::vector<Control>& controls() const { return controls_; }
    const Control* find(int control) const; // null if the dialog has none of that number

    // Where the next character goes; NoControl before any rule has said so.
    int focus() const { return focus_; }

    // The LabelList whose chosen entry is being renamed; NoControl for none.
    int labelInEdit() const { return labelInEdit_; }

    // The pages of a PageSheet; a plain dialog has none.
    virtual std::span<DialogModel* const> pages() const { return {}; }

    // The button that OK presses.
    int okButton() const { return form_.okButton; }

    bool isOpen() const { return open_; }

    // The button that closed it: its number, or ButtonOk or ButtonCancel.
    int closedBy() const { return closedBy_; }

    // --- What the user does. All answer false, with nothing done, where this cannot be done by
    // hand: the dialog is closed or a rule runs, the control is disabled or of another kind.

    // Types over the whole text, which is cut to what the control takes.
    bool enterText(int control, std::u16string_view text);
    bool moveCaret(int control, CaretRange caret);
    bool choose(int control, int entry);
    bool setBox(int control, BoxState state);

    // On becomes off, and anything else but off, too.
    bool tapBox(int control);
    bool press(int button);

    // On an entry of a list: chooses it, and presses OK if the list is of that kind.
    bool doubleTap(int control, int entry);

    // Brings a page of a sheet to the front.
    virtual void turnTo(int) {}

    // Renaming of the chosen entry of a LabelList. Whatever else the user does meanwhile ends it
    // with the name as it was.
    bool editLabel(int control);
    bool endLabelEdit(std::u16string_view text);
    bool cancelLabelEdit();

    // --- For whoever runs the dialog

    // Calls the rule `opened`. It may close the dialog at once.
    void open();

    // Makes a page of a sheet that stays open as it was before OK.
    void reopen() { open_ = true; }

    // Null when nobody watches. It is not owned; who goes away sets it back to null.
    DialogObserver* observer = nullptr;

    // Where a window that keeps its place stood last; null where each opening has its own place.
    ScreenRect* place = nullptr;

protected:
    explicit DialogModel(const DialogForm& form);

    // --- The rules

    virtual void opened() {}
    virtual void changed(int) {}

    // Any button but Cancel, which closes and asks nobody. OK comes here as the number that the
    // form has for it.
    virtual void pressed(int button) { close(button); }
    virtual void cancelled() {}
    virtual void labelEdited(int, std::u16string_view) {}

    // --- What the rules do

    void close(int button);
    void setTitle(std::u16string_view title) { title_ = title; }
    void setText(int control, std::u16string_view text);
    void setEntries(int control, std::vector<std::u16string> entries);
    void setEntry(int control, int entry, std::u16string_view text);
    void select(int control, int entry);
    void showBox(int control, BoxState state);
    void showBox(int control, bool on) { showBox(control, on ? BoxState::On : BoxState::Off); }
    void enable(int control, bool enabled);
    void setCaret(int control, CaretRange caret);
    void setFocus(int control);
    void beginLabelEdit(int control);
    void tellPageTurned();

    const std::u16string& text(int control) const { return at(control).text; }
    int selected(int control) const { return at(control).selected; }
    const std::u16string& chosenEntry(int control) const; // there must be one
    BoxState boxState(int control) const { return at(control).box; }
    bool isOn(int control) const { return at(control).box == BoxState::On; }

    // The text as a whole number; 0 for a text that is none.
    int wholeNumber(int control) const;

private:
    std::size_t indexOf(int control) const;
    const Control& at(int control) const;
    Control& at(int control);
    Control* usable(int control);
    void turnOn(const Control& radio);
    void beginRule();
    void endRule();
    bool tellChanged(int control);
    void showControl(int control);

    DialogForm form_;
    std::u16string title_;
    std::vector<Control> controls_;
    int focus_ = NoControl;
    int labelInEdit_ = NoControl;
    int closedBy_ = ButtonCancel;
    bool open_ = false;
    bool inRule_ = false;
};

// Opens a dialog, lets the user answer it and waits until it is closed; whoever leaves it open has
// cancelled it. Answers false if it was cancelled.
bool runDialog(DialogModel& dialog);

} // namespace vorn
