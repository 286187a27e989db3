#include "core/chain.h"
#include "core/error.h"
#include "core/formulacell.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/machine.h"
#include "support/formularows.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

// A cell of each kind: a number, a date, a text that reads as a number, one that does not, a
// logical, none, an error, an empty text, what is no number.
class TextFunctions : public testing::Test {
protected:
    TextFunctions()
    {
        cells.fill(
            "A1", {{u"1234"}, {u"3/4/2001"}, {u"'12"}, {u"abc"}, {u"TRUE"}, {}, {u"=1/0"}, {u"'"}});
        cells.store("A9", CellValue::makeNumber(std::numeric_limits<double>::quiet_NaN()));
        cells.put("Sheet2!A1", u"other");
    }

    Cells cells;
};

// The owners of all texts.
int countOwners()
{
    int owners = 0;
    for (std::int32_t index = 0; index < stringPool->slotCount(); ++index)
        owners += stringPool->isLive(index) ? stringPool->refCount(index) : 0;
    return owners;
}

TEST_F(TextFunctions, lenCountsUnits)
{
    expectAnswers(cells, {
                             {"a text",                                  uR"(Len("abc"))",         "3"         },
                             {"the empty text",                          uR"(Len(""))",            "0"         },
                             {"a number is as long as its General form", u"Len(1234)",             "4"         },
                             {"with its sign and point",                 u"Len(-0.25)",            "5"         },
                             {"and its exponent",                        u"Len(1e9)",              "3"         },
                             {"a cell with a number",                    u"Len(A1)",               "4"         },
                             {"a date is as long as the short date",     u"Len(A2)",               "6"         },
                             {"a text that reads as a number",           u"Len(A3)",               "2"         },
                             {"a text",                                  u"Len(A4)",               "3"         },
                             {"a logical is true or false",              u"Len(A5)",               "4"         },
                             {"a blank is the empty text",               u"Len(A6)",               "0"         },
                             {"an empty text",                           u"Len(A8)",               "0"         },
                             {"an error",                                u"Len(A7)",               "!!Div0"    },
                             {"a range of one cell",                     u"Len(A4:A4)",            "3"         },
                             {"a range of several",                      u"Len(A1:A2)",            "!!Ref"     },
                             {"a reversed range",                        u"Len(A2:A1)",            "!!Ref"     },
                             {"another sheet's cell",                    u"Len(Sheet2!A1)",        "5"         },
                             {"a cell of two sheets",                    u"Len(Sheet1:Sheet2!A1)", "!!Ref"     },
                             {"a pair of surrogates is two units",       u"Len(\"\U0001f600\")",   "2"         },
                             {"no argument",                             u"Len()",                 "refused 17"},
                             {"two arguments",                           u"Len(1,2)",              "refused 18"},
    });
}

TEST_F(TextFunctions, leftTakesFromTheLeft)
{
    expectAnswers(cells, {
                             {"some",                                                 uR"(Left("abc",2))",        "\"ab\"" },
                             {"one when no count is given",                           uR"(Left("abc"))",          "\"a\""  },
                             {"none",                                                 uR"(Left("abc",0))",        "\"\""   },
                             {"all",                                                  uR"(Left("abc",3))",        "\"abc\""},
                             {"more than all",                                        uR"(Left("abc",4))",        "\"abc\""},
                             {"fewer than none",                                      uR"(Left("abc",-1))",       "!!Val"  },
                             {"of the empty text",                                    uR"(Left(""))",             "\"\""   },
                             {"a number's text",                                      u"Left(1234,2)",            "\"12\"" },
                             {"a date's text",                                        u"Left(A2,3)",              "\"3/4\""},
                             {"a logical's text",                                     u"Left(TRUE,2)",            "\"tr\"" },
                             {"a blank's text",                                       u"Left(A6,2)",              "\"\""   },
                             {"another sheet's text",                                 u"Left(Sheet2!A1,2)",       "\"ot\"" },
                             {"a range has none",                                     u"Left(A3:A4,1)",           "!!Ref"  },
                             {"a fraction is cut",                                    uR"(Left("abc",1.9))",      "\"a\""  },
                             {"but a hair is given",                                  uR"(Left("abc",1.999995))", "\"ab\"" },
                             {"a logical count",                                      uR"(Left("abc",TRUE))",     "\"a\""  },
                             {"a blank count",                                        uR"(Left("abc",A6))",       "\"\""   },
                             {"a date as count",                                      uR"(Left("abc",A2))",       "\"abc\""},
                             {"a text count is refused even if it reads as a number",
                              uR"(Left("abc","2"))",                                                              "!!Val"  },
                             {"a cell's too",                                         uR"(Left("abc",A3))",       "!!Val"  },
                             {"a huge count",                                         uR"(Left("abc",1e300))",    "\"abc\""},
                             {"a huge negative count",                                uR"(Left("abc",-1e300))",   "!!Val"  },
                             {"what is no number counts as 0",                        uR"(Left("abc",A9))",       "\"\""   },
                             {"an error as text",                                     u"Left(A7,1)",              "!!Div0" },
                             {"an error as count",                                    uR"(Left("abc",A7))",       "!!Div0" },
                             {"the leftmost of two errors",                           u"Left(1/0,NA())",          "!!Div0" },
    });
}

