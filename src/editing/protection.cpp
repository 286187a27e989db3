#include "editing/protection.h"

#include "core/workbook.h"
#include "platform/platform.h"
#include "platform/userinterface.h"

namespace vorn {

namespace {

bool activeCellHas(StyleField field)
{
    const Sheet& sheet = *workbook->currentSheet;
    const Selection& selection = sheet.selection;
    const int style = sheet.cellStyle(selection.activeColumn, selection.activeRow);
    return workbook->styles[style].get(field) != 0;
}

} // namespace

bool isProtected()
{
    return workbook->protectedWorkbook || workbook->currentSheet->protectedSheet;
}

bool lockedCellRefused()
{
    if (!isProtected() || !activeCellHas(StyleLocked))
        return false;
    platform.userInterface->messageBox(u"Protection", u"Locked cell", BoxButtons::Ok,
                                       BoxIcon::Warning);
    return true;
}

bool isHiddenFormula()
{
    return isProtected() && activeCellHas(StyleHidden);
}

} // namespace vorn
