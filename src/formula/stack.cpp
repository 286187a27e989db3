// Popping and pushing: how values become what an operation asks for.

#include "core/formulacell.h"
#include "core/input.h"
#include "core/workbook.h"
#include "formula/machine.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr CellValue blankValue;

// A pop with nothing above the base ends the run: the code is out of balance.
bool stackIsEmpty()
{
    if (machine.stackTop < machine.runBase)
        return false;
    abandonRun();
    return true;
}

bool isReferenceTag(std::uint8_t tag)
{
    return tag >= TagCellRef && tag <= TagSheetRangeRef;
}

// The cell that a reference on the stack means; null if it means none or several.
const CellValue* referredCell(const CellValue& reference)
{
    RangeArgument argument;
    readReference(reference, argument);
    if (argument.firstSheet != argument.lastSheet || argument.range.isMultiCell())
        return nullptr;
    const Sheet* sheet = workbook->sheetAt(argument.firstSheet);
    if (sheet == nullptr)
        return nullptr;
    const CellValue* value =
        sheet->valuePointer(argument.range.firstColumn, argument.range.firstRow);
    return value == nullptr ? &blankValue : value;
}

// The float of a text that reads as the kind of value that `tag` tells.
double textAs(ValueTag tag, std::int32_t textIndex)
{
    CellValue value;
    const char16_t* text = stringPool->text(textIndex);
    if (*text != u'=')
        parseCellInput(value, text, machine.base, nullptr, NumbersOnly);
    if (value.tag == tag)
        return value.number();
    setPending(CellErrorVal);
    return 0;
}

// Takes the top off and hands it over. The way back from a name lies below the name's own values
// and bounds them as the base bounds a run's: whoever comes upon it is out of balance, and the run
// ends.
CellValue takeTop()
{
    const CellValue value = *machine.stackTop++;
    machine.poppedTag = value.tag;
    if (value.tag != TagReturnAddress)
        return value;
    abandonRun();
    return blankValue;
}

double integerAsNumber(const CellValue& value)
{
    return static_cast<double>(value.integer());
}

} // namespace

bool readReference(const CellValue& value, RangeArgument& out)
{
    const bool onBaseSheet = value.tag == TagCellRef || value.tag == TagRangeRef;
    out.firstSheet = onBaseSheet ? machine.base.sheet : std::min(value.firstSheet, value.lastSheet);
    out.lastSheet = onBaseSheet ? machine.base.sheet : std::max(value.firstSheet, value.lastSheet);
    switch (value.tag) {
    case TagCellRef:
    case TagSheetCellRef: {
        const CellRef cell = value.cellRef();
        out.range = {cell.row, cell.column, cell.row, cell.column};
        return true;
    }
    case TagRangeRef:
    case TagSheetRangeRef:
        out.range = value.rangeRef();
        return true;
    default:
        return false;
    }
}

void dereferenceTop()
{
    if (machine.stackTop == machine.runBase || !isReferenceTag(machine.stackTop->tag))
        return;
    const CellValue* value = referredCell(*machine.stackTop);
    if (value != nullptr)
        copyValue(*value, *machine.stackTop);
    else
        *machine.stackTop = CellValue::makeError(CellErrorRef);
}

double popNumberSlow()
{
    if (stackIsEmpty())
        return 0;
    dereferenceTop();
    CellValue value = takeTop();
    switch (value.tag) {
    case TagNumber:
    case TagDateTime:
        return value.number();
    case TagLogical:
        return value.logical() ? 1 : 0;
    case TagError:
        setPending(value.error());
        return 0;
    case TagText: {
        const double number = textAs(TagNumber, value.textIndex());
        releaseValue(value);
        return number;
    }
    case TagInteger:
        return integerAsNumber(value);
    default:
        return 0;
    }
}

double popDateNumber()
{
    if (stackIsEmpty())
        return 0;
    dereferenceTop();
    CellValue value = takeTop();
    switch (value.tag) {
    case TagNumber:
    case TagDateTime:
        return value.number();
    case TagError:
        setPending(value.error());
        return 0;
    case TagText: {
        const double serial = textAs(TagDateTime, value.textIndex());
        releaseValue(value);
        return serial;
    }
    case TagInteger:
        return integerAsNumber(value);
    default:
        return 0;
    }
}

