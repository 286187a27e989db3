// Keeping others out of an open file.
#pragma once

namespace vorn {

// Takes or gives back the lock of a file, as flock does.
using LockCall = int (*)(int descriptor, int operation);

// Locks the file without waiting, for as long as the descriptor is open; false if somebody else
// has it locked. A file system that knows no locks keeps nobody out, and that is no failure.
bool keepOthersOut(int descriptor);
bool keepOthersOut(int descriptor, LockCall lock);

} // namespace vorn
