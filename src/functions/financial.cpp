// Annuities and cash flows. Money that is paid out is negative. There are few tests
// of domains: what is not finite is found when the formula ends.

#include "functions/numeric.h"
#include "functions/table.h"

#include <cmath>
#include <cstddef>

namespace vorn {
namespace {

// --- Annuities: payments that are all alike, at the end of each period (type 0) or at its begin
// (type 1). p is what 1 grows to in all periods, t what a payment grows to in the period that it
// belongs to.

double futureValue(double rate, double periods, double payment, double present, double type)
{
    if (rate == 0)
        return -(periods * payment + present);
    const double p = std::pow(1 + rate, periods);
    const double t = rate * type + 1;
    return -(p * present + (p - 1) * t * payment / rate);
}

double presentValue(double rate, double periods, double payment, double future, double type)
{
    if (rate == 0)
        return -future - periods * payment;
    const double p = std::pow(1 + rate, periods);
    const double t = rate * type + 1;
    return -(((p - 1) * t * payment / rate + future) / p);
}

double paymentOf(double rate, double periods, double present, double future, double type)
{
    if (rate == 0)
        return -(present + future) / periods;
    const double p = std::pow(1 + rate, periods);
    const double t = rate * type + 1;
    return -((p * present + future) * rate) / ((p - 1) * t);
}

double periodsOf(double rate, double payment, double present, double future, double type)
{
    if (rate == 0)
        return -(present + future) / payment;
    const double k = payment / rate * (rate * type + 1);
    return std::log((1 - future / k) / (present / k + 1)) / std::log(1 + rate);
}

// The interest in the payment of one period, which need not be one of the annuity's. The first
// period of an annuity of type 1 is like the others.
double interestOf(double rate, double period, double periods, double present, double future,
                  double type)
{
    const double payment = paymentOf(rate, periods, present, future, type);
    return futureValue(rate, period + type - 1, payment, present, type) * rate;
}

double popType(int place)
{
    return popOptional(place, 0) != 0 ? 1 : 0;
}

// Three numbers, and perhaps a fourth and the type.
void answerAnnuity(double (*function)(double, double, double, double, double))
{
    const double type = popType(5);
    const double fourth = popOptional(4, 0);
    const double third = popNumber();
    const double second = popNumber();
    const double first = popNumber();
    if (checkPending())
        pushNumber(function(first, second, third, fourth, type));
}

enum PaymentPart { InterestPart, PrincipalPart };

void answerPart(PaymentPart part)
{
    const double type = popType(6);
    const double future = popOptional(5, 0);
    const double present = popNumber();
    const double periods = popNumber();
    const double period = popNumber();
    const double rate = popNumber();
    if (!checkPending())
        return;
    const double interest = interestOf(rate, period, periods, present, future, type);
    pushNumber(part == InterestPart ? interest
                                    : paymentOf(rate, periods, present, future, type) - interest);
}

} // namespace

void callFv()
{
    answerAnnuity(futureValue);
}

void callPv()
{
    answerAnnuity(presentValue);
}

void callPmt()
{
    answerAnnuity(paymentOf);
}

void callNper()
{
    answerAnnuity(periodsOf);
}

void callIPmt()
{
    answerPart(InterestPart);
}

void callPPmt()
{
    answerPart(PrincipalPart);
}

// --- The rate of an annuity

namespace {

constexpr int RateRounds = 21;
constexpr double SolverTolerance = 1e-7;

struct Annuity {
    double periods = 0;
    double payment = 0;
    double present = 0;
    double future = 0;
    double type = 0;
};

// A step of Newton's method on the sum of all that is paid, which is 0 at the rate looked for.
double nextRate(const Annuity& annuity, double rate)
{
    const double n = annuity.periods;
    const double payment = annuity.payment;
    const double p = std::pow(1 + rate, n);
    const double t = rate * annuity.type + 1;
    const double value = p * annuity.present + t * ((p - 1) / rate) * payment + annuity.future;
    const double q = std::pow(1 + rate, n - 1);
    const double u = (1 + rate) * q;
    const double slope = n * q * annuity.present + ((u - 1) / rate) * payment * annuity.type +
                         t * (n * q * rate - u + 1) * payment / (rate * rate);
    return rate - value / slope;
}

// Answers false if the rounds do not settle. What is not a number counts as settled.
bool solveRate(const Annuity& annuity, double guess, double& rate)
{
    double last = guess;
    rate = nextRate(annuity, last);
    for (int round = 0; round < RateRounds; ++round) {
        if (!(std::abs(rate - last) > SolverTolerance))
            return true;
        last = rate;
        rate = nextRate(annuity, last);
    }
    return false;
}

} // namespace

void callRate()
{
    const double guess = popOptional(6, 0.1);
    Annuity annuity;
    annuity.type = popType(5);
    annuity.future = popOptional(4, 0);
    annuity.present = popNumber();
    annuity.payment = popNumber();
    annuity.periods = popNumber();
    double rate = 0;
    const bool isSettled = solveRate(annuity, guess, rate);
    if (checkPending())
        pushNumberIf(isSettled, rate, CellErrorNum);
}

// --- Cash flows

namespace {

// Calls `visit(number)` for the plain numbers of a walk until it answers false. Other values are
// passed over; an error pends.
template <typename Visit>
void walkNumbers(CellIterator& iterator, Visit visit)
{
    while (const CellValue* value = iterator.nextValue()) {
        if (value->tag == TagError)
            setPending(value->error());
        else if (value->tag == TagNumber && !visit(value->number()))
            return;
    }
}

} // namespace

// The arguments count in reading order, but the first of them lies deepest: each is popped with the
// top of the stack moved to it.
void callNpv()
{
    CellValue* const top = machine.stackTop;
    const int count = machine.argumentCount;
    if (count == 0 || machine.runBase - top < count) {
        abandonRun();
        return;
    }
    machine.stackTop = top + count - 1;
    const double rate = popNumber();
    double divisor = 1;
    double sum = 0;
    const auto add = [&](double value) {
        divisor *= rate + 1;
        sum += value / divisor;
        return true;
    };
    for (CellValue* argument = top + count - 2; argument >= top; --argument) {
        machine.stackTop = argument;
        CellIterator iterator;
        if (popRangeIterator(iterator)) {
            walkNumbers(iterator, add);
            continue;
        }
        if (argument->tag == TagNumber)
            add(argument->number());
        popMany(1);
    }
    machine.stackTop = top + count;
    if (checkPending())
        pushNumberIf(rate != -1, sum, CellErrorDiv0);
}

namespace {

constexpr std::size_t FlowsMax = 100;
constexpr int ReturnRounds = 20;

struct CashFlows {
    double values[FlowsMax];
    std::size_t count = 0;
    bool hasIncome = false;
    bool hasExpense = false;

