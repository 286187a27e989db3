#include "core/chain.h"
#include "core/error.h"
#include "core/pool.h"
#include "formula/machine.h"
#include "functions/table.h"
#include "support/cells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

struct FormulaCase {
    const char* behaviour;
    const char16_t* formula;
    const char* result;
};

// The document of all the rows below:
//   A1:A3  1, 2, 6
//   B1:B9  5, the date 36527, texts abc and 7, TRUE, an empty text, !!Div0, no cell, a blank cell
//   C1:C4  10, !!Div0, !!NA, 20
//   Z      empty
//   E1:E8  2, 4, 4, 4, 5, 5, 7, 9
//   F1:F3  a date before a number, text, a later date
//   Sheet2 A1:A2  100, 200      Sheet3 A1  1000
class Statistical : public testing::Test {
protected:
    Statistical()
    {
        cells.fill("A1", {{u"1"}, {u"2"}, {u"6"}});
        cells.fill("B1", {{u"5"}, {u"1/2/2000"}, {u"abc"}, {u"'7"}, {u"TRUE"}, {u"'"}, {u"=1/0"}});
        cells.store("B9", CellValue::makeBlank());
        cells.fill("C1", {{u"10"}, {u"=1/0"}, {u"=!!NA"}, {u"20"}});
        cells.fill("E1", {{u"2"}, {u"4"}, {u"4"}, {u"4"}, {u"5"}, {u"5"}, {u"7"}, {u"9"}});
        cells.fill("F1", {{u"1/1/1900"}, {u"abc"}, {u"1/3/1900"}});
        cells.fill("Sheet2!A1", {{u"100"}, {u"200"}});
        cells.fill("Sheet3!A1", {{u"1000"}});
    }

    template <std::size_t count>
    void expectResults(const FormulaCase (&cases)[count])
    {
        for (const FormulaCase& c : cases)
            EXPECT_EQ(cells.answer(c.formula), c.result) << c.behaviour;
    }

    Cells cells;
};

TEST_F(Statistical, countCountsNumbersAndNoDates)
{
    expectResults({
        {"numbers",                                u"=Count(1,2.5,-3)",            "3"         },
        {"a text that reads as a number does not", u"=Count(1,\"2\",TRUE)",        "1"         },
        {"a date does not",                        u"=Count(1/2/2000)",            "0"         },
        {"an error does not and is dropped",       u"=Count(1/0,1)",               "1"         },
        {"in cells only numbers count",            u"=Count(B1:B9)",               "1"         },
        {"an error in a cell is dropped too",      u"=Count(C1:C4)",               "2"         },
        {"one cell",                               u"=Count(A1)",                  "1"         },
        {"an empty cell",                          u"=Count(Z1)",                  "0"         },
        {"a date in a cell",                       u"=Count(B2)",                  "0"         },
        {"another sheet",                          u"=Count(Sheet2!A1:A9)",        "2"         },
        {"all sheets",                             u"=Count(Sheet1:Sheet3!A1:A9)", "6"         },
        {"a whole column",                         u"=Count(A1:A16384)",           "3"         },
        {"corners out of order hold no cells",     u"=Count(A3:A1)",               "0"         },
        {"ranges and numbers mixed",               u"=Count(A1:A3,4,Sheet2!A1)",   "5"         },
        {"an error pending from elsewhere shows",  u"=Count(-(1/0))",              "!!Div0"    },
        {"no argument",                            u"=Count()",                    "refused 17"},
    });
}

TEST_F(Statistical, countACountsAllButBlanks)
{
    expectResults({
        {"an empty text and a logical count",     u"=CountA(1,\"\",TRUE)",         "3"         },
        {"an error counts",                       u"=CountA(1/0)",                 "1"         },
        {"a date counts",                         u"=CountA(1/2/2000)",            "1"         },
        {"empty texts and errors in cells count", u"=CountA(B1:B9)",               "7"         },
        {"a cell that has only a style does not", u"=CountA(B9)",                  "0"         },
        {"a missing cell does not",               u"=CountA(B8,Z1:Z9)",            "0"         },
        {"all sheets",                            u"=CountA(Sheet1:Sheet3!A1:A9)", "6"         },
        {"whole columns",                         u"=CountA(A1:B16384)",           "10"        },
        {"corners out of order hold no cells",    u"=CountA(B9:A1)",               "0"         },
        {"thirty arguments",
         u"=CountA(1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,"
         u"30)",                                                                   "30"        },
        {"one more",
         u"=CountA(1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,"
         u"30,31)",                                                                "refused 18"},
    });
}

