// Functions over lists of arguments and ranges. They look alike and are not uniform: each has its
// own rule for what counts as an argument by itself, what counts in a cell of a range, and what an
// error does. Documents rely on every one of these rules.
#include "core/walk.h"
#include "formula/machine.h"
#include "functions/criteria.h"
#include "functions/moments.h"
#include "functions/table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vorn {
namespace {

// Pops the top if it is a reference to cells. One to a sheet that is gone becomes an error.
bool popCells(RangeArgument& cells)
{
    if (!tryPopRange(cells))
        return false;
    if (workbook->sheetAt(cells.firstSheet) != nullptr)
        return true;
    pushError(CellErrorRef);
    return false;
}

// What an error in a cell of a range does: the result is that error, or nothing.
enum CellErrorRule { PassCellErrors, KeepCellErrors };

// Shows every argument to `take`, the last one first: each cell of a reference, or the value. An
// error that is an argument by itself is a value like any other, and those who add numbers pass it
// over.
template <CellErrorRule rule, typename Take>
void takeArguments(Take take)
{
    for (int left = machine.argumentCount; left > 0; --left) {
        RangeArgument cells;
        if (popCells(cells)) {
            walkValues(cells.firstSheet, cells.lastSheet, cells.range, [&](const CellValue& value) {
                if (rule == KeepCellErrors && value.tag == TagError)
                    setPending(value.error());
                take(value);
                return true;
            });
            continue;
        }
        CellValue value = popRaw();
        take(value);
        releaseValue(value);
    }
}

// A result is a date if any value that went into it was one, whichever was chosen.
void pushNumberOrDate(double number, bool isDate)
{
    if (isDate)
        pushDate(number);
    else
        pushNumber(number);
}

void pushCount(std::int64_t count)
{
    pushNumber(static_cast<double>(count));
}

} // namespace

// --- Counts, sums and extremes

void callCount()
{
    std::int64_t count = 0;
    takeArguments<PassCellErrors>([&](const CellValue& value) { count += value.tag == TagNumber; });
    if (checkPending())
        pushCount(count);
}

void callCountA()
{
    std::int64_t count = 0;
    takeArguments<PassCellErrors>([&](const CellValue& value) { count += value.tag != TagBlank; });
    if (checkPending())
        pushCount(count);
}

// At the first cell with an error the sum gives up without a result: the error pends, and the
// arguments further left stay on the stack. A formula that is nothing but this sum keeps what it
// showed before.
void callSum()
{
    double sum = 0;
    bool isDate = false;
    const auto addCell = [&](const CellValue& value) {
        switch (value.tag) {
        case TagDateTime:
            isDate = true;
            [[fallthrough]];
        case TagNumber:
            sum += value.number();
            return true;
        case TagError:
            setPending(value.error());
            return false;
        default:
            return true;
        }
    };
    for (int left = machine.argumentCount; left > 0; --left) {
        RangeArgument cells;
        if (!popCells(cells))
            sum += popNumber();
        else if (!walkValues(cells.firstSheet, cells.lastSheet, cells.range, addCell))
            return;
    }
    if (checkPending())
        pushNumberOrDate(sum, isDate);
}

// The product of nothing is 0.
void callProduct()
{
    double product = 1;
    bool isEmpty = true;
    takeArguments<KeepCellErrors>([&](const CellValue& value) {
        if (value.tag != TagNumber)
            return;
        product *= value.number();
        isEmpty = false;
    });
    if (checkPending())
        pushNumber(isEmpty ? 0 : product);
}

void callAverage()
{
    double sum = 0;
    std::int64_t count = 0;
    bool isDate = false;
    takeArguments<KeepCellErrors>([&](const CellValue& value) {
        if (value.tag != TagNumber && value.tag != TagDateTime)
            return;
        sum += value.number();
        ++count;
        isDate = isDate || value.tag == TagDateTime;
    });
    if (!checkPending())
        return;
    if (count == 0)
        pushError(CellErrorDiv0);
    else
        pushNumberOrDate(sum / static_cast<double>(count), isDate);
}

namespace {

// Pushes the number that lies before all others, or 0 of none.
template <typename LiesBefore>
void pushExtreme(LiesBefore liesBefore)
{
    double extreme = 0;
    bool isEmpty = true;
    bool isDate = false;
    takeArguments<KeepCellErrors>([&](const CellValue& value) {
        if (value.tag != TagNumber && value.tag != TagDateTime)
            return;
        const double number = value.number();
        if (isEmpty || liesBefore(number, extreme))
            extreme = number;
        isEmpty = false;
        isDate = isDate || value.tag == TagDateTime;
    });
    if (checkPending())
        pushNumberOrDate(extreme, isDate);
}

} // namespace

void callMax()
{
    pushExtreme([](double number, double extreme) { return number > extreme; });
}

void callMin()
{
    pushExtreme([](double number, double extreme) { return number < extreme; });
}

// --- Variances

namespace {

// Answers false, with an error pushed, if there are fewer than `least` numbers.
bool takeMoments(Moments& moments, int least)
{
    takeArguments<KeepCellErrors>([&](const CellValue& value) {
        if (value.tag == TagNumber)
            moments.add(value.number());
    });
    if (!checkPending())
        return false;
    if (moments.count >= least)
        return true;
    pushError(CellErrorDiv0);
    return false;
}

} // namespace

