#include "core/chain.h"
#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "editing/view.h"
#include "platform/platform.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

constexpr int Names = 1029, New = 1030, Rename = 1031, Delete = 1032;

// What it does is done at once: Cancel takes nothing back.
class SheetsDialog : public DialogModel {
public:
    SheetsDialog() : DialogModel(128) {}

protected:
    void opened() override { showSheets(workbook->currentSheet->index); }

    void pressed(int button) override
    {
        switch (button) {
        case New:
            return addSheet();
        case Rename:
            if (selected(Names) != NoEntry)
                beginLabelEdit(Names);
            return;
        case Delete:
            return deleteSheet();
        default:
            showSelectedSheet();
            close(button);
        }
    }

    void labelEdited(int, std::u16string_view label) override { renameSheet(label); }

private:
    void showSheets(int chosen)
    {
        std::vector<std::u16string> names;
        for (const Sheet* sheet : workbook->sheets)
            names.emplace_back(sheet->name());
        setEntries(Names, std::move(names));
        select(Names, chosen);
    }

    void addSheet()
    {
        const Sheet* sheet = workbook->addSheet();
        if (sheet == nullptr)
            return;
        tellSheetChanged();
        recalculate();
        workbook->modified = true;
        showSheets(sheet->index);
        beginLabelEdit(Names);
    }

    void renameSheet(std::u16string_view name)
    {
        name = name.substr(0, name.find_last_not_of(u' ') + 1);
        if (name.empty())
            return;
        if (!workbook->renameSheet(selected(Names), name)) {
            raiseError(ErrorSheetExists);
            return;
        }
        setEntry(Names, selected(Names), workbook->sheets[selected(Names)]->name());
        tellSheetChanged();
        workbook->modified = true;
    }

    // A workbook keeps one sheet at least.
    void deleteSheet()
    {
        const int index = selected(Names);
        if (index == NoEntry || workbook->sheets.size() < 2)
            return;
        const std::u16string question =
            u"Delete sheet " + std::u16string(workbook->sheets[index]->name()) + u'?';
        if (platform.userInterface->messageBox(u"Vorn", question, BoxButtons::YesNo) !=
            BoxAnswer::Yes)
            return;
        workbook->removeSheet(index);
        clearUndo();
        recalculate();
        workbook->modified = true;
        tellSheetChanged();
        showSheets(workbook->currentSheet->index);
    }

    void showSelectedSheet()
    {
        if (selected(Names) == NoEntry)
            return;
        workbook->setCurrentSheet(workbook->sheets[selected(Names)]);
        tellSheetChanged();
    }
};

} // namespace

void sheetsCommand()
{
    SheetsDialog dialog;
    runDialog(dialog);
    markRepaint();
}

} // namespace vorn
