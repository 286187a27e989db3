// Paths as the system below wants them.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// The path in UTF-8; empty, which no call accepts, for one that holds a zero character.
std::string pathBytes(std::u16string_view path);

// The path of these bytes; empty for bytes that are no UTF-8, since they would not lead back to it.
std::u16string pathText(std::string_view bytes);

} // namespace vorn
