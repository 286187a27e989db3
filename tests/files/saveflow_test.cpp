#include "files/saveflow.h"

#include "core/chain.h"
#include "core/error.h"
#include "core/input.h"
#include "support/faultyfiles.h"
#include "support/filesizelimit.h"
#include "support/ordinaryuser.h"
#include "support/smalldisk.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

using Calls = std::vector<std::string>;

const std::string OldContent(500, 'o');

// Takes the sticky error.
int takeError()
{
    const int code = errorState.code;
    clearError();
    return code;
}

void replaceFile(std::u16string_view path, std::string_view bytes)
{
    vorn::replaceFile(path, bytes.data(), bytes.size());
}

std::vector<std::string> namesIn(const TempFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.file("")))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void enter(int column, int row, std::u16string_view text)
{
    storeCellInput(column, row, text);
}

// --- Putting bytes in the place of others

TEST(ReplaceFile, leavesExactlyTheNewBytes)
{
    const TestPlatform machine;
    const TempFolder folder;
    const struct {
        const char* behaviour;
        std::size_t old;
        std::size_t size;
    } cases[] = {
        {"a longer file",          100,    5000   },
        {"a shorter one",          5000,   100    },
        {"one of the same length", 100,    100    },
        {"nothing",                100,    0      },
        {"for nothing",            0,      0      },
        {"a long one",             0,      3000000},
        {"for a long one",         300000, 3000000},
    };
    for (const auto& c : cases) {
        const std::u16string path = folder.write("a.vn", std::string(c.old, 'o'));
        const std::string bytes(c.size, 'n');
        replaceFile(path, bytes);
        EXPECT_EQ(takeError(), ErrorNone) << c.behaviour;
        EXPECT_TRUE(folder.read("a.vn") == bytes) << c.behaviour;
    }
    replaceFile(folder.path("new.vn"), "new");
    EXPECT_EQ(folder.read("new.vn"), "new") << "one that was not there";
    EXPECT_EQ(takeError(), ErrorNone);
}

TEST(ReplaceFile, keepsRoomFirstAndWritesAtOnceWithoutATemporaryFile)
{
    const TestPlatform machine;
    const TempFolder folder;
    const std::u16string path = folder.write("a.vn", OldContent);
    FaultyFiles files;
    replaceFile(path, std::string(1000000, 'n'));
    EXPECT_EQ(files.calls, (Calls{"openToWrite", "reserve", "write", "cut", "flush"}));
    EXPECT_EQ(namesIn(folder), Calls{"a.vn"});
}

TEST(ReplaceFile, makesAVanishedFolderOnce)
{
    const TestPlatform machine;
    const TempFolder folder;
    replaceFile(folder.path("gone/a.vn"), "new");
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_EQ(folder.read("gone/a.vn"), "new");

    replaceFile(folder.path("no/such/a.vn"), "new");
    EXPECT_EQ(takeError(), ErrorFileCreate) << "but not the folder that it would be in";
    EXPECT_FALSE(fs::exists(folder.file("no")));

    FaultyFiles files;
    replaceFile(folder.path("no/such/a.vn"), "new");
    EXPECT_EQ(files.calls, (Calls{"openToWrite", "makeFolder", "openToWrite"}));
    clearError();
    files.calls.clear();
    replaceFile(u"/", "new");
    EXPECT_EQ(files.calls, (Calls{"openToWrite", "openToWrite"})) << "the root is there";
    clearError();
    files.calls.clear();
    replaceFile(u"", "new");
    EXPECT_EQ(files.calls, (Calls{"openToWrite", "openToWrite"})) << "no folder is named";
    EXPECT_EQ(takeError(), ErrorFileCreate);
}

// Every call of a save fails once, in turn.
TEST(ReplaceFile, tellsTheFailureOfEachSingleCall)
{
    const TestPlatform machine;
    const TempFolder folder;
    const struct {
        const char* failing;
        int code;
        bool untouched;
    } cases[] = {
        {"openToWrite", ErrorNone,      false}, // it is tried again
        {"reserve",     ErrorFileWrite, true },
        {"write",       ErrorFileWrite, false},
        {"cut",         ErrorFileWrite, false},
        {"flush",       ErrorFileWrite, false},
    };
    const std::string bytes(100, 'n');
    int number = 0;
    for (const auto& c : cases) {
        const std::u16string path = folder.write("a.vn", OldContent);
        FaultyFiles files;
        files.failing = ++number;
        replaceFile(path, bytes);
        EXPECT_EQ(files.calls[static_cast<std::size_t>(number - 1)], c.failing);
        EXPECT_EQ(takeError(), c.code) << c.failing;
        EXPECT_TRUE(folder.read("a.vn") == OldContent || !c.untouched) << c.failing;
    }
    FaultyFiles files;
    files.failing = ++number;
    replaceFile(folder.path("a.vn"), bytes);
    EXPECT_EQ(takeError(), ErrorNone) << "there is no further call that could fail";
}

