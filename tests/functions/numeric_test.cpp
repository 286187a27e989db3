#include "functions/numeric.h"

#include "functions/answers.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace vorn {
namespace {

// A call with arguments that it accepts, and the place of one that counts digits and so must be a
// number rather than a text.
struct Call {
    std::u16string_view name;
    std::u16string_view arguments;
    std::size_t digitsPlace; // counted from 1; 0 for none

    std::size_t count() const
    {
        return 1 + static_cast<std::size_t>(std::count(arguments.begin(), arguments.end(), u','));
    }
};

constexpr Call FixedCalls[] = {
    {u"Abs",       u"-2",                   0},
    {u"Sin",       u"1",                    0},
    {u"Cos",       u"1",                    0},
    {u"Tan",       u"1",                    0},
    {u"Asin",      u"1",                    0},
    {u"Acos",      u"1",                    0},
    {u"Atan",      u"1",                    0},
    {u"Atan2",     u"1,2",                  0},
    {u"Sinh",      u"1",                    0},
    {u"Cosh",      u"1",                    0},
    {u"Tanh",      u"1",                    0},
    {u"Asinh",     u"1",                    0},
    {u"Acosh",     u"2",                    0},
    {u"Atanh",     u"0.3",                  0},
    {u"Ln",        u"3",                    0},
    {u"Log10",     u"3",                    0},
    {u"Log",       u"3",                    0},
    {u"Log",       u"3,7",                  0},
    {u"Exp",       u"2",                    0},
    {u"Sqrt",      u"2",                    0},
    {u"Power",     u"2,3",                  0},
    {u"Sign",      u"2",                    0},
    {u"Ceiling",   u"2.2,1",                0},
    {u"Floor",     u"2.2,1",                0},
    {u"Int",       u"2.2",                  0},
    {u"Trunc",     u"2.2",                  0},
    {u"Trunc",     u"2.22,1",               0},
    {u"Round",     u"2.22,1",               0},
    {u"RoundUp",   u"2.22,1",               2},
    {u"RoundDown", u"2.22,1",               2},
    {u"Even",      u"2.2",                  0},
    {u"Odd",       u"2.2",                  0},
    {u"Radians",   u"2",                    0},
    {u"Degrees",   u"2",                    0},
    {u"Fact",      u"4",                    0},
    {u"Permut",    u"4,2",                  0},
    {u"Combin",    u"4,2",                  0},
    {u"Fv",        u"0.1,3,-100",           0},
    {u"Fv",        u"0.1,3,-100,-50,1",     0},
    {u"Pv",        u"0.1,3,-100",           0},
    {u"Pv",        u"0.1,3,-100,-50,1",     0},
    {u"Pmt",       u"0.1,3,1000",           0},
    {u"Pmt",       u"0.1,3,1000,50,1",      0},
    {u"Nper",      u"0.1,-300,1000",        0},
    {u"Nper",      u"0.1,-300,1000,50,1",   0},
    {u"IPmt",      u"0.1,2,3,1000",         0},
    {u"IPmt",      u"0.1,2,3,1000,50,1",    0},
    {u"PPmt",      u"0.1,2,3,1000",         0},
    {u"PPmt",      u"0.1,2,3,1000,50,1",    0},
    {u"Rate",      u"4,-300,1000",          0},
    {u"Rate",      u"4,-300,1000,50,1,0.2", 0},
    {u"Sln",       u"1000,100,5",           0},
    {u"Syd",       u"1000,100,5,2",         0},
    {u"Ddb",       u"1000,100,5,2",         0},
    {u"Ddb",       u"1000,100,5,2,1.5",     0},
};

// The call with another argument in one place.
std::u16string formulaOf(const Call& call, std::size_t place, std::u16string_view argument)
{
    std::u16string formula(call.name);
    std::size_t begin = 0;
    for (std::size_t current = 1; current <= call.count(); ++current) {
        const std::size_t end = std::min(call.arguments.find(u',', begin), call.arguments.size());
        formula += current == 1 ? u'(' : u',';
        formula += current == place ? argument : call.arguments.substr(begin, end - begin);
        begin = end + 1;
    }
    return formula + u')';
}

std::string narrowed(std::u16string_view formula)
{
    return {formula.begin(), formula.end()};
}

// Calls `expect(call, place)` for each argument of each call.
template <typename Expect>
void forEachArgument(Expect expect)
{
    for (const Call& call : FixedCalls)
        for (std::size_t place = 1; place <= call.count(); ++place)
            expect(call, place);
}

TEST(Numeric, takesWhatReadsAsANumberInAnyPlace)
{
    ArgumentCells cells;
    const struct {
        const char* behaviour;
        std::u16string_view argument;
        std::u16string_view number;
    } kinds[] = {
        {"a cell",                                   u"A1",           u"0.5" },
        {"a formula's cell",                         u"J1",           u"1.5" },
        {"a range of one cell",                      u"A1:A1",        u"0.5" },
        {"a cell of another sheet",                  u"Sheet2!A1",    u"0.25"},
        {"a range of one cell of another sheet",     u"Sheet2!A1:A1", u"0.25"},
        {"a date is its serial, the result no date", u"B1",           u"0.5" },
        {"an expression that is a date",             u"(B1+1)",       u"1.5" },
        {"a logical",                                u"TRUE",         u"1"   },
        {"a false logical",                          u"FALSE",        u"0"   },
        {"a logical in a cell",                      u"E1",           u"1"   },
        {"an empty cell",                            u"F1",           u"0"   },
        {"a cell that was never there",              u"Sheet3!Z99",   u"0"   },
    };
    for (const auto& kind : kinds) {
        forEachArgument([&](const Call& call, std::size_t place) {
            const std::u16string formula = formulaOf(call, place, kind.argument);
            EXPECT_EQ(cells.answer(formula), cells.answer(formulaOf(call, place, kind.number)))
                << kind.behaviour << ": " << narrowed(formula);
        });
    }
}

TEST(Numeric, readsATextThatIsANumberButNotWhereDigitsAreCounted)
{
    ArgumentCells cells;
    for (const std::u16string_view text : {u"\"0.5\"", u"C1"}) {
        forEachArgument([&](const Call& call, std::size_t place) {
            const std::u16string formula = formulaOf(call, place, text);
            const std::string expected =
                place == call.digitsPlace ? "!!Val" : cells.answer(formulaOf(call, place, u"0.5"));
            EXPECT_EQ(cells.answer(formula), expected) << narrowed(formula);
        });
    }
}

TEST(Numeric, answersTheErrorOfAnArgument)
{
    ArgumentCells cells;
    const struct {
        const char* behaviour;
        std::u16string_view argument;
        const char* answer;
    } kinds[] = {
        {"a text that is no number",    u"\"abc\"",          "!!Val" },
        {"such a text in a cell",       u"D1",               "!!Val" },
        {"the empty text",              u"\"\"",             "!!Val" },
        {"an empty text in a cell",     u"H1",               "!!Val" },
        {"a text that reads as a date", u"\"1/2/2000\"",     "!!Val" },
        {"an error",                    u"(1/0)",            "!!Div0"},
        {"an error in a cell",          u"G1",               "!!Div0"},
        {"no value",                    u"!!NA",             "!!NA"  },
        {"no value in a cell",          u"I1",               "!!NA"  },
        {"a range of several cells",    u"A1:C1",            "!!Ref" },
        {"a range of another sheet",    u"Sheet2!A1:A2",     "!!Ref" },
        {"one cell of several sheets",  u"Sheet1:Sheet2!A1", "!!Ref" },
    };
    for (const auto& kind : kinds) {
        forEachArgument([&](const Call& call, std::size_t place) {
            const std::u16string formula = formulaOf(call, place, kind.argument);
            EXPECT_EQ(cells.answer(formula), kind.answer)
                << kind.behaviour << ": " << narrowed(formula);
        });
    }
}

TEST(Numeric, answersTheLeftmostOfSeveralErrors)
{
    ArgumentCells cells;
    const struct {
        std::u16string_view first;
        std::u16string_view last;
        const char* answer;
    } errors[] = {
        {u"G1",      u"!!NA", "!!Div0"},
        {u"\"abc\"", u"G1",   "!!Val" },
        {u"A1:B1",   u"G1",   "!!Ref" },
    };
    for (const auto& error : errors) {
        for (const Call& call : FixedCalls) {
            if (call.count() < 2)
                continue;
            const std::size_t comma = call.arguments.rfind(u',');
            const std::u16string arguments =
                std::u16string(call.arguments.substr(0, comma + 1)).append(error.last);
            const std::u16string formula = formulaOf({call.name, arguments, 0}, 1, error.first);
            EXPECT_EQ(cells.answer(formula), error.answer) << narrowed(formula);
        }
    }
}

} // namespace
} // namespace vorn
