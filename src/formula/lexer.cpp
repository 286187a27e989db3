#include "formula/lexer.h"

#include "core/error.h"
#include "core/workbook.h"
#include "functions/table.h"
#include "numfmt/locale.h"
#include "platform/textrules.h"

#include <algorithm>
#include <array>

namespace vorn {
namespace {

constexpr bool isWordUnit(char16_t unit)
{
    return isAsciiLetter(unit) || isAsciiDigit(unit) || unit == u'_';
}

// The token of each operator character, from TokenPlus on; TokenEndOfText for all others.
constexpr std::array<TokenKind, 128> makeOperatorTokens()
{
    std::array<TokenKind, 128> tokens{};
    int kind = TokenPlus;
    for (char16_t operatorUnit : std::u16string_view(u"+-*/()&=!^%><"))
        tokens[operatorUnit] = static_cast<TokenKind>(kind++);
    return tokens;
}

constexpr std::array<TokenKind, 128> OperatorTokens = makeOperatorTokens();

// Is a word, of ASCII letters, digits and underscores, these letters, which are in lower case?
bool isWord(std::u16string_view word, std::u16string_view letters)
{
    return std::equal(word.begin(), word.end(), letters.begin(), letters.end(),
                      [](char16_t unit, char16_t letter) { return (unit | 0x20) == letter; });
}

constexpr struct {
    std::u16string_view letters;
    TokenKind kind;
} Keywords[] = {
    {u"true",  TokenLogical},
    {u"false", TokenLogical},
    {u"if",    TokenIf     },
    {u"then",  TokenThen   },
    {u"else",  TokenElse   },
    {u"end",   TokenEnd    },
    {u"while", TokenWhile  },
    {u"do",    TokenDo     },
};
constexpr std::size_t KeywordMax = 5;

// The keyword that a word is, TokenName if none.
TokenKind findKeyword(std::u16string_view word)
{
    if (word.size() > KeywordMax)
        return TokenName;
    for (const auto& keyword : Keywords)
        if (isWord(word, keyword.letters))
            return keyword.kind;
    return TokenName;
}

} // namespace

void FormulaLexer::reset(std::u16string_view newText, CellPosition newBase)
{
    text = newText;
    base = newBase;
    cursor = 0;
    tokenStart = 0;
    kind = TokenStart;
    captureName = false;
}

void FormulaLexer::next()
{
    if (kind == TokenEndOfText)
        raiseError(ErrorEndOfFormula);
    else
        scanToken();
    if (errorStands())
        kind = TokenEndOfText;
    captureName = false;
}

void FormulaLexer::skipSpace()
{
    while (isSpaceUnit(at(cursor)))
        ++cursor;
}

void FormulaLexer::scanToken()
{
    skipSpace();
    tokenStart = cursor;
    const char16_t unit = at(cursor);
    if (unit == u'\0') {
        kind = TokenEndOfText;
    } else if (unit == u'!' && at(cursor + 1) == u'!') {
        scanErrorLiteral();
    } else if (scanOperator(unit)) {
        return;
    } else if (unit == u'$') {
        raiseError(scanReference());
    } else if (isAsciiLetter(unit) || unit == u'_' || unit == u'\'') {
        scanWord();
    } else if (isAsciiDigit(unit) || unit == localeInfo.decimal) {
        scanNumber();
    } else if (unit == u'"') {
        scanString();
    } else if (unit == localeInfo.list) {
        ++cursor;
        kind = TokenListSeparator;
    } else {
        raiseError(ErrorCharacter);
    }
}

void FormulaLexer::scanErrorLiteral()
{
    cursor += 2;
    const std::u16string_view word = takeWord();
    kind = TokenError;
    if (isWord(word, u"na"))
        error = CellErrorNA;
    else if (isWord(word, u"ref"))
        error = CellErrorRef;
    else
        raiseError(ErrorCharacter);
}

bool FormulaLexer::scanOperator(char16_t unit)
{
    if (unit >= OperatorTokens.size() || OperatorTokens[unit] == TokenEndOfText)
        return false;
    kind = OperatorTokens[unit];
    const char16_t second = at(++cursor);
    TokenKind pair = kind;
    if (kind == TokenLess && second == u'=')
        pair = TokenLessEqual;
    else if (kind == TokenLess && second == u'>')
        pair = TokenNotEqual;
    else if (kind == TokenGreater && second == u'=')
        pair = TokenGreaterEqual;
    if (pair != kind)
        ++cursor;
    kind = pair;
    return true;
}

// --- References

int FormulaLexer::scanColumn(CellRef& cell)
{
    const bool relative = at(cursor) != u'$';
    if (!relative)
        ++cursor;
    if (!isAsciiLetter(at(cursor)))
        return ErrorColumnExpected;
    int column = 0;
    for (; isAsciiLetter(at(cursor)); ++cursor) {
        column = column * 26 + (at(cursor) | 0x20) - u'a' + 1;
        if (column > ColumnCount)
            return ErrorColumnName;
    }
    --column;
    cell.column = static_cast<std::uint16_t>(
        relative ? ((column - base.column) & 0xff) | ColumnRelative : column);
    return ErrorNone;
}

int FormulaLexer::scanRow(CellRef& cell)
{
    const bool relative = at(cursor) != u'$';
    if (!relative)
        ++cursor;
    if (!isAsciiDigit(at(cursor)) || at(cursor) == u'0')
        return ErrorRowExpected;
    const int row = scanDigits() - 1;
    if (row >= RowCount)
        return ErrorRowTooBig;
    if (relative)
        cell.column |= RowRelative;
    cell.row = static_cast<std::uint16_t>(relative ? row - base.row : row);
    return ErrorNone;
}

int FormulaLexer::scanCell(CellRef& cell)
{
    const int code = scanColumn(cell);
    return code != ErrorNone ? code : scanRow(cell);
}

int FormulaLexer::scanReference()
{
    CellRef first;
    int code = scanCell(first);
    if (code != ErrorNone)
        return code;
    CellRef last = first;
    kind = TokenCell;
    const bool dots = at(cursor) == u'.' && at(cursor + 1) == u'.';
    if (dots || at(cursor) == u':') {
        cursor += dots ? 2 : 1;
        kind = TokenRange;
        code = scanCell(last);
    }
    range = {first.row, first.column, last.row, last.column};
    return code;
}

// --- Words

std::u16string_view FormulaLexer::takeWord()
{
    const std::size_t start = cursor;
    while (isWordUnit(at(cursor)))
        ++cursor;
    return text.substr(start, cursor - start);
}

void FormulaLexer::scanWord()
{
    const bool quoted = at(cursor) == u'\'';
    if (!quoted) {
        if (scanReference() == ErrorNone)
            return;
        cursor = tokenStart;
        const std::u16string_view word = takeWord();
        if (findWord(word))
            return;
        if (workbook->findSheet(word) < 0) {
            kind = TokenUnknownName;
            if (captureName)
                capturedName = word;
            return;
        }
        cursor = tokenStart;
    }
    scanSheetPrefix(quoted);
}

void FormulaLexer::setName(NameKind newKind, int index)
{
    kind = TokenName;
    nameKind = newKind;
    nameIndex = index;
}

bool FormulaLexer::findWord(std::u16string_view word)
{
    if (const int row = findFunction(word); row >= 0) {
        setName(NameFunction, row);
        return true;
    }
    kind = findKeyword(word);
    if (kind != TokenName) {
        logical = kind == TokenLogical && isWord(word, u"true");
        return true;
    }
    if (const int name = workbook->findName(word); name >= 0) {
        setName(NameDefined, name);
        return true;
    }
    const int variable = workbook->findVariable(word);
    if (variable >= 0)
        setName(NameVariable, variable);
    return variable >= 0;
}

void FormulaLexer::scanSheetPrefix(bool quoted)
{
    if (quoted)
        ++cursor;
    const int first = scanSheetName(quoted);
    int last = first;
    if (at(cursor) == u':') {
        ++cursor;
        last = scanSheetName(quoted);
    }
    // Whatever stands behind a quoted name is taken for its closing quote.
    if (quoted && at(cursor) != u'\0')
        ++cursor;
    firstSheet = std::min(first, last);
    lastSheet = std::max(first, last);
    setName(NameSheet, -1);
}

int FormulaLexer::scanSheetName(bool quoted)
{
    const std::size_t start = cursor;
    if (quoted)
        while (at(cursor) != u'\'' && at(cursor) != u':' && at(cursor) != u'\0')
            ++cursor;
    else
        takeWord();
    const std::u16string_view name = text.substr(start, cursor - start);
    const int sheet = name.empty() ? -1 : workbook->findSheet(name);
    if (sheet < 0 || sheet > SheetIndexMax)
        raiseError(ErrorSheetName);
    return sheet;
}

// --- Texts

void FormulaLexer::scanString()
{
    kind = TokenString;
    literalLength = 0;
    for (++cursor; at(cursor) != u'\0'; ++cursor) {
        if (at(cursor) == u'"' && at(++cursor) != u'"') {
            literal[literalLength] = u'\0';
            return;
        }
        if (literalLength == LiteralMax) {
            raiseError(ErrorTooComplex);
            return;
        }
        literal[literalLength++] = at(cursor);
    }
    raiseError(ErrorUnterminatedString);
}

} // namespace vorn
