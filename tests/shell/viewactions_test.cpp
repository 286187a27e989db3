#include "core/workbook.h"
#include "editing/undo.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "support/testplatform.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// How a sheet stands: frozen columns and rows, -1 for none, and the corner of what scrolls.
struct View {
    int firstColumn = -1, lastColumn = -1, firstRow = -1, lastRow = -1, left = 0, top = 0;

    bool operator==(const View&) const = default;
};

View viewOf(const Sheet& sheet)
{
    View view;
    if (sheet.titleColumns) {
        view.firstColumn = sheet.titles.firstColumn;
        view.lastColumn = sheet.titles.lastColumn;
    }
    if (sheet.titleRows) {
        view.firstRow = sheet.titles.firstRow;
        view.lastRow = sheet.titles.lastRow;
    }
    view.left = sheet.leftColumn;
    view.top = sheet.topRow;
    return view;
}

TEST(ViewActions, freezeByTheActiveCell)
{
    const struct {
        const char* behaviour;
        int left, top;
        int column, row;
        View frozen;
    } cases[] = {
        {"the corner freezes nothing",   0, 0, 0,   0,     {-1, -1, -1, -1, 0, 0}        },
        {"also in a view that scrolled", 3, 7, 3,   7,     {-1, -1, -1, -1, 3, 7}        },
        {"one column and one row",       0, 0, 1,   1,     {0, 0, 0, 0, 1, 1}            },
        {"a cell in the left column",    0, 0, 0,   4,     {-1, -1, 0, 3, 0, 4}          },
        {"a cell in the top row",        0, 0, 2,   0,     {0, 1, -1, -1, 2, 0}          },
        {"from where the view stands",   3, 7, 5,   10,    {3, 4, 7, 9, 5, 10}           },
        {"a cell left of the view",      3, 7, 1,   10,    {-1, -1, 7, 9, 3, 10}         },
        {"a cell above the view",        3, 7, 5,   2,     {3, 4, -1, -1, 5, 7}          },
        {"a cell above and left of it",  3, 7, 1,   2,     {-1, -1, -1, -1, 3, 7}        },
        {"the last cell of the sheet",   0, 0, 255, 16383, {0, 254, 0, 16382, 255, 16383}},
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Application app;
        Sheet& sheet = *workbook->currentSheet;
        sheet.leftColumn = c.left;
        sheet.topRow = c.top;
        const CellRef cell{static_cast<std::uint16_t>(c.row), static_cast<std::uint16_t>(c.column)};
        sheet.selection.select(cell, cell);
        const int repaints = machine.userInterface.repaints;
        toggleFreeze();
        EXPECT_EQ(viewOf(sheet), c.frozen) << c.behaviour;
        EXPECT_EQ(isFrozen(), c.frozen.firstColumn >= 0 || c.frozen.firstRow >= 0) << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
        EXPECT_GT(machine.userInterface.repaints, repaints) << c.behaviour;
        EXPECT_EQ(app.repaintHints, DirtyAll) << c.behaviour;
        EXPECT_EQ(undoList.steps.size(), 0) << c.behaviour;
    }
}

TEST(ViewActions, unfreezeBothDirectionsAndScrollBack)
{
    const struct {
        const char* behaviour;
        bool columns, rows;
        int left, top;
    } cases[] = {
        {"both",         true,  true,  3,  7 },
        {"columns only", true,  false, 3,  50},
        {"rows only",    false, true,  20, 7 },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Application app;
        Sheet& sheet = *workbook->currentSheet;
        sheet.titleColumns = c.columns;
        sheet.titleRows = c.rows;
        sheet.titles = {7, 3, 9, 4};
        sheet.leftColumn = 20; // scrolled meanwhile
        sheet.topRow = 50;
        toggleFreeze();
        EXPECT_EQ(viewOf(sheet), (View{-1, -1, -1, -1, c.left, c.top})) << c.behaviour;
        EXPECT_FALSE(isFrozen()) << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
    }
}

TEST(ViewActions, freezeOnlyTheCurrentSheet)
{
    TestPlatform machine;
    Application app;
    workbook->currentSheet->selection.select({2, 2}, {2, 2});
    toggleFreeze();
    EXPECT_TRUE(isFrozen());
    workbook->setCurrentSheet(workbook->sheetAt(1));
    EXPECT_FALSE(isFrozen());
}

TEST(ViewActions, zoomEverySheetAndKeepNoLimit)
{
    for (const int zoom : {10, 25, 100, 300}) {
        TestPlatform machine;
        Application app;
        workbook->sheetAt(1)->zoom = 55;
        setZoomOfAllSheets(zoom);
        for (const Sheet* sheet : workbook->sheets)
            EXPECT_EQ(sheet->zoom, zoom);
        EXPECT_TRUE(workbook->modified);
        EXPECT_EQ(app.repaintHints, DirtyAll);
        EXPECT_EQ(undoList.steps.size(), 0);
    }
}

