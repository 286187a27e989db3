#include "formula/compiler.h"

#include "core/error.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "functions/table.h"
#include "numfmt/locale.h"
#include "support/codetext.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

// Numbers and cells that the rows below are made of.
#define ONE "01:000000000000f03f "
#define TWO "01:0000000000000040 "
#define THREE "01:0000000000000840 "
#define CELL_A1 "0c:000000c0 "

struct CodeRow {
    const char* behaviour;
    std::u16string_view text;
    const char* code;
};

template <std::size_t count>
void expectCode(const CodeRow (&rows)[count])
{
    for (const CodeRow& row : rows) {
        const Compiled compiled = compileFormula(row.text);
        EXPECT_EQ(compiled.error, ErrorNone) << row.behaviour;
        EXPECT_EQ(compiled.offset, -1) << row.behaviour;
        EXPECT_EQ(compiled.code, row.code) << row.behaviour;
    }
}

struct FailureRow {
    const char* behaviour;
    std::u16string_view text;
    int error;
    int offset;
};

template <std::size_t count>
void expectFailures(const FailureRow (&rows)[count])
{
    for (const FailureRow& row : rows) {
        const Compiled compiled = compileFormula(row.text);
        EXPECT_EQ(compiled.error, row.error) << row.behaviour;
        EXPECT_EQ(compiled.offset, row.offset) << row.behaviour;
    }
}

