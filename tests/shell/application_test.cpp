#include "shell/application.h"

#include "core/error.h"
#include "core/workbook.h"
#include "editing/clear.h"
#include "editing/undo.h"
#include "functions/random.h"
#include "resources/commandids.h"
#include "support/tempfolder.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

using UsedFunctions = std::array<int, UsedFunctionCount>;

TEST(Application, beginsWithANewWorkbook)
{
    TestPlatform machine;
    const Application app;
    EXPECT_EQ(application, &app);
    ASSERT_NE(workbook, nullptr);
    ASSERT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(workbook->currentSheet, workbook->sheetAt(0));
    EXPECT_EQ(workbook->sheetAt(2)->name(), u"Sheet3");
    EXPECT_EQ(workbook->path, u"");
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\");
    EXPECT_EQ(app.moveAfterEnter, MoveNowhere);
    for (const std::u16string& file : app.recentFiles)
        EXPECT_EQ(file, u"");
    EXPECT_EQ(app.usedFunctions, (UsedFunctions{3, 37, 5, NoFunction, NoFunction, NoFunction,
                                                NoFunction, NoFunction, NoFunction, NoFunction}));
    EXPECT_EQ(errorState.code, ErrorNone);
    EXPECT_TRUE(machine.userInterface.boxes.empty());
}

class RefusingClipboard : public MemoryClipboard {
public:
    unsigned registerFormat(std::u16string_view) override { return 0; }
};

