#include "editing/undo.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "editing/actions.h"
#include "editing/entry.h"
#include "editing/format.h"
#include "editing/numberformats.h"
#include "support/cells.h"
#include "support/editing.h"
#include "support/poolcount.h"
#include "support/rawcells.h"
#include "support/refusal.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

// Under the address sanitizer every block of the private heap is an allocation of its own, and so
// is the label of a step.
#if defined(__SANITIZE_ADDRESS__)
constexpr int ListAndLabelAllocations = 2;
#else
constexpr int ListAndLabelAllocations = 1;
#endif

class Undo : public testing::Test {
protected:
    // A program that stores a number in A1 of the current sheet.
    static std::uint8_t* storing(double number)
    {
        ByteCodeWriter program;
        emitSetCell(program, 0, 0, -1, CellValue::makeNumber(number));
        return program.finish();
    }

    static void store(double number, double former, std::u16string_view label = u"Edit")
    {
        addUndoStep(storing(number), storing(former), label);
    }

    static double number() { return workbook->sheetAt(0)->valueOf(0, 0).number(); }

    EditDocument document;
};

TEST_F(Undo, hasNothingToDoAtFirst)
{
    undo();
    redo();
    EXPECT_EQ(undoList.position, 0);
    EXPECT_EQ(undoLabel(), u"");
    EXPECT_EQ(redoLabel(), u"");
    EXPECT_FALSE(workbook->modified);
}

TEST_F(Undo, runsAnEditAndTakesItBack)
{
    store(2, 1);
    EXPECT_EQ(number(), 2);
    EXPECT_EQ(undoList.position, 1);
    undo();
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(undoList.position, 0);
    redo();
    EXPECT_EQ(number(), 2);
    EXPECT_EQ(undoList.position, 1);
    redo();
    EXPECT_EQ(number(), 2);
}

TEST_F(Undo, holdsTenSteps)
{
    for (int edit = 1; edit <= 11; ++edit)
        store(edit, edit - 1);
    EXPECT_EQ(undoList.steps.size(), 10);
    EXPECT_EQ(undoList.position, 10);
    for (int edit = 10; edit >= 1; --edit) {
        undo();
        EXPECT_EQ(number(), edit);
    }
    undo();
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(undoLabel(), u"");
    for (int edit = 2; edit <= 11; ++edit) {
        redo();
        EXPECT_EQ(number(), edit);
    }
    redo();
    EXPECT_EQ(number(), 11);
}

TEST_F(Undo, discardsWhatWasUndoneForANewEdit)
{
    store(1, 0, u"first");
    store(2, 1, u"second");
    store(3, 2, u"third");
    undo();
    undo();
    store(9, 1, u"other");
    EXPECT_EQ(undoList.steps.size(), 2);
    EXPECT_EQ(redoLabel(), u"");
    redo();
    EXPECT_EQ(number(), 9);
    undo();
    undo();
    EXPECT_EQ(number(), 0);
}

TEST_F(Undo, tellsTheLabelsOfBothWays)
{
    std::u16string label = u"first";
    store(1, 0, label);
    label = u"xxxxx"; // the step has a copy
    store(2, 1, u"second");
    EXPECT_EQ(undoLabel(), u"second");
    EXPECT_EQ(redoLabel(), u"");
    undo();
    EXPECT_EQ(undoLabel(), u"first");
    EXPECT_EQ(redoLabel(), u"second");
    undo();
    EXPECT_EQ(undoLabel(), u"");
    EXPECT_EQ(redoLabel(), u"first");
    redo();
    store(3, 1, u"");
    EXPECT_EQ(undoLabel(), u"");
}

TEST_F(Undo, setsTheModifiedFlagOnEveryRoadAndClearsItOnNone)
{
    store(1, 0);
    EXPECT_TRUE(workbook->modified);
    workbook->modified = false; // as a save does
    undo();
    EXPECT_TRUE(workbook->modified);
    workbook->modified = false;
    redo();
    EXPECT_TRUE(workbook->modified);
    workbook->modified = false;
    redo(); // nothing left
    EXPECT_FALSE(workbook->modified);
}

TEST_F(Undo, doesNotRunWhatHasBeenDone)
{
    workbook->sheetAt(0)->setCell(0, 0, numberCell(5));
    addUndoStep(storing(5), storing(4), u"Paste", false);
    workbook->sheetAt(0)->setCell(0, 0, numberCell(7));
    EXPECT_TRUE(workbook->modified);
    undo();
    EXPECT_EQ(number(), 4);
    redo();
    EXPECT_EQ(number(), 5);
}

