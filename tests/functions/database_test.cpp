#include "core/chain.h"
#include "core/error.h"
#include "core/formulacell.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
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

// A store of parts, and criteria on the second sheet. The names of the fields are written in
// another case there.
class Database : public testing::Test {
protected:
    Database()
    {
        cells.fill("A1", {
                             {u"Part", u"Kind",  u"Weight", u"Price", u"Since",    u"Mixed"   },
                             {u"Ada",  u"pump",  u"10",     u"2.5",   u"1/2/2000", u"3"       },
                             {u"Ben",  u"pump",  u"20",     u"4",     u"1/3/2000", u"'8"      },
                             {u"Cid",  u"valve", u"30",     u"",      u"1/4/2000", u"TRUE"    },
                             {u"Dot",  u"Valve", u"40",     u"8",     u"1/5/2000", u"1/1/1900"},
                             {u"Eve",  u"valve", u"50",     u"=1/0",  u"1/6/2000", u"'"       },
        });
        // Each criteria range has its own columns.
        cells.fill("Sheet2!A1", {
                                    {u"kind",  u"KIND", u"weight", u"weight", u"weight", u"kind",
                                     u"kind", u"kind"},
                                    {u"pump", u"PUMP",        u">20",           u">10",             u"<40",         u"pump", u"pump"},
                                    {u"", u"", u"",          u"",                 u"",               u"Valve"                   },
        });
        cells.fill(
            "Sheet2!J1",
            {
                {u"colour", u"kind", u"",    u"kind", u"weight", u"since",    u"since", u"kind", u"kind"  },
                {u"red",    u"pump", u"zzz", u"pump", u"30",     u"1/3/2000", u"36528", u">",    u"<>pump"},
        });
        cells.fill(
            "Sheet2!T1",
            {
                {u"kind",  u"colour", u"weight", u"price", u"mixed", u"mixed", u"weight", u"part"},
                {u"valve", u"red",    u">40",    u"=1/0",  u"<>3",   u">5",    u">50",    u"Eve" },
        });
    }

    template <std::size_t count>
    void expectResults(const FormulaCase (&cases)[count])
    {
        for (const FormulaCase& c : cases)
            EXPECT_EQ(cells.answer(c.formula), c.result) << c.behaviour;
    }

    Cells cells;
};

TEST_F(Database, criteriaSelectRows)
{
    expectResults({
        {"equal texts",                                  u"=Dsum(A1:F6,\"Weight\",Sheet2!A1:A2)",     "30" },
        {"names without case, values with it",           u"=Dsum(A1:F6,\"Weight\",Sheet2!B1:B2)",     "0"  },
        {"a comparison",                                 u"=Dsum(A1:F6,\"Weight\",Sheet2!C1:C2)",     "120"},
        {"both conditions of a row",                     u"=Dsum(A1:F6,\"Weight\",Sheet2!D1:E2)",     "50" },
        {"any of two rows",                              u"=Dsum(A1:F6,\"Weight\",Sheet2!F1:F3)",     "70" },
        {"an empty row selects nothing",                 u"=Dsum(A1:F6,\"Weight\",Sheet2!G1:G3)",     "30" },
        {"nor does it alone",                            u"=Dsum(A1:F6,\"Weight\",Sheet2!H1:H3)",     "0"  },
        {"nor a header alone",                           u"=Dsum(A1:F6,\"Weight\",Sheet2!A1:A1)",     "0"  },
        {"nor criteria without a header",                u"=Dsum(A1:F6,\"Weight\",Sheet2!I1:I3)",     "0"  },
        {"an unknown header ends the row",               u"=Dsum(A1:F6,\"Weight\",Sheet2!J1:K2)",     "0"  },
        {"conditions before it hold",                    u"=Dsum(A1:F6,\"Weight\",Sheet2!T1:V2)",     "80" },
        {"a column without a header is skipped",         u"=Dsum(A1:F6,\"Weight\",Sheet2!L1:M2)",     "30" },
        {"a number",                                     u"=Dsum(A1:F6,\"Weight\",Sheet2!N1:N2)",     "30" },
        {"a date",                                       u"=Dsum(A1:F6,\"Weight\",Sheet2!O1:O2)",     "20" },
        {"no date equals a number",                      u"=Dsum(A1:F6,\"Weight\",Sheet2!P1:P2)",     "0"  },
        {"a sign alone is no condition",                 u"=Dsum(A1:F6,\"Weight\",Sheet2!Q1:Q2)",     "0"  },
        {"unequal",                                      u"=Dsum(A1:F6,\"Weight\",Sheet2!R1:R2)",     "120"},
        {"an error",                                     u"=Dsum(A1:F6,\"Weight\",Sheet2!W1:W2)",     "50" },
        {"texts, logicals and dates lie above a number", u"=Dsum(A1:F6,\"Weight\",Sheet2!Y1:Y2)",
         "140"                                                                                             },
        {"a whole column of criteria",                   u"=Dsum(A1:F6,\"Weight\",Sheet2!A1:A16384)", "30" },
        {"corners of the criteria out of order",         u"=Dsum(A1:F6,\"Weight\",Sheet2!A2:A1)",     "0"  },
        {"corners of the database out of order",         u"=Dsum(A6:F1,1,Sheet2!A1:A2)",              "0"  },
    });
}

