#include "formula/filecode.h"

#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"

namespace vorn {

namespace {

std::int32_t textNumber(std::int32_t index)
{
    return index == -1 ? -1 : stringPool->fileIndex(index);
}

std::uint16_t nameNumber(std::uint16_t index)
{
    const bool isName = index < workbook->names.size();
    return static_cast<std::uint16_t>(isName ? workbook->names[index].fileIndex : -1);
}

void markText(std::int32_t index, FileNumbers& numbers)
{
    if (index != -1 && stringPool->fileIndex(index) == -1)
        stringPool->setFileIndex(index, numbers.texts++);
}

// Numbers the name, if it has no number yet, and puts it on the list of those to look into.
void markName(std::uint16_t index, FileNumbers& numbers, GrowArray<std::uint16_t>& pending)
{
    if (index >= workbook->names.size())
        return;
    DefinedName& name = workbook->names[index];
    if (name.fileIndex != -1)
        return;
    name.fileIndex = numbers.names++;
    if (name.block != nullptr)
        pending.append(index);
}

void markCode(const std::uint8_t* code, FileNumbers& numbers, GrowArray<std::uint16_t>& pending)
{
    for (; *code != OpReturn; code = nextInstruction(code)) {
        if (*code == OpPushText)
            markText(readOperand<std::int32_t>(code + 1), numbers);
        else if (*code == OpCallName)
            markName(readOperand<std::uint16_t>(code + 1), numbers, pending);
    }
}

} // namespace

void byteCodeToFileForm(std::uint8_t* code, NameOperands names)
{
    for (; *code != OpReturn; code = nextInstruction(code)) {
        if (*code == OpPushText)
            writeOperand(code + 1, textNumber(readOperand<std::int32_t>(code + 1)));
        else if (*code == OpCallName && names == NumberNames)
            writeOperand(code + 1, nameNumber(readOperand<std::uint16_t>(code + 1)));
    }
}

void markByteCodeNames(const std::uint8_t* code, FileNumbers& numbers)
{
    // A list and no recursion: names that call one another may be as many as there are names.
    GrowArray<std::uint16_t> pending;
    markCode(code, numbers, pending);
    while (pending.size() != 0) {
        const std::uint16_t index = pending[pending.size() - 1];
        pending.resize(pending.size() - 1);
        markCode(blockCode(workbook->names[index].block), numbers, pending);
    }
}

} // namespace vorn
