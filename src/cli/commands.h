// The subcommands of the program. Each returns the exit status: 0, 1 for an operation that failed,
// 2 for a wrong call.
#pragma once

#include "cli/printing.h"
#include "cli/script.h"

#include <string>
#include <vector>

namespace vorn::cli {

constexpr int StatusDone = 0;
constexpr int StatusFailed = 1;
constexpr int StatusWrongCall = 2;

// Prints what each expression gives, in a new workbook each.
int evaluateExpressions(Script& script, const std::vector<std::string>& expressions);

// What of a file `show` prints.
struct ShowRequest {
    std::string file;
    std::string sheet; // empty for the active one
    std::string range; // empty for all that is used
    CellForm form = CellForm::Text;
};

int showFile(Script& script, const ShowRequest& request);

// A file to read, and the one to write: its name decides on the format.
struct ConvertRequest {
    std::string from;
    std::string to;
};

// Nothing is asked, and a file that cannot be written is not touched.
int convertFile(Script& script, const ConvertRequest& request);

// Runs the script in `file`; "-" is the standard input.
int runScriptFile(Script& script, const std::string& file);

// Prints the row of one function, or of all functions of formulas for an empty name.
int printFunctions(Output& out, const std::string& name);

} // namespace vorn::cli
