// A user who chooses a filter in each file dialog, and sees what else is shown.
#pragma once

#include "platform/headless/userinterface.h"
#include "platform/platform.h"

namespace vorn {

class ChoosingUser : public SilentUserInterface {
public:
    ChoosingUser() : former_(platform.userInterface) { platform.userInterface = this; }
    ~ChoosingUser() { platform.userInterface = former_; }
    ChoosingUser(const ChoosingUser&) = delete;
    ChoosingUser& operator=(const ChoosingUser&) = delete;

    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon) override
    {
        icons.push_back(icon);
        return SilentUserInterface::messageBox(caption, text, buttons, icon);
    }

    bool askFile(FileQuestion& question) override
    {
        const bool chosen = SilentUserInterface::askFile(question);
        if (chosen && filter != 0)
            question.filterIndex = filter;
        return chosen;
    }

    int filter = 0; // that is chosen; 0 leaves the one that is shown
    std::vector<BoxIcon> icons;

private:
    UserInterface* former_;
};

} // namespace vorn
