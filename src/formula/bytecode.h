// Byte code: the one form of every formula, defined name, task and undo program.
//
// Shape:  a block is a 32-bit little-endian count of bytes, then that many bytes of instructions,
//         of which the last is OpReturn. An instruction is one opcode byte and its operand, whose
//         size the opcode gives. Operands are little-endian and unaligned.
//
// Sheet reference image, 12 bytes, the operand of opcodes 15, 16, 29 and 30:
//   offset size meaning
//   0      1    8 for a cell, 9 for a range
//   1      1    book, 0
//   2      1    first sheet
//   3      1    last sheet
//   4      8    a CellRef and 4 bytes of filler, or a RangeRef
// It is the same as a CellValue of tag 8 or 9, but the references in it are still relative.
//
// Errors: ErrorMemory, sticky.
#pragma once

#include "core/value.h"

#include <cassert>
#include <cstdint>
#include <cstring>

namespace vorn {

enum OpCode : std::uint8_t {
#define OPCODE(number, name, operandBytes) name = number,
#include "formula/opcodes.def"
#undef OPCODE
};

constexpr int OpCodeCount = 40;

// Operand bytes of an opcode; 255 for a number that is no opcode.
struct OperandSizes {
    std::uint8_t sizes[256];
};
extern const OperandSizes OperandSizeTable;

inline int operandSize(std::uint8_t opcode)
{
    return OperandSizeTable.sizes[opcode];
}

// The instruction behind this one.
inline const std::uint8_t* nextInstruction(const std::uint8_t* instruction)
{
    return instruction + 1 + operandSize(*instruction);
}
inline std::uint8_t* nextInstruction(std::uint8_t* instruction)
{
    return instruction + 1 + operandSize(*instruction);
}

// Operands, copied in and out.
template <typename Operand>
Operand readOperand(const std::uint8_t* bytes)
{
    Operand value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}
template <typename Operand>
void writeOperand(std::uint8_t* bytes, Operand value)
{
    std::memcpy(bytes, &value, sizeof value);
}

// The instructions of a block, and how many bytes they are with the closing OpReturn.
inline const std::uint8_t* blockCode(const void* block)
{
    return static_cast<const std::uint8_t*>(block) + 4;
}
inline std::uint32_t blockLength(const void* block)
{
    return readOperand<std::uint32_t>(static_cast<const std::uint8_t*>(block));
}

// Added to the count of arguments in the call that closes an If made of jumps. The call is there
// for the printer; it only runs where the condition is false and there is no second value.
constexpr int CompiledIfMark = 10;

// Bytes from a jump instruction to the place that its distance is measured from: for one of them
// its end, for the other a byte behind its end.
constexpr int jumpOrigin(std::uint8_t opcode)
{
    return opcode == OpJump ? 4 : 3;
}

// What a jump instruction at `jump` leads to.
inline const std::uint8_t* jumpTarget(const std::uint8_t* jump)
{
    return jump + jumpOrigin(*jump) + readOperand<std::int16_t>(jump + 1);
}

// Collects instructions, whole ones. It takes over the values that OpPushValue holds, and hands
// them on to the block that is finished; whatever becomes of the code, whoever emits them need not
// look. Once memory was short it only counts, and ErrorMemory stands.
class ByteCodeWriter {
public:
    ByteCodeWriter() = default;
    ~ByteCodeWriter() { clear(); }
    ByteCodeWriter(const ByteCodeWriter&) = delete;
    ByteCodeWriter& operator=(const ByteCodeWriter&) = delete;

    // Bytes written so far: the position of the next instruction.
    std::uint32_t size() const { return size_; }

    void append(const void* bytes, std::uint32_t count);

    // Overwrites `count` bytes that were written before.
    void patch(std::uint32_t position, const void* bytes, std::uint32_t count);

    // Drops what was written and begins anew. The texts of OpPushText stay in the pool then: they
    // are those of a formula that did not compile.
    void clear();

    // Gives the code up, as if memory had been short: for a part of it that could not be made.
    void abandon();

    void emit(OpCode opcode)
    {
        assert(operandSize(opcode) == 0);
        append(&opcode, 1);
    }
    template <typename Operand>
    void emit(OpCode opcode, Operand operand)
    {
        assert(sizeof operand == operandSize(opcode));
        std::uint8_t bytes[1 + sizeof operand];
        bytes[0] = opcode;
        std::memcpy(bytes + 1, &operand, sizeof operand);
        append(bytes, sizeof bytes);
    }
    void emitCall(int row, int argumentCount);

    // Closes the code with OpReturn and copies it into a block of the private heap, which the
    // caller owns. Null, with ErrorMemory, if that is refused. The writer is empty afterwards.
    std::uint8_t* finish();

    // Closes the code with OpReturn and enters it in the FormulaPool with one owner; -1 with
    // ErrorMemory if that is refused. The writer is empty afterwards.
    std::int32_t finishInPool();

private:
    bool grow(std::uint32_t count);
    bool close();
    void end(bool made);
    void freeBuffer();

    // The first four bytes of the buffer are kept for the block's count.
    std::uint8_t* buffer_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
    bool failed_ = false;
};

// Takes one more owner for every text that the code holds: run on a copy of a block. The code holds
// no formula; only undo programs do, and nobody copies them.
void addByteCodeReferences(const std::uint8_t* code);

// Gives up what the code holds, texts and records of formulas: run before a block is freed.
void releaseByteCodeReferences(const std::uint8_t* code);

// Does the code call a function whose value changes by itself (Rand, Now, Today)?
bool isVolatileCode(const std::uint8_t* code);

} // namespace vorn
