#include "editing/format.h"

#include "core/applyformat.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/undo.h"

namespace vorn {

namespace {

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
    return requestOfFormat(commonFormat(currentSheet(), currentSheet().selection.range));
}

void applyFormatRequest(const FormatRequest& before, const FormatRequest& after)
{
    const FormatTemplate format = formatOfRequest(before, after);
    if (format.styleMask.none())
        return;
    const bool fontChanged = format.styleMask[MaskFont];
    ByteCodeWriter backward;
    emitSnapshot(backward, fontChanged ? FitRows : LeaveRows);
    ByteCodeWriter forward;
    emitSelectRange(forward);
    emitFormatTemplate(forward, format);
    emitAction(forward, ActionFormat);
    if (fontChanged)
        emitAction(forward, ActionAutoFitRows);
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
