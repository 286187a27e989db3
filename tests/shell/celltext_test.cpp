#include "shell/celltext.h"

#include "core/fontlook.h"
#include "support/paintedsheet.h"

#include <algorithm>
#include <set>

namespace vorn {
namespace {

// The cell looked at is B2, from 50,20 to 100,40; its texts have 46 pixels, room for six letters.
// E2 has a value that shows no text and ends what overflows, at 200.
class CellText : public PaintedSheet {
protected:
    CellText()
    {
        cells.put("E2", u"stop");
        style("E2", {
                        {StyleVertical, AlignVerticalJustify}
        });
    }

    // All that is written.
    std::string text(const Rect& clip = Area) const
    {
        std::string all;
        for (const std::string& each : texts(clip))
            all += (all.empty() ? "" : ", ") + each;
        return all;
    }

    void align(int horizontal, int vertical = AlignBottom, bool wrap = false)
    {
        style("B2", {
                        {StyleHorizontal, horizontal  },
                        {StyleVertical,   vertical    },
                        {StyleWrap,       wrap ? 1 : 0}
        });
    }
};

// --- Horizontal alignment

constexpr const char16_t* Kinds[] = {u"word", u"12.5", u"12:30", u"TRUE", u"=1/0"};

TEST_F(CellText, standsByItsKindOrAsAligned)
{
    const struct {
        const char* phrase;
        int alignment;
        const char* expected[std::size(Kinds)];
    } cases[] = {
        {"general",
         0, {"52,20-198,39 \"word\" left bottom", "52,20-98,39 \"12.5\" right bottom",
          "52,20-98,39 \"12:30\" right bottom", "52,20-98,39 \"true\" center bottom",
          "52,20-98,39 \"!!Div0\" center bottom"}    },
        {"left",
         1, {"52,20-198,39 \"word\" left bottom", "52,20-98,39 \"12.5\" left bottom",
          "52,20-98,39 \"12:30\" left bottom", "52,20-98,39 \"true\" left bottom",
          "52,20-98,39 \"!!Div0\" left bottom"}      },
        {"center",
         2, {"52,20-98,39 \"word\" center bottom", "52,20-98,39 \"12.5\" center bottom",
          "52,20-98,39 \"12:30\" center bottom", "52,20-98,39 \"true\" center bottom",
          "52,20-98,39 \"!!Div0\" center bottom"}    },
        {"right",
         3, {"52,20-98,39 \"word\" right bottom", "52,20-98,39 \"12.5\" right bottom",
          "52,20-98,39 \"12:30\" right bottom", "52,20-98,39 \"true\" right bottom",
          "52,20-98,39 \"!!Div0\" right bottom"}     },
        {"fill",
         4, {"52,20-98,39 \"wordword\" left bottom", "52,20-98,39 \"12.512.5\" left bottom",
          "52,20-98,39 \"12:3012:30\" left bottom", "52,20-98,39 \"truetrue\" left bottom",
          "52,20-98,39 \"!!Div0!!Div0\" left bottom"}},
        {"justify",
         5, {"52,20-98,39 \"word\" left bottom wrap", "52,20-98,39 \"12.5\" left bottom wrap",
          "52,20-98,39 \"12:30\" left bottom wrap", "52,20-98,39 \"true\" left bottom wrap",
          "52,20-98,39 \"!!Div0\" left bottom wrap"} },
        {"over a selection of one",
         6, {"52,20-98,39 \"word\" center bottom", "52,20-98,39 \"12.5\" center bottom",
          "52,20-98,39 \"12:30\" center bottom", "52,20-98,39 \"true\" center bottom",
          "52,20-98,39 \"!!Div0\" center bottom"}    },
        {"what nobody knows",
         7, {"52,20-198,39 \"word\" left bottom", "52,20-98,39 \"12.5\" left bottom",
          "52,20-98,39 \"12:30\" left bottom", "52,20-98,39 \"true\" left bottom",
          "52,20-98,39 \"!!Div0\" left bottom"}      },
    };
    for (const auto& c : cases) {
        for (std::size_t kind = 0; kind < std::size(Kinds); ++kind) {
            cells.put("B2", Kinds[kind]);
            align(c.alignment);
            EXPECT_EQ(text(), c.expected[kind]) << c.phrase << ' ' << kind;
        }
    }
}

TEST_F(CellText, standsAsTheResultOfAFormula)
{
    const struct {
        const char16_t* formula;
        const char* expected;
    } cases[] = {
        {u"=1+1",         "52,20-98,39 \"2\" right bottom"    },
        {u"=\"a\"&\"b\"", "52,20-198,39 \"ab\" left bottom"   },
        {u"=1=1",         "52,20-98,39 \"true\" center bottom"},
        {u"=NA()",        "52,20-98,39 \"!!NA\" center bottom"},
        {u"=\"\"",        ""                                  },
    };
    for (const auto& c : cases) {
        cells.put("B2", c.formula);
        EXPECT_EQ(text(), c.expected);
    }
}

TEST_F(CellText, standsLeftInTheFormatOfTexts)
{
    for (std::size_t kind = 0; kind < std::size(Kinds); ++kind) {
        cells.put("B2", Kinds[kind]);
        style("B2", {
                        {StyleFormat, FormatIndexText}
        });
        EXPECT_NE(text().find("left bottom"), std::string::npos) << kind;
    }
    cells.put("B2", u"12.5");
    align(AlignRight);
    EXPECT_EQ(text(), "52,20-98,39 \"12.5\" right bottom");
}

TEST_F(CellText, standsByItsKindInAFormatThatIsNotThere)
{
    cells.put("B2", u"12.5");
    style("B2", {
                    {StyleFormat, 999}
    });
    EXPECT_EQ(text(), "52,20-98,39 \"12.5\" right bottom");
}

TEST_F(CellText, goesOnToTheRightWhenItIsTooWideForTheMiddle)
{
    align(AlignCenter);
    const struct {
        const char* phrase;
        const char16_t* value;
        const char* expected;
    } cases[] = {
        {"the widest that fits",  u"letter",  "52,20-98,39 \"letter\" center bottom"},
        {"one more",              u"letters", "52,20-198,39 \"letters\" left bottom"},
        {"a logical value stays", u"FALSE",   "52,20-98,39 \"false\" center bottom" },
    };
    for (const auto& c : cases) {
        cells.put("B2", c.value);
        EXPECT_EQ(text(), c.expected) << c.phrase;
    }
    align(AlignCenter, AlignBottom, true);
    cells.put("B2", u"letters");
    EXPECT_EQ(text(), "52,20-98,39 \"letters\" center bottom wrap");
}

TEST_F(CellText, standsAtTheCellsRightEdgeHoweverWideItIs)
{
    cells.put("B2", u"far too wide for its cell");
    align(AlignRight);
    EXPECT_EQ(text(), "52,20-98,39 \"far too wide for its cell\" right bottom");
}

// --- Repeated texts

TEST_F(CellText, repeatsUntilTheCellIsFull)
{
    align(AlignFill);
    const struct {
        const char* phrase;
        const char16_t* value;
        const char* expected;
    } cases[] = {
        {"one letter",           u"-",       "-------"     },
        {"the last copy is cut", u"abcd",    "abcdabcd"    },
        {"more than half",       u"abcdef",  "abcdefabcdef"},
        {"full at once",         u"abcdefg", "abcdefg"     },
    };
    for (const auto& c : cases) {
        cells.put("B2", c.value);
        EXPECT_EQ(text(), std::string("52,20-98,39 \"") + c.expected + "\" left bottom")
            << c.phrase;
    }
}

TEST_F(CellText, repeatsUpToALimit)
{
    width(1, 20000);
    align(AlignFill);
    cells.put("B2", u"abc");
    const std::string found = text();
    EXPECT_EQ(std::count(found.begin(), found.end(), 'a'), 342);
    EXPECT_EQ(std::count(found.begin(), found.end(), 'c'), 341); // 1,024 in all
    cells.put("B2", std::u16string(1024, u'a'));
    const std::string once = text();
    EXPECT_EQ(std::count(once.begin(), once.end(), 'a'), 1024);
}

// Letters that stand closer to one another than each by itself, and some that take no room.
class ClosingMeasure : public FixedTextMeasure {
public:
    int textWidth(const FontLook&, std::u16string_view text) override
    {
        const auto letters = static_cast<int>(text.size());
        return text.front() == u'z' ? 0 : letters == 1 ? 7 : letters * 4;
    }
};

TEST_F(CellText, repeatsByWhatTheCopiesMeasureTogether)
{
    ClosingMeasure measure;
    platform.textMeasure = &measure;
    align(AlignFill);
    cells.put("B2", u"-");
    EXPECT_EQ(text(), "52,20-98,39 \"" + std::string(12, '-') + "\" left bottom");
    cells.put("B2", u"z");
    const std::string endless = text();
    EXPECT_EQ(std::count(endless.begin(), endless.end(), 'z'), 1024);
    platform.textMeasure = &cells.document.machine.textMeasure;
}

// --- Centered over a selection

TEST_F(CellText, standsInTheMiddleOfEmptyCellsThatAreCenteredToo)
{
    const struct {
        const char* phrase;
        const char* also;
        const char* expected;
    } cases[] = {
        {"the next one",               "C2", "52,20-148,39"},
        {"one more",                   "D2", "52,20-198,39"},
        {"up to one that has a value", "E2", "52,20-198,39"},
    };
    cells.put("B2", u"ab");
    align(AlignCenterSelection);
    for (const auto& c : cases) {
        style(c.also, {
                          {StyleHorizontal, AlignCenterSelection}
        });
        EXPECT_EQ(text(), std::string(c.expected) + " \"ab\" center bottom") << c.phrase;
    }
    style("C2", {
                    {StyleHorizontal, AlignCenter}
    });
    EXPECT_EQ(text(), "52,20-98,39 \"ab\" center bottom");
}

TEST_F(CellText, goesOverTheWholeRowAtMost)
{
    cells.put("B3", u"1234567.25");
    style("B3:IV3", {
                        {StyleHorizontal, AlignCenterSelection}
    });
    EXPECT_EQ(text(), "52,40-12798,59 \"1234567.25\" center bottom");
}

TEST_F(CellText, countsHiddenColumnsOfASelectionAsNothing)
{
    cells.put("B2", u"ab");
    style("B2:D2", {
                       {StyleHorizontal, AlignCenterSelection}
    });
    sheet.columns.setColumnHidden(2, 2, true);
    EXPECT_EQ(text(), "52,20-148,39 \"ab\" center bottom");
}

// --- Vertical alignment and lines

TEST_F(CellText, standsAboveInTheMiddleOrBelow)
{
    cells.put("B2", u"a b");
    const struct {
        const char* phrase;
        int vertical;
        bool wrap;
        const char* expected;
    } cases[] = {
        {"top",                             0, false, "52,20-198,39 \"a b\" left top"       },
        {"middle",                          1, false, "52,20-198,39 \"a b\" left middle"    },
        {"bottom",                          2, false, "52,20-198,39 \"a b\" left bottom"    },
        {"justified shows nothing",         3, false, ""                                    },
        {"nor does anything else",          4, false, ""                                    },
        {"the greatest",                    7, false, ""                                    },
        {"broken into lines, top",          0, true,  "52,20-98,39 \"a b\" left top wrap"   },
        {"broken into lines, middle",       1, true,  "52,20-98,39 \"a b\" left middle wrap"},
        {"broken into lines, bottom",       2, true,  "52,20-98,39 \"a b\" left bottom wrap"},
        {"broken into lines and justified", 3, true,  ""                                    },
    };
    for (const auto& c : cases) {
        align(AlignGeneral, c.vertical, c.wrap);
        EXPECT_EQ(text(), c.expected) << c.phrase;
    }
    cells.put("B2", u"12.5");
    align(AlignGeneral, AlignVerticalJustify);
    EXPECT_EQ(text(), "") << "a number neither";
}

// --- Numbers in their cells

TEST_F(CellText, fitsNumbersToTheCellLessItsMargins)
{
    const struct {
        const char* phrase;
        const char16_t* value;
        int format;
        const char* expected;
    } cases[] = {
        {"six characters fit",        u"123456",     0, "123456"},
        {"seven do not",              u"1234567",    0, "#"     },
        {"decimals are given up",     u"3.14159265", 0, "3.1416"},
        {"but not those of a format", u"12345",      2, "#"     },
        {"a date has none to give",   u"12/24/2001", 6, "#"     },
        {"an error fits",             u"=1/0",       0, "!!Div0"},
    };
    for (const auto& c : cases) {
        cells.put("B2", c.value);
        style("B2", {
                        {StyleFormat, c.format}
        });
        const std::string found = text();
        const std::string filled(100, '#');
        const std::string expected = c.expected[0] == '#' ? filled : c.expected;
        EXPECT_NE(found.find('"' + expected + '"'), std::string::npos) << c.phrase << found;
        EXPECT_EQ(found.substr(0, 11), "52,20-98,39") << c.phrase;
    }
    width(1, 45);
    cells.put("B2", u"=1/0");
    EXPECT_NE(text().find("##########"), std::string::npos);
}

TEST_F(CellText, fitsNumbersOverASelectionToMore)
{
    cells.put("B2", u"1234567.25");
    align(AlignCenterSelection);
    EXPECT_EQ(text(), "52,20-98,39 \"1234567.25\" center bottom");
}

TEST_F(CellText, fitsNumbersInTheirFont)
{
    FontRecord large = workbook->fonts[0];
    large.height = 280;
    cells.put("B2", u"12345");
    style("B2", {
                    {StyleFont, workbook->addFont(large)}
    });
    EXPECT_EQ(text().substr(0, 23), "52,20-98,39 \"##########");
}

TEST_F(CellText, showsNothingForZeroIfAsked)
{
    const struct {
        const char* phrase;
        const char16_t* value;
        int format;
        bool shown;
    } cases[] = {
        {"zero",                    u"0",     0,  false},
        {"zero with decimals",      u"0",     2,  false},
        {"a date that is zero",     u"0:00",  11, false},
        {"the result of a formula", u"=1-1",  0,  false},
        {"less than zero",          u"=-1*0", 0,  false},
        {"what only looks like it", u"0.001", 1,  true },
        {"a text",                  u"'0",    0,  true },
        {"a logical value",         u"FALSE", 0,  true },
    };
    for (const auto& c : cases) {
        cells.put("B2", c.value);
        style("B2", {
                        {StyleFormat, c.format}
        });
        sheet.showZeros = true;
        EXPECT_NE(text(), "") << c.phrase;
        sheet.showZeros = false;
        EXPECT_EQ(text() != "", c.shown) << c.phrase;
    }
}

// --- Overflow

TEST_F(CellText, overflowsUpToTheNextCellWithAValue)
{
    cells.put("A1", u"a text that is long enough for all");
    EXPECT_EQ(text().substr(0, 13), "2,0-12798,19 ") << "up to the end of the sheet";
    cells.put("D1", u"=\"\"");
    EXPECT_EQ(text().substr(0, 11), "2,0-148,19 ") << "a value without a text stops it too";
    style("B1:C1", {
                       {StyleFont, 1}
    });
    EXPECT_EQ(text().substr(0, 11), "2,0-148,19 ") << "a style alone does not";
    sheet.columns.setColumnHidden(3, 3, true);
    EXPECT_EQ(text().substr(0, 11), "2,0-148,19 ") << "nor is a hidden value passed";
    sheet.columns.setColumnHidden(1, 1, true);
    EXPECT_EQ(text().substr(0, 10), "2,0-98,19 ");
    style("A1", {
                    {StyleWrap, 1}
    });
    EXPECT_EQ(text().substr(0, 10), "2,0-48,19 ");
}

TEST_F(CellText, overflowsIntoAViewThatBeginsBehindIt)
{
    cells.put("A1", u"a text that is long enough for all");
    cells.put("D1", u"x");
    sheet.leftColumn = 1;
    EXPECT_EQ(texts(), (Lines{"102,0-12748,19 \"x\" left bottom",
                              "-48,0-98,19 \"a text that is long enough for all\" left bottom"}));
    sheet.leftColumn = 3;
    EXPECT_EQ(texts(), Lines{"2,0-12648,19 \"x\" left bottom"});
}

TEST_F(CellText, overflowsIntoAPartThatIsPaintedAlone)
{
    cells.put("A2", u"a text that is long enough for all");
    const std::string expected = "2,20-198,39 \"a text that is long enough for all\" left bottom";
    EXPECT_EQ(text({160, 20, 170, 40}), expected);
    EXPECT_EQ(text({198, 20, 210, 40}), "") << "it ends before";
    EXPECT_EQ(text({0, 39, 250, 40}), "") << "the lowest pixel has no text";
    cells.put("B2", u"12");
    EXPECT_EQ(text({160, 20, 170, 40}), "");
}

TEST_F(CellText, ofOtherKindsIsNotLookedForBeforeThePart)
{
    cells.put("A2", u"1234");
    EXPECT_EQ(text({60, 20, 70, 40}), "");
    cells.put("A2", u"right");
    style("A2", {
                    {StyleHorizontal, AlignRight}
    });
    EXPECT_EQ(text({60, 20, 70, 40}), "");
    style("A2:B2", {
                       {StyleHorizontal, AlignCenterSelection}
    });
    EXPECT_EQ(text({60, 20, 70, 40}), "2,20-98,39 \"right\" center bottom");
}

TEST_F(CellText, ofAHiddenColumnIsNotSeen)
{
    cells.put("B2", u"a text that would overflow");
    cells.put("A2", u"a text that ends there");
    sheet.columns.setColumnHidden(1, 1, true);
    EXPECT_EQ(text(), "2,20-48,39 \"a text that ends there\" left bottom");
    sheet.setRowHidden(1, true);
    EXPECT_EQ(text(), "");
}

TEST_F(CellText, ofTheLastColumnEndsWithTheSheet)
{
    cells.put("IV2", u"a text that would overflow");
    sheet.leftColumn = 255;
    EXPECT_EQ(text(), "2,20-48,39 \"a text that would overflow\" left bottom");
}

TEST_F(CellText, inTooNarrowACellIsNotWritten)
{
    cells.put("B2", u"12");
    width(1, 4);
    EXPECT_EQ(text(), "");
    width(1, 5);
    EXPECT_NE(text(), "");
}

// --- Fonts

TEST_F(CellText, isWrittenInTheFontOfItsStyleAndTheZoomOfTheSheet)
{
    FontRecord font = workbook->fonts[0];
    font.setFace(u"Arial");
    font.height = 280;
    font.weight = WeightBold;
    font.attributes = FontItalic | FontStrikeout;
    font.underline = 1;
    font.colour = 10;
    cells.put("A1", u"a");
    style("A1", {
                    {StyleFont, workbook->addFont(font)}
    });
    const struct {
        int zoom;
        const char* expected;
    } cases[] = {
        {100, "\"a\" Arial 20 bold italic underline strikeout ff0000 left bottom"},
        {200, "\"a\" Arial 40 bold italic underline strikeout ff0000 left bottom"},
        {50,  "\"a\" Arial 11 bold italic underline strikeout ff0000 left bottom"},
    };
    for (const auto& c : cases) {
        sheet.zoom = c.zoom;
        EXPECT_NE(text().find(c.expected), std::string::npos) << c.zoom << text();
    }
}

TEST_F(CellText, isFittedAtTheZoomOfTheSheet)
{
    cells.put("A1", u"123456");
    const struct {
        int zoom;
        const char* expected;
    } cases[] = {
        {100, "2,0-48,19 \"123456\" right bottom"                  },
        {300, "2,0-148,59 \"123456\" Tahoma 42 000000 right bottom"},
        {10,  "2,0-3,1 \""                                         },
    };
    for (const auto& c : cases) {
        sheet.zoom = c.zoom;
        EXPECT_EQ(text().substr(0, std::string(c.expected).size()), c.expected) << c.zoom;
    }
}

// --- What it costs

class CountingMeasure : public FixedTextMeasure {
public:
    int textWidth(const FontLook& font, std::u16string_view text) override
    {
        measured.emplace_back(text);
        return FixedTextMeasure::textWidth(font, text);
    }
    int wrappedHeight(const FontLook& font, std::u16string_view text, int width) override
    {
        measured.emplace_back(text);
        return FixedTextMeasure::wrappedHeight(font, text, width);
    }

