// Byte code as a test writes it down: "01:000000000000f03f 0a 00". Each instruction is its opcode
// in hexadecimal and, behind a colon, its operand's bytes in the order in which they stand.
#pragma once

#include "core/reference.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// The instructions up to the closing OpReturn, which is written too.
std::string codeText(const std::uint8_t* code);

// The bytes that such a text stands for. Colons and blanks have no meaning of their own.
std::vector<std::uint8_t> codeBytes(std::string_view text);

// What a compile gave: the code as text, empty after a failure.
struct Compiled {
    std::string code;
    int error = 0;
    int offset = -1;
};

// Compiles a formula for a cell and takes the sticky error away again.
Compiled compileFormula(std::u16string_view text, CellPosition base = {});

// Compiles, prints and answers the text; "" after a failure of either.
std::u16string compileAndPrint(std::u16string_view text, CellPosition base = {});

} // namespace vorn