TEST_F(TextFunctions, rightTakesFromTheRight)
{
    expectAnswers(cells, {
                             {"some",                          uR"(Right("abc",2))",     "\"bc\"" },
                             {"one when no count is given",    uR"(Right("abc"))",       "\"c\""  },
                             {"none",                          uR"(Right("abc",0))",     "\"\""   },
                             {"more than all",                 uR"(Right("abc",5))",     "\"abc\""},
                             {"fewer than none",               uR"(Right("abc",-1))",    "!!Val"  },
                             {"of the empty text",             uR"(Right("",2))",        "\"\""   },
                             {"a number's text",               u"Right(1234,2)",         "\"34\"" },
                             {"a date's text",                 u"Right(A2,2)",           "\"01\"" },
                             {"a text that reads as a number", u"Right(A3)",             "\"2\""  },
                             {"a logical's text",              u"Right(A5,2)",           "\"ue\"" },
                             {"a blank's text",                u"Right(A6)",             "\"\""   },
                             {"another sheet's text",          u"Right(Sheet2!A1,3)",    "\"her\""},
                             {"a reversed range has none",     u"Right(A4:A3,1)",        "!!Ref"  },
                             {"a text count is refused",       uR"(Right("abc","2"))",   "!!Val"  },
                             {"a huge count",                  uR"(Right("abc",1e300))", "\"abc\""},
                             {"the leftmost of two errors",    u"Right(NA(),1/0)",       "!!NA"   },
    });
}

TEST_F(TextFunctions, midTakesFromTheMiddle)
{
    expectAnswers(cells, {
                             {"some",                         uR"(Mid("abcde",2,3))",        "\"bcd\""   },
                             {"from the first",               uR"(Mid("abc",1,1))",          "\"a\""     },
                             {"more than there is",           uR"(Mid("abc",2,5))",          "\"bc\""    },
                             {"from behind the end",          uR"(Mid("abc",4,1))",          "\"\""      },
                             {"from far behind",              uR"(Mid("abc",99,1))",         "\"\""      },
                             {"none",                         uR"(Mid("abc",2,0))",          "\"\""      },
                             {"none from the first",          uR"(Mid("abc",1,0))",          "\"\""      },
                             {"from before the first",        uR"(Mid("abc",0,1))",          "!!Val"     },
                             {"fewer than none",              uR"(Mid("abc",1,-1))",         "!!Val"     },
                             {"of the empty text",            uR"(Mid("",1,1))",             "\"\""      },
                             {"a number's text",              u"Mid(1234,2,2)",              "\"23\""    },
                             {"a date's text",                u"Mid(A2,3,1)",                "\"4\""     },
                             {"a logical's text",             u"Mid(A5,2,2)",                "\"ru\""    },
                             {"a blank's text",               u"Mid(A6,1,1)",                "\"\""      },
                             {"another sheet's text",         u"Mid(Sheet2!A1,2,2)",         "\"th\""    },
                             {"a range has none",             u"Mid(A3:A4,1,1)",             "!!Ref"     },
                             {"the greatest start and count", uR"(Mid("abc",1e300,1e300))",  "\"\""      },
                             {"the greatest count",           uR"(Mid("abc",2,2147483647))", "\"bc\""    },
                             {"a text start is refused",      uR"(Mid("abc","2",1))",        "!!Val"     },
                             {"a text count is refused",      uR"(Mid("abc",2,"1"))",        "!!Val"     },
                             {"the leftmost of three errors", uR"(Mid(NA(),1/0,"x"))",       "!!NA"      },
                             {"a count must be there",        uR"(Mid("abc",2))",            "refused 17"},
    });
}

