// What a native file says about one sheet.

#include "core/chain.h"
#include "core/error.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "support/cells.h"
#include "support/nativefile.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class NativeSheetReader : public testing::Test {
protected:
    const Sheet& sheet() const { return *workbook->sheetAt(0); }

    // Loads one record of the first sheet.
    void load(unsigned type, const Fields& fields, int code = ErrorNone)
    {
        EXPECT_EQ(loadBytes(begun().add(type, fields).ended()), code);
    }

    // A file with three texts, one formula (=1+2) and three styles, up to its first sheet.
    static NativeFile begun()
    {
        NativeFile file;
        file.addText(u"zero").addText(u"one").addText(u"two");
        file.addFormula("04:0100 04:0200 05 00");
        return file.addSheets({u"First", u"Second"}).addTables(3).add(RecordSheetStart);
    }

    TestDocument document;
};

// --- The view

TEST_F(NativeSheetReader, takesScrollAndSelection)
{
    const struct {
        const char* phrase;
        unsigned fields[6]; // top, left, anchor row and column, active row and column
        int top, left;
        CellRef anchor, active;
        RangeRef range;
    } cases[] = {
        {"one cell",             {0, 0, 0, 0, 0, 0}, 0, 0,   {0, 0}, {0, 0}, {0, 0, 0, 0}},
        {"dragged down",         {7, 5, 9, 4, 3, 2}, 7, 5,   {9, 4}, {3, 2}, {3, 2, 9, 4}},
        {"dragged up",           {7, 5, 3, 2, 9, 4}, 7, 5,   {3, 2}, {9, 4}, {3, 2, 9, 4}},
        {"to the left and down", {1, 2, 3, 9, 8, 4}, 1, 2,   {3, 9}, {8, 4}, {3, 4, 8, 9}},
        {"the whole sheet",
         {0, 0, 16383, 255, 0, 0},
         0,                                             0,
         {16383, 255},
         {0, 0},
         {0, 0, 16383, 255}                                                              },
        {"outside of the sheet",
         {65535, 65535, 16384, 256, 20000, 300},
         16383,                                         255,
         {16383, 255},
         {16383, 255},
         {16383, 255, 16383, 255}                                                        },
    };
    for (const auto& c : cases) {
        Fields fields;
        for (const unsigned field : c.fields)
            fields.add16(field);
        load(RecordScroll, fields);
        EXPECT_EQ(sheet().topRow, c.top) << c.phrase;
        EXPECT_EQ(sheet().leftColumn, c.left) << c.phrase;
        const Selection& selection = sheet().selection;
        EXPECT_EQ((CellRef{selection.anchorRow, selection.anchorColumn}), c.anchor) << c.phrase;
        EXPECT_EQ((CellRef{selection.activeRow, selection.activeColumn}), c.active) << c.phrase;
        EXPECT_EQ((CellRef{selection.cornerRow, selection.cornerColumn}), c.active) << c.phrase;
        EXPECT_EQ(selection.range, c.range) << c.phrase;
    }
}

Fields viewFields(std::uint32_t zoom, unsigned columns, unsigned rows, RangeRef titles = {})
{
    Fields view;
    view.add32(zoom).add8(1).add8(1).add8(1).add8(columns).add8(rows);
    return view.add16(titles.firstRow)
        .add16(titles.firstColumn)
        .add16(titles.lastRow)
        .add16(titles.lastColumn);
}

TEST_F(NativeSheetReader, takesEachFieldOfTheView)
{
    for (int set = 0; set < 5; ++set) {
        Fields view;
        view.add32(100);
        for (int flag = 0; flag < 5; ++flag)
            view.add8(flag == set ? 2 : 0);
        load(RecordView, view.add16(4).add16(2).add16(6).add16(3));
        EXPECT_EQ(sheet().showGridlines, set == 0);
        EXPECT_EQ(sheet().showTitles, set == 1);
        EXPECT_EQ(sheet().showZeros, set == 2);
        EXPECT_EQ(sheet().titleColumns, set == 3);
        EXPECT_EQ(sheet().titleRows, set == 4);
        EXPECT_EQ(sheet().titles, (RangeRef{4, 2, 6, 3}));
        EXPECT_EQ(sheet().leftColumn, set == 3 ? 4 : 0);
        EXPECT_EQ(sheet().topRow, set == 4 ? 7 : 0);
    }
}

