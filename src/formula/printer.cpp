#include "formula/printer.h"

#include "core/error.h"
#include "core/formulacell.h"
#include "core/growarray.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "formula/references.h"
#include "functions/table.h"
#include "numfmt/locale.h"
#include "numfmt/render.h"
#include "platform/textrules.h"

#include <array>

namespace vorn {
namespace {

struct BinaryOperator {
    int level = 0; // 1 is the loosest, 0 no such operator
    std::u16string_view text;
};

constexpr int LoosestLevel = 1;
constexpr int TightestLevel = 5;

constexpr std::array<BinaryOperator, 256> makeBinaryOperators()
{
    std::array<BinaryOperator, 256> table{};
    table[OpEqual] = {1, u"="};
    table[OpLess] = {1, u"<"};
    table[OpGreater] = {1, u">"};
    table[OpLessEqual] = {1, u"<="};
    table[OpGreaterEqual] = {1, u">="};
    table[OpNotEqual] = {1, u"<>"};
    table[OpConcat] = {2, u"&"};
    table[OpAdd] = {3, u"+"};
    table[OpSubtract] = {3, u"-"};
    table[OpMultiply] = {4, u"*"};
    table[OpDivide] = {4, u"/"};
    table[OpPower] = {TightestLevel, u"^"};
    return table;
}

constexpr std::array<BinaryOperator, 256> BinaryOperators = makeBinaryOperators();

bool needsQuotes(std::u16string_view sheetName)
{
    for (char16_t unit : sheetName)
        if (!isAsciiLetter(unit) && !isAsciiDigit(unit) && unit != u'_')
            return true;
    return sheetName.empty() || isAsciiDigit(sheetName.front());
}

// Takes the instructions from the last to the first, by the grammar of the compiler read from right
// to left, and writes the text from its end. So each operator is seen before its operands.
class FormulaPrinter {
public:
    explicit FormulaPrinter(CellPosition base) : base_(base) {}

    std::u16string print(const std::uint8_t* code);

private:
    // Nearly every formula has fewer instructions.
    static constexpr int UsualCount = 256;

    bool listInstructions(const std::uint8_t* code);
    void advance();
    void fail();
    bool enterLevel();
    void leaveLevel() { --depth_; }

    void prepend(char16_t unit);
    void prepend(std::u16string_view part);
    void prependUnsigned(std::uint32_t number);
    void prependCell(CellRef plain, CellRef stored);
    void prependCell(CellRef stored) { prependCell(resolve(stored), stored); }
    void prependRange(const RangeRef& stored);
    void prependSheets(const Sheet& first, const Sheet& last);
    CellRef resolve(CellRef stored) const { return vorn::resolve(stored, base_.column, base_.row); }

    void printExpression() { printBinary(LoosestLevel); }
    void printBinary(int level);
    void printUnary();
    void printPrimary();
    void printOperand();
    void printText();
    void printSheetReference();
    void printName();
    void printParentheses();
    void printCall();
    void printArguments(int count);

    const CellPosition base_;
    const std::uint8_t* code_ = nullptr;
    std::uint32_t usualOffsets_[UsualCount];
    GrowArray<std::uint32_t> moreOffsets_;
    const std::uint32_t* offsets_ = usualOffsets_;
    int remaining_ = 0;

    // The instruction that is looked at; OpReturn when none is left.
    std::uint8_t opcode_ = OpReturn;
    const std::uint8_t* operand_ = nullptr;

