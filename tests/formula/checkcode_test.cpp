#include "formula/checkcode.h"

#include "core/pool.h"
#include "formula/bytecode.h"
#include "functions/table.h"
#include "support/codetext.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vorn {
namespace {

#define ONE "01:000000000000f03f "

bool isSound(const std::vector<std::uint8_t>& code, CodeNeeds& needs)
{
    return isSoundFormulaCode(code.data(), static_cast<std::uint32_t>(code.size()), needs);
}

bool isSound(std::string_view text)
{
    CodeNeeds needs;
    return isSound(codeBytes(text), needs);
}

TEST(CheckCode, takesWhatFormulasAreMadeOf)
{
    const TestDocument document;
    const char16_t* formulas[] = {
        u"1+2*3/4-5^6",
        u"-(+1)&\"text\"&\"\"",
        u"1=2<3>4<=5>=6<>7",
        u"5%+true+!!NA",
        u"A1+$B$2+Sheet2!C3+Sum(A1:B2,Sheet1:Sheet3!A1:B2)",
        u"If(A1,2)",
        u"If(A1,If(B1,2,3),If(C1,4,5))+If(1,If(2,3))",
        u"Now()+Today()+Rand()",
        u"1/2/2003+12:30",
    };
    for (const char16_t* formula : formulas) {
        const Compiled compiled = compileFormula(formula);
        ASSERT_EQ(compiled.error, 0);
        EXPECT_TRUE(isSound(compiled.code)) << compiled.code;
    }
}

TEST(CheckCode, takesEveryFunctionOfFormulasWithTheArgumentsThatItTakes)
{
    for (int row = 0; row < FunctionRowCount; ++row) {
        const FunctionRow& function = FunctionTable[row];
        for (int count = 0; count < 256; ++count) {
            std::vector<std::uint8_t> call(5, OpReturn);
            call[0] = OpCall;
            writeOperand(call.data() + 1, static_cast<std::uint16_t>(row));
            call[3] = static_cast<std::uint8_t>(count);
            CodeNeeds needs;
            const bool isCompiledIf = row == FunctionRowIf && (count == 12 || count == 13);
            const bool fits = count >= function.minArguments && count <= function.maxArguments;
            EXPECT_EQ(isSound(call, needs), row < FirstActionRow && (fits || isCompiledIf))
                << row << " with " << count;
        }
    }
}

TEST(CheckCode, refusesWhatAMachineCannotBelieve)
{
    const struct {
        const char* phrase;
        const char* code;
        bool sound;
    } cases[] = {
        {"nothing but an end",                    "00",                             true },
        {"no code at all",                        "",                               false},
        {"no end",                                "05",                             false},
        {"an end before the last byte",           ONE "00 00",                      false},
        {"operations without operands",           "05 17 0a 25",                    false},
        {"the same with an end",                  "05 17 0a 25 00",                 true },
        {"an operand where the end should be",    "01:0000000000000000",            false},
        {"a cut operand",                         "01:00000000000000",              false},
        {"a call that is cut",                    "02:0300",                        false},
        {"the last operation",                    "27:0000 00",                     false},
        {"one behind the last operation",         "28 00",                          false},
        {"the greatest number",                   "ff 00",                          false},
        {"the same with as many bytes behind it", "ff:000000 00",                   false},
        {"a variable of a task stored",           ONE "26:0000 00",                 false},
        {"a value that is dropped",               ONE ONE "25 00",                  true },
        {"integers of imported formulas",         "04:0100 0d:01000000 05 00",      true },
        {"references of any sheets",              "0f:0800ffff0000000000000000 00", true },
        {"a dead reference",                      "1d:080003030000000000000000 00", true },
        {"a function that has no row",            ONE "02:bd0001 00",               false},
        {"the greatest row",                      ONE "02:ffff01 00",               false},
        {"the first step of undo programs",       "02:800000 00",                   false},
        {"a function of tasks",                   ONE "02:a00001 00",               false},
        {"the last row",                          "02:bc0000 00",                   false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isSound(c.code), c.sound) << c.phrase;
}

TEST(CheckCode, refusesValuesThatOwnSomething)
{
    for (int tag = 0; tag < 256; ++tag) {
        std::vector<std::uint8_t> code(14, 0);
        code[0] = OpPushValue;
        code[1] = static_cast<std::uint8_t>(tag);
        CodeNeeds needs;
        const bool isPlain = tag == TagBlank || tag == TagLogical || tag == TagError ||
                             tag == TagNumber || tag == TagInteger || tag == TagDateTime;
        EXPECT_EQ(isSound(code, needs), isPlain) << tag;
    }
}

TEST(CheckCode, letsJumpsLeadForwardToInstructions)
{
    const struct {
        const char* phrase;
        const char* code;
        bool sound;
    } cases[] = {
        {"to the end",                                "22:0100 05 05 00",   true },
        {"of the other kind to the end",              "23:0200 05 05 00",   true },
        {"to the next instruction",                   "22:ffff 05 00",      true },
        {"of the other kind to the next instruction", "23:0000 05 00",      true },
        {"to itself",                                 "22:fcff 05 00",      false},
        {"of the other kind to itself",               "23:fdff 05 00",      false},
        {"into its own operand",                      "22:feff 05 00",      false},
        {"of the other kind into its own operand",    "23:ffff 05 00",      false},
        {"back",                                      "05 22:fbff 00",      false},
        {"before the code",                           "22:0080 00",         false},
        {"behind the end",                            "22:0100 05 00",      false},
        {"of the other kind behind the end",          "23:0200 05 00",      false},
        {"far behind the end",                        "22:ff7f 05 00",      false},
        {"into an operand",                           "22:0000 " ONE "00",  false},
        {"of the other kind into an operand",         "23:0500 " ONE "00",  false},
        {"over an operand",                           "22:0800 " ONE "00",  true },
        {"over another jump",                         "22:0200 22:ffff 00", true },
        {"the second of two astray",                  "23:0000 23:0900 00", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isSound(c.code), c.sound) << c.phrase;
}

TEST(CheckCode, refusesAnyCodeThatIsCut)
{
    const TestDocument document;
    const std::vector<std::uint8_t> code =
        codeBytes(compileFormula(u"If(Sum(A1:B2,Sheet2!C3)>1.5,\"yes\"&\"no\",Round(-2%,1))").code);
    CodeNeeds needs;
    ASSERT_TRUE(isSound(code, needs));
    for (std::size_t length = 0; length < code.size(); ++length)
        EXPECT_FALSE(
            isSound({code.begin(), code.begin() + static_cast<std::ptrdiff_t>(length)}, needs))
            << length;
}

TEST(CheckCode, takesCodeOfAnyLengthThatAJumpCanCross)
{
    for (const std::uint32_t length : {CheckedCodeMax - 1, CheckedCodeMax, CheckedCodeMax + 1}) {
        std::vector<std::uint8_t> code(length, OpParen);
        code.back() = OpReturn;
        code[0] = OpJump;
        writeOperand(code.data() + 1, std::int16_t{INT16_MAX});
        CodeNeeds needs;
        EXPECT_EQ(isSound(code, needs), length <= CheckedCodeMax) << length;
    }
}

TEST(CheckCode, tellsHowManyTextsAndNamesThereHaveToBe)
{
    const struct {
        const char* phrase;
        const char* code;
        std::uint32_t texts, names;
    } cases[] = {
        {"none",                         ONE "00",                        3,          5    },
        {"fewer than before",            "0b:00000000 24:0000 05 00",     3,          5    },
        {"more texts",                   "0b:07000000 0b:06000000 05 00", 8,          5    },
        {"the empty text has no number", "0b:ffffffff 00",                3,          5    },
        {"the last number of a text",    "0b:feffffff 00",                UINT32_MAX, 5    },
        {"the last number of a name",    "24:ffff 24:0000 05 00",         3,          65536},
        {"nothing of what is refused",   "0b:07000000 24:0900 ff 00",     3,          5    },
    };
    for (const auto& c : cases) {
        CodeNeeds needs{3, 5};
        isSound(codeBytes(c.code), needs);
        EXPECT_EQ(needs.texts, c.texts) << c.phrase;
        EXPECT_EQ(needs.names, c.names) << c.phrase;
    }
}

TEST(CheckCode, tellsWhetherAFunctionChangesByItself)
{
    const struct {
        const char16_t* formula;
        bool isVolatile;
    } cases[] = {
        {u"1+Sum(A1:B2)",   false},
        {u"Rand()",         true },
        {u"1+Now()",        true },
        {u"Today()",        true },
        {u"If(A1,1,Now())", true },
        {u"Date(2001,1,1)", false},
    };
    const TestDocument document;
    for (const auto& c : cases) {
        const Compiled compiled = compileFormula(c.formula);
        CodeNeeds needs;
        ASSERT_TRUE(isSound(codeBytes(compiled.code), needs)) << compiled.code;
        EXPECT_EQ(needs.isVolatile, c.isVolatile) << compiled.code;
        needs.isVolatile = true;
        isSound(codeBytes(ONE "00"), needs);
        EXPECT_TRUE(needs.isVolatile) << "it is added to what was found before";
    }
}

TEST(CheckCode, takesTheReferencesToTextsOfAWholeDocument)
{
    const TestDocument document;
    for (const char16_t* text : {u"a", u"b"})
        stringPool->addText(text);
    std::vector<std::uint8_t> code =
        codeBytes("0b:01000000 0b:ffffffff 0b:01000000 0b:00000000 24:0700 00");
    const std::vector<std::uint8_t> before = code;
    EXPECT_FALSE(byteCodeFromFileForm(code.data(), {}));
    EXPECT_EQ(code, before);
    EXPECT_EQ(stringPool->refCount(0), 2);
    EXPECT_EQ(stringPool->refCount(1), 3);
}

TEST(CheckCode, givesAPartOfADocumentTheNumbersOfTheOther)
{
    const TestDocument document;
    for (const char16_t* text : {u"a", u"b", u"c"})
        stringPool->addText(text);
    const std::int32_t texts[] = {2, 0};
    const std::int32_t names[] = {9, 300};
    std::vector<std::uint8_t> code =
        codeBytes("0b:01000000 0b:00000000 0b:ffffffff 24:0100 24:0000 00");
    byteCodeFromFileForm(code.data(), {texts, names});
    EXPECT_EQ(codeText(code.data()), "0b:00000000 0b:02000000 0b:ffffffff 24:2c01 24:0900 00");
    EXPECT_EQ(stringPool->refCount(0), 2);
    EXPECT_EQ(stringPool->refCount(1), 1);
    EXPECT_EQ(stringPool->refCount(2), 2);
}

TEST(CheckCode, tellsOfFunctionsThatChangeByThemselves)
{
    const TestDocument document;
    const struct {
        const char* phrase;
        const char16_t* formula;
        bool isVolatile;
    } cases[] = {
        {"a random number", u"1+Rand()",              true },
        {"the moment",      u"Now()",                 true },
        {"the day",         u"If(1,Today(),2)",       true },
        {"none",            u"Sum(Pi(),Date(1,2,3))", false},
    };
    for (const auto& c : cases) {
        std::vector<std::uint8_t> code = codeBytes(compileFormula(c.formula).code);
        EXPECT_EQ(byteCodeFromFileForm(code.data(), {}), c.isVolatile) << c.phrase;
    }
}

} // namespace
} // namespace vorn
