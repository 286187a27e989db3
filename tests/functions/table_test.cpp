#include "functions/table.h"

#include "core/value.h"
#include "formula/machine.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

// The numbers are in files, so each is written down here a second time.
const struct {
    int row;
    std::u16string_view name;
    int least, most;
    FunctionCategory category;
} NamedRows[] = {
    {0,   u"Abs",           1, 1,  CategoryMath       },
    {1,   u"Count",         1, 30, CategoryStatistical},
    {2,   u"CountA",        1, 30, CategoryStatistical},
    {3,   u"Sum",           1, 30, CategoryMath       },
    {4,   u"Product",       1, 30, CategoryMath       },
    {5,   u"Average",       1, 30, CategoryStatistical},
    {6,   u"Max",           1, 30, CategoryStatistical},
    {7,   u"Min",           1, 30, CategoryStatistical},
    {8,   u"Sin",           1, 1,  CategoryMath       },
    {9,   u"Cos",           1, 1,  CategoryMath       },
    {10,  u"Tan",           1, 1,  CategoryMath       },
    {11,  u"Atan",          1, 1,  CategoryMath       },
    {12,  u"Asin",          1, 1,  CategoryMath       },
    {13,  u"Acos",          1, 1,  CategoryMath       },
    {14,  u"Pi",            0, 0,  CategoryMath       },
    {15,  u"Ln",            1, 1,  CategoryMath       },
    {16,  u"Log10",         1, 1,  CategoryMath       },
    {17,  u"Sign",          1, 1,  CategoryMath       },
    {18,  u"And",           1, 30, CategoryLogical    },
    {19,  u"Or",            1, 30, CategoryLogical    },
    {20,  u"Not",           1, 1,  CategoryLogical    },
    {21,  u"Ceiling",       2, 2,  CategoryMath       },
    {22,  u"Sqrt",          1, 1,  CategoryMath       },
    {23,  u"Exp",           1, 1,  CategoryMath       },
    {24,  u"Int",           1, 1,  CategoryMath       },
    {25,  u"Round",         2, 2,  CategoryMath       },
    {26,  u"Fv",            3, 5,  CategoryFinancial  },
    {27,  u"Pmt",           3, 5,  CategoryFinancial  },
    {28,  u"IPmt",          4, 6,  CategoryFinancial  },
    {29,  u"Nper",          3, 5,  CategoryFinancial  },
    {30,  u"PPmt",          4, 6,  CategoryFinancial  },
    {31,  u"Rate",          3, 6,  CategoryFinancial  },
    {32,  u"Pv",            3, 5,  CategoryFinancial  },
    {33,  u"Var",           1, 30, CategoryStatistical},
    {34,  u"VarP",          1, 30, CategoryStatistical},
    {35,  u"Stdev",         1, 30, CategoryStatistical},
    {36,  u"StdevP",        1, 30, CategoryStatistical},
    {37,  u"If",            2, 3,  CategoryLogical    },
    {38,  u"Len",           1, 1,  CategoryText       },
    {39,  u"Left",          1, 2,  CategoryText       },
    {40,  u"Right",         1, 2,  CategoryText       },
    {41,  u"Exact",         2, 2,  CategoryText       },
    {42,  u"IsBlank",       1, 1,  CategoryInformation},
    {43,  u"IsError",       1, 1,  CategoryInformation},
    {44,  u"IsLogical",     1, 1,  CategoryInformation},
    {45,  u"IsNumber",      1, 1,  CategoryInformation},
    {46,  u"IsText",        1, 1,  CategoryInformation},
    {47,  u"Date",          3, 3,  CategoryDateTime   },
    {48,  u"Time",          3, 3,  CategoryDateTime   },
    {49,  u"Day",           1, 1,  CategoryDateTime   },
    {50,  u"Month",         1, 1,  CategoryDateTime   },
    {51,  u"Year",          1, 1,  CategoryDateTime   },
    {52,  u"Weekday",       1, 2,  CategoryDateTime   },
    {53,  u"Hour",          1, 1,  CategoryDateTime   },
    {54,  u"Minute",        1, 1,  CategoryDateTime   },
    {55,  u"Second",        1, 1,  CategoryDateTime   },
    {56,  u"Sinh",          1, 1,  CategoryMath       },
    {57,  u"Cosh",          1, 1,  CategoryMath       },
    {58,  u"Tanh",          1, 1,  CategoryMath       },
    {59,  u"Radians",       1, 1,  CategoryMath       },
    {60,  u"Degrees",       1, 1,  CategoryMath       },
    {61,  u"Log",           1, 2,  CategoryMath       },
    {62,  u"Floor",         2, 2,  CategoryMath       },
    {63,  u"Trunc",         1, 2,  CategoryMath       },
    {64,  u"Asinh",         1, 1,  CategoryMath       },
    {65,  u"Acosh",         1, 1,  CategoryMath       },
    {66,  u"Atanh",         1, 1,  CategoryMath       },
    {67,  u"Fact",          1, 1,  CategoryMath       },
    {68,  u"Permut",        2, 2,  CategoryMath       },
    {69,  u"Combin",        2, 2,  CategoryMath       },
    {70,  u"Lower",         1, 1,  CategoryText       },
    {71,  u"Upper",         1, 1,  CategoryText       },
    {72,  u"Replace",       4, 4,  CategoryText       },
    {73,  u"Code",          1, 1,  CategoryText       },
    {74,  u"Char",          1, 1,  CategoryText       },
    {75,  u"IsErr",         1, 1,  CategoryInformation},
    {76,  u"IsNA",          1, 1,  CategoryInformation},
    {77,  u"IsNonText",     1, 1,  CategoryInformation},
    {78,  u"IsRef",         1, 1,  CategoryInformation},
    {79,  u"NA",            0, 0,  CategoryInformation},
    {80,  u"Value",         1, 1,  CategoryText       },
    {81,  u"Mid",           3, 3,  CategoryText       },
    {82,  u"Rand",          0, 0,  CategoryMath       },
    {83,  u"Atan2",         2, 2,  CategoryMath       },
    {84,  u"Npv",           2, 30, CategoryFinancial  },
    {85,  u"RoundUp",       2, 2,  CategoryMath       },
    {86,  u"RoundDown",     2, 2,  CategoryMath       },
    {87,  u"Even",          1, 1,  CategoryMath       },
    {88,  u"Odd",           1, 1,  CategoryMath       },
    {89,  u"Mod",           2, 2,  CategoryMath       },
    {90,  u"Find",          2, 3,  CategoryText       },
    {91,  u"Substitute",    3, 4,  CategoryText       },
    {92,  u"Rept",          2, 2,  CategoryText       },
    {93,  u"Proper",        1, 1,  CategoryText       },
    {94,  u"Syd",           4, 4,  CategoryFinancial  },
    {95,  u"Sln",           3, 3,  CategoryFinancial  },
    {96,  u"Ddb",           4, 5,  CategoryFinancial  },
    {97,  u"Irr",           1, 2,  CategoryFinancial  },
    {98,  u"Now",           0, 0,  CategoryDateTime   },
    {99,  u"Today",         0, 0,  CategoryDateTime   },
    {100, u"VLookup",       3, 4,  CategoryInformation},
    {101, u"HLookup",       3, 4,  CategoryInformation},
    {102, u"Power",         2, 2,  CategoryMath       },
    {103, u"Countblank",    1, 1,  CategoryStatistical},
    {104, u"Columns",       1, 1,  CategoryInformation},
    {105, u"Rows",          1, 1,  CategoryInformation},
    {106, u"Match",         2, 3,  CategoryInformation},
    {107, u"N",             1, 1,  CategoryInformation},
    {108, u"T",             1, 1,  CategoryText       },
    {109, u"Datevalue",     1, 1,  CategoryDateTime   },
    {110, u"Timevalue",     1, 1,  CategoryDateTime   },
    {111, u"Dsum",          3, 3,  CategoryDatabase   },
    {112, u"Dcount",        3, 3,  CategoryDatabase   },
    {113, u"Daverage",      3, 3,  CategoryDatabase   },
    {114, u"Dmin",          3, 3,  CategoryDatabase   },
    {115, u"Dmax",          3, 3,  CategoryDatabase   },
    {116, u"Dcounta",       3, 3,  CategoryDatabase   },
    {117, u"Dproduct",      3, 3,  CategoryDatabase   },
    {118, u"Dstdev",        3, 3,  CategoryDatabase   },
    {119, u"Dvar",          3, 3,  CategoryDatabase   },
    {120, u"Dstdevp",       3, 3,  CategoryDatabase   },
    {121, u"Dvarp",         3, 3,  CategoryDatabase   },
    {122, u"Dget",          3, 3,  CategoryDatabase   },
    {123, u"Sumif",         2, 3,  CategoryMath       },
    {124, u"Countif",       2, 2,  CategoryStatistical},
    {125, u"Index",         3, 4,  CategoryInformation},
    {126, u"Row",           0, 1,  CategoryInformation},
    {127, u"Column",        0, 1,  CategoryInformation},
    {157, u"Chart",         0, 3,  CategoryTask       },
    {158, u"Zoom",          0, 1,  CategoryTask       },
    {159, u"Sel",           0, 1,  CategoryTask       },
    {160, u"MsgBox",        1, 1,  CategoryTask       },
    {161, u"YesNoBox",      1, 1,  CategoryTask       },
    {162, u"Sort",          1, 9,  CategoryTask       },
    {163, u"Set",           2, 2,  CategoryTask       },
    {164, u"CellRef",       2, 3,  CategoryTask       },
    {165, u"RangeRef",      4, 5,  CategoryTask       },
    {166, u"ActiveCell",    0, 0,  CategoryTask       },
    {167, u"SheetsCount",   0, 0,  CategoryTask       },
    {168, u"ActiveSheet",   0, 1,  CategoryTask       },
    {169, u"FreezeTitles",  0, 1,  CategoryTask       },
    {170, u"FindDialog",    0, 1,  CategoryTask       },
    {171, u"LastRow",       0, 1,  CategoryTask       },
    {172, u"LastCol",       0, 1,  CategoryTask       },
    {173, u"RowHide",       0, 1,  CategoryTask       },
    {174, u"ColHide",       0, 1,  CategoryTask       },
    {175, u"RowHeight",     0, 1,  CategoryTask       },
    {176, u"ColWidth",      0, 1,  CategoryTask       },
    {177, u"Modified",      0, 1,  CategoryTask       },
    {178, u"InsertCells",   1, 1,  CategoryTask       },
    {179, u"DeleteCells",   1, 1,  CategoryTask       },
    {180, u"Clear",         0, 0,  CategoryTask       },
    {181, u"InputBox",      1, 1,  CategoryTask       },
    {182, u"ListBox",       2, 2,  CategoryTask       },
    {183, u"Return",        0, 0,  CategoryTask       },
    {184, u"FullScreen",    0, 1,  CategoryTask       },
    {185, u"Filter",        1, 1,  CategoryTask       },
    {186, u"FormatPainter", 1, 1,  CategoryTask       },
    {187, u"SheetName",     1, 1,  CategoryTask       },
    {188, u"TopLeftCell",   0, 1,  CategoryTask       },
};

