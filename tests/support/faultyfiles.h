// The files of the machine, with the calls on them noted by name, and one of the calls made to
// fail without doing anything.
#pragma once

#include "platform/platform.h"
#include "platform/posix/files.h"

#include <string>
#include <vector>

namespace vorn {

class FaultyFiles : public Files {
public:
    FaultyFiles() : former_(platform.files) { platform.files = this; }
    ~FaultyFiles() override { platform.files = former_; }
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;

    // The number of the call that fails, from 1; 0 for none.
    int failing = 0;
    std::vector<std::string> calls;

    std::unique_ptr<File> openToRead(std::u16string_view path) override
    {
        return note("openToRead") ? wrap(files_.openToRead(path)) : nullptr;
    }
    std::unique_ptr<File> openToWrite(std::u16string_view path) override
    {
        return note("openToWrite") ? wrap(files_.openToWrite(path)) : nullptr;
    }
    std::unique_ptr<File> create(std::u16string_view path) override
    {
        return note("create") ? wrap(files_.create(path)) : nullptr;
    }
    CreateNew createNew(std::u16string_view path) override
    {
        return note("createNew") ? files_.createNew(path) : CreateNew::Failed;
    }
    bool exists(std::u16string_view path) override { return note("exists") && files_.exists(path); }
    bool remove(std::u16string_view path) override { return note("remove") && files_.remove(path); }
    bool makeFolder(std::u16string_view path) override
    {
        return note("makeFolder") && files_.makeFolder(path);
    }
    std::u16string documentsFolder() override { return files_.documentsFolder(); }

private:
    class WatchedFile : public File {
    public:
        WatchedFile(FaultyFiles& files, std::unique_ptr<File> file)
            : files_(files), file_(std::move(file))
        {
        }
        std::int64_t read(void* data, std::size_t size) override
        {
            return files_.note("read") ? file_->read(data, size) : -1;
        }
        bool write(const void* data, std::size_t size) override
        {
            return files_.note("write") && file_->write(data, size);
        }
        bool seek(std::uint64_t position) override { return file_->seek(position); }
        std::int64_t size() override { return file_->size(); }
        bool reserve(std::uint64_t size) override
        {
            return files_.note("reserve") && file_->reserve(size);
        }
        bool cut(std::uint64_t size) override { return files_.note("cut") && file_->cut(size); }
        bool flush() override { return files_.note("flush") && file_->flush(); }

    private:
        FaultyFiles& files_;
        std::unique_ptr<File> file_;
    };

    // Answers false for the call that fails.
    bool note(const char* call)
    {
        calls.emplace_back(call);
        return static_cast<int>(calls.size()) != failing;
    }

    std::unique_ptr<File> wrap(std::unique_ptr<File> file)
    {
        if (file == nullptr)
            return nullptr;
        return std::make_unique<WatchedFile>(*this, std::move(file));
    }

    Files* former_;
    PosixFiles files_;
};

} // namespace vorn