std::u16string repeated(std::u16string_view part, int times)
{
    std::u16string text;
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

TEST(FormulaCompiler, emitsEachKindOfOperand)
{
    const TestDocument document;
    addName(u"Other");
    addName(u"Rent");
    expectCode({
        {"a number",                 u"=1",                  ONE "00"                        },
        {"without its equals sign",  u"1",                   ONE "00"                        },
        {"a logical",                u"=true",               "1c:01 00"                      },
        {"the other",                u"=FALSE",              "1c:00 00"                      },
        {"a date",                   u"=1/1/2000",           "21:00000000c0d5e140 00"        },
        {"a time",                   u"=12:00",              "21:000000000000e03f 00"        },
        {"not available",            u"=!!NA",               "1b:2a00 00"                    },
        {"a dead reference",         u"=!!Ref",              "1b:1700 00"                    },
        {"a cell",                   u"=A1",                 CELL_A1 "00"                    },
        {"an absolute cell",         u"=$B$3",               "0c:02000100 00"                },
        {"a range",                  u"=A1:$B$3",            "0e:000000c002000100 00"        },
        {"a cell of a sheet",        u"=Sheet2!A1",          "0f:08000101000000c000000000 00"},
        {"a cell of some sheets",    u"=Sheet3:Sheet1!$B$3", "0f:080000020200010000000000 00"},
        {"a range of a sheet",       u"=Sheet2!A1:B3",       "10:09000101000000c0020001c0 00"},
        {"a defined name",           u"=rent",               "24:0100 00"                    },
        {"a call",                   u"=Pi()",               "02:0e0000 00"                  },
        {"a call of some arguments", u"=Sum(1,2,A1)",        ONE TWO CELL_A1 "02:030003 00"  },
    });
}

TEST(FormulaCompiler, entersTextsInThePool)
{
    const TestDocument document;
    const std::int32_t before = stringPool->addText(u"before");
    const Compiled compiled = compileFormula(u"=\"a\"\"b\"&\"\"");
    const std::int32_t first = before + 1;
    EXPECT_EQ(compiled.code, "0b:01000000 0b:02000000 17 00");
    EXPECT_EQ(std::u16string_view(stringPool->text(first)), u"a\"b");
    EXPECT_EQ(stringPool->refCount(first), 1);
    EXPECT_EQ(std::u16string_view(stringPool->text(first + 1)), u"");
    EXPECT_EQ(stringPool->refCount(first + 1), 1);
}

TEST(FormulaCompiler, leavesTheTextsOfAFailureInThePool)
{
    const TestDocument document;
    const std::int32_t before = stringPool->addText(u"before");
    EXPECT_EQ(compileFormula(u"=\"lost\"&").error, ErrorEndOfFormula);
    EXPECT_TRUE(stringPool->isLive(before + 1));
}

TEST(FormulaCompiler, emitsEachOperatorBehindItsOperands)
{
    const TestDocument document;
    expectCode({
        {"addition",         u"=1+2",  ONE TWO "05 00"},
        {"subtraction",      u"=1-2",  ONE TWO "06 00"},
        {"multiplication",   u"=1*2",  ONE TWO "07 00"},
        {"division",         u"=1/2",  ONE TWO "08 00"},
        {"unary plus",       u"=+1",   ONE "09 00"    },
        {"negation",         u"=-1",   ONE "0a 00"    },
        {"equal",            u"=1=2",  ONE TWO "11 00"},
        {"less",             u"=1<2",  ONE TWO "12 00"},
        {"greater",          u"=1>2",  ONE TWO "13 00"},
        {"less or equal",    u"=1<=2", ONE TWO "14 00"},
        {"greater or equal", u"=1>=2", ONE TWO "15 00"},
        {"not equal",        u"=1<>2", ONE TWO "16 00"},
        {"joining",          u"=1&2",  ONE TWO "17 00"},
        {"power",            u"=1^2",  ONE TWO "18 00"},
        {"percent",          u"=1%",   ONE "19 00"    },
        {"parentheses",      u"=(1)",  ONE "1a 00"    },
    });
}

TEST(FormulaCompiler, bindsByLevelAndFromTheLeft)
{
    const TestDocument document;
    expectCode({
        {"comparisons chain",                          u"=1=2=3",    ONE TWO "11 " THREE "11 00"   },
        {"and mix",                                    u"=1<2>=3",   ONE TWO "12 " THREE "15 00"   },
        {"joining binds tighter than comparing",       u"=1=2&3",    ONE TWO THREE "17 11 00"      },
        {"on either side",                             u"=1&2=3",    ONE TWO "17 " THREE "11 00"   },
        {"joining from the left",                      u"=1&2&3",    ONE TWO "17 " THREE "17 00"   },
        {"addition binds tighter than joining",        u"=1&2+3",    ONE TWO THREE "05 17 00"      },
        {"subtraction from the left",                  u"=1-2+3",    ONE TWO "06 " THREE "05 00"   },
        {"multiplication binds tighter than addition", u"=1+2*3",    ONE TWO THREE "07 05 00"      },
        {"division from the left",                     u"=1/2*3",    ONE TWO "08 " THREE "07 00"   },
        {"power binds tighter than multiplication",    u"=1*2^3",    ONE TWO THREE "18 07 00"      },
        {"power from the left",                        u"=2^3^2",    TWO THREE "18 " TWO "18 00"   },
        {"percent binds tighter than power",           u"=2^3%",     TWO THREE "19 18 00"          },
        {"on either side",                             u"=2%^3",     TWO "19 " THREE "18 00"       },
        {"percents add up",                            u"=1%%",      ONE "19 19 00"                },
        {"a sign binds tighter than power",            u"=-2^2",     TWO "0a " TWO "18 00"         },
        {"on either side",                             u"=2^-1",     TWO ONE "0a 18 00"            },
        {"a sign binds tighter than percent",          u"=-1%",      ONE "0a 19 00"                },
        {"signs add up from the right",                u"=-+-1",     ONE "0a 09 0a 00"             },
        {"a sign behind an operator",                  u"=1--2",     ONE TWO "0a 06 00"            },
        {"parentheses come first",                     u"=(1+2)*3",  ONE TWO "05 1a " THREE "07 00"},
        {"and stay where nothing needs them",          u"=((1))",    ONE "1a 1a 00"                },
        {"also around an argument",                    u"=Abs((1))", ONE "1a 02:000001 00"         },
        {"an argument is a whole expression",          u"=Abs(1=2)", ONE TWO "11 02:000001 00"     },
    });
}

TEST(FormulaCompiler, givesIfItsJumps)
{
    const TestDocument document;
    expectCode({
        {"three arguments",       u"=If(A1,1,2)",
         CELL_A1 "23:0c00 " ONE "22:0f00 " TWO "22:0300 02:25000d 00"                                 },
        {"two arguments",         u"=If(A1,1)",          CELL_A1 "23:0c00 " ONE "22:0300 02:25000c 00"},
        {"a call as value",       u"=If(A1,Pi(),2)",
         CELL_A1 "23:0700 02:0e0000 22:0f00 " TWO "22:0300 02:25000d 00"                              },
        {"an If as condition",    u"=If(If(A1,1),2)",
         CELL_A1 "23:0c00 " ONE "22:0300 02:25000c 23:0c00 " TWO "22:0300 02:25000c 00"               },
        {"an If as value",        u"=If(A1,If(A1,1),2)",
         CELL_A1 "23:1b00 " CELL_A1 "23:0c00 " ONE "22:0300 02:25000c 22:0f00 " TWO
                 "22:0300 02:25000d 00"                                                               },
        {"an If inside of a sum", u"=1+If(A1,1)*2",
         ONE CELL_A1 "23:0c00 " ONE "22:0300 02:25000c " TWO "07 05 00"                               },
    });
}

TEST(FormulaCompiler, leadsTheJumpsOfIfToTheRightPlaces)
{
    const TestDocument document;
    ByteCodeWriter writer;
    compileText(u"=If(A1,1,2)", writer, {}, CompileFormula);
    std::uint8_t* block = writer.finish();
    const std::uint8_t* code = blockCode(block);
    const std::uint8_t* condition = code + 5;
    const std::uint8_t* first = condition + 3 + 9;
    const std::uint8_t* second = first + 3 + 9;
    EXPECT_EQ(jumpTarget(condition), first + 3);
    EXPECT_EQ(jumpTarget(first), second + 3 + 4);
    EXPECT_EQ(jumpTarget(second), second + 3 + 4);
    EXPECT_EQ(*jumpTarget(second), OpReturn);
    heapFree(block);
}

TEST(FormulaCompiler, storesReferencesRelativeToTheCell)
{
    const TestDocument document;
    const CellPosition base{4, 2, 1};
    EXPECT_EQ(compileFormula(u"=C5", base).code, "0c:000000c0 00");
    EXPECT_EQ(compileFormula(u"=A1:$D$6", base).code, "0e:fcfffec005000300 00");
    EXPECT_EQ(compileFormula(u"=Sheet1!B4", base).code, "0f:08000000ffffffc000000000 00");
}

TEST(FormulaCompiler, tellsWhatIsWrongAndWhere)
{
    const TestDocument document;
    expectFailures({
        {"nothing",                               u"",                ErrorEndOfFormula,       0},
        {"only an equals sign",                   u"=",               ErrorEndOfFormula,       0},
        {"the second equals sign is not skipped", u"==1",             ErrorToken,              0},
        {"a blank in front of the first",         u" =1",             ErrorToken,              1},
        {"an operator without its right side",    u"=1+",             ErrorEndOfFormula,       2},
        {"an operator without its left side",     u"=*1",             ErrorToken,              0},
        {"two operators",                         u"=1+*2",           ErrorToken,              2},
        {"two operands",                          u"=1 2",            ErrorToken,              2},
        {"a percent sign alone",                  u"=%",              ErrorToken,              0},
        {"a character that is none",              u"=1+#",            ErrorCharacter,          2},
        {"a lone surrogate",                      u"=\xd800",         ErrorCharacter,          0},
        {"a number too large",                    u"=1e999",          ErrorNumberRange,        0},
        {"a text that does not end",              u"=1&\"ab",         ErrorUnterminatedString, 2},
        {"a bad date",                            u"=2+31/12/1999",   ErrorDate,               2},
        {"a bad reference",                       u"=$A0",            ErrorRowExpected,        0},
        {"a list separator",                      u"=1,2",            ErrorToken,              1},
        {"a bang",                                u"=!A1",            ErrorToken,              0},
        {"a cell and a bang",                     u"=A1!B2",          ErrorToken,              2},
        {"a keyword",                             u"=then",           ErrorToken,              0},
        {"another",                               u"=1+while",        ErrorToken,              2},
        {"a closing parenthesis",                 u"=)",              ErrorRedundantParen,     0},
        {"one behind an operator",                u"=1+)",            ErrorRedundantParen,     2},
        {"one behind an operand",                 u"=1)",             ErrorToken,              1},
        {"an opening parenthesis",                u"=(",              ErrorEndOfFormula,       1},
        {"one that is not closed",                u"=(1",             ErrorRightParen,         2},
        {"one that is closed by something else",  u"=(1,2)",          ErrorRightParen,         2},
        {"empty parentheses",                     u"=()",             ErrorRedundantParen,     1},
        {"an unknown word",                       u"=1+Abc",          ErrorUnknownName,        2},
        {"a word of one letter",                  u"=x",              ErrorUnknownName,        0},
        {"a word that was a column elsewhere",    u"=IW1",            ErrorUnknownName,        0},
        {"a row past the last",                   u"=A16385",         ErrorUnknownName,        0},
        {"an unknown function",                   u"=Foo(1)",         ErrorUnknownName,        0},
        {"a function of tasks",                   u"=MsgBox(\"x\")",  ErrorUnknownName,        0},
        {"inside of another",                     u"=Sum(1,Zoom(5))", ErrorUnknownName,        6},
        {"the first failure counts",              u"=1+Abc+#",        ErrorUnknownName,        2},
    });
}

TEST(FormulaCompiler, tellsWhatIsWrongWithACall)
{
    const TestDocument document;
    expectFailures({
        {"no arguments where one is needed",       u"=Sum()",       ErrorFewArguments,   4 },
        {"one where two are needed",               u"=Round(1)",    ErrorFewArguments,   7 },
        {"too few, and not closed",                u"=Round(1",     ErrorFewArguments,   7 },
        {"one where none is taken",                u"=Pi(1)",       ErrorManyArguments,  4 },
        {"two where one is taken",                 u"=Abs(1,2)",    ErrorManyArguments,  7 },
        {"an If of one",                           u"=If(1)",       ErrorFewArguments,   4 },
        {"an If of none",                          u"=If()",        ErrorFewArguments,   3 },
        {"an If of four",                          u"=If(1,2,3,4)", ErrorManyArguments,  10},
        {"no parentheses",                         u"=Sum",         ErrorLeftParen,      3 },
        {"something else in their place",          u"=Sum+1",       ErrorLeftParen,      3 },
        {"If without them",                        u"=If",          ErrorLeftParen,      2 },
        {"not closed",                             u"=Sum(1",       ErrorRightParen,     5 },
        {"closed by something else",               u"=Sum(1 2)",    ErrorRightParen,     6 },
        {"the text ends where an argument begins", u"=Sum(",        ErrorEndOfFormula,   4 },
        {"and behind a separator",                 u"=Sum(1,",      ErrorEndOfFormula,   6 },
        {"an empty last argument",                 u"=Sum(1,)",     ErrorToken,          6 },
        {"an empty first argument",                u"=Sum(,1)",     ErrorToken,          4 },
        {"an empty argument between",              u"=Sum(1,,2)",   ErrorToken,          6 },
        {"only a separator",                       u"=Sum(,)",      ErrorToken,          4 },
        {"an empty value of an If",                u"=If(1,)",      ErrorToken,          5 },
        {"an operator without its right side",     u"=Sum(1,+)",    ErrorRedundantParen, 7 },
    });
}

TEST(FormulaCompiler, tellsWhatIsWrongWithASheet)
{
    const TestDocument document;
    expectFailures({
        {"no bang",                     u"=Sheet1",        ErrorBangExpected,      6},
        {"something else in its place", u"=Sheet1+A1",     ErrorBangExpected,      6},
        {"no reference",                u"=Sheet2!",       ErrorReferenceExpected, 7},
        {"a function in its place",     u"=Sheet2!Sum(1)", ErrorReferenceExpected, 7},
        {"an error in its place",       u"=Sheet2! !!Ref", ErrorReferenceExpected, 8},
        {"an error without a bang",     u"=Sheet2!!Ref",   ErrorBangExpected,      6},
        {"bangs that run together",     u"=Sheet2!!!Ref",  ErrorCharacter,         6},
        {"an error without a bang",     u"=Sheet2!!Ref",   ErrorBangExpected,      6},
        {"bangs that run together",     u"=Sheet2!!!Ref",  ErrorCharacter,         6},
        {"no such sheet",               u"='No Such'!A1",  ErrorSheetName,         0},
    });
}

TEST(FormulaCompiler, knowsVariablesInTasksOnly)
{
    const TestDocument document;
    TaskVariable record;
    record.name = duplicateString(u"i");
    workbook->variables.append(record);
    EXPECT_EQ(compileFormula(u"=1+i").error, ErrorToken);
    ByteCodeWriter writer;
    EXPECT_EQ(compileText(u"i+Zoom(50)", writer, {}, CompileTask), -1);
    std::uint8_t* block = writer.finish();
    EXPECT_EQ(codeText(blockCode(block)), "27:0000 01:0000000000004940 02:9e0001 05 00");
    heapFree(block);
}

TEST(FormulaCompiler, readsATaskTheSameInEveryLocale)
{
    const TestDocument document("de_DE");
    ByteCodeWriter writer;
    EXPECT_EQ(compileText(u"Sum(1.5,2)", writer, {}, CompileTask), -1);
    EXPECT_EQ(localeInfo.decimal, u',');
    EXPECT_EQ(localeInfo.list, u';');
    EXPECT_EQ(compileFormula(u"=Sum(1,5;2)").code, "01:000000000000f83f " TWO "02:030002 00");
    EXPECT_EQ(compileFormula(u"=Sum(1.5,2)").error, ErrorCharacter);
}

TEST(FormulaCompiler, cannotCompileWhileAnErrorStands)
{
    const TestDocument document;
    raiseError(ErrorFileRead);
    const Compiled compiled = compileFormula(u"=1");
    EXPECT_EQ(compiled.error, ErrorFileRead);
    EXPECT_EQ(compiled.offset, 0);
}

TEST(FormulaCompiler, takesArgumentsUpToTheLimit)
{
    const TestDocument document;
    EXPECT_EQ(compileFormula(u"=Sum(1" + repeated(u",1", 29) + u")").error, ErrorNone);
    EXPECT_EQ(compileFormula(u"=Sum(1" + repeated(u",1", 30) + u")").error, ErrorManyArguments);
    EXPECT_EQ(compileFormula(u"=Sum(1" + repeated(u",1", 299) + u")").error, ErrorManyArguments);
    EXPECT_EQ(compileFormula(u"=If(1" + repeated(u",1", 40000) + u")").error, ErrorManyArguments);
}

TEST(FormulaCompiler, nestsUpToALimit)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        std::u16string_view open, close;
    } cases[] = {
        {"parentheses",         u"(",     u")"},
        {"calls",               u"Abs(",  u")"},
        {"conditions",          u"If(1,", u")"},
        {"signs",               u"-",     u"" },
        {"signs of both kinds", u"+",     u"" },
    };
    for (const auto& c : cases) {
        for (int depth : {CompileDepthMax, CompileDepthMax + 1, 10000}) {
            const std::u16string text = repeated(c.open, depth) + u"1" + repeated(c.close, depth);
            const int expected = depth <= CompileDepthMax ? ErrorNone : ErrorTooComplex;
            EXPECT_EQ(compileFormula(text).error, expected) << c.behaviour << ' ' << depth;
        }
        EXPECT_EQ(compileFormula(repeated(c.open, 10000)).error, ErrorTooComplex) << c.behaviour;
    }
    EXPECT_EQ(compileFormula(repeated(u"(", 401)).offset, 400);
    EXPECT_EQ(compileFormula(repeated(u"(-", 200) + u"1" + repeated(u")", 200)).error, ErrorNone);
    EXPECT_EQ(compileFormula(repeated(u"(1)+", 1000) + u"1").error, ErrorNone);
}

