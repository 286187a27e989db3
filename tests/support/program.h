// vorn-cli as a process of its own, for tests that look at the system from outside.
#pragma once

#include "support/tempfolder.h"

#include <string>

namespace vorn {

struct Outcome {
    int status = -1; // -1 for a process that was killed
    std::string output;
    std::string errors;
};

// Runs vorn-cli in the folder, in a UTF-8 environment of no country. `arguments` is read by the
// shell, so it may quote and redirect.
Outcome runProgram(const TempFolder& folder, const std::string& arguments);

} // namespace vorn
