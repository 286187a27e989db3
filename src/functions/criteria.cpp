#include "functions/criteria.h"

#include "core/error.h"
#include "core/input.h"
#include "core/workbook.h"
#include "formula/machine.h"

#include <algorithm>

namespace vorn {
namespace {

bool isComparison(TokenKind kind)
{
    return kind >= TokenGreater && kind <= TokenNotEqual;
}

// The value behind the sign. One more = is no sign: the rest is a text then.
CellValue readOperand(std::u16string_view text)
{
    CellValue operand;
    if (!text.empty() && text.front() == u'=')
        makeTextValue(operand, text);
    else
        parseCellInput(operand, text, machine.base, nullptr);
    return operand;
}

} // namespace

CriteriaCondition readCondition(CellValue criteria)
{
    CriteriaCondition condition;
    if (criteria.tag == TagText) {
        // The lexer tells of what it cannot read through the sticky error, and does not go on while
        // one stands. Neither is of interest to a formula.
        const ErrorState standing = errorState;
        clearError();
        FormulaLexer lexer;
        lexer.reset(valueTextPointer(criteria), machine.base);
        lexer.next();
        if (isComparison(lexer.kind)) {
            condition.comparison = lexer.kind;
            const CellValue operand = readOperand(lexer.text.substr(lexer.cursor));
            releaseValue(criteria);
            criteria = operand;
        }
        const bool memoryIsShort = errorState.code == ErrorMemory;
        errorState = standing;
        if (memoryIsShort)
            raiseError(ErrorMemory);
    }
    condition.value = criteria;
    return condition;
}

bool meetsCondition(const CellValue* value, const CriteriaCondition& condition)
{
    const int order = compareValues(value, &condition.value, MatchCase);
    switch (condition.comparison) {
    case TokenGreater:
        return order > 0;
    case TokenLess:
        return order < 0;
    case TokenGreaterEqual:
        return order >= 0;
    case TokenLessEqual:
        return order <= 0;
    case TokenNotEqual:
        return order != 0;
    default:
        return order == 0;
    }
}

int SheetRange::columnCount() const
{
    return std::max(0, range.lastColumn - range.firstColumn + 1);
}

int SheetRange::rowCount() const
{
    return std::max(0, range.lastRow - range.firstRow + 1);
}

bool popSheetRange(SheetRange& out)
{
    RangeArgument argument;
    if (!popRange(argument))
        return false;
    out = {workbook->sheetAt(argument.firstSheet), argument.range};
    if (out.sheet == nullptr)
        setPending(CellErrorRef);
    return out.sheet != nullptr;
}

} // namespace vorn
