#include "core/error.h"
#include "core/workbook.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "support/choosinguser.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view FirstFolder = u"\\C_Drive\\C_MyDocs\\";

// Takes the sticky error.
int takeError()
{
    const int code = errorState.code;
    clearError();
    return code;
}

class FileActions : public testing::Test {
protected:
    FileActions() { app.enterCell(u"5"); }

    void answer(std::string_view name) { user.files.push_back(folder.path(name)); }
    bool exists(std::string_view name) const { return fs::exists(folder.file(name)); }

    const TestPlatform machine;
    ChoosingUser user;
    const TempFolder folder;
    Application app;
};

// --- Open

TEST_F(FileActions, openAsksForAFileOfAnyFormat)
{
    app.lastFilterIndex = 4;
    openCommand();
    ASSERT_EQ(user.fileQuestions.size(), 1U);
    const FileQuestion& question = user.fileQuestions[0];
    EXPECT_EQ(question.title, u"Open File");
    EXPECT_EQ(question.purpose, FileQuestion::Open);
    EXPECT_EQ(question.path, u"");
    EXPECT_EQ(question.filterIndex, 4);
    const struct {
        const char16_t* text;
        const char16_t* patterns;
    } filters[] = {
        {u"All Vorn Files",              u"*.vn;*.pxl;*.xls;*.csv"},
        {u"Vorn Files (*.vn)",           u"*.vn"                  },
        {u"Pocket Excel Files (*.pxl)",  u"*.pxl"                 },
        {u"Excel Files 95-2000 (*.xls)", u"*.xls"                 },
        {u"Text Files (*.csv)",          u"*.csv"                 },
    };
    ASSERT_EQ(question.filters.size(), std::size(filters));
    for (std::size_t index = 0; index < std::size(filters); ++index) {
        EXPECT_EQ(question.filters[index].text, filters[index].text);
        EXPECT_EQ(question.filters[index].patterns, filters[index].patterns);
    }
}

TEST_F(FileActions, openDoesNothingForCancel)
{
    user.filter = 2;
    openCommand();
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");
    EXPECT_EQ(app.lastFilterIndex, 0);
    EXPECT_EQ(app.documentFolder, FirstFolder);
    EXPECT_EQ(app.recentFiles[0], u"");
}

TEST_F(FileActions, openShowsTheFileAndRemembersIt)
{
    folder.write("a.csv", "7");
    answer("a.csv");
    user.filter = 5;
    openCommand();
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"7");
    EXPECT_EQ(app.recentFiles[0], folder.path("a.csv"));
    EXPECT_EQ(user.documents, std::vector<std::u16string>{folder.path("a.csv")});
    EXPECT_EQ(app.documentFolder, folder.path(""));
    EXPECT_EQ(app.lastFilterIndex, 5);
}

TEST_F(FileActions, openCompletesTheNameAsTheSaveDialogDoes)
{
    const struct {
        const char* behaviour;
        int filter;
        const char* sought;
    } cases[] = {
        {"all files",             1, "a.vn" },
        {"our own add another's", 2, "a.pxl"},
        {"which adds a third's",  3, "a.xls"},
        {"which adds ours",       4, "a.vn" },
        {"as text does",          5, "a.vn" },
    };
    for (const auto& c : cases) {
        user.files = {folder.path("a")};
        user.filter = c.filter;
        user.title.clear();
        openCommand();
        const bool excel = c.filter == 3;
        EXPECT_EQ(takeError(), excel ? ErrorExcelOpen : ErrorFileOpen) << c.behaviour;
        folder.write(c.sought, "no records at all");
        user.files = {folder.path("a")};
        openCommand();
        EXPECT_EQ(takeError(), excel ? ErrorExcelOpen : ErrorFileFormat) << c.behaviour;
        fs::remove(folder.file(c.sought));
    }
}

TEST_F(FileActions, openRemembersOnlyTheFolderAndTheFilterOfAFailure)
{
    folder.write("bad.vn", "no records at all");
    answer("bad.vn");
    user.filter = 2;
    openCommand();
    EXPECT_EQ(takeError(), ErrorFileFormat);
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(workbook->path, u"");
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"");
    EXPECT_EQ(user.title, u"Vorn");
    EXPECT_EQ(app.recentFiles[0], u"");
    EXPECT_TRUE(user.documents.empty());
    EXPECT_EQ(app.documentFolder, folder.path(""));
    EXPECT_EQ(app.lastFilterIndex, 2);
}

TEST_F(FileActions, openKeepsItsFolderForANameWithoutOne)
{
    user.files = {u"no such file.vn"};
    openCommand();
    clearError();
    EXPECT_EQ(app.documentFolder, FirstFolder);
}

// --- Save

TEST_F(FileActions, saveClearsTheFlagHoweverItSaves)
{
    answer("a.vn");
    saveCommand();
    EXPECT_FALSE(workbook->modified) << "after the question for a name";
    workbook->modified = true;
    saveCommand();
    EXPECT_FALSE(workbook->modified) << "and to the known path";
    EXPECT_EQ(user.fileQuestions.size(), 1U);
    workbook->modified = true;
    answer("b.vn");
    saveAsCommand();
    EXPECT_FALSE(workbook->modified) << "and under another name";
    EXPECT_EQ(user.fileQuestions.size(), 2U);
    EXPECT_EQ(workbook->path, folder.path("b.vn"));
}

