// A user who says nothing: boxes are recorded, and answered from a queue.
#pragma once

#include "platform/userinterface.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace vorn {

class SilentUserInterface : public UserInterface {
public:
    struct Box {
        std::u16string caption;
        std::u16string text;
        BoxButtons buttons;
        BoxAnswer answer;
    };

    // A box that only tells takes no answer from the queue. A question that finds the queue empty
    // is cancelled where that can be, and else denied.
    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon = BoxIcon::None) override;

    // The next of `files` is the answer, an empty path for Cancel; none is Cancel.
    bool askFile(FileQuestion& question) override;

    // With nobody there to answer, the dialog is cancelled.
    void runDialog(DialogModel& dialog) override
    {
        if (dialogUser)
            dialogUser(dialog);
    }
    void noteDocument(std::u16string_view path) override { documents.emplace_back(path); }
    void setTitle(std::u16string_view newTitle) override { title = newTitle; }
    void showWaitCursor(bool wait) override { waitDepth += wait ? 1 : -1; }
    void requestRepaint() override { ++repaints; }

    std::function<void(DialogModel&)> dialogUser; // answers dialogs
    std::vector<Box> boxes;
    std::deque<BoxAnswer> answers;
    std::deque<std::u16string> files;
    std::vector<FileQuestion> fileQuestions; // as they were asked
    std::vector<std::u16string> documents;   // that the machine was told of
    std::u16string title = u"Vorn";          // what the main window is created with
    int waitDepth = 0;
    int repaints = 0; // that were asked for
};

} // namespace vorn
