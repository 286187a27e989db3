#include "functions/answers.h"
#include "functions/random.h"

#include <algorithm>
#include <gtest/gtest.h>

// What all of these make of each kind of argument stands in numeric_test.cpp.

namespace vorn {
namespace {

TEST(Math, takesMagnitudeAndSign)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"a negative number loses its sign", u"Abs(-2.5)",      "2.5"       },
        {"a positive number stays",          u"Abs(2.5)",       "2.5"       },
        {"0 stays",                          u"Abs(0)",         "0"         },
        {"the greatest magnitudes fit",      u"Abs(-1E308)",    "1e+308"    },
        {"a date becomes a plain number",    u"Abs(B1)",        "0.5"       },
        {"what is no number ends as !!Num",  u"Abs(Sqrt(-1))",  "!!Num"     },
        {"a positive number is 1",           u"Sign(0.001)",    "1"         },
        {"a negative number is -1",          u"Sign(-1E308)",   "-1"        },
        {"0 is 0",                           u"Sign(0)",        "0"         },
        {"an infinite one has a sign too",   u"Sign(1E308*10)", "1"         },
        {"no argument is refused",           u"Abs()",          "refused 17"},
        {"nor are two taken",                u"Sign(1,2)",      "refused 18"},
    };
    expectAnswers(cells, rows);
}

TEST(Math, takesRootsAndPowers)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"the root of 2",                       u"Sqrt(2)",            "1.4142135623731" },
        {"of a square",                         u"Sqrt(144)",          "12"              },
        {"of 0",                                u"Sqrt(0)",            "0"               },
        {"of a negative number there is none",  u"Sqrt(-1)",           "!!Num"           },
        {"but within a formula it is no error", u"If(Sqrt(-1)>0,1,2)", "2"               },
        {"nor does it equal itself",            u"Sqrt(-1)=Sqrt(-1)",  "FALSE"           },
        {"a whole power",                       u"Power(2,10)",        "1024"            },
        {"a root as a power",                   u"Power(2,0.5)",       "1.4142135623731" },
        {"a fraction to a fraction",            u"Power(1.1,2.5)",     "1.26905870628588"},
        {"a negative power",                    u"Power(4,-1)",        "0.25"            },
        {"0 to 0 is an error",                  u"Power(0,0)",         "!!Num"           },
        {"0 to a negative power is 0",          u"Power(0,-1)",        "0"               },
        {"a fraction of a negative number",     u"Power(-8,1/3)",      "!!Num"           },
        {"a power past all numbers",            u"Power(10,400)",      "!!Num"           },
        {"it is the operator",                  u"Power(3,4)=3^4",     "TRUE"            },
    };
    expectAnswers(cells, rows);
}

TEST(Math, takesLogarithms)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"e to 1",                         u"Exp(1)",             "2.71828182845905"   },
        {"e to 0",                         u"Exp(0)",             "1"                  },
        {"e to -1",                        u"Exp(-1)",            "0.367879441171442"  },
        {"near the greatest number",       u"Exp(700)",           "1.014232054735e+304"},
        {"past it",                        u"Exp(1000)",          "!!Num"              },
        {"far below 0 nothing is left",    u"Exp(-1000)",         "0"                  },
        {"the natural logarithm",          u"Ln(2)",              "0.693147180559945"  },
        {"of a fraction",                  u"Ln(0.5)",            "-0.693147180559945" },
        {"of 1",                           u"Ln(1)",              "0"                  },
        {"of a great number",              u"Ln(1E300)",          "690.775527898214"   },
        {"of 0 there is none",             u"Ln(0)",              "!!Num"              },
        {"of a negative number neither",   u"Ln(-1)",             "!!Num"              },
        {"the common logarithm",           u"Log10(2)",           "0.301029995663981"  },
        {"of a power of 10",               u"Log10(1000)",        "3"                  },
        {"of a small one",                 u"Log10(0.001)",       "-3"                 },
        {"of 0 there is none",             u"Log10(0)",           "!!Num"              },
        {"of a negative number neither",   u"Log10(-10)",         "!!Num"              },
        {"to base 2",                      u"Log(8,2)",           "3"                  },
        {"to base 10 where none is given", u"Log(100)",           "2"                  },
        {"to a base below 1",              u"Log(7,0.5)",         "-2.8073549220576"   },
        {"a quotient, not the common one", u"Log(1000)=3",        "FALSE"              },
        {"which is a hair less",           u"(3-Log(1000))*1E15", "0.444089209850063"  },
        {"the base 1 divides by 0",        u"Log(5,1)",           "!!Num"              },
        {"the base 0",                     u"Log(5,0)",           "!!Num"              },
        {"a negative base",                u"Log(5,-2)",          "!!Num"              },
        {"the logarithm of 0",             u"Log(0)",             "!!Num"              },
        {"of a negative number",           u"Log(-8,2)",          "!!Num"              },
        {"three arguments are refused",    u"Log(8,2,1)",         "refused 18"         },
    };
    expectAnswers(cells, rows);
}

