// What the print verbs of a script, and the commands like them, write about cells and the document.
#pragma once

#include "core/sheet.h"

#include <span>
#include <string>

namespace vorn::cli {

class Output;

enum class CellForm { Text, Input, Value };

// Text and Input: a line for each row, tabs between cells. Value: a line for each cell.
void printCells(Output& out, const Sheet& sheet, const RangeRef& range, CellForm form);

// A line for each cell: its effective style.
void printStyles(Output& out, const Sheet& sheet, const RangeRef& range);

// A line for each number format of the workbook.
void printFormats(Output& out);

void printRow(Output& out, const Sheet& sheet, int row);

// A line for each column of the range.
void printColumns(Output& out, const Sheet& sheet, const RangeRef& range);

void printSheets(Output& out);
void printSelection(Output& out);
void printDocument(Output& out, std::u16string_view title);

// A line for each path, the latest first.
void printRecentFiles(Output& out, std::span<const std::u16string> files);

// The decimal form of a number that reads back as the same number, with as few digits as that
// takes.
std::string numberDigits(double number);

} // namespace vorn::cli
