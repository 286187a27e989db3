#include "editing/actions.h"

#include "core/autofit.h"
#include "core/chain.h"
#include "core/error.h"
#include "core/heap.h"
#include "core/input.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/clear.h"
#include "editing/format.h"
#include "editing/undo.h"
#include "formula/machine.h"
#include "support/cells.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

class Actions : public testing::Test {
protected:
    Actions() : sheet(*workbook->sheetAt(0)) {}

    // Runs the code, which leaves the machine as it was, and lets it go.
    static void run(ByteCodeWriter& program)
    {
        const CellValue* top = machine.stackTop;
        std::uint8_t* code = program.finish();
        ASSERT_NE(code, nullptr);
        runCode(code);
        EXPECT_EQ(machine.stackTop, top);
        EXPECT_TRUE(machine.machineRunning);
        EXPECT_TRUE(machine.machineHealthy);
        releaseByteCodeReferences(blockCode(code));
        heapFree(code);
    }

    static void run(ActionRow action, std::initializer_list<int> operands = {})
    {
        ByteCodeWriter program;
        emitAction(program, action, operands);
        run(program);
    }

    static std::string selection()
    {
        const Selection& s = workbook->currentSheet->selection;
        const RangeRef& r = s.range;
        return std::to_string(r.firstColumn) + ',' + std::to_string(r.firstRow) + ':' +
               std::to_string(r.lastColumn) + ',' + std::to_string(r.lastRow) + " active " +
               std::to_string(s.activeColumn) + ',' + std::to_string(s.activeRow);
    }

    std::string row(int number) const
    {
        return std::to_string(sheet.rowHeight(number)) +
               (sheet.rowHasCustomHeight(number) ? " custom" : "") +
               (sheet.rowHidden(number) ? " hidden" : "") +
               (sheet.rowAt(number) == nullptr ? " none" : "");
    }

    std::string column(int number) const
    {
        const ColumnAttr record = sheet.columns.attributes(number);
        return std::to_string(record.width) + '/' + std::to_string(record.style) + '/' +
               std::to_string(record.flags);
    }

    // "1/5": value and stored style, or "none" where nothing is present.
    std::string at(int cellColumn, int cellRow) const
    {
        if (!sheet.isPresent(cellColumn, cellRow))
            return "none";
        const Cell cell = sheet.cellCopy(cellColumn, cellRow);
        return describe(cell.value) + '/' + std::to_string(cell.style);
    }

    EditDocument document;
    Sheet& sheet;
};

TEST_F(Actions, bearTheirNumbersAndCounts)
{
    const struct {
        ActionRow action;
        int row, count;
    } cases[] = {
        {ActionSetCell,             128, 4 },
        {ActionSelectSheet,         129, 1 },
        {ActionSetRow,              130, 4 },
        {ActionSetDefaultRow,       131, 2 },
        {ActionHideRow,             132, 2 },
        {ActionSetColumnWidth,      133, 2 },
        {ActionHideColumn,          134, 2 },
        {ActionBold,                135, 1 },
        {ActionItalic,              136, 1 },
        {ActionUnderline,           137, 1 },
        {ActionSetRowAttributes,    138, 4 },
        {ActionSetColumnAttributes, 139, 4 },
        {ActionSelectRange,         140, 4 },
        {ActionFormat,              141, 40},
        {ActionEmptyCells,          142, 0 },
        {ActionSort,                143, 0 },
        {ActionFillRight,           144, 0 },
        {ActionFillDown,            145, 0 },
        {ActionClear,               146, 0 },
        {ActionAutoFitRows,         147, 0 },
        {ActionRepeatBlock,         148, 1 },
        {ActionRecalculate,         149, 0 },
        {ActionInsert,              150, 0 },
        {ActionDelete,              151, 0 },
        {ActionMoveBlock,           152, 0 },
        {ActionAutoFitColumn,       153, 1 },
        {ActionAutoFitRow,          154, 1 },
        {ActionFillSeries,          155, 6 },
        {ActionAlign,               156, 2 },
    };
    int row = FirstActionRow;
    for (const auto& c : cases) {
        EXPECT_EQ(c.action, row);
        EXPECT_EQ(c.row, row++);
        EXPECT_EQ(FunctionTable[c.row].minArguments, c.count) << c.row;
        EXPECT_EQ(FunctionTable[c.row].maxArguments, c.count) << c.row;
    }
    EXPECT_EQ(row, FirstTaskRow);
}

