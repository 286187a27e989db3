#include "core/heap.h"

#include "core/error.h"
#include "core/memory.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <new>

// Small blocks come from chunks of one size each; the chunk's head tells the size, so that a block
// costs nothing beyond its own bytes: a workbook holds a million texts of a few characters. A chunk
// lies at a multiple of its size, so a block finds its chunk by clearing the low bits of its
// address. Chunks come by the dozen from one region, because a region loses up to one chunk to
// alignment. A large block has a region and a chunk of its own.
//
// The sanitizers see a heap of this kind as one allocation and would miss an overrun, so under them
// every block is an allocation of its own, which ends where the block ends.

#if defined(__SANITIZE_ADDRESS__)
#define VORN_BLOCKS_ALONE true
#elif defined(__has_feature)
#define VORN_BLOCKS_ALONE __has_feature(address_sanitizer)
#else
#define VORN_BLOCKS_ALONE false
#endif

namespace vorn {
namespace {

constexpr bool BlocksAlone = VORN_BLOCKS_ALONE;
constexpr std::size_t ChunkSize = 65536;
constexpr std::size_t ChunksInRegion = 16;
constexpr std::size_t Alignment = 8;

// What the address of a chunk is a multiple of, and that of whatever the general allocator gives.
constexpr std::size_t GeneralAlignment = alignof(std::max_align_t);
constexpr std::size_t ChunkAlignment = BlocksAlone ? GeneralAlignment : ChunkSize;

// Sizes up to FineMax are rounded to 8 bytes, above that to a quarter of their power of two.
constexpr std::size_t FineMax = 1024;
constexpr std::size_t FineClasses = FineMax / Alignment + 1;
constexpr std::size_t CoarseDoublings = 4;
constexpr std::size_t SmallMax = BlocksAlone ? 0 : FineMax << CoarseDoublings;
constexpr std::size_t ClassCount = FineClasses + 4 * CoarseDoublings;

struct FreeBlock {
    FreeBlock* next;
};

struct Chunk {
    std::size_t blockSize; // bytes of each block, of the only one in a large chunk
    std::size_t classIndex;
    struct Region* region;
    std::size_t padding;
};

// The head of what the general allocator gave.
struct Region {
    Region* next;
    Region* previous;
    std::size_t bytes;
    std::size_t padding;
};
static_assert(sizeof(Chunk) % GeneralAlignment == 0 && sizeof(Region) % GeneralAlignment == 0);

struct SizeClass {
    FreeBlock* freed = nullptr;
    std::uint8_t* fresh = nullptr; // never used yet, up to the chunk's end
    std::uint8_t* end = nullptr;
};

struct PrivateHeap {
    Region* regions = nullptr;
    std::size_t bytes = 0;
    Region* chunkRegion = nullptr;
    std::uint8_t* freshChunk = nullptr; // never used yet, of chunkRegion
    std::size_t freshChunks = 0;
    SizeClass classes[ClassCount];
};

PrivateHeap* privateHeap = nullptr;

Chunk* chunkOf(void* block)
{
    if (BlocksAlone)
        return static_cast<Chunk*>(block) - 1;
    auto* bytes = static_cast<std::uint8_t*>(block);
    void* chunk = bytes - (reinterpret_cast<std::uintptr_t>(block) & (ChunkSize - 1));
    return static_cast<Chunk*>(chunk);
}

// A region with `size` bytes at a multiple of ChunkAlignment, which `aligned` receives.
Region* newRegion(std::size_t size, std::uint8_t*& aligned)
{
    const std::size_t bytes = sizeof(Region) + size + ChunkAlignment - GeneralAlignment;
    void* allocation = blockResizer(nullptr, bytes);
    if (allocation == nullptr)
        return nullptr;
    auto* region = new (allocation) Region{privateHeap->regions, nullptr, bytes, 0};
    if (region->next != nullptr)
        region->next->previous = region;
    privateHeap->regions = region;
    privateHeap->bytes += bytes;
    const auto start = reinterpret_cast<std::uintptr_t>(region + 1);
    aligned = reinterpret_cast<std::uint8_t*>(region + 1) +
              (ChunkAlignment - start % ChunkAlignment) % ChunkAlignment;
    return region;
}

void freeRegion(Region* region)
{
    if (region->next != nullptr)
        region->next->previous = region->previous;
    if (region->previous != nullptr)
        region->previous->next = region->next;
    else
        privateHeap->regions = region->next;
    privateHeap->bytes -= region->bytes;
    blockResizer(region, 0);
}

// Rounds `size` up to what its class holds.
std::size_t classOf(std::size_t& size)
{
    if (size <= FineMax) {
        size = (size + Alignment - 1) & ~(Alignment - 1);
        return size / Alignment;
    }
    const auto power = static_cast<std::size_t>(std::bit_width(size - 1)) - 1;
    const std::size_t step = (std::size_t{1} << power) / 4;
    size = (size + step - 1) & ~(step - 1);
    const std::size_t doubling = power - static_cast<std::size_t>(std::bit_width(FineMax) - 1);
    return FineClasses + 4 * doubling + (size >> (power - 2)) - 5;
}

bool startChunk(SizeClass& sizeClass, std::size_t blockSize, std::size_t classIndex)
{
    if (privateHeap->freshChunks == 0) {
        privateHeap->chunkRegion = newRegion(ChunksInRegion * ChunkSize, privateHeap->freshChunk);
        if (privateHeap->chunkRegion == nullptr)
            return false;
        privateHeap->freshChunks = ChunksInRegion;
    }
    auto* chunk =
        new (privateHeap->freshChunk) Chunk{blockSize, classIndex, privateHeap->chunkRegion, 0};
    sizeClass.fresh = reinterpret_cast<std::uint8_t*>(chunk + 1);
    sizeClass.end = privateHeap->freshChunk + ChunkSize;
    privateHeap->freshChunk += ChunkSize;
    --privateHeap->freshChunks;
    return true;
}

void* allocSmall(std::size_t size)
{
    const std::size_t classIndex = classOf(size);
    SizeClass& sizeClass = privateHeap->classes[classIndex];
    if (sizeClass.freed != nullptr) {
        FreeBlock* block = sizeClass.freed;
        sizeClass.freed = block->next;
        return block;
    }
    if (static_cast<std::size_t>(sizeClass.end - sizeClass.fresh) < size &&
        !startChunk(sizeClass, size, classIndex))
        return nullptr;
    void* block = sizeClass.fresh;
    sizeClass.fresh += size;
    return block;
}

void* allocLarge(std::size_t size)
{
    if (size > SIZE_MAX / 2)
        return nullptr;
    std::uint8_t* place = nullptr;
    Region* region = newRegion(sizeof(Chunk) + size, place);
    return region == nullptr ? nullptr : new (place) Chunk{size, 0, region, 0} + 1;
}

} // namespace

void createPrivateHeap()
{
    if (privateHeap != nullptr)
        return;
    void* place = blockResizer(nullptr, sizeof(PrivateHeap));
    if (place == nullptr) {
        raiseError(ErrorMemory);
        return;
    }
    privateHeap = new (place) PrivateHeap;
}

void destroyPrivateHeap()
{
    if (privateHeap == nullptr)
        return;
    while (privateHeap->regions != nullptr)
        freeRegion(privateHeap->regions);
    blockResizer(privateHeap, 0);
    privateHeap = nullptr;
}

void* heapAlloc(std::size_t size)
{
    void* block = nullptr;
    if (privateHeap != nullptr) {
        const std::size_t wanted = size == 0 ? Alignment : size;
        block = wanted <= SmallMax ? allocSmall(wanted) : allocLarge(wanted);
    }
    if (block == nullptr)
        raiseError(ErrorMemory);
    return block;
}

void* heapRealloc(void* block, std::size_t size)
{
    if (block == nullptr)
        return heapAlloc(size);
    const std::size_t present = chunkOf(block)->blockSize;
    if (size <= present && size > present / 2)
        return block;
    void* moved = heapAlloc(size);
    if (moved == nullptr)
        return nullptr;
    std::memcpy(moved, block, std::min(size, present));
    heapFree(block);
    return moved;
}

void heapFree(void* block)
{
    if (block == nullptr)
        return;
    Chunk* chunk = chunkOf(block);
    if (chunk->blockSize > SmallMax) {
        freeRegion(chunk->region);
        return;
    }
    SizeClass& sizeClass = privateHeap->classes[chunk->classIndex];
    sizeClass.freed = new (block) FreeBlock{sizeClass.freed};
}

char16_t* duplicateString(std::u16string_view text)
{
    if (text.empty())
        return nullptr;
    const std::size_t bytes = text.size() * sizeof(char16_t);
    auto* copy = static_cast<char16_t*>(heapAlloc(bytes + sizeof(char16_t)));
    if (copy == nullptr)
        return nullptr;
    std::memcpy(copy, text.data(), bytes);
    copy[text.size()] = u'\0';
    return copy;
}

std::size_t heapSize()
{
    return privateHeap == nullptr ? 0 : privateHeap->bytes;
}

} // namespace vorn
