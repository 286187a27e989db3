#include "support/randomdocument.h"

#include "core/chain.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "functions/table.h"
#include "support/rawcells.h"

#include <algorithm>
#include <bit>
#include <string>
#include <vector>

namespace vorn {
namespace {

class RandomDocument {
public:
    explicit RandomDocument(Dice& dice) : dice_(dice) {}

    void make();

private:
    int below(int limit) { return dice_.below(limit); }
    bool oneIn(int chances) { return dice_.oneIn(chances); }
    int from(int least, int greatest) { return least + below(greatest - least + 1); }
    std::uint16_t word() { return static_cast<std::uint16_t>(dice_.any()); }

    std::u16string randomText(int longest);
    char16_t* heapText(int longest) { return duplicateString(randomText(longest)); }
    double randomNumber();
    RangeRef randomRange();
    CellRef randomReference();
    std::int32_t textIndex();
    CellValue plainValue();
    int styleOrNone();

    void emitSheetReference(ByteCodeWriter& writer);
    void emitReference(ByteCodeWriter& writer);
    void emitConstant(ByteCodeWriter& writer);
    void emitCall(ByteCodeWriter& writer);
    void emitOperation(ByteCodeWriter& writer);
    void emitCode(ByteCodeWriter& writer);

    void makeLooks();
    void makeNames();
    void makeTasks();
    void makeSheet(Sheet& sheet);
    void makeView(Sheet& sheet);
    void makeColumns(Sheet& sheet);
    void makeRows(Sheet& sheet);
    void makeCells(Sheet& sheet);
    void makeFilter(Sheet& sheet);
    Cell formulaCellAt(CellPosition place);
    Cell cellAt(CellPosition place);

