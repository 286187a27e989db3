#include "files/nativesheetwriter.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/workbook.h"
#include "support/filedrecords.h"
#include "support/rawcells.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Payloads = std::vector<std::string>;

class NativeSheetWriterTest : public testing::Test {
protected:
    NativeSheetWriterTest() { NewDocument(1, FileKindNative); }

    Sheet& sheet() { return *workbook->currentSheet; }

    static int addStyle(int leftColour)
    {
        CellStyle style = defaultStyle();
        style.set(StyleLeftColour, leftColour);
        return workbook->addStyle(style);
    }

    // The cells of the only row.
    static std::string filedCells()
    {
        const Payloads rows = savedPayloads(11);
        return rows.size() == 1 ? rows[0].substr(24) : "not one row";
    }

    static FormulaCell& formulaIn(Sheet& where, int column, int row, const Cell& cell)
    {
        where.setCell(column, row, cell);
        return *cell.value.formula();
    }

    TestDocument document;
};

// --- View

TEST_F(NativeSheetWriterTest, writesTheScrolledCorner)
{
    sheet().topRow = 0x1234;
    sheet().leftColumn = 0xab;
    EXPECT_EQ(savedPayloads(22), Payloads{bare("3412 ab00 0000 0000 0000 0000")});
}

TEST_F(NativeSheetWriterTest, writesTheActiveCellAndTheCornerOppositeToIt)
{
    const struct {
        const char* behaviour;
        RangeRef range;
        CellRef active; // row, column
        const char* payload;
    } rows[] = {
        {"one cell",            {5, 6, 5, 6},     {5, 6}, "0500 0600 0500 0600"},
        {"at the top left",     {1, 2, 7, 8},     {1, 2}, "0700 0800 0100 0200"},
        {"at the top right",    {1, 2, 7, 8},     {1, 8}, "0700 0200 0100 0800"},
        {"at the bottom left",  {1, 2, 7, 8},     {7, 2}, "0100 0800 0700 0200"},
        {"at the bottom right", {1, 2, 7, 8},     {7, 8}, "0100 0200 0700 0800"},
        {"inside",              {1, 2, 7, 8},     {3, 4}, "0100 0200 0300 0400"},
        {"on the left edge",    {1, 2, 7, 8},     {3, 2}, "0100 0800 0300 0200"},
        {"all rows of columns", {0, 2, 16383, 3}, {0, 2}, "ff3f 0300 0000 0200"},
    };
    for (const auto& row : rows) {
        sheet().selection = {};
        sheet().selection.range = row.range;
        sheet().selection.activeRow = row.active.row;
        sheet().selection.activeColumn = row.active.column;
        EXPECT_EQ(savedPayloads(22), Payloads{bare("0000 0000") + bare(row.payload)})
            << row.behaviour;
    }
}

TEST_F(NativeSheetWriterTest, writesEachFieldOfTheView)
{
    const auto filedView = [] { return savedPayloads(14).at(0); };
    const std::string noTitles = bare("0000 0000 0000 0000");
    Sheet& each = sheet();
    EXPECT_EQ(filedView(), bare("64000000 01 01 01 00 00") + noTitles);
    each.zoom = 0x1234;
    EXPECT_EQ(filedView(), bare("34120000 01 01 01 00 00") + noTitles);
    each.showGridlines = false;
    EXPECT_EQ(filedView(), bare("34120000 00 01 01 00 00") + noTitles);
    each.showTitles = false;
    EXPECT_EQ(filedView(), bare("34120000 00 00 01 00 00") + noTitles);
    each.showZeros = false;
    EXPECT_EQ(filedView(), bare("34120000 00 00 00 00 00") + noTitles);
    each.titleColumns = true;
    EXPECT_EQ(filedView(), bare("34120000 00 00 00 01 00") + noTitles);
    each.titleColumns = false;
    each.titleRows = true;
    EXPECT_EQ(filedView(), bare("34120000 00 00 00 00 01") + noTitles);
    each.titles = {1, 2, 0x0304, 5};
    EXPECT_EQ(filedView(), bare("34120000 00 00 00 00 01 0100 0200 0403 0500"));
}

