// The hyperbolic functions, and their inverses as a bisection and two series. The inverses end at a
// tolerance rather than at the last digit, and documents hold what they come to: the library's own
// inverses would differ.

#include "functions/numeric.h"
#include "functions/table.h"

#include <cmath>

namespace vorn {
namespace {

constexpr double Tolerance = 1e-11;

double inverseSinh(double x)
{
    double lower = 0;
    double upper = 0;
    while (std::sinh(upper) < x)
        ++upper;
    while (std::sinh(lower) > x)
        --lower;
    double middle = (lower + upper) / 2;
    // For a great number neighbouring results are further apart than the tolerance: then the
    // middle falls on a bracket.
    while (std::abs(std::sinh(middle) - x) > Tolerance && middle != lower && middle != upper) {
        if (std::sinh(middle) < x)
            lower = middle;
        else
            upper = middle;
        middle = (lower + upper) / 2;
    }
    return middle;
}

// For x above 1. The terms fall at least as fast as n^-1.5, so some nine million do for any x.
double inverseCosh(double x)
{
    const double step = 1 / (x * x);
    double sum = std::log(2 * x);
    double power = 1;
    double coefficient = 1;
    double term = 0;
    double even = 0;
    do {
        even += 2;
        coefficient *= (even - 1) / even;
        power *= step;
        term = -coefficient / even * power;
        sum += term;
    } while (std::abs(term) > Tolerance);
    return sum;
}

// --- The series of the inverse tangent

// Near 1 the series takes up to 50 thousand million terms. This many are added one by one; those
// behind them differ so little from one to the next that an integral stands for their sum.
constexpr int TermsAdded = 10'000'000;

// The integral of (1 - e^-t) / t from 0 to z, for z up to some 10.
double exponentialIntegral(double z)
{
    double sum = 0;
    double power = -1; // (-z)^k / k!, negated
    for (int k = 1; sum + power != sum; ++k) {
        power *= -z / k;
        sum += power / k;
    }
    return sum;
}

// The sum of x^(2n+1) / (2n+1) from n = TermsAdded to the first term within the tolerance.
double sumOfRest(double x)
{
    const double decay = -std::log(x);
    const auto term = [decay](double n) { return std::exp(-decay * (2 * n + 1)) / (2 * n + 1); };
    double before = TermsAdded - 1;
    double last = 1 / Tolerance;
    while (last - before > 1) {
        const double middle = std::floor((before + last) / 2);
        if (term(middle) > Tolerance)
            before = middle;
        else
            last = middle;
    }
    // From half a term before the first to half a term behind the last.
    const double from = 2.0 * TermsAdded;
    const double to = 2 * last + 2;
    return (std::log(to / from) + exponentialIntegral(decay * from) -
            exponentialIntegral(decay * to)) /
           2;
}

// For x strictly between -1 and 1.
double inverseTanh(double x)
{
    const double step = x * x;
    double power = x;
    double sum = 0;
    for (int n = 0; n < TermsAdded; ++n) {
        const double term = power / (2.0 * n + 1);
        sum += term;
        if (std::abs(term) <= Tolerance)
            return sum;
        power *= step;
    }
    return sum + std::copysign(sumOfRest(std::abs(x)), x);
}

} // namespace

void callSinh()
{
    answerNumber([](double x) { return std::sinh(x); });
}

void callCosh()
{
    answerNumber([](double x) { return std::cosh(x); });
}

void callTanh()
{
    answerNumber([](double x) { return std::tanh(x); });
}

void callAsinh()
{
    answerNumber(inverseSinh);
}

void callAcosh()
{
    answer([](double x) {
        if (x < 1)
            pushError(CellErrorNum);
        else
            pushNumber(x == 1 ? 0 : inverseCosh(x));
    });
}

void callAtanh()
{
    answer([](double x) {
        if (x > -1 && x < 1)
            pushNumber(inverseTanh(x));
        else
            pushError(CellErrorNum);
    });
}

} // namespace vorn
