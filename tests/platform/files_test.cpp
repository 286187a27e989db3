#include "platform/posix/files.h"

#include "platform/posix/path.h"
#include "support/environment.h"
#include "support/filesizelimit.h"
#include "support/ordinaryuser.h"
#include "support/smalldisk.h"
#include "support/tempfolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

std::string contentOf(File& file)
{
    std::string out;
    char block[3];
    for (std::int64_t count; (count = file.read(block, sizeof block)) > 0;)
        out.append(block, static_cast<std::size_t>(count));
    return out;
}

TEST(PosixFiles, readSeekAndMeasureAFile)
{
    const TempFolder folder;
    PosixFiles files;
    const auto file = files.openToRead(folder.write("data", "0123456789"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->size(), 10);
    EXPECT_EQ(contentOf(*file), "0123456789");
    EXPECT_TRUE(file->seek(7));
    EXPECT_EQ(contentOf(*file), "789");
    char byte = 0;
    EXPECT_EQ(file->read(&byte, 1), 0) << "at the end there is nothing, and no failure";
    EXPECT_FALSE(file->write("x", 1)) << "it was opened to read";
}

TEST(PosixFiles, refuseToOpenWhatCannotBeRead)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string secret = folder.write("secret", "x");
    ::chmod(folder.file("secret").c_str(), 0);
    ::mkfifo(folder.file("pipe").c_str(), 0666);
    const std::u16string file = folder.write("file", "");
    const std::u16string cut = file + u'\0' + u"x";
    const std::u16string endless = file + std::u16string(5000, u'a');
    const struct {
        const char* behaviour;
        std::u16string path;
    } cases[] = {
        {"no name",                       u""                        },
        {"a file that is not there",      folder.path("missing")     },
        {"in a folder that is not there", folder.path("missing/file")},
        {"a folder",                      folder.path("")            },
        {"a file that nobody may read",   secret                     },
        {"a pipe that nobody writes",     folder.path("pipe")        },
        {"a device",                      u"/dev/null"               },
        {"a file as if it were a folder", file + u"/x"               },
        {"a name with a zero in it",      cut                        },
        {"a name that is too long",       endless                    },
    };
    for (const auto& c : cases)
        EXPECT_FALSE(files.openToRead(c.path)) << c.behaviour;
}

TEST(PosixFiles, createAFileOrEmptyTheOneThatIsThere)
{
    const TempFolder folder;
    PosixFiles files;
    for (std::string_view content : {"first and long", "second"}) {
        const auto file = files.create(folder.path("new"));
        ASSERT_TRUE(file);
        EXPECT_EQ(file->size(), 0);
        EXPECT_TRUE(file->write(content.data(), content.size()));
        EXPECT_EQ(folder.read("new"), content);
    }
}

TEST(PosixFiles, writeOverAPlaceThatWasWrittenBefore)
{
    const TempFolder folder;
    PosixFiles files;
    const auto file = files.create(folder.path("new"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->write("0123456789", 10));
    EXPECT_TRUE(file->seek(2));
    EXPECT_TRUE(file->write("xy", 2));
    EXPECT_TRUE(file->seek(10));
    EXPECT_TRUE(file->write("!", 1));
    EXPECT_EQ(folder.read("new"), "01xy456789!");
}

TEST(PosixFiles, refuseToCreateWhatMayNotBe)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string guarded = folder.write("guarded", "keep");
    ::chmod(folder.file("guarded").c_str(), 0444);
    EXPECT_FALSE(files.create(guarded));
    EXPECT_EQ(folder.read("guarded"), "keep") << "a refused file keeps its bytes";
    EXPECT_FALSE(files.create(folder.path(""))) << "a folder";
    EXPECT_FALSE(files.create(folder.path("missing/file"))) << "in no folder";
    EXPECT_FALSE(files.create(u"")) << "no name";
}

TEST(PosixFiles, tellAFullDevice)
{
    PosixFiles files;
    if (!files.exists(u"/dev/full"))
        GTEST_SKIP() << "this system has none";
    const auto file = files.create(u"/dev/full");
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->write("x", 1));
    EXPECT_EQ(file->size(), -1);
}

