#include "functions/random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace vorn {
namespace {

std::vector<int> firstNumbers(unsigned seed, int count)
{
    seedRandom(seed);
    std::vector<int> numbers;
    numbers.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        numbers.push_back(nextRandom());
    return numbers;
}

TEST(Random, repeatsItselfFromASeed)
{
    EXPECT_EQ(firstNumbers(7, 100), firstNumbers(7, 100));
    EXPECT_NE(firstNumbers(7, 100), firstNumbers(8, 100));
}

TEST(Random, beginsElsewhereForEachMillisecond)
{
    std::set<int> beginnings;
    for (unsigned seed = 0; seed < 1000; ++seed)
        beginnings.insert(firstNumbers(seed, 1).front());
    EXPECT_GT(beginnings.size(), 950U);
}

TEST(Random, coversItsRangeEvenly)
{
    constexpr int draws = 160000;
    constexpr int parts = 16;
    int hits[parts] = {};
    int least = RandomMax;
    int most = 0;
    for (int number : firstNumbers(1, draws)) {
        ASSERT_GE(number, 0);
        ASSERT_LE(number, RandomMax);
        least = std::min(least, number);
        most = std::max(most, number);
        ++hits[number * parts / (RandomMax + 1)];
    }
    EXPECT_LT(least, 10);
    EXPECT_GT(most, RandomMax - 10);
    constexpr double expected = static_cast<double>(draws) / parts;
    for (int hit : hits)
        EXPECT_NEAR(hit, expected, expected / 10);
}

} // namespace
} // namespace vorn
