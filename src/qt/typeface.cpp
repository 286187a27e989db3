#include "qt/typeface.h"

#include "qt/strings.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <unordered_map>

namespace vorn::qt {

namespace {

// What stands for faces that free systems do not come with, the best first. All of them are legible
// at small sizes; those for widespread faces have the same widths where there are such.
struct Substitute {
    const char* face;
    std::initializer_list<const char*> families;
};

const Substitute substitutes[] = {
    {"tahoma",          {"DejaVu Sans Condensed"}                                           },
    {"verdana",         {"DejaVu Sans"}                                                     },
    {"arial",           {"Liberation Sans", "Arimo", "Nimbus Sans", "FreeSans"}             },
    {"helvetica",       {"Liberation Sans", "Arimo", "Nimbus Sans", "FreeSans"}             },
    {"courier new",     {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "Nimbus Mono PS"}},
    {"courier",         {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "Nimbus Mono PS"}},
    {"times new roman", {"Liberation Serif", "Tinos", "Nimbus Roman", "FreeSerif"}          },
    {"times",           {"Liberation Serif", "Tinos", "Nimbus Roman", "FreeSerif"}          },
};

const std::initializer_list<const char*> sansFamilies = {
    "DejaVu Sans Condensed", "Noto Sans", "DejaVu Sans", "Liberation Sans", "Nimbus Sans"};
const std::initializer_list<const char*> serifFamilies = {"Liberation Serif", "DejaVu Serif",
                                                          "Noto Serif", "Nimbus Roman"};
const std::initializer_list<const char*> fixedFamilies = {"Liberation Mono", "DejaVu Sans Mono",
                                                          "Noto Sans Mono", "Nimbus Mono PS"};

constexpr unsigned PitchMask = 3;
constexpr unsigned PitchFixed = 1;
constexpr unsigned FamilyMask = 0xF0;
constexpr unsigned FamilyRoman = 0x10;
constexpr unsigned FamilyModern = 0x30;

// Some fonts ask for tall lines because of marks that are hardly ever seen; their letters are not
// to be smaller for it than those of others. In parts of the size.
constexpr double TallestLine = 1.21;

// Letters beyond are shaped: their shape depends on what stands beside them, or they are rare.
constexpr char16_t PlainEnd = 0x0530;
constexpr char16_t SoftHyphen = 0x00AD;

constexpr char LetterUnknown = 0;
constexpr char LetterPlain = 1;
constexpr char LetterShaped = 2;

constexpr std::size_t TypefacesMax = 128;

QString firstOf(const std::initializer_list<const char*>& families)
{
    for (const char* family : families) {
        if (QFontDatabase::hasFamily(QString::fromLatin1(family)))
            return QString::fromLatin1(family);
    }
    return {};
}

QString familyOfKind(std::uint8_t pitchAndFamily)
{
    const unsigned family = pitchAndFamily & FamilyMask;
    if ((pitchAndFamily & PitchMask) == PitchFixed || family == FamilyModern)
        return firstOf(fixedFamilies);
    return firstOf(family == FamilyRoman ? serifFamilies : sansFamilies);
}

// How much room lines of letters of one size take, above and below the letters' foot.
struct LineShape {
    double ascent;
    double descent;