TEST_F(Database, theFieldIsANameOrANumber)
{
    cells.fill("H1", {
                         {u"Price", u"3"}
    });
    expectResults({
        {"a name, without case",          u"=Dsum(A1:F6,\"WEIGHT\",Sheet2!A1:A2)", "30"   },
        {"a name in a cell",              u"=Dsum(A1:F6,H1,Sheet2!A1:A2)",         "6.5"  },
        {"a number",                      u"=Dsum(A1:F6,3,Sheet2!A1:A2)",          "30"   },
        {"the result of a calculation",   u"=Dsum(A1:F6,1+2,Sheet2!A1:A2)",        "30"   },
        {"a hair below a whole number",   u"=Dsum(A1:F6,2.999999,Sheet2!A1:A2)",   "30"   },
        {"a fraction is cut",             u"=Dsum(A1:F6,3.9,Sheet2!A1:A2)",        "30"   },
        {"a number in a cell is a name",  u"=Dsum(A1:F6,I1,Sheet2!A1:A2)",         "!!Val"},
        {"so is a text of a number",      u"=Dsum(A1:F6,\"3\",Sheet2!A1:A2)",      "!!Val"},
        {"counted from the first column", u"=Dsum(B1:F6,2,Sheet2!A1:A2)",          "30"   },
        {"0 lies before the database",    u"=Dsum(B1:F6,0,Sheet2!A1:A2)",          "0"    },
        {"and is read there",             u"=Dcounta(B1:F6,0,Sheet2!A1:A2)",       "2"    },
        {"past the database too",         u"=Dsum(A1:B6,3,Sheet2!A1:A2)",          "30"   },
        {"where nothing is",              u"=Dsum(A1:F6,200,Sheet2!A1:A2)",        "0"    },
        {"before the sheet",              u"=Dsum(A1:F6,-5,Sheet2!A1:A2)",         "0"    },
        {"far outside of the sheet",      u"=Dsum(A1:F6,1E300,Sheet2!A1:A2)",      "0"    },
        {"far on the other side",         u"=Dsum(A1:F6,-1E300,Sheet2!A1:A2)",     "0"    },
    });
}