TEST(Math, turnsAngles)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"pi has 16 digits",             u"Pi()-3.14159265358979", "3.10862446895044e-15"},
        {"the sine of radians",          u"Sin(1)",                "0.841470984807897"   },
        {"of a fraction",                u"Sin(0.5)",              "0.479425538604203"   },
        {"below 0",                      u"Sin(-2)",               "-0.909297426825682"  },
        {"after many turns",             u"Sin(100)",              "-0.506365641109759"  },
        {"at pi it is nearly 0",         u"Abs(Sin(Pi()))<1E-15",  "TRUE"                },
        {"the cosine",                   u"Cos(1)",                "0.54030230586814"    },
        {"of 0",                         u"Cos(0)",                "1"                   },
        {"of a fraction",                u"Cos(0.5)",              "0.877582561890373"   },
        {"of an obtuse angle",           u"Cos(3)",                "-0.989992496600445"  },
        {"an endless angle has none",    u"Cos(1E308*10)",         "!!Num"               },
        {"the tangent",                  u"Tan(1)",                "1.5574077246549"     },
        {"of a fraction",                u"Tan(0.5)",              "0.54630248984379"    },
        {"below 0",                      u"Tan(-1)",               "-1.5574077246549"    },
        {"of 0",                         u"Tan(0)",                "0"                   },
        {"at a right angle it is great", u"Tan(Pi()/2)>1E15",      "TRUE"                },
        {"the arcsine",                  u"Asin(0.5)",             "0.523598775598299"   },
        {"of 0.3",                       u"Asin(0.3)",             "0.304692654015398"   },
        {"at the end",                   u"Asin(-1)",              "-1.5707963267949"    },
        {"past the end",                 u"Asin(2)",               "!!Num"               },
        {"a hair past the end",          u"Asin(-1.0000001)",      "!!Num"               },
        {"the arccosine",                u"Acos(0.5)",             "1.0471975511966"     },
        {"of 0.3",                       u"Acos(0.3)",             "1.2661036727795"     },
        {"at the end",                   u"Acos(-1)",              "3.14159265358979"    },
        {"at the other end",             u"Acos(1)",               "0"                   },
        {"past the end",                 u"Acos(1.5)",             "!!Num"               },
        {"the arctangent",               u"Atan(1)",               "0.785398163397448"   },
        {"of a fraction",                u"Atan(0.5)",             "0.463647609000806"   },
        {"below 0",                      u"Atan(-3)",              "-1.24904577239825"   },
        {"of a great number",            u"Atan(1E10)",            "1.5707963266949"     },
        {"of an endless one",            u"Atan(1E308*10)",        "1.5707963267949"     },
        {"degrees to radians",           u"Radians(180)",          "3.14159265358979"    },
        {"of a right angle",             u"Radians(90)",           "1.5707963267949"     },
        {"of 1",                         u"Radians(1)",            "0.0174532925199433"  },
        {"below 0",                      u"Radians(-180)",         "-3.14159265358979"   },
        {"of 0",                         u"Radians(0)",            "0"                   },
        {"radians to degrees",           u"Degrees(1)",            "57.2957795130823"    },
        {"a half turn",                  u"Degrees(Pi())",         "180"                 },
        {"below 0",                      u"Degrees(-Pi()/2)",      "-90"                 },
        {"past all numbers",             u"Degrees(1E308)",        "!!Num"               },
        {"of 0",                         u"Degrees(0)",            "0"                   },
        {"pi takes no argument",         u"Pi(1)",                 "refused 18"          },
    };
    expectAnswers(cells, rows);
}

TEST(Math, takesTheAngleOfAPointByItsXThenItsY)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"x comes first",            u"Atan2(3,4)",   "0.927295218001612"},
        {"the first quarter",        u"Atan2(1,1)",   "0.785398163397448"},
        {"the second quarter",       u"Atan2(-1,1)",  "2.35619449019234" },
        {"the third quarter",        u"Atan2(-1,-1)", "-2.35619449019234"},
        {"straight up",              u"Atan2(0,1)",   "1.5707963267949"  },
        {"to the left",              u"Atan2(-2,0)",  "3.14159265358979" },
        {"the centre has no angle",  u"Atan2(0,0)",   "!!Div0"           },
        {"nor have two empty cells", u"Atan2(F1,F1)", "!!Div0"           },
        {"an angle needs both",      u"Atan2(1)",     "refused 17"       },
    };
    expectAnswers(cells, rows);
}

