#include "core/workbook.h"
#include "editing/undo.h"
#include "editing/view.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"

namespace vorn {

namespace {

void changeView()
{
    workbook->modified = true;
    markRepaint();
}

void freezeAtActiveCell(Sheet& sheet)
{
    const Selection& selection = sheet.selection;
    if (selection.activeColumn > sheet.leftColumn) {
        sheet.titleColumns = true;
        sheet.titles.firstColumn = static_cast<std::uint16_t>(sheet.leftColumn);
        sheet.titles.lastColumn = static_cast<std::uint16_t>(selection.activeColumn - 1);
        sheet.leftColumn = selection.activeColumn;
    }
    if (selection.activeRow > sheet.topRow) {
        sheet.titleRows = true;
        sheet.titles.firstRow = static_cast<std::uint16_t>(sheet.topRow);
        sheet.titles.lastRow = static_cast<std::uint16_t>(selection.activeRow - 1);
        sheet.topRow = selection.activeRow;
    }
}

void unfreeze(Sheet& sheet)
{
    if (sheet.titleColumns)
        sheet.leftColumn = sheet.titles.firstColumn;
    if (sheet.titleRows)
        sheet.topRow = sheet.titles.firstRow;
    sheet.titleColumns = false;
    sheet.titleRows = false;
}

} // namespace

void setZoomOfAllSheets(int percent)
{
    for (Sheet* sheet : workbook->sheets)
        sheet->zoom = percent;
    changeView();
}

bool isFrozen()
{
    return workbook->currentSheet->titleColumns || workbook->currentSheet->titleRows;
}

void toggleFreeze()
{
    if (isFrozen())
        unfreeze(*workbook->currentSheet);
    else
        freezeAtActiveCell(*workbook->currentSheet);
    changeView();
}

void zoomForFullScreen()
{
    for (Sheet* sheet : workbook->sheets) {
        sheet->savedZoom = sheet->zoom;
        if (application->fullScreenZoomOn && sheet->zoom > application->fullScreenZoom)
            sheet->zoom = application->fullScreenZoom;
    }
}

void setFullScreen(bool on)
{
    if (on == application->fullScreen)
        return;
    application->fullScreen = on;
    if (on) {
        zoomForFullScreen();
    } else {
        // A sheet whose zoom was changed meanwhile keeps the new one.
        for (Sheet* sheet : workbook->sheets) {
            if (sheet->zoom == application->fullScreenZoom)
                sheet->zoom = sheet->savedZoom;
        }
        showCurrentTab();
    }
    markRepaint();
}

void toggleFullScreen()
{
    setFullScreen(!application->fullScreen);
}

void toggleSheetProtection()
{
    Sheet& sheet = *workbook->currentSheet;
    sheet.protectedSheet = !sheet.protectedSheet;
    workbook->modified = true;
    // No step may bring cells back past the protection.
    if (sheet.protectedSheet)
        clearUndo();
}

void toggleWorkbookProtection()
{
    workbook->protectedWorkbook = !workbook->protectedWorkbook;
    workbook->modified = true;
    if (workbook->protectedWorkbook)
        clearUndo();
}

void selectWholeSheet()
{
    Selection& selection = application->activeSelection();
    selection.range.set(0, 0, ColumnCount, RowCount);
    selection.anchorColumn = 0;
    selection.anchorRow = 0;
    selection.cornerColumn = ColumnCount - 1;
    selection.cornerRow = RowCount - 1;
    application->markDirty(DirtySelection);
}

} // namespace vorn
