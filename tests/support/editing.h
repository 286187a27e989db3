// A document for tests that edit: its undo list goes with it.
#pragma once

#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "editing/view.h"
#include "support/testplatform.h"

#include <string>
#include <string_view>

namespace vorn {

class EditDocument {
public:
    EditDocument();
    ~EditDocument();
    EditDocument(const EditDocument&) = delete;
    EditDocument& operator=(const EditDocument&) = delete;

    // Selects a range of the current sheet, or another sheet and a range, the first corner being
    // the active cell: "B2", "B2:D4", "Sheet2!B2".
    static void select(std::string_view place);

    // Types a text in a cell, as one step.
    static bool enter(std::string_view place, std::u16string_view text);

    // The content of a cell as the input line shows it.
    static std::u16string input(std::string_view place);

    TestDocument document;
};

// Heights that nobody set by hand follow the fonts of the rows whenever an edit looks at them, and
// so may be others behind an undo.
enum HeightRule { KeepFittedHeights, IgnoreFittedHeights };

// All that can be seen of the document, a line for each thing, for comparisons. Rows and cells
// that look as if nobody had touched them are left out, and so is the selection.
std::string describeSheets(HeightRule rule = KeepFittedHeights);

// Writes down what it is told: "lock", "mark", "unlock", "sheet", "cell".
class RecordingView : public DocumentView {
public:
    RecordingView() { documentView = this; }
    ~RecordingView() override { documentView = nullptr; }
    RecordingView(const RecordingView&) = delete;
    RecordingView& operator=(const RecordingView&) = delete;

    void lockRepaint() override { note("lock"); }
    void unlockRepaint() override { note("unlock"); }
    void markDirty(std::uint16_t marks) override { note(marks == DirtyAll ? "mark" : "?"); }
    void sheetChanged() override { note("sheet"); }
    void activeCellMoved() override { note("cell"); }

    std::string told;
    bool sawRecorder = false;

private:
    void note(const char* what)
    {
        told += told.empty() ? "" : " ";
        told += what;
        sawRecorder = sawRecorder || undoRecorder != nullptr;
    }
};

} // namespace vorn
