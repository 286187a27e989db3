// Fonts, formats and styles of native files, and those of files from before version 3.

#include "core/error.h"
#include "core/workbook.h"
#include "support/nativefile.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class NativeTableReader : public testing::Test {
protected:
    TestDocument document;
};

// A file of one sheet whose tables are up to the test.
NativeFile noTables(unsigned version = NativeVersion)
{
    return NativeFile(version, version, version).addSheets({u"Only"});
}

std::u16string affixes(const NumberFormat& format)
{
    std::u16string text;
    for (const char16_t* affix : {format.positivePrefix, format.positiveSuffix,
                                  format.negativePrefix, format.negativeSuffix})
        text += (affix == nullptr ? std::u16string(u"-") : std::u16string(affix)) + u'|';
    return text;
}

// --- Fonts

TEST_F(NativeTableReader, takesFontsFieldByField)
{
    Fields font;
    font.add8(55).add8(1).add16(10).add16(240).add16(12).add16(700).add8(18).add8(238);
    font.addUnits(u"Times").addBytes(std::string(54, '\0')).add8(5);
    ASSERT_EQ(loadBytes(noTables().add(RecordFont, font).ended()), ErrorNone);
    const FontRecord& taken = workbook->fonts[0];
    EXPECT_EQ(taken.reserved, 55);
    EXPECT_EQ(taken.underline, 1);
    EXPECT_EQ(taken.attributes, 10);
    EXPECT_EQ(taken.height, 240);
    EXPECT_EQ(taken.colour, 12);
    EXPECT_EQ(taken.weight, 700);
    EXPECT_EQ(taken.family, 18);
    EXPECT_EQ(taken.charset, 238);
    EXPECT_EQ(taken.face(), u"Times");
}

TEST_F(NativeTableReader, cutsTheNamesOfFonts)
{
    const std::u16string full(FontNameMax, u'x');
    const struct {
        const char* phrase;
        std::u16string units;
        unsigned length;
        std::u16string face;
    } cases[] = {
        {"a full name",        full,     32,    full                       },
        {"one unit too many",  full,     33,    full                       },
        {"the greatest count", full,     255,   full                       },
        {"a part of a name",   u"Times", 3,     u"Tim"                     },
        {"more than is there", u"Times", 7,     std::u16string(u"Times\0\0", 7)},
        {"none",                    u"Times",                       0, u""    },
    };
    for (const auto& c : cases) {
        Fields font;
        font.addBytes(std::string(12, '\0')).addUnits(c.units);
        font.addBytes(std::string(64 - 2 * c.units.size(), '\0')).add8(c.length);
        ASSERT_EQ(loadBytes(noTables().add(RecordFont, font).ended()), ErrorNone);
        EXPECT_EQ(workbook->fonts[0].face(), c.face) << c.phrase;
    }
    // A record that ends early has no name.
    ASSERT_EQ(loadBytes(noTables().add(RecordFont, Fields().add8(7)).ended()), ErrorNone);
    EXPECT_EQ(workbook->fonts[0].face(), u"");
    EXPECT_EQ(workbook->fonts[0].reserved, 7);
}

TEST_F(NativeTableReader, padsTheFontsToSix)
{
    const struct {
        const char* phrase;
        int fonts, total;
        std::u16string last;
    } cases[] = {
        {"none: the default ones", 0, 6, u"Arial"},
        {"one",                    1, 6, u"f0"   },
        {"three",                  3, 6, u"f2"   },
        {"six",                    6, 6, u"f5"   },
        {"eight",                  8, 8, u"f7"   },
    };
    for (const auto& c : cases) {
        NativeFile file = noTables();
        for (int font = 0; font < c.fonts; ++font)
            file.add(RecordFont,
                     fontFields(std::u16string(u"f") + static_cast<char16_t>(u'0' + font)));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
        EXPECT_EQ(workbook->fonts.size(), c.total) << c.phrase;
        EXPECT_EQ(workbook->fonts[c.total - 1].face(), c.last) << c.phrase;
    }
    EXPECT_EQ(loadBytes(noTables().ended()), ErrorNone);
    for (int font = 0; font < DefaultFontCount; ++font)
        EXPECT_TRUE(workbook->fonts[font].sameAs(defaultFont(font))) << font;
}

