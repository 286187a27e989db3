#include "core/pool.h"

#include "core/error.h"
#include "core/heap.h"
#include "support/dice.h"
#include "support/refusal.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace vorn {
namespace {

class PoolTest : public testing::Test {
protected:
    PoolTest()
    {
        destroyPrivateHeap();
        clearError();
        createPrivateHeap();
    }
    ~PoolTest() override
    {
        destroyPrivateHeap();
        clearError();
    }
};

std::int32_t add(Pool& pool, const std::string& bytes, std::int32_t refs = 1)
{
    return pool.add(bytes.c_str(), bytes.size() + 1, refs);
}

std::string bytesOf(const Pool& pool, std::int32_t index)
{
    return static_cast<const char*>(pool.entry(index));
}

TEST_F(PoolTest, givesIndicesInOrder)
{
    Pool pool;
    EXPECT_EQ(add(pool, "zero"), 0);
    EXPECT_EQ(add(pool, "one"), 1);
    for (int index = 2; index < 3000; ++index)
        ASSERT_EQ(add(pool, std::to_string(index)), index);
    EXPECT_EQ(bytesOf(pool, 0), "zero");
    EXPECT_EQ(bytesOf(pool, 2999), "2999");
    EXPECT_EQ(pool.refCount(0), 1);
    EXPECT_EQ(pool.fileIndex(0), -1);
}

TEST_F(PoolTest, growsOnceForEntriesThatAreAnnounced)
{
    const auto allocations = [](std::int32_t announced) {
        destroyPrivateHeap();
        createPrivateHeap();
        const AllocationWatch watch;
        Pool pool;
        EXPECT_TRUE(pool.reserve(announced));
        for (int index = 0; index < 1000; ++index)
            EXPECT_EQ(pool.add("abc", 4, 1), index);
        return watch.asked();
    };
    EXPECT_LT(allocations(1000), allocations(0) - 10);
}

TEST_F(PoolTest, usesTheLastFreedIndexFirst)
{
    Pool pool;
    for (int index = 0; index < 4; ++index)
        add(pool, "x");
    pool.release(0);
    EXPECT_EQ(add(pool, "again"), 0);
    pool.release(1);
    pool.release(3);
    pool.release(2);
    EXPECT_EQ(add(pool, "a"), 2);
    EXPECT_EQ(add(pool, "b"), 3);
    EXPECT_EQ(add(pool, "c"), 1);
    EXPECT_EQ(add(pool, "d"), 4);
    EXPECT_EQ(bytesOf(pool, 0), "again");
    EXPECT_EQ(bytesOf(pool, 3), "b");
}

TEST_F(PoolTest, countsOwners)
{
    Pool pool;
    EXPECT_EQ(add(pool, "x", 2), 0);
    EXPECT_EQ(pool.refCount(0), 2);
    EXPECT_EQ(pool.addRef(0), 0);
    EXPECT_EQ(pool.refCount(0), 3);
    pool.release(0);
    pool.release(0);
    EXPECT_TRUE(pool.isLive(0));
    EXPECT_EQ(bytesOf(pool, 0), "x");
    pool.release(0);
    EXPECT_FALSE(pool.isLive(0));
}

TEST_F(PoolTest, leavesMinusOneAlone)
{
    Pool pool;
    EXPECT_EQ(pool.addRef(-1), -1);
    pool.release(-1);
    EXPECT_FALSE(pool.isLive(-1));
    EXPECT_EQ(add(pool, "x"), 0);
}

TEST_F(PoolTest, knowsWhichIndicesLive)
{
    Pool pool;
    EXPECT_FALSE(pool.isLive(0));
    add(pool, "x");
    add(pool, "y");
    pool.release(0);
    EXPECT_FALSE(pool.isLive(0));
    EXPECT_TRUE(pool.isLive(1));
    EXPECT_FALSE(pool.isLive(2));
    EXPECT_FALSE(pool.isLive(1000000));
    EXPECT_FALSE(pool.isLive(INT32_MIN));
}

TEST_F(PoolTest, neverSharesByContent)
{
    StringPool pool;
    const std::int32_t first = pool.addText(u"same");
    const std::int32_t second = pool.addText(u"same");
    EXPECT_NE(first, second);
    EXPECT_NE(pool.text(first), pool.text(second));
    pool.release(first);
    EXPECT_EQ(std::u16string(pool.text(second)), u"same");
}

TEST_F(PoolTest, keepsAnEntryWhereItIs)
{
    Pool pool;
    add(pool, "first");
    const void* place = pool.entry(0);
    for (int count = 0; count < 5000; ++count)
        add(pool, "more");
    EXPECT_EQ(pool.entry(0), place);
    EXPECT_EQ(bytesOf(pool, 0), "first");
}

TEST_F(PoolTest, scansItsLiveEntries)
{
    Pool pool;
    for (int index = 0; index < 7; ++index)
        add(pool, std::to_string(index));
    pool.release(2);
    pool.release(5);
    EXPECT_EQ(pool.beginScan(), 5);
    std::string live;
    for (std::int32_t index = 0; index < pool.slotCount(); ++index) {
        if (pool.slotIsLive(index))
            live += bytesOf(pool, index);
    }
    EXPECT_EQ(live, "01346");
    pool.endScan();
}

TEST_F(PoolTest, usesTheHighestFreeSlotFirstAfterAScan)
{
    Pool pool;
    for (int index = 0; index < 7; ++index)
        add(pool, "x");
    pool.release(5);
    pool.release(2);
    pool.release(0);
    pool.beginScan();
    const std::int32_t slots = pool.slotCount();
    pool.endScan();
    // Beyond those that were freed stands the one slot that is always free.
    EXPECT_EQ(slots, 8);
    EXPECT_EQ(add(pool, "a"), 7);
    EXPECT_EQ(add(pool, "b"), 5);
    EXPECT_EQ(add(pool, "c"), 2);
    EXPECT_EQ(add(pool, "d"), 0);
    EXPECT_EQ(add(pool, "e"), 8);
}

TEST_F(PoolTest, takesFileNumbersBackAtTheEndOfAScan)
{
    Pool pool;
    add(pool, "x");
    add(pool, "y");
    pool.beginScan();
    pool.setFileIndex(0, 17);
    pool.setFileIndex(1, 18);
    EXPECT_EQ(pool.fileIndex(0), 17);
    EXPECT_EQ(pool.fileIndex(1), 18);
    EXPECT_EQ(pool.refCount(1), 1);
    pool.endScan();
    EXPECT_EQ(pool.fileIndex(0), -1);
    EXPECT_EQ(pool.fileIndex(1), -1);
}

TEST_F(PoolTest, scansAnEmptyPool)
{
    Pool pool;
    EXPECT_EQ(pool.beginScan(), 0);
    pool.endScan();
    EXPECT_EQ(add(pool, "x"), 0);
    EXPECT_EQ(add(pool, "y"), 1);
}

TEST_F(PoolTest, clearsWhateverTheCounts)
{
    Pool pool;
    for (int count = 0; count < 100; ++count)
        add(pool, "x", 1 + count % 5);
    pool.release(3);
    pool.clear();
    EXPECT_FALSE(pool.isLive(0));
    EXPECT_EQ(pool.slotCount(), 1);
    EXPECT_EQ(pool.beginScan(), 0);
    pool.endScan();
    EXPECT_EQ(add(pool, "x"), 0);
    EXPECT_EQ(add(pool, "y"), 1);
}

TEST_F(PoolTest, freesTheEntriesThatItClears)
{
    // Large enough to have blocks of their own, which the heap gives back.
    const std::size_t before = heapSize();
    {
        Pool pool;
        const std::string large(300000, 'x');
        add(pool, large, 3);
        add(pool, large);
        EXPECT_GT(heapSize(), before + 600000);
        pool.clear();
        EXPECT_EQ(heapSize(), before);
        add(pool, large);
        pool.release(0);
        EXPECT_EQ(heapSize(), before);
    }
}

TEST_F(PoolTest, holdsTextsWithTheirZero)
{
    StringPool pool;
    const struct {
        const char* phrase;
        std::u16string text;
    } cases[] = {
        {"an empty text",                   u""               },
        {"a short one",                     u"abc"            },
        {"one below the room on the stack", std::u16string(254, u'y')},
        {"one that fills it",                                 std::u16string(255,                                 u'y')},
        {"one above it",                            std::u16string(256,              u'y')},
        {"a long one",std::u16string(100000,u'z')},
        {"units that are no characters",                      u"\xd800\xdfff\xffff"                               },
    };
    for (const auto& c : cases) {
        const std::int32_t index = pool.addText(c.text);
        ASSERT_GE(index, 0) << c.phrase;
        EXPECT_EQ(pool.text(index), c.text) << c.phrase;
        EXPECT_EQ(pool.refCount(index), 1) << c.phrase;
    }
}

TEST_F(PoolTest, endsATextAtItsFirstZero)
{
    StringPool pool;
    const char16_t withZero[] = u"ab\0cd";
    const std::int32_t index = pool.addText({withZero, 5});
    EXPECT_EQ(std::u16string(pool.text(index)), u"ab");
}

TEST_F(PoolTest, readsMinusOneAsTheEmptyText)
{
    const StringPool pool;
    EXPECT_EQ(std::u16string(pool.text(-1)), u"");
}

TEST_F(PoolTest, findsTheCodeBehindItsCount)
{
    FormulaPool pool;
    const std::uint8_t block[] = {2, 0, 0, 0, 9, 0};
    const std::int32_t index = pool.add(block, sizeof block, 1);
    EXPECT_EQ(pool.code(index)[0], 9);
    EXPECT_EQ(pool.code(index)[1], 0);
    EXPECT_EQ(pool.code(index), static_cast<const std::uint8_t*>(pool.entry(index)) + 4);
}

TEST_F(PoolTest, keepsItsEntriesWhenAnyOneAllocationIsRefused)
{
    // Entries large enough that each asks for memory, so that every place of a refusal is met.
    const std::string large(20000, 'x');
    constexpr int Entries = 12;
    bool refusedOne = true;
    for (int refused = 1; refusedOne; ++refused) {
        AllocationWatch watch(refused);
        {
            Pool pool;
            int added = 0;
            int lastIndex = 0;
            while (added < Entries && lastIndex >= 0) {
                lastIndex = add(pool, large + std::to_string(added));
                added += lastIndex >= 0 ? 1 : 0;
            }
            refusedOne = watch.refused();
            EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone) << refused;
            // The first slot, which the pool has from its beginning, is asked for again.
            EXPECT_EQ(lastIndex == -1, refusedOne && refused > 1) << refused;
            EXPECT_EQ(pool.beginScan(), added) << refused;
            pool.endScan();
            for (int index = 0; index < added; ++index)
                EXPECT_EQ(bytesOf(pool, index), large + std::to_string(index)) << refused;
            clearError();
            watch.relent();
            EXPECT_EQ(add(pool, "next"), added) << refused;
            pool.clear();
            EXPECT_EQ(add(pool, "first"), 0) << refused;
            pool.clear();
            clearError();
        }
    }
}