TEST_F(TextFunctions, replaceTakesPlacesAsNumbers)
{
    expectAnswers(
        cells,
        {
            {"some",                                                 uR"(Replace("abcd",2,2,"X"))",         "\"aXd\"" },
            {"none, so that it inserts",                             uR"(Replace("abc",1,0,"X"))",          "\"Xabc\""},
            {"all",                                                  uR"(Replace("abc",1,3,"XY"))",         "\"XY\""  },
            {"more than there is",                                   uR"(Replace("abc",2,99,"X"))",         "\"aX\""  },
            {"by nothing",                                           uR"(Replace("abc",2,1,""))",           "\"ac\""  },
            {"behind the end it appends",                            uR"(Replace("abc",9,1,"X"))",          "\"abcX\""},
            {"right behind the end too",                             uR"(Replace("abc",4,1,"X"))",          "\"abcX\""},
            {"before the first",                                     uR"(Replace("abc",0,1,"X"))",          "!!Val"   },
            {"a start of less than one is refused before it is cut",
             uR"(Replace("abc",0.99,1,"X"))",                                                               "!!Val"   },
            {"a count of less than none too",                        uR"(Replace("abc",1,-0.5,"X"))",       "!!Val"   },
            {"fractions are cut",                                    uR"(Replace("abc",1.9,1.9,"X"))",      "\"Xbc\"" },
            {"with no hair given",                                   uR"(Replace("abc",1.999999,1,"X"))",   "\"Xbc\"" },
            {"texts that read as numbers are taken",                 uR"(Replace("abc","2","1","X"))",      "\"aXc\"" },
            {"others are not",                                       uR"(Replace("abc","x",1,"X"))",        "!!Val"   },
            {"a text that reads as a date is none",                  uR"(Replace("abc","3/4/2001",1,"X"))", "!!Val"   },
            {"a date is a number",                                   uR"(Replace("abc",A2,1,"X"))",         "\"abcX\""},
            {"logicals",                                             uR"(Replace("abc",TRUE,TRUE,"X"))",    "\"Xbc\"" },
            {"a blank count",                                        uR"(Replace("abc",2,A6,"X"))",         "\"aXbc\""},
            {"a blank text",                                         uR"(Replace(A6,1,1,"X"))",             "\"X\""   },
            {"numbers as texts",                                     u"Replace(1234,2,2,99)",               "\"1994\""},
            {"another sheet's text",                                 uR"(Replace(Sheet2!A1,1,2,"m"))",      "\"mher\""},
            {"a range has no text",                                  uR"(Replace(A3:A4,1,1,"X"))",          "!!Ref"   },
            {"huge places",                                          uR"(Replace("abc",1e300,1e300,"X"))",  "\"abcX\""},
            {"a huge count",                                         uR"(Replace("abc",3,1e300,"X"))",      "\"abX\"" },
            {"what is no number",                                    uR"(Replace("abc",A9,1,"X"))",         "!!Val"   },
            {"nor a count",                                          uR"(Replace("abc",1,A9,"X"))",         "!!Val"   },
            {"the leftmost of four errors",                          u"Replace(NA(),1/0,1/0,1/0)",          "!!NA"    },
            {"an error as new text",                                 uR"(Replace("abc",1,1,1/0))",          "!!Div0"  },
    });
}

