#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/machine.h"
#include "functions/table.h"
#include "support/formularows.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace vorn {
namespace {

// --- Tables of known cells

class LookupFunctions : public testing::Test {
protected:
    LookupFunctions()
    {
        cells.fill("A1", {
                             {u"1", u"one"  },
                             {u"9", u"nine" },
                             {u"3", u"three"}
        });
        // A cell of each kind in column D, and what stands beside it in E.
        cells.fill("D1", {
                             {u"5",              u"number"  },
                             {u"3/4/2001",       u"date"    },
                             {u"'12",            u"digits"  },
                             {u"Alpha",          u"text"    },
                             {u"TRUE",           u"logical" },
                             {u"=1/0",           u"error"   },
                             {u"",               u"missing" },
                             {u"=2+5",           u"formula" },
                             {u"=\"be\"&\"ta\"", u"computed"},
                             {u"'",              u"empty"   }
        });
        // The same lying, in rows 21 and 22.
        cells.fill("A21", {
                              {u"1",   u"9",    u"3"    },
                              {u"one", u"nine", u"three"}
        });
        cells.fill("Sheet2!A1", {
                                    {u"2", u"two"  },
                                    {u"4", u"=2*21"},
                                    {u"6", u""     }
        });
    }

    Cells cells;
};

TEST_F(LookupFunctions, vLookupTakesTheLastRowBelowAndDoesNotStopAtAGreaterValue)
{
    expectAnswers(cells,
                  {
                      {"between, in no order",         u"VLookup(5,A1:B3,2)",           "\"three\""},
                      {"above all",                    u"VLookup(10,A1:B3,2)",          "\"three\""},
                      {"below all",                    u"VLookup(0,A1:B3,2)",           "!!NA"     },
                      {"an exact match anywhere wins", u"VLookup(9,A1:B3,2)",           "\"nine\"" },
                      {"also the first",               u"VLookup(1,A1:B3,2)",           "\"one\""  },
                      {"also the last",                u"VLookup(3,A1:B3,2)",           "\"three\""},
                      {"the same if told so",          u"VLookup(5,A1:B3,2,TRUE)",      "\"three\""},
                      {"by a number",                  u"VLookup(5,A1:B3,2,1)",         "\"three\""},
                      {"by a text that reads so",      uR"(VLookup(5,A1:B3,2,"true"))", "\"three\""},
                      {"of one cell",                  u"VLookup(5,A1,1)",              "1"        },
                      {"from the column itself",       u"VLookup(5,A1:B3,1)",           "3"        },
                      {"on another sheet",             u"VLookup(5,Sheet2!A1:B3,2)",    "42"       },
                      {"the blank beside stays blank", u"VLookup(7,Sheet2!A1:B3,2)",    "blank"    },
    });
}

TEST_F(LookupFunctions, vLookupFindsOnlyEqualsIfAsked)
{
    expectAnswers(
        cells,
        {
            {"one that is there",                    u"VLookup(9,A1:B3,2,FALSE)",            "\"nine\""    },
            {"one that is not",                      u"VLookup(5,A1:B3,2,FALSE)",            "!!NA"        },
            {"with a blank as FALSE",                u"VLookup(5,A1:B3,2,Z99)",              "!!NA"        },
            {"with 0 as FALSE",                      u"VLookup(5,A1:B3,2,0)",                "!!NA"        },
            {"a number",                             u"VLookup(5,D1:E10,2,FALSE)",           "\"number\""  },
            {"a number and a date are never equal",  u"VLookup(36954,D1:E10,2,FALSE)",       "!!NA"        },
            {"a date",                               u"VLookup(3/4/2001,D1:E10,2,FALSE)",    "\"date\""    },
            {"a number and a text are never equal",  u"VLookup(12,D1:E10,2,FALSE)",          "!!NA"        },
            {"a text of digits",                     uR"(VLookup("12",D1:E10,2,FALSE))",     "\"digits\""  },
            {"a text in any case",                   uR"(VLookup("aLPHA",D1:E10,2,FALSE))",  "\"text\""    },
            {"a shorter text is another",            uR"(VLookup("Alph",D1:E10,2,FALSE))",   "!!NA"        },
            {"a longer one too",                     uR"(VLookup("Alphas",D1:E10,2,FALSE))", "!!NA"        },
            {"a logical",                            u"VLookup(TRUE,D1:E10,2,FALSE)",        "\"logical\"" },
            {"the other one",                        u"VLookup(FALSE,D1:E10,2,FALSE)",       "!!NA"        },
            {"an error is a value",                  u"VLookup(1/0,D1:E10,2,FALSE)",         "\"error\""   },
            {"another error",                        u"VLookup(NA(),D1:E10,2,FALSE)",        "!!NA"        },
            {"a formula's number",                   u"VLookup(7,D1:E10,2,FALSE)",           "\"formula\"" },
            {"a formula's text",                     uR"(VLookup("BETA",D1:E10,2,FALSE))",   "\"computed\""},
            {"the empty text",                       uR"(VLookup("",D1:E10,2,FALSE))",       "\"empty\""   },
            {"a blank equals no missing cell",       u"VLookup(D7,D1:E10,2,FALSE)",          "!!NA"        },
            {"a cell as key",                        u"VLookup(D4,D1:E10,2,FALSE)",          "\"text\""    },
            {"a cell of several as key is an error", u"VLookup(A1:A2,D1:E6,2)",              "\"error\""   },
    });
    workbook->sheetAt(0)->setCell(3, 6, {CellValue::makeBlank(), 0});
    expectAnswers(cells, {
                             {"a blank equals a cell that has only a style",
                              u"VLookup(Z99,D1:E10,2,FALSE)", "\"missing\""},
    });
}

TEST_F(LookupFunctions, vLookupOrdersKinds)
{
    expectAnswers(
        cells, {
                   {"below a date come the numbers",           u"VLookup(1/1/1999,D1:E10,2)",      "\"formula\""},
                   {"below a text the dates and lesser texts", uR"(VLookup("alphabet",D1:E10,2))",
                    "\"empty\""                                                                                 },
                   {"below a logical all texts",               u"VLookup(FALSE,D1:E10,2)",         "\"empty\""  },
                   {"below an error the logicals",             u"VLookup(NA(),D1:E5,2)",           "\"logical\""},
                   {"below a blank everything",                u"VLookup(Z99,D1:E8,2)",            "\"formula\""},
                   {"below a number no text",                  u"VLookup(4,D1:E10,2)",             "!!NA"       },
    });
}

TEST_F(LookupFunctions, vLookupRefusesColumnsOutsideOfTheTable)
{
    expectAnswers(cells,
                  {
                      {"beyond the last",                 u"VLookup(1,A1:B3,3)",      "!!Ref"  },
                      {"far beyond",                      u"VLookup(1,A1:B3,1e300)",  "!!Ref"  },
                      {"0",                               u"VLookup(1,A1:B3,0)",      "!!Val"  },
                      {"below",                           u"VLookup(1,A1:B3,-1e300)", "!!Val"  },
                      {"a part of one",                   u"VLookup(1,A1:B3,0.9)",    "!!Val"  },
                      {"a fraction is cut",               u"VLookup(1,A1:C3,2.9)",    "\"one\""},
                      {"but not at the last",             u"VLookup(1,A1:B3,2.1)",    "!!Ref"  },
                      {"a text that reads as a number",   uR"(VLookup(1,A1:B3,"2"))", "\"one\""},
                      {"a word",                          uR"(VLookup(1,A1:B3,"x"))", "!!Val"  },
                      {"a logical",                       u"VLookup(1,A1:B3,TRUE)",   "1"      },
                      {"a blank is 0",                    u"VLookup(1,A1:B3,Z99)",    "!!Val"  },
                      {"the column comes before the key", u"VLookup(7.5,A1:B3,3)",    "!!Ref"  },
                      {"a reversed table has no columns", u"VLookup(1,B1:A3,1)",      "!!Ref"  },
    });
    cells.store("Z1", CellValue::makeNumber(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(cells.answer(u"VLookup(1,A1:B3,Z1)"), "!!Val");
    EXPECT_EQ(cells.answer(u"VLookup(Z1,A1:B3,2)"), "!!NA") << "a key that is no number";
}

TEST_F(LookupFunctions, vLookupWantsATableOnOneSheet)
{
    expectAnswers(cells,
                  {
                      {"no reference",                       u"VLookup(1,2,1)",                   "!!Ref" },
                      {"a text",                             uR"(VLookup(1,"A1:B3",1))",          "!!Ref" },
                      {"an error",                           u"VLookup(1,1/0,1)",                 "!!Ref" },
                      {"several sheets",                     u"VLookup(1,Sheet1:Sheet2!A1:B3,2)", "!!Ref" },
                      {"no rows",                            u"VLookup(1,A3:B1,2)",               "!!NA"  },
                      {"no cells",                           u"VLookup(1,Sheet3!A1:B3,2)",        "!!NA"  },
                      {"no cells in the first column",       u"VLookup(1,F1:G3,2)",               "!!NA"  },
                      {"the leftmost of two errors",         u"VLookup(1,1/0,NA())",              "!!Ref" },
                      {"an error of the column",             u"VLookup(1,A1:B3,1/0)",             "!!Div0"},
                      {"of the last argument",               u"VLookup(1,A1:B3,2,1/0)",           "!!Div0"},
                      {"a last argument that is no logical", uR"(VLookup(1,A1:B3,2,"x"))",        "!!Val" },
                      {"nor is a date",                      u"VLookup(1,A1:B3,2,3/4/2001)",      "!!Val" },
                      {"an error as key and another",        u"VLookup(1/0,A1:B3,NA())",          "!!NA"  },
    });
}

TEST_F(LookupFunctions, hLookupIsVLookupLyingDown)
{
    expectAnswers(
        cells, {
                   {"the last below",                     u"HLookup(5,A21:C22,2)",               "\"three\""},
                   {"an exact match",                     u"HLookup(9,A21:C22,2)",               "\"nine\"" },
                   {"below all",                          u"HLookup(0,A21:C22,2)",               "!!NA"     },
                   {"only equals",                        u"HLookup(5,A21:C22,2,FALSE)",         "!!NA"     },
                   {"the row itself",                     u"HLookup(5,A21:C22,1)",               "3"        },
                   {"a text in any case",                 uR"(HLookup("NINE",A22:C22,1,FALSE))", "\"nine\"" },
                   {"a row beyond the last",              u"HLookup(1,A21:C22,3)",               "!!Ref"    },
                   {"row 0",                              u"HLookup(1,A21:C22,0)",               "!!Val"    },
                   {"a fraction is cut",                  u"HLookup(1,A21:C23,2.5)",             "\"one\""  },
                   {"no reference",                       u"HLookup(1,2,1)",                     "!!Ref"    },
                   {"several sheets",                     u"HLookup(1,Sheet1:Sheet2!A1:B3,2)",   "!!Ref"    },
                   {"on another sheet",                   u"HLookup(3,Sheet2!A1:B3,2)",          "4"        },
                   {"an empty row",                       u"HLookup(1,A19:C20,2)",               "!!NA"     },
                   {"a row above all",                    u"HLookup(1,A30:C31,2)",               "!!NA"     },
                   {"no columns",                         u"HLookup(1,C21:A22,2)",               "!!NA"     },
                   {"no rows",                            u"HLookup(1,A22:C21,1)",               "!!Ref"    },
                   {"a blank stays blank",                u"HLookup(1,A21:C23,3)",               "blank"    },
                   {"a last argument that is no logical", uR"(HLookup(1,A21:C22,2,"x"))",        "!!Val"    },
                   {"the leftmost of two errors",         u"HLookup(1,1/0,NA())",                "!!Ref"    },
    });
}

TEST_F(LookupFunctions, matchStopsByItsType)
{
    cells.fill("G1", {{u"1"}, {u"3"}, {u"9"}});
    cells.fill("H1", {{u"9"}, {u"3"}, {u"1"}});
    expectAnswers(cells,
                  {
                      {"the one below the first above",                u"Match(5,G1:G3)",           "2"    },
                      {"type 1 is the same",                           u"Match(5,G1:G3,1)",         "2"    },
                      {"the last when all are below",                  u"Match(10,G1:G3)",          "3"    },
                      {"none below",                                   u"Match(0,G1:G3)",           "!!NA" },
                      {"an equal",                                     u"Match(3,G1:G3)",           "2"    },
                      {"an equal behind a greater is not reached",     u"Match(3,A1:A3)",           "1"    },
                      {"an equal first",                               u"Match(1,G1:G3)",           "1"    },
                      {"type 0 finds an equal",                        u"Match(3,A1:A3,0)",         "3"    },
                      {"and nothing else",                             u"Match(2,A1:A3,0)",         "!!NA" },
                      {"type -1 stops at the first not above the key", u"Match(5,H1:H3,-1)",        "1"    },
                      {"steps back unless equal",                      u"Match(3,H1:H3,-1)",        "2"    },
                      {"and has none before the first",                u"Match(10,H1:H3,-1)",       "!!NA" },
                      {"the last when none is",                        u"Match(0,H1:H3,-1)",        "3"    },
                      {"types count by their sign",                    u"Match(5,H1:H3,-7)",        "1"    },
                      {"types count by their sign",                    u"Match(5,G1:G3,7)",         "2"    },
                      {"a fraction of a type is cut",                  u"Match(2,G1:G3,0.9)",       "!!NA" },
                      {"a logical type",                               u"Match(5,G1:G3,FALSE)",     "!!NA" },
                      {"a blank type is 0",                            u"Match(5,G1:G3,Z99)",       "!!NA" },
                      {"a text type is refused",                       uR"(Match(5,G1:G3,"1"))",    "!!Val"},
                      {"a text in any case",                           uR"(Match("NINE",B1:B3,0))", "2"    },
                      {"a cell as key",                                u"Match(A3,A1:A3,0)",        "3"    },
                      {"on another sheet",                             u"Match(5,Sheet2!A1:A3)",    "2"    },
                      {"in one cell",                                  u"Match(1,A1,0)",            "1"    },
    });
}

TEST_F(LookupFunctions, matchCountsRowByRowAndMissingCellsToo)
{
    expectAnswers(
        cells, {
                   {"across a row first",                       uR"(Match("nine",A1:B3,0))",      "4"      },
                   {"along a row",                              u"Match(3,A21:C21,0)",            "3"      },
                   {"past missing cells",                       uR"(Match("formula",C7:E8,0))",   "6"      },
                   {"past missing rows",                        u"Match(3,A4:C21,0)",             "54"     },
                   {"a text is above a number",                 u"Match(100,A1:C3)",              "1"      },
                   {"a missing cell is above everything",       u"Match(100,F1:H3)",              "!!NA"   },
                   {"also behind the data",                     u"Match(100,A1:A5)",              "3"      },
                   {"so whole columns end with the data",       u"Match(100,A1:A16384)",          "3"      },
                   {"but in type -1 they do not stop a number", u"Match(0,A1:A16384,-1)",         "16384"  },
                   {"nor anything else",                        u"Match(Z99,A4:C9,-1)",           "18"     },
                   {"nor equal a blank",                        u"Match(Z99,F1:F9,0)",            "!!NA"   },
                   {"a sheet without cells",                    u"Match(1,Sheet3!A1:B2,-1)",      "4"      },
                   {"in no order",                              u"Match(1,Sheet3!A1:B2,0)",       "!!NA"   },
                   {"the greatest range",                       u"Match(0,Sheet3!A1:IV16384,-1)", "4194304"},
    });
    workbook->sheetAt(0)->setCell(5, 2, {CellValue::makeBlank(), 0}); // F3
    expectAnswers(cells,
                  {
                      {"a blank equals a cell that has only a style", u"Match(Z99,F1:F9,0)", "3"   },
                      {"which is above a number",                     u"Match(5,F3:F9)",     "!!NA"},
    });
}

TEST_F(LookupFunctions, matchWantsAReference)
{
    expectAnswers(cells, {
                             {"a number",                   u"Match(1,1)",          "!!Ref" },
                             {"an error",                   u"Match(1,1/0,0)",      "!!Ref" },
                             {"no rows",                    u"Match(1,A3:A1)",      "!!NA"  },
                             {"no rows in type 0",          u"Match(1,A3:A1,0)",    "!!NA"  },
                             {"no rows in type -1",         u"Match(0,A3:A1,-1)",   "!!NA"  },
                             {"no columns",                 u"Match(1,B1:A3,-1)",   "!!NA"  },
                             {"an error is a key",          u"Match(1/0,D1:D10,0)", "6"     },
                             {"the leftmost of two errors", u"Match(1,2,1/0)",      "!!Ref" },
                             {"an error as type",           u"Match(1,A1:A3,1/0)",  "!!Div0"},
    });
}

// The owners of all texts.
int countOwners()
{
    int owners = 0;
    for (std::int32_t index = 0; index < stringPool->slotCount(); ++index)
        owners += stringPool->isLive(index) ? stringPool->refCount(index) : 0;
    return owners;
}

TEST_F(LookupFunctions, searchesGiveBackTheirKeys)
{
    const std::u16string_view formulas[] = {
        uR"(=VLookup("one",B1:B3,1))",
        uR"(=VLookup("one",B1:B3,5))",
        uR"(=VLookup("one",7,1/0))",
        uR"(=VLookup("two",B1:B3,1,FALSE))",
        uR"(=HLookup("x",A22:C22,1))",
        uR"(=Match("one",B1:B3,0))",
        uR"(=Match("one",B1:B3,"x"))",
        uR"(=Match("one",7))",
        uR"(=Index("one",1,1))",
        uR"(=Rows("one"))",
        uR"(=Row("one"))",
    };
    for (const std::u16string_view formula : formulas) {
        cells.put("J1", formula);
        const int before = countOwners();
        recalculate();
        EXPECT_EQ(countOwners(), before) << std::string(formula.begin(), formula.end());
    }
}

TEST_F(LookupFunctions, indexAnswersAReference)
{
    expectAnswers(cells, {
                             {"which stands for its cell",             u"Index(A1:B3,2,2)",                      "\"nine\""},
                             {"it is a reference",                     u"IsRef(Index(A1:B3,2,2))",               "TRUE"    },
                             {"to that row",                           u"Row(Index(A1:B3,3,2))",                 "3"       },
                             {"and column",                            u"Column(Index(B1:D3,3,2))",              "3"       },
                             {"so its text is none for T",             u"T(Index(A1:B3,2,2))",                   "\"\""    },
                             {"one cell",                              u"Rows(Index(A1:B3,2,2))",                "1"       },
                             {"to another sheet",                      u"Index(Sheet2!A1:B3,2,2)",               "42"      },
                             {"to several sheets, which has no value",
                              u"Index(Sheet1:Sheet2!A1:B3,1,1)",                                                 "!!Ref"   },
                             {"though it is one",                      u"IsRef(Index(Sheet1:Sheet2!A1:B3,1,1))", "TRUE"    },
                             {"to a missing cell",                     u"Index(F1:F3,1,1)",                      "blank"   },
                             {"of the only area",                      u"Index(A1:B3,1,1,1)",                    "1"       },
                             {"in a cell",                             u"Index(A1,1,1)",                         "1"       },
    });
}

TEST_F(LookupFunctions, indexRefusesPlacesOutside)
{
    expectAnswers(cells, {
                             {"a row past the last",                 u"Index(A1:B2,3,1)",           "!!Ref"     },
                             {"a column past the last",              u"Index(A1:B2,1,3)",           "!!Ref"     },
                             {"row 0",                               u"Index(A1:B2,0,1)",           "!!Ref"     },
                             {"column 0",                            u"Index(A1:B2,1,0)",           "!!Ref"     },
                             {"a blank row",                         u"Index(A1:B2,Z99,1)",         "!!Ref"     },
                             {"a huge row",                          u"Index(A1:B2,1e300,1)",       "!!Ref"     },
                             {"a huge column",                       u"Index(A1:B2,1,1e300)",       "!!Ref"     },
                             {"far below",                           u"Index(A1:B2,-1e300,-1e300)", "!!Ref"     },
                             {"a row that wraps in 16 bits",         u"Index(A1:B2,65537,1)",       "!!Ref"     },
                             {"a reversed range has no rows",        u"Index(A2:A1,1,1)",           "!!Ref"     },
                             {"another area",                        u"Index(A1:B2,1,1,2)",         "!!NA"      },
                             {"another area comes before the place", u"Index(A1:B2,9,9,0)",         "!!NA"      },
                             {"a fraction is cut",                   u"Index(A1:B2,1.9,1.9)",       "1"         },
                             {"a text is refused",                   uR"(Index(A1:B2,"1",1))",      "!!Val"     },
                             {"a logical",                           u"Index(A1:B2,TRUE,TRUE)",     "1"         },
                             {"no reference",                        u"Index(5,1,1)",               "!!Ref"     },
                             {"the leftmost of errors",              uR"(Index(5,1/0,NA()))",       "!!Ref"     },
                             {"an error as row",                     u"Index(A1:B2,1/0,NA())",      "!!Div0"    },
                             {"a row and a column must be there",    u"Index(A1:B2,1)",             "refused 17"},
    });
}

TEST_F(LookupFunctions, rowsAndColumnsAreTheSizeAsItStands)
{
    expectAnswers(cells, {
                             {"of a range",                 u"Rows(A1:C5)",               "5"         },
                             {"of a range",                 u"Columns(A1:C5)",            "3"         },
                             {"of a cell",                  u"Rows(B7)",                  "1"         },
                             {"of a cell",                  u"Columns(B7)",               "1"         },
                             {"of whole columns",           u"Rows(A1:A16384)",           "16384"     },
                             {"of whole rows",              u"Columns(A1:IV1)",           "256"       },
                             {"of a reversed range",        u"Rows(A5:A1)",               "0"         },
                             {"of a reversed range",        u"Columns(C1:A1)",            "0"         },
                             {"of a range reversed by one", u"Rows(A2:A1)",               "0"         },
                             {"on another sheet",           u"Rows(Sheet2!A1:B9)",        "9"         },
                             {"on another sheet",           u"Columns(Sheet2!A1:B9)",     "2"         },
                             {"on several sheets",          u"Rows(Sheet1:Sheet3!A1:B9)", "9"         },
                             {"a number has none",          u"Rows(5)",                   "!!Val"     },
                             {"a text has none",            uR"(Columns("A1:B2"))",       "!!Val"     },
                             {"an error has none",          u"Rows(1/0)",                 "!!Val"     },
                             {"a dead reference has none",  u"Columns(!!Ref)",            "!!Val"     },
                             {"a logical has none",         u"Columns(TRUE)",             "!!Val"     },
                             {"it must be there",           u"Rows()",                    "refused 17"},
                             {"it must be there",           u"Columns()",                 "refused 17"},
    });
}

TEST_F(LookupFunctions, rowAndColumnAreThePlaceOfAReference)
{
    cells.base = {6, 3, 0}; // D7
    expectAnswers(cells, {
                             {"of a cell",                     u"Row(B5)",                     "5"         },
                             {"of a cell",                     u"Column(B5)",                  "2"         },
                             {"of a range's first corner",     u"Row(B5:C9)",                  "5"         },
                             {"of a range's first corner",     u"Column(B5:C9)",               "2"         },
                             {"as it stands",                  u"Row(C9:B5)",                  "9"         },
                             {"as it stands",                  u"Column(C9:B5)",               "3"         },
                             {"on another sheet",              u"Row(Sheet2!B5)",              "5"         },
                             {"on several sheets",             u"Column(Sheet1:Sheet2!B5:C9)", "2"         },
                             {"the last row",                  u"Row(A16384)",                 "16384"     },
                             {"the last column",               u"Column(IV1)",                 "256"       },
                             {"of the formula itself",         u"Row()",                       "7"         },
                             {"of the formula itself",         u"Column()",                    "4"         },
                             {"of a reference that is chosen", u"Row(If(TRUE,B5,1))",          "5"         },
                             {"a number has none",             u"Row(1)",                      "!!Ref"     },
                             {"a text has none",               uR"(Column("B5"))",             "!!Ref"     },
                             {"an error has none",             u"Row(1/0)",                    "!!Ref"     },
                             {"a logical has none",            u"Column(TRUE)",                "!!Ref"     },
                             {"two are one too many",          u"Row(A1,A2)",                  "refused 18"},
    });
}

// --- References that formulas cannot write

// Calls a function as the machine does and answers its result.
CellValue call(void (*handler)(), std::initializer_list<CellValue> arguments)
{
    machine.argumentCount = static_cast<std::uint8_t>(arguments.size());
    for (const CellValue& argument : arguments)
        pushRaw(argument);
    handler();
    EXPECT_EQ(machine.stackTop + 1, machine.runBase);
    return popRaw();
}

TEST_F(LookupFunctions, aSheetThatIsNotThereIsADeadReference)
{
    CellValue table = CellValue::makeRangeRef({0, 0, 2, 1});
    table.tag = TagSheetRangeRef;
    table.firstSheet = table.lastSheet = 200;
    const CellValue one = CellValue::makeNumber(1);
    EXPECT_EQ(describe(call(callVLookup, {one, table, one})), "!!Ref");
    EXPECT_EQ(describe(call(callHLookup, {one, table, one})), "!!Ref");
    EXPECT_EQ(describe(call(callMatch, {one, table, one})), "!!Ref");
    EXPECT_EQ(describe(call(callRows, {table})), "3");
}

TEST(LookupSheets, indexReachesItsOwnSheetWhereNoReferenceCanNameIt)
{
    Cells cells;
    while (workbook->sheets.size() <= 300)
        workbook->addSheet();
    cells.base.sheet = 300;
    workbook->sheetAt(300)->setCell(1, 1, {CellValue::makeNumber(42), -1});
    EXPECT_EQ(cells.answer(u"Index(A1:B2,2,2)"), "42");
}

// --- Against a plain transcription

// A lookup by compareValues alone: every cell of the line, missing ones too.
int plainFind(const CellValue& key, const std::vector<const CellValue*>& line, bool approximate)
{
    int below = -1;
    for (std::size_t place = 0; place < line.size(); ++place) {
        const int comparison = compareValues(&key, line[place], IgnoreCase);
        if (comparison == 0)
            return static_cast<int>(place);
        if (comparison > 0)
            below = static_cast<int>(place);
    }
    return approximate ? below : -1;
}

int plainMatch(const CellValue& key, const std::vector<const CellValue*>& line, int type)
{
    int position = 1;
    int comparison = -1;
    bool stopped = false;
    for (const CellValue* value : line) {
        comparison = compareValues(&key, value, IgnoreCase);
        stopped = type > 0 ? comparison <= 0 : type < 0 ? comparison >= 0 : comparison == 0;
        if (stopped)
            break;
        ++position;
    }
    if (type == 0 && !stopped)
        return 0;
    return stopped && comparison == 0 ? position : position - 1;
}

class RandomValues {
public:
    CellValue next()
    {
        switch (random_() % 9) {
        case 0:
        case 1:
        case 2:
            return CellValue::makeNumber(number());
        case 3:
            return CellValue::makeDate(number());
        case 4:
        case 5:
            return CellValue::makeTextIndex(stringPool->addText(text()));
        case 6:
            return CellValue::makeLogical(random_() % 2 == 0);
        case 7:
            return CellValue::makeError(random_() % 2 == 0 ? CellErrorDiv0 : CellErrorNA);
        default:
            return CellValue::makeBlank();
        }
    }
    unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

private:
    double number()
    {
        const unsigned choice = below(12);
        if (choice < 2)
            return choice == 0 ? std::numeric_limits<double>::quiet_NaN() : -0.0;
        return choice / 2.0 - 3;
    }
    std::u16string text()
    {
        static constexpr char16_t units[] = {u'a', u'A', u'b', u'\u00e4', u'\u00c4', 0xd800};
        // Now and then longer than what is folded beforehand.
        std::u16string text(below(20) == 0 ? 150 : 0, u'x');
        for (unsigned length = below(3); length > 0; --length)
            text += units[below(std::size(units))];
        return text;
    }

    std::mt19937 random_{20010304};
};

constexpr int RandomRows = 40;
constexpr int RandomColumns = 4;

// Fills a rectangle with values, gaps, cells that have only a style, and formulas.
void fillAtRandom(Sheet& sheet, RandomValues& random)
{
    for (int row = 0; row < RandomRows; ++row) {
        if (random.below(6) == 0)
            continue;
        for (int column = 0; column < RandomColumns; ++column) {
            if (random.below(6) == 0)
                continue;
            const CellPosition place{static_cast<std::uint16_t>(row),
                                     static_cast<std::uint16_t>(column), 0};
            Cell cell{random.next(), static_cast<std::int16_t>(random.below(2))};
            if (random.below(5) == 0) {
                FormulaCell* formula = newFormulaCell(place, -1);
                formula->result = cell.value;
                cell.value = CellValue::makeFormula(formula);
            }
            sheet.setCell(column, row, cell);
        }
    }
}

std::vector<const CellValue*> valuesOf(const Sheet& sheet, const RangeRef& range)
{
    std::vector<const CellValue*> values;
    for (int row = range.firstRow; row <= range.lastRow; ++row)
        for (int column = range.firstColumn; column <= range.lastColumn; ++column)
            values.push_back(sheet.valuePointer(column, row));
    return values;
}

std::string placeAnswer(int place)
{
    return place < 0 ? "!!NA" : std::to_string(place);
}

TEST(LookupSearches, findWhatComparingEveryCellFinds)
{
    Cells cells;
    Sheet& sheet = *workbook->sheetAt(0);
    RandomValues random;
    const RangeRef area{0, 0, RandomRows + 5, RandomColumns + 1};
    for (int round = 0; round < 200; ++round) {
        sheet.clearAll({0, 0, RandomRows, RandomColumns});
        fillAtRandom(sheet, random);
        CellValue key = random.next();
        const auto firstColumn = valuesOf(sheet, {0, 0, area.lastRow, 0});
        const auto firstRow = valuesOf(sheet, {0, 0, 0, area.lastColumn});
        const auto all = valuesOf(sheet, area);
        const CellValue table = CellValue::makeRangeRef(area);
        const auto keyCopy = [&key] {
            CellValue copy;
            copyValue(key, copy);
            return copy;
        };
        for (const bool approximate : {false, true}) {
            const CellValue mode = CellValue::makeLogical(approximate);
            const CellValue one = CellValue::makeNumber(1);
            const auto expectValue = [&](void (*handler)(), const auto& line) {
                const int place = plainFind(key, line, approximate);
                CellValue found = call(handler, {keyCopy(), table, one, mode});
                const std::string wanted =
                    place < 0 ? "!!NA" : describe(*line[static_cast<std::size_t>(place)]);
                EXPECT_EQ(describe(found), wanted) << describe(key) << " in round " << round;
                releaseValue(found);
            };
            expectValue(callVLookup, firstColumn);
            expectValue(callHLookup, firstRow);
        }
        for (const int type : {-1, 0, 1}) {
            const CellValue position =
                call(callMatch, {keyCopy(), table, CellValue::makeNumber(type)});
            const int wanted = plainMatch(key, all, type);
            EXPECT_EQ(describe(position), placeAnswer(wanted == 0 ? -1 : wanted))
                << describe(key) << " of type " << type << " in round " << round;
        }
        releaseValue(key);
    }
}

} // namespace
} // namespace vorn
