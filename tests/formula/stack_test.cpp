// The operations on the evaluation stack, one by one.
#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/machine.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

CellValue sheetRef(ValueTag tag, int first, int last, const RangeRef& range)
{
    CellValue value;
    value.firstSheet = static_cast<std::uint8_t>(first);
    value.lastSheet = static_cast<std::uint8_t>(last);
    value.put(tag, range);
    return value;
}

class Stack : public testing::Test {
protected:
    Stack()
    {
        resetMachine();
        base = machine.stackTop;
        machine.base = {0, 0, 0};
    }
    ~Stack() override
    {
        EXPECT_EQ(machine.stackTop, base);
        machine.pendingError = 0;
    }

    // "2.5", or "0!15" with the error that the pop left.
    static std::string withPending(const std::string& answer)
    {
        const int pending = machine.pendingError;
        machine.pendingError = 0;
        return pending == 0 ? answer : answer + "!" + std::to_string(pending);
    }

    static std::string digits(double number) { return describe(CellValue::makeNumber(number)); }

    Sheet& sheet(int index) { return *workbook->sheetAt(index); }

    TestDocument document;
    const CellValue* base = nullptr;
};

// What each pop makes of each value.
TEST_F(Stack, turnsAValueIntoWhatIsAskedFor)
{
    sheet(0).setCell(3, 2, numberCell(6));
    sheet(1).setCell(3, 2, textCell(u"7"));
    const RangeRef cell{2, 3, 2, 3};
    const RangeRef two{2, 3, 3, 3};
    const CellValue onSecond = sheetRef(TagSheetCellRef, 1, 1, cell);
    const CellValue onBoth = sheetRef(TagSheetCellRef, 0, 1, cell);
    const CellValue onNone = sheetRef(TagSheetCellRef, 9, 9, cell);
    const CellValue rangeOfOne = sheetRef(TagSheetRangeRef, 1, 1, cell);
    const CellValue rangeOfTwo = sheetRef(TagSheetRangeRef, 1, 1, two);
    // As a number, a date, a logical, an integer and a text; "!15" is the error that pends then.
    const struct {
        CellValue value;
        const char* answers;
    } cases[] = {
        {CellValue::makeBlank(),              "0 | 0 | 0 | 0 | none"                              },
        {CellValue::makeLogical(true),        "1 | 0 | 1 | 1 | true"                              },
        {CellValue::makeLogical(false),       "0 | 0 | 0 | 0 | false"                             },
        {CellValue::makeError(42),            "0!42 | 0!42 | 0!42 | 0!42 | none!42"               },
        {CellValue::makeError(0),             "0 | 0 | 0 | 0 | none"                              },
        {textValue(u"5"),                     "5 | 0!15 | 0!15 | 0!15 | 5"                        },
        {textValue(u"-2.5"),                  "-2.5 | 0!15 | 0!15 | 0!15 | -2.5"                  },
        {textValue(u"50%"),                   "50 | 0!15 | 0!15 | 0!15 | 50%"                     },
        {textValue(u"1/2/2000"),              "0!15 | 36527 | 0!15 | 0!15 | 1/2/2000"             },
        {textValue(u"TRUE"),                  "0!15 | 0!15 | 1 | 0!15 | TRUE"                     },
        {textValue(u"false"),                 "0!15 | 0!15 | 0 | 0!15 | false"                    },
        {textValue(u"abc"),                   "0!15 | 0!15 | 0!15 | 0!15 | abc"                   },
        {textValue(u""),                      "0!15 | 0!15 | 0!15 | 0!15 | "                      },
        {textValue(u"=5"),                    "0!15 | 0!15 | 0!15 | 0!15 | =5"                    },
        {textValue(u"1e999"),                 "0!15 | 0!15 | 0!15 | 0!15 | 1e999"                 },
        {CellValue::makeTextIndex(-1),        "0!15 | 0!15 | 0!15 | 0!15 | none"                  },
        {CellValue::makeNumber(2.5),          "2.5 | 2.5 | 1 | 2 | 2.5"                           },
        {CellValue::makeNumber(0),            "0 | 0 | 0 | 0 | 0"                                 },
        {CellValue::makeNumber(-0.25),        "-0.25 | -0.25 | 1 | 0 | -0.25"                     },
        {CellValue::makeDate(36526.5),        "36526.5 | 36526.5 | 0!15 | 36526 | 1/1/00 12:00:00"},
        {CellValue::makeDate(0),              "0 | 0 | 0!15 | 0 | 0:00:00"                        },
        {CellValue::makeInteger(7),           "7 | 7 | 1 | 7 | 7"                                 },
        {CellValue::makeInteger(0),           "0 | 0 | 0 | 0 | 0"                                 },
        {CellValue::makeInteger(4000000000U),
         "4000000000 | 4000000000 | 1 | -294967296 | 4000000000"                                  },
        {CellValue::makeCellRef({2, 3}),      "6 | 6 | 1 | 6 | 6"                                 },
        {CellValue::makeCellRef({9, 9}),      "0 | 0 | 0 | 0 | none"                              },
        {CellValue::makeRangeRef(cell),       "6 | 6 | 1 | 6 | 6"                                 },
        {CellValue::makeRangeRef(two),        "0!23 | 0!23 | 0!23 | 0!23 | none!23"               },
        {onSecond,                            "7 | 0!15 | 0!15 | 0!15 | 7"                        },
        {onBoth,                              "0!23 | 0!23 | 0!23 | 0!23 | none!23"               },
        {rangeOfOne,                          "7 | 0!15 | 0!15 | 0!15 | 7"                        },
        {rangeOfTwo,                          "0!23 | 0!23 | 0!23 | 0!23 | none!23"               },
        {onNone,                              "0!23 | 0!23 | 0!23 | 0!23 | none!23"               },
    };
    for (const auto& c : cases) {
        const std::string what = describe(c.value);
        const auto push = [&c] {
            CellValue copy;
            copyValue(c.value, copy);
            pushRaw(copy);
        };
        push();
        std::string answers = withPending(digits(popNumber()));
        push();
        answers += " | " + withPending(digits(popDateNumber()));
        push();
        answers += " | " + withPending(std::to_string(popLogical()));
        push();
        answers += " | " + withPending(std::to_string(popInteger()));
        push();
        CellValue text = CellValue::makeTextIndex(popText());
        const std::u16string units = valueTextPointer(text);
        answers +=
            " | " +
            withPending(text.textIndex() == -1 ? "none" : std::string(units.begin(), units.end()));
        EXPECT_EQ(answers, c.answers) << what;
        releaseValue(text);
        // Only the row's own value is left of its text.
        if (c.value.tag == TagText && c.value.textIndex() != -1) {
            EXPECT_EQ(stringPool->refCount(c.value.textIndex()), 1) << what;
        }
    }
    EXPECT_FALSE(errorStands());
}

