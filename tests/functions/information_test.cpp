#include "core/workbook.h"
#include "support/formularows.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

// What each test of a kind is asked, and the answers of all of them.
constexpr const char16_t* KindTests[] = {u"IsBlank", u"IsError",   u"IsErr",
                                         u"IsNA",    u"IsLogical", u"IsNumber",
                                         u"IsText",  u"IsNonText", u"IsRef"};

class InformationFunctions : public testing::Test {
protected:
    InformationFunctions()
    {
        cells.fill("A1", {{u"1234"},
                          {u"3/4/2001"},
                          {u"'12"},
                          {u"abc"},
                          {u"TRUE"},
                          {},
                          {u"=1/0"},
                          {u"'"},
                          {u"=NA()"},
                          {u"=A1*2"},
                          {u"=A4&A4"},
                          {u"=A6"}});
        workbook->sheetAt(0)->setCell(0, 12, {CellValue::makeBlank(), 0}); // A13
        cells.put("Sheet2!A1", u"other");
    }

    Cells cells;
};

TEST_F(InformationFunctions, tellTheKindOfAValue)
{
    const struct {
        const char* behaviour;
        const char16_t* argument;
        const char* answers; // in the order of KindTests
    } cases[] = {
        {"a number",                         u"(1234)",             "-----N-N-"},
        {"a number in a cell",               u"(A1)",               "-----N-NR"},
        {"a date is no number",              u"(3/4/2001)",         "-------N-"},
        {"nor in a cell",                    u"(A2)",               "-------NR"},
        {"nor one that was calculated",      u"(A2+1)",             "-------N-"},
        {"a text that reads as a number",    u"(A3)",               "------T-R"},
        {"a text",                           uR"(("abc"))",         "------T--"},
        {"a text in a cell",                 u"(A4)",               "------T-R"},
        {"the empty text is not blank",      uR"((""))",            "------T--"},
        {"nor in a cell",                    u"(A8)",               "------T-R"},
        {"a logical",                        u"(TRUE)",             "----L--N-"},
        {"a logical in a cell",              u"(A5)",               "----L--NR"},
        {"a missing cell",                   u"(A6)",               "B------NR"},
        {"a cell that has only a style",     u"(A13)",              "B------NR"},
        {"an error",                         u"(1/0)",              "-EE----N-"},
        {"an error in a cell",               u"(A7)",               "-EE----NR"},
        {"a value that is not available",    u"(NA())",             "-E-A---N-"},
        {"and in a cell",                    u"(A9)",               "-E-A---NR"},
        {"a formula's number",               u"(A10)",              "-----N-NR"},
        {"a formula's text",                 u"(A11)",              "------T-R"},
        {"a formula's blank",                u"(A12)",              "B------NR"},
        {"a range of one cell is that cell", u"(A4:A4)",            "------T-R"},
        {"a range of several is an error",   u"(A1:A2)",            "-EE----NR"},
        {"a reversed one too",               u"(A2:A1)",            "-EE----NR"},
        {"another sheet's cell",             u"(Sheet2!A1)",        "------T-R"},
        {"another sheet's range",            u"(Sheet2!A1:B2)",     "-EE----NR"},
        {"a cell of two sheets",             u"(Sheet1:Sheet2!A1)", "-EE----NR"},
        {"a dead reference is an error",     u"(!!Ref)",            "-EE----N-"},
        {"a reference that is chosen",       u"(If(TRUE,A4,1))",    "------T-R"},
        {"a reference that is computed",     u"(Index(A1:A9,4,1))", "------T-R"},
    };
    for (const auto& c : cases) {
        for (std::size_t test = 0; test < std::size(KindTests); ++test) {
            const std::u16string formula = std::u16string(KindTests[test]) + c.argument;
            EXPECT_EQ(cells.answer(formula), c.answers[test] == '-' ? "FALSE" : "TRUE")
                << c.behaviour << ": " << std::string(formula.begin(), formula.end());
        }
    }
}

TEST_F(InformationFunctions, takeOneArgument)
{
    for (const char16_t* test : KindTests) {
        EXPECT_EQ(cells.answer(std::u16string(test) + u"()"), "refused 17");
        EXPECT_EQ(cells.answer(std::u16string(test) + u"(1,2)"), "refused 18");
    }
}

TEST_F(InformationFunctions, letNoErrorThrough)
{
    expectAnswers(cells, {
                             {"an error as a number",    uR"(IsText(1/0)&"")",              "\"false\""},
                             {"an error beside another", u"Exact(IsError(1/0),IsNA(NA()))", "TRUE"     },
    });
}

TEST_F(InformationFunctions, naIsTheErrorOfWhatIsNotAvailable)
{
    expectAnswers(cells, {
                             {"by itself",        u"NA()",       "!!NA"      },
                             {"in a sum",         u"NA()+1",     "!!NA"      },
                             {"in a function",    u"Len(NA())",  "!!NA"      },
                             {"it can be typed",  u"IsNA(!!NA)", "TRUE"      },
                             {"it takes nothing", u"NA(1)",      "refused 18"},
    });
}

TEST_F(InformationFunctions, nOfAReferenceIsAlwaysZero)
{
    expectAnswers(cells, {
                             {"a cell with a number",                     u"N(A1)",            "0"   },
                             {"a range of that one cell",                 u"N(A1:A1)",         "0"   },
                             {"a cell with a logical",                    u"N(A5)",            "0"   },
                             {"a cell with an error",                     u"N(A7)",            "0"   },
                             {"a range",                                  u"N(A1:A2)",         "0"   },
                             {"another sheet's cell",                     u"N(Sheet2!A1)",     "0"   },
                             {"a reference that is chosen",               u"N(If(TRUE,A1,1))", "0"   },
                             {"but a number is itself",                   u"N(2.5)",           "2.5" },
                             {"also one from a cell",                     u"N(A1+0)",          "1234"},
                             {"a logical is 0 or 1",                      u"N(TRUE)",          "1"   },
                             {"a logical is 0 or 1",                      u"N(1=2)",           "0"   },
                             {"an error is its number",                   u"N(NA())",          "42"  },
                             {"an error is its number",                   u"N(1/0)",           "7"   },
                             {"a text is 0 even if it reads as a number", uR"(N("12"))",       "0"   },
                             {"a date is 0",                              u"N(3/4/2001)",      "0"   },
                             {"a date from a cell too",                   u"N(A2+0)",          "0"   },
    });
}

} // namespace
} // namespace vorn
