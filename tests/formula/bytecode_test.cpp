#include "formula/bytecode.h"

#include "core/error.h"
#include "core/formulacell.h"
#include "core/heap.h"
#include "core/memory.h"
#include "core/pool.h"
#include "functions/table.h"
#include "support/codetext.h"
#include "support/rawcells.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>

namespace vorn {
namespace {

int growthsUntilRefusal = 0;

void* refuseOneGrowth(void* block, std::size_t bytes)
{
    return bytes != 0 && --growthsUntilRefusal == 0 ? nullptr : resizeBlock(block, bytes);
}

TEST(ByteCode, givesEachOpcodeItsOperandSize)
{
    const int sizes[OpCodeCount] = {0, 8,  3,  12, 2, 0, 0, 0, 0, 0, 0, 4, 4, 4,
                                    8, 12, 12, 0,  0, 0, 0, 0, 0, 0, 0, 0, 0, 2,
                                    1, 12, 12, 4,  8, 8, 2, 2, 2, 0, 2, 2};
    for (int opcode = 0; opcode < OpCodeCount; ++opcode)
        EXPECT_EQ(operandSize(static_cast<std::uint8_t>(opcode)), sizes[opcode]) << opcode;
    for (int opcode = OpCodeCount; opcode < 256; ++opcode)
        EXPECT_EQ(operandSize(static_cast<std::uint8_t>(opcode)), 255) << opcode;
}

TEST(ByteCode, measuresTheTwoJumpsFromDifferentPlaces)
{
    const std::uint8_t jump[8] = {OpJump, 3, 0};
    const std::uint8_t condition[8] = {OpJumpIfFalse, 3, 0};
    const std::uint8_t back[8] = {OpJump, 0xff, 0xff};
    EXPECT_EQ(jumpTarget(jump), jump + 7);
    EXPECT_EQ(jumpTarget(condition), condition + 6);
    EXPECT_EQ(jumpTarget(back), back + 3);
}

TEST(ByteCodeWriter, closesABlockBehindItsCount)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpPushNumber, 1.0);
    writer.emit(OpNegate);
    writer.emitCall(188, 30);
    EXPECT_EQ(writer.size(), 14U);
    std::uint8_t* block = writer.finish();
    ASSERT_NE(block, nullptr);
    const std::uint8_t expected[] = {15, 0,    0,    0,  1, 0,   0, 0,  0, 0,
                                     0,  0xf0, 0x3f, 10, 2, 188, 0, 30, 0};
    EXPECT_EQ(std::string(block, block + sizeof expected),
              std::string(expected, expected + sizeof expected));
    EXPECT_EQ(blockLength(block), 15U);
    EXPECT_EQ(blockCode(block), block + 4);
    EXPECT_EQ(writer.size(), 0U);
    heapFree(block);
}

TEST(ByteCodeWriter, entersABlockInThePoolWithOneOwner)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpPushLogical, std::uint8_t{1});
    const std::int32_t index = writer.finishInPool();
    ASSERT_TRUE(formulaPool->isLive(index));
    EXPECT_EQ(formulaPool->refCount(index), 1);
    EXPECT_EQ(codeText(formulaPool->code(index)), "1c:01 00");
    EXPECT_EQ(blockLength(formulaPool->entry(index)), 3U);
}

TEST(ByteCodeWriter, overwritesWhatWasWritten)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpJump, std::int16_t{0});
    writer.emit(OpParen);
    const std::int16_t distance = -2;
    writer.patch(1, &distance, sizeof distance);
    std::uint8_t* block = writer.finish();
    EXPECT_EQ(codeText(blockCode(block)), "22:feff 1a 00");
    heapFree(block);
}

TEST(ByteCodeWriter, growsAsFarAsItMust)
{
    const TestDocument document;
    ByteCodeWriter writer;
    const std::string longRun(5000, '\x1a');
    for (int i = 0; i < 3000; ++i)
        writer.emit(OpParen);
    writer.append(longRun.data(), 5000);
    writer.emit(OpNegate);
    EXPECT_EQ(writer.size(), 8001U);
    std::uint8_t* block = writer.finish();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::string(block + 4, block + 4 + 8000), std::string(8000, '\x1a'));
    EXPECT_EQ(block[4 + 8000], OpNegate);
    EXPECT_EQ(block[4 + 8001], OpReturn);
    heapFree(block);
}

TEST(ByteCodeWriter, onlyCountsOnceMemoryWasShort)
{
    const TestDocument document;
    for (int refused = 1; refused <= 4; ++refused) {
        growthsUntilRefusal = refused;
        blockResizer = refuseOneGrowth;
        ByteCodeWriter writer;
        for (int i = 0; i < 6000; ++i) // grows at 0, 2,048 and 4,096
            writer.emit(OpParen);
        const std::uint8_t zero = 0;
        writer.patch(5999, &zero, 1);
        blockResizer = resizeBlock;
        EXPECT_EQ(writer.size(), 6000U);
        EXPECT_EQ(errorState.code, refused <= 3 ? ErrorMemory : ErrorNone) << refused;
        std::uint8_t* block = writer.finish();
        EXPECT_EQ(block == nullptr, refused <= 3) << refused;
        heapFree(block);
        clearError();
    }
}