TEST_F(NativeSheetWriterTest, writesTheZoomThatFullScreenWillReturnTo)
{
    const struct {
        const char* behaviour;
        int fullScreenZoom, zoom, savedZoom, filed;
    } rows[] = {
        {"no full screen",             0,  90, 150, 90 },
        {"at the zoom of full screen", 90, 90, 150, 150},
        {"changed since then",         90, 80, 150, 80 },
        {"lower all along",            90, 50, 50,  50 },
    };
    for (const auto& row : rows) {
        sheet().zoom = row.zoom;
        sheet().savedZoom = row.savedZoom;
        TransferContext context;
        context.fullScreenZoom = row.fullScreenZoom;
        std::string zoom;
        for (const FiledRecord& record : splitRecords(savedBytes(context)))
            zoom += record.type == 14 ? record.payload.substr(0, 8) : "";
        EXPECT_EQ(zoom, hex32(static_cast<std::uint32_t>(row.filed))) << row.behaviour;
    }
}

TEST_F(NativeSheetWriterTest, marksProtectedSheetsOnly)
{
    EXPECT_EQ(savedPayloads(24), Payloads{});
    sheet().protectedSheet = true;
    EXPECT_EQ(savedPayloads(24), Payloads{bare("0100")});
}

// --- Columns

TEST_F(NativeSheetWriterTest, writesRunsOfEqualColumns)
{
    const int style = addStyle(1);
    ColumnTable& columns = sheet().columns;
    EXPECT_EQ(savedPayloads(15), Payloads{});
    columns.setColumnAttr(2, 4, {1000, 0, 0});
    columns.setColumnAttr(5, 5, {1001, 0, 0});
    columns.setColumnAttr(6, 6, {1001, 0, ColumnHiddenFlag});
    columns.setColumnAttr(9, 10, {-1, static_cast<std::uint16_t>(style), 0});
    columns.setColumnAttr(11, 11, {-1, 0, 0x8000});
    columns.setColumnAttr(12, 200, {});
    columns.setColumnAttr(255, 255, {70000, 0, 0});
    EXPECT_EQ(
        savedPayloads(15),
        (Payloads{bare("0200 0400 e8030000 0000 0000"), bare("0500 0500 e9030000 0000 0000"),
                  bare("0600 0600 e9030000 0000 0100"), bare("0900 0a00 fc080000 0100 0000"),
                  bare("0b00 0b00 fc080000 0000 0080"), bare("ff00 ff00 70110100 0000 0000")}));
}

TEST_F(NativeSheetWriterTest, fillsInTheSheetsDefaultWidth)
{
    sheet().columns.setDefaultWidth(3000);
    sheet().columns.setColumnHidden(0, 255, true);
    EXPECT_EQ(savedPayloads(15), Payloads{bare("0000 ff00 b80b0000 0000 0100")});
}

// --- Rows

TEST_F(NativeSheetWriterTest, writesOneRecordForEachRowOfUse)
{
    const auto style = addStyle(1);
    sheet().ensureRow(0);                            // nothing
    sheet().setCell(2, 1, numberCell(1));            // a value
    sheet().setCell(3, 2, blankCell(0));             // a blank with a style
    sheet().setRowHeight(3, 300, false);             // a height
    sheet().setRowStyle(4, style);                   // a style
    sheet().setRowHidden(5, true);                   // only hidden
    sheet().setRowHeight(6, DefaultRowHeight, true); // no object
    sheet().setCell(9, 7, numberCell(1));            // cleared again
    sheet().setCell(9, 7, blankCell(-1));
    sheet().ensureRow(8)->height = 0x8000 | DefaultRowHeight;
    sheet().ensureRow(LastRow)->height = 0x8001;
    EXPECT_EQ(
        savedPayloads(11),
        (Payloads{bare("0100 0200 0300 ff00 0001 0000 04 0000") + hexDouble(1),
                  bare("0200 0300 0400 ff00 0001 0000 00 0000"),
                  bare("0300 0000 0000 2c01 0001 0000"), bare("0400 0000 0000 ff00 8001 0100"),
                  bare("ff3f 0000 0000 0180 0001 0000")}));
}

