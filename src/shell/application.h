// The head of the system, and what a shell of any kind drives: it owns the document and everything
// that outlives it. Whoever has installed the platform makes one Application, and has the whole
// spreadsheet, with a new workbook in it, before any window exists.
//
// Shape:  one at a time, reached through `application`. It can be destroyed and made again: a fresh
//         one remembers nothing of the last. It is also the view that editing reports to.
// Errors: the sticky code, which a shell shows with `showError` at the end of each message.
#pragma once

#include "core/sheet.h"
#include "editing/view.h"
#include "shell/chrome.h"
#include "shell/commandstate.h"
#include "shell/formulabar.h"
#include "shell/gridlayout.h"
#include "shell/pen.h"
#include "shell/windowpaint.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

constexpr int RecentFileCount = 4;
constexpr int UsedFunctionCount = 10;
constexpr int NoFunction = -1;
constexpr int DefaultFullScreenZoom = 90;
inline constexpr std::u16string_view DefaultDocumentFolder = u"\\C_Drive\\C_MyDocs\\";

// The bytes in which a window keeps the sizes of its menu and its toolbar.
constexpr std::size_t CommandBandSize = 40;

// Where the cursor goes when an entry is confirmed.
enum MoveAfterEnter : int { MoveNowhere = 0, MoveRight = 1, MoveDown = 2 };

class Application : public DocumentView {
public:
    Application();
    ~Application() override;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // --- What the settings keep (shell/settings.h)

    // The latest first; empty where there is none.
    std::array<std::u16string, RecentFileCount> recentFiles;

    // Where the file dialogs begin.
    std::u16string documentFolder;
    MoveAfterEnter moveAfterEnter = MoveNowhere;
    bool formulaBarVisible = true;

    // In full screen no sheet is shown larger than fullScreenZoom, if this is on.
    bool fullScreenZoomOn = true;
    int fullScreenZoom = DefaultFullScreenZoom;

    // Each is one list: its items, with a comma behind every one.
    std::vector<std::u16string> customLists;

    // Rows of the functions that were inserted last, the latest first; NoFunction where there is
    // none.
    std::array<int, UsedFunctionCount> usedFunctions;

    // CommandBandSize bytes that only a window understands, or none.
    std::vector<unsigned char> commandBand;

    // --- What lasts as long as the program

    // The number of the clipboard format that holds cells as they are; 0 if the machine gave none.
    unsigned clipboardFormat = 0;

    // The filter that was chosen last in the Open dialog, from 1; 0 before the first.
    int lastFilterIndex = 0;

    // The pages that were open last in the dialogs of formats and of options.
    int formatCellsPage = 0;
    int optionsPage = 0;

    bool fullScreen = false;

    // Set by the Close command: the loop of the shell ends. The document is gone then.
    bool quitRequested = false;

    CommandState commandState;

    // --- The window

    Rect clientArea = DefaultClientArea; // less menu and toolbar
    int tabDivider = firstTabDivider(DefaultClientArea.width());
    bool tabDividerMoved = false; // by hand; before, it goes with the width of the window

    // The window has another size, or comes to the front: everything is laid out and painted anew.
    void resize(const Rect& client);

    ChromeState chrome;
    PenState pen;

    // --- Pointing at cells while a formula is written

    bool pointMode = false;
    Sheet* pointSheet = nullptr; // where it began
    Selection pointSelection;
    Selection pointScratch;
    int pointLeftColumn = 0; // where the view goes back to when it ends
    int pointTopRow = 0;

    // --- Painting

    int repaintLock = 0;            // while above 0 nothing is painted
    std::uint16_t repaintHints = 0; // what the next painting has to do; it clears them
    PaintedWindow painted;          // what the last one left on the canvas

    // --- The editor

    FormulaBar formulaBar;

    // What the commands take for the editor; null where there is none.
    TextEditor* textEditor = &formulaBar;

    // Moves a function to the front of usedFunctions.
    void noteUsedFunction(int row);

    // Sum, If and Average, as in a program that never ran before.
    void setUsedFunctionsToDefault();

    // What is selected for whoever points or edits: the point selection while there is one, else
    // that of the current sheet.
    Selection& activeSelection();

    // Is the editor open?
    bool isEditing() const;

    // A new document of three sheets in place of the one that stands.
    void newWorkbook();

    // What the file holds, in place of the document that stands (files/openflow.h).
    void OpenDocument(std::u16string_view path);

    // Answers false if the save was cancelled or an error stands (shell/documentflow.h).
    bool SaveDocument(bool askName);

    // Asks about the changes of the document that is about to be replaced; false means that it
    // stays.
    bool PromptSaveChanges();

    // Shows the document as a whole anew: what every new or opened document is followed by, and
    // what a window begins with.
    void showDocument();

    // Writes the settings, asks the shell to end and lets the document go. What asks about unsaved
    // changes runs before.
    void close();

    // Lets every undo step go, on somebody's request.
    void forgetHistory();

    // Stores typed text in the active cell as an undo step (editing/entry.h). False, with the
    // sticky error and the cell as it was, if the text could not be stored.
    bool enterCell(std::u16string_view text);

    // Shows the sticky error, if one stands, and clears it.
    void showError();

    // --- The view of editing
    void lockRepaint() override;
    void unlockRepaint() override;
    void markDirty(std::uint16_t marks) override;
    void sheetChanged() override;
    void activeCellMoved() override;
};

// The Application that stands; null before and after.
extern Application* application;

} // namespace vorn