TEST_F(NativeSheetReader, takesZoomsThatThereAre)
{
    const struct {
        std::uint32_t filed;
        int zoom;
    } cases[] = {
        {10,         10 },
        {25,         25 },
        {100,        100},
        {300,        300},
        {0,          100},
        {9,          100},
        {301,        100},
        {0x80000000, 100},
        {0xffffffff, 100},
    };
    for (const auto& c : cases) {
        load(RecordView, viewFields(c.filed, 0, 0));
        EXPECT_EQ(sheet().zoom, c.zoom) << c.filed;
        EXPECT_EQ(sheet().savedZoom, 100) << c.filed;
    }
}

TEST_F(NativeSheetReader, scrollsNothingUnderTheTitles)
{
    const struct {
        const char* phrase;
        unsigned top, left, columns, rows;
        RangeRef titles;
        int takenTop, takenLeft;
    } cases[] = {
        {"nothing is frozen",           0,  0,  0, 0, {0, 0, 4, 2},         0,     0  },
        {"columns are",                 0,  0,  1, 0, {0, 0, 4, 2},         0,     3  },
        {"rows are",                    0,  0,  0, 1, {0, 0, 4, 2},         5,     0  },
        {"both are",                    0,  0,  1, 1, {0, 0, 4, 2},         5,     3  },
        {"scrolled behind them",        20, 30, 1, 1, {0, 0, 4, 2},         20,    30 },
        {"scrolled right behind them",  5,  3,  1, 1, {0, 0, 4, 2},         5,     3  },
        {"up to the sheet's end",       0,  0,  1, 1, {0, 0, 16383, 255},   16383, 255},
        {"beyond it",                   0,  0,  1, 1, {0, 0, 65535, 65535}, 16383, 255},
        {"corners the other way round", 0,  0,  1, 1, {4, 2, 0, 0},         5,     3  },
    };
    for (const auto& c : cases) {
        Fields scroll;
        scroll.add16(c.top).add16(c.left).add32(0).add32(0);
        for (const bool viewFirst : {false, true}) {
            NativeFile file = begun();
            if (viewFirst)
                file.add(RecordView, viewFields(100, c.columns, c.rows, c.titles));
            file.add(RecordScroll, scroll);
            if (!viewFirst)
                file.add(RecordView, viewFields(100, c.columns, c.rows, c.titles));
            ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
            EXPECT_EQ(sheet().topRow, c.takenTop) << c.phrase;
            EXPECT_EQ(sheet().leftColumn, c.takenLeft) << c.phrase;
            EXPECT_LE(sheet().titles.firstRow, sheet().titles.lastRow) << c.phrase;
            EXPECT_LE(sheet().titles.lastColumn, LastColumn) << c.phrase;
        }
    }
}

TEST_F(NativeSheetReader, protectsTheSheetByTheNumberOne)
{
    for (const unsigned number : {0U, 1U, 2U, 257U}) {
        NativeFile file = begun();
        file.add(RecordSheetProtection, Fields().add16(1));
        file.add(RecordSheetProtection, Fields().add16(number));
        ASSERT_EQ(loadBytes(file.add(RecordSheetStart).ended()), ErrorNone);
        EXPECT_EQ(sheet().protectedSheet, number == 1) << number;
        EXPECT_FALSE(workbook->sheetAt(1)->protectedSheet);
    }
}

// --- Columns

TEST_F(NativeSheetReader, takesRunsOfColumns)
{
    const struct {
        const char* phrase;
        unsigned first, last;
        std::uint32_t width;
        unsigned style, flags;
        int size;
        ColumnAttr atFirst;
    } cases[] = {
        {"one column",          2,   2,     4000,       1,     0,     3,   {4000, 1, 0}   },
        {"all of them",         0,   255,   2300,       2,     1,     256, {2300, 2, 1}   },
        {"all flags",           0,   0,     100,        0,     65535, 1,   {100, 0, 65535}},
        {"clipped",             254, 65535, 100,        0,     0,     256, {100, 0, 0}    },
        {"outside",             256, 300,   100,        0,     0,     0,   {}             },
        {"the wrong way round", 5,   4,     100,        0,     0,     0,   {}             },
        {"an unknown style",    0,   3,     100,        3,     0,     4,   {100, 0, 0}    },
        {"the greatest style",  0,   3,     100,        65535, 0,     4,   {100, 0, 0}    },
        {"no width",            0,   0,     0xffffffff, 1,     0,     1,   {-1, 1, 0}     },
        {"a width of any size", 0,   0,     0x7fffffff, 1,     0,     1,   {-1, 1, 0}     },
        {"the greatest width",  0,   0,     1000000,    1,     0,     1,   {1000000, 1, 0}},
    };
    for (const auto& c : cases) {
        load(RecordColumns,
             Fields().add16(c.first).add16(c.last).add32(c.width).add16(c.style).add16(c.flags));
        EXPECT_EQ(sheet().columns.size(), c.size) << c.phrase;
        EXPECT_EQ(sheet().columns.attributes(static_cast<int>(c.first)), c.atFirst) << c.phrase;
        EXPECT_EQ(sheet().columns.attributes(c.size - 1), c.atFirst) << c.phrase;
    }
}