TEST_F(Database, anUnknownFieldIsAnErrorOrAnEmptySelection)
{
    expectResults({
        {"a sum",                       u"=Dsum(A1:F6,\"x\",Sheet2!A1:A2)",     "!!Val" },
        {"a count",                     u"=Dcount(A1:F6,\"x\",Sheet2!A1:A2)",   "!!Val" },
        {"a count of all",              u"=Dcounta(A1:F6,\"x\",Sheet2!A1:A2)",  "!!Val" },
        {"an average",                  u"=Daverage(A1:F6,\"x\",Sheet2!A1:A2)", "!!Div0"},
        {"the least",                   u"=Dmin(A1:F6,\"x\",Sheet2!A1:A2)",     "!!Val" },
        {"the greatest",                u"=Dmax(A1:F6,\"x\",Sheet2!A1:A2)",     "!!Val" },
        {"a product",                   u"=Dproduct(A1:F6,\"x\",Sheet2!A1:A2)", "!!Val" },
        {"a deviation of a sample",     u"=Dstdev(A1:F6,\"x\",Sheet2!A1:A2)",   "!!Div0"},
        {"a variance of a sample",      u"=Dvar(A1:F6,\"x\",Sheet2!A1:A2)",     "!!Div0"},
        {"a deviation of a population", u"=Dstdevp(A1:F6,\"x\",Sheet2!A1:A2)",  "!!Div0"},
        {"a variance of a population",  u"=Dvarp(A1:F6,\"x\",Sheet2!A1:A2)",    "!!Div0"},
        {"a value",                     u"=Dget(A1:F6,\"x\",Sheet2!A1:A2)",     "!!Val" },
        {"a blank field",               u"=Dsum(A1:F6,Z1,Sheet2!A1:A2)",        "!!Val" },
        {"an error as field",           u"=Dsum(A1:F6,1/0,Sheet2!A1:A2)",       "!!Val" },
        {"a logical as field",          u"=Dsum(A1:F6,TRUE,Sheet2!A1:A2)",      "!!Val" },
        {"a date as field",             u"=Dsum(A1:F6,1/2/1900,Sheet2!A1:A2)",  "!!Val" },
        {"several cells as field",      u"=Dsum(A1:F6,A1:B1,Sheet2!A1:A2)",     "!!Val" },
    });
}

TEST_F(Database, otherThanRangesAreValueErrors)
{
    expectResults({
        {"a number for the database", u"=Dsum(5,\"Weight\",Sheet2!A1:A2)",  "!!Val"     },
        {"a number for the criteria", u"=Dsum(A1:F6,\"Weight\",5)",         "!!Val"     },
        {"a text for both",           u"=Daverage(\"x\",\"Weight\",\"x\")", "!!Val"     },
        {"an error for the criteria", u"=Dsum(A1:F6,\"Weight\",1/0)",       "!!Val"     },
        {"beside another error",      u"=Dsum(A1:F6,1/0,5)",                "!!Val"     },
        {"an error for the database", u"=Dget(!!NA,1,Sheet2!A1:A2)",        "!!Val"     },
        {"two arguments",             u"=Dsum(A1:F6,1)",                    "refused 17"},
        {"four arguments",            u"=Dsum(A1:F6,1,A1:A2,1)",            "refused 18"},
    });
}

