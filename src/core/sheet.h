// One worksheet of 16,384 rows by 256 columns. Storage is sparse by row and dense within one: a row
// that holds nothing has no object, and a row that exists has one plain array of cells from column
// 0 up to the last column ever stored in it.
//
// Units:  coordinates are column, then row, both from 0. Reading takes any number and finds nothing
//         outside; writing outside of the sheet does nothing.
// Shape:  a cell's address holds until the row grows.
// Errors: ErrorMemory, sticky. While it stands nothing more is stored: what was handed to setCell
//         then stays with the caller.
#pragma once

#include "core/columns.h"
#include "core/filter.h"
#include "core/formulacell.h"
#include "core/growarray.h"
#include "core/value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

// Cell, 14 bytes: the value, then the index of its style, -1 for none. A blank without a style is
// the same as no cell; a blank with a style is a real one.
struct Cell {
    CellValue value;
    std::int16_t style = -1;
};
static_assert(sizeof(Cell) == 14 && offsetof(Cell, style) == 12);

constexpr std::uint16_t RowHiddenFlag = 1 << 5;
constexpr std::uint16_t RowCustomHeightFlag = 1 << 6;
constexpr int DefaultRowHeight = 255;
constexpr int GreatestRowHeight = 0x7fff;            // that a row can have
constexpr std::uint16_t DefaultHeightCustomFlag = 1; // of a sheet's rowFlags
constexpr int SheetNameMax = 39;

// A row's object. `cells.size()` is the last column ever stored + 1; columns below firstColumn are
// allocated and count as absent.
struct Row {
    GrowArray<Cell> cells;
    std::uint16_t height = DefaultRowHeight; // twips
    std::uint16_t flags = 0;
    std::uint16_t style = 0; // 0 for none
    std::int16_t firstColumn = 0;
};

// What is selected: a sorted range, the active cell and the two corners of the drag.
struct Selection {
    RangeRef range;
    std::uint16_t activeRow = 0;
    std::uint16_t activeColumn = 0;
    std::uint16_t anchorRow = 0;
    std::uint16_t anchorColumn = 0;
    std::uint16_t cornerRow = 0;
    std::uint16_t cornerColumn = 0;

    // Selects the range between two corners, the first being the active cell.
    void select(CellRef first, CellRef second);
};

class Sheet {
public:
    Sheet(int sheetIndex, std::u16string_view sheetName);
    ~Sheet();
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    // Its place in the workbook.
    int index;
    ColumnTable columns;
    bool protectedSheet = false;
    bool titleColumns = false; // frozen columns, rows, and which
    bool titleRows = false;
    RangeRef titles;
    int leftColumn = 0; // first scrollable column and row shown
    int topRow = 0;
    std::uint16_t rowFlags = 0;
    std::uint16_t defaultRowHeight = DefaultRowHeight;
    int zoom = 100; // percent
    int savedZoom = 100;
    bool showGridlines = true;
    bool showTitles = true;
    bool showZeros = true;
    Selection selection;
    SheetFilter filter;

    std::u16string_view name() const { return name_; }

    // Keeps the first 39 characters.
    void setName(std::u16string_view name);

    // --- Reading

    const Cell* cellAt(int column, int row) const
    {
        const Row* object = rowAt(row);
        if (object == nullptr || column < object->firstColumn || column >= object->cells.size())
            return nullptr;
        return object->cells.data() + column;
    }

    // The stored value and style, or a blank without style. Borrowed: no reference is taken.
    Cell cellCopy(int column, int row) const;

    // cellCopy with the effective style in place of the stored one.
    Cell cellCopyStyled(int column, int row) const;

    // The value, a formula's result in its place. Borrowed.
    CellValue valueOf(int column, int row) const;

    // The address of the value or of the formula's result; null if there is no cell.
    const CellValue* valuePointer(int column, int row) const;

    std::uint8_t valueTag(int column, int row) const;
    bool isOccupied(int column, int row) const;
    bool isPresent(int column, int row) const;

    // The cell's own style, else the row's if above 0, else the column's.
    int cellStyle(int column, int row) const;

    // What the cell shows by its number format, not fitted to a width.
    std::u16string cellText(int column, int row) const;

    // What the cell's input line shows: a formula with its '=', or the value's text.
    std::u16string cellInput(int column, int row) const;

    // --- Extents

    // The highest row ever touched; 0 for a sheet that has no rows at all.
    int lastRow() const { return rows_.size() == 0 ? 0 : rows_.size() - 1; }
    bool hasRows() const { return rows_.size() != 0; }
    const Row* rowAt(int row) const
    {
        return row >= 0 && row < rows_.size() ? rows_.data()[row] : nullptr;
    }

    // What rowAt answers for the rows up to lastRow(), side by side; null for a sheet without rows.
    const Row* const* rowObjects() const { return rows_.data(); }
    int rowCount(int row) const;
    int lastOccupiedColumn(int row) const;
    int lastPresentColumn(int row) const;
    int firstColumnOf(int row) const;

    // The highest row whose cell in `column` is occupied, -1 if none. With a column below 0: the
    // bottom row that has data in the low word, its last column in the high word.
    int lastOccupiedRow(int column) const;
    int lastOccupiedColumnOfSheet() const;