TEST_F(TextFunctions, substituteReplacesOnlyTheFirstMatchWhenNoInstanceIsGiven)
{
    expectAnswers(
        cells,
        {
            {"of three",                            uR"(Substitute("aaa","a","b"))",     "\"baa\""   },
            {"of one",                              uR"(Substitute("abc","b","xyz"))",   "\"axyzc\"" },
            {"by nothing",                          uR"(Substitute("abcb","b",""))",     "\"acb\""   },
            {"of none",                             uR"(Substitute("abc","x","y"))",     "\"abc\""   },
            {"with regard to case",                 uR"(Substitute("Abca","a","x"))",    "\"Abcx\""  },
            {"all of it",                           uR"(Substitute("abc","abc","x"))",   "\"x\""     },
            {"what is longer than the text",        uR"(Substitute("abc","abcd","x"))",  "\"abc\""   },
            {"the empty text matches at the start", uR"(Substitute("abc","","x"))",      "\"xabc\""  },
            {"of the empty text too",               uR"(Substitute("","","x"))",         "\"x\""     },
            {"in a number",                         u"Substitute(1231,1,9)",             "\"9231\""  },
            {"in a date",                           uR"(Substitute(A2,"/","-"))",        "\"3-4/01\""},
            {"in a logical",                        uR"(Substitute(TRUE,"t","T"))",      "\"True\""  },
            {"in a blank",                          uR"(Substitute(A6,"a","b"))",        "\"\""      },
            {"in another sheet's text",             uR"(Substitute(Sheet2!A1,"o","m"))", "\"mther\"" },
            {"in a range",                          uR"(Substitute(A3:A4,"a","b"))",     "!!Ref"     },
            {"the leftmost of three errors",        u"Substitute(NA(),1/0,1/0)",         "!!NA"      },
    });
}

TEST_F(TextFunctions, substituteReplacesTheInstanceThatIsAskedFor)
{
    expectAnswers(
        cells,
        {
            {"the first",                            uR"(Substitute("aaa","a","b",1))",     "\"baa\"" },
            {"the last",                             uR"(Substitute("aaa","a","b",3))",     "\"aab\"" },
            {"one that is not there",                uR"(Substitute("aaa","a","b",4))",     "\"aaa\"" },
            {"matches overlap",                      uR"(Substitute("aaaa","aa","b",2))",   "\"aba\"" },
            {"to the last",                          uR"(Substitute("aaaa","aa","b",3))",   "\"aab\"" },
            {"and no further",                       uR"(Substitute("aaaa","aa","b",4))",   "\"aaaa\""},
            {"the empty text matches at each place", uR"(Substitute("abc","","x",2))",      "\"axbc\""},
            {"and at the end",                       uR"(Substitute("abc","","x",4))",      "\"abcx\""},
            {"but not behind it",                    uR"(Substitute("abc","","x",5))",      "\"abc\"" },
            {"none",                                 uR"(Substitute("aaa","a","b",0))",     "!!Val"   },
            {"fewer",                                uR"(Substitute("aaa","a","b",-1))",    "!!Val"   },
            {"a blank instance is 0",                uR"(Substitute("aaa","a","b",A6))",    "!!Val"   },
            {"a logical instance",                   uR"(Substitute("aaa","a","b",TRUE))",  "\"baa\"" },
            {"a text instance is refused",           uR"(Substitute("aaa","a","b","2"))",   "!!Val"   },
            {"a huge instance",                      uR"(Substitute("aaa","a","b",1e300))", "\"aaa\"" },
            {"an error as instance",                 uR"(Substitute("aaa","a","b",NA()))",  "!!NA"    },
    });
}

TEST_F(TextFunctions, findRegardsCase)
{
    expectAnswers(cells, {
                             {"the first match",              uR"(Find("b","abcb"))",      "2"    },
                             {"the first from a place on",    uR"(Find("b","abcb",3))",    "4"    },
                             {"one at that place",            uR"(Find("b","abcb",2))",    "2"    },
                             {"none in that case",            uR"(Find("B","abc"))",       "!!Val"},
                             {"none at all",                  uR"(Find("x","abc"))",       "!!Val"},
                             {"none from a place on",         uR"(Find("a","abc",2))",     "!!Val"},
                             {"a question mark is one",       uR"(Find("?","ab?"))",       "3"    },
                             {"a star is one",                uR"(Find("*","abc"))",       "!!Val"},
                             {"the empty text at the start",  uR"(Find("","abc"))",        "1"    },
                             {"or where the search starts",   uR"(Find("","abc",3))",      "3"    },
                             {"which is inside of the text",  uR"(Find("","abc",4))",      "!!Val"},
                             {"so never in the empty text",   uR"(Find("",""))",           "!!Val"},
                             {"a start before the first",     uR"(Find("a","abc",0))",     "!!Val"},
                             {"a start past the end",         uR"(Find("a","abc",4))",     "!!Val"},
                             {"a huge start",                 uR"(Find("a","abc",1e300))", "!!Val"},
                             {"a start as text is refused",   uR"(Find("a","abc","1"))",   "!!Val"},
                             {"a logical start",              uR"(Find("a","abc",TRUE))",  "1"    },
                             {"numbers as texts",             u"Find(3,12345)",            "3"    },
                             {"a date as text",               uR"(Find("/",A2))",          "2"    },
                             {"a logical as text",            uR"(Find("ue",TRUE))",       "3"    },
                             {"a blank in a text",            u"Find(A6,A4)",              "1"    },
                             {"a text in a blank",            u"Find(A4,A6)",              "!!Val"},
                             {"in another sheet's text",      uR"(Find("th",Sheet2!A1))",  "2"    },
                             {"in a range",                   uR"(Find("a",A3:A4))",       "!!Ref"},
                             {"the leftmost of three errors", u"Find(NA(),1/0,1/0)",       "!!NA" },
    });
}

