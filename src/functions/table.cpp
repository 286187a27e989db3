#include "functions/table.h"

#include "core/value.h"
#include "formula/machine.h"
#include "platform/textrules.h"

#include <array>
#include <cstddef>

namespace vorn {
namespace {

// Stands in for a body that is not there yet.
void callMissing()
{
    popMany(machine.argumentCount);
    pushError(CellErrorName);
}

constexpr std::u16string_view RowNames[FunctionRowCount] = {
#define FUNCTION(row, name, least, most, category, usage, help) u"" #name,
#define PENDING FUNCTION
#define ACTION(row, name, count) u"",
#define PENDING_ACTION ACTION
#include "functions/functions.def"
#undef FUNCTION
#undef PENDING
#undef ACTION
#undef PENDING_ACTION
};

// The rows stand at their numbers.
constexpr int RowNumbers[] = {
#define FUNCTION(row, name, least, most, category, usage, help) row,
#define PENDING FUNCTION
#define ACTION(row, name, count) row,
#define PENDING_ACTION ACTION
#include "functions/functions.def"
#undef FUNCTION
#undef PENDING
#undef ACTION
#undef PENDING_ACTION
};

constexpr bool rowsAreInOrder()
{
    for (std::size_t row = 0; row < std::size(RowNumbers); ++row)
        if (RowNumbers[row] != static_cast<int>(row))
            return false;
    return std::size(RowNumbers) == FunctionRowCount;
}
static_assert(rowsAreInOrder());

// Names are of ASCII letters and digits, so their case is one bit. A unit that is no ASCII letter
// becomes another one that is no letter, and is told apart when the name is compared.
constexpr char16_t fold(char16_t unit)
{
    return isAsciiLetter(unit) ? static_cast<char16_t>(unit | 0x20) : unit;
}

constexpr std::size_t findLongestName()
{
    std::size_t longest = 0;
    for (std::u16string_view name : RowNames)
        longest = name.size() > longest ? name.size() : longest;
    return longest;
}

constexpr std::size_t LongestName = findLongestName();

constexpr bool sameName(std::u16string_view a, std::u16string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (fold(a[i]) != fold(b[i]))
            return false;
    return true;
}

// Every word of a document that is read is looked up here, and most are no names. So the table is
// made when the program is compiled, and sparse, so that a miss ends at once; and a name is found
// by its length and four of its characters, since a look at each costs more than it saves.
constexpr int SlotBits = 10;
constexpr std::size_t SlotCount = std::size_t{1} << SlotBits;
constexpr std::uint8_t FreeSlot = 255;
static_assert(FunctionRowCount <= FreeSlot);

// Names that may share a place and those behind it. A new name that is too like others is told
// here.
constexpr std::size_t ProbeMax = 3;

// `name` is not empty. The low five bits of a letter are the same in both cases.
constexpr std::size_t slotOf(std::u16string_view name)
{
    const std::size_t length = name.size();
    const char16_t picked[] = {name[0], name[length / 3], name[length * 2 / 3], name[length - 1]};
    auto key = static_cast<std::uint32_t>(length);
    for (char16_t unit : picked)
        key = key * 32 + (unit & 31U);
    return (key * 0x9e3779b1U) >> (32 - SlotBits);
}

struct NameSlots {
    std::array<std::uint8_t, SlotCount> rows{};
    std::size_t longestProbe = 0;
};

constexpr NameSlots makeSlots()
{
    NameSlots slots;
    slots.rows.fill(FreeSlot);
    for (std::size_t row = 0; row < FunctionRowCount; ++row) {
        if (RowNames[row].empty())
            continue;
        std::size_t slot = slotOf(RowNames[row]);
        std::size_t probe = 1;
        for (; slots.rows[slot] != FreeSlot; ++probe)
            slot = (slot + 1) % SlotCount;
        slots.rows[slot] = static_cast<std::uint8_t>(row);
        slots.longestProbe = probe > slots.longestProbe ? probe : slots.longestProbe;
    }
    return slots;
}

constexpr NameSlots RowSlots = makeSlots();
static_assert(RowSlots.longestProbe <= ProbeMax);

constexpr std::u16string_view CategoryTitles[CategoryCount] = {
    u"All",
    u"Most Recently Used",
    u"Math & Trig",
    u"Statistical",
    u"Financial",
    u"Date & Time",
    u"Logical",
    u"Text",
    u"Information & Lookup",
    u"Database",
    u"Task",
};

} // namespace

constinit const FunctionRow FunctionTable[FunctionRowCount] = {
#define FUNCTION(row, name, least, most, category, usage, help)                                    \
    {call##name, least, most, category, u"" #name, usage, help},
#define PENDING(row, name, least, most, category, usage, help)                                     \
    {callMissing, least, most, category, u"" #name, usage, help},
#define ACTION(row, name, count) {call##name, count, count, CategoryAll, u"", u"", u""},
#define PENDING_ACTION(row, name, count) {callMissing, count, count, CategoryAll, u"", u"", u""},
#include "functions/functions.def"
#undef FUNCTION
#undef PENDING
#undef ACTION
#undef PENDING_ACTION
};

int findFunction(std::u16string_view name)
{
    if (name.empty() || name.size() > LongestName)
        return -1;
    std::size_t slot = slotOf(name);
    for (; RowSlots.rows[slot] != FreeSlot; slot = (slot + 1) % SlotCount)
        if (sameName(RowNames[RowSlots.rows[slot]], name))
            return RowSlots.rows[slot];
    return -1;
}

std::u16string_view categoryTitle(int category)
{
    return category >= 0 && category < CategoryCount ? CategoryTitles[category] : u"";
}

} // namespace vorn
