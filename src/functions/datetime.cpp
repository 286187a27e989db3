// Date and time functions. What makes a number a date is its tag: Date, Time, Now and Today answer
// dates, all others plain numbers.

#include "core/input.h"
#include "functions/arguments.h"
#include "functions/table.h"
#include "numfmt/serial.h"
#include "platform/clock.h"
#include "platform/platform.h"

#include <cmath>

namespace vorn {
namespace {

// Pushes one part of the date or time on top. A text is read as a date; a serial below 0 is
// refused.
void pushPart(int LocalTime::*part)
{
    const double serial = popDateNumber();
    if (!checkPending())
        return;
    LocalTime parts;
    if (serial < 0 || !serialToParts(serial, parts))
        pushError(CellErrorVal);
    else
        pushNumber(parts.*part);
}

// Reads the text on top as the serial of a date, a time or both. Answers false, with an error
// pushed, for any other.
bool popDateText(double& serial)
{
    const PoppedText text;
    if (!checkPending())
        return false;
    CellValue value;
    // A formula is no date, and is not compiled to learn that.
    if (*text.data() != u'=')
        parseCellInput(value, text.view(), machine.base, nullptr, NumbersOnly);
    if (value.tag != TagDateTime) {
        pushError(CellErrorVal);
        return false;
    }
    serial = value.number();
    return true;
}

// The serial of parts that may lie outside of their bounds.
double composeSerial(int year, int month, int day, int hour, int minute, int second)
{
    double serial = 0;
    partsToSerial(year, month, day, hour, minute, second, serial, Unchecked);
    return serial;
}

} // namespace

void callDate()
{
    const double day = popNumber();
    const double month = popNumber();
    double year = popNumber();
    if (!checkPending())
        return;
    if (year < 100)
        year += 1900;
    pushDate(composeSerial(truncateToInteger(year), truncateToInteger(month),
                           truncateToInteger(day), 0, 0, 0));
}

// Whole days are taken off, so hours past 24 wrap.
void callTime()
{
    const double second = popNumber();
    const double minute = popNumber();
    const double hour = popNumber();
    if (!checkPending())
        return;
    const double serial = composeSerial(1899, 12, 30, truncateToInteger(hour),
                                        truncateToInteger(minute), truncateToInteger(second));
    pushDate(serial - std::trunc(serial));
}

void callDay()
{
    pushPart(&LocalTime::day);
}

void callMonth()
{
    pushPart(&LocalTime::month);
}

void callYear()
{
    pushPart(&LocalTime::year);
}

void callHour()
{
    pushPart(&LocalTime::hour);
}

void callMinute()
{
    pushPart(&LocalTime::minute);
}

void callSecond()
{
    pushPart(&LocalTime::second);
}

// Unlike the others this one takes no date as text, and any serial that has a date.
void callWeekday()
{
    const double type = machine.argumentCount >= 2 ? popNumber() : 1;
    const double serial = popNumber();
    if (!checkPending())
        return;
    LocalTime parts;
    if (!serialToParts(serial, parts)) {
        pushError(CellErrorVal);
        return;
    }
    // Days since Sunday, and since Monday.
    const int sinceSunday = parts.dayOfWeek;
    const int sinceMonday = (sinceSunday + 6) % 7;
    if (type == 2)
        pushNumber(sinceMonday + 1);
    else if (type == 3)
        pushNumber(sinceMonday);
    else
        pushNumber(sinceSunday + 1);
}

void callNow()
{
    const LocalTime now = platform.clock->localTime();
    pushDate(composeSerial(now.year, now.month, now.day, now.hour, now.minute, now.second));
}

void callToday()
{
    const LocalTime now = platform.clock->localTime();
    pushDate(composeSerial(now.year, now.month, now.day, 0, 0, 0));
}

void callDatevalue()
{
    double serial = 0;
    if (popDateText(serial))
        pushNumber(std::trunc(serial));
}

void callTimevalue()
{
    double serial = 0;
    if (popDateText(serial))
        pushNumber(serial - std::trunc(serial));
}

} // namespace vorn
