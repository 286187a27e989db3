#include "functions/answers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

// What all of these make of each kind of argument stands in numeric_test.cpp.

namespace vorn {
namespace {

TEST(Hyperbolic, takesSineCosineAndTangent)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the sine",         u"Sinh(1)",     "1.1752011936438"  },
        {"of a fraction",    u"Sinh(0.5)",   "0.521095305493747"},
        {"of 3",             u"Sinh(3)",     "10.0178749274099" },
        {"of 0",             u"Sinh(0)",     "0"                },
        {"past all numbers", u"Sinh(-711)",  "!!Num"            },
        {"the cosine",       u"Cosh(1)",     "1.54308063481524" },
        {"of a fraction",    u"Cosh(0.5)",   "1.12762596520638" },
        {"below 0",          u"Cosh(-3)",    "10.0676619957778" },
        {"of 0",             u"Cosh(0)",     "1"                },
        {"past all numbers", u"Cosh(711)",   "!!Num"            },
        {"the tangent",      u"Tanh(1)",     "0.761594155955765"},
        {"of a fraction",    u"Tanh(0.5)",   "0.46211715726001" },
        {"of 0",             u"Tanh(0)",     "0"                },
        {"far above 0",      u"Tanh(1000)",  "1"                },
        {"far below",        u"Tanh(-1000)", "-1"               },
    };
    expectAnswers(cells, rows);
}

TEST(Hyperbolic, findsTheInverseSineByHalving)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the steps end within the tolerance",        u"Asinh(1)",       "0.881373587020789"    },
        {"the same below 0",                          u"Asinh(-1)",      "-0.881373587020789"   },
        {"of a fraction",                             u"Asinh(0.5)",     "0.481211825055652"    },
        {"of 2.5",                                    u"Asinh(2.5)",     "1.64723114637309"     },
        {"of -3",                                     u"Asinh(-3)",      "-1.81844645923411"    },
        {"of 100",                                    u"Asinh(100)",     "5.29834236561061"     },
        {"of 0",                                      u"Asinh(0)",       "0"                    },
        {"below the tolerance all numbers are alike", u"Asinh(1E-12)",   "7.27595761418343e-12" },
        {"down to the least",                         u"Asinh(-1E-20)",  "-7.27595761418343e-12"},
        {"where no result is within the tolerance",   u"Asinh(1000000)", "14.5086577385245"     },
        {"of a great number",                         u"Asinh(1E10)",    "23.7189981105004"     },
        {"of the greatest",                           u"Asinh(1E308)",   "709.889355822726"     },
        {"of the greatest below 0",                   u"Asinh(-1E308)",  "-709.889355822726"    },
    };
    expectAnswers(cells, rows);
}

TEST(Hyperbolic, findsTheInverseCosineByASeries)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"it ends at the tolerance",         u"Acosh(2)",        "1.31695789692614" },
        {"of 1.5",                           u"Acosh(1.5)",      "0.962423650125277"},
        {"of 10",                            u"Acosh(10)",       "2.9932228461264"  },
        {"of 1000",                          u"Acosh(1000)",     "7.60090220954199" },
        {"of a great number",                u"Acosh(1E200)",    "461.210165779369" },
        {"whose double is past all numbers", u"Acosh(1E308)",    "!!Num"            },
        {"nearer to 1 it ends further off",  u"Acosh(1.1)",      "0.443568254426585"},
        {"further",                          u"Acosh(1.01)",     "0.141303769936491"},
        {"of 1",                             u"Acosh(1)",        "0"                },
        {"below 1",                          u"Acosh(0.999)",    "!!Num"            },
        {"below 0",                          u"Acosh(-2)",       "!!Num"            },
        {"of no number",                     u"Acosh(Sqrt(-1))", "!!Num"            },
        {"of an endless one",                u"Acosh(1E308*10)", "!!Num"            },
    };
    expectAnswers(cells, rows);
}

