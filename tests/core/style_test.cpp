#include "core/style.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

TEST(CellStyle, keepsEachFieldInItsBits)
{
    const struct {
        const char* phrase;
        StyleField field;
        int word;
        unsigned mask;
    } cases[] = {
        {"top line",      StyleTopLine,      0, 0x0007},
        {"left line",     StyleLeftLine,     0, 0x0038},
        {"right line",    StyleRightLine,    0, 0x01c0},
        {"top colour",    StyleTopColour,    0, 0xfe00},
        {"format",        StyleFormat,       1, 0xffff},
        {"font",          StyleFont,         2, 0xffff},
        {"locked",        StyleLocked,       3, 0x0001},
        {"hidden",        StyleHidden,       3, 0x0002},
        {"fill",          StyleFill,         4, 0x007f},
        {"second fill",   StyleSecondFill,   4, 0x3f80},
        {"pattern",       StylePattern,      5, 0x003f},
        {"bottom line",   StyleBottomLine,   5, 0x01c0},
        {"bottom colour", StyleBottomColour, 5, 0xfe00},
        {"left colour",   StyleLeftColour,   6, 0x007f},
        {"right colour",  StyleRightColour,  6, 0x3f80},
        {"horizontal",    StyleHorizontal,   7, 0x0007},
        {"wrap",          StyleWrap,         7, 0x0008},
        {"vertical",      StyleVertical,     7, 0x0070},
    };
    EXPECT_EQ(std::size(cases), std::size_t{StyleFieldCount});
    for (const auto& c : cases) {
        // All bits set by a value that is too large, and taken back by 0.
        CellStyle style;
        style.set(c.field, 0xffff);
        const unsigned greatest = c.mask / (c.mask & -c.mask);
        EXPECT_EQ(style.get(c.field), static_cast<int>(greatest)) << c.phrase;
        for (int word = 0; word < CellStyle::WordCount; ++word)
            EXPECT_EQ(style.words[word], word == c.word ? c.mask : 0U) << c.phrase << ", " << word;
        CellStyle full;
        for (std::uint16_t& word : full.words)
            word = 0xffff;
        full.set(c.field, 0);
        EXPECT_EQ(full.get(c.field), 0) << c.phrase;
        for (int word = 0; word < CellStyle::WordCount; ++word)
            EXPECT_EQ(full.words[word], word == c.word ? 0xffffU & ~c.mask : 0xffffU) << c.phrase;
    }
}

TEST(CellStyle, ofTheWorkbookIsPlainAndLocked)
{
    const CellStyle style = defaultStyle();
    const unsigned words[] = {0, 0, 0, 1, 8384, 0, 0, 2 << 4};
    for (int word = 0; word < CellStyle::WordCount; ++word)
        EXPECT_EQ(style.words[word], words[word]) << word;
    EXPECT_EQ(style.get(StyleFill), 64);
    EXPECT_EQ(style.get(StyleSecondFill), 65);
    EXPECT_EQ(style.get(StyleVertical), 2);
    EXPECT_EQ(style.get(StyleLocked), 1);
    EXPECT_EQ(style.format(), 0);
    EXPECT_EQ(style.font(), 0);
}

TEST(CellStyle, ofTheDialogsIsFilledWhite)
{
    const CellStyle style = dialogStyle();
    EXPECT_EQ(style.get(StyleFill), 9);
    EXPECT_EQ(style.get(StylePattern), 1);
    EXPECT_EQ(style.get(StyleHorizontal), 0);
    EXPECT_EQ(style.get(StyleVertical), 2);
    EXPECT_EQ(style.get(StyleWrap), 0);
    EXPECT_EQ(style.get(StyleLocked), 1);
    EXPECT_EQ(style.get(StyleHidden), 0);
}

TEST(CellStyle, isComparedByItsEightWords)
{
    CellStyle other = defaultStyle();
    other.fileIndex = 99;
    EXPECT_TRUE(defaultStyle().sameAs(other));
    for (int word = 0; word < CellStyle::WordCount; ++word) {
        CellStyle changed = defaultStyle();
        changed.words[word] ^= 0x8000;
        EXPECT_FALSE(changed.sameAs(defaultStyle())) << word;
    }
}

