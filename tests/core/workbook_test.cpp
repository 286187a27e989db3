#include "core/workbook.h"

#include "core/chain.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/pool.h"
#include "formula/machine.h"
#include "support/cells.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

class WorkbookTest : public testing::Test {
protected:
    std::u16string names()
    {
        std::u16string text;
        for (const Sheet* sheet : workbook->sheets)
            text += std::u16string(sheet->name()) + u" ";
        return text;
    }

    // A formula of one reference to sheets, stored in a cell.
    static const FormulaCell* enterSheetReference(CellPosition position, OpCode opcode, int first,
                                                  int last)
    {
        CellValue image;
        image.put(opcode == OpPushSheetCell ? TagSheetCellRef : TagSheetRangeRef,
                  RangeRef{0, 0, 0, 0});
        image.firstSheet = static_cast<std::uint8_t>(first);
        image.lastSheet = static_cast<std::uint8_t>(last);
        ByteCodeWriter writer;
        writer.emit(opcode, image);
        const Cell cell = formulaCell(writer, position);
        workbook->sheetAt(position.sheet)->setCell(position.column, position.row, cell);
        return cell.value.formula();
    }

    TestDocument document;
};

TEST_F(WorkbookTest, hasThreeSheetsWhenNew)
{
    EXPECT_EQ(names(), u"Sheet1 Sheet2 Sheet3 ");
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0));
    for (int index = 0; index < 3; ++index)
        EXPECT_EQ(workbook->sheetAt(index)->index, index);
    EXPECT_EQ(workbook->sheetAt(3), nullptr);
    EXPECT_EQ(workbook->sheetAt(-1), nullptr);
    EXPECT_EQ(workbook->nextSheetNumber, 4);
    EXPECT_EQ(workbook->fileKind, FileKindNative);
}

TEST_F(WorkbookTest, hasItsDefaults)
{
    EXPECT_EQ(workbook->codePage, platform.codePages->systemPage());
    EXPECT_FALSE(workbook->protectedWorkbook);
    EXPECT_EQ(workbook->names.size(), 0);
    EXPECT_EQ(workbook->variables.size(), 0);
    EXPECT_EQ(workbook->currentTask, -1);
    EXPECT_TRUE(workbook->path.empty());
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(workbook->lastBuiltInFormat, 15);
    EXPECT_FALSE(workbook->clipboardIsCut);
    EXPECT_TRUE(workbook->pasteContents);
    EXPECT_TRUE(workbook->pasteFormats);
    EXPECT_FALSE(workbook->pasteSkipEmpty);
    EXPECT_FALSE(workbook->pasteResultsOnly);
    EXPECT_EQ(workbook->formats.size(), 16);
    ASSERT_EQ(workbook->styles.size(), 1);
    EXPECT_TRUE(workbook->styles[0].sameAs(defaultStyle()));
    ASSERT_EQ(workbook->fonts.size(), 6);
    for (int index = 0; index < 6; ++index)
        EXPECT_TRUE(workbook->fonts[index].sameAs(defaultFont(index))) << index;
    EXPECT_EQ(workbook->fonts[0].reserved, 55);
}

TEST_F(WorkbookTest, hasAPaletteOfFiftySixColours)
{
    const std::uint32_t palette[] = {
        0x000000, 0xFFFFFF, 0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF, 0xFF00FF, 0xFFFF00,
        0x000080, 0x008000, 0x800000, 0x008080, 0x800080, 0x808000, 0xC0C0C0, 0x808080,
        0xFF8080, 0x602080, 0xC0FFFF, 0xE0E0A0, 0x800060, 0x8080FF, 0xC08000, 0xFFC0C0,
        0x800000, 0xFF00FF, 0x00FFFF, 0xFFFF00, 0x800080, 0x000080, 0x808000, 0xFF0000,
        0xFFCC00, 0xFFFF69, 0xCCFFCC, 0x99FFFF, 0xF0CAA6, 0xCC99CC, 0xFF99CC, 0xDDDDDD,
        0xFF6633, 0xCCCC33, 0x339933, 0x339999, 0x336699, 0x666699, 0x996666, 0x969696,
        0xCC3333, 0x666633, 0x003300, 0x003333, 0x003366, 0x663399, 0x993333, 0x424242,
    };
    ASSERT_EQ(std::size(palette), std::size_t{PaletteSize});
    for (int index = 0; index < PaletteSize; ++index)
        EXPECT_EQ(workbook->palette[index], palette[index]) << index;
}

