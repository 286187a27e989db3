#include "formula/machine.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "functions/table.h"
#include "support/cells.h"
#include "support/coderun.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

constexpr int RowSum = 3;
constexpr int RowNot = 20;

CellValue sheetImage(ValueTag tag, int first, int last, const RangeRef& range)
{
    CellValue image;
    image.firstSheet = static_cast<std::uint8_t>(first);
    image.lastSheet = static_cast<std::uint8_t>(last);
    image.put(tag, range);
    return image;
}

void emitNumber(ByteCodeWriter& code, double number)
{
    code.emit(OpPushNumber, number);
}

// A name with this definition; its index.
std::uint16_t define(void (*write)(ByteCodeWriter&))
{
    ByteCodeWriter code;
    write(code);
    workbook->names.append({nullptr, code.finish(), -1});
    return static_cast<std::uint16_t>(workbook->names.size() - 1);
}

class Machine : public testing::Test {
protected:
    // What an instruction pushes, before anybody looks through a reference: by way of a variable.
    std::string pushed(const std::function<void(ByteCodeWriter&)>& write,
                       CellPosition position = {})
    {
        if (workbook->variables.size() == 0)
            workbook->variables.append({nullptr, {}});
        ByteCodeWriter code;
        write(code);
        code.emit(OpStoreVariable, std::uint16_t{0});
        code.emit(OpPushLogical, std::uint8_t{1});
        EXPECT_EQ(outcome(code, position), "TRUE");
        return describe(workbook->variables[0].value);
    }

    TestDocument document;
};

// --- Pushing

TEST_F(Machine, pushesWhatAnInstructionHolds)
{
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
        const char* value;
    } cases[] = {
        {"number",                   [](ByteCodeWriter& code) { code.emit(OpPushNumber, -2.5); },                     "-2.5"        },
        {"date",                     [](ByteCodeWriter& code) { code.emit(OpPushDate, 36526.5); },                    "date 36526.5"},
        {"text",                     [](ByteCodeWriter& code) { emitText(code, u"text"); },                           "\"text\""    },
        {"the empty text",           [](ByteCodeWriter& code) { code.emit(OpPushText, -1); },                         "\"\""        },
        {"true",                     [](ByteCodeWriter& code) { code.emit(OpPushLogical, std::uint8_t{1}); },         "TRUE"        },
        {"false",                    [](ByteCodeWriter& code) { code.emit(OpPushLogical, std::uint8_t{0}); },         "FALSE"       },
        {"error",                    [](ByteCodeWriter& code) { code.emit(OpPushError, std::uint16_t{42}); },         "!!NA"        },
        {"the low byte of an error",
         [](ByteCodeWriter& code) { code.emit(OpPushError, std::uint16_t{0xff07}); },                                 "!!Div0"      },
        {"small integer",
         [](ByteCodeWriter& code) { code.emit(OpPushInt16, std::uint16_t{65535}); },
         "integer 65535"                                                                                                            },
        {"integer",                  [](ByteCodeWriter& code) { code.emit(OpPushInt32, std::uint32_t{4294967295}); },
         "integer 4294967295"                                                                                                       },
        {"a whole value",
         [](ByteCodeWriter& code) { code.emit(OpPushValue, CellValue::makeNumber(7)); },                              "7"           },
        {"a blank",                  [](ByteCodeWriter& code) { code.emit(OpPushValue, CellValue{}); },               "blank"       },
        {"a text in a value",
         [](ByteCodeWriter& code) { code.emit(OpPushValue, textValue(u"inside")); },                                  "\"inside\""  },
        {"a dead cell",
         [](ByteCodeWriter& code) {
             code.emit(OpBadCell, CellRef{1, 1});
         },                                                                                                           "!!Ref"       },
        {"a dead range",
         [](ByteCodeWriter& code) {
             code.emit(OpBadRange, RangeRef{1, 1, 2, 2});
         },                                                                                                           "!!Ref"       },
        {"a dead cell of sheets",
         [](ByteCodeWriter& code) {
             code.emit(OpBadSheetCell, sheetImage(TagSheetCellRef, 0, 0, {}));
         },                                                                                                           "!!Ref"       },
        {"a dead range of sheets",
         [](ByteCodeWriter& code) {
             code.emit(OpBadSheetRange, sheetImage(TagSheetRangeRef, 0, 0, {}));
         },                                                                                                           "!!Ref"       },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(outcome(c.write), c.value) << c.phrase;
        EXPECT_EQ(pushed(c.write), c.value) << c.phrase;
    }
}