TEST_F(Undo, dropsAnEditThatLacksAProgram)
{
    store(1, 0);
    undo();
    workbook->modified = false;
    for (const bool lacksForward : {true, false}) {
        ByteCodeWriter program;
        emitSetCell(program, 0, 0, -1, textValue(u"never seen"));
        std::uint8_t* other = program.finish();
        addUndoStep(lacksForward ? nullptr : other, lacksForward ? other : nullptr, u"Edit");
        EXPECT_EQ(number(), 0);
        EXPECT_EQ(liveTexts(), 0);
    }
    addUndoStep(nullptr, nullptr, u"Edit");
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(redoLabel(), u"Edit") << "the redo tail stays";
}

TEST_F(Undo, locksTheViewAndMarksItBeforeLettingGo)
{
    RecordingView view;
    store(1, 0);
    EXPECT_EQ(view.told, "lock mark unlock");
    view.told.clear();
    undo();
    EXPECT_EQ(view.told, "lock mark unlock");
    view.told.clear();
    redo();
    EXPECT_EQ(view.told, "lock mark unlock");
    view.told.clear();
    undo();
    undo();
    EXPECT_EQ(view.told, "lock mark unlock") << "nothing was left to undo the second time";
}

TEST_F(Undo, goesToTheSheetOfTheStep)
{
    EXPECT_TRUE(EditDocument::enter("Sheet2!C3", u"5"));
    EditDocument::select("Sheet1!A1");
    RecordingView view;
    undo();
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(1));
    EXPECT_EQ(view.told, "lock sheet mark unlock");
    EXPECT_EQ(EditDocument::input("Sheet2!C3"), u"");
    EditDocument::select("Sheet3!A1");
    EditDocument::select("Sheet2!A1");
    EditDocument::select("Sheet1!A1");
    view.told.clear();
    redo();
    EXPECT_EQ(view.told, "lock sheet cell mark unlock");
    EXPECT_EQ(EditDocument::input("Sheet2!C3"), u"5");
}

TEST_F(Undo, keepsATextAliveAsLongAsTheStep)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"kept"));
    EXPECT_TRUE(EditDocument::enter("A1", u"7"));
    EXPECT_EQ(liveTexts(), 1);
    undo();
    EXPECT_EQ(EditDocument::input("A1"), u"kept");
    undo();
    EXPECT_EQ(EditDocument::input("A1"), u"");
    EXPECT_EQ(liveTexts(), 1) << "redo wants it";
    redo();
    redo();
    for (int step = 0; step < 9; ++step)
        EXPECT_TRUE(EditDocument::enter("B1", u"1"));
    EXPECT_EQ(liveTexts(), 1) << "the step that replaced it is still there";
    EXPECT_TRUE(EditDocument::enter("B1", u"1"));
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(poolFaults(), "");
}

TEST_F(Undo, keepsFormulasOffTheChain)
{
    EXPECT_TRUE(EditDocument::enter("B1", u"=A1&\"x\""));
    EXPECT_TRUE(EditDocument::enter("A1", u"y"));
    EXPECT_TRUE(EditDocument::enter("B1", u"=A1"));
    EXPECT_EQ(poolFaults(), "");
    undo();
    EXPECT_EQ(poolFaults(), "");
    EXPECT_EQ(EditDocument::input("B1"), u"=A1&\"x\"");
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"yx");
    undo();
    undo();
    EXPECT_EQ(poolFaults(), "");
    EXPECT_EQ(calcChain.first(), nullptr);
    redo();
    redo();
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"yx");
    EXPECT_EQ(poolFaults(), "");
}

TEST_F(Undo, releasesEveryStepWhenCleared)
{
    const std::size_t size = heapSize();
    EXPECT_TRUE(EditDocument::enter("A1", u"first"));
    EXPECT_TRUE(EditDocument::enter("A1", u"=\"second\""));
    EXPECT_TRUE(EditDocument::enter("A1", u"3"));
    undo();
    EXPECT_EQ(poolFaults(), "");
    clearUndo();
    EXPECT_EQ(undoList.steps.size(), 0);
    EXPECT_EQ(undoList.position, 0);
    EXPECT_EQ(poolFaults(), "");
    EXPECT_EQ(liveTexts(), 1) << "of the formula in A1, whose result shares it";
    workbook->currentSheet->setCell(0, 0, Cell{});
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_EQ(liveFormulas(), 0);
    clearUndo();
    EXPECT_LE(heapSize(), std::max<std::size_t>(size, 2 << 20));
}

TEST_F(Undo, goesWithTheDocument)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"text"));
    NewDocument(NewDocumentSheets, FileKindNative);
    EXPECT_EQ(undoList.steps.size(), 0);
    undo();
    redo();
    EXPECT_TRUE(EditDocument::enter("A1", u"other"));
    undo();
    EXPECT_EQ(EditDocument::input("A1"), u"");
    EXPECT_EQ(poolFaults(), "");
}

