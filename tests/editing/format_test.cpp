#include "editing/format.h"

#include "core/applyformat.h"
#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class Format : public testing::Test {
protected:
    static Sheet& sheet() { return *workbook->currentSheet; }

    static const CellStyle& styleAt(int column, int row)
    {
        return workbook->styles[sheet().cellStyle(column, row)];
    }
    static const FontRecord& fontAt(int column, int row)
    {
        return workbook->fonts[styleAt(column, row).font()];
    }
    static int fieldAt(int column, int row, StyleField field)
    {
        return styleAt(column, row).get(field);
    }

    // Gives a cell a style that differs from the default in one field.
    static void putStyle(int column, int row, StyleField field, int value)
    {
        CellStyle style = defaultStyle();
        style.set(field, value);
        sheet().setCellStyle(column, row, workbook->addStyle(style));
    }
    static void putFont(int column, int row, const FontRecord& font)
    {
        putStyle(column, row, StyleFont, workbook->addFont(font));
    }

    // Changes the request that the selection makes, and applies it.
    template <typename Change>
    static void apply(Change change)
    {
        const FormatRequest before = readFormatRequest();
        FormatRequest after = before;
        change(after);
        applyFormatRequest(before, after);
    }

    // Goes back and forth, and tells where the document is not what it was.
    static void checkRoad(const std::string& before)
    {
        const std::string after = describeSheets();
        for (int turn = 0; turn < 2; ++turn) {
            undo();
            EXPECT_EQ(describeSheets(), before);
            redo();
            EXPECT_EQ(describeSheets(), after);
        }
        EXPECT_EQ(poolFaults(), "");
    }

    EditDocument document;
};

// --- The buttons

TEST_F(Format, turnsAnAttributeOnAndOff)
{
    const struct {
        void (*toggle)();
        bool (*isOn)(const Sheet&);
        std::u16string_view label;
    } cases[] = {
        {toggleBold,      isBold,       u"Bold"     },
        {toggleItalic,    isItalic,     u"Italic"   },
        {toggleUnderline, isUnderlined, u"Underline"},
    };
    for (const auto& c : cases) {
        document.select("B2:C3");
        const std::string before = describeSheets();
        c.toggle();
        EXPECT_TRUE(c.isOn(sheet()));
        EXPECT_EQ(undoLabel(), c.label);
        checkRoad(before);
        const std::string on = describeSheets();
        c.toggle();
        EXPECT_FALSE(c.isOn(sheet()));
        checkRoad(on);
        document.select("B2:C4");
        EXPECT_FALSE(c.isOn(sheet()));
    }
}

TEST_F(Format, makesAMixedSelectionBoldFirst)
{
    document.select("B2");
    toggleBold();
    document.select("A1:C3");
    toggleBold();
    EXPECT_TRUE(isBold(sheet()));
    toggleBold();
    EXPECT_FALSE(isBold(sheet()));
    EXPECT_EQ(fontAt(1, 1).weight, 400);
}

TEST_F(Format, redoesAnAttributeAsItWas)
{
    // What the step does was decided when it was built, whatever the selection looks like then.
    document.select("B2");
    toggleBold();
    undo();
    sheet().setCell(1, 1, blankCell(workbook->addStyle(styleAt(0, 0))));
    redo();
    EXPECT_EQ(fontAt(1, 1).weight, 700);
}

TEST_F(Format, alignsAndTakesTheAlignmentBack)
{
    document.select("B2:C3");
    putStyle(1, 1, StyleHorizontal, AlignRight);
    const std::string before = describeSheets();
    toggleAlignment(AlignRight);
    EXPECT_TRUE(isAligned(sheet(), AlignRight));
    EXPECT_EQ(undoLabel(), u"Alignment");
    checkRoad(before);
    toggleAlignment(AlignCenter);
    EXPECT_TRUE(isAligned(sheet(), AlignCenter));
    const std::string centered = describeSheets();
    toggleAlignment(AlignCenter);
    EXPECT_TRUE(isAligned(sheet(), AlignGeneral));
    checkRoad(centered);
}