TEST_F(Machine, pushesReferencesWithPlainCoordinates)
{
    constexpr CellPosition Base{10, 20, 1};
    const struct {
        const char* phrase;
        CellRef stored;
        CellPosition base;
        const char* value;
    } cases[] = {
        {"absolute",               {5, 6},           Base,            "cell 6,5"      },
        {"relative row",           {5, 0x8006},      Base,            "cell 6,15"     },
        {"relative column",        {5, 0x4006},      Base,            "cell 26,5"     },
        {"relative both ways",     {5, 0xc006},      Base,            "cell 26,15"    },
        {"up and left",            {0xffff, 0xc0ff}, Base,            "cell 19,9"     },
        {"above the first row",    {0xffff, 0xc0ff}, {0, 0, 0},       "cell 255,16383"},
        {"below the last row",     {1, 0xc001},      {16383, 255, 0}, "cell 0,0"      },
        {"an absolute row beyond", {20000, 6},       Base,            "cell 6,20000"  },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(pushed([&c](ByteCodeWriter& code) { code.emit(OpPushCell, c.stored); }, c.base),
                  c.value)
            << c.phrase;
        CellValue image = sheetImage(TagSheetCellRef, 2, 3, {});
        image.put(TagSheetCellRef, c.stored);
        EXPECT_EQ(pushed([&](ByteCodeWriter& code) { code.emit(OpPushSheetCell, image); }, c.base),
                  "sheets 2-3 " + std::string(c.value))
            << c.phrase;
    }
}

TEST_F(Machine, pushesRangesWithPlainCoordinates)
{
    constexpr CellPosition Base{10, 20, 1};
    const struct {
        const char* phrase;
        RangeRef stored;
        const char* value;
    } cases[] = {
        {"absolute",                                {1, 2, 3, 4},           "range 2,1:4,3"        },
        {"relative",                                {1, 0xc002, 3, 0xc004}, "range 22,11:24,13"    },
        {"each corner by itself",                   {1, 2, 3, 0xc004},      "range 2,1:24,13"      },
        {"corners as they stand",                   {3, 4, 1, 2},           "range 4,3:2,1"        },
        {"the last of 65,536 rows is the last row", {0, 1, 65535, 1},       "range 1,0:1,16383"    },
        {"but not as a first corner",               {65535, 1, 65535, 1},   "range 1,65535:1,16383"},
        {"a relative row never gets there",         {0, 1, 65535, 0x8001},  "range 1,0:1,9"        },
        {"one row less stays beyond",               {0, 1, 65534, 1},       "range 1,0:1,65534"    },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(pushed([&c](ByteCodeWriter& code) { code.emit(OpPushRange, c.stored); }, Base),
                  c.value)
            << c.phrase;
        const CellValue image = sheetImage(TagSheetRangeRef, 1, 2, c.stored);
        EXPECT_EQ(pushed([&](ByteCodeWriter& code) { code.emit(OpPushSheetRange, image); }, Base),
                  "sheets 1-2 " + std::string(c.value))
            << c.phrase;
    }
}

TEST_F(Machine, keepsTheBytesOfASheetReference)
{
    // The last row of a sheet cell is no row of 65,536, and its filler is kept.
    const std::uint8_t bytes[] = {8, 0, 1, 2, 0xff, 0xff, 3, 0, 9, 8, 7, 6};
    workbook->variables.append({nullptr, {}});
    ByteCodeWriter code;
    code.emit(OpPushSheetCell, readOperand<CellValue>(bytes));
    code.emit(OpStoreVariable, std::uint16_t{0});
    EXPECT_EQ(outcome(code), "kept") << "nothing is left on the stack";
    EXPECT_EQ(std::memcmp(&workbook->variables[0].value, bytes, sizeof bytes), 0);
}

