// The defined names as lists show them.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// The name itself, or the words for one of those that come with Excel's format: their first
// character is a code from 1 to 12.
std::u16string shownName(std::u16string_view name);

} // namespace vorn
