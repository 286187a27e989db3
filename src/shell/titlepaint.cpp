#include "shell/titlepaint.h"

#include "core/fontlook.h"
#include "core/style.h"
#include "formula/references.h"
#include "platform/canvas.h"
#include "platform/platform.h"
#include "shell/look.h"

#include <algorithm>
#include <string>

namespace vorn {

namespace {

constexpr int TitleMargin = 1; // on either side of the text
constexpr int LeastTitleHeight = 6;

struct TitleBox {
    Rect rect;
    std::u16string label;
    bool pressed;
};

// Flat, with the light on its left and upper edges; one that is pressed has no light.
void paintBox(Canvas& canvas, const Rect& box, bool pressed)
{
    const Rect inner = {box.left, box.top, box.right - 1, box.bottom - 1};
    canvas.fill(box, ColourFaceShadow);
    if (pressed) {
        canvas.fill(inner, ColourPressed);
        return;
    }
    canvas.fill(inner, ColourFaceLight);
    canvas.fill({box.left + 1, box.top + 1, inner.right, inner.bottom}, ColourFace);
}

// A number that is wider than its box is written smaller: cut off, it would be another number.
FontLook fittedFont(const FontLook& font, const TitleBox& box)
{
    const int room = std::max(box.rect.width() - 2 * TitleMargin, 1);
    const int width = platform.textMeasure->textWidth(font, box.label);
    FontLook fitted = font;
    if (width > room)
        fitted.height = std::clamp(font.height * room / width,
                                   std::min(LeastTitleHeight, font.height), font.height);
    return fitted;
}

void paintTitle(Canvas& canvas, const TitleBox& box, const FontLook& font)
{
    paintBox(canvas, box.rect, box.pressed);
    canvas.text(box.rect, box.label, fittedFont(font, box), ColourFaceText,
                {TextAcross::Center, TextDown::Middle, false});
}

// Calls `visit` with each that is seen, but for hidden ones, and where it begins. Answers where the
// last one ends.
template <typename Visit>
int forEachShown(const GridAxis& axis, Visit visit)
{
    const auto walk = [&](int index, int last, int edge) {
        for (; index <= last && edge < axis.end(); ++index) {
            const int pixels = axis.pixels(index);
            if (pixels > 0)
                visit(index, edge);
            edge += pixels;
        }
        return edge;
    };
    walk(axis.frozenFirst(), axis.frozenLast(), axis.start());
    return walk(axis.scrollFirst(), axis.last(), axis.scrollStart());
}

Rect columnBox(const Titles& titles, int column, int x)
{
    const Rect& strip = titles.areas.columnTitles;
    return {x, strip.top, x + titles.view.columns.pixels(column), strip.bottom};
}

Rect rowBox(const Titles& titles, int row, int y)
{
    const Rect& strip = titles.areas.rowTitles;
    return {strip.left, y, strip.right, y + titles.view.rows.pixels(row)};
}

std::u16string rowName(int row)
{
    const std::string digits = std::to_string(row + 1);
    return {digits.begin(), digits.end()};
}

void paintColumnTitles(Canvas& canvas, const Titles& titles, const RangeRef& selected,
                       const Rect& seen)
{
    const Clip clip(canvas, seen);
    const FontLook font = titleFont(titles.sheet.zoom);
    const int end = forEachShown(titles.view.columns, [&](int column, int x) {
        const Rect box = columnBox(titles, column, x);
        if (box.meets(seen))
            paintTitle(canvas, {box, columnName(column), selected.columnInRange(column)}, font);
    });
    const Rect rest = {std::max(end, seen.left), seen.top, seen.right, seen.bottom};
    if (!rest.isEmpty())
        canvas.fill(rest, ColourFace);
}

void paintRowTitles(Canvas& canvas, const Titles& titles, const RangeRef& selected,
                    const Rect& seen)
{
    const Clip clip(canvas, seen);
    const FontLook font = titleFont(titles.sheet.zoom);
    const int end = forEachShown(titles.view.rows, [&](int row, int y) {
        const Rect box = rowBox(titles, row, y);
        if (box.meets(seen))
            paintTitle(canvas, {box, rowName(row), selected.rowInRange(row)}, font);
    });
    const Rect rest = {seen.left, std::max(end, seen.top), seen.right, seen.bottom};
    if (!rest.isEmpty())
        canvas.fill(rest, ColourFace);
}

void paintCorner(Canvas& canvas, const Titles& titles, const RangeRef& selected, const Rect& seen)
{
    const Clip clip(canvas, seen);
    paintBox(canvas, titles.areas.cornerBox, selected.isWholeSheet());
}

// A part of the titles as far as it is seen within an area.
Rect seenPart(const Titles& titles, const Rect& part, const Rect& area)
{
    return part.intersected(titles.areas.gridArea).intersected(area);
}

} // namespace

FontLook titleFont(int zoom)
{
    FontRecord font;
    font.setFace(u"Tahoma");
    font.height = TitleFontTwips;
    font.weight = WeightNormal;
    return fontLook(font, zoom);
}

TitlesLook titlesLook(const Titles& titles)
{
    TitlesLook look;
    look.zoom = titles.sheet.zoom;
    const auto listed = [](const GridAxis& axis) {
        std::vector<TitlesLook::Title> list;
        const int end = forEachShown(axis, [&list](int index, int edge) {
            list.push_back({index, edge});
        });
        list.push_back({axis.last() + 1, end});
        return list;
    };
    if (!titles.areas.cornerBox.isEmpty()) {
        look.columns = listed(titles.view.columns);
        look.rows = listed(titles.view.rows);
    }
    return look;
}

void paintTitles(Canvas& canvas, const Titles& titles, const RangeRef& selected, const Rect& area)
{
    const Rect corner = seenPart(titles, titles.areas.cornerBox, area);
    if (!corner.isEmpty())
        paintCorner(canvas, titles, selected, corner);
    const Rect columns = seenPart(titles, titles.areas.columnTitles, area);
    if (!columns.isEmpty())
        paintColumnTitles(canvas, titles, selected, columns);
    const Rect rows = seenPart(titles, titles.areas.rowTitles, area);
    if (!rows.isEmpty())
        paintRowTitles(canvas, titles, selected, rows);
}

Region titleChanges(const Titles& titles, const RangeRef& selected, const RangeRef& before)
{
    Region changed;
    if (selected == before || titles.areas.cornerBox.isEmpty())
        return changed;
    if (selected.isWholeSheet() != before.isWholeSheet())
        changed.add(titles.areas.cornerBox);
    forEachShown(titles.view.columns, [&](int column, int x) {
        if (selected.columnInRange(column) != before.columnInRange(column))
            changed.add(columnBox(titles, column, x));
    });
    forEachShown(titles.view.rows, [&](int row, int y) {
        if (selected.rowInRange(row) != before.rowInRange(row))
            changed.add(rowBox(titles, row, y));
    });
    changed.cut(titles.areas.gridArea);
    return changed;
}

} // namespace vorn