TEST_F(NativeSheetWriterTest, takesTheSheetsOwnHeightForTheDefault)
{
    sheet().ensureRow(0);
    sheet().defaultRowHeight = 300;
    sheet().ensureRow(1);
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0000 ff00 0001 0000")});
}

TEST_F(NativeSheetWriterTest, tellsInTheFlagsWhetherTheRowHasAStyle)
{
    const auto style = addStyle(1);
    sheet().setRowHeight(0, 300, true);
    sheet().setRowHidden(0, true);
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0000 2c01 6001 0000")});
    sheet().setRowStyle(0, style);
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0000 2c01 e001 0100")});
    EXPECT_EQ(sheet().rowAt(0)->flags, 0xe0) << "the row itself is told";
    sheet().setRowStyle(0, 0);
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0000 0000 2c01 6001 0000")});
    EXPECT_EQ(sheet().rowAt(0)->flags, 0x60);
}

TEST_F(NativeSheetWriterTest, storesFromTheFirstCellToTheLast)
{
    sheet().setCell(5, 0, numberCell(1));
    sheet().setCell(8, 0, logicalCell(true));
    sheet().setCell(2, 0, numberCell(9));
    sheet().setCell(11, 0, numberCell(9));
    sheet().setCell(2, 0, blankCell(-1));
    sheet().setCell(11, 0, blankCell(-1));
    EXPECT_EQ(savedPayloads(11), Payloads{bare("0000 0500 0900 ff00 0001 0000 04 0000") +
                                          hexDouble(1) + bare("0c 0c 01 0000 01")});
}

TEST_F(NativeSheetWriterTest, storesEachKindOfCell)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const Cell emptyText{CellValue::makeTextIndex(-1), -1};
    const struct {
        const char* behaviour;
        Cell cell;
        const char* filed;
    } rows[] = {
        {"a blank with a style", blankCell(0),             "00 0000"                  },
        {"true",                 logicalCell(true),        "01 0000 01"               },
        {"false",                logicalCell(false),       "01 0000 00"               },
        {"an error",             errorCell(CellErrorDiv0), "02 0000 07"               },
        {"the error 0",          errorCell(CellErrorNull), "02 0000 00"               },
        {"a text",               textCell(u"x"),           "03 0000 00000000"         },
        {"the empty text",       emptyText,                "03 0000 ffffffff"         },
        {"a number",             numberCell(-0.1),         "04 0000 9a999999 9999b9bf"},
        {"minus zero",           numberCell(-0.0),         "04 0000 00000000 00000080"},
        {"out of bounds",        numberCell(infinity),     "04 0000 00000000 0000f07f"},
        {"a date",               dateCell(36526.5),        "0d 0000 00000000 d0d5e140"},
    };
    for (const auto& row : rows) {
        // The text has number 0 if it is the only one.
        sheet().setCell(0, 0, row.cell);
        EXPECT_EQ(filedCells(), bare(row.filed)) << row.behaviour;
    }
}

TEST_F(NativeSheetWriterTest, storesFormulasWithTheirResults)
{
    const CellValue yes = CellValue::makeLogical(true);
    const CellValue error = CellValue::makeError(CellErrorNA);
    const CellValue emptyText = CellValue::makeTextIndex(-1);
    const CellValue number = CellValue::makeNumber(2);
    const CellValue date = CellValue::makeDate(2);
    const CellValue integer = CellValue::makeInteger(2);
    const struct {
        const char* behaviour;
        CellValue result;
        const char* filed;
    } rows[] = {
        {"none yet",              {},        "80 0000 00000000"                  },
        {"a logical",             yes,       "81 0000 01 00000000"               },
        {"an error",              error,     "82 0000 2a 00000000"               },
        {"the empty text",        emptyText, "83 0000 ffffffff 00000000"         },
        {"a number",              number,    "84 0000 00000000 00000040 00000000"},
        {"a date",                date,      "8d 0000 00000000 00000040 00000000"},
        {"what no cell can hold", integer,   "80 0000 00000000"                  },
    };
    FormulaCell& cell = formulaIn(sheet(), 0, 0, constantFormula(1, {0, 0, 0}));
    for (const auto& row : rows) {
        cell.result = row.result;
        EXPECT_EQ(filedCells(), bare(row.filed)) << row.behaviour;
    }
    cell.result = textValue(u"text");
    EXPECT_EQ(filedCells(), bare("83 0000 00000000 00000000"));
}

