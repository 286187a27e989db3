#include "shell/commandstate.h"

#include "core/heap.h"
#include "core/workbook.h"
#include "editing/undo.h"
#include "platform/clipboard.h"
#include "resources/menu.h"
#include "shell/application.h"
#include "shell/commands.h"
#include "support/testplatform.h"
#include "support/texteditor.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Ids = std::set<int>;

// The entries that the state of the document switches.
const Ids FullList = {40001, 102,   40004, 103,   40005, 40003, 40024, 40006, 40007, 40008, 40009,
                      40010, 40050, 40035, 40036, 40037, 40028, 40029, 40048, 40011, 40044, 40027,
                      40014, 40058, 40059, 40056, 40057, 40054, 40055, 40052, 40053, 40038, 40045,
                      40046, 40039, 40041, 40051, 40043, 40015, 40034, 40016, 40049, 40022, 40063,
                      40062, 40061, 40060, 40064, 40065, 40025, 40042};

const Ids ProtectedList = {102,   103,   40001, 40003, 40004, 40005, 40009, 40016, 40024, 40034,
                           40038, 40039, 40041, 40043, 40045, 40046, 40051, 40063, 40064, 40065};

// Part of the menu and always enabled, or never.
constexpr int About = 40047;
constexpr int Placeholder = 40104;

class FilledClipboard : public MemoryClipboard {
public:
    bool holds(unsigned format) override { return cells && format == registerFormat(u"CF_VORN"); }
    bool holdsText() override { return text; }

    bool cells = false;
    bool text = false;
};

// An Application whose clipboard and editor a test can set.
class CommandStateTest : public testing::Test {
protected:
    CommandStateTest() { platform.clipboard = &clipboard; }
    ~CommandStateTest() override { app.textEditor = nullptr; }

    void addSteps(int count, std::u16string_view label)
    {
        for (int step = 0; step < count; ++step) {
            ByteCodeWriter forward;
            ByteCodeWriter backward;
            std::uint8_t* program = forward.finish();
            addUndoStep(program, backward.finish(), label, false);
        }
    }
    void edit() { app.textEditor = &editor; }

    bool enabled(int id) const { return app.commandState.entry(id)->enabled; }
    bool checked(int id) const { return app.commandState.entry(id)->checked; }
    std::u16string text(int id) const { return app.commandState.entry(id)->text; }
    bool buttonEnabled(int id) const { return app.commandState.button(id)->enabled; }
    bool pressed(int id) const { return app.commandState.button(id)->checked; }

    // Those of the list that are enabled. 40003 is in no menu.
    Ids enabledEntries() const
    {
        Ids ids;
        for (const EntryState& entry : app.commandState.entries) {
            if (entry.enabled)
                ids.insert(entry.id);
        }
        return ids;
    }
    Ids enabledButtons() const
    {
        Ids ids;
        for (const ButtonState& button : app.commandState.buttons) {
            if (button.enabled)
                ids.insert(button.id);
        }
        return ids;
    }

    static Ids inMenu(Ids ids)
    {
        ids.erase(40003);
        ids.insert(About);
        return ids;
    }
    static Ids without(Ids ids, const Ids& others)
    {
        for (int id : others)
            ids.erase(id);
        return ids;
    }

    TestPlatform machine;
    FilledClipboard clipboard;
    RecordingEditor editor;
    Application app;
};

// --- The menu, branch by branch

TEST_F(CommandStateTest, switchTheWholeList)
{
    for (int id = 0; id <= 65535; ++id) {
        const Command* command = findCommand(id);
        EXPECT_EQ(command != nullptr && command->has(Switched), FullList.count(id) != 0) << id;
    }
}

TEST_F(CommandStateTest, allowEverythingThereIsWhenReady)
{
    refreshCommandState();
    const Ids nothingToDoFor = {40006, 40007, 40010, 40050};
    EXPECT_EQ(enabledEntries(), inMenu(without(FullList, nothingToDoFor)));
}

