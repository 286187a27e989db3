#include "platform/posix/lock.h"

#include <cerrno>
#include <sys/file.h>

namespace vorn {

namespace {

// Answers 0, or the error.
int tryLock(int descriptor, int kind, LockCall lock)
{
    while (lock(descriptor, kind | LOCK_NB) != 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

} // namespace

bool keepOthersOut(int descriptor)
{
    return keepOthersOut(descriptor, ::flock);
}

bool keepOthersOut(int descriptor, LockCall lock)
{
    int error = tryLock(descriptor, LOCK_EX, lock);
    // Across a network a file that is open to read cannot keep other readers out, but it can keep
    // out writers.
    if (error == EBADF)
        error = tryLock(descriptor, LOCK_SH, lock);
    return error != EWOULDBLOCK;
}

} // namespace vorn
