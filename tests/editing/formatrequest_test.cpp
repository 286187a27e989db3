#include "editing/formatrequest.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(FormatRequest, hasAListOfSixteenColours)
{
    const int colours[ColourEntryCount] = {8,  9,  22, 23, 10, 11, 12, 13,
                                           14, 15, 16, 17, 18, 19, 20, 21};
    for (int entry = 0; entry < ColourEntryCount; ++entry) {
        EXPECT_EQ(colourOfEntry(entry), colours[entry]) << entry;
        EXPECT_EQ(entryOfColour(colours[entry]), entry) << entry;
    }
}

TEST(FormatRequest, hasNoEntryForOtherColours)
{
    for (int colour : {0, 7, 24, 63, 64, 65, 127, 32767, -1})
        EXPECT_EQ(entryOfColour(colour), FormatMixed) << colour;
}

TEST(FormatRequest, showsAutomaticColoursAsBlackOnWhite)
{
    EXPECT_EQ(entryOfTextColour(32767), ColourEntryBlack);
    EXPECT_EQ(entryOfTextColour(8), ColourEntryBlack);
    EXPECT_EQ(entryOfTextColour(10), 4);
    EXPECT_EQ(entryOfTextColour(64), FormatMixed);
    EXPECT_EQ(entryOfBackColour(64), ColourEntryWhite);
    EXPECT_EQ(entryOfBackColour(9), ColourEntryWhite);
    EXPECT_EQ(entryOfBackColour(10), 4);
    EXPECT_EQ(entryOfBackColour(32767), FormatMixed);
}

} // namespace
} // namespace vorn
