#include "shell/documentflow.h"

#include "core/error.h"
#include "core/workbook.h"
#include "files/openflow.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "support/choosinguser.h"
#include "support/environment.h"
#include "support/faultyfiles.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

// Takes the sticky error.
int takeError()
{
    const int code = errorState.code;
    clearError();
    return code;
}

// An application with a changed document, whose user answers from queues.
class DocumentFlow : public testing::Test {
protected:
    DocumentFlow() { enterValue(); }

    void enterValue() { app.enterCell(u"5"); }

    std::u16string answer(std::string_view name)
    {
        user.files.push_back(folder.path(name));
        return folder.path(name);
    }

    bool exists(std::string_view name) const { return fs::exists(folder.file(name)); }

    void expectUnsaved(const char* behaviour)
    {
        EXPECT_EQ(workbook->path, u"") << behaviour;
        EXPECT_TRUE(workbook->modified) << behaviour;
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << behaviour;
        EXPECT_EQ(app.recentFiles[0], u"") << behaviour;
        EXPECT_EQ(user.title, u"Vorn") << behaviour;
        EXPECT_EQ(user.waitDepth, 0) << behaviour;
    }

    const TestPlatform machine;
    ChoosingUser user;
    const TempFolder folder;
    Application app;
};

// --- Saving under a new name

TEST_F(DocumentFlow, savesUnderTheNameThatIsChosen)
{
    const std::u16string path = answer("a.vn");
    EXPECT_EQ(saveDocument(false), SaveOutcome::Written);
    EXPECT_TRUE(exists("a.vn"));
    EXPECT_EQ(workbook->path, path);
    EXPECT_EQ(user.title, u"a.vn");
    EXPECT_EQ(app.recentFiles[0], path);
    EXPECT_EQ(user.documents, std::vector<std::u16string>{path});
    EXPECT_EQ(app.documentFolder, folder.path(""));
    EXPECT_TRUE(workbook->modified) << "only a save to a known path makes it clean";
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(user.waitDepth, 0);
    ASSERT_EQ(user.fileQuestions.size(), 1U);
    EXPECT_EQ(user.fileQuestions[0].path, u"");
    EXPECT_EQ(user.fileQuestions[0].filterIndex, 1);
}

TEST_F(DocumentFlow, savesToAKnownPathWithoutAQuestion)
{
    const std::u16string path = answer("a.vn");
    saveDocument(false);
    EXPECT_EQ(saveDocument(false), SaveOutcome::Written);
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(user.fileQuestions.size(), 1U);
    EXPECT_TRUE(user.boxes.empty());

    workbook->modified = true;
    answer("b.vn");
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written) << "unless a name is asked for";
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(workbook->path, folder.path("b.vn"));
    EXPECT_EQ(user.fileQuestions[1].path, path) << "which begins with the present one";
}

TEST_F(DocumentFlow, saysThatItWasSavedOnlyIfItWas)
{
    EXPECT_FALSE(app.SaveDocument(false)) << "the dialog was cancelled";
    answer("a.vn");
    EXPECT_TRUE(app.SaveDocument(true));
    answer("a.csv");
    EXPECT_TRUE(app.SaveDocument(true)) << "a text file is accepted";
    answer("a.xls");
    EXPECT_FALSE(app.SaveDocument(true));
    EXPECT_EQ(takeError(), ErrorFileCreate);
}

TEST_F(DocumentFlow, completesTheNameByTheFilter)
{
    const struct {
        const char* behaviour;
        const char* name;
        int filter;
        const char* written; // null if it cannot be
    } cases[] = {
        {"the first",                      "a",     1, "a.vn" },
        {"none chosen",                    "b",     0, "b.vn" },
        {"a dot at the end",               "c.",    1, "c.vn" },
        {"an extension is kept",           "d.doc", 1, "d.doc"},
        {"whatever the filter",            "e.vn",  3, "e.vn" },
        {"the second is a format to come", "f",     2, nullptr},
        {"and the third",                  "g",     3, nullptr},
    };
    for (const auto& c : cases) {
        answer(c.name);
        user.filter = c.filter;
        const SaveOutcome outcome = saveDocument(true);
        EXPECT_EQ(outcome == SaveOutcome::Written, c.written != nullptr) << c.behaviour;
        EXPECT_TRUE(c.written == nullptr || exists(c.written)) << c.behaviour;
        clearError();
    }
}

