#include "core/formatmask.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

template <typename Mask, typename Flag>
Mask only(Flag flag)
{
    return Mask().set(flag);
}

TEST(FormatMask, takesTheFieldThatAFlagNames)
{
    const struct {
        StyleMaskFlag flag;
        int field; // -1 for none
    } cases[] = {
        {MaskFormat,         StyleFormat      },
        {MaskTopLine,        StyleTopLine     },
        {MaskLeftLine,       StyleLeftLine    },
        {MaskBottomLine,     StyleBottomLine  },
        {MaskRightLine,      StyleRightLine   },
        {MaskOutline,        -1               },
        {MaskTopColour,      StyleTopColour   },
        {MaskLeftColour,     StyleLeftColour  },
        {MaskBottomColour,   StyleBottomColour},
        {MaskRightColour,    StyleRightColour },
        {MaskFill,           StyleFill        },
        {MaskWithoutMeaning, -1               },
        {MaskPattern,        StylePattern     },
        {MaskHorizontal,     StyleHorizontal  },
        {MaskVertical,       StyleVertical    },
        {MaskWrap,           StyleWrap        },
        {MaskLocked,         StyleLocked      },
        {MaskHidden,         StyleHidden      },
        {MaskFont,           -1               },
    };
    ASSERT_EQ(std::size(cases), std::size_t{StyleMaskCount});
    CellStyle full;
    for (std::uint16_t& word : full.words)
        word = 0xffff;
    int number = 0;
    for (const auto& c : cases) {
        EXPECT_EQ(c.flag, number++) << "the place of a flag is its number in undo programs";
        CellStyle style;
        applyStyleChange(style, full, only<StyleMask>(c.flag));
        CellStyle wanted;
        if (c.field >= 0)
            wanted.set(static_cast<StyleField>(c.field), 0xffff);
        EXPECT_TRUE(style.sameAs(wanted)) << c.flag;
    }
}

TEST(FormatMask, findsTheFieldsInWhichStylesAgree)
{
    CellStyle full;
    for (std::uint16_t& word : full.words)
        word = 0xffff;
    const StyleMask fields = agreeingFields(full, full);
    EXPECT_EQ(fields.count(), std::size_t{StyleMaskCount - 3});
    EXPECT_FALSE(fields[MaskOutline] || fields[MaskWithoutMeaning] || fields[MaskFont]);
    for (std::size_t flag = 0; flag < StyleMaskCount; ++flag) {
        if (!fields[flag])
            continue;
        CellStyle other;
        applyStyleChange(other, full, fields);
        applyStyleChange(other, CellStyle(), only<StyleMask>(flag));
        EXPECT_EQ(agreeingFields(full, other), StyleMask(fields).reset(flag)) << flag;
    }
}

FontRecord font(std::u16string_view face, int height, int weight = WeightNormal,
                std::uint16_t attributes = 0, std::uint8_t underline = 0)
{
    FontRecord record;
    record.setFace(face);
    record.height = static_cast<std::uint16_t>(height);
    record.weight = static_cast<std::uint16_t>(weight);
    record.attributes = attributes;
    record.underline = underline;
    return record;
}

TEST(FormatMask, mergesAFontFieldByField)
{
    const FontRecord plain = font(u"Tahoma", 200);
    const FontRecord rich = font(u"Arial", 480, 700, FontItalic | FontStrikeout, 1);
    const struct {
        FontMaskFlag flag;
        FontRecord wanted;
    } cases[] = {
        {MaskBold,        font(u"Tahoma", 200,               700)},
        {MaskItalic,               font(u"Tahoma",                    200,         400, FontItalic)},
        {MaskUnderline,            font(u"Tahoma",               200,                        400, 0, 1)},
        {MaskSize,font(u"Tahoma",480)},
        {MaskFace,             font(u"Arial",                           200)                                    },
    };
    for (const auto& c : cases) {
        FontRecord merged = plain;
        EXPECT_TRUE(mergeFont(merged, rich, only<FontMask>(c.flag))) << c.flag;
        EXPECT_TRUE(merged.sameAs(c.wanted)) << c.flag;
        EXPECT_FALSE(mergeFont(merged, rich, only<FontMask>(c.flag))) << c.flag << ", again";
    }
    FontRecord merged = plain;
    EXPECT_FALSE(mergeFont(merged, rich, FontMask()));
    EXPECT_TRUE(merged.sameAs(plain));
    FontRecord coloured = plain;
    coloured.colour = 10;
    EXPECT_TRUE(mergeFont(merged, coloured, only<FontMask>(MaskColour)));
    EXPECT_EQ(merged.colour, 10);
}

