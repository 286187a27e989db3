#include "formula/printer.h"

#include "core/error.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "numfmt/locale.h"
#include "support/codetext.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

std::u16string print(std::string_view code, CellPosition base = {})
{
    return printCode(codeBytes(code).data(), base);
}

std::string repeated(std::string_view part, int times)
{
    std::string text;
    for (int i = 0; i < times; ++i)
        text += part;
    return text;
}

void addName(std::u16string_view name)
{
    DefinedName record;
    record.name = duplicateString(name);
    workbook->names.append(record);
}

struct PrintRow {
    const char* behaviour;
    const char* code;
    std::u16string_view text;
};

template <std::size_t count>
void expectTexts(const PrintRow (&rows)[count])
{
    for (const PrintRow& row : rows) {
        EXPECT_EQ(print(row.code), row.text) << row.behaviour;
        EXPECT_EQ(errorState.code, ErrorNone) << row.behaviour;
        clearError();
    }
}

// Operands that the rows below are made of.
#define ONE "01:000000000000f03f "
#define TWO "01:0000000000000040 "
#define CELL_A1 "0c:000000c0 "

TEST(FormulaPrinter, writesEachOpcode)
{
    const TestDocument document;
    addName(u"Rent");
    ASSERT_EQ(stringPool->addText(u"say \"hi\""), 0);
    expectTexts({
        {"a number",                       "01:000000000000f83f 00",         u"=1.5"               },
        {"a call",                         ONE "02:000001 00",               u"=Abs(1)"            },
        {"a whole value of undo programs", "03:000000000000000000000000 00", u"=!!Err"             },
        {"a small integer",                "04:ffff 00",                     u"=65535"             },
        {"addition",                       ONE TWO "05 00",                  u"=1+2"               },
        {"subtraction",                    ONE TWO "06 00",                  u"=1-2"               },
        {"multiplication",                 ONE TWO "07 00",                  u"=1*2"               },
        {"division",                       ONE TWO "08 00",                  u"=1/2"               },
        {"unary plus",                     ONE "09 00",                      u"=+1"                },
        {"negation",                       ONE "0a 00",                      u"=-1"                },
        {"a text with its quotes doubled", "0b:00000000 00",                 u"=\"say \"\"hi\"\"\""},
        {"the empty text",                 "0b:ffffffff 00",                 u"=\"\""              },
        {"a cell",                         CELL_A1 "00",                     u"=A1"                },
        {"an integer",                     "0d:ffffffff 00",                 u"=4294967295"        },
        {"a range",                        "0e:000000c0020001c0 00",         u"=A1:B3"             },
        {"a cell of a sheet",              "0f:08000101000000c000000000 00", u"=Sheet2!A1"         },
        {"a range of a sheet",             "10:09000101000000c0020001c0 00", u"=Sheet2!A1:B3"      },
        {"equal",                          ONE TWO "11 00",                  u"=1=2"               },
        {"less",                           ONE TWO "12 00",                  u"=1<2"               },
        {"greater",                        ONE TWO "13 00",                  u"=1>2"               },
        {"less or equal",                  ONE TWO "14 00",                  u"=1<=2"              },
        {"greater or equal",               ONE TWO "15 00",                  u"=1>=2"              },
        {"not equal",                      ONE TWO "16 00",                  u"=1<>2"              },
        {"joining",                        ONE TWO "17 00",                  u"=1&2"               },
        {"power",                          ONE TWO "18 00",                  u"=1^2"               },
        {"percent",                        ONE "19 00",                      u"=1%"                },
        {"parentheses",                    ONE "1a 00",                      u"=(1)"               },
        {"false",                          "1c:00 00",                       u"=false"             },
        {"true",                           "1c:01 00",                       u"=true"              },
        {"a dead cell of a sheet",         "1d:08000101000000c000000000 00", u"=!!Ref"             },
        {"a dead range of a sheet",        "1e:09000101000000c0020001c0 00", u"=!!Ref"             },
        {"a dead cell",                    "1f:000000c0 00",                 u"=!!Ref"             },
        {"a dead range, once",             "20:000000c0020001c0 00",         u"=!!Ref"             },
        {"a time",                         "21:000000000000e03f 00",         u"=12:00:00"          },
        {"a jump where none belongs",      "22:0000 00",                     u"=!!Err"             },
        {"another",                        "23:0000 00",                     u"=!!Err"             },
        {"a defined name",                 "24:0000 00",                     u"=Rent"              },
        {"a name that is not there",       "24:0100 00",                     u"=!!Name"            },
        {"the end of a task's call",       "25 00",                          u"=!!Err"             },
        {"a variable of tasks",            "26:0000 00",                     u"=!!Err"             },
        {"another",                        "27:0000 00",                     u"=!!Err"             },
        {"nothing at all",                 "00",                             u"=!!Err"             },
    });
}

