// The files that were opened from the Open dialog or saved under a new name, in the order of their
// first use. The list is kept with the settings.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn {

// Characters of a path that the settings have room for.
constexpr std::size_t RecentFileMax = 259;

// Puts a path at the front of the Application's list; the last one falls off. A path that is there
// already, without case, stays where it is; one that could not be kept is not taken up. The machine
// is told of the path in any case.
void addRecentFile(std::u16string_view path);

// The text of the menu entry for the file in a slot, counted from 0: a number that is its key, and
// the path, of which a long one shows only the end.
std::u16string recentFileText(int slot, std::u16string_view path);

} // namespace vorn