TEST_F(Machine, addsAnOwnerToEachTextThatItPushes)
{
    const CellValue text = textValue(u"shared");
    const std::int32_t index = text.textIndex();
    for (const OpCode opcode : {OpPushText, OpPushValue}) {
        ByteCodeWriter code;
        stringPool->addRef(index);
        if (opcode == OpPushText)
            code.emit(OpPushText, index);
        else
            code.emit(OpPushValue, text);
        Cell cell = formulaCell(code, {0, 0, 0});
        evaluateFormulaCell(*cell.value.formula());
        EXPECT_EQ(stringPool->refCount(index), 3) << "the test, the code and the result";
        evaluateFormulaCell(*cell.value.formula());
        EXPECT_EQ(stringPool->refCount(index), 3);
        releaseValue(cell.value);
        EXPECT_EQ(stringPool->refCount(index), 1);
    }
}

TEST_F(Machine, doesNothingForParenthesesAndPlus)
{
    for (const OpCode opcode : {OpUnaryPlus, OpParen}) {
        ByteCodeWriter code;
        code.emit(OpPushRange, RangeRef{1, 1, 2, 2});
        code.emit(opcode);
        code.emit(OpStoreVariable, std::uint16_t{0});
        code.emit(OpPushLogical, std::uint8_t{1});
        workbook->variables.append({nullptr, {}});
        EXPECT_EQ(outcome(code), "TRUE");
        EXPECT_EQ(describe(workbook->variables[0].value), "range 1,1:2,2");
    }
}

// --- Results

TEST_F(Machine, turnsTheResultIntoAPlainValue)
{
    workbook->sheetAt(0)->setCell(0, 0, textCell(u"here"));
    workbook->sheetAt(1)->setCell(0, 0, numberCell(11));
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
        const char* value;
    } cases[] = {
        {"a cell",
         [](ByteCodeWriter& code) {
             code.emit(OpPushCell, CellRef{0, 0});
         }, "\"here\""},
        {"an empty cell",
         [](ByteCodeWriter& code) {
             code.emit(OpPushCell, CellRef{9, 9});
         }, "blank"   },
        {"a range of one cell",
         [](ByteCodeWriter& code) {
             code.emit(OpPushRange, RangeRef{0, 0, 0, 0});
         }, "\"here\""},
        {"a range of more",
         [](ByteCodeWriter& code) {
             code.emit(OpPushRange, RangeRef{0, 0, 1, 1});
         }, "!!Ref"   },
        {"a cell of another sheet",
         [](ByteCodeWriter& code) {
             code.emit(OpPushSheetCell, sheetImage(TagSheetCellRef, 1, 1, {}));
         }, "11"      },
        {"a cell of several sheets",
         [](ByteCodeWriter& code) {
             code.emit(OpPushSheetCell, sheetImage(TagSheetCellRef, 0, 1, {}));
         }, "!!Ref"   },
        {"a cell of a sheet that is gone",
         [](ByteCodeWriter& code) {
             code.emit(OpPushSheetCell, sheetImage(TagSheetCellRef, 9, 9, {}));
         }, "!!Ref"   },
    };
    for (const auto& c : cases)
        EXPECT_EQ(outcome(c.write), c.value) << c.phrase;
}

TEST_F(Machine, turnsOnlyNumbersWithoutBoundsIntoErrors)
{
    const struct {
        CellValue value;
        const char* result;
    } cases[] = {
        {CellValue::makeNumber(Infinity),   "!!Num"   },
        {CellValue::makeNumber(-Infinity),  "!!Num"   },
        {CellValue::makeNumber(NotANumber), "!!Num"   },
        {CellValue::makeNumber(1.7e308),    "1.7e+308"},
        {CellValue::makeDate(Infinity),     "date inf"},
    };
    for (const auto& c : cases) {
        ByteCodeWriter code;
        emitValue(code, c.value);
        EXPECT_EQ(outcome(code), c.result) << describe(c.value);
    }
}

TEST_F(Machine, keepsTheOldResultUnlessOneValueIsLeft)
{
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
    } cases[] = {
        {"none",             [](ByteCodeWriter&) {}},
        {"two",
         [](ByteCodeWriter& code) {
             emitNumber(code, 1);
             emitNumber(code, 2);
         }                                         },
        {"many texts",
         [](ByteCodeWriter& code) {
             for (int count = 0; count < 10; ++count)
                 emitText(code, u"text");
         }                                         },
        {"none after a pop",
         [](ByteCodeWriter& code) {
             emitText(code, u"text");
             code.emit(OpPop);
         }                                         },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(outcome(c.write), "kept") << c.phrase;
        EXPECT_EQ(stringPool->beginScan(), 0) << c.phrase;
        stringPool->endScan();
    }
}

