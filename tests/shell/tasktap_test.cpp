#include "shell/tasktap.h"

#include "core/heap.h"
#include "support/session.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class TaskTapTest : public testing::Test {
protected:
    Task& addTask(std::u16string_view area)
    {
        Task* task = workbook->addTask(duplicateString(u"Task"), duplicateString(u"1"));
        EXPECT_NE(task, nullptr);
        EXPECT_TRUE(area.empty() || parseReferenceText(area, task->onTapArea));
        task->onTap = 1;
        return *task;
    }
    static int waiting(std::u16string_view cell)
    {
        const CellRef at = Session::place(cell);
        return taskForTap(at.column, at.row);
    }

    Session session;
};

TEST_F(TaskTapTest, belongsToTheFirstTaskWhoseAreaHoldsTheCell)
{
    EXPECT_EQ(waiting(u"A1"), NoTask);
    addTask(u"B2:C3");
    addTask(u"C3:D4");
    addTask(u"F6");
    addTask(u"J9:H7"); // as it was typed
    const struct {
        std::u16string_view cell;
        int task;
    } cases[] = {
        {u"A1", NoTask},
        {u"B2", 0     },
        {u"C3", 0     },
        {u"D4", 1     },
        {u"B4", NoTask},
        {u"F6", 2     },
        {u"F7", NoTask},
        {u"H7", 3     },
        {u"I8", 3     },
        {u"J9", 3     },
        {u"K9", NoTask},
    };
    for (const auto& c : cases)
        EXPECT_EQ(waiting(c.cell), c.task) << Session::narrow(c.cell);
}

TEST_F(TaskTapTest, belongsToTheSheetsThatTheAreaNames)
{
    addTask(u"Sheet2!A1:B2");
    addTask(u"Sheet2:Sheet3!C3");
    addTask(u"D4");
    const struct {
        int sheet;
        std::u16string_view cell;
        int task;
    } cases[] = {
        {0, u"A1", NoTask},
        {1, u"A1", 0     },
        {2, u"A1", NoTask},
        {0, u"C3", NoTask},
        {1, u"C3", 1     },
        {2, u"C3", 1     },
        {0, u"D4", 2     },
        {1, u"D4", 2     },
        {2, u"D4", 2     },
    };
    for (const auto& c : cases) {
        workbook->setCurrentSheet(workbook->sheetAt(c.sheet));
        EXPECT_EQ(waiting(c.cell), c.task) << c.sheet << Session::narrow(c.cell);
    }
}

TEST_F(TaskTapTest, belongsToNoTaskThatDoesNotWait)
{
    addTask(u"A1").onTap = 0;
    EXPECT_EQ(waiting(u"A1"), NoTask);
    addTask({});
    EXPECT_EQ(waiting(u"A1"), NoTask) << "its area is no reference";
    addTask(u"A1").onTapArea.reserved = 1;
    EXPECT_EQ(waiting(u"A1"), NoTask) << "its area is in another workbook";
    EXPECT_FALSE(runTaskForTap(0, 0));
    addTask(u"A1");
    EXPECT_EQ(waiting(u"A1"), 3);
    EXPECT_TRUE(runTaskForTap(0, 0));
}

TEST_F(TaskTapTest, passesOverTasksThatHaveNoCommand)
{
    while (workbook->tasks.size() <= CommandLastTask - CommandFirstTask)
        addTask({});
    addTask(u"A1");
    EXPECT_EQ(waiting(u"A1"), NoTask);
    workbook->tasks[CommandLastTask - CommandFirstTask].onTapArea = workbook->tasks[1001].onTapArea;
    EXPECT_EQ(waiting(u"A1"), 1000);
}

} // namespace
} // namespace vorn
