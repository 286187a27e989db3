#include "formula/bytecode.h"

#include "core/error.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/pool.h"
#include "functions/table.h"

#include <algorithm>
#include <cassert>

namespace vorn {
namespace {

// The least that a buffer grows by: nearly every formula fits into its first room. An undo program
// can be a million times as long, and grows by half of what it has.
constexpr std::uint32_t GrowBytes = 2048;

// The count of a block, which stands in front of its instructions.
constexpr std::uint32_t CountBytes = 4;

constexpr OperandSizes makeOperandSizes()
{
    OperandSizes table{};
    std::fill(std::begin(table.sizes), std::end(table.sizes), std::uint8_t{255});
#define OPCODE(number, name, operandBytes) table.sizes[number] = operandBytes;
#include "formula/opcodes.def"
#undef OPCODE
    return table;
}

CellValue heldValue(const std::uint8_t* instruction)
{
    return readOperand<CellValue>(instruction + 1);
}

// The text that an instruction holds, -1 for none.
std::int32_t heldText(const std::uint8_t* instruction)
{
    if (*instruction == OpPushText)
        return readOperand<std::int32_t>(instruction + 1);
    if (*instruction == OpPushValue && heldValue(instruction).tag == TagText)
        return heldValue(instruction).textIndex();
    return -1;
}

void releaseInstruction(const std::uint8_t* instruction)
{
    stringPool->release(heldText(instruction));
    if (*instruction == OpPushValue && heldValue(instruction).tag == TagFormula)
        deleteFormulaCell(heldValue(instruction).formula());
}

// For code that never became a block.
void releaseInstructions(const std::uint8_t* instruction, std::uint32_t bytes,
                         bool (*isReleased)(std::uint8_t opcode))
{
    const std::uint8_t* end = instruction + bytes;
    for (; instruction < end; instruction = nextInstruction(instruction)) {
        if (isReleased(*instruction))
            releaseInstruction(instruction);
    }
}

bool isAny(std::uint8_t)
{
    return true;
}

bool isPushValue(std::uint8_t opcode)
{
    return opcode == OpPushValue;
}

} // namespace

constinit const OperandSizes OperandSizeTable = makeOperandSizes();

bool ByteCodeWriter::grow(std::uint32_t count)
{
    const std::uint32_t capacity = capacity_ + std::max({count, GrowBytes, capacity_ / 2});
    void* block = blockResizer(buffer_, CountBytes + capacity);
    if (block == nullptr) {
        abandon();
        return false;
    }
    buffer_ = static_cast<std::uint8_t*>(block);
    capacity_ = capacity;
    return true;
}

void ByteCodeWriter::append(const void* bytes, std::uint32_t count)
{
    if (!failed_ && (size_ + count <= capacity_ || grow(count)))
        std::memcpy(buffer_ + CountBytes + size_, bytes, count);
    else
        releaseInstructions(static_cast<const std::uint8_t*>(bytes), count, isAny);
    size_ += count;
}

void ByteCodeWriter::patch(std::uint32_t position, const void* bytes, std::uint32_t count)
{
    assert(position + count <= size_);
    if (!failed_)
        std::memcpy(buffer_ + CountBytes + position, bytes, count);
}

void ByteCodeWriter::freeBuffer()
{
    if (buffer_ != nullptr)
        blockResizer(buffer_, 0);
    buffer_ = nullptr;
    capacity_ = 0;
}

// The texts of a formula that was given up stay in the pool.
void ByteCodeWriter::clear()
{
    if (buffer_ != nullptr)
        releaseInstructions(buffer_ + CountBytes, size_, isPushValue);
    freeBuffer();
    size_ = 0;
    failed_ = false;
}

void ByteCodeWriter::abandon()
{
    if (buffer_ != nullptr)
        releaseInstructions(buffer_ + CountBytes, size_, isAny);
    freeBuffer();
    failed_ = true;
    raiseError(ErrorMemory);
}

void ByteCodeWriter::emitCall(int row, int argumentCount)
{
    assert(row >= 0 && row < FunctionRowCount && argumentCount >= 0 && argumentCount <= 255);
    std::uint8_t bytes[4];
    bytes[0] = OpCall;
    writeOperand(bytes + 1, static_cast<std::uint16_t>(row));
    bytes[3] = static_cast<std::uint8_t>(argumentCount);
    append(bytes, sizeof bytes);
}

bool ByteCodeWriter::close()
{
    emit(OpReturn);
    if (!failed_)
        writeOperand(buffer_, size_);
    return !failed_;
}

// Behind a block that was made, which owns now what the code holds; or behind one that was not.
void ByteCodeWriter::end(bool made)
{
    if (made)
        freeBuffer();
    else
        abandon();
    clear();
}

std::uint8_t* ByteCodeWriter::finish()
{
    void* block = close() ? heapAlloc(CountBytes + size_) : nullptr;
    if (block != nullptr)
        std::memcpy(block, buffer_, CountBytes + size_);
    end(block != nullptr);
    return static_cast<std::uint8_t*>(block);
}

std::int32_t ByteCodeWriter::finishInPool()
{
    const std::int32_t index = close() ? formulaPool->add(buffer_, CountBytes + size_, 1) : -1;
    end(index != -1);
    return index;
}

void addByteCodeReferences(const std::uint8_t* code)
{
    for (; *code != OpReturn; code = nextInstruction(code)) {
        assert(*code != OpPushValue || heldValue(code).tag != TagFormula);
        stringPool->addRef(heldText(code));
    }
}

void releaseByteCodeReferences(const std::uint8_t* code)
{
    for (; *code != OpReturn; code = nextInstruction(code))
        releaseInstruction(code);
}

bool isVolatileCode(const std::uint8_t* code)
{
    for (; *code != OpReturn; code = nextInstruction(code)) {
        if (*code != OpCall)
            continue;
        const int row = readOperand<std::uint16_t>(code + 1);
        if (row == FunctionRowRand || row == FunctionRowNow || row == FunctionRowToday)
            return true;
    }
    return false;
}

} // namespace vorn
