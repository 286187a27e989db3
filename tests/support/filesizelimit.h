// While one lives, this process cannot make a file longer than `bytes`. Nothing should be said in
// the meantime: the output of the tests may be such a file.
#pragma once

#include <sys/resource.h>

namespace vorn {

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{bytes, former_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &former_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit former_{};
};

} // namespace vorn
