#include "qt/fonts.h"

#include "qt/strings.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include <set>

namespace vorn::qt {
namespace {

FontLook look(std::u16string face, int height = 14)
{
    FontLook made;
    made.face = std::move(face);
    made.height = height;
    return made;
}

TEST(Fonts, linesAreAsHighAsAskedForAndTheLettersAsLargeAsThatAllows)
{
    for (int height = 3; height <= 80; ++height) {
        const QFont font = fontOf(look(u"Tahoma", height));
        EXPECT_LE(std::lround(QFontMetricsF(font).height()), height) << height;
        QFont larger = font;
        larger.setPixelSize(font.pixelSize() + 1);
        EXPECT_GT(std::lround(QFontMetricsF(larger).height()), height) << height;
    }
}

TEST(Fonts, letterSizesGrowWithTheHeightInEveryFamily)
{
    for (const FontFamily& family : QtTextMeasure().fontFamilies()) {
        int last = 1;
        for (const int height : {1, 2, 5, 9, 10, 14, 15, 28, 60, 300}) {
            const int size = fontOf(look(family.face, height)).pixelSize();
            EXPECT_GE(size, last) << toQt(family.face).toStdString() << height;
            EXPECT_LE(size, height) << toQt(family.face).toStdString() << height;
            last = size;
        }
        // Some fonts have lines with much room: their letters are not tiny for it.
        EXPECT_GE(fontOf(look(family.face, 28)).pixelSize(), 22) << toQt(family.face).toStdString();
    }
}

TEST(Fonts, impossibleHeightsGiveTheSmallestFont)
{
    for (const int height : {0, -5})
        EXPECT_EQ(fontOf(look(u"Tahoma", height)).pixelSize(), 1) << height;
}

TEST(Fonts, takeOverWhatTheLookSays)
{
    FontLook wanted = look(u"Tahoma");
    wanted.weight = 700;
    wanted.italic = wanted.underline = wanted.strikeout = true;
    const QFont font = fontOf(wanted);
    EXPECT_TRUE(font.bold() && font.italic() && font.underline() && font.strikeOut());
    const QFont plain = fontOf(look(u"Tahoma"));
    EXPECT_FALSE(plain.bold() || plain.italic() || plain.underline() || plain.strikeOut());
}

TEST(Fonts, aFaceThatIsMissingIsReplacedByItsKind)
{
    const struct {
        const char* behaviour;
        const char16_t* face;
        std::uint8_t pitchAndFamily;
        bool fixedPitch;
    } cases[] = {
        {"a name that documents use",       u"Tahoma",      34, false},
        {"whatever its letters' case",      u"TAHOMA",      34, false},
        {"a typewriter's, by its name",     u"Courier New", 34, true },
        {"unknown, with letters as wide",   u"No Such",     49, true },
        {"unknown, with letters that vary", u"No Such",     34, false},
        {"no name at all",                  u"",            34, false},
    };
    for (const auto& c : cases) {
        FontLook wanted = look(c.face);
        wanted.pitchAndFamily = c.pitchAndFamily;
        const QFontInfo font(fontOf(wanted));
        EXPECT_TRUE(QFontDatabase::hasFamily(font.family())) << c.behaviour;
        QtTextMeasure measure;
        EXPECT_EQ(measure.textWidth(wanted, u"iiiiiiii") == measure.textWidth(wanted, u"MMMMMMMM"),
                  c.fixedPitch)
            << c.behaviour;
    }
}

TEST(Fonts, aFaceThatIsThereIsTaken)
{
    for (const FontFamily& family : QtTextMeasure().fontFamilies()) {
        const QString face = toQt(family.face);
        if (QFontDatabase::hasFamily(face)) {
            EXPECT_TRUE(fontOf(look(family.face)).family() == face) << face.toStdString();
        }
    }
}

TEST(Fonts, manyLooksCanBeAskedForOneAfterTheOther)
{
    QtTextMeasure measure;
    const int width = measure.textWidth(look(u"Tahoma", 14), u"Some text");
    for (int height = 1; height < 400; ++height)
        EXPECT_GE(measure.textWidth(look(u"Tahoma", height), u"i"), 1) << height;
    EXPECT_EQ(measure.textWidth(look(u"Tahoma", 14), u"Some text"), width);
}

// --- Measuring

TEST(QtTextMeasure, digitsAreAllOfOneWidth)
{
    QtTextMeasure measure;
    const FontLook font = look(u"Tahoma");
    const int width = measure.textWidth(font, u"0000000000");
    for (char16_t digit = u'1'; digit <= u'9'; ++digit)
        EXPECT_EQ(measure.textWidth(font, std::u16string(10, digit)), width);
    EXPECT_GT(width, 50);
    EXPECT_LT(width, 90);
}

TEST(QtTextMeasure, widthsAddUpWithoutRoundingLetterByLetter)
{
    QtTextMeasure measure;
    const FontLook font = look(u"Tahoma");
    EXPECT_EQ(measure.textWidth(font, u""), 0);
    const int one = measure.textWidth(font, u"AV1i");
    const int hundred = measure.textWidth(font, [] {
        std::u16string text;
        for (int i = 0; i < 100; ++i)
            text += u"AV1i";
        return text;
    }());
    EXPECT_LE(hundred, one * 100);
    EXPECT_GT(hundred, (one - 1) * 100);
}

TEST(QtTextMeasure, measuresWhatIsSeen)
{
    QtTextMeasure measure;
    const FontLook font = look(u"Tahoma", 28);
    const auto width = [&](std::u16string_view text) { return measure.textWidth(font, text); };
    const struct {
        const char* behaviour;
        std::u16string_view text, like;
    } cases[] = {
        {"a mark stands over its letter",    u"e\u0301",      u"\u00E9"      },
        {"also among others",                u"ae\u0301b",    u"a\u00E9b"    },
        {"what moves a carriage is a blank", u"a\nb\tc",      u"a b c"       },
        {"also in a text that is shaped",    u"\u05D0\nb\tc", u"\u05D0 b c"  },
        {"a text from right to left",        u"\u05D0\u05D1", u"\u05D1\u05D0"},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(width(c.text), width(c.like), 1) << c.behaviour;
    EXPECT_GT(width(u"a&b"), width(u"ab"));
    EXPECT_GT(width(u"\U0001D400"), 0); // from another font, or the sign for none
}

TEST(QtTextMeasure, linesBreakBetweenWordsOnly)
{
    QtTextMeasure measure;
    const FontLook font = look(u"Tahoma");
    const auto width = [&](std::u16string_view text) { return measure.textWidth(font, text); };
    const struct {
        const char* behaviour;
        std::u16string_view text;
        int room, lines;
    } cases[] = {
        {"no text has one line",           u"",                          100,                   1},
        {"a text that fits",               u"one two",                   width(u"one two"),     1},
        {"and one that just does not",     u"one two",                   width(u"one two") - 2, 2},
        {"each word in a line of its own", u"one two six",               width(u"two"),         3},
        {"a word too wide stays whole",    u"wide",                      1,                     1},
        {"and does not take others along", u"a wide b",                  width(u"a"),           3},
        {"no room at all",                 u"a b",                       0,                     2},
        {"less than none",                 u"a b",                       -10,                   2},
        {"a line feed ends a line",        u"a\nb",                      100,                   2},
        {"also an empty one",              u"a\n\nb",                    100,                   3},
        {"and at the end",                 u"a\n",                       100,                   2},
        {"blanks at a break take no room", u"one   two",                 width(u"one"),         2},
        {"nor do those at the end",        u"one     ",                  width(u"one"),         1},
        {"those at the beginning do",      u"    one two",               width(u"one two"),     2},
        {"shaped texts break the same",    u"\u05D0\u05D1 \u05D2\u05D3", 1,                     2},
    };
    for (const auto& c : cases)
        EXPECT_EQ(measure.wrappedHeight(font, c.text, c.room), c.lines * 14) << c.behaviour;
}

TEST(QtTextMeasure, aLineIsAsHighAsTheFont)
{
    QtTextMeasure measure;
    for (const int height : {8, 14, 15, 31})
        EXPECT_EQ(measure.wrappedHeight(look(u"Courier New", height), u"a\nb", 99), 2 * height);
}

TEST(QtTextMeasure, offersTheDefaultFaceFirstAndEachOnce)
{
    const std::vector<FontFamily> families = QtTextMeasure().fontFamilies();
    ASSERT_GE(families.size(), 2U);
    EXPECT_EQ(families[0].face, u"Tahoma");
    std::set<std::u16string> faces;
    for (const FontFamily& family : families) {
        EXPECT_TRUE(faces.insert(family.face).second) << toQt(family.face).toStdString();
        EXPECT_LE(family.face.size(), 31U);
        EXPECT_FALSE(family.face.empty());
        EXPECT_EQ(family.face.find(u'['), std::u16string::npos);
        EXPECT_TRUE(family.scalable);
        EXPECT_TRUE(family.points.empty());
    }
}

TEST(QtTextMeasure, offersFontsWithTheirKind)
{
    for (const FontFamily& family : QtTextMeasure().fontFamilies()) {
        if (family.face == u"DejaVu Sans Mono") {
            EXPECT_EQ(family.pitchAndFamily, 49);
        } else if (family.face == u"DejaVu Serif") {
            EXPECT_EQ(family.pitchAndFamily, 18);
        } else if (family.face == u"DejaVu Sans" || family.face == u"Tahoma") {
            EXPECT_EQ(family.pitchAndFamily, 34);
        }
    }
}

} // namespace
} // namespace vorn::qt
