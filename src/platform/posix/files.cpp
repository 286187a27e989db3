#include "platform/posix/files.h"

#include "platform/posix/path.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorn {

namespace {

constexpr mode_t AnyoneReads = S_IRUSR | S_IRGRP | S_IROTH;
constexpr mode_t AnyoneWrites = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t NewFileMode = AnyoneReads | AnyoneWrites;
constexpr mode_t NewFolderMode = S_IRWXU | S_IRWXG | S_IRWXO;

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

private:
    int descriptor_;
};

// The mode is looked at because the permission bits stop everybody but the system's own user.
bool mayRead(const struct stat& status)
{
    return S_ISREG(status.st_mode) && (status.st_mode & AnyoneReads) != 0;
}

// Makes an opened file an empty one. Devices are written as they are.
bool makeEmpty(int descriptor)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || (status.st_mode & AnyoneWrites) == 0)
        return false;
    return !S_ISREG(status.st_mode) || ::ftruncate(descriptor, 0) == 0;
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
    if (::fstat(descriptor, &status) != 0 || !mayRead(status))
        return nullptr;
    return file;
}

std::unique_ptr<File> PosixFiles::create(std::u16string_view path)
{
    // Emptied only when it is known to be allowed, so that a refused file keeps its bytes.
    const int descriptor =
        ::open(pathBytes(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, NewFileMode);
    if (descriptor < 0)
        return nullptr;
    auto file = std::make_unique<PosixFile>(descriptor);
    if (!makeEmpty(descriptor))
        return nullptr;
    return file;
}

CreateNew PosixFiles::createNew(std::u16string_view path)
{
    const int descriptor =
        ::open(pathBytes(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode);
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
    return ::unlink(pathBytes(path).c_str()) == 0;
}

bool PosixFiles::makeFolder(std::u16string_view path)
{
    return ::mkdir(pathBytes(path).c_str(), NewFolderMode) == 0;
}

} // namespace vorn
