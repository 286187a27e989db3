#include "support/editing.h"

#include "core/formulacell.h"
#include "core/heap.h"
#include "editing/entry.h"
#include "formula/references.h"
#include "support/cells.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::u16string wide(std::string_view text)
{
    return {text.begin(), text.end()};
}

// Makes the sheet of a place the current one and reads its two corners as they are written.
void findPlace(std::string_view place, CellRef& first, CellRef& second)
{
    const std::size_t mark = place.find('!');
    if (mark != std::string_view::npos) {
        Sheet* sheet = workbook->sheetAt(workbook->findSheet(wide(place.substr(0, mark))));
        ASSERT_NE(sheet, nullptr) << place;
        workbook->setCurrentSheet(sheet);
        place.remove_prefix(mark + 1);
    }
    CellValue value;
    ASSERT_TRUE(parseReferenceText(wide(place), value)) << place;
    if (value.tag == TagSheetCellRef) {
        first = second = value.cellRef();
    } else {
        first = value.rangeRef().first();
        second = value.rangeRef().last();
    }
}

std::string words(const CellStyle& style)
{
    std::string text;
    for (int word = 0; word < CellStyle::WordCount; ++word) {
        if (word != 1 && word != 2)
            text += ' ' + std::to_string(style.words[word]);
    }
    return text;
}

std::string narrow(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

std::string describeFormat(int index)
{
    const NumberFormat& format = workbook->formats[index];
    std::string text = " format " + std::to_string(format.kind) + ' ' +
                       std::to_string(format.general) + ' ' + std::to_string(format.decimals) +
                       (format.thousands != 0 ? " thousands" : "");
    for (const char16_t* part :
         {format.positivePrefix, format.positiveSuffix, format.negativePrefix,
          format.negativeSuffix, format.datePattern, format.timePattern})
        text += " '" + narrow(formatString(part)) + '\'';
    return text;
}

// A style by what it says: its number does not count, nor those of its format and its font.
std::string describeStyle(int index)
{
    if (index < 0)
        return " -";
    const CellStyle& style = workbook->styles[index];
    const FontRecord& font = workbook->fonts[style.font()];
    const std::u16string_view face = font.face();
    return words(style) + describeFormat(style.format()) + " font " + std::to_string(font.height) +
           ' ' + std::to_string(font.weight) + ' ' + std::to_string(font.attributes) + ' ' +
           std::to_string(font.underline) + ' ' + std::to_string(font.colour) + ' ' +
           std::string(face.begin(), face.end());
}

std::string describeRow(const Sheet& sheet, int row, HeightRule rule)
{
    const bool custom = sheet.rowHasCustomHeight(row);
    int height = sheet.rowHeight(row);
    if (rule == IgnoreFittedHeights && !custom)
        height = sheet.defaultRowHeight;
    if (height == sheet.defaultRowHeight && sheet.rowStyle(row) == 0 && !sheet.rowHidden(row) &&
        !custom)
        return {};
    return "row " + std::to_string(row) +
           (rule == KeepFittedHeights || custom ? " height " + std::to_string(height) : "") +
           (custom ? " custom" : "") + (sheet.rowHidden(row) ? " hidden" : "") +
           describeStyle(sheet.rowStyle(row)) + '\n';
}

std::string describeColumn(const Sheet& sheet, int column)
{
    const ColumnAttr record = sheet.columns.attributes(column);
    if (record == ColumnAttr{})
        return {};
    return "column " + std::to_string(column) + " width " + std::to_string(record.width) +
           " flags " + std::to_string(record.flags) + describeStyle(record.style) + '\n';
}

std::string describeCells(const Sheet& sheet)
{
    std::string text;
    CellIterator iterator;
    iterator.start(sheet, {0, 0, LastRow, LastColumn});
    while (const Cell* cell = iterator.nextPresentCell()) {
        text += narrow(cellRefToText(iterator.column(), iterator.row(), RelativeForm)) + ' ' +
                describe(cell->value);
        if (cell->value.tag == TagFormula)
            text += ' ' + narrow(sheet.cellInput(iterator.column(), iterator.row())) + " is " +
                    describe(cell->value.formula()->result);
        text += describeStyle(cell->style) + '\n';
    }
    return text;
}

} // namespace

EditDocument::EditDocument()
{
    beforeCloseDocument = clearUndo;
}

EditDocument::~EditDocument()
{
    clearUndo();
    beforeCloseDocument = nullptr;
}

void EditDocument::select(std::string_view place)
{
    CellRef first;
    CellRef second;
    findPlace(place, first, second);
    workbook->currentSheet->selection.select(first, second);
}

bool EditDocument::enter(std::string_view place, std::u16string_view text)
{
    select(place);
    return enterCell(text);
}

std::u16string EditDocument::input(std::string_view place)
{
    Sheet* current = workbook->currentSheet;
    CellRef cell;
    CellRef second;
    findPlace(place, cell, second);
    const std::u16string text = workbook->currentSheet->cellInput(cell.column, cell.row);
    workbook->setCurrentSheet(current);
    return text;
}

std::string describeSheets(HeightRule rule)
{
    std::string text;
    for (const Sheet* sheet : workbook->sheets) {
        const bool custom = (sheet->rowFlags & DefaultHeightCustomFlag) != 0;
        text += "sheet " + narrow(sheet->name()) + (custom ? " custom" : "") + " width " +
                std::to_string(sheet->columns.defaultWidth());
        if (rule == KeepFittedHeights || custom)
            text += " height " + std::to_string(sheet->defaultRowHeight);
        text += '\n';
        for (int column = 0; column < sheet->columns.size(); ++column)
            text += describeColumn(*sheet, column);
        for (int row = sheet->nextRow(-1); row < RowCount; row = sheet->nextRow(row))
            text += describeRow(*sheet, row, rule);
        text += describeCells(*sheet);
    }
    return text;
}

} // namespace vorn
