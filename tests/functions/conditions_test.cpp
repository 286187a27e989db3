#include "functions/answers.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

TEST(Conditions, joinsTruths)
{
    ArgumentCells cells;
    const AnswerRow rows[] = {
        {"all true",                          u"And(TRUE,TRUE)",         "TRUE"      },
        {"one false",                         u"And(TRUE,FALSE,TRUE)",   "FALSE"     },
        {"a number is true",                  u"And(5,-0.1)",            "TRUE"      },
        {"0 is false",                        u"And(1,0)",               "FALSE"     },
        {"an empty cell is false",            u"And(TRUE,F1)",           "FALSE"     },
        {"a text that reads as a logical",    u"And(\"true\",E1)",       "TRUE"      },
        {"a text that does not",              u"And(TRUE,D1)",           "!!Val"     },
        {"a text that reads as a number",     u"And(TRUE,C1)",           "!!Val"     },
        {"a date is no truth",                u"And(TRUE,B1)",           "!!Val"     },
        {"one cell",                          u"And(A1)",                "TRUE"      },
        {"a range of one cell",               u"And(A1:A1,E1:E1)",       "TRUE"      },
        {"a range is no list of truths",      u"And(A1:A3)",             "!!Ref"     },
        {"nor is one of another sheet",       u"And(TRUE,Sheet2!A1:A2)", "!!Ref"     },
        {"a cell of another sheet",           u"And(Sheet2!A1)",         "TRUE"      },
        {"an error",                          u"And(FALSE,1/0)",         "!!Div0"    },
        {"the leftmost of several errors",    u"And(!!NA,1/0,D1)",       "!!NA"      },
        {"no argument is refused",            u"And()",                  "refused 17"},
        {"any true",                          u"Or(FALSE,TRUE)",         "TRUE"      },
        {"none true",                         u"Or(FALSE,0,F1)",         "FALSE"     },
        {"a number",                          u"Or(0,0.5)",              "TRUE"      },
        {"a text that reads as a logical",    u"Or(\"FALSE\",FALSE)",    "FALSE"     },
        {"a text that does not",              u"Or(TRUE,D1)",            "!!Val"     },
        {"a date is no truth",                u"Or(TRUE,B1)",            "!!Val"     },
        {"a range is no list of truths",      u"Or(TRUE,A1:B1)",         "!!Ref"     },
        {"a true argument hides no error",    u"Or(TRUE,G1)",            "!!Div0"    },
        {"the leftmost of several errors",    u"Or(A1:B1,!!NA)",         "!!Ref"     },
        {"a cell of another sheet",           u"Or(Sheet2!A1,FALSE)",    "TRUE"      },
        {"a truth turned round",              u"Not(TRUE)",              "FALSE"     },
        {"of 0",                              u"Not(0)",                 "TRUE"      },
        {"of an empty cell",                  u"Not(F1)",                "TRUE"      },
        {"of a number",                       u"Not(A1)",                "FALSE"     },
        {"of a text that reads as a logical", u"Not(\"false\")",         "TRUE"      },
        {"of a text that does not",           u"Not(\"abc\")",           "!!Val"     },
        {"of the empty text",                 u"Not(H1)",                "!!Val"     },
        {"of a date",                         u"Not(B1)",                "!!Val"     },
        {"of an error",                       u"Not(I1)",                "!!NA"      },
        {"of a range",                        u"Not(A1:B1)",             "!!Ref"     },
        {"of another sheet's range",          u"Not(Sheet2!A1:B1)",      "!!Ref"     },
        {"two arguments are refused",         u"Not(TRUE,TRUE)",         "refused 18"},
    };
    expectAnswers(cells, rows);
}

TEST(Conditions, takesThirtyArguments)
{
    Cells cells;
    std::u16string most = u"TRUE";
    for (int i = 1; i < 30; ++i)
        most += u",TRUE";
    EXPECT_EQ(cells.answer(u"And(" + most + u")"), "TRUE");
    EXPECT_EQ(cells.answer(u"Or(" + most + u")"), "TRUE");
    EXPECT_EQ(cells.answer(u"And(" + most + u",TRUE)"), "refused 18");
    EXPECT_EQ(cells.answer(u"Or(" + most + u",TRUE)"), "refused 18");
}

} // namespace
} // namespace vorn
