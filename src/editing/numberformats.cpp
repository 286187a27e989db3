#include "editing/numberformats.h"

#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "numfmt/locale.h"
#include "numfmt/render.h"
#include "numfmt/serial.h"
#include "platform/platform.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr double SampleNumber = 1000;
constexpr double SamplePercentage = 10;
constexpr double SampleSerial = 36303.6563657407; // 23 May 1999, 15:45:10

using Texts = std::vector<std::u16string>;

const NumberFormat* formatAt(int format)
{
    return format >= 0 && format < workbook->formats.size() ? &workbook->formats[format] : nullptr;
}

std::u16string sample(const CellValue& value, int format)
{
    std::u16string text;
    renderValue(value, format, 0, text, nullptr);
    return text;
}

std::u16string numberSample(int format)
{
    if (workbook->formats[format].general != 0)
        return u"General";
    const bool percent = workbook->formats[format].percent != 0;
    const double number = percent ? SamplePercentage : SampleNumber;
    return sample(CellValue::makeNumber(number), format) + u'/' +
           sample(CellValue::makeNumber(-number), format);
}

LocalTime sampleTime()
{
    LocalTime time;
    serialToParts(SampleSerial, time);
    return time;
}

// Hands a record to the table, or drops it for one that is there.
int storeFormat(NumberFormat& record)
{
    const int count = workbook->formats.size();
    const int index = errorState.code == ErrorMemory ? count : workbook->setFormat(record, -1);
    if (workbook->formats.size() == count)
        freeFormatStrings(record);
    return index < workbook->formats.size() ? index : NoFormat;
}

// --- Currency, as the locale writes it

bool symbolTrails()
{
    return localeInfo.currencyPosition % 2 != 0;
}

std::u16string symbolGap()
{
    return std::u16string(localeInfo.currencyPosition >= 2 ? 1 : 0, u' ');
}

// --- Patterns of dates

const std::u16string& timePattern(int form)
{
    const std::u16string* const forms[] = {&localeInfo.time12, &localeInfo.time24,
                                           &localeInfo.time12Seconds, &localeInfo.time24Seconds};
    return *forms[form];
}
constexpr int TimeFormCount = 4;

bool isPartLetter(char16_t unit)
{
    return unit == u'd' || unit == u'M' || unit == u'y';
}

// The part of the list that comes closest to a run of one letter.
int partOf(std::u16string_view run)
{
    int closest = 0;
    for (int part = 1; part < std::ssize(DateParts); ++part) {
        const std::u16string_view candidate = DateParts[static_cast<std::size_t>(part)];
        if (candidate.front() == run.front() && (closest == 0 || candidate.size() <= run.size()))
            closest = part;
    }
    return closest;
}

// Takes a pattern apart. What comes before the first part, and behind the third, is not kept.
void readDatePattern(DateFormatDraft& draft, std::u16string_view pattern)
{
    std::size_t part = 0;
    std::size_t at = 0;
    while (at < pattern.size() && part < draft.parts.size()) {
        const std::size_t start = at;
        if (isPartLetter(pattern[at])) {
            at = std::min(pattern.find_first_not_of(pattern[at], at), pattern.size());
            draft.parts[part++] = partOf(pattern.substr(start, at - start));
            continue;
        }
        while (at < pattern.size() && !isPartLetter(pattern[at]))
            ++at;
        if (part > 0 && at < pattern.size() && part < draft.parts.size())
            draft.separators[part - 1] = pattern.substr(start, at - start);
    }
}

std::u16string datePattern(const DateFormatDraft& draft)
{
    std::u16string pattern;
    for (std::size_t part = 0; part < draft.parts.size(); ++part) {
        if (part > 0)
            pattern += draft.separators[part - 1];
        pattern += DateParts[static_cast<std::size_t>(draft.parts[part])];
    }
    return pattern;
}

} // namespace

// --- The lists of formats

std::vector<FormatChoice> formatChoices(FormatList list)
{
    std::vector<FormatChoice> choices;
    std::vector<FormatChoice> texts;
    for (int format = 0; format < workbook->formats.size(); ++format) {
        const FormatKind kind = workbook->formats[format].kind;
        if (formatListOf(format) != list)
            continue;
        if (kind == FormatText)
            texts.push_back({u"Text", format});
        else if (kind == FormatNumber)
            choices.push_back({numberSample(format), format});
        else
            choices.push_back({sample(CellValue::makeDate(SampleSerial), format), format});
    }
    choices.insert(choices.end(), texts.begin(), texts.end());
    return choices;
}

