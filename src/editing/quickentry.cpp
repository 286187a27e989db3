#include "editing/quickentry.h"

#include <algorithm>

namespace vorn {

namespace {

// Puts a text in its place, unless it is there.
void addText(std::vector<std::u16string>& texts, std::u16string text, CaseRule rule)
{
    const auto place = std::find_if(texts.begin(), texts.end(), [&](const std::u16string& entry) {
        return compareTexts(entry.c_str(), text.c_str(), rule) >= 0;
    });
    if (place == texts.end() || compareTexts(place->c_str(), text.c_str(), rule) != 0)
        texts.insert(place, std::move(text));
}

} // namespace

std::vector<std::u16string> quickEntryTexts(const Sheet& sheet, int column, CaseRule rule)
{
    std::vector<std::u16string> texts;
    const int last = sheet.lastOccupiedRow(column);
    for (int row = 0; row <= last && texts.size() <= QuickEntryEnough; ++row) {
        // A formula is left out, and is not printed only to find that out.
        const Cell* cell = sheet.cellAt(column, row);
        if (cell == nullptr || cell->value.tag == TagFormula)
            continue;
        std::u16string text = sheet.cellInput(column, row);
        if (text.empty() || text.front() == u'=')
            continue;
        text.resize(std::min(text.size(), QuickEntryTextMax));
        addText(texts, std::move(text), rule);
    }
    return texts;
}

} // namespace vorn
