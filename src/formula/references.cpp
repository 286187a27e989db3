#include "formula/references.h"

#include "core/error.h"
#include "formula/lexer.h"

namespace vorn {

std::u16string columnName(int column)
{
    std::u16string name;
    if (column >= 26)
        name += static_cast<char16_t>(u'A' + column / 26 - 1);
    name += static_cast<char16_t>(u'A' + column % 26);
    return name;
}

std::u16string cellRefToText(int column, int row, ReferenceForm form)
{
    std::u16string text = columnName(column);
    if (form == AbsoluteForm)
        text = u'$' + text + u'$';
    for (char digit : std::to_string(row + 1))
        text += static_cast<char16_t>(digit);
    return text;
}

std::u16string rangeToText(const RangeRef& range, ReferenceForm form)
{
    std::u16string text = cellRefToText(range.firstColumn, range.firstRow, form);
    if (range.isMultiCell())
        text += u':' + cellRefToText(range.lastColumn, range.lastRow, form);
    return text;
}

bool parseReferenceText(std::u16string_view text, CellValue& out)
{
    FormulaLexer lexer;
    lexer.reset(text, {});
    lexer.next();
    CellValue reference;
    reference.firstSheet = NoFirstSheet;
    reference.lastSheet = NoLastSheet;
    if (lexer.kind == TokenName && lexer.nameKind == NameSheet) {
        reference.firstSheet = static_cast<std::uint8_t>(lexer.firstSheet);
        reference.lastSheet = static_cast<std::uint8_t>(lexer.lastSheet);
        lexer.next();
        if (lexer.kind != TokenBang)
            raiseError(ErrorBangExpected);
        lexer.next();
    }
    const CellRef first = resolve(lexer.range.first(), 0, 0);
    const CellRef last = resolve(lexer.range.last(), 0, 0);
    if (lexer.kind == TokenCell)
        reference.put(TagSheetCellRef, first);
    else if (lexer.kind == TokenRange)
        reference.put(TagSheetRangeRef, RangeRef{first.row, first.column, last.row, last.column});
    else
        return false;
    lexer.next();
    if (lexer.kind != TokenEndOfText || errorStands())
        return false;
    out = reference;
    return true;
}

} // namespace vorn
