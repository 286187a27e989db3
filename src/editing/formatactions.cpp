// The steps that change how cells look, and those that fit rows and columns to it.

#include "core/applyformat.h"
#include "core/autofit.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "functions/arguments.h"

namespace vorn {

namespace {

Sheet& currentSheet()
{
    return *workbook->currentSheet;
}

std::uint16_t popWord()
{
    return static_cast<std::uint16_t>(popInteger());
}

std::uint8_t popByte()
{
    return static_cast<std::uint8_t>(popInteger());
}

void formatSelection(const FormatTemplate& format)
{
    applyFormat(currentSheet(), currentSheet().selection.range, format);
}

void formatFont(FontMaskFlag flag, const FontRecord& font)
{
    FormatTemplate format;
    format.styleMask.set(MaskFont);
    format.fontMask.set(flag);
    format.font = font;
    formatSelection(format);
}

template <std::size_t size>
void popMask(std::bitset<size>& mask)
{
    for (std::size_t flag = size; flag-- > 0;)
        mask[flag] = popInteger() != 0;
}

void popFont(FontRecord& font)
{
    popInteger(); // the length, which the face has as well
    const PoppedText face;
    font.setFace(face.view());
    font.charset = popByte();
    font.family = popByte();
    font.weight = popWord();
    font.colour = popWord();
    font.height = popWord();
    font.attributes = popWord();
    font.underline = popByte();
    font.reserved = popByte();
}

} // namespace

void callActionBold()
{
    FontRecord font;
    font.weight = popInteger() != 0 ? WeightBold : WeightNormal;
    formatFont(MaskBold, font);
}

void callActionItalic()
{
    FontRecord font;
    font.attributes = popInteger() != 0 ? FontItalic : 0;
    formatFont(MaskItalic, font);
}

void callActionUnderline()
{
    FontRecord font;
    font.underline = popInteger() != 0 ? 1 : 0;
    formatFont(MaskUnderline, font);
}

void callActionAlign()
{
    const int alignment = popInteger();
    const bool already = popInteger() != 0;
    FormatTemplate format;
    format.styleMask.set(MaskHorizontal);
    format.style.set(StyleHorizontal, already ? int{AlignGeneral} : alignment);
    formatSelection(format);
}

void callActionFormat()
{
    FormatTemplate format;
    popMask(format.fontMask);
    popFont(format.font);
    popInteger(); // a word behind the mask that nobody reads
    popMask(format.styleMask);
    for (int word = CellStyle::WordCount; word-- > 0;)
        format.style.words[word] = popWord();
    // The user may have deleted the number format since.
    if (format.style.format() >= workbook->formats.size())
        format.style.set(StyleFormat, FormatIndexGeneral);
    formatSelection(format);
}

void callActionAutoFitRows()
{
    autofitRows(currentSheet(), currentSheet().selection.range);
}

void callActionAutoFitRow()
{
    const int row = popInteger();
    currentSheet().setRowHeight(row, autofitRow(currentSheet(), row), false);
}

void callActionAutoFitColumn()
{
    const int column = popInteger();
    currentSheet().columns.setColumnWidth(column, column, autofitColumn(currentSheet(), column));
}

} // namespace vorn