TEST_F(Machine, releasesTheResultThatItReplaces)
{
    ByteCodeWriter code;
    emitNumber(code, 1);
    Cell cell = formulaCell(code, {0, 0, 0});
    FormulaCell& formula = *cell.value.formula();
    formula.result = textValue(u"old");
    const std::int32_t old = formula.result.textIndex();
    evaluateFormulaCell(formula);
    EXPECT_EQ(describe(formula.result), "1");
    EXPECT_FALSE(stringPool->isLive(old));
    releaseValue(cell.value);
}

TEST_F(Machine, losesAnErrorThatPendsAtTheEnd)
{
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  code.emit(OpPushError, std::uint16_t{7});
                  code.emit(OpNegate);
              }),
              "0");
    // The next formula does not see it.
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitNumber(code, 1);
                  emitNumber(code, 2);
                  code.emit(OpAdd);
              }),
              "3");
}

// --- Jumps and conditions

// condition; jump if false to the second number; the first number; a jump behind; the second.
std::string chosen(const CellValue& condition)
{
    ByteCodeWriter code;
    CellValue copy;
    copyValue(condition, copy);
    emitValue(code, copy);
    code.emit(OpJumpIfFalse, std::int16_t{9 + 3});
    emitNumber(code, 1);
    code.emit(OpJump, std::int16_t{9 - 1});
    emitNumber(code, 2);
    return outcome(code);
}

TEST_F(Machine, takesTheBranchOfACondition)
{
    workbook->sheetAt(0)->setCell(0, 0, textCell(u"x"));
    const struct {
        CellValue condition;
        const char* branch;
    } cases[] = {
        {CellValue::makeLogical(true),          "1"},
        {CellValue::makeLogical(false),         "2"},
        {CellValue{},                           "2"},
        {CellValue::makeNumber(0),              "2"},
        {CellValue::makeNumber(0.1),            "1"},
        {textValue(u"true"),                    "1"},
        {textValue(u"False"),                   "2"},
        {textValue(u"x"),                       "1"},
        {textValue(u""),                        "1"},
        {CellValue::makeError(7),               "1"},
        {CellValue::makeDate(0),                "1"},
        {CellValue::makeInteger(0),             "2"},
        {CellValue::makeInteger(1),             "1"},
        {CellValue::makeCellRef({0, 0}),        "1"},
        {CellValue::makeCellRef({5, 5}),        "2"},
        {CellValue::makeRangeRef({0, 0, 1, 1}), "1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(chosen(c.condition), c.branch) << describe(c.condition);
}

TEST_F(Machine, countsOnlyTheErrorOfTheConditionItself)
{
    // 1=(1/0) is FALSE, with the error pending from before the jump.
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitNumber(code, 1);
                  code.emit(OpPushError, std::uint16_t{7});
                  code.emit(OpEqual);
                  code.emit(OpJumpIfFalse, std::int16_t{9 + 3});
                  emitNumber(code, 1);
                  code.emit(OpJump, std::int16_t{9 - 1});
                  emitNumber(code, 2);
              }),
              "2");
    // And the jump clears it: the sum behind finds nothing.
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  code.emit(OpPushError, std::uint16_t{7});
                  code.emit(OpJumpIfFalse, std::int16_t{0});
                  emitNumber(code, 1);
                  emitNumber(code, 2);
                  code.emit(OpAdd);
              }),
              "3");
}

TEST_F(Machine, runsTheTailOfACompiledIf)
{
    const struct {
        const char* phrase;
        int argumentCount;
        const char* value;
    } cases[] = {
        {"two arguments, not taken", 12,  "FALSE"},
        {"any other marked count",   11,  "FALSE"},
        {"and a high one",           255, "FALSE"},
    };
    for (const auto& c : cases) {
        ByteCodeWriter code;
        code.emitCall(FunctionRowIf, c.argumentCount);
        EXPECT_EQ(outcome(code), c.value) << c.phrase;
    }
    // Three arguments on the stack behave as the function.
    for (const int argumentCount : {3, 13}) {
        ByteCodeWriter code;
        code.emit(OpPushLogical, std::uint8_t{0});
        emitNumber(code, 1);
        emitText(code, u"no");
        code.emitCall(FunctionRowIf, argumentCount);
        EXPECT_EQ(outcome(code), "\"no\"");
    }
}

// --- Calls