void callVar()
{
    Moments moments;
    if (takeMoments(moments, 2))
        pushNumber(moments.sampleVariance());
}

void callVarP()
{
    Moments moments;
    if (takeMoments(moments, 1))
        pushNumber(moments.populationVariance());
}

void callStdev()
{
    Moments moments;
    if (takeMoments(moments, 2))
        pushNumber(std::sqrt(moments.sampleVariance()));
}

void callStdevP()
{
    Moments moments;
    if (takeMoments(moments, 1))
        pushNumber(std::sqrt(moments.populationVariance()));
}

// --- Counts and sums of what meets a condition

namespace {

bool isEmptyText(const CellValue& value)
{
    return value.tag == TagText && *valueTextPointer(value) == u'\0';
}

std::int64_t cellCount(const SheetRange& cells)
{
    return std::int64_t{cells.rowCount()} * cells.columnCount();
}

// Errors and empty texts are as good as blank.
std::int64_t countBlanks(const SheetRange& cells)
{
    std::int64_t filled = 0;
    walkValues(*cells.sheet, cells.range, [&](const CellValue& value) {
        filled += value.tag != TagBlank && value.tag != TagError && !isEmptyText(value);
        return true;
    });
    return cellCount(cells) - filled;
}

} // namespace

void callCountblank()
{
    RangeArgument unused;
    if (readReference(topValue(), unused)) {
        SheetRange cells;
        const std::int64_t blanks = popSheetRange(cells) ? countBlanks(cells) : 0;
        if (checkPending())
            pushCount(blanks);
        return;
    }
    CellValue value = popRaw();
    const bool isBlank = value.tag == TagBlank || isEmptyText(value);
    releaseValue(value);
    if (checkPending())
        pushCount(isBlank ? 1 : 0);
}

namespace {

// A condition on the cells of one range, and the cells that are added: those at the same distance
// from the first corner of another range, or the same ones.
struct ConditionalRange {
    SheetRange tested;
    SheetRange added;
    CriteriaCondition condition;
};

// Pops the arguments of Sumif and Countif. Answers false, with an error pushed, if one that has to
// be a range is none.
bool popConditional(ConditionalRange& out)
{
    const bool ownRange = machine.argumentCount == 3;
    bool complete = !ownRange || popSheetRange(out.added);
    dereferenceTop();
    out.condition = readCondition(popRaw());
    complete = popSheetRange(out.tested) && complete;
    if (complete && machine.pendingError != CellErrorRef) {
        if (!ownRange)
            out.added = out.tested;
        return true;
    }
    releaseValue(out.condition.value);
    setPending(0);
    pushError(CellErrorVal);
    return false;
}

// The cells that do not exist are counted without a visit, so that a whole column costs what is in
// it.
std::int64_t countMatches(const SheetRange& cells, const CriteriaCondition& condition)
{
    std::int64_t stored = 0;
    std::int64_t matches = 0;
    walkValues(*cells.sheet, cells.range, [&](const CellValue& value) {
        ++stored;
        matches += value.tag != TagError && meetsCondition(&value, condition);
        return true;
    });
    if (meetsCondition(nullptr, condition))
        matches += cellCount(cells) - stored;
    return matches;
}

// The cells that may be added: a rectangle as large as the tested one, as far as the sheet reaches.
RangeRef addedCells(const ConditionalRange& ranges)
{
    const RangeRef& first = ranges.added.range;
    const int lastRow = std::min(first.firstRow + ranges.tested.rowCount() - 1, LastRow);
    const int lastColumn =
        std::min(first.firstColumn + ranges.tested.columnCount() - 1, LastColumn);
    return {first.firstRow, first.firstColumn, static_cast<std::uint16_t>(lastRow),
            static_cast<std::uint16_t>(lastColumn)};
}

// Walks what may be added and looks back at what is tested, since only a cell with a number adds,
// whether or not there is a cell that meets the condition. An error that would be added ends the
// walk.
double sumMatches(const ConditionalRange& ranges)
{
    double sum = 0;
    if (cellCount(ranges.tested) == 0)
        return sum;
    const RangeRef& tested = ranges.tested.range;
    const RangeRef& added = ranges.added.range;
    CellIterator cells;
    cells.start(*ranges.added.sheet, addedCells(ranges));
    while (const CellValue* value = cells.nextValue()) {
        if (value->tag != TagNumber && value->tag != TagError)
            continue;
        const int column = cells.column() - added.firstColumn + tested.firstColumn;
        const int row = cells.row() - added.firstRow + tested.firstRow;
        if (!meetsCondition(ranges.tested.sheet->valuePointer(column, row), ranges.condition))
            continue;
        if (value->tag == TagError) {
            setPending(value->error());
            break;
        }
        sum += value->number();
    }
    return sum;
}

} // namespace

void callSumif()
{
    ConditionalRange ranges;
    if (!popConditional(ranges))
        return;
    const double sum = sumMatches(ranges);
    releaseValue(ranges.condition.value);
    if (checkPending())
        pushNumber(sum);
}

void callCountif()
{
    ConditionalRange ranges;
    if (!popConditional(ranges))
        return;
    const std::int64_t matches = countMatches(ranges.tested, ranges.condition);
    releaseValue(ranges.condition.value);
    if (checkPending())
        pushCount(matches);
}

} // namespace vorn
