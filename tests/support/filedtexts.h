// Native files with their texts written out, for comparisons of documents whose texts lie in other
// places of the pool: a file numbers texts by their places, and calculating may move the text that
// a formula gives.
#pragma once

#include <string>

namespace vorn {

// The bytes of a file with each text in the place of its number, and without the table of texts.
std::string spellOutTexts(const std::string& bytes);

} // namespace vorn
