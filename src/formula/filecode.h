// Byte code on its way into a file. A file has numbers of its own for texts and names, which stand
// in the scratch words of the pool's entries and of the names while a save goes on.
//
// Errors: ErrorMemory, sticky.
#pragma once

#include <cstdint>

namespace vorn {

// A whole document keeps the indices of its names; a part of one numbers the names that it uses.
enum NameOperands { KeepNameIndices, NumberNames };

// Turns the operands of a block's instructions into the numbers of the file being written. `code`
// is a copy: the document's own would be of no use afterwards. The empty text stays -1.
void byteCodeToFileForm(std::uint8_t* code, NameOperands names);

// The numbers that have been given away so far.
struct FileNumbers {
    std::int32_t texts = 0;
    std::int32_t names = 0;
};

// Numbers the texts and names that the code uses, and those that the definitions of these names use
// in turn, as far as they have no number yet. A name that comes back to itself is no trouble.
void markByteCodeNames(const std::uint8_t* code, FileNumbers& numbers);

} // namespace vorn