TEST_F(DocumentFlow, takesOneOfTwoLeadingBackslashesForNone)
{
    // On this system the name is one of a file in the working folder.
    const fs::path former = fs::current_path();
    fs::current_path(folder.file(""));
    user.files.push_back(u"\\\\Docs\\a");
    saveDocument(true);
    fs::current_path(former);
    EXPECT_EQ(workbook->path, u"\\Docs\\a.vn");
    EXPECT_EQ(app.documentFolder, u"\\Docs\\");
    EXPECT_EQ(user.title, u"a.vn");
    EXPECT_TRUE(exists("\\Docs\\a.vn"));
}

TEST_F(DocumentFlow, asksBeforeAnotherFileIsReplaced)
{
    const std::u16string path = folder.write("a.vn", "old");
    answer("a");
    user.answers = {BoxAnswer::Yes};
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written);
    ASSERT_EQ(user.boxes.size(), 1U);
    EXPECT_EQ(user.boxes[0].caption, u"Vorn");
    EXPECT_EQ(user.boxes[0].text, path + u" already exists. Do you want to replace it?");
    EXPECT_EQ(user.boxes[0].buttons, BoxButtons::YesNo);
    EXPECT_NE(folder.read("a.vn"), "old");
}

TEST_F(DocumentFlow, asksForANameAgainUntilOneMayBeTaken)
{
    folder.write("a.vn", "old");
    folder.write("b.vn", "old");
    answer("a");
    answer("b");
    answer("c");
    user.answers = {BoxAnswer::No, BoxAnswer::No};
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written);
    EXPECT_EQ(user.boxes.size(), 2U);
    ASSERT_EQ(user.fileQuestions.size(), 3U);
    EXPECT_EQ(user.fileQuestions[2].path, u"") << "it begins anew";
    EXPECT_EQ(folder.read("a.vn"), "old");
    EXPECT_EQ(folder.read("b.vn"), "old");
    EXPECT_EQ(workbook->path, folder.path("c.vn"));
}

TEST_F(DocumentFlow, givesUpWhenTheUserDoes)
{
    folder.write("a.vn", "old");
    const struct {
        const char* behaviour;
        bool chosen;
        std::deque<BoxAnswer> answers;
    } cases[] = {
        {"Cancel in the dialog",         false, {}                 },
        {"Cancel in the box",            true,  {BoxAnswer::Cancel}},
        {"No, and Cancel in the dialog", true,  {BoxAnswer::No}    },
    };
    for (const auto& c : cases) {
        if (c.chosen)
            answer("a");
        user.answers = c.answers;
        const std::u16string former = app.documentFolder;
        EXPECT_EQ(saveDocument(false), SaveOutcome::NotSaved) << c.behaviour;
        EXPECT_EQ(takeError(), ErrorNone) << c.behaviour;
        EXPECT_EQ(folder.read("a.vn"), "old") << c.behaviour;
        EXPECT_EQ(app.documentFolder, former) << c.behaviour;
        expectUnsaved(c.behaviour);
    }
}

TEST_F(DocumentFlow, leavesTheEmptyFileOfItsTestForAFreeName)
{
    answer("a.vn");
    FaultyFiles files;
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written);
    EXPECT_EQ(files.calls, (std::vector<std::string>{"exists", "createNew", "openToWrite",
                                                     "reserve", "write", "cut", "flush"}));
    files.calls.clear();
    files.failing = 4; // no room for it
    answer("b.vn");
    EXPECT_EQ(saveDocument(true), SaveOutcome::NotSaved);
    EXPECT_EQ(takeError(), ErrorFileWrite);
    EXPECT_TRUE(exists("b.vn"));
    EXPECT_EQ(folder.read("b.vn"), "");
}

