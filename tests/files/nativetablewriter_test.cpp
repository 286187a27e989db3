#include "files/nativetablewriter.h"

#include "core/workbook.h"
#include "support/filedrecords.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Payloads = std::vector<std::string>;

class NativeTableWriterTest : public testing::Test {
protected:
    Sheet& sheet() { return *workbook->currentSheet; }

    // A style that is told by its left colour.
    static int addStyle(int leftColour, int font = 0, int format = 0)
    {
        CellStyle style = defaultStyle();
        style.set(StyleLeftColour, leftColour);
        style.set(StyleFont, font);
        style.set(StyleFormat, format);
        return workbook->addStyle(style);
    }

    // A font that is told by its height.
    static int addFont(int height)
    {
        FontRecord font = defaultFont(0);
        font.height = static_cast<std::uint16_t>(height);
        return workbook->addFont(font);
    }

    // Left colour, font and format of each style in the file.
    static std::string filedStyles()
    {
        std::string styles;
        for (const std::string& payload : savedPayloads(9)) {
            const auto byteAt = [&](std::size_t offset) {
                return std::to_string(std::stoi(payload.substr(2 * offset, 2), nullptr, 16));
            };
            styles += (styles.empty() ? "" : ", ") + byteAt(12) + " font " + byteAt(4) +
                      " format " + byteAt(2);
        }
        return styles;
    }

    static std::string filedHeights()
    {
        std::string heights;
        for (const std::string& payload : savedPayloads(8)) {
            const std::string hex = payload.substr(10, 2) + payload.substr(8, 2);
            heights += (heights.empty() ? "" : " ") + std::to_string(std::stoi(hex, nullptr, 16));
        }
        return heights;
    }

    TestDocument document;
};

TEST_F(NativeTableWriterTest, laysOutTheFieldsOfAStyle)
{
    const struct {
        StyleField field;
        int value;
        const char* payload; // all other fields are 0
    } rows[] = {
        {StyleTopLine,      7,   "0700 0000 0000 0000 0000 0000 0000 0000"},
        {StyleLeftLine,     7,   "3800 0000 0000 0000 0000 0000 0000 0000"},
        {StyleRightLine,    7,   "c001 0000 0000 0000 0000 0000 0000 0000"},
        {StyleTopColour,    127, "00fe 0000 0000 0000 0000 0000 0000 0000"},
        {StyleFormat,       15,  "0000 0f00 0000 0000 0000 0000 0000 0000"},
        {StyleFont,         5,   "0000 0000 0500 0000 0000 0000 0000 0000"},
        {StyleLocked,       1,   "0000 0000 0000 0100 0000 0000 0000 0000"},
        {StyleHidden,       1,   "0000 0000 0000 0200 0000 0000 0000 0000"},
        {StyleFill,         127, "0000 0000 0000 0000 7f00 0000 0000 0000"},
        {StyleSecondFill,   127, "0000 0000 0000 0000 803f 0000 0000 0000"},
        {StylePattern,      63,  "0000 0000 0000 0000 0000 3f00 0000 0000"},
        {StyleBottomLine,   7,   "0000 0000 0000 0000 0000 c001 0000 0000"},
        {StyleBottomColour, 127, "0000 0000 0000 0000 0000 00fe 0000 0000"},
        {StyleLeftColour,   127, "0000 0000 0000 0000 0000 0000 7f00 0000"},
        {StyleRightColour,  127, "0000 0000 0000 0000 0000 0000 803f 0000"},
        {StyleHorizontal,   7,   "0000 0000 0000 0000 0000 0000 0000 0700"},
        {StyleWrap,         1,   "0000 0000 0000 0000 0000 0000 0000 0800"},
        {StyleVertical,     7,   "0000 0000 0000 0000 0000 0000 0000 7000"},
    };
    for (const auto& row : rows) {
        CellStyle style;
        style.set(row.field, row.value);
        workbook->styles[0] = style;
        EXPECT_EQ(savedPayloads(9), Payloads{bare(row.payload)}) << row.field;
    }
}

