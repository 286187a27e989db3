#include "platform/icu/textrules.h"

#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(TextRules, mapSingleUnitsOfText)
{
    const TestPlatform machine;
    const struct {
        const char* behaviour;
        char16_t lower, upper;
    } pairs[] = {
        {"a letter of ASCII",                      u'a',      u'A'     },
        {"the last letter of ASCII",               u'z',      u'Z'     },
        {"a letter with a mark",                   u'ä',     u'Ä'    },
        {"a letter whose capital is far away",     u'ÿ',     u'Ÿ'    },
        {"Greek",                                  u'σ',     u'Σ'    },
        {"Cyrillic",                               u'я',     u'Я'    },
        {"a letter of full width",                 u'\uff41', u'\uff21'},
        {"a small letter right above its capital", u'\u1ea1', u'\u1ea0'},
    };
    for (const auto& c : pairs) {
        EXPECT_EQ(upperUnit(c.lower), c.upper) << c.behaviour;
        EXPECT_EQ(lowerUnit(c.upper), c.lower) << c.behaviour;
        EXPECT_EQ(lowerUnit(c.lower), c.lower) << c.behaviour;
        EXPECT_EQ(upperUnit(c.upper), c.upper) << c.behaviour;
    }
}

TEST(TextRules, leaveUnitsWithoutAMappingOfTheirSize)
{
    const TestPlatform machine;
    const struct {
        const char* behaviour;
        char16_t unit;
    } cases[] = {
        {"a digit",                                u'7'     },
        {"the character before the small letters", u'`'     },
        {"and the one behind them",                u'{'     },
        {"the character before the capitals",      u'@'     },
        {"and the one behind them",                u'['     },
        {"a letter whose capital is two letters",  u'ß'    },
        {"a leading surrogate",                    u'\xd801'},
        {"a trailing surrogate",                   u'\xdc28'},
        {"a Han character",                        u'\u4e2d'},
        {"zero",                                   u'\0'    },
        {"the last unit",                          u'\xffff'},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(lowerUnit(c.unit), c.unit) << c.behaviour;
        EXPECT_EQ(upperUnit(c.unit), c.unit) << c.behaviour;
    }
}

TEST(TextRules, knowLettersAndSpaces)
{
    const TestPlatform machine;
    const struct {
        const char* behaviour;
        char16_t unit;
        bool letter, space;
    } cases[] = {
        {"a letter",                      u'q',      true,  false},
        {"a digit",                       u'0',      false, false},
        {"a sign",                        u'_',      false, false},
        {"a blank",                       u' ',      false, true },
        {"a tab",                         u'\t',     false, true },
        {"a line feed",                   u'\n',     false, true },
        {"a carriage return",             u'\r',     false, true },
        {"the control before the tab",    u'\x08',   false, false},
        {"the control behind the return", u'\x0e',   false, false},
        {"DEL",                           u'\x7f',   false, false},
        {"a blank that does not break",   u'\u00a0', false, true },
        {"an ideographic blank",          u'\u3000', false, true },
        {"a narrow blank",                u'\u202f', false, true },
        {"a blank without width",         u'\u200b', false, false},
        {"a byte order mark",             u'\ufeff', false, false},
        {"a letter with a mark",          u'é',     true,  false},
        {"a Han character",               u'\u4e2d', true,  false},
        {"a digit of another script",     u'\u0663', false, false},
        {"a leading surrogate",           u'\xd801', false, false},
        {"a trailing surrogate",          u'\xdc28', false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isLetterUnit(c.unit), c.letter) << c.behaviour;
        EXPECT_EQ(isSpaceUnit(c.unit), c.space) << c.behaviour;
    }
}

// The inline answers for ASCII must be those of the platform, or what a text means would depend on
// the road it takes.
TEST(TextRules, answerAsciiAsThePlatformWould)
{
    IcuTextRules rules;
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        EXPECT_EQ(lowerUnit(unit), rules.lower(unit)) << static_cast<int>(unit);
        EXPECT_EQ(upperUnit(unit), rules.upper(unit)) << static_cast<int>(unit);
        EXPECT_EQ(isLetterUnit(unit), rules.isLetter(unit)) << static_cast<int>(unit);
        EXPECT_EQ(isSpaceUnit(unit), rules.isSpace(unit)) << static_cast<int>(unit);
    }
}

TEST(TextRules, giveSurrogatesNoCaseAndNoClass)
{
    const TestPlatform machine;
    for (int unit = 0xd800; unit <= 0xdfff; ++unit) {
        const char16_t surrogate = static_cast<char16_t>(unit);
        ASSERT_EQ(lowerUnit(surrogate), surrogate);
        ASSERT_EQ(upperUnit(surrogate), surrogate);
        ASSERT_FALSE(isLetterUnit(surrogate) || isSpaceUnit(surrogate));
    }
}

} // namespace
} // namespace vorn