TEST_F(FileActions, saveKeepsTheFlagIfNothingWasWritten)
{
    const struct {
        const char* behaviour;
        const char* name;
        int code;
    } cases[] = {
        {"Cancel",                nullptr,        ErrorNone      },
        {"a text file",           "a.csv",        ErrorNone      },
        {"a format to come",      "a.xls",        ErrorFileCreate},
        {"a file that cannot be", "no/such/a.vn", ErrorFileCreate},
    };
    for (const auto& command : {saveCommand, saveAsCommand}) {
        for (const auto& c : cases) {
            if (c.name != nullptr)
                answer(c.name);
            user.answers = {BoxAnswer::Yes};
            command();
            EXPECT_EQ(takeError(), c.code) << c.behaviour;
            EXPECT_TRUE(workbook->modified) << c.behaviour;
            EXPECT_EQ(workbook->path, u"") << c.behaviour;
        }
    }
}

// --- Delete and properties

TEST_F(FileActions, deleteTakesTheChosenFileAway)
{
    folder.write("a.vn", "x");
    folder.write("b.vn", "x");
    deleteFileCommand();
    EXPECT_TRUE(exists("a.vn")) << "Cancel";
    answer("a.vn");
    deleteFileCommand();
    EXPECT_FALSE(exists("a.vn"));
    EXPECT_TRUE(exists("b.vn"));
    EXPECT_EQ(takeError(), ErrorNone);
    const FileQuestion& question = user.fileQuestions.back();
    EXPECT_EQ(question.title, u"Delete File");
    EXPECT_EQ(question.purpose, FileQuestion::Choose);
    ASSERT_EQ(question.filters.size(), 2U);
    EXPECT_EQ(question.filters[0].text, u"Vorn Files (*.vn)");
    EXPECT_EQ(question.filters[1].text, u"Pocket Excel Files (*.pxl)");
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(app.documentFolder, FirstFolder);
}

TEST_F(FileActions, deleteTellsWhatCannotGo)
{
    for (const char* name : {"no.vn", "", "no/such/a.vn"}) {
        answer(name);
        deleteFileCommand();
        EXPECT_EQ(takeError(), ErrorFileDelete) << name;
    }
    EXPECT_TRUE(exists("")) << "a folder is no file";
}

TEST_F(FileActions, deleteTakesTwoLeadingBackslashesForOne)
{
    const fs::path former = fs::current_path();
    fs::current_path(folder.file(""));
    folder.write("\\a.vn", "x");
    user.files.push_back(u"\\\\a.vn");
    deleteFileCommand();
    fs::current_path(former);
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_FALSE(exists("\\a.vn"));
}

TEST_F(FileActions, propertiesShowTheChosenFile)
{
    filePropertiesCommand();
    EXPECT_EQ(user.fileQuestions.size(), 1U) << "Cancel shows nothing";
    folder.write("a.vn", "x");
    answer("a.vn");
    filePropertiesCommand();
    ASSERT_EQ(user.fileQuestions.size(), 3U);
    EXPECT_EQ(user.fileQuestions[1].title, u"File Property");
    EXPECT_EQ(user.fileQuestions[1].purpose, FileQuestion::Choose);
    EXPECT_EQ(user.fileQuestions[1].filters.size(), 2U);
    EXPECT_EQ(user.fileQuestions[2].title, u"Property");
    EXPECT_EQ(user.fileQuestions[2].purpose, FileQuestion::Properties);
    EXPECT_EQ(user.fileQuestions[2].path, folder.path("a.vn"));
    EXPECT_EQ(folder.read("a.vn"), "x");
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");
    EXPECT_EQ(app.documentFolder, FirstFolder);
}

// --- Recent files

TEST_F(FileActions, recentOpensTheFileOfItsSlot)
{
    app.recentFiles[1] = folder.write("a.csv", "7");
    openRecentCommand(0);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << "an empty slot";
    openRecentCommand(1);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"7");
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(app.recentFiles[0], u"") << "nothing moves";
    EXPECT_EQ(app.recentFiles[1], folder.path("a.csv"));
    EXPECT_EQ(app.documentFolder, FirstFolder);
    EXPECT_TRUE(user.documents.empty());
}

TEST_F(FileActions, recentSaysWhatIsGoneAndOpensAnEmptyFileTheNextTime)
{
    app.recentFiles[3] = folder.path("gone.csv");
    openRecentCommand(3);
    ASSERT_EQ(user.boxes.size(), 1U);
    EXPECT_EQ(user.boxes[0].caption, u"Vorn");
    EXPECT_EQ(user.boxes[0].text, u"Could not find '" + folder.path("gone.csv") + u"'.");
    EXPECT_EQ(user.icons[0], BoxIcon::Warning);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << "the document stays";
    EXPECT_EQ(folder.read("gone.csv"), "");
    openRecentCommand(3);
    EXPECT_EQ(user.boxes.size(), 1U);
    EXPECT_EQ(workbook->sheets.size(), 1) << "an empty text file was opened";
    EXPECT_EQ(takeError(), ErrorNone);
}

} // namespace
} // namespace vorn