TEST(Hyperbolic, findsTheInverseTangentByASeries)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"it ends at the tolerance",        u"Atanh(0.5)",      "0.549306144332965" },
        {"the same below 0",                u"Atanh(-0.5)",     "-0.549306144332965"},
        {"of 0.9",                          u"Atanh(0.9)",      "1.47221948954462"  },
        {"nearer to 1 it ends further off", u"Atanh(0.99)",     "2.64665241190125"  },
        {"of 0",                            u"Atanh(0)",        "0"                 },
        {"within the tolerance",            u"Atanh(1E-12)",    "1e-12"             },
        {"of 1",                            u"Atanh(1)",        "!!Num"             },
        {"of -1",                           u"Atanh(-1)",       "!!Num"             },
        {"past the end",                    u"Atanh(1.5)",      "!!Num"             },
        {"of no number",                    u"Atanh(Sqrt(-1))", "!!Num"             },
    };
    expectAnswers(cells, rows);
}

// A step that is told apart only behind the tolerance adds up over many terms, so these have fewer
// digits than the others. The expectations are sums of all terms in more than double precision.
TEST(Hyperbolic, givesWhatTheWholeSeriesGivesNearOne)
{
    ArgumentCells cells;
    const struct {
        const char* behaviour;
        std::u16string_view formula;
        double sum;
        double tolerance;
    } rows[] = {
        {"a thousand terms",                 u"Acosh(1.001)",       0.0447176380475986,   1e-13},
        {"some ten thousand",                u"Acosh(1.0001)",      0.0141420605847544,   1e-13},
        {"some ten thousand",                u"Atanh(0.999)",       3.80020116254906,     1e-13},
        {"half a million",                   u"Atanh(-0.99999)",    -6.10303336050572,    1e-11},
        {"five million, one by one",         u"Atanh(0.999999)",    7.2543240685325289,   1e-9 },
        {"36 million, most of them at once", u"Atanh(0.9999999)",   8.40557691849907098,  1e-9 },
        {"below 0",                          u"Atanh(-0.9999999)",  -8.40557691849907098, 1e-9 },
        {"262 million",                      u"Atanh(0.99999999)",  9.55648519517503174,  1e-9 },
        {"1693 million",                     u"Atanh(0.999999999)", 10.7041898508525943,  1e-9 },
    };
    for (const auto& row : rows)
        EXPECT_NEAR(cells.evaluate(row.formula).number(), row.sum, row.tolerance) << row.behaviour;
}

TEST(Hyperbolic, endsAtTheNumbersNextToOne)
{
    ArgumentCells cells;
    const double next = std::nextafter(1.0, 2.0);
    const double before = std::nextafter(1.0, 0.0);
    cells.store("A2", CellValue::makeNumber(next));
    cells.store("A3", CellValue::makeNumber(before));
    EXPECT_LT(cells.evaluate(u"Acosh(A2)").number(), 2e-4);
    EXPECT_GT(cells.evaluate(u"Acosh(A2)").number(), 0);
    EXPECT_GT(cells.evaluate(u"Atanh(A3)").number(), 13);
    EXPECT_LT(cells.evaluate(u"Atanh(A3)").number(), std::atanh(before));
    EXPECT_EQ(cells.evaluate(u"Atanh(-A3)").number(), -cells.evaluate(u"Atanh(A3)").number());
}

TEST(Hyperbolic, invertsWithinTheTolerance)
{
    ArgumentCells cells;
    const struct {
        std::u16string_view formula;
        double truth;
    } rows[] = {
        {u"Asinh(1)",    0.881373587019543},
        {u"Asinh(-3)",   -1.81844645923207},
        {u"Asinh(1E10)", 23.7189981105004 },
        {u"Acosh(2)",    1.31695789692482 },
        {u"Acosh(10)",   2.99322284612638 },
        {u"Atanh(0.5)",  0.549306144334055},
        {u"Atanh(-0.9)", -1.47221948958322},
    };
    for (const auto& row : rows)
        EXPECT_NEAR(cells.evaluate(row.formula).number(), row.truth, 5e-11);
}

} // namespace
} // namespace vorn
