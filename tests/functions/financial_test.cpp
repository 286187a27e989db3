#include "core/pool.h"
#include "functions/answers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

// What the functions of a fixed list of numbers make of each kind of argument stands in
// numeric_test.cpp.

namespace vorn {
namespace {

TEST(Financial, valuesAnnuities)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"savings paid at the begin",     u"Fv(0.06/12,10,-200,-500,1)",       "2581.40337406014" },
        {"paid at the end",               u"Fv(0.01,12,-1000)",                "12682.503013197"  },
        {"without a present value",       u"Fv(0.11/12,35,-2000,0,1)",         "82846.2463719006" },
        {"without interest",              u"Fv(0,10,100)",                     "-1000"            },
        {"without interest, on a value",  u"Fv(0,10,100,50)",                  "-1050"            },
        {"without payments",              u"Fv(0.05,10,0,-1000)",              "1628.89462677744" },
        {"at a loss",                     u"Fv(-0.5,4,-100)",                  "187.5"            },
        {"in a broken number",            u"Fv(0.1,2.5,-100)",                 "269.058706285884" },
        {"past all numbers",              u"Fv(10,1000,-100)",                 "!!Num"            },
        {"two arguments are refused",     u"Fv(0.1,2)",                        "refused 17"       },
        {"what a pension is worth",       u"Pv(0.08/12,240,500)",              "-59777.1458511878"},
        {"without interest",              u"Pv(0,10,100)",                     "-1000"            },
        {"without interest, for a value", u"Pv(0,10,100,50)",                  "-1050"            },
        {"of a future value alone",       u"Pv(0.05,10,0,1000)",               "-613.913253540759"},
        {"paid at the begin",             u"Pv(0.1,3,-100,0,1)",               "273.553719008265" },
        {"any type but 0 is 1",           u"Pv(0.1,3,-100,-50,-0.5)",          "311.119459053344" },
        {"six arguments are refused",     u"Pv(0.1,3,-100,-50,1,1)",           "refused 18"       },
        {"what pays off a loan",          u"Pmt(0.08/12,10,10000)",            "-1037.03208935916"},
        {"paid at the begin",             u"Pmt(0.08/12,10,10000,0,1)",        "-1030.16432717798"},
        {"any type but 0 is 1",           u"Pmt(0.08/12,10,10000,0,17)",       "-1030.16432717798"},
        {"without interest",              u"Pmt(0,10,1000)",                   "-100"             },
        {"what saves up an amount",       u"Pmt(0.06/12,216,0,50000)",         "-129.081160867995"},
        {"of what was lent",              u"Pmt(0.12/12,5,-5000)",             "1030.1989980794"  },
        {"at once",                       u"Pmt(0.1,1,1000)",                  "-1100"            },
        {"in no period",                  u"Pmt(0.1,0,1000)",                  "!!Num"            },
        {"in no period without interest", u"Pmt(0,0,1000)",                    "!!Num"            },
        {"how long to pay off a loan",    u"Nper(0.01,-100,1000)",             "10.5886444594232" },
        {"how long to save it up",        u"Nper(0.01,-100,-1000,10000)",      "60.0821228537617" },
        {"paid at the begin",             u"Nper(0.12/12,-100,-1000,10000,1)", "59.6738656742946" },
        {"how long ago",                  u"Nper(0.01,-100,-1000)",            "-9.57859403981316"},
        {"without interest",              u"Nper(0,-100,1000)",                "10"               },
        {"without either",                u"Nper(0,0,1000)",                   "!!Num"            },
        {"payments below the interest",   u"Nper(0.1,-10,1000)",               "!!Num"            },
    };
    expectAnswers(cells, rows);
}