TEST(FontRecord, hasSixLooksInANewWorkbook)
{
    const struct {
        std::u16string_view face;
        int weight, attributes, reserved;
    } fonts[] = {
        {u"Tahoma", 400, 0, 55},
        {u"Arial",  700, 1, 0 },
        {u"Arial",  400, 2, 0 },
        {u"Arial",  700, 3, 0 },
        {u"Arial",  700, 3, 0 },
        {u"Arial",  400, 0, 0 },
    };
    for (int index = 0; index < DefaultFontCount; ++index) {
        const FontRecord font = defaultFont(index);
        EXPECT_EQ(font.face(), fonts[index].face) << index;
        EXPECT_EQ(font.weight, fonts[index].weight) << index;
        EXPECT_EQ(font.attributes, fonts[index].attributes) << index;
        EXPECT_EQ(font.reserved, fonts[index].reserved) << index;
        EXPECT_EQ(font.height, 200) << index;
        EXPECT_EQ(font.colour, 32767) << index;
        EXPECT_EQ(font.underline, 0) << index;
        EXPECT_EQ(font.family, 34) << index;
        EXPECT_EQ(font.charset, 1) << index;
    }
    EXPECT_TRUE(defaultFont(4).sameAs(defaultFont(3)));
}

TEST(FontRecord, ofTheDialogsIsBlackTahoma)
{
    const FontRecord font = dialogFont();
    EXPECT_EQ(font.face(), u"Tahoma");
    EXPECT_EQ(font.height, 200);
    EXPECT_EQ(font.weight, 400);
    EXPECT_EQ(font.colour, 8);
    EXPECT_EQ(font.family, 34);
    EXPECT_EQ(font.charset, 1);
}

TEST(FontRecord, isComparedByWhatIsSeen)
{
    const struct {
        const char* phrase;
        void (*change)(FontRecord&);
        bool same;
    } cases[] = {
        {"nothing",             [](FontRecord&) {},                                        true },
        {"reserved",            [](FontRecord& font) { font.reserved = 99; },              true },
        {"number in a file",    [](FontRecord& font) { font.fileIndex = 5; },              true },
        {"height",              [](FontRecord& font) { font.height = 210; },               false},
        {"weight",              [](FontRecord& font) { font.weight = 700; },               false},
        {"attributes",          [](FontRecord& font) { font.attributes = FontStrikeout; }, false},
        {"colour",              [](FontRecord& font) { font.colour = 8; },                 false},
        {"underline",           [](FontRecord& font) { font.underline = 1; },              false},
        {"family",              [](FontRecord& font) { font.family = 1; },                 false},
        {"charset",             [](FontRecord& font) { font.charset = 0; },                false},
        {"another face",        [](FontRecord& font) { font.setFace(u"Arial"); },          false},
        {"a face that goes on", [](FontRecord& font) { font.setFace(u"Tahoma2"); },        false},
        {"the case of a face",  [](FontRecord& font) { font.setFace(u"TAHOMA"); },         false},
    };
    for (const auto& c : cases) {
        FontRecord changed = defaultFont(0);
        c.change(changed);
        EXPECT_EQ(changed.sameAs(defaultFont(0)), c.same) << c.phrase;
    }
}

TEST(FontRecord, keepsWhatItHasRoomForOfAFace)
{
    FontRecord font;
    font.setFace(std::u16string(40, u'x'));
    EXPECT_EQ(font.face(), std::u16string(32, u'x'));
    font.setFace(u"ab");
    EXPECT_EQ(font.face(), u"ab");
    EXPECT_EQ(font.name[2], u'\0');
    EXPECT_EQ(font.name[31], u'\0');
    font.setFace(u"");
    EXPECT_EQ(font.face(), u"");
}

} // namespace
} // namespace vorn
