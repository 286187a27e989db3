// A clock that stands still, so that a run can be repeated.
#pragma once

#include "platform/clock.h"

#include <string_view>

namespace vorn {

class FixedClock : public Clock {
public:
    explicit FixedClock(const LocalTime& time) : time_(time) {}

    LocalTime localTime() override { return time_; }
    unsigned milliseconds() override { return static_cast<unsigned>(time_.milliseconds); }

private:
    LocalTime time_;
};

// Reads "2001-03-04T05:06:07". Answers false, with `out` as it was, for another form or for what is
// no time of the calendar.
bool parseIsoTime(std::string_view text, LocalTime& out);

} // namespace vorn