    double height() const { return ascent + descent; }
};

LineShape lineShape(QFont font, int size)
{
    font.setPixelSize(size);
    const QFontMetricsF metrics(font);
    return {metrics.ascent(), metrics.descent()};
}

bool fits(const QFont& font, int size, int lineHeight)
{
    const double height = std::min(lineShape(font, size).height(), size * TallestLine);
    return std::lround(height) <= lineHeight;
}

// The greatest size whose lines are no higher. Lines do not grow evenly with the size, so a guess
// is mended step by step.
int sizeForLine(const QFont& font, int lineHeight)
{
    int size = std::max(lineHeight * 6 / 7, 1);
    while (size > 1 && !fits(font, size, lineHeight))
        --size;
    while (size < lineHeight && fits(font, size + 1, lineHeight))
        ++size;
    return size;
}

QFont toolkitFont(const FontLook& look)
{
    QFont font(familyFor(look.face, look.pitchAndFamily));
    font.setWeight(static_cast<QFont::Weight>(std::clamp(look.weight, 1, 1000)));
    font.setItalic(look.italic);
    // Rows are sharp, and nothing is moved along a line: widths are the same at every scale. A
    // coloured edge would not survive an inversion.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    font.setKerning(false);
    return font;
}

bool isMark(char16_t unit)
{
    return QChar(unit).isMark() || unit == SoftHyphen;
}

struct LookHash {
    std::size_t operator()(const FontLook& look) const
    {
        const std::size_t numbers =
            static_cast<std::size_t>(look.height) * 31 + static_cast<std::size_t>(look.weight) * 8 +
            (look.italic ? 4U : 0U) + (look.underline ? 2U : 0U) + (look.strikeout ? 1U : 0U);
        return std::hash<std::u16string>()(look.face) ^ numbers;
    }
};

struct TypefaceCache {
    std::unordered_map<FontLook, std::unique_ptr<Typeface>, LookHash> typefaces;
    // A run of texts has one look; to compare is faster than to look up.
    const FontLook* lastLook = nullptr;
    Typeface* last = nullptr;
};

// Freed with the toolkit's application, whose fonts it holds.
std::unique_ptr<TypefaceCache> cache;

TypefaceCache& openCache()
{
    if (cache == nullptr) {
        cache = std::make_unique<TypefaceCache>();
        qAddPostRoutine([] { cache.reset(); });
    }
    return *cache;
}

} // namespace

QString familyFor(std::u16string_view face, std::uint8_t pitchAndFamily)
{
    const QString wanted = toQt(face);
    if (!wanted.isEmpty() && QFontDatabase::hasFamily(wanted))
        return wanted;
    for (const Substitute& substitute : substitutes) {
        if (wanted.compare(QLatin1String(substitute.face), Qt::CaseInsensitive) == 0) {
            const QString family = firstOf(substitute.families);
            if (!family.isEmpty())
                return family;
        }
    }
    const QString family = familyOfKind(pitchAndFamily);
    return family.isEmpty() ? QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()
                            : family;
}

Typeface::Typeface(const FontLook& look)
    : plain_(toolkitFont(look)), lineHeight_(std::max(look.height, 1)), letters_(PlainEnd),
      states_(PlainEnd, LetterUnknown)
{
    const int size = sizeForLine(plain_, lineHeight_);
    plain_.setPixelSize(size);
    font_ = plain_;
    font_.setUnderline(look.underline);
    font_.setStrikeOut(look.strikeout);
    raw_ = QRawFont::fromFont(plain_);
    scaled_ = raw_;
    const LineShape shape = lineShape(plain_, size);
    baseline_ = (lineHeight_ + shape.ascent - shape.descent) / 2;
}

bool Typeface::loadLetter(char16_t unit)
{
    states_[unit] = LetterShaped;
    if (isMark(unit) || !raw_.isValid())
        return false;
    // What moves a machine's carriage has no shape: it is shown as a blank.
    const QChar shown(unit < u' ' || unit == 0x7F ? u' ' : unit);
    quint32 glyph = 0;
    int count = 1;
    if (!raw_.glyphIndexesForChars(&shown, 1, &glyph, &count) || count != 1 || glyph == 0)
        return false;
    QPointF advance;
    if (!raw_.advancesForGlyphIndexes(&glyph, &advance, 1, QRawFont::UseDesignMetrics))
        return false;
    letters_[unit] = {glyph, advance.x()};
    states_[unit] = LetterPlain;
    return true;
}

bool Typeface::isPlain(std::u16string_view text)
{
    return std::all_of(text.begin(), text.end(), [this](char16_t unit) {
        return unit < PlainEnd && (states_[unit] == LetterPlain ||
                                   (states_[unit] == LetterUnknown && loadLetter(unit)));
    });
}

double Typeface::plainWidth(std::u16string_view text)
{
    double width = 0;
    for (const char16_t unit : text)
        width += letters_[unit].advance;
    return width;
}

const QRawFont& Typeface::at(double scale)
{
    if (scale != scale_) {
        scale_ = scale;
        scaled_ = raw_;
        scaled_.setPixelSize(raw_.pixelSize() * scale);
    }
    return scaled_;
}

Typeface& typefaceOf(const FontLook& look)
{
    TypefaceCache& known = openCache();
    if (known.lastLook != nullptr && *known.lastLook == look)
        return *known.last;
    if (known.typefaces.size() >= TypefacesMax && !known.typefaces.contains(look))
        known.typefaces.clear();
    auto& [key, typeface] = *known.typefaces.try_emplace(look).first;
    if (typeface == nullptr)
        typeface = std::make_unique<Typeface>(look);
    known.lastLook = &key;
    known.last = typeface.get();
    return *typeface;
}

} // namespace vorn::qt