TEST_F(WorkbookTest, isLeftBareForAReader)
{
    NewDocument(0, FileKindImported);
    ASSERT_NE(workbook, nullptr);
    EXPECT_EQ(workbook->sheets.size(), 0);
    EXPECT_EQ(workbook->fonts.size(), 0);
    EXPECT_EQ(workbook->styles.size(), 0);
    EXPECT_EQ(workbook->formats.size(), 0);
    EXPECT_EQ(workbook->currentSheet, nullptr);
    EXPECT_EQ(workbook->fileKind, FileKindImported);
    EXPECT_TRUE(workbook->initNew(0));
    EXPECT_TRUE(workbook->initNew(-1));
    EXPECT_EQ(workbook->sheets.size(), 0);
}

// --- Sheets

TEST_F(WorkbookTest, numbersNewSheetsOnceOnly)
{
    EXPECT_EQ(workbook->addSheet()->name(), u"Sheet4");
    workbook->removeSheet(3);
    EXPECT_EQ(workbook->addSheet()->name(), u"Sheet5");
    EXPECT_EQ(workbook->addSheet(u"Own")->name(), u"Own");
    EXPECT_EQ(workbook->defaultSheetName(), u"Sheet6");
    EXPECT_EQ(workbook->addSheet()->name(), u"Sheet7");
}

TEST_F(WorkbookTest, numbersNewSheetsBehindThoseOfAFile)
{
    const struct {
        const char* behaviour;
        std::u16string_view name;
        std::u16string_view next;
    } cases[] = {
        {"a higher number",         u"Sheet17",         u"Sheet18"},
        {"a lower one",             u"Sheet2",          u"Sheet4" },
        {"another word",            u"Page9",           u"Sheet4" },
        {"no number",               u"Sheet",           u"Sheet4" },
        {"more than a number",      u"Sheet9a",         u"Sheet4" },
        {"a number without reason", u"Sheet1234567890", u"Sheet4" },
    };
    for (const auto& c : cases) {
        NewDocument(NewDocumentSheets, FileKindNative);
        workbook->renameSheet(1, c.name);
        workbook->continueSheetNumbers();
        EXPECT_EQ(workbook->defaultSheetName(), c.next) << c.behaviour;
    }
}

TEST_F(WorkbookTest, doesNotCareForNamesOfNewSheets)
{
    EXPECT_TRUE(workbook->renameSheet(0, u"Sheet4"));
    EXPECT_EQ(workbook->addSheet()->name(), u"Sheet4");
    EXPECT_EQ(workbook->addSheet(u"sheet2")->index, 4);
    EXPECT_EQ(workbook->findSheet(u"SHEET2"), 1) << "the first of a name is found";
    EXPECT_EQ(workbook->findSheet(u"Sheet4"), 0);
}