TEST(Application, tellsOfAMissingClipboardFormatOnceItCanShowABox)
{
    TestPlatform machine;
    RefusingClipboard refusing;
    platform.clipboard = &refusing;
    Application app;
    EXPECT_EQ(app.clipboardFormat, 0U);
    EXPECT_TRUE(machine.userInterface.boxes.empty());
    app.showError();
    app.showError();
    ASSERT_EQ(machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(machine.userInterface.boxes[0].text, u"Vorn initialization error");
}

TEST(Application, registersItsClipboardFormat)
{
    TestPlatform machine;
    const Application app;
    EXPECT_NE(app.clipboardFormat, 0U);
    EXPECT_EQ(app.clipboardFormat, machine.clipboard.registerFormat(u"CF_VORN"));
    EXPECT_NE(app.clipboardFormat, machine.clipboard.registerFormat(u"another"));
}

TEST(Application, leavesNothingBehind)
{
    const TestPlatform machine;
    {
        Application app;
        app.enterCell(u"5");
        app.noteUsedFunction(99);
        app.documentFolder = u"/elsewhere/";
        app.recentFiles[0] = u"/elsewhere/a.vn";
        app.moveAfterEnter = MoveDown;
        workbook->addSheet();
        raiseError(ErrorMemory);
    }
    EXPECT_EQ(application, nullptr);
    EXPECT_EQ(workbook, nullptr);
    const Application app;
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(workbook->nextSheetNumber, 4);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"");
    EXPECT_FALSE(workbook->modified);
    EXPECT_EQ(app.usedFunctions.front(), 3);
    EXPECT_EQ(app.documentFolder, u"\\C_Drive\\C_MyDocs\\");
    EXPECT_EQ(app.recentFiles[0], u"");
    EXPECT_EQ(app.moveAfterEnter, MoveNowhere);
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST(Application, seedsTheRandomNumbersFromTheClock)
{
    const TestPlatform machine;
    std::vector<int> numbers;
    for (int run = 0; run < 2; ++run) {
        const Application app;
        numbers.push_back(nextRandom());
    }
    seedRandom(0); // the fixed clock stands at no milliseconds
    EXPECT_EQ(numbers[0], nextRandom());
    EXPECT_EQ(numbers[1], numbers[0]);
}

TEST(Application, movesAUsedFunctionToTheFront)
{
    const TestPlatform machine;
    Application app;
    app.noteUsedFunction(5); // the last of the three
    EXPECT_EQ(app.usedFunctions[0], 5);
    EXPECT_EQ(app.usedFunctions[1], 3);
    EXPECT_EQ(app.usedFunctions[2], 37);
    app.noteUsedFunction(5);
    EXPECT_EQ(app.usedFunctions[1], 3) << "the first stays where it is";
    for (int row = 10; row < 20; ++row)
        app.noteUsedFunction(row);
    EXPECT_EQ(app.usedFunctions, (UsedFunctions{19, 18, 17, 16, 15, 14, 13, 12, 11, 10}));
    app.noteUsedFunction(20);
    EXPECT_EQ(app.usedFunctions, (UsedFunctions{20, 19, 18, 17, 16, 15, 14, 13, 12, 11}));
    app.noteUsedFunction(11);
    EXPECT_EQ(app.usedFunctions, (UsedFunctions{11, 20, 19, 18, 17, 16, 15, 14, 13, 12}));
}

TEST(Application, entersTextInTheActiveCellAndCalculates)
{
    const TestPlatform machine;
    Application app;
    Sheet& sheet = *workbook->currentSheet;
    sheet.selection.select({1, 1}, {2, 2}); // B2:C3
    EXPECT_TRUE(app.enterCell(u"=A1*2"));
    EXPECT_TRUE(workbook->modified);
    EXPECT_EQ(sheet.cellText(1, 1), u"0");
    EXPECT_FALSE(sheet.isOccupied(2, 2));
    sheet.selection.select({0, 0}, {0, 0});
    EXPECT_TRUE(app.enterCell(u"5"));
    EXPECT_EQ(sheet.cellText(1, 1), u"10");
}

TEST(Application, keepsTheCellWhenAFormulaDoesNotCompile)
{
    const TestPlatform machine;
    Application app;
    app.enterCell(u"5");
    workbook->modified = false;
    EXPECT_FALSE(app.enterCell(u"=1+"));
    EXPECT_EQ(errorState.code, ErrorEndOfFormula);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5");
    EXPECT_FALSE(workbook->modified);
}

TEST(Application, showsAnErrorOnce)
{
    TestPlatform machine;
    Application app;
    raiseError(ErrorFileOpen);
    raiseError(ErrorMemory);
    app.showError();
    app.showError();
    ASSERT_EQ(machine.userInterface.boxes.size(), 1U);
    EXPECT_EQ(machine.userInterface.boxes[0].caption, u"Vorn");
    EXPECT_EQ(machine.userInterface.boxes[0].text, u"File open error");
    EXPECT_EQ(errorState.code, ErrorNone);
}

TEST(Application, titlesTheWindowForEachDocument)
{
    TestPlatform machine;
    const TempFolder folder;
    Application app;
    machine.userInterface.title = u"?";
    app.newWorkbook();
    EXPECT_EQ(machine.userInterface.title, u"Vorn");
    machine.userInterface.title = u"?";
    app.OpenDocument(folder.write("a.csv", "1"));
    EXPECT_EQ(machine.userInterface.title, u"Vorn") << "a text file leaves no path";
    EXPECT_EQ(workbook->sheets.size(), 1);
    machine.userInterface.title = u"?";
    app.OpenDocument(u"/no/such/file.vn");
    EXPECT_EQ(machine.userInterface.title, u"Vorn");
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(errorState.code, ErrorFileOpen);
}

TEST(Application, beginsAsItsFieldsSay)
{
    TestPlatform machine;
    const Application app;
    EXPECT_FALSE(app.fullScreen);
    EXPECT_TRUE(app.fullScreenZoomOn);
    EXPECT_EQ(app.fullScreenZoom, 90);
    EXPECT_TRUE(app.formulaBarVisible);
    EXPECT_TRUE(app.customLists.empty());
    EXPECT_EQ(app.formatCellsPage, 0);
    EXPECT_EQ(app.optionsPage, 0);
    EXPECT_EQ(app.lastFilterIndex, 0);
    EXPECT_EQ(app.repaintLock, 0);
    EXPECT_FALSE(app.pointMode);
    EXPECT_EQ(app.pointSheet, nullptr);
    EXPECT_FALSE(app.isEditing());
    EXPECT_FALSE(app.quitRequested);
    EXPECT_EQ(documentView, &app);
}

TEST(Application, isNoViewAfterItsEnd)
{
    TestPlatform machine;
    {
        const Application app;
    }
    EXPECT_EQ(documentView, nullptr);
    EXPECT_EQ(beforeCloseDocument, nullptr);
}

TEST(Application, paintsOnceForManyChanges)
{
    TestPlatform machine;
    Application app;
    int& repaints = machine.userInterface.repaints;
    repaints = 0;
    {
        const RepaintLock outer;
        {
            const RepaintLock inner;
            markRepaint();
            tellSheetChanged();
            tellActiveCellMoved();
        }
        EXPECT_EQ(repaints, 0) << "one lock still stands";
    }
    EXPECT_EQ(repaints, 1);
    EXPECT_EQ(app.repaintLock, 0);
    markRepaint();
    EXPECT_EQ(repaints, 2) << "without a lock at once";
}

TEST(Application, collectsWhatIsToBePainted)
{
    const struct {
        const char* behaviour;
        std::uint16_t before, marks, after;
    } cases[] = {
        {"the selection only",            0,  4,  4 },
        {"a mark joins the others",       4,  16, 20},
        {"the same twice",                4,  4,  4 },
        {"the whole sheet replaces them", 20, 8,  8 },
        {"and others join it",            8,  4,  12},
    };
    TestPlatform machine;
    Application app;
    for (const auto& c : cases) {
        app.repaintHints = c.before;
        app.markDirty(c.marks);
        EXPECT_EQ(app.repaintHints, c.after) << c.behaviour;
    }
}

TEST(Application, showsEachDocumentAnew)
{
    TestPlatform machine;
    Application app;
    workbook->fonts.resize(2);
    workbook->currentSheet->zoom = 80;
    app.repaintHints = 0;
    machine.userInterface.title = u"?";
    app.showDocument();
    EXPECT_EQ(workbook->fonts.size(), 6);
    EXPECT_TRUE(app.commandState.entry(CommandZoom80)->checked);
    EXPECT_EQ(app.repaintHints, DirtyAll);
    EXPECT_EQ(machine.userInterface.title, u"Vorn");
    EXPECT_FALSE(workbook->modified);
}

TEST(Application, keepsTheZoomOutOfFullScreen)
{
    TestPlatform machine;
    Application app;
    workbook->currentSheet->zoom = 200;
    app.showDocument();
    EXPECT_EQ(workbook->currentSheet->zoom, 200);
    app.fullScreen = true;
    app.showDocument();
    EXPECT_EQ(workbook->currentSheet->zoom, 90);
    EXPECT_EQ(workbook->currentSheet->savedZoom, 200);
}

TEST(Application, lowersTheZoomOfAFileThatOpensInFullScreen)
{
    TestPlatform machine;
    const TempFolder folder;
    Application app;
    app.fullScreen = true;
    app.OpenDocument(folder.write("a.csv", "1"));
    EXPECT_EQ(workbook->currentSheet->zoom, 90);
    EXPECT_EQ(workbook->currentSheet->savedZoom, 100);
}

TEST(Application, letsTheHistoryAndThePointingGoWithTheDocument)
{
    TestPlatform machine;
    Application app;
    clearSelection(ClearAll);
    app.pointMode = true;
    app.pointSheet = workbook->currentSheet;
    ASSERT_EQ(undoList.steps.size(), 1);
    app.newWorkbook();
    EXPECT_EQ(undoList.steps.size(), 0);
    EXPECT_FALSE(app.pointMode);
    EXPECT_EQ(app.pointSheet, nullptr);
}

TEST(Application, forgetsTheHistoryOnRequest)
{
    TestPlatform machine;
    Application app;
    clearSelection(ClearAll);
    refreshCommandState();
    ASSERT_TRUE(app.commandState.entry(CommandUndo)->enabled);
    app.forgetHistory();
    EXPECT_EQ(undoList.steps.size(), 0);
    EXPECT_FALSE(app.commandState.entry(CommandUndo)->enabled);
    EXPECT_EQ(app.commandState.entry(CommandUndo)->text, u"&Undo ");
}

TEST(Application, selectsInThePointSelectionWhilePointing)
{
    TestPlatform machine;
    Application app;
    EXPECT_EQ(&app.activeSelection(), &workbook->currentSheet->selection);
    app.pointMode = true;
    EXPECT_EQ(&app.activeSelection(), &app.pointSelection);
}

} // namespace
} // namespace vorn