TEST_F(Statistical, sumReadsTextsOnlyWhereTheyAreArguments)
{
    expectResults({
        {"numbers",                             u"=Sum(1,2.5,-3)",            "0.5"   },
        {"a text that reads and a logical add", u"=Sum(\"2\",TRUE,1)",        "4"     },
        {"a text that does not is an error",    u"=Sum(\"x\")",               "!!Val" },
        {"an empty text is an error",           u"=Sum(\"\",1)",              "!!Val" },
        {"in cells the same add nothing",       u"=Sum(B3:B6,1)",             "1"     },
        {"a text in one cell adds nothing",     u"=Sum(B4)",                  "0"     },
        {"an error as argument is the result",  u"=Sum(1,1/0)",               "!!Div0"},
        {"the leftmost of several",             u"=Sum(!!NA,1/0)",            "!!NA"  },
        {"an empty range",                      u"=Sum(Z1:Z9)",               "0"     },
        {"another sheet",                       u"=Sum(Sheet2!A1:A2)",        "300"   },
        {"all sheets",                          u"=Sum(Sheet1:Sheet3!A1:A2)", "1303"  },
        {"all sheets, named backward",          u"=Sum(Sheet3:Sheet1!A1:A2)", "1303"  },
        {"a whole column",                      u"=Sum(A1:A16384)",           "9"     },
        {"corners out of order hold no cells",  u"=Sum(A3:A1)",               "0"     },
        {"a rectangle out of order",            u"=Sum(B2:A1)",               "0"     },
        {"too great for a number",              u"=Sum(1E308,1E308)",         "!!Num" },
    });
}

TEST_F(Statistical, sumIsADateIfACellIsOne)
{
    expectResults({
        {"a date in a cell marks the sum",       u"=Sum(B1:B2)",      "date 36532"},
        {"also among others",                    u"=Sum(1,B2,1)",     "date 36529"},
        {"a date as argument does not",          u"=Sum(1/2/2000,1)", "36528"     },
        {"nor does the result of an expression", u"=Sum(B2+1)",       "36528"     },
    });
}

TEST_F(Statistical, sumGivesUpWithoutAResultAtAnErrorInACell)
{
    expectResults({
        {"there is no result",                     u"=Sum(C1:C4)",                 "blank" },
        {"what is left of it stays and shows",     u"=Sum(5,C1:C4)",               "5"     },
        {"a text, too",                            u"=Sum(\"x\",C1:C4)",           "\"x\"" },
        {"an error, too",                          u"=Sum(1/0,C1:C4)",             "!!Div0"},
        {"what is right of it was taken",          u"=Sum(C1:C4,5)",               "blank" },
        {"two that are left are no result",        u"=Sum(5,6,C1:C4)",             "blank" },
        {"an error that was met before is lost",   u"=Sum(C1:C4,!!NA)",            "blank" },
        {"an operator finds nothing behind it",    u"=Sum(C1:C4)+1",               "blank" },
        {"nor before it",                          u"=1+Sum(C1:C4)",               "blank" },
        {"a function that wants it finds nothing", u"=Max(1,Sum(C1:C4))",          "blank" },
        {"an operator takes what is left",         u"=Sum(5,C1:C4)+1",             "!!Div0"},
        {"an error on one of several sheets",      u"=Sum(7,Sheet1:Sheet3!C1:C4)", "7"     },
        {"no error is met in other cells",         u"=Sum(C1,C4)",                 "30"    },
    });
}

TEST_F(Statistical, sumOverANewErrorKeepsWhatItShowed)
{
    cells.fill("H1", {{u"1"}, {u"2"}, {u"=Sum(H1:H2)"}});
    EXPECT_EQ(cells.shown("H3"), "3");
    cells.put("H2", u"=1/0");
    EXPECT_EQ(cells.shown("H3"), "3") << "the error does not show";
    cells.put("H1", u"5");
    EXPECT_EQ(cells.shown("H3"), "3");
    cells.put("H2", u"7");
    EXPECT_EQ(cells.shown("H3"), "12");
}