TEST(FormulaPrinter, writesEachError)
{
    const TestDocument document;
    expectTexts({
        {"no intersection",          "1b:0000 00", u"=!!Null"},
        {"division by zero",         "1b:0700 00", u"=!!Div0"},
        {"a wrong value",            "1b:0f00 00", u"=!!Val" },
        {"a dead reference",         "1b:1700 00", u"=!!Ref" },
        {"an unknown name",          "1b:1d00 00", u"=!!Name"},
        {"a wrong number",           "1b:2400 00", u"=!!Num" },
        {"not available",            "1b:2a00 00", u"=!!NA"  },
        {"only the low byte counts", "1b:2aff 00", u"=!!NA"  },
        {"a number without a text",  "1b:0100 00", u"=Err1"  },
    });
}

TEST(FormulaPrinter, writesReferencesFromWhereTheFormulaStands)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        CellPosition base;
        const char* code;
        std::u16string_view text;
    } cases[] = {
        {"a relative cell",                       {4, 2, 0},     "0c:000000c0 00",         u"=C5"           },
        {"one before it",                         {4, 2, 0},     "0c:ffffffc0 00",         u"=B4"           },
        {"an absolute cell",                      {4, 2, 0},     "0c:04000200 00",         u"=$C$5"         },
        {"a relative column",                     {4, 2, 0},     "0c:04000040 00",         u"=C$5"          },
        {"a relative row",                        {4, 2, 0},     "0c:00000280 00",         u"=$C5"          },
        {"a row above the first is the last",     {0, 0, 0},     "0c:ffff00c0 00",         u"=A16384"       },
        {"a column before the first is the last", {0, 0, 0},     "0c:0000ffc0 00",         u"=IV1"          },
        {"a row below the last is the first",     {16383, 0, 0}, "0c:010000c0 00",         u"=A1"           },
        {"a column behind the last is the first", {0, 255, 0},   "0c:000001c0 00",         u"=A1"           },
        {"the last cell",                         {0, 0, 0},     "0c:ff3fff00 00",         u"=$IV$16384"    },
        {"a column of two letters",               {0, 0, 0},     "0c:00001a00 00",         u"=$AA$1"        },
        {"the last of one letter",                {0, 0, 0},     "0c:00001900 00",         u"=$Z$1"         },
        {"corners as they were typed",            {0, 0, 0},     "0e:010001c0000000c0 00", u"=B2:A1"        },
        {"a range of one cell",                   {0, 0, 0},     "0e:000000c0000000c0 00", u"=A1:A1"        },
        {"an end beyond the last row",            {0, 0, 0},     "0e:00000000ffff0000 00", u"=$A$1:$A$16384"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(print(c.code, c.base), c.text) << c.behaviour;
}

TEST(FormulaPrinter, quotesTheNamesOfSheets)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        std::u16string_view first, last;
        std::u16string_view text;
    } cases[] = {
        {"plain names",                          u"One",    u"Two",    u"=One:Two!A1"     },
        {"an underscore and digits",             u"_1",     u"a_2",    u"=_1:a_2!A1"      },
        {"a blank in the first",                 u"My One", u"Two",    u"='My One:Two'!A1"},
        {"a blank in the second",                u"One",    u"My Two", u"='One:My Two'!A1"},
        {"a digit in front",                     u"1st",    u"Two",    u"='1st:Two'!A1"   },
        {"a letter above 127",                   u"\u00c4", u"Two",    u"='\u00c4:Two'!A1"},
        {"a dot",                                u"v1.0",   u"Two",    u"='v1.0:Two'!A1"  },
        {"what looks like a cell is not quoted", u"Q1",     u"Sum",    u"=Q1:Sum!A1"      },
    };
    for (const auto& c : cases) {
        workbook->sheetAt(0)->setName(c.first);
        workbook->sheetAt(2)->setName(c.last);
        EXPECT_EQ(print("0f:08000002000000c000000000 00"), c.text) << c.behaviour;
    }
}

