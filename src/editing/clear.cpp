#include "editing/clear.h"

#include "editing/undo.h"

#include <cstdint>

namespace vorn {

namespace {

// Rows of the function table.
constexpr int RowActionClear = 146;
constexpr int RowActionAutofitRows = 147;
constexpr int RowActionRecalculate = 149;

// What follows both the clearing and the restoring: rows get other heights where fonts come or go,
// and formulas other results where values do.
void emitConsequences(ByteCodeWriter& program, ClearMode mode)
{
    if (mode != ClearContents)
        program.emitCall(RowActionAutofitRows, 0);
    if (mode != ClearFormats)
        program.emitCall(RowActionRecalculate, 0);
}

} // namespace

void clearSelection(ClearMode mode)
{
    ByteCodeWriter backward;
    emitSnapshot(backward);
    emitConsequences(backward, mode);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    forward.emit(OpPushInt16, static_cast<std::uint16_t>(mode));
    forward.emitCall(RowActionClear, 1);
    emitConsequences(forward, mode);
    std::uint8_t* forwardProgram = forward.finish();
    addUndoStep(forwardProgram, backward.finish(), u"Clear");
}

} // namespace vorn
