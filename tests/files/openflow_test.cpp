#include "files/openflow.h"

#include "core/error.h"
#include "files/saveflow.h"
#include "support/faultyfiles.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

TEST(OpenFlow, tellsTheKindByWhatStandsBehindTheLastDot)
{
    const TestPlatform machine;
    const struct {
        const char* behaviour;
        const char16_t* path;
        DocumentKind kind;
    } cases[] = {
        {"text",                       u"/a/b.csv",   DocumentText       },
        {"in capitals",                u"B.CSV",      DocumentText       },
        {"Pocket Excel",               u"b.pxl",      DocumentPocketExcel},
        {"Excel",                      u"b.Xls",      DocumentExcel      },
        {"the system's own",           u"b.vn",       DocumentNative     },
        {"any other",                  u"b.txt",      DocumentNative     },
        {"no dot",                     u"csv",        DocumentNative     },
        {"nothing",                    u"",           DocumentNative     },
        {"nothing behind the dot",     u"b.",         DocumentNative     },
        {"nothing before it",          u".csv",       DocumentText       },
        {"the last of several",        u"b.csv.xls",  DocumentExcel      },
        {"more than an extension",     u"b.csvx",     DocumentNative     },
        {"a blank behind it",          u"b.csv ",     DocumentNative     },
        {"a dot in the folder's name", u"/a.csv/b",   DocumentNative     },
        {"a letter like another",      u"b.c\u017fv", DocumentNative     },
    };
    for (const auto& c : cases)
        EXPECT_EQ(documentKind(c.path), c.kind) << c.behaviour;
}

TEST(OpenFlow, callsTheDocumentByItsFileWithoutTheFolder)
{
    const TestDocument document;
    const struct {
        const char* behaviour;
        const char16_t* path;
        const char16_t* title;
    } cases[] = {
        {"no path",                 u"",               u"Vorn"  },
        {"a name alone",            u"b.vn",           u"b.vn"  },
        {"a path",                  u"/home/a/b c.vn", u"b c.vn"},
        {"with backslashes",        u"\\Docs\\b.vn",   u"b.vn"  },
        {"with both",               u"/Docs\\a/b.vn",  u"b.vn"  },
        {"nothing behind a folder", u"/Docs/",         u""      },
    };
    for (const auto& c : cases) {
        workbook->path = c.path;
        EXPECT_EQ(documentTitle(), c.title) << c.behaviour;
    }
}

void expectNewDocument(const char* behaviour)
{
    EXPECT_EQ(workbook->sheets.size(), NewDocumentSheets) << behaviour;
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0)) << behaviour;
    EXPECT_EQ(workbook->fileKind, FileKindNative) << behaviour;
    EXPECT_EQ(workbook->path, u"") << behaviour;
    EXPECT_FALSE(workbook->modified) << behaviour;
}

TEST(OpenFlow, leavesANewDocumentAndTheCodeOfTheFailure)
{
    TestDocument document;
    const TempFolder folder;
    folder.write("notes.txt", "text");
    folder.write("a.pxl", "text");
    folder.write("a.xls", "text");
    fs::permissions(folder.write("closed.csv", "1"), fs::perms::none);
    fs::create_directory(folder.file("folder.csv"));
    folder.write("empty.vn", "");
    WriteFile(folder.path("whole.vn"));
    folder.write("cut.vn", folder.read("whole.vn").substr(0, 500));
    folder.write("huge.vn", folder.read("whole.vn"));
    fs::resize_file(folder.file("huge.vn"), std::uintmax_t{5} << 30);
    folder.write("open.csv", "1");
    PosixFiles elsewhere;
    const auto held = elsewhere.openToRead(folder.path("whole.vn"));
    const auto heldText = elsewhere.openToWrite(folder.path("open.csv"));
    const struct {
        const char* behaviour;
        const char* name;
        int code;
    } cases[] = {
        {"no such text file",      "no.csv",     ErrorFileOpen  },
        {"no such file",           "no.vn",      ErrorFileOpen  },
        {"no such Excel file",     "no.xls",     ErrorExcelOpen },
        {"no such folder",         "no/a.csv",   ErrorFileOpen  },
        {"a folder",               "folder.csv", ErrorFileOpen  },
        {"a file within a file",   "a.xls/b",    ErrorFileOpen  },
        {"a file nobody may read", "closed.csv", ErrorFileOpen  },
        {"a file of another kind", "notes.txt",  ErrorFileFormat},
        {"an empty file",          "empty.vn",   ErrorFileRead  },
        {"one that is cut off",    "cut.vn",     ErrorFileRead  },
        {"one beyond any count",   "huge.vn",    ErrorFileRead  },
        {"one open elsewhere",     "whole.vn",   ErrorFileOpen  },
        {"a text file too",        "open.csv",   ErrorFileOpen  },
        {"no Pocket Excel file",   "a.pxl",      ErrorFileFormat},
        {"no Excel file",          "a.xls",      ErrorExcelOpen },
    };
    for (const auto& c : cases) {
        workbook->modified = true;
        OpenDocument(folder.path(c.name));
        EXPECT_EQ(errorState.code, c.code) << c.behaviour;
        expectNewDocument(c.behaviour);
        clearError();
    }
    EXPECT_EQ(document.machine.userInterface.waitDepth, 0);
    EXPECT_TRUE(document.machine.userInterface.boxes.empty());
}