TEST_F(Database, sumsCountsAndExtremesTakeNumbersOfSelectedRows)
{
    expectResults({
        {"the sum",                      u"=Dsum(A1:F6,\"Price\",Sheet2!A1:A2)",     "6.5"   },
        {"only numbers add",             u"=Dsum(A1:F6,\"Mixed\",Sheet2!C1:C2)",     "0"     },
        {"dates do not",                 u"=Dsum(A1:F6,\"Since\",Sheet2!A1:A2)",     "0"     },
        {"an error is the result",       u"=Dsum(A1:F6,\"Price\",Sheet2!C1:C2)",     "!!Div0"},
        {"if it is selected",            u"=Dsum(A1:F6,\"Price\",Sheet2!D1:E2)",     "4"     },
        {"the count of numbers",         u"=Dcount(A1:F6,\"Weight\",Sheet2!C1:C2)",  "3"     },
        {"an error is not counted",      u"=Dcount(A1:F6,\"Price\",Sheet2!C1:C2)",   "1"     },
        {"texts and dates are not",      u"=Dcount(A1:F6,\"Since\",Sheet2!C1:C2)",   "0"     },
        {"the count of all but blanks",  u"=Dcounta(A1:F6,\"Price\",Sheet2!C1:C2)",  "2"     },
        {"empty texts count",            u"=Dcounta(A1:F6,\"Mixed\",Sheet2!C1:C2)",  "3"     },
        {"the count of nothing",         u"=Dcount(A1:F6,\"Price\",Sheet2!B1:B2)",   "0"     },
        {"nothing at all",               u"=Dcounta(A1:F6,\"Price\",Sheet2!B1:B2)",  "0"     },
        {"the least",                    u"=Dmin(A1:F6,\"Weight\",Sheet2!C1:C2)",    "30"    },
        {"the least of nothing",         u"=Dmin(A1:F6,\"Weight\",Sheet2!B1:B2)",    "0"     },
        {"the least beside an error",    u"=Dmin(A1:F6,\"Price\",Sheet2!C1:C2)",     "!!Div0"},
        {"the greatest",                 u"=Dmax(A1:F6,\"Weight\",Sheet2!D1:E2)",    "30"    },
        {"the greatest of nothing",      u"=Dmax(A1:F6,\"Weight\",Sheet2!B1:B2)",    "0"     },
        {"the greatest beside an error", u"=Dmax(A1:F6,\"Price\",Sheet2!C1:C2)",     "!!Div0"},
        {"the product",                  u"=Dproduct(A1:F6,\"Price\",Sheet2!A1:A2)", "10"    },
        {"the product of nothing is 1",  u"=Dproduct(A1:F6,\"Price\",Sheet2!B1:B2)", "1"     },
        {"of no numbers too",            u"=Dproduct(A1:F6,\"Since\",Sheet2!A1:A2)", "1"     },
        {"the product beside an error",  u"=Dproduct(A1:F6,\"Price\",Sheet2!C1:C2)", "!!Div0"},
    });
}

TEST_F(Database, extremesBeginWithTheFirstNumber)
{
    cells.fill("C2", {{u"-10"}, {u"-20"}});
    expectResults({
        {"the greatest below 0", u"=Dmax(A1:F6,\"Weight\",Sheet2!A1:A2)", "-10"},
        {"the least below 0",    u"=Dmin(A1:F6,\"Weight\",Sheet2!A1:A2)", "-20"},
    });
}

// The weights of the last three rows are 30, 40 and 50; of the two pumps 10 and 20.
TEST_F(Database, averagesAndVariancesOfNothingDivideByZero)
{
    expectResults({
        {"the average",                   u"=Daverage(A1:F6,\"Weight\",Sheet2!C1:C2)", "40"              },
        {"the average of nothing",        u"=Daverage(A1:F6,\"Weight\",Sheet2!B1:B2)", "!!Div0"          },
        {"the average of dates",          u"=Daverage(A1:F6,\"Since\",Sheet2!A1:A2)",  "!!Div0"          },
        {"an error behind a number",      u"=Daverage(A1:F6,\"Price\",Sheet2!C1:C2)",  "!!Div0"          },
        {"the deviation of a sample",     u"=Dstdev(A1:F6,\"Weight\",Sheet2!C1:C2)",   "10"              },
        {"of one value",                  u"=Dstdev(A1:F6,\"Weight\",Sheet2!N1:N2)",   "!!Num"           },
        {"of nothing",                    u"=Dstdev(A1:F6,\"Weight\",Sheet2!B1:B2)",   "!!Div0"          },
        {"of two",                        u"=Dstdev(A1:F6,\"Weight\",Sheet2!A1:A2)",   "7.07106781186548"},
        {"beside an error",               u"=Dstdev(A1:F6,\"Price\",Sheet2!C1:C2)",    "!!Div0"          },
        {"the variance of a sample",      u"=Dvar(A1:F6,\"Weight\",Sheet2!C1:C2)",     "100"             },
        {"of one value",                  u"=Dvar(A1:F6,\"Weight\",Sheet2!N1:N2)",     "!!Num"           },
        {"of nothing",                    u"=Dvar(A1:F6,\"Weight\",Sheet2!B1:B2)",     "!!Div0"          },
        {"of two",                        u"=Dvar(A1:F6,\"Weight\",Sheet2!A1:A2)",     "50"              },
        {"beside an error",               u"=Dvar(A1:F6,\"Price\",Sheet2!C1:C2)",      "!!Div0"          },
        {"the deviation of a population", u"=Dstdevp(A1:F6,\"Weight\",Sheet2!C1:C2)",
         "8.16496580927726"                                                                              },
        {"of one value",                  u"=Dstdevp(A1:F6,\"Weight\",Sheet2!N1:N2)",  "0"               },
        {"of nothing",                    u"=Dstdevp(A1:F6,\"Weight\",Sheet2!B1:B2)",  "!!Div0"          },
        {"of two",                        u"=Dstdevp(A1:F6,\"Weight\",Sheet2!A1:A2)",  "5"               },
        {"beside an error",               u"=Dstdevp(A1:F6,\"Price\",Sheet2!C1:C2)",   "!!Div0"          },
        {"the variance of a population",  u"=Dvarp(A1:F6,\"Weight\",Sheet2!C1:C2)",
         "66.6666666666667"                                                                              },
        {"of one value",                  u"=Dvarp(A1:F6,\"Weight\",Sheet2!N1:N2)",    "0"               },
        {"of nothing",                    u"=Dvarp(A1:F6,\"Weight\",Sheet2!B1:B2)",    "!!Div0"          },
        {"of two",                        u"=Dvarp(A1:F6,\"Weight\",Sheet2!A1:A2)",    "25"              },
        {"beside an error",               u"=Dvarp(A1:F6,\"Price\",Sheet2!C1:C2)",     "!!Div0"          },
    });
}