TEST_F(Format, makesWholeColumnsBoldInTheirRecordsAlone)
{
    document.select("B1:D16384");
    const std::string before = describeSheets();
    toggleBold();
    EXPECT_FALSE(sheet().hasRows());
    EXPECT_TRUE(isBold(sheet()));
    checkRoad(before);
    EXPECT_FALSE(sheet().hasRows());
}

TEST_F(Format, takesBackTheFormatOfWholeRowsAndOfTheSheet)
{
    document.enter("B2", u"1");
    sheet().columns.setColumnStyle(2, 2, workbook->addStyle(dialogStyle()));
    for (const char* place : {"A2:IV4", "A1:IV16384"}) {
        document.select(place);
        const std::string before = describeSheets();
        toggleBold();
        EXPECT_TRUE(isBold(sheet())) << place;
        checkRoad(before);
        undo();
    }
}

TEST_F(Format, keepsTextsAndFormulasOfTheCells)
{
    document.enter("A1", u"text");
    document.enter("A2", u"=A1&\"s\"");
    document.enter("A3", u"=A2&A1");
    document.select("A1:A3");
    const std::string before = describeSheets();
    toggleItalic();
    EXPECT_EQ(document.input("A2"), u"=A1&\"s\"");
    checkRoad(before);
    EXPECT_EQ(sheet().cellText(0, 2), u"textstext");
}

// --- The request

TEST_F(Format, readsWhatTheSelectionHasInCommon)
{
    document.select("B2:C3");
    const FormatRequest request = readFormatRequest();
    FormatRequest wanted;
    wanted.numberFormat = 0;
    wanted.horizontal = 0;
    wanted.vertical = 2;
    wanted.wrapText = 0;
    wanted.fontName = u"Tahoma";
    wanted.fontPitch = 34;
    wanted.fontCharset = 1;
    wanted.fontSize = 10;
    wanted.textColour = ColourEntryBlack;
    wanted.backColour = ColourEntryWhite;
    wanted.bold = wanted.italic = wanted.underline = 0;
    wanted.borderLeft = wanted.borderRight = wanted.borderTop = wanted.borderBottom = 0;
    wanted.outline = 0;
    wanted.locked = 1;
    wanted.hidden = 0;
    EXPECT_TRUE(request == wanted);
}

TEST_F(Format, readsMixedFieldsAsMixed)
{
    CellStyle style = defaultStyle();
    const struct {
        StyleField field;
        int value;
    } fields[] = {
        {StyleFormat,     2         },
        {StyleHorizontal, AlignRight},
        {StyleVertical,   AlignTop  },
        {StyleWrap,       1         },
        {StyleFill,       10        },
        {StylePattern,    1         },
        {StyleLeftLine,   1         },
        {StyleRightLine,  1         },
        {StyleTopLine,    1         },
        {StyleBottomLine, 1         },
        {StyleLocked,     0         },
        {StyleHidden,     1         },
    };
    for (const auto& each : fields)
        style.set(each.field, each.value);
    FontRecord font = defaultFont(3);
    font.underline = 1;
    font.height = 400;
    font.colour = 10;
    style.set(StyleFont, workbook->addFont(font));
    sheet().setCellStyle(1, 1, workbook->addStyle(style));
    document.select("B2:B3");
    FormatRequest request = readFormatRequest();
    EXPECT_EQ(request.fontName, u"");
    EXPECT_EQ(request.outline, 0);
    request.outline = FormatMixed;
    EXPECT_TRUE(request == FormatRequest());
}

