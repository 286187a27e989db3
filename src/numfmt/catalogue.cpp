#include "numfmt/catalogue.h"

#include "core/heap.h"
#include "numfmt/locale.h"

#include <algorithm>
#include <string>

namespace vorn {

namespace {

struct Affixes {
    std::u16string positivePrefix;
    std::u16string positiveSuffix;
    std::u16string negativePrefix;
    std::u16string negativeSuffix;
};

bool isNegativeInParentheses(int negativeCurrency)
{
    return negativeCurrency == 0 || negativeCurrency == 4 || negativeCurrency == 14 ||
           negativeCurrency == 15;
}

Affixes currencyAffixes()
{
    const LocaleInfo& locale = localeInfo;
    const bool parentheses = isNegativeInParentheses(locale.negativeCurrency);
    const std::u16string gap(locale.currencyPosition >= 2 ? 1 : 0, u' ');
    const std::u16string sign(1, parentheses ? u'(' : u'-');
    Affixes affixes;
    if (locale.currencyPosition % 2 == 0) {
        affixes.positivePrefix = locale.currency + gap;
        affixes.negativePrefix = sign + affixes.positivePrefix;
        // Also behind a minus: users and their files know the format like this.
        affixes.negativeSuffix += u')';
    } else {
        affixes.positiveSuffix = gap + locale.currency;
        affixes.negativePrefix = sign;
        affixes.negativeSuffix = affixes.positiveSuffix;
        if (parentheses)
            affixes.negativeSuffix += u')';
    }
    return affixes;
}

bool equalStrings(const char16_t* a, const char16_t* b)
{
    if (a == nullptr || b == nullptr)
        return a == b;
    return formatString(a) == formatString(b);
}

bool equalNumberFields(const NumberFormat& a, const NumberFormat& b)
{
    return a.decimals == b.decimals && a.percent == b.percent && a.thousands == b.thousands &&
           equalStrings(a.positivePrefix, b.positivePrefix) &&
           equalStrings(a.positiveSuffix, b.positiveSuffix) &&
           equalStrings(a.negativePrefix, b.negativePrefix) &&
           equalStrings(a.negativeSuffix, b.negativeSuffix);
}

void freeString(char16_t*& text)
{
    heapFree(text);
    text = nullptr;
}

// Appends the built-in formats one by one.
class BuiltInFormats {
public:
    explicit BuiltInFormats(GrowArray<NumberFormat>& formats) : formats_(formats) {}

    void number(bool general, int decimals, const Affixes& affixes, bool thousands)
    {
        NumberFormat record;
        makeNumberFormat(record, general, thousands, decimals, affixes.positivePrefix,
                         affixes.positiveSuffix, affixes.negativePrefix, affixes.negativeSuffix);
        store(record);
    }

    void date(std::u16string_view datePattern, std::u16string_view timePattern)
    {
        NumberFormat record;
        makeDateFormat(record, datePattern, timePattern);
        store(record);
    }

    void text()
    {
        NumberFormat record;
        makeTextFormat(record);
        store(record);
    }

private:
    void store(NumberFormat& record)
    {
        if (!formats_.append(record))
            freeFormatStrings(record);
    }

    GrowArray<NumberFormat>& formats_;
};

} // namespace

std::u16string_view formatString(const char16_t* text)
{
    return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

void makeNumberFormat(NumberFormat& record, bool general, bool thousands, int decimals,
                      std::u16string_view positivePrefix, std::u16string_view positiveSuffix,
                      std::u16string_view negativePrefix, std::u16string_view negativeSuffix)
{
    bool percent = false;
    for (std::u16string_view affix :
         {positivePrefix, positiveSuffix, negativePrefix, negativeSuffix})
        percent = percent || affix.find(u'%') != affix.npos;
    record = {};
    record.kind = FormatNumber;
    record.general = general ? 1 : 0;
    record.decimals = static_cast<std::uint8_t>(std::clamp(decimals, 0, 255));
    record.percent = percent ? 1 : 0;
    record.thousands = thousands ? 1 : 0;
    record.positivePrefix = duplicateString(positivePrefix);
    record.positiveSuffix = duplicateString(positiveSuffix);
    record.negativePrefix = duplicateString(negativePrefix);
    record.negativeSuffix = duplicateString(negativeSuffix);
}

void makeDateFormat(NumberFormat& record, std::u16string_view datePattern,
                    std::u16string_view timePattern)
{
    record = {};
    record.kind = FormatDate;
    record.general = 0;
    record.datePattern = duplicateString(datePattern);
    record.timePattern = duplicateString(timePattern);
}

void makeTextFormat(NumberFormat& record)
{
    record = {};
    record.kind = FormatText;
    record.general = 0;
}

bool equalFormats(const NumberFormat& a, const NumberFormat& b)
{
    if (a.kind != b.kind || a.general != b.general)
        return false;
    switch (a.kind) {
    case FormatNumber:
        return equalNumberFields(a, b);
    case FormatDate:
        return equalStrings(a.datePattern, b.datePattern) &&
               equalStrings(a.timePattern, b.timePattern);
    case FormatText:
        break;
    }
    return true;
}

void freeFormatStrings(NumberFormat& record)
{
    for (char16_t** text : {&record.positivePrefix, &record.positiveSuffix, &record.negativePrefix,
                            &record.negativeSuffix, &record.datePattern, &record.timePattern})
        freeString(*text);
}

void buildFormats(GrowArray<NumberFormat>& formats)
{
    const LocaleInfo& locale = localeInfo;
    const Affixes plain = {{}, {}, u"-", {}};
    const Affixes percent = {{}, u"%", u"-", u"%"};
    const Affixes currency = currencyAffixes();
    BuiltInFormats table(formats);
    table.number(true, 0, {}, false);
    table.number(false, 0, plain, false);
    table.number(false, 2, plain, false);
    table.number(false, 0, currency, true);
    table.number(false, 2, currency, true);
    table.number(false, 2, percent, false);
    table.date(locale.shortDate, {});
    table.date(locale.dayMonthYear, {});
    table.date(locale.dayMonth, {});
    table.date(locale.monthYear, {});
    table.date({}, locale.time12);
    table.date({}, locale.time24);
    table.date({}, locale.time12Seconds);
    table.date({}, locale.time24Seconds);
    table.date(locale.shortDate, locale.time24);
    table.text();
}

} // namespace vorn
