#include "editing/find.h"

#include "core/workbook.h"
#include "editing/entry.h"
#include "editing/view.h"
#include "platform/textrules.h"

#include <algorithm>

namespace vorn {

FindSettings findSettings;

namespace {

std::u16string lowered(std::u16string text)
{
    std::transform(text.begin(), text.end(), text.begin(), lowerUnit);
    return text;
}

// What texts are compared as.
std::u16string comparable(std::u16string text)
{
    return findSettings.caseSensitive ? text : lowered(std::move(text));
}

std::u16string searchedText(const Sheet& sheet, int column, int row)
{
    if (!findSettings.inValues)
        return sheet.cellInput(column, row);
    return sheet.cellText(column, row).substr(0, SearchedTextMax);
}

// One search: what is looked for, and where.
class Search {
public:
    explicit Search(Sheet& sheet) : sheet_(sheet), needle_(comparable(findSettings.findText)) {}

    bool run(FindStart start);

private:
    bool matches(int column, int row) const;
    bool hit(int column, int row);
    bool walk(int firstColumn, int firstRow, int lastColumn, int lastRow);

    Sheet& sheet_;
    std::u16string needle_;
};

bool Search::matches(int column, int row) const
{
    const std::u16string text = comparable(searchedText(sheet_, column, row));
    return findSettings.entireCells ? text == needle_ : text.find(needle_) != std::u16string::npos;
}

bool Search::hit(int column, int row)
{
    if (!matches(column, row))
        return false;
    const CellRef cell{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column)};
    sheet_.selection.select(cell, cell);
    tellActiveCellMoved();
    return true;
}

// Goes to the first hit in a part of what is searched. A part may be empty.
bool Search::walk(int firstColumn, int firstRow, int lastColumn, int lastRow)
{
    if (firstColumn > lastColumn || firstRow > lastRow)
        return false;
    RangeRef range;
    range.set(firstColumn, firstRow, lastColumn - firstColumn + 1, lastRow - firstRow + 1);
    if (!range.intersect(findSettings.searchRange))
        return false;
    CellIterator cells;
    cells.start(sheet_, range,
                findSettings.byColumns ? CellIterator::ByColumns : CellIterator::ByRows);
    while (cells.nextOccupiedCell() != nullptr) {
        if (hit(cells.column(), cells.row()))
            return true;
    }
    return false;
}

// The rest of the active cell's line and the lines behind it; then, from the beginning, the lines
// before it and its own up to the active cell.
bool Search::run(FindStart start)
{
    const int column = sheet_.selection.activeColumn;
    const int row = sheet_.selection.activeRow;
    if (start == FindInActiveCell && sheet_.isOccupied(column, row) && hit(column, row))
        return true;
    const int lastRow = sheet_.lastRow();
    if (!findSettings.byColumns)
        return walk(column + 1, row, LastColumn, row) || walk(0, row + 1, LastColumn, lastRow) ||
               walk(0, 0, LastColumn, row - 1) || walk(0, row, column - 1, row);
    // A walk down the columns looks at every row of each: not at those that hold nothing.
    const int lastColumn = sheet_.lastOccupiedColumnOfSheet();
    return walk(column, row + 1, column, lastRow) || walk(column + 1, 0, lastColumn, lastRow) ||
           walk(0, 0, std::min(column - 1, lastColumn), lastRow) ||
           walk(column, 0, column, row - 1);
}

// Puts the new text in place of the old one. False if there is nothing to replace or no room.
bool replaceIn(std::u16string& text)
{
    const std::u16string needle = comparable(findSettings.findText);
    const std::u16string& replacement = findSettings.replaceText;
    const bool all = findSettings.replaceAction == ActionReplaceAll;
    // The empty text is found everywhere: there would be no end before the text is full.
    if (all && needle.empty())
        return false;
    std::u16string searched = comparable(text);
    std::size_t place = searched.find(needle);
    if (place == std::u16string::npos)
        return false;
    do {
        if (text.size() - needle.size() + replacement.size() >= ReplacedTextMax)
            return false;
        text.replace(place, needle.size(), replacement);
        searched.replace(place, needle.size(), replacement);
        place = searched.find(needle, place + replacement.size());
    } while (all && place != std::u16string::npos);
    return true;
}

} // namespace

void setSearchRange()
{
    const RangeRef& selected = workbook->currentSheet->selection.range;
    if (selected.isMultiCell())
        findSettings.searchRange = selected;
    else
        findSettings.searchRange.set(0, 0, ColumnCount, RowCount);
}

bool findNext(FindStart start)
{
    return Search(*workbook->currentSheet).run(start);
}

bool replaceInCell()
{
    if (findSettings.entireCells)
        return enterCell(findSettings.replaceText);
    const Selection& selection = workbook->currentSheet->selection;
    std::u16string text =
        workbook->currentSheet->cellInput(selection.activeColumn, selection.activeRow);
    return replaceIn(text) && enterCell(text);
}

} // namespace vorn
