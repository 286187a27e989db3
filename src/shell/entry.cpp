#include "shell/entry.h"

#include "core/error.h"
#include "core/fontlook.h"
#include "core/workbook.h"
#include "editing/protection.h"
#include "editing/view.h"
#include "functions/table.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/cursor.h"
#include "shell/dialogs/ask.h"
#include "shell/pointmode.h"

#include <algorithm>

namespace vorn {

namespace {

FormulaBar& formulaBar()
{
    return application->formulaBar;
}

const Selection& cellSelection()
{
    return workbook->currentSheet->selection;
}

// What the cell that is edited holds, as far as its user may see it. A formula that is too long to
// be printed looks empty; that is no error of whoever only looks.
std::u16string shownText()
{
    if (isHiddenFormula())
        return {};
    const ErrorState former = errorState;
    std::u16string text =
        workbook->currentSheet->cellInput(cellSelection().activeColumn, cellSelection().activeRow);
    errorState = former;
    return text;
}

bool storeText()
{
    const std::u16string text = formulaBar().line.text();
    const std::u16string_view stored = std::u16string_view(text).substr(0, CommitTextMax);
    const std::u16string present = shownText();
    if (text == present || stored == present)
        return true;
    return application->enterCell(stored);
}

bool storeAndClose()
{
    const RepaintLock lock;
    leavePointMode();
    if (!storeText())
        return false;
    formulaBar().stopEditing();
    return true;
}

// Writes over what is selected in the editor, or opens it with `formula`; the caret then stands
// `back` units before the end of what was written.
void insertText(std::u16string_view text, std::u16string_view formula, int back)
{
    EditLine& line = formulaBar().line;
    leavePointMode();
    if (formulaBar().editing) {
        line.replaceSelection(text);
    } else {
        beginEdit(formula);
        line.setCaret(-1);
    }
    line.setCaret(line.selectionEnd() - back);
}

// The same for what begins a formula where it stands first.
void insertOperand(std::u16string_view text, int back)
{
    const std::u16string formula = u'=' + std::u16string(text);
    const bool first = formulaBar().line.selectionStart() == 0;
    insertText(first ? formula : text, formula, back);
}

} // namespace

bool editorHasFocus()
{
    return formulaBar().editing && !application->pointMode;
}

void beginEdit(std::u16string_view text)
{
    FormulaBar& bar = formulaBar();
    if (bar.editing)
        return;
    scrollIntoView(cellSelection().activeColumn, cellSelection().activeRow, ShowOneMore);
    bar.startEditing();
    bar.line.setText(text);
    bar.caretMode = true;
    // The editor stands beside the cells, or over them: they stay as they are.
    application->markDirty(DirtySelection);
}

void editActiveCell()
{
    if (formulaBar().editing || lockedCellRefused())
        return;
    beginEdit(shownText());
    formulaBar().line.setSelection(0, -1);
}

void beginEditByTyping(char16_t unit)
{
    beginEdit({&unit, 1});
    formulaBar().line.setCaret(-1);
    formulaBar().caretMode = false;
}

bool tapEditor()
{
    FormulaBar& bar = formulaBar();
    if (application->pointMode) {
        leavePointMode();
        return true;
    }
    if (lockedCellRefused())
        return false;
    if (!bar.editing) {
        bar.show(shownText());
        bar.caretMode = true;
        bar.startEditing();
    }
    return true;
}

bool commitEdit(CommitMove move)
{
    FormulaBar& bar = formulaBar();
    if (!bar.editing)
        return true;
    // The lock is gone before a box opens: the window may have to be painted under it.
    if (!storeAndClose()) {
        application->showError();
        return false;
    }
    if (move == MoveAfterCommit)
        moveAfterEntry();
    bar.caretMode = true;
    return true;
}

void cancelEdit()
{
    FormulaBar& bar = formulaBar();
    if (!bar.editing)
        return;
    leavePointMode();
    bar.stopEditing();
    bar.line.setText({});
    application->markDirty(DirtyAll);
}

void moveAfterEntry()
{
    if (application->moveAfterEnter == MoveRight)
        handleKey(KeyRight, {});
    else if (application->moveAfterEnter == MoveDown)
        handleKey(KeyDown, {});
}

// --- What commands insert

void insertFunction(int row)
{
    application->noteUsedFunction(row);
    const FunctionRow& function = FunctionTable[row];
    insertOperand(std::u16string(function.name) + u"()", function.maxArguments != 0 ? 1 : 0);
}

void insertName(std::u16string_view name)
{
    insertOperand(name, 0);
}

void enterQuickEntry(std::u16string_view text)
{
    cancelEdit();
    if (application->enterCell(text))
        moveAfterEntry();
}

void autoSumCommand()
{
    leavePointMode();
    if (lockedCellRefused())
        return;
    insertText(u"SUM()", u"=SUM()", 1);
}

void insertFunctionCommand()
{
    leavePointMode();
    if (lockedCellRefused())
        return;
    const int row = askFunction(FunctionsOfFormulas);
    if (row != NoFunction)
        insertFunction(row);
}

void insertNameCommand()
{
    leavePointMode();
    if (lockedCellRefused())
        return;
    const std::u16string name = askName();
    if (!name.empty())
        insertName(name);
}

void quickEntryCommand()
{
    leavePointMode();
    if (lockedCellRefused())
        return;
    const std::u16string text = askQuickEntry();
    if (!text.empty())
        enterQuickEntry(text);
}

void commitCommand()
{
    leavePointMode();
    if (formulaBar().editing && !lockedCellRefused())
        commitEdit(MoveAfterCommit);
}

void cancelCommand()
{
    cancelEdit();
}

// --- Following the cell

Rect inCellEditorRect()
{
    const GridView view = currentView();
    const Sheet& sheet = *workbook->currentSheet;
    const int column = cellSelection().activeColumn;
    const int row = cellSelection().activeRow;
    const bool elsewhere = application->pointMode && &sheet != application->pointSheet;
    if (elsewhere || view.columns.isScrolledAway(column) || view.rows.isScrolledAway(row))
        return OutOfSight;
    // It never lies over the bars and the tabs, which pointing needs.
    const Rect& grid = currentLayout().gridArea;
    const int left = view.xOfColumn(column);
    const int top = view.yOfRow(row);
    if (left >= grid.right || top >= grid.bottom)
        return OutOfSight;
    return {left, top, grid.right, std::min(top + view.rows.pixels(row), grid.bottom)};
}

FontLook inCellEditorFont()
{
    const Sheet& sheet = *workbook->currentSheet;
    const int style = sheet.cellStyle(cellSelection().activeColumn, cellSelection().activeRow);
    return fontLook(workbook->fonts[workbook->styles[style].font()], sheet.zoom);
}

void refreshEditor()
{
    FormulaBar& bar = formulaBar();
    if (application->formulaBarVisible)
        bar.move(currentLayout().formulaBar);
    else
        bar.rect = bar.editing ? inCellEditorRect() : Rect();
    if (application->pointMode)
        writePointReference();
    else if (!bar.editing && application->formulaBarVisible && !isHiddenFormula())
        bar.show(shownText());
}

} // namespace vorn