TEST_F(TextFunctions, exactRegardsCase)
{
    expectAnswers(cells, {
                             {"the same",                      uR"(Exact("abc","abc"))",       "TRUE"  },
                             {"another case",                  uR"(Exact("abc","ABC"))",       "FALSE" },
                             {"a longer text",                 uR"(Exact("abc","abcd"))",      "FALSE" },
                             {"empty texts",                   uR"(Exact("",""))",             "TRUE"  },
                             {"a blank and an empty text",     uR"(Exact(A6,""))",             "TRUE"  },
                             {"a number and its text",         uR"(Exact("1234",A1))",         "TRUE"  },
                             {"a text that reads as a number", u"Exact(12,A3)",                "TRUE"  },
                             {"a date and its text",           uR"(Exact("3/4/01",A2))",       "TRUE"  },
                             {"a logical and its text",        uR"(Exact(TRUE,"true"))",       "TRUE"  },
                             {"a logical and another text",    uR"(Exact(TRUE,"TRUE"))",       "FALSE" },
                             {"another sheet's text",          uR"(Exact(Sheet2!A1,"other"))", "TRUE"  },
                             {"a range",                       u"Exact(A3:A4,1)",              "!!Ref" },
                             {"the leftmost of two errors",    u"Exact(NA(),1/0)",             "!!NA"  },
                             {"an error on the right",         u"Exact(1,1/0)",                "!!Div0"},
    });
}

TEST_F(TextFunctions, lowerAndUpperMapUnitByUnit)
{
    expectAnswers(
        cells, {
                   {"letters",                  uR"(Lower("AbC-12"))",            "\"abc-12\""               },
                   {"letters",                  uR"(Upper("AbC-12"))",            "\"ABC-12\""               },
                   {"the empty text",           uR"(Lower(""))",                  "\"\""                     },
                   {"the empty text",           uR"(Upper(""))",                  "\"\""                     },
                   {"beyond ASCII",             u"Lower(\"\u00c4\u03a3\u0416\")", "\"\\u00e4\\u03c3\\u0436\""},
                   {"beyond ASCII",             u"Upper(\"\u00e4\u03c3\u0436\")", "\"\\u00c4\\u03a3\\u0416\""},
                   {"a unit never becomes two", u"Upper(\"stra\u00dfe\")",        "\"STRA\\u00dfE\""         },
                   {"surrogates have no case",  u"Lower(\"\U00010400\")",         "\"\\ud801\\udc00\""       },
                   {"a number",                 u"Upper(1e9)",                    "\"1E9\""                  },
                   {"a number",                 u"Lower(A1)",                     "\"1234\""                 },
                   {"a date",                   u"Upper(A2)",                     "\"3/4/01\""               },
                   {"a logical",                u"Upper(TRUE)",                   "\"TRUE\""                 },
                   {"a logical",                u"Lower(TRUE)",                   "\"true\""                 },
                   {"a blank",                  u"Upper(A6)",                     "\"\""                     },
                   {"an error",                 u"Upper(A7)",                     "!!Div0"                   },
                   {"an error",                 u"Lower(A7)",                     "!!Div0"                   },
                   {"another sheet's text",     u"Upper(Sheet2!A1)",              "\"OTHER\""                },
                   {"another sheet's text",     u"Lower(Sheet2!A1)",              "\"other\""                },
                   {"a range",                  u"Upper(A1:A4)",                  "!!Ref"                    },
                   {"a range",                  u"Lower(A4:A1)",                  "!!Ref"                    },
    });
}

