#include "shell/celltext.h"

#include "core/fontlook.h"
#include "core/sheet.h"
#include "core/workbook.h"
#include "platform/platform.h"
#include "shell/cellcolours.h"

#include <algorithm>

namespace vorn {

namespace {

// What stays free of texts on both sides of a cell, and below its text.
constexpr int SideMargin = 2;
constexpr int LowerMargin = 1;

// The room that a number is fitted to where its cell does not count.
constexpr int SelectionRoom = 1000;

constexpr std::size_t RepeatedMax = 1024;

bool isZero(const CellValue& value)
{
    return (value.tag == TagNumber || value.tag == TagDateTime) && value.number() == 0;
}

bool hasTextFormat(const CellStyle& style)
{
    const int format = style.format();
    return format < workbook->formats.size() && workbook->formats[format].kind == FormatText;
}

int resolvedAlignment(const CellValue& value, const CellStyle& style)
{
    const int alignment = style.get(StyleHorizontal);
    if (alignment != AlignGeneral)
        return alignment;
    if (hasTextFormat(style))
        return AlignLeft;
    if (value.tag == TagLogical || value.tag == TagError)
        return AlignCenter;
    return value.tag == TagNumber || value.tag == TagDateTime ? AlignRight : AlignLeft;
}

// False for those that show no text at all.
bool placeDown(int vertical, TextDown& down)
{
    switch (vertical) {
    case AlignTop:
        down = TextDown::Top;
        return true;
    case AlignMiddle:
        down = TextDown::Middle;
        return true;
    case AlignBottom:
        down = TextDown::Bottom;
        return true;
    default:
        return false;
    }
}

Rect withoutMargins(const Rect& area)
{
    return {area.left + SideMargin, area.top, area.right - SideMargin, area.bottom - LowerMargin};
}

} // namespace

TextReach textReach(const CellValue& value, const CellStyle& style)
{
    if (style.get(StyleHorizontal) == AlignCenterSelection)
        return TextReach::Selection;
    return value.tag == TagText && !style.wraps() ? TextReach::Overflow : TextReach::Cell;
}

CellTextPainter::CellTextPainter(Canvas& canvas, const Sheet& sheet, const Rect& seen)
    : canvas_(canvas), sheet_(sheet), seen_(seen)
{
}

// To measure is slow, and a fitted number was just measured when it is centered.
int CellTextPainter::width(std::u16string_view text)
{
    if (measuredWidth_ < 0 || text != measured_) {
        measured_ = text;
        measuredWidth_ = platform.textMeasure->textWidth(look_, text);
    }
    return measuredWidth_;
}

// What has more characters than there are pixels does not, and need not be measured.
bool CellTextPainter::fits(std::u16string_view text, int room)
{
    constexpr std::size_t marks = 200; // that have no width of their own
    return text.size() <= static_cast<std::size_t>(std::max(room, 0)) + marks &&
           width(text) <= room;
}

void CellTextPainter::useFont(int font)
{
    if (font == font_)
        return;
    const FontRecord& record = workbook->fonts[font];
    font_ = font;
    look_ = fontLook(record, sheet_.zoom);
    colour_ = textColour(record);
    measuredWidth_ = -1;
}

std::u16string_view CellTextPainter::textOf(const CellValue& value, const CellStyle& style,
                                            int room)
{
    if (value.tag == TagText)
        return valueTextPointer(value);
    const bool centeredOver = style.get(StyleHorizontal) == AlignCenterSelection;
    renderValue(value, style.format(), centeredOver ? SelectionRoom : room, rendered_, this);
    return rendered_;
}

// As many copies as fill the room. The sum of the widths is a guess, since letters may stand closer
// than each by itself: what came out is measured.
std::u16string_view CellTextPainter::repeated(std::u16string_view text, int room)
{
    const int once = std::max(width(text), 1);
    if (once >= room || text.size() >= RepeatedMax)
        return text;
    repeated_ = text;
    for (int filled = once; filled < room && repeated_.size() < RepeatedMax;
         filled = width(repeated_)) {
        for (int copies = (room - filled + once - 1) / once;
             copies > 0 && repeated_.size() < RepeatedMax; --copies)
            repeated_ += text;
    }
    repeated_.resize(std::min(repeated_.size(), RepeatedMax));
    return repeated_;
}

void CellTextPainter::put(const Rect& area, std::u16string_view text, TextAcross across,
                          TextPlace place)
{
    place.across = across;
    if (area.meets(seen_))
        canvas_.text(area, text, look_, colour_, place);
}

// `own` is the room in the cell, `all` goes on to the limit.
void CellTextPainter::paintAcross(std::u16string_view text, int alignment, const Rect& own,
                                  const Rect& all, TextPlace place)
{
    switch (alignment) {
    case AlignCenter:
        if (place.wrap || fits(text, own.width()))
            put(own, text, TextAcross::Center, place);
        else // it goes on to the right only
            put(all, text, TextAcross::Left, place);
        break;
    case AlignRight:
        put(own, text, TextAcross::Right, place);
        break;
    case AlignFill:
        put(own, repeated(text, own.width()), TextAcross::Left, place);
        break;
    case AlignCenterSelection:
        put(all, text, TextAcross::Center, place);
        break;
    default:
        put(all, text, TextAcross::Left, place);
        break;
    }
}

void CellTextPainter::paint(const CellValue& value, const CellStyle& style, const Rect& cell,
                            int limit)
{
    TextPlace place;
    place.wrap = style.wraps();
    const Rect own = withoutMargins(cell);
    const Rect all = withoutMargins({cell.left, cell.top, limit, cell.bottom});
    if (!placeDown(style.get(StyleVertical), place.down) || !all.meets(seen_))
        return;
    if (!sheet_.showZeros && isZero(value))
        return;
    useFont(style.font());
    const std::u16string_view text = textOf(value, style, own.width());
    if (!text.empty())
        paintAcross(text, resolvedAlignment(value, style), own, all, place);
}

} // namespace vorn
