// The head of the system, and what a shell of any kind drives: it owns the document and everything
// that outlives it. Whoever has installed the platform makes one Application, and has the whole
// spreadsheet, with a new workbook in it, before any window exists.
//
// Shape:  one at a time, reached through `application`. It can be destroyed and made again: a fresh
//         one remembers nothing of the last.
// Errors: the sticky code, which a shell shows with `showError` at the end of each message.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vorn {

constexpr int RecentFileCount = 4;
constexpr int UsedFunctionCount = 10;
constexpr int NoFunction = -1;

// Where the cursor goes when an entry is confirmed.
enum MoveAfterEnter : int { MoveNowhere = 0, MoveRight = 1, MoveDown = 2 };

class Application {
public:
    Application();
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // The latest first; empty where there is none.
    std::array<std::u16string, RecentFileCount> recentFiles;

    // Where the file dialogs begin.
    std::u16string documentFolder;
    MoveAfterEnter moveAfterEnter = MoveNowhere;

    // The number of the clipboard format that holds cells as they are; 0 if the machine gave none.
    unsigned clipboardFormat = 0;

    // Rows of the functions that were inserted last, the latest first; NoFunction where there is
    // none.
    std::array<int, UsedFunctionCount> usedFunctions;

    // Moves a function to the front of usedFunctions.
    void noteUsedFunction(int row);

    // A new document of three sheets in place of the one that stands.
    void newWorkbook();

    // What the file holds, in place of the document that stands (files/openflow.h).
    void OpenDocument(std::u16string_view path);

    // Answers false if the document was not saved.
    bool SaveDocument(bool askName);

    // Asks about the changes of the document that is about to be replaced; false means that it
    // stays.
    bool PromptSaveChanges();

    // Stores typed text in the active cell and recalculates. False, with the sticky error and the
    // cell as it was, if the text could not be stored.
    bool enterCell(std::u16string_view text);

    // Shows the sticky error, if one stands, and clears it.
    void showError();

private:
    void showDocument();
};

// The Application that stands; null before and after.
extern Application* application;

} // namespace vorn
