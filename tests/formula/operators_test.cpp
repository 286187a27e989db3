#include "formula/operators.h"

#include "core/pool.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/coderun.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

CellValue number(double value)
{
    return CellValue::makeNumber(value);
}
CellValue date(double serial)
{
    return CellValue::makeDate(serial);
}
CellValue logical(bool value)
{
    return CellValue::makeLogical(value);
}
CellValue error(int value)
{
    return CellValue::makeError(value);
}

// The operation over two operands; what they own stays with the caller.
std::string operate(const CellValue& left, OpCode opcode, const CellValue& right)
{
    ByteCodeWriter code;
    for (const CellValue& operand : {left, right}) {
        CellValue copy;
        copyValue(operand, copy);
        emitValue(code, copy);
    }
    code.emit(opcode);
    return outcome(code);
}

std::string operate(OpCode opcode, const CellValue& operand)
{
    ByteCodeWriter code;
    CellValue copy;
    copyValue(operand, copy);
    emitValue(code, copy);
    code.emit(opcode);
    return outcome(code);
}

class Operators : public testing::Test {
protected:
    TestDocument document;
};

TEST_F(Operators, calculate)
{
    const struct {
        CellValue left, right;
        const char *sum, *difference, *product, *quotient;
    } cases[] = {
        {number(6),                             number(3),                 "9",           "3",           "18",         "2"          },
        {number(-6),                            number(0),                 "-6",          "-6",          "-0",         "!!Div0"     },
        {number(0),                             number(0),                 "0",           "0",           "0",          "!!Div0"     },
        {CellValue{},                           number(4),                 "4",           "-4",          "0",          "0"          },
        {number(4),                             CellValue{},               "4",           "4",           "0",          "!!Div0"     },
        {logical(true),                         logical(true),             "2",           "0",           "1",          "1"          },
        {logical(true),                         logical(false),            "1",           "1",           "0",          "!!Div0"     },
        {textValue(u"6"),                       number(3),                 "9",           "3",           "18",         "2"          },
        {number(6),                             textValue(u" 3 "),         "9",           "3",           "18",         "2"          },
        {textValue(u"50%"),                     number(2),                 "52",          "48",          "100",        "25"         },
        {textValue(u""),                        number(1),                 "!!Val",       "!!Val",       "!!Val",      "!!Val"      },
        {textValue(u"abc"),                     number(1),                 "!!Val",       "!!Val",       "!!Val",      "!!Val"      },
        {number(1),                             textValue(u"1/2/2000"),    "!!Val",       "!!Val",       "!!Val",      "!!Val"      },
        {error(42),                             number(1),                 "!!NA",        "!!NA",        "!!NA",       "!!NA"       },
        {number(1),                             error(42),                 "!!NA",        "!!NA",        "!!NA",       "!!NA"       },
        {error(7),                              error(42),                 "!!Div0",      "!!Div0",      "!!Div0",     "!!Div0"     },
        {error(42),                             textValue(u"abc"),         "!!NA",        "!!NA",        "!!NA",       "!!NA"       },
        {textValue(u"abc"),                     error(42),                 "!!Val",       "!!Val",       "!!Val",      "!!Val"      },
        {error(42),                             number(0),                 "!!NA",        "!!NA",        "!!NA",       "!!NA"       },
        {date(6),                               number(3),                 "date 9",      "date 3",      "date 18",    "date 2"     },
        {number(6),                             date(3),                   "date 9",      "date 3",      "date 18",    "date 2"     },
        {date(6),                               date(3),                   "date 9",      "date 3",      "date 18",    "date 2"     },
        {date(6),                               CellValue{},               "date 6",      "date 6",      "date 0",     "!!Div0"     },
        {date(6),                               textValue(u"3"),           "date 9",      "date 3",      "date 18",    "date 2"     },
        {textValue(u"6"),                       date(3),                   "date 9",      "date 3",      "date 18",    "date 2"     },
        {date(6),                               error(42),                 "!!NA",        "!!NA",        "!!NA",       "!!NA"       },
        {CellValue::makeInteger(6),             number(3),                 "9",           "3",           "18",         "2"          },
        {number(6),                             CellValue::makeInteger(3), "9",           "3",           "18",         "2"          },
        {CellValue::makeInteger(4000000000U),   number(1),                 "4000000001",  "3999999999",  "4000000000",
         "4000000000"                                                                                                               },
        {CellValue::makeRangeRef({0, 0, 1, 1}), number(1),                 "!!Ref",       "!!Ref",       "!!Ref",      "!!Ref"      },
        {number(1e308),                         number(-1e308),            "0",           "!!Num",       "!!Num",      "-1"         },
        {date(1e308),                           number(10),                "date 1e+308", "date 1e+308", "date inf",   "date 1e+307"},
    };
    for (const auto& c : cases) {
        const std::string what = describe(c.left) + " and " + describe(c.right);
        EXPECT_EQ(operate(c.left, OpAdd, c.right), c.sum) << what;
        EXPECT_EQ(operate(c.left, OpSubtract, c.right), c.difference) << what;
        EXPECT_EQ(operate(c.left, OpMultiply, c.right), c.product) << what;
        EXPECT_EQ(operate(c.left, OpDivide, c.right), c.quotient) << what;
    }
}

