// The user of a windowless program: every message box prints as a line.
#pragma once

#include "platform/headless/userinterface.h"

namespace vorn::cli {

class Output;

class ScriptUser : public SilentUserInterface {
public:
    explicit ScriptUser(Output& out) : out_(out) {}

    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon = BoxIcon::None) override;

private:
    Output& out_;
};

} // namespace vorn::cli
