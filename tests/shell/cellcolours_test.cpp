#include "shell/cellcolours.h"

#include "core/workbook.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class CellColours : public testing::Test {
protected:
    static CellStyle style(int pattern, int fill, int second = ColourWindow)
    {
        CellStyle made = defaultStyle();
        made.set(StylePattern, pattern);
        made.set(StyleFill, fill);
        made.set(StyleSecondFill, second);
        return made;
    }

    TestDocument document;
};

TEST_F(CellColours, fillWithThePaletteOrWhite)
{
    const struct {
        const char* phrase;
        int pattern, fill;
        Colour colour;
    } cases[] = {
        {"no pattern is white, whatever the colour", 0, 10,                                  ColourWhite                    },
        {"the first entry is black",                 1, 8,                                   ColourBlack                    },
        {"red",                                      1, 10,                                  rgb(255,                         0, 0)},
        {"a pattern is not seen, its colour is",                                        17,                                         10,                                       rgb(255,                             0, 0)},
        {"the last entry",                                   1,                                   63,                              rgb(66,                                 66, 66)},
        {"behind the palette: the window's text",       1,64,ColourWhite},
        {"the greatest",                                          1,     127,                                 ColourWhite                                                                                          },
        {"before the palette",                                          1,                              7,                       ColourWhite                                                                              },
        {"none at all",                                          1,                        0,                 ColourWhite},
    };
    for (const auto& c : cases)
        EXPECT_EQ(fillColour(style(c.pattern, c.fill)), c.colour) << c.phrase;
}

TEST_F(CellColours, fillWhiteWithWhatThePaletteCallsWhite)
{
    workbook->palette[1] = rgb(1, 2, 3);
    EXPECT_EQ(fillColour(style(0, 10)), rgb(1, 2, 3));
    EXPECT_EQ(fillColour(style(1, 64)), rgb(1, 2, 3));
}

TEST_F(CellColours, areFilledByTheColourAlone)
{
    const struct {
        const char* phrase;
        int pattern, fill, second;
        bool filled;
    } cases[] = {
        {"the default",                           0, 64, 65, false},
        {"white",                                 1, 9,  65, false},
        {"red",                                   1, 10, 65, true },
        {"red without a pattern, which is white", 0, 10, 65, true },
        {"black",                                 1, 8,  65, true },
        {"black without a second colour",         1, 8,  0,  false},
        {"the last entry",                        1, 63, 65, true },
        {"behind the palette",                    1, 65, 65, false},
        {"before the palette",                    1, 7,  65, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isFilled(style(c.pattern, c.fill, c.second)), c.filled) << c.phrase;
}

TEST_F(CellColours, joinFillsOfOneColourAndPattern)
{
    const struct {
        const char* phrase;
        CellStyle left, right;
        bool joined;
    } cases[] = {
        {"without pattern",                 style(0,  64), style(0,  64), true },
        {"with a pattern",                  style(1,  10), style(1,  10), true },
        {"other colours",                   style(1,  10), style(1,  11), false},
        {"other colours that are not seen", style(0,  10), style(0,  11), false},
        {"other patterns",                  style(0,  10), style(1,  10), false},
        {"a real pattern",                  style(2,  10), style(2,  10), false},
        {"the greatest pattern",            style(63, 9),  style(63, 9),  false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isOneFill(c.left, c.right), c.joined) << c.phrase;
    CellStyle bold = style(1, 10);
    bold.set(StyleFont, 1);
    EXPECT_TRUE(isOneFill(style(1, 10), bold));
}

TEST_F(CellColours, writeBlackWhatHasNoColour)
{
    const struct {
        const char* phrase;
        int colour;
        Colour expected;
    } cases[] = {
        {"automatic",          ColourAutomatic, ColourBlack                                   },
        {"red",                10,              rgb(255,                                        0, 0)},
        {"the first entry",                  8,                                 ColourBlack                                                              },
        {"the last entry",         63,rgb(66,66, 66)},
        {"behind the palette",              64,                                    ColourBlack                                                                                                                      },
        {"before the palette", 7, ColourBlack},
        {"none", 0,               ColourBlack                                                 },
        {"the greatest",               65535,                             ColourBlack                                                 },
    };
    FontRecord font;
    for (const auto& c : cases) {
        font.colour = static_cast<std::uint16_t>(c.colour);
        EXPECT_EQ(textColour(font), c.expected) << c.phrase;
    }
    workbook->palette[0] = rgb(1, 2, 3);
    font.colour = ColourAutomatic;
    EXPECT_EQ(textColour(font), rgb(1, 2, 3));
}

} // namespace
} // namespace vorn