TEST_F(Actions, cannotBeTyped)
{
    for (const char16_t* text : {u"=ActionRecalculate()", u"=ActionSetCell(0,0,0,1)", u"=()"}) {
        EXPECT_FALSE(storeCellInput(0, 0, text));
        EXPECT_TRUE(errorStands());
        clearError();
    }
}

TEST_F(Actions, travelInTheSmallestPushThatHoldsThem)
{
    const struct {
        const char* phrase;
        int number;
        std::string code;
    } cases[] = {
        {"none",                    0,          {4, 0, 0}                           },
        {"the greatest of 16 bits", 65535,      {4, '\xff', '\xff'}                 },
        {"one past it",             65536,      {13, 0, 0, 1, 0}                    },
        {"a width of its own",      -1,         {13, '\xff', '\xff', '\xff', '\xff'}},
        {"the greatest width",      0x7fffffff, {13, '\xff', '\xff', '\xff', 127}   },
    };
    for (const auto& c : cases) {
        ByteCodeWriter program;
        emitInteger(program, c.number);
        std::uint8_t* code = program.finish();
        EXPECT_EQ(std::string(code + 4, code + 4 + c.code.size()), c.code) << c.phrase;
        EXPECT_EQ(code[4 + c.code.size()], OpReturn) << c.phrase;
        heapFree(code);
    }
}

TEST_F(Actions, runOneBehindTheOther)
{
    // Far more values than the stack holds, and far more code than a formula has.
    ByteCodeWriter program;
    for (int cell = 0; cell < 3000; ++cell)
        emitSetCell(program, cell % 3, cell / 3, -1, CellValue::makeNumber(cell));
    emitAction(program, ActionSelectRange, {1, 2, 3, 4});
    run(program);
    EXPECT_EQ(at(2, 999), "2999/-1");
    EXPECT_EQ(selection(), "1,3:2,4 active 1,3");
}

TEST_F(Actions, leaveNoTraceOfValuesThatNobodyTakes)
{
    ByteCodeWriter program;
    program.emit(OpPushValue, textValue(u"left"));
    program.emit(OpPushValue, constantFormula(3, {}).value);
    emitInteger(program, 7);
    run(program);
    EXPECT_EQ(poolFaults(), "");
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(liveFormulas(), 0);
}

TEST_F(Actions, leaveNoTraceOfAProgramThatOverrunsTheStack)
{
    ByteCodeWriter program;
    for (int value = 0; value < 500; ++value)
        program.emit(OpPushValue, textValue(u"too many"));
    emitAction(program, ActionSelectRange, {1, 2, 3, 4});
    run(program);
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(selection(), "0,0:0,0 active 0,0") << "the run ended before";
}

// --- Cells

TEST_F(Actions, storeACell)
{
    const struct {
        const char* phrase;
        CellValue value;
        int style;
        const char* stored;
    } cases[] = {
        {"a number",                   CellValue::makeNumber(2.5),        3,                "2.5/3"                                 },
        {"a date",                     CellValue::makeDate(36526),        3,                "date 36526/3"                          },
        {"a logical",                  CellValue::makeLogical(true),      0,                "TRUE/0"                                },
        {"an error",                   CellValue::makeError(CellErrorNA), 0,                "!!NA/0"                                },
        {"a text",                     textValue(u"abc"),                 1,                "\"abc\"/1"                             },
        {"the empty text of no entry", CellValue::makeTextIndex(-1),      1,                "\"\"/1"                                },
        {"a formula",                  constantFormula(1,                 {9, 9, 9}).value, 2,                                        "formula/2"},
        {"the greatest style",                            CellValue::makeNumber(1),                                          32767,       "1/32767"},
        {"no style of its own",                            CellValue::makeNumber(1),                                         -1,      "1/-1"   },
        {"a blank with a style",                            CellValue::makeBlank(),                                        4,       "blank/4"   },
        {"a blank without",                            CellValue::makeBlank(),                                             -1,            "none"  },
    };
    for (const auto& c : cases) {
        ByteCodeWriter program;
        emitSetCell(program, 200, 16383, c.style, c.value);
        run(program);
        EXPECT_EQ(at(200, 16383), c.stored) << c.phrase;
    }
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(liveFormulas(), 0);
}