TEST_F(TextFunctions, properBeginsAWordOnlyBehindWhiteSpace)
{
    expectAnswers(
        cells,
        {
            {"words",                         uR"(Proper("hello wORLD"))",        "\"Hello World\""           },
            {"a hyphen begins none",          uR"(Proper("hello-world again"))",  "\"Hello-world Again\""     },
            {"an apostrophe begins none",     uR"(Proper("o'neil"))",             "\"O'neil\""                },
            {"a digit does not end the wait", uR"(Proper("1abc 2def"))",          "\"1Abc 2Def\""             },
            {"nor a bracket",                 u"Proper(\"(abc)\")",               "\"(Abc)\""                 },
            {"a digit inside begins none",    uR"(Proper("ab1cd"))",              "\"Ab1cd\""                 },
            {"several blanks",                uR"(Proper("  a  b"))",             "\"  A  B\""                },
            {"a no-break space is white",     u"Proper(\"a\u00a0b\")",            "\"A\\u00a0B\""             },
            {"an ideographic one too",        u"Proper(\"a\u3000b\")",            "\"A\\u3000B\""             },
            {"beyond ASCII",                  u"Proper(\"\u00e4\u00c4 \u00f6\")", "\"\\u00c4\\u00e4 \\u00d6\""},
            {"the empty text",                uR"(Proper(""))",                   "\"\""                      },
            {"a number",                      u"Proper(1e9)",                     "\"1E9\""                   },
            {"a date",                        u"Proper(A2)",                      "\"3/4/01\""                },
            {"a logical",                     u"Proper(TRUE)",                    "\"True\""                  },
            {"a blank",                       u"Proper(A6)",                      "\"\""                      },
            {"an error",                      u"Proper(A7)",                      "!!Div0"                    },
            {"another sheet's text",          u"Proper(Sheet2!A1)",               "\"Other\""                 },
            {"a range",                       u"Proper(A3:A4)",                   "!!Ref"                     },
    });
}

TEST_F(TextFunctions, codeIsTheFirstUnit)
{
    expectAnswers(cells, {
                             {"a letter",                uR"(Code("A"))",         "65"    },
                             {"the first of several",    uR"(Code("abc"))",       "97"    },
                             {"beyond ASCII",            u"Code(\"\u20ac\")",     "8364"  },
                             {"half of a pair",          u"Code(\"\U0001f600\")", "55357" },
                             {"the empty text",          uR"(Code(""))",          "!!Val" },
                             {"a blank",                 u"Code(A6)",             "!!Val" },
                             {"an empty text in a cell", u"Code(A8)",             "!!Val" },
                             {"a number",                u"Code(A1)",             "49"    },
                             {"a date",                  u"Code(A2)",             "51"    },
                             {"a logical",               u"Code(FALSE)",          "102"   },
                             {"an error",                u"Code(A7)",             "!!Div0"},
                             {"another sheet's text",    u"Code(Sheet2!A1)",      "111"   },
                             {"a range",                 u"Code(A3:A4)",          "!!Ref" },
    });
}

TEST_F(TextFunctions, charIsOneUnit)
{
    expectAnswers(cells,
                  {
                      {"a letter",                                 u"Char(65)",         "\"A\""      },
                      {"beyond ASCII",                             u"Char(8364)",       "\"\\u20ac\""},
                      {"the last one",                             u"Char(65535)",      "\"\\uffff\""},
                      {"past the last they begin anew",            u"Char(65536+65)",   "\"A\""      },
                      {"with one that is no character",            u"Char(65536)",      "\"\""       },
                      {"a fraction is cut",                        u"Char(65.9)",       "\"A\""      },
                      {"0",                                        u"Char(0)",          "!!Val"      },
                      {"below",                                    u"Char(-65)",        "!!Val"      },
                      {"a fraction below 1",                       u"Char(0.9)",        "!!Val"      },
                      {"a blank",                                  u"Char(A6)",         "!!Val"      },
                      {"a logical",                                u"Char(TRUE)",       "\"\\u0001\""},
                      {"a date",                                   u"Char(A2)",         "\"\\u905a\""},
                      {"a text that reads as a number is refused", uR"(Char("65"))",    "!!Val"      },
                      {"any other too",                            uR"(Char("A"))",     "!!Val"      },
                      {"a huge number",                            u"Len(Char(1e300))", "1"          },
                      {"an error",                                 u"Char(A7)",         "!!Div0"     },
                      {"a range",                                  u"Char(A1:A2)",      "!!Ref"      },
                      {"the inverse of Code",                      u"Code(Char(955))",  "955"        },
    });
}

