// Functions over a database: a range whose first row holds the names of its fields. A second range,
// laid out the same way, holds the criteria: names of fields and, under them, rows of conditions.
// The conditions of a row must all hold, and the rows are alternatives; a row without a condition
// selects nothing.
#include "core/growarray.h"
#include "core/pool.h"
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

constexpr std::uint16_t NoDatabaseColumn = 65535;

// --- Criteria

// The conditions of all criteria rows that have any, one row behind the other.
class Criteria {
public:
    Criteria() = default;
    ~Criteria();
    Criteria(const Criteria&) = delete;
    Criteria& operator=(const Criteria&) = delete;

    // Answers false if memory is short.
    bool read(const SheetRange& criteria, const SheetRange& database);

    // The row may be null, as one that does not exist.
    bool selects(const Row* row) const;

private:
    void mapColumns(const SheetRange& criteria, const SheetRange& database);
    bool readRow(const SheetRange& criteria, int row);
    bool addCondition(std::uint16_t column, const CellValue& stored);

    GrowArray<CriteriaCondition> conditions_;
    GrowArray<std::int32_t> rowEnds_; // in conditions_
    // The database column under each column of the criteria.
    std::uint16_t columnMap_[ColumnCount];
};

// The field whose name is `name`, without case; NoDatabaseColumn if there is none.
std::uint16_t findField(const SheetRange& database, const char16_t* name)
{
    const int row = database.range.firstRow;
    for (int column = database.range.firstColumn; column <= database.range.lastColumn; ++column) {
        const CellValue* header = database.sheet->valuePointer(column, row);
        if (header != nullptr && header->tag == TagText &&
            compareTexts(valueTextPointer(*header), name, IgnoreCase) == 0)
            return static_cast<std::uint16_t>(column);
    }
    return NoDatabaseColumn;
}

// Is there the name of a field in this column of the criteria? It need not be one of the database.
const CellValue* headerText(const SheetRange& criteria, int column)
{
    const CellValue* header = criteria.sheet->valuePointer(column, criteria.range.firstRow);
    return header != nullptr && header->tag == TagText ? header : nullptr;
}

Criteria::~Criteria()
{
    for (CriteriaCondition& condition : conditions_)
        releaseValue(condition.value);
}

void Criteria::mapColumns(const SheetRange& criteria, const SheetRange& database)
{
    std::fill(std::begin(columnMap_), std::end(columnMap_), NoDatabaseColumn);
    const int count = std::min(criteria.columnCount(), ColumnCount);
    for (int offset = 0; offset < count; ++offset) {
        const CellValue* header = headerText(criteria, criteria.range.firstColumn + offset);
        if (header != nullptr)
            columnMap_[offset] = findField(database, valueTextPointer(*header));
    }
}

bool Criteria::read(const SheetRange& criteria, const SheetRange& database)
{
    mapColumns(criteria, database);
    // Rows below the last one stored are as good as empty ones.
    const int lastRow = std::min<int>(criteria.range.lastRow, criteria.sheet->lastRow());
    for (int row = criteria.range.firstRow + 1; row <= lastRow; ++row)
        if (criteria.sheet->rowAt(row) != nullptr && !readRow(criteria, row))
            return false;
    return true;
}

// A column without a name is passed over; a name that the database does not have ends the row.
bool Criteria::readRow(const SheetRange& criteria, int row)
{
    const std::int32_t start = conditions_.size();
    const int count = std::min(criteria.columnCount(), ColumnCount);
    for (int offset = 0; offset < count; ++offset) {
        const int column = criteria.range.firstColumn + offset;
        if (headerText(criteria, column) == nullptr)
            continue;
        if (columnMap_[offset] == NoDatabaseColumn)
            break;
        const CellValue* stored = criteria.sheet->valuePointer(column, row);
        if (stored != nullptr && !addCondition(columnMap_[offset], *stored))
            return false;
    }
    return conditions_.size() == start || rowEnds_.append(conditions_.size());
}

// A blank is no condition, nor is a sign with nothing behind it.
bool Criteria::addCondition(std::uint16_t column, const CellValue& stored)
{
    CellValue criteria;
    copyValue(stored, criteria);
    CriteriaCondition condition = readCondition(criteria);
    condition.column = column;
    if (condition.value.tag == TagBlank || conditions_.append(condition))
        return true;
    releaseValue(condition.value);
    return false;
}

bool Criteria::selects(const Row* row) const
{
    std::int32_t start = 0;
    for (const std::int32_t end : rowEnds_) {
        const bool all = std::all_of(
            conditions_.data() + start, conditions_.data() + end, [&](const auto& condition) {
                return meetsCondition(storedValue(row, condition.column), condition);
            });
        if (all)
            return true;
        start = end;
    }
    return false;
}

// --- The walk

constexpr CellValue BlankValue;

// What a function takes of the field in the selected rows.
enum FieldRule {
    TakeNumbers,   // and an error ends the walk
    CountNumbers,  // errors are passed over
    CountNonBlank, // of any kind
    TakeAny,       // blanks too
};

// What all the functions gather; each picks what it is about.
struct Tally {
    Moments moments;
    double product = 1;
    double lowest = 0;
    double highest = 0;
    std::int64_t count = 0;
    const CellValue* value = &BlankValue; // borrowed: the last one taken

    void takeNumber(double number)
    {
        lowest = count == 0 || number < lowest ? number : lowest;
        highest = count == 0 || number > highest ? number : highest;
        product *= number;
        moments.add(number);
        ++count;
    }
};

