// Colours of the system in the toolkit's form.
#pragma once

#include "platform/canvas.h"

#include <QColor>

namespace vorn::qt {

inline QColor colourOf(Colour colour)
{
    return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour >> 16 & 0xFF)};
}

} // namespace vorn::qt