TEST_F(NativeTableWriterTest, laysOutTheFieldsOfAFont)
{
    FontRecord font;
    font.reserved = 1;
    font.underline = 2;
    font.attributes = 0x0304;
    font.height = 0x0506;
    font.colour = 0x0708;
    font.weight = 0x090a;
    font.family = 11;
    font.charset = 12;
    font.setFace(std::u16string(FontNameMax, u'\u1234'));
    workbook->fonts[0] = font;
    std::string face;
    for (int unit = 0; unit < FontNameMax; ++unit)
        face += "3412";
    EXPECT_EQ(savedPayloads(8)[0], bare("01 02 0403 0605 0807 0a09 0b 0c") + face + "20");
    EXPECT_EQ(savedPayloads(8)[0].size(), 2u * 77);
}

TEST_F(NativeTableWriterTest, laysOutTheFieldsOfAFormat)
{
    const auto expectFiled = [](NumberFormat& format, int type, const std::string& payload) {
        workbook->setFormat(format, 16);
        format = {};
        EXPECT_EQ(savedPayloads(type).back(), payload);
        EXPECT_EQ(savedPayloads(17).size() + savedPayloads(18).size(), 17u);
    };
    const std::string none = hexPlain(u"");
    const std::string noAffixes = none + none + none + none;
    NumberFormat format;
    makeNumberFormat(format, true, false, 0, u"", u"", u"", u"");
    expectFiled(format, 17, bare("ff 00") + noAffixes);
    makeNumberFormat(format, false, true, 9, u"", u"", u"", u"");
    expectFiled(format, 17, bare("09 01") + noAffixes);
    makeNumberFormat(format, false, false, 0, u"a", u"%", u"\u20ac", u"d e");
    expectFiled(format, 17,
                bare("00 00") + hexPlain(u"a") + hexPlain(u"%") + hexPlain(u"\u20ac") +
                    hexPlain(u"d e"));
    makeTextFormat(format);
    expectFiled(format, 17, bare("fe 00") + noAffixes);
    makeDateFormat(format, u"M/d", u"");
    expectFiled(format, 18, hexPlain(u"M/d") + none);
    makeDateFormat(format, u"", u"H:mm");
    expectFiled(format, 18, none + hexPlain(u"H:mm"));
    makeDateFormat(format, u"M", u"H");
    expectFiled(format, 18, hexPlain(u"M") + hexPlain(u"H"));
}

TEST_F(NativeTableWriterTest, writesEveryFormatUsedOrNot)
{
    NumberFormat format;
    makeDateFormat(format, u"unused", u"");
    workbook->setFormat(format, -1);
    EXPECT_EQ(savedPayloads(16), Payloads{bare("0100 0600 1100 1100")});
    EXPECT_EQ(savedPayloads(18).back(), hexPlain(u"unused") + hexPlain(u""));
}

TEST_F(NativeTableWriterTest, leavesOutStylesThatNothingHas)
{
    const int unused = addStyle(1);
    const int ofCell = addStyle(2);
    const int ofBlank = addStyle(3);
    addStyle(4);
    const int ofRow = addStyle(5);
    const int ofEmptyRow = addStyle(6);
    const int ofColumn = addStyle(7);
    const int inOtherSheet = addStyle(8);
    const int taken = addStyle(9);
    EXPECT_EQ(filedStyles(), "0 font 0 format 0");

    sheet().setCell(0, 0, numberCell(1, ofCell));
    sheet().setCell(1, 0, blankCell(ofBlank));
    sheet().setCell(2, 0, numberCell(1, taken));
    sheet().setCell(2, 0, blankCell(-1));
    sheet().setRowStyle(0, ofRow);
    sheet().setRowStyle(9, ofEmptyRow);
    sheet().columns.setColumnStyle(200, 255, ofColumn);
    workbook->sheets[2]->setCell(255, LastRow, numberCell(1, inOtherSheet));
    EXPECT_EQ(filedStyles(), "0 font 0 format 0, 2 font 0 format 0, 3 font 0 format 0, "
                             "5 font 0 format 0, 6 font 0 format 0, 7 font 0 format 0, "
                             "8 font 0 format 0");
    EXPECT_EQ(savedPayloads(16), Payloads{bare("0700 0600 1000 1000")});
    EXPECT_EQ(unused, 1);
}