TEST(FormulaCompiler, makesLongCode)
{
    const TestDocument document;
    const Compiled compiled = compileFormula(u"=1" + repeated(u"+1", 5000));
    EXPECT_EQ(compiled.error, ErrorNone);
    EXPECT_EQ(codeBytes(compiled.code).size(), 9U + 5000 * 10 + 1);
}

// A number and an addition are 10 bytes, and a distance reaches 32,767.
TEST(FormulaCompiler, refusesJumpsThatDoNotFit)
{
    const TestDocument document;
    const auto value = [](int bytes) { return u"1" + repeated(u"+1", (bytes - 9) / 10); };
    const struct {
        const char* behaviour;
        std::u16string text;
        int error;
    } cases[] = {
        {"the longest first value",             u"=If(1," + value(32759) + u")",   ErrorNone      },
        {"one longer",                          u"=If(1," + value(32769) + u")",   ErrorTooComplex},
        {"the longest second value",            u"=If(1,1," + value(32759) + u")", ErrorNone      },
        {"one longer",                          u"=If(1,1," + value(32769) + u")", ErrorTooComplex},
        {"a long condition is not jumped over", u"=If(" + value(40009) + u",1,2)", ErrorNone      },
    };
    for (const auto& c : cases)
        EXPECT_EQ(compileFormula(c.text).error, c.error) << c.behaviour;
}

