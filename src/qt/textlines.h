// Texts in lines: where they break, how wide they are and how they are drawn. Measuring and drawing
// go through here, so they cannot differ.
//
// Units: pixels at a scale of 1, with fractions; what is drawn is placed in the picture's pixels.
#pragma once

#include "qt/typeface.h"

#include <QPainter>

namespace vorn::qt {

struct TextLine {
    std::u16string_view text; // part of the text that was broken
    double width = 0;
};

double lineWidth(Typeface& typeface, std::u16string_view line);

// The part of a line that can be seen of it in so much room: its beginning, or its end where it is
// aligned to the right. To shape all of a long line would take longer than to paint a window.
enum class LineSide { Left, Right };
std::u16string_view seenPart(const Typeface& typeface, std::u16string_view line, int room,
                             LineSide side);

// Lines end at a line feed and break at blanks, which are dropped there; a word that is wider than
// `room` stays whole. There is at least one line.
std::vector<TextLine> breakLines(Typeface& typeface, std::u16string_view text, double room);

// Draws one line in the painter's pen with its foot at a place of the picture, which has `scale`
// pixels for one. The lines under or through it are drawn, too.
void drawLine(QPainter& painter, Typeface& typeface, const TextLine& line, QPointF foot,
              double scale);

} // namespace vorn::qt
