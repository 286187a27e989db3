#include "shell/documentflow.h"

#include "core/error.h"
#include "core/workbook.h"
#include "files/filenames.h"
#include "files/saveflow.h"
#include "platform/platform.h"
#include "platform/userinterface.h"
#include "shell/application.h"
#include "shell/filedialogs.h"
#include "shell/recentfiles.h"

namespace vorn {

namespace {

constexpr std::u16string_view Caption = u"Vorn";

// A command line in quotes has to be shorter than this.
constexpr std::size_t QuotedLineMax = 300;

SaveOutcome outcome(DocumentKind kind)
{
    if (errorStands())
        return SaveOutcome::NotSaved;
    return kind == DocumentText ? SaveOutcome::NothingWritten : SaveOutcome::Written;
}

void write(std::u16string_view path)
{
    const bool ownZoom = application->fullScreen && application->fullScreenZoomOn;
    WriteFile(path, ownZoom ? application->fullScreenZoom : 0);
}

SaveOutcome saveToKnownPath()
{
    const std::u16string path = workbook->path;
    write(path);
    if (!errorStands())
        workbook->modified = false;
    return outcome(documentKind(path));
}

BoxAnswer askToReplace(std::u16string_view path)
{
    std::u16string text(path);
    text += u" already exists. Do you want to replace it?";
    return platform.userInterface->messageBox(Caption, text, BoxButtons::YesNo);
}

// The write will fail whatever is there, so nothing there is to be touched or asked about.
bool isRefused(std::u16string_view path)
{
    const DocumentKind kind = documentKind(path);
    return (kind != DocumentText && !hasWriter(kind)) || isPathTooLong(path);
}

// A name that may be written to: as it was chosen, completed, and given free if it was in use.
// Empty if the user gives up.
std::u16string askName()
{
    for (;;) {
        FileQuestion question = saveQuestion();
        if (!platform.userInterface->askFile(question))
            return {};
        std::u16string path =
            completeName(withoutDoubleBackslash(question.path), question.filterIndex);
        if (isRefused(path) || !fileExists(path))
            return path;
        switch (askToReplace(path)) {
        case BoxAnswer::Yes:
            return path;
        case BoxAnswer::No:
            break;
        case BoxAnswer::Cancel:
        case BoxAnswer::Ok:
            return {};
        }
    }
}

SaveOutcome saveToNewPath()
{
    const std::u16string path = askName();
    if (path.empty())
        return SaveOutcome::NotSaved;
    const DocumentKind kind = documentKind(path);
    write(path);
    if (!errorStands()) {
        if (kind == DocumentNative) {
            workbook->path = path;
            platform.userInterface->setTitle(documentTitle());
        }
        addRecentFile(path);
    }
    keepFolderOf(path);
    return outcome(kind);
}

} // namespace

SaveOutcome saveDocument(bool askName)
{
    return askName || workbook->path.empty() ? saveToNewPath() : saveToKnownPath();
}

bool promptSaveChanges()
{
    if (!workbook->modified)
        return true;
    switch (
        platform.userInterface->messageBox(Caption, u"Save changes?", BoxButtons::YesNoCancel)) {
    case BoxAnswer::Yes:
        // A document of which nothing was written would be lost.
        return saveDocument(false) == SaveOutcome::Written;
    case BoxAnswer::No:
        return true;
    case BoxAnswer::Cancel:
    case BoxAnswer::Ok:
        break;
    }
    return false;
}

void openExistingFile(std::u16string_view path)
{
    if (fileExists(path)) {
        application->OpenDocument(path);
        return;
    }
    std::u16string text = u"Could not find '";
    text += path;
    text += u"'.";
    platform.userInterface->messageBox(Caption, text, BoxButtons::Ok, BoxIcon::Warning);
}

// A longer line is taken with its quotes, and no path is that long.
std::u16string_view withoutQuotes(std::u16string_view commandLine)
{
    if (!commandLine.starts_with(u'"') || commandLine.size() >= QuotedLineMax)
        return commandLine;
    commandLine.remove_prefix(1);
    if (commandLine.ends_with(u'"'))
        commandLine.remove_suffix(1);
    return commandLine;
}

void openFromCommandLine(std::u16string_view commandLine)
{
    if (commandLine.empty())
        return;
    if (commandLine.starts_with(u'"') && commandLine.size() >= QuotedLineMax)
        application->OpenDocument(commandLine);
    else
        openExistingFile(withoutQuotes(commandLine));
}

} // namespace vorn