TEST_F(TextFunctions, reptStopsSilentlyBelowAThousand)
{
    cells.store("B1", CellValue::makeTextIndex(stringPool->addText(std::u16string(999, u'a'))));
    cells.store("B2", CellValue::makeTextIndex(stringPool->addText(std::u16string(1000, u'a'))));
    expectAnswers(cells,
                  {
                      {"some",                             uR"(Rept("ab",3))",                "\"ababab\""      },
                      {"none",                             uR"(Rept("ab",0))",                "\"\""            },
                      {"fewer",                            uR"(Rept("ab",-1))",               "!!Val"           },
                      {"up to the limit",                  uR"(Len(Rept("ab",499)))",         "998"             },
                      {"past it",                          uR"(Len(Rept("ab",600)))",         "998"             },
                      {"of single units",                  uR"(Len(Rept("a",5000)))",         "999"             },
                      {"a text that is as long as can be", u"Len(Rept(B1,2))",                "999"             },
                      {"a text that is longer",            u"Len(Rept(B2,1))",                "0"               },
                      {"the greatest count ends at once",  uR"(Len(Rept("abc",2147483647)))", "999"             },
                      {"of the empty text too",            uR"(Rept("",2147483647))",         "\"\""            },
                      {"a huge count",                     uR"(Len(Rept("abc",1e300)))",      "999"             },
                      {"a number",                         u"Rept(12,2)",                     "\"1212\""        },
                      {"a date",                           u"Rept(A2,2)",                     "\"3/4/013/4/01\""},
                      {"a logical",                        u"Rept(TRUE,TRUE)",                "\"true\""        },
                      {"a blank",                          u"Rept(A6,5)",                     "\"\""            },
                      {"a blank count",                    uR"(Rept("a",A6))",                "\"\""            },
                      {"a text count is refused",          uR"(Rept("a","3"))",               "!!Val"           },
                      {"a fraction is cut",                uR"(Rept("a",2.9))",               "\"aa\""          },
                      {"another sheet's text",             u"Rept(Sheet2!A1,1)",              "\"other\""       },
                      {"a range",                          u"Rept(A3:A4,1)",                  "!!Ref"           },
                      {"the leftmost of two errors",       u"Rept(NA(),1/0)",                 "!!NA"            },
    });
}

TEST_F(TextFunctions, tOfAReferenceIsAlwaysEmpty)
{
    expectAnswers(cells, {
                             {"a cell with a text",         u"T(A4)",            "\"\""    },
                             {"a range of that one cell",   u"T(A4:A4)",         "\"\""    },
                             {"a range",                    u"T(A3:A4)",         "\"\""    },
                             {"another sheet's text",       u"T(Sheet2!A1)",     "\"\""    },
                             {"a reference that is chosen", u"T(If(TRUE,A4,1))", "\"\""    },
                             {"a cell with an error",       u"T(A7)",            "\"\""    },
                             {"but a literal is its text",  uR"(T("abc"))",      "\"abc\"" },
                             {"and so is what is computed", uR"(T(A4&"d"))",     "\"abcd\""},
                             {"a number is empty",          u"T(5)",             "\"\""    },
                             {"a date",                     u"T(3/4/2001)",      "\"\""    },
                             {"a logical",                  u"T(TRUE)",          "\"\""    },
                             {"an error",                   u"T(1/0)",           "\"\""    },
                             {"the empty text",             uR"(T(""))",         "\"\""    },
    });
}