TEST_F(WorkbookTest, findsSheetsWithoutCase)
{
    const struct {
        const char16_t* name;
        int index;
    } cases[] = {
        {u"Sheet1",  0 },
        {u"sheet2",  1 },
        {u"SHEET3",  2 },
        {u"Sheet4",  -1},
        {u"Sheet",   -1},
        {u"Sheet11", -1},
        {u"",        -1},
        {u"Sheet?",  -1},
        {u"Sheet*",  -1},
        {u" Sheet1", -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(workbook->findSheet(c.name), c.index);
    workbook->renameSheet(1, u"\u00c4pfel");
    EXPECT_EQ(workbook->findSheet(u"\u00e4PFEL"), 1);
}

TEST_F(WorkbookTest, renamesASheetUnlessAnotherHasTheName)
{
    EXPECT_FALSE(workbook->renameSheet(1, u"SHEET1"));
    EXPECT_EQ(names(), u"Sheet1 Sheet2 Sheet3 ");
    EXPECT_TRUE(workbook->renameSheet(0, u"SHEET1"));
    EXPECT_TRUE(workbook->renameSheet(2, u"Data"));
    EXPECT_EQ(names(), u"SHEET1 Sheet2 Data ");
    EXPECT_TRUE(workbook->renameSheet(1, u"Sheet3"));
    EXPECT_FALSE(workbook->renameSheet(3, u"data")) << "past the end it is only a test";
    EXPECT_TRUE(workbook->renameSheet(3, u"New"));
    EXPECT_EQ(names(), u"SHEET1 Sheet3 Data ");
    EXPECT_FALSE(errorStands());
}

TEST_F(WorkbookTest, setsTheCurrentSheet)
{
    workbook->setCurrentSheet(workbook->sheetAt(2));
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(2));
}

TEST_F(WorkbookTest, removesASheetAndMovesTheOthersUp)
{
    workbook->sheetAt(1)->setCell(0, 0, constantFormula(1, {0, 0, 1}));
    workbook->sheetAt(2)->setCell(0, 0, constantFormula(2, {0, 0, 2}));
    workbook->sheetAt(0)->setCell(0, 0, constantFormula(3, {0, 0, 0}));
    Sheet* last = workbook->sheetAt(2);
    workbook->setCurrentSheet(last);
    workbook->removeSheet(1);
    EXPECT_EQ(names(), u"Sheet1 Sheet3 ");
    EXPECT_EQ(last->index, 1);
    EXPECT_EQ(workbook->sheetAt(1), last);
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0));
    const FormulaCell* first = calcChain.first();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->sheet, 1) << "moved down";
    EXPECT_EQ(calcChain.next(first)->sheet, 0);
    EXPECT_EQ(calcChain.next(calcChain.next(first)), nullptr);
}

TEST_F(WorkbookTest, removesNothingOutside)
{
    workbook->removeSheet(3);
    workbook->removeSheet(-1);
    EXPECT_EQ(names(), u"Sheet1 Sheet2 Sheet3 ");
    for (int count = 0; count < 3; ++count)
        workbook->removeSheet(0);
    EXPECT_EQ(workbook->sheets.size(), 0);
    EXPECT_EQ(workbook->currentSheet, nullptr);
    EXPECT_EQ(workbook->addSheet()->index, 0);
}

TEST_F(WorkbookTest, narrowsReferencesToARemovedSheet)
{
    const struct {
        const char* phrase;
        int first, last, removed;
        bool dead;
        int newFirst, newLast;
    } cases[] = {
        {"a sheet before it",          0, 0, 1, false, 0, 0},
        {"the sheet itself",           1, 1, 1, true,  1, 1},
        {"a sheet behind it",          2, 2, 1, false, 1, 1},
        {"a span around it",           0, 2, 1, false, 0, 1},
        {"a span that begins with it", 1, 3, 1, false, 1, 2},
        {"a span that ends with it",   0, 1, 1, false, 0, 0},
        {"a span before it",           0, 1, 2, false, 0, 1},
        {"a span behind it",           2, 3, 1, false, 1, 2},
        {"the first sheet, alone",     0, 0, 0, true,  0, 0},
        {"the first sheet of a span",  0, 3, 0, false, 0, 2},
        {"the last sheet of a span",   0, 3, 3, false, 0, 2},
    };
    for (const auto& c : cases) {
        for (const OpCode opcode : {OpPushSheetCell, OpPushSheetRange}) {
            NewDocument(5, FileKindNative);
            const FormulaCell* formula = enterSheetReference({0, 0, 4}, opcode, c.first, c.last);
            workbook->removeSheet(c.removed);
            const std::uint8_t* code = formulaPool->code(formula->formula);
            const OpCode dead = opcode == OpPushSheetCell ? OpBadSheetCell : OpBadSheetRange;
            EXPECT_EQ(code[0], c.dead ? dead : opcode) << c.phrase;
            EXPECT_EQ(code[3], c.newFirst) << c.phrase;
            EXPECT_EQ(code[4], c.newLast) << c.phrase;
            EXPECT_EQ(code[13], OpReturn) << c.phrase;
        }
    }
}