TEST_F(NativeSheetWriterTest, storesTheStyleThatACellShows)
{
    const int ofCell = addStyle(1);
    const int ofRow = addStyle(2);
    const int ofColumn = addStyle(3);
    const struct {
        const char* behaviour;
        int cell, row, column;
        const char* number;
    } rows[] = {
        {"its own",                ofCell, ofRow, ofColumn, "0100"},
        {"the default as its own", 0,      ofRow, ofColumn, "0000"},
        {"the row's",              -1,     ofRow, ofColumn, "0100"},
        {"the column's",           -1,     0,     ofColumn, "0100"},
        {"none of them",           -1,     0,     0,        "0000"},
    };
    for (const auto& row : rows) {
        sheet().setCell(0, 0, numberCell(1, row.cell));
        sheet().setRowStyle(0, row.row);
        sheet().columns.setColumnStyle(0, 0, row.column);
        // Styles that nothing else has are not counted, so most numbers are 1.
        std::string number = row.number;
        const std::string filed = filedCells().substr(2, 4);
        EXPECT_EQ(filed, number) << row.behaviour;
        const std::string style =
            savedPayloads(9)[static_cast<std::size_t>(filed == "0000" ? 0 : 1)].substr(24, 2);
        EXPECT_EQ(style, hex8(static_cast<unsigned>(sheet().cellStyle(0, 0)))) << row.behaviour;
    }
}

TEST_F(NativeSheetWriterTest, leavesAHoleWhereNoCellIsWhateverTheColumnHas)
{
    const int style = addStyle(1);
    sheet().columns.setColumnStyle(0, 2, style);
    sheet().setCell(0, 0, blankCell(0));
    sheet().setCell(2, 0, blankCell(0));
    EXPECT_EQ(filedCells(), bare("00 0000 0c 00 0000"));
}

TEST_F(NativeSheetWriterTest, fitsARowFullOfFormulasIntoARecord)
{
    for (int column = 0; column < ColumnCount; ++column) {
        const CellPosition place{0, static_cast<std::uint16_t>(column), 0};
        formulaIn(sheet(), column, 0, constantFormula(1, place)).result = CellValue::makeNumber(1);
    }
    EXPECT_EQ(savedPayloads(11)[0].size(), 2u * 3852);
    EXPECT_EQ(savedPayloads(1), Payloads{bare("0300 0300 0300 0010")});
    EXPECT_EQ(savedPayloads(11)[0].substr(0, 24), bare("0000 0000 0001 ff00 0001 0000"));
}

// --- Filter

TEST_F(NativeSheetWriterTest, writesTheFilterBehindTheRows)
{
    sheet().setCell(0, 0, numberCell(1));
    ASSERT_TRUE(sheet().filter.start({2, 3, 40, 4}));
    FilterColumn& column = sheet().filter.columns[1];
    column.kind = FilterWhere;
    column.topCount = 20;
    column.largest = 0;
    column.operator1 = 12;
    column.both = 0;
    column.operator2 = 11;
    column.text1 = duplicateString(u"a");
    column.text2 = duplicateString(u"bc");
    EXPECT_EQ(savedPayloads(26), Payloads{bare("0200 0300 2800 0400")});
    EXPECT_EQ(savedPayloads(27),
              (Payloads{bare("00000000 00000000 0a000000 01000000 01000000 00000000 00000000") +
                            hexPlain(u"") + hexPlain(u""),
                        bare("01000000 04000000 14000000 00000000 0c000000 0b000000 01000000") +
                            hexPlain(u"a") + hexPlain(u"bc")}));
    sheet().filter.clear();
    EXPECT_EQ(savedPayloads(26), Payloads{});
    EXPECT_EQ(savedPayloads(27), Payloads{});
}

} // namespace
} // namespace vorn
