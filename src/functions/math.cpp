// Powers, logarithms, angles, counting and chance. No result is tested for being finite: that is
// done once, when a formula ends.

#include "formula/operators.h"
#include "functions/numeric.h"
#include "functions/random.h"
#include "functions/table.h"

#include <cmath>

namespace vorn {

void callAbs()
{
    answerNumber([](double x) { return x >= 0 ? x : -x; });
}

void callSign()
{
    answerNumber([](double x) { return x > 0 ? 1.0 : x < 0 ? -1.0 : 0.0; });
}

void callSqrt()
{
    answerNumber([](double x) { return std::sqrt(x); });
}

void callPower()
{
    operatePower();
}

// The remainder has the sign of the divisor. The only one here that keeps dates.
void callMod()
{
    const double divisor = popNumber();
    bool isDate = poppedDate();
    const double number = popNumber();
    isDate = isDate || poppedDate();
    if (!checkPending())
        return;
    if (divisor == 0) {
        pushError(CellErrorDiv0);
        return;
    }
    const double remainder = number - std::floor(number / divisor) * divisor;
    if (isDate)
        pushDate(remainder);
    else
        pushNumber(remainder);
}

// --- Logarithms

void callExp()
{
    answerNumber([](double x) { return std::exp(x); });
}

void callLn()
{
    answer([](double x) { pushNumberIf(!(x <= 0), std::log(x), CellErrorNum); });
}

void callLog10()
{
    answer([](double x) { pushNumberIf(!(x <= 0), std::log10(x), CellErrorNum); });
}

void callLog()
{
    const double base = popOptional(2, 10);
    const double number = popNumber();
    if (checkPending())
        pushNumberIf(number > 0 && base > 0, std::log(number) / std::log(base), CellErrorNum);
}

// --- Angles

namespace {

constexpr double Pi = 3.141592653589793;
constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr double DegreesPerRadian = 57.29577951308232;

} // namespace

void callPi()
{
    pushNumber(Pi);
}

void callSin()
{
    answerNumber([](double x) { return std::sin(x); });
}

void callCos()
{
    answerNumber([](double x) { return std::cos(x); });
}

void callTan()
{
    answerNumber([](double x) { return std::tan(x); });
}

void callAsin()
{
    answerNumber([](double x) { return std::asin(x); });
}

void callAcos()
{
    answerNumber([](double x) { return std::acos(x); });
}

void callAtan()
{
    answerNumber([](double x) { return std::atan(x); });
}

void callAtan2()
{
    answerTwo([](double x, double y) {
        pushNumberIf(!(x == 0 && y == 0), std::atan2(y, x), CellErrorDiv0);
    });
}

void callRadians()
{
    answerNumber([](double x) { return x * RadiansPerDegree; });
}

void callDegrees()
{
    answerNumber([](double x) { return x * DegreesPerRadian; });
}

// --- Counting

namespace {

// Where every factorial is infinite.
constexpr int LastFactor = 172;

// The factorial of the whole part. What is not a number has no last factor but that.
double factorial(double x)
{
    double product = 1;
    for (int factor = 2; factor <= LastFactor && !(factor > x); ++factor)
        product *= factor;
    return product;
}

bool canChoose(double n, double k)
{
    return !(k < 0) && !(n < 0) && !(n < k);
}

} // namespace

void callFact()
{
    answer([](double x) { pushNumberIf(!(x < 0), factorial(x), CellErrorNum); });
}

void callPermut()
{
    answerTwo([](double n, double k) {
        pushNumberIf(canChoose(n, k), factorial(n) / factorial(n - k), CellErrorNum);
    });
}

void callCombin()
{
    answerTwo([](double n, double k) {
        pushNumberIf(canChoose(n, k), factorial(n) / factorial(k) / factorial(n - k), CellErrorNum);
    });
}

// --- Chance

void callRand()
{
    // One less than the greatest number, so that the result can pass 1 by a little.
    pushNumber(nextRandom() / (RandomMax - 1.0));
}

} // namespace vorn
