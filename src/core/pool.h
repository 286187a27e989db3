// Reference-counted entries by small index: the texts and the byte code of a document. A cell holds
// an index of 32 bits and not a pointer, so that a value stays small and a file can write the
// index. Nothing is shared by content: two cells typed alike hold two entries, only copies share
// one.
//
// Shape:  an entry keeps its address until it is freed. It begins at a multiple of EntryWord bytes
//         and is filled with zeros up to the next one, so that it may be read in such words. Index
//         -1 is "none": the empty text.
// Errors: ErrorMemory, sticky; `add` then returns -1.
#pragma once

#include "core/growarray.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vorn {

constexpr std::size_t EntryWord = 8;

class Pool {
public:
    Pool();

    // Copies `size` bytes into a new entry with `initialRefs` owners. Freed indices are used again,
    // the last freed first.
    std::int32_t add(const void* bytes, std::size_t size, std::int32_t initialRefs);

    // The same, for bytes that the caller writes there before anybody looks.
    std::int32_t addSpace(std::size_t size, std::int32_t initialRefs);

    // Makes the table ready for so many more entries.
    bool reserve(std::int32_t entries) { return slots_.reserve(slots_.size() + entries); }

    // One more owner. Returns the index; -1 is left alone.
    std::int32_t addRef(std::int32_t index)
    {
        if (index != -1)
            ++header(index)->refCount;
        return index;
    }

    // One owner less; the last one frees the entry. -1 is left alone.
    void release(std::int32_t index)
    {
        if (index != -1 && --header(index)->refCount == 0)
            freeEntry(index);
    }

    // The bytes that `add` received. `index` must be a live entry.
    const void* entry(std::int32_t index) const { return header(index) + 1; }
    void* entry(std::int32_t index) { return header(index) + 1; }

    // Is there a live entry under this index?
    bool isLive(std::int32_t index) const
    {
        return index >= 0 && index < slots_.size() && slots_[index].entry != nullptr &&
               !slots_[index].isFree();
    }

    std::int32_t refCount(std::int32_t index) const { return header(index)->refCount; }

    // The number of the entry in the file being written, -1 outside of a save.
    std::int32_t fileIndex(std::int32_t index) const { return header(index)->fileIndex; }
    void setFileIndex(std::int32_t index, std::int32_t number)
    {
        header(index)->fileIndex = number;
    }

    // Makes the slots walkable: a slot is then null or a live entry. Returns the live entries. No
    // entry may be added or released before `endScan`.
    std::int32_t beginScan();
    std::int32_t slotCount() const { return slots_.size(); }
    bool slotIsLive(std::int32_t index) const { return slots_[index].entry != nullptr; }

    // Ends a scan: free slots are chained again, the highest first in use, and the file numbers are
    // taken back.
    void endScan();

    // Gives two live entries each other's index. Neither may have a second owner, who would find
    // other bytes.
    void exchange(std::int32_t a, std::int32_t b) { std::swap(slots_[a], slots_[b]); }

    // Freed indices are used again the highest first from now on, as behind a scan, and not in the
    // order in which they were freed: what comes next then depends on what lives and not on how it
    // came so.
    void sortFreed();

    // Frees every entry, whatever its count.
    void clear();

private:
    struct Header {
        std::int32_t refCount;
        std::int32_t fileIndex;
    };

    // A live slot points at its entry; a free one holds the next free index, shifted up past a set
    // lowest bit, which no address has. Null only stands here between beginScan and endScan.
    union Slot {
        Header* entry;
        std::intptr_t link;

        bool isFree() const { return (link & 1) != 0; }
        std::int32_t next() const { return static_cast<std::int32_t>(link >> 1); }
        static Slot freeSlot(std::int32_t next)
        {
            Slot slot{};
            slot.link = (static_cast<std::intptr_t>(next) * 2) | 1;
            return slot;
        }
    };

    Header* header(std::int32_t index) const { return slots_.data()[index].entry; }
    void freeEntry(std::int32_t index);
    bool reset();

    GrowArray<Slot> slots_;
    std::int32_t freeHead_ = 0;
    bool freedSorted_ = true;
};

// Texts: zero-terminated UTF-16 with the zero. An empty text is index -1 or a real entry.
class StringPool : public Pool {
public:
    // A new entry with one owner. A text ends at its first zero character.
    std::int32_t addText(std::u16string_view text);

    // The same, for a text of so many units, none of them zero, that the caller writes to `units`.
    std::int32_t addTextSpace(std::size_t length)
    {
        return addSpace((length + 1) * sizeof(char16_t), 1); // its fill ends the text
    }
    char16_t* units(std::int32_t index) { return static_cast<char16_t*>(entry(index)); }

    // The zero-terminated text; "" for -1.
    const char16_t* text(std::int32_t index) const
    {
        return index == -1 ? u"" : static_cast<const char16_t*>(entry(index));
    }
};

// Byte code: a 32-bit count of bytes, then the code, ending in opcode 0 (formula/bytecode.h). The
// entry of a formula serves all its copies, since relative references are stored as distances.
class FormulaPool : public Pool {
public:
    // The first instruction of the entry.
    const std::uint8_t* code(std::int32_t index) const
    {
        return static_cast<const std::uint8_t*>(entry(index)) + 4;
    }
    std::uint8_t* code(std::int32_t index) { return static_cast<std::uint8_t*>(entry(index)) + 4; }

    // One owner less; the last one frees the entry with the texts that its code holds.
    void release(std::int32_t index);
};

// The two pools of the process, set by whoever starts the document core.
extern StringPool* stringPool;
extern FormulaPool* formulaPool;

} // namespace vorn