TEST_F(TextFunctions, valueReadsPlainNumbers)
{
    expectAnswers(cells, {
                             {"a number",                      uR"(Value("12.5"))",     "12.5"  },
                             {"with a sign",                   uR"(Value("-5"))",       "-5"    },
                             {"with an exponent",              uR"(Value("1e3"))",      "1000"  },
                             {"a percent sign means nothing",  uR"(Value("50%"))",      "50"    },
                             {"a currency is no number",       uR"(Value("$5"))",       "!!Val" },
                             {"nor are thousands",             uR"(Value("1,234"))",    "!!Val" },
                             {"nor a date",                    uR"(Value("3/4/2001"))", "!!Val" },
                             {"nor a time",                    uR"(Value("12:30"))",    "!!Val" },
                             {"nor a logical",                 uR"(Value("true"))",     "!!Val" },
                             {"nor a formula",                 uR"(Value("=1"))",       "!!Val" },
                             {"nor the empty text",            uR"(Value(""))",         "!!Val" },
                             {"nor a word",                    u"Value(A4)",            "!!Val" },
                             {"a number is itself",            u"Value(A1)",            "1234"  },
                             {"a date loses its kind",         u"Value(A2)",            "36954" },
                             {"a text that reads as a number", u"Value(A3)",            "12"    },
                             {"a logical",                     u"Value(A5)",            "1"     },
                             {"a blank",                       u"Value(A6)",            "0"     },
                             {"an error",                      u"Value(A7)",            "!!Div0"},
                             {"another sheet's text",          u"Value(Sheet2!A1)",     "!!Val" },
                             {"a range",                       u"Value(A1:A3)",         "!!Ref" },
    });
}

TEST_F(TextFunctions, giveBackEveryTextThatTheyTook)
{
    const std::u16string_view formulas[] = {
        uR"(=Len("abc"))",
        uR"(=Left("abc",-1))",
        uR"(=Left("abc",1/0))",
        uR"(=Right("abc","x"))",
        uR"(=Mid("abc",0,1))",
        uR"(=Replace("abc",0,1,"x"))",
        uR"(=Replace(1/0,1,1,"x"))",
        uR"(=Substitute("abc","b","c"))",
        uR"(=Substitute("abc","b",1/0,2))",
        uR"(=Substitute("abc","b","c",0))",
        uR"(=Find("b","abc"))",
        uR"(=Find("x","abc"))",
        uR"(=Exact("abc",1/0))",
        uR"(=Lower("ABC"))",
        uR"(=Upper(1234))",
        uR"(=Proper("abc def"))",
        uR"(=Code(""))",
        uR"(=Rept("abc",-1))",
        uR"(=T("abc"))",
        uR"(=T(A4))",
        uR"(=Value("abc"))",
    };
    for (const std::u16string_view formula : formulas) {
        cells.put("J1", formula);
        const int before = countOwners();
        recalculate();
        EXPECT_EQ(countOwners(), before) << std::string(formula.begin(), formula.end());
    }
}

constexpr std::size_t LongText = 20000;

// Refuses the one allocation among those for a long text whose turn it is.
int longTextsUntilRefusal = 0;

void* refuseOneLongText(void* block, std::size_t bytes)
{
    const bool isLong = bytes >= LongText * sizeof(char16_t);
    return isLong && --longTextsUntilRefusal == 0 ? nullptr : resizeBlock(block, bytes);
}

TEST(TextMemory, aLongTextIsEmptyWhenMemoryIsShort)
{
    const struct {
        const char* behaviour;
        const char16_t* formula;
        std::size_t length;
    } cases[] = {
        {"a mapped text",       u"=Upper(A1)",                 LongText    },
        {"a proper text",       u"=Proper(A1)",                LongText    },
        {"a text put together", uR"(=Replace(A1,1,0,"more"))", LongText + 4},
    };
    for (const auto& c : cases) {
        for (int refused = 1; refused <= 2; ++refused) {
            Cells cells;
            cells.store("A1", CellValue::makeTextIndex(
                                  stringPool->addText(std::u16string(LongText, u'a'))));
            cells.put("B1", c.formula);
            FormulaCell& formula = *workbook->sheetAt(0)->cellAt(1, 0)->value.formula();
            longTextsUntilRefusal = refused;
            blockResizer = refuseOneLongText;
            evaluateFormulaCell(formula);
            blockResizer = resizeBlock;
            const std::size_t length = std::u16string_view(valueTextPointer(formula.result)).size();
            const bool fails = refused == 1;
            EXPECT_EQ(length, fails ? 0 : c.length) << c.behaviour << ' ' << refused;
            EXPECT_EQ(errorState.code, fails ? ErrorMemory : ErrorNone) << c.behaviour;
            clearError();
        }
    }
}

} // namespace
} // namespace vorn
