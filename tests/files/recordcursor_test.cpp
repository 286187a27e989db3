#include "files/recordcursor.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

// A block that ends where the bytes end, so that a sanitizer sees whoever goes further.
struct Record {
    explicit Record(std::vector<std::uint8_t> bytes) : block(std::move(bytes)) {}

    RecordCursor cursor() const { return {block.data(), static_cast<std::uint32_t>(block.size())}; }

    std::vector<std::uint8_t> block;
};

TEST(RecordCursor, takesNumbersInOrder)
{
    const Record record({1, 0x34, 0x12, 0x78, 0x56, 0x34, 0xf2, 0, 7, 1, 0, 0, 0});
    RecordCursor cursor = record.cursor();
    EXPECT_EQ(cursor.take8(), 1);
    EXPECT_EQ(cursor.take16(), 0x1234);
    EXPECT_EQ(cursor.take32(), 0xf2345678U);
    EXPECT_FALSE(cursor.takeFlag8());
    EXPECT_TRUE(cursor.takeFlag8());
    EXPECT_EQ(cursor.remaining(), 4U);
    EXPECT_TRUE(cursor.takeFlag32());
    EXPECT_EQ(cursor.remaining(), 0U);
}

TEST(RecordCursor, readsZerosBehindTheEnd)
{
    for (std::size_t size = 0; size <= 4; ++size) {
        const Record record(std::vector<std::uint8_t>(size, 0x11));
        const std::uint32_t expected[] = {0, 0x11, 0x1111, 0x111111, 0x11111111};
        RecordCursor four = record.cursor();
        EXPECT_EQ(four.take32(), expected[size]) << size;
        RecordCursor two = record.cursor();
        EXPECT_EQ(two.take16(), expected[std::min<std::size_t>(size, 2)]) << size;
        RecordCursor one = record.cursor();
        EXPECT_EQ(one.take8(), expected[std::min<std::size_t>(size, 1)]) << size;
        EXPECT_EQ(four.take32(), 0U);
        EXPECT_EQ(four.take16(), 0U);
        EXPECT_EQ(four.take8(), 0U);
        EXPECT_EQ(four.remaining(), 0U);
    }
}

TEST(RecordCursor, clipsCountedTexts)
{
    const struct {
        const char* phrase;
        std::vector<std::uint8_t> bytes;
        std::u16string text;
        std::uint32_t remaining;
    } cases[] = {
        {"a text and its end",       {6, 0, 0, 0, 'a', 0, 'b', 0, 0, 0, 9},       u"ab", 1},
        {"the empty text",           {2, 0, 0, 0, 0, 0, 9},                       u"",   1},
        {"not even an end",          {0, 0, 0, 0, 9},                             u"",   1},
        {"no end",                   {4, 0, 0, 0, 'a', 0, 'b', 0, 9},             u"ab", 1},
        {"an odd count",             {3, 0, 0, 0, 'a', 0, 'b', 9},                u"a",  1},
        {"an early end",             {8, 0, 0, 0, 'a', 0, 0, 0, 'c', 0, 0, 0, 9}, u"a",  1},
        {"more than the record has", {200, 0, 0, 0, 'a', 0, 'b', 0},              u"ab", 0},
        {"the same with half one",   {200, 0, 0, 0, 'a', 0, 'b'},                 u"a",  0},
        {"the greatest count",       {255, 255, 255, 255, 'a', 0},                u"a",  0},
        {"a count and nothing else", {6, 0, 0, 0},                                u"",   0},
        {"a part of a count",        {6, 0},                                      u"",   0},
        {"nothing",                  {},                                          u"",   0},
    };
    for (const auto& c : cases) {
        const Record record(c.bytes);
        RecordCursor cursor = record.cursor();
        EXPECT_EQ(cursor.takeCountedText().text(), c.text) << c.phrase;
        EXPECT_EQ(cursor.remaining(), c.remaining) << c.phrase;
    }
}

TEST(RecordCursor, clipsPlainTexts)
{
    const struct {
        const char* phrase;
        std::vector<std::uint8_t> bytes;
        std::u16string text;
        std::uint32_t remaining;
    } cases[] = {
        {"a text and its end", {'a', 0, 'b', 0, 0, 0, 9}, u"ab",           1},
        {"the empty text",     {0, 0, 9},                 u"",             1},
        {"no end",             {'a', 0, 'b', 0},          u"ab",           0},
        {"half a unit",        {'a', 0, 'b'},             u"a",            0},
        {"half an end",        {'a', 0, 0},               u"a",            0},
        {"nothing",            {},                        u"",             0},
        {"high bytes",         {0x34, 0xd8, 0, 0x12},     u"\xd834\x1200", 0},
    };
    for (const auto& c : cases) {
        const Record record(c.bytes);
        RecordCursor cursor = record.cursor();
        EXPECT_EQ(cursor.takePlainText().text(), c.text) << c.phrase;
        EXPECT_EQ(cursor.remaining(), c.remaining) << c.phrase;
    }
}

} // namespace
} // namespace vorn