TEST_F(CommandStateTest, leaveLittleWhileEditing)
{
    edit();
    addSteps(2, u"Bold");
    undo();
    refreshCommandState();
    EXPECT_EQ(enabledEntries(), (Ids{40008, 40009, 40010, 40027, 40061, 40060, About}));
    editor.undoable = true;
    refreshCommandState();
    EXPECT_EQ(enabledEntries(), (Ids{40006, 40008, 40009, 40010, 40027, 40061, 40060, About}));
}

TEST_F(CommandStateTest, leaveWhatChangesNothingUnderProtection)
{
    for (const bool workbookToo : {false, true}) {
        workbook->currentSheet->protectedSheet = !workbookToo;
        workbook->protectedWorkbook = workbookToo;
        clipboard.cells = clipboard.text = true;
        refreshCommandState();
        EXPECT_EQ(enabledEntries(), inMenu(ProtectedList));
    }
    addSteps(2, u"Bold");
    undo();
    refreshCommandState();
    Ids expected = inMenu(ProtectedList);
    expected.insert({40006, 40007});
    EXPECT_EQ(enabledEntries(), expected);
}

TEST_F(CommandStateTest, protectOnlyTheSheetThatIs)
{
    workbook->sheetAt(1)->protectedSheet = true;
    refreshCommandState();
    EXPECT_TRUE(enabled(CommandCut));
    workbook->setCurrentSheet(workbook->sheetAt(1));
    refreshCommandState();
    EXPECT_FALSE(enabled(CommandCut));
}

TEST_F(CommandStateTest, putEditingBeforeProtection)
{
    workbook->protectedWorkbook = true;
    edit();
    refreshCommandState();
    EXPECT_FALSE(enabled(CommandSave));
    EXPECT_TRUE(enabled(CommandCut));
}

TEST_F(CommandStateTest, followTheUndoList)
{
    const struct {
        const char* behaviour;
        int steps, undone;
        bool undo, redo;
        const char16_t* undoText;
        const char16_t* redoText;
    } cases[] = {
        {"no step",                  0,  0,  false, false, u"&Undo ",     u"&Redo "    },
        {"one step",                 1,  0,  true,  false, u"&Undo Bold", u"&Redo "    },
        {"one step undone",          1,  1,  false, true,  u"&Undo ",     u"&Redo Bold"},
        {"one of two undone",        2,  1,  true,  true,  u"&Undo Bold", u"&Redo Bold"},
        {"the last of ten undone",   10, 10, false, true,  u"&Undo ",     u"&Redo Bold"},
        {"undone more than allowed", 3,  4,  false, true,  u"&Undo ",     u"&Redo Bold"},
    };
    for (const auto& c : cases) {
        clearUndo();
        addSteps(c.steps, u"Bold");
        for (int step = 0; step < c.undone; ++step)
            undo();
        refreshCommandState();
        EXPECT_EQ(enabled(CommandUndo), c.undo) << c.behaviour;
        EXPECT_EQ(enabled(CommandRedo), c.redo) << c.behaviour;
        EXPECT_EQ(text(CommandUndo), c.undoText) << c.behaviour;
        EXPECT_EQ(text(CommandRedo), c.redoText) << c.behaviour;
    }
}

TEST_F(CommandStateTest, nameTheStepOfTheDocumentWhileEditing)
{
    addSteps(1, u"Typing in C3");
    edit();
    editor.undoable = false;
    refreshCommandState();
    EXPECT_EQ(text(CommandUndo), u"&Undo Typing in C3");
    EXPECT_FALSE(enabled(CommandUndo)) << "but it cannot be reached";
}

