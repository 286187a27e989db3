// Paths as the system below wants them.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// The path in UTF-8; empty, which no call accepts, for one that holds a zero character.
std::string pathBytes(std::u16string_view path);

} // namespace vorn
