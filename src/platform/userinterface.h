// What the system says to its user, and asks.
#pragma once

#include <string_view>

namespace vorn {

enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

class UserInterface {
public:
    virtual ~UserInterface() = default;

    virtual BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text,
                                 BoxButtons buttons) = 0;

    // The title of the main window.
    virtual void setTitle(std::u16string_view title) = 0;

    // Raised around work that may take a while, and lowered after it.
    virtual void showWaitCursor(bool wait) = 0;
};

} // namespace vorn