TEST(Financial, partsPaymentsIntoInterestAndPrincipal)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the interest of the first period",  u"IPmt(0.1,1,3,8000)",       "-800"             },
        {"of a month",                        u"IPmt(0.1/12,1,36,8000)",   "-66.6666666666667"},
        {"of the last period",                u"IPmt(0.1,3,3,8000)",       "-292.447129909366"},
        {"without interest it is 0",          u"IPmt(0,1,3,8000)+0",       "0"                },
        {"paid at the begin it has interest", u"IPmt(0.1,1,3,8000,0,1)",   "-558.308157099698"},
        {"the second",                        u"IPmt(0.1,2,3,8000,0,1)",   "-292.447129909366"},
        {"a period behind the last",          u"IPmt(0.1,5,3,8000)",       "321.691842900302" },
        {"or between two",                    u"IPmt(0.1,1.5,3,8000)",     "-682.03299535915" },
        {"three arguments are refused",       u"IPmt(0.1,1,3)",            "refused 17"       },
        {"the principal of the first",        u"PPmt(0.1,1,3,8000)",       "-2416.91842900302"},
        {"of a month",                        u"PPmt(0.1/12,1,24,2000)",   "-75.6231860083666"},
        {"of the last period",                u"PPmt(0.08,10,10,200000)",  "-27598.0534624214"},
        {"paid at the begin",                 u"PPmt(0.1,1,3,8000,0,1)",   "-2366.16314199395"},
        {"without interest it is all",        u"PPmt(0,1,4,8000)",         "-2000"            },
        {"seven arguments are refused",       u"PPmt(0.1,1,3,8000,0,1,1)", "refused 18"       },
    };
    expectAnswers(cells, rows);
}

// What the formulas of annuities give with 50 digits.
TEST(Financial, agreesWithLongArithmetic)
{
    ArgumentCells cells;
    const struct {
        std::u16string_view formula;
        double truth;
    } rows[] = {
        {u"Fv(0.06/12,10,-200,-500,1)",  2581.40337406018 },
        {u"Fv(0.01,12,-1000)",           12682.503013197  },
        {u"Fv(0.11/12,35,-2000,0,1)",    82846.2463718995 },
        {u"Pv(0.08/12,240,500)",         -59777.145851188 },
        {u"Pv(0.05,10,0,1000)",          -613.913253540759},
        {u"Pmt(0.08/12,10,10000)",       -1037.03208935915},
        {u"Pmt(0.08/12,10,10000,0,1)",   -1030.16432717797},
        {u"Nper(0.01,-100,-1000,10000)", 60.0821228537617 },
    };
    for (const auto& row : rows) {
        const double number = cells.evaluate(row.formula).number();
        EXPECT_NEAR(number, row.truth, 1e-13 * std::abs(row.truth)) << row.truth;
    }
}

TEST(Financial, findsTheRateOfAnAnnuityInTwentyOneRounds)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"of a loan",                      u"Rate(48,-200,8000)",            "0.00770147248823308"},
        {"the golden section",             u"Rate(2,100,-100)",              "0.618033988749895"  },
        {"of what doubles in twelve",      u"Rate(12,0,-100,200)",           "0.0594630943592953" },
        {"paid at the begin",              u"Rate(10,-100,500,0,1)",         "0.202418324076102"  },
        {"any type but 0 is 1",            u"Rate(10,-100,500,0,7)",         "0.202418324076102"  },
        {"from another guess",             u"Rate(5,-100,400,0,0,0.5)",      "0.0793082611605411" },
        {"far below 0",                    u"Rate(3,-10,900)",               "-0.75626593687807"  },
        {"one that is too far",            u"Rate(360,-600,100000)",         "!!Num"              },
        {"is reached from nearer",         u"Rate(360,-600,1E5,0,0,0.01)",   "0.0050058250067624" },
        {"settled one round earlier",      u"Rate(9,-200,1000,0,0,5)",       "0.137044742165826"  },
        {"settled in the last round",      u"Rate(10,-200,1000,0,0,5)",      "0.150984144771128"  },
        {"one round more is not made",     u"Rate(9,-50,1000,0,0,5)",        "!!Num"              },
        {"payments of the wrong sign",     u"Rate(10,100,1000)",             "!!Num"              },
        {"the guess 0 divides by 0",       u"Rate(48,-200,8000,0,0,0)",      "!!Num"              },
        {"an empty cell as the guess too", u"Rate(48,-200,8000,0,0,F1)",     "!!Num"              },
        {"which counts as settled",        u"If(Rate(9,-9,99,0,0,0)>0,1,2)", "2"                  },
        {"what has not settled is not",    u"If(Rate(10,100,1000)>0,1,2)",   "1"                  },
        {"an error comes first",           u"Rate(10,100,\"abc\")",          "!!Val"              },
        {"two arguments are refused",      u"Rate(48,-200)",                 "refused 17"         },
        {"seven too",                      u"Rate(48,-200,8000,0,0,0,0)",    "refused 18"         },
    };
    expectAnswers(cells, rows);
}

