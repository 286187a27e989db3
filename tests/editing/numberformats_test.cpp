#include "editing/numberformats.h"

#include "core/error.h"
#include "core/workbook.h"
#include "numfmt/locale.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Texts = std::vector<std::u16string>;

Texts textsOf(const std::vector<FormatChoice>& choices)
{
    Texts texts;
    for (const FormatChoice& choice : choices)
        texts.push_back(choice.text);
    return texts;
}

int addUserFormat(int decimals, bool thousands = false)
{
    NumberFormatDraft draft = numberFormatDraft(NoFormat);
    draft.decimals = decimals;
    draft.thousands = thousands;
    return addNumberFormat(draft);
}

std::u16string shown(double number, int format)
{
    CellStyle style = defaultStyle();
    style.set(StyleFormat, format);
    workbook->currentSheet->setCell(0, 0, numberCell(number, workbook->addStyle(style)));
    return workbook->currentSheet->cellText(0, 0);
}

class NewFormats : public testing::Test {
protected:
    TestDocument document;
};

// --- The lists

TEST_F(NewFormats, areListedWithSamples)
{
    EXPECT_EQ(textsOf(formatChoices(FormatList::Number)),
              (Texts{u"General", u"1000/-1000", u"1000.00/-1000.00", u"$1,000/($1,000)",
                     u"$1,000.00/($1,000.00)", u"1000.00%/-1000.00%", u"Text"}));
    EXPECT_EQ(textsOf(formatChoices(FormatList::DateTime)),
              (Texts{u"5/23/99", u"23-May-99", u"23-May", u"May-99", u"3:45 PM", u"15:45",
                     u"3:45:10 PM", u"15:45:10", u"5/23/99 15:45"}));
}

TEST_F(NewFormats, areListedByTheirIndices)
{
    const std::vector<FormatChoice> numbers = formatChoices(FormatList::Number);
    EXPECT_EQ(numbers.front().format, 0);
    EXPECT_EQ(numbers.back().format, 15);
    EXPECT_EQ(formatChoices(FormatList::DateTime).front().format, 6);
}

TEST_F(NewFormats, ofTheUserStandBeforeText)
{
    EXPECT_EQ(addUserFormat(1, true), 16);
    const std::vector<FormatChoice> numbers = formatChoices(FormatList::Number);
    ASSERT_EQ(numbers.size(), 8U);
    EXPECT_EQ(numbers[6].text, u"1,000.0/-1,000.0");
    EXPECT_EQ(numbers[6].format, 16);
    EXPECT_EQ(numbers[7].text, u"Text");
}

TEST_F(NewFormats, haveAListEach)
{
    for (int format = 0; format <= 15; ++format)
        EXPECT_EQ(formatListOf(format) == FormatList::DateTime, format >= 6 && format <= 14)
            << format;
    EXPECT_EQ(formatListOf(NoFormat), FormatList::Number);
    EXPECT_EQ(formatListOf(99), FormatList::Number);
}

TEST_F(NewFormats, canBeDeletedIfAUserMadeThem)
{
    const int first = addUserFormat(1);
    const int second = addUserFormat(3);
    ASSERT_EQ(shown(2, first), u"2.0");
    EXPECT_FALSE(deleteFormat(NoFormat));
    EXPECT_FALSE(deleteFormat(15));
    EXPECT_FALSE(deleteFormat(99));
    EXPECT_FALSE(workbook->modified);
    EXPECT_TRUE(deleteFormat(first));
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"2") << "a cell that had it is General";
    EXPECT_EQ(shown(2, second - 1), u"2.000") << "the one behind it moved";
    EXPECT_EQ(formatAfterDeletion(FormatList::Number), 0);
    EXPECT_EQ(formatAfterDeletion(FormatList::DateTime), 6);
}

// --- Number formats