// The number of this error is that of none, so that nothing pends.
TEST_F(Statistical, sumGivesUpAtTheErrorZeroToo)
{
    cells.store("H1", CellValue::makeError(CellErrorNull));
    cells.put("H2", u"=Sum(H1:I1)");
    cells.put("H3", u"=Sum(5,H1:I1)");
    EXPECT_EQ(cells.shown("H2"), "blank");
    EXPECT_EQ(cells.shown("H3"), "5");
}

TEST_F(Statistical, textsThatASumLeavesBehindAreReleased)
{
    const auto liveTexts = [] {
        const std::int32_t count = stringPool->beginScan();
        stringPool->endScan();
        return count;
    };
    cells.put("H1", u"=Sum(\"a\"&\"b\",\"c\"&\"d\",C1:C4)");
    const std::int32_t before = liveTexts();
    for (int pass = 0; pass < 10; ++pass)
        recalculate();
    EXPECT_EQ(liveTexts(), before);
    EXPECT_EQ(cells.shown("H1"), "blank");
}

TEST_F(Statistical, productTakesNumbersOnly)
{
    expectResults({
        {"numbers",                                   u"=Product(2,3,-4)",           "-24"   },
        {"a text that reads as a number is left out", u"=Product(\"2\",3)",          "3"     },
        {"a logical is left out",                     u"=Product(FALSE,3)",          "3"     },
        {"a date is left out",                        u"=Product(1/2/2000,3)",       "3"     },
        {"a date in a cell too",                      u"=Product(B1:B6)",            "5"     },
        {"the product of nothing is 0",               u"=Product(Z1:Z9)",            "0"     },
        {"of a text alone too",                       u"=Product(\"x\")",            "0"     },
        {"a zero",                                    u"=Product(A1:A3,0)",          "0"     },
        {"an error as argument is ignored",           u"=Product(1/0,2)",            "2"     },
        {"an error in a cell is the result",          u"=Product(B1:B9)",            "!!Div0"},
        {"all sheets",                                u"=Product(Sheet1:Sheet3!A1)", "100000"},
        {"corners out of order hold no cells",        u"=Product(A3:A1,5)",          "5"     },
        {"too great for a number",                    u"=Product(1E308,10)",         "!!Num" },
    });
}

TEST_F(Statistical, averageTakesNumbersAndDates)
{
    expectResults({
        {"numbers",                             u"=Average(1,2,6)",            "3"     },
        {"cells",                               u"=Average(A1:A3)",            "3"     },
        {"a scalar error is ignored",           u"=Average(1/0,2)",            "2"     },
        {"texts and logicals are left out",     u"=Average(\"4\",TRUE,2)",     "2"     },
        {"in cells too",                        u"=Average(B3:B6,2)",          "2"     },
        {"a date makes a date",                 u"=Average(1/1/1900,4)",       "date 3"},
        {"a date in a cell too",                u"=Average(F1:F3)",            "date 3"},
        {"of nothing",                          u"=Average(Z1:Z9)",            "!!Div0"},
        {"of texts",                            u"=Average(B3:B4)",            "!!Div0"},
        {"of an error alone",                   u"=Average(!!NA)",             "!!Div0"},
        {"an error in a cell is the result",    u"=Average(B1:B9)",            "!!Div0"},
        {"even if there is nothing else",       u"=Average(C3)",               "!!NA"  },
        {"the last one of a range shows",       u"=Average(C1:C4)",            "!!NA"  },
        {"but the leftmost of several ranges",  u"=Average(C2,C3)",            "!!Div0"},
        {"an argument beside it does not help", u"=Average(5,C3)",             "!!NA"  },
        {"all sheets",                          u"=Average(Sheet1:Sheet3!A1)", "367"   },
        {"corners out of order hold no cells",  u"=Average(A3:A1)",            "!!Div0"},
    });
}

TEST_F(Statistical, maxIsADateIfAnyOfItsNumbersIs)
{
    expectResults({
        {"numbers",                            u"=Max(3,7,-9)",              "7"      },
        {"all below 0",                        u"=Max(-3,-7)",               "-3"     },
        {"cells",                              u"=Max(A1:A3)",               "6"      },
        {"a number above a date is a date",    u"=Max(5,1/1/1900)",          "date 5" },
        {"also in cells",                      u"=Max(F1:F3,40)",            "date 40"},
        {"texts and logicals are left out",    u"=Max(\"9\",TRUE,-1)",       "-1"     },
        {"a scalar error is ignored",          u"=Max(1/0,2)",               "2"      },
        {"an error in a cell is the result",   u"=Max(C1:C4)",               "!!NA"   },
        {"of nothing",                         u"=Max(Z1:Z9)",               "0"      },
        {"of texts",                           u"=Max(B3:B4)",               "0"      },
        {"all sheets",                         u"=Max(Sheet1:Sheet3!A1:A9)", "1000"   },
        {"corners out of order hold no cells", u"=Max(A3:A1)",               "0"      },
    });
}