// --- Rows

TEST_F(NativeSheetReader, takesCellsOfEveryKind)
{
    Fields row = rowFields(3, 1, 12, 300, 0x1e0, 2);
    row.addBlank(1).addLogical(1, 0).addLogical(0, 2).addError(42, 0).addText(1, 1).addNumber(2.5,
                                                                                              0);
    row.addHole().addDate(36526, 2).addFormula(9, 1, 0).addLogical(77, 0).addHole();
    load(RecordRow, row);
    const char* values[] = {"blank", "blank", "TRUE",       "FALSE", "!!NA", "\"one\"",
                            "2.5",   "blank", "date 36526", "9",     "TRUE", "blank"};
    const int styles[] = {-1, 1, 0, 2, 0, 1, 0, -1, 2, 1, 0, -1};
    for (int column = 0; column < 12; ++column) {
        EXPECT_EQ(describe(sheet().valueOf(column, 3)), values[column]) << column;
        EXPECT_EQ(sheet().cellCopy(column, 3).style, styles[column]) << column;
    }
    EXPECT_EQ(sheet().cellInput(9, 3), u"=1+2");
    EXPECT_EQ(calcChain.first()->position(), (CellPosition{3, 9, 0}));
    const Row* object = sheet().rowAt(3);
    EXPECT_EQ(object->firstColumn, 1);
    EXPECT_EQ(object->cells.size(), 11);
    EXPECT_EQ(object->cells.capacity(), 12);
    EXPECT_EQ(object->height, 300);
    EXPECT_EQ(object->flags, 0x1e0);
    EXPECT_EQ(object->style, 2);
    EXPECT_TRUE(sheet().rowHidden(3));
    EXPECT_TRUE(sheet().rowHasCustomHeight(3));
}

TEST_F(NativeSheetReader, takesResultsOfEveryKind)
{
    Fields row = rowFields(0, 0, 6);
    row.addCell(0 | CellFormulaMark, 0).add32(0);
    row.addCell(1 | CellFormulaMark, 0).add8(1).add32(0);
    row.addCell(2 | CellFormulaMark, 0).add8(15).add32(0);
    row.addCell(3 | CellFormulaMark, 0).add32(2).add32(0);
    row.addCell(4 | CellFormulaMark, 0).addDouble(-1).add32(0);
    row.addCell(13 | CellFormulaMark, 0).addDouble(5).add32(0);
    load(RecordRow, row);
    const char* results[] = {"blank", "TRUE", "!!Val", "\"two\"", "-1", "date 5"};
    for (int column = 0; column < 6; ++column) {
        EXPECT_EQ(describe(sheet().valueOf(column, 0)), results[column]) << column;
        EXPECT_EQ(sheet().cellInput(column, 0), u"=1+2") << column;
    }
    EXPECT_EQ(formulaPool->refCount(0), 6);
    EXPECT_EQ(stringPool->refCount(2), 1);
}

TEST_F(NativeSheetReader, endsARowAtWhatIsNoCell)
{
    for (unsigned tag = 0; tag < 256; ++tag) {
        const unsigned kind = tag & 0x7f;
        const bool isValue = kind <= 4 || kind == 13;
        Fields row = rowFields(0, 0, 9, 400);
        row.addNumber(1, 0).addHole().addCell(tag, 0);
        if (isValue) {
            row.addBytes(std::string(CellPayloadSizes[kind], '\0'));
            if (tag >= 128)
                row.add32(0);
        }
        if (tag == CellHole)
            row = rowFields(0, 0, 9, 400).addNumber(1, 0).addHole().addHole();
        load(RecordRow, row.addNumber(4, 0));
        EXPECT_EQ(sheet().rowHeight(0), 400) << tag;
        EXPECT_EQ(sheet().valueOf(0, 0).number(), 1) << tag;
        EXPECT_EQ(sheet().valueTag(3, 0), isValue || tag == CellHole ? TagNumber : TagBlank) << tag;
        EXPECT_EQ(sheet().rowAt(0)->cells.size(), isValue || tag == CellHole ? 4 : 1) << tag;
    }
}