// The same through references to cells, which plain arithmetic takes a quicker road for.
TEST_F(Operators, calculateWithWhatCellsHold)
{
    Sheet& sheet = *workbook->sheetAt(0);
    sheet.setCell(0, 0, numberCell(6));
    sheet.setCell(1, 0, numberCell(3));
    sheet.setCell(2, 0, dateCell(3));
    sheet.setCell(3, 0, textCell(u"3"));
    sheet.setCell(4, 0, textCell(u"abc"));
    sheet.setCell(5, 0, errorCell(42));
    sheet.setCell(6, 0, logicalCell(true));
    sheet.setCell(7, 0, blankCell(1));
    sheet.setCell(8, 0, numberCell(0));
    const struct {
        int left, right;
        const char *sum, *quotient;
    } cases[] = {
        {0,   1,   "9",      "2"     },
        {0,   2,   "date 9", "date 2"},
        {2,   1,   "date 6", "date 1"},
        {0,   3,   "9",      "2"     },
        {0,   4,   "!!Val",  "!!Val" },
        {5,   0,   "!!NA",   "!!NA"  },
        {0,   6,   "7",      "6"     },
        {0,   7,   "6",      "!!Div0"},
        {7,   0,   "6",      "0"     },
        {0,   8,   "6",      "!!Div0"},
        {0,   200, "6",      "!!Div0"},
        {200, 0,   "6",      "0"     },
    };
    for (const auto& c : cases) {
        for (const OpCode opcode : {OpAdd, OpDivide}) {
            ByteCodeWriter code;
            code.emit(OpPushCell, CellRef{0, static_cast<std::uint16_t>(c.left)});
            code.emit(OpPushCell, CellRef{0, static_cast<std::uint16_t>(c.right)});
            code.emit(opcode);
            EXPECT_EQ(outcome(code), opcode == OpAdd ? c.sum : c.quotient)
                << c.left << " and " << c.right;
        }
    }
}

TEST_F(Operators, negate)
{
    const struct {
        CellValue operand;
        const char* answer;
    } cases[] = {
        {number(5),                 "-5"     },
        {date(5),                   "date -5"},
        {CellValue{},               "-0"     },
        {logical(true),             "-1"     },
        {textValue(u"5"),           "-5"     },
        {CellValue::makeInteger(5), "-5"     },
 // An error pends and is lost at the end.
        {error(7),                  "0"      },
        {textValue(u"abc"),         "-0"     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(operate(OpNegate, c.operand), c.answer) << describe(c.operand);
}

TEST_F(Operators, leaveTheErrorOfANegationPending)
{
    // -(1/0)+1: the sum finds the error of the operand that was negated.
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitValue(code, error(7));
                  code.emit(OpNegate);
                  emitValue(code, number(1));
                  code.emit(OpAdd);
              }),
              "!!Div0");
    EXPECT_EQ(outcome([](ByteCodeWriter& code) {
                  emitValue(code, error(7));
                  code.emit(OpNegate);
                  code.emit(OpPercent);
              }),
              "!!Div0");
}

