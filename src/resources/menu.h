// The menu bar, the toolbar and the keys of the commands: what stands where, and how it reads
// before anything changes it. A shell draws them; how they stand at the moment is in
// shell/commandstate.h.
//
// Shape:  tables without an end mark. In a text '&' stands before the letter that is underlined,
//         and a tab between the text and its key.
#pragma once

#include "resources/commandids.h"

#include <span>
#include <string_view>

namespace vorn {

enum class MenuItem {
    PopUp,    // holds the items that follow one level deeper
    Entry,    // a command
    Separator // a line
};

struct MenuRow {
    int level; // 0 for the bar itself
    MenuItem kind;
    std::u16string_view text;
    int id; // 0 but for entries
};

// The rows from top to bottom, each pop-up before what it holds.
extern const std::span<const MenuRow> MenuBar;

enum class ButtonStyle {
    Push,
    Check, // stays down while what it says is so
    Separator
};

struct ToolbarSlot {
    int id;
    int image; // its place in the strip of images
    ButtonStyle style;
    std::u16string_view tip;
};

extern const std::span<const ToolbarSlot> Toolbar;

// A letter or digit, or DeleteKey, with the Control key or without it. With Shift or Alt held there
// is no such key.
constexpr char16_t DeleteKey = 0x7F;

struct Accelerator {
    char16_t key; // letters are capitals
    bool control;
    int id;
};

extern const std::span<const Accelerator> Accelerators;

// The command of a key, 0 if it has none.
int acceleratorCommand(char16_t key, bool control);

} // namespace vorn
