// What is compiled and printed reads as it was typed, and compiles to the same code again.
#include "core/error.h"
#include "core/heap.h"
#include "core/workbook.h"
#include "formula/compiler.h"
#include "functions/table.h"
#include "numfmt/locale.h"
#include "support/codetext.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace vorn {
namespace {

// Makes formulas in the very spelling of the printer. Divisions are left out: three numbers with
// slashes between them are a date.
class FormulaMaker {
public:
    explicit FormulaMaker(unsigned seed) : random_(seed) {}

    std::u16string formula() { return u"=" + expression(4); }

    // The same formula as somebody else might type it.
    std::u16string sloppy(const std::u16string& text)
    {
        std::u16string sloppyText;
        bool quoted = false;
        for (char16_t unit : text) {
            quoted = quoted != (unit == u'"');
            const bool separates = std::u16string_view(u"+-*^&(),%").find(unit) != text.npos;
            const bool exponent = sloppyText.ends_with(u'e') || sloppyText.ends_with(u'E');
            if (!quoted && separates && !exponent && below(3) == 0)
                sloppyText += u' ';
            const bool letter = unit >= u'a' && unit <= u'z';
            sloppyText +=
                letter && !quoted && below(2) == 0 ? static_cast<char16_t>(unit - 32) : unit;
        }
        return sloppyText;
    }

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    template <std::size_t count>
    std::u16string_view oneOf(const std::u16string_view (&choices)[count])
    {
        return choices[below(count)];
    }

    std::u16string expression(int depth)
    {
        static constexpr std::u16string_view operators[] = {u"+", u"-", u"*",  u"^",  u"&", u"=",
                                                            u"<", u">", u"<=", u">=", u"<>"};
        std::u16string text = unary(depth);
        for (int more = below(3); more > 0; --more) {
            text += oneOf(operators);
            text += unary(depth);
        }
        return text;
    }

    std::u16string unary(int depth)
    {
        static constexpr std::u16string_view signs[] = {u"-", u"+", u"--"};
        std::u16string text;
        if (below(5) == 0)
            text += oneOf(signs);
        text += depth > 0 && below(2) == 0 ? nested(depth - 1) : std::u16string(leaf());
        if (below(8) == 0)
            text += u'%';
        return text;
    }

    std::u16string_view leaf()
    {
        static constexpr std::u16string_view leaves[] = {
            u"0",
            u"1",
            u"2.5",
            u"0.001",
            u"1e20",
            u"1.5e-7",
            u"12345678",
            u"0.1",
            u"true",
            u"false",
            u"!!NA",
            u"!!Ref",
            u"\"\"",
            u"\"a b\"",
            u"\"x\"\"y\"",
            u"\"A1+(\"",
            u"\"\u00e4\"",
            u"A1",
            u"$A1",
            u"A$1",
            u"$A$1",
            u"IV16384",
            u"B7:C9",
            u"$A$1:A1",
            u"C9:B7",
            u"Sheet2!A1",
            u"Sheet1:Sheet2!B7:$C$9",
            u"'My Sheet'!A1",
            u"'Sheet1:My Sheet'!A1:IV1",
            u"Rent",
            u"rate_1",
            u"Pi()",
            u"Rand()",
            u"Today()",
        };
        return oneOf(leaves);
    }

    std::u16string nested(int depth)
    {
        switch (below(3)) {
        case 0:
            return u"(" + expression(depth) + u")";
        case 1:
            return call(FunctionRowIf, 2 + below(2), depth);
        default:
            const int row = below(FirstActionRow);
            const int least = FunctionTable[row].minArguments;
            return call(row,
                        least + below(std::min(3, FunctionTable[row].maxArguments - least + 1)),
                        depth);
        }
    }

    std::u16string call(int row, int count, int depth)
    {
        std::u16string text(FunctionTable[row].name);
        text += u'(';
        for (int argument = 0; argument < count; ++argument) {
            if (argument > 0)
                text += u',';
            text += expression(depth);
        }
        return text + u')';
    }

    std::mt19937 random_;
};

void addName(std::u16string_view name)
{
    DefinedName record;
    record.name = duplicateString(name);
    workbook->names.append(record);
}

struct RoundTripDocument {
    TestDocument document;

    RoundTripDocument()
    {
        workbook->sheetAt(2)->setName(u"My Sheet");
        addName(u"Rent");
        addName(u"rate_1");
    }
};

TEST(RoundTrip, givesBackWhatWasTyped)
{
    const RoundTripDocument document;
    FormulaMaker maker(1);
    const CellPosition base{100, 50, 1};
    int printed = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::u16string text = maker.formula();
        const std::u16string once = compileAndPrint(text, base);
        if (text.size() > 999) {
            EXPECT_EQ(once, u"");
            EXPECT_EQ(errorState.code, ErrorTooComplex);
            clearError();
            continue;
        }
        ASSERT_EQ(errorState.code, ErrorNone) << std::string(text.begin(), text.end());
        ASSERT_EQ(once, text);
        ASSERT_EQ(compileAndPrint(maker.sloppy(text), base), text);
        ++printed;
    }
    EXPECT_GT(printed, 2700);
}

