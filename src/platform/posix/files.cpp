#include "platform/posix/files.h"

#include "platform/posix/documentsfolder.h"
#include "platform/posix/limitsignal.h"
#include "platform/posix/lock.h"
#include "platform/posix/path.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace vorn {

namespace {

constexpr mode_t AnyoneReads = S_IRUSR | S_IRGRP | S_IROTH;
constexpr mode_t AnyoneWrites = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t NewFileMode = AnyoneReads | AnyoneWrites;
constexpr mode_t NewFolderMode = S_IRWXU | S_IRWXG | S_IRWXO;

// May these many bytes be a length of a file?
bool isLength(std::uint64_t size)
{
    return size <= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
}

bool cutTo(int descriptor, off_t size)
{
    int result = 0;
    do
        result = ::ftruncate(descriptor, size);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

// Some file systems cannot keep room free. One that is asked to do so byte by byte needs to read
// the file, which this descriptor may not be able to.
bool isUnableToReserve(int error)
{
    return error == EOPNOTSUPP || error == ENOSYS || error == EINVAL || error == EBADF;
}

class PosixFile : public File {
public:
    explicit PosixFile(int descriptor) : descriptor_(descriptor) {}
    ~PosixFile() override { ::close(descriptor_); }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    std::int64_t read(void* data, std::size_t size) override
    {
        ssize_t count = 0;
        do
            count = ::read(descriptor_, data, size);
        while (count < 0 && errno == EINTR);
        return count;
    }

    bool write(const void* data, std::size_t size) override
    {
        const LimitSignal limit;
        const char* bytes = static_cast<const char*>(data);
        while (size != 0) {
            const ssize_t count = ::write(descriptor_, bytes, size);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return false;
            bytes += count;
            size -= static_cast<std::size_t>(count);
        }
        return true;
    }

    bool seek(std::uint64_t position) override
    {
        return ::lseek(descriptor_, static_cast<off_t>(position), SEEK_SET) >= 0;
    }

    std::int64_t size() override
    {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))
            return -1;
        return status.st_size;
    }

    bool reserve(std::uint64_t size) override
    {
        const std::int64_t former = this->size();
        if (former < 0 || size == 0)
            return true;
        if (!isLength(size))
            return false;
        const LimitSignal limit;
        int error = 0;
        do
            error = ::posix_fallocate(descriptor_, 0, static_cast<off_t>(size));
        while (error == EINTR);
        if (error == 0)
            return true;
        // Even where the length is the former one, this gives back the room behind it.
        cutTo(descriptor_, static_cast<off_t>(former));
        return isUnableToReserve(error);
    }

    bool cut(std::uint64_t size) override
    {
        if (this->size() < 0)
            return true;
        return isLength(size) && cutTo(descriptor_, static_cast<off_t>(size));
    }

    bool flush() override
    {
        int result = 0;
        do
            result = ::fsync(descriptor_);
        while (result != 0 && errno == EINTR);
        // A device or a pipe has nothing behind it that could be waited for.
        return result == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
    }

private:
    int descriptor_;
};

// The mode is looked at because the permission bits stop everybody but the system's own user.
bool mayRead(const struct stat& status)
{
    return S_ISREG(status.st_mode) && (status.st_mode & AnyoneReads) != 0;
}

// A name in this folder may be made or taken away, as far as its permission bits tell. They stop
// everybody but the system's own user, so they are looked at.
bool folderMayChange(const std::string& path)
{
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t slash = end == std::string::npos ? end : path.rfind('/', end);
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    struct stat status {};
    return ::stat(folder.c_str(), &status) != 0 || (status.st_mode & AnyoneWrites) != 0;
}

bool isMissing(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

// A descriptor of an existing or a new file, to be written. Reading comes with it where that is
// allowed: keeping room free may need it.
int openDescriptor(const std::string& path)
{
    if (isMissing(path) && !folderMayChange(path))
        return -1;
    constexpr int Flags = O_CREAT | O_CLOEXEC;
    const int descriptor = ::open(path.c_str(), O_RDWR | Flags, NewFileMode);
    return descriptor >= 0 || errno != EACCES ? descriptor
                                              : ::open(path.c_str(), O_WRONLY | Flags, NewFileMode);
}

// Looks at the mode for the same reason. A pipe that is opened to read and write has no other
// reader, so what is written there would be lost.
bool mayWrite(int descriptor)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && !S_ISFIFO(status.st_mode) &&
           (status.st_mode & AnyoneWrites) != 0;
}

} // namespace

std::unique_ptr<File> PosixFiles::openToRead(std::u16string_view path)
{
    // Without waiting, lest a pipe without a writer holds the system up before it is refused.
    const int descriptor = ::open(pathBytes(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    auto file = std::make_unique<PosixFile>(descriptor);
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !mayRead(status) || !keepOthersOut(descriptor))
        return nullptr;
    return file;
}

std::unique_ptr<File> PosixFiles::openToWrite(std::u16string_view path)
{
    const int descriptor = openDescriptor(pathBytes(path));
    if (descriptor < 0)
        return nullptr;
    auto file = std::make_unique<PosixFile>(descriptor);
    if (!mayWrite(descriptor) || !keepOthersOut(descriptor))
        return nullptr;
    return file;
}

std::unique_ptr<File> PosixFiles::create(std::u16string_view path)
{
    // Emptied only when it is known to be allowed, so that a refused file keeps its bytes.
    std::unique_ptr<File> file = openToWrite(path);
    if (file == nullptr || !file->cut(0))
        return nullptr;
    return file;
}

CreateNew PosixFiles::createNew(std::u16string_view path)
{
    const std::string bytes = pathBytes(path);
    if (isMissing(bytes) && !folderMayChange(bytes))
        return CreateNew::Failed;
    const int descriptor =
        ::open(bytes.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode);
    if (descriptor < 0)
        return errno == EEXIST ? CreateNew::Exists : CreateNew::Failed;
    ::close(descriptor);
    return CreateNew::Created;
}

bool PosixFiles::exists(std::u16string_view path)
{
    return ::access(pathBytes(path).c_str(), F_OK) == 0;
}

bool PosixFiles::remove(std::u16string_view path)
{
    const std::string bytes = pathBytes(path);
    return folderMayChange(bytes) && ::unlink(bytes.c_str()) == 0;
}

bool PosixFiles::makeFolder(std::u16string_view path)
{
    const std::string bytes = pathBytes(path);
    return folderMayChange(bytes) && ::mkdir(bytes.c_str(), NewFolderMode) == 0;
}

std::u16string PosixFiles::documentsFolder()
{
    return pathText(documentsFolderBytes());
}

} // namespace vorn