    // The next row with an object, 16,384 if none; the one before, negative if none.
    int nextRow(int row) const;
    int previousRow(int row) const;
    bool rowHasData(int row) const;

    // --- Writing

    // Stores a cell and takes over what it owns. The old content is released, a formula joins the
    // calculation chain.
    void setCell(int column, int row, const Cell& cell) { store(column, row, cell, true); }

    // The same; with `maintain` off the old content is not released and the chain is left alone, as
    // when a cell is stored again with another style.
    void setCellKeepChain(int column, int row, const Cell& cell, bool maintain)
    {
        store(column, row, cell, maintain);
    }

    // The cell, made blank if it was not there; null if that is refused.
    Cell* ensureCell(int column, int row);
    Row* ensureRow(int row);

    // Does nothing if the effective style is already that.
    void setCellStyle(int column, int row, int style);

    // Exchange cells without touching the chain; formulas learn their new places.
    void swapCells(int columnA, int rowA, int columnB, int rowB);
    void swapRows(int firstColumn, int lastColumn, int rowA, int rowB);
    void swapColumns(int firstRow, int lastRow, int columnA, int columnB);

    // --- Clearing: values and formats, values only, formats only.
    void clearAll(const RangeRef& range);
    void clearContents(const RangeRef& range);
    void clearFormats(const RangeRef& range);

    // --- Rows

    int rowHeight(int row) const;
    int visibleRowHeight(int row) const { return rowHidden(row) ? 0 : rowHeight(row); }
    int rowPixels(int row) const { return visibleRowHeight(row) / 15; }
    int rowStyle(int row) const;
    bool rowHidden(int row) const;
    bool rowHasCustomHeight(int row) const;

    // The default height on a row without an object does nothing; setRowHidden always makes the
    // row.
    void setRowHeight(int row, int height, bool custom);
    void setRowHidden(int row, bool hidden);
    void setRowStyle(int row, int style);

    // --- Moving

    // Where a jump to the edge of the data leads.
    int edgeDown(int column, int row) const;
    int edgeUp(int column, int row) const;
    int edgeRight(int column, int row) const;
    int edgeLeft(int column, int row) const;

    // The block of consecutive rows with data around a cell, across all their columns. False if the
    // cell is in none.
    bool currentRegion(int column, int row, RangeRef& out) const;

private:
    void store(int column, int row, const Cell& cell, bool maintain);
    Row* rowObject(int row) { return row >= 0 && row < rows_.size() ? rows_[row] : nullptr; }
    bool styledColumnSpan(const RangeRef& range, int& first, int& last) const;
    void storeStyleZero(int row, int firstColumn, int lastColumn, bool onlyStyled);
    void resetRows(int first, int last);
    void rewriteWithStyleZero(int column, int row);
    void rewriteStyledCells(int row, int firstColumn, int lastColumn);
    void rewritePresentCells(const RangeRef& range);
    void clearFormatsOfRows(int first, int last);

    std::u16string name_;
    GrowArray<Row*> rows_;
};

// The first occupied, or present, column of a row above `column`, 256 if none; below it, -1 if
// none.
int nextOccupied(const Row& row, int column);
int nextPresent(const Row& row, int column);
int previousOccupied(const Row& row, int column);
int previousPresent(const Row& row, int column);

// The value behind a stored one: a formula's result in its place.
inline const CellValue& resultOf(const CellValue& value)
{
    return value.tag == TagFormula ? value.formula()->result : value;
}

// A walk over the cells of a rectangle, the same in each of several sheets: row by row, or down the
// columns, which tests every row for every column and is for those whom the order matters. It holds
// places and no addresses, so cells at or behind the position may be written during the walk. A
// range whose corners are out of order has no cells.
class CellIterator {
public:
    enum Order { ByRows, ByColumns };

    void start(const Sheet& sheet, const RangeRef& range, Order order = ByRows);

    // Sheets of the workbook by index, in either order; those that do not exist are passed over.
    void start(int firstSheet, int lastSheet, const RangeRef& range, Order order = ByRows);

    // The next cell with a value; goes on to the next sheet. Null at the end. The cell is borrowed.
    const Cell* nextOccupiedCell();

    // The next cell with a value or a style, in the sheet where the walk is: it goes no further.
    const Cell* nextPresentCell();

    // A walk backward, from the last cell of the range, in one sheet.
    void startBackward(const Sheet& sheet, const RangeRef& range);
    const Cell* previousPresentCell();

    // nextOccupiedCell with a formula's result in its place.
    const CellValue* nextValue();

    int column() const { return column_; }
    int row() const { return row_; }
    int sheet() const { return sheet_; }

private:
    template <int (*nextInRow)(const Row&, int)>
    const Cell* advance();
    template <bool (Sheet::*isThere)(int, int) const>
    const Cell* advanceDown();
    const Sheet* sheetObject() const;
    void enterSheet();

    const Sheet* single_ = nullptr; // a walk of one sheet, else by index
    int sheet_ = 0;
    int lastSheet_ = 0;
    RangeRef range_;
    Order order_ = ByRows;
    int column_ = 0;
    int row_ = 0;
};

} // namespace vorn