// A1:C3 holds numbers among other things; column D numbers and errors; column E one of each kind.
class CashFlowCells : public Cells {
public:
    CashFlowCells()
    {
        fill("A1", {
                       {u"-10000", u"3000"},
                       {u"4200",   u"6800"}
        });
        fill("C1", {{u"110"}, {u""}, {u"121"}});
        fill("D1", {{u"1"}, {u"=1/0"}, {u"2"}, {u"=!!NA"}});
        fill("E1", {{u"abc"}, {u"110"}, {u"TRUE"}, {u"1/2/2000"}, {u"'5"}, {u"=E2*1.1"}});
        fill("Sheet2!A1", {{u"121"}, {u"133.1"}});
    }
};

TEST(Financial, discountsValuesInReadingOrder)
{
    CashFlowCells cells;
    const AnswerRow rows[] = {
        {"values one by one",               u"Npv(0.1,-10000,3000,4200,6800)", "1188.44341233522"},
        {"a range, row by row",             u"Npv(0.1,A1:B2)",                 "1188.44341233522"},
        {"the order matters",               u"Npv(0.1,6800,4200,3000,-10000)", "5076.7024110375" },
        {"ranges and values mixed",         u"Npv(0.1,A1,B1:B1,A2:B2)",        "1188.44341233522"},
        {"one value",                       u"Npv(0.1,100)",                   "90.9090909090909"},
        {"without interest",                u"Npv(0,1,2,3)",                   "6"               },
        {"at a loss",                       u"Npv(-0.5,1,2)",                  "10"              },
        {"the rate 1/2",                    u"Npv(0.5,1,1)",                   "1.11111111111111"},
        {"an empty cell uses no period",    u"Npv(0.1,C1:C3)",                 "200"             },
        {"nor does a single empty one",     u"Npv(0.1,C2,110)",                "100"             },
        {"text, logical and date use none", u"Npv(0.1,E1:E6)",                 "200"             },
        {"nor do they as values",           u"Npv(0.1,\"5\",TRUE,E4+0,110)",   "100"             },
        {"an error is passed over",         u"Npv(0.1,1/0,110)",               "100"             },
        {"an error in a cell is not",       u"Npv(0.1,D2,110)",                "!!Div0"          },
        {"the last of several",             u"Npv(0.1,D1:D4)",                 "!!NA"            },
        {"a range of another sheet",        u"Npv(0.1,Sheet2!A1:A2)",          "220"             },
        {"a cell of several sheets",        u"Npv(0.1,C1,Sheet2:Sheet3!A1)",   "200"             },
        {"a range in the wrong order",      u"Npv(0.1,B2:A1)",                 "0"               },
        {"the rate -1 divides by 0",        u"Npv(-1,100)",                    "!!Div0"          },
        {"but an error comes first",        u"Npv(-1,D4)",                     "!!NA"            },
        {"a rate below -1",                 u"Npv(-2,100)",                    "-100"            },
        {"the rate as a text",              u"Npv(\"0.1\",110)",               "100"             },
        {"the rate as another text",        u"Npv(E1,110)",                    "!!Val"           },
        {"the rate from an empty cell",     u"Npv(F1,110)",                    "110"             },
        {"the rate as an error",            u"Npv(D2,110)",                    "!!Div0"          },
        {"the rate as a range",             u"Npv(A1:B1,110)",                 "!!Ref"           },
        {"the rate as a logical",           u"Npv(TRUE,110)",                  "55"              },
        {"a rate alone is refused",         u"Npv(0.1)",                       "refused 17"      },
    };
    expectAnswers(cells, rows);
}

