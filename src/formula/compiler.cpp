#include "formula/compiler.h"

#include "core/error.h"
#include "core/pool.h"
#include "formula/lexer.h"
#include "functions/table.h"
#include "numfmt/locale.h"

#include <array>
#include <limits>

namespace vorn {
namespace {

// Added to the count of a compiled If, whose call is there for the printer and is mostly jumped
// over.

// How strongly a binary operator binds: 1 is the loosest. All of them take from the left.
struct BinaryOperator {
    int level = 0; // 0 for a token that is no such operator
    OpCode opcode = OpReturn;
};

constexpr std::array<BinaryOperator, TokenDo + 1> makeBinaryOperators()
{
    std::array<BinaryOperator, TokenDo + 1> table{};
    table[TokenEqual] = {1, OpEqual};
    table[TokenLess] = {1, OpLess};
    table[TokenGreater] = {1, OpGreater};
    table[TokenLessEqual] = {1, OpLessEqual};
    table[TokenGreaterEqual] = {1, OpGreaterEqual};
    table[TokenNotEqual] = {1, OpNotEqual};
    table[TokenConcat] = {2, OpConcat};
    table[TokenPlus] = {3, OpAdd};
    table[TokenMinus] = {3, OpSubtract};
    table[TokenMultiply] = {4, OpMultiply};
    table[TokenDivide] = {4, OpDivide};
    table[TokenPower] = {5, OpPower};
    return table;
}

constexpr std::array<BinaryOperator, TokenDo + 1> BinaryOperators = makeBinaryOperators();

class FormulaCompiler {
public:
    FormulaCompiler(ByteCodeWriter& writer, CompileMode mode) : writer_(writer), mode_(mode) {}

    int compile(std::u16string_view text, CellPosition base);

private:
    // Where the jumps of an If stand: behind its condition and behind each of its values.
    struct IfJumps {
        std::uint32_t positions[3];
    };

    TokenKind token() const { return lexer_.kind; }
    void advance();
    void noteFailure();
    void fail(ErrorCode code);
    void require(TokenKind kind, ErrorCode code);
    bool enterLevel();
    void leaveLevel() { --depth_; }

    void compileExpression() { compileBinary(1); }
    void compileBinary(int level);
    void compilePercent();
    void compileUnary();
    void compilePrimary();
    void compileParentheses();
    void compileName();
    void compileSheetReference();
    void compileCall();
    int compileArguments(IfJumps* jumps);
    void emitIf(const IfJumps& jumps, int argumentCount);
    void emitText();
    void emitIndex(OpCode opcode, int index);
    void markJump(IfJumps& jumps, int argument);
    void patchJump(OpCode opcode, std::uint32_t jump, std::uint32_t target);