    // Answers whether there is room for one more.
    bool add(double value)
    {
        values[count++] = value;
        hasIncome = hasIncome || value > 0;
        hasExpense = hasExpense || value < 0;
        return count < FlowsMax;
    }
};

// Solves the polynomial in x = 1 / (1 + rate) by Newton's method. Answers false if the rounds do
// not settle.
bool solveReturn(const CashFlows& flows, double guess, double& rate)
{
    double x = 1 / (1 + (guess == -1 ? -1.1 : guess));
    for (int round = 0; round < ReturnRounds; ++round) {
        double value = 0;
        double slope = 0;
        for (std::size_t i = flows.count; i > 0; --i) {
            slope = slope * x + value;
            value = value * x + flows.values[i - 1];
        }
        const double step = value / slope;
        const double next = x - step;
        if (2 * std::abs(step) / (std::abs(next) + std::abs(x)) <= SolverTolerance &&
            std::abs(value) < SolverTolerance) {
            rate = 1 / next - 1;
            return true;
        }
        x = next;
    }
    return false;
}

} // namespace

// A full table is a failure even when all cells fitted. Flows of one sign have no rate, although
// the rounds may settle on one below -1.
void callIrr()
{
    const double guess = popOptional(2, 0.1);
    CashFlows flows;
    CellIterator iterator;
    if (popRangeIterator(iterator))
        walkNumbers(iterator, [&](double value) { return flows.add(value); });
    else
        popMany(1);
    if (!checkPending())
        return;
    const bool canSolve = flows.count < FlowsMax && flows.hasIncome && flows.hasExpense;
    double rate = 0;
    const bool isSolved = canSolve && solveReturn(flows, guess, rate);
    pushNumberIf(isSolved, rate, CellErrorNum);
}

} // namespace vorn