TEST(ReplaceFile, touchesNothingWhileAnErrorStands)
{
    const TestPlatform machine;
    const TempFolder folder;
    const std::u16string path = folder.write("a.vn", OldContent);
    FaultyFiles files;
    raiseError(ErrorMemory);
    replaceFile(path, "new");
    EXPECT_EQ(takeError(), ErrorMemory);
    EXPECT_EQ(files.calls, Calls{}) << "it is not even opened";
    EXPECT_EQ(folder.read("a.vn"), OldContent);
}

TEST(ReplaceFile, leavesTheOldFileOnAFullDisk)
{
    const SmallDisk disk;
    if (!disk.isThere())
        GTEST_SKIP() << "this user may not mount a file system";
    const TestPlatform machine;
    const std::u16string path = disk.folder.write("a.vn", OldContent);
    const std::uint64_t room = disk.freeBytes();
    replaceFile(path, std::string(SmallDisk::Bytes + 1, 'n'));
    EXPECT_EQ(takeError(), ErrorFileWrite);
    EXPECT_EQ(disk.folder.read("a.vn"), OldContent);
    EXPECT_EQ(disk.freeBytes(), room);

    replaceFile(path, std::string(SmallDisk::Bytes / 2, 'n'));
    EXPECT_EQ(takeError(), ErrorNone) << "less would have fitted";
    replaceFile(path, std::string(SmallDisk::Bytes * 3 / 4, 'm'));
    EXPECT_EQ(takeError(), ErrorNone) << "and the room of the old file counts";
    EXPECT_TRUE(disk.folder.read("a.vn") == std::string(SmallDisk::Bytes * 3 / 4, 'm'));
}

TEST(ReplaceFile, leavesTheOldFileAtTheLimitOfTheProcess)
{
    const TestPlatform machine;
    const TempFolder folder;
    const std::u16string path = folder.write("a.vn", OldContent);
    int code = ErrorNone;
    {
        const FileSizeLimit limit(4096);
        replaceFile(path, std::string(5000, 'n'));
        code = takeError();
    }
    EXPECT_EQ(code, ErrorFileWrite);
    EXPECT_EQ(folder.read("a.vn"), OldContent);
}

TEST(ReplaceFile, tellsOfADeviceThatTakesNothing)
{
    const TestPlatform machine;
    if (!platform.files->exists(u"/dev/full"))
        GTEST_SKIP() << "this system has none";
    replaceFile(u"/dev/full", "new");
    EXPECT_EQ(takeError(), ErrorFileWrite);
    replaceFile(u"/dev/null", "new");
    EXPECT_EQ(takeError(), ErrorNone) << "and of none that takes all";
}

TEST(ReplaceFile, leavesAFileThatMayNotBeWritten)
{
    const TestPlatform machine;
    const TempFolder folder;
    const std::u16string guarded = folder.write("guarded.vn", OldContent);
    fs::permissions(guarded, fs::perms::owner_read);
    fs::create_directory(folder.file("sub.vn"));
    folder.write("sub.vn/in.vn", OldContent);
    ::mkfifo(folder.file("pipe.vn").c_str(), 0666);
    fs::permissions(folder.file("sub.vn"), fs::perms::owner_read | fs::perms::owner_exec);
    const struct {
        const char* behaviour;
        std::u16string path;
    } cases[] = {
        {"one that may only be read",   guarded                    },
        {"a new one in such a folder",  folder.path("sub.vn/a.vn") },
        {"a folder",                    folder.path("sub.vn")      },
        {"one below a file",            folder.path("guarded.vn/a")},
        {"a pipe",                      folder.path("pipe.vn")     },
        {"one with a zero in its name", guarded + u'\0'            },
        {"no name at all",              u""                        },
    };
    for (const auto& c : cases) {
        replaceFile(c.path, "new");
        EXPECT_EQ(takeError(), ErrorFileCreate) << c.behaviour;
    }
    EXPECT_EQ(folder.read("guarded.vn"), OldContent);
    EXPECT_FALSE(fs::exists(folder.file("sub.vn/a.vn")));
    fs::permissions(folder.file("sub.vn"), fs::perms::owner_all);
}

TEST(ReplaceFile, leavesAFileThatIsOpenElsewhere)
{
    const TestPlatform machine;
    const TempFolder folder;
    const std::u16string path = folder.write("a.vn", OldContent);
    PosixFiles elsewhere;
    {
        const auto file = elsewhere.openToRead(path);
        ASSERT_TRUE(file);
        replaceFile(path, "new");
        EXPECT_EQ(takeError(), ErrorFileCreate);
        EXPECT_EQ(folder.read("a.vn"), OldContent);
    }
    replaceFile(path, "new");
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_TRUE(elsewhere.openToWrite(path)) << "a save leaves no lock behind";
}

// --- The kinds