TEST(Financial, leavesTheStackInBalanceAfterDiscounting)
{
    CashFlowCells cells;
    const AnswerRow rows[] = {
        {"between other values", u"1+Npv(0.1,110)+Abs(Npv(0.1,-110,C2))",  "201"},
        {"in itself",            u"Npv(Npv(0.1,0.11),Npv(0.1,121),\"x\")", "100"},
    };
    expectAnswers(cells, rows);
    std::u16string most = u"0";
    for (int i = 1; i < 30; ++i)
        most += u",1";
    EXPECT_EQ(cells.answer(u"Npv(" + most + u")"), "29");
    EXPECT_EQ(cells.answer(u"Npv(" + most + u",1)"), "refused 18");
}

TEST(Financial, leavesNoTextBehindAfterDiscounting)
{
    CashFlowCells cells;
    const auto liveTexts = [] {
        const int count = stringPool->beginScan();
        stringPool->endScan();
        return count;
    };
    cells.answer(u"0");
    const int before = liveTexts();
    EXPECT_EQ(cells.answer(u"Npv(0.1,E1&E1,110,E1&A1)"), "100");
    cells.answer(u"0");
    EXPECT_EQ(liveTexts(), before);
}

TEST(Financial, findsTheRateOfReturnInTwentyRounds)
{
    Cells cells;
    cells.fill("A1", {
                         {u"-70000", u"12000", u"15000", u"18000", u"21000", u"26000"}
    });
    cells.fill("A2", {
                         {u"-100", u"110"},
                         {u"-100", u"230", u"-132"},
                         {u"100",       u"-110"       }
    });
    cells.fill("A5", {
                         {u"-100", u"", u"abc", u"TRUE", u"1/2/2000", u"110"}
    });
    cells.fill("A6", {
                         {u"-100", u"39", u"59", u"55", u"20"}
    });
    cells.fill("A7", {
                         {u"-1000000000", u"600000000", u"600000000"}
    });
    cells.fill("A8", {
                         {u"-100", u"1", u"1", u"1", u"1", u"1", u"1"}
    });
    cells.fill("A9", {
                         {u"-100", u"5", u"5", u"5", u"5", u"5", u"5", u"5"}
    });
    cells.fill("A10", {
                          {u"-100", u"60", u"60"},
                          {u"-1",   u"1",  u"1" }
    });
    cells.fill("Sheet2!A1", {{u"-100"}, {u"50"}});
    const AnswerRow rows[] = {
        {"of a business",                    u"Irr(A1:F1)",         "0.0866309480365315" },
        {"of its begin",                     u"Irr(A1:E1)",         "-0.0212448482734109"},
        {"from a guess",                     u"Irr(A1:C1,-0.1)",    "-0.443506941334741" },
        {"of four flows",                    u"Irr(A6:E6)",         "0.280948421159961"  },
        {"of two",                           u"Irr(A2:B2)",         "0.1"                },
        {"the signs may be turned round",    u"Irr(A4:B4)",         "0.1"                },
        {"the golden section",               u"Irr(A11:C11)",       "0.618033988749895"  },
        {"of two rates one is found",        u"Irr(A3:C3)",         "0.1"                },
        {"the other one from nearer",        u"Irr(A3:C3,0.3)",     "0.2"                },
        {"what is no number uses no period", u"Irr(A5:F5)",         "0.1"                },
        {"a range of another sheet",         u"Irr(Sheet2!A1:A2)",  "-0.5"               },
        {"the guess -1 is moved",            u"Irr(A10:C10,-1)",    "-1.53066238629181"  },
        {"great amounts never settle",       u"Irr(A7:C7)",         "!!Num"              },
        {"settled in the last round",        u"Irr(A8:G8,1)",       "-0.47664268301547"  },
        {"one round more is not made",       u"Irr(A8:F8,5)",       "!!Num"              },
        {"the guess as a text",              u"Irr(A2:B2,\"0.2\")", "0.1"                },
        {"the guess as another text",        u"Irr(A2:B2,C5)",      "!!Val"              },
        {"the guess as an error",            u"Irr(A2:B2,1/0)",     "!!Div0"             },
        {"the guess from an empty cell",     u"Irr(A2:B2,B5)",      "0.1"                },
        {"the guess as a range",             u"Irr(A2:B2,A1:B1)",   "!!Ref"              },
        {"three arguments are refused",      u"Irr(A2:B2,0.1,0.1)", "refused 18"         },
    };
    expectAnswers(cells, rows);
}

