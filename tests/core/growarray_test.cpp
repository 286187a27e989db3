#include "core/growarray.h"

#include "support/dice.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

// An element whose default is not zero, so that a wrong filling shows.
struct Item {
    int number = -7;

    bool operator==(const Item&) const = default;
};
static_assert(std::is_trivially_copyable_v<Item>);

class GrowArrayTest : public testing::Test {
protected:
    GrowArrayTest() { clearError(); }
    ~GrowArrayTest() override { clearError(); }
};

TEST(GrowStep, isTheOwnersChoiceElseAnEighthWithinLimits)
{
    const struct {
        const char* behaviour;
        std::int32_t size, growBy, step;
    } cases[] = {
        {"an empty table takes the least step", 0,       0,    4   },
        {"which holds while an eighth is less", 39,      0,    4   },
        {"then the eighth takes over",          40,      0,    5   },
        {"cut to a whole number",               47,      0,    5   },
        {"just below the greatest step",        8191,    0,    1023},
        {"up to the greatest step",             8192,    0,    1024},
        {"which is never passed",               1000000, 0,    1024},
        {"an owner may go below the limits",    8192,    1,    1   },
        {"or above them",                       0,       5000, 5000},
    };
    for (const auto& c : cases)
        EXPECT_EQ(growStep(c.size, c.growBy), c.step) << c.behaviour;
}

TEST_F(GrowArrayTest, beginsWithoutMemory)
{
    const AllocationWatch watch;
    const GrowArray<Item> table;
    EXPECT_EQ(table.size(), 0);
    EXPECT_EQ(table.capacity(), 0);
    EXPECT_EQ(table.data(), nullptr);
    EXPECT_EQ(watch.asked(), 0);
}

TEST_F(GrowArrayTest, growsByItsRule)
{
    const struct {
        const char* behaviour;
        std::int32_t growBy;
        std::int32_t capacity;
        std::vector<std::int32_t> sizes;
    } cases[] = {
        {"the first allocation is exact",                0,   201,   {201}         },
        {"also with a step of its owner",                100, 3,     {3}           },
        {"one more takes the least step",                0,   5,     {1, 2}        },
        {"a size within what is there takes none",       0,   5,     {1, 2, 5}     },
        {"the step is added to what is there",           0,   9,     {1, 2, 6}     },
        {"and counts by the size, not by what is there", 0,   85,    {80, 40, 81}  },
        {"an eighth of a long table",                    0,   900,   {800, 801}    },
        {"at most 1,024",                                0,   21024, {20000, 20001}},
        {"a wish beyond the step is met exactly",        0,   500,   {10, 500}     },
        {"the owner's step",                             7,   8,     {1, 2}        },
        {"shrinking keeps the memory",                   0,   100,   {100, 1}      },
        {"but nothing frees it",                         0,   0,     {100, 0}      },
        {"and after that the first is exact again",      0,   3,     {100, 0, 3}   },
    };
    for (const auto& c : cases) {
        GrowArray<Item> table(c.growBy);
        for (std::int32_t size : c.sizes) {
            EXPECT_TRUE(table.resize(size)) << c.behaviour;
            EXPECT_EQ(table.size(), size) << c.behaviour;
        }
        EXPECT_EQ(table.capacity(), c.capacity) << c.behaviour;
    }
}

TEST_F(GrowArrayTest, takesANewStepWithAResize)
{
    GrowArray<Item> table;
    table.resize(1, 50);
    EXPECT_EQ(table.capacity(), 1);
    table.resize(2);
    EXPECT_EQ(table.capacity(), 51);
    table.resize(52, 0);
    EXPECT_EQ(table.capacity(), 55);
}

TEST_F(GrowArrayTest, fillsWithDefaults)
{
    GrowArray<Item> table;
    table.resize(3);
    for (const Item& item : table)
        EXPECT_EQ(item, Item{});
    table[0].number = 1;
    table[2].number = 3;
    table.resize(1);
    table.resize(40);
    EXPECT_EQ(table[0].number, 1);
    for (int index = 1; index < 40; ++index)
        EXPECT_EQ(table[index], Item{}) << index;
}

TEST_F(GrowArrayTest, reservesRoomForWhatWillCome)
{
    GrowArray<int> table;
    EXPECT_TRUE(table.reserve(100));
    EXPECT_EQ(table.capacity(), 100);
    EXPECT_EQ(table.size(), 0);
    for (int number = 0; number < 100; ++number)
        table.append(number);
    EXPECT_EQ(table.capacity(), 100) << "nothing grew";
    EXPECT_TRUE(table.reserve(50));
    EXPECT_EQ(table.capacity(), 100) << "less than there is changes nothing";
    table.append(100);
    EXPECT_EQ(table.capacity(), 112);
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[100], 100);
}

