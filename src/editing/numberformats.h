// The number formats that a user chooses from, makes and deletes: what the dialogs offer, and what
// becomes of the answers.
//
// Shape:  formats are indices in the workbook's table.
// Errors: ErrorMemory, sticky; a format that found no room has the index NoFormat.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

constexpr int NoFormat = -1;

// --- The lists of formats

enum class FormatList { Number, DateTime };

struct FormatChoice {
    std::u16string text; // "General", "Text" or a sample
    int format;
};

// The formats of a list in the order of the table, but for "Text", which ends the numbers.
std::vector<FormatChoice> formatChoices(FormatList list);

// The list that has the format; that of numbers for NoFormat.
FormatList formatListOf(int format);

// Takes a format that a user made out of the table; styles that had it are General then, and
// formats behind it have an index less. Answers false for a built-in one.
bool deleteFormat(int format);

// What a list shows after one of its formats was deleted.
int formatAfterDeletion(FormatList list);

// --- Making a number format

struct NumberFormatDraft {
    std::u16string positivePrefix;
    std::u16string positiveSuffix;
    std::u16string negativePrefix;
    std::u16string negativeSuffix;
    int decimals = 0;
    bool thousands = false;
};

// What the lists offer; each also takes what is typed.
struct AffixChoices {
    std::vector<std::u16string> positivePrefixes;
    std::vector<std::u16string> positiveSuffixes;
    std::vector<std::u16string> negativePrefixes;
    std::vector<std::u16string> negativeSuffixes;
};
AffixChoices affixChoices();

// The settings of a format; for one that has none, a plain number with a minus.
NumberFormatDraft numberFormatDraft(int format);

// The index of a format with these settings, which is an old one if there is an equal one.
int addNumberFormat(const NumberFormatDraft& draft);

// --- Making a format of dates and times

constexpr int DatePartCount = 3;
constexpr std::array<std::u16string_view, 6> DateParts = {u"", u"d", u"M", u"MMM", u"yy", u"yyyy"};

struct DateFormatDraft {
    bool hasDate = false;
    std::array<int, DatePartCount> parts = {}; // of DateParts
    std::array<std::u16string, DatePartCount - 1> separators;
    bool hasTime = false;
    int timeForm = 0; // of timeFormSamples
};

std::vector<std::u16string> datePartSamples();
std::vector<std::u16string> timeFormSamples();

// The separators to offer, and the one that stands there already.
std::vector<std::u16string> separatorChoices(std::u16string_view present);

// The settings of a format; those of a short date for one that has none.
DateFormatDraft dateFormatDraft(int format);

// A date may not have two parts of the same kind.
bool isValidDraft(const DateFormatDraft& draft);

// As addNumberFormat; a draft with neither date nor time is the short date.
int addDateFormat(const DateFormatDraft& draft);

} // namespace vorn
