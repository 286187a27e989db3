#include "editing/clear.h"

#include "editing/actions.h"
#include "editing/undo.h"

namespace vorn {

namespace {

// What follows both the clearing and the restoring: rows get other heights where fonts come or go,
// and formulas other results where values do.
void emitConsequences(ByteCodeWriter& program, ClearMode mode)
{
    if (mode != ClearContents)
        emitAction(program, ActionAutoFitRows);
    if (mode != ClearFormats)
        emitAction(program, ActionRecalculate);
}

} // namespace

void clearSelection(ClearMode mode)
{
    ByteCodeWriter backward;
    emitSnapshot(backward);
    emitConsequences(backward, mode);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitAction(forward, ActionClear, {mode});
    emitConsequences(forward, mode);
    std::uint8_t* program = forward.finish();
    addUndoStep(program, backward.finish(), u"Clear");
}

} // namespace vorn