// --- Formats

TEST_F(NativeTableReader, takesFormatsInTheOrderOfBothKinds)
{
    NativeFile file = noTables();
    file.add(RecordNumberFormat, formatFields(255, 0, {u"", u"", u"", u""}));
    file.add(RecordDateFormat, Fields().addPlain(u"d/M").addPlain(u""));
    file.add(RecordNumberFormat, formatFields(3, 1, {u"<", u">", u"", u"minus"}));
    file.add(RecordDateFormat, Fields().addPlain(u"").addPlain(u"H:mm"));
    file.add(RecordNumberFormat, formatFields(254, 1, {u"a", u"b", u"c", u"d"}));
    file.add(RecordNumberFormat, formatFields(0, 0, {u"", u"", u"", u"%"}));
    file.add(RecordNumberFormat, formatFields(253, 0, {u"no end"}));
    file.add(RecordDateFormat);
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const GrowArray<NumberFormat>& formats = workbook->formats;
    ASSERT_EQ(formats.size(), 16);
    EXPECT_EQ(formats[0].kind, FormatNumber);
    EXPECT_EQ(formats[0].general, 1);
    EXPECT_EQ(formats[1].kind, FormatDate);
    EXPECT_EQ(formatString(formats[1].datePattern), u"d/M");
    EXPECT_EQ(formats[1].timePattern, nullptr);
    EXPECT_EQ(formats[2].general, 0);
    EXPECT_EQ(formats[2].decimals, 3);
    EXPECT_EQ(formats[2].thousands, 1);
    EXPECT_EQ(formats[2].percent, 0);
    EXPECT_EQ(affixes(formats[2]), u"<|>|-|minus|");
    EXPECT_EQ(formats[3].datePattern, nullptr);
    EXPECT_EQ(formatString(formats[3].timePattern), u"H:mm");
    EXPECT_EQ(formats[4].kind, FormatText);
    EXPECT_EQ(affixes(formats[4]), u"-|-|-|-|");
    EXPECT_EQ(formats[5].percent, 1);
    EXPECT_EQ(formats[6].decimals, 253);
    EXPECT_EQ(affixes(formats[6]), u"no end|-|-|-|");
    EXPECT_EQ(formats[7].kind, FormatDate);
    EXPECT_EQ(formats[7].datePattern, nullptr);
    // Those that are missing are the built-in ones of their places.
    EXPECT_EQ(formatString(formats[FormatIndexTime24].timePattern), u"H:mm");
    EXPECT_EQ(formats[FormatIndexText].kind, FormatText);
    EXPECT_TRUE(workbook->isUserFormat(16));
    EXPECT_FALSE(workbook->isUserFormat(15));
}

TEST_F(NativeTableReader, makesTheFormatsThatAFileHasNot)
{
    ASSERT_EQ(loadBytes(noTables().ended()), ErrorNone);
    GrowArray<NumberFormat> builtIn;
    buildFormats(builtIn);
    ASSERT_EQ(workbook->formats.size(), builtIn.size());
    for (int index = 0; index < builtIn.size(); ++index) {
        EXPECT_TRUE(equalFormats(workbook->formats[index], builtIn[index])) << index;
        freeFormatStrings(builtIn[index]);
    }
}

// --- Styles

