#include "formula/operators.h"

#include "formula/machine.h"
#include "formula/pushtext.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace vorn {
namespace {

struct NumberOperands {
    double left = 0;
    double right = 0;
    bool isDate = false;
};

NumberOperands popNumbers()
{
    NumberOperands operands;
    operands.right = popNumber();
    operands.isDate = poppedDate();
    operands.left = popNumber();
    operands.isDate = operands.isDate || poppedDate();
    return operands;
}

void pushNumberOrDate(double number, bool isDate)
{
    if (isDate)
        pushDate(number);
    else
        pushNumber(number);
}

} // namespace

void operateAdd()
{
    const NumberOperands operands = popNumbers();
    if (checkPending())
        pushNumberOrDate(operands.left + operands.right, operands.isDate);
}

void operateSubtract()
{
    const NumberOperands operands = popNumbers();
    if (checkPending())
        pushNumberOrDate(operands.left - operands.right, operands.isDate);
}

void operateMultiply()
{
    const NumberOperands operands = popNumbers();
    if (checkPending())
        pushNumberOrDate(operands.left * operands.right, operands.isDate);
}

void operateDivide()
{
    const NumberOperands operands = popNumbers();
    if (!checkPending())
        return;
    if (operands.right == 0)
        pushError(CellErrorDiv0);
    else
        pushNumberOrDate(operands.left / operands.right, operands.isDate);
}

// The one operator that lets an error pend and goes on with 0: -(1/0) shows 0.
void operateNegate()
{
    dereferenceTop();
    const bool isError = topValue().tag == TagError;
    const double number = popNumber();
    pushNumberOrDate(isError ? 0 : -number, poppedDate());
}

void operatePower()
{
    const double exponent = popNumber();
    const double base = popNumber();
    if (!checkPending())
        return;
    if (base != 0)
        pushNumber(std::pow(base, exponent));
    else if (exponent == 0)
        pushError(CellErrorNum);
    else
        pushNumber(0);
}

void operatePercent()
{
    const double number = popNumber();
    if (checkPending())
        pushNumber(number * 0.01);
}

void operateConcat()
{
    const std::int32_t right = popText();
    const std::int32_t left = popText();
    if (checkPending()) {
        const std::u16string_view first = stringPool->text(left);
        const std::u16string_view second = stringPool->text(right);
        pushWrittenText(first.size() + second.size(), [&](char16_t* out) {
            out = std::copy(first.begin(), first.end(), out);
            std::copy(second.begin(), second.end(), out);
        });
    }
    stringPool->release(left);
    stringPool->release(right);
}

// --- Comparison

namespace {

enum Comparison { Equal, Less, Greater };

template <typename Operand>
bool compare(Comparison comparison, Operand left, Operand right)
{
    switch (comparison) {
    case Equal:
        return left == right;
    case Less:
        return left < right;
    case Greater:
        return left > right;
    }
    return false;
}

// What a left operand is, beside nothing. A logical and a text answer Less as they answer Greater.
bool compareWithBlank(Comparison comparison, const CellValue& left)
{
    switch (left.tag) {
    case TagBlank:
        return comparison == Equal;
    case TagLogical:
        return left.logical() != (comparison == Equal);
    case TagText:
        return (*valueTextPointer(left) != u'\0') != (comparison == Equal);
    case TagNumber:
    case TagDateTime:
        return compare(comparison, left.number(), 0.0);
    case TagError:
        setPending(left.error());
        return false;
    default:
        return false;
    }
}

void compareBlank(Comparison comparison)
{
    popMany(1);
    dereferenceTop();
    CellValue left = popRaw();
    const bool answer = compareWithBlank(comparison, left);
    releaseValue(left);
    pushLogical(answer);
}

void compareLogical(Comparison comparison)
{
    const bool right = popLogical();
    const bool left = popLogical();
    if (checkPending())
        pushLogical(compare(comparison, static_cast<int>(left), static_cast<int>(right)));
}

void compareError()
{
    setPending(topValue().error());
    popMany(2);
    pushLogical(false);
}

void compareText(Comparison comparison)
{
    const std::int32_t right = popText();
    const std::int32_t left = popText();
    if (checkPending()) {
        const int order = compareTexts(stringPool->text(left), stringPool->text(right), IgnoreCase);
        pushLogical(compare(comparison, order, 0));
    }
    stringPool->release(left);
    stringPool->release(right);
}

void compareNumber(Comparison comparison)
{
    const double right = popNumber();
    dereferenceTop();
    const bool leftIsError = topValue().tag == TagError;
    const double left = popNumber();
    if (comparison == Equal && machine.pendingError == CellErrorVal) {
        // A text that is no number is simply not equal.
        setPending(0);
        pushLogical(false);
    } else if (comparison == Less) {
        pushLogical(!leftIsError && left < right);
    } else if (checkPending()) {
        pushLogical(compare(comparison, left, right));
    }
}

void compareTop(Comparison comparison)
{
    dereferenceTop();
    switch (topValue().tag) {
    case TagBlank:
        return compareBlank(comparison);
    case TagLogical:
        return compareLogical(comparison);
    case TagError:
        return compareError();
    case TagText:
        return compareText(comparison);
    case TagNumber:
    case TagDateTime:
        return compareNumber(comparison);
    default:
        return;
    }
}

// An error that the comparison left as its result pends here, and the answer is true.
void negateAnswer()
{
    const bool answer = popLogical();
    pushLogical(!answer);
}

} // namespace

void operateEqual()
{
    compareTop(Equal);
}
void operateLess()
{
    compareTop(Less);
}
void operateGreater()
{
    compareTop(Greater);
}

void operateLessEqual()
{
    compareTop(Greater);
    negateAnswer();
}

void operateGreaterEqual()
{
    compareTop(Less);
    negateAnswer();
}

void operateNotEqual()
{
    compareTop(Equal);
    negateAnswer();
}

} // namespace vorn
