#include "core/workbook.h"
#include "shell/dialog.h"
#include "shell/dialogs/ask.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr int Entries = 1029;
constexpr std::size_t EntryTextMax = 100;
constexpr std::size_t EntriesMax = 50; // one more ends the search

// Sorted, and each once. Formulas are no entries: they mean another thing in another cell.
class EntryList {
public:
    void add(std::u16string text)
    {
        if (text.empty() || text.starts_with(u'='))
            return;
        if (text.size() > EntryTextMax)
            text.resize(EntryTextMax);
        int order = -1;
        auto place = texts.begin();
        for (; place != texts.end(); ++place) {
            order = compareTexts(place->c_str(), text.c_str(), IgnoreCase);
            if (order >= 0)
                break;
        }
        if (place == texts.end() || order != 0)
            texts.insert(place, std::move(text));
    }

    bool isFull() const { return texts.size() > EntriesMax; }

    std::vector<std::u16string> texts;
};

std::vector<std::u16string> entriesOfActiveColumn()
{
    const Sheet& sheet = *workbook->currentSheet;
    const int column = sheet.selection.activeColumn;
    const int lastRow = sheet.lastOccupiedRow(column);
    EntryList list;
    for (int row = 0; row <= lastRow && !list.isFull(); row = sheet.nextRow(row)) {
        if (sheet.isOccupied(column, row))
            list.add(sheet.cellInput(column, row));
    }
    return std::move(list.texts);
}

class QuickEntryDialog : public DialogModel {
public:
    QuickEntryDialog() : DialogModel(158) {}

    std::u16string chosen;

protected:
    void opened() override { setEntries(Entries, entriesOfActiveColumn()); }

    void pressed(int button) override
    {
        if (selected(Entries) != NoEntry)
            chosen = chosenEntry(Entries);
        close(button);
    }
};

} // namespace

std::u16string askQuickEntry()
{
    QuickEntryDialog dialog;
    runDialog(dialog);
    return dialog.chosen;
}

} // namespace vorn
