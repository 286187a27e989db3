#include "core/heap.h"

#include "core/error.h"
#include "support/dice.h"
#include "support/refusal.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

// A heap of its own for each test; nothing of it may be left behind.
class Heap : public testing::Test {
protected:
    Heap()
    {
        destroyPrivateHeap();
        clearError();
        createPrivateHeap();
    }
    ~Heap() override
    {
        destroyPrivateHeap();
        clearError();
        EXPECT_EQ(heapSize(), 0U);
    }
};

// A block with contents that nobody else writes.
struct Block {
    std::uint8_t* bytes = nullptr;
    std::size_t size = 0;
    unsigned seed = 0;

    std::uint8_t byteAt(std::size_t index) const
    {
        return static_cast<std::uint8_t>(seed + index * 31);
    }
    void fill() const
    {
        for (std::size_t index = 0; index < size; ++index)
            bytes[index] = byteAt(index);
    }
    bool isIntact(std::size_t count) const
    {
        for (std::size_t index = 0; index < count; ++index) {
            if (bytes[index] != byteAt(index))
                return false;
        }
        return true;
    }
};

Block allocated(std::size_t size, unsigned seed)
{
    const Block block{static_cast<std::uint8_t*>(heapAlloc(size)), size, seed};
    if (block.bytes != nullptr)
        block.fill();
    return block;
}

// Every size about which the heap may think differently: all small ones, then the neighbours of
// the powers of two and of their quarters, up to 200 KB.
std::vector<std::size_t> telling()
{
    std::vector<std::size_t> sizes;
    for (std::size_t size = 0; size <= 80; ++size)
        sizes.push_back(size);
    for (std::size_t power = 128; power <= 131072; power *= 2) {
        for (std::size_t quarter = 4; quarter < 8; ++quarter) {
            for (std::size_t offset = 0; offset < 3; ++offset)
                sizes.push_back(power * quarter / 4 + offset - 1);
        }
    }
    sizes.insert(sizes.end(), {65535 - 32, 65536 - 32, 65537 - 32, 200 * 1024});
    return sizes;
}

TEST_F(Heap, givesWholeBlocksOfAnySize)
{
    std::vector<Block> blocks;
    for (int copy = 0; copy < 3; ++copy) {
        for (std::size_t size : telling()) {
            blocks.push_back(allocated(size, static_cast<unsigned>(blocks.size())));
            ASSERT_NE(blocks.back().bytes, nullptr) << size;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back().bytes) % 8, 0U) << size;
        }
    }
    for (const Block& block : blocks)
        EXPECT_TRUE(block.isIntact(block.size)) << block.size;
    EXPECT_FALSE(errorStands());
    for (const Block& block : blocks)
        heapFree(block.bytes);
}

TEST_F(Heap, usesAFreedBlockAgainBeforeItAsksForMore)
{
    for (std::size_t size : {std::size_t{1}, std::size_t{24}, std::size_t{1000}, std::size_t{16384},
                             std::size_t{100000}}) {
        heapFree(heapAlloc(size));
        const std::size_t before = heapSize();
        for (int count = 0; count < 5000; ++count)
            heapFree(heapAlloc(size));
        EXPECT_EQ(heapSize(), before) << size;
    }
}

TEST_F(Heap, keepsTheContentsOfABlockThatGrowsOrShrinks)
{
    const std::vector<std::size_t> sizes = telling();
    unsigned seed = 0;
    for (std::size_t from : sizes) {
        for (std::size_t to :
             {std::size_t{1}, from / 3, from, from + 1, 2 * from, std::size_t{70000}}) {
            Block block = allocated(from, ++seed);
            block.bytes = static_cast<std::uint8_t*>(heapRealloc(block.bytes, to));
            ASSERT_NE(block.bytes, nullptr);
            EXPECT_TRUE(block.isIntact(std::min(from, to))) << from << " to " << to;
            block.size = to;
            block.fill();
            EXPECT_TRUE(block.isIntact(to));
            heapFree(block.bytes);
        }
    }
}

TEST_F(Heap, reallocatesNothingIntoANewBlock)
{
    void* block = heapRealloc(nullptr, 100);
    ASSERT_NE(block, nullptr);
    std::memset(block, 1, 100);
    heapFree(block);
}

TEST_F(Heap, freesNothingWithoutComplaint)
{
    heapFree(nullptr);
    EXPECT_FALSE(errorStands());
}

TEST_F(Heap, isMadeOnceAndKeptByASecondCreation)
{
    const Block block = allocated(50, 3);
    const std::size_t size = heapSize();
    createPrivateHeap();
    EXPECT_EQ(heapSize(), size);
    EXPECT_TRUE(block.isIntact(50));
}

TEST_F(Heap, copiesATextWithItsZero)
{
    const struct {
        const char* phrase;
        std::u16string text;
    } cases[] = {
        {"one character",  u"a"                 },
        {"seven and zero", u"seven77"           },
        {"a long text",    std::u16string(100000, u'x')},
        {"no letters",                u"\xd800\xffff"                         },
    };
    for (const auto& c : cases) {
        const char16_t* copy = duplicateString(c.text);
        ASSERT_NE(copy, nullptr) << c.phrase;
        EXPECT_NE(copy, c.text.data()) << c.phrase;
        EXPECT_EQ(std::u16string(copy), c.text) << c.phrase;
    }
}