TEST_F(Format, readsValuesThatTheDialogHasNoNameFor)
{
    const struct {
        const char* phrase;
        StyleField field;
        int value;
        int FormatRequest::*read;
        int wanted;
    } cases[] = {
        {"center selection has the dialog's number", StyleHorizontal, 6,  &FormatRequest::horizontal,
         4                                                                                              },
        {"fill",                                     StyleHorizontal, 4,  &FormatRequest::horizontal, -1},
        {"justify",                                  StyleHorizontal, 5,  &FormatRequest::horizontal, -1},
        {"right",                                    StyleHorizontal, 3,  &FormatRequest::horizontal, 3 },
        {"vertical justify",                         StyleVertical,   3,  &FormatRequest::vertical,   -1},
        {"top",                                      StyleVertical,   0,  &FormatRequest::vertical,   0 },
        {"a thick line is one",                      StyleTopLine,    5,  &FormatRequest::borderTop,  1 },
        {"a colour that is not painted",             StyleFill,       10, &FormatRequest::backColour, 1 },
    };
    int row = 0;
    for (const auto& c : cases) {
        putStyle(0, row, c.field, c.value);
        sheet().selection.select({static_cast<std::uint16_t>(row), 0},
                                 {static_cast<std::uint16_t>(row), 0});
        EXPECT_EQ(readFormatRequest().*c.read, c.wanted) << c.phrase;
        ++row;
    }
}

TEST_F(Format, readsColoursOfThePaletteAlone)
{
    FontRecord font = defaultFont(0);
    font.colour = 30;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    style.set(StyleFill, 30);
    style.set(StylePattern, 1);
    sheet().setCellStyle(0, 0, workbook->addStyle(style));
    document.select("A1");
    EXPECT_EQ(readFormatRequest().textColour, FormatMixed);
    EXPECT_EQ(readFormatRequest().backColour, FormatMixed);
    style.set(StyleFill, 22);
    sheet().setCellStyle(0, 0, workbook->addStyle(style));
    EXPECT_EQ(readFormatRequest().backColour, 2);
}

TEST_F(Format, readsSizesInWholePoints)
{
    FontRecord font = defaultFont(0);
    font.height = 210;
    putFont(0, 0, font);
    document.select("A1:A2");
    EXPECT_EQ(readFormatRequest().fontSize, 10);
}

// --- Format Cells

TEST_F(Format, makesNoStepWithoutAChange)
{
    document.select("B2:C3");
    apply([](FormatRequest&) {});
    apply([](FormatRequest& request) { request.horizontal = FormatMixed; });
    apply([](FormatRequest& request) { request.fontName.clear(); });
    EXPECT_EQ(undoLabel(), u"");
    EXPECT_FALSE(workbook->modified);
}

TEST_F(Format, appliesEachField)
{
    const struct {
        const char* phrase;
        void (*change)(FormatRequest&);
        StyleField field;
        int value;
    } cases[] = {
        {"number format",    [](FormatRequest& r) { r.numberFormat = 4; }, StyleFormat,     4 },
        {"left",             [](FormatRequest& r) { r.horizontal = 1; },   StyleHorizontal, 1 },
        {"right",            [](FormatRequest& r) { r.horizontal = 3; },   StyleHorizontal, 3 },
        {"center selection", [](FormatRequest& r) { r.horizontal = 4; },   StyleHorizontal, 6 },
        {"top",              [](FormatRequest& r) { r.vertical = 0; },     StyleVertical,   0 },
        {"middle",           [](FormatRequest& r) { r.vertical = 1; },     StyleVertical,   1 },
        {"wrap",             [](FormatRequest& r) { r.wrapText = 1; },     StyleWrap,       1 },
        {"unlocked",         [](FormatRequest& r) { r.locked = 0; },       StyleLocked,     0 },
        {"hidden",           [](FormatRequest& r) { r.hidden = 1; },       StyleHidden,     1 },
        {"left line",        [](FormatRequest& r) { r.borderLeft = 1; },   StyleLeftLine,   1 },
        {"right line",       [](FormatRequest& r) { r.borderRight = 1; },  StyleRightLine,  1 },
        {"top line",         [](FormatRequest& r) { r.borderTop = 1; },    StyleTopLine,    1 },
        {"bottom line",      [](FormatRequest& r) { r.borderBottom = 1; }, StyleBottomLine, 1 },
        {"back colour",      [](FormatRequest& r) { r.backColour = 4; },   StyleFill,       10},
    };
    document.select("B2:C3");
    const std::string before = describeSheets();
    for (const auto& c : cases) {
        apply(c.change);
        EXPECT_EQ(undoLabel(), u"Format Cells") << c.phrase;
        for (int place = 0; place < 4; ++place)
            EXPECT_EQ(fieldAt(1 + place % 2, 1 + place / 2, c.field), c.value) << c.phrase;
        checkRoad(before);
        undo();
    }
}

