#include "shell/recentfiles.h"

#include "shell/application.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

using Paths = std::vector<std::u16string>;

Paths recentPaths()
{
    Paths paths;
    for (const std::u16string& path : application->recentFiles) {
        if (!path.empty())
            paths.push_back(path);
    }
    return paths;
}

TEST(RecentFiles, keepsTheOrderOfTheFirstUse)
{
    const struct {
        const char* behaviour;
        Paths added;
        Paths recent;
    } cases[] = {
        {"nothing yet",                      {},                             {}                      },
        {"the latest comes first",           {u"a", u"b", u"c"},             {u"c", u"b", u"a"}      },
        {"four have room",                   {u"a", u"b", u"c", u"d"},       {u"d", u"c", u"b", u"a"}},
        {"a fifth pushes the oldest out",    {u"a", u"b", u"c", u"d", u"e"}, {u"e", u"d", u"c", u"b"}},
        {"one that is there stays",          {u"a", u"b", u"c", u"d", u"a"}, {u"d", u"c", u"b", u"a"}},
        {"also in other letters",            {u"/x/a.vn", u"b", u"/X/A.VN"}, {u"b", u"/x/a.vn"}      },
        {"beyond the first alphabet",        {u"\u00e4", u"b", u"\u00c4"},   {u"b", u"\u00e4"}       },
        {"one that fell off comes in again",
         {u"a", u"b", u"c", u"d", u"e", u"a"},
         {u"a", u"e", u"d", u"c"}                                                                    },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        const Application app;
        for (const std::u16string& path : c.added)
            addRecentFile(path);
        EXPECT_EQ(recentPaths(), c.recent) << c.behaviour;
        EXPECT_EQ(machine.userInterface.documents, c.added) << c.behaviour;
    }
}

TEST(RecentFiles, fillTheirSlotsFromTheFirst)
{
    const TestPlatform machine;
    const Application app;
    addRecentFile(u"a");
    EXPECT_EQ(app.recentFiles[0], u"a");
    EXPECT_EQ(app.recentFiles[1], u"");
    EXPECT_EQ(app.recentFiles[3], u"");
}

TEST(RecentFiles, areNoLongerThanTheSettingsKeep)
{
    TestPlatform machine;
    const Application app;
    addRecentFile(u"/first.vn");
    addRecentFile(std::u16string(RecentFileMax + 1, u'a'));
    EXPECT_EQ(app.recentFiles[0], u"/first.vn");
    addRecentFile(std::u16string(RecentFileMax, u'a'));
    EXPECT_EQ(app.recentFiles[0].size(), RecentFileMax);
}

TEST(RecentFiles, readAsANumberAndTheEndOfThePath)
{
    const struct {
        const char* behaviour;
        int slot;
        const char16_t* path;
        const char16_t* text;
    } cases[] = {
        {"the first",         0, u"a.vn",                                    u"&1 a.vn"   },
        {"the fourth",        3, u"/b/a.vn",                                 u"&4 /b/a.vn"},
        {"thirty characters", 1, u"/bcdefghijklmnopqrstuvwxyz.vn1",
         u"&2 /bcdefghijklmnopqrstuvwxyz.vn1"                                             },
        {"one more",          2, u"/abcdefghijklmnopqrstuvwxyz.vn1",
         u"&3 ...abcdefghijklmnopqrstuvwxyz.vn1"                                          },
        {"many more",         0, u"/home/me/abcdefghijklmnopqrstuvwxyz.vn1",
         u"&1 ...abcdefghijklmnopqrstuvwxyz.vn1"                                          },
    };
    for (const auto& c : cases)
        EXPECT_EQ(recentFileText(c.slot, c.path), c.text) << c.behaviour;
}

} // namespace
} // namespace vorn
