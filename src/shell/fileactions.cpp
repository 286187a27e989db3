#include "core/error.h"
#include "core/workbook.h"
#include "files/filenames.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/userinterface.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "shell/documentflow.h"
#include "shell/filedialogs.h"
#include "shell/recentfiles.h"

namespace vorn {

namespace {

// A save to a text file leaves the document unsaved: nothing was written.
void saveAndClearModified(bool askName)
{
    if (saveDocument(askName) == SaveOutcome::Written)
        workbook->modified = false;
}

} // namespace

void openCommand()
{
    FileQuestion question = openQuestion();
    if (!platform.userInterface->askFile(question))
        return;
    const std::u16string path = completeName(question.path, question.filterIndex);
    application->OpenDocument(path);
    if (!errorStands())
        addRecentFile(path);
    keepFolderOf(path);
    application->lastFilterIndex = question.filterIndex;
}

void saveCommand()
{
    saveAndClearModified(false);
}

void saveAsCommand()
{
    saveAndClearModified(true);
}

void deleteFileCommand()
{
    FileQuestion question = chooseQuestion(u"Delete File");
    if (!platform.userInterface->askFile(question))
        return;
    if (!platform.files->remove(withoutDoubleBackslash(question.path)))
        raiseError(ErrorFileDelete);
}

void filePropertiesCommand()
{
    FileQuestion choice = chooseQuestion(u"File Property");
    if (!platform.userInterface->askFile(choice))
        return;
    FileQuestion property = propertyQuestion(choice.path);
    platform.userInterface->askFile(property);
}

void openRecentCommand(int slot)
{
    // A copy: what is opened may change the list.
    const std::u16string path = application->recentFiles[static_cast<std::size_t>(slot)];
    if (!path.empty())
        openExistingFile(path);
}

} // namespace vorn
