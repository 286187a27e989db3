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

// And and Or take one truth from each argument: a range of several cells is an error, not a list.
// Every argument is popped, so that the leftmost error is the result.
void callAnd()
{
    bool all = true;
    for (int left = machine.argumentCount; left > 0; --left)
        all = popLogical() && all;
    if (checkPending())
        pushLogical(all);
}

void callOr()
{
    bool any = false;
    for (int left = machine.argumentCount; left > 0; --left)
        any = popLogical() || any;
    if (checkPending())
        pushLogical(any);
}

void callNot()
{
    const bool logical = popLogical();
    if (checkPending())
        pushLogical(!logical);
}

} // namespace vorn