TEST(ViewActions, capTheZoomInFullScreen)
{
    const struct {
        const char* behaviour;
        bool capped;
        int cap;
        int zoom;    // before
        int within;  // in full screen
        int changed; // what it is set to there; 0: left alone
        int after;
    } cases[] = {
        {"a larger zoom is lowered, and comes back", true,  90,  100, 90,  0,  100},
        {"a smaller one stays",                      true,  90,  80,  80,  0,  80 },
        {"one that is the cap stays",                true,  90,  90,  90,  0,  90 },
        {"a changed one keeps the change",           true,  90,  100, 90,  80, 80 },
        {"one changed to the cap goes back",         true,  90,  70,  70,  90, 70 },
        {"without the cap nothing is lowered",       false, 90,  100, 100, 0,  100},
        {"but the cap still counts as unchanged",    false, 90,  100, 100, 90, 100},
        {"the cap of the settings",                  true,  150, 200, 150, 0,  200},
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Application app;
        app.fullScreenZoomOn = c.capped;
        app.fullScreenZoom = c.cap;
        for (Sheet* sheet : workbook->sheets)
            sheet->zoom = c.zoom;
        toggleFullScreen();
        EXPECT_TRUE(app.fullScreen) << c.behaviour;
        for (const Sheet* sheet : workbook->sheets) {
            EXPECT_EQ(sheet->zoom, c.within) << c.behaviour;
            EXPECT_EQ(sheet->savedZoom, c.zoom) << c.behaviour;
        }
        if (c.changed != 0)
            setZoomOfAllSheets(c.changed);
        toggleFullScreen();
        EXPECT_FALSE(app.fullScreen) << c.behaviour;
        for (const Sheet* sheet : workbook->sheets)
            EXPECT_EQ(sheet->zoom, c.after) << c.behaviour;
    }
}

TEST(ViewActions, leaveTheZoomOfEachSheetToItself)
{
    TestPlatform machine;
    Application app;
    const int zooms[] = {100, 85, 200};
    for (int index = 0; index < 3; ++index)
        workbook->sheetAt(index)->zoom = zooms[index];
    toggleFullScreen();
    workbook->sheetAt(2)->zoom = 60;
    toggleFullScreen();
    EXPECT_EQ(workbook->sheetAt(0)->zoom, 100);
    EXPECT_EQ(workbook->sheetAt(1)->zoom, 85);
    EXPECT_EQ(workbook->sheetAt(2)->zoom, 60);
    EXPECT_FALSE(workbook->modified) << "the mode is no change of the document";
}

TEST(ViewActions, enterTheFullScreenOnce)
{
    TestPlatform machine;
    Application app;
    setFullScreen(true);
    setFullScreen(true); // would remember the lowered zoom
    EXPECT_EQ(workbook->currentSheet->savedZoom, 100);
    setFullScreen(false);
    setFullScreen(false);
    EXPECT_EQ(workbook->currentSheet->zoom, 100);
}

TEST(ViewActions, lowerTheZoomOfADocumentThatComesInFullScreen)
{
    TestPlatform machine;
    Application app;
    setFullScreen(true);
    app.newWorkbook();
    EXPECT_EQ(workbook->currentSheet->zoom, 90);
    EXPECT_EQ(workbook->currentSheet->savedZoom, 100);
    setFullScreen(false);
    EXPECT_EQ(workbook->currentSheet->zoom, 100);
}

void addStep()
{
    ByteCodeWriter forward;
    ByteCodeWriter backward;
    std::uint8_t* program = forward.finish();
    addUndoStep(program, backward.finish(), u"Bold", false);
}

TEST(ViewActions, clearTheHistoryWhenProtectionIsTurnedOn)
{
    const struct {
        const char* behaviour;
        void (*toggle)();
        bool (*isOn)();
    } cases[] = {
        {"a sheet",    toggleSheetProtection,    [] { return workbook->currentSheet->protectedSheet; }},
        {"a workbook", toggleWorkbookProtection, [] { return workbook->protectedWorkbook; }           },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Application app;
        addStep();
        workbook->modified = false;
        c.toggle();
        EXPECT_TRUE(c.isOn()) << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
        EXPECT_EQ(undoList.steps.size(), 0) << c.behaviour;
        addStep();
        workbook->modified = false;
        c.toggle();
        EXPECT_FALSE(c.isOn()) << c.behaviour;
        EXPECT_TRUE(workbook->modified) << c.behaviour;
        EXPECT_EQ(undoList.steps.size(), 1) << c.behaviour << ": turning it off keeps the list";
    }
}

TEST(ViewActions, protectTheCurrentSheetOnly)
{
    TestPlatform machine;
    Application app;
    workbook->setCurrentSheet(workbook->sheetAt(1));
    toggleSheetProtection();
    EXPECT_FALSE(workbook->sheetAt(0)->protectedSheet);
    EXPECT_TRUE(workbook->sheetAt(1)->protectedSheet);
    EXPECT_FALSE(workbook->protectedWorkbook);
}

TEST(ViewActions, selectAllCells)
{
    TestPlatform machine;
    Application app;
    Selection& selection = workbook->currentSheet->selection;
    selection.select({2, 1}, {4, 3});
    selectWholeSheet();
    EXPECT_TRUE(selection.range.isWholeSheet());
    EXPECT_EQ(selection.activeColumn, 1) << "the active cell stays";
    EXPECT_EQ(selection.activeRow, 2);
    EXPECT_EQ(selection.anchorColumn, 0);
    EXPECT_EQ(selection.anchorRow, 0);
    EXPECT_EQ(selection.cornerColumn, 255);
    EXPECT_EQ(selection.cornerRow, 16383);
    EXPECT_FALSE(workbook->modified);
}

} // namespace
} // namespace vorn
