// The permission bits of files do not stop the system's own user, as which tests may run in a
// container. While one of these lives, such a process acts as a user who owns nothing; any other
// process goes on as it is.
#pragma once

#include <unistd.h>

namespace vorn {

class OrdinaryUser {
public:
    static constexpr uid_t Nobody = 65534;

    OrdinaryUser() : former_(::geteuid())
    {
        if (former_ == 0)
            switched_ = ::seteuid(Nobody) == 0;
    }
    ~OrdinaryUser() { giveUp(); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    // Do permission bits hold for this process now?
    static bool isStopped() { return ::geteuid() != 0; }

private:
    void giveUp() const
    {
        // A process that stays somebody else could not clean up behind the test.
        if (switched_ && ::seteuid(former_) != 0)
            ::_exit(1);
    }

    uid_t former_;
    bool switched_ = false;
};

} // namespace vorn