TEST_F(Database, anErrorBehindANumberIsTheResult)
{
    cells.put("D3", u"=!!NA");
    expectResults({
        {"of a sum",      u"=Dsum(A1:F6,\"Price\",Sheet2!A1:A2)",     "!!NA"},
        {"of an average", u"=Daverage(A1:F6,\"Price\",Sheet2!A1:A2)", "!!NA"},
        {"of a variance", u"=Dvarp(A1:F6,\"Price\",Sheet2!A1:A2)",    "!!NA"},
    });
    cells.put("D2", u"=!!Ref");
    expectResults({
        {"the first error ends the walk",       u"=Dsum(A1:F6,\"Price\",Sheet2!A1:A2)",     "!!Ref"},
        {"before any number nothing was taken", u"=Daverage(A1:F6,\"Price\",Sheet2!A1:A2)",
         "!!Div0"                                                                                  },
    });
}

TEST_F(Database, getTakesTheOneValueOfAnyKind)
{
    expectResults({
        {"a text",                  u"=Dget(A1:F6,\"Part\",Sheet2!N1:N2)",              "\"Cid\""   },
        {"a number",                u"=Dget(A1:F6,\"Weight\",Sheet2!O1:O2)",            "20"        },
        {"a date",                  u"=Dget(A1:F6,\"Since\",Sheet2!N1:N2)",             "date 36529"},
        {"a logical",               u"=Dget(A1:F6,\"Mixed\",Sheet2!N1:N2)",             "TRUE"      },
        {"a blank",                 u"=Dget(A1:F6,\"Price\",Sheet2!N1:N2)",             "blank"     },
        {"an error",                u"=Dget(A1:F6,\"Price\",Sheet2!AA1:AA2)",           "!!Div0"    },
        {"of nothing",              u"=Dget(A1:F6,\"Part\",Sheet2!B1:B2)",              "!!Val"     },
        {"of two",                  u"=Dget(A1:F6,\"Part\",Sheet2!A1:A2)",              "!!Num"     },
        {"a blank in a function",   u"=Countblank(Dget(A1:F6,\"Price\",Sheet2!N1:N2))", "1"         },
        {"a text in an expression", u"=Dget(A1:F6,\"Part\",Sheet2!N1:N2)&\"!\"",        "\"Cid!\""  },
    });
}