// However a row is cut, what it holds whole is there.
TEST_F(NativeSheetReader, takesTheWholeCellsOfACutRow)
{
    Fields row = rowFields(0, 0, 200);
    row.addNumber(1, 0).addText(1, 0).addFormula(9, 1, 0).addLogical(1, 0);
    const std::size_t ends[] = {12, 23, 30, 45, 49};
    for (std::size_t size = 12; size <= row.bytes().size(); ++size) {
        load(RecordRow, Fields().addBytes(row.bytes().substr(0, size)));
        int whole = 0;
        while (whole < 4 && ends[whole + 1] <= size)
            ++whole;
        EXPECT_EQ(sheet().rowAt(0)->cells.size(), whole) << size;
        EXPECT_EQ(calcChain.first() != nullptr, whole >= 3) << size;
    }
    for (std::size_t size = 0; size < 12; ++size) {
        load(RecordRow, Fields().addBytes(row.bytes().substr(0, size)));
        EXPECT_EQ(sheet().rowCount(0), 0) << size;
    }
}

TEST_F(NativeSheetReader, clipsRowsToTheSheet)
{
    const struct {
        const char* phrase;
        unsigned row, first, end;
        int cells; // that the record has
        int size;
        int lastRow;
    } cases[] = {
        {"the last cell of the sheet", 16383, 255,   256,   1,   256, 16383},
        {"a row below it",             16384, 0,     1,     1,   0,   0    },
        {"the greatest row",           65535, 0,     1,     1,   0,   0    },
        {"an end behind it",           0,     0,     300,   300, 256, 0    },
        {"the greatest end",           0,     250,   65535, 9,   256, 0    },
        {"a first column behind it",   0,     256,   300,   5,   0,   0    },
        {"the greatest first column",  0,     65535, 65535, 5,   0,   0    },
        {"an end before the first",    0,     9,     3,     5,   0,   0    },
        {"an end at the first",        0,     9,     9,     5,   0,   0    },
        {"more cells than it tells",   0,     2,     4,     9,   4,   0    },
        {"fewer cells than it tells",  0,     2,     200,   3,   5,   0    },
        {"every column",               5,     0,     256,   256, 256, 5    },
    };
    for (const auto& c : cases) {
        Fields row = rowFields(c.row, c.first, c.end);
        for (int cell = 0; cell < c.cells; ++cell)
            row.addNumber(cell, 0);
        load(RecordRow, row);
        EXPECT_EQ(sheet().rowCount(static_cast<int>(c.row)), c.size) << c.phrase;
        EXPECT_EQ(sheet().lastRow(), c.lastRow) << c.phrase;
        EXPECT_EQ(sheet().valueTag(static_cast<int>(c.first), static_cast<int>(c.row)),
                  c.size != 0 ? TagNumber : TagBlank)
            << c.phrase;
    }
}

TEST_F(NativeSheetReader, makesRowsWithoutCells)
{
    const struct {
        const char* phrase;
        unsigned height, flags, style, end;
        int takenHeight, takenStyle;
    } cases[] = {
        {"a height",             400,    0x140, 0, 0,   400, 0},
        {"a style",              255,    0x180, 2, 0,   255, 2},
        {"an unknown style",     255,    0x180, 3, 0,   255, 0},
        {"a mark above it",      0x8190, 0x100, 0, 0,   400, 0},
        {"an end without cells", 400,    0x100, 0, 256, 400, 0},
    };
    for (const auto& c : cases) {
        load(RecordRow, rowFields(7, 0, c.end, c.height, c.flags, c.style));
        const Row* object = sheet().rowAt(7);
        ASSERT_NE(object, nullptr) << c.phrase;
        EXPECT_EQ(object->height, c.takenHeight) << c.phrase;
        EXPECT_EQ(object->flags, c.flags) << c.phrase;
        EXPECT_EQ(object->style, c.takenStyle) << c.phrase;
        EXPECT_EQ(object->cells.capacity(), 0) << c.phrase;
    }
}