TEST_F(Statistical, minIsADateIfAnyOfItsNumbersIs)
{
    expectResults({
        {"numbers",                            u"=Min(3,7,-9)",              "-9"    },
        {"all above 0",                        u"=Min(3,7)",                 "3"     },
        {"cells",                              u"=Min(A1:A3)",               "1"     },
        {"a number below a date is a date",    u"=Min(1,1/1/1900)",          "date 1"},
        {"texts and logicals are left out",    u"=Min(\"-9\",FALSE,4)",      "4"     },
        {"a scalar error is ignored",          u"=Min(1/0,2)",               "2"     },
        {"an error in a cell is the result",   u"=Min(C1:C2)",               "!!Div0"},
        {"of nothing",                         u"=Min(Z1:Z9)",               "0"     },
        {"all sheets",                         u"=Min(Sheet1:Sheet3!A1:A9)", "1"     },
        {"corners out of order hold no cells", u"=Min(A3:A1)",               "0"     },
    });
}

// The numbers 2, 4, 4, 4, 5, 5, 7, 9 lie 32 squares apart from their mean of 5.
TEST_F(Statistical, varianceOfASampleDividesByOneLess)
{
    expectResults({
        {"a sample",                           u"=Var(E1:E8)",          "4.57142857142857"},
        {"numbers",                            u"=Var(1,2,3,4)",        "1.66666666666667"},
        {"one number",                         u"=Var(5)",              "!!Div0"          },
        {"nothing",                            u"=Var(Z1:Z9)",          "!!Div0"          },
        {"dates are left out",                 u"=Var(1/2/2000,1,3)",   "2"               },
        {"texts and logicals too",             u"=Var(\"9\",TRUE,1,3)", "2"               },
        {"a scalar error is ignored",          u"=Var(1/0,1,3)",        "2"               },
        {"an error in a cell is the result",   u"=Var(C1:C4)",          "!!NA"            },
        {"even with too few numbers",          u"=Var(C3)",             "!!NA"            },
        {"other sheets",                       u"=Var(Sheet2!A1:A2)",   "5000"            },
        {"corners out of order hold no cells", u"=Var(E8:E1)",          "!!Div0"          },
    });
}

TEST_F(Statistical, varianceOfAPopulationDividesByItsSize)
{
    expectResults({
        {"a population",                     u"=VarP(E1:E8)",            "4"     },
        {"one number",                       u"=VarP(5)",                "0"     },
        {"nothing",                          u"=VarP(Z1:Z9)",            "!!Div0"},
        {"dates are left out",               u"=VarP(B1:B6,1)",          "4"     },
        {"a scalar error is ignored",        u"=VarP(!!NA,1,3)",         "1"     },
        {"an error in a cell is the result", u"=VarP(C1:C2)",            "!!Div0"},
        {"all sheets",                       u"=VarP(Sheet1:Sheet3!A2)", "9801"  },
    });
}

TEST_F(Statistical, standardDeviationIsTheRootOfTheVariance)
{
    expectResults({
        {"of a sample",                      u"=Stdev(E1:E8)",           "2.1380899352994"},
        {"of a population",                  u"=StdevP(E1:E8)",          "2"              },
        {"of one number as a sample",        u"=Stdev(5)",               "!!Div0"         },
        {"of one number as a population",    u"=StdevP(5)",              "0"              },
        {"of nothing as a sample",           u"=Stdev(Z1:Z9)",           "!!Div0"         },
        {"of nothing as a population",       u"=StdevP(Z1:Z9)",          "!!Div0"         },
        {"dates are left out of a sample",   u"=Stdev(1/2/2000,1,3)",    "1.4142135623731"},
        {"and of a population",              u"=StdevP(1/2/2000,1,3)",   "1"              },
        {"texts and logicals too",           u"=StdevP(\"9\",TRUE,1,3)", "1"              },
        {"a scalar error is ignored",        u"=Stdev(1/0,3,3)",         "0"              },
        {"in a population too",              u"=StdevP(1/0,1,3)",        "1"              },
        {"an error in a cell is the result", u"=Stdev(C1:C4)",           "!!NA"           },
        {"in a population too",              u"=StdevP(C1:C4)",          "!!NA"           },
        {"other sheets",                     u"=StdevP(Sheet2!A1:A2)",   "50"             },
    });
}