TEST_F(Format, appliesEachFieldOfTheFont)
{
    document.select("B2:C3");
    const std::string before = describeSheets();
    apply([](FormatRequest& request) {
        request.fontName = u"Courier New";
        request.fontPitch = 49;
        request.fontCharset = 204;
        request.fontSize = 20;
        request.textColour = 4;
        request.bold = request.italic = request.underline = 1;
    });
    const FontRecord& font = fontAt(2, 2);
    EXPECT_EQ(font.face(), u"Courier New");
    EXPECT_EQ(font.family, 49);
    EXPECT_EQ(font.charset, 204);
    EXPECT_EQ(font.height, 400);
    EXPECT_EQ(font.colour, 10);
    EXPECT_EQ(font.weight, 700);
    EXPECT_EQ(font.attributes, FontItalic);
    EXPECT_EQ(font.underline, 1);
    EXPECT_EQ(sheet().rowHeight(2), 510) << "the rows are fitted to the font";
    EXPECT_EQ(sheet().rowHeight(3), 255);
    checkRoad(before);
    undo();
    EXPECT_EQ(sheet().rowHeight(2), 255);
}

TEST_F(Format, fitsRowsOnlyWhenTheFontChanges)
{
    document.enter("A1", u"1");
    sheet().setRowHeight(0, 600, false);
    document.select("A1");
    apply([](FormatRequest& request) { request.horizontal = 2; });
    EXPECT_EQ(sheet().rowHeight(0), 600);
    apply([](FormatRequest& request) { request.bold = 1; });
    EXPECT_EQ(sheet().rowHeight(0), 255);
}

TEST_F(Format, fitsTheDefaultHeightToWholeColumns)
{
    document.enter("B3", u"1");
    document.select("B1:B16384");
    const std::string before = describeSheets();
    apply([](FormatRequest& request) { request.fontSize = 20; });
    EXPECT_EQ(sheet().defaultRowHeight, 510);
    EXPECT_EQ(sheet().rowHeight(2), 510);
    checkRoad(before);
    undo();
    EXPECT_EQ(sheet().defaultRowHeight, 255);
}

TEST_F(Format, leavesMixedFieldsAlone)
{
    FontRecord font = defaultFont(0);
    font.setFace(u"Courier New");
    putFont(1, 1, font);
    document.select("B2:B3");
    EXPECT_EQ(readFormatRequest().fontName, u"");
    apply([](FormatRequest& request) { request.bold = 1; });
    EXPECT_EQ(fontAt(1, 1).face(), u"Courier New");
    EXPECT_EQ(fontAt(1, 2).face(), u"Tahoma");
    EXPECT_EQ(fontAt(1, 1).weight, 700);
    EXPECT_EQ(fontAt(1, 2).weight, 700);
}

TEST_F(Format, keepsAutomaticColoursThatNobodyChanged)
{
    document.select("B2");
    apply([](FormatRequest& request) { request.bold = 1; });
    EXPECT_EQ(fontAt(1, 1).colour, 32767);
    EXPECT_EQ(fieldAt(1, 1, StyleFill), 64);
    EXPECT_EQ(fieldAt(1, 1, StylePattern), 0);
    apply([](FormatRequest& request) { request.textColour = 1; });
    EXPECT_EQ(fontAt(1, 1).colour, 9);
    apply([](FormatRequest& request) { request.textColour = 0; });
    EXPECT_EQ(fontAt(1, 1).colour, 8);
}