TEST_F(CommandStateTest, followTheClipboard)
{
    const struct {
        bool cells, text, paste, pasteSpecial;
    } cases[] = {
        {false, false, false, false},
        {false, true,  true,  false},
        {true,  false, true,  true },
        {true,  true,  true,  true },
    };
    for (const auto& c : cases) {
        clipboard.cells = c.cells;
        clipboard.text = c.text;
        app.textEditor = nullptr;
        refreshCommandState();
        EXPECT_EQ(enabled(CommandPaste), c.paste);
        EXPECT_EQ(enabled(CommandPasteSpecial), c.pasteSpecial);
        EXPECT_EQ(buttonEnabled(CommandPaste), c.paste);
        edit();
        refreshCommandState();
        EXPECT_TRUE(enabled(CommandPaste)) << "in the editor the entry stays on";
        EXPECT_FALSE(enabled(CommandPasteSpecial));
        EXPECT_EQ(buttonEnabled(CommandPaste), c.text) << "and the button is for texts";
    }
}

TEST_F(CommandStateTest, askForNoFormatThatTheMachineCouldNotGive)
{
    clipboard.cells = true;
    app.clipboardFormat = 0;
    refreshCommandState();
    EXPECT_FALSE(enabled(CommandPaste));
}

TEST_F(CommandStateTest, keepTheOptionsOutOfTheFullScreen)
{
    app.fullScreen = true;
    refreshCommandState();
    EXPECT_FALSE(enabled(CommandOptions));
    EXPECT_TRUE(checked(CommandFullScreen));
    EXPECT_TRUE(enabled(CommandFullScreen));
    app.fullScreen = false;
    refreshCommandState();
    EXPECT_TRUE(enabled(CommandOptions));
    EXPECT_FALSE(checked(CommandFullScreen));
}

// --- Checks and texts, in every branch

TEST_F(CommandStateTest, checkTheZoomThatIsExactlyThat)
{
    const struct {
        int zoom;
        int id; // 0: none
    } cases[] = {
        {70,  40038},
        {80,  40045},
        {90,  40046},
        {100, 40039},
        {69,  0    },
        {71,  0    },
        {200, 0    },
    };
    for (const auto& c : cases) {
        workbook->currentSheet->zoom = c.zoom;
        for (const bool editing : {false, true}) {
            app.textEditor = editing ? &editor : nullptr;
            refreshCommandState();
            for (int id : {40038, 40045, 40046, 40039})
                EXPECT_EQ(checked(id), id == c.id) << c.zoom;
        }
    }
}

TEST_F(CommandStateTest, checkTheFilter)
{
    refreshCommandState();
    EXPECT_FALSE(checked(CommandFilter));
    RangeRef range;
    range.set(0, 0, 2, 3);
    workbook->currentSheet->filter.start(range);
    refreshCommandState();
    EXPECT_TRUE(checked(CommandFilter));
    workbook->setCurrentSheet(workbook->sheetAt(1));
    refreshCommandState();
    EXPECT_FALSE(checked(CommandFilter)) << "each sheet has its own";
}

TEST_F(CommandStateTest, sayWhatTheTogglesWouldDo)
{
    Sheet& sheet = *workbook->currentSheet;
    refreshCommandState();
    EXPECT_EQ(text(40043), u"Freeze &Titles");
    EXPECT_EQ(text(40064), u"Protect &Sheet");
    EXPECT_EQ(text(40065), u"Protect &Workbook");
    sheet.titleRows = true;
    sheet.protectedSheet = true;
    refreshCommandState();
    EXPECT_EQ(text(40043), u"Unfreeze &Titles");
    EXPECT_EQ(text(40064), u"Unprotect &Sheet");
    EXPECT_EQ(text(40065), u"Protect &Workbook");
    sheet.titleRows = false;
    sheet.titleColumns = true;
    sheet.protectedSheet = false;
    workbook->protectedWorkbook = true;
    edit();
    refreshCommandState();
    EXPECT_EQ(text(40043), u"Unfreeze &Titles");
    EXPECT_EQ(text(40064), u"Protect &Sheet") << "though no sheet can be changed";
    EXPECT_EQ(text(40065), u"Unprotect &Workbook");
}

