#include "shell/application.h"

#include "core/error.h"
#include "core/workbook.h"
#include "editing/entry.h"
#include "editing/find.h"
#include "editing/undo.h"
#include "files/openflow.h"
#include "functions/random.h"
#include "functions/table.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "platform/userinterface.h"
#include "shell/commandhandlers.h"
#include "shell/cursor.h"
#include "shell/documentflow.h"
#include "shell/settings.h"

#include <algorithm>

namespace vorn {

Application* application = nullptr;

namespace {

constexpr int FunctionRowAverage = 5;

// Pushed in this order, so that the list begins with Sum.
constexpr int FirstUsedFunctions[] = {FunctionRowAverage, FunctionRowIf, FunctionRowSum};

// Runs before any document goes: nothing that belongs to it may outlive it.
void leaveDocument()
{
    clearUndo();
    clearTaskMenu();
    application->pointMode = false;
    application->pointSheet = nullptr;
    application->formulaBar.abandon();
    penLost();
}

} // namespace

Application::Application() : documentFolder(DefaultDocumentFolder)
{
    application = this;
    documentView = this;
    beforeCloseDocument = leaveDocument;
    prepareDocumentCore();
    NewDocument(NewDocumentSheets, FileKindNative);
    // The error is shown when the first message is over.
    clipboardFormat = platform.clipboard->registerFormat(u"CF_VORN");
    if (clipboardFormat == 0)
        raiseError(ErrorInitialization);
    seedRandom(platform.clock->milliseconds());
    setUsedFunctionsToDefault();
    findSettings = {};
}

Application::~Application()
{
    stopDocumentCore();
    beforeCloseDocument = nullptr;
    documentView = nullptr;
    application = nullptr;
}

void Application::setUsedFunctionsToDefault()
{
    usedFunctions.fill(NoFunction);
    for (int row : FirstUsedFunctions)
        noteUsedFunction(row);
}

void Application::noteUsedFunction(int row)
{
    const auto place = std::find(usedFunctions.begin(), usedFunctions.end() - 1, row);
    std::rotate(usedFunctions.begin(), place, place + 1);
    usedFunctions.front() = row;
}

Selection& Application::activeSelection()
{
    return pointMode ? pointSelection : workbook->currentSheet->selection;
}

bool Application::isEditing() const
{
    return textEditor != nullptr && textEditor->isOpen();
}

void Application::newWorkbook()
{
    NewDocument(NewDocumentSheets, FileKindNative);
    showDocument();
}

void Application::OpenDocument(std::u16string_view path)
{
    vorn::OpenDocument(path);
    showDocument();
}

bool Application::SaveDocument(bool askName)
{
    return saveDocument(askName) != SaveOutcome::NotSaved;
}

bool Application::PromptSaveChanges()
{
    return promptSaveChanges();
}

bool Application::enterCell(std::u16string_view text)
{
    return vorn::enterCell(text);
}

void Application::showError()
{
    vorn::showError();
}

void Application::showDocument()
{
    workbook->normaliseFonts();
    if (fullScreen)
        zoomForFullScreen();
    chrome = {};
    showCurrentTab();
    resetVerticalRange();
    updateTaskMenu();
    refreshCommandState();
    markDirty(DirtyAll);
    platform.userInterface->setTitle(documentTitle());
}

void Application::resize(const Rect& client)
{
    clientArea = client;
    if (!tabDividerMoved)
        tabDivider = firstTabDivider(client.width());
    showCurrentTab();
    markDirty(DirtyAll);
}

void Application::close()
{
    saveSettings();
    quitRequested = true;
    closeDocument();
}

void Application::forgetHistory()
{
    clearUndo();
    refreshCommandState();
}

// --- The view of editing

void Application::lockRepaint()
{
    ++repaintLock;
}

void Application::unlockRepaint()
{
    if (--repaintLock == 0)
        platform.userInterface->requestRepaint();
}

// The mark of the whole sheet takes the place of all others.
void Application::markDirty(std::uint16_t marks)
{
    repaintHints = marks == DirtyAll ? DirtyAll : static_cast<std::uint16_t>(repaintHints | marks);
    if (repaintLock == 0)
        platform.userInterface->requestRepaint();
}

void Application::sheetChanged()
{
    showCurrentTab();
    resetVerticalRange();
    markDirty(DirtyAll);
}

void Application::activeCellMoved()
{
    const Selection& selection = workbook->currentSheet->selection;
    scrollIntoView(selection.activeColumn, selection.activeRow, ShowCell);
    markDirty(DirtyAll);
}

} // namespace vorn