TEST_F(Heap, copiesNoEmptyText)
{
    EXPECT_EQ(duplicateString(u""), nullptr);
    EXPECT_EQ(duplicateString({}), nullptr);
    EXPECT_FALSE(errorStands());
}

TEST_F(Heap, givesEverythingBackWhenItIsDestroyed)
{
    destroyPrivateHeap();
    const AllocationWatch watch;
    createPrivateHeap();
    for (std::size_t size : telling())
        allocated(size, 0);
    duplicateString(u"a text that nobody frees");
    EXPECT_GT(heapSize(), 200U * 1024U);
    EXPECT_GT(watch.liveBlocks(), 0);
    destroyPrivateHeap();
    EXPECT_EQ(heapSize(), 0U);
    EXPECT_EQ(watch.liveBlocks(), 0);
    destroyPrivateHeap();
    EXPECT_EQ(watch.liveBlocks(), 0);
}

TEST_F(Heap, givesBackLargeBlocksAtOnce)
{
    const std::size_t before = heapSize();
    void* block = heapAlloc(1000000);
    EXPECT_GT(heapSize(), before + 1000000);
    heapFree(block);
    EXPECT_EQ(heapSize(), before);
}

TEST_F(Heap, refusesWhileThereIsNone)
{
    destroyPrivateHeap();
    EXPECT_EQ(heapAlloc(8), nullptr);
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
    EXPECT_EQ(duplicateString(u"text"), nullptr);
    EXPECT_EQ(errorState.code, ErrorMemory);
}

TEST_F(Heap, refusesWhatNoMachineHas)
{
    EXPECT_EQ(heapAlloc(SIZE_MAX), nullptr);
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
    EXPECT_EQ(heapAlloc(SIZE_MAX - 100), nullptr);
    EXPECT_EQ(errorState.code, ErrorMemory);
}

TEST_F(Heap, keepsItsBlocksWhenAnyOneAllocationIsRefused)
{
    constexpr std::size_t Sizes[] = {8, 3000, 8, 20000, 100, 200000, 3000, 8};
    destroyPrivateHeap();
    bool refusedOne = true;
    for (int refused = 1; refusedOne; ++refused) {
        const AllocationWatch watch(refused);
        clearError();
        createPrivateHeap();
        std::vector<Block> blocks;
        for (std::size_t size : Sizes) {
            const Block block = allocated(size, static_cast<unsigned>(size));
            if (block.bytes != nullptr)
                blocks.push_back(block);
        }
        for (const Block& block : blocks)
            EXPECT_TRUE(block.isIntact(block.size)) << refused;
        refusedOne = watch.refused();
        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone) << refused;
        EXPECT_EQ(blocks.size() == std::size(Sizes), !refusedOne) << refused;
        destroyPrivateHeap();
        EXPECT_EQ(watch.liveBlocks(), 0) << refused;
    }
}

TEST_F(Heap, leavesABlockAsItWasWhenItsGrowthIsRefused)
{
    Block block = allocated(1000, 5);
    {
        const AllocationWatch watch(1);
        EXPECT_EQ(heapRealloc(block.bytes, 500000), nullptr);
        EXPECT_EQ(errorState.code, ErrorMemory);
    }
    EXPECT_TRUE(block.isIntact(1000));
    clearError();
    block.bytes = static_cast<std::uint8_t*>(heapRealloc(block.bytes, 500000));
    ASSERT_NE(block.bytes, nullptr);
    EXPECT_TRUE(block.isIntact(1000));
}

#if defined(__SANITIZE_ADDRESS__)
TEST_F(Heap, showsTheSanitizersTheEndOfEachBlock)
{
    for (std::size_t size : {std::size_t{1}, std::size_t{24}, std::size_t{5000}}) {
        auto* bytes = static_cast<volatile std::uint8_t*>(heapAlloc(size));
        EXPECT_DEATH(bytes[size] = 1, "heap-buffer-overflow") << size;
        heapFree(const_cast<std::uint8_t*>(bytes));
        EXPECT_DEATH(bytes[0] = 1, "heap-use-after-free") << size;
    }
}
#endif

// Blocks of every kind come and go in any order; none may touch another.
TEST_F(Heap, isTheSameAsAShadowModelWhateverIsDone)
{
    Dice random(8191);
    std::vector<Block> blocks;
    const auto anySize = [&random] {
        return static_cast<std::size_t>(random.below((1 << random.below(18)) + 1));
    };
    const auto anyBlock = [&] {
        return blocks.begin() + random.below(static_cast<int>(blocks.size()));
    };
    for (int step = 0; step < 20000; ++step) {
        const int choice = random.below(8);
        if (choice < 4 || blocks.empty()) {
            blocks.push_back(allocated(anySize(), random.any()));
            ASSERT_NE(blocks.back().bytes, nullptr);
        } else if (choice < 7) {
            const auto block = anyBlock();
            ASSERT_TRUE(block->isIntact(block->size)) << step;
            heapFree(block->bytes);
            *block = blocks.back();
            blocks.pop_back();
        } else {
            Block& block = *anyBlock();
            const std::size_t size = anySize();
            block.bytes = static_cast<std::uint8_t*>(heapRealloc(block.bytes, size));
            ASSERT_NE(block.bytes, nullptr);
            ASSERT_TRUE(block.isIntact(std::min(block.size, size))) << step;
            block.size = size;
            block.fill();
        }
    }
    for (const Block& block : blocks)
        EXPECT_TRUE(block.isIntact(block.size));
}

} // namespace
} // namespace vorn