TEST(OpenFlow, readsATextFileIntoOneSheetWithoutAPath)
{
    TestDocument document;
    const TempFolder folder;
    OpenDocument(folder.write("a.csv", "1,2\nx,\n"));
    EXPECT_EQ(errorState.code, ErrorNone);
    ASSERT_EQ(workbook->sheets.size(), 1);
    EXPECT_EQ(workbook->currentSheet->cellText(1, 0), u"2");
    EXPECT_EQ(workbook->currentSheet->cellText(0, 1), u"x");
    EXPECT_EQ(workbook->path, u"");
    EXPECT_EQ(documentTitle(), u"Vorn");
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(document.machine.userInterface.waitDepth, 0);
}

TEST(OpenFlow, readsADocumentThatWasSavedWithItsPath)
{
    TestDocument document;
    const TempFolder folder;
    workbook->currentSheet->setCell(0, 0, {CellValue::makeNumber(5), 0});
    workbook->addSheet(u"Fourth");
    workbook->modified = true;
    const std::u16string path = folder.path("a.doc");
    WriteFile(path);
    for (int time = 0; time < 2; ++time) { // no lock is left behind
        NewDocument(NewDocumentSheets, FileKindNative);
        OpenDocument(path);
        EXPECT_EQ(errorState.code, ErrorNone);
        ASSERT_EQ(workbook->sheets.size(), 4);
        EXPECT_EQ(workbook->sheetAt(3)->name(), u"Fourth");
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");
        EXPECT_EQ(workbook->path, path);
        EXPECT_EQ(workbook->fileKind, FileKindNative);
        EXPECT_EQ(documentTitle(), u"a.doc");
        EXPECT_FALSE(workbook->modified);
    }
}

TEST(OpenFlow, leavesANewDocumentIfReadingFails)
{
    const TestDocument document;
    const TempFolder folder;
    const std::u16string path = folder.path("a.vn");
    WriteFile(path);
    FaultyFiles files;
    files.failing = 2;
    OpenDocument(path);
    EXPECT_EQ(files.calls, (std::vector<std::string>{"openToRead", "read"}));
    EXPECT_EQ(errorState.code, ErrorFileRead);
    expectNewDocument("a disk that fails");
}

TEST(OpenFlow, findsOutWhetherAFileExistsByMakingIt)
{
    const TestDocument document;
    const TempFolder folder;
    EXPECT_TRUE(fileExists(folder.write("a.vn", "old")));
    EXPECT_EQ(folder.read("a.vn"), "old");
    EXPECT_FALSE(fileExists(folder.path("b.vn")));
    EXPECT_TRUE(fs::exists(folder.file("b.vn")));
    EXPECT_TRUE(fileExists(folder.path("b.vn"))) << "what the question itself left";
    EXPECT_FALSE(fileExists(folder.path("no/such"))) << "nor where none can be made";
    EXPECT_FALSE(fileExists(u""));
    EXPECT_TRUE(fileExists(folder.path("."))) << "a folder is in the way of a file";
    EXPECT_EQ(errorState.code, ErrorNone);
}

// A path inside `folder` that has exactly `length` characters and leads to a file of one cell.
std::u16string fileWithLongPath(const TempFolder& folder, std::size_t length)
{
    const std::string extension = ".csv";
    std::string name;
    while (length - folder.file(name).size() > 100)
        name += std::string(50, 'd') + "/";
    name += std::string(length - folder.file(name).size() - extension.size(), 'f') + extension;
    fs::create_directories(fs::path(folder.file(name)).parent_path());
    return folder.write(name, "5");
}

TEST(OpenFlow, opensPathsUpToTheirLimit)
{
    const TestDocument document;
    const TempFolder folder;
    const std::u16string longest = fileWithLongPath(folder, PathMax);
    EXPECT_EQ(longest.size(), std::size_t{PathMax});
    OpenDocument(longest);
    EXPECT_EQ(errorState.code, ErrorNone);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");

    OpenDocument(fileWithLongPath(folder, PathMax + 1));
    EXPECT_EQ(errorState.code, ErrorFileOpen);
    expectNewDocument("one character too many");
}

// Sees whether work that may take a while goes on with the wait cursor up.
class WatchingUser : public SilentUserInterface {
public:
    void showWaitCursor(bool wait) override
    {
        SilentUserInterface::showWaitCursor(wait);
        if (wait)
            sheetsAtRise = workbook->sheets.size();
        else
            sheetsAtFall = workbook->sheets.size();
    }
    int sheetsAtRise = 0;
    int sheetsAtFall = 0;
};

TEST(OpenFlow, keepsTheWaitCursorUpWhileItReads)
{
    const TestDocument document;
    const TempFolder folder;
    WatchingUser user;
    platform.userInterface = &user;
    OpenDocument(folder.write("a.csv", "1"));
    EXPECT_EQ(user.sheetsAtRise, 3);
    EXPECT_EQ(user.sheetsAtFall, 1);
    EXPECT_EQ(user.waitDepth, 0);
}

} // namespace
} // namespace vorn
