// The frames in which functions of a few numbers stand: arguments are popped from the last to the
// first, a pending error becomes the result, and else one number is pushed. A body that can also
// answer an error pushes its result itself.
#pragma once

#include "formula/machine.h"

namespace vorn {

// The argument at `place`, counted from 1, where the call has that many; else `fallback`. To be
// asked from the last argument to the first.
inline double popOptional(int place, double fallback)
{
    return machine.argumentCount >= place ? popNumber() : fallback;
}

// Pushes `function(x)`.
template <typename Function>
void answerNumber(Function function)
{
    const double x = popNumber();
    if (checkPending())
        pushNumber(function(x));
}

// Runs `body(x)`, which pushes the result.
template <typename Body>
void answer(Body body)
{
    const double x = popNumber();
    if (checkPending())
        body(x);
}

// Runs `body(x, y)` with the first and the second argument; it pushes the result.
template <typename Body>
void answerTwo(Body body)
{
    const double y = popNumber();
    const double x = popNumber();
    if (checkPending())
        body(x, y);
}

// The result of a function that is an error outside of its domain.
inline void pushNumberIf(bool inDomain, double number, std::int32_t error)
{
    if (inDomain)
        pushNumber(number);
    else
        pushError(error);
}

} // namespace vorn
