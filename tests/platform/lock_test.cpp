#include "platform/posix/lock.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <vector>

namespace vorn {
namespace {

// A file system that answers calls one by one, and nothing from then on.
std::vector<int> answers;
std::vector<int> asked;

int scriptedLock(int, int operation)
{
    asked.push_back(operation);
    if (asked.size() > answers.size())
        return 0;
    errno = answers[asked.size() - 1];
    return errno == 0 ? 0 : -1;
}

constexpr int Alone = LOCK_EX | LOCK_NB;
constexpr int Shared = LOCK_SH | LOCK_NB;

TEST(Lock, stopsOnlyWhereSomebodyElseHoldsTheFile)
{
    const struct {
        const char* behaviour;
        std::vector<int> answers;
        bool open;
        std::vector<int> asked;
    } cases[] = {
        {"nobody else has it",                 {0},                  true,  {Alone}              },
        {"somebody has",                       {EWOULDBLOCK},        false, {Alone}              },
        {"a signal came in between",           {EINTR, EINTR, 0},    true,  {Alone, Alone, Alone}},
        {"and then somebody has it",           {EINTR, EWOULDBLOCK}, false, {Alone, Alone}       },
        {"no locks are left",                  {ENOLCK},             true,  {Alone}              },
        {"there are no locks for this",        {EOPNOTSUPP},         true,  {Alone}              },
        {"or none at all",                     {ENOSYS},             true,  {Alone}              },
        {"or none of this kind",               {EINVAL},             true,  {Alone}              },
        {"a reader may only keep writers out", {EBADF, 0},           true,  {Alone, Shared}      },
        {"if none is there",                   {EBADF, EWOULDBLOCK}, false, {Alone, Shared}      },
        {"or not even that",                   {EBADF, EBADF},       true,  {Alone, Shared}      },
    };
    for (const auto& c : cases) {
        answers = c.answers;
        asked.clear();
        EXPECT_EQ(keepOthersOut(3, scriptedLock), c.open) << c.behaviour;
        EXPECT_EQ(asked, c.asked) << c.behaviour;
    }
}

} // namespace
} // namespace vorn
