// What the system says to its user, and asks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class DialogModel; // shell/dialog.h

// Where a window stands on the screen; `left` is -1 before it ever stood anywhere.
struct ScreenRect {
    int left = -1;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

// A warning shows the sign of one.
enum class BoxIcon { None, Warning };

// One entry of a file dialog's list of formats: "Vorn Files (*.vn)" and "*.vn"; several patterns
// stand between semicolons.
struct FileFilter {
    std::u16string_view text;
    std::u16string_view patterns;
};

// What a file dialog begins with, and what it gives back.
struct FileQuestion {
    enum Purpose {
        Open,   // an existing file
        Save,   // a new name, or one to write over; whoever asks cares for the question about that
        Choose, // a file that something else is done with
        Properties // none: shows what the machine knows of the file
    };

    std::u16string_view title;
    Purpose purpose = Open;
    std::vector<FileFilter> filters;
    std::u16string folder;
    std::u16string path; // the name it begins with, then the answer
    int filterIndex = 0; // from 1, in the order of `filters`; 0 before anything was chosen
};

class UserInterface {
public:
    virtual ~UserInterface() = default;

    virtual BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text,
                                 BoxButtons buttons, BoxIcon icon = BoxIcon::None) = 0;

    // Asks for a file. False, with the question as it was, for Cancel.
    virtual bool askFile(FileQuestion& question) = 0;

    // Runs a dialog until it closes; its model holds what came of it.
    virtual void runDialog(DialogModel& dialog) = 0;

    // Tells the machine of a document that was opened or saved, for its own lists of them.
    virtual void noteDocument(std::u16string_view path) = 0;

    // The title of the main window.
    virtual void setTitle(std::u16string_view title) = 0;

    // Raised around work that may take a while, and lowered after it.
    virtual void showWaitCursor(bool wait) = 0;

    // Opens the help at an anchor; at its start for none.
    virtual void showHelp(std::u16string_view) {}

    // What is seen of the document is no longer so. Who shows nothing has nothing to do.
    virtual void requestRepaint() {}
};

} // namespace vorn
