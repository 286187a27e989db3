#include "core/workbook.h"
#include "functions/searchkey.h"
#include "support/cells.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace vorn {
namespace {

CellValue textValue(std::u16string_view text)
{
    CellValue value;
    makeTextValue(value, text);
    return value;
}

// Values of every kind, and texts of all lengths around a word that differ in each of their places,
// some in case only.
std::vector<CellValue> everyKindOfValue()
{
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    std::vector<CellValue> values;
    for (const double number : {-infinite, -2.5, -0.0, 0.0, 2.5, infinite, nothing, -nothing}) {
        values.push_back(CellValue::makeNumber(number));
        values.push_back(CellValue::makeDate(number));
    }
    for (const bool logical : {false, true})
        values.push_back(CellValue::makeLogical(logical));
    for (const CellError error : {CellErrorNull, CellErrorDiv0, CellErrorNA})
        values.push_back(CellValue::makeError(error));
    values.push_back(CellValue::makeBlank());
    values.push_back(CellValue::makeTextIndex(-1));
    const std::u16string_view alphabet = u"abcdefghijk";
    for (std::size_t length = 0; length <= alphabet.size(); ++length) {
        const std::u16string text(alphabet.substr(0, length));
        values.push_back(textValue(text));
        for (std::size_t place = 0; place < length; ++place) {
            for (const char16_t unit : {u'A', u'Z', u'\u00c4', u'\u4e00'}) {
                std::u16string other = text;
                other[place] = unit == u'A' ? static_cast<char16_t>(text[place] - 32) : unit;
                values.push_back(textValue(other));
            }
        }
    }
    for (const std::size_t length : {126U, 127U, 128U, 200U}) {
        values.push_back(textValue(std::u16string(length, u'x')));
        values.push_back(textValue(std::u16string(length - 1, u'x') + u'Y'));
    }
    return values;
}

TEST(SearchKey, answersAsTheComparisonOfValuesDoes)
{
    const TestDocument document;
    std::vector<CellValue> values = everyKindOfValue();
    for (const CellValue& key : values) {
        for (const CellValue& value : values) {
            const int comparison = compareValues(&key, &value, IgnoreCase);
            const auto what = [&] { return describe(key) + " beside " + describe(value); };
            searchOrder(key, [&](const auto& prepared) {
                const Order order = prepared.order(value);
                EXPECT_EQ(order.isEqual, comparison == 0) << what();
                EXPECT_EQ(order.isAbove, comparison > 0) << what();
            });
            searchEqual(key, [&](const auto& prepared) {
                EXPECT_EQ(prepared.isEqual(value), comparison == 0) << what();
            });
        }
    }
    for (CellValue& value : values)
        releaseValue(value);
}

TEST(SearchKey, looksThroughFormulas)
{
    const TestDocument document;
    std::vector<CellValue> values = everyKindOfValue();
    FormulaCell* formula = newFormulaCell({}, -1);
    const CellValue stored = CellValue::makeFormula(formula);
    for (const CellValue& key : {values.front(), values.back(), CellValue::makeLogical(true)}) {
        for (const CellValue& value : values) {
            formula->result = value;
            const int comparison = compareValues(&key, &value, IgnoreCase);
            searchOrder(key, [&](const auto& prepared) {
                EXPECT_EQ(prepared.order(stored).isEqual, comparison == 0) << describe(value);
                EXPECT_EQ(prepared.order(stored).isAbove, comparison > 0) << describe(value);
            });
            searchEqual(key, [&](const auto& prepared) {
                EXPECT_EQ(prepared.isEqual(stored), comparison == 0) << describe(value);
            });
        }
    }
    formula->result = {};
    deleteFormulaCell(formula);
    for (CellValue& value : values)
        releaseValue(value);
}

// An entry from a file may hold units behind the zero that ends its text.
TEST(SearchKey, endsATextAtItsZero)
{
    const TestDocument document;
    const char16_t units[] = u"ab\0xyzxyz";
    CellValue longer = CellValue::makeTextIndex(stringPool->add(units, sizeof units, 1));
    CellValue key = textValue(u"AB");
    searchEqual(key, [&](const auto& prepared) { EXPECT_TRUE(prepared.isEqual(longer)); });
    releaseValue(key);
    key = textValue(u"ab");
    searchEqual(key, [&](const auto& prepared) { EXPECT_TRUE(prepared.isEqual(longer)); });
    searchOrder(key, [&](const auto& prepared) { EXPECT_FALSE(prepared.order(longer).isAbove); });
    releaseValue(key);
    releaseValue(longer);
}

// What the words of a text rest on.
TEST(SearchKey, readsEntriesInWords)
{
    const TestDocument document;
    for (std::size_t length = 0; length < 40; ++length) {
        // A block of that size that was used before, up to its last unit but the zero, is not
        // clean.
        const std::size_t units = (length + 4) / 4 * 4;
        stringPool->release(stringPool->addText(std::u16string(units - 1, u'\uffff')));
        const std::int32_t index = stringPool->addText(std::u16string(length, u'x'));
        const auto* entry = static_cast<const char*>(stringPool->entry(index));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(entry) % EntryWord, 0U);
        const std::size_t bytes = (length + 1) * sizeof(char16_t);
        for (std::size_t place = bytes; place % EntryWord != 0; ++place)
            EXPECT_EQ(entry[place], 0) << length;
        stringPool->release(index);
    }
}

} // namespace
} // namespace vorn
