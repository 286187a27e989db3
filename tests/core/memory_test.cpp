#include "core/memory.h"

#include <cstring>
#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(Memory, growsShrinksAndFreesOneBlock)
{
    auto* block = static_cast<char*>(resizeBlock(nullptr, 4));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abc", 4);
    block = static_cast<char*>(resizeBlock(block, 100000));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "abc");
    block = static_cast<char*>(resizeBlock(block, 4));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "abc");
    EXPECT_EQ(resizeBlock(block, 0), nullptr);
}

TEST(Memory, freesNothingWithoutComplaint)
{
    EXPECT_EQ(resizeBlock(nullptr, 0), nullptr);
}

} // namespace
} // namespace vorn
