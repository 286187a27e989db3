// The dialogs that ask for something to be written into a cell.
#pragma once

#include <string>

namespace vorn {

enum FunctionOffer {
    FunctionsOfFormulas,
    FunctionsOfTasks // those of formulas as well
};

// The row of the function that was chosen; NoFunction (shell/application.h) if none was.
int askFunction(FunctionOffer offer);

// The name that was chosen among the workbook's defined names; empty if none was.
std::u16string askName();

// The text that was chosen among those that the active column holds already; empty if none was.
std::u16string askQuickEntry();

} // namespace vorn
