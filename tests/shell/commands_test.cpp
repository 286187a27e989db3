#include "shell/commands.h"

#include "core/error.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "resources/menu.h"
#include "shell/application.h"
#include "shell/commandhandlers.h"
#include "support/testplatform.h"
#include "support/texteditor.h"

#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

namespace vorn {
namespace {

constexpr CommandRoute Rests = CommandRoute::Ignored;
constexpr CommandRoute Runs = CommandRoute::Runs;
constexpr CommandRoute Editor = CommandRoute::ToEditor;
constexpr CommandRoute Task = CommandRoute::RunsTask;

// Every command: does it ask about unsaved changes, and what comes of it when nothing is going on,
// while a text is edited, while cells are pointed at and under protection?
const struct CommandCase {
    int id;
    bool asks;
    CommandRoute ready, editing, pointing, isProtected;
} Cases[] = {
    {102,   true,  Runs, Rests,  Rests,  Runs },
    {103,   false, Runs, Rests,  Rests,  Runs },
    {901,   false, Runs, Rests,  Rests,  Rests},
    {902,   false, Runs, Rests,  Rests,  Rests},
    {903,   false, Runs, Rests,  Rests,  Rests},
    {904,   false, Runs, Runs,   Runs,   Rests},
    {905,   false, Runs, Rests,  Rests,  Rests},
    {906,   false, Runs, Rests,  Rests,  Rests},
    {907,   false, Runs, Rests,  Rests,  Rests},
    {5341,  true,  Runs, Rests,  Rests,  Runs },
    {5342,  true,  Runs, Rests,  Rests,  Runs },
    {5343,  true,  Runs, Rests,  Rests,  Runs },
    {5344,  true,  Runs, Rests,  Rests,  Runs },
    {9100,  false, Runs, Runs,   Runs,   Runs },
    {9101,  false, Runs, Runs,   Runs,   Runs },
    {9102,  false, Runs, Runs,   Runs,   Runs },
    {9103,  false, Runs, Runs,   Runs,   Runs },
    {40001, true,  Runs, Rests,  Rests,  Runs },
    {40003, false, Runs, Rests,  Rests,  Runs },
    {40004, false, Runs, Rests,  Rests,  Runs },
    {40005, false, Runs, Rests,  Rests,  Runs },
    {40006, false, Runs, Editor, Editor, Runs },
    {40007, false, Runs, Rests,  Rests,  Runs },
    {40008, false, Runs, Editor, Rests,  Rests},
    {40009, false, Runs, Editor, Rests,  Runs },
    {40010, false, Runs, Editor, Rests,  Rests},
    {40011, false, Runs, Rests,  Rests,  Rests},
    {40014, false, Runs, Rests,  Rests,  Rests},
    {40015, false, Runs, Rests,  Rests,  Rests},
    {40016, false, Runs, Rests,  Rests,  Runs },
    {40022, false, Runs, Rests,  Rests,  Rests},
    {40024, true,  Runs, Rests,  Rests,  Runs },
    {40025, false, Runs, Rests,  Rests,  Rests},
    {40027, false, Runs, Runs,   Runs,   Rests},
    {40028, false, Runs, Rests,  Rests,  Rests},
    {40029, false, Runs, Rests,  Rests,  Rests},
    {40034, false, Runs, Rests,  Rests,  Runs },
    {40035, false, Runs, Editor, Rests,  Rests},
    {40036, false, Runs, Editor, Rests,  Rests},
    {40037, false, Runs, Rests,  Rests,  Rests},
    {40038, false, Runs, Rests,  Rests,  Runs },
    {40039, false, Runs, Rests,  Rests,  Runs },
    {40041, false, Runs, Rests,  Rests,  Runs },
    {40042, false, Runs, Rests,  Rests,  Rests},
    {40043, false, Runs, Rests,  Rests,  Runs },
    {40044, false, Runs, Rests,  Rests,  Rests},
    {40045, false, Runs, Rests,  Rests,  Runs },
    {40046, false, Runs, Rests,  Rests,  Runs },
    {40047, false, Runs, Rests,  Rests,  Runs },
    {40048, false, Runs, Rests,  Rests,  Rests},
    {40049, false, Runs, Rests,  Rests,  Rests},
    {40050, false, Runs, Rests,  Rests,  Rests},
    {40051, false, Runs, Rests,  Rests,  Runs },
    {40052, false, Runs, Rests,  Rests,  Rests},
    {40053, false, Runs, Rests,  Rests,  Rests},
    {40054, false, Runs, Rests,  Rests,  Rests},
    {40055, false, Runs, Rests,  Rests,  Rests},
    {40056, false, Runs, Rests,  Rests,  Rests},
    {40057, false, Runs, Rests,  Rests,  Rests},
    {40058, false, Runs, Rests,  Rests,  Rests},
    {40059, false, Runs, Rests,  Rests,  Rests},
    {40060, false, Runs, Runs,   Runs,   Rests},
    {40061, false, Runs, Runs,   Runs,   Rests},
    {40062, false, Runs, Rests,  Rests,  Rests},
    {40063, false, Runs, Rests,  Rests,  Runs },
    {40064, false, Runs, Rests,  Rests,  Runs },
    {40065, false, Runs, Rests,  Rests,  Runs },
    {40080, false, Runs, Rests,  Rests,  Runs },
    {40104, false, Runs, Rests,  Rests,  Runs },
    {40109, false, Runs, Rests,  Rests,  Runs },
};

constexpr CommandMode EditingMode{true, false, false};
constexpr CommandMode PointingMode{true, true, false};
constexpr CommandMode ProtectedMode{false, false, true};
constexpr CommandMode ProtectedEditingMode{true, false, true};

TEST(Commands, goTheirWayInEachMode)
{
    for (const CommandCase& c : Cases) {
        ASSERT_NE(findCommand(c.id), nullptr) << c.id;
        EXPECT_EQ(findCommand(c.id)->has(AsksFirst), c.asks) << c.id;
        EXPECT_EQ(routeCommand(c.id, {}), c.ready) << c.id;
        EXPECT_EQ(routeCommand(c.id, EditingMode), c.editing) << c.id;
        EXPECT_EQ(routeCommand(c.id, PointingMode), c.pointing) << c.id;
        EXPECT_EQ(routeCommand(c.id, ProtectedMode), c.isProtected) << c.id;
        EXPECT_EQ(routeCommand(c.id, ProtectedEditingMode), c.editing)
            << c.id << ": what may be edited is not protected";
    }
}

TEST(Commands, areNoOthers)
{
    std::set<int> known;
    for (const CommandCase& c : Cases)
        known.insert(c.id);
    EXPECT_EQ(known.size(), std::size(Cases));
    for (int id = 0; id <= 65535; ++id) {
        if (known.count(id) != 0)
            continue;
        EXPECT_EQ(findCommand(id), nullptr) << id;
        const bool task = id >= 41000 && id <= 42000;
        EXPECT_EQ(routeCommand(id, {}), task ? Task : Rests) << id;
        EXPECT_EQ(routeCommand(id, EditingMode), Rests) << id;
        EXPECT_EQ(routeCommand(id, ProtectedMode), task ? Task : Rests) << id;
    }
}

TEST(Commands, reachWhatTheyAreCalledAfter)
{
    const struct {
        int id;
        void (*run)();
    } handlers[] = {
        {102,   openCommand             },
        {103,   saveAsCommand           },
        {901,   boldCommand             },
        {902,   italicCommand           },
        {903,   underlineCommand        },
        {904,   autoSumCommand          },
        {905,   alignLeftCommand        },
        {906,   alignCenterCommand      },
        {907,   alignRightCommand       },
        {9100,  commitCommand           },
        {9101,  cancelCommand           },
        {9102,  insertFunctionCommand   },
        {9103,  quickEntryCommand       },
        {40003, filePropertiesCommand   },
        {40004, saveCommand             },
        {40005, deleteFileCommand       },
        {40006, undo                    },
        {40007, redo                    },
        {40014, formatCellsCommand      },
        {40015, sheetsCommand           },
        {40016, findCommand             },
        {40025, optionsCommand          },
        {40027, insertFunctionCommand   },
        {40034, goToCommand             },
        {40041, zoomCommand             },
        {40043, toggleFreeze            },
        {40047, aboutCommand            },
        {40049, replaceCommand          },
        {40051, toggleFullScreen        },
        {40052, columnWidthCommand      },
        {40053, autofitColumnsCommand   },
        {40054, hideColumnsCommand      },
        {40055, showColumnsCommand      },
        {40056, rowHeightCommand        },
        {40057, autofitRowsCommand      },
        {40058, hideRowsCommand         },
        {40059, showRowsCommand         },
        {40061, insertNameCommand       },
        {40064, toggleSheetProtection   },
        {40065, toggleWorkbookProtection},
        {40109, selectWholeSheet        },
    };
    for (const auto& c : handlers)
        EXPECT_EQ(findCommand(c.id)->run, c.run) << c.id;
}

TEST(Commands, standInTheMenuAndOnTheToolbar)
{
    for (const MenuRow& row : MenuBar) {
        EXPECT_EQ(findCommand(row.id) != nullptr, row.kind == MenuItem::Entry) << row.id;
    }
    for (const ToolbarSlot& slot : Toolbar) {
        EXPECT_EQ(findCommand(slot.id) != nullptr, slot.style != ButtonStyle::Separator) << slot.id;
    }
    for (const Accelerator& key : Accelerators)
        EXPECT_NE(findCommand(key.id), nullptr) << key.id;
}

// --- What they do

TEST(Commands, askBeforeTheDocumentGoes)
{
    for (const CommandCase& c : Cases) {
        if (!c.asks)
            continue;
        TestPlatform machine;
        Application app;
        app.enterCell(u"5");
        machine.userInterface.answers = {BoxAnswer::Cancel};
        onCommand(static_cast<std::uint16_t>(c.id));
        ASSERT_EQ(machine.userInterface.boxes.size(), 1U) << c.id;
        EXPECT_EQ(machine.userInterface.boxes[0].text, u"Save changes?") << c.id;
        ASSERT_NE(workbook, nullptr) << c.id;
        EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"5") << c.id;
        EXPECT_TRUE(workbook->modified) << c.id;
        EXPECT_FALSE(app.quitRequested) << c.id;
        EXPECT_TRUE(machine.userInterface.fileQuestions.empty()) << c.id;
    }
}

TEST(Commands, askNothingElse)
{
    for (const CommandCase& c : Cases) {
        if (c.asks)
            continue;
        TestPlatform machine;
        Application app;
        workbook->modified = true;
        onCommand(static_cast<std::uint16_t>(c.id));
        for (const auto& box : machine.userInterface.boxes)
            EXPECT_NE(box.text, u"Save changes?") << c.id;
    }
}

TEST(Commands, makeANewWorkbook)
{
    TestPlatform machine;
    Application app;
    app.enterCell(u"5");
    workbook->addSheet();
    machine.userInterface.answers = {BoxAnswer::No};
    onCommand(CommandNew);
    EXPECT_EQ(workbook->sheets.size(), 3);
    EXPECT_EQ(workbook->currentSheet->cellText(0, 0), u"");
    EXPECT_FALSE(workbook->modified);
}

TEST(Commands, zoomEverySheet)
{
    const struct {
        std::uint16_t id;
        int zoom;
    } cases[] = {
        {40038, 70 },
        {40045, 80 },
        {40046, 90 },
        {40039, 100},
    };
    TestPlatform machine;
    Application app;
    for (const auto& c : cases) {
        workbook->modified = false;
        onCommand(c.id);
        for (const Sheet* sheet : workbook->sheets)
            EXPECT_EQ(sheet->zoom, c.zoom);
        EXPECT_TRUE(workbook->modified);
        EXPECT_TRUE(app.commandState.entry(c.id)->checked) << "the states follow the command";
    }
}

TEST(Commands, undoAndRedo)
{
    TestPlatform machine;
    Application app;
    onCommand(CommandUndo);
    EXPECT_EQ(undoList.position, 0) << "nothing to undo";
    onCommand(CommandClearContents);
    ASSERT_EQ(undoList.steps.size(), 1);
    EXPECT_TRUE(app.commandState.entry(CommandUndo)->enabled);
    onCommand(CommandUndo);
    EXPECT_EQ(undoList.position, 0);
    EXPECT_FALSE(app.commandState.entry(CommandUndo)->enabled);
    EXPECT_TRUE(app.commandState.entry(CommandRedo)->enabled);
    onCommand(CommandRedo);
    EXPECT_EQ(undoList.position, 1);
}

TEST(Commands, giveTheEditorWhatIsItsOwn)
{
    const struct {
        std::uint16_t id;
        const char* asked;
        const char* askedWhilePointing;
    } cases[] = {
        {40006, "undo ",  "undo "},
        {40008, "cut ",   ""     },
        {40009, "copy ",  ""     },
        {40010, "paste ", ""     },
        {40035, "clear ", ""     },
        {40036, "clear ", ""     },
        {40037, "",       ""     },
        {40007, "",       ""     },
    };
    for (const auto& c : cases) {
        TestPlatform machine;
        Application app;
        RecordingEditor editor;
        app.textEditor = &editor;
        onCommand(c.id);
        EXPECT_EQ(editor.asked, c.asked) << c.id;
        EXPECT_EQ(undoList.steps.size(), 0) << c.id << ": the document is left alone";
        EXPECT_FALSE(workbook->modified) << c.id;
        editor.asked.clear();
        app.pointMode = true;
        onCommand(c.id);
        EXPECT_EQ(editor.asked, c.askedWhilePointing) << c.id;
        editor.open = false;
        app.pointMode = false;
        editor.asked.clear();
        onCommand(c.id);
        EXPECT_EQ(editor.asked, "") << c.id << ": it is closed";
        app.textEditor = nullptr;
    }
}

TEST(Commands, leaveTheDocumentAloneWhileEditing)
{
    TestPlatform machine;
    Application app;
    RecordingEditor editor;
    app.textEditor = &editor;
    for (const int id : {40001, 40024, 40045, 40043, 40051, 40064, 40065, 40109, 40037}) {
        onCommand(static_cast<std::uint16_t>(id));
        EXPECT_FALSE(workbook->modified) << id;
        EXPECT_FALSE(app.quitRequested) << id;
        EXPECT_FALSE(app.fullScreen) << id;
        EXPECT_FALSE(workbook->currentSheet->selection.range.isMultiCell()) << id;
    }
    app.textEditor = nullptr;
}

TEST(Commands, keepAProtectedDocumentFromChanges)
{
    TestPlatform machine;
    Application app;
    onCommand(CommandProtectSheet);
    EXPECT_TRUE(workbook->currentSheet->protectedSheet);
    for (const CommandId id : {CommandClearAll, CommandClearContents, CommandClearFormats}) {
        onCommand(static_cast<std::uint16_t>(id));
        EXPECT_EQ(undoList.steps.size(), 0) << id;
    }
    onCommand(CommandZoom80);
    EXPECT_EQ(workbook->currentSheet->zoom, 80) << "it may be looked at in any way";
    onCommand(CommandProtectSheet);
    onCommand(CommandClearAll);
    EXPECT_EQ(undoList.steps.size(), 1);
}

TEST(Commands, doNothingForOtherNumbers)
{
    TestPlatform machine;
    Application app;
    for (const int id :
         {0, 1, 904 + 4, 5340, 5345, 40002, 40080, 40104, 40110, 41000, 42000, 42001, 65535}) {
        onCommand(static_cast<std::uint16_t>(id));
        EXPECT_FALSE(workbook->modified) << id;
        EXPECT_EQ(errorState.code, ErrorNone) << id;
    }
}

TEST(Commands, leaveTheErrorToTheEndOfTheMessage)
{
    TestPlatform machine;
    Application app;
    raiseError(ErrorSelectionLarge);
    onCommand(CommandZoom80);
    EXPECT_EQ(errorState.code, ErrorSelectionLarge);
    EXPECT_TRUE(machine.userInterface.boxes.empty());
}

// --- Close

TEST(Commands, closeByWritingTheSettingsAndLettingTheDocumentGo)
{
    TestPlatform machine;
    Application app;
    app.moveAfterEnter = MoveDown;
    onCommand(CommandClose);
    EXPECT_TRUE(app.quitRequested);
    EXPECT_EQ(workbook, nullptr);
    std::uint32_t kept = 0;
    machine.settings.open();
    EXPECT_TRUE(machine.settings.readNumber("MvEnter", kept));
    EXPECT_EQ(kept, 2U);
    EXPECT_TRUE(machine.userInterface.boxes.empty());
}

TEST(Commands, areSurvivedByTheShellWhenTheyClose)
{
    TestPlatform machine;
    Application app;
    onCommand(CommandClearAll);
    onCommand(CommandProtectSheet); // lest anything is asked: nothing was changed on purpose
    workbook->modified = false;
    const std::size_t entries = app.commandState.entries.size();
    onCommand(CommandClose);
    ASSERT_EQ(workbook, nullptr);
    EXPECT_EQ(undoList.steps.size(), 0);
    for (const CommandCase& c : Cases)
        onCommand(static_cast<std::uint16_t>(c.id));
    refreshCommandState();
    app.showError();
    EXPECT_EQ(app.commandState.entries.size(), entries) << "the states stay";
    app.newWorkbook();
    ASSERT_NE(workbook, nullptr) << "and a new document may come";
    EXPECT_EQ(workbook->sheets.size(), 3);
}

TEST(Commands, doNotCloseIfTheUserStays)
{
    TestPlatform machine;
    Application app;
    app.enterCell(u"5");
    onCommand(CommandClose); // cancelled
    EXPECT_FALSE(app.quitRequested);
    ASSERT_NE(workbook, nullptr);
    std::uint32_t kept = 0;
    machine.settings.open();
    EXPECT_FALSE(machine.settings.readNumber("MvEnter", kept)) << "nothing is written";
    machine.userInterface.answers = {BoxAnswer::No};
    onCommand(CommandClose);
    EXPECT_TRUE(app.quitRequested);
    EXPECT_EQ(workbook, nullptr);
}

} // namespace
} // namespace vorn