TEST_F(Actions, storeAFormulaOfTheirOwnEachTime)
{
    ByteCodeWriter program;
    emitSetCell(program, 2, 3, -1, constantFormula(4, {3, 2, 0}).value);
    std::uint8_t* code = program.finish();
    runCode(code);
    const FormulaCell* first = sheet.cellAt(2, 3)->value.formula();
    EXPECT_EQ(first->position(), (CellPosition{3, 2, 0}));
    EXPECT_EQ(calcChain.first(), first);
    EXPECT_EQ(formulaPool->refCount(first->formula), 2) << "the program's and the cell's";
    runCode(code);
    EXPECT_NE(calcChain.first(), nullptr);
    EXPECT_EQ(calcChain.next(calcChain.first()), nullptr);
    EXPECT_EQ(formulaPool->refCount(first->formula), 2);
    recalculate();
    EXPECT_EQ(describe(sheet.valueOf(2, 3)), "4");
    releaseByteCodeReferences(blockCode(code));
    heapFree(code);
    EXPECT_EQ(poolFaults(), "");
    EXPECT_EQ(sheet.cellInput(2, 3), u"=4");
}

TEST_F(Actions, storeNothingOnceMemoryWasShort)
{
    bool refusedOne = true;
    for (int refused = 1; refusedOne; ++refused) {
        NewDocument(1, FileKindNative);
        Sheet& fresh = *workbook->currentSheet;
        ByteCodeWriter program;
        emitSetCell(program, 9, 9, 1, textValue(u"text"));
        emitSetCell(program, 9, 99, 1, constantFormula(1, {99, 9, 0}).value);
        emitSetCell(program, 0, 0, 1, textValue(u"last"));
        std::uint8_t* code = program.finish();
        {
            const AllocationWatch watch(refused);
            runCode(code);
            refusedOne = watch.refused();
        }
        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone);
        EXPECT_EQ(fresh.isPresent(0, 0), !refusedOne) << refused;
        clearError();
        releaseByteCodeReferences(blockCode(code));
        heapFree(code);
        EXPECT_EQ(poolFaults(), "") << refused;
    }
}

TEST_F(Actions, emptyTheSelection)
{
    sheet.setCell(1, 1, numberCell(1, 3));
    sheet.setCell(2, 1, textCell(u"gone"));
    sheet.setCell(1, 2, blankCell(3));
    sheet.setCell(2, 2, constantFormula(1, {2, 2, 0}));
    sheet.setCell(3, 1, numberCell(2, 3));
    sheet.setRowStyle(1, 3);
    sheet.setRowHeight(1, 400, true);
    sheet.columns.setColumnStyle(1, 1, 3);
    EditDocument::select("B2:C3");
    run(ActionEmptyCells);
    for (const CellRef cell : {
             CellRef{1, 1},
             CellRef{1, 2},
             CellRef{2, 1},
             CellRef{2, 2}
    })
        EXPECT_EQ(at(cell.column, cell.row), "none");
    EXPECT_EQ(at(3, 1), "2/3");
    EXPECT_EQ(sheet.rowStyle(1), 3);
    EXPECT_EQ(row(1), "400 custom");
    EXPECT_EQ(sheet.columns.columnStyle(1), 3);
    EXPECT_EQ(calcChain.first(), nullptr);
    EXPECT_EQ(liveTexts(), 0);
}

TEST_F(Actions, emptyRowsThatAreSelectedWhole)
{
    sheet.setRowStyle(1, 3);
    sheet.setRowHeight(1, 400, true);
    sheet.setRowHidden(2, true);
    sheet.setRowStyle(3, 3);
    sheet.setCell(4, 1, numberCell(1));
    EditDocument::select("A2:IV3");
    run(ActionEmptyCells);
    EXPECT_EQ(at(4, 1), "none");
    EXPECT_EQ(row(1), "255");
    EXPECT_EQ(sheet.rowStyle(1), 0);
    EXPECT_EQ(row(2), "255");
    EXPECT_EQ(sheet.rowStyle(3), 3);
    EXPECT_EQ(row(0), "255 none") << "no row is made";
}