TEST_F(WorkbookTest, leavesNamesWithTheirSheetNumbers)
{
    CellValue image = CellValue::makeCellRef({0, 0});
    image.tag = TagSheetCellRef;
    image.firstSheet = image.lastSheet = 2;
    ByteCodeWriter writer;
    writer.emit(OpPushSheetCell, image);
    workbook->names.append({duplicateString(u"There"), writer.finish(), -1});
    workbook->removeSheet(0);
    EXPECT_EQ(blockCode(workbook->names[0].block)[3], 2);
}

TEST_F(WorkbookTest, keepsThePoolInUseWhenASheetGoes)
{
    enterSheetReference({0, 0, 0}, OpPushSheetCell, 2, 2);
    const FormulaCell* second = enterSheetReference({1, 0, 0}, OpPushSheetCell, 2, 2);
    workbook->sheetAt(0)->setCell(0, 0, Cell{});
    workbook->removeSheet(1);
    EXPECT_EQ(formulaPool->code(second->formula)[3], 1);
    EXPECT_EQ(formulaPool->refCount(second->formula), 1);
    EXPECT_EQ(formulaPool->fileIndex(second->formula), -1);
}

// --- Tables

TEST_F(WorkbookTest, addsAStyleOnce)
{
    EXPECT_EQ(workbook->addStyle(defaultStyle()), 0);
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    EXPECT_EQ(workbook->addStyle(style), 1);
    style.fileIndex = 12;
    EXPECT_EQ(workbook->addStyle(style), 1);
    style.set(StyleWrap, 0);
    EXPECT_EQ(workbook->addStyle(style), 0);
    EXPECT_EQ(workbook->styles.size(), 2);
}

TEST_F(WorkbookTest, addsAFontOnce)
{
    FontRecord font = defaultFont(5);
    font.reserved = 7;
    EXPECT_EQ(workbook->addFont(font), 5);
    EXPECT_EQ(workbook->addFont(defaultFont(4)), 3) << "the first of two equal ones";
    font.height = 240;
    EXPECT_EQ(workbook->addFont(font), 6);
    EXPECT_EQ(workbook->addFont(font), 6);
    EXPECT_EQ(workbook->fonts.size(), 7);
}

TEST_F(WorkbookTest, answersZeroWhereATableCannotGrow)
{
    const AllocationWatch watch(1);
    CellStyle style = defaultStyle();
    style.set(StyleWrap, 1);
    EXPECT_EQ(workbook->addStyle(style), 0);
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(workbook->styles.size(), 1);
    EXPECT_EQ(workbook->addStyle(style), 1) << "there is memory again";
    EXPECT_EQ(workbook->addStyle(defaultStyle()), 0);
    clearError();
}

TEST_F(WorkbookTest, answersZeroWhereTheFontTableCannotGrow)
{
    // The fonts that grew to six have room for some more.
    AllocationWatch watch(1);
    FontRecord font = defaultFont(0);
    int index = 0;
    while (!watch.refused()) {
        const int size = workbook->fonts.size();
        font.height = static_cast<std::uint16_t>(font.height + 20);
        index = workbook->addFont(font);
        EXPECT_EQ(index, watch.refused() ? 0 : size);
    }
    EXPECT_EQ(errorState.code, ErrorMemory);
    const int size = workbook->fonts.size();
    EXPECT_EQ(workbook->addFont(font), size);
    clearError();
}

