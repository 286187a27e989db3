#include "formula/decimal.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace vorn {
namespace {

struct Reading {
    DecimalResult result;
    double number = -1;
    std::size_t end = 0;
};

Reading read(std::u16string_view text, char16_t point = u'.')
{
    Reading reading;
    reading.result = readDecimal(text, reading.end, point, reading.number);
    return reading;
}

TEST(Decimal, readsAsFarAsANumberGoes)
{
    const struct {
        const char* behaviour;
        std::u16string text;
        double number;
        std::size_t end;
    } cases[] = {
        {"one digit",                                 u"7",                          7,    1 },
        {"leading zeros",                             u"007",                        7,    3 },
        {"a point with digits on both sides",         u"1.25",                       1.25, 4 },
        {"a point behind the digits belongs to them", u"5.",                         5,    2 },
        {"a point before them",                       u".5",                         0.5,  2 },
        {"only the first point",                      u"1.2.3",                      1.2,  3 },
        {"an exponent",                               u"1e3",                        1000, 3 },
        {"a capital one",                             u"1E3",                        1000, 3 },
        {"a signed one",                              u"25e-1",                      2.5,  5 },
        {"with a plus",                               u"25e+1",                      250,  5 },
        {"an exponent behind the point",              u"5.e1",                       50,   4 },
        {"a letter without digits is left alone",     u"1e",                         1,    1 },
        {"so it is before another letter",            u"1ex",                        1,    1 },
        {"and a sign without digits",                 u"1e+",                        1,    1 },
        {"a second exponent is left alone",           u"1e2e3",                      100,  3 },
        {"no hexadecimal numbers",                    u"0x10",                       0,    1 },
        {"zero with many digits",                     u"0.000000000000000000000000", 0,    26},
        {"zero with a huge exponent",                 u"0e999999999999999999999999", 0,    26},
        {"digits that are not ASCII are no digits",   u"1\u0661",                    1,    1 },
    };
    for (const auto& c : cases) {
        const Reading reading = read(c.text);
        EXPECT_EQ(reading.result, DecimalRead) << c.behaviour;
        EXPECT_EQ(reading.number, c.number) << c.behaviour;
        EXPECT_EQ(reading.end, c.end) << c.behaviour;
    }
}

TEST(Decimal, readsNothingWithoutADigit)
{
    for (std::u16string_view text : {u"", u".", u"e5", u".e5", u"-1", u"inf", u"nan", u","}) {
        const Reading reading = read(text);
        EXPECT_EQ(reading.result, DecimalMissing);
        EXPECT_EQ(reading.end, 0U);
    }
}

TEST(Decimal, takesThePointThatItIsGiven)
{
    EXPECT_EQ(read(u"1,5", u',').number, 1.5);
    EXPECT_EQ(read(u"1.5", u',').end, 1U);
    EXPECT_EQ(read(u"1,5.7", u',').end, 3U);
}

TEST(Decimal, knowsTheEndsOfItsRange)
{
    const double infinite = std::numeric_limits<double>::infinity();
    const std::u16string ones(400, u'1');
    const std::u16string zeros(400, u'0');
    const std::u16string threes(100000, u'3');
    const struct {
        const char* behaviour;
        std::u16string text;
        double number; // infinite: too large
    } cases[] = {
        {"the largest float",                      u"1.7976931348623157e308",     std::numeric_limits<double>::max()       },
        {"more than that",                         u"1.8e308",                    infinite                                 },
        {"far more",                               u"1e999",                      infinite                                 },
        {"an exponent beyond all numbers",         u"1e99999999999999999999999",  infinite                                 },
        {"the smallest float",                     u"5e-324",                     std::numeric_limits<double>::denorm_min()},
        {"less than its half is nothing",          u"2e-324",                     0                                        },
        {"far less",                               u"1e-400",                     0                                        },
        {"an exponent below all numbers",          u"1e-99999999999999999999999", 0                                        },
        {"400 digits",                             ones,                          infinite                                 },
        {"400 digits with as many places less",    ones + u"e-400",               1.0 / 9                                  },
        {"400 zeros before the first digit",       u"0." + zeros + u"1",          0                                        },
        {"and an exponent that makes up for them", u"0." + zeros + u"1e401",      1                                        },
        {"leading zeros without end",              zeros + zeros + u"7",          7                                        },
        {"100,000 places",                         u"0." + threes,                1.0 / 3                                  },
    };
    for (const auto& c : cases) {
        const Reading reading = read(c.text);
        EXPECT_EQ(reading.result, std::isinf(c.number) ? DecimalTooLarge : DecimalRead)
            << c.behaviour;
        EXPECT_DOUBLE_EQ(reading.number, std::isinf(c.number) ? -1 : c.number) << c.behaviour;
        EXPECT_EQ(reading.end, c.text.size()) << c.behaviour;
    }
}

// The float half way between 1 and the next one is written with 53 places; it goes to the even
// neighbour, but anything behind it, however far away, takes it up.
TEST(Decimal, looksAtEveryDigitThatDecides)
{
    const std::u16string half = u"1.00000000000000011102230246251565404236316680908203125";
    const double next = 1 + std::numeric_limits<double>::epsilon();
    EXPECT_EQ(read(half).number, 1);
    EXPECT_EQ(read(half + u"1").number, next);
    const std::u16string zeros(5000, u'0');
    EXPECT_EQ(read(half + zeros).number, 1);
    EXPECT_EQ(read(half + zeros + u"1").number, next);
}

TEST(Decimal, readsWhatTheLibraryReads)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> digits(0, 25);
    std::uniform_int_distribution<int> exponent(-340, 340);
    for (int round = 0; round < 20000; ++round) {
        std::string text = std::to_string(random());
        for (int i = digits(random); i > 0; --i)
            text += static_cast<char>('0' + random() % 10);
        text.insert(random() % text.size(), ".");
        if (round % 2 == 0)
            text += "e" + std::to_string(exponent(random));
        const double expected = std::strtod(text.c_str(), nullptr);
        const Reading reading = read(std::u16string(text.begin(), text.end()));
        EXPECT_EQ(reading.result, std::isinf(expected) ? DecimalTooLarge : DecimalRead) << text;
        EXPECT_EQ(reading.number, std::isinf(expected) ? -1 : expected) << text;
        EXPECT_EQ(reading.end, text.size()) << text;
    }
}

} // namespace
} // namespace vorn