TEST_F(CommandStateTest, keepAllOtherTexts)
{
    refreshCommandState();
    const Ids written = {40006, 40007, 40043, 40064, 40065};
    for (const MenuRow& row : MenuBar) {
        if (row.kind == MenuItem::Entry && written.count(row.id) == 0) {
            EXPECT_EQ(text(row.id), row.text);
        }
    }
}

// --- Recent files and tasks

TEST_F(CommandStateTest, showAPlaceholderForNoRecentFile)
{
    refreshCommandState();
    EXPECT_EQ(text(Placeholder), u"(empty)");
    EXPECT_FALSE(enabled(Placeholder));
    EXPECT_EQ(app.commandState.entry(5341), nullptr);
}

TEST_F(CommandStateTest, showTheRecentFiles)
{
    const struct {
        const char16_t* path;
        const char16_t* text;
    } cases[] = {
        {u"/a.vn",                           u"&1 /a.vn"                            },
        {u"/678901234567890123456789.vn",    u"&2 /678901234567890123456789.vn"     },
        {u"/23456789012345678901234567.vn",  u"&3 /23456789012345678901234567.vn"   },
        {u"/234567890123456789012345678.vn", u"&4 ...234567890123456789012345678.vn"},
    };
    for (std::size_t slot = 0; slot < 4; ++slot)
        app.recentFiles[slot] = cases[slot].path;
    ASSERT_EQ(app.recentFiles[2].size(), 30U);
    ASSERT_EQ(app.recentFiles[3].size(), 31U);
    edit();
    refreshCommandState();
    for (int slot = 0; slot < 4; ++slot) {
        EXPECT_EQ(text(5341 + slot), cases[slot].text);
        EXPECT_TRUE(enabled(5341 + slot));
    }
    EXPECT_EQ(app.commandState.entry(Placeholder), nullptr);
    const auto& entries = app.commandState.entries;
    EXPECT_EQ(entries[4].id, 40005);
    EXPECT_EQ(entries[5].id, 5341) << "in the place of the placeholder";
    EXPECT_EQ(entries[8].id, 5344);
    EXPECT_EQ(entries[9].id, 40024);
}

TEST_F(CommandStateTest, leaveNoEntryForAnEmptySlot)
{
    app.recentFiles[2] = u"/c.vn";
    refreshCommandState();
    EXPECT_EQ(text(5343), u"&3 /c.vn");
    EXPECT_EQ(app.commandState.entry(5341), nullptr);
    EXPECT_EQ(app.commandState.entry(Placeholder), nullptr);
}

TEST_F(CommandStateTest, showTheTasksThatWantAnEntry)
{
    workbook->addTask(duplicateString(u"one"), nullptr)->addToMenu = 1;
    workbook->addTask(duplicateString(u"two"), nullptr);
    workbook->addTask(duplicateString(u"three"), nullptr)->addToMenu = 1;
    refreshCommandState();
    EXPECT_EQ(app.commandState.entry(41000), nullptr) << "only when the menu is made";
    updateTaskMenu();
    refreshCommandState();
    EXPECT_EQ(text(41000), u"one");
    EXPECT_EQ(app.commandState.entry(41001), nullptr);
    EXPECT_EQ(text(41002), u"three");
    const auto& entries = app.commandState.entries;
    ASSERT_GE(entries.size(), 4U);
    EXPECT_EQ(entries[entries.size() - 4].id, 41000);
    EXPECT_EQ(entries[entries.size() - 3].id, 41002);
    EXPECT_EQ(entries[entries.size() - 2].id, 40042) << "above the entry of the dialog";
    clearTaskMenu();
    refreshCommandState();
    EXPECT_EQ(app.commandState.entry(41000), nullptr);
    updateTaskMenu();
    app.newWorkbook();
    EXPECT_EQ(app.commandState.entry(41000), nullptr) << "they go with their document";
}

