// The font that a font record asks of the machine.
#pragma once

#include "platform/textmeasure.h"

namespace vorn {

struct FontRecord;

// The look at a zoom in percent. Below 85 the text stays a little larger than the cells around it,
// so that it can still be read.
FontLook fontLook(const FontRecord& font, int zoom = 100);

} // namespace vorn
