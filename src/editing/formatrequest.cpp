#include "editing/formatrequest.h"

#include "core/style.h"

#include <iterator>

namespace vorn {

namespace {

// The list begins with four colours that the palette has at other places.
constexpr int FirstColours[] = {8, 9, 22, 23};
constexpr int RegularOffset = 6;

constexpr int TwipsPerPoint = 20;
constexpr int ThinLine = 1;
constexpr int SolidPattern = 1;

// --- From the selection to the dialog

int valueOrMixed(const FormatTemplate& common, StyleMaskFlag flag, StyleField field)
{
    return common.styleMask[flag] ? common.style.get(field) : FormatMixed;
}

int horizontalOf(const FormatTemplate& common)
{
    const int alignment = valueOrMixed(common, MaskHorizontal, StyleHorizontal);
    if (alignment == AlignCenterSelection)
        return HorizontalCenterSelection;
    return alignment <= AlignRight ? alignment : FormatMixed;
}

int verticalOf(const FormatTemplate& common)
{
    const int alignment = valueOrMixed(common, MaskVertical, StyleVertical);
    return alignment <= AlignBottom ? alignment : FormatMixed;
}

int borderOf(const FormatTemplate& common, StyleMaskFlag flag, StyleField field)
{
    const int line = valueOrMixed(common, flag, field);
    return line > 0 ? 1 : line;
}

int backColourOf(const FormatTemplate& common)
{
    if (!common.styleMask[MaskFill] || !common.styleMask[MaskPattern])
        return FormatMixed;
    // Without a pattern the colour is not seen.
    return common.style.get(StylePattern) == 0 ? ColourEntryWhite
                                               : entryOfBackColour(common.style.get(StyleFill));
}

void readFont(FormatRequest& request, const FormatTemplate& common)
{
    const FontRecord& font = common.font;
    const FontMask& mask = common.fontMask;
    if (mask[MaskFace]) {
        request.fontName = font.face();
        request.fontPitch = font.family;
        request.fontCharset = font.charset;
    }
    if (mask[MaskSize])
        request.fontSize = font.height / TwipsPerPoint;
    if (mask[MaskColour])
        request.textColour = entryOfTextColour(font.colour);
    if (mask[MaskBold])
        request.bold = font.weight == WeightBold ? 1 : 0;
    if (mask[MaskItalic])
        request.italic = (font.attributes & FontItalic) != 0 ? 1 : 0;
    if (mask[MaskUnderline])
        request.underline = font.underline != 0 ? 1 : 0;
}

// --- From the dialog to a format

// Collects the fields that the dialog changed.
class ChangedFields {
public:
    ChangedFields(const FormatRequest& before, const FormatRequest& after)
        : before_(before), after_(after)
    {
        format_.style = dialogStyle();
        format_.font = dialogFont();
    }

    FormatTemplate collect()
    {
        collectStyle();
        collectBorders();
        collectFont();
        format_.styleMask[MaskFont] = format_.fontMask.any();
        return format_;
    }

private:
    bool isChanged(int FormatRequest::*field) const
    {
        return after_.*field != before_.*field && after_.*field != FormatMixed;
    }

    void take(StyleMaskFlag flag, StyleField field, int value)
    {
        format_.styleMask.set(flag);
        format_.style.set(field, value);
    }

    void collectStyle()
    {
        const struct {
            int FormatRequest::*field;
            StyleMaskFlag flag;
            StyleField place;
        } plain[] = {
            {&FormatRequest::numberFormat, MaskFormat,   StyleFormat  },
            {&FormatRequest::vertical,     MaskVertical, StyleVertical},
            {&FormatRequest::wrapText,     MaskWrap,     StyleWrap    },
            {&FormatRequest::locked,       MaskLocked,   StyleLocked  },
            {&FormatRequest::hidden,       MaskHidden,   StyleHidden  },
        };
        for (const auto& row : plain) {
            if (isChanged(row.field))
                take(row.flag, row.place, after_.*row.field);
        }
        if (isChanged(&FormatRequest::horizontal))
            take(MaskHorizontal, StyleHorizontal,
                 after_.horizontal == HorizontalCenterSelection ? int{AlignCenterSelection}
                                                                : after_.horizontal);
        if (isChanged(&FormatRequest::backColour))
            collectFill(colourOfEntry(after_.backColour));
    }

    void collectFill(int colour)
    {
        take(MaskFill, StyleFill, colour);
        take(MaskPattern, StylePattern, SolidPattern);
    }

