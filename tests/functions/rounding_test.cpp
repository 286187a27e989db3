#include "functions/answers.h"
#include "functions/table.h"

#include <gtest/gtest.h>

// What all of these make of each kind of argument stands in numeric_test.cpp.

namespace vorn {
namespace {

TEST(Rounding, goesUpAtATieAlsoBelowZero)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"a tie goes up",                       u"Round(2.5,0)",          "3"               },
        {"and not away from 0",                 u"Round(-2.5,0)",         "-2"              },
        {"up to 0",                             u"Round(-0.5,0)",         "0"               },
        {"past the tie it goes down",           u"Round(-2.51,0)",        "-3"              },
        {"a tie at a digit",                    u"Round(15.55,1)",        "15.6"            },
        {"below 0",                             u"Round(-1.25,1)",        "-1.2"            },
        {"two digits",                          u"Round(2.345,2)",        "2.35"            },
        {"a tie that the binary number misses", u"Round(1.005,2)",        "1"               },
        {"before the point",                    u"Round(1250,-2)",        "1300"            },
        {"down to 0",                           u"Round(4.9,-1)",         "0"               },
        {"up from below the unit",              u"Round(5,-1)",           "10"              },
        {"the digits may be a fraction",        u"Round(1234.5678,1.5)",  "1234.55319852974"},
        {"a unit too small for a number",       u"Round(5,330)",          "0"               },
        {"an endless unit leaves nothing",      u"Round(5,-400)",         "!!Num"           },
        {"a date becomes a plain number",       u"Round(B1,1)",           "0.5"             },
        {"the digits as a text",                u"Round(1.26,\"1\")",     "1.3"             },
        {"the digits from another sheet",       u"Round(1.26,Sheet2!B1)", "1"               },
        {"the digits are needed",               u"Round(2.5)",            "refused 17"      },
    };
    expectAnswers(cells, rows);
}

// What a user is told about the arguments of Round is as it has always been.
TEST(Rounding, namesOneArgumentThoughItTakesTwo)
{
    const FunctionRow& round = FunctionTable[findFunction(u"Round")];
    EXPECT_EQ(round.usage, u"number");
    EXPECT_EQ(round.minArguments, 2);
    EXPECT_EQ(round.maxArguments, 2);
}

TEST(Rounding, cutsToWholeNumbersAndDigits)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"a whole number not above",              u"Int(2.7)",          "2"               },
        {"below 0 it is further from 0",          u"Int(-2.5)",         "-3"              },
        {"a whole number stays",                  u"Int(-3)",           "-3"              },
        {"a small number below 0",                u"Int(-1E-300)",      "-1"              },
        {"a great number stays",                  u"Int(1E300)",        "1e+300"          },
        {"a date loses its time and its kind",    u"Int(B1+3)",         "3"               },
        {"a cut goes towards 0",                  u"Trunc(8.9)",        "8"               },
        {"also below 0",                          u"Trunc(-8.9)",       "-8"              },
        {"at a digit",                            u"Trunc(3.14159,3)",  "3.141"           },
        {"below 0 at a digit",                    u"Trunc(-3.14159,3)", "-3.141"          },
        {"before the point",                      u"Trunc(1234,-2)",    "1200"            },
        {"a digit that the binary number misses", u"Trunc(0.29,2)",     "0.28"            },
        {"at a fraction of a digit",              u"Trunc(12.5,0.5)",   "12.3328828746567"},
        {"the digits as a text",                  u"Trunc(1.29,\"1\")", "1.2"             },
        {"more digits than numbers have",         u"Trunc(1.5,400)",    "!!Num"           },
        {"fewer",                                 u"Trunc(1.5,-400)",   "!!Num"           },
        {"0",                                     u"Trunc(0,5)",        "0"               },
    };
    expectAnswers(cells, rows);
}