TEST(FunctionTable, keepsEachFunctionAtItsNumber)
{
    ASSERT_EQ(std::size(NamedRows), 160U);
    for (const auto& expected : NamedRows) {
        const FunctionRow& row = FunctionTable[expected.row];
        EXPECT_EQ(row.name, expected.name) << expected.row;
        EXPECT_EQ(row.minArguments, expected.least) << expected.row;
        EXPECT_EQ(row.maxArguments, expected.most) << expected.row;
        EXPECT_EQ(row.category, expected.category) << expected.row;
        EXPECT_FALSE(row.help.empty()) << expected.row;
    }
}

TEST(FunctionTable, givesTheStepsOfUndoNoNames)
{
    for (int row = FirstActionRow; row < FirstTaskRow; ++row) {
        EXPECT_EQ(FunctionTable[row].name, u"") << row;
        EXPECT_EQ(FunctionTable[row].usage, u"") << row;
        EXPECT_EQ(FunctionTable[row].help, u"") << row;
    }
}

TEST(FunctionTable, hasAHandlerInEachRow)
{
    for (const FunctionRow& row : FunctionTable)
        EXPECT_NE(row.handler, nullptr);
}

TEST(FunctionTable, namesTheRowsThatOthersKnow)
{
    EXPECT_EQ(FunctionTable[FunctionRowIf].name, u"If");
    EXPECT_EQ(FunctionTable[FunctionRowRand].name, u"Rand");
    EXPECT_EQ(FunctionTable[FunctionRowNow].name, u"Now");
    EXPECT_EQ(FunctionTable[FunctionRowToday].name, u"Today");
}

