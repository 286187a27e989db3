// Undo and redo. An editing command changes nothing itself: it writes two programs for the machine,
// one that does the edit and one that takes it back, and hands both to addUndoStep, which runs the
// first. So doing, undoing and doing again take one road through the same code.
//
// A program is a block of byte code in the private heap (formula/bytecode.h), written with a
// ByteCodeWriter. It is made of calls of the steps 128 to 156 of the function table
// (editing/actions.h) and works on the current sheet, which its first step selects.
//
// Shape:  one list, of ten steps at most. The first `position` steps are in effect; the next one is
//         what redo repeats. A program owns the texts that it holds, and a record off the chain for
//         each of its formulas; what it stores in a cell is a further owner, or a further record.
//         The list has to be cleared before the document goes (beforeCloseDocument).
// Errors: ErrorMemory, sticky; an edit whose making ran out of memory anywhere is dropped and the
//         document stays as it was. A forward program that fails leaves its step in the list all
//         the same.
#pragma once

#include "core/growarray.h"
#include "core/reference.h"
#include "core/value.h"
#include "formula/bytecode.h"

#include <cstdint>
#include <string_view>

namespace vorn {

constexpr int UndoStepMax = 10;

struct UndoStep {
    std::uint8_t* forward = nullptr;  // private heap
    std::uint8_t* backward = nullptr; // private heap
    char16_t* label = nullptr;        // private heap
};

struct UndoList {
    GrowArray<UndoStep> steps; // the oldest first
    int position = 0;          // steps in effect
};

extern UndoList undoList;

// Takes both programs over. Drops the steps that were undone, appends this one, lets the oldest go
// if there are more than ten, runs `forward` if `run` says so, and marks the workbook modified. A
// null program drops the edit. With `run` off the edit has been done; if its step finds no room
// then, the whole history goes.
void addUndoStep(std::uint8_t* forward, std::uint8_t* backward, std::u16string_view label,
                 bool run = true);

// The same for edits that move references: what the maintenance of references writes into
// `recorder` while `forward` runs belongs to the backward program, which is then closed with a
// recalculation. If that finds no room, the edit has been done and the whole history goes.
void addRecordedStep(std::uint8_t* forward, ByteCodeWriter& recorder, std::u16string_view label);

// Where the maintenance of references writes what takes it back; null but during such a step.
extern ByteCodeWriter* undoRecorder;

void undo();
void redo();

// Lets every step go.
void clearUndo();

// The workbook lost a number format (Workbook::removeFormat): the steps name formats by the same
// indices as the styles, and follow.
void dropFormatFromSteps(int format);

// The label of the step that undo, or redo, would run; empty if there is none.
std::u16string_view undoLabel();
std::u16string_view redoLabel();

// Writes code that makes the current sheet the current one again and selects `range`, or the
// sheet's selection for null.
void emitSelectRange(ByteCodeWriter& program, const RangeRef* range = nullptr);

// Does an edit fit the heights of the rows that it changed?
enum RowFitting { LeaveRows, FitRows };

// Writes code that restores all that the selection of the current sheet holds: cells with their
// styles, attributes of rows, and of columns if they are selected whole. It costs what is there,
// not what is selected. If the edit fits rows, those that come into being with it are fitted once
// more, and all others get back the height that they had.
void emitSnapshot(ByteCodeWriter& program, RowFitting fitting = LeaveRows);

// Writes code that stores a cell. The program takes over what `value` owns; a formula is not on the
// chain.
void emitSetCell(ByteCodeWriter& program, int column, int row, int style, const CellValue& value);

// Writes code that stores what the cell of the current sheet holds now, with its own style.
void emitPresentCell(ByteCodeWriter& program, int column, int row);

} // namespace vorn
