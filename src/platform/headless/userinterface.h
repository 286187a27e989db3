// A user who says nothing: boxes are recorded, and answered from a queue.
#pragma once

#include "platform/userinterface.h"

#include <deque>
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
    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text,
                         BoxButtons buttons) override;
    void setTitle(std::u16string_view newTitle) override { title = newTitle; }
    void showWaitCursor(bool wait) override { waitDepth += wait ? 1 : -1; }

    std::vector<Box> boxes;
    std::deque<BoxAnswer> answers;
    std::u16string title = u"Vorn"; // what the main window is created with
    int waitDepth = 0;
};

} // namespace vorn