// Three times 1.3: the sums round so that the deviation is -1.8e-15.
TEST_F(Statistical, equalNumbersMayRoundToAVarianceBelowZero)
{
    const CellValue variance = cells.evaluate(u"=VarP(1.3,1.3,1.3)");
    EXPECT_LT(variance.number(), 0);
    EXPECT_GT(variance.number(), -1e-15);
    expectResults({
        {"whose root is no number", u"=StdevP(1.3,1.3,1.3)", "!!Num"},
        {"of a sample too",         u"=Stdev(1.3,1.3,1.3)",  "!!Num"},
    });
}

TEST_F(Statistical, countblankTakesErrorsAndEmptyTextsForBlank)
{
    expectResults({
        {"empty texts, errors, styles, no cells",    u"=Countblank(B1:B9)",               "4"         },
        {"an error",                                 u"=Countblank(B7)",                  "1"         },
        {"a number",                                 u"=Countblank(A1)",                  "0"         },
        {"empty cells",                              u"=Countblank(Z1:Z9)",               "9"         },
        {"a rectangle",                              u"=Countblank(A1:D4)",               "7"         },
        {"a whole column",                           u"=Countblank(A1:A16384)",           "16381"     },
        {"the whole sheet",                          u"=Countblank(Sheet2!A1:IV16384)",   "4194302"   },
        {"all sheets count as the first",            u"=Countblank(Sheet1:Sheet3!A1:A9)", "6"         },
        {"another sheet",                            u"=Countblank(Sheet3!A1:A3)",        "2"         },
        {"corners out of order",                     u"=Countblank(A9:A1)",               "0"         },
        {"corners next to each other, out of order", u"=Countblank(B2:A1)",               "0"         },
        {"an empty text",                            u"=Countblank(\"\")",                "1"         },
        {"a text",                                   u"=Countblank(\"x\")",               "0"         },
        {"a number as argument",                     u"=Countblank(5)",                   "0"         },
        {"a logical",                                u"=Countblank(FALSE)",               "0"         },
        {"an error as argument is no blank",         u"=Countblank(1/0)",                 "0"         },
        {"two arguments",                            u"=Countblank(A1,A2)",               "refused 18"},
    });
}

TEST_F(Statistical, countifComparesInTheOrderOfKinds)
{
    expectResults({
        {"greater numbers",                     u"=Countif(A1:A3,\">1\")",        "2"   },
        {"at least",                            u"=Countif(A1:A3,\">=2\")",       "2"   },
        {"less",                                u"=Countif(A1:A3,\"<6\")",        "2"   },
        {"at most",                             u"=Countif(A1:A3,\"<=6\")",       "3"   },
        {"unequal",                             u"=Countif(A1:A3,\"<>2\")",       "2"   },
        {"equal to a number",                   u"=Countif(A1:A3,2)",             "1"   },
        {"equal to the number in a cell",       u"=Countif(E1:E8,E2)",            "3"   },
        {"a text of the number is not equal",   u"=Countif(A1:A3,\"2\")",         "0"   },
        {"= is no sign",                        u"=Countif(A1:A3,\"=2\")",        "0"   },
        {"a number does not match a date",      u"=Countif(B1:B9,36527)",         "0"   },
        {"a date does",                         u"=Countif(B1:B9,1/2/2000)",      "1"   },
        {"a date behind a sign",                u"=Countif(B1:B9,\"<1/3/2000\")", "2"   },
        {"no date is below a number",           u"=Countif(B1:B9,\"<99999\")",    "1"   },
        {"a text",                              u"=Countif(B1:B9,\"abc\")",       "1"   },
        {"with its case",                       u"=Countif(B1:B9,\"ABC\")",       "0"   },
        {"though the operator = ignores it",    u"=B3=\"ABC\"",                   "TRUE"},
        {"a text that reads as a number",       u"=Countif(B1:B9,\"7\")",         "1"   },
        {"an empty text",                       u"=Countif(B1:B9,\"\")",          "1"   },
        {"a logical",                           u"=Countif(B1:B9,TRUE)",          "1"   },
        {"an error matches but does not count", u"=Countif(C1:C4,1/0)",           "0"   },
        {"errors do not count as greater",      u"=Countif(C1:C4,\">1\")",        "2"   },
    });
}