TEST_F(NativeTableReader, takesStylesWordByWord)
{
    Fields style;
    for (const unsigned word : {0xfedcU, 3U, 2U, 0x0003U, 0x3fffU, 0xffffU, 0x3abcU, 0x7fU})
        style.add16(word);
    NativeFile file = noTables();
    file.addTables(0);
    for (int font = 0; font < 3; ++font)
        file.add(RecordFont, fontFields(u"x"));
    ASSERT_EQ(loadBytes(file.add(RecordStyle, style).ended()), ErrorNone);
    ASSERT_EQ(workbook->styles.size(), 1);
    const std::uint16_t expected[] = {0xfedc, 3, 2, 3, 0x3fff, 0xffff, 0x3abc, 0x7f};
    for (int word = 0; word < CellStyle::WordCount; ++word)
        EXPECT_EQ(workbook->styles[0].words[word], expected[word]) << word;
}

TEST_F(NativeTableReader, givesEveryDocumentAStyle)
{
    ASSERT_EQ(loadBytes(noTables().ended()), ErrorNone);
    ASSERT_EQ(workbook->styles.size(), 1);
    EXPECT_TRUE(workbook->styles[0].sameAs(defaultStyle()));
    ASSERT_EQ(loadBytes(noTables().add(RecordStyle).ended()), ErrorNone);
    EXPECT_EQ(workbook->styles.size(), 1);
}

TEST_F(NativeTableReader, leavesNoStyleWithoutItsFontAndFormat)
{
    const struct {
        const char* phrase;
        unsigned format, font;
        int takenFormat, takenFont;
    } cases[] = {
        {"both are there",      16,    7,     16, 7},
        {"the format is not",   17,    7,     0,  7},
        {"the font is not",     16,    8,     16, 0},
        {"neither of the last", 65535, 65535, 0,  0},
    };
    for (const auto& c : cases) {
        // The tables may come behind the styles that use them.
        NativeFile file = noTables();
        file.add(RecordStyle, styleFields(c.format, c.font)).addTables(0);
        for (int font = 1; font < 8; ++font)
            file.add(RecordFont, fontFields(u"x"));
        file.add(RecordNumberFormat, formatFields(1, 0, {u"", u"", u"", u""}));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
        EXPECT_EQ(workbook->styles[0].format(), c.takenFormat) << c.phrase;
        EXPECT_EQ(workbook->styles[0].font(), c.takenFont) << c.phrase;
    }
}

// A table longer than the numbers that point into it cannot have been written.
TEST_F(NativeTableReader, endsWhereATableIsLongerThanItsNumbersReach)
{
    const struct {
        const char* phrase;
        unsigned type;
        int most;
    } cases[] = {
        {"styles",  RecordStyle,        32768},
        {"fonts",   RecordFont,         65536},
        {"formats", RecordNumberFormat, 65536},
    };
    for (const auto& c : cases) {
        NativeFile file = noTables();
        for (int record = 0; record < c.most; ++record)
            file.add(c.type);
        EXPECT_EQ(loadBytes(file.ended()), ErrorNone) << c.phrase;
        EXPECT_EQ(loadBytes(file.add(c.type).ended()), ErrorMemory) << c.phrase;
    }
}

// --- Files of old versions

TEST_F(NativeTableReader, addsThreeFormatsToThoseOfAnOldFile)
{
    ASSERT_EQ(loadBytes(noTables(2).ended()), ErrorNone);
    const GrowArray<NumberFormat>& formats = workbook->formats;
    ASSERT_EQ(formats.size(), 19);
    EXPECT_EQ(formats[15].kind, FormatText);
    for (int index = 16; index < 19; ++index) {
        EXPECT_EQ(formats[index].kind, FormatNumber);
        EXPECT_EQ(formats[index].general, 0);
        EXPECT_EQ(formats[index].thousands, 0);
        EXPECT_EQ(formats[index].decimals, index == 18 ? 0 : 2);
        EXPECT_EQ(formats[index].percent, index == 18 ? 1 : 0);
    }
    EXPECT_EQ(affixes(formats[16]), u"-|-|(|)|");
    EXPECT_EQ(affixes(formats[17]), u"$|-|($|)|");
    EXPECT_EQ(affixes(formats[18]), u"-|%|-|%|");
}