    void collectBorders()
    {
        const struct {
            int FormatRequest::*field;
            StyleMaskFlag lineFlag, colourFlag;
            StyleField line, colour;
        } borders[] = {
            {&FormatRequest::borderLeft,   MaskLeftLine,   MaskLeftColour,   StyleLeftLine,
             StyleLeftColour                                                                                },
            {&FormatRequest::borderRight,  MaskRightLine,  MaskRightColour,  StyleRightLine,
             StyleRightColour                                                                               },
            {&FormatRequest::borderTop,    MaskTopLine,    MaskTopColour,    StyleTopLine,    StyleTopColour},
            {&FormatRequest::borderBottom, MaskBottomLine, MaskBottomColour, StyleBottomLine,
             StyleBottomColour                                                                              },
        };
        for (const auto& border : borders) {
            if (!isChanged(border.field))
                continue;
            const bool on = after_.*border.field != 0;
            take(border.lineFlag, border.line, on ? ThinLine : 0);
            if (on)
                take(border.colourFlag, border.colour, ColourWindowText);
        }
        format_.styleMask[MaskOutline] = isChanged(&FormatRequest::outline) && after_.outline != 0;
    }

    void collectFont()
    {
        FontRecord& font = format_.font;
        FontMask& mask = format_.fontMask;
        mask[MaskBold] = isChanged(&FormatRequest::bold);
        font.weight = after_.bold > 0 ? WeightBold : WeightNormal;
        mask[MaskItalic] = isChanged(&FormatRequest::italic);
        font.attributes = after_.italic > 0 ? FontItalic : 0;
        mask[MaskUnderline] = isChanged(&FormatRequest::underline);
        font.underline = after_.underline > 0 ? 1 : 0;
        mask[MaskSize] = isChanged(&FormatRequest::fontSize);
        if (mask[MaskSize])
            font.height = static_cast<std::uint16_t>(after_.fontSize * TwipsPerPoint);
        mask[MaskColour] = isChanged(&FormatRequest::textColour);
        if (mask[MaskColour])
            font.colour = static_cast<std::uint16_t>(colourOfEntry(after_.textColour));
        mask[MaskFace] = !after_.fontName.empty() && (after_.fontName != before_.fontName ||
                                                      after_.fontPitch != before_.fontPitch ||
                                                      after_.fontCharset != before_.fontCharset);
        if (mask[MaskFace]) {
            font.setFace(after_.fontName);
            font.family = after_.fontPitch;
            font.charset = after_.fontCharset;
        }
    }

    const FormatRequest& before_;
    const FormatRequest& after_;
    FormatTemplate format_;
};

} // namespace

int colourOfEntry(int entry)
{
    return entry >= 0 && entry < std::ssize(FirstColours) ? FirstColours[entry]
                                                          : entry + RegularOffset;
}

int entryOfColour(int colour)
{
    for (int entry = 0; entry < ColourEntryCount; ++entry) {
        if (colourOfEntry(entry) == colour)
            return entry;
    }
    return FormatMixed;
}

int entryOfTextColour(int colour)
{
    return colour == ColourAutomatic ? ColourEntryBlack : entryOfColour(colour);
}

int entryOfBackColour(int colour)
{
    return colour == ColourWindowText ? ColourEntryWhite : entryOfColour(colour);
}

FormatRequest requestOfFormat(const FormatTemplate& common)
{
    FormatRequest request;
    request.numberFormat = valueOrMixed(common, MaskFormat, StyleFormat);
    request.horizontal = horizontalOf(common);
    request.vertical = verticalOf(common);
    request.wrapText = valueOrMixed(common, MaskWrap, StyleWrap);
    readFont(request, common);
    request.backColour = backColourOf(common);
    request.borderLeft = borderOf(common, MaskLeftLine, StyleLeftLine);
    request.borderRight = borderOf(common, MaskRightLine, StyleRightLine);
    request.borderTop = borderOf(common, MaskTopLine, StyleTopLine);
    request.borderBottom = borderOf(common, MaskBottomLine, StyleBottomLine);
    request.outline = 0;
    request.locked = valueOrMixed(common, MaskLocked, StyleLocked);
    request.hidden = valueOrMixed(common, MaskHidden, StyleHidden);
    return request;
}

FormatTemplate formatOfRequest(const FormatRequest& before, const FormatRequest& after)
{
    return ChangedFields(before, after).collect();
}

} // namespace vorn
