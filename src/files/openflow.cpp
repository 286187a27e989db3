#include "files/openflow.h"

#include "core/error.h"
#include "files/csv.h"
#include "files/filenames.h"
#include "files/native.h"
#include "files/stream.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/userinterface.h"

#include <memory>

namespace vorn {

namespace {

// The file at `path`; null, with ErrorFileOpen, if there is none that can be read.
std::unique_ptr<File> openFile(std::u16string_view path)
{
    std::unique_ptr<File> file = platform.files->openToRead(path);
    if (file == nullptr)
        raiseError(ErrorFileOpen);
    return file;
}

void readText(std::u16string_view path)
{
    const std::unique_ptr<File> file = openFile(path);
    if (file == nullptr)
        return;
    FileStream stream(*file);
    TransferContext context;
    context.stream = &stream;
    ImportText(context);
}

void readNative(std::u16string_view path)
{
    const std::unique_ptr<File> file = openFile(path);
    if (file == nullptr)
        return;
    const std::int64_t length = file->size();
    if (length < 0 || length > std::int64_t{UINT32_MAX}) { // a stream counts no further
        raiseError(ErrorFileRead);
        return;
    }
    FileStream stream(*file);
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(length));
}

// Pocket Excel has no reader: an existing file is refused as one of another format.
void refuseFormat(std::u16string_view path)
{
    if (openFile(path) != nullptr)
        raiseError(ErrorFileFormat);
}

// A compound file that is missing is refused like one that is none.
void refuseExcel(std::u16string_view)
{
    raiseError(ErrorExcelOpen);
}

struct DocumentReader {
    const char16_t* extension; // none for the kind of all other files
    int sheets;                // of the document that the reader fills
    FileKind fileKind;
    bool keepsPath; // or a save has to ask for a name
    void (*read)(std::u16string_view path);
};

// By DocumentKind.
constexpr DocumentReader Readers[] = {
    {nullptr, 0, FileKindNative,   true,  readNative  },
    {u"csv",  1, FileKindNative,   false, readText    },
    {u"pxl",  0, FileKindImported, true,  refuseFormat},
    {u"xls",  0, FileKindImported, true,  refuseExcel },
};
constexpr int ReaderCount = std::size(Readers);

void readDocument(const DocumentReader& reader, std::u16string_view path)
{
    NewDocument(reader.sheets, reader.fileKind);
    if (isPathTooLong(path))
        raiseError(ErrorFileOpen);
    else
        reader.read(path);
    if (errorStands())
        NewDocument(NewDocumentSheets, FileKindNative);
    else if (reader.keepsPath)
        workbook->path = path;
}

} // namespace

DocumentKind documentKind(std::u16string_view path)
{
    const std::size_t dot = path.rfind(u'.');
    if (dot == std::u16string_view::npos)
        return DocumentNative;
    const std::u16string extension(path.substr(dot + 1));
    for (int kind = 0; kind < ReaderCount; ++kind) {
        const char16_t* candidate = Readers[kind].extension;
        if (candidate != nullptr && compareTexts(extension.c_str(), candidate, IgnoreCase) == 0)
            return static_cast<DocumentKind>(kind);
    }
    return DocumentNative;
}

bool isPathTooLong(std::u16string_view path)
{
    return path.size() > std::size_t{PathMax};
}

void OpenDocument(std::u16string_view path)
{
    platform.userInterface->showWaitCursor(true);
    readDocument(Readers[documentKind(path)], path);
    platform.userInterface->showWaitCursor(false);
}

std::u16string documentTitle()
{
    const std::u16string& path = workbook->path;
    return path.empty() ? u"Vorn" : std::u16string(nameOfPath(path));
}

bool fileExists(std::u16string_view path)
{
    return platform.files->createNew(path) == CreateNew::Exists;
}

} // namespace vorn
