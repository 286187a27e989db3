// The names of the colours that dialogs offer: strings 4000 to 4015. Which colour of the palette
// each one is, editing/formatrequest.h tells.
#pragma once

#include <string_view>

namespace vorn {

inline constexpr std::u16string_view ColourNames[] = {
    u"Black",     u"White",       u"Light Gray",   u"Gray",      u"Red",      u"Green",
    u"Blue",      u"Yellow",      u"Magenta",      u"Cyan",      u"Dark Red", u"Dark Green",
    u"Dark Blue", u"Dark Yellow", u"Dark Magenta", u"Dark Cyan",
};

} // namespace vorn