TEST_F(PoolTest, recoversFromAClearThatWasRefusedItsFirstSlot)
{
    Pool pool;
    add(pool, "x");
    {
        const AllocationWatch watch(1);
        pool.clear();
        EXPECT_TRUE(watch.refused());
    }
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
    EXPECT_EQ(pool.beginScan(), 0);
    pool.endScan();
    EXPECT_EQ(add(pool, "first"), 0);
    EXPECT_EQ(add(pool, "second"), 1);
    EXPECT_FALSE(errorStands());
}

TEST_F(PoolTest, exchangesTwoEntries)
{
    Pool pool;
    const std::int32_t a = add(pool, "first");
    const std::int32_t b = add(pool, "second, which is longer");
    pool.exchange(a, b);
    EXPECT_EQ(bytesOf(pool, a), "second, which is longer");
    EXPECT_EQ(bytesOf(pool, b), "first");
    pool.exchange(a, a);
    EXPECT_EQ(bytesOf(pool, a), "second, which is longer");
    pool.release(a);
    EXPECT_FALSE(pool.isLive(a));
    EXPECT_EQ(add(pool, "third"), a);
    EXPECT_EQ(bytesOf(pool, b), "first");
}

TEST_F(PoolTest, usesTheHighestFreedIndexFirstOnceTheyAreSorted)
{
    Pool pool;
    for (int entry = 0; entry < 6; ++entry)
        add(pool, "entry");
    for (const std::int32_t freed : {4, 1, 3})
        pool.release(freed);
    pool.sortFreed();
    EXPECT_EQ(add(pool, "new"), 6) << "the one that no entry ever had is the highest";
    EXPECT_EQ(add(pool, "new"), 4);
    pool.release(5);
    EXPECT_EQ(add(pool, "new"), 5) << "freed since, and used again first";
    EXPECT_EQ(add(pool, "new"), 3);
    EXPECT_EQ(add(pool, "new"), 1);
    EXPECT_EQ(add(pool, "new"), 7);
    pool.sortFreed();
    EXPECT_EQ(add(pool, "new"), 8);
}

