// What a value is. These look at a value without asking it for anything, so no error goes through
// them: an error is one more kind of value.

#include "functions/arguments.h"
#include "functions/table.h"

namespace vorn {
namespace {

// Pushes what `test` says of the argument, the value of its cell if it is a reference. Several
// cells are the error of such a reference.
template <typename Test>
void testValue(Test test)
{
    dereferenceTop();
    const PoppedValue value;
    pushLogical(test(value.get()));
}

void testTag(ValueTag tag)
{
    testValue([tag](const CellValue& value) { return value.tag == tag; });
}

} // namespace

void callIsBlank()
{
    testTag(TagBlank);
}

void callIsError()
{
    testTag(TagError);
}

void callIsErr()
{
    testValue([](const CellValue& value) {
        return value.tag == TagError && value.error() != CellErrorNA;
    });
}

void callIsNA()
{
    testValue([](const CellValue& value) {
        return value.tag == TagError && value.error() == CellErrorNA;
    });
}

void callIsLogical()
{
    testTag(TagLogical);
}

// A date is no number here.
void callIsNumber()
{
    testTag(TagNumber);
}

void callIsText()
{
    testTag(TagText);
}

void callIsNonText()
{
    testValue([](const CellValue& value) { return value.tag != TagText; });
}

void callIsRef()
{
    RangeArgument reference;
    const PoppedValue value;
    pushLogical(readReference(value.get(), reference));
}

void callNA()
{
    pushError(CellErrorNA);
}

// Looks at what lies on the stack: a reference is 0 whatever its cell holds, and so is a date.
void callN()
{
    const PoppedValue argument;
    const CellValue& value = argument.get();
    switch (value.tag) {
    case TagLogical:
        pushNumber(value.logical() ? 1 : 0);
        return;
    case TagError:
        pushNumber(value.error());
        return;
    case TagNumber:
        pushNumber(value.number());
        return;
    default:
        pushNumber(0);
    }
}

} // namespace vorn