TEST(FunctionTable, keepsItsUsagesAsTheyStand)
{
    const struct {
        int row;
        std::u16string_view usage;
    } cases[] = {
        {0,   u"number"                                                       },
        {3,   u"number, number, ..."                                          },
        {14,  u""                                                             },
        {19,  u"logical1, logical2, ..."                                      },
        {25,  u"number"                                                       },
        {37,  u"condition, value1, value2"                                    },
        {68,  u"number, numberChoosen"                                        },
        {84,  u"rate, value1, value2,..."                                     },
        {102, u"number,power"                                                 },
        {162, u"1By[, asc, 2By, asc, 3By, asc, headerRow, caseSens, sortRows]"},
        {164, u"col, row [, sheetIndex]"                                      },
        {188, u"reference"                                                    },
    };
    for (const auto& c : cases)
        EXPECT_EQ(FunctionTable[c.row].usage, c.usage) << c.row;
}

TEST(FunctionTable, keepsItsHelpAsItStands)
{
    const struct {
        int row;
        std::u16string_view help;
    } cases[] = {
        {0,   u"Returns the absolute value of a number. "                                         },
        {3,   u"Return the sum of all the numbers in the list of arguments."                      },
        {14,  u"Returns the value of  Pi (3.14)."                                                 },
        {19,  u"Returns TRUE if any argument is TRUE, otherwise return FALSE."                    },
        {30,  u"Returns the payment on the principa for a given period of an investment."         },
        {37,  u"Returns value1 if the condition is TRUE, otherwise returns value2."               },
        {46,  u"Returns TRUE if the value is text ."                                              },
        {61,  u"Returns the logarithm of a number to the base you specify ."                      },
        {94,  u"Returns the sum-of-years' digits depreciation of an asset for a specified period."},
        {122, u"Extracts from a database a single record that matches the conditions you specify."},
        {127, u"Returns the column number of a cell reference."                                   },
        {167, u"Returns a  number of sheets in workbook."                                         },
        {175, u"Returns row height of  the first row of current selection and sets height of "
              u"selected rows if height is specified."                               },
        {188, u"Returns the top left cell and sets it to reference if specified."                 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(FunctionTable[c.row].help, c.help) << c.row;
}

TEST(FunctionTable, findsAFunctionInAnyCase)
{
    for (const auto& expected : NamedRows) {
        std::u16string name(expected.name);
        EXPECT_EQ(findFunction(name), expected.row);
        for (char16_t& unit : name)
            unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
        EXPECT_EQ(findFunction(name), expected.row);
        for (char16_t& unit : name)
            unit = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
        EXPECT_EQ(findFunction(name), expected.row);
    }
}

TEST(FunctionTable, findsNothingElse)
{
    const std::u16string_view names[] = {
        u"",
        u"Su",
        u"Summ",
        u"Sum ",
        u" Sum",
        u"Log11",
        u"Lo",
        u"_Sum",
        u"FormatPainters",
        u"A",
        u"Trim",
        u"Text",
        u"Search",
        u"Concatenate",
        u"S\u00fcm",
        u"\u0053\u0075\u006d\u0301",
        u"\u017fum",
    };
    for (std::u16string_view name : names)
        EXPECT_EQ(findFunction(name), -1);
    EXPECT_EQ(findFunction(std::u16string(100000, u'x')), -1);
    using namespace std::string_view_literals;
    EXPECT_EQ(findFunction(u"Sum\0"sv), -1);
}

TEST(FunctionTable, titlesItsCategories)
{
    const std::u16string_view titles[] = {
        u"All",
        u"Most Recently Used",
        u"Math & Trig",
        u"Statistical",
        u"Financial",
        u"Date & Time",
        u"Logical",
        u"Text",
        u"Information & Lookup",
        u"Database",
        u"Task",
    };
    for (int category = 0; category < CategoryCount; ++category)
        EXPECT_EQ(categoryTitle(category), titles[category]) << category;
    EXPECT_EQ(categoryTitle(-1), u"");
    EXPECT_EQ(categoryTitle(CategoryCount), u"");
}

TEST(FunctionTable, givesAnErrorForARowWithoutABody)
{
    const TestDocument document;
    resetMachine();
    const CellValue* base = machine.stackTop;
    pushNumber(1);
    pushNewText(u"two");
    machine.argumentCount = 2;
    FunctionTable[FirstTaskRow].handler();
    EXPECT_EQ(machine.stackTop, base - 1);
    EXPECT_EQ(topValue().tag, TagError);
    EXPECT_EQ(topValue().error(), CellErrorName);
    popMany(1);
}

} // namespace
} // namespace vorn