TEST(FormatMask, takesAFaceWithItsFamilyAndCharacterSet)
{
    FontRecord other = font(u"Tahoma", 200);
    other.family = 49;
    other.charset = 238;
    FontRecord merged = font(u"Tahoma", 200);
    EXPECT_TRUE(mergeFont(merged, other, only<FontMask>(MaskFace)));
    EXPECT_TRUE(merged.sameAs(other));
}

TEST(FormatMask, setsBoldByTheWeightAlone)
{
    FontRecord merged = font(u"Tahoma", 200, 700, FontBold);
    EXPECT_TRUE(mergeFont(merged, font(u"Arial", 200), only<FontMask>(MaskBold)));
    EXPECT_EQ(merged.weight, 400);
    EXPECT_EQ(merged.attributes, FontBold) << "the bit of the attributes is not touched";

    FontRecord heavy = font(u"Tahoma", 200, 800);
    EXPECT_FALSE(mergeFont(heavy, font(u"Arial", 200), only<FontMask>(MaskBold)))
        << "a weight that is not 700 is not bold";
    EXPECT_EQ(heavy.weight, 800);
    EXPECT_TRUE(mergeFont(heavy, font(u"Arial", 200, 700), only<FontMask>(MaskBold)));
    EXPECT_EQ(heavy.weight, 700);
}

TEST(FormatMask, keepsTheOtherAttributesOfAnItalicFont)
{
    FontRecord merged = font(u"Tahoma", 200, 400, FontStrikeout | FontItalic | FontBold);
    EXPECT_TRUE(mergeFont(merged, font(u"Tahoma", 200), only<FontMask>(MaskItalic)));
    EXPECT_EQ(merged.attributes, FontStrikeout | FontBold);
}

TEST(FormatMask, comparesSizesInWholePoints)
{
    const struct {
        const char* phrase;
        int height, wanted, result;
    } cases[] = {
        {"ten and a half is ten",            210, 200, 210},
        {"and so is all below eleven",       219, 200, 219},
        {"eleven is another size",           210, 220, 220},
        {"a size that is set is whole",      200, 230, 220},
        {"half a point of the other is cut", 200, 210, 200},
    };
    for (const auto& c : cases) {
        FontRecord merged = font(u"Tahoma", c.height);
        EXPECT_EQ(mergeFont(merged, font(u"Tahoma", c.wanted), only<FontMask>(MaskSize)),
                  c.result != c.height)
            << c.phrase;
        EXPECT_EQ(merged.height, c.result) << c.phrase;
    }
}

TEST(FormatMask, findsTheFieldsInWhichFontsAgree)
{
    const FontRecord plain = font(u"Tahoma", 200);
    FontRecord coloured = plain;
    coloured.colour = 9;
    FontRecord foreign = plain;
    foreign.charset = 204;
    FontRecord roman = plain;
    roman.family = 18;
    const struct {
        const char* phrase;
        FontRecord other;
        int differs; // a flag; -1 for none
    } cases[] = {
        {"the same font", plain,                    -1       },
        {"weight 700",    font(u"Tahoma",           200,       700), MaskBold},
        {"another weight",       font(u"Tahoma",                               200,                         800), -1},
        {"the bold bit",            font(u"Tahoma",  200,400, FontBold), -1},
        {"italic",  font(u"Tahoma", 200,      400, FontItalic), MaskItalic},
        {"strikeout",      font(u"Tahoma",                            200,                                     400, FontStrikeout), -1},
        {"underlined",font(u"Tahoma",                     200,                      400, 0, 1), MaskUnderline},
        {"eleven points",     font(u"Tahoma",                             220),                            MaskSize},
        {"ten and a half",            font(u"Tahoma",      210),-1},
        {"colour",               coloured,                            MaskColour                       },
        {"face",            font(u"Arial",                                   200),                     MaskFace},
        {"character set",               foreign,                         MaskFace               },
        {"family",       roman,                               MaskFace},
    };
    for (const auto& c : cases) {
        FontMask wanted = FontMask().set();
        if (c.differs >= 0)
            wanted.reset(static_cast<std::size_t>(c.differs));
        EXPECT_EQ(agreeingFields(plain, c.other), wanted) << c.phrase;
    }
    EXPECT_TRUE(agreeingFields(font(u"Tahoma", 200, 400, 0, 1),
                               font(u"Tahoma", 200, 400, 0, 33))[MaskUnderline])
        << "a double line underlines as well";
}

} // namespace
} // namespace vorn
