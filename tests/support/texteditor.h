// An editor of texts that only remembers what it was asked for.
#pragma once

#include "shell/texteditor.h"

#include <string>

namespace vorn {

class RecordingEditor : public TextEditor {
public:
    bool isOpen() const override { return open; }
    bool canUndo() const override { return undoable; }
    void undo() override { asked += "undo "; }
    void cut() override { asked += "cut "; }
    void copy() override { asked += "copy "; }
    void paste() override { asked += "paste "; }
    void clear() override { asked += "clear "; }

    bool open = true;
    bool undoable = false;
    std::string asked;
};

} // namespace vorn
