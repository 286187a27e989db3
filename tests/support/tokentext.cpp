#include "support/tokentext.h"

#include "core/error.h"
#include "formula/lexer.h"

#include <cstdarg>
#include <cstdio>

namespace vorn {
namespace {

[[gnu::format(printf, 1, 2)]] std::string formatted(const char* pattern, ...)
{
    char buffer[80];
    std::va_list parts;
    va_start(parts, pattern);
    std::vsnprintf(buffer, sizeof buffer, pattern, parts);
    va_end(parts);
    return buffer;
}

// Test texts are of ASCII; anything else shows as a question mark.
std::string narrow(std::u16string_view text)
{
    std::string narrowed;
    for (char16_t unit : text)
        narrowed += unit < 0x80 ? static_cast<char>(unit) : '?';
    return narrowed;
}

std::string cornerText(CellRef corner)
{
    return formatted("%04x/%04x", corner.row, corner.column);
}

std::string nameText(const FormulaLexer& lexer)
{
    switch (lexer.nameKind) {
    case NameFunction:
        return formatted("call:%d", lexer.nameIndex);
    case NameSheet:
        return formatted("sheet:%d:%d", lexer.firstSheet, lexer.lastSheet);
    case NameDefined:
        return formatted("name:%d", lexer.nameIndex);
    case NameVariable:
        return formatted("variable:%d", lexer.nameIndex);
    }
    return "unknown kind of name";
}

std::string oneToken(const FormulaLexer& lexer)
{
    static constexpr const char* plain[] = {
        ".", "start", "",  "",  "",   "",     ";",    "+",   "-",     "*",  "/",  "(",
        ")", "&",     "=", "!", "^",  "%",    ">",    "<",   ">=",    "<=", "<>", "",
        "",  "",      "",  "",  "if", "then", "else", "end", "while", "do"};
    switch (lexer.kind) {
    case TokenNumber:
        return formatted("%.15g", lexer.number);
    case TokenLogical:
        return lexer.logical ? "true" : "false";
    case TokenDate:
        return formatted("date:%.12g", lexer.number);
    case TokenError:
        return formatted("error:%d", lexer.error);
    case TokenCell:
        return "cell:" + cornerText(lexer.cell());
    case TokenRange:
        return "range:" + cornerText(lexer.range.first()) + ":" + cornerText(lexer.range.last());
    case TokenName:
        return nameText(lexer);
    case TokenUnknownName:
        return "?" + narrow(lexer.capturedName);
    case TokenString:
        return '"' + narrow(lexer.literalText()) + '"';
    default:
        return plain[lexer.kind];
    }
}

} // namespace

std::string tokenText(std::u16string_view text, CellPosition base)
{
    FormulaLexer lexer;
    lexer.reset(text, base);
    std::string tokens;
    do {
        lexer.captureName = true;
        lexer.next();
        tokens += tokens.empty() ? "" : " ";
        tokens += errorStands() ? formatted("!%d", errorState.code) : oneToken(lexer);
    } while (lexer.kind != TokenEndOfText);
    clearError();
    return tokens;
}

} // namespace vorn
