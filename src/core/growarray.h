// The one growing table of the system: sheets, rows, cells of a row, fonts, styles, formats, pool
// slots. A workbook holds many short tables and few long ones, so a table grows by small steps;
// doubling would leave half of their memory idle.
//
// Units:  sizes, indices and steps count elements.
// Shape:  one block, elements side by side. Growing may move it: keep indices, not addresses.
// Errors: ErrorMemory, sticky. A refused growth leaves the table as it was.
#pragma once

#include "core/error.h"
#include "core/memory.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace vorn {

constexpr std::int32_t GrowStepMin = 4;
constexpr std::int32_t GrowStepMax = 1024;

// Elements to add to a full table of `size`: `growBy` where its owner chose one; where that is 0,
// an eighth of the size within the two limits. It rests on the size, not on what is allocated.
constexpr std::int32_t growStep(std::int32_t size, std::int32_t growBy)
{
    return growBy != 0 ? growBy : std::clamp(size / 8, GrowStepMin, GrowStepMax);
}

template <typename Element>
class GrowArray {
    static_assert(std::is_trivially_copyable_v<Element>, "a growing block moves as raw bytes");

public:
    explicit GrowArray(std::int32_t growBy = 0) : growBy_(growBy) {}
    ~GrowArray() { blockResizer(data_, 0); }
    GrowArray(const GrowArray&) = delete;
    GrowArray& operator=(const GrowArray&) = delete;

    std::int32_t size() const { return size_; }
    std::int32_t capacity() const { return capacity_; }
    Element* data() { return data_; }
    const Element* data() const { return data_; }
    Element* begin() { return data_; }
    Element* end() { return data_ + size_; }
    const Element* begin() const { return data_; }
    const Element* end() const { return data_ + size_; }

    Element& operator[](std::int32_t index)
    {
        assert(index >= 0 && index < size_);
        return data_[index];
    }
    const Element& operator[](std::int32_t index) const
    {
        assert(index >= 0 && index < size_);
        return data_[index];
    }

    // Makes the table `newSize` long; new elements are default ones. The first allocation is exact;
    // later ones add the step. Answers whether that was possible. `newGrowBy` of -1 keeps the step.
    bool resize(std::int32_t newSize, std::int32_t newGrowBy = -1)
    {
        assert(newSize >= 0);
        if (newGrowBy != -1)
            growBy_ = newGrowBy;
        if (newSize == 0) {
            clear();
            return true;
        }
        if (newSize > capacity_ && !grow(newSize))
            return false;
        // As bytes: an assignment in a loop is slow for records whose fields are not aligned.
        const Element fresh{};
        for (std::int32_t index = size_; index < newSize; ++index)
            std::memcpy(static_cast<void*>(data_ + index), &fresh, sizeof fresh);
        size_ = newSize;
        return true;
    }

    // Allocates for `size` elements, most of which are still to come.
    bool reserve(std::int32_t size) { return size <= capacity_ || reallocate(size); }

    // By value, because `element` may be one of ours, in the block that is about to move.
    bool append(Element element)
    {
        if (!resize(size_ + 1))
            return false;
        data_[size_ - 1] = element;
        return true;
    }

    // Takes one element out and closes the gap.
    void removeAt(std::int32_t index)
    {
        assert(index >= 0 && index < size_);
        std::copy(data_ + index + 1, data_ + size_, data_ + index);
        --size_;
    }

    // Frees everything.
    void clear()
    {
        blockResizer(data_, 0);
        data_ = nullptr;
        size_ = 0;
        capacity_ = 0;
    }

private:
    bool grow(std::int32_t newSize)
    {
        return reallocate(
            data_ == nullptr ? newSize : std::max(newSize, capacity_ + growStep(size_, growBy_)));
    }

    bool reallocate(std::int32_t wanted)
    {
        // A table of pointers has elements of a pointer's size.
        const std::size_t bytes = static_cast<std::size_t>(wanted) *
                                  sizeof(Element); // NOLINT(bugprone-sizeof-expression)
        void* block = blockResizer(data_, bytes);
        if (block == nullptr) {
            raiseError(ErrorMemory);
            return false;
        }
        data_ = static_cast<Element*>(block);
        capacity_ = wanted;
        return true;
    }

    Element* data_ = nullptr;
    std::int32_t size_ = 0;
    std::int32_t capacity_ = 0;
    std::int32_t growBy_;
};

} // namespace vorn
