#include "numfmt/render.h"

#include "core/input.h"
#include "core/workbook.h"
#include "numfmt/locale.h"
#include "numfmt/serial.h"
#include "platform/platform.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace vorn {

namespace {

constexpr int DecimalsMax = 9;
constexpr std::size_t FillLength = 100;
constexpr double LargestPlain = 100'000'000;
constexpr double SmallestPlain = 0.0001;
constexpr int ExponentDecimals = 14;
constexpr int FullDecimals = 6;

// Decimals on trial when a number must become narrower: which of these is the first not to fit?
constexpr int FirstTrial = 2;
constexpr int TrialStep = 2;
constexpr int LastTrial = 8;

// --- Numbers as the library prints them

// A printed number, with a point whatever the locale. The longest has 309 digits before it.
class Printed {
public:
    Printed(double number, std::chars_format form, int decimals)
    {
        end_ = std::to_chars(text_, std::end(text_), number, form, decimals).ptr;
    }

    std::string_view view() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    char text_[340];
    char* end_;
};

Printed printFixed(double number, int decimals)
{
    return {number, std::chars_format::fixed, std::clamp(decimals, 0, DecimalsMax)};
}

void append(std::u16string& out, std::string_view text)
{
    out.append(text.begin(), text.end());
}

void replacePoint(std::u16string& text, std::size_t from)
{
    const std::size_t point = text.find(localeInfo.runtimeDecimal, from);
    if (point != text.npos)
        text[point] = localeInfo.decimal;
}

// Without the zeros behind the point, and without a point that nothing follows.
std::string_view withoutTrailingZeros(std::string_view text)
{
    if (text.find('.') == text.npos)
        return text;
    text.remove_suffix(text.size() - 1 - text.find_last_not_of('0'));
    if (text.back() == '.')
        text.remove_suffix(1);
    return text;
}

// --- General

bool needsExponent(double number)
{
    const double size = std::fabs(number);
    return size > LargestPlain || (size > 0 && size < SmallestPlain);
}

void appendExponentForm(std::u16string& out, double number)
{
    const Printed printed(number, std::chars_format::scientific, ExponentDecimals);
    const std::string_view text = printed.view();
    const std::size_t split = text.find('e');
    append(out, withoutTrailingZeros(text.substr(0, split)));
    if (split == text.npos)
        return; // an infinity
    out += u'e';
    if (text[split + 1] == '-')
        out += u'-';
    append(out, text.substr(std::min(text.find_first_not_of('0', split + 2), text.size() - 1)));
}

// So many decimals that about 14 digits count.
int generalDecimals(double number)
{
    constexpr double steps[] = {1e-3, 1e-2, 1e-1, 1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    constexpr int mostDecimals = 17;
    const double size = std::fabs(number);
    int decimals = mostDecimals;
    for (const double* step = std::begin(steps); step != std::end(steps) && size >= *step; ++step)
        --decimals;
    return decimals;
}

void appendGeneral(std::u16string& out, double number)
{
    const std::size_t start = out.size();
    if (needsExponent(number)) {
        appendExponentForm(out, number);
    } else if (number == std::trunc(number)) {
        char digits[12];
        char* end = std::to_chars(digits, std::end(digits), static_cast<int>(number)).ptr;
        out.append(digits, end);
        return;
    } else {
        const Printed printed(number, std::chars_format::fixed, generalDecimals(number));
        append(out, withoutTrailingZeros(printed.view()));
    }
    replacePoint(out, start);
}

void appendGeneralDate(std::u16string& out, double serial)
{
    LocalTime parts;
    if (!serialToParts(serial, parts)) {
        out += u"!!ErrDateTime";
        return;
    }
    const double day = std::trunc(serial);
    if (day != 0)
        out += platform.localeSource->dateText(parts, localeInfo.shortDate);
    if (serial != day || serial == 0) {
        if (day != 0)
            out += u' ';
        out += platform.localeSource->timeText(parts, localeInfo.time24Seconds);
    }
}

// --- Formats

void appendByNumberFormat(std::u16string& out, double number, const NumberFormat& format)
{
    const double shown = format.percent != 0 ? number * 100 : number;
    if (!std::isfinite(shown)) {
        appendGeneral(out, shown);
        return;
    }
    const std::size_t decimals = std::min<std::size_t>(format.decimals, DecimalsMax);
    const Printed printed = printFixed(shown, static_cast<int>(decimals));
    std::string_view digits = printed.view();
    const bool negative = digits.front() == '-';
    digits.remove_prefix(negative ? 1 : 0);
    const std::size_t whole = digits.size() - (decimals != 0 ? decimals + 1 : 0);
    const bool grouped = format.thousands != 0 && localeInfo.thousands != 0;

    out += formatString(negative ? format.negativePrefix : format.positivePrefix);
    for (std::size_t at = 0; at < whole; ++at) {
        out += static_cast<char16_t>(digits[at]);
        const std::size_t left = whole - 1 - at;
        if (grouped && left != 0 && left % 3 == 0)
            out += localeInfo.thousands;
    }
    if (decimals != 0) {
        out += localeInfo.decimal;
        append(out, digits.substr(whole + 1));
    }
    out += formatString(negative ? format.negativeSuffix : format.positiveSuffix);
}

void appendByDateFormat(std::u16string& out, double serial, const NumberFormat& format)
{
    LocalTime parts;
    if (!serialToParts(serial, parts))
        return;
    if (format.datePattern != nullptr)
        out += platform.localeSource->dateText(parts, formatString(format.datePattern));
    if (format.timePattern != nullptr) {
        if (format.datePattern != nullptr)
            out += u' ';
        out += platform.localeSource->timeText(parts, formatString(format.timePattern));
    }
}

// Is there a format, of this kind, that is not General?
bool isSpecific(const NumberFormat* format, FormatKind kind)
{
    return format != nullptr && format->kind == kind && format->general == 0;
}

void appendValue(std::u16string& out, const CellValue& value, const NumberFormat* format)
{
    switch (value.tag) {
    case TagNumber:
        if (isSpecific(format, FormatNumber))
            appendByNumberFormat(out, value.number(), *format);
        else
            appendGeneral(out, value.number());
        break;
    case TagDateTime:
        if (isSpecific(format, FormatDate))
            appendByDateFormat(out, value.number(), *format);
        else
            appendGeneralDate(out, value.number());
        break;
    case TagText:
        out += valueTextPointer(value);
        break;
    default:
        out += valueText(value);
        break;
    }
}

// --- Fitting

bool fill(std::u16string& out)
{
    out.assign(FillLength, u'#');
    return false;
}

// Leaves out the zeros at the end of `decimals` digits behind the point, and answers how many
// digits are left there.
int trimDecimals(std::u16string& text, int decimals)
{
    int left = decimals;
    for (; left > 0 && text.back() == u'0'; --left)
        text.pop_back();
    if (left > 0) {
        replacePoint(text, 0);
        return left;
    }
    if (decimals > 0)
        text.pop_back();
    if (text == u"-0")
        text = u"0";
    return 0;
}

// Writes a number with the most decimals that fit. It tries ever more of them until some do not,
// and goes down from there.
bool fitGeneral(std::u16string& out, double number, int maxWidth, TextMeter& meter)
{
    int trial = FirstTrial;
    int decimals = trial;
    for (bool tooWide = true; tooWide; --decimals) {
        if (decimals < 0)
            return fill(out);
        out.clear();
        append(out, printFixed(number, decimals).view());
        const int width = meter.width(out);
        tooWide = width > maxWidth;
        if (width < maxWidth && decimals == trial && trial < LastTrial) {
            trial += TrialStep;
            decimals = trial + 1;
            tooWide = true;
        }
    }
    return trimDecimals(out, decimals + 1) >= FullDecimals;
}

bool isGeneral(const NumberFormat* format)
{
    return format == nullptr || format->general != 0;
}

} // namespace

bool renderValue(const CellValue& value, int formatIndex, int maxWidth, std::u16string& out,
                 TextMeter* meter)
{
    const bool known = formatIndex >= 0 && formatIndex < workbook->formats.size();
    const NumberFormat* format = known ? &workbook->formats[formatIndex] : nullptr;
    out.clear();
    appendValue(out, value, format);
    if (meter == nullptr || value.tag == TagText || value.tag == TagLogical)
        return true;
    if (meter->width(out) <= maxWidth)
        return true;
    if (value.tag == TagNumber && isGeneral(format))
        return fitGeneral(out, value.number(), maxWidth, *meter);
    return fill(out);
}

std::u16string generalNumberText(double number)
{
    std::u16string text;
    appendGeneral(text, number);
    return text;
}

std::u16string generalDateText(double serial)
{
    std::u16string text;
    appendGeneralDate(text, serial);
    return text;
}

std::u16string fixedText(double number, int decimals)
{
    std::u16string text;
    append(text, printFixed(number, decimals).view());
    return text;
}

} // namespace vorn