TEST_F(WorkbookTest, holdsAsManyStylesAsACellCanName)
{
    CellStyle style = defaultStyle();
    for (int index = 1; index <= INT16_MAX; ++index) {
        // The search for an equal style would make this quadratic.
        style.words[1] = static_cast<std::uint16_t>(index);
        workbook->styles.append(style);
    }
    EXPECT_EQ(workbook->addStyle(style), INT16_MAX);
    style.words[1] = 0xffff;
    EXPECT_EQ(workbook->addStyle(style), 0);
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(workbook->styles.size(), INT16_MAX + 1);
    clearError();
    style.words[1] = 77;
    EXPECT_EQ(workbook->addStyle(style), 77) << "those that are there are still found";
    EXPECT_FALSE(errorStands());
}

TEST_F(WorkbookTest, padsTheFontsOfALoadedFile)
{
    NewDocument(0, FileKindImported);
    workbook->normaliseFonts();
    ASSERT_EQ(workbook->fonts.size(), 6);
    EXPECT_TRUE(workbook->fonts[3].sameAs(defaultFont(3)));

    NewDocument(0, FileKindImported);
    workbook->fonts.append(defaultFont(1));
    workbook->fonts.append(defaultFont(2));
    workbook->normaliseFonts();
    ASSERT_EQ(workbook->fonts.size(), 6);
    EXPECT_TRUE(workbook->fonts[0].sameAs(defaultFont(1)));
    for (int index = 1; index < 6; ++index)
        EXPECT_TRUE(workbook->fonts[index].sameAs(defaultFont(2))) << index;
    workbook->fonts.append(defaultFont(5));
    workbook->normaliseFonts();
    EXPECT_EQ(workbook->fonts.size(), 7);
}

TEST_F(WorkbookTest, findsNamesAndVariablesWithoutCase)
{
    workbook->names.append({duplicateString(u"Rate"), nullptr, -1});
    workbook->names.append({duplicateString(u"rate"), nullptr, -1});
    workbook->variables.append({duplicateString(u"Total"), {}});
    EXPECT_EQ(workbook->findName(u"RATE"), 0) << "a deleted one is found too";
    EXPECT_EQ(workbook->findName(u"Rat"), -1);
    EXPECT_EQ(workbook->findName(u""), -1);
    EXPECT_EQ(workbook->findVariable(u"total"), 0);
    EXPECT_EQ(workbook->findVariable(u"rate"), -1);
}

// --- The life of the document

TEST_F(WorkbookTest, beginsAnewWithEmptyPools)
{
    workbook->sheetAt(0)->setCell(0, 0, textCell(u"old"));
    workbook->sheetAt(0)->setCell(1, 0, constantFormula(1, {0, 1, 0}));
    stringPool->addText(u"nobody's");
    workbook->modified = true;
    NewDocument(3, FileKindNative);
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(names(), u"Sheet1 Sheet2 Sheet3 ");
    EXPECT_FALSE(workbook->sheetAt(0)->hasRows());
    EXPECT_EQ(stringPool->addText(u"first"), 0);
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(formulaPool->beginScan(), 0);
    formulaPool->endScan();
}

TEST_F(WorkbookTest, freesEverythingWithTheDocument)
{
    closeDocument();
    destroyPrivateHeap();
    createPrivateHeap();
    const AllocationWatch watch;
    NewDocument(3, FileKindNative);
    for (int row = 0; row < 100; ++row) {
        const auto place = static_cast<std::uint16_t>(row);
        workbook->sheetAt(row % 3)->setCell(0, row, textCell(u"text"));
        workbook->sheetAt(row % 3)->setCell(
            1, row, constantFormula(row, {place, 1, static_cast<std::uint16_t>(row % 3)}));
    }
    ByteCodeWriter writer;
    writer.emit(OpPushText, stringPool->addText(u"in a name"));
    workbook->names.append({duplicateString(u"Name"), writer.finish(), -1});
    workbook->variables.append({duplicateString(u"Variable"), textValue(u"in a variable")});
    recalculate();
    closeDocument();
    EXPECT_EQ(workbook, nullptr);
    destroyPrivateHeap();
    createPrivateHeap();
    // The two pools keep their one free slot; they had one before as well.
    EXPECT_LE(watch.liveBlocks(), 0);
}

