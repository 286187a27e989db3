#include "files/nativetablereader.h"

#include "core/workbook.h"
#include "files/nativerecords.h"
#include "numfmt/catalogue.h"

#include <algorithm>

namespace vorn {

namespace {

// What old files call the formats that have other places now.
enum LegacyFormat {
    LegacyDate = 3,
    LegacyCurrency = 4,
    LegacyCurrencyDecimals = 5,
    LegacyWholePercent = 6,
    LegacyPercent = 7,
};

// Is there room for one more record in a table whose indices go up to `greatest`?
template <typename Record>
bool hasRoom(const GrowArray<Record>& table, int greatest)
{
    if (table.size() <= greatest)
        return true;
    raiseError(ErrorMemory);
    return false;
}

void appendFormat(NumberFormat format)
{
    if (!workbook->formats.append(format))
        freeFormatStrings(format);
}

} // namespace

void NativeTableReader::beginLegacy()
{
    legacy_ = true;
    buildFormats(workbook->formats);
    if (errorStands())
        return;
    NumberFormat format;
    makeNumberFormat(format, false, false, 2, {}, {}, u"(", u")");
    appendFormat(format);
    const NumberFormat money = workbook->formats[LegacyCurrency];
    makeNumberFormat(format, false, false, 2, formatString(money.positivePrefix),
                     formatString(money.positiveSuffix), formatString(money.negativePrefix),
                     formatString(money.negativeSuffix));
    appendFormat(format);
    makeNumberFormat(format, false, false, 0, {}, u"%", u"-", u"%");
    appendFormat(format);
}

// --- Fonts

void NativeTableReader::readFont(RecordCursor record)
{
    // A style holds its font in 16 bits.
    if (!hasRoom(workbook->fonts, UINT16_MAX))
        return;
    FontRecord font;
    font.reserved = record.take8();
    font.underline = record.take8();
    font.attributes = record.take16();
    font.height = record.take16();
    font.colour = record.take16();
    font.weight = record.take16();
    font.family = record.take8();
    font.charset = record.take8();
    for (char16_t& unit : font.name)
        unit = record.take16();
    font.nameLength = std::min<std::uint8_t>(record.take8(), FontNameMax);
    workbook->fonts.append(font);
}

// --- Formats

// Formats have their places by their order in the file, because an old file's table is not empty.
void NativeTableReader::storeFormat(NumberFormat format)
{
    if (formats_ > UINT16_MAX)
        raiseError(ErrorMemory);
    if (!errorStands())
        workbook->setFormat(format, formats_++);
    if (errorStands())
        freeFormatStrings(format);
}

void NativeTableReader::readNumberFormat(RecordCursor record)
{
    const std::uint8_t decimals = record.take8();
    const bool thousands = record.takeFlag8();
    NumberFormat format;
    if (decimals == DecimalsOfText) {
        makeTextFormat(format);
    } else {
        const bool general = decimals == DecimalsOfGeneral;
        std::u16string affixes[4];
        for (std::u16string& affix : affixes)
            affix = record.takePlainText().text();
        makeNumberFormat(format, general, thousands, general ? 0 : decimals, affixes[0], affixes[1],
                         affixes[2], affixes[3]);
    }
    storeFormat(format);
}

void NativeTableReader::readDateFormat(RecordCursor record)
{
    const std::u16string datePattern = record.takePlainText().text();
    const std::u16string timePattern = record.takePlainText().text();
    NumberFormat format;
    makeDateFormat(format, datePattern, timePattern);
    lastDateFormat_ = formats_;
    storeFormat(format);
}

// --- Styles

// Gives a style of an old file the formats of today, and no fill where it had a white one.
void NativeTableReader::migrate(CellStyle& style) const
{
    switch (style.format()) {
    case LegacyDate:
        style.set(StyleFormat, lastDateFormat_ + 1);
        break;
    case LegacyCurrency:
    case LegacyCurrencyDecimals:
        style.set(StyleFormat, lastDateFormat_ + 2);
        break;
    case LegacyWholePercent:
        style.set(StyleFormat, lastDateFormat_ + 3);
        break;
    case LegacyPercent:
        style.set(StyleFormat, FormatIndexPercent);
        break;
    default:
        break;
    }
    if (style.get(StyleFill) == FirstPaletteColour + 1 && style.get(StylePattern) <= 1) {
        style.set(StyleFill, ColourWindowText);
        style.set(StylePattern, 0);
    }
}

void NativeTableReader::readStyle(RecordCursor record)
{
    // A cell holds its style in 15 bits.
    if (!hasRoom(workbook->styles, INT16_MAX))
        return;
    CellStyle style;
    for (std::uint16_t& word : style.words)
        word = record.take16();
    if (legacy_)
        migrate(style);
    workbook->styles.append(style);
}

// --- What is missing

namespace {

// The first sixteen formats are known by their places, in any document.
void completeFormats()
{
    GrowArray<NumberFormat>& formats = workbook->formats;
    if (formats.size() > LastBuiltInFormat)
        return;
    GrowArray<NumberFormat> builtIn;
    buildFormats(builtIn);
    for (int index = 0; index < builtIn.size(); ++index) {
        if (index < formats.size() || !formats.append(builtIn[index]))
            freeFormatStrings(builtIn[index]);
    }
}

} // namespace

void NativeTableReader::finish()
{
    workbook->normaliseFonts();
    completeFormats();
    if (workbook->styles.size() == 0)
        workbook->styles.append(defaultStyle());
    for (CellStyle& style : workbook->styles) {
        if (style.font() >= workbook->fonts.size())
            style.set(StyleFont, 0);
        if (style.format() >= workbook->formats.size())
            style.set(StyleFormat, FormatIndexGeneral);
    }
}

} // namespace vorn
