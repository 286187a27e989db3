#include "core/value.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/pool.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace vorn {
namespace {

using Image = std::uint8_t[12];

void expectImage(const CellValue& value, const Image& image, const char* phrase)
{
    std::uint8_t bytes[sizeof(CellValue)];
    std::memcpy(bytes, &value, sizeof bytes);
    for (int index = 0; index < 12; ++index)
        EXPECT_EQ(bytes[index], image[index]) << phrase << ", byte " << index;
}

CellValue sheetValue(ValueTag tag, int first, int last, const RangeRef& range)
{
    CellValue value;
    value.firstSheet = static_cast<std::uint8_t>(first);
    value.lastSheet = static_cast<std::uint8_t>(last);
    if (tag == TagSheetCellRef)
        value.put(tag, range.first());
    else
        value.put(tag, range);
    return value;
}

TEST(CellValue, hasTheBytesThatFilesAndCodeHold)
{
    const RangeRef range{0x0102, 3, 0x3fff, 255};
    const struct {
        const char* phrase;
        CellValue value;
        Image image;
    } cases[] = {
        {"blank",                     CellValue::makeBlank(),               {}                                          },
        {"true",                      CellValue::makeLogical(true),         {1, 0, 0, 0, 1}                             },
        {"false",                     CellValue::makeLogical(false),        {1}                                         },
        {"division by zero",          CellValue::makeError(7),              {2, 0, 0, 0, 7}                             },
        {"not available",             CellValue::makeError(42),             {2, 0, 0, 0, 42}                            },
        {"text",                      CellValue::makeTextIndex(0x01020304), {3, 0, 0, 0, 4, 3, 2, 1}                    },
        {"the empty text",            CellValue::makeTextIndex(-1),         {3, 0, 0, 0, 255, 255, 255, 255}            },
        {"one",                       CellValue::makeNumber(1),             {4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xf0, 0x3f}  },
        {"minus two and a half",
         CellValue::makeNumber(-2.5),
         {4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x04, 0xc0}                                                                     },
        {"noon of 1 January 2000",
         CellValue::makeDate(36526.5),
         {13, 0, 0, 0, 0, 0, 0, 0, 0xd0, 0xd5, 0xe1, 0x40}                                                              },
        {"cell",                      CellValue::makeCellRef({0x0102, 3}),  {6, 0, 0, 0, 2, 1, 3, 0}                    },
        {"range",                     CellValue::makeRangeRef(range),       {7, 0, 0, 0, 2, 1, 3, 0, 0xff, 0x3f, 255, 0}},
        {"cell on sheets",            sheetValue(TagSheetCellRef,           1,                                            2, range), {8, 0, 1, 2, 2, 1, 3, 0}},
        {"range on sheets",
         sheetValue(TagSheetRangeRef,                                 255,                                                                             245, range),
         {9, 0, 255, 245, 2, 1, 3, 0, 0xff, 0x3f, 255, 0}},
        {"integer", CellValue::makeInteger(0xfffefdfc),  {11, 0, 0, 0, 0xfc, 0xfd, 0xfe, 0xff}},
    };
    for (const auto& c : cases)
        expectImage(c.value, c.image, c.phrase);
}

TEST(CellValue, isReadFromItsBytes)
{
    const Image image = {9, 0, 3, 5, 2, 1, 3, 0, 0xff, 0x3f, 255, 0};
    CellValue value;
    std::memcpy(&value, image, sizeof image);
    EXPECT_EQ(describe(value), "sheets 3-5 range 3,258:255,16383");
    EXPECT_EQ(value.cellRef(), (CellRef{0x0102, 3}));
    EXPECT_EQ(CellValue::makeNumber(0.1).number(), 0.1);
    EXPECT_EQ(CellValue::makeInteger(4000000000U).integer(), 4000000000U);
    EXPECT_EQ(CellValue::makeError(-5).error(), -5);
}

TEST(CellValue, knowsItsTagsByNumber)
{
    const int tags[] = {TagBlank,        TagLogical,       TagError,         TagText,
                        TagNumber,       TagFormula,       TagCellRef,       TagRangeRef,
                        TagSheetCellRef, TagSheetRangeRef, TagReturnAddress, TagInteger};
    for (int tag = 0; tag < 12; ++tag)
        EXPECT_EQ(tags[tag], tag);
    EXPECT_EQ(TagDateTime, 13);
}

TEST(CellError, hasATextForEachNumber)
{
    const struct {
        int error;
        const char16_t* text;
    } cases[] = {
        {0,  u"!!Null"},
        {7,  u"!!Div0"},
        {15, u"!!Val" },
        {23, u"!!Ref" },
        {29, u"!!Name"},
        {36, u"!!Num" },
        {42, u"!!NA"  },
        {1,  u"Err1"  },
        {43, u"Err43" },
        {-1, u"Err-1" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(cellErrorText(c.error), c.text) << c.error;
}

class ValueTest : public testing::Test {
protected:
    TestDocument document;
};

TEST_F(ValueTest, entersATextWithoutReleasingTheOldContent)
{
    CellValue value = textValue(u"old");
    const std::int32_t old = value.textIndex();
    makeTextValue(value, u"new");
    EXPECT_EQ(value.tag, TagText);
    EXPECT_NE(value.textIndex(), old);
    EXPECT_EQ(std::u16string(valueTextPointer(value)), u"new");
    EXPECT_EQ(stringPool->refCount(value.textIndex()), 1);
    EXPECT_EQ(stringPool->refCount(old), 1);
}

TEST_F(ValueTest, readsTheEmptyTextByIndexOrByEntry)
{
    const CellValue none = CellValue::makeTextIndex(-1);
    const CellValue entry = textValue(u"");
    EXPECT_NE(entry.textIndex(), -1);
    EXPECT_EQ(std::u16string(valueTextPointer(none)), u"");
    EXPECT_EQ(std::u16string(valueTextPointer(entry)), u"");
    EXPECT_EQ(compareValues(&none, &entry, MatchCase), 0);
    EXPECT_EQ(compareValues(&entry, &none, IgnoreCase), 0);
}

TEST_F(ValueTest, countsACopyOfAText)
{
    const CellValue value = textValue(u"shared");
    CellValue copy = CellValue::makeNumber(3);
    copyValue(value, copy);
    EXPECT_EQ(copy.textIndex(), value.textIndex());
    EXPECT_EQ(stringPool->refCount(value.textIndex()), 2);
    CellValue none;
    copyValue(CellValue::makeTextIndex(-1), none);
    EXPECT_EQ(none.textIndex(), -1);
}

TEST_F(ValueTest, copiesAllTwelveBytes)
{
    const Image image = {9, 1, 3, 5, 2, 1, 3, 0, 0xff, 0x3f, 255, 7};
    CellValue value;
    std::memcpy(&value, image, sizeof image);
    CellValue copy;
    copyValue(value, copy);
    expectImage(copy, image, "copy");
}

TEST_F(ValueTest, releasesWhatItOwnsAndBecomesBlank)
{
    CellValue text = textValue(u"gone");
    const std::int32_t index = text.textIndex();
    releaseValue(text);
    EXPECT_EQ(text.tag, TagBlank);
    EXPECT_FALSE(stringPool->isLive(index));
    for (CellValue value : {CellValue::makeNumber(1), CellValue::makeError(7),
                            CellValue::makeTextIndex(-1), CellValue::makeCellRef({1, 2})}) {
        releaseValue(value);
        EXPECT_EQ(value.tag, TagBlank);
    }
}

TEST_F(ValueTest, releasesAFormulaWithItsRecordCodeAndResult)
{
    Cell cell = constantFormula(1, {0, 0, 0});
    FormulaCell* formula = cell.value.formula();
    const std::int32_t code = formula->formula;
    formula->result = textValue(u"result");
    const std::int32_t result = formula->result.textIndex();
    calcChain.append(formula);
    formulaPool->addRef(code);

    releaseValue(cell.value, RemoveFromChain);
    EXPECT_EQ(cell.value.tag, TagBlank);
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(formulaPool->refCount(code), 1);
    EXPECT_FALSE(stringPool->isLive(result));
    formulaPool->release(code);
    EXPECT_FALSE(formulaPool->isLive(code));
}

TEST_F(ValueTest, leavesTheChainAloneIfAsked)
{
    Cell kept = constantFormula(1, {0, 0, 0});
    Cell other = constantFormula(2, {1, 0, 0});
    calcChain.append(other.value.formula());
    calcChain.sort();
    releaseValue(kept.value, KeepOnChain);
    EXPECT_EQ(calcChain.first(), other.value.formula());
    EXPECT_FALSE(calcChain.needsSort());
    releaseValue(other.value);
}

TEST_F(ValueTest, doesNotReleaseThePlaceholderFormula)
{
    Cell cell = constantFormula(1, {0, 0, 0});
    const std::int32_t code = cell.value.formula()->formula;
    placeholderFormula = code;
    releaseValue(cell.value);
    EXPECT_TRUE(formulaPool->isLive(code));
    EXPECT_EQ(formulaPool->refCount(code), 1);
}

// --- Order

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr char16_t HighUnit[] = {0xffff, 0};
constexpr char16_t Surrogate[] = {0xd800, 0};

int signOf(int number)
{
    return (number > 0) - (number < 0);
}

TEST_F(ValueTest, sortsKindsInTheirOrder)
{
    // Each kind before all that follow, whatever the values.
    const CellValue ascending[] = {
        CellValue::makeNumber(Infinity), CellValue::makeDate(-5), textValue(u""),
        CellValue::makeLogical(false),   CellValue::makeError(0), CellValue::makeBlank(),
    };
    for (int a = 0; a < 6; ++a) {
        for (int b = 0; b < 6; ++b) {
            if (a != b) {
                EXPECT_EQ(compareValues(&ascending[a], &ascending[b], MatchCase), a < b ? -1 : 1)
                    << describe(ascending[a]) << " to " << describe(ascending[b]);
            }
        }
    }
}

TEST_F(ValueTest, sortsAMissingCellBehindEverything)
{
    EXPECT_EQ(compareValues(nullptr, nullptr, MatchCase), 0);
    for (const CellValue& value :
         {CellValue::makeNumber(1), CellValue::makeDate(1), textValue(u"z"),
          CellValue::makeLogical(true), CellValue::makeError(42), CellValue::makeBlank()}) {
        EXPECT_EQ(compareValues(&value, nullptr, MatchCase), -1) << describe(value);
        EXPECT_EQ(compareValues(nullptr, &value, MatchCase), 1) << describe(value);
    }
}

TEST_F(ValueTest, comparesWithinAKind)
{
    const struct {
        const char* phrase;
        CellValue a, b;
        int order;
    } cases[] = {
        {"numbers",                              CellValue::makeNumber(1),          CellValue::makeNumber(2),          -1},
        {"equal numbers",                        CellValue::makeNumber(2),          CellValue::makeNumber(2),          0 },
        {"the two zeros",                        CellValue::makeNumber(0.0),        CellValue::makeNumber(-0.0),       0 },
        {"a hair apart",                         CellValue::makeNumber(0.1 + 0.2),  CellValue::makeNumber(0.3),        1 },
        {"infinities",                           CellValue::makeNumber(-Infinity),  CellValue::makeNumber(Infinity),   -1},
        {"dates",                                CellValue::makeDate(2),            CellValue::makeDate(1.5),          1 },
        {"equal dates",                          CellValue::makeDate(2),            CellValue::makeDate(2),            0 },
        {"not a number",                         CellValue::makeNumber(NotANumber), CellValue::makeNumber(1),          -1},
        {"to not a number",                      CellValue::makeNumber(1),          CellValue::makeNumber(NotANumber), -1},
        {"not a date",                           CellValue::makeDate(NotANumber),   CellValue::makeDate(NotANumber),   -1},
        {"false and true",                       CellValue::makeLogical(false),     CellValue::makeLogical(true),      -1},
        {"true and false",                       CellValue::makeLogical(true),      CellValue::makeLogical(false),     1 },
        {"true and true",                        CellValue::makeLogical(true),      CellValue::makeLogical(true),      0 },
        {"errors by number",                     CellValue::makeError(0),           CellValue::makeError(7),           -1},
        {"the last error",                       CellValue::makeError(42),          CellValue::makeError(36),          1 },
        {"equal errors",                         CellValue::makeError(15),          CellValue::makeError(15),          0 },
        {"errors far apart",                     CellValue::makeError(INT32_MAX),   CellValue::makeError(INT32_MIN),   1 },
        {"blanks",                               CellValue::makeBlank(),            CellValue::makeBlank(),            0 },
        {"references, which have no order",      CellValue::makeCellRef({1, 2}),
         CellValue::makeCellRef({3, 4}),                                                                               0 },
        {"number before date of the same float", CellValue::makeNumber(1),          CellValue::makeDate(1),
         -1                                                                                                              },
        {"date behind a greater number",         CellValue::makeDate(1),            CellValue::makeNumber(99),         1 },
        {"a kind without a place comes first",   CellValue::makeInteger(9),         CellValue::makeNumber(1),
         -1                                                                                                              },
    };
    for (const auto& c : cases)
        EXPECT_EQ(signOf(compareValues(&c.a, &c.b, MatchCase)), c.order) << c.phrase;
}

TEST_F(ValueTest, comparesTextsByUnit)
{
    const struct {
        const char* phrase;
        const char16_t *a, *b;
        int matching, ignoring;
    } cases[] = {
        {"equal",                         u"abc",    u"abc",    0,  0 },
        {"case apart",                    u"abc",    u"ABC",    1,  0 },
        {"a beginning first",             u"ab",     u"abc",    -1, -1},
        {"the empty text first",          u"",       u"a",      -1, -1},
        {"capitals before small letters", u"B",      u"a",      -1, 1 },
        {"but not in one case",           u"b",      u"A",      1,  1 },
        {"between the cases",             u"_",      u"a",      -1, -1},
        {"between the cases, from above", u"_",      u"A",      1,  -1},
        {"a letter with a dot",           u"\u00c4", u"\u00e4", -1, 0 },
        {"Greek",                         u"\u03a9", u"\u03c9", -1, 0 },
        {"high units count as units",     HighUnit,  Surrogate, 1,  1 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(signOf(compareTexts(c.a, c.b, MatchCase)), c.matching) << c.phrase;
        EXPECT_EQ(signOf(compareTexts(c.b, c.a, MatchCase)), -c.matching) << c.phrase;
        EXPECT_EQ(signOf(compareTexts(c.a, c.b, IgnoreCase)), c.ignoring) << c.phrase;
        EXPECT_EQ(signOf(compareTexts(c.b, c.a, IgnoreCase)), -c.ignoring) << c.phrase;
        const CellValue a = textValue(c.a);
        const CellValue b = textValue(c.b);
        EXPECT_EQ(signOf(compareValues(&a, &b, MatchCase)), c.matching) << c.phrase;
        EXPECT_EQ(signOf(compareValues(&a, &b, IgnoreCase)), c.ignoring) << c.phrase;
    }
}

} // namespace
} // namespace vorn