TEST_F(NativeTableReader, storesTheFormatsOfAnOldFileOverTheOthers)
{
    NativeFile file = noTables(2);
    file.add(RecordNumberFormat, formatFields(255, 0, {u"", u"", u"", u""}));
    file.add(RecordNumberFormat, formatFields(7, 0, {u"own", u"", u"", u""}));
    for (int format = 2; format < 20; ++format)
        file.add(RecordDateFormat, Fields().addPlain(u"yy").addPlain(u""));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(workbook->formats.size(), 20);
    EXPECT_EQ(affixes(workbook->formats[1]), u"own|-|-|-|");
    for (int format = 2; format < 20; ++format)
        EXPECT_EQ(workbook->formats[format].kind, FormatDate) << format;
}

TEST_F(NativeTableReader, migratesTheFormatsOfOldStyles)
{
    const struct {
        const char* phrase;
        unsigned version;
        int dates; // at places 1 and up
        unsigned format;
        int migrated;
    } cases[] = {
        {"General stays",                          2, 0, 0,  0 },
        {"2 stays",                                2, 0, 2,  2 },
        {"3 becomes the first one added",          2, 0, 3,  16},
        {"4 becomes the second",                   2, 0, 4,  17},
        {"and so does 5",                          2, 0, 5,  17},
        {"6 becomes the third",                    2, 0, 6,  18},
        {"7 becomes the percent format",           2, 0, 7,  5 },
        {"8 stays",                                2, 0, 8,  8 },
        {"18 stays",                               2, 0, 18, 18},
        {"they stand behind the last date format", 2, 4, 3,  5 },
        {"so does the second",                     2, 4, 5,  6 },
        {"and the third",                          2, 4, 6,  7 },
        {"but not the percent format",             2, 4, 7,  5 },
        {"version 1 is old too",                   1, 0, 3,  16},
        {"today 3 is 3",                           3, 0, 3,  3 },
        {"and 7 is 7",                             3, 0, 7,  7 },
    };
    for (const auto& c : cases) {
        NativeFile file = noTables(c.version);
        file.add(RecordNumberFormat, formatFields(255, 0, {u"", u"", u"", u""}));
        for (int date = 0; date < c.dates; ++date)
            file.add(RecordDateFormat, Fields().addPlain(u"yy").addPlain(u""));
        ASSERT_EQ(loadBytes(file.add(RecordStyle, styleFields(c.format, 0)).ended()), ErrorNone);
        EXPECT_EQ(workbook->styles[0].format(), c.migrated) << c.phrase;
    }
}

TEST_F(NativeTableReader, takesTheWhiteFillFromOldStyles)
{
    const struct {
        const char* phrase;
        unsigned version;
        int fill, pattern, takenFill, takenPattern;
    } cases[] = {
        {"white and solid",           2, 9,  1, 64, 0},
        {"white without a pattern",   2, 9,  0, 64, 0},
        {"white with a pattern",      2, 9,  2, 9,  2},
        {"black and solid",           2, 8,  1, 8,  1},
        {"another without a pattern", 2, 10, 0, 10, 0},
        {"today it is a fill",        3, 9,  1, 9,  1},
    };
    for (const auto& c : cases) {
        CellStyle style = defaultStyle();
        style.set(StyleFill, c.fill);
        style.set(StylePattern, c.pattern);
        style.set(StyleSecondFill, 77);
        Fields fields;
        for (const unsigned word : style.words)
            fields.add16(word);
        ASSERT_EQ(loadBytes(noTables(c.version).add(RecordStyle, fields).ended()), ErrorNone);
        const CellStyle& taken = workbook->styles[0];
        EXPECT_EQ(taken.get(StyleFill), c.takenFill) << c.phrase;
        EXPECT_EQ(taken.get(StylePattern), c.takenPattern) << c.phrase;
        EXPECT_EQ(taken.get(StyleSecondFill), 77) << c.phrase;
    }
}

} // namespace
} // namespace vorn