TEST_F(Actions, clearByMode)
{
    const struct {
        ClearMode mode;
        const char* cell;
        const char* covered;
    } cases[] = {
        {ClearAll,      "none",    "blank/0"},
        {ClearContents, "blank/3", "blank/4"},
        {ClearFormats,  "5/0",     "6/0"    },
    };
    for (const auto& c : cases) {
        sheet.setCell(1, 1, numberCell(5, 3));
        sheet.columns.setColumnStyle(2, 2, 7);
        sheet.setCell(2, 1, numberCell(6, 4));
        EditDocument::select("B2:C2");
        run(ActionClear, {c.mode});
        EXPECT_EQ(at(1, 1), c.cell) << c.mode;
        EXPECT_EQ(at(2, 1), c.covered) << c.mode;
    }
}

TEST_F(Actions, recalculate)
{
    sheet.setCell(0, 0, constantFormula(3, {0, 0, 0}));
    EXPECT_EQ(describe(sheet.valueOf(0, 0)), "blank");
    run(ActionRecalculate);
    EXPECT_EQ(describe(sheet.valueOf(0, 0)), "3");
}

TEST_F(Actions, goOnBehindARecalculation)
{
    ByteCodeWriter program;
    emitSetCell(program, 0, 0, -1, constantFormula(3, {0, 0, 0}).value);
    emitAction(program, ActionRecalculate);
    emitSetCell(program, 1, 0, -1, CellValue::makeNumber(8));
    run(program);
    EXPECT_EQ(describe(sheet.valueOf(0, 0)), "3");
    EXPECT_EQ(at(1, 0), "8/-1");
}

// --- Sheet and selection

TEST_F(Actions, selectASheet)
{
    RecordingView view;
    run(ActionSelectSheet, {2});
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(2));
    EXPECT_EQ(view.told, "sheet");
    run(ActionSelectSheet, {2});
    EXPECT_EQ(view.told, "sheet") << "it was the current one";
    run(ActionSelectSheet, {3});
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(2)) << "there is no such sheet";
}

TEST_F(Actions, workOnTheSheetThatIsSelected)
{
    ByteCodeWriter program;
    emitAction(program, ActionSelectSheet, {1});
    emitSetCell(program, 0, 0, -1, constantFormula(3, {}).value);
    emitAction(program, ActionSetRow, {4, 300, 1, 0});
    run(program);
    EXPECT_EQ(at(0, 0), "none");
    EXPECT_EQ(workbook->sheetAt(1)->cellAt(0, 0)->value.formula()->sheet, 1);
    EXPECT_EQ(workbook->sheetAt(1)->rowHeight(4), 300);
}

TEST_F(Actions, selectARange)
{
    const struct {
        const char* phrase;
        int left, right, top, bottom;
        const char* selection;
    } cases[] = {
        {"a cell",                   3,   3,   4,     4,     "3,4:3,4 active 3,4"                  },
        {"the last cell",            255, 255, 16383, 16383, "255,16383:255,16383 active 255,16383"},
        {"a block",                  1,   3,   2,     4,     "1,2:3,4 active 1,2"                  },
        {"from the right",           3,   1,   2,     4,     "1,2:3,4 active 3,2"                  },
        {"from below",               1,   3,   4,     2,     "1,2:3,4 active 1,4"                  },
        {"from the opposite corner", 3,   1,   4,     2,     "1,2:3,4 active 3,4"                  },
        {"whole columns",            2,   3,   0,     16383, "2,0:3,16383 active 2,0"              },
        {"whole rows",               0,   255, 7,     8,     "0,7:255,8 active 0,7"                },
        {"the whole sheet",          0,   255, 0,     16383, "0,0:255,16383 active 0,0"            },
    };
    for (const auto& c : cases) {
        run(ActionSelectRange, {c.left, c.right, c.top, c.bottom});
        EXPECT_EQ(selection(), c.selection) << c.phrase;
    }
}