void takeField(const CellValue& value, FieldRule rule, Tally& tally)
{
    switch (rule) {
    case TakeNumbers:
        if (value.tag == TagNumber)
            tally.takeNumber(value.number());
        else if (value.tag == TagError)
            setPending(value.error());
        break;
    case CountNumbers:
        tally.count += value.tag == TagNumber;
        break;
    case CountNonBlank:
        tally.count += value.tag != TagBlank;
        break;
    case TakeAny:
        tally.value = &value;
        ++tally.count;
        break;
    }
}

struct DatabaseArguments {
    SheetRange database;
    SheetRange criteria;
    int field = 0; // the column of the sheet, wherever that is
};

// Row by row as far as the sheet has any. The rows that do not exist are all alike, and hold
// nothing to take; only Dget, which takes blanks, counts them.
void walkDatabase(const DatabaseArguments& arguments, const Criteria& criteria, FieldRule rule,
                  Tally& tally)
{
    const SheetRange& database = arguments.database;
    const int lastStored = std::max<int>(database.sheet->lastRow(), database.range.firstRow);
    const int lastRow = std::min<int>(database.range.lastRow, lastStored);
    for (int row = database.range.firstRow + 1; row <= lastRow; ++row) {
        const Row* object = database.sheet->rowAt(row);
        if (!criteria.selects(object))
            continue;
        const CellValue* value = storedValue(object, arguments.field);
        takeField(value == nullptr ? BlankValue : *value, rule, tally);
        if (machine.pendingError != 0)
            return;
    }
    const int missing = database.range.lastRow - lastStored;
    if (rule == TakeAny && missing > 0 && criteria.selects(nullptr))
        tally.count += missing;
}

// --- Arguments

// The field by number counts from the database's first column and may lie anywhere.
int fieldByNumber(const SheetRange& database, std::int32_t number)
{
    const std::int64_t column = std::int64_t{database.range.firstColumn} - 1 + number;
    return column >= 0 && column < ColumnCount ? static_cast<int>(column) : -1;
}

// Pops the three arguments. Answers false, with an error pushed, if a range is none. A field name
// that is not there pends as an error, and there is nothing to walk.
bool popArguments(DatabaseArguments& out, bool& fieldFound)
{
    bool complete = popSheetRange(out.criteria);
    const bool byNumber = topValue().tag == TagNumber;
    const std::int32_t number = byNumber ? popInteger() : 0;
    const std::int32_t name = byNumber ? -1 : popText();
    complete = popSheetRange(out.database) && complete;
    complete = complete && machine.pendingError != CellErrorRef;
    fieldFound = true;
    if (!complete) {
        setPending(0);
        pushError(CellErrorVal);
    } else if (byNumber) {
        out.field = fieldByNumber(out.database, number);
    } else {
        out.field = findField(out.database, stringPool->text(name));
        fieldFound = out.field != NoDatabaseColumn;
    }
    stringPool->release(name);
    return complete;
}

// The routine of all the functions. Answers false if it has seen to the result itself.
bool tallySelected(FieldRule rule, Tally& tally)
{
    DatabaseArguments arguments;
    bool fieldFound = false;
    if (!popArguments(arguments, fieldFound))
        return false;
    if (!fieldFound) {
        setPending(CellErrorVal);
        return true;
    }
    Criteria criteria;
    if (!criteria.read(arguments.criteria, arguments.database)) {
        // Without memory there is no answer: the formula keeps what it showed.
        abandonRun();
        return false;
    }
    walkDatabase(arguments, criteria, rule, tally);
    return true;
}

// The error of an empty selection stands before one that was met on the way to it.
bool checkSelection(const Tally& tally)
{
    if (tally.count == 0)
        setPending(CellErrorDiv0);
    return checkPending();
}

} // namespace

// --- The functions

void callDsum()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkPending())
        pushNumber(tally.moments.sum);
}

void callDcount()
{
    Tally tally;
    if (tallySelected(CountNumbers, tally) && checkPending())
        pushNumber(static_cast<double>(tally.count));
}

void callDaverage()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkSelection(tally))
        pushNumber(tally.moments.sum / tally.moments.count);
}

void callDmin()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkPending())
        pushNumber(tally.lowest);
}

void callDmax()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkPending())
        pushNumber(tally.highest);
}

void callDcounta()
{
    Tally tally;
    if (tallySelected(CountNonBlank, tally) && checkPending())
        pushNumber(static_cast<double>(tally.count));
}

void callDproduct()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkPending())
        pushNumber(tally.product);
}

// One value alone makes 0 divided by 0 of the sample's variance, which is no number.
void callDstdev()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkSelection(tally))
        pushNumber(std::sqrt(tally.moments.sampleVariance()));
}

void callDvar()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkSelection(tally))
        pushNumber(tally.moments.sampleVariance());
}

void callDstdevp()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkSelection(tally))
        pushNumber(std::sqrt(tally.moments.populationVariance()));
}

void callDvarp()
{
    Tally tally;
    if (tallySelected(TakeNumbers, tally) && checkSelection(tally))
        pushNumber(tally.moments.populationVariance());
}

// The value of the one selected row, of whatever kind, an error too.
void callDget()
{
    Tally tally;
    if (!tallySelected(TakeAny, tally))
        return;
    if (tally.count == 0)
        setPending(CellErrorVal);
    else if (tally.count > 1)
        setPending(CellErrorNum);
    if (!checkPending())
        return;
    CellValue value;
    copyValue(*tally.value, value);
    pushRaw(value);
}

} // namespace vorn