TEST_F(DocumentFlow, keepsTheDocumentWhateverASaveMeets)
{
    folder.write("file", "");
    folder.write("open.vn", "old");
    folder.write("guarded.vn", "old");
    fs::permissions(folder.file("guarded.vn"), fs::perms::owner_read);
    fs::create_directory(folder.file("folder.vn"));
    fs::create_directory(folder.file("sub"));
    fs::permissions(folder.file("sub"), fs::perms::owner_read | fs::perms::owner_exec);
    PosixFiles elsewhere;
    const auto held = elsewhere.openToRead(folder.path("open.vn"));
    const struct {
        const char* behaviour;
        const char* name;
        bool existing;
    } cases[] = {
        {"a format to come",               "a.pxl",        false},
        {"another",                        "a.xls",        false},
        {"a folder that may only be read", "sub/a.vn",     false},
        {"a path below a file",            "file/a.vn",    false},
        {"folders that are not there",     "no/such/a.vn", false},
        {"a folder in place of a file",    "folder.vn",    true },
        {"a file that is open elsewhere",  "open.vn",      true },
        {"a file that may only be read",   "guarded.vn",   true },
    };
    for (const auto& c : cases) {
        answer(c.name);
        user.answers = {BoxAnswer::Yes};
        user.boxes.clear();
        app.documentFolder.clear();
        EXPECT_EQ(saveDocument(false), SaveOutcome::NotSaved) << c.behaviour;
        EXPECT_EQ(takeError(), ErrorFileCreate) << c.behaviour;
        EXPECT_EQ(user.boxes.size(), c.existing ? 1U : 0U) << c.behaviour;
        EXPECT_NE(app.documentFolder, u"") << "the folder is kept in any case";
        expectUnsaved(c.behaviour);
    }
    fs::permissions(folder.file("sub"), fs::perms::owner_all);
    EXPECT_FALSE(exists("a.pxl")) << "nothing is left of a test that was not needed";
    EXPECT_FALSE(exists("a.xls"));
    EXPECT_EQ(folder.read("open.vn"), "old");
    EXPECT_EQ(folder.read("guarded.vn"), "old");
}

TEST_F(DocumentFlow, refusesANameThatBecomesTooLong)
{
    const std::size_t start = folder.path("d").size() - 1;
    const std::string sub(std::size_t{PathMax} - start - 100, 'd');
    fs::create_directory(folder.file(sub));
    const std::string longest = sub + '/' + std::string(99 - 3, 'f');
    answer(longest);
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written);
    EXPECT_EQ(workbook->path.size(), std::size_t{PathMax});
    answer(longest + "f");
    EXPECT_EQ(saveDocument(true), SaveOutcome::NotSaved);
    EXPECT_EQ(takeError(), ErrorFileCreate);
    EXPECT_FALSE(exists(longest + "f.vn"));
}

TEST_F(DocumentFlow, writesNothingToATextFile)
{
    const std::u16string path = answer("a.csv");
    EXPECT_EQ(saveDocument(true), SaveOutcome::NothingWritten);
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_TRUE(exists("a.csv")) << "the test of its name leaves it";
    EXPECT_EQ(folder.read("a.csv"), "");
    EXPECT_EQ(workbook->path, u"");
    EXPECT_EQ(user.title, u"Vorn");
    EXPECT_EQ(app.recentFiles[0], path);
    EXPECT_TRUE(workbook->modified);

    folder.write("b.csv", "1,2");
    answer("b.csv");
    user.answers = {BoxAnswer::Yes};
    EXPECT_EQ(saveDocument(true), SaveOutcome::NothingWritten);
    EXPECT_EQ(user.boxes.size(), 1U) << "it asks all the same";
    EXPECT_EQ(folder.read("b.csv"), "1,2");
}