TEST_F(Operators, takePercent)
{
    const struct {
        CellValue operand;
        const char* answer;
    } cases[] = {
        {number(5),         "0.05" },
        {date(5),           "0.05" }, // and is no date any more
        {CellValue{},       "0"    },
        {logical(true),     "0.01" },
        {textValue(u"5%"),  "0.05" },
        {textValue(u"abc"), "!!Val"},
        {error(42),         "!!NA" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(operate(OpPercent, c.operand), c.answer) << describe(c.operand);
    CellValue exact = outcomeValue([](ByteCodeWriter& code) {
        emitValue(code, number(35));
        code.emit(OpPercent);
    });
    EXPECT_EQ(exact.number(), 35 * 0.01);
}

TEST_F(Operators, raiseToAPower)
{
    const struct {
        CellValue base, exponent;
        const char* answer;
    } cases[] = {
        {number(2),         number(10),       "1024"  },
        {number(2),         number(-1),       "0.5"   },
        {number(4),         number(0.5),      "2"     },
        {number(5),         number(0),        "1"     },
        {number(0),         number(0),        "!!Num" },
        {number(0),         number(-1),       "0"     },
        {number(0),         number(2),        "0"     },
        {number(-0.0),      number(0),        "!!Num" },
        {CellValue{},       CellValue{},      "!!Num" },
        {number(-8),        number(1.0 / 3),  "!!Num" },
        {number(-2),        number(3),        "-8"    },
        {number(10),        number(400),      "!!Num" },
        {number(1),         number(Infinity), "1"     },
        {date(3),           number(2),        "9"     }, // no date any more
        {number(3),         date(2),          "9"     },
        {textValue(u"3"),   textValue(u"2"),  "9"     },
        {textValue(u"abc"), number(2),        "!!Val" },
        {number(2),         error(42),        "!!NA"  },
        {error(7),          error(42),        "!!Div0"},
        {number(0),         error(42),        "!!NA"  },
    };
    for (const auto& c : cases)
        EXPECT_EQ(operate(c.base, OpPower, c.exponent), c.answer)
            << describe(c.base) << " to " << describe(c.exponent);
}

TEST_F(Operators, joinTexts)
{
    const struct {
        CellValue left, right;
        const char* answer;
    } cases[] = {
        {textValue(u"ab"),          textValue(u"cd"),      "\"abcd\""           },
        {textValue(u""),            textValue(u""),        "\"\""               },
        {CellValue{},               CellValue{},           "\"\""               },
        {CellValue{},               textValue(u"x"),       "\"x\""              },
        {number(1.5),               textValue(u" apples"), "\"1.5 apples\""     },
        {logical(true),             logical(false),        "\"truefalse\""      },
        {date(36526.5),             CellValue{},           "\"1/1/00 12:00:00\""},
        {CellValue::makeInteger(7), number(7),             "\"77\""             },
        {error(7),                  textValue(u"x"),       "!!Div0"             },
        {textValue(u"x"),           error(7),              "!!Div0"             },
        {error(42),                 error(7),              "!!NA"               },
    };
    for (const auto& c : cases)
        EXPECT_EQ(operate(c.left, OpConcat, c.right), c.answer)
            << describe(c.left) << " & " << describe(c.right);
}

TEST_F(Operators, ownNothingOfWhatTheyJoined)
{
    const std::int32_t next = stringPool->addText(u"probe");
    stringPool->release(next);
    CellValue joined = outcomeValue([](ByteCodeWriter& code) {
        emitText(code, u"ab");
        emitText(code, u"cd");
        code.emit(OpConcat);
    });
    EXPECT_EQ(stringPool->refCount(joined.textIndex()), 1);
    EXPECT_EQ(stringPool->beginScan(), 1);
    stringPool->endScan();
    releaseValue(joined);
}

// --- Comparison

constexpr int Kinds = 13;
constexpr OpCode Comparisons[] = {OpEqual,     OpLess,         OpGreater,
                                  OpLessEqual, OpGreaterEqual, OpNotEqual};

// The operands of the table below, in its order.
CellValue operand(int kind)
{
    switch (kind) {
    case 0:
        return {};
    case 1:
        return logical(false);
    case 2:
        return logical(true);
    case 3:
        return textValue(u"");
    case 4:
        return textValue(u"abc");
    case 5:
        return textValue(u"1");
    case 6:
        return textValue(u"TRUE");
    case 7:
        return number(0);
    case 8:
        return number(1);
    case 9:
        return number(-1);
    case 10:
        return date(1);
    case 11:
        return error(CellErrorDiv0);
    default:
        return CellValue::makeInteger(1);
    }
}

// For each left operand and each right one the answers to = < > <= >= <>: T and F, D for !!Div0, V
// for !!Val, K where the run leaves two records and the old result stands. What an integer on the
// left of a blank gives is nobody's business.
constexpr const char* Answers[Kinds][Kinds] = {
  // blank   FALSE     TRUE      ""        "abc"     "1"       "TRUE"    0         1         -1
  // date 1  !!Div0    integer 1
    {"TFFTTF", "TFFTTF", "FTFTFT", "TFFTTF", "FTFTFT", "FTFTFT", "FTFTFT", "TFFTTF", "FTFTFT",
     "FFTFTT", "FTFTFT", "FFFTTT", "KKKKKK"}, // blank
    {"TFFTTF", "TFFTTF", "FTFTFT", "FFTFTT", "FFTFTT", "FFTFTT", "FTFTFT", "TFFTTF", "FTFTFT",
     "FFTFTT", "FTFTFT", "FFFTTT", "KKKKKK"}, // FALSE
    {"FTTFFT", "FFTFTT", "TFFTTF", "FFTFTT", "FFTFTT", "FFTFTT", "TFFTTF", "FFTFTT", "TFFTTF",
     "FFTFTT", "TFFTTF", "FFFTTT", "KKKKKK"}, // TRUE
    {"TFFTTF", "VVVTTT", "VVVTTT", "TFFTTF", "FTFTFT", "FTFTFT", "FTFTFT", "FFVTTT", "FTVTFT",
     "FFVTTT", "FTVTFT", "FFFTTT", "KKKKKK"}, // ""
    {"FTTFFT", "VVVTTT", "VVVTTT", "FFTFTT", "TFFTTF", "FFTFTT", "FTFTFT", "FFVTTT", "FTVTFT",
     "FFVTTT", "FTVTFT", "FFFTTT", "KKKKKK"}, // "abc"
    {"FTTFFT", "VVVTTT", "VVVTTT", "FFTFTT", "FTFTFT", "TFFTTF", "FTFTFT", "FFTFTT", "TFFTTF",
     "FFTFTT", "TFFTTF", "FFFTTT", "KKKKKK"}, // "1"
    {"FTTFFT", "FFTFTT", "TFFTTF", "FFTFTT", "FFTFTT", "FFTFTT", "TFFTTF", "FFVTTT", "FTVTFT",
     "FFVTTT", "FTVTFT", "FFFTTT", "KKKKKK"}, // "true"
    {"TFFTTF", "TFFTTF", "FTFTFT", "FFTFTT", "FTFTFT", "FTFTFT", "FTFTFT", "TFFTTF", "FTFTFT",
     "FFTFTT", "FTFTFT", "FFFTTT", "KKKKKK"}, // 0
    {"FFTFTT", "FFTFTT", "TFFTTF", "FFTFTT", "FTFTFT", "TFFTTF", "FTFTFT", "FFTFTT", "TFFTTF",
     "FFTFTT", "TFFTTF", "FFFTTT", "KKKKKK"}, // 1
    {"FTFTFT", "FFTFTT", "TFFTTF", "FFTFTT", "FTFTFT", "FTFTFT", "FTFTFT", "FTFTFT", "FTFTFT",
     "TFFTTF", "FTFTFT", "FFFTTT", "KKKKKK"}, // -1
    {"FFTFTT", "VVVTTT", "VVVTTT", "FFTFTT", "FTFTFT", "FFTFTT", "FTFTFT", "FFTFTT", "TFFTTF",
     "FFTFTT", "TFFTTF", "FFFTTT", "KKKKKK"}, // date 1
    {"FFFTTT", "DDDTTT", "DDDTTT", "DDDTTT", "DDDTTT", "DDDTTT", "DDDTTT", "DFDTTT", "DFDTTT",
     "DFDTTT", "DFDTTT", "FFFTTT", "KKKKKK"}, // !!Div0
    {nullptr,  "FFTFTT", "TFFTTF", "FFTFTT", "FTFTFT", "TFFTTF", "FTFTFT", "FFTFTT", "TFFTTF",
     "FFTFTT", "TFFTTF", "FFFTTT", "KKKKKK"}, // integer 1
};

std::string answerOf(const std::string& result)
{
    if (result == "TRUE" || result == "FALSE" || result == "kept")
        return result == "kept" ? "K" : result.substr(0, 1);
    return result == "!!Div0" ? "D" : result == "!!Val" ? "V" : result;
}

TEST_F(Operators, compareByTheKindOnTheRight)
{
    for (int left = 0; left < Kinds; ++left) {
        for (int right = 0; right < Kinds; ++right) {
            if (Answers[left][right] == nullptr)
                continue;
            CellValue leftValue = operand(left);
            CellValue rightValue = operand(right);
            std::string answers;
            for (const OpCode opcode : Comparisons)
                answers += answerOf(operate(leftValue, opcode, rightValue));
            EXPECT_EQ(answers, Answers[left][right])
                << describe(leftValue) << " and " << describe(rightValue);
            releaseValue(leftValue);
            releaseValue(rightValue);
        }
    }
}

TEST_F(Operators, compareTextsWithoutCaseAndNumbersExactly)
{
    const struct {
        CellValue left, right;
        const char* answers;
    } cases[] = {
        {textValue(u"abc"),            textValue(u"ABC"),    "TFFTTF"},
        {textValue(u"abc"),            textValue(u"abd"),    "FTFTFT"},
        {textValue(u"\u00c4"),         textValue(u"\u00e4"), "TFFTTF"},
        {textValue(u"abc"),            textValue(u"ab"),     "FFTFTT"},
        {number(0.1 + 0.2),            number(0.3),          "FFTFTT"},
        {number(0.0),                  number(-0.0),         "TFFTTF"},
        {number(1),                    date(1),              "TFFTTF"},
        {number(10),                   textValue(u"9"),      "FTFTFT"},
        {date(36526),                  textValue(u"1/1/00"), "TFFTTF"},
        {textValue(u"1/1/2000"),       date(36526),          "FTVTFT"},
        {CellValue::makeTextIndex(-1), textValue(u""),       "TFFTTF"},
        {number(1),                    textValue(u"abc"),    "FTFTFT"},
    };
    for (const auto& c : cases) {
        std::string answers;
        for (const OpCode opcode : Comparisons)
            answers += answerOf(operate(c.left, opcode, c.right));
        EXPECT_EQ(answers, c.answers) << describe(c.left) << " and " << describe(c.right);
    }
}

TEST_F(Operators, compareWhatCellsHold)
{
    Sheet& sheet = *workbook->sheetAt(0);
    sheet.setCell(0, 0, numberCell(5));
    sheet.setCell(1, 0, textCell(u"text"));
    const struct {
        CellRef left, right;
        const char* answers;
    } cases[] = {
        {{0, 0}, {0, 0}, "TFFTTF"},
        {{0, 0}, {0, 9}, "FFTFTT"},
        {{0, 9}, {0, 0}, "FTFTFT"},
        {{0, 1}, {0, 9}, "FTTFFT"},
        {{0, 1}, {0, 0}, "FTVTFT"},
        {{0, 0}, {0, 1}, "FTFTFT"},
        {{0, 9}, {0, 9}, "TFFTTF"},
    };
    for (const auto& c : cases) {
        std::string answers;
        for (const OpCode opcode : Comparisons)
            answers += answerOf(
                operate(CellValue::makeCellRef(c.left), opcode, CellValue::makeCellRef(c.right)));
        EXPECT_EQ(answers, c.answers) << c.left.column << " and " << c.right.column;
    }
    const CellValue two = CellValue::makeRangeRef({0, 0, 1, 1});
    EXPECT_EQ(operate(number(1), OpEqual, two), "FALSE") << "an error on the right";
    EXPECT_EQ(operate(two, OpEqual, number(1)), "!!Ref");
}

// An error that a comparison leaves pending is found by the next operation that asks.
TEST_F(Operators, leaveTheErrorOfAComparisonPending)
{
    const struct {
        const char* phrase;
        CellValue left;
        OpCode opcode;
        CellValue right;
        const char* answer;
    } cases[] = {
        {"error on the right",          number(1),         OpEqual,     error(7),    "!!Div0"},
        {"error beside a blank",        error(7),          OpEqual,     CellValue{}, "!!Div0"},
        {"less with an error",          error(7),          OpLess,      number(1),   "!!Div0"},
        {"less with a text",            textValue(u"abc"), OpLess,      number(1),   "!!Val" },
        {"an error in at most",         error(7),          OpLessEqual, number(1),   "!!Div0"},
        {"a text that is just unequal", textValue(u"abc"), OpEqual,     number(1),   "0"     },
    };
    for (const auto& c : cases) {
        ByteCodeWriter code;
        emitValue(code, c.left);
        emitValue(code, c.right);
        code.emit(c.opcode);
        emitValue(code, number(0));
        code.emit(OpAdd);
        EXPECT_EQ(outcome(code), c.answer) << c.phrase;
    }
}

} // namespace
} // namespace vorn