TEST_F(Stack, countsAConditionThatCannotBeToldAsTrue)
{
    const struct {
        CellValue value;
        bool answer;
    } cases[] = {
        {CellValue::makeBlank(),                false},
        {CellValue::makeLogical(true),          true },
        {CellValue::makeLogical(false),         false},
        {CellValue::makeError(7),               true },
        {CellValue::makeError(0),               true },
        {textValue(u"true"),                    true },
        {textValue(u"FALSE"),                   false},
        {textValue(u"x"),                       true },
        {textValue(u""),                        true },
        {textValue(u"0"),                       true },
        {CellValue::makeNumber(0),              false},
        {CellValue::makeNumber(-1),             true },
        {CellValue::makeNumber(NotANumber),     true },
        {CellValue::makeDate(0),                true },
        {CellValue::makeDate(5),                true },
        {CellValue::makeInteger(0),             false},
        {CellValue::makeInteger(3),             true },
        {CellValue::makeCellRef({9, 9}),        false},
        {CellValue::makeRangeRef({0, 0, 1, 1}), true },
    };
    for (const auto& c : cases) {
        pushRaw(c.value);
        EXPECT_EQ(popCondition(), c.answer) << describe(c.value);
        machine.pendingError = 0;
    }
    // An error that pends from before does not make a condition true.
    setPending(7);
    pushLogical(false);
    EXPECT_FALSE(popCondition());
}

