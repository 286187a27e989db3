#include "editing/format.h"

#include "core/applyformat.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"

namespace vorn {

namespace {

constexpr int TwipsPerPoint = 20;
constexpr int ThinLine = 1;
constexpr int SolidPattern = 1;

const Sheet& currentSheet()
{
    return *workbook->currentSheet;
}

// --- Steps

// A step whose undoing puts back all that is selected.
void addFormatStep(ByteCodeWriter& forward, ByteCodeWriter& backward, std::u16string_view label)
{
    std::uint8_t* forwardProgram = forward.finish();
    addUndoStep(forwardProgram, backward.finish(), label);
}

void addActionStep(ActionRow action, std::initializer_list<int> operands, std::u16string_view label)
{
    ByteCodeWriter backward;
    emitSnapshot(backward);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitAction(forward, action, operands);
    addFormatStep(forward, backward, label);
}

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

// --- The buttons

void toggleBold()
{
    addActionStep(ActionBold, {isBold(currentSheet()) ? 0 : 1}, u"Bold");
}

void toggleItalic()
{
    addActionStep(ActionItalic, {isItalic(currentSheet()) ? 0 : 1}, u"Italic");
}

void toggleUnderline()
{
    addActionStep(ActionUnderline, {isUnderlined(currentSheet()) ? 0 : 1}, u"Underline");
}

void toggleAlignment(int alignment)
{
    const int already = isAligned(currentSheet(), alignment) ? 1 : 0;
    addActionStep(ActionAlign, {already, alignment}, u"Alignment");
}

// --- Format Cells

FormatRequest readFormatRequest()
{
    const FormatTemplate common = commonFormat(currentSheet(), currentSheet().selection.range);
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

void applyFormatRequest(const FormatRequest& before, const FormatRequest& after)
{
    const FormatTemplate format = formatOfRequest(before, after);
    if (format.styleMask.none())
        return;
    const bool fontChanged = format.styleMask[MaskFont];
    ByteCodeWriter backward;
    emitSnapshot(backward);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitFormatTemplate(forward, format);
    emitAction(forward, ActionFormat);
    if (fontChanged) {
        emitAction(backward, ActionAutoFitRows);
        emitAction(forward, ActionAutoFitRows);
    }
    addFormatStep(forward, backward, u"Format Cells");
}

void emitFormatTemplate(ByteCodeWriter& program, const FormatTemplate& format)
{
    for (const std::uint16_t word : format.style.words)
        emitInteger(program, word);
    for (std::size_t flag = 0; flag < StyleMaskCount; ++flag)
        emitInteger(program, format.styleMask[flag] ? 1 : 0);
    emitInteger(program, 0);
    const FontRecord& font = format.font;
    for (const int field :
         {int{font.reserved}, int{font.underline}, int{font.attributes}, int{font.height},
          int{font.colour}, int{font.weight}, int{font.family}, int{font.charset}})
        emitInteger(program, field);
    CellValue face;
    makeTextValue(face, font.face());
    if (face.textIndex() < 0)
        program.abandon();
    else
        program.emit(OpPushValue, face);
    emitInteger(program, font.nameLength);
    for (std::size_t flag = 0; flag < FontMaskCount; ++flag)
        emitInteger(program, format.fontMask[flag] ? 1 : 0);
}

} // namespace vorn