TEST_F(NewFormats, takeTheirAffixesFromTheLocale)
{
    const struct {
        const char* phrase;
        std::u16string_view symbol;
        int position;
        Texts positivePrefixes, positiveSuffixes, negativePrefixes, negativeSuffixes;
    } cases[] = {
        {"the symbol leads",
         u"$", 0,
         {u"", u"$"},
         {u"", u"%"},
         {u"", u"$", u"-", u"(", u"-$", u"($"},
         {u"", u"%", u")"}               },
        {"the symbol leads with a blank",
         u"$", 2,
         {u"", u"$ "},
         {u"", u"%"},
         {u"", u"$ ", u"-", u"(", u"-$ ", u"($ "},
         {u"", u"%", u")"}               },
        {"the symbol trails",
         u"F", 1,
         {u"", u"F"},
         {u"", u"%", u"F"},
         {u"", u"F", u"-", u"(", u"-F", u"(F"},
         {u"", u"%", u"F", u")", u"F)"}  },
        {"the symbol trails with a blank",
         u"F", 3,
         {u"", u"F "},
         {u"", u"%", u" F"},
         {u"", u"F ", u"-", u"(", u"-F ", u"(F "},
         {u"", u"%", u" F", u")", u" F)"}},
    };
    for (const auto& c : cases) {
        localeInfo.currency = c.symbol;
        localeInfo.currencyPosition = c.position;
        const AffixChoices choices = affixChoices();
        EXPECT_EQ(choices.positivePrefixes, c.positivePrefixes) << c.phrase;
        EXPECT_EQ(choices.positiveSuffixes, c.positiveSuffixes) << c.phrase;
        EXPECT_EQ(choices.negativePrefixes, c.negativePrefixes) << c.phrase;
        EXPECT_EQ(choices.negativeSuffixes, c.negativeSuffixes) << c.phrase;
    }
}

TEST_F(NewFormats, beginWithTheSettingsOfAnother)
{
    const struct {
        const char* phrase;
        int format;
        std::u16string_view positivePrefix, positiveSuffix, negativePrefix, negativeSuffix;
        int decimals;
        bool thousands;
    } cases[] = {
        {"none",     NoFormat, u"",  u"",  u"-",  u"",  0, false},
        {"General",  0,        u"",  u"",  u"-",  u"",  0, false},
        {"decimals", 2,        u"",  u"",  u"-",  u"",  2, false},
        {"currency", 4,        u"$", u"",  u"($", u")", 2, true },
        {"percent",  5,        u"",  u"%", u"-",  u"%", 2, false},
        {"a date",   6,        u"",  u"",  u"-",  u"",  0, false},
        {"text",     15,       u"",  u"",  u"-",  u"",  0, false},
    };
    for (const auto& c : cases) {
        const NumberFormatDraft draft = numberFormatDraft(c.format);
        EXPECT_EQ(draft.positivePrefix, c.positivePrefix) << c.phrase;
        EXPECT_EQ(draft.positiveSuffix, c.positiveSuffix) << c.phrase;
        EXPECT_EQ(draft.negativePrefix, c.negativePrefix) << c.phrase;
        EXPECT_EQ(draft.negativeSuffix, c.negativeSuffix) << c.phrase;
        EXPECT_EQ(draft.decimals, c.decimals) << c.phrase;
        EXPECT_EQ(draft.thousands, c.thousands) << c.phrase;
    }
}

TEST_F(NewFormats, areAddedToTheTable)
{
    NumberFormatDraft draft;
    draft.positivePrefix = u"+";
    draft.negativePrefix = u"minus ";
    draft.positiveSuffix = draft.negativeSuffix = u"!";
    draft.decimals = 3;
    draft.thousands = true;
    const int format = addNumberFormat(draft);
    EXPECT_EQ(format, 16);
    EXPECT_TRUE(workbook->isUserFormat(format));
    EXPECT_EQ(shown(1234.5, format), u"+1,234.500!");
    EXPECT_EQ(shown(-1234.5, format), u"minus 1,234.500!");
}

TEST_F(NewFormats, multiplyIfAnyAffixHasAPercentSign)
{
    NumberFormatDraft draft;
    draft.negativeSuffix = u"%";
    EXPECT_EQ(shown(0.5, addNumberFormat(draft)), u"50");
}

TEST_F(NewFormats, areUsedAgainIfTheyAreEqual)
{
    for (int format : {1, 2, 3, 4, 5})
        EXPECT_EQ(addNumberFormat(numberFormatDraft(format)), format) << format;
    EXPECT_EQ(workbook->formats.size(), 16);
    EXPECT_EQ(addUserFormat(7), 16);
    EXPECT_EQ(addUserFormat(7), 16);
    EXPECT_EQ(addUserFormat(8), 17);
}

