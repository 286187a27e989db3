#include "functions/answers.h"

#include <cmath>
#include <gtest/gtest.h>

// What all of these make of each kind of argument stands in numeric_test.cpp.

namespace vorn {
namespace {

TEST(Depreciation, goesAlongALine)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the same in each period",       u"Sln(30000,7500,10)", "2250"      },
        {"in a broken number of periods", u"Sln(100,0,2.5)",     "40"        },
        {"of what gains",                 u"Sln(100,200,5)",     "-20"       },
        {"backwards",                     u"Sln(100,0,-5)",      "-20"       },
        {"in no period",                  u"Sln(30000,7500,0)",  "!!Div0"    },
        {"in an empty cell's",            u"Sln(30000,7500,F1)", "!!Div0"    },
        {"an error comes first",          u"Sln(30000,D1,0)",    "!!Val"     },
        {"two arguments are refused",     u"Sln(30000,7500)",    "refused 17"},
    };
    expectAnswers(cells, rows);
}

TEST(Depreciation, goesByTheDigitsOfTheYears)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the first period",           u"Syd(30000,7500,10,1)",  "4090.90909090909" },
        {"the last",                   u"Syd(30000,7500,10,10)", "409.090909090909" },
        {"the one before the first",   u"Syd(30000,7500,10,0)",  "4500"             },
        {"broken numbers",             u"Syd(100,0,2.5,1.5)",    "45.7142857142857" },
        {"a cost below 0",             u"Syd(-100,0,5,1)",       "-33.3333333333333"},
        {"a period past the life",     u"Syd(30000,7500,10,11)", "!!Num"            },
        {"a period before all",        u"Syd(30000,7500,10,-1)", "!!Num"            },
        {"a salvage below 0",          u"Syd(30000,-1,10,1)",    "!!Num"            },
        {"no life",                    u"Syd(30000,7500,0,0)",   "!!Num"            },
        {"five arguments are refused", u"Syd(1,1,1,1,1)",        "refused 18"       },
    };
    expectAnswers(cells, rows);
}

TEST(Depreciation, goesByADecliningBalance)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the first period",                 u"Ddb(1000,100,5,1)",      "400"             },
        {"the second",                       u"Ddb(1000,100,5,2)",      "240"             },
        {"the third",                        u"Ddb(1000,100,5,3)",      "144"             },
        {"the fourth",                       u"Ddb(1000,100,5,4)",      "86.4"            },
        {"the last stops at the salvage",    u"Ddb(1000,100,5,5)",      "29.6"            },
        {"past the life",                    u"Ddb(1000,100,5,6)",      "!!Num"           },
        {"a broken period",                  u"Ddb(1000,100,5,2.9)",    "240"             },
        {"a part of the first period",       u"Ddb(1000,100,5,0.5)",    "0"               },
        {"another factor",                   u"Ddb(2400,300,10,2,1.5)", "306"             },
        {"the factor 2",                     u"Ddb(2400,300,10,2,2)",   "384"             },
        {"days",                             u"Ddb(2400,300,3650,1)",   "1.31506849315068"},
        {"to the last of ten",               u"Ddb(2400,300,10,10)",    "22.1225472"      },
        {"a factor past the life takes all", u"Ddb(1000,100,5,1,10)",   "900"             },
        {"and leaves nothing",               u"Ddb(1000,100,5,2,10)",   "0"               },
        {"a salvage above the cost",         u"Ddb(1000,2000,5,1)",     "0"               },
        {"nothing",                          u"Ddb(0,0,5,1)",           "0"               },
        {"no factor",                        u"Ddb(1000,100,5,1,0)",    "!!Num"           },
        {"no period",                        u"Ddb(1000,100,5,0)",      "!!Num"           },
        {"no life",                          u"Ddb(1000,100,0,0)",      "!!Num"           },
        {"a salvage below 0",                u"Ddb(1000,-1,5,1)",       "!!Num"           },
        {"a cost below 0",                   u"Ddb(-1000,100,5,1)",     "!!Num"           },
        {"three arguments are refused",      u"Ddb(1000,100,5)",        "refused 17"      },
    };
    expectAnswers(cells, rows);
}

// Past the periods that are walked one by one, the closed form stands in for the steps.
TEST(Depreciation, endsAlsoAfterMorePeriodsThanCanBeWalked)
{
    ArgumentCells cells;
    const struct {
        const char* behaviour;
        std::u16string_view formula;
        double life;
        double period;
    } rows[] = {
        {"the last that is walked",             u"Ddb(1000,0,200000,100000)",   200000, 100000},
        {"the first that is not",               u"Ddb(1000,0,200000,100001)",   200000, 100001},
        {"the next",                            u"Ddb(1000,0,200000,100002)",   200000, 100002},
        {"still above the salvage",             u"Ddb(1000,200,200000,150000)", 200000, 150000},
        {"a million",                           u"Ddb(1000,0,1E6,1E6)",         1e6,    1e6   },
        {"a million millions",                  u"Ddb(1000,0,1E12,1E12)",       1e12,   1e12  },
        {"so many that none changes the value", u"Ddb(1000,0,1E300,1E300)",     1e300,  1     },
    };
    for (const auto& row : rows) {
        const double left = 1000 * std::exp((row.period - 1) * std::log1p(-2 / row.life));
        const double expected = left * 2 / row.life;
        const double number = cells.evaluate(row.formula).number();
        EXPECT_NEAR(number, expected, 1e-11 * expected) << row.behaviour;
    }
    EXPECT_EQ(cells.answer(u"Ddb(1000,0,1E6,1E6,1000)"), "0");
}

// What is left at the salvage is what rounding leaves of the last subtraction.
TEST(Depreciation, endsAtTheSalvage)
{
    ArgumentCells cells;
    EXPECT_NEAR(cells.evaluate(u"Ddb(1000,300,1E12,1E12)").number(), 0, 1e-12);
    EXPECT_NEAR(cells.evaluate(u"Ddb(1000,300,1E6,1E6)").number(), 0, 1e-12);
    EXPECT_NEAR(cells.evaluate(u"Ddb(1000,300,1E4,1E4)").number(), 0, 1e-12);
}

} // namespace
} // namespace vorn
