// The one value of the system: what a cell holds, what travels on the evaluation stack, and what
// byte code and undo programs carry in their operands. Because the same bytes stand in all of them,
// the layout is a format.
//
// CellValue, 12 bytes, no alignment:
//   offset size meaning
//   0      1    the ValueTag
//   1      1    reserved, 0
//   2      1    first sheet, tags 8 and 9 only
//   3      1    last sheet, tags 8 and 9 only
//   4      8    the payload by tag:
//               1        32 bits, 0 or 1
//               2        32 bits, a CellError
//               3        32 bits, a StringPool index; the value owns one reference of it
//               4, 13    a 64-bit float, unaligned
//               5        32 bits, the handle of a FormulaCell, which the cell owns
//               6, 8     a resolved CellRef
//               7, 9     a resolved RangeRef
//               10       an address in byte code, on the stack only
//               11       a 32-bit integer, on the stack only
//
// Shape:  plain bytes. Copying the struct copies no ownership: copyValue does, and releaseValue
//         gives it back. The payload is copied in and out; nothing may point into it.
#pragma once

#include "core/reference.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vorn {

struct FormulaCell;

enum ValueTag : std::uint8_t {
    TagBlank = 0,
    TagLogical = 1,
    TagError = 2,
    TagText = 3,
    TagNumber = 4,
    TagFormula = 5,
    TagCellRef = 6,
    TagRangeRef = 7,
    TagSheetCellRef = 8,
    TagSheetRangeRef = 9,
    TagReturnAddress = 10,
    TagInteger = 11,
    TagDateTime = 13,
};

// Errors that are data. They have nothing to do with the codes of core/error.h.
enum CellError : std::int32_t {
    CellErrorNull = 0,
    CellErrorDiv0 = 7,
    CellErrorVal = 15,
    CellErrorRef = 23,
    CellErrorName = 29,
    CellErrorNum = 36,
    CellErrorNA = 42,
};

// "!!Div0" and so on; "ErrN" for a number that has no text.
std::u16string cellErrorText(std::int32_t error);

struct CellValue {
    std::uint8_t tag = TagBlank;
    std::uint8_t reserved = 0;
    std::uint8_t firstSheet = 0;
    std::uint8_t lastSheet = 0;
    std::uint8_t payload[8] = {};

    template <typename Payload>
    Payload get() const
    {
        static_assert(sizeof(Payload) <= sizeof payload);
        Payload value;
        std::memcpy(&value, payload, sizeof value);
        return value;
    }
    template <typename Payload>
    void put(ValueTag newTag, Payload value)
    {
        static_assert(sizeof(Payload) <= sizeof payload);
        tag = newTag;
        std::memcpy(payload, &value, sizeof value);
    }

    double number() const { return get<double>(); }
    bool logical() const { return get<std::int32_t>() != 0; }
    std::int32_t error() const { return get<std::int32_t>(); }
    std::int32_t textIndex() const { return get<std::int32_t>(); }
    std::uint32_t integer() const { return get<std::uint32_t>(); }
    FormulaCell* formula() const; // core/formulacell.h has it, and makeFormula
    CellRef cellRef() const { return get<CellRef>(); }
    RangeRef rangeRef() const { return get<RangeRef>(); }

    static CellValue makeBlank() { return {}; }
    static CellValue makeNumber(double number) { return make(TagNumber, number); }
    static CellValue makeDate(double serial) { return make(TagDateTime, serial); }
    static CellValue makeLogical(bool logical)
    {
        return make(TagLogical, static_cast<std::int32_t>(logical));
    }
    static CellValue makeError(std::int32_t error) { return make(TagError, error); }
    static CellValue makeFormula(const FormulaCell* formula);

    static CellValue makeCellRef(CellRef cell) { return make(TagCellRef, cell); }
    static CellValue makeRangeRef(const RangeRef& range) { return make(TagRangeRef, range); }
    static CellValue makeInteger(std::uint32_t integer) { return make(TagInteger, integer); }

    // Takes over one reference to the pool entry.
    static CellValue makeTextIndex(std::int32_t index) { return make(TagText, index); }

private:
    template <typename Payload>
    static CellValue make(ValueTag tag, Payload payload)
    {
        CellValue value;
        value.put(tag, payload);
        return value;
    }
};
static_assert(sizeof(CellValue) == 12 && alignof(CellValue) == 1);
static_assert(offsetof(CellValue, firstSheet) == 2 && offsetof(CellValue, payload) == 4);

enum ChainHandling { KeepOnChain, RemoveFromChain };

// Enters the text in the StringPool. The old content of `value` is not released.
void makeTextValue(CellValue& value, std::u16string_view text);

// The text of a TagText value.
const char16_t* valueTextPointer(const CellValue& value);

// Drops what the value owns and makes it blank. A formula goes with its record; it is taken off the
// calculation chain first if `handling` says so.
void releaseOwned(const CellValue& value, ChainHandling handling);
inline void releaseValue(CellValue& value, ChainHandling handling = RemoveFromChain)
{
    if (value.tag == TagText || value.tag == TagFormula)
        releaseOwned(value, handling);
    value.tag = TagBlank;
}

// Copies a value that is not a formula; a text gets one more owner. The old content of `to` is not
// released.
void copyValue(const CellValue& from, CellValue& to);

enum CaseRule { IgnoreCase, MatchCase };

// The order of texts by UTF-16 unit, without case if asked: negative, 0 or positive.
int compareTexts(const char16_t* a, const char16_t* b, CaseRule rule);

// The three-way order of sort, lookups and criteria; positive when `a` sorts after `b`. Null stands
// for a cell that does not exist, and sorts after everything. Kinds ascend number, date, text,
// logical, error, blank; a number and a date are never equal. An unordered comparison gives -1.
int compareValues(const CellValue* a, const CellValue* b, CaseRule rule);

} // namespace vorn