    ByteCodeWriter& writer_;
    CompileMode mode_;
    FormulaLexer lexer_;
    int depth_ = 0;
    int failureOffset_ = -1;
};

int FormulaCompiler::compile(std::u16string_view text, CellPosition base)
{
    lexer_.reset(text, base);
    advance();
    compileExpression();
    if (token() != TokenEndOfText)
        fail(ErrorToken);
    noteFailure();
    return failureOffset_;
}

void FormulaCompiler::advance()
{
    noteFailure();
    lexer_.next();
    noteFailure();
}

// The lexer goes on behind a failure, so the place is kept the first time that an error is seen.
void FormulaCompiler::noteFailure()
{
    if (errorStands() && failureOffset_ < 0)
        failureOffset_ = static_cast<int>(lexer_.tokenStart);
}

void FormulaCompiler::fail(ErrorCode code)
{
    raiseError(code);
    noteFailure();
}

// Skips a token that must stand here.
void FormulaCompiler::require(TokenKind kind, ErrorCode code)
{
    if (token() != kind)
        fail(code);
    advance();
}

bool FormulaCompiler::enterLevel()
{
    if (depth_ == CompileDepthMax) {
        fail(ErrorTooComplex);
        return false;
    }
    ++depth_;
    return true;
}

// Operators that bind at least as strongly as `level`.
void FormulaCompiler::compileBinary(int level)
{
    compilePercent();
    while (BinaryOperators[token()].level >= level) {
        const BinaryOperator binary = BinaryOperators[token()];
        advance();
        compileBinary(binary.level + 1);
        writer_.emit(binary.opcode);
    }
}

void FormulaCompiler::compilePercent()
{
    compileUnary();
    for (; token() == TokenPercent; advance())
        writer_.emit(OpPercent);
}

void FormulaCompiler::compileUnary()
{
    const TokenKind sign = token();
    if (sign != TokenPlus && sign != TokenMinus) {
        compilePrimary();
        return;
    }
    if (!enterLevel())
        return;
    advance();
    compileUnary();
    leaveLevel();
    writer_.emit(sign == TokenPlus ? OpUnaryPlus : OpNegate);
}

void FormulaCompiler::compilePrimary()
{
    switch (token()) {
    case TokenNumber:
        writer_.emit(OpPushNumber, lexer_.number);
        break;
    case TokenLogical:
        writer_.emit(OpPushLogical, static_cast<std::uint8_t>(lexer_.logical));
        break;
    case TokenDate:
        writer_.emit(OpPushDate, lexer_.number);
        break;
    case TokenError:
        writer_.emit(OpPushError, static_cast<std::uint16_t>(lexer_.error));
        break;
    case TokenString:
        emitText();
        break;
    case TokenCell:
        writer_.emit(OpPushCell, lexer_.cell());
        break;
    case TokenRange:
        writer_.emit(OpPushRange, lexer_.range);
        break;
    case TokenLeftParen:
        compileParentheses();
        return;
    case TokenName:
        compileName();
        return;
    case TokenEndOfText:
        fail(ErrorEndOfFormula);
        return;
    case TokenRightParen:
        fail(ErrorRedundantParen);
        return;
    case TokenUnknownName:
        fail(ErrorUnknownName);
        return;
    default:
        fail(ErrorToken);
        return;
    }
    advance();
}

void FormulaCompiler::compileParentheses()
{
    if (!enterLevel())
        return;
    advance();
    compileExpression();
    leaveLevel();
    require(TokenRightParen, ErrorRightParen);
    writer_.emit(OpParen);
}

void FormulaCompiler::compileName()
{
    switch (lexer_.nameKind) {
    case NameFunction:
        compileCall();
        return;
    case NameSheet:
        compileSheetReference();
        return;
    case NameDefined:
        emitIndex(OpCallName, lexer_.nameIndex);
        break;
    case NameVariable:
        if (mode_ == CompileTask)
            emitIndex(OpLoadVariable, lexer_.nameIndex);
        else
            fail(ErrorToken);
        break;
    }
    advance();
}

void FormulaCompiler::compileSheetReference()
{
    CellValue image;
    image.firstSheet = static_cast<std::uint8_t>(lexer_.firstSheet);
    image.lastSheet = static_cast<std::uint8_t>(lexer_.lastSheet);
    advance();
    require(TokenBang, ErrorBangExpected);
    if (token() == TokenCell) {
        image.put(TagSheetCellRef, lexer_.cell());
        writer_.emit(OpPushSheetCell, image);
    } else if (token() == TokenRange) {
        image.put(TagSheetRangeRef, lexer_.range);
        writer_.emit(OpPushSheetRange, image);
    } else {
        fail(ErrorReferenceExpected);
    }
    advance();
}

void FormulaCompiler::compileCall()
{
    const int row = lexer_.nameIndex;
    if (mode_ != CompileTask && row >= FirstActionRow) {
        fail(ErrorUnknownName);
        return;
    }
    const FunctionRow& function = FunctionTable[row];
    advance();
    if (token() != TokenLeftParen) {
        fail(ErrorLeftParen);
        return;
    }
    if (!enterLevel())
        return;
    advance();
    IfJumps jumps{};
    const int count = compileArguments(row == FunctionRowIf ? &jumps : nullptr);
    leaveLevel();
    if (count < function.minArguments)
        fail(ErrorFewArguments);
    if (count > function.maxArguments)
        fail(ErrorManyArguments);
    if (token() != TokenRightParen)
        fail(ErrorRightParen);
    if (!errorStands() && row == FunctionRowIf)
        emitIf(jumps, count);
    else if (!errorStands())
        writer_.emitCall(row, count);
    advance();
}

// The arguments of a call, up to what ends them; answers how many. With `jumps`, those of an If:
// each is followed by the room of a jump.
int FormulaCompiler::compileArguments(IfJumps* jumps)
{
    if (token() == TokenRightParen)
        return 0;
    int count = 0;
    for (;;) {
        // Here a closing parenthesis is a missing argument and not a redundant one.
        if (token() == TokenRightParen)
            fail(ErrorToken);
        compileExpression();
        if (jumps != nullptr)
            markJump(*jumps, count);
        ++count;
        if (token() != TokenListSeparator)
            return count;
        advance();
    }
}

void FormulaCompiler::markJump(IfJumps& jumps, int argument)
{
    if (argument >= static_cast<int>(std::size(jumps.positions)))
        return;
    jumps.positions[argument] = writer_.size();
    writer_.emit(argument == 0 ? OpJumpIfFalse : OpJump, std::int16_t{0});
}

// A false condition leads behind the first value's jump: to the second value, or, where there is
// none, to the call, which then gives FALSE. Each value's jump leads behind the call.
void FormulaCompiler::emitIf(const IfJumps& jumps, int argumentCount)
{
    writer_.emitCall(FunctionRowIf, argumentCount + CompiledIfMark);
    const int jumpLength = 1 + operandSize(OpJump);
    patchJump(OpJumpIfFalse, jumps.positions[0],
              jumps.positions[1] + static_cast<std::uint32_t>(jumpLength));
    for (int value = 1; value < argumentCount; ++value)
        patchJump(OpJump, jumps.positions[value], writer_.size());
}

void FormulaCompiler::patchJump(OpCode opcode, std::uint32_t jump, std::uint32_t target)
{
    const std::int64_t distance = std::int64_t{target} - jump - jumpOrigin(opcode);
    if (distance > std::numeric_limits<std::int16_t>::max()) {
        fail(ErrorTooComplex);
        return;
    }
    const auto operand = static_cast<std::int16_t>(distance);
    writer_.patch(jump + 1, &operand, sizeof operand);
}

void FormulaCompiler::emitText()
{
    writer_.emit(OpPushText, stringPool->addText(lexer_.literalText()));
}

// Names and variables beyond what the operand can tell cannot be used.
void FormulaCompiler::emitIndex(OpCode opcode, int index)
{
    if (index > std::numeric_limits<std::uint16_t>::max())
        fail(ErrorTooComplex);
    writer_.emit(opcode, static_cast<std::uint16_t>(index));
}

} // namespace

int compileText(std::u16string_view text, ByteCodeWriter& writer, CellPosition base,
                CompileMode mode)
{
    if (!text.empty() && text.front() == u'=')
        text.remove_prefix(1);
    const char16_t decimal = localeInfo.decimal;
    const char16_t list = localeInfo.list;
    // A task reads the same in every locale; a formula does not.
    if (mode == CompileTask) {
        localeInfo.decimal = u'.';
        localeInfo.list = u',';
    }
    FormulaCompiler compiler(writer, mode);
    const int failure = compiler.compile(text, base);
    localeInfo.decimal = decimal;
    localeInfo.list = list;
    return failure;
}

} // namespace vorn
