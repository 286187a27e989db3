// What a search in cells looks for. A key is compared with the values of cells as compareValues
// does it, without case: kinds ascend number, date, text, logical, error, blank. Most keys are
// numbers or texts that meet cells of their own kind, so there is a key for each of these that
// looks at a cell where it lies, and a search is compiled once for each.
//
// A key answers `order`, what it is to a cell that exists, or `isEqual`, only whether it is equal
// to it; values of different kinds never are. It is given the cell's value as it is stored: whether
// this is a formula is asked only if it is not of the key's own kind.
//
// Shape:  a key refers to the value it was made of, which must live as long.
// Errors: none.
#pragma once

#include "core/formulacell.h"
#include "core/pool.h"
#include "core/value.h"
#include "platform/textrules.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorn {

// What a key is to a cell.
struct Order {
    bool isEqual;
    bool isAbove;
};

// A cell that does not exist is above every key.
constexpr Order ToMissingCell{false, false};

inline Order orderOf(int comparison)
{
    return {comparison == 0, comparison > 0};
}

inline const CellValue& shownValue(const CellValue& stored)
{
    return stored.tag == TagFormula ? stored.formula()->result : stored;
}

// A number, or the serial of a date, for an order.
class NumberKey {
public:
    explicit NumberKey(const CellValue& key) : key_(&key), number_(key.number()), tag_(key.tag) {}

    Order order(const CellValue& stored) const
    {
        const CellValue& value = stored.tag == tag_ ? stored : shownValue(stored);
        if (value.tag != tag_)
            return orderOf(compareValues(key_, &value, IgnoreCase));
        return {number_ == value.number(), number_ > value.number()};
    }

private:
    const CellValue* key_;
    double number_;
    std::uint8_t tag_;
};

// The same for an equal. Equal numbers have equal bits, save that 0 has two forms and that what is
// no number equals nothing: these two are no keys of this kind.
class NumberBitsKey {
public:
    static bool suits(const CellValue& key) { return key.number() < 0 || key.number() > 0; }

    explicit NumberBitsKey(const CellValue& key) : bits_(key.get<std::uint64_t>()), tag_(key.tag) {}

    bool isEqual(const CellValue& stored) const
    {
        if (stored.tag == tag_) [[likely]]
            return stored.get<std::uint64_t>() == bits_;
        return stored.tag == TagFormula && isEqual(stored.formula()->result);
    }

private:
    std::uint64_t bits_;
    std::uint8_t tag_;
};

// A text, whose case is folded once and not at each cell. Texts are compared in words of the pool
// for as long as they agree to the letter.
class TextKey {
public:
    static constexpr std::size_t LengthMax = 127;

    static bool suits(const CellValue& key)
    {
        return std::u16string_view(valueTextPointer(key)).size() <= LengthMax;
    }

    explicit TextKey(const CellValue& key) : key_(&key)
    {
        const std::u16string_view text = valueTextPointer(key);
        std::copy(text.begin(), text.end(), units_);
        std::fill_n(units_ + text.size(), WordUnits, u'\0');
        std::transform(text.begin(), text.end(), folded_, lowerUnit);
        folded_[text.size()] = u'\0';
        length_ = text.size();
    }

    bool isEqual(const CellValue& stored) const
    {
        const CellValue& value = stored.tag == TagText ? stored : shownValue(stored);
        return value.tag == TagText && compareText(value) == 0;
    }

    Order order(const CellValue& stored) const
    {
        const CellValue& value = stored.tag == TagText ? stored : shownValue(stored);
        return orderOf(value.tag == TagText ? compareText(value)
                                            : compareValues(key_, &value, IgnoreCase));
    }

private:
    using Word = std::uint64_t;
    static constexpr std::size_t WordUnits = sizeof(Word) / sizeof(char16_t);
    static_assert(sizeof(Word) == EntryWord);

    static Word wordAt(const char16_t* units)
    {
        Word word;
        std::memcpy(&word, units, sizeof word);
        return word;
    }

    // The unit at which two words differ.
    static std::size_t firstDifference(Word a, Word b)
    {
        const int bits = std::endian::native == std::endian::little ? std::countr_zero(a ^ b)
                                                                    : std::countl_zero(a ^ b);
        return static_cast<std::size_t>(bits) / (8 * sizeof(char16_t));
    }

    int compareText(const CellValue& value) const
    {
        const std::int32_t index = value.textIndex();
        if (index == -1)
            return length_ == 0 ? 0 : 1;
        const auto* other = static_cast<const char16_t*>(stringPool->entry(index));
        for (std::size_t place = 0; place <= length_; place += WordUnits) {
            const Word ours = wordAt(units_ + place);
            const Word theirs = wordAt(other + place);
            if (ours != theirs)
                return compareFrom(place + firstDifference(ours, theirs), other);
        }
        return 0;
    }

    // The rest of the comparison, unit by unit: up to `place` the texts agree.
    int compareFrom(std::size_t place, const char16_t* other) const
    {
        for (; place <= length_; ++place) {
            const char16_t folded = lowerUnit(other[place]);
            if (folded_[place] != folded)
                return folded_[place] < folded ? -1 : 1;
        }
        return 0;
    }

    const CellValue* key_;
    std::size_t length_;
    char16_t units_[LengthMax + WordUnits];
    char16_t folded_[LengthMax + 1];
};

// Any other kind, and a text that is too long to be held folded.
class OtherKey {
public:
    explicit OtherKey(const CellValue& key) : key_(&key) {}

    bool isEqual(const CellValue& stored) const { return order(stored).isEqual; }

    Order order(const CellValue& stored) const
    {
        return orderOf(compareValues(key_, &shownValue(stored), IgnoreCase));
    }

private:
    const CellValue* key_;
};

// A key for an equal in the place of one for an order: whatever is not equal is above it.
template <typename Key>
struct EqualOnly {
    const Key& key;

    Order order(const CellValue& stored) const { return {key.isEqual(stored), false}; }
};

template <typename Key>
EqualOnly(const Key&) -> EqualOnly<Key>;

// Runs `search` with the key in the form that suits it best, one that answers `order`.
template <typename Search>
auto searchOrder(const CellValue& key, Search search)
{
    if (key.tag == TagNumber || key.tag == TagDateTime)
        return search(NumberKey(key));
    return key.tag == TagText && TextKey::suits(key) ? search(TextKey(key)) : search(OtherKey(key));
}

// The same, one that answers `isEqual`.
template <typename Search>
auto searchEqual(const CellValue& key, Search search)
{
    if ((key.tag == TagNumber || key.tag == TagDateTime) && NumberBitsKey::suits(key))
        return search(NumberBitsKey(key));
    return key.tag == TagText && TextKey::suits(key) ? search(TextKey(key)) : search(OtherKey(key));
}

} // namespace vorn