TEST_F(Actions, leaveTheActiveCellInsideOfWhatIsSelectedAlready)
{
    EditDocument::select("C1:C16384");
    sheet.selection.activeRow = 500;
    RecordingView view;
    run(ActionSelectRange, {2, 2, 0, 16383});
    EXPECT_EQ(selection(), "2,0:2,16383 active 2,500");
    EXPECT_EQ(view.told, "");
    run(ActionSelectRange, {2, 3, 0, 16383});
    EXPECT_EQ(selection(), "2,0:3,16383 active 2,0");
    EXPECT_EQ(view.told, "cell");
    run(ActionSelectRange, {2, 3, 0, 16383});
    EXPECT_EQ(view.told, "cell") << "nothing moved";
    run(ActionSelectRange, {3, 2, 0, 16383});
    EXPECT_EQ(view.told, "cell cell") << "the other end is active";
}

// --- Rows

TEST_F(Actions, setARow)
{
    const struct {
        const char* phrase;
        int height, custom, hidden;
        const char* row;
    } cases[] = {
        {"a height",                        400,  1, 0, "400 custom"        },
        {"one that nobody set by hand",     300,  0, 0, "300"               },
        {"a hidden row keeps its height",   300,  0, 1, "300 hidden"        },
        {"and is shown again",              300,  0, 0, "300"               },
        {"the greatest height of a dialog", 8180, 1, 1, "8180 custom hidden"},
        {"the default",                     255,  0, 0, "255"               },
    };
    for (const auto& c : cases) {
        run(ActionSetRow, {5, c.height, c.custom, c.hidden});
        EXPECT_EQ(row(5), c.row) << c.phrase;
    }
    run(ActionSetRow, {6, 255, 1, 0});
    EXPECT_EQ(row(6), "255 custom") << "by hand, even if it had no object";
    run(ActionSetRow, {7, 255, 0, 1});
    EXPECT_EQ(row(7), "255 hidden");
}

TEST_F(Actions, setTheDefaultHeight)
{
    sheet.setCell(0, 1, numberCell(1));
    sheet.setCell(0, 2, numberCell(1));
    sheet.setCell(0, 2, Cell{});
    sheet.ensureRow(2)->flags = 1 << 7; // as a save leaves it
    sheet.setRowHidden(3, true);
    sheet.setRowStyle(4, 1);
    run(ActionSetDefaultRow, {400, 1});
    EXPECT_EQ(sheet.defaultRowHeight, 400);
    EXPECT_EQ(sheet.rowFlags, DefaultHeightCustomFlag);
    EXPECT_EQ(row(0), "400 none");
    EXPECT_EQ(row(1), "255") << "a cell stands there";
    EXPECT_EQ(row(2), "400") << "nothing is to be seen of what was there";
    EXPECT_EQ(row(3), "255 hidden");
    EXPECT_EQ(row(4), "255") << "it has a style";
    run(ActionSetDefaultRow, {255, 0});
    EXPECT_EQ(sheet.defaultRowHeight, 255);
    EXPECT_EQ(sheet.rowFlags, 0);
}

TEST_F(Actions, hideARowAndNothingElse)
{
    sheet.setRowHeight(3, 400, true);
    run(ActionHideRow, {3, 1});
    EXPECT_EQ(row(3), "400 custom hidden");
    run(ActionHideRow, {3, 0});
    EXPECT_EQ(row(3), "400 custom");
    run(ActionHideRow, {4, 0});
    EXPECT_EQ(row(4), "255 none");
    run(ActionHideRow, {4, 1});
    EXPECT_EQ(row(4), "255 hidden");
}

TEST_F(Actions, setTheAttributesOfARowThatExists)
{
    run(ActionSetRowAttributes, {3, 400, RowHiddenFlag | RowCustomHeightFlag, 2});
    EXPECT_EQ(row(3), "255 none");
    sheet.ensureRow(3);
    run(ActionSetRowAttributes, {3, 400, RowHiddenFlag | RowCustomHeightFlag, 32767});
    EXPECT_EQ(row(3), "400 custom hidden");
    EXPECT_EQ(sheet.rowStyle(3), 32767);
    run(ActionSetRowAttributes, {3, 255, 0, 0});
    EXPECT_EQ(row(3), "255");
}

// --- Columns