TEST_F(NativeSheetReader, givesHolesNoRoom)
{
    load(RecordRow, rowFields(0, 0, 256).addBytes(std::string(256, CellHole)));
    EXPECT_EQ(sheet().rowAt(0)->cells.capacity(), 0);
    load(RecordRow, rowFields(0, 3, 256).addHole().addHole().addNumber(1, 0).addHole());
    EXPECT_EQ(sheet().rowAt(0)->cells.size(), 6);
    EXPECT_EQ(sheet().rowAt(0)->cells.capacity(), 17);
    EXPECT_EQ(sheet().rowAt(0)->firstColumn, 5);
}

TEST_F(NativeSheetReader, clipsTheStylesOfCells)
{
    for (const unsigned style : {0U, 2U, 3U, 32767U, 32768U, 65535U}) {
        load(RecordRow, rowFields(0, 0, 2).addBlank(style).addFormula(1, style, 0));
        const int taken = style < 3 ? static_cast<int>(style) : 0;
        EXPECT_EQ(sheet().cellCopy(0, 0).style, taken) << style;
        EXPECT_EQ(sheet().cellCopy(1, 0).style, taken) << style;
    }
}

TEST_F(NativeSheetReader, refusesARowThatComesTwice)
{
    NativeFile file = begun();
    file.add(RecordRow, rowFields(4, 0, 0, 300));
    file.add(RecordRow, rowFields(4, 0, 1).addText(0, 0));
    EXPECT_EQ(loadBytes(file.ended()), ErrorNone);
    EXPECT_EQ(loadBytes(file.add(RecordRow, rowFields(4, 0, 0)).ended()), ErrorFileRead);
}

TEST_F(NativeSheetReader, takesARowOf256Formulas)
{
    Fields row = rowFields(0, 0, 256);
    for (int column = 0; column < 256; ++column)
        row.addFormula(column, 0, 0);
    ASSERT_EQ(row.bytes().size(), 3852U);
    load(RecordRow, row);
    EXPECT_EQ(sheet().valueOf(255, 0).number(), 255);
    EXPECT_EQ(formulaPool->refCount(0), 256);
}

// --- Filters

TEST_F(NativeSheetReader, takesAFilter)
{
    const struct {
        const char* phrase;
        RangeRef filed, taken;
    } cases[] = {
        {"a block",             {1, 2, 9, 4},             {1, 2, 9, 4}            },
        {"one cell",            {1, 2, 1, 2},             {1, 2, 1, 2}            },
        {"the whole sheet",     {0, 0, 16383, 255},       {0, 0, 16383, 255}      },
        {"clipped",             {5, 250, 65535, 65535},   {5, 250, 16383, 255}    },
        {"the wrong way round", {9, 4, 1, 2},             {1, 2, 9, 4}            },
        {"outside",             {20000, 300, 30000, 400}, {16383, 255, 16383, 255}},
    };
    for (const auto& c : cases) {
        const RangeRef& filed = c.filed;
        load(RecordFilter, Fields()
                               .add16(filed.firstRow)
                               .add16(filed.firstColumn)
                               .add16(filed.lastRow)
                               .add16(filed.lastColumn));
        EXPECT_TRUE(sheet().filter.active) << c.phrase;
        EXPECT_EQ(sheet().filter.range, c.taken) << c.phrase;
        ASSERT_EQ(sheet().filter.columns.size(), c.taken.lastColumn - c.taken.firstColumn + 1);
        const FilterColumn& column = sheet().filter.columns[0];
        EXPECT_EQ(column.kind, FilterAll);
        EXPECT_EQ(column.topCount, 10);
        EXPECT_EQ(column.largest, 1);
        EXPECT_EQ(column.operator1, 1);
        EXPECT_EQ(column.both, 1);
        EXPECT_EQ(column.operator2, 0);
        EXPECT_EQ(column.text1, nullptr);
    }
}

