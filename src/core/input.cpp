#include "core/input.h"

#include "core/formulacell.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/compiler.h"
#include "formula/decimal.h"
#include "formula/lexer.h"
#include "formula/printer.h"
#include "numfmt/locale.h"
#include "numfmt/render.h"
#include "platform/textrules.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

int suggestedDateFormat(const FormulaLexer& lexer)
{
    if (lexer.dateSeen)
        return lexer.timeSeen ? FormatIndexDateTime : FormatIndexShortDate;
    if (lexer.secondsSeen)
        return lexer.designatorSeen ? FormatIndexTime12Seconds : FormatIndexTime24Seconds;
    return lexer.designatorSeen ? FormatIndexTime12 : FormatIndexTime24;
}

// What a typed text is made of, if the lexer finds one value and nothing else.
struct TypedValue {
    TokenKind kind = TokenString;
    double number = 0;
    bool logical = false;
    bool percent = false;
    int dateFormat = NoFormatSuggestion;
};

// Takes the value of the token that the lexer stands on.
void takeToken(const FormulaLexer& lexer, TypedValue& typed)
{
    typed.kind = lexer.kind;
    if (typed.kind == TokenNumber || typed.kind == TokenDate)
        typed.number = lexer.number;
    if (typed.kind == TokenLogical)
        typed.logical = lexer.logical;
    if (typed.kind == TokenDate)
        typed.dateFormat = suggestedDateFormat(lexer);
}

// Can a value begin like this? Most texts are told apart by their first letters, and need no lexer.
bool beginsLikeValue(std::u16string_view text)
{
    const char16_t first = text.front();
    if (isAsciiDigit(first) || first == u'+' || first == u'-' || first == localeInfo.decimal ||
        isSpaceUnit(first))
        return true;
    const char16_t second = text.size() > 1 ? text[1] | 0x20 : 0;
    return ((first | 0x20) == u't' && second == u'r') || ((first | 0x20) == u'f' && second == u'a');
}

// Reads a text that is a number and nothing else. What could be a date or a time is left to the
// lexer.
bool readWholeNumber(std::u16string_view text, double& number)
{
    if (!isAsciiDigit(text.front()) || localeInfo.decimal == localeInfo.dateSeparator ||
        localeInfo.decimal == localeInfo.timeSeparator)
        return false;
    std::size_t end = 0;
    return readPlainDecimal(text, end, localeInfo.decimal, number) && end == text.size();
}

TypedValue readTypedValue(std::u16string_view text, CellPosition position)
{
    TypedValue typed;
    // An error that stood before makes a text of anything, and is wiped like the lexer's own.
    if (errorStands() || !beginsLikeValue(text)) {
        clearError();
        return typed;
    }
    if (readWholeNumber(text, typed.number)) {
        clearError();
        typed.kind = TokenNumber;
        return typed;
    }
    FormulaLexer lexer;
    lexer.reset(text, position);
    lexer.next();
    double sign = 1;
    if (lexer.kind == TokenPlus || lexer.kind == TokenMinus) {
        // A sign stands before a number only: -true and -12:30 are texts.
        sign = lexer.kind == TokenMinus ? -1 : 1;
        lexer.next();
        takeToken(lexer, typed);
        if (typed.kind != TokenNumber)
            typed.kind = TokenString;
    } else {
        takeToken(lexer, typed);
    }
    typed.number *= typed.kind == TokenNumber ? sign : 1;
    // What cannot be a value needs no second look: it is text, whatever follows.
    const bool isValue =
        typed.kind == TokenNumber || typed.kind == TokenLogical || typed.kind == TokenDate;
    if (isValue) {
        lexer.next();
        if (typed.kind == TokenNumber && lexer.kind == TokenPercent) {
            typed.percent = true;
            lexer.next();
        }
        if (errorStands() || lexer.kind != TokenEndOfText)
            typed.kind = TokenString;
    }
    clearError();
    return typed;
}

} // namespace

bool parseCellInput(CellValue& value, std::u16string_view text, CellPosition position,
                    int* formatOut, TextRule rule)
{
    text = text.substr(0, text.find(u'\0'));
    value = CellValue::makeBlank();
    if (text.empty())
        return true;
    if (formatOut != nullptr)
        *formatOut = NoFormatSuggestion;
    if (text.front() == u'=')
        return compileCellFormula(value, position, text);
    TypedValue typed = readTypedValue(text, position);
    if (text.front() == u'\'') {
        typed.kind = TokenString;
        text.remove_prefix(1);
    }
    switch (typed.kind) {
    case TokenNumber:
        if (formatOut != nullptr && typed.percent) {
            typed.number *= 0.01;
            *formatOut = FormatIndexPercent;
        }
        value = CellValue::makeNumber(typed.number);
        break;
    case TokenLogical:
        value = CellValue::makeLogical(typed.logical);
        break;
    case TokenDate:
        value = CellValue::makeDate(typed.number);
        if (formatOut != nullptr)
            *formatOut = typed.dateFormat;
        break;
    default:
        if (rule == TextAllowed)
            makeTextValue(value, text);
        break;
    }
    return true;
}

