#include "formula/bytecode.h"

#include "core/error.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/pool.h"
#include "functions/table.h"

#include <algorithm>
#include <cassert>

namespace vorn {
namespace {

// What a buffer grows by: nearly every formula fits into its first room.
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

} // namespace

constinit const OperandSizes OperandSizeTable = makeOperandSizes();

bool ByteCodeWriter::grow(std::uint32_t count)
{
    const std::uint32_t capacity = capacity_ + std::max(count, GrowBytes);
    void* block = blockResizer(buffer_, CountBytes + capacity);
    if (block == nullptr) {
        blockResizer(buffer_, 0);
        buffer_ = nullptr;
        capacity_ = 0;
        failed_ = true;
        raiseError(ErrorMemory);
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
    size_ += count;
}

void ByteCodeWriter::patch(std::uint32_t position, const void* bytes, std::uint32_t count)
{
    assert(position + count <= size_);
    if (!failed_)
        std::memcpy(buffer_ + CountBytes + position, bytes, count);
}

void ByteCodeWriter::clear()
{
    if (buffer_ != nullptr)
        blockResizer(buffer_, 0);
    buffer_ = nullptr;
    size_ = 0;
    capacity_ = 0;
    failed_ = false;
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

std::uint8_t* ByteCodeWriter::finish()
{
    void* block = close() ? heapAlloc(CountBytes + size_) : nullptr;
    if (block != nullptr)
        std::memcpy(block, buffer_, CountBytes + size_);
    clear();
    return static_cast<std::uint8_t*>(block);
}

std::int32_t ByteCodeWriter::finishInPool()
{
    const std::int32_t index = close() ? formulaPool->add(buffer_, CountBytes + size_, 1) : -1;
    clear();
    return index;
}

namespace {

// The text that an instruction holds, -1 for none.
std::int32_t heldText(const std::uint8_t* instruction)
{
    if (*instruction == OpPushText)
        return readOperand<std::int32_t>(instruction + 1);
    if (*instruction == OpPushValue) {
        const auto value = readOperand<CellValue>(instruction + 1);
        if (value.tag == TagText)
            return value.textIndex();
    }
    return -1;
}

} // namespace

void addByteCodeReferences(const std::uint8_t* code)
{
    for (; *code != OpReturn; code = nextInstruction(code))
        stringPool->addRef(heldText(code));
}

void releaseByteCodeReferences(const std::uint8_t* code)
{
    for (; *code != OpReturn; code = nextInstruction(code))
        stringPool->release(heldText(code));
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