TEST(Rounding, goesAwayFromZeroOrTowardsIt)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"up is away from 0",                     u"RoundUp(3.2,0)",            "4"         },
        {"also below 0",                          u"RoundUp(-3.2,0)",           "-4"        },
        {"at a digit",                            u"RoundUp(3.14159,3)",        "3.142"     },
        {"before the point",                      u"RoundUp(31415.92654,-2)",   "31500"     },
        {"what is round stays",                   u"RoundUp(76.9,1)",           "76.9"      },
        {"0",                                     u"RoundUp(0,2)",              "0"         },
        {"the digits are whole",                  u"RoundUp(3.141,1.9)",        "3.2"       },
        {"a hair below two digits means two",     u"RoundUp(3.141,1.99999)",    "3.15"      },
        {"digits as a logical",                   u"RoundUp(3.14,TRUE)",        "3.2"       },
        {"digits as a date",                      u"RoundUp(3.14,B1+0.5)",      "3.2"       },
        {"digits from an empty cell",             u"RoundUp(3.14,F1)",          "4"         },
        {"a text is no count of digits",          u"RoundUp(3.14,\"1\")",       "!!Val"     },
        {"nor is a cell with a text",             u"RoundUp(3.14,C1)",          "!!Val"     },
        {"more digits than numbers have",         u"RoundUp(3.14,1E300)",       "!!Num"     },
        {"fewer",                                 u"RoundUp(3.14,-1E300)",      "!!Num"     },
        {"down is towards 0",                     u"RoundDown(3.9,0)",          "3"         },
        {"also below 0",                          u"RoundDown(-3.9,0)",         "-3"        },
        {"at a digit",                            u"RoundDown(3.14159,3)",      "3.141"     },
        {"before the point",                      u"RoundDown(31415.92654,-2)", "31400"     },
        {"a digit that the binary number misses", u"RoundDown(0.29,2)",         "0.28"      },
        {"a text is no count of digits",          u"RoundDown(3.14,\"1\")",     "!!Val"     },
        {"a date becomes a plain number",         u"RoundDown(B1,1)",           "0.5"       },
        {"the digits are needed",                 u"RoundDown(3.9)",            "refused 17"},
    };
    expectAnswers(cells, rows);
}

TEST(Rounding, goesToEvenAndOddNumbersAwayFromZero)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the next even number",         u"Even(1.1)",      "2"     },
        {"below 0",                      u"Even(-1.1)",     "-2"    },
        {"an even number stays",         u"Even(-4)",       "-4"    },
        {"an odd number goes on",        u"Even(3)",        "4"     },
        {"0 is even",                    u"Even(0)",        "0"     },
        {"a small number",               u"Even(0.001)",    "2"     },
        {"a great number",               u"Even(1E300)",    "1e+300"},
        {"an endless one",               u"Even(1E308*10)", "!!Num" },
        {"an empty cell",                u"Even(F1)",       "0"     },
        {"the next odd number",          u"Odd(2)",         "3"     },
        {"below 0",                      u"Odd(-2)",        "-3"    },
        {"an odd number stays",          u"Odd(-5)",        "-5"    },
        {"a fraction",                   u"Odd(1.5)",       "3"     },
        {"0 gives 1",                    u"Odd(0)",         "1"     },
        {"a small number below 0",       u"Odd(-0.001)",    "-1"    },
        {"an even one among great ones", u"Odd(1E300)",     "1e+300"},
        {"an endless one",               u"Odd(-1E308*10)", "!!Num" },
    };
    expectAnswers(cells, rows);
}

TEST(Rounding, goesToMultiples)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"up to a multiple",                             u"Ceiling(2.5,1)",     "3"         },
        {"both negative: away from 0",                   u"Ceiling(-2.5,-1)",   "-3"        },
        {"of a fraction",                                u"Ceiling(4.42,0.05)", "4.45"      },
        {"what is a multiple stays",                     u"Ceiling(2.5,0.1)",   "2.5"       },
        {"a hair above a multiple goes on",              u"Ceiling(2.1,0.7)",   "2.8"       },
        {"0 is a multiple of all",                       u"Ceiling(0,-5)",      "0"         },
        {"the significance 0 gives 0",                   u"Ceiling(2.5,0)",     "0"         },
        {"whatever the number",                          u"Ceiling(-2.5,0)",    "0"         },
        {"an empty cell is that too",                    u"Ceiling(2.5,F1)",    "0"         },
        {"a negative significance of a positive number", u"Ceiling(2.5,-1)",    "!!Val"     },
        {"a positive one of a negative number",          u"Ceiling(-2.5,1)",    "!!Val"     },
        {"the significance is needed",                   u"Ceiling(2.5)",       "refused 17"},
        {"down to a multiple",                           u"Floor(7,2)",         "6"         },
        {"both negative: towards 0",                     u"Floor(-2.5,-1)",     "-2"        },
        {"of a fraction",                                u"Floor(1.58,0.1)",    "1.5"       },
        {"what is a multiple stays",                     u"Floor(2.5,0.1)",     "2.5"       },
        {"below the first multiple",                     u"Floor(0.5,2)",       "0"         },
        {"the significance 0 divides",                   u"Floor(2.5,0)",       "!!Div0"    },
        {"that of 0 too",                                u"Floor(0,0)",         "!!Div0"    },
        {"0 has not the sign of the significance",       u"Floor(0,1)",         "!!Num"     },
        {"nor of a negative one",                        u"Floor(0,-1)",        "!!Num"     },
        {"a negative significance of a positive number", u"Floor(2.5,-1)",      "!!Num"     },
        {"a positive one of a negative number",          u"Floor(-2.5,1)",      "!!Num"     },
        {"three arguments are refused",                  u"Floor(1,2,3)",       "refused 18"},
    };
    expectAnswers(cells, rows);
}

} // namespace
} // namespace vorn