// Rows that do not exist lie above every number.
TEST_F(Database, rowsThatDoNotExistMeetWhatLiesAboveEverything)
{
    expectResults({
        {"the last row alone",         u"=Dget(A1:F6,\"Part\",Sheet2!V1:V2)",         "\"Eve\""},
        {"and an empty one",           u"=Dget(A1:F7,\"Part\",Sheet2!V1:V2)",         "!!Num"  },
        {"an empty one alone",         u"=Dget(A1:F7,\"Part\",Sheet2!Z1:Z2)",         "blank"  },
        {"two of them",                u"=Dget(A1:F8,\"Part\",Sheet2!Z1:Z2)",         "!!Num"  },
        {"a whole column of them",     u"=Dget(A1:F16384,\"Part\",Sheet2!V1:V2)",     "!!Num"  },
        {"a database of none",         u"=Dget(A1:F1,\"Part\",Sheet2!V1:V2)",         "!!Val"  },
        {"unless they do not meet",    u"=Dget(A1:F16384,\"Part\",Sheet2!N1:N2)",     "\"Cid\""},
        {"they hold no number",        u"=Dcount(A1:F16384,\"Weight\",Sheet2!V1:V2)", "1"      },
        {"nor anything else",          u"=Dcounta(A1:F16384,\"Part\",Sheet2!R1:R2)",  "3"      },
        {"the sum of whole columns",   u"=Dsum(A1:F16384,\"Weight\",Sheet2!C1:C2)",   "120"    },
        {"whole columns without data", u"=Dget(Sheet3!A1:F16384,1,Sheet2!A1:A2)",     "!!Val"  },
    });
    cells.put("A9", u"Gus");
    expectResults({
        {"rows missing between others count", u"=Dget(A1:F8,\"Part\",Sheet2!Z1:Z2)",        "!!Num"},
        {"a row that lacks the field counts", u"=Dcounta(A1:F16384,\"Part\",Sheet2!Z1:Z2)", "1"    },
    });
}

TEST_F(Database, aReferenceNamesItsFirstSheet)
{
    expectResults({
        {"several sheets",              u"=Dsum(Sheet1:Sheet3!A1:F6,3,Sheet2!A1:A2)",    "30"},
        {"a database on another sheet", u"=Dcounta(Sheet2!A1:H3,\"kind\",Sheet2!F1:F3)", "1" },
    });
}

TEST_F(Database, textsThatWereReadAreReleased)
{
    const auto liveTexts = [] {
        const std::int32_t count = stringPool->beginScan();
        stringPool->endScan();
        return count;
    };
    cells.fill("H1", {
                         {u"=Dget(A1:F6,\"Part\",Sheet2!N1:N2)", u"=Dsum(A1:F6,\"x\",Sheet2!F1:F3)",
                          u"=Dsum(5,\"Weight\",6)", u"=Dmax(A1:F6,\"Weight\",Sheet2!R1:Y2)"}
    });
    const std::int32_t before = liveTexts();
    for (int pass = 0; pass < 10; ++pass)
        recalculate();
    EXPECT_EQ(liveTexts(), before);
}

// --- Refused memory

int growthsUntilRefusal = 0;

void* refuseOneGrowth(void* block, std::size_t bytes)
{
    return bytes != 0 && --growthsUntilRefusal == 0 ? nullptr : resizeBlock(block, bytes);
}

TEST_F(Database, aFormulaKeepsItsResultWhenMemoryForCriteriaIsShort)
{
    cells.put("H1", u"=Dsum(A1:F6,\"Weight\",Sheet2!F1:F3)");
    EXPECT_EQ(cells.shown("H1"), "70");
    const CellValue stored = workbook->currentSheet->cellCopy(7, 0).value;
    bool refused = true;
    for (int growth = 1; refused; ++growth) {
        ASSERT_LT(growth, 20);
        growthsUntilRefusal = growth;
        blockResizer = refuseOneGrowth;
        evaluateFormulaCell(*stored.formula());
        blockResizer = resizeBlock;
        refused = errorState.code == ErrorMemory;
        clearError();
        EXPECT_EQ(cells.shown("H1"), "70");
    }
}

} // namespace
} // namespace vorn