TEST_F(Statistical, countifCountsCellsThatDoNotExist)
{
    expectResults({
        {"they lie above every number",              u"=Countif(Z1:Z9,\">2\")",                "9"      },
        {"as do texts, logicals and blanks",         u"=Countif(B1:B9,\">2\")",                "8"      },
        {"they are unequal to everything",           u"=Countif(Z1:Z9,\"<>x\")",               "9"      },
        {"even to a blank",                          u"=Countif(Z1:Z9,\"<>\")",                "9"      },
        {"to which a blank cell is equal",           u"=Countif(B9:B9,\"<>\")",                "0"      },
        {"a blank criterion finds blank cells only", u"=Countif(B8:B9,Z1)",                    "1"      },
        {"nothing is below",                         u"=Countif(Z1:Z9,\"<zz\")",               "0"      },
        {"below the data",                           u"=Countif(A1:A9,\">1\")",                "8"      },
        {"in a whole column",                        u"=Countif(A1:A16384,\">1\")",            "16383"  },
        {"in a whole sheet",                         u"=Countif(Sheet2!A1:IV16384,\"<>100\")", "4194303"},
    });
}

TEST_F(Statistical, countifTakesARangeOfOneSheet)
{
    expectResults({
        {"another sheet",                           u"=Countif(Sheet2!A1:A2,\">150\")", "1"         },
        {"the first of several",                    u"=Countif(Sheet1:Sheet3!A1,1)",    "1"         },
        {"and no other",                            u"=Countif(Sheet1:Sheet3!A1,1000)", "0"         },
        {"corners out of order hold no cells",      u"=Countif(A3:A1,\">1\")",          "0"         },
        {"not even missing ones",                   u"=Countif(Z3:Z1,\"<>x\")",         "0"         },
        {"no range",                                u"=Countif(5,5)",                   "!!Val"     },
        {"an error in its place",                   u"=Countif(1/0,5)",                 "!!Val"     },
        {"several cells as criterion are an error", u"=Countif(A1:A3,A1:A3)",           "0"         },
        {"three arguments",                         u"=Countif(A1,1,A1)",               "refused 18"},
        {"one argument",                            u"=Countif(A1)",                    "refused 17"},
    });
}

TEST_F(Statistical, sumifAddsTheNumbersThatMeetTheCondition)
{
    expectResults({
        {"its own range",                         u"=Sumif(A1:A3,\">1\")",               "8"     },
        {"equal to a number",                     u"=Sumif(E1:E8,4)",                    "12"    },
        {"no match",                              u"=Sumif(A1:A3,\">6\")",               "0"     },
        {"texts, dates and logicals add nothing", u"=Sumif(B1:B6,\">0\")",               "5"     },
        {"an error that meets is the result",     u"=Sumif(B1:B9,\">0\")",               "!!Div0"},
        {"one that does not is none",             u"=Sumif(C1:C4,\"<99\")",              "30"    },
        {"the first of several errors",           u"=Sumif(C1:C4,\">0\")",               "!!Div0"},
        {"another sheet",                         u"=Sumif(Sheet2!A1:A2,\">150\")",      "200"   },
        {"the first of several",                  u"=Sumif(Sheet1:Sheet3!A1:A2,\">0\")", "3"     },
        {"a whole column",                        u"=Sumif(A1:A16384,\">1\")",           "8"     },
        {"corners out of order hold no cells",    u"=Sumif(A3:A1,\">0\")",               "0"     },
    });
}

