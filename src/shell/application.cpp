#include "shell/application.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "files/openflow.h"
#include "functions/random.h"
#include "functions/table.h"
#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "platform/userinterface.h"

#include <algorithm>

namespace vorn {

Application* application = nullptr;

namespace {

constexpr int FunctionRowAverage = 5;

// Pushed in this order, so that the list begins with Sum.
constexpr int FirstUsedFunctions[] = {FunctionRowAverage, FunctionRowIf, FunctionRowSum};

} // namespace

Application::Application() : documentFolder(u"\\C_Drive\\C_MyDocs\\")
{
    application = this;
    prepareDocumentCore();
    NewDocument(NewDocumentSheets, FileKindNative);
    // The error is shown when the first message is over.
    clipboardFormat = platform.clipboard->registerFormat(u"CF_VORN");
    if (clipboardFormat == 0)
        raiseError(ErrorInitialization);
    seedRandom(platform.clock->milliseconds());
    usedFunctions.fill(NoFunction);
    for (int row : FirstUsedFunctions)
        noteUsedFunction(row);
}

Application::~Application()
{
    stopDocumentCore();
    application = nullptr;
}

void Application::noteUsedFunction(int row)
{
    const auto place = std::find(usedFunctions.begin(), usedFunctions.end() - 1, row);
    std::rotate(usedFunctions.begin(), place, place + 1);
    usedFunctions.front() = row;
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

// No format can be written: whoever asks learns that no file was made, and the document stays.
bool Application::SaveDocument(bool)
{
    raiseError(ErrorFileCreate);
    return false;
}

bool Application::PromptSaveChanges()
{
    if (!workbook->modified)
        return true;
    switch (
        platform.userInterface->messageBox(u"Vorn", u"Save changes?", BoxButtons::YesNoCancel)) {
    case BoxAnswer::Yes:
        return SaveDocument(false);
    case BoxAnswer::No:
        return true;
    case BoxAnswer::Cancel:
    case BoxAnswer::Ok:
        break;
    }
    return false;
}

bool Application::enterCell(std::u16string_view text)
{
    const Selection& selection = workbook->currentSheet->selection;
    if (!storeCellInput(selection.activeColumn, selection.activeRow, text))
        return false;
    recalculate();
    workbook->modified = true;
    return true;
}

void Application::showError()
{
    vorn::showError();
}

// What every new document is shown with.
void Application::showDocument()
{
    workbook->normaliseFonts();
    platform.userInterface->setTitle(documentTitle());
}

} // namespace vorn