TEST(PosixFiles, openAFileToWriteWithoutTouchingIt)
{
    const TempFolder folder;
    PosixFiles files;
    {
        const auto file = files.openToWrite(folder.write("old", "0123456789"));
        ASSERT_TRUE(file);
        EXPECT_EQ(file->size(), 10);
        EXPECT_EQ(folder.read("old"), "0123456789");
        EXPECT_TRUE(file->write("ab", 2)) << "it begins at the start";
        EXPECT_EQ(folder.read("old"), "ab23456789");
        EXPECT_TRUE(file->cut(4));
        EXPECT_EQ(folder.read("old"), "ab23");
        EXPECT_TRUE(file->flush());
    }
    const auto file = files.openToWrite(folder.path("new"));
    ASSERT_TRUE(file) << "a missing one is made";
    EXPECT_EQ(file->size(), 0);
    EXPECT_TRUE(file->cut(0));
    EXPECT_TRUE(file->flush());
}

TEST(PosixFiles, keepRoomForWhatIsToBeWritten)
{
    const TempFolder folder;
    PosixFiles files;
    const auto file = files.openToWrite(folder.write("file", "0123456789"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->reserve(0));
    EXPECT_TRUE(file->reserve(3));
    EXPECT_EQ(folder.read("file"), "0123456789") << "what is there is room enough";
    EXPECT_TRUE(file->reserve(12));
    EXPECT_EQ(folder.read("file"), std::string("0123456789\0\0", 12));
    EXPECT_TRUE(file->cut(10));
    EXPECT_FALSE(file->reserve(UINT64_MAX)) << "no file is that long";
    EXPECT_FALSE(file->cut(UINT64_MAX));
    EXPECT_EQ(folder.read("file"), "0123456789");
}

TEST(PosixFiles, leaveAFileAsItWasOnAFullDisk)
{
    const SmallDisk disk;
    if (!disk.isThere())
        GTEST_SKIP() << "this user may not mount a file system";
    PosixFiles files;
    const std::string content(SmallDisk::Bytes / 4, 'x');
    const std::u16string path = disk.folder.write("file", content);
    const std::uint64_t room = disk.freeBytes();
    const auto file = files.openToWrite(path);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->reserve(2 * SmallDisk::Bytes));
    EXPECT_EQ(disk.folder.read("file"), content);
    EXPECT_EQ(disk.freeBytes(), room) << "what was taken is given back";
    EXPECT_TRUE(file->reserve(SmallDisk::Bytes / 2));
    EXPECT_LT(disk.freeBytes(), room);
    EXPECT_TRUE(file->write(content.data(), content.size()));
    EXPECT_TRUE(file->cut(1));
}

TEST(PosixFiles, failAtTheLimitOfTheProcess)
{
    const TempFolder folder;
    PosixFiles files;
    const std::string content(10000, 'x');
    const auto file = files.openToWrite(folder.write("file", "0123456789"));
    ASSERT_TRUE(file);
    bool within = false;
    bool beyond = true;
    bool written = true;
    std::int64_t length = 0;
    {
        const FileSizeLimit limit(4096);
        beyond = file->reserve(content.size());
        length = file->size();
        within = file->reserve(4096);
        written = file->write(content.data(), content.size());
    }
    EXPECT_FALSE(beyond);
    EXPECT_EQ(length, 10);
    EXPECT_TRUE(within);
    EXPECT_FALSE(written) << "a part of it is no success";
    sigset_t pending;
    ::sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGXFSZ), 0) << "no signal is left behind";
    sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGXFSZ), 0) << "nor held back";
}

TEST(PosixFiles, keepOthersOutOfAnOpenFile)
{
    using Opening = std::unique_ptr<File> (PosixFiles::*)(std::u16string_view);
    const struct {
        const char* behaviour;
        Opening open;
    } ways[] = {
        {"to read",   &PosixFiles::openToRead },
        {"to write",  &PosixFiles::openToWrite},
        {"to create", &PosixFiles::create     },
    };
    const TempFolder folder;
    PosixFiles files;
    PosixFiles others;
    for (const auto& first : ways) {
        const std::u16string path = folder.write("file", "keep");
        for (const auto& second : ways) {
            const auto file = (files.*first.open)(path);
            ASSERT_TRUE(file) << first.behaviour;
            const std::string content = folder.read("file");
            EXPECT_FALSE((others.*second.open)(path)) << first.behaviour << second.behaviour;
            EXPECT_EQ(folder.read("file"), content) << first.behaviour << second.behaviour;
        }
        EXPECT_TRUE(others.openToRead(path)) << "it is open no longer";
    }
}

TEST(PosixFiles, readAFileThatMayOnlyBeRead)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string path = folder.write("file", "content");
    ::chmod(folder.file("file").c_str(), 0444);
    const auto file = files.openToRead(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(contentOf(*file), "content");
    EXPECT_FALSE(files.openToRead(path)) << "the lock needs no right to write";
}