TEST_F(GrowArrayTest, appendsItsOwnElements)
{
    GrowArray<Item> table;
    table.append({11});
    for (int count = 0; count < 20; ++count)
        EXPECT_TRUE(table.append(table[0]));
    EXPECT_EQ(table.size(), 21);
    for (const Item& item : table)
        EXPECT_EQ(item.number, 11);
}

TEST_F(GrowArrayTest, closesTheGapOfARemovedElement)
{
    const struct {
        std::int32_t removed;
        std::vector<int> left;
    } cases[] = {
        {0, {2, 3, 4}},
        {1, {1, 3, 4}},
        {3, {1, 2, 3}},
    };
    for (const auto& c : cases) {
        GrowArray<Item> table;
        for (int number = 1; number <= 4; ++number)
            table.append({number});
        table.removeAt(c.removed);
        std::vector<int> left;
        for (const Item& item : table)
            left.push_back(item.number);
        EXPECT_EQ(left, c.left) << c.removed;
    }
    GrowArray<Item> single;
    single.append({1});
    single.removeAt(0);
    EXPECT_EQ(single.size(), 0);
}

TEST_F(GrowArrayTest, keepsWhatItHadWhenAnyOneGrowthIsRefused)
{
    // Twenty appends grow at 0, 1, 5, 9, 13 and 17.
    constexpr int growths = 6;
    constexpr int items = 20;
    for (int refused = 1; refused <= growths + 1; ++refused) {
        AllocationWatch watch(refused);
        {
            GrowArray<Item> table;
            int appended = 0;
            while (appended < items && table.append({appended}))
                ++appended;
            EXPECT_EQ(watch.refused(), refused <= growths);
            EXPECT_EQ(errorState.code, refused <= growths ? ErrorMemory : ErrorNone);
            EXPECT_EQ(table.size(), appended);
            EXPECT_EQ(appended, refused == 1 ? 0 : refused <= growths ? 4 * refused - 7 : items);
            for (int index = 0; index < appended; ++index)
                EXPECT_EQ(table[index].number, index);
            const std::int32_t capacity = table.capacity();
            EXPECT_EQ(capacity, refused <= growths ? appended : 21);

            // The refusal of one leaves the table fit for the next.
            clearError();
            EXPECT_TRUE(table.append({99}));
            EXPECT_EQ(table[appended].number, 99);
        }
        EXPECT_EQ(watch.liveBlocks(), 0);
        clearError();
    }
}

TEST_F(GrowArrayTest, keepsWhatItHadWhenAReserveIsRefused)
{
    GrowArray<int> table;
    table.append(7);
    {
        const AllocationWatch watch(1);
        EXPECT_FALSE(table.reserve(100));
        EXPECT_TRUE(table.reserve(1));
    }
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
    EXPECT_EQ(table.size(), 1);
    EXPECT_EQ(table[0], 7);
}

TEST_F(GrowArrayTest, leavesTheFirstOfSeveralErrorsStanding)
{
    raiseError(ErrorFileRead);
    const AllocationWatch watch(1);
    GrowArray<Item> table;
    EXPECT_FALSE(table.resize(4));
    EXPECT_EQ(errorState.code, ErrorFileRead);
    EXPECT_EQ(table.size(), 0);
    EXPECT_EQ(table.data(), nullptr);
}

TEST_F(GrowArrayTest, isTheSameAsAVectorWhateverIsDone)
{
    Dice random(20010304);
    for (int round = 0; round < 200; ++round) {
        GrowArray<Item> table(round % 3 == 0 ? 3 : 0);
        std::vector<Item> model;
        for (int step = 0; step < 60; ++step) {
            const int choice = random.below(5);
            if (choice <= 1) {
                const Item item{random.below(1000)};
                table.append(item);
                model.push_back(item);
            } else if (choice == 2 && !model.empty()) {
                const std::int32_t index = random.below(static_cast<int>(model.size()));
                table.removeAt(index);
                model.erase(model.begin() + index);
            } else if (choice == 3) {
                const int size = random.below(50);
                table.resize(size);
                model.resize(static_cast<std::size_t>(size));
            } else if (choice == 4 && step % 20 == 0) {
                table.clear();
                model.clear();
            }
            ASSERT_TRUE(std::equal(table.begin(), table.end(), model.begin(), model.end()));
            ASSERT_LE(table.size(), table.capacity());
        }
    }
}

} // namespace
} // namespace vorn
