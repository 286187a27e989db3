#include "resources/menu.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace vorn {
namespace {

// What stands at one level from row `at` on: texts in quotes, lines as '-', pop-ups with what they
// hold in parentheses.
std::u16string picture(std::size_t& at, int level)
{
    std::u16string text;
    while (at < MenuBar.size() && MenuBar[at].level == level) {
        const MenuRow& row = MenuBar[at++];
        if (row.kind == MenuItem::Separator) {
            text += u"- ";
            continue;
        }
        text += u'"' + std::u16string(row.text) + u"\" ";
        if (row.kind == MenuItem::PopUp)
            text += u"( " + picture(at, level + 1) + u") ";
    }
    return text;
}

TEST(Menu, hasItsEntriesInTheirOrder)
{
    const char16_t* tops[] = {
        u"\"&File\" ( \"&New\tCtrl+N\" - \"&Open...\tCtrl+O\" \"&Save\tCtrl+S\" \"Save &As...\" "
        u"\"&Delete...\" \"&Recent Files\" ( \"(empty)\" ) - \"&Close\tCtrl+W\" ) ",
        u"\"&Edit\" ( \"&Undo\tCtrl+Z\" \"&Redo\tCtrl+Y\" - \"Cu&t\tCtrl+X\" \"&Copy\tCtrl+C\" "
        u"\"&Paste\tCtrl+V\" \"Paste &Special...\" "
        u"\"Cle&ar\" ( \"&All\" \"&Contents\tDel\" \"&Format\" ) "
        u"\"&Fill\" ( \"&Right\tCtrl+R\" \"&Down\tCtrl+D\" \"&Series...\" ) \"&Delete Cells\" ) ",
        u"\"&Insert\" ( \"C&ells\" - \"&Function...\" \"&Chart...\" \"&Name...\" "
        u"\"&Define name...\" ) ",
        u"\"F&ormat\" ( \"C&ells...\tCtrl+1\" - "
        u"\"&Row\" ( \"H&eight...\" \"&AutoFit\" \"&Hide\" \"&Unhide\" ) "
        u"\"&Column\" ( \"&Width...\" \"&AutoFit\" \"&Hide\" \"&Unhide\" ) \"S&heets...\" - "
        u"\"&Zoom\" ( \"&70%\" \"&80%\" \"&90%\" \"&100%\" \"&Custom...\" ) \"F&ull Screen\" "
        u"\"&Freeze Titles\" ) ",
        u"\"&Tools\" ( \"&Go to...\tCtrl+G\" \"&Find...\tCtrl+F\" \"&Replace...\tCtrl+H\" "
        u"\"&Sort...\" \"F&ilter\" \"&Protection\" ( \"Protect &Sheet\" \"Protect &Workbook\" ) "
        u"- \"&Options...\" ) ",
        u"\"T&ask\" ( \"&Tasks...\" - \"&About...\" ) ",
    };
    std::u16string expected;
    for (const char16_t* top : tops)
        expected += top;
    std::size_t at = 0;
    EXPECT_EQ(picture(at, 0), expected);
    EXPECT_EQ(at, MenuBar.size());
}

TEST(Menu, givesEachEntryItsCommand)
{
    const struct {
        const char16_t* text;
        int id;
    } entries[] = {
        {u"&New\tCtrl+N",        40001},
        {u"&Open...\tCtrl+O",    102  },
        {u"&Save\tCtrl+S",       40004},
        {u"Save &As...",         103  },
        {u"&Delete...",          40005},
        {u"(empty)",             40104},
        {u"&Close\tCtrl+W",      40024},
        {u"&Undo\tCtrl+Z",       40006},
        {u"&Redo\tCtrl+Y",       40007},
        {u"Cu&t\tCtrl+X",        40008},
        {u"&Copy\tCtrl+C",       40009},
        {u"&Paste\tCtrl+V",      40010},
        {u"Paste &Special...",   40050},
        {u"&All",                40035},
        {u"&Contents\tDel",      40036},
        {u"&Format",             40037},
        {u"&Right\tCtrl+R",      40028},
        {u"&Down\tCtrl+D",       40029},
        {u"&Series...",          40048},
        {u"&Delete Cells",       40011},
        {u"C&ells",              40044},
        {u"&Function...",        40027},
        {u"&Chart...",           40063},
        {u"&Name...",            40061},
        {u"&Define name...",     40060},
        {u"C&ells...\tCtrl+1",   40014},
        {u"H&eight...",          40056},
        {u"&AutoFit",            40057},
        {u"&Hide",               40058},
        {u"&Unhide",             40059},
        {u"&Width...",           40052},
        {u"&AutoFit",            40053},
        {u"&Hide",               40054},
        {u"&Unhide",             40055},
        {u"S&heets...",          40015},
        {u"&70%",                40038},
        {u"&80%",                40045},
        {u"&90%",                40046},
        {u"&100%",               40039},
        {u"&Custom...",          40041},
        {u"F&ull Screen",        40051},
        {u"&Freeze Titles",      40043},
        {u"&Go to...\tCtrl+G",   40034},
        {u"&Find...\tCtrl+F",    40016},
        {u"&Replace...\tCtrl+H", 40049},
        {u"&Sort...",            40022},
        {u"F&ilter",             40062},
        {u"Protect &Sheet",      40064},
        {u"Protect &Workbook",   40065},
        {u"&Options...",         40025},
        {u"&Tasks...",           40042},
        {u"&About...",           40047},
    };
    std::size_t at = 0;
    for (const MenuRow& row : MenuBar) {
        if (row.kind != MenuItem::Entry) {
            EXPECT_EQ(row.id, 0);
            continue;
        }
        ASSERT_LT(at, std::size(entries));
        EXPECT_EQ(std::u16string(row.text), entries[at].text);
        EXPECT_EQ(row.id, entries[at].id) << at;
        ++at;
    }
    EXPECT_EQ(at, std::size(entries));
}

TEST(Menu, showsTheKeysThatThereAre)
{
    std::set<int> shown;
    for (const MenuRow& row : MenuBar) {
        const std::size_t tab = row.text.find(u'\t');
        if (tab == std::u16string_view::npos)
            continue;
        const std::u16string_view key = row.text.substr(tab + 1);
        if (key == u"Del") {
            EXPECT_EQ(acceleratorCommand(DeleteKey, false), row.id);
        } else {
            ASSERT_EQ(key.substr(0, 5), u"Ctrl+");
            EXPECT_EQ(acceleratorCommand(key.back(), true), row.id);
        }
        shown.insert(row.id);
    }
    // Selecting all is no entry.
    EXPECT_EQ(acceleratorCommand(u'A', true), 40109);
    EXPECT_EQ(shown.size() + 1, Accelerators.size());
}

TEST(Menu, hasNoOtherKeys)
{
    const struct {
        const char* behaviour;
        char16_t key;
        bool control;
    } cases[] = {
        {"a letter alone is typed",            u'N',      false},
        {"Del is no key with Control",         DeleteKey, true },
        {"Control with a letter without work", u'Q',      true },
        {"a small letter is no key",           u'n',      true },
    };
    for (const auto& c : cases)
        EXPECT_EQ(acceleratorCommand(c.key, c.control), 0) << c.behaviour;
}

TEST(Menu, hasAToolbarWithItsSlotsInTheirOrder)
{
    constexpr ButtonStyle push = ButtonStyle::Push;
    constexpr ButtonStyle check = ButtonStyle::Check;
    constexpr ButtonStyle gap = ButtonStyle::Separator;
    const ToolbarSlot slots[] = {
        {40001, 9,  push,  u"New"        },
        {102,   10, push,  u"Open"       },
        {40004, 11, push,  u"Save"       },
        {0,     0,  gap,   u""           },
        {40006, 0,  push,  u"Undo"       },
        {0,     0,  gap,   u""           },
        {40008, 1,  push,  u"Cut"        },
        {40009, 2,  push,  u"Copy"       },
        {40010, 3,  push,  u"Paste"      },
        {0,     0,  gap,   u""           },
        {40051, 19, check, u"Full Screen"},
        {0,     0,  gap,   u""           },
        {40014, 18, push,  u"Format"     },
        {0,     0,  gap,   u""           },
        {901,   6,  check, u"Bold"       },
        {902,   7,  check, u"Italic"     },
        {903,   8,  check, u"Underline"  },
        {0,     0,  gap,   u""           },
        {905,   12, check, u"Align Left" },
        {906,   13, check, u"Center"     },
        {907,   14, check, u"Align Right"},
        {0,     0,  gap,   u""           },
        {904,   4,  push,  u"AutoSum"    },
        {40016, 15, push,  u"Find"       },
        {40022, 16, push,  u"Sort"       },
        {40063, 5,  push,  u"Chart"      },
    };
    ASSERT_EQ(std::size(slots), 26U);
    ASSERT_EQ(Toolbar.size(), std::size(slots));
    for (std::size_t at = 0; at < Toolbar.size(); ++at) {
        EXPECT_EQ(Toolbar[at].id, slots[at].id) << at;
        EXPECT_EQ(Toolbar[at].style, slots[at].style) << at;
        EXPECT_EQ(Toolbar[at].tip, slots[at].tip) << at;
        EXPECT_EQ(Toolbar[at].image, slots[at].image) << at;
    }
}

} // namespace
} // namespace vorn
