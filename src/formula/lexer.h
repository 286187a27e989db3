// The one tokeniser: of formulas, of tasks, of what a user types in a cell, and of references in
// dialogs. It looks at the workbook while it scans, so what a word means depends on the moment.
//
// Shape:  a plain object on the caller's stack, over a text that it does not own and does not
//         change. The text ends at its length or at its first zero character.
// Errors: the sticky code; `kind` is then TokenEndOfText.
#pragma once

#include "core/value.h"
#include "platform/clock.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

enum TokenKind : int {
    TokenEndOfText = 0,
    TokenStart = 1, // set by reset, never found by next
    TokenNumber = 2,
    TokenLogical = 3,
    TokenDate = 4,
    TokenError = 5,
    TokenListSeparator = 6,
    TokenPlus = 7,
    TokenMinus = 8,
    TokenMultiply = 9,
    TokenDivide = 10,
    TokenLeftParen = 11,
    TokenRightParen = 12,
    TokenConcat = 13,
    TokenEqual = 14,
    TokenBang = 15,
    TokenPower = 16,
    TokenPercent = 17,
    TokenGreater = 18,
    TokenLess = 19,
    TokenGreaterEqual = 20,
    TokenLessEqual = 21,
    TokenNotEqual = 22,
    TokenCell = 23,
    TokenRange = 24,
    TokenName = 25,
    TokenUnknownName = 26,
    TokenString = 27,
    TokenIf = 28,
    TokenThen = 29,
    TokenElse = 30,
    TokenEnd = 31,
    TokenWhile = 32,
    TokenDo = 33,
};

// What a TokenName names.
enum NameKind : int { NameFunction = 0, NameSheet = 1, NameDefined = 2, NameVariable = 4 };

// Characters that a text literal may hold.
constexpr int LiteralMax = 1023;

struct FormulaLexer {
    TokenKind kind = TokenStart;

    // The payload, by kind.
    double number = 0;                // TokenNumber, TokenDate
    bool logical = false;             // TokenLogical
    int error = 0;                    // TokenError
    RangeRef range;                   // TokenCell (its first corner), TokenRange, as typed
    NameKind nameKind = NameFunction; // TokenName
    int nameIndex = -1;               // TokenName: row, name or variable
    int firstSheet = 0;               // NameSheet, sorted
    int lastSheet = 0;
    int literalLength = 0; // TokenString
    char16_t literal[LiteralMax + 1];

    // What a date token was made of.
    bool timeSeen = false;
    bool dateSeen = false;
    bool designatorSeen = false;
    bool secondsSeen = false;

    // Set for one `next`: a word that means nothing is copied to capturedName.
    bool captureName = false;
    std::u16string capturedName;

    std::u16string_view text;
    std::size_t cursor = 0;     // where scanning goes on
    std::size_t tokenStart = 0; // where the token began, behind white space
    CellPosition base;          // what relative references are taken from

    FormulaLexer() {} // leaves the literal's room as it is: making a lexer must cost nothing

    void reset(std::u16string_view newText, CellPosition newBase);

    // Scans one token.
    void next();

    CellRef cell() const { return range.first(); }
    std::u16string_view literalText() const
    {
        return {literal, static_cast<std::size_t>(literalLength)};
    }

private:
    // The character at a position; zero behind the end.
    char16_t at(std::size_t position) const
    {
        return position < text.size() ? text[position] : u'\0';
    }
    bool standsAt(char16_t separator) const
    {
        return separator != u'\0' && at(cursor) == separator;
    }

    void skipSpace();
    void scanToken();
    void scanErrorLiteral();
    bool scanOperator(char16_t unit);

    // These answer the error code that stands in the way of a reference.
    int scanColumn(CellRef& cell);
    int scanRow(CellRef& cell);
    int scanCell(CellRef& cell);
    int scanReference();

    void scanWord();
    std::u16string_view takeWord();
    bool findWord(std::u16string_view word);
    void setName(NameKind newKind, int index);
    void scanSheetPrefix(bool quoted);
    int scanSheetName(bool quoted);

    void scanNumber();
    bool takePlainNumber();
    int scanDigits();
    bool scanDate();
    bool scanDayAndMonth(int first, LocalTime& parts);
    bool hourFollows();
    bool scanTime(LocalTime& parts);
    void scanDesignator(LocalTime& parts);

    void scanString();
};

} // namespace vorn
