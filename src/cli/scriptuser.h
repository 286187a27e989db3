// The user of a windowless program: every message box prints as a line, and so does a dialog that
// finds no answer.
#pragma once

#include "cli/dialoganswers.h"
#include "platform/headless/userinterface.h"

namespace vorn::cli {

class Output;

class ScriptUser : public SilentUserInterface {
public:
    explicit ScriptUser(Output& out) : out_(out) {}

    BoxAnswer messageBox(std::u16string_view caption, std::u16string_view text, BoxButtons buttons,
                         BoxIcon icon = BoxIcon::None) override;

    void runDialog(DialogModel& dialog) override;

    DialogAnswers dialogAnswers;

private:
    Output& out_;
};

} // namespace vorn::cli
