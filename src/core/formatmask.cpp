#include "core/formatmask.h"

namespace vorn {
namespace {

constexpr int TwipsPerPoint = 20;

// The flags that stand for one field of a style each.
constexpr struct {
    StyleMaskFlag flag;
    StyleField field;
} MaskedFields[] = {
    {MaskFormat,       StyleFormat      },
    {MaskTopLine,      StyleTopLine     },
    {MaskLeftLine,     StyleLeftLine    },
    {MaskBottomLine,   StyleBottomLine  },
    {MaskRightLine,    StyleRightLine   },
    {MaskTopColour,    StyleTopColour   },
    {MaskLeftColour,   StyleLeftColour  },
    {MaskBottomColour, StyleBottomColour},
    {MaskRightColour,  StyleRightColour },
    {MaskFill,         StyleFill        },
    {MaskPattern,      StylePattern     },
    {MaskHorizontal,   StyleHorizontal  },
    {MaskVertical,     StyleVertical    },
    {MaskWrap,         StyleWrap        },
    {MaskLocked,       StyleLocked      },
    {MaskHidden,       StyleHidden      },
};

bool isBoldFont(const FontRecord& font)
{
    return font.weight == WeightBold;
}
bool isItalicFont(const FontRecord& font)
{
    return (font.attributes & FontItalic) != 0;
}
int wholePoints(const FontRecord& font)
{
    return font.height / TwipsPerPoint;
}
bool sameFace(const FontRecord& a, const FontRecord& b)
{
    return a.face() == b.face() && a.family == b.family && a.charset == b.charset;
}

// Do two fonts look the same in the field of a flag?
bool fontsAgree(const FontRecord& a, const FontRecord& b, FontMaskFlag flag)
{
    switch (flag) {
    case MaskBold:
        return isBoldFont(a) == isBoldFont(b);
    case MaskItalic:
        return isItalicFont(a) == isItalicFont(b);
    case MaskUnderline:
        return (a.underline != 0) == (b.underline != 0);
    case MaskSize:
        return wholePoints(a) == wholePoints(b);
    case MaskColour:
        return a.colour == b.colour;
    case MaskFace:
        return sameFace(a, b);
    case FontMaskCount:
        break;
    }
    return true;
}

void takeFontField(FontRecord& font, const FontRecord& from, FontMaskFlag flag)
{
    switch (flag) {
    case MaskBold:
        font.weight = isBoldFont(from) ? WeightBold : WeightNormal;
        break;
    case MaskItalic:
        font.attributes = static_cast<std::uint16_t>((font.attributes & ~FontItalic) |
                                                     (from.attributes & FontItalic));
        break;
    case MaskUnderline:
        font.underline = from.underline != 0 ? 1 : 0;
        break;
    case MaskSize:
        font.height = static_cast<std::uint16_t>(wholePoints(from) * TwipsPerPoint);
        break;
    case MaskColour:
        font.colour = from.colour;
        break;
    case MaskFace:
        font.setFace(from.face());
        font.family = from.family;
        font.charset = from.charset;
        break;
    case FontMaskCount:
        break;
    }
}

} // namespace

void applyStyleChange(CellStyle& style, const CellStyle& from, const StyleMask& mask)
{
    for (const auto& masked : MaskedFields) {
        if (mask[masked.flag])
            style.set(masked.field, from.get(masked.field));
    }
}

bool mergeFont(FontRecord& font, const FontRecord& from, const FontMask& mask)
{
    const FontRecord old = font;
    for (int flag = 0; flag < FontMaskCount; ++flag) {
        const auto masked = static_cast<FontMaskFlag>(flag);
        // A weight that is neither normal nor bold stays, and so does the half of 10.5 points.
        if (mask[masked] && (masked == MaskUnderline || !fontsAgree(font, from, masked)))
            takeFontField(font, from, masked);
    }
    return !font.sameAs(old);
}

StyleMask agreeingFields(const CellStyle& a, const CellStyle& b)
{
    StyleMask agreed;
    for (const auto& masked : MaskedFields)
        agreed[masked.flag] = a.get(masked.field) == b.get(masked.field);
    return agreed;
}

FontMask agreeingFields(const FontRecord& a, const FontRecord& b)
{
    FontMask agreed;
    for (std::size_t flag = 0; flag < FontMaskCount; ++flag)
        agreed[flag] = fontsAgree(a, b, static_cast<FontMaskFlag>(flag));
    return agreed;
}

} // namespace vorn