bool compileCellFormula(CellValue& value, CellPosition position, std::u16string_view text)
{
    value = CellValue::makeBlank();
    ByteCodeWriter writer;
    compileText(text, writer, position, CompileFormula);
    if (errorStands())
        return false;
    const std::int32_t formula = writer.finishInPool();
    if (formula == -1)
        return false;
    FormulaCell* cell = newFormulaCell(position, formula);
    if (cell == nullptr) {
        formulaPool->release(formula);
        return false;
    }
    value = CellValue::makeFormula(cell);
    return true;
}

bool textToNumber(std::u16string_view text, double& out)
{
    CellValue value;
    out = 0;
    if (!text.empty() && text.front() == u'=')
        return false;
    parseCellInput(value, text, {}, nullptr, NumbersOnly);
    if (value.tag != TagNumber)
        return false;
    out = value.number();
    return true;
}

bool textToWholeDate(std::u16string_view text, double& out)
{
    CellValue value;
    if (!text.empty() && text.front() == u'=')
        return false;
    parseCellInput(value, text, {}, nullptr, NumbersOnly);
    if (value.tag != TagDateTime || std::floor(value.number()) != value.number())
        return false;
    out = value.number();
    return true;
}

std::u16string valueText(const CellValue& value)
{
    switch (value.tag) {
    case TagLogical:
        return value.logical() ? u"true" : u"false";
    case TagError:
        return cellErrorText(value.error());
    case TagText:
        return valueTextPointer(value);
    case TagNumber:
        return generalNumberText(value.number());
    case TagDateTime:
        return generalDateText(value.number());
    case TagFormula:
        return printFormulaCell(*value.formula());
    case TagInteger: {
        const std::string digits = std::to_string(value.integer());
        return {digits.begin(), digits.end()};
    }
    default:
        return {};
    }
}

std::u16string dateTimeText(double serial)
{
    return valueText(CellValue::makeDate(serial));
}

std::u16string numberText(double value, int decimals, ZeroRule zeros)
{
    std::u16string text = fixedText(value, std::clamp(decimals, 0, 9));
    if (zeros == TrimZeros && text.find(u'.') != std::u16string::npos) {
        text.erase(text.find_last_not_of(u'0') + 1);
        if (text.back() == u'.')
            text.pop_back();
    }
    std::replace(text.begin(), text.end(), u'.', localeInfo.decimal);
    return text;
}

namespace {

// The style that a cell takes with a typed value: a date changes a format that shows no dates, a
// percent always.
int styleForInput(int style, std::uint8_t tag, int suggestion)
{
    if (suggestion == NoFormatSuggestion)
        return style;
    CellStyle changed = workbook->styles[style];
    const bool showsDates = workbook->formats[changed.format()].kind == FormatDate;
    if (tag == TagDateTime ? showsDates : tag != TagNumber)
        return style;
    changed.set(StyleFormat, suggestion);
    return workbook->addStyle(changed);
}

} // namespace

bool parseTypedCell(Cell& cell, std::u16string_view text, CellPosition position, int style)
{
    cell = Cell{};
    if (workbook->formats[workbook->styles[style].format()].kind == FormatText) {
        makeTextValue(cell.value, text);
    } else {
        int suggestion = NoFormatSuggestion;
        if (!parseCellInput(cell.value, text, position, &suggestion))
            return false;
        style = styleForInput(style, cell.value.tag, suggestion);
    }
    cell.style = static_cast<std::int16_t>(style);
    if (errorState.code != ErrorMemory)
        return true;
    releaseValue(cell.value);
    cell = Cell{};
    return false;
}

bool storeCellInput(int column, int row, std::u16string_view text)
{
    Sheet& sheet = *workbook->currentSheet;
    const CellPosition position{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(column),
                                static_cast<std::uint16_t>(sheet.index)};
    Cell cell;
    if (!parseTypedCell(cell, text, position, sheet.cellStyle(column, row)))
        return false;
    sheet.setCell(column, row, cell);
    if (errorState.code != ErrorMemory)
        return true;
    releaseValue(cell.value);
    return false;
}

} // namespace vorn
