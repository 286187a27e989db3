// The clock of the machine, in its own time zone.
#pragma once

#include "platform/clock.h"

namespace vorn {

class SystemClock : public Clock {
public:
    LocalTime localTime() override;
    unsigned milliseconds() override;
};

} // namespace vorn