TEST_F(WorkbookTest, letsThePlaceholderFormulaGo)
{
    ByteCodeWriter writer;
    placeholderFormula = writer.finishInPool();
    workbook->sheetAt(0)->setCell(
        0, 0, {CellValue::makeFormula(newFormulaCell({0, 0, 0}, placeholderFormula)), -1});
    closeDocument();
    EXPECT_EQ(placeholderFormula, -1);
    NewDocument(1, FileKindNative);
    EXPECT_FALSE(formulaPool->isLive(0));
}

int closings = 0;

TEST_F(WorkbookTest, tellsTheShellBeforeItGoes)
{
    closings = 0;
    beforeCloseDocument = [] {
        EXPECT_NE(workbook, nullptr);
        ++closings;
    };
    NewDocument(1, FileKindNative);
    EXPECT_EQ(closings, 1);
    closeDocument();
    EXPECT_EQ(closings, 2);
    NewDocument(1, FileKindNative);
    EXPECT_EQ(closings, 2) << "there was none to close";
    beforeCloseDocument = nullptr;
}

TEST_F(WorkbookTest, resetsTheMachine)
{
    pushNumber(1);
    machine.pendingError = 7;
    machine.callDepth = 3;
    abandonRun();
    NewDocument(1, FileKindNative);
    EXPECT_EQ(machine.stackTop, machine.runBase);
    EXPECT_EQ(machine.pendingError, 0);
    EXPECT_EQ(machine.callDepth, 0);
    EXPECT_TRUE(machine.machineRunning);
    EXPECT_TRUE(machine.machineHealthy);
}

TEST_F(WorkbookTest, survivesTheRefusalOfAnyOneAllocation)
{
    closeDocument();
    destroyPrivateHeap();
    bool refusedOne = true;
    int refusals = 0;
    for (int refused = 1; refusedOne; ++refused) {
        clearError();
        AllocationWatch watch(refused);
        NewDocument(3, FileKindNative);
        refusals += watch.refused() ? 1 : 0;
        EXPECT_EQ(errorState.code, watch.refused() ? ErrorMemory : ErrorNone) << refused;
        ASSERT_NE(workbook, nullptr);
        EXPECT_LE(workbook->sheets.size(), 3);
        closeDocument();
        destroyPrivateHeap();
        refusedOne = watch.refused();
        EXPECT_LE(watch.liveBlocks(), 0) << refused;

        // Nothing of the failure is left in the next document.
        clearError();
        watch.relent();
        NewDocument(3, FileKindNative);
        EXPECT_FALSE(errorStands()) << refused;
        EXPECT_EQ(names(), u"Sheet1 Sheet2 Sheet3 ") << refused;
        EXPECT_EQ(workbook->formats.size(), 16) << refused;
        EXPECT_EQ(workbook->fonts.size(), 6) << refused;
        EXPECT_EQ(workbook->styles.size(), 1) << refused;
        workbook->sheetAt(0)->setCell(0, 0, textCell(u"text"));
        EXPECT_EQ(describe(workbook->sheetAt(0)->valueOf(0, 0)), "\"text\"") << refused;
        workbook->sheetAt(0)->setCell(1, 0, constantFormula(1, {0, 1, 0}));
        recalculate();
        EXPECT_EQ(describe(workbook->sheetAt(0)->valueOf(1, 0)), "1") << refused;
        closeDocument();
        destroyPrivateHeap();
    }
    EXPECT_GT(refusals, 5);
    clearError();
    NewDocument(3, FileKindNative);
}

} // namespace
} // namespace vorn