TEST_F(Undo, leavesAFailedStepInPlace)
{
    // The cells of row 200 find no room, and no later cell of the program is stored.
    ByteCodeWriter forward;
    emitSetCell(forward, 0, 0, -1, CellValue::makeNumber(1));
    emitSetCell(forward, 255, 9000, -1, textValue(u"too much"));
    emitSetCell(forward, 1, 0, -1, CellValue::makeNumber(2));
    std::uint8_t* code = forward.finish();
    std::uint8_t* back = storing(0);
    store(5, 5); // the list has its first room, and the next step finds some
    store(5, 5);
    {
        const AllocationWatch watch(2); // behind the label
        addUndoStep(code, back, u"Edit");
        EXPECT_TRUE(watch.refused());
    }
    EXPECT_EQ(errorState.code, ErrorMemory);
    EXPECT_EQ(number(), 1);
    EXPECT_FALSE(workbook->currentSheet->isPresent(1, 0));
    EXPECT_EQ(undoLabel(), u"Edit");
    EXPECT_EQ(poolFaults(), "");
    clearError();
    undo();
    EXPECT_EQ(number(), 0);
    redo();
    EXPECT_EQ(EditDocument::input("IV9001"), u"too much");
    EXPECT_EQ(EditDocument::input("B1"), u"2");
    EXPECT_EQ(poolFaults(), "");
}

// A number format is no part of the history, but its steps name formats by their places.
TEST_F(Undo, followsADeletedNumberFormat)
{
    NumberFormatDraft draft;
    int formats[3] = {};
    for (int& format : formats) {
        draft.decimals += 2;
        draft.positivePrefix = u"x";
        format = addNumberFormat(draft);
    }
    for (int cell = 0; cell < 4; ++cell) {
        const auto column = static_cast<std::uint16_t>(cell);
        workbook->currentSheet->selection.select({0, column}, {0, column});
        const FormatRequest before = readFormatRequest();
        FormatRequest after = before;
        after.numberFormat = cell < 3 ? formats[cell] : 2;
        after.wrapText = 1;
        applyFormatRequest(before, after);
    }
    EXPECT_TRUE(deleteFormat(formats[1]));
    const auto formatOf = [](int column) {
        return workbook->styles[workbook->currentSheet->cellStyle(column, 0)].format();
    };
    for (const bool again : {false, true}) {
        EXPECT_EQ(formatOf(0), formats[0]) << again;
        EXPECT_EQ(formatOf(1), FormatIndexGeneral) << again;
        EXPECT_EQ(formatOf(2), formats[1]) << "what was behind it moved down; " << again;
        EXPECT_EQ(formatOf(3), 2) << again;
        while (undoList.position > 0)
            undo();
        while (undoList.position < undoList.steps.size())
            redo();
    }
}

// --- Edits that move references

TEST_F(Undo, recordsWhatTheForwardProgramMoves)
{
    EXPECT_TRUE(EditDocument::enter("A1", u"1"));
    EXPECT_TRUE(EditDocument::enter("B1", u"=A1*2"));
    ByteCodeWriter recorder;
    emitSelectRange(recorder);
    emitPresentCell(recorder, 0, 0);
    EditDocument::select("Sheet2!A1");
    EditDocument::select("Sheet1!B1");
    const RangeRef cornerCell{5, 5, 5, 5};
    ByteCodeWriter forward;
    emitSelectRange(forward, &cornerCell); // tells the view, which sees the recorder
    emitSetCell(forward, 0, 0, -1, CellValue::makeNumber(4));
    emitAction(forward, ActionRecalculate);
    RecordingView view;
    addRecordedStep(forward.finish(), recorder, u"Insert");
    EXPECT_TRUE(view.sawRecorder);
    EXPECT_EQ(undoRecorder, nullptr);
    EXPECT_EQ(view.told, "lock cell mark unlock");
    EXPECT_EQ(undoLabel(), u"Insert");
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"8");
    undo();
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"2") << "it ends with a recalculation";
    redo();
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"8");
    EXPECT_EQ(poolFaults(), "");
}

TEST_F(Undo, dropsARecordedEditWithoutAForwardProgram)
{
    ByteCodeWriter recorder;
    emitSetCell(recorder, 0, 0, -1, textValue(u"never seen"));
    addRecordedStep(nullptr, recorder, u"Insert");
    EXPECT_EQ(undoList.steps.size(), 0);
    EXPECT_EQ(liveTexts(), 0);
    EXPECT_FALSE(workbook->modified);
}

