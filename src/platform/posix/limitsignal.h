// A process may be limited in the length of the files that it writes. Passing that limit raises a
// signal that ends the process, and with it the document that was to be saved.
#pragma once

#include <csignal>

namespace vorn {

// While one lives, a call of this thread that passes the limit fails instead.
class LimitSignal {
public:
    LimitSignal()
    {
        ::sigemptyset(&signal_);
        ::sigaddset(&signal_, SIGXFSZ);
        ::pthread_sigmask(SIG_BLOCK, &signal_, &former_);
    }
    ~LimitSignal()
    {
        sigset_t pending;
        int taken = 0;
        if (::sigpending(&pending) == 0 && ::sigismember(&pending, SIGXFSZ) == 1 &&
            ::sigismember(&former_, SIGXFSZ) == 0)
            ::sigwait(&signal_, &taken);
        ::pthread_sigmask(SIG_SETMASK, &former_, nullptr);
    }
    LimitSignal(const LimitSignal&) = delete;
    LimitSignal& operator=(const LimitSignal&) = delete;

private:
    sigset_t signal_{};
    sigset_t former_{};
};

} // namespace vorn
