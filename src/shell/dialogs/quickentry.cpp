#include "editing/quickentry.h"

#include "core/workbook.h"
#include "shell/dialog.h"
#include "shell/dialogs/ask.h"

namespace vorn {

namespace {

constexpr int Entries = 1029;

class QuickEntryDialog : public DialogModel {
public:
    QuickEntryDialog() : DialogModel(158) {}

    std::u16string chosen;

protected:
    void opened() override
    {
        const Sheet& sheet = *workbook->currentSheet;
        setEntries(Entries, quickEntryTexts(sheet, sheet.selection.activeColumn, IgnoreCase));
    }

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
