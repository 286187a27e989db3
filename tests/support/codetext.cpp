#include "support/codetext.h"

#include "core/error.h"
#include "core/heap.h"
#include "formula/bytecode.h"
#include "formula/compiler.h"
#include "formula/printer.h"

namespace vorn {
namespace {

void appendHex(std::string& text, std::uint8_t byte)
{
    static constexpr char digits[] = "0123456789abcdef";
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

int digitValue(char digit)
{
    return digit <= '9' ? digit - '0' : digit - 'a' + 10;
}

} // namespace

std::string codeText(const std::uint8_t* code)
{
    std::string text;
    for (;; code = nextInstruction(code)) {
        appendHex(text, *code);
        if (operandSize(*code) != 0)
            text += ':';
        for (int i = 0; i < operandSize(*code); ++i)
            appendHex(text, code[1 + i]);
        if (*code == OpReturn)
            return text;
        text += ' ';
    }
}

std::vector<std::uint8_t> codeBytes(std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    bool upper = true;
    for (char digit : text) {
        if (digit == ' ' || digit == ':')
            continue;
        if (upper)
            bytes.push_back(static_cast<std::uint8_t>(digitValue(digit) << 4));
        else
            bytes.back() = static_cast<std::uint8_t>(bytes.back() + digitValue(digit));
        upper = !upper;
    }
    return bytes;
}

Compiled compileFormula(std::u16string_view text, CellPosition base)
{
    Compiled compiled;
    ByteCodeWriter writer;
    compiled.offset = compileText(text, writer, base, CompileFormula);
    std::uint8_t* block = errorStands() ? nullptr : writer.finish();
    compiled.error = errorState.code;
    clearError();
    if (block != nullptr)
        compiled.code = codeText(blockCode(block));
    heapFree(block);
    return compiled;
}

std::u16string compileAndPrint(std::u16string_view text, CellPosition base)
{
    ByteCodeWriter writer;
    compileText(text, writer, base, CompileFormula);
    if (errorStands())
        return {};
    std::uint8_t* block = writer.finish();
    std::u16string printed = printCode(blockCode(block), base);
    heapFree(block);
    return printed;
}

} // namespace vorn
