#include "formula/checkcode.h"

#include "core/pool.h"
#include "formula/bytecode.h"
#include "functions/table.h"

#include <algorithm>
#include <array>
#include <bitset>

namespace vorn {

namespace {

// Stands for the empty text, which has no number.
constexpr std::uint32_t NoText = UINT32_MAX;

// Most instructions of a formula are sound whatever their operand is.
constexpr std::array<bool, 256> findHarmless()
{
    std::array<bool, 256> table{};
    std::fill_n(table.begin(), OpCodeCount, true);
    for (const OpCode opcode : {OpCall, OpPushValue, OpPushText, OpCallName, OpJump, OpJumpIfFalse,
                                OpStoreVariable, OpLoadVariable})
        table[opcode] = false;
    return table;
}
constexpr std::array<bool, 256> IsHarmless = findHarmless();

class CodeCheck {
public:
    CodeCheck(const std::uint8_t* code, std::uint32_t length) : code_(code), length_(length) {}

    bool isSound();
    const CodeNeeds& needs() const { return needs_; }

private:
    bool isSoundOperand(const std::uint8_t* instruction);
    bool jumpsAreSound() const;
    void needText(std::uint32_t number);
    void needName(std::uint32_t number);

    const std::uint8_t* const code_;
    const std::uint32_t length_;
    CodeNeeds needs_;
    bool jumps_ = false;
};

// A call that a handler can rely on: it pops as many arguments as its row allows.
bool isSoundCall(int row, int count)
{
    if (row >= FirstActionRow)
        return false;
    const FunctionRow& function = FunctionTable[row];
    if (row == FunctionRowIf && count > CompiledIfMark)
        count -= CompiledIfMark;
    return count >= function.minArguments && count <= function.maxArguments;
}

bool isVolatileRow(int row)
{
    return row == FunctionRowRand || row == FunctionRowNow || row == FunctionRowToday;
}

// A value that is nothing but its bytes.
bool isPlainValue(const CellValue& value)
{
    switch (value.tag) {
    case TagBlank:
    case TagLogical:
    case TagError:
    case TagNumber:
    case TagInteger:
    case TagDateTime:
        return true;
    default:
        return false;
    }
}

void CodeCheck::needText(std::uint32_t number)
{
    if (number != NoText)
        needs_.texts = std::max(needs_.texts, number + 1);
}

void CodeCheck::needName(std::uint32_t number)
{
    needs_.names = std::max(needs_.names, number + 1);
}

// Notes what an instruction needs that is not harmless, and refuses those that no formula has.
bool CodeCheck::isSoundOperand(const std::uint8_t* instruction)
{
    const std::uint8_t* operand = instruction + 1;
    switch (*instruction) {
    case OpCall:
        needs_.isVolatile = needs_.isVolatile || isVolatileRow(readOperand<std::uint16_t>(operand));
        return isSoundCall(readOperand<std::uint16_t>(operand), operand[2]);
    case OpPushValue:
        return isPlainValue(readOperand<CellValue>(operand));
    case OpPushText:
        needText(readOperand<std::uint32_t>(operand));
        return true;
    case OpCallName:
        needName(readOperand<std::uint16_t>(operand));
        return true;
    case OpJump:
    case OpJumpIfFalse:
        jumps_ = true;
        return true;
    default:
        return false;
    }
}

bool CodeCheck::isSound()
{
    if (length_ > CheckedCodeMax)
        return false;
    for (std::uint32_t at = 0; at < length_;) {
        const std::uint8_t opcode = code_[at];
        if (opcode == OpReturn)
            return at + 1 == length_ && (!jumps_ || jumpsAreSound());
        const std::uint32_t size = 1U + OperandSizeTable.sizes[opcode];
        if (size >= length_ - at || (!IsHarmless[opcode] && !isSoundOperand(code_ + at)))
            return false;
        at += size;
    }
    return false;
}

// Do all jumps lead forward to an instruction? Asked once all instructions are known to be whole.
bool CodeCheck::jumpsAreSound() const
{
    std::bitset<CheckedCodeMax> starts;
    for (std::uint32_t at = 0; at < length_;
         at += 1U + static_cast<unsigned>(operandSize(code_[at])))
        starts.set(at);
    for (const std::uint8_t* at = code_; *at != OpReturn; at = nextInstruction(at)) {
        if (*at != OpJump && *at != OpJumpIfFalse)
            continue;
        const std::ptrdiff_t place = at - code_;
        const std::ptrdiff_t target = place + jumpOrigin(*at) + readOperand<std::int16_t>(at + 1);
        if (target <= place || target >= static_cast<std::ptrdiff_t>(length_) ||
            !starts.test(static_cast<std::size_t>(target)))
            return false;
    }
    return true;
}

} // namespace

bool isSoundFormulaCode(const std::uint8_t* code, std::uint32_t length, CodeNeeds& needs)
{
    CodeCheck check(code, length);
    if (!check.isSound())
        return false;
    needs.texts = std::max(needs.texts, check.needs().texts);
    needs.names = std::max(needs.names, check.needs().names);
    needs.isVolatile = needs.isVolatile || check.needs().isVolatile;
    return true;
}

bool byteCodeFromFileForm(std::uint8_t* code, const FileNumberMaps& maps)
{
    for (std::uint8_t* at = code; *at != OpReturn; at = nextInstruction(at)) {
        if (*at == OpPushText) {
            auto text = readOperand<std::int32_t>(at + 1);
            if (maps.texts != nullptr && text != -1)
                text = maps.texts[text];
            writeOperand(at + 1, stringPool->addRef(text));
        } else if (*at == OpCallName && maps.names != nullptr) {
            const std::int32_t name = maps.names[readOperand<std::uint16_t>(at + 1)];
            writeOperand(at + 1, static_cast<std::uint16_t>(name));
        }
    }
    return isVolatileCode(code);
}

} // namespace vorn