TEST_F(Actions, setAColumnWidth)
{
    run(ActionSetColumnWidth, {3, 5000});
    EXPECT_EQ(column(3), "5000/0/0");
    run(ActionSetColumnWidth, {3, 0});
    EXPECT_EQ(column(3), "5000/0/1") << "hidden with its width";
    run(ActionSetColumnWidth, {3, 70000});
    EXPECT_EQ(column(3), "70000/0/0") << "beyond 16 bits";
    run(ActionSetColumnWidth, {3, DefaultColumnWidth});
    EXPECT_EQ(column(3), "-1/0/0");
}

TEST_F(Actions, hideAColumn)
{
    sheet.columns.setColumnWidth(3, 3, 5000);
    run(ActionHideColumn, {3, 1});
    EXPECT_EQ(column(3), "5000/0/1");
    run(ActionHideColumn, {3, 0});
    EXPECT_EQ(column(3), "5000/0/0");
    run(ActionHideColumn, {9, 0});
    EXPECT_EQ(sheet.columns.size(), 4) << "nothing hides it";
}

TEST_F(Actions, setTheAttributesOfAColumn)
{
    run(ActionSetColumnAttributes, {200, -1, 3, ColumnHiddenFlag});
    EXPECT_EQ(column(200), "-1/3/1") << "the table grows";
    EXPECT_EQ(sheet.columns.size(), 201);
    run(ActionSetColumnAttributes, {200, 100000, 0, 0});
    EXPECT_EQ(column(200), "100000/0/0");
    run(ActionSetColumnAttributes, {200, -1, 0, 0});
    EXPECT_EQ(column(200), "-1/0/0");
    run(ActionSetColumnAttributes, {255, -1, 0, 0});
    EXPECT_EQ(sheet.columns.size(), 201) << "nothing is to be seen there";
}

// --- How cells look

TEST_F(Actions, changeTheFontOfTheSelection)
{
    const struct {
        const char* phrase;
        ActionRow action;
        int on;
        int weight, attributes, underline;
    } cases[] = {
        {"bold",              ActionBold,      1, 700, 0,          0},
        {"italic as well",    ActionItalic,    1, 700, FontItalic, 0},
        {"and underlined",    ActionUnderline, 1, 700, FontItalic, 1},
        {"not bold any more", ActionBold,      0, 400, FontItalic, 1},
        {"upright",           ActionItalic,    0, 400, 0,          1},
        {"without a line",    ActionUnderline, 0, 400, 0,          0},
    };
    EditDocument::select("B2:C3");
    for (const auto& c : cases) {
        run(c.action, {c.on});
        const FontRecord& font = workbook->fonts[workbook->styles[sheet.cellStyle(2, 2)].font()];
        EXPECT_EQ(font.weight, c.weight) << c.phrase;
        EXPECT_EQ(font.attributes, c.attributes) << c.phrase;
        EXPECT_EQ(font.underline, c.underline) << c.phrase;
        EXPECT_EQ(font.face(), u"Tahoma") << c.phrase;
        EXPECT_EQ(sheet.cellStyle(3, 2), 0) << c.phrase;
    }
}

TEST_F(Actions, alignOrTakeTheAlignmentBack)
{
    EditDocument::select("B2");
    const auto alignment = [this] {
        return workbook->styles[sheet.cellStyle(1, 1)].get(StyleHorizontal);
    };
    run(ActionAlign, {0, AlignRight});
    EXPECT_EQ(alignment(), AlignRight);
    run(ActionAlign, {0, AlignCenter});
    EXPECT_EQ(alignment(), AlignCenter);
    run(ActionAlign, {1, AlignCenter});
    EXPECT_EQ(alignment(), AlignGeneral);
}