TEST_F(DocumentFlow, offersTheFilterOfTheDocument)
{
    const struct {
        const char* behaviour;
        const char16_t* path;
        int filter;
    } cases[] = {
        {"a new document",  u"",         1},
        {"our own",         u"/a/b.vn",  1},
        {"Pocket Excel",    u"/a/b.pxl", 2},
        {"Excel",           u"/a/b.xls", 3},
        {"in capitals",     u"/a/b.XLS", 3},
        {"anything else",   u"/a/b.doc", 1},
        {"a dot elsewhere", u"/a.xls/b", 1},
    };
    for (const auto& c : cases) {
        workbook->path = c.path;
        user.fileQuestions.clear();
        saveDocument(true);
        ASSERT_EQ(user.fileQuestions.size(), 1U);
        const FileQuestion& question = user.fileQuestions[0];
        EXPECT_EQ(question.filterIndex, c.filter) << c.behaviour;
        EXPECT_EQ(question.path, c.path) << c.behaviour;
        EXPECT_EQ(question.title, u"Save File As");
        EXPECT_EQ(question.purpose, FileQuestion::Save);
        ASSERT_EQ(question.filters.size(), 3U);
        EXPECT_EQ(question.filters[0].text, u"Vorn Files (*.vn)");
        EXPECT_EQ(question.filters[0].patterns, u"*.vn");
        EXPECT_EQ(question.filters[1].text, u"Pocket Excel Files (*.pxl)");
        EXPECT_EQ(question.filters[1].patterns, u"*.pxl");
        EXPECT_EQ(question.filters[2].text, u"Excel Files (*.xls)");
        EXPECT_EQ(question.filters[2].patterns, u"*.xls");
    }
}

TEST_F(DocumentFlow, beginsInTheUsersDocumentsWhereItsFolderIsNot)
{
    const EnvironmentVariable home("HOME", folder.file("").c_str());
    const EnvironmentVariable settings("XDG_CONFIG_HOME", nullptr);
    saveDocument(true);
    EXPECT_EQ(user.fileQuestions.back().folder, folder.path(""));
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\") << "the setting stays";
    fs::create_directory(folder.file("sub"));
    app.documentFolder = folder.path("sub/");
    saveDocument(true);
    EXPECT_EQ(user.fileQuestions.back().folder, folder.path("sub/"));
}

TEST_F(DocumentFlow, keepsItsFolderForANameWithoutOne)
{
    const fs::path former = fs::current_path();
    fs::current_path(folder.file(""));
    app.documentFolder = u"/somewhere/";
    user.files.push_back(u"a.vn");
    EXPECT_EQ(saveDocument(true), SaveOutcome::Written);
    fs::current_path(former);
    EXPECT_EQ(app.documentFolder, u"/somewhere/");
}

// --- Saving to the known path

TEST_F(DocumentFlow, staysModifiedIfTheKnownPathCannotBeWritten)
{
    const struct {
        const char* behaviour;
        const char* name;
        int code;
    } cases[] = {
        {"folders that are gone", "no/such/a.vn", ErrorFileCreate},
        {"a format to come",      "a.xls",        ErrorFileCreate},
        {"another",               "a.pxl",        ErrorFileCreate},
    };
    for (const auto& c : cases) {
        workbook->path = folder.path(c.name);
        EXPECT_EQ(saveDocument(false), SaveOutcome::NotSaved) << c.behaviour;
        EXPECT_EQ(takeError(), c.code) << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
        EXPECT_EQ(workbook->path, folder.path(c.name)) << c.behaviour;
        EXPECT_FALSE(exists(c.name)) << c.behaviour;
    }
    EXPECT_EQ(app.recentFiles[0], u"");
    EXPECT_TRUE(user.fileQuestions.empty());
}

TEST_F(DocumentFlow, makesTheFolderOfTheKnownPathAgain)
{
    workbook->path = folder.path("gone/a.vn");
    EXPECT_EQ(saveDocument(false), SaveOutcome::Written);
    EXPECT_TRUE(exists("gone/a.vn"));
    EXPECT_FALSE(workbook->modified);
}