TEST_F(PoolTest, isTheSameAsAModelWhateverIsDone)
{
    struct ModelEntry {
        std::string bytes;
        int refs;
    };
    Dice random(77);
    for (int round = 0; round < 20; ++round) {
        Pool pool;
        std::map<std::int32_t, ModelEntry> model;
        std::vector<std::int32_t> freeSlots{0}; // the last one is used first
        std::int32_t slots = 1;
        for (int step = 0; step < 1000; ++step) {
            const int choice = random.below(20);
            if (choice < 9 || model.empty()) {
                const ModelEntry entry{std::to_string(random.any()), 1 + random.below(3)};
                const std::int32_t expected = freeSlots.back();
                freeSlots.pop_back();
                if (freeSlots.empty())
                    freeSlots.push_back(slots++);
                ASSERT_EQ(add(pool, entry.bytes, entry.refs), expected);
                model[expected] = entry;
            } else if (choice == 19) {
                ASSERT_EQ(pool.beginScan(), static_cast<std::int32_t>(model.size()));
                pool.endScan();
                std::sort(freeSlots.begin(), freeSlots.end());
            } else if (choice == 18) {
                pool.sortFreed();
                std::sort(freeSlots.begin(), freeSlots.end());
            } else {
                auto entry = model.begin();
                std::advance(entry, random.below(static_cast<int>(model.size())));
                if (choice < 12) {
                    pool.addRef(entry->first);
                    ++entry->second.refs;
                } else {
                    pool.release(entry->first);
                    if (--entry->second.refs == 0) {
                        freeSlots.push_back(entry->first);
                        model.erase(entry);
                    }
                }
            }
        }
        for (const auto& [index, entry] : model) {
            EXPECT_EQ(bytesOf(pool, index), entry.bytes);
            EXPECT_EQ(pool.refCount(index), entry.refs);
        }
    }
}

} // namespace
} // namespace vorn