TEST_F(NewFormats, leaveNothingBehindWhereMemoryIsShort)
{
    for (int refused = 1;; ++refused) {
        AllocationWatch watch(refused);
        NumberFormatDraft draft = numberFormatDraft(4);
        draft.decimals = 9;
        const int format = addNumberFormat(draft);
        const bool failed = watch.refused();
        watch.relent();
        EXPECT_EQ(format, failed ? NoFormat : 16) << refused;
        EXPECT_EQ(workbook->formats.size(), failed ? 16 : 17) << refused;
        EXPECT_EQ(errorState.code, failed ? ErrorMemory : ErrorNone) << refused;
        clearError();
        if (!failed)
            break;
    }
}

// --- Dates and times

TEST_F(NewFormats, showThePartsOfDates)
{
    EXPECT_EQ(datePartSamples(), (Texts{u"", u"23", u"5", u"May", u"99", u"1999"}));
    EXPECT_EQ(timeFormSamples(), (Texts{u"3:45 PM", u"15:45", u"3:45:10 PM", u"15:45:10"}));
}

TEST_F(NewFormats, offerSeparatorsOfDates)
{
    const struct {
        char16_t ofLocale;
        std::u16string_view present;
        Texts choices;
    } cases[] = {
        {u'/', u"",   {u"", u"/", u"-"}       },
        {u'/', u"-",  {u"", u"/", u"-"}       },
        {u'/', u", ", {u"", u"/", u"-", u", "}},
        {u'-', u"",   {u"", u"-"}             },
        {u'.', u"/",  {u"", u".", u"-", u"/"} },
    };
    for (const auto& c : cases) {
        localeInfo.dateSeparator = c.ofLocale;
        EXPECT_EQ(separatorChoices(c.present), c.choices);
    }
}

int indexOfPart(std::u16string_view part)
{
    for (std::size_t index = 0; index < DateParts.size(); ++index) {
        if (DateParts[index] == part)
            return static_cast<int>(index);
    }
    return -1;
}

DateFormatDraft dateDraft(std::u16string_view first, std::u16string_view separator1,
                          std::u16string_view second, std::u16string_view separator2,
                          std::u16string_view third)
{
    DateFormatDraft draft;
    draft.hasDate = true;
    draft.parts = {indexOfPart(first), indexOfPart(second), indexOfPart(third)};
    draft.separators = {std::u16string(separator1), std::u16string(separator2)};
    return draft;
}

// A date format with this pattern.
int formatWithPattern(std::u16string_view date, std::u16string_view time = u"")
{
    NumberFormat record;
    makeDateFormat(record, date, time);
    const int count = workbook->formats.size();
    const int format = workbook->setFormat(record, -1);
    if (workbook->formats.size() == count)
        freeFormatStrings(record);
    return format;
}

TEST_F(NewFormats, takeThePatternsOfDatesApart)
{
    const struct {
        std::u16string_view pattern;
        DateFormatDraft draft;
    } cases[] = {
        {u"M/d/yy",         dateDraft(u"M",    u"/",  u"d",   u"/",  u"yy")  },
        {u"d-MMM-yy",       dateDraft(u"d",    u"-",  u"MMM", u"-",  u"yy")  },
        {u"d-MMM",          dateDraft(u"d",    u"-",  u"MMM", u"",   u"")    },
        {u"yyyy",           dateDraft(u"yyyy", u"",   u"",    u"",   u"")    },
        {u"dMyy",           dateDraft(u"d",    u"",   u"M",   u"",   u"yy")  },
        {u"MMM d, yyyy",    dateDraft(u"MMM",  u" ",  u"d",   u", ", u"yyyy")},
        {u"dd.MM.yyyy",     dateDraft(u"d",    u".",  u"M",   u".",  u"yyyy")},
        {u"dddd, d MMMM y", dateDraft(u"d",    u", ", u"d",   u" ",  u"MMM") },
        {u"'on' d.",        dateDraft(u"d",    u"",   u"",    u"",   u"")    },
    };
    for (const auto& c : cases) {
        const DateFormatDraft draft = dateFormatDraft(formatWithPattern(c.pattern));
        const std::string phrase(c.pattern.begin(), c.pattern.end());
        EXPECT_TRUE(draft.hasDate) << phrase;
        EXPECT_FALSE(draft.hasTime) << phrase;
        EXPECT_EQ(draft.parts, c.draft.parts) << phrase;
        EXPECT_EQ(draft.separators, c.draft.separators) << phrase;
    }
}

