#include "editing/quickentry.h"

#include "core/workbook.h"
#include "support/cells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Texts = std::vector<std::u16string>;

class QuickEntryTest : public testing::Test {
protected:
    void column(std::initializer_list<std::u16string_view> texts)
    {
        int row = 1;
        for (const std::u16string_view text : texts)
            cells.put("B" + std::to_string(row++), text);
    }
    Texts offered(CaseRule rule = IgnoreCase) const
    {
        return quickEntryTexts(*workbook->currentSheet, 1, rule);
    }

    Cells cells;
};

TEST_F(QuickEntryTest, offersNothingForAnEmptyColumn)
{
    cells.put("A1", u"elsewhere");
    EXPECT_EQ(offered(), Texts());
}

TEST_F(QuickEntryTest, sortsWhatTheColumnHolds)
{
    column({u"pear", u"", u"apple", u"plum", u"fig"});
    EXPECT_EQ(offered(), (Texts{u"apple", u"fig", u"pear", u"plum"}));
}

TEST_F(QuickEntryTest, offersEachTextOnce)
{
    column({u"pear", u"fig", u"pear", u"Pear", u"fig"});
    EXPECT_EQ(offered(), (Texts{u"fig", u"pear"})) << "the first of those that are the same";
    EXPECT_EQ(offered(MatchCase), (Texts{u"Pear", u"fig", u"pear"}));
}

TEST_F(QuickEntryTest, offersTheInputOfNumbersAndDates)
{
    column({u"10", u"9", u"1/2/2000", u"50%", u"TRUE"});
    EXPECT_EQ(offered(), (Texts{u"0.5", u"1/2/00", u"10", u"9", u"true"}))
        << "sorted as texts, not as numbers";
}

TEST_F(QuickEntryTest, leavesFormulasOut)
{
    column({u"=1+1", u"pear", u"=\"x\"", u"'=y"});
    EXPECT_EQ(offered(), Texts{u"pear"}) << "and a text that looks like one";
}

TEST_F(QuickEntryTest, cutsLongTexts)
{
    const std::u16string longText(150, u'a');
    column({longText, longText + u"b", u"b"});
    EXPECT_EQ(offered(), (Texts{std::u16string(100, u'a'), u"b"}))
        << "what differs only behind the cut is the same";
}

TEST_F(QuickEntryTest, stopsWhenThereAreMoreThanEnough)
{
    const auto number = [](int row) {
        return std::u16string(1, static_cast<char16_t>(0x4E00 + row));
    };
    for (int row = 0; row < 60; ++row)
        cells.put("B" + std::to_string(row + 1), number(59 - row));
    EXPECT_EQ(offered().size(), 51U);
    EXPECT_EQ(offered().front(), number(9)) << "those of the first rows";
    EXPECT_EQ(offered().back(), number(59));
}

TEST_F(QuickEntryTest, goesOnPastTheSameTexts)
{
    for (int row = 0; row < 60; ++row)
        cells.put("B" + std::to_string(row + 1), u"same");
    cells.put("B61", u"other");
    EXPECT_EQ(offered(), (Texts{u"other", u"same"}));
}

} // namespace
} // namespace vorn
