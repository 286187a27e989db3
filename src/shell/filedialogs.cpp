#include "shell/filedialogs.h"

#include "core/workbook.h"
#include "files/filenames.h"
#include "files/openflow.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "shell/application.h"

namespace vorn {

namespace {

constexpr FileFilter VornFiles = {u"Vorn Files (*.vn)", u"*.vn"};
constexpr FileFilter PocketExcelFiles = {u"Pocket Excel Files (*.pxl)", u"*.pxl"};

// The folder of the settings may be that of another machine.
std::u16string firstFolder()
{
    const std::u16string& folder = application->documentFolder;
    return platform.files->exists(folder) ? folder : platform.files->documentsFolder();
}

FileQuestion question(std::u16string_view title, FileQuestion::Purpose purpose)
{
    FileQuestion result;
    result.title = title;
    result.purpose = purpose;
    result.folder = firstFolder();
    return result;
}

int filterOfDocument()
{
    switch (documentKind(workbook->path)) {
    case DocumentPocketExcel:
        return FilterPocketExcel;
    case DocumentExcel:
        return FilterExcel;
    case DocumentNative:
    case DocumentText:
        break;
    }
    return FilterNative;
}

} // namespace

FileQuestion openQuestion()
{
    FileQuestion result = question(u"Open File", FileQuestion::Open);
    result.filters = {
        {u"All Vorn Files",              u"*.vn;*.pxl;*.xls;*.csv"},
        VornFiles,
        PocketExcelFiles,
        {u"Excel Files 95-2000 (*.xls)", u"*.xls"                 },
        {u"Text Files (*.csv)",          u"*.csv"                 }
    };
    result.filterIndex = application->lastFilterIndex;
    return result;
}

FileQuestion saveQuestion()
{
    FileQuestion result = question(u"Save File As", FileQuestion::Save);
    result.filters = {
        VornFiles, PocketExcelFiles, {u"Excel Files (*.xls)", u"*.xls"}
    };
    result.path = workbook->path;
    result.filterIndex = filterOfDocument();
    return result;
}

FileQuestion chooseQuestion(std::u16string_view title)
{
    FileQuestion result = question(title, FileQuestion::Choose);
    result.filters = {VornFiles, PocketExcelFiles};
    return result;
}

FileQuestion propertyQuestion(std::u16string_view path)
{
    FileQuestion result = question(u"Property", FileQuestion::Properties);
    result.filters = {VornFiles, PocketExcelFiles};
    result.path = path;
    return result;
}

void keepFolderOf(std::u16string_view path)
{
    const std::u16string_view folder = folderOfPath(path);
    if (!folder.empty())
        application->documentFolder = folder;
}

} // namespace vorn