TEST_F(NewFormats, findTheFormOfATime)
{
    for (int form = 0; form < 4; ++form) {
        const DateFormatDraft draft = dateFormatDraft(10 + form);
        EXPECT_FALSE(draft.hasDate);
        EXPECT_TRUE(draft.hasTime);
        EXPECT_EQ(draft.timeForm, form);
    }
    const DateFormatDraft both = dateFormatDraft(14);
    EXPECT_TRUE(both.hasDate && both.hasTime);
    EXPECT_EQ(both.timeForm, 1);
}

TEST_F(NewFormats, beginWithTheShortDate)
{
    for (int format : {NoFormat, 0, 15}) {
        const DateFormatDraft draft = dateFormatDraft(format);
        EXPECT_EQ(addDateFormat(draft), 6) << format;
    }
}

TEST_F(NewFormats, refuseADateWithTwoPartsOfAKind)
{
    const struct {
        const char* phrase;
        DateFormatDraft draft;
        bool valid;
    } cases[] = {
        {"three kinds",          dateDraft(u"d",  u"/", u"M",   u"/", u"yy"),   true },
        {"the same part twice",  dateDraft(u"d",  u"/", u"d",   u"/", u"yy"),   false},
        {"two forms of a month", dateDraft(u"M",  u"/", u"MMM", u"/", u"yy"),   false},
        {"first and last",       dateDraft(u"yy", u"/", u"M",   u"/", u"yyyy"), false},
        {"nothing is no kind",   dateDraft(u"",   u"",  u"d",   u"",  u""),     true },
        {"nothing at all",       dateDraft(u"",   u"",  u"",    u"",  u""),     true },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isValidDraft(c.draft), c.valid) << c.phrase;
        DateFormatDraft off = c.draft;
        off.hasDate = false;
        EXPECT_TRUE(isValidDraft(off)) << c.phrase << ", without the date";
    }
}

TEST_F(NewFormats, ofDatesAreAddedOrUsedAgain)
{
    DateFormatDraft time;
    time.hasTime = true;
    time.timeForm = 2;
    DateFormatDraft both = dateDraft(u"yyyy", u"-", u"M", u"-", u"d");
    both.hasTime = true;
    both.timeForm = 3;
    DateFormatDraft emptyWithTime = dateDraft(u"", u"", u"", u"", u"");
    emptyWithTime.hasTime = true;
    const struct {
        const char* phrase;
        DateFormatDraft draft;
        int format;
        std::u16string_view sample;
    } cases[] = {
        {"neither is the short date", {},             6,                                u"5/23/99"},
        {"the short date itself",     dateDraft(u"M", u"/",                             u"d",u"/", u"yy"), 6, u"5/23/99"},
        {"no part is none",                     dateDraft(u"",                                  u"",                                                        u"",u"", u""), 6, u"5/23/99"},
        {"a time",time,12,u"3:45:10 PM"},
        {"a time under an empty date",                          emptyWithTime,                              10,                                                              u"3:45 PM"},
        {"a new date",                         dateDraft(u"d",                                                       u" ",                                                                                                                                              u"MMM",                                                                                                                  u" ", u"yyyy"), 16, u"23 May 1999"},
        {"the same again",                         dateDraft(u"d",u" ",u"MMM",u" ", u"yyyy"), 16, u"23 May 1999"},
        {"separators stand as they are",                       dateDraft(u"d",u"-",u"",u"-", u"yy"), 17, u"23--99"},
        {"both",             both,                           18,                                            u"1999-5-23 15:45:10"},
    };
    for (const auto& c : cases) {
        const int format = addDateFormat(c.draft);
        EXPECT_EQ(format, c.format) << c.phrase;
        for (const FormatChoice& choice : formatChoices(FormatList::DateTime)) {
            if (choice.format == format) {
                EXPECT_EQ(choice.text, c.sample) << c.phrase;
            }
        }
    }
}

} // namespace
} // namespace vorn