TEST(Math, takesRemaindersWithTheSignOfTheDivisor)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"of a positive number",                u"Mod(7,3)",            "1"        },
        {"a negative number counts from below", u"Mod(-7,3)",           "2"        },
        {"a negative divisor gives its sign",   u"Mod(7,-3)",           "-2"       },
        {"both negative",                       u"Mod(-7,-3)",          "-1"       },
        {"of a fraction",                       u"Mod(5.5,2)",          "1.5"      },
        {"by a fraction",                       u"Mod(-0.5,1)",         "0.5"      },
        {"of what divides evenly",              u"Mod(9,3)",            "0"        },
        {"by 0",                                u"Mod(7,0)",            "!!Div0"   },
        {"by an empty cell",                    u"Mod(7,F1)",           "!!Div0"   },
        {"a date stays a date",                 u"Mod(B1+3,2)",         "date 1.5" },
        {"by a date it becomes one",            u"Mod(0.75,B1)",        "date 0.25"},
        {"a logical",                           u"Mod(E1,2)",           "1"        },
        {"a text that reads as a number",       u"Mod(C1,2)",           "0.5"      },
        {"a text that does not",                u"Mod(D1,2)",           "!!Val"    },
        {"an error comes before the division",  u"Mod(I1,0)",           "!!NA"     },
        {"a range",                             u"Mod(A1:B1,2)",        "!!Ref"    },
        {"another sheet's range",               u"Mod(1,Sheet2!A1:A2)", "!!Ref"    },
        {"another sheet's cell",                u"Mod(1.1,Sheet2!A1)",  "0.1"      },
    };
    expectAnswers(cells, rows);
}

TEST(Math, countsArrangements)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"a factorial",                         u"Fact(5)",             "120"                  },
        {"a fraction is dropped",               u"Fact(3.9)",           "6"                    },
        {"of 0",                                u"Fact(0)",             "1"                    },
        {"of 1",                                u"Fact(1)",             "1"                    },
        {"of 20",                               u"Fact(20)",            "2.43290200817664e+18" },
        {"one factor after the other",          u"Fact(100)",           "9.33262154439441e+157"},
        {"the greatest",                        u"Fact(170)",           "7.25741561530799e+306"},
        {"past the greatest",                   u"Fact(171)",           "!!Num"                },
        {"far past it, at once",                u"Fact(1E308)",         "!!Num"                },
        {"below 0",                             u"Fact(-1)",            "!!Num"                },
        {"a hair below 0",                      u"Fact(-0.1)",          "!!Num"                },
        {"of no number",                        u"Fact(Sqrt(-1))",      "!!Num"                },
        {"permutations",                        u"Permut(10,3)",        "720"                  },
        {"of none",                             u"Permut(10,0)",        "1"                    },
        {"of all",                              u"Permut(4,4)",         "24"                   },
        {"of the most",                         u"Permut(170,2)",       "28730"                },
        {"of more than the most",               u"Permut(200,2)",       "!!Num"                },
        {"fractions are dropped at the end",    u"Permut(5.5,2.7)",     "60"                   },
        {"more than there are",                 u"Permut(3,4)",         "!!Num"                },
        {"fewer than none",                     u"Permut(3,-1)",        "!!Num"                },
        {"of fewer than none",                  u"Permut(-3,-4)",       "!!Num"                },
        {"combinations",                        u"Combin(49,6)",        "13983816"             },
        {"of none",                             u"Combin(8,0)",         "1"                    },
        {"of all",                              u"Combin(8,8)",         "1"                    },
        {"of the most",                         u"Combin(170,85)",      "9.14484184513156e+49" },
        {"of more, though the result is small", u"Combin(200,2)",       "!!Num"                },
        {"fractions are dropped at the end",    u"Combin(5.2,2.6)",     "30"                   },
        {"more than there are",                 u"Combin(3,3.1)",       "!!Num"                },
        {"fewer than none",                     u"Combin(3,-1)",        "!!Num"                },
        {"huge numbers, at once",               u"Combin(1E300,1E299)", "!!Num"                },
        {"one number is too few",               u"Combin(3)",           "refused 17"           },
    };
    expectAnswers(cells, rows);
}

TEST(Math, drawsWholeNumbersOver32766)
{
    ArgumentCells cells;
    seedRandom(7);
    int drawn[100];
    for (int& number : drawn)
        number = nextRandom();
    seedRandom(7);
    for (const int number : drawn)
        EXPECT_EQ(cells.evaluate(u"Rand()").number(), number / 32766.0);
    EXPECT_EQ(cells.answer(u"Rand(1)"), "refused 18");
}

TEST(Math, drawsNumbersThatPassOneByALittle)
{
    ArgumentCells cells;
    seedRandom(1);
    double greatest = 0;
    double least = 1;
    for (int draw = 0; draw < 500000 && greatest <= 1; ++draw) {
        const double number = cells.evaluate(u"Rand()").number();
        greatest = std::max(greatest, number);
        least = std::min(least, number);
    }
    EXPECT_EQ(greatest, 32767 / 32766.0);
    EXPECT_GE(least, 0);
}

} // namespace
} // namespace vorn
