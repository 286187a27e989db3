// The forms of the dialogs: which controls each has, what they are called and what their lists hold
// from the start. A form says nothing of what a dialog does: that is in the models of
// shell/dialogs. Numbers of dialogs and controls are known to scripts and never change.
//
// To add a dialog: its controls and its row in the table, both in dialogs.cpp.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vorn {

// The two buttons that every dialog has, whatever else is on it.
constexpr int ButtonOk = 1;
constexpr int ButtonCancel = 2;

enum class ControlKind : std::uint8_t {
    Label,     // a text that is shown
    Edit,      // one line of text
    TextArea,  // several lines
    Box,       // on or off
    TriBox,    // on, off or mixed
    Radio,     // on or off, one of its group
    List,      // entries to choose from
    Choice,    // the same, of which only the chosen one is in sight
    Combo,     // a Choice that can be typed in as well
    LabelList, // a List whose entries can be renamed in place
    Button,
    Picture,
};

// What else is to be said of a control.
constexpr std::uint8_t ControlDisabled = 1;    // until the rules enable it
constexpr std::uint8_t ControlDoubleTapOk = 2; // a double tap on an entry is OK
constexpr std::uint8_t ControlStartsGroup = 4; // the first radio button of its group

struct ControlForm {
    int id;
    ControlKind kind;
    std::u16string_view label;
    std::u16string_view entries = {}; // with '|' between them
    int textMax = 0;                  // characters that can be typed; 0 for any number
    std::uint8_t traits = 0;
};

struct DialogForm {
    int number;
    std::u16string_view title;      // may be empty
    std::u16string_view helpAnchor; // the place in the help file; empty for its start
    std::span<const ControlForm> controls;
    int okButton = ButtonOk; // the button that OK presses, where the dialog has one of its own
};

// The form of a dialog; null for a number that none has.
const DialogForm* dialogForm(int number);

// A window of several pages, each of which is a dialog with a number of its own.
struct PageSheetForm {
    std::u16string_view title;
    std::span<const int> pages;
};

extern const PageSheetForm FormatCellsForm;
extern const PageSheetForm OptionsForm;

} // namespace vorn