TEST(ByteCodeWriter, entersNothingInThePoolOnceMemoryWasShort)
{
    const TestDocument document;
    growthsUntilRefusal = 1;
    blockResizer = refuseOneGrowth;
    ByteCodeWriter writer;
    writer.emit(OpParen);
    blockResizer = resizeBlock;
    EXPECT_EQ(writer.finishInPool(), -1);
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
    // A writer that failed can begin anew.
    writer.emit(OpParen);
    EXPECT_NE(writer.finishInPool(), -1);
}

TEST(ByteCodeWriter, beginsAnewWhenCleared)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpPushNumber, 1.0);
    writer.clear();
    EXPECT_EQ(writer.size(), 0U);
    writer.emit(OpParen);
    std::uint8_t* block = writer.finish();
    EXPECT_EQ(codeText(blockCode(block)), "1a 00");
    heapFree(block);
}

TEST(ByteCodeWriter, givesBackTheValuesOfCodeThatIsDropped)
{
    const TestDocument document;
    const CellValue formula = constantFormula(5, {}).value;
    const std::int32_t code = formula.formula()->formula;
    ByteCodeWriter writer;
    writer.emit(OpPushValue, textValue(u"owned"));
    writer.emit(OpPushValue, formula);
    writer.emit(OpPushText, stringPool->addText(u"of a formula"));
    writer.clear();
    EXPECT_FALSE(stringPool->isLive(0));
    EXPECT_FALSE(formulaPool->isLive(code));
    EXPECT_TRUE(stringPool->isLive(1)) << "the texts of a formula that does not compile stay";
    EXPECT_EQ(formulaTable.add()->handle, 1U) << "the record is free again";
}

TEST(ByteCodeWriter, givesBackAllThatItHoldsOnceMemoryWasShort)
{
    const TestDocument document;
    for (const bool abandoned : {false, true}) {
        ByteCodeWriter writer;
        writer.emit(OpPushValue, textValue(u"before"));
        writer.emit(OpPushText, stringPool->addText(u"before"));
        if (abandoned) {
            writer.abandon();
        } else {
            growthsUntilRefusal = 1;
            blockResizer = refuseOneGrowth;
            const std::string longRun(5000, '\x1a');
            writer.append(longRun.data(), 5000);
            blockResizer = resizeBlock;
        }
        EXPECT_EQ(errorState.code, ErrorMemory);
        writer.emit(OpPushValue, textValue(u"behind"));
        writer.emit(OpPushText, stringPool->addText(u"behind"));
        writer.emit(OpPushValue, constantFormula(5, {}).value);
        EXPECT_EQ(stringPool->beginScan(), 0);
        stringPool->endScan();
        EXPECT_EQ(formulaPool->beginScan(), 0);
        formulaPool->endScan();
        EXPECT_EQ(writer.finish(), nullptr);
        clearError();
    }
}

TEST(ByteCodeWriter, handsWhatItHoldsToTheBlock)
{
    const TestDocument document;
    ByteCodeWriter writer;
    writer.emit(OpPushValue, textValue(u"owned"));
    writer.emit(OpPushValue, constantFormula(5, {}).value);
    std::uint8_t* block = writer.finish();
    writer.clear();
    EXPECT_TRUE(stringPool->isLive(0));
    EXPECT_TRUE(formulaPool->isLive(0));
    releaseByteCodeReferences(blockCode(block));
    EXPECT_FALSE(stringPool->isLive(0));
    EXPECT_FALSE(formulaPool->isLive(0));
    heapFree(block);
}

TEST(ByteCodeWriter, growsByHalfSoThatALongProgramCostsItsLength)
{
    const TestDocument document;
    AllocationWatch watch;
    ByteCodeWriter writer;
    for (int i = 0; i < 1'000'000; ++i)
        writer.emit(OpParen);
    EXPECT_LT(watch.asked(), 30);
}

TEST(ByteCode, countsTheOwnersOfItsTexts)
{
    const TestDocument document;
    const std::int32_t pushed = stringPool->addText(u"pushed");
    const std::int32_t valued = stringPool->addText(u"valued");
    ByteCodeWriter writer;
    writer.emit(OpPushText, pushed);
    writer.emit(OpPushText, std::int32_t{-1});
    writer.emit(OpPushValue, CellValue::makeTextIndex(valued));
    writer.emit(OpPushValue, CellValue::makeNumber(5));
    writer.emit(OpPushText, pushed);
    std::uint8_t* block = writer.finish();
    addByteCodeReferences(blockCode(block));
    EXPECT_EQ(stringPool->refCount(pushed), 3);
    EXPECT_EQ(stringPool->refCount(valued), 2);
    releaseByteCodeReferences(blockCode(block));
    EXPECT_EQ(stringPool->refCount(pushed), 1);
    EXPECT_EQ(stringPool->refCount(valued), 1);
    heapFree(block);
}

TEST(ByteCode, isVolatileByTheFunctionsThatItCalls)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        int row;
        bool isVolatile;
    } cases[] = {
        {"a random number changes by itself", FunctionRowRand,  true },
        {"so does the time",                  FunctionRowNow,   true },
        {"and the day",                       FunctionRowToday, true },
        {"a sum does not",                    3,                false},
    };
    for (const auto& c : cases) {
        ByteCodeWriter writer;
        writer.emit(OpPushNumber, 2.0);
        writer.emitCall(c.row, 0);
        writer.emit(OpAdd);
        std::uint8_t* block = writer.finish();
        EXPECT_EQ(isVolatileCode(blockCode(block)), c.isVolatile) << c.behaviour;
        heapFree(block);
    }
}

} // namespace
} // namespace vorn