    char16_t text_[PrintedTextMax];
    int start_ = PrintedTextMax; // of what is written
    int depth_ = 0;
    bool failed_ = false;
};

std::u16string FormulaPrinter::print(const std::uint8_t* code)
{
    if (!listInstructions(code))
        return {};
    advance();
    printExpression();
    prepend(u'=');
    if (failed_)
        return {};
    return {text_ + start_, static_cast<std::size_t>(PrintedTextMax - start_)};
}

bool FormulaPrinter::listInstructions(const std::uint8_t* code)
{
    code_ = code;
    int count = 0;
    for (; *code != OpReturn; code = nextInstruction(code)) {
        if (count < UsualCount)
            usualOffsets_[count] = static_cast<std::uint32_t>(code - code_);
        ++count;
    }
    remaining_ = count;
    if (count <= UsualCount)
        return true;
    if (!moreOffsets_.resize(count))
        return false;
    offsets_ = moreOffsets_.data();
    code = code_;
    for (std::uint32_t& offset : moreOffsets_) {
        offset = static_cast<std::uint32_t>(code - code_);
        code = nextInstruction(code);
    }
    return true;
}

void FormulaPrinter::advance()
{
    if (remaining_ == 0) {
        opcode_ = OpReturn;
        return;
    }
    const std::uint8_t* instruction = code_ + offsets_[--remaining_];
    opcode_ = *instruction;
    operand_ = instruction + 1;
}

// Nothing is printed any more, so what is left is not looked at.
void FormulaPrinter::fail()
{
    raiseError(ErrorTooComplex);
    failed_ = true;
    remaining_ = 0;
    opcode_ = OpReturn;
}

bool FormulaPrinter::enterLevel()
{
    if (depth_ == CompileDepthMax) {
        fail();
        return false;
    }
    ++depth_;
    return true;
}

// --- Writing

void FormulaPrinter::prepend(char16_t unit)
{
    if (start_ == 0)
        fail();
    else
        text_[--start_] = unit;
}

void FormulaPrinter::prepend(std::u16string_view part)
{
    if (part.size() > static_cast<std::size_t>(start_)) {
        fail();
        return;
    }
    start_ -= static_cast<int>(part.size());
    part.copy(text_ + start_, part.size());
}

void FormulaPrinter::prependUnsigned(std::uint32_t number)
{
    do {
        prepend(static_cast<char16_t>(u'0' + number % 10));
        number /= 10;
    } while (number != 0);
}

void FormulaPrinter::prependCell(CellRef plain, CellRef stored)
{
    prependUnsigned(plain.row + 1U);
    if ((stored.column & RowRelative) == 0)
        prepend(u'$');
    prepend(columnName(plain.column));
    if ((stored.column & ColumnRelative) == 0)
        prepend(u'$');
}

void FormulaPrinter::prependRange(const RangeRef& stored)
{
    CellRef last = resolve(stored.last());
    last.row = std::min<std::uint16_t>(last.row, LastRow);
    prependCell(last, stored.last());
    prepend(u':');
    prependCell(stored.first());
}

void FormulaPrinter::prependSheets(const Sheet& first, const Sheet& last)
{
    const std::u16string_view firstName = first.name();
    const std::u16string_view lastName = last.name();
    const bool quoted = needsQuotes(firstName) || needsQuotes(lastName);
    prepend(u'!');
    if (quoted)
        prepend(u'\'');
    if (&first != &last) {
        prepend(lastName);
        prepend(u':');
    }
    prepend(firstName);
    if (quoted)
        prepend(u'\'');
}

// --- The grammar, backwards

void FormulaPrinter::printBinary(int level)
{
    for (; level <= TightestLevel; ++level)
        while (BinaryOperators[opcode_].level == level) {
            const std::u16string_view text = BinaryOperators[opcode_].text;
            advance();
            printBinary(level + 1);
            prepend(text);
        }
    while (opcode_ == OpPercent) {
        advance();
        prepend(u'%');
    }
    printUnary();
}

void FormulaPrinter::printUnary()
{
    if (opcode_ != OpUnaryPlus && opcode_ != OpNegate) {
        printPrimary();
        return;
    }
    if (!enterLevel())
        return;
    const char16_t sign = opcode_ == OpNegate ? u'-' : u'+';
    advance();
    printUnary();
    prepend(sign);
    leaveLevel();
}

void FormulaPrinter::printPrimary()
{
    switch (opcode_) {
    case OpParen:
        printParentheses();
        break;
    case OpCall:
        printCall();
        break;
    default:
        printOperand();
        advance();
        break;
    }
}

// An instruction that is written without others.
void FormulaPrinter::printOperand()
{
    switch (opcode_) {
    case OpPushNumber:
        prepend(generalNumberText(readOperand<double>(operand_)));
        break;
    case OpPushDate:
        prepend(generalDateText(readOperand<double>(operand_)));
        break;
    case OpPushInt16:
        prependUnsigned(readOperand<std::uint16_t>(operand_));
        break;
    case OpPushInt32:
        prependUnsigned(readOperand<std::uint32_t>(operand_));
        break;
    case OpPushError:
        prepend(cellErrorText(*operand_));
        break;
    case OpPushLogical:
        prepend(*operand_ != 0 ? u"true" : u"false");
        break;
    case OpPushText:
        printText();
        break;
    case OpPushCell:
        prependCell(readOperand<CellRef>(operand_));
        break;
    case OpPushRange:
        prependRange(readOperand<RangeRef>(operand_));
        break;
    case OpPushSheetCell:
    case OpPushSheetRange:
        printSheetReference();
        break;
    case OpBadCell:
    case OpBadRange:
    case OpBadSheetCell:
    case OpBadSheetRange:
        prepend(cellErrorText(CellErrorRef));
        break;
    case OpCallName:
        printName();
        break;
    default:
        prepend(u"!!Err");
        break;
    }
}

void FormulaPrinter::printText()
{
    const std::u16string_view text = stringPool->text(readOperand<std::int32_t>(operand_));
    prepend(u'"');
    for (std::size_t i = text.size(); i > 0 && !failed_; --i) {
        prepend(text[i - 1]);
        if (text[i - 1] == u'"')
            prepend(u'"');
    }
    prepend(u'"');
}

// A reference to sheets that are gone is a dead one.
void FormulaPrinter::printSheetReference()
{
    const auto image = readOperand<CellValue>(operand_);
    const Sheet* first = workbook->sheetAt(image.firstSheet);
    const Sheet* last = workbook->sheetAt(image.lastSheet);
    const bool named = image.firstSheet != NoFirstSheet || image.lastSheet != NoLastSheet;
    if (named && (first == nullptr || last == nullptr)) {
        prepend(cellErrorText(CellErrorRef));
        return;
    }
    if (opcode_ == OpPushSheetCell)
        prependCell(image.cellRef());
    else
        prependRange(image.rangeRef());
    if (named)
        prependSheets(*first, *last);
}

void FormulaPrinter::printName()
{
    const int index = readOperand<std::uint16_t>(operand_);
    if (index < workbook->names.size() && workbook->names[index].name != nullptr)
        prepend(workbook->names[index].name);
    else
        prepend(cellErrorText(CellErrorName));
}

void FormulaPrinter::printParentheses()
{
    if (!enterLevel())
        return;
    advance();
    prepend(u')');
    printExpression();
    prepend(u'(');
    leaveLevel();
}

void FormulaPrinter::printCall()
{
    const int row = readOperand<std::uint16_t>(operand_);
    int count = operand_[2];
    if (row == FunctionRowIf && count > CompiledIfMark)
        count -= CompiledIfMark;
    advance();
    if (!enterLevel())
        return;
    prepend(u')');
    printArguments(count);
    prepend(u'(');
    if (row < FunctionRowCount)
        prepend(FunctionTable[row].name);
    leaveLevel();
}

// The jumps of an If stand behind its arguments.
void FormulaPrinter::printArguments(int count)
{
    for (int argument = count; argument > 0 && !failed_; --argument) {
        if (opcode_ == OpJump || opcode_ == OpJumpIfFalse)
            advance();
        printExpression();
        if (argument > 1)
            prepend(localeInfo.list);
    }
}

} // namespace

std::u16string printFormulaCell(const FormulaCell& cell)
{
    return printCode(formulaPool->code(cell.formula), cell.position());
}

std::u16string printCode(const std::uint8_t* code, CellPosition base)
{
    FormulaPrinter printer(base);
    return printer.print(code);
}

} // namespace vorn
