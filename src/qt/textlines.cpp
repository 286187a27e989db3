#include "qt/textlines.h"

#include "qt/strings.h"

#include <QGlyphRun>
#include <QTextLayout>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>

namespace vorn::qt {

namespace {

// Room that is missing by less than this is only a matter of rounding.
constexpr double RoundingRoom = 1.0 / 256;

// Lines longer than this are drawn in pieces.
constexpr std::size_t PieceLength = 512;

// A line whose letters join, change places or come from several fonts.
class ShapedLine {
public:
    ShapedLine(const Typeface& typeface, std::u16string_view text)
        : layout_(shownText(text), typeface.plainFont())
    {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
        option.setUseDesignMetrics(true);
        layout_.setTextOption(option);
        layout_.beginLayout();
        line_ = layout_.createLine();
        if (line_.isValid())
            line_.setNumColumns(static_cast<int>(text.size()));
        layout_.endLayout();
    }

    double width() const { return line_.isValid() ? line_.naturalTextWidth() : 0; }

    void draw(QPainter& painter, QPointF foot, double scale) const
    {
        if (!line_.isValid())
            return;
        const QTransform before = painter.transform();
        painter.translate(foot);
        painter.scale(scale, scale);
        layout_.draw(&painter, QPointF(0, -line_.ascent()));
        painter.setTransform(before);
    }

private:
    // What moves a machine's carriage has no shape: it is shown as a blank.
    static QString shownText(std::u16string_view text)
    {
        QString shown = toQt(text);
        for (QChar& letter : shown) {
            if (letter < QLatin1Char(' ') || letter == QChar(0x7F) ||
                letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator)
                letter = QLatin1Char(' ');
        }
        return shown;
    }

    QTextLayout layout_;
    QTextLine line_;
};

// Collects the lines of one paragraph word by word.
class LineBreaker {
public:
    LineBreaker(Typeface& typeface, double room, std::vector<TextLine>& lines)
        : typeface_(typeface), room_(room + RoundingRoom), blank_(lineWidth(typeface, u" ")),
          lines_(lines)
    {
    }

    void breakParagraph(std::u16string_view paragraph)
    {
        paragraph_ = paragraph;
        beginLine(0);
        std::size_t begin = paragraph.find_first_not_of(u' ');
        while (begin < paragraph.size()) {
            const std::size_t end = std::min(paragraph.find(u' ', begin), paragraph.size());
            addWord(begin, end);
            begin = paragraph.find_first_not_of(u' ', end);
        }
        closeLine();
    }

private:
    void addWord(std::size_t begin, std::size_t end)
    {
        const double word = lineWidth(typeface_, paragraph_.substr(begin, end - begin));
        double gap = static_cast<double>(begin - end_) * blank_;
        if (hasWord_ && width_ + gap + word > room_) {
            closeLine();
            beginLine(begin);
            gap = 0;
        }
        width_ += gap + word;
        end_ = end;
        hasWord_ = true;
    }

    void beginLine(std::size_t begin)
    {
        begin_ = end_ = begin;
        width_ = 0;
        hasWord_ = false;
    }

    void closeLine() { lines_.push_back({paragraph_.substr(begin_, end_ - begin_), width_}); }

    Typeface& typeface_;
    double room_;
    double blank_;
    std::vector<TextLine>& lines_;
    std::u16string_view paragraph_;
    // The line so far, from its place in the paragraph to the end of its last word.
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    double width_ = 0;
    bool hasWord_ = false;
};

// Returns where the next piece begins.
QPointF drawPiece(QPainter& painter, Typeface& typeface, std::u16string_view text, QPointF foot,
                  double scale)
{
    QVarLengthArray<quint32, 64> glyphs;
    QVarLengthArray<QPointF, 64> places;
    double at = 0;
    for (const char16_t unit : text) {
        const Letter letter = typeface.letter(unit);
        glyphs.append(letter.glyph);
        places.append({at, 0});
        at += letter.advance * scale;
    }
    QGlyphRun run;
    run.setRawFont(typeface.at(scale));
    run.setRawData(glyphs.constData(), places.constData(), static_cast<int>(glyphs.size()));
    painter.drawGlyphRun(foot, run);
    return foot + QPointF(at, 0);
}

void drawRule(QPainter& painter, QPointF left, double width, double thickness)
{
    const int top = static_cast<int>(std::lround(left.y()));
    const int begin = static_cast<int>(std::lround(left.x()));
    const int end = static_cast<int>(std::lround(left.x() + width));
    const int height = std::max(static_cast<int>(std::lround(thickness)), 1);
    painter.fillRect(QRect(begin, top, end - begin, height), painter.pen().color());
}

void drawRules(QPainter& painter, Typeface& typeface, const TextLine& line, QPointF foot,
               double scale)
{
    const QRawFont& font = typeface.at(scale);
    const double width = line.width * scale;
    if (typeface.underline()) {
        const double below = std::max(font.underlinePosition(), 1.0);
        drawRule(painter, foot + QPointF(0, below), width, font.lineThickness());
    }
    if (typeface.strikeout())
        drawRule(painter, foot - QPointF(0, font.xHeight() / 2), width, font.lineThickness());
}

} // namespace

double lineWidth(Typeface& typeface, std::u16string_view line)
{
    return typeface.isPlain(line) ? typeface.plainWidth(line) : ShapedLine(typeface, line).width();
}

std::u16string_view seenPart(const Typeface& typeface, std::u16string_view line, int room,
                             LineSide side)
{
    // A narrow letter is a quarter as wide as its line is high, a narrow blank an eighth; marks
    // have no width.
    constexpr std::size_t marks = 200;
    const auto width = static_cast<std::size_t>(std::max(room, 0));
    const auto height = static_cast<std::size_t>(std::max(typeface.lineHeight(), 1));
    const std::size_t length = marks + 16 * width / height;
    if (line.size() <= length)
        return line;
    // Where a text runs to the left, what is seen at the left is its end.
    const bool fromStart =
        QStringView(line.data(), static_cast<qsizetype>(line.size())).isRightToLeft() ==
        (side == LineSide::Right);
    const auto splitsPair = [&line](std::size_t place) {
        return line[place] >= 0xDC00 && line[place] <= 0xDFFF;
    };
    if (fromStart)
        return line.substr(0, splitsPair(length) ? length + 1 : length);
    const std::size_t begin = line.size() - length;
    return line.substr(splitsPair(begin) ? begin - 1 : begin);
}

std::vector<TextLine> breakLines(Typeface& typeface, std::u16string_view text, double room)
{
    std::vector<TextLine> lines;
    LineBreaker breaker(typeface, room, lines);
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(u'\n', begin), text.size());
        breaker.breakParagraph(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

void drawLine(QPainter& painter, Typeface& typeface, const TextLine& line, QPointF foot,
              double scale)
{
    if (typeface.isPlain(line.text)) {
        QPointF at = foot;
        for (std::size_t begin = 0; begin < line.text.size(); begin += PieceLength)
            at = drawPiece(painter, typeface, line.text.substr(begin, PieceLength), at, scale);
    } else {
        ShapedLine(typeface, line.text).draw(painter, foot, scale);
    }
    if (typeface.underline() || typeface.strikeout())
        drawRules(painter, typeface, line, foot, scale);
}

} // namespace vorn::qt
