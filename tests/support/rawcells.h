// Values, cells and formulas below what can be typed, for tests that fill a document by hand.
#pragma once

#include "core/sheet.h"
#include "core/value.h"
#include "formula/bytecode.h"

#include <cstdint>
#include <string_view>

namespace vorn {

CellValue textValue(std::u16string_view text);

Cell blankCell(int style);
Cell numberCell(double number, int style = -1);
Cell dateCell(double serial, int style = -1);
Cell logicalCell(bool logical, int style = -1);
Cell errorCell(int error, int style = -1);
Cell textCell(std::u16string_view text, int style = -1);

// A formula with the code that the writer holds, which is closed here. Not on the chain.
Cell formulaCell(ByteCodeWriter& writer, CellPosition position, int style = -1);

// The formula that reads as "=number".
Cell constantFormula(double number, CellPosition position, int style = -1);

// A relative reference from `base` to a cell, as byte code holds it.
CellRef relativeTo(CellPosition base, int column, int row);

} // namespace vorn
