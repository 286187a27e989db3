#include "editing/clear.h"

#include "editing/actions.h"
#include "editing/undo.h"

namespace vorn {

void clearSelection(ClearMode mode)
{
    // Rows get other heights where fonts come or go, and formulas other results where values do.
    const bool fitRows = mode != ClearContents;
    const bool calculate = mode != ClearFormats;
    ByteCodeWriter backward;
    emitSnapshot(backward, fitRows ? FitRows : LeaveRows);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitAction(forward, ActionClear, {mode});
    if (fitRows)
        emitAction(forward, ActionAutoFitRows);
    if (calculate) {
        emitAction(backward, ActionRecalculate);
        emitAction(forward, ActionRecalculate);
    }
    std::uint8_t* program = forward.finish();
    addUndoStep(program, backward.finish(), u"Clear");
}

} // namespace vorn
