#include "core/style.h"
#include "core/workbook.h"
#include "editing/format.h"
#include "editing/rowcolumn.h"
#include "shell/commandhandlers.h"

namespace vorn {

namespace {

int activeRow()
{
    return workbook->currentSheet->selection.activeRow;
}

int activeColumn()
{
    return workbook->currentSheet->selection.activeColumn;
}

} // namespace

void boldCommand()
{
    toggleBold();
}

void italicCommand()
{
    toggleItalic();
}

void underlineCommand()
{
    toggleUnderline();
}

void alignLeftCommand()
{
    toggleAlignment(AlignLeft);
}

void alignCenterCommand()
{
    toggleAlignment(AlignCenter);
}

void alignRightCommand()
{
    toggleAlignment(AlignRight);
}

void hideColumnsCommand()
{
    hideColumns(activeColumn(), true, SizeSelection);
}

void showColumnsCommand()
{
    hideColumns(activeColumn(), false, SizeSelection);
}

void autofitColumnsCommand()
{
    fitColumns(activeColumn(), SizeSelection);
}

void hideRowsCommand()
{
    hideRows(activeRow(), true, SizeSelection);
}

void showRowsCommand()
{
    hideRows(activeRow(), false, SizeSelection);
}

void autofitRowsCommand()
{
    fitRows(activeRow(), SizeSelection);
}

} // namespace vorn