TEST(PosixFiles, writeAFileThatMayOnlyBeWritten)
{
    const TempFolder folder;
    PosixFiles files;
    const std::u16string path = folder.write("file", "0123456789");
    ::chmod(folder.file("").c_str(), 0777);
    ::chmod(folder.file("file").c_str(), 0222);
    {
        const OrdinaryUser user;
        if (!OrdinaryUser::isStopped())
            GTEST_SKIP() << "permission bits do not hold for this user";
        EXPECT_FALSE(files.openToRead(path));
        const auto file = files.openToWrite(path);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->reserve(20));
        EXPECT_TRUE(file->write("ab", 2));
        EXPECT_TRUE(file->cut(4));
    }
    ::chmod(folder.file("file").c_str(), 0666);
    EXPECT_EQ(folder.read("file"), "ab23");
}

// What may not change in a folder that nobody may write.
void expectClosed(const TempFolder& folder)
{
    PosixFiles files;
    EXPECT_FALSE(files.openToWrite(folder.path("sub/new")));
    EXPECT_FALSE(files.create(folder.path("sub/new")));
    EXPECT_EQ(files.createNew(folder.path("sub/new")), CreateNew::Failed);
    EXPECT_EQ(files.createNew(folder.path("sub/file")), CreateNew::Exists);
    EXPECT_FALSE(files.makeFolder(folder.path("sub/new")));
    EXPECT_FALSE(files.makeFolder(folder.path("sub/new/")));
    EXPECT_FALSE(files.remove(folder.path("sub/file")));
    EXPECT_FALSE(files.exists(folder.path("sub/new")));
    const auto file = files.openToWrite(folder.path("sub/file"));
    ASSERT_TRUE(file) << "the file itself may be written";
    EXPECT_TRUE(file->write("n", 1));
}

TEST(PosixFiles, changeNoNamesInAFolderThatMayOnlyBeRead)
{
    const TempFolder folder;
    PosixFiles files;
    files.makeFolder(folder.path("sub"));
    folder.write("sub/file", "old");
    ::chmod(folder.file("").c_str(), 0777);
    ::chmod(folder.file("sub/file").c_str(), 0666);
    ::chmod(folder.file("sub").c_str(), 0555);
    expectClosed(folder);
    {
        const OrdinaryUser user; // for whom the system itself refuses all that
        if (OrdinaryUser::isStopped())
            expectClosed(folder);
    }
    ::chmod(folder.file("sub").c_str(), 0777);
    EXPECT_EQ(folder.read("sub/file"), "nld");
}

TEST(PosixFiles, findTheFolderOfTheUsersDocuments)
{
    const TempFolder folder;
    PosixFiles files;
    for (const char* name : {"home", "home/.config", "home/Documents", "home/Papers", "settings"})
        files.makeFolder(folder.path(name));
    const std::string home = folder.file("home");
    const std::string settings = folder.file("settings");
    const std::string line = "XDG_DOCUMENTS_DIR=";
    const std::string papers = line + "\"$HOME/Papers\"\n";
    const struct {
        const char* behaviour;
        const char* home;
        const char* settings;
        std::string file; // of the desktop's settings
        std::string found;
    } cases[] = {
        {"nobody's",                         nullptr,          nullptr,          papers,                          ""                  },
        {"the folder of that name",          home.c_str(),     nullptr,          "",                              home + "/Documents/"},
        {"the one that the desktop names",   home.c_str(),     nullptr,          "# x\n" + papers,
         home + "/Papers/"                                                                                                            },
        {"with settings elsewhere",          home.c_str(),     settings.c_str(), papers,                          home + "/Papers/"   },
        {"by its whole path",                home.c_str(),     nullptr,          line + "\"" + settings + "\"\n",
         settings + "/"                                                                                                               },
        {"which has to be there",            home.c_str(),     nullptr,          line + "\"$HOME/Gone\"\n",
         home + "/Documents/"                                                                                                         },
        {"and cannot be relative",           home.c_str(),     nullptr,          line + "\"Papers\"\n",
         home + "/Documents/"                                                                                                         },
        {"nor without quotes",               home.c_str(),     nullptr,          line + "$HOME/Papers\n",
         home + "/Documents/"                                                                                                         },
        {"nor cut off",                      home.c_str(),     nullptr,          line + "\"",                     home + "/Documents/"},
        {"the home itself if there is none", settings.c_str(), nullptr,          "",                              settings + "/"      },
        {"no home that is not there",        "/no/such/home",  nullptr,          "",                              ""                  },
    };
    for (const auto& c : cases) {
        const EnvironmentVariable homeVariable("HOME", c.home);
        const EnvironmentVariable settingsVariable("XDG_CONFIG_HOME", c.settings);
        folder.write("settings/user-dirs.dirs", c.file);
        folder.write("home/.config/user-dirs.dirs", c.file);
        EXPECT_EQ(files.documentsFolder(), std::filesystem::path(c.found).u16string())
            << c.behaviour;
    }
}