TEST_F(Stack, cutsNumbersAHairBelowTheNextWhole)
{
    const struct {
        double number;
        std::int32_t integer;
    } cases[] = {
        {2.99999,       3        },
        {2.9,           2        },
        {3,             3        },
        {2.99998,       2        },
        {-2.99999,      -3       },
        {-2.9,          -2       },
        {0.5,           0        },
        {-0.5,          0        },
        {0.999995,      1        },
        {-0.999995,     -1       },
        {2147483647,    INT32_MAX},
        {2147483648,    INT32_MAX},
        {-2147483648.0, INT32_MIN},
        {-3e9,          INT32_MIN},
        {1e300,         INT32_MAX},
        {-1e300,        INT32_MIN},
        {Infinity,      INT32_MAX},
        {-Infinity,     INT32_MIN},
        {NotANumber,    0        },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(cutToInteger(c.number), c.integer) << c.number;
        pushNumber(c.number);
        EXPECT_EQ(popInteger(), c.integer) << c.number;
        pushDate(c.number);
        EXPECT_EQ(popInteger(), c.integer) << c.number;
    }
}

TEST_F(Stack, remembersTheTagOfWhatWasPoppedLast)
{
    pushNumber(1);
    pushDate(2);
    popNumber();
    EXPECT_TRUE(poppedDate());
    popNumber();
    EXPECT_FALSE(poppedDate());
    sheet(0).setCell(0, 0, dateCell(5));
    pushRaw(CellValue::makeCellRef({0, 0}));
    popNumber();
    EXPECT_TRUE(poppedDate()) << "what the reference means counts";
    pushLogical(true);
    popNumber();
    EXPECT_FALSE(poppedDate());
}

TEST_F(Stack, popsErrorNumbers)
{
    pushError(42);
    EXPECT_EQ(popErrorNumber(), 42);
    const CellValue text = textValue(u"text");
    pushRaw(text);
    EXPECT_EQ(popErrorNumber(), 0);
    EXPECT_FALSE(stringPool->isLive(text.textIndex()));
    sheet(0).setCell(0, 0, errorCell(7));
    pushRaw(CellValue::makeCellRef({0, 0}));
    EXPECT_EQ(popErrorNumber(), 7);
    pushRaw(CellValue::makeRangeRef({0, 0, 1, 1}));
    EXPECT_EQ(popErrorNumber(), 23);
    EXPECT_EQ(machine.pendingError, 0);
}

TEST_F(Stack, handsARecordOverAsItIs)
{
    const CellValue text = textValue(u"text");
    pushRaw(text);
    EXPECT_EQ(popRaw().textIndex(), text.textIndex());
    EXPECT_EQ(stringPool->refCount(text.textIndex()), 1);
    const CellValue reference = sheetRef(TagSheetRangeRef, 2, 1, {5, 6, 3, 4});
    pushRaw(reference);
    const CellValue popped = popRaw();
    EXPECT_EQ(std::memcmp(&popped, &reference, sizeof popped), 0);
}

TEST_F(Stack, readsACellThroughAReference)
{
    sheet(0).setCell(1, 1, textCell(u"text"));
    sheet(0).setCell(2, 2, constantFormula(4, {2, 2, 0}));
    sheet(0).cellAt(2, 2)->value.formula()->result = textValue(u"result");
    sheet(2).setCell(1, 1, logicalCell(true));
    sheet(0).setCell(3, 3, blankCell(5));
    const struct {
        CellValue reference;
        const char* value;
    } cases[] = {
        {CellValue::makeCellRef({1, 1}),        "\"text\""   },
        {CellValue::makeCellRef({2, 2}),        "\"result\"" },
        {CellValue::makeCellRef({3, 3}),        "blank"      },
        {CellValue::makeCellRef({4, 4}),        "blank"      },
        {CellValue::makeCellRef({60000, 200}),  "blank"      },
        {CellValue::makeRangeRef({1, 1, 1, 1}), "\"text\""   },
        {CellValue::makeRangeRef({1, 1, 1, 2}), "!!Ref"      },
        {CellValue::makeRangeRef({2, 1, 1, 1}), "!!Ref"      },
        {sheetRef(TagSheetCellRef,              2,             2, {1, 1, 0, 0}), "TRUE"},
        {sheetRef(TagSheetCellRef,                        1,                               2, {1, 1, 0, 0}), "!!Ref"},
        {sheetRef(TagSheetCellRef,              3,   3, {1, 1, 0, 0}), "!!Ref"},
        {sheetRef(TagSheetCellRef,                        255,                              245, {1, 1, 0, 0}), "!!Ref"},
        {sheetRef(TagSheetRangeRef,              2,             2, {1, 1, 1, 1}), "TRUE"},
        {sheetRef(TagSheetRangeRef,                        2,                              2, {1, 1, 2, 1}), "!!Ref"},
        {sheetRef(TagSheetRangeRef,              0, 2, {1, 1, 1, 1}), "!!Ref"},
        {CellValue::makeNumber(5),                        "5"                             },
        {CellValue::makeInteger(5),             "integer 5"           },
    };
    for (const auto& c : cases) {
        pushRaw(c.reference);
        dereferenceTop();
        EXPECT_EQ(describe(topValue()), c.value) << describe(c.reference);
        popMany(1);
    }
    EXPECT_EQ(stringPool->refCount(sheet(0).cellAt(1, 1)->value.textIndex()), 1);
}