TEST(RoundTrip, makesTheSameCodeAgain)
{
    const RoundTripDocument document;
    FormulaMaker maker(2);
    const CellPosition base{3, 200, 0};
    for (int round = 0; round < 2000; ++round) {
        const std::u16string text = maker.formula();
        // Each compile enters its texts anew, so only codes without texts can be compared.
        if (text.find(u'"') != text.npos || text.size() > 999)
            continue;
        const std::string code = compileFormula(text, base).code;
        ASSERT_EQ(compileFormula(compileAndPrint(text, base), base).code, code);
    }
}

TEST(RoundTrip, readsWhereTheFormulaIsCopiedTo)
{
    const RoundTripDocument document;
    const CellPosition from{10, 10, 0};
    EXPECT_EQ(compileAndPrint(u"=K11+L12+J10+$A$1+A$1+$A1", from), u"=K11+L12+J10+$A$1+A$1+$A1");
    EXPECT_EQ(compileFormula(u"=K11", from).code, compileFormula(u"=B2", {1, 1, 0}).code);
}

TEST(RoundTrip, showsEachFunctionInItsOwnSpelling)
{
    const TestDocument document;
    for (int row = 0; row < FirstActionRow; ++row) {
        const FunctionRow& function = FunctionTable[row];
        std::u16string text = u"=" + std::u16string(function.name) + u"(";
        for (int argument = 0; argument < function.maxArguments; ++argument)
            text += argument == 0 ? u"1" : u",1";
        text += u")";
        std::u16string small = text;
        for (char16_t& unit : small)
            unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
        EXPECT_EQ(compileAndPrint(small), text) << row;
        clearError();
    }
}

TEST(RoundTrip, changesOnlyTheShape)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        std::u16string_view typed, shown;
    } cases[] = {
        {"letters, dots, blanks and zeros", u"=a1..b2+ 1.50",               u"=A1:B2+1.5"       },
        {"both signs and the parentheses",  u"=-(-1)",                      u"=-(-1)"           },
        {"a plus",                          u"=+1",                         u"=+1"              },
        {"a power of a sign",               u"=2^-1",                       u"=2^-1"            },
        {"the spelling of functions",       u"=SUM(a1,VLOOKUP(1,a1:b3,2))",
         u"=Sum(A1,VLookup(1,A1:B3,2))"                                                         },
        {"logicals in small letters",       u"=TRUE=False",                 u"=true=false"      },
        {"the case of sheets",              u"=SHEET2!a1",                  u"=Sheet2!A1"       },
        {"sheets in their order",           u"=sheet3:sheet1!a1",           u"=Sheet1:Sheet3!A1"},
        {"quotes that nothing needs",       u"='Sheet2'!A1",                u"=Sheet2!A1"       },
        {"an If of two",                    u"=if(a1,2)",                   u"=If(A1,2)"        },
        {"an If of three",                  u"=if(a1,2,3)",                 u"=If(A1,2,3)"      },
        {"a number of many digits",         u"=0.30000000000000004",        u"=0.3"             },
        {"an exponent",                     u"=1E+20",                      u"=1e20"            },
        {"an exponent that is not needed",  u"=1e3",                        u"=1000"            },
        {"an error in any case",            u"=!!na",                       u"=!!NA"            },
        {"a time without seconds",          u"=12:30",                      u"=12:30:00"        },
    };
    for (const auto& c : cases)
        EXPECT_EQ(compileAndPrint(c.typed), c.shown) << c.behaviour;
}

TEST(RoundTrip, cannotKeepWhatTheTextDoesNotTell)
{
    const TestDocument document;
    // A year of two digits is read into another century than it was typed in.
    const std::u16string date = compileAndPrint(u"=1/2/1920");
    EXPECT_NE(compileFormula(date).code, compileFormula(u"=1/2/1920").code);
    // Divisions that blanks kept apart become a date.
    const std::u16string divisions = compileAndPrint(u"=10 /2 /3");
    EXPECT_EQ(divisions, u"=10/2/3");
    EXPECT_NE(compileFormula(divisions).code, compileFormula(u"=10 /2 /3").code);
}

TEST(RoundTrip, followsTheLocale)
{
    const TestDocument document("de_DE");
    EXPECT_EQ(compileAndPrint(u"=sum(1,5;2)"), u"=Sum(1,5;2)");
    localeInfo.list = u'|';
    EXPECT_EQ(compileAndPrint(u"=sum(1,5|2)"), u"=Sum(1,5|2)");
}

} // namespace
} // namespace vorn