TEST(PosixFiles, createOnlyNewFilesWhenAskedTo)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_EQ(files.createNew(folder.path("new")), CreateNew::Created);
    EXPECT_EQ(folder.read("new"), "");
    EXPECT_EQ(files.createNew(folder.path("new")), CreateNew::Exists);
    files.makeFolder(folder.path("sub"));
    EXPECT_EQ(files.createNew(folder.path("sub")), CreateNew::Exists) << "a folder is a name too";
    EXPECT_EQ(files.createNew(folder.path("missing/new")), CreateNew::Failed);
}

TEST(PosixFiles, removeFilesAndMakeFolders)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_FALSE(files.exists(folder.path("sub")));
    EXPECT_TRUE(files.makeFolder(folder.path("sub")));
    EXPECT_TRUE(files.exists(folder.path("sub")));
    EXPECT_FALSE(files.makeFolder(folder.path("sub"))) << "it is there already";
    EXPECT_FALSE(files.remove(folder.path("sub"))) << "folders stay";
    folder.write("sub/file", "x");
    EXPECT_TRUE(files.remove(folder.path("sub/file")));
    EXPECT_FALSE(files.exists(folder.path("sub/file")));
    EXPECT_FALSE(files.remove(folder.path("sub/file"))) << "it is gone already";
}

TEST(PosixFiles, takeNamesOfAnyScript)
{
    const TempFolder folder;
    PosixFiles files;
    EXPECT_EQ(files.createNew(folder.path("") + u"Umsätze 中文 \U0001d11e"), CreateNew::Created);
    EXPECT_TRUE(std::filesystem::exists(folder.file("Umsätze 中文 \xf0\x9d\x84\x9e")));
}

TEST(PathText, isThePathOfUtf8)
{
    const struct {
        const char* behaviour;
        const char* bytes;
        const char16_t* text;
    } cases[] = {
        {"nothing",                      "",                   u""            },
        {"letters",                      "/a/b.csv",           u"/a/b.csv"    },
        {"two bytes",                    "\xc3\xa4/",          u"\u00e4/"     },
        {"three bytes",                  "\xe2\x82\xac",       u"\u20ac"      },
        {"four bytes",                   "x\xf0\x9d\x84\x9ex", u"x\U0001d11ex"},
        {"the last character",           "\xf4\x8f\xbf\xbf",   u"\U0010ffff"  },
        {"nothing for one beyond it",    "\xf4\x90\x80\x80",   u""            },
        {"nor for a byte of nothing",    "/a\xff",             u""            },
        {"nor for the middle of one",    "\x80",               u""            },
        {"nor for one that is cut off",  "a\xe2\x82",          u""            },
        {"nor for one that goes astray", "\xe2\x41\xac",       u""            },
        {"nor for one that is too long", "\xc0\xaf",           u""            },
        {"nor for half of a pair",       "\xed\xa0\xb4",       u""            },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(pathText(c.bytes), c.text) << c.behaviour;
        EXPECT_EQ(pathBytes(c.text), c.text[0] != 0 ? c.bytes : "") << c.behaviour;
    }
}

TEST(PathBytes, areTheUtf8OfAPath)
{
    EXPECT_EQ(pathBytes(u""), "");
    EXPECT_EQ(pathBytes(u"/a/b.csv"), "/a/b.csv");
    EXPECT_EQ(pathBytes(u"\u00e4"), "\xc3\xa4");
    EXPECT_EQ(pathBytes(u"\u20ac"), "\xe2\x82\xac");
    EXPECT_EQ(pathBytes(u"\U0001d11e"), "\xf0\x9d\x84\x9e");
    EXPECT_EQ(pathBytes(std::u16string(u"a\0b", 3)), "") << "no call could take it whole";
    EXPECT_EQ(pathBytes(std::u16string{u'a', u'\xd834'}), "a\xef\xbf\xbd") << "a lone surrogate";
    EXPECT_EQ(pathBytes(std::u16string{u'\xdd1e', u'a'}), "\xef\xbf\xbd"
                                                          "a");
}

} // namespace
} // namespace vorn