TEST_F(Machine, callsAFunctionWithItsArguments)
{
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitNumber(code, 1);
                  emitNumber(code, 2);
                  emitNumber(code, 4);
                  code.emitCall(RowSum, 3);
              }),
              "7");
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  code.emit(OpPushError, std::uint16_t{42});
                  code.emitCall(RowNot, 1);
              }),
              "!!NA");
}

TEST_F(Machine, keepsTheOldResultOfACallThatIsOutOfBalance)
{
    workbook->sheetAt(0)->setCell(0, 0, errorCell(7));
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
    } cases[] = {
        {"arguments that are not there",
         [](ByteCodeWriter& code) {
             emitText(code, u"text");
             code.emitCall(RowSum, 5);
         }                                                                                                  },
        {"no argument at all",                        [](ByteCodeWriter& code) { code.emitCall(RowNot, 1); }},
        {"a sum that gives up at an error in a cell",
         [](ByteCodeWriter& code) {
             code.emit(OpPushRange, RangeRef{0, 0, 5, 5});
             emitNumber(code, 5);
             code.emitCall(RowSum, 2);
         }                                                                                                  },
        {"a row that is not there",
         [](ByteCodeWriter& code) {
             const std::uint8_t call[] = {OpCall, 189, 0, 0};
             code.append(call, sizeof call);
         }                                                                                                  },
        {"the last number of a row",
         [](ByteCodeWriter& code) {
             emitText(code, u"text");
             const std::uint8_t call[] = {OpCall, 255, 255, 1};
             code.append(call, sizeof call);
         }                                                                                                  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(outcome(c.write), "kept") << c.phrase;
}

// --- Names

TEST_F(Machine, runsANameForTheCellThatUsesIt)
{
    Sheet& sheet = *workbook->sheetAt(1);
    sheet.setCell(3, 3, numberCell(33));
    sheet.setCell(0, 0, textCell(u"origin"));
    const std::uint16_t below = define([](ByteCodeWriter& code) {
        code.emit(OpPushCell, CellRef{1, 0xc000});
    });
    const std::uint16_t origin = define([](ByteCodeWriter& code) {
        code.emit(OpPushCell, CellRef{0, 0});
    });
    ByteCodeWriter code;
    code.emit(OpCallName, below);
    emitNumber(code, 1);
    code.emit(OpAdd);
    EXPECT_EQ(outcome(code, {2, 3, 1}), "34");
    code.emit(OpCallName, origin);
    EXPECT_EQ(outcome(code, {2, 3, 1}), "\"origin\"");
    EXPECT_EQ(machine.callDepth, 0);
}

TEST_F(Machine, runsNamesWithinNames)
{
    define([](ByteCodeWriter& code) { emitNumber(code, 5); });
    define([](ByteCodeWriter& code) {
        code.emit(OpCallName, std::uint16_t{0});
        code.emit(OpCallName, std::uint16_t{0});
        code.emit(OpMultiply);
    });
    ByteCodeWriter code;
    emitNumber(code, 1);
    code.emit(OpCallName, std::uint16_t{1});
    code.emit(OpAdd);
    EXPECT_EQ(outcome(code), "26");
}

TEST_F(Machine, leavesAReferenceOfANameAReference)
{
    define([](ByteCodeWriter& code) { code.emit(OpPushRange, RangeRef{0, 0, 3, 3}); });
    EXPECT_EQ(pushed([](ByteCodeWriter& code) { code.emit(OpCallName, std::uint16_t{0}); }),
              "range 0,0:3,3");
}

TEST_F(Machine, knowsNoDeletedName)
{
    workbook->names.append({});
    EXPECT_EQ(outcome([](ByteCodeWriter& code) { code.emit(OpCallName, std::uint16_t{0}); }),
              "!!Name");
    EXPECT_EQ(outcome([](ByteCodeWriter& code) { code.emit(OpCallName, std::uint16_t{77}); }),
              "!!Name");
}

TEST_F(Machine, endsANameThatCallsItself)
{
    define([](ByteCodeWriter& code) { code.emit(OpCallName, std::uint16_t{0}); });
    define([](ByteCodeWriter& code) {
        emitText(code, u"again");
        code.emit(OpCallName, std::uint16_t{2});
        code.emit(OpConcat);
    });
    define([](ByteCodeWriter& code) { code.emit(OpCallName, std::uint16_t{1}); });
    for (std::uint16_t name = 0; name < 3; ++name) {
        ByteCodeWriter code;
        code.emit(OpCallName, name);
        EXPECT_EQ(outcome(code), "kept") << name;
    }
    // The text in the definition has its one owner.
    EXPECT_EQ(stringPool->refCount(0), 1);
}

TEST_F(Machine, endsNamesThatCallOneAnotherMoreOftenThanAnybodyCanWait)
{
    const struct {
        const char* phrase;
        int names; // each calls the one before it twice
        const char* outcome;
    } cases[] = {
        {"many thousand calls",  15, "16384"},
        {"more than the limit",  17, "kept" },
        {"more than in a year",  60, "kept" },
        {"still the same after", 15, "16384"},
    };
    for (const auto& c : cases) {
        NewDocument(1, FileKindNative);
        define([](ByteCodeWriter& code) { emitNumber(code, 1); });
        for (int name = 1; name < c.names; ++name) {
            ByteCodeWriter code;
            code.emit(OpCallName, static_cast<std::uint16_t>(name - 1));
            code.emit(OpCallName, static_cast<std::uint16_t>(name - 1));
            code.emit(OpAdd);
            workbook->names.append({nullptr, code.finish(), -1});
        }
        ByteCodeWriter code;
        code.emit(OpCallName, static_cast<std::uint16_t>(c.names - 1));
        EXPECT_EQ(outcome(code), c.outcome) << c.phrase;
    }
}

// Where a name was called from lies on the stack below its values, and is not for the name to take.
TEST_F(Machine, keepsTheWayBackFromANameToItself)
{
    const struct {
        const char* phrase;
        void (*write)(ByteCodeWriter&);
    } cases[] = {
        {"popped",
         [](ByteCodeWriter& code) {
             code.emit(OpPop);
             emitNumber(code, 1);
         }                                                                                                                     },
        {"popped before each call of itself, for ever",
         [](ByteCodeWriter& code) {
             code.emit(OpPop);
             code.emit(OpCallName, std::uint16_t{0});
         }                                                                                                                     },
        {"stored in a variable",
         [](ByteCodeWriter& code) {
             code.emit(OpStoreVariable, std::uint16_t{0});
             emitNumber(code, 1);
         }                                                                                                                     },
        {"an operand",
         [](ByteCodeWriter& code) {
             emitNumber(code, 1);
             code.emit(OpAdd);
         }                                                                                                                     },
        {"an argument",
         [](ByteCodeWriter& code) {
             emitNumber(code, 1);
             code.emitCall(RowSum, 2);
         }                                                                                                                     },
        {"a condition",                                 [](ByteCodeWriter& code) { code.emit(OpJumpIfFalse, std::int16_t{0}); }},
    };
    for (const auto& c : cases) {
        NewDocument(1, FileKindNative);
        workbook->variables.append({nullptr, {}});
        define(c.write);
        ByteCodeWriter code;
        emitNumber(code, 5);
        emitNumber(code, 6);
        code.emit(OpCallName, std::uint16_t{0});
        EXPECT_EQ(outcome(code), "kept") << c.phrase;
        EXPECT_EQ(describe(workbook->variables[0].value), "blank") << c.phrase;
        emitNumber(code, 7);
        EXPECT_EQ(outcome(code), "7") << c.phrase;
    }
}

TEST_F(Machine, keepsTheOldResultOfANameOutOfBalance)
{
    define([](ByteCodeWriter&) {});
    define([](ByteCodeWriter& code) {
        emitNumber(code, 1);
        emitText(code, u"two");
    });
    for (std::uint16_t name = 0; name < 2; ++name) {
        for (const bool onTop : {false, true}) {
            ByteCodeWriter code;
            if (onTop)
                emitText(code, u"below");
            code.emit(OpCallName, name);
            EXPECT_EQ(outcome(code), "kept") << name << onTop;
        }
    }
    EXPECT_EQ(stringPool->beginScan(), 1);
    stringPool->endScan();
}

// --- Variables

TEST_F(Machine, storesAndLoadsVariables)
{
    workbook->variables.append({nullptr, textValue(u"old")});
    workbook->variables.append({nullptr, {}});
    const std::int32_t old = workbook->variables[0].value.textIndex();
    ByteCodeWriter code;
    emitText(code, u"new");
    code.emit(OpStoreVariable, std::uint16_t{0});
    code.emit(OpLoadVariable, std::uint16_t{0});
    code.emit(OpLoadVariable, std::uint16_t{0});
    code.emit(OpConcat);
    EXPECT_EQ(outcome(code), "\"newnew\"");
    EXPECT_FALSE(stringPool->isLive(old) && old != workbook->variables[0].value.textIndex());
    EXPECT_EQ(describe(workbook->variables[0].value), "\"new\"");
    EXPECT_EQ(stringPool->refCount(workbook->variables[0].value.textIndex()), 1);
    EXPECT_EQ(outcome([](ByteCodeWriter& load) { load.emit(OpLoadVariable, std::uint16_t{1}); }),
              "blank");
}

TEST_F(Machine, loadsAReferenceAsOne)
{
    workbook->sheetAt(0)->setCell(2, 1, numberCell(7));
    workbook->variables.append({nullptr, CellValue::makeCellRef({1, 2})});
    EXPECT_EQ(outcome([](ByteCodeWriter& code) { code.emit(OpLoadVariable, std::uint16_t{0}); }),
              "7");
    EXPECT_EQ(describe(workbook->variables[0].value), "cell 2,1");
}

TEST_F(Machine, endsTheRunAtAVariableThatIsNotThere)
{
    for (const OpCode opcode : {OpStoreVariable, OpLoadVariable}) {
        ByteCodeWriter code;
        emitText(code, u"text");
        code.emit(opcode, std::uint16_t{3});
        EXPECT_EQ(outcome(code), "kept");
    }
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

// --- Limits and damage

TEST_F(Machine, popsAndReleasesWithoutLookingThrough)
{
    workbook->sheetAt(0)->setCell(0, 0, textCell(u"in a cell"));
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitNumber(code, 5);
                  emitText(code, u"text");
                  code.emit(OpPushCell, CellRef{0, 0});
                  code.emit(OpPop);
                  code.emit(OpPop);
              }),
              "5");
    EXPECT_EQ(stringPool->beginScan(), 1);
    stringPool->endScan();
}

