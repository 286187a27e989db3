#include "qt/fonts.h"

#include "qt/strings.h"
#include "qt/textlines.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace vorn::qt {

namespace {

constexpr std::u16string_view DefaultFace = u"Tahoma";

constexpr std::uint8_t KindRoman = 18; // with letters of several widths, and feet
constexpr std::uint8_t KindSwiss = 34;
constexpr std::uint8_t KindFixed = 49;

constexpr std::uint8_t CharsetAny = 1;
constexpr std::uint8_t CharsetSymbol = 2;

// What a document has room for.
constexpr qsizetype FaceMax = 31;

bool isSerif(const QString& family)
{
    if (family.contains(QLatin1String("sans"), Qt::CaseInsensitive))
        return false;
    return family.contains(QLatin1String("serif"), Qt::CaseInsensitive) ||
           family.contains(QLatin1String("roman"), Qt::CaseInsensitive) ||
           family.contains(QLatin1String("times"), Qt::CaseInsensitive);
}

FontFamily describe(const QString& family)
{
    FontFamily described;
    described.face = fromQt(family);
    if (QFontDatabase::isFixedPitch(family) || family.endsWith(QLatin1String(" Mono")))
        described.pitchAndFamily = KindFixed;
    else
        described.pitchAndFamily = isSerif(family) ? KindRoman : KindSwiss;
    const auto systems = QFontDatabase::writingSystems(family);
    const bool isSymbols = !systems.isEmpty() && systems.first() == QFontDatabase::Symbol;
    described.charset = isSymbols ? CharsetSymbol : CharsetAny;
    return described;
}

// The names that stand for whatever font of a kind there is.
bool isAlias(const QString& family)
{
    return family == QLatin1String("Sans Serif") || family == QLatin1String("Serif") ||
           family == QLatin1String("Monospace");
}

// Behind a name in brackets stands who made the font, where several did.
QString withoutMaker(const QString& family)
{
    return family.left(family.indexOf(QLatin1String(" ["))).trimmed();
}

QStringList offeredFamilies()
{
    QStringList offered;
    const QStringList all = QFontDatabase::families();
    for (const QString& full : all) {
        if (QFontDatabase::isPrivateFamily(full) || !QFontDatabase::isSmoothlyScalable(full))
            continue;
        const QString family = full.contains(QLatin1String(" [")) ? withoutMaker(full) : full;
        if (!isAlias(family) && family.size() <= FaceMax && !offered.contains(family))
            offered.append(family);
    }
    return offered;
}

} // namespace

QFont fontOf(const FontLook& look)
{
    return typefaceOf(look).font();
}

FontLook interfaceFontLook()
{
    FontLook look;
    look.face = DefaultFace;
    return look;
}

int QtTextMeasure::textWidth(const FontLook& font, std::u16string_view text)
{
    return static_cast<int>(std::ceil(lineWidth(typefaceOf(font), text)));
}

int QtTextMeasure::wrappedHeight(const FontLook& font, std::u16string_view text, int width)
{
    Typeface& typeface = typefaceOf(font);
    const std::size_t lines = breakLines(typeface, text, width).size();
    return static_cast<int>(lines) * typeface.lineHeight();
}

std::vector<FontFamily> QtTextMeasure::fontFamilies()
{
    std::vector<FontFamily> families;
    QStringList offered = offeredFamilies();
    const QString first = toQt(DefaultFace);
    offered.removeAll(first);
    families.push_back({std::u16string(DefaultFace), KindSwiss, CharsetAny, true, {}});
    std::transform(offered.cbegin(), offered.cend(), std::back_inserter(families), describe);
    return families;
}

} // namespace vorn::qt