TEST(FormulaPrinter, writesSheetsAsFarAsThereAreAny)
{
    const TestDocument document;
    expectTexts({
        {"the same sheet twice is one", "0f:08000202000000c000000000 00", u"=Sheet3!A1"},
        {"no sheet was named",          "0f:0800fff5000000c000000000 00", u"=A1"       },
        {"nor for a range",             "10:0900fff5000000c0020001c0 00", u"=A1:B3"    },
        {"a sheet that is gone",        "0f:08000303000000c000000000 00", u"=!!Ref"    },
        {"a last sheet that is gone",   "10:09000003000000c0020001c0 00", u"=!!Ref"    },
    });
}

TEST(FormulaPrinter, writesCalls)
{
    const TestDocument document;
    expectTexts({
        {"without arguments",                 "02:0e0000 00",                         u"=Pi()"              },
        {"with one",                          ONE "02:000001 00",                     u"=Abs(1)"            },
        {"with some",                         ONE TWO CELL_A1 "02:030003 00",         u"=Sum(1,2,A1)"       },
        {"with calls inside",                 ONE "02:000001 02:0e0000 02:030002 00", u"=Sum(Abs(1),Pi())"  },
        {"with a function of tasks",          ONE "02:9e0001 00",                     u"=Zoom(1)"           },
        {"with a nameless row",               ONE "02:800001 00",                     u"=(1)"               },
        {"with a row that is not there",      ONE "02:bd0001 00",                     u"=(1)"               },
        {"with arguments that are not there", ONE "02:030003 00",                     u"=Sum(!!Err,!!Err,1)"},
    });
}

TEST(FormulaPrinter, hidesTheJumpsOfIf)
{
    const TestDocument document;
    expectTexts({
        {"two arguments",                   CELL_A1 "23:0c00 " ONE "22:0300 02:25000c 00",                u"=If(A1,1)"          },
        {"three arguments",                 CELL_A1 "23:0c00 " ONE "22:0f00 " TWO "22:0300 02:25000d 00",
         u"=If(A1,1,2)"                                                                                                         },
        {"a call without arguments inside",
         "02:0e0000 23:0700 02:0e0000 22:0a00 02:0e0000 22:0300 02:25000d 00",                            u"=If(Pi(),Pi(),Pi())"},
        {"one inside of another",
         CELL_A1 "23:1b00 " CELL_A1 "23:0c00 " ONE "22:0300 02:25000c 22:0f00 " TWO
                 "22:0300 02:25000d 00",                                                                  u"=If(A1,If(A1,1),2)" },
        {"a plain call of If",              CELL_A1 ONE TWO "02:250003 00",                               u"=If(A1,1,2)"        },
        {"a plain one of two",              CELL_A1 ONE "02:250002 00",                                   u"=If(A1,1)"          },
    });
}

TEST(FormulaPrinter, addsNoParentheses)
{
    const TestDocument document;
    expectTexts({
        {"a sum of products",                         ONE TWO "07 " ONE TWO "07 05 00",                  u"=1*2+1*2"      },
        {"operators of one level from the left",      ONE TWO "06 " ONE "05 00",                         u"=1-2+1"        },
        {"all levels",                                ONE TWO ONE TWO ONE TWO "0a 19 18 07 05 17 11 00", u"=1=2&1+2*1^-2%"},
        {"a product of a sum, which was never typed", ONE ONE TWO "05 07 00",                            u"=2*!!Err"      },
        {"the end of the operands",                   ONE "05 00",                                       u"=!!Err+1"      },
    });
}

TEST(FormulaPrinter, takesTheSeparatorsOfTheMoment)
{
    const TestDocument document("de_DE");
    EXPECT_EQ(print("01:000000000000f83f " TWO "02:030002 00"), u"=Sum(1,5;2)");
    localeInfo.list = u'|';
    EXPECT_EQ(print("01:000000000000f83f " TWO "02:030002 00"), u"=Sum(1,5|2)");
}

TEST(FormulaPrinter, writesAFormulaCellFromItsPlace)
{
    const TestDocument document;
    ByteCodeWriter writer;
    compileText(u"=B2+$A$1", writer, {1, 1, 0}, CompileFormula);
    FormulaCell* cell = newFormulaCell({4, 3, 0}, writer.finishInPool());
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(printFormulaCell(*cell), u"=D5+$A$1");
    deleteFormulaCell(cell);
}