    Dice& dice_;
    int rowLimit_ = 40;
    std::vector<std::int32_t> texts_; // those that a cell of the document owns
    Cell sharedFormula_;              // one that is stored; blank if there is none
};

// --- Small things

std::u16string RandomDocument::randomText(int longest)
{
    constexpr std::u16string_view Units = u"abcXYZ019 %$'\"=&\n\u00e4\u20ac\u65e5\U0001d11e";
    std::u16string text;
    for (int left = below(longest + 1); left > 0; --left)
        text += Units[static_cast<std::size_t>(below(static_cast<int>(Units.size())))];
    return text;
}

double RandomDocument::randomNumber()
{
    switch (below(4)) {
    case 0:
        return below(1000);
    case 1:
        return -below(100000) / 100.0;
    case 2:
        return 0.0 * (below(2) - 0.5); // a zero of either sign
    default:
        return std::bit_cast<double>(std::uint64_t{dice_.any()} << 32 | dice_.any());
    }
}

RangeRef RandomDocument::randomRange()
{
    const auto corner = [this] {
        const int row = oneIn(4) ? below(RowCount) : below(30);
        const int column = oneIn(4) ? below(ColumnCount) : below(10);
        return CellRef{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column)};
    };
    const CellRef first = corner();
    return sortedRange(first, corner());
}

CellRef RandomDocument::randomReference()
{
    const unsigned flags = word() & (ColumnRelative | RowRelative);
    const unsigned row = (flags & RowRelative) != 0 ? word() : word() % unsigned{RowCount};
    return {static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(word() % 256U | flags)};
}

// A text with one reference for the caller: a new one, one that others have too, or none.
std::int32_t RandomDocument::textIndex()
{
    if (oneIn(12))
        return -1;
    if (!texts_.empty() && oneIn(3))
        return stringPool->addRef(
            texts_[static_cast<std::size_t>(below(static_cast<int>(texts_.size())))]);
    return stringPool->addText(randomText(oneIn(100) ? 3000 : 12));
}

CellValue RandomDocument::plainValue()
{
    switch (below(8)) {
    case 0:
        return {};
    case 1:
        return CellValue::makeLogical(oneIn(2));
    case 2:
        return CellValue::makeError(below(256));
    case 3:
    case 4:
        return CellValue::makeTextIndex(textIndex());
    case 5:
        return CellValue::makeDate(randomNumber());
    default:
        return CellValue::makeNumber(randomNumber());
    }
}

int RandomDocument::styleOrNone()
{
    return oneIn(2) ? -1 : below(workbook->styles.size());
}

// --- Code. It need not make sense, for nothing calculates it.

void RandomDocument::emitSheetReference(ByteCodeWriter& writer)
{
    const bool isCell = oneIn(2);
    CellValue image;
    if (isCell)
        image.put(TagSheetCellRef, randomReference());
    else
        image.put(TagSheetRangeRef, randomRange());
    image.firstSheet = static_cast<std::uint8_t>(below(256));
    image.lastSheet = static_cast<std::uint8_t>(below(256));
    const bool isDead = oneIn(4);
    if (isCell)
        writer.emit(isDead ? OpBadSheetCell : OpPushSheetCell, image);
    else
        writer.emit(isDead ? OpBadSheetRange : OpPushSheetRange, image);
}

void RandomDocument::emitReference(ByteCodeWriter& writer)
{
    switch (below(5)) {
    case 0:
        writer.emit(OpPushRange, randomRange());
        break;
    case 1:
        writer.emit(OpBadCell, randomReference());
        break;
    case 2:
        writer.emit(OpBadRange, randomRange());
        break;
    case 3:
        emitSheetReference(writer);
        break;
    default:
        writer.emit(OpPushCell, randomReference());
        break;
    }
}

void RandomDocument::emitConstant(ByteCodeWriter& writer)
{
    switch (below(6)) {
    case 0:
        writer.emit(OpPushNumber, randomNumber());
        break;
    case 1:
        writer.emit(OpPushDate, randomNumber());
        break;
    case 2:
        writer.emit(OpPushError, word());
        break;
    case 3:
        writer.emit(OpPushLogical, static_cast<std::uint8_t>(below(2)));
        break;
    case 4:
        if (workbook->names.size() != 0) {
            writer.emit(OpCallName, static_cast<std::uint16_t>(below(workbook->names.size())));
            break;
        }
        [[fallthrough]];
    default:
        writer.emit(OpPushText, textIndex());
        break;
    }
}

// Functions whose value changes by itself would be calculated when the file is read.
void RandomDocument::emitCall(ByteCodeWriter& writer)
{
    const int row = below(FirstActionRow);
    if (row == FunctionRowRand || row == FunctionRowNow || row == FunctionRowToday)
        return;
    const FunctionRow& function = FunctionTable[row];
    writer.emitCall(row, from(function.minArguments, function.maxArguments));
}

void RandomDocument::emitOperation(ByteCodeWriter& writer)
{
    constexpr OpCode Operations[] = {OpAdd,          OpSubtract, OpMultiply, OpDivide, OpUnaryPlus,
                                     OpNegate,       OpEqual,    OpLess,     OpConcat, OpPower,
                                     OpGreaterEqual, OpPercent,  OpParen,    OpPop};
    writer.emit(Operations[below(static_cast<int>(std::size(Operations)))]);
}

void RandomDocument::emitCode(ByteCodeWriter& writer)
{
    if (oneIn(8)) {
        compileText(u"=If(A1>2,\"high\",If(B$2,\"low\",Sum(A1:C3)))", writer, {}, CompileFormula);
        return;
    }
    for (int left = from(1, oneIn(10) ? 60 : 6); left > 0; --left) {
        switch (below(4)) {
        case 0:
            emitReference(writer);
            break;
        case 1:
            emitCall(writer);
            break;
        case 2:
            emitOperation(writer);
            break;
        default:
            emitConstant(writer);
            break;
        }
    }
}

// --- Tables

void RandomDocument::makeLooks()
{
    for (int left = below(5); left > 0; --left) {
        FontRecord font = defaultFont(below(DefaultFontCount));
        font.underline = static_cast<std::uint8_t>(below(3));
        font.height = word();
        font.colour = word();
        font.setFace(oneIn(5) ? std::u16string(40, u'f') : randomText(20));
        workbook->addFont(font);
    }
    for (int left = below(5); left > 0; --left) {
        NumberFormat format;
        if (oneIn(3))
            makeDateFormat(format, randomText(6), randomText(6));
        else if (oneIn(6))
            makeTextFormat(format);
        else
            makeNumberFormat(format, oneIn(6), oneIn(2), 0, randomText(3), randomText(3),
                             randomText(3), randomText(3));
        if (format.kind == FormatNumber && format.general == 0)
            format.decimals = static_cast<std::uint8_t>(below(10));
        const int before = workbook->formats.size();
        if (workbook->setFormat(format, -1) < before)
            freeFormatStrings(format);
    }
    for (int left = below(12); left > 0; --left) {
        CellStyle style;
        for (std::uint16_t& each : style.words)
            each = word();
        style.set(StyleFont, below(workbook->fonts.size()));
        style.set(StyleFormat, below(workbook->formats.size()));
        workbook->addStyle(style);
    }
}

void RandomDocument::makeNames()
{
    const int count = below(6);
    for (int index = 0; index < count; ++index) {
        DefinedName name;
        name.name =
            duplicateString(u"Name" + std::u16string(1, static_cast<char16_t>(u'A' + index)));
        workbook->names.append(name);
    }
    // A definition may call any name: one before it, one behind it, itself, a deleted one.
    for (DefinedName& name : workbook->names) {
        ByteCodeWriter writer;
        emitCode(writer);
        if (!oneIn(4))
            name.block = writer.finish();
        else if (std::uint8_t* block = writer.finish()) {
            releaseByteCodeReferences(blockCode(block));
            heapFree(block);
        }
    }
}

void RandomDocument::makeTasks()
{
    for (int left = below(4); left > 0; --left) {
        Task& task = *workbook->addTask(heapText(20), heapText(oneIn(10) ? 5000 : 60));
        task.onTap = below(2);
        task.addToMenu = below(2);
        task.global = oneIn(4) ? 1 : 0;
        if (oneIn(3))
            continue;
        task.onTapArea.firstSheet = static_cast<std::uint8_t>(below(256));
        task.onTapArea.lastSheet = static_cast<std::uint8_t>(below(256));
        if (oneIn(2))
            task.onTapArea.put(TagSheetCellRef, randomRange().first());
        else
            task.onTapArea.put(TagSheetRangeRef, randomRange());
    }
}

// --- Sheets

void RandomDocument::makeView(Sheet& sheet)
{
    sheet.protectedSheet = oneIn(4);
    sheet.zoom = from(10, 300);
    sheet.showGridlines = oneIn(2);
    sheet.showTitles = oneIn(2);
    sheet.showZeros = oneIn(2);
    sheet.titleColumns = oneIn(3);
    sheet.titleRows = oneIn(3);
    if (sheet.titleColumns || sheet.titleRows)
        sheet.titles = {static_cast<std::uint16_t>(below(5)), static_cast<std::uint16_t>(below(5)),
                        static_cast<std::uint16_t>(from(5, 9)),
                        static_cast<std::uint16_t>(from(5, 9))};
    sheet.leftColumn = from(10, LastColumn);
    sheet.topRow = from(10, LastRow);

    const RangeRef range = randomRange();
    const CellRef corners[] = {
        {range.firstRow, range.firstColumn},
        {range.firstRow, range.lastColumn },
        {range.lastRow,  range.firstColumn},
        {range.lastRow,  range.lastColumn }
    };
    const int active = below(4);
    sheet.selection.select(corners[active], corners[3 - active]);
}

void RandomDocument::makeColumns(Sheet& sheet)
{
    for (int left = below(5); left > 0; --left) {
        const int first = oneIn(3) ? below(ColumnCount) : below(20);
        const int last = std::min(first + below(5), LastColumn);
        if (oneIn(3))
            sheet.columns.setColumnStyle(first, last, below(workbook->styles.size()));
        else if (oneIn(2))
            sheet.columns.setColumnHidden(first, last, oneIn(2));
        else
            // Never the default width, which would read as none of its own.
            sheet.columns.setColumnWidth(first, last, from(DefaultColumnWidth + 1, 9000));
    }
}

void RandomDocument::makeRows(Sheet& sheet)
{
    for (int left = below(8); left > 0; --left) {
        const int row = below(rowLimit_);
        switch (below(4)) {
        case 0:
            sheet.setRowStyle(row, below(workbook->styles.size()));
            break;
        case 1:
            sheet.setRowHidden(row, oneIn(2));
            break;
        case 2:
            sheet.ensureRow(row);
            break;
        default:
            sheet.setRowHeight(row, below(9000), oneIn(2));
            break;
        }
    }
}

Cell RandomDocument::formulaCellAt(CellPosition place)
{
    if (sharedFormula_.value.tag == TagFormula && oneIn(3)) {
        Cell copy;
        cloneCell(sharedFormula_, copy, place, KeepOffChain);
        return copy;
    }
    ByteCodeWriter writer;
    emitCode(writer);
    Cell cell = formulaCell(writer, place);
    cell.value.formula()->result = plainValue();
    return cell;
}

Cell RandomDocument::cellAt(CellPosition place)
{
    Cell cell;
    if (oneIn(4))
        cell = formulaCellAt(place);
    else
        cell.value = plainValue();
    cell.style = static_cast<std::int16_t>(styleOrNone());
    return cell;
}

void RandomDocument::makeCells(Sheet& sheet)
{
    const bool isDense = oneIn(3);
    for (int left = below(oneIn(10) ? 400 : 60); left > 0; --left) {
        const int row = isDense ? below(8) : below(rowLimit_);
        const int column = oneIn(20) ? below(ColumnCount) : below(isDense ? 30 : 12);
        // A text that stays with the cell may be taken for others.
        sharedFormula_ = {};
        texts_.clear();
        for (int each = 0; each < 12; ++each) {
            const Cell stored = sheet.cellCopy(each, below(8));
            if (stored.value.tag == TagText && stored.value.textIndex() != -1)
                texts_.push_back(stored.value.textIndex());
            if (stored.value.tag == TagFormula)
                sharedFormula_ = stored;
        }
        const CellPosition place{static_cast<std::uint16_t>(row),
                                 static_cast<std::uint16_t>(column),
                                 static_cast<std::uint16_t>(sheet.index)};
        sheet.setCell(column, row, cellAt(place));
    }
    texts_.clear();
    // What is cleared leaves free places in the pools.
    if (oneIn(2))
        sheet.clearAll(sortedRange(
            {0, 0}, {static_cast<std::uint16_t>(below(6)), static_cast<std::uint16_t>(below(6))}));
    if (oneIn(2))
        sheet.clearContents(randomRange());
}

void RandomDocument::makeFilter(Sheet& sheet)
{
    sheet.filter.start(randomRange());
    for (FilterColumn& column : sheet.filter.columns) {
        if (oneIn(2))
            continue;
        column.kind = below(5);
        column.topCount = from(1, 100);
        column.largest = below(2);
        column.operator1 = from(1, 12);
        column.both = below(2);
        column.operator2 = below(13);
        column.text1 = heapText(10);
        column.text2 = heapText(10);
    }
}

void RandomDocument::makeSheet(Sheet& sheet)
{
    sheet.setName(oneIn(6) ? std::u16string(SheetNameMax, u'n') : u"S" + randomText(12));
    rowLimit_ = oneIn(8) ? RowCount : 40;
    makeView(sheet);
    makeColumns(sheet);
    makeRows(sheet);
    makeCells(sheet);
    if (oneIn(3))
        makeFilter(sheet);
}

void RandomDocument::make()
{
    constexpr int Pages[] = {65001, 1252, 437, 932};
    NewDocument(from(1, 4), FileKindNative);
    workbook->codePage = Pages[below(4)];
    workbook->protectedWorkbook = oneIn(3);
    makeLooks();
    makeNames();
    makeTasks();
    for (Sheet* sheet : workbook->sheets)
        makeSheet(*sheet);
    workbook->setCurrentSheet(workbook->sheetAt(below(workbook->sheets.size())));
}

} // namespace

void makeRandomDocument(Dice& dice)
{
    RandomDocument(dice).make();
}

} // namespace vorn
