// The commands that change how cells look. Each is one undo step on the selection of the current
// sheet, with its own label.
//
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/formatmask.h"
#include "editing/formatrequest.h"

namespace vorn {

class ByteCodeWriter;

// On everywhere if the selection is not on everywhere; else off.
void toggleBold();
void toggleItalic();
void toggleUnderline();

// The alignment (core/style.h) everywhere; general if the whole selection has it already.
void toggleAlignment(int alignment);

// What the selection has in common, as the dialog begins with it.
FormatRequest readFormatRequest();

// Applies what the dialog changed from `before` to `after`. No change makes no step.
void applyFormatRequest(const FormatRequest& before, const FormatRequest& after);

// Writes code that pushes the 44 operands of ActionFormat: the eight words of the style, the flags
// of its mask and one more word, the ten fields of the font from `reserved` to `nameLength`, and
// the flags of its mask.
void emitFormatTemplate(ByteCodeWriter& program, const FormatTemplate& format);

} // namespace vorn