TEST(FormulaPrinter, refusesTextsPastTheirLimit)
{
    const TestDocument document;
    const std::string sum = repeated(ONE "05 ", 498);
    const std::string longSum = repeated(ONE "05 ", 4000);
    const std::string percents = repeated("19 ", 997);
    const std::string manyPercents = repeated("19 ", 100000);
    const std::string wideCalls = repeated("02:0300ff ", 1000);
    const struct {
        const char* behaviour;
        std::string code;
        std::size_t length; // 0: refused
    } cases[] = {
        {"the longest",                  ONE "19 " + sum + "00",    999},
        {"one longer",                   ONE "19 19 " + sum + "00", 0  },
        {"a longer word in front",       "1c:01 " + sum + "00",     0  },
        {"a formula of 40,000 bytes",    ONE + longSum + "00",      0  },
        {"only percent signs",           ONE + percents + "00",     999},
        {"one more",                     ONE + percents + "19 00",  0  },
        {"very many",                    ONE + manyPercents + "00", 0  },
        {"calls of very many arguments", ONE + wideCalls + "00",    0  },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(print(c.code).size(), c.length) << c.behaviour;
        EXPECT_EQ(errorState.code, c.length == 0 ? ErrorTooComplex : ErrorNone) << c.behaviour;
        clearError();
    }
}

TEST(FormulaPrinter, refusesLongTexts)
{
    const TestDocument document;
    ASSERT_EQ(stringPool->addText(std::u16string(996, u'x')), 0);
    ASSERT_EQ(stringPool->addText(std::u16string(997, u'x')), 1);
    ASSERT_EQ(stringPool->addText(std::u16string(498, u'"')), 2);
    ASSERT_EQ(stringPool->addText(std::u16string(499, u'"')), 3);
    ASSERT_EQ(stringPool->addText(std::u16string(100000, u'x')), 4);
    const std::size_t lengths[] = {999, 0, 999, 0, 0};
    for (int index = 0; index < 5; ++index) {
        const std::string code = "0b:0" + std::to_string(index) + "000000 00";
        EXPECT_EQ(print(code).size(), lengths[index]) << index;
        EXPECT_EQ(errorStands(), lengths[index] == 0) << index;
        clearError();
    }
}

TEST(FormulaPrinter, nestsAsDeepAsWhatCanBeTyped)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        const char* instruction;
    } cases[] = {
        {"parentheses", "1a "       },
        {"signs",       "0a "       },
        {"calls",       "02:6b0001 "},
    };
    for (const auto& c : cases) {
        const std::string deepest = ONE + repeated(c.instruction, CompileDepthMax);
        EXPECT_FALSE(print(ONE + repeated(c.instruction, 249) + "00").empty()) << c.behaviour;
        EXPECT_FALSE(errorStands()) << c.behaviour;
        EXPECT_EQ(print(deepest + c.instruction + "00"), u"") << c.behaviour;
        EXPECT_EQ(errorState.code, ErrorTooComplex) << c.behaviour;
        clearError();
        EXPECT_EQ(print(ONE + repeated(c.instruction, 100000) + "00"), u"") << c.behaviour;
        clearError();
    }
    EXPECT_EQ(print(ONE + repeated("0a ", CompileDepthMax) + "00").size(), 402U);
    EXPECT_EQ(print(ONE + repeated("1a ", CompileDepthMax) + "00").size(), 802U);
}

TEST(FormulaPrinter, printsWhileAnErrorStands)
{
    const TestDocument document;
    raiseError(ErrorFileRead);
    EXPECT_EQ(print(ONE "00"), u"=1");
    EXPECT_EQ(errorState.code, ErrorFileRead);
    clearError();
}

void* refuse(void* block, std::size_t bytes)
{
    return bytes != 0 ? nullptr : resizeBlock(block, bytes);
}

TEST(FormulaPrinter, tellsWhenMemoryIsShort)
{
    const TestDocument document;
    const std::vector<std::uint8_t> code = codeBytes(ONE + repeated("19 ", 500) + "00");
    blockResizer = refuse;
    const std::u16string text = printCode(code.data(), {});
    blockResizer = resizeBlock;
    EXPECT_EQ(text, u"");
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
}

} // namespace
} // namespace vorn