// A run may have 380 records before each of its instructions.
TEST_F(Machine, keepsTheOldResultBeyondItsStack)
{
    for (const int records : {1, 379, 380, 381, 382, 400, 5000}) {
        ByteCodeWriter numbers;
        ByteCodeWriter texts;
        for (int count = 0; count < records; ++count) {
            emitNumber(numbers, 1);
            emitText(texts, u"x");
        }
        for (int count = 1; count < records; ++count) {
            numbers.emit(OpAdd);
            texts.emit(OpConcat);
        }
        const bool fits = records <= 380;
        EXPECT_EQ(outcome(numbers), fits ? std::to_string(records) : "kept");
        EXPECT_EQ(outcome(texts),
                  fits ? '"' + std::string(static_cast<std::size_t>(records), 'x') + '"' : "kept");
    }
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

// A run above another one has the same room, up to the end of all.
TEST_F(Machine, hasRoomForRunsAboveOneAnother)
{
    resetMachine();
    const auto sumOf = [](int records) {
        ByteCodeWriter code;
        for (int count = 0; count < records; ++count)
            emitNumber(code, 1);
        for (int count = 1; count < records; ++count)
            code.emit(OpAdd);
        return outcome(code);
    };
    for (int count = 0; count < 380; ++count)
        pushNumber(count);
    EXPECT_EQ(sumOf(380), "380");
    EXPECT_EQ(sumOf(381), "kept");
    for (int count = 380; count < StackSize - 60; ++count)
        pushNumber(count);
    EXPECT_EQ(sumOf(20), "20");
    EXPECT_EQ(sumOf(200), "kept") << "here the whole stack ends";
    for (int count = StackSize - 60; count < StackSize - 1; ++count)
        pushNumber(count);
    EXPECT_EQ(sumOf(2), "kept");
    machine.runBase = machine.stackTop + (StackSize - 1);
    for (int count = StackSize - 2; count >= 0; --count)
        EXPECT_EQ(popNumber(), count);
}

TEST_F(Machine, endsAtAnInstructionThatIsNone)
{
    for (int opcode = OpCodeCount; opcode <= 255; ++opcode) {
        ByteCodeWriter code;
        emitText(code, u"text");
        // Whoever steps over it takes it to be this long.
        std::uint8_t instruction[256] = {static_cast<std::uint8_t>(opcode)};
        code.append(instruction, sizeof instruction);
        EXPECT_EQ(outcome(code), "kept") << opcode;
    }
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

// The operation with one operand, or none.
std::string outcomeOfOne(OpCode opcode, const CellValue* operand)
{
    ByteCodeWriter code;
    if (operand != nullptr) {
        CellValue copy;
        copyValue(*operand, copy);
        emitValue(code, copy);
    }
    code.emit(opcode);
    return outcome(code);
}

TEST_F(Machine, endsWhereThereAreTooFewOperands)
{
    const OpCode binary[] = {OpAdd,     OpSubtract,  OpMultiply,     OpDivide,
                             OpPower,   OpConcat,    OpEqual,        OpLess,
                             OpGreater, OpLessEqual, OpGreaterEqual, OpNotEqual};
    const CellValue operands[] = {CellValue{}, CellValue::makeNumber(1), CellValue::makeDate(1),
                                  CellValue::makeLogical(true), CellValue::makeError(7)};
    for (const OpCode opcode : binary) {
        EXPECT_EQ(outcomeOfOne(opcode, nullptr), "kept") << opcode;
        for (const CellValue& operand : operands)
            EXPECT_EQ(outcomeOfOne(opcode, &operand), "kept") << opcode << describe(operand);
        CellValue text = textValue(u"text");
        EXPECT_EQ(outcomeOfOne(opcode, &text), "kept") << opcode;
        releaseValue(text);
    }
    for (const OpCode opcode : {OpNegate, OpPercent, OpPop})
        EXPECT_EQ(outcomeOfOne(opcode, nullptr), "kept") << opcode;
    ByteCodeWriter code;
    code.emit(OpJumpIfFalse, std::int16_t{0});
    emitNumber(code, 1);
    EXPECT_EQ(outcome(code), "kept");
    EXPECT_EQ(stringPool->beginScan(), 0);
    stringPool->endScan();
}

TEST_F(Machine, isResetToAFirstRun)
{
    pushNumber(1);
    machine.pendingError = 7;
    machine.callDepth = 2;
    abandonRun();
    resetMachine();
    EXPECT_EQ(machine.stackTop, machine.runBase);
    EXPECT_EQ(machine.pendingError, 0);
    EXPECT_EQ(machine.callDepth, 0);
    EXPECT_TRUE(machine.machineRunning);
    EXPECT_TRUE(machine.machineHealthy);
}

// A task may calculate in the midst of its own run.
TEST_F(Machine, goesOnWhereItWasAfterARecalculation)
{
    workbook->sheetAt(0)->setCell(0, 0, constantFormula(1, {0, 0, 0}));
    ByteCodeWriter code;
    emitNumber(code, 1);
    code.emitCall(RowSum, 1);
    workbook->sheetAt(1)->setCell(5, 7, formulaCell(code, {7, 5, 1}));

    const std::uint8_t instruction = OpReturn;
    pushNumber(5);
    machine.instructionPointer = &instruction;
    machine.base = {3, 4, 2};
    machine.argumentCount = 9;
    machine.pendingError = 42;
    machine.callDepth = 3;
    machine.poppedTag = TagDateTime;
    const MachineRegisters before = machine;
    recalculate();
    EXPECT_EQ(machine.instructionPointer, before.instructionPointer);
    EXPECT_EQ(machine.stackTop, before.stackTop);
    EXPECT_EQ(machine.runBase, before.runBase);
    EXPECT_EQ(machine.base, before.base);
    EXPECT_EQ(machine.argumentCount, 9);
    EXPECT_EQ(machine.pendingError, 42);
    EXPECT_EQ(machine.callDepth, 3);
    EXPECT_EQ(machine.poppedTag, TagDateTime);
    EXPECT_EQ(popNumber(), 5);
    EXPECT_EQ(describe(workbook->sheetAt(1)->valueOf(5, 7)), "1");
    resetMachine();
}

TEST_F(Machine, neverTouchesTheStickyError)
{
    for (const char16_t* text : {u"abc", u"1e999", u"=1+", u"=Sum(", u"31/31/2000", u"\"open"}) {
        ByteCodeWriter code;
        emitText(code, text);
        emitNumber(code, 1);
        code.emit(OpAdd);
        EXPECT_EQ(outcome(code), "!!Val");
        EXPECT_FALSE(errorStands());
    }
}

} // namespace
} // namespace vorn
