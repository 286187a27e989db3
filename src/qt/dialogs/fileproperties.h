// What the machine knows of a file.
#pragma once

#include "platform/userinterface.h"

#include <string>
#include <utility>
#include <vector>

class QWidget;

namespace vorn::qt {

// What each line is called, and what it says.
using FileFacts = std::vector<std::pair<std::u16string, std::u16string>>;
FileFacts factsOfFile(std::u16string_view path);

void showFileProperties(QWidget* owner, const FileQuestion& question);

} // namespace vorn::qt
