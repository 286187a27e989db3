#include "core/pool.h"

#include "core/heap.h"
#include "formula/bytecode.h"

#include <cstring>
#include <string>

namespace vorn {

StringPool* stringPool = nullptr;
FormulaPool* formulaPool = nullptr;

Pool::Pool()
{
    reset();
}

// One free slot always stays, so that the next index is known before it is needed.
bool Pool::reset()
{
    slots_.clear();
    freedSorted_ = true;
    freeHead_ = slots_.resize(1) ? 0 : -1;
    if (freeHead_ == 0)
        slots_[0] = Slot::freeSlot(-1);
    return freeHead_ == 0;
}

std::int32_t Pool::add(const void* bytes, std::size_t size, std::int32_t initialRefs)
{
    const std::int32_t index = addSpace(size, initialRefs);
    if (index != -1)
        std::memcpy(entry(index), bytes, size);
    return index;
}

std::int32_t Pool::addSpace(std::size_t size, std::int32_t initialRefs)
{
    // Without a free slot there is none at all: the first one was refused.
    if (freeHead_ == -1 && !reset())
        return -1;
    const std::size_t blockSize = (sizeof(Header) + size + EntryWord - 1) / EntryWord * EntryWord;
    auto* entry = static_cast<Header*>(heapAlloc(blockSize));
    if (entry == nullptr)
        return -1;
    const std::int32_t index = freeHead_;
    std::int32_t nextFree = slots_[index].next();
    if (nextFree == -1) {
        nextFree = slots_.size();
        if (!slots_.append(Slot::freeSlot(-1))) {
            heapFree(entry);
            return -1;
        }
    }
    std::memset(reinterpret_cast<std::uint8_t*>(entry) + blockSize - EntryWord, 0, EntryWord);
    *entry = {initialRefs, -1};
    slots_[index].entry = entry;
    freeHead_ = nextFree;
    return index;
}

void Pool::freeEntry(std::int32_t index)
{
    heapFree(header(index));
    slots_[index] = Slot::freeSlot(freeHead_);
    freeHead_ = index;
    freedSorted_ = false;
}

void Pool::sortFreed()
{
    if (freedSorted_)
        return;
    freeHead_ = -1;
    for (std::int32_t index = 0; index < slots_.size(); ++index) {
        if (slots_[index].isFree()) {
            slots_[index] = Slot::freeSlot(freeHead_);
            freeHead_ = index;
        }
    }
    freedSorted_ = true;
}

std::int32_t Pool::beginScan()
{
    std::int32_t live = slots_.size();
    while (freeHead_ != -1) {
        const std::int32_t next = slots_[freeHead_].next();
        slots_[freeHead_].entry = nullptr;
        freeHead_ = next;
        --live;
    }
    return live;
}

void Pool::endScan()
{
    for (std::int32_t index = 0; index < slots_.size(); ++index) {
        if (slots_[index].entry == nullptr) {
            slots_[index] = Slot::freeSlot(freeHead_);
            freeHead_ = index;
        } else {
            slots_[index].entry->fileIndex = -1;
        }
    }
    freedSorted_ = true;
}

void Pool::clear()
{
    beginScan();
    for (Slot& slot : slots_) {
        if (slot.entry != nullptr)
            heapFree(slot.entry);
    }
    reset();
}

std::int32_t StringPool::addText(std::u16string_view text)
{
    text = text.substr(0, text.find(u'\0'));
    const std::int32_t index = addTextSpace(text.size());
    if (index != -1)
        text.copy(units(index), text.size());
    return index;
}

void FormulaPool::release(std::int32_t index)
{
    if (index != -1 && refCount(index) == 1)
        releaseByteCodeReferences(code(index));
    Pool::release(index);
}

} // namespace vorn