TEST(Financial, refusesFlowsWithoutARateOfReturn)
{
    Cells cells;
    cells.fill("A1", {
                         {u"100", u"60", u"5", u"5", u"5", u"5"}
    });
    cells.fill("A2", {
                         {u"-1", u"-2", u"-3", u"-4"}
    });
    cells.fill("A3", {
                         {u"-100", u"=1/0", u"110", u"=!!NA"}
    });
    cells.fill("A4", {
                         {u"0", u"0", u"0"}
    });
    cells.fill("A5", {
                         {u"-100", u"0", u"0"}
    });
    const AnswerRow rows[] = {
        {"two gains",                         u"Irr(A1:B1)",       "!!Num" },
        {"four gains",                        u"Irr(C1:F1)",       "!!Num" },
        {"losses",                            u"Irr(A2:D2)",       "!!Num" },
        {"nothing",                           u"Irr(A4:C4)",       "!!Num" },
        {"a loss and nothing",                u"Irr(A5:C5)",       "!!Num" },
        {"one cell",                          u"Irr(A1)",          "!!Num" },
        {"no cell",                           u"Irr(A9:C9)",       "!!Num" },
        {"a number",                          u"Irr(5)",           "!!Num" },
        {"a text",                            u"Irr(\"abc\")",     "!!Num" },
        {"an error that is in no cell",       u"Irr(1/0)",         "!!Num" },
        {"a range in the wrong order",        u"Irr(C3:A3)",       "!!Num" },
        {"an error in a cell",                u"Irr(A3:C3)",       "!!Div0"},
        {"the last of several is the result", u"Irr(A3:D3)",       "!!NA"  },
        {"it comes before that of the guess", u"Irr(A3:C3,A4:B4)", "!!Div0"},
    };
    expectAnswers(cells, rows);
}

TEST(Financial, takesFewerThanAHundredFlows)
{
    Cells cells;
    cells.put("A1", u"-100");
    for (int row = 2; row <= 99; ++row)
        cells.put("A" + std::to_string(row), u"10");
    cells.put("A102", u"=1/0");
    EXPECT_EQ(cells.answer(u"Irr(A1:A98)"), "0.0999903332664736");
    EXPECT_EQ(cells.answer(u"Irr(A1:A99)"), "0.0999912126716955");
    EXPECT_EQ(cells.answer(u"Irr(A1:A102)"), "!!Div0");
    cells.put("A100", u"10");
    EXPECT_EQ(cells.answer(u"Irr(A1:A100)"), "!!Num");
    cells.put("A101", u"10");
    EXPECT_EQ(cells.answer(u"Irr(A1:A101)"), "!!Num");
    EXPECT_EQ(cells.answer(u"Irr(A1:A102)"), "!!Num") << "the error lies behind the hundredth";
    EXPECT_EQ(cells.answer(u"Irr(A1:A16384)"), "!!Num");
}

} // namespace
} // namespace vorn
