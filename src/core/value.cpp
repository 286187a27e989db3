#include "core/value.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "platform/textrules.h"

namespace vorn {

std::u16string cellErrorText(std::int32_t error)
{
    switch (error) {
    case CellErrorNull:
        return u"!!Null";
    case CellErrorDiv0:
        return u"!!Div0";
    case CellErrorVal:
        return u"!!Val";
    case CellErrorRef:
        return u"!!Ref";
    case CellErrorName:
        return u"!!Name";
    case CellErrorNum:
        return u"!!Num";
    case CellErrorNA:
        return u"!!NA";
    default:
        break;
    }
    const std::string digits = std::to_string(error);
    return u"Err" + std::u16string(digits.begin(), digits.end());
}

void makeTextValue(CellValue& value, std::u16string_view text)
{
    value = CellValue::makeTextIndex(stringPool->addText(text));
}

const char16_t* valueTextPointer(const CellValue& value)
{
    return stringPool->text(value.textIndex());
}

void releaseOwned(const CellValue& value, ChainHandling handling)
{
    if (value.tag == TagText) {
        stringPool->release(value.textIndex());
    } else if (value.tag == TagFormula) {
        FormulaCell* cell = value.formula();
        if (handling == RemoveFromChain)
            calcChain.remove(cell);
        deleteFormulaCell(cell);
    }
}

void copyValue(const CellValue& from, CellValue& to)
{
    to = from;
    if (from.tag == TagText)
        stringPool->addRef(from.textIndex());
}

int compareTexts(const char16_t* a, const char16_t* b, CaseRule rule)
{
    for (;; ++a, ++b) {
        if (*a != *b) {
            const char16_t unitA = rule == IgnoreCase ? lowerUnit(*a) : *a;
            const char16_t unitB = rule == IgnoreCase ? lowerUnit(*b) : *b;
            if (unitA != unitB)
                return unitA < unitB ? -1 : 1;
        }
        if (*a == u'\0')
            return 0;
    }
}

namespace {

// The place of each kind in the order of kinds; what no cell holds has none.
constexpr int NoKind = -1;

int kindOrder(std::uint8_t tag)
{
    switch (tag) {
    case TagNumber:
        return 0;
    case TagDateTime:
        return 1;
    case TagText:
        return 2;
    case TagLogical:
        return 3;
    case TagError:
        return 4;
    case TagBlank:
        return 5;
    default:
        return NoKind;
    }
}

// Unordered gives -1.
template <typename Number>
int compareNumbers(Number a, Number b)
{
    if (a > b)
        return 1;
    return a == b ? 0 : -1;
}

int compareSameKind(const CellValue& a, const CellValue& b, CaseRule rule)
{
    switch (a.tag) {
    case TagLogical:
        if (a.logical() == b.logical())
            return 0;
        return a.logical() ? 1 : -1;
    case TagError:
        return compareNumbers(a.error(), b.error());
    case TagText:
        return compareTexts(valueTextPointer(a), valueTextPointer(b), rule);
    case TagNumber:
    case TagDateTime:
        return compareNumbers(a.number(), b.number());
    default:
        return 0;
    }
}

} // namespace

int compareValues(const CellValue* a, const CellValue* b, CaseRule rule)
{
    if (a == nullptr)
        return b == nullptr ? 0 : 1;
    if (b == nullptr)
        return -1;
    if (a->tag == b->tag)
        return compareSameKind(*a, *b, rule);
    const int order = kindOrder(a->tag);
    return order != NoKind && order > kindOrder(b->tag) ? 1 : -1;
}

} // namespace vorn
