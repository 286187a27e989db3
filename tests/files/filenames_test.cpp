#include "files/filenames.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(FileNames, beginBehindTheLastSeparatorOfEitherKind)
{
    const struct {
        const char* behaviour;
        const char16_t* path;
        const char16_t* folder;
        const char16_t* name;
    } cases[] = {
        {"a name alone",        u"a.vn",          u"",          u"a.vn"},
        {"nothing",             u"",              u"",          u""    },
        {"a path",              u"/home/me/a.vn", u"/home/me/", u"a.vn"},
        {"of backslashes",      u"\\Docs\\a.vn",  u"\\Docs\\",  u"a.vn"},
        {"of both",             u"/Docs\\b/a.vn", u"/Docs\\b/", u"a.vn"},
        {"the other way round", u"/Docs/b\\a.vn", u"/Docs/b\\", u"a.vn"},
        {"in the root",         u"/a.vn",         u"/",         u"a.vn"},
        {"a folder",            u"/home/",        u"/home/",    u""    },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(folderOfPath(c.path), c.folder) << c.behaviour;
        EXPECT_EQ(nameOfPath(c.path), c.name) << c.behaviour;
    }
}

TEST(FileNames, areCompletedByTheFilter)
{
    const struct {
        const char* behaviour;
        const char16_t* name;
        int filter;
        const char16_t* complete;
    } cases[] = {
        {"no extension",                        u"a",      1,  u"a.vn"    },
        {"before a filter was chosen",          u"a",      0,  u"a.vn"    },
        {"the second filter of either dialog",  u"a",      2,  u"a.pxl"   },
        {"the third",                           u"a",      3,  u"a.xls"   },
        {"the fourth of the Open dialog",       u"a",      4,  u"a.vn"    },
        {"the fifth",                           u"a",      5,  u"a.vn"    },
        {"no filter at all",                    u"a",      -1, u"a.vn"    },
        {"an extension stays",                  u"a.xls",  1,  u"a.xls"   },
        {"an unknown one too",                  u"a.doc",  2,  u"a.doc"   },
        {"a dot at the end is the extension's", u"a.",     1,  u"a.vn"    },
        {"of any filter",                       u"a.b.",   3,  u"a.b.xls" },
        {"a dot anywhere counts",               u".a",     1,  u".a"      },
        {"also in a folder",                    u"/x.y/a", 2,  u"/x.y/a"  },
        {"a folder without a dot does not",     u"/x/a",   2,  u"/x/a.pxl"},
        {"a dot alone",                         u".",      1,  u".vn"     },
        {"nothing",                             u"",       1,  u".vn"     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(completeName(c.name, c.filter), c.complete) << c.behaviour;
}

TEST(FileNames, followTheFilterInTheNameField)
{
    const struct {
        const char* behaviour;
        const char16_t* shown;
        int filter;
        const char16_t* followed;
    } cases[] = {
        {"another filter, another extension", u"a.xls",    2, u"a.pxl"},
        {"and back",                          u"a.pxl",    3, u"a.xls"},
        {"and to our own",                    u"a.xls",    1, u"a.vn" },
        {"a name without one gets it",        u"a",        2, u"a.pxl"},
        {"all behind the first dot goes",     u"a.b.c.vn", 3, u"a.xls"},
        {"whatever stands there",             u"a.txt",    2, u"a.pxl"},
        {"nothing",                           u"",         2, u".pxl" },
        {"a number that is no filter",        u"a.xls",    0, u"a.vn" },
        {"not even the last",                 u"a.xls",    4, u"a.vn" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(nameForFilter(c.shown, c.filter), c.followed) << c.behaviour;
}

TEST(FileNames, beginWithOneBackslashAtMost)
{
    const struct {
        const char* behaviour;
        const char16_t* path;
        const char16_t* reduced;
    } cases[] = {
        {"two become one",        u"\\\\Docs\\a.vn", u"\\Docs\\a.vn"  },
        {"one stays",             u"\\Docs\\a.vn",   u"\\Docs\\a.vn"  },
        {"three become two",      u"\\\\\\a.vn",     u"\\\\a.vn"      },
        {"others stay",           u"\\Docs\\\\a.vn", u"\\Docs\\\\a.vn"},
        {"slashes are others",    u"//a.vn",         u"//a.vn"        },
        {"a mixture is no pair",  u"\\/a.vn",        u"\\/a.vn"       },
        {"nothing else is there", u"\\\\",           u"\\"            },
        {"nothing",               u"",               u""              },
    };
    for (const auto& c : cases)
        EXPECT_EQ(withoutDoubleBackslash(c.path), c.reduced) << c.behaviour;
}

} // namespace
} // namespace vorn
