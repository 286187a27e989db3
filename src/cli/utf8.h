// Between the UTF-8 of the command line and the UTF-16 of the system. Nothing is refused: what has
// no meaning becomes U+FFFD, in both directions.
#pragma once

#include <string>
#include <string_view>

namespace vorn::cli {

// A byte that cannot be read, or a sequence that breaks off, gives one U+FFFD.
std::u16string fromUtf8(std::string_view bytes);

// Appends the bytes of `text`; half of a surrogate pair becomes U+FFFD.
void appendUtf8(std::string& out, std::u16string_view text);

std::string toUtf8(std::u16string_view text);

} // namespace vorn::cli
