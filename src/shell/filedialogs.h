// The questions that the file commands put to the user, as they begin.
#pragma once

#include "platform/userinterface.h"

#include <string>
#include <string_view>

namespace vorn {

FileQuestion openQuestion();

// Begins with the document's path, and with the filter that goes with it.
FileQuestion saveQuestion();

// A file that something is done with: its title, and the formats that can be managed so.
FileQuestion chooseQuestion(std::u16string_view title);

// Shows what the machine knows of the file.
FileQuestion propertyQuestion(std::u16string_view path);

// Makes the folder part of a path, if it has one, the folder where the next dialog begins.
void keepFolderOf(std::u16string_view path);

} // namespace vorn