TEST_F(Statistical, sumifAddsWhatLiesAtTheSamePlaceOfTheSumRange)
{
    expectResults({
        {"another range",                            u"=Sumif(A1:A3,\">1\",E1:E3)",            "8"         },
        {"only its first corner matters",            u"=Sumif(A1:A3,\">1\",E1)",               "8"         },
        {"corners out of order too",                 u"=Sumif(A1:A3,\">1\",E3:E1)",            "9"         },
        {"another sheet",                            u"=Sumif(A1:A3,\">1\",Sheet2!A1)",        "200"       },
        {"the first of several sheets",              u"=Sumif(A1:A2,\">0\",Sheet2:Sheet3!A1)", "300"       },
        {"dates do not add",                         u"=Sumif(A1:A2,\">0\",B1:B2)",            "5"         },
        {"an error that meets is the result",        u"=Sumif(A1:A3,\">1\",C1:C3)",            "!!Div0"    },
        {"the first one, and the walk ends",         u"=Sumif(A1:A3,6,C1:C3)",                 "!!NA"      },
        {"one that does not meet is none",           u"=Sumif(A1:A3,1,C1:C3)",                 "10"        },
        {"an error can be what is asked for",        u"=Sumif(C1:C4,1/0,E1:E4)",               "4"         },
        {"cells that do not exist may meet",         u"=Sumif(Z1:Z3,\">2\",A1:A3)",            "9"         },
        {"also below the data",                      u"=Sumif(A2:A9,\">2\",E1:E8)",            "38"        },
        {"in a whole column",                        u"=Sumif(Z1:Z16384,\"<>x\",E1:E16384)",   "40"        },
        {"row by row across a rectangle",            u"=Sumif(A1:B2,\">0\",E1:F2)",            "6"         },
        {"corners of the tested range out of order", u"=Sumif(A3:A1,\">0\",E1:E3)",            "0"         },
        {"no sum range",                             u"=Sumif(A1:A3,\">0\",5)",                "!!Val"     },
        {"no range",                                 u"=Sumif(5,\">0\",A1:A3)",                "!!Val"     },
        {"an error in its place",                    u"=Sumif(!!NA,\">0\",A1:A3)",             "!!Val"     },
        {"one argument",                             u"=Sumif(A1:A3)",                         "refused 17"},
    });
}

// A row's cells are side by side from the first one stored to the last one.
TEST_F(Statistical, aGapBetweenTwoCellsOfARowIsABlankCell)
{
    cells.put("A20", u"1");
    cells.put("C20", u"1");
    EXPECT_EQ(cells.answer(u"=Countif(B20:B20,Z1)"), "1");
    EXPECT_EQ(cells.answer(u"=Countif(B21:B21,Z1)"), "0");
}

TEST_F(Statistical, sumifStopsAtTheEdgesOfTheSheet)
{
    cells.put("IV16384", u"8");
    EXPECT_EQ(cells.answer(u"=Sumif(A1:C3,\">0\",IU16383)"), "8");
    EXPECT_EQ(cells.answer(u"=Sumif(A1:A3,\">0\",IV16384)"), "8");
}

// Calls a function with one reference to a sheet that is not there, and a number if it takes two.
std::string answerWithoutSheet(void (*function)(), int arguments)
{
    CellValue reference = CellValue::makeRangeRef({0, 0, 2, 0});
    reference.tag = TagSheetRangeRef;
    reference.firstSheet = 7;
    reference.lastSheet = 8;
    pushRaw(reference);
    if (arguments == 2)
        pushNumber(2);
    machine.argumentCount = static_cast<std::uint8_t>(arguments);
    function();
    const std::string answer = describe(popRaw());
    EXPECT_EQ(machine.stackTop, machine.runBase);
    return answer;
}

TEST_F(Statistical, aRangeOfASheetThatIsGoneIsAnError)
{
    EXPECT_EQ(answerWithoutSheet(callSum, 2), "!!Ref");
    EXPECT_EQ(answerWithoutSheet(callCount, 2), "1");
    EXPECT_EQ(answerWithoutSheet(callCountA, 2), "2");
    EXPECT_EQ(answerWithoutSheet(callAverage, 2), "2") << "a scalar error is ignored";
    EXPECT_EQ(answerWithoutSheet(callCountif, 2), "!!Val");
    EXPECT_EQ(answerWithoutSheet(callCountblank, 1), "!!Ref");
}

// A criterion that the lexer cannot read may not spoil those of the formulas behind it.
TEST_F(Statistical, criteriaOfOneFormulaDoNotTouchTheNext)
{
    cells.fill("H1", {
                         {u"=Countif(A1:A3,\"#\")", u"=Countif(A1:A3,\">1\")"}
    });
    EXPECT_EQ(cells.shown("H1"), "0");
    EXPECT_EQ(cells.shown("I1"), "2");
    EXPECT_FALSE(errorStands());
}

} // namespace
} // namespace vorn