TEST(WriteFile, writesOnlyTheSystemsOwnFormat)
{
    const TestDocument document;
    const TempFolder folder;
    const struct {
        const char* behaviour;
        const char* name;
        bool hasWriter;
        bool written;
        int code;
    } cases[] = {
        {"our own",              "a.vn",  true,  true,  ErrorNone      },
        {"an unknown extension", "a.doc", true,  true,  ErrorNone      },
        {"none",                 "a",     true,  true,  ErrorNone      },
        {"text, without a word", "a.csv", false, false, ErrorNone      },
        {"in capitals",          "a.CSV", false, false, ErrorNone      },
        {"Pocket Excel",         "a.pxl", false, false, ErrorFileCreate},
        {"Excel",                "a.xls", false, false, ErrorFileCreate},
    };
    for (const auto& c : cases) {
        const std::u16string path = folder.path(c.name);
        EXPECT_EQ(hasWriter(documentKind(path)), c.hasWriter) << c.behaviour;
        WriteFile(path);
        EXPECT_EQ(takeError(), c.code) << c.behaviour;
        EXPECT_EQ(fs::exists(folder.file(c.name)), c.written) << c.behaviour;

        folder.write(c.name, OldContent);
        WriteFile(path);
        EXPECT_EQ(takeError(), c.code) << c.behaviour;
        EXPECT_EQ(folder.read(c.name) != OldContent, c.written) << c.behaviour;
    }
    EXPECT_EQ(document.machine.userInterface.waitDepth, 0);
}

TEST(WriteFile, leavesPathAndFlagToTheCaller)
{
    const TestDocument document;
    const TempFolder folder;
    workbook->modified = true;
    WriteFile(folder.path("a.vn"));
    EXPECT_EQ(workbook->path, u"");
    EXPECT_TRUE(workbook->modified);
}

TEST(WriteFile, refusesAPathThatIsTooLong)
{
    const TestDocument document;
    const TempFolder folder;
    const std::size_t start = folder.path("d").size() - 1;
    const std::string sub(std::size_t{PathMax} - start - 101, 'd');
    const std::string longest = sub + '/' + std::string(100, 'f');
    ASSERT_EQ(folder.path(longest).size(), std::size_t{PathMax});
    fs::create_directory(folder.file(sub));
    WriteFile(folder.path(longest));
    EXPECT_EQ(takeError(), ErrorNone);
    WriteFile(folder.path(longest + "f"));
    EXPECT_EQ(takeError(), ErrorFileCreate);
    EXPECT_TRUE(fs::exists(folder.file(longest)));
    EXPECT_FALSE(fs::exists(folder.file(longest + "f")));
}

// What is too long for any record is known before the file is opened.
TEST(WriteFile, leavesTheOldFileIfTheDocumentCannotBePutTogether)
{
    const TestDocument document;
    const TempFolder folder;
    const std::u16string path = folder.write("a.vn", OldContent);
    const std::u16string text(40000, u'x');
    enter(0, 0, text);
    workbook->modified = true;
    FaultyFiles files;
    WriteFile(path);
    EXPECT_EQ(takeError(), ErrorFileWrite);
    EXPECT_EQ(files.calls, Calls{});
    EXPECT_EQ(folder.read("a.vn"), OldContent);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), text) << "the document is as it was";
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(document.machine.userInterface.waitDepth, 0);
}

TEST(WriteFile, leavesTheDocumentWhateverFails)
{
    const TestDocument document;
    const TempFolder folder;
    const std::u16string path = folder.path("a.vn");
    enter(0, 0, u"5");
    enter(1, 2, u"=A1*2");
    recalculate();
    int failures = 0;
    for (int failing = 1; failing <= 10; ++failing) {
        folder.write("a.vn", OldContent);
        FaultyFiles files;
        files.failing = failing;
        WriteFile(path);
        failures += takeError() != ErrorNone ? 1 : 0;
        EXPECT_EQ(workbook->sheets.size(), 3) << failing;
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << failing;
        EXPECT_EQ(workbook->currentSheet->cellText(1, 2), u"10") << failing;
    }
    EXPECT_EQ(failures, 4) << "to keep room, to write, to cut and to flush";
}

// Sees what is there when the wait cursor rises and falls.
class WatchingUser : public SilentUserInterface {
public:
    explicit WatchingUser(const TempFolder& folder) : folder_(folder) {}

    void showWaitCursor(bool wait) override
    {
        SilentUserInterface::showWaitCursor(wait);
        (wait ? atRise : atFall) = folder_.read("a.vn").size();
    }
    std::size_t atRise = 0;
    std::size_t atFall = 0;

private:
    const TempFolder& folder_;
};

TEST(WriteFile, keepsTheWaitCursorUpWhileItWrites)
{
    const TestDocument document;
    const TempFolder folder;
    WatchingUser user(folder);
    platform.userInterface = &user;
    WriteFile(folder.write("a.vn", "old"));
    EXPECT_EQ(user.atRise, 3U);
    EXPECT_GT(user.atFall, 100U);
    EXPECT_EQ(user.waitDepth, 0);
}

} // namespace
} // namespace vorn
