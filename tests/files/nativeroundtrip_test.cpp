// What is saved and opened again is the same document, and its next save the same file.

#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "support/documenttext.h"
#include "support/filedrecords.h"
#include "support/nativefile.h"
#include "support/randomdocument.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

// The first line in which two descriptions differ.
std::string firstDifference(const std::vector<std::string>& before,
                            const std::vector<std::string>& after)
{
    const std::size_t count = std::max(before.size(), after.size());
    for (std::size_t line = 0; line < count; ++line) {
        const std::string was = line < before.size() ? before[line] : "nothing";
        const std::string is = line < after.size() ? after[line] : "nothing";
        if (was != is)
            return "was " + was + "\nis  " + is;
    }
    return "";
}

class NativeRoundTripTest : public testing::Test {
protected:
    TestDocument document;
};

TEST_F(NativeRoundTripTest, bringsBackAnyDocument)
{
    constexpr unsigned Documents = 300;
    for (unsigned seed = 1; seed <= Documents; ++seed) {
        Dice dice(seed);
        makeRandomDocument(dice);
        const std::vector<std::string> before = describeDocument();
        const std::string saved = savedBytes();
        ASSERT_EQ(loadBytes(saved), ErrorNone) << "seed " << seed;
        ASSERT_EQ(firstDifference(before, describeDocument()), "") << "seed " << seed;
        ASSERT_TRUE(savedBytes() == saved) << "seed " << seed;
        ASSERT_EQ(errorState.code, ErrorNone) << "seed " << seed;
    }
}

TEST_F(NativeRoundTripTest, leavesTheDocumentAsItIs)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Dice dice(seed);
        makeRandomDocument(dice);
        const std::vector<std::string> before = describeDocument();
        savedBytes();
        EXPECT_EQ(firstDifference(before, describeDocument()), "") << "seed " << seed;
    }
}

TEST_F(NativeRoundTripTest, bringsBackANewDocument)
{
    workbook->setCurrentSheet(workbook->sheets[1]);
    const std::vector<std::string> before = describeDocument();
    const std::string saved = savedBytes();
    EXPECT_EQ(loadBytes(saved), ErrorNone);
    EXPECT_EQ(firstDifference(before, describeDocument()), "");
    EXPECT_EQ(workbook->currentSheet, workbook->sheets[1]);
    EXPECT_TRUE(savedBytes() == saved);
}

TEST_F(NativeRoundTripTest, bringsBackTheLongestTextsAndFormulas)
{
    Sheet& sheet = *workbook->currentSheet;
    sheet.setCell(0, 0, textCell(std::u16string(32764, u'x')));
    ByteCodeWriter writer;
    for (int count = 0; count < 65530; ++count)
        writer.emit(OpParen);
    sheet.setCell(1, 0, formulaCell(writer, {0, 1, 0}));
    const std::vector<std::string> before = describeDocument();
    const std::string saved = savedBytes();
    ASSERT_EQ(errorState.code, ErrorNone);
    EXPECT_EQ(loadBytes(saved), ErrorNone);
    EXPECT_TRUE(firstDifference(before, describeDocument()).empty());
    EXPECT_TRUE(savedBytes() == saved);
}

TEST_F(NativeRoundTripTest, givesACellTheStyleThatItShowed)
{
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    Sheet& sheet = *workbook->currentSheet;
    sheet.columns.setColumnStyle(0, 0, workbook->addStyle(style));
    sheet.setCell(0, 0, numberCell(1));
    EXPECT_EQ(loadBytes(savedBytes()), ErrorNone);
    EXPECT_EQ(workbook->currentSheet->cellAt(0, 0)->style, 1);
    EXPECT_EQ(workbook->styles[1].get(StyleWrap), 1);
    EXPECT_EQ(workbook->currentSheet->cellAt(0, 1), nullptr);
}

TEST_F(NativeRoundTripTest, keepsTheResultsOfFormulasThatHaveNoCodeOfTheirOwn)
{
    ByteCodeWriter writer;
    writer.emit(OpPushError, std::uint16_t{CellErrorNA});
    placeholderFormula = writer.finishInPool();
    Sheet& sheet = *workbook->currentSheet;
    for (int column = 0; column < 2; ++column) {
        const CellPosition place{0, static_cast<std::uint16_t>(column), 0};
        FormulaCell* cell = newFormulaCell(place, column == 0 ? placeholderFormula : -1);
        cell->result = CellValue::makeNumber(column + 5);
        sheet.setCell(column, 0, Cell{CellValue::makeFormula(cell), -1});
    }
    EXPECT_EQ(loadBytes(savedBytes()), ErrorNone);
    const Sheet& opened = *workbook->currentSheet;
    EXPECT_EQ(opened.valueOf(0, 0).number(), 5);
    EXPECT_EQ(opened.cellInput(0, 0), u"=!!NA");
    EXPECT_EQ(opened.valueOf(1, 0).number(), 6);
    EXPECT_EQ(opened.cellAt(1, 0)->value.tag, TagNumber) << "there is nothing to calculate";
}

TEST_F(NativeRoundTripTest, dropsEntriesThatNobodyOwns)
{
    stringPool->add(u"x", 4, 0);
    workbook->currentSheet->setCell(0, 0, textCell(u"owned"));
    const std::vector<std::string> before = describeDocument();
    EXPECT_EQ(loadBytes(savedBytes()), ErrorNone);
    EXPECT_EQ(firstDifference(before, describeDocument()), "");
    EXPECT_EQ(savedPayloads(3), std::vector<std::string>{bare("01000000")});
}

} // namespace
} // namespace vorn
