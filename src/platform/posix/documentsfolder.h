// Where the user keeps documents, by the convention of desktops.
#pragma once

#include <string>

namespace vorn {

// A path in the bytes of the system, with a slash at its end; empty without a home folder.
std::string documentsFolderBytes();

} // namespace vorn
