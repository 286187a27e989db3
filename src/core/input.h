// What a user types becomes a value, and a value becomes text again. The parser has no grammar of
// its own: it runs the formula lexer over the text and looks at the first tokens.
//
// Errors: only a formula that does not compile fails, with its sticky code. Everything else that is
//         not a number, a date or a logical is text; the lexer's complaints, and with them any
//         sticky error that stood before, are wiped.
#pragma once

#include "core/value.h"

#include <string>
#include <string_view>

namespace vorn {

struct Cell;

constexpr int NoFormatSuggestion = -1;

enum TextRule { TextAllowed, NumbersOnly };

// Parses `text` for the cell at `position` into `value`, which is not released first. `formatOut`
// may be null; otherwise it receives the built-in number format that suits what was typed, or -1,
// and only then "5%" is 0.05. NumbersOnly gives a blank in place of a text. Answers false if a
// formula did not compile; the value is blank then.
bool parseCellInput(CellValue& value, std::u16string_view text, CellPosition position,
                    int* formatOut, TextRule rule = TextAllowed);

// The branch for text with '='. The formula is not on the chain before it is stored in a cell.
bool compileCellFormula(CellValue& value, CellPosition position, std::u16string_view text);

// Does the text read as a plain number? A date does not.
bool textToNumber(std::u16string_view text, double& out);

// Does the text, not beginning with '=', read as a date of whole days?
bool textToWholeDate(std::u16string_view text, double& out);

// The text of any value, as the formula bar shows it: a formula as text, a date as short date and
// time whatever its cell's format.
std::u16string valueText(const CellValue& value);

std::u16string dateTimeText(double serial);

enum ZeroRule { KeepZeros, TrimZeros };

// A plain number for dialogs and axes, with 0 to 9 decimals and the locale's separator.
std::u16string numberText(double value, int decimals, ZeroRule zeros);

// What typed text becomes in a cell of this style: the value, and the style that the cell then has,
// which a date or a percent may change. A text format takes the text as it is. Answers false, with
// the sticky error and a blank in `cell`, if a formula did not compile or memory was short.
bool parseTypedCell(Cell& cell, std::u16string_view text, CellPosition position, int style);

// Stores typed text in a cell with the style in force there, in a document that is being made: an
// entry that can be undone is in editing/entry.h. Answers false, with the cell unchanged and the
// sticky error set, if a formula did not compile. Nothing is calculated yet.
bool storeCellInput(int column, int row, std::u16string_view text);

} // namespace vorn