TEST_F(Stack, readsTheSheetOfTheFormula)
{
    sheet(1).setCell(0, 0, numberCell(11));
    machine.base.sheet = 1;
    pushRaw(CellValue::makeCellRef({0, 0}));
    EXPECT_EQ(popNumber(), 11);
    pushRaw(CellValue::makeRangeRef({0, 0, 0, 0}));
    EXPECT_EQ(popNumber(), 11);
}

TEST_F(Stack, popsARangeOfAnyReference)
{
    machine.base.sheet = 1;
    const struct {
        CellValue value;
        bool answer;
        int firstSheet, lastSheet;
        RangeRef range;
    } cases[] = {
        {CellValue::makeCellRef({2, 3}),        true,            1,                                   1,             {2, 3, 2, 3}                                                       },
        {CellValue::makeRangeRef({2, 3, 4, 5}), true,            1,                                   1,             {2, 3, 4, 5}                                                       },
        {CellValue::makeRangeRef({4, 5, 2, 3}), true,            1,                                   1,             {4, 5, 2, 3}                                                       },
        {sheetRef(TagSheetCellRef,              0,               2,                                   {2, 3, 0, 0}), true,                                                                0, 2, {2, 3, 2, 3}},
        {sheetRef(TagSheetRangeRef,                                    2,                                       0,                                                                          {2, 3, 4, 5}),                                                               true,                                                                                              0, 2, {2, 3, 4, 5}},
        {CellValue::makeNumber(5),                        false,                                   0,0,{}},
        {CellValue::makeBlank(),              false, 0, 0,                  {}                                                                                                                                         },
        {CellValue::makeError(7),                false,             0,                                               0,                                                           {}                                                                                                          },
    };
    for (const auto& c : cases) {
        RangeArgument argument;
        pushRaw(c.value);
        EXPECT_EQ(popRange(argument), c.answer) << describe(c.value);
        EXPECT_EQ(machine.stackTop, base);
        EXPECT_EQ(machine.pendingError, c.answer ? 0 : 23) << describe(c.value);
        machine.pendingError = 0;
        pushRaw(c.value);
        RangeArgument tried;
        EXPECT_EQ(tryPopRange(tried), c.answer) << describe(c.value);
        EXPECT_EQ(machine.stackTop, c.answer ? base : base - 1);
        EXPECT_EQ(machine.pendingError, 0);
        popMany(c.answer ? 0 : 1);
        if (c.answer) {
            EXPECT_EQ(argument.firstSheet, c.firstSheet);
            EXPECT_EQ(argument.lastSheet, c.lastSheet);
            EXPECT_EQ(argument.range, c.range);
            EXPECT_EQ(tried.range, c.range);
        }
    }
    const CellValue text = textValue(u"text");
    pushRaw(text);
    RangeArgument argument;
    EXPECT_FALSE(popRange(argument));
    EXPECT_FALSE(stringPool->isLive(text.textIndex()));
}

TEST_F(Stack, startsAWalkOverAReference)
{
    sheet(0).setCell(0, 0, numberCell(1));
    sheet(1).setCell(1, 1, numberCell(2));
    CellIterator iterator;
    pushRaw(sheetRef(TagSheetRangeRef, 1, 0, {0, 0, 9, 9}));
    ASSERT_TRUE(popRangeIterator(iterator));
    const CellValue* first = iterator.nextValue();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(describe(*first), "1");
    const CellValue* second = iterator.nextValue();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(describe(*second), "2");
    EXPECT_EQ(iterator.nextValue(), nullptr);
    pushNumber(5);
    EXPECT_FALSE(popRangeIterator(iterator));
    EXPECT_EQ(popNumber(), 5) << "it is still there";
}

TEST_F(Stack, popsManyAndReleasesThem)
{
    const CellValue text = textValue(u"text");
    pushRaw(text);
    pushNumber(1);
    pushNewText(u"other");
    popMany(0);
    popMany(3);
    EXPECT_FALSE(stringPool->isLive(text.textIndex()));
    EXPECT_TRUE(machine.machineHealthy);
}

