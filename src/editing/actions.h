// The steps of which undo programs are made: rows 128 to 156 of the function table. Each takes its
// operands off the stack and works on the current sheet or on its selection; none leaves a result,
// and none checks what it is given, since only the system's own commands write them.
//
// Operands in the order in which they are pushed (functions/functions.def has all rows):
//   ActionSetCell             column, row, style, value; the cell takes the value over
//   ActionSelectSheet         index
//   ActionSetRow              row, height, custom, hidden
//   ActionSetDefaultRow       height, custom
//   ActionHideRow             row, hidden
//   ActionSetColumnWidth      column, width; 0 hides
//   ActionHideColumn          column, hidden
//   ActionSetRowAttributes    row, height, flags, style; of a row that has an object
//   ActionSetColumnAttributes column, width, style, flags
//   ActionSelectRange         left, right, top, bottom; the first of each is the active cell's, so
//                             they may stand the other way round
//   ActionBold                on; and so ActionItalic, ActionUnderline
//   ActionAlign               already, alignment
//   ActionFormat              44 of them (emitFormatTemplate in editing/format.h)
//   ActionEmptyCells          none
//   ActionClear               mode (editing/clear.h)
//   ActionAutoFitRows         none
//   ActionAutoFitRow          row
//   ActionAutoFitColumn       column
//   ActionRecalculate         none
//
// Errors: the sticky error is honoured as everywhere: once memory was short no cell is stored.
#pragma once

#include "formula/bytecode.h"
#include "functions/table.h"

#include <initializer_list>

namespace vorn {

// Writes code that pushes a whole number.
void emitInteger(ByteCodeWriter& program, int number);

// Writes code that pushes the operands, then the call of the step.
void emitAction(ByteCodeWriter& program, ActionRow action,
                std::initializer_list<int> operands = {});

} // namespace vorn