TEST_F(Format, paintsABackgroundWithAPattern)
{
    document.select("B2");
    apply([](FormatRequest& request) { request.backColour = 2; });
    EXPECT_EQ(fieldAt(1, 1, StyleFill), 22);
    EXPECT_EQ(fieldAt(1, 1, StylePattern), 1);
    apply([](FormatRequest& request) { request.backColour = 1; });
    EXPECT_EQ(fieldAt(1, 1, StyleFill), 9);
    EXPECT_EQ(fieldAt(1, 1, StylePattern), 1);
}

TEST_F(Format, givesANewBorderAThinLineOfTheWindowsColour)
{
    putStyle(1, 1, StyleLeftLine, 5);
    document.select("B2");
    apply([](FormatRequest& request) { request.borderTop = 1; });
    EXPECT_EQ(fieldAt(1, 1, StyleTopLine), 1);
    EXPECT_EQ(fieldAt(1, 1, StyleTopColour), 64);
    EXPECT_EQ(fieldAt(1, 1, StyleLeftLine), 5) << "a border that was on keeps its line";
    EXPECT_EQ(fieldAt(1, 1, StyleLeftColour), 0) << "and its colour";
    apply([](FormatRequest& request) { request.borderLeft = 0; });
    EXPECT_EQ(fieldAt(1, 1, StyleLeftLine), 0);
    EXPECT_EQ(fieldAt(1, 1, StyleTopLine), 1);
}

TEST_F(Format, drawsAnOutline)
{
    document.select("B2:D4");
    const std::string before = describeSheets();
    apply([](FormatRequest& request) { request.outline = 1; });
    EXPECT_EQ(fieldAt(1, 2, StyleLeftLine), 1);
    EXPECT_EQ(fieldAt(1, 2, StyleRightLine), 0);
    EXPECT_EQ(fieldAt(3, 3, StyleBottomLine), 1);
    EXPECT_EQ(fieldAt(3, 3, StyleBottomColour), 64);
    EXPECT_FALSE(sheet().isPresent(2, 2));
    checkRoad(before);
}

TEST_F(Format, keepsADoubleLineUnderATextThatStaysUnderlined)
{
    FontRecord font = defaultFont(0);
    font.underline = 33;
    putFont(0, 0, font);
    document.select("A1");
    EXPECT_EQ(readFormatRequest().underline, 1);
    apply([](FormatRequest& request) { request.bold = 1; });
    EXPECT_EQ(fontAt(0, 0).underline, 33);
}

TEST_F(Format, redoesAFormatThatWasDeletedAsGeneral)
{
    NumberFormat record;
    makeNumberFormat(record, false, false, 7, u"", u"", u"-", u"");
    const int format = workbook->setFormat(record, -1);
    document.select("A1");
    apply([format](FormatRequest& request) { request.numberFormat = format; });
    undo();
    workbook->removeFormat(format);
    redo();
    EXPECT_EQ(fieldAt(0, 0, StyleFormat), 0);
}

TEST_F(Format, dropsAStepThatFindsNoRoom)
{
    for (int refused = 1;; ++refused) {
        NewDocument(NewDocumentSheets, FileKindNative);
        document.enter("B2", u"text");
        document.select("A1:C3");
        const std::string before = describeSheets();
        AllocationWatch watch(refused);
        apply([](FormatRequest& request) { request.bold = 1; });
        const bool failed = watch.refused();
        watch.relent();
        EXPECT_EQ(errorState.code, failed ? ErrorMemory : ErrorNone) << refused;
        clearError();
        if (!failed) {
            EXPECT_GT(refused, 3);
            break;
        }
        // A step whose programs were made stays in the list, however far it came.
        if (undoLabel() == u"Format Cells")
            undo();
        clearError();
        EXPECT_EQ(describeSheets(), before) << refused;
        EXPECT_EQ(poolFaults(), "") << refused;
    }
}

} // namespace
} // namespace vorn