TEST_F(Stack, pushesWholeRecords)
{
    // Bytes of a reference to sheets lie in every record beforehand.
    const CellValue dirty = sheetRef(TagSheetRangeRef, 3, 4, {1, 2, 3, 4});
    const struct {
        void (*push)();
        CellValue value;
    } cases[] = {
        {[] { pushNumber(2.5); },   CellValue::makeNumber(2.5)  },
        {[] { pushDate(2.5); },     CellValue::makeDate(2.5)    },
        {[] { pushLogical(true); }, CellValue::makeLogical(true)},
        {[] { pushError(7); },      CellValue::makeError(7)     },
        {[] { pushBlank(); },       CellValue::makeBlank()      },
        {[] { pushText(-1); },      CellValue::makeTextIndex(-1)},
    };
    for (const auto& c : cases) {
        pushRaw(dirty);
        popRaw();
        c.push();
        const CellValue pushed = popRaw();
        EXPECT_EQ(std::memcmp(&pushed, &c.value, sizeof pushed), 0) << describe(c.value);
    }
    pushNewText(u"new");
    CellValue text = popRaw();
    EXPECT_EQ(describe(text), "\"new\"");
    EXPECT_EQ(stringPool->refCount(text.textIndex()), 1);
    releaseValue(text);
}

TEST_F(Stack, turnsAPendingErrorIntoTheResult)
{
    EXPECT_TRUE(checkPending());
    setPending(42);
    EXPECT_FALSE(checkPending());
    EXPECT_EQ(machine.pendingError, 0);
    EXPECT_EQ(popErrorNumber(), 42);
    EXPECT_TRUE(checkPending());
}

TEST_F(Stack, keepsTheLastErrorThatWasPopped)
{
    // The arguments are popped from the right, so the leftmost error is the one that shows.
    pushError(7);
    pushNumber(1);
    pushError(42);
    popNumber();
    popNumber();
    popNumber();
    EXPECT_EQ(machine.pendingError, 7);
}

// With nothing above the base every pop ends the run and gives something harmless.
TEST_F(Stack, endsTheRunWhenThereIsNothingToPop)
{
    const struct {
        const char* phrase;
        void (*pop)();
    } cases[] = {
        {"number",    [] { EXPECT_EQ(popNumber(), 0); }        },
        {"date",      [] { EXPECT_EQ(popDateNumber(), 0); }    },
        {"logical",   [] { EXPECT_FALSE(popLogical()); }       },
        {"condition", [] { popCondition(); }                   },
        {"integer",   [] { EXPECT_EQ(popInteger(), 0); }       },
        {"text",      [] { EXPECT_EQ(popText(), -1); }         },
        {"error",     [] { EXPECT_EQ(popErrorNumber(), 0); }   },
        {"raw",       [] { EXPECT_EQ(popRaw().tag, TagBlank); }},
        {"many",      [] { popMany(3); }                       },
        {"range",
         [] {
             RangeArgument argument;
             EXPECT_FALSE(popRange(argument));
         }                                                     },
    };
    for (const auto& c : cases) {
        machine.machineRunning = machine.machineHealthy = true;
        c.pop();
        EXPECT_FALSE(machine.machineRunning) << c.phrase;
        EXPECT_FALSE(machine.machineHealthy) << c.phrase;
        EXPECT_EQ(machine.stackTop, base) << c.phrase;
        machine.pendingError = 0;
    }
    resetMachine();
    RangeArgument argument;
    EXPECT_FALSE(tryPopRange(argument));
    EXPECT_EQ(topValue().tag, TagBlank);
    dereferenceTop();
    EXPECT_TRUE(machine.machineHealthy) << "looking ends nothing";
}

// A run begins above what another has on the stack, and cannot reach it.
TEST_F(Stack, endsAtTheBaseOfTheRun)
{
    pushNumber(1);
    const CellValue* outer = machine.runBase;
    machine.runBase = machine.stackTop;
    pushNumber(2);
    EXPECT_EQ(popNumber(), 2);
    EXPECT_EQ(popNumber(), 0);
    EXPECT_FALSE(machine.machineHealthy);
    machine.machineRunning = machine.machineHealthy = true;
    machine.runBase = base == outer ? machine.stackTop + 1 : machine.runBase;
    EXPECT_EQ(popNumber(), 1);
}

} // namespace
} // namespace vorn