FormatList formatListOf(int format)
{
    const NumberFormat* record = formatAt(format);
    return record != nullptr && record->kind == FormatDate ? FormatList::DateTime
                                                           : FormatList::Number;
}

bool deleteFormat(int format)
{
    if (!workbook->removeFormat(format))
        return false;
    dropFormatFromSteps(format);
    workbook->modified = true;
    return true;
}

int formatAfterDeletion(FormatList list)
{
    return list == FormatList::DateTime ? FormatIndexShortDate : FormatIndexGeneral;
}

// --- Making a number format

AffixChoices affixChoices()
{
    const std::u16string leading = localeInfo.currency + symbolGap();
    const std::u16string trailing = symbolGap() + localeInfo.currency;
    AffixChoices choices;
    choices.positivePrefixes = {u"", leading};
    choices.negativePrefixes = {u"", leading, u"-", u"(", u"-" + leading, u"(" + leading};
    choices.positiveSuffixes = {u"", u"%"};
    choices.negativeSuffixes = {u"", u"%", u")"};
    if (symbolTrails()) {
        choices.positiveSuffixes.push_back(trailing);
        choices.negativeSuffixes = {u"", u"%", trailing, u")", trailing + u")"};
    }
    return choices;
}

NumberFormatDraft numberFormatDraft(int format)
{
    const NumberFormat* record = formatAt(format);
    NumberFormatDraft draft;
    if (record == nullptr || record->kind != FormatNumber || record->general != 0) {
        draft.negativePrefix = u"-";
        return draft;
    }
    draft.positivePrefix = formatString(record->positivePrefix);
    draft.positiveSuffix = formatString(record->positiveSuffix);
    draft.negativePrefix = formatString(record->negativePrefix);
    draft.negativeSuffix = formatString(record->negativeSuffix);
    draft.decimals = record->decimals;
    draft.thousands = record->thousands != 0;
    return draft;
}

int addNumberFormat(const NumberFormatDraft& draft)
{
    NumberFormat record;
    makeNumberFormat(record, false, draft.thousands, draft.decimals, draft.positivePrefix,
                     draft.positiveSuffix, draft.negativePrefix, draft.negativeSuffix);
    return storeFormat(record);
}

// --- Making a format of dates and times

std::vector<std::u16string> datePartSamples()
{
    Texts samples;
    for (std::u16string_view part : DateParts)
        samples.push_back(part.empty() ? std::u16string()
                                       : platform.localeSource->dateText(sampleTime(), part));
    return samples;
}

std::vector<std::u16string> timeFormSamples()
{
    Texts samples;
    for (int form = 0; form < TimeFormCount; ++form)
        samples.push_back(platform.localeSource->timeText(sampleTime(), timePattern(form)));
    return samples;
}

std::vector<std::u16string> separatorChoices(std::u16string_view present)
{
    Texts choices = {u""};
    const std::u16string ofLocale(1, localeInfo.dateSeparator);
    for (const std::u16string_view separator :
         {std::u16string_view(ofLocale), std::u16string_view(u"-"), present}) {
        if (std::find(choices.begin(), choices.end(), separator) == choices.end())
            choices.emplace_back(separator);
    }
    return choices;
}

DateFormatDraft dateFormatDraft(int format)
{
    const NumberFormat* record = formatAt(format);
    if (record == nullptr || record->kind != FormatDate)
        record = &workbook->formats[FormatIndexShortDate];
    DateFormatDraft draft;
    draft.hasDate = record->datePattern != nullptr;
    draft.hasTime = record->timePattern != nullptr;
    readDatePattern(draft, formatString(record->datePattern));
    for (int form = 0; form < TimeFormCount; ++form) {
        if (timePattern(form) == formatString(record->timePattern))
            draft.timeForm = form;
    }
    return draft;
}

bool isValidDraft(const DateFormatDraft& draft)
{
    if (!draft.hasDate)
        return true;
    std::u16string letters;
    for (int part : draft.parts) {
        const std::u16string_view pattern = DateParts[static_cast<std::size_t>(part)];
        if (pattern.empty())
            continue;
        if (letters.find(pattern.front()) != letters.npos)
            return false;
        letters += pattern.front();
    }
    return true;
}

int addDateFormat(const DateFormatDraft& draft)
{
    const std::u16string date = draft.hasDate ? datePattern(draft) : u"";
    const std::u16string time = draft.hasTime ? timePattern(draft.timeForm) : u"";
    // What has neither would show nothing at all.
    if (date.empty() && time.empty())
        return FormatIndexShortDate;
    NumberFormat record;
    makeDateFormat(record, date, time);
    return storeFormat(record);
}

} // namespace vorn
