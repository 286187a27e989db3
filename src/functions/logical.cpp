#include "core/value.h"
#include "formula/machine.h"
#include "functions/table.h"

namespace vorn {

// If as an ordinary call, as a file may bring it. What is typed becomes jumps and comes here only
// where a compiled If has lost its jumps. The chosen value keeps its type, a reference too.
void callIf()
{
    CellValue second;
    if (machine.argumentCount == 3)
        second = popRaw();
    else
        second = CellValue::makeLogical(false);
    CellValue first = popRaw();
    const bool condition = popLogical();
    CellValue& chosen = condition ? first : second;
    CellValue& other = condition ? second : first;
    releaseValue(other);
    if (checkPending())
        pushRaw(chosen);
    else
        releaseValue(chosen);
}

} // namespace vorn
