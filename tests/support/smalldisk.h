// A file system of its own, with little room. It lives in memory and needs the right to mount: a
// test asks `isThere` and skips where it is not.
#pragma once

#include "support/tempfolder.h"

#include <string>
#include <sys/mount.h>
#include <sys/statvfs.h>

namespace vorn {

class SmallDisk {
public:
    static constexpr std::uint64_t Bytes = 256 * 1024;

    SmallDisk()
    {
        const std::string options = "size=" + std::to_string(Bytes);
        mounted_ = ::mount("none", folder.file("").c_str(), "tmpfs", 0, options.c_str()) == 0;
    }
    ~SmallDisk()
    {
        if (mounted_)
            ::umount2(folder.file("").c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere() const { return mounted_; }

    std::uint64_t freeBytes() const
    {
        struct statvfs status {};
        ::statvfs(folder.file("").c_str(), &status);
        return std::uint64_t{status.f_bfree} * status.f_bsize;
    }

    const TempFolder folder;

private:
    bool mounted_ = false;
};

} // namespace vorn