TEST_F(NativeTableWriterTest, numbersStylesInTheOrderOfTheirTable)
{
    const int first = addStyle(1);
    addStyle(2);
    const int third = addStyle(3);
    sheet().setCell(0, 0, numberCell(1, third));
    sheet().setCell(1, 0, numberCell(1, first));
    sheet().setCell(2, 0, numberCell(1, 0));
    EXPECT_EQ(filedStyles(), "0 font 0 format 0, 1 font 0 format 0, 3 font 0 format 0");
    EXPECT_EQ(savedPayloads(11),
              Payloads{bare("0000 0000 0300 ff00 0001 0000") + bare("04 0200") + hexDouble(1) +
                       bare("04 0100") + hexDouble(1) + bare("04 0000") + hexDouble(1)});
}

TEST_F(NativeTableWriterTest, leavesOutFontsThatNoFiledStyleHas)
{
    const int unused = addFont(600);
    const int second = addFont(700);
    const int third = addFont(800);
    sheet().setCell(0, 0, numberCell(1, addStyle(1, third)));
    addStyle(2, unused);
    EXPECT_EQ(filedHeights(), "200 200 200 200 200 200 800");
    EXPECT_EQ(filedStyles(), "0 font 0 format 0, 1 font 6 format 0");
    sheet().setCell(1, 0, numberCell(1, addStyle(3, second, 14)));
    EXPECT_EQ(filedHeights(), "200 200 200 200 200 200 700 800");
    EXPECT_EQ(filedStyles(), "0 font 0 format 0, 1 font 7 format 0, 3 font 6 format 14");
    EXPECT_EQ(savedPayloads(16), Payloads{bare("0300 0800 1000 1000")});
}

TEST_F(NativeTableWriterTest, writesTheFewFontsThatThereAre)
{
    workbook->fonts.resize(2);
    EXPECT_EQ(filedHeights(), "200 200");
    EXPECT_EQ(savedPayloads(16), Payloads{bare("0100 0200 1000 1000")});
}

TEST_F(NativeTableWriterTest, takesTheFirstRecordForAnIndexThatThereIsNot)
{
    addStyle(1);
    sheet().setCell(0, 0, numberCell(1, 2));
    sheet().setCell(1, 0, numberCell(1, addStyle(3, 6, 16)));
    sheet().setRowStyle(5, 99);
    sheet().columns.setColumnStyle(3, 3, 99);
    EXPECT_EQ(filedStyles(), "0 font 0 format 0, 3 font 0 format 0");
    EXPECT_EQ(savedPayloads(15), Payloads{bare("0300 0300 fc080000 0000 0000")});
    EXPECT_EQ(savedPayloads(11), (Payloads{bare("0000 0000 0200 ff00 0001 0000 04 0100") +
                                               hexDouble(1) + bare("04 0100") + hexDouble(1),
                                           bare("0500 0000 0000 ff00 8001 0000")}));
}

TEST_F(NativeTableWriterTest, refusesMoreFormatsThanAFileCounts)
{
    NumberFormat format;
    makeTextFormat(format);
    workbook->setFormat(format, 65533);
    savedBytes();
    EXPECT_EQ(errorState.code, ErrorNone);
    workbook->setFormat(format, 65534);
    savedBytes();
    EXPECT_EQ(errorState.code, ErrorFileWrite);
    clearError();
}

TEST_F(NativeTableWriterTest, numbersOneSaveAtATime)
{
    const int style = addStyle(1);
    sheet().setCell(0, 0, numberCell(1, style));
    numberTables();
    EXPECT_EQ(styleFileNumber(0), 0);
    EXPECT_EQ(styleFileNumber(style), 1);
    EXPECT_EQ(styleFileNumber(-1), 0);
    EXPECT_EQ(styleFileNumber(2), 0);
    clearTableNumbers();
    EXPECT_EQ(workbook->styles[style].fileIndex, NoFileIndex);
    EXPECT_EQ(workbook->fonts[0].fileIndex, NoFileIndex);
    EXPECT_EQ(workbook->formats[0].fileIndex, NoFileIndex);
}

} // namespace
} // namespace vorn
