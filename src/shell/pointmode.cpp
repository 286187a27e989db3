#include "shell/pointmode.h"

#include "core/workbook.h"
#include "formula/references.h"
#include "numfmt/locale.h"
#include "shell/application.h"
#include "shell/entry.h"

namespace vorn {

namespace {

bool referenceMayFollow(char16_t unit)
{
    return std::u16string_view(u"+-*/<>=&(").find(unit) != std::u16string_view::npos ||
           unit == localeInfo.list;
}

bool caretAwaitsReference(const EditLine& line)
{
    const auto caret = static_cast<std::size_t>(line.selectionEnd());
    return line.text().starts_with(u'=') && caret > 0 && referenceMayFollow(line.text()[caret - 1]);
}

std::u16string pointText()
{
    const std::u16string reference = rangeToText(application->pointSelection.range, RelativeForm);
    const Sheet& sheet = *workbook->currentSheet;
    if (&sheet == application->pointSheet)
        return reference;
    return u'\'' + std::u16string(sheet.name()) + u"'!" + reference;
}

} // namespace

bool enterPointMode()
{
    Application& app = *application;
    if (app.pointMode)
        return true;
    FormulaBar& bar = app.formulaBar;
    if (!bar.editing || !caretAwaitsReference(bar.line))
        return false;
    Sheet& sheet = *workbook->currentSheet;
    const CellRef active = {sheet.selection.activeRow, sheet.selection.activeColumn};
    app.pointMode = true;
    app.pointSheet = &sheet;
    app.pointSelection.select(active, active);
    app.pointScratch = {};
    app.pointLeftColumn = sheet.leftColumn;
    app.pointTopRow = sheet.topRow;
    bar.pointStart = bar.line.selectionEnd();
    bar.pointLength = 0;
    app.markDirty(DirtySelection);
    return true;
}

void leavePointMode()
{
    Application& app = *application;
    if (!app.pointMode)
        return;
    // What was pointed at since the last repaint pass.
    writePointReference();
    Sheet& sheet = *app.pointSheet;
    app.pointMode = false;
    app.pointSheet = nullptr;
    sheet.leftColumn = app.pointLeftColumn;
    sheet.topRow = app.pointTopRow;
    if (workbook->currentSheet != &sheet) {
        workbook->setCurrentSheet(&sheet);
        app.sheetChanged();
    }
    app.markDirty(DirtyAll);
}

void writePointReference()
{
    FormulaBar& bar = application->formulaBar;
    EditLine& line = bar.line;
    const std::u16string text = pointText();
    const std::u16string_view present(line.text());
    if (bar.pointLength == static_cast<int>(text.size()) &&
        present.substr(static_cast<std::size_t>(bar.pointStart), text.size()) == text)
        return;
    line.setSelection(bar.pointStart, bar.pointStart + bar.pointLength);
    line.replaceSelection(text, ForgetUndo);
    bar.pointLength = line.selectionEnd() - bar.pointStart;
}

bool yieldToGrid()
{
    if (!application->formulaBar.editing || enterPointMode())
        return true;
    return commitEdit(StayAfterCommit);
}

} // namespace vorn