TEST(FormulaCompiler, takesTextsOfAnyLength)
{
    const TestDocument document;
    constexpr std::size_t length = 100000;
    const struct {
        const char* behaviour;
        std::u16string text;
        int error;
    } cases[] = {
        {"letters",                       std::u16string(length,        u'x'),         ErrorUnknownName   },
        {"digits",                        std::u16string(length,        u'7'),         ErrorNumberRange   },
        {"quotes",                        std::u16string(length,        u'"'),         ErrorTooComplex    },
        {"apostrophes",                   std::u16string(length,        u'\''),        ErrorSheetName     },
        {"equals signs",                  std::u16string(length,        u'='),         ErrorToken         },
        {"closing parentheses",           std::u16string(length,        u')'),         ErrorRedundantParen},
        {"percent signs behind a number", u"1" + std::u16string(length, u'%'),         ErrorNone          },
        {"comparisons",                   repeated(u"1=",               50000) + u"1", ErrorNone          },
        {"lone surrogates",               std::u16string(length,        u'\xdc00'),    ErrorCharacter     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(compileFormula(c.text).error, c.error) << c.behaviour;
}

int growthsUntilRefusal = 0;

void* refuseOneGrowth(void* block, std::size_t bytes)
{
    return bytes != 0 && --growthsUntilRefusal == 0 ? nullptr : resizeBlock(block, bytes);
}

TEST(FormulaCompiler, endsInItsErrorWhenMemoryIsShort)
{
    const TestDocument document;
    const std::u16string text = u"=1" + repeated(u"+1", 500);
    int refused = 1;
    for (;; ++refused) {
        growthsUntilRefusal = refused;
        blockResizer = refuseOneGrowth;
        const Compiled compiled = compileFormula(text);
        blockResizer = resizeBlock;
        if (growthsUntilRefusal > 0)
            break;
        EXPECT_EQ(compiled.error, ErrorMemory) << refused;
    }
    EXPECT_GT(refused, 3); // 5,009 bytes grow the buffer three times
    EXPECT_EQ(compileFormula(text).error, ErrorNone);
}

} // namespace
} // namespace vorn
