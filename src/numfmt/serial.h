// Dates and times as serials: whole days since 30 December 1899 and a fraction of a day, in one
// 64-bit float. From 1 March 1900 on the numbers agree with those of Excel; before, they don't,
// because here 1900 is no leap year.
#pragma once

#include "platform/clock.h"

namespace vorn {

enum DateCheck { Unchecked, Validated };

// The serial of a date and a time of day. Validated: answers false for what is not in the calendar
// (a year above 9,999, month or day 0, a day past the month's end, an hour above 23 and so on).
// Unchecked: months and days outside of their bounds carry over, downward too, and the answer is
// true.
bool partsToSerial(int year, int month, int day, int hour, int minute, int second, double& out,
                   DateCheck check);

// The calendar parts of a serial, rounded to the nearest second. False, with `out` as it was,
// outside of 1 January 100 to 31 December 9999 and for what is no number.
bool serialToParts(double serial, LocalTime& out);

} // namespace vorn