// --- The toolbar

TEST_F(CommandStateTest, haveAButtonForEachSlot)
{
    std::vector<int> ids;
    for (const ButtonState& button : app.commandState.buttons)
        ids.push_back(button.id);
    EXPECT_EQ(ids, (std::vector<int>{40001, 102, 40004, 40006, 40008, 40009, 40010, 40051, 40014,
                                     901, 902, 903, 905, 906, 907, 904, 40016, 40022, 40063}));
}

TEST_F(CommandStateTest, switchTheToolbarByBranch)
{
    const Ids all = {40001, 102, 40004, 40006, 40008, 40009, 40010, 40051, 40014, 901,
                     902,   903, 905,   906,   907,   904,   40016, 40022, 40063};
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), without(all, {40006, 40010}));
    clipboard.text = true;
    addSteps(1, u"Bold");
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), all);

    edit();
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), (Ids{40008, 40009, 40010, 904}));
    editor.undoable = true;
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), (Ids{40006, 40008, 40009, 40010, 904}));

    app.textEditor = nullptr;
    workbook->protectedWorkbook = true;
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), (Ids{40001, 102, 40004, 40006, 40009, 40051, 40016, 40063}));
    clearUndo();
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), (Ids{40001, 102, 40004, 40009, 40051, 40016, 40063}));

    edit();
    clipboard.text = false;
    editor.undoable = false;
    refreshCommandState();
    EXPECT_EQ(enabledButtons(), (Ids{40009})) << "Cut and AutoSum keep the state they had";
}

TEST_F(CommandStateTest, pressTheButtonsThatAllOfTheSelectionHas)
{
    Sheet& sheet = *workbook->currentSheet;
    FontRecord font = workbook->fonts[0];
    font.weight = WeightBold;
    font.attributes = FontItalic;
    font.underline = 1;
    CellStyle style = defaultStyle();
    style.set(StyleFont, workbook->addFont(font));
    style.set(StyleHorizontal, AlignCenter);
    sheet.setCellStyle(0, 0, workbook->addStyle(style));
    refreshCommandState();
    const auto pressedOnes = [this] {
        Ids ids;
        for (const ButtonState& button : app.commandState.buttons) {
            if (button.checked)
                ids.insert(button.id);
        }
        return ids;
    };
    EXPECT_EQ(pressedOnes(), (Ids{901, 902, 903, 906}));
    style.set(StyleHorizontal, AlignLeft);
    sheet.setCellStyle(0, 0, workbook->addStyle(style));
    refreshCommandState();
    EXPECT_EQ(pressedOnes(), (Ids{901, 902, 903, 905}));
    style.set(StyleHorizontal, AlignRight);
    sheet.setCellStyle(0, 0, workbook->addStyle(style));
    refreshCommandState();
    EXPECT_EQ(pressedOnes(), (Ids{901, 902, 903, 907}));

    edit();
    sheet.selection.select({5, 5}, {5, 5});
    refreshCommandState();
    EXPECT_EQ(pressedOnes(), (Ids{901, 902, 903, 907})) << "nobody looks while editing";
    app.textEditor = nullptr;
    refreshCommandState();
    EXPECT_EQ(pressedOnes(), Ids{});
    sheet.selection.select({0, 0}, {0, 1});
    refreshCommandState();
    EXPECT_EQ(pressedOnes(), Ids{}) << "a plain cell beside it";
}

TEST_F(CommandStateTest, areThereBeforeTheFirstRefresh)
{
    EXPECT_TRUE(app.commandState.entries.empty());
    for (const ButtonState& button : app.commandState.buttons) {
        EXPECT_TRUE(button.enabled);
        EXPECT_FALSE(button.checked);
    }
    EXPECT_EQ(app.commandState.entry(40001), nullptr);
    EXPECT_EQ(app.commandState.button(40002), nullptr);
}

} // namespace
} // namespace vorn
