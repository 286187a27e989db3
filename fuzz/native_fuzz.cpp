// Any bytes are a native file. Reading them ends with an error that a reader may tell, or with a
// document whose every cell, name and style can be looked at, that can be calculated, and that
// comes back from its own file as it went.

#include "core/chain.h"
#include "core/error.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "files/native.h"
#include "files/stream.h"
#include "formula/bytecode.h"
#include "formula/printer.h"
#include "machine.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vorn {
namespace {

// Longer records than this may miss their end and then grow beyond what a record can hold.
constexpr std::size_t SurelySaved = 60000;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void load(const void* bytes, std::size_t size)
{
    NewDocument(0, FileKindNative);
    MemoryStream stream(bytes, static_cast<std::uint32_t>(size));
    TransferContext context;
    context.stream = &stream;
    loadNative(context, static_cast<std::uint32_t>(size));
}

std::string save()
{
    MemoryStream stream;
    TransferContext context;
    context.stream = &stream;
    saveNative(context);
    return {stream.data(), stream.data() + stream.end()};
}

// --- Looking at everything

std::size_t lookAtCells(const Sheet& sheet)
{
    std::size_t length = sheet.name().size();
    CellIterator cells;
    cells.start(sheet, {0, 0, LastRow, LastColumn});
    while (const Cell* cell = cells.nextPresentCell()) {
        require(cell->style >= 0 && cell->style < workbook->styles.size());
        length += sheet.cellText(cells.column(), cells.row()).size() +
                  sheet.cellInput(cells.column(), cells.row()).size();
    }
    return length;
}

void lookAtView(const Sheet& sheet)
{
    const Selection& selection = sheet.selection;
    require(selection.range.lastRow <= LastRow && selection.range.lastColumn <= LastColumn);
    require(selection.range.contains(selection.activeColumn, selection.activeRow));
    require(sheet.topRow >= 0 && sheet.topRow <= LastRow);
    require(sheet.leftColumn >= 0 && sheet.leftColumn <= LastColumn);
    require(sheet.titles.firstRow <= sheet.titles.lastRow && sheet.titles.lastRow <= LastRow);
    require(sheet.titles.firstColumn <= sheet.titles.lastColumn &&
            sheet.titles.lastColumn <= LastColumn);
    require(sheet.zoom >= 10 && sheet.zoom <= 300);
    for (int column = 0; column < ColumnCount; ++column) {
        require(sheet.columns.columnPixels(column) >= 0);
        require(sheet.columns.columnStyle(column) < workbook->styles.size());
    }
    for (int row = 0; row <= sheet.lastRow(); ++row)
        require(sheet.rowPixels(row) >= 0 && sheet.rowStyle(row) < workbook->styles.size());
}

void lookAtFilter(const SheetFilter& filter)
{
    const RangeRef& range = filter.range;
    const int columns = filter.active ? range.lastColumn - range.firstColumn + 1 : 0;
    require(filter.columns.size() == columns && range.lastRow <= LastRow);
    for (const FilterColumn& column : filter.columns) {
        require(column.kind >= FilterAll && column.kind <= FilterWhere);
        require(column.topCount >= 1 && column.topCount <= 100);
        require(column.operator1 >= 1 && column.operator1 <= 12);
        require(column.operator2 >= 0 && column.operator2 <= 12);
        require(column.text1 == nullptr || *column.text1 != 0);
    }
}

void lookAtTables()
{
    require(workbook->fonts.size() >= DefaultFontCount);
    require(workbook->formats.size() > LastBuiltInFormat);
    require(workbook->styles.size() > 0);
    for (const CellStyle& style : workbook->styles) {
        require(style.font() < workbook->fonts.size());
        require(style.format() < workbook->formats.size());
    }
    for (const FontRecord& font : workbook->fonts)
        require(font.nameLength <= FontNameMax);
}

void lookAtNames()
{
    for (const DefinedName& name : workbook->names) {
        require(name.name != nullptr);
        if (name.block != nullptr)
            require(printCode(blockCode(name.block), {3, 2, 0}).size() <= PrintedTextMax);
    }
    for (const Task& task : workbook->tasks)
        require(task.onTapArea.tag == TagBlank || task.onTapArea.tag == TagSheetCellRef ||
                task.onTapArea.tag == TagSheetRangeRef);
}

void lookAtEverything()
{
    require(workbook->sheetAt(0) != nullptr && workbook->currentSheet != nullptr);
    for (const Sheet* sheet : workbook->sheets) {
        require(lookAtCells(*sheet) < SIZE_MAX / 2);
        lookAtView(*sheet);
        lookAtFilter(sheet->filter);
    }
    lookAtTables();
    lookAtNames();
    // Code may be longer than its text can be.
    require(!errorStands() || errorState.code == ErrorTooComplex);
    clearError();
}

// --- Going out and coming back

bool isVolatileDocument()
{
    for (const FormulaCell* cell = calcChain.first(); cell != nullptr;
         cell = calcChain.next(cell)) {
        if (isVolatileCode(formulaPool->code(cell->formula)))
            return true;
    }
    for (const DefinedName& name : workbook->names) {
        if (name.block != nullptr && isVolatileCode(blockCode(name.block)))
            return true;
    }
    return false;
}

// A first save leaves out what nobody owns, and a second one does not count it any more. From then
// on each is like the one before, unless there are results that change by themselves.
void comeBack()
{
    constexpr int Settled = 2;
    const bool isVolatile = isVolatileDocument();
    std::string bytes = save();
    for (int round = 0; round <= Settled; ++round) {
        require(!errorStands());
        load(bytes.data(), bytes.size());
        require(!errorStands());
        const std::string again = save();
        require(round < Settled || isVolatile || again == bytes);
        bytes = again;
    }
    lookAtEverything();
}

bool isToldByAReader(int code)
{
    return code == ErrorFileFormat || code == ErrorFileRead || code == ErrorMemory ||
           code == ErrorTooNewFile;
}

} // namespace
} // namespace vorn

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vorn;
    static FuzzMachine machine;
    load(data, size);
    if (errorStands()) {
        require(isToldByAReader(errorState.code));
    } else {
        lookAtEverything();
        recalculate();
        recalculate();
        lookAtEverything();
        if (size < SurelySaved)
            comeBack();
    }
    clearError();
    NewDocument(NewDocumentSheets, FileKindNative);
    return 0;
}
