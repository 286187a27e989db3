#include "platform/headless/textmeasure.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

FontLook fontOfHeight(int height)
{
    FontLook font;
    font.height = height;
    return font;
}

TEST(FixedTextMeasure, givesEachCharacterHalfTheHeightRoundedUp)
{
    const struct {
        const char* phrase;
        int height;
        std::u16string_view text;
        int width;
    } cases[] = {
        {"no text",          14, u"",           0 },
        {"one character",    14, u"i",          7 },
        {"a wide one",       14, u"W",          7 },
        {"a text",           14, u"Total 12",   56},
        {"an odd height",    15, u"abc",        24},
        {"a surrogate pair", 14, u"\U0001F600", 7 },
    };
    FixedTextMeasure measure;
    for (const auto& c : cases)
        EXPECT_EQ(measure.textWidth(fontOfHeight(c.height), c.text), c.width) << c.phrase;
}

TEST(FixedTextMeasure, breaksLinesAtBlanks)
{
    const struct {
        const char* phrase;
        std::u16string_view text;
        int characters; // that the width has room for
        int lines;
    } cases[] = {
        {"an empty text has a line",      u"",             10, 1},
        {"what fits stays in one line",   u"aaa bbb",      7,  1},
        {"what does not is broken",       u"aaa bbb",      6,  2},
        {"between any words",             u"a b c d",      3,  2},
        {"but not within one",            u"aaaaaaaa",     3,  1},
        {"a long word has its own line",  u"a bbbbbbbb c", 3,  3},
        {"no room at all: a word a line", u"aa bb cc",     0,  3},
        {"a line feed ends a line",       u"a\nb",         10, 2},
        {"the last line may be empty",    u"a\n",          10, 2},
        {"and so may one in the middle",  u"a\n\nb",       10, 3},
        {"each paragraph is broken",      u"aa bb\ncc dd", 2,  4},
    };
    FixedTextMeasure measure;
    for (const auto& c : cases)
        EXPECT_EQ(measure.wrappedHeight(fontOfHeight(14), c.text, 7 * c.characters), 14 * c.lines)
            << c.phrase;
}

TEST(FixedTextMeasure, offersAFontWithFixedSizesToo)
{
    FixedTextMeasure measure;
    const std::vector<FontFamily> families = measure.fontFamilies();
    ASSERT_EQ(families.size(), 4U);
    EXPECT_EQ(families[0].face, u"Tahoma");
    EXPECT_TRUE(families[0].scalable);
    EXPECT_EQ(families[3].face, u"Fixed");
    EXPECT_FALSE(families[3].scalable);
    EXPECT_EQ(families[3].points, (std::vector<int>{8, 10, 13}));
}

} // namespace
} // namespace vorn
