#include "files/saveflow.h"

#include "core/error.h"
#include "files/filenames.h"
#include "files/native.h"
#include "files/stream.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/userinterface.h"

#include <memory>

namespace vorn {

namespace {

// A folder that vanished since the name was chosen is made again, once.
std::unique_ptr<File> openToReplace(std::u16string_view path)
{
    std::unique_ptr<File> file = platform.files->openToWrite(path);
    if (file != nullptr)
        return file;
    const std::u16string_view folder = folderOfPath(path);
    if (folder.size() > 1)
        platform.files->makeFolder(folder.substr(0, folder.size() - 1));
    return platform.files->openToWrite(path);
}

void writeNative(std::u16string_view path, int fullScreenZoom)
{
    MemoryStream stream(MemoryStream::GrowsByHalf);
    TransferContext context;
    context.stream = &stream;
    context.fullScreenZoom = fullScreenZoom;
    saveNative(context);
    replaceFile(path, stream.data(), stream.end());
}

// By DocumentKind; null for a kind that has no writer.
using DocumentWriter = void (*)(std::u16string_view path, int fullScreenZoom);
constexpr DocumentWriter Writers[] = {writeNative, nullptr, nullptr, nullptr};

} // namespace

bool hasWriter(DocumentKind kind)
{
    return Writers[kind] != nullptr;
}

void replaceFile(std::u16string_view path, const void* bytes, std::size_t size)
{
    // A stream that is not whole must never reach the file.
    if (errorStands())
        return;
    const std::unique_ptr<File> file = openToReplace(path);
    if (file == nullptr)
        raiseError(ErrorFileCreate);
    else if (!file->reserve(size) || !file->write(bytes, size) || !file->cut(size) ||
             !file->flush())
        raiseError(ErrorFileWrite);
}

void WriteFile(std::u16string_view path, int fullScreenZoom)
{
    const DocumentKind kind = documentKind(path);
    if (kind == DocumentText)
        return;
    if (!hasWriter(kind) || isPathTooLong(path)) {
        raiseError(ErrorFileCreate);
        return;
    }
    platform.userInterface->showWaitCursor(true);
    Writers[kind](path, fullScreenZoom);
    platform.userInterface->showWaitCursor(false);
}

} // namespace vorn
