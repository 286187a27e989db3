// Whatever the user does to the window is one message: a call into the system, then its error is
// shown, then the window follows what the system became.
//
// Shape:  one, owned by the window. A message may hold others, since boxes and dialogs run their
//         own loops.
#pragma once

#include <functional>
#include <utility>

namespace vorn::qt {

class Messages {
public:
    // `atEnd` runs at the end of each message.
    explicit Messages(std::function<void()> atEnd) : atEnd_(std::move(atEnd)) {}

    template <typename Action>
    void send(Action&& action)
    {
        ++depth_;
        ++count_;
        action();
        finish();
    }

    // What comes from outside, such as a request of another program, waits meanwhile.
    bool isUnderWay() const { return depth_ > 0; }

    // How many there were, and are.
    unsigned count() const { return count_; }

private:
    void finish();

    std::function<void()> atEnd_;
    int depth_ = 0;
    unsigned count_ = 0;
};

} // namespace vorn::qt