namespace {

// What a pop of a logical found.
enum class Truth { False, True, Failed };

Truth truthOf(bool truth)
{
    return truth ? Truth::True : Truth::False;
}

Truth failed(std::int32_t error)
{
    setPending(error);
    return Truth::Failed;
}

Truth textAsTruth(std::int32_t textIndex)
{
    CellValue value;
    const char16_t* text = stringPool->text(textIndex);
    if (*text != u'=')
        parseCellInput(value, text, machine.base, nullptr, NumbersOnly);
    return value.tag == TagLogical ? truthOf(value.logical()) : failed(CellErrorVal);
}

Truth popTruth()
{
    if (stackIsEmpty())
        return Truth::False;
    dereferenceTop();
    CellValue value = takeTop();
    switch (value.tag) {
    case TagBlank:
        return Truth::False;
    case TagLogical:
        return truthOf(value.logical());
    case TagError:
        return failed(value.error());
    case TagText: {
        const Truth truth = textAsTruth(value.textIndex());
        releaseValue(value);
        return truth;
    }
    case TagNumber:
        return truthOf(value.number() != 0);
    case TagInteger:
        return truthOf(value.integer() != 0);
    default:
        return failed(CellErrorVal);
    }
}

} // namespace

bool popLogical()
{
    return popTruth() == Truth::True;
}

// A condition that cannot be told counts as true.
bool popCondition()
{
    return popTruth() != Truth::False;
}

std::int32_t cutToInteger(double number)
{
    // A value that is a hair below a whole number, as sums of fractions are, means that number.
    constexpr double Hair = 0.00001;
    if (std::isnan(number))
        return 0;
    const double cut = std::trunc(number >= 0 ? number + Hair : number - Hair);
    return static_cast<std::int32_t>(
        std::clamp(cut, static_cast<double>(INT32_MIN), static_cast<double>(INT32_MAX)));
}

std::int32_t popInteger()
{
    if (stackIsEmpty())
        return 0;
    dereferenceTop();
    CellValue value = takeTop();
    switch (value.tag) {
    case TagLogical:
        return value.logical() ? 1 : 0;
    case TagError:
        setPending(value.error());
        return 0;
    case TagText:
        setPending(CellErrorVal);
        releaseValue(value);
        return 0;
    case TagNumber:
    case TagDateTime:
        return cutToInteger(value.number());
    case TagInteger:
        return static_cast<std::int32_t>(value.integer());
    default:
        return 0;
    }
}

std::int32_t popText()
{
    if (stackIsEmpty())
        return -1;
    dereferenceTop();
    const CellValue value = takeTop();
    switch (value.tag) {
    case TagBlank:
        return -1;
    case TagError:
        setPending(value.error());
        return -1;
    case TagText:
        return value.textIndex();
    default:
        return stringPool->addText(valueText(value));
    }
}

std::int32_t popErrorNumber()
{
    if (stackIsEmpty())
        return 0;
    dereferenceTop();
    CellValue value = takeTop();
    if (value.tag == TagError)
        return value.error();
    releaseValue(value);
    return 0;
}

CellValue popRaw()
{
    if (stackIsEmpty())
        return blankValue;
    return takeTop();
}

const CellValue& topValue()
{
    return machine.stackTop == machine.runBase ? blankValue : *machine.stackTop;
}

bool tryPopRange(RangeArgument& out)
{
    if (!readReference(topValue(), out))
        return false;
    ++machine.stackTop;
    return true;
}

bool popRange(RangeArgument& out)
{
    if (tryPopRange(out))
        return true;
    popMany(1);
    setPending(CellErrorRef);
    return false;
}

bool popRangeIterator(CellIterator& iterator)
{
    RangeArgument argument;
    if (!tryPopRange(argument))
        return false;
    iterator.start(argument.firstSheet, argument.lastSheet, argument.range);
    return true;
}

void popMany(int count)
{
    for (; count > 0 && !stackIsEmpty(); --count) {
        CellValue value = takeTop();
        releaseValue(value);
    }
}

void pushNewText(std::u16string_view text)
{
    pushText(stringPool->addText(text));
}

bool checkPendingSlow()
{
    pushError(machine.pendingError);
    setPending(0);
    return false;
}

} // namespace vorn
