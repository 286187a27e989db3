// A file in memory that counts how it is used and can be told to fail.
#pragma once

#include "platform/files.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace vorn {

class MemoryFile : public File {
public:
    explicit MemoryFile(std::string content = {}) : bytes(std::move(content)) {}

    std::int64_t read(void* data, std::size_t size) override
    {
        if (++reads == failingRead)
            return -1;
        const std::size_t start = std::min(place, bytes.size());
        const std::size_t count = std::min({size, bytes.size() - start, mostAtOnce});
        std::memcpy(data, bytes.data() + start, count);
        place = start + count;
        return static_cast<std::int64_t>(count);
    }

    bool write(const void* data, std::size_t size) override
    {
        if (++writes == failingWrite || (full && size != 0))
            return false;
        if (place > bytes.size())
            bytes.resize(place);
        bytes.replace(place, size, static_cast<const char*>(data), size);
        place += size;
        return true;
    }

    bool seek(std::uint64_t position) override
    {
        place = position;
        return true;
    }

    std::int64_t size() override { return static_cast<std::int64_t>(bytes.size()); }

    bool reserve(std::uint64_t size) override
    {
        if (full && size > bytes.size())
            return false;
        bytes.resize(std::max(bytes.size(), static_cast<std::size_t>(size)));
        return true;
    }

    bool cut(std::uint64_t size) override
    {
        bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(size)));
        return true;
    }

    bool flush() override { return true; }

    std::string bytes;
    std::size_t place = 0;
    std::size_t mostAtOnce = SIZE_MAX; // bytes that one call reads
    int reads = 0;
    int writes = 0;
    int failingRead = 0; // the number of the call that fails, 0 for none
    int failingWrite = 0;
    bool full = false;
};

} // namespace vorn