TEST_F(DocumentFlow, savesTheZoomThatFullScreenHides)
{
    const struct {
        const char* behaviour;
        bool ownZoom;
        int zoom; // set while the screen is full; 0 leaves it
        int saved;
    } cases[] = {
        {"the zoom that it lowered",        true,  0,  100},
        {"unless it was changed since",     true,  80, 80 },
        {"and what a full screen does not", false, 0,  100},
        {"nor takes for its own",           false, 90, 90 },
    };
    for (const auto& c : cases) {
        app.newWorkbook();
        app.fullScreenZoomOn = c.ownZoom;
        setFullScreen(true);
        if (c.zoom != 0)
            setZoomOfAllSheets(c.zoom);
        workbook->path = folder.path("zoom.vn");
        EXPECT_EQ(saveDocument(false), SaveOutcome::Written);
        setFullScreen(false);
        app.OpenDocument(folder.path("zoom.vn"));
        EXPECT_EQ(workbook->currentSheet->zoom, c.saved) << c.behaviour;
    }
}

// --- Before a document goes

TEST_F(DocumentFlow, letsAChangedDocumentGoOnlyIfItIsSafe)
{
    const struct {
        const char* behaviour;
        bool modified;
        BoxAnswer answer;
        const char* name; // null for Cancel in the dialog
        bool goes;
        int code;
    } cases[] = {
        {"a clean one goes",               false, BoxAnswer::Cancel, nullptr, true,  ErrorNone      },
        {"Cancel keeps a changed one",     true,  BoxAnswer::Cancel, nullptr, false, ErrorNone      },
        {"No lets it go",                  true,  BoxAnswer::No,     nullptr, true,  ErrorNone      },
        {"Yes saves it",                   true,  BoxAnswer::Yes,    "a.vn",  true,  ErrorNone      },
        {"unless no name is given",        true,  BoxAnswer::Yes,    nullptr, false, ErrorNone      },
        {"or it cannot be written",        true,  BoxAnswer::Yes,    "a.xls", false, ErrorFileCreate},
        {"or nothing would be left of it", true,  BoxAnswer::Yes,    "a.csv", false, ErrorNone      },
    };
    for (const auto& c : cases) {
        app.newWorkbook();
        enterValue();
        workbook->modified = c.modified;
        user.boxes.clear();
        user.answers = {c.answer};
        user.files.clear();
        if (c.name != nullptr)
            answer(c.name);
        EXPECT_EQ(app.PromptSaveChanges(), c.goes) << c.behaviour;
        EXPECT_EQ(takeError(), c.code) << c.behaviour;
        EXPECT_EQ(workbook->modified, c.modified) << c.behaviour;
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << c.behaviour;
        ASSERT_EQ(user.boxes.size(), c.modified ? 1U : 0U) << c.behaviour;
        if (c.modified) {
            EXPECT_EQ(user.boxes[0].caption, u"Vorn");
            EXPECT_EQ(user.boxes[0].text, u"Save changes?");
            EXPECT_EQ(user.boxes[0].buttons, BoxButtons::YesNoCancel);
        }
    }
    EXPECT_TRUE(exists("a.vn"));
}

TEST_F(DocumentFlow, savesToTheKnownPathBeforeADocumentGoes)
{
    answer("a.vn");
    saveDocument(false);
    user.answers = {BoxAnswer::Yes};
    EXPECT_TRUE(promptSaveChanges()) << "a save under a new name left it changed";
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(user.fileQuestions.size(), 1U);
    EXPECT_TRUE(promptSaveChanges());
    EXPECT_EQ(user.boxes.size(), 1U) << "and now there is nothing to ask about";
}

// --- The start of the program