TEST_F(Actions, formatWithEachOfTheirOperands)
{
    FormatTemplate format;
    format.styleMask.set().reset(MaskOutline);
    format.fontMask.set();
    format.style.set(StyleFormat, 5);
    format.style.set(StyleLocked, 0);
    format.style.set(StyleHidden, 1);
    format.style.set(StyleTopLine, 1);
    format.style.set(StyleLeftLine, 2);
    format.style.set(StyleBottomLine, 3);
    format.style.set(StyleRightLine, 4);
    format.style.set(StyleTopColour, 10);
    format.style.set(StyleLeftColour, 11);
    format.style.set(StyleBottomColour, 12);
    format.style.set(StyleRightColour, 13);
    format.style.set(StyleFill, 14);
    format.style.set(StylePattern, 1);
    format.style.set(StyleHorizontal, AlignCenterSelection);
    format.style.set(StyleVertical, AlignMiddle);
    format.style.set(StyleWrap, 1);
    format.font.setFace(u"Courier New");
    format.font.family = 49;
    format.font.charset = 238;
    format.font.height = 480;
    format.font.colour = 20;
    format.font.weight = WeightBold;
    format.font.attributes = FontItalic;
    format.font.underline = 1;
    EditDocument::select("B2");
    ByteCodeWriter program;
    emitFormatTemplate(program, format);
    emitAction(program, ActionFormat);
    run(program);
    const CellStyle& style = workbook->styles[sheet.cellStyle(1, 1)];
    for (int field = 0; field < StyleFieldCount; ++field) {
        const auto each = static_cast<StyleField>(field);
        if (each == StyleFont || each == StyleSecondFill)
            continue;
        EXPECT_EQ(style.get(each), format.style.get(each)) << field;
    }
    EXPECT_TRUE(workbook->fonts[style.font()].sameAs(format.font));
    EXPECT_EQ(liveTexts(), 0) << "the face is no text of the document";
}

TEST_F(Actions, formatWhatTheirMasksName)
{
    CellStyle before = defaultStyle();
    before.set(StyleWrap, 1);
    before.set(StyleFont, 3);
    sheet.setCell(1, 1, numberCell(1, workbook->addStyle(before)));
    FormatTemplate format;
    format.styleMask.set(MaskFormat);
    format.style.set(StyleFormat, 4);
    EditDocument::select("B2");
    ByteCodeWriter program;
    emitFormatTemplate(program, format);
    emitAction(program, ActionFormat);
    run(program);
    before.set(StyleFormat, 4);
    EXPECT_TRUE(workbook->styles[sheet.cellStyle(1, 1)].sameAs(before));
}

TEST_F(Actions, takeADeletedNumberFormatForGeneral)
{
    FormatTemplate format;
    format.styleMask.set(MaskFormat);
    format.style.set(StyleFormat, workbook->formats.size());
    EditDocument::select("B2");
    ByteCodeWriter program;
    emitFormatTemplate(program, format);
    emitAction(program, ActionFormat);
    run(program);
    EXPECT_EQ(workbook->styles[sheet.cellStyle(1, 1)].format(), FormatIndexGeneral);
}

// --- Fitting

TEST_F(Actions, fitRowsAndColumns)
{
    FontRecord font = dialogFont();
    font.height = 400;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    const int large = workbook->addStyle(style);
    for (int cellRow = 1; cellRow < 4; ++cellRow)
        sheet.setCell(1, cellRow, numberCell(1, large));
    sheet.setRowHeight(2, 300, true);
    EditDocument::select("A2:A3");
    run(ActionAutoFitRows);
    EXPECT_EQ(row(1), "510");
    EXPECT_EQ(row(2), "300 custom") << "set by hand";
    EXPECT_EQ(row(3), "255") << "not selected";
    run(ActionAutoFitRow, {2});
    EXPECT_EQ(row(2), "510") << "this one is not by hand any more";
    sheet.columns.setColumnHidden(1, 1, true);
    run(ActionAutoFitColumn, {1});
    EXPECT_EQ(sheet.columns.columnWidth(1), autofitColumn(sheet, 1));
    EXPECT_NE(sheet.columns.columnWidth(1), DefaultColumnWidth);
    EXPECT_FALSE(sheet.columns.columnHidden(1));
    run(ActionAutoFitColumn, {7});
    EXPECT_EQ(column(7), "-1/0/0") << "an empty column keeps its width";
}

TEST_F(Actions, fitTheDefaultHeightWithWholeColumns)
{
    FontRecord font = dialogFont();
    font.height = 400;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    sheet.columns.setColumnStyle(1, 1, workbook->addStyle(style));
    EditDocument::select("B1:B16384");
    run(ActionAutoFitRows);
    EXPECT_EQ(sheet.defaultRowHeight, 510);
}

} // namespace
} // namespace vorn
