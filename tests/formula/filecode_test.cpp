#include "formula/filecode.h"

#include "core/heap.h"
#include "core/pool.h"
#include "core/workbook.h"
#include "formula/bytecode.h"
#include "support/codetext.h"
#include "support/refusal.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

class FileCodeTest : public testing::Test {
protected:
    TestDocument document;

    std::int32_t addText(std::u16string_view text, std::int32_t number = -1)
    {
        const std::int32_t index = stringPool->addText(text);
        stringPool->setFileIndex(index, number);
        return index;
    }

    // A name that is defined as what the writer holds, which owns its texts; null for a deleted
    // one. Answers its index.
    std::uint16_t addName(ByteCodeWriter* writer)
    {
        DefinedName name;
        name.name = duplicateString(u"Name");
        name.block = writer == nullptr ? nullptr : writer->finish();
        workbook->names.append(name);
        return static_cast<std::uint16_t>(workbook->names.size() - 1);
    }

    // A name that only calls another one.
    std::uint16_t addCaller(int called)
    {
        ByteCodeWriter writer;
        writer.emit(OpCallName, static_cast<std::uint16_t>(called));
        return addName(&writer);
    }

    std::int32_t nameNumber(int index) const { return workbook->names[index].fileIndex; }
};

std::string filed(std::string_view code, NameOperands names)
{
    std::vector<std::uint8_t> bytes = codeBytes(code);
    byteCodeToFileForm(bytes.data(), names);
    return codeText(bytes.data());
}

TEST_F(FileCodeTest, putsTheNumbersOfTheFileInPlaceOfIndices)
{
    ASSERT_EQ(addText(u"zero", 0x01020304), 0);
    ASSERT_EQ(addText(u"one", 7), 1);
    ASSERT_EQ(addName(nullptr), 0);
    ASSERT_EQ(addName(nullptr), 1);
    workbook->names[0].fileIndex = 0x0506;
    workbook->names[1].fileIndex = 9;
    const struct {
        const char* behaviour;
        NameOperands names;
        const char *code, *filed;
    } rows[] = {
        {"nothing to do",        NumberNames,     "00",                 "00"                },
        {"a text",               KeepNameIndices, "0b:00000000 00",     "0b:04030201 00"    },
        {"another one",          NumberNames,     "0b:01000000 17 00",  "0b:07000000 17 00" },
        {"the empty text",       KeepNameIndices, "0b:ffffffff 00",     "0b:ffffffff 00"    },
        {"a name of a part",     NumberNames,     "24:0000 00",         "24:0605 00"        },
        {"another one",          NumberNames,     "24:0100 00",         "24:0900 00"        },
        {"a name of the whole",  KeepNameIndices, "24:0100 00",         "24:0100 00"        },
        {"a name that is none",  NumberNames,     "24:0200 00",         "24:ffff 00"        },
        {"one like a text",      NumberNames,     "24:0b00 00",         "24:ffff 00"        },
        {"an operand like one",  NumberNames,     "1b:0b24 00",         "1b:0b24 00"        },
        {"what a jump leads to", NumberNames,     "22:0200 24:0100 00", "22:0200 24:0900 00"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(filed(row.code, row.names), row.filed) << row.behaviour;
    EXPECT_EQ(filed("0b:01000000 0b:00000000 24:0000 0b:01000000 00", NumberNames),
              "0b:07000000 0b:04030201 24:0605 0b:07000000 00");
}

TEST_F(FileCodeTest, numbersTextsAndNamesWhereTheyAreMet)
{
    addText(u"zero");
    addText(u"one");
    addName(nullptr);
    addName(nullptr);
    const std::vector<std::uint8_t> code =
        codeBytes("0b:01000000 24:0100 0b:00000000 0b:01000000 24:0000 24:0100 0b:ffffffff 00");
    FileNumbers numbers{5, 8};
    markByteCodeNames(code.data(), numbers);
    EXPECT_EQ(stringPool->fileIndex(1), 5);
    EXPECT_EQ(stringPool->fileIndex(0), 6);
    EXPECT_EQ(nameNumber(1), 8);
    EXPECT_EQ(nameNumber(0), 9);
    EXPECT_EQ(numbers.texts, 7);
    EXPECT_EQ(numbers.names, 10);
}

TEST_F(FileCodeTest, leavesNumbersAlone)
{
    addText(u"zero", 3);
    addName(nullptr);
    workbook->names[0].fileIndex = 4;
    FileNumbers numbers;
    markByteCodeNames(codeBytes("0b:00000000 24:0000 24:0100 00").data(), numbers);
    EXPECT_EQ(stringPool->fileIndex(0), 3);
    EXPECT_EQ(nameNumber(0), 4);
    EXPECT_EQ(numbers.texts, 0);
    EXPECT_EQ(numbers.names, 0) << "a name that does not exist has no number either";
}

TEST_F(FileCodeTest, followsNamesIntoTheirDefinitions)
{
    ByteCodeWriter writer;
    writer.emit(OpPushText, addText(u"deep"));
    const int innermost = addName(&writer);
    const int between = addCaller(innermost);
    const int outermost = addCaller(between);
    addText(u"unused");
    addCaller(innermost);

    FileNumbers numbers;
    const std::string call = "24:0" + std::to_string(outermost) + "00 00";
    markByteCodeNames(codeBytes(call).data(), numbers);
    EXPECT_EQ(nameNumber(outermost), 0);
    EXPECT_EQ(nameNumber(between), 1);
    EXPECT_EQ(nameNumber(innermost), 2);
    EXPECT_EQ(stringPool->fileIndex(0), 0);
    EXPECT_EQ(stringPool->fileIndex(1), -1);
    EXPECT_EQ(nameNumber(3), -1);
    EXPECT_EQ(numbers.names, 3);
}

TEST_F(FileCodeTest, endsWhereANameCallsItself)
{
    addCaller(0);
    addCaller(2);
    addCaller(1);
    FileNumbers numbers;
    markByteCodeNames(codeBytes("24:0000 24:0100 00").data(), numbers);
    EXPECT_EQ(nameNumber(0), 0);
    EXPECT_EQ(nameNumber(1), 1);
    EXPECT_EQ(nameNumber(2), 2);
}

TEST_F(FileCodeTest, needsNoStackForNamesThatCallOneAnother)
{
    constexpr int Count = 60000;
    for (int index = 0; index < Count; ++index)
        addCaller(index + 1);
    FileNumbers numbers;
    markByteCodeNames(codeBytes("24:0000 00").data(), numbers);
    EXPECT_EQ(numbers.names, Count);
    EXPECT_EQ(nameNumber(Count - 1), Count - 1);
}

TEST_F(FileCodeTest, raisesWhatMemoryCannotFollow)
{
    addCaller(1);
    addName(nullptr);
    const std::vector<std::uint8_t> code = codeBytes("24:0000 00");
    FileNumbers numbers;
    const AllocationWatch watch(1);
    markByteCodeNames(code.data(), numbers);
    EXPECT_TRUE(watch.refused());
    EXPECT_EQ(errorState.code, ErrorMemory);
    clearError();
}

} // namespace
} // namespace vorn