TEST_F(Undo, endsTheHistoryWithARecordedEditThatHasNoWayBack)
{
    // Whatever allocation is refused, the edit is done with a way back, or not done, or the history
    // is gone.
    int done = 0;
    int dropped = 0;
    int ended = 0;
    bool refusedOne = true;
    for (int refused = 1; refusedOne; ++refused) {
        NewDocument(1, FileKindNative);
        EXPECT_TRUE(EditDocument::enter("A1", u"text"));
        ByteCodeWriter forward;
        emitSetCell(forward, 200, 90, -1, textValue(u"cell"));
        std::uint8_t* code = forward.finish();
        ByteCodeWriter recorder;
        for (int cell = 0; cell < 1000; ++cell) // a block that is an allocation of its own
            emitPresentCell(recorder, 0, 0);
        {
            const AllocationWatch watch(refused);
            addRecordedStep(code, recorder, u"Insert");
            refusedOne = watch.refused();
        }
        EXPECT_EQ(errorState.code, refusedOne ? ErrorMemory : ErrorNone);
        EXPECT_EQ(poolFaults(), "") << refused;
        EXPECT_EQ(undoRecorder, nullptr);
        if (undoList.steps.size() == 2)
            ++done;
        else if (undoLabel() == u"Typing in A1")
            ++dropped;
        else
            ++ended;
        for (const UndoStep& step : undoList.steps)
            EXPECT_NE(step.backward, nullptr);
        EXPECT_EQ(undoList.position, undoList.steps.size());
        clearError();
    }
    EXPECT_GT(done, 1);
    EXPECT_EQ(dropped, ListAndLabelAllocations) << "the list found no room, or the label";
    EXPECT_EQ(ended, 1) << "the backward program found none";
}

// --- Memory

TEST_F(Undo, keepsTheDocumentOrTheStepWhateverAllocationIsRefused)
{
    const char16_t* texts[] = {u"a text", u"=A1&\"more\"", u"12", u"=1+2", u"last"};
    int refusals = 0;
    for (int steps = 0; steps < 5; ++steps) {
        bool refusedOne = true;
        int unseen = 0;
        for (int refused = 1; refusedOne; ++refused) {
            NewDocument(1, FileKindNative);
            for (int step = 0; step < steps; ++step)
                EXPECT_TRUE(EditDocument::enter("B1", texts[step]));
            EditDocument::select("B1");
            const std::string before = describeSheets();
            {
                const AllocationWatch watch(refused);
                const bool stored = enterCell(texts[steps]);
                refusedOne = watch.refused();
                EXPECT_EQ(errorState.code, stored ? ErrorNone : ErrorMemory) << refused;
                // The sort of the chain does without memory, so that not every refusal is seen.
                EXPECT_TRUE(stored || refusedOne) << refused;
                refusals += stored ? 0 : 1;
                unseen += stored && refusedOne ? 1 : 0;
            }
            clearError();
            EXPECT_EQ(poolFaults(), "") << refused;
            if (undoList.position == steps) {
                EXPECT_EQ(describeSheets(), before) << refused;
                continue;
            }
            EXPECT_EQ(undoList.position, steps + 1);
            undo();
            EXPECT_EQ(describeSheets(), before) << refused;
            redo();
            EXPECT_EQ(EditDocument::input("B1"), texts[steps]) << refused;
            EXPECT_EQ(poolFaults(), "") << refused;
        }
        EXPECT_LE(unseen, 1) << "the sort asks once";
    }
    EXPECT_GT(refusals, 15);
}

TEST_F(Undo, survivesTheRefusalOfAnyAllocationInUndoAndRedo)
{
    for (const bool backwards : {true, false}) {
        bool refusedOne = true;
        for (int refused = 1; refusedOne; ++refused) {
            NewDocument(1, FileKindNative);
            EXPECT_TRUE(EditDocument::enter("B1", u"=\"long\"&A1"));
            EXPECT_TRUE(EditDocument::enter("B1", u"text"));
            const std::string after = describeSheets();
            undo();
            const std::string before = describeSheets();
            if (backwards)
                redo();
            {
                const AllocationWatch watch(refused);
                backwards ? undo() : redo();
                refusedOne = watch.refused();
            }
            clearError();
            EXPECT_EQ(poolFaults(), "") << refused;
            EXPECT_EQ(undoList.position, backwards ? 1 : 2);
            // With memory back, the other way and this way again mend what was not stored.
            backwards ? redo() : undo();
            backwards ? undo() : redo();
            EXPECT_EQ(describeSheets(), backwards ? before : after) << refused;
            EXPECT_EQ(poolFaults(), "") << refused;
        }
    }
}

} // namespace
} // namespace vorn
