// What a column holds already, for a user who wants to write the same again.
#pragma once

#include "core/sheet.h"

#include <string>
#include <vector>

namespace vorn {

// The search ends when more entries than this were found.
constexpr std::size_t QuickEntryEnough = 50;

// What of a text is offered.
constexpr std::size_t QuickEntryTextMax = 100;

// The input texts of a column without its formulas, each once, sorted. `rule` says which are the
// same: the last setting of sorting does.
std::vector<std::u16string> quickEntryTexts(const Sheet& sheet, int column, CaseRule rule);

} // namespace vorn
