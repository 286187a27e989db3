// Rounding, to whole numbers, to digits and to multiples.

#include "functions/numeric.h"
#include "functions/table.h"

#include <cmath>

namespace vorn {
namespace {

int signOf(double x)
{
    return x > 0 ? 1 : x < 0 ? -1 : 0;
}

// A magnitude with the sign of the number that it came from.
double withSignOf(double x, double magnitude)
{
    return x < 0 ? -magnitude : magnitude;
}

bool isEven(double whole)
{
    return std::fmod(whole, 2) == 0;
}

// Rounds the magnitude at a decimal digit.
template <typename Rounding>
void roundMagnitude(Rounding rounding)
{
    const std::int32_t digits = popInteger();
    const double x = popNumber();
    if (!checkPending())
        return;
    const double power = digits == 0 ? 1 : std::pow(10.0, digits);
    pushNumber(withSignOf(x, rounding(std::abs(x) * power) / power));
}

} // namespace

void callInt()
{
    answerNumber([](double x) { return std::floor(x); });
}

void callTrunc()
{
    const double digits = popOptional(2, 0);
    const double x = popNumber();
    if (!checkPending())
        return;
    const double power = std::pow(10.0, digits);
    pushNumber(withSignOf(x, std::floor(std::abs(x) * power) / power));
}

// A tie goes up, also below 0. The digits may be a fraction.
void callRound()
{
    answerTwo([](double x, double digits) {
        const double unit = std::pow(10.0, -digits);
        pushNumber(unit == 0 ? 0 : std::floor((x + unit / 2) / unit) * unit);
    });
}

void callRoundUp()
{
    roundMagnitude([](double magnitude) { return std::ceil(magnitude); });
}

void callRoundDown()
{
    roundMagnitude([](double magnitude) { return std::floor(magnitude); });
}

void callEven()
{
    answerNumber([](double x) {
        const double whole = std::ceil(std::abs(x));
        return withSignOf(x, isEven(whole) ? whole : whole + 1);
    });
}

void callOdd()
{
    answerNumber([](double x) {
        const double whole = std::ceil(std::abs(x));
        return withSignOf(x, isEven(whole) ? whole + 1 : whole);
    });
}

// Ceiling and Floor answer a significance of 0 and one of the wrong sign each in its own way.
void callCeiling()
{
    answerTwo([](double x, double significance) {
        if (significance == 0)
            pushNumber(0);
        else
            pushNumberIf(signOf(x) * signOf(significance) >= 0,
                         std::ceil(x / significance) * significance, CellErrorVal);
    });
}

void callFloor()
{
    answerTwo([](double x, double significance) {
        if (significance == 0)
            pushError(CellErrorDiv0);
        else
            pushNumberIf(signOf(x) == signOf(significance),
                         std::floor(x / significance) * significance, CellErrorNum);
    });
}

} // namespace vorn