TEST_F(NativeSheetReader, takesTheSettingsOfFilterColumns)
{
    const struct {
        const char* phrase;
        std::uint32_t fields[6]; // kind, count, kind of top, first, second comparison, link
        std::int32_t taken[6];
    } cases[] = {
        {"all of it",           {4, 7, 0, 3, 6, 1},                                {4, 7, 0, 3, 6, 0}    },
        {"both comparisons",    {4, 7, 1, 3, 6, 0},                                {4, 7, 1, 3, 6, 1}    },
        {"the least",           {0, 1, 0, 1, 0, 0},                                {0, 1, 0, 1, 0, 1}    },
        {"the greatest",        {4, 100, 1, 12, 12, 9},                            {4, 100, 1, 12, 12, 0}},
        {"one more than these", {5, 101, 2, 13, 13, 1},                            {0, 10, 1, 1, 0, 0}   },
        {"one less",            {0, 0, 0, 0, 0, 0},                                {0, 10, 0, 1, 0, 1}   },
        {"any bits",
         {0xffffffff, 0x80000000, 0x80000000, 0xffffffff, 0x80000001, 0xffffffff},
         {0, 10, 1, 1, 0, 0}                                                                             },
    };
    for (const auto& c : cases) {
        NativeFile file = begun();
        file.add(RecordFilter, Fields().add16(0).add16(3).add16(9).add16(5));
        Fields column;
        column.add32(2);
        for (const std::uint32_t field : c.fields)
            column.add32(field);
        file.add(RecordFilterColumn, column.addPlain(u"first").addPlain(u""));
        ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
        const FilterColumn& taken = sheet().filter.columns[2];
        EXPECT_EQ(taken.kind, c.taken[0]) << c.phrase;
        EXPECT_EQ(taken.topCount, c.taken[1]) << c.phrase;
        EXPECT_EQ(taken.largest, c.taken[2]) << c.phrase;
        EXPECT_EQ(taken.operator1, c.taken[3]) << c.phrase;
        EXPECT_EQ(taken.operator2, c.taken[4]) << c.phrase;
        EXPECT_EQ(taken.both, c.taken[5]) << c.phrase;
        EXPECT_EQ(std::u16string(taken.text1), u"first") << c.phrase;
        EXPECT_EQ(taken.text2, nullptr) << c.phrase;
        EXPECT_EQ(sheet().filter.columns[1].topCount, 10) << c.phrase;
    }
}

TEST_F(NativeSheetReader, passesOverFilterColumnsOutside)
{
    const Fields settings = Fields().add32(4).add32(5).add32(1).add32(2).add32(2).add32(0);
    NativeFile file = begun();
    file.add(RecordFilterColumn, Fields().add32(0).addBytes(settings.bytes()).addPlain(u"a"));
    file.add(RecordFilter, Fields().add16(0).add16(3).add16(9).add16(5));
    for (const std::uint32_t index : {3U, 255U, 0xffffffffU})
        file.add(RecordFilterColumn,
                 Fields().add32(index).addBytes(settings.bytes()).addPlain(u"a"));
    // The last of several records for one column stands.
    for (const std::u16string_view text : {u"x", u"y"})
        file.add(RecordFilterColumn, Fields().add32(1).addBytes(settings.bytes()).addPlain(text));
    ASSERT_EQ(loadBytes(file.ended()), ErrorNone);
    const GrowArray<FilterColumn>& columns = sheet().filter.columns;
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns[0].topCount, 10);
    EXPECT_EQ(columns[1].topCount, 5);
    EXPECT_EQ(columns[2].text1, nullptr);
    EXPECT_EQ(std::u16string(columns[1].text1), u"y");
}

// --- Room

TEST_F(NativeSheetReader, endsWhereFewBytesAskForTooMuchRoom)
{
    const struct {
        const char* phrase;
        unsigned type;
        Fields fields;
    } cases[] = {
        {"the last row of each sheet",                    RecordRow, rowFields(16383,                                                             0, 0)},
        {"a filter over all columns",                                             RecordFilter,                                                      Fields().add16(0).add16(0).add16(9).add16(255)                                                                                                      },
        {"attributes for the last column", RecordColumns,
         Fields().add16(255).add16(255).add32(100).add16(0).add16(0)},
    };
    for (const auto& c : cases) {
        const auto filled = [&c](int sheets) {
            NativeFile file;
            for (int sheet = 0; sheet < sheets; ++sheet)
                file.add(RecordSheetName, Fields().addCounted(u"s"));
            for (int sheet = 0; sheet < sheets; ++sheet)
                file.add(RecordSheetStart).add(c.type, c.fields);
            return file.ended();
        };
        EXPECT_EQ(loadBytes(filled(255)), ErrorNone) << c.phrase;
        EXPECT_EQ(loadBytes(filled(65535)), ErrorMemory) << c.phrase;
    }
}

} // namespace
} // namespace vorn
