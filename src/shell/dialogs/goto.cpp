#include "core/error.h"
#include "core/workbook.h"
#include "editing/view.h"
#include "formula/references.h"
#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

constexpr int Reference = 1019;

// A reference without a sheet is to the one that is shown.
void goTo(const CellValue& reference)
{
    if (reference.firstSheet != NoFirstSheet || reference.lastSheet != NoLastSheet) {
        workbook->setCurrentSheet(workbook->sheetAt(reference.firstSheet));
        tellSheetChanged();
    }
    const bool oneCell = reference.tag == TagSheetCellRef;
    const CellRef first = oneCell ? reference.cellRef() : reference.rangeRef().first();
    const CellRef last = oneCell ? first : reference.rangeRef().last();
    workbook->currentSheet->selection.select(first, last);
    tellActiveCellMoved();
}

class GoToDialog : public DialogModel {
public:
    GoToDialog() : DialogModel(126) {}

protected:
    // The reader of references tells of some errors itself; what it only refuses is an unexpected
    // token.
    void pressed(int button) override
    {
        CellValue reference;
        if (!parseReferenceText(text(Reference), reference)) {
            raiseError(ErrorToken);
            setFocus(Reference);
            return;
        }
        goTo(reference);
        close(button);
    }
};

} // namespace

void goToCommand()
{
    GoToDialog dialog;
    runDialog(dialog);
}

} // namespace vorn