TEST_F(DocumentFlow, opensTheFileOfTheCommandLine)
{
    const std::string path = folder.file("my file.csv");
    folder.write("my file.csv", "7");
    const std::u16string plain = folder.path("my file.csv");
    const struct {
        const char* behaviour;
        std::u16string line;
    } cases[] = {
        {"without quotes, blanks and all", plain              },
        {"in quotes",                      u'"' + plain + u'"'},
        {"with an opening quote alone",    u'"' + plain       },
    };
    for (const auto& c : cases) {
        app.newWorkbook();
        openFromCommandLine(c.line);
        EXPECT_EQ(takeError(), ErrorNone) << c.behaviour;
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"7") << c.behaviour;
    }
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(app.recentFiles[0], u"") << "this adds nothing to the list";
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\");
}

TEST(CommandLine, losesItsQuotesUnlessItIsTooLong)
{
    const std::u16string longest(298, u'x');
    const struct {
        const char* behaviour;
        std::u16string line, path;
    } cases[] = {
        {"nothing",                      u"",                   u""                  },
        {"no quotes",                    u"a.vn",               u"a.vn"              },
        {"a closing quote alone",        u"a.vn\"",             u"a.vn\""            },
        {"both",                         u"\"a.vn\"",           u"a.vn"              },
        {"an opening quote alone",       u"\"a.vn",             u"a.vn"              },
        {"nothing but a quote",          u"\"",                 u""                  },
        {"two pairs, of which one goes", u"\"\"a.vn\"\"",       u"\"a.vn\""          },
        {"299 characters",               u'"' + longest,        longest              },
        {"300",                          u'"' + longest + u'"', u'"' + longest + u'"'},
    };
    for (const auto& c : cases)
        EXPECT_EQ(withoutQuotes(c.line), c.path) << c.behaviour;
}

TEST_F(DocumentFlow, staysWithANewDocumentWithoutACommandLine)
{
    app.newWorkbook();
    openFromCommandLine(u"");
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(workbook->path, u"");
    EXPECT_FALSE(workbook->modified);
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(user.title, u"Vorn");
}

TEST_F(DocumentFlow, saysThatThereIsNoSuchFileAndLeavesAnEmptyOne)
{
    app.newWorkbook();
    enterValue();
    const std::u16string path = folder.path("no.vn");
    openFromCommandLine(u'"' + path + u'"');
    ASSERT_EQ(user.boxes.size(), 1U);
    EXPECT_EQ(user.boxes[0].caption, u"Vorn");
    EXPECT_EQ(user.boxes[0].text, u"Could not find '" + path + u"'.");
    EXPECT_EQ(user.boxes[0].buttons, BoxButtons::Ok);
    EXPECT_EQ(user.icons[0], BoxIcon::Warning);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << "the document stands";
    EXPECT_EQ(takeError(), ErrorNone);
    EXPECT_TRUE(exists("no.vn"));
    EXPECT_EQ(folder.read("no.vn"), "");

    openFromCommandLine(folder.path("no/such/a.vn"));
    EXPECT_EQ(user.boxes.size(), 2U) << "where none can be made there is none either";
    openFromCommandLine(u"\"");
    EXPECT_EQ(user.boxes[2].text, u"Could not find ''.");
}

TEST_F(DocumentFlow, takesALongLineInQuotesAsItStands)
{
    const auto quoted = [](std::size_t length) {
        return u"\"/" + std::u16string(length - 3, u'x') + u"\"";
    };
    openFromCommandLine(quoted(299));
    EXPECT_EQ(user.boxes.size(), 1U) << "such a file is looked for";
    EXPECT_EQ(takeError(), ErrorNone);
    openFromCommandLine(quoted(300));
    EXPECT_EQ(user.boxes.size(), 1U) << "and such a one is opened at once";
    EXPECT_EQ(takeError(), ErrorFileOpen);
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"");
    openFromCommandLine(u"/" + std::u16string(400, u'x'));
    EXPECT_EQ(user.boxes.size(), 2U) << "a long one without them is looked for too";
}

} // namespace
} // namespace vorn
