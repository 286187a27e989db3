// Scripts: one statement a line, each of them one message of the application. Whatever a statement
// leaves as the sticky error is shown when it is over, as a box.
#pragma once

#include "cli/output.h"
#include "cli/scriptuser.h"
#include "shell/application.h"

#include <string>
#include <string_view>

namespace vorn::cli {

// A script that runs. A verb that cannot go on says why in `reason` and answers false.
struct Script {
    Application& app;
    ScriptUser& user;
    Output& out;
    std::string reason;

    bool fail(std::string_view why)
    {
        reason = why;
        return false;
    }
};

// Runs one statement. Answers false, with the reason, for an unknown verb or a malformed argument.
bool runStatement(Script& script, std::u16string_view line);

// Runs the lines of `text`, stopping at the first statement that cannot be run: then it says where
// on stderr, under the script's `name`, and answers false.
bool runScript(Script& script, std::string_view name, std::string_view text);

} // namespace vorn::cli