    std::vector<std::u16string> measured;
};

TEST_F(CellText, isMeasuredOnceAndOnlyIfItMustBe)
{
    const struct {
        const char* phrase;
        const char16_t* value;
        int alignment;
        bool wrap;
        std::size_t measured;
    } cases[] = {
        {"a text that is not centered", u"word", 0, false, 0},
        {"to the right",                u"word", 3, false, 0},
        {"in the middle",               u"word", 2, false, 1},
        {"broken into lines",           u"word", 2, true,  0},
        {"over a selection",            u"word", 6, false, 0},
        {"a number",                    u"12",   0, false, 1},
        {"a number in the middle",      u"12",   2, false, 1},
        {"a logical value",             u"TRUE", 0, false, 1},
        {"an error",                    u"=1/0", 0, false, 1},
    };
    CountingMeasure measure;
    platform.textMeasure = &measure;
    for (const auto& c : cases) {
        cells.put("B2", c.value);
        align(c.alignment, AlignBottom, c.wrap);
        measure.measured.clear();
        text();
        EXPECT_EQ(measure.measured.size(), c.measured) << c.phrase;
    }
    measure.measured.clear();
    text({0, 60, 250, 100});
    EXPECT_EQ(measure.measured.size(), 0U) << "not seen, not measured";
    platform.textMeasure = &cells.document.machine.textMeasure;
}

} // namespace
} // namespace vorn
