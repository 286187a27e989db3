#include "support/cells.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/formulacell.h"
#include "core/input.h"
#include "core/workbook.h"
#include "formula/machine.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace vorn {
namespace {

std::string narrow(std::u16string_view text)
{
    std::string result;
    for (const char16_t unit : text) {
        if (unit >= 0x20 && unit < 0x7f) {
            result += static_cast<char>(unit);
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
        result += escape;
    }
    return result;
}

std::string numberDigits(double number)
{
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.15g", number);
    return digits;
}

std::string cellPlace(CellRef cell)
{
    return std::to_string(cell.column) + "," + std::to_string(cell.row);
}

std::string sheetPair(const CellValue& value)
{
    return "sheets " + std::to_string(value.firstSheet) + "-" + std::to_string(value.lastSheet) +
           " ";
}

std::string describeReference(const CellValue& value)
{
    switch (value.tag) {
    case TagCellRef:
        return "cell " + cellPlace(value.cellRef());
    case TagSheetCellRef:
        return sheetPair(value) + "cell " + cellPlace(value.cellRef());
    default:
        break;
    }
    const RangeRef range = value.rangeRef();
    const std::string corners = "range " + cellPlace(range.first()) + ":" + cellPlace(range.last());
    return value.tag == TagSheetRangeRef ? sheetPair(value) + corners : corners;
}

struct Place {
    Sheet* sheet = nullptr;
    int column = 0;
    int row = 0;
};

// Reads "B2" or "Sheet2!B2"; the sheet is the current one where none is named.
Place findPlace(std::string_view name)
{
    Place place;
    place.sheet = workbook->currentSheet;
    const std::size_t mark = name.find('!');
    if (mark != std::string_view::npos) {
        const std::u16string sheetName(name.begin(), name.begin() + mark);
        place.sheet = workbook->sheetAt(workbook->findSheet(sheetName));
        name.remove_prefix(mark + 1);
    }
    for (const char unit : name) {
        if (unit >= 'A')
            place.column = place.column * 26 + (unit - 'A' + 1);
        else
            place.row = place.row * 10 + (unit - '0');
    }
    --place.column;
    --place.row;
    EXPECT_NE(place.sheet, nullptr) << name;
    return place;
}

void type(const Place& place, std::u16string_view text)
{
    Sheet* const current = workbook->currentSheet;
    workbook->currentSheet = place.sheet;
    EXPECT_TRUE(storeCellInput(place.column, place.row, text)) << narrow(text);
    workbook->currentSheet = current;
    clearError();
}

} // namespace

std::string describe(const CellValue& value)
{
    switch (value.tag) {
    case TagBlank:
        return "blank";
    case TagLogical:
        return value.logical() ? "TRUE" : "FALSE";
    case TagError:
        return narrow(cellErrorText(value.error()));
    case TagText:
        return '"' + narrow(valueTextPointer(value)) + '"';
    case TagNumber:
        return numberDigits(value.number());
    case TagDateTime:
        return "date " + numberDigits(value.number());
    case TagFormula:
        return "formula";
    case TagInteger:
        return "integer " + std::to_string(value.integer());
    case TagCellRef:
    case TagRangeRef:
    case TagSheetCellRef:
    case TagSheetRangeRef:
        return describeReference(value);
    default:
        return "tag " + std::to_string(value.tag);
    }
}

Cells::~Cells()
{
    releaseValue(formula_);
}

void Cells::put(std::string_view place, std::u16string_view text)
{
    type(findPlace(place), text);
    recalculate();
}

void Cells::fill(std::string_view corner,
                 std::initializer_list<std::initializer_list<std::u16string_view>> rows)
{
    const Place first = findPlace(corner);
    Place place = first;
    for (const auto& row : rows) {
        place.column = first.column;
        for (const std::u16string_view text : row) {
            if (!text.empty())
                type(place, text);
            ++place.column;
        }
        ++place.row;
    }
    recalculate();
}

void Cells::store(std::string_view place, const CellValue& value)
{
    const Place target = findPlace(place);
    target.sheet->setCell(target.column, target.row, {value, 0});
    recalculate();
}

CellValue Cells::value(std::string_view place) const
{
    const Place source = findPlace(place);
    return source.sheet->valueOf(source.column, source.row);
}

std::u16string Cells::text(std::string_view place) const
{
    const Place source = findPlace(place);
    return source.sheet->cellText(source.column, source.row);
}

bool Cells::run(std::u16string_view formula)
{
    releaseValue(formula_);
    if (!compileCellFormula(formula_, base, formula))
        return false;
    evaluateFormulaCell(*formula_.formula());
    return true;
}

CellValue Cells::evaluate(std::u16string_view formula)
{
    if (run(formula))
        return formula_.formula()->result;
    ADD_FAILURE() << narrow(formula) << " does not compile";
    clearError();
    return {};
}

std::string Cells::answer(std::u16string_view formula)
{
    if (run(formula))
        return describe(formula_.formula()->result);
    const std::string refusal = "refused " + std::to_string(errorState.code);
    clearError();
    return refusal;
}

} // namespace vorn
