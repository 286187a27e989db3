#include "editing/clear.h"

#include "core/workbook.h"
#include "editing/undo.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

constexpr int ActionClear = 146;
constexpr int ActionAutofitRows = 147;
constexpr int ActionRecalculate = 149;

// The rows that a program calls, the last `count` of them.
std::vector<int> lastCalls(const std::uint8_t* program, std::size_t count)
{
    std::vector<int> rows;
    for (const std::uint8_t* at = blockCode(program); *at != OpReturn; at = nextInstruction(at)) {
        if (*at == OpCall)
            rows.push_back(readOperand<std::uint16_t>(at + 1));
    }
    if (rows.size() > count)
        rows.erase(rows.begin(), rows.end() - static_cast<std::ptrdiff_t>(count));
    return rows;
}

// The number that is pushed right before a program calls ActionClear; -1 if it does not.
int clearOperand(const std::uint8_t* program)
{
    int pushed = -1;
    for (const std::uint8_t* at = blockCode(program); *at != OpReturn; at = nextInstruction(at)) {
        if (*at == OpCall && readOperand<std::uint16_t>(at + 1) == ActionClear)
            return pushed;
        pushed = *at == OpPushInt16 ? readOperand<std::uint16_t>(at + 1) : -1;
    }
    return -1;
}

using Rows = std::vector<int>;

TEST(Clear, makesOneStepOfItsMode)
{
    const Rows both = {ActionAutofitRows, ActionRecalculate};
    const Rows values = {ActionRecalculate};
    const Rows formats = {ActionAutofitRows};
    const struct {
        const char* behaviour;
        ClearMode mode;
        int operand;
        Rows consequences;
    } cases[] = {
        {"all",           ClearAll,      0, both   },
        {"contents only", ClearContents, 1, values },
        {"formats only",  ClearFormats,  2, formats},
    };
    for (const auto& c : cases) {
        const TestDocument document;
        clearSelection(c.mode);
        ASSERT_EQ(undoList.steps.size(), 1) << c.behaviour;
        EXPECT_EQ(undoLabel(), u"Clear") << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
        const UndoStep& step = undoList.steps[0];
        Rows forward = {ActionClear};
        forward.insert(forward.end(), c.consequences.begin(), c.consequences.end());
        EXPECT_EQ(lastCalls(step.forward, forward.size()), forward) << c.behaviour;
        EXPECT_EQ(lastCalls(step.backward, c.consequences.size()), c.consequences) << c.behaviour;
        EXPECT_EQ(clearOperand(step.forward), c.operand) << c.behaviour;
        EXPECT_EQ(clearOperand(step.backward), -1) << c.behaviour;
        clearUndo();
    }
}

} // namespace
} // namespace vorn
