// Random edits, undone and done again. A command that changes the document by any other road than
// its step, or whose way back forgets something, is found here.
//
// The zoom is left alone: a column that is fitted again is fitted at the zoom of that moment.
//
// VORN_UNDO_STEPS sets how many edits are made, VORN_UNDO_SEED where the dice begin. A failure
// tells its seed; with that, 200 edits are enough to have it again.
#include "core/chain.h"
#include "core/error.h"
#include "core/workbook.h"
#include "editing/find.h"
#include "editing/format.h"
#include "editing/numberformats.h"
#include "editing/rowcolumn.h"
#include "editing/undo.h"
#include "shell/application.h"
#include "shell/commands.h"
#include "support/dice.h"
#include "support/editing.h"
#include "support/filedrecords.h"
#include "support/filedtexts.h"
#include "support/poolcount.h"

#include <cstdlib>
#include <deque>
#include <gtest/gtest.h>
#include <iterator>
#include <numeric>
#include <string>
#include <vector>

namespace vorn {
namespace {

constexpr int UsedColumns = 7;
constexpr int UsedRows = 11;

Sheet& sheet()
{
    return *workbook->currentSheet;
}

std::u16string digits(int number)
{
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

int anyColumn(Dice& dice)
{
    return dice.oneIn(40) ? LastColumn : dice.below(UsedColumns);
}
int anyRow(Dice& dice)
{
    return dice.oneIn(40) ? LastRow : dice.below(UsedRows);
}

// --- Where the next edit happens. None of this is a step.

void selectCells(Dice& dice)
{
    const CellRef first{static_cast<std::uint16_t>(anyRow(dice)),
                        static_cast<std::uint16_t>(anyColumn(dice))};
    CellRef second = first;
    if (dice.oneIn(2)) {
        // In any direction, but within the cells in use, so that it stays small.
        second.row =
            static_cast<std::uint16_t>(first.row < UsedRows ? dice.below(UsedRows) : first.row);
        second.column = static_cast<std::uint16_t>(
            first.column < UsedColumns ? dice.below(UsedColumns) : first.column);
    }
    sheet().selection.select(first, second);
}

void selectRows(Dice& dice)
{
    const int first = dice.below(UsedRows);
    const int last = std::min(first + dice.below(3), UsedRows);
    sheet().selection.select({static_cast<std::uint16_t>(first), 0},
                             {static_cast<std::uint16_t>(last), LastColumn});
}

void selectColumns(Dice& dice)
{
    const int first = dice.below(UsedColumns);
    const int last = std::min(first + dice.below(3), UsedColumns);
    sheet().selection.select({0, static_cast<std::uint16_t>(first)},
                             {LastRow, static_cast<std::uint16_t>(last)});
    sheet().selection.activeRow = static_cast<std::uint16_t>(anyRow(dice));
}

void selectAll(Dice&)
{
    onCommand(CommandSelectAll);
}

void selectSheet(Dice& dice)
{
    workbook->setCurrentSheet(workbook->sheetAt(dice.below(workbook->sheets.size())));
}

// --- Edits

void enterConstant(Dice& dice)
{
    const char16_t* texts[] = {u"1",  u"-2.5",      u"3e4",   u"12%",  u"true",          u"word",
                               u"'5", u"1/2/2000",  u"12:30", u"text", u"1/2/2000 1:00", u"",
                               u"'",  u"some more", u"0",     u"7",    u"words, words",  u"=1/0"};
    application->enterCell(texts[dice.below(std::size(texts))]);
}

// A reference to a cell above the active one, so that no formula reads itself.
std::u16string cellAbove(Dice& dice)
{
    const int row = std::min<int>(sheet().selection.activeRow, UsedRows);
    std::u16string text = dice.oneIn(4) ? u"$" : u"";
    text += static_cast<char16_t>(u'A' + dice.below(UsedColumns));
    return text + digits(1 + dice.below(row));
}

void enterFormula(Dice& dice)
{
    if (sheet().selection.activeRow == 0)
        return enterConstant(dice);
    std::u16string text;
    switch (dice.below(6)) {
    case 0:
        text = u"=" + cellAbove(dice) + u"*2";
        break;
    case 1:
        // Not a sum: one that meets an error leaves the result that stood there.
        text = u"=CountA(" + cellAbove(dice) + u":" + cellAbove(dice) + u")+" + cellAbove(dice);
        break;
    case 2:
        text = u"=" + cellAbove(dice) + u"&\"x\"&" + cellAbove(dice);
        break;
    case 3:
        text = u"=" + cellAbove(dice);
        break;
    case 4:
        text = u"=If(" + cellAbove(dice) + u">1,\"more\"," + cellAbove(dice) + u")";
        break;
    default:
        text = u"=Len(" + cellAbove(dice) + u")=" + cellAbove(dice);
        break;
    }
    application->enterCell(text);
}

void enterNonsense(Dice& dice)
{
    application->enterCell(dice.oneIn(2) ? u"=1+" : u"=Sum(");
    clearError();
}

template <CommandId command>
void run(Dice&)
{
    onCommand(command);
}

void formatCells(Dice& dice)
{
    const FormatRequest before = readFormatRequest();
    FormatRequest after = before;
    const struct {
        int FormatRequest::*field;
        int values;
    } fields[] = {
        {&FormatRequest::numberFormat, workbook->formats.size()},
        {&FormatRequest::horizontal,   5                       },
        {&FormatRequest::vertical,     3                       },
        {&FormatRequest::wrapText,     2                       },
        {&FormatRequest::textColour,   16                      },
        {&FormatRequest::backColour,   16                      },
        {&FormatRequest::bold,         2                       },
        {&FormatRequest::italic,       2                       },
        {&FormatRequest::underline,    2                       },
        {&FormatRequest::borderLeft,   2                       },
        {&FormatRequest::borderRight,  2                       },
        {&FormatRequest::borderTop,    2                       },
        {&FormatRequest::borderBottom, 2                       },
        {&FormatRequest::outline,      2                       },
        {&FormatRequest::locked,       2                       },
        {&FormatRequest::hidden,       2                       },
    };
    for (int changes = 1 + dice.below(3); changes > 0; --changes) {
        const auto& field = fields[dice.below(std::size(fields))];
        after.*field.field = dice.below(field.values);
    }
    if (dice.oneIn(4))
        after.fontSize = 8 + dice.below(3) * 8;
    if (dice.oneIn(6))
        after.fontName = dice.oneIn(2) ? u"Arial" : u"Courier New";
    applyFormatRequest(before, after);
}

SizeTarget anyTarget(Dice& dice)
{
    return dice.oneIn(2) ? SizeOne : SizeSelection;
}

void setHeights(Dice& dice)
{
    const int heights[] = {0, 1, 100, 255, 400, 8180};
    setRowHeights(anyRow(dice), heights[dice.below(std::size(heights))], anyTarget(dice));
}

void setWidths(Dice& dice)
{
    const int widths[] = {0, 1, 438, DefaultColumnWidth, 5000, 65462};
    setColumnWidths(anyColumn(dice), widths[dice.below(std::size(widths))], anyTarget(dice));
}

void hideOneRow(Dice& dice)
{
    hideRows(anyRow(dice), dice.oneIn(2), SizeOne);
}

void hideOneColumn(Dice& dice)
{
    hideColumns(anyColumn(dice), dice.oneIn(2), SizeOne);
}

void fitOneRow(Dice& dice)
{
    fitRows(anyRow(dice), SizeOne);
}

void fitOneColumn(Dice& dice)
{
    fitColumns(anyColumn(dice), SizeOne);
}

// Letters in words, so that a formula reads the same cells as before.
void replaceText(Dice& dice)
{
    findSettings = FindSettings{};
    findSettings.findText = dice.oneIn(2) ? u"o" : u"x";
    findSettings.replaceText = dice.oneIn(2) ? u"" : u"oox";
    findSettings.inValues = false;
    findSettings.replaceAction = dice.oneIn(2) ? ActionReplace : ActionReplaceAll;
    setSearchRange();
    if (findNext(FindInActiveCell))
        replaceInCell();
    clearError(); // a function may have lost its name
}

// --- What changes the document without a step

void makeNumberFormat(Dice& dice)
{
    NumberFormatDraft draft;
    draft.decimals = dice.below(10);
    draft.positivePrefix = u"+";
    addNumberFormat(draft);
}

void deleteNumberFormat(Dice& dice)
{
    if (workbook->formats.size() > LastBuiltInFormat + 1)
        deleteFormat(LastBuiltInFormat + 1 +
                     dice.below(workbook->formats.size() - LastBuiltInFormat - 1));
}

// Most commands rest under protection, so it does not last.
void unprotect(Dice&)
{
    if (workbook->protectedWorkbook)
        onCommand(CommandProtectWorkbook);
    if (sheet().protectedSheet)
        onCommand(CommandProtectSheet);
}

enum Kind {
    Moves, // where the next edit happens
    Edits, // by a step, or does nothing
    Free   // changes the document without a step
};

// A new command is one row here. The weight is how many lots it has.
constexpr struct {
    const char* name;
    int weight;
    Kind kind;
    void (*run)(Dice&);
} Operations[] = {
    {"select cells",     40, Moves, selectCells                },
    {"select rows",      8,  Moves, selectRows                 },
    {"select columns",   8,  Moves, selectColumns              },
    {"select all",       2,  Moves, selectAll                  },
    {"select a sheet",   3,  Moves, selectSheet                },
    {"constant",         30, Edits, enterConstant              },
    {"formula",          20, Edits, enterFormula               },
    {"nonsense",         2,  Edits, enterNonsense              },
    {"clear all",        3,  Edits, run<CommandClearAll>       },
    {"clear contents",   3,  Edits, run<CommandClearContents>  },
    {"clear formats",    3,  Edits, run<CommandClearFormats>   },
    {"bold",             3,  Edits, run<CommandBold>           },
    {"italic",           2,  Edits, run<CommandItalic>         },
    {"underline",        2,  Edits, run<CommandUnderline>      },
    {"align left",       1,  Edits, run<CommandAlignLeft>      },
    {"align center",     1,  Edits, run<CommandAlignCenter>    },
    {"align right",      1,  Edits, run<CommandAlignRight>     },
    {"format cells",     12, Edits, formatCells                },
    {"set heights",      4,  Edits, setHeights                 },
    {"hide rows",        2,  Edits, run<CommandHideRows>       },
    {"show rows",        2,  Edits, run<CommandShowRows>       },
    {"fit rows",         2,  Edits, run<CommandAutofitRows>    },
    {"hide a row",       1,  Edits, hideOneRow                 },
    {"fit a row",        1,  Edits, fitOneRow                  },
    {"set widths",       4,  Edits, setWidths                  },
    {"hide columns",     2,  Edits, run<CommandHideColumns>    },
    {"show columns",     2,  Edits, run<CommandShowColumns>    },
    {"fit columns",      2,  Edits, run<CommandAutofitColumns> },
    {"hide a column",    1,  Edits, hideOneColumn              },
    {"fit a column",     1,  Edits, fitOneColumn               },
    {"replace",          4,  Edits, replaceText                },
    {"protect a sheet",  1,  Free,  run<CommandProtectSheet>   },
    {"protect the book", 1,  Free,  run<CommandProtectWorkbook>},
    {"unprotect",        12, Free,  unprotect                  },
    {"make a format",    2,  Free,  makeNumberFormat           },
    {"delete a format",  1,  Free,  deleteNumberFormat         },
    {"freeze",           1,  Free,  run<CommandFreezeTitles>   },
};

int anyOperation(Dice& dice)
{
    const int lots =
        std::accumulate(std::begin(Operations), std::end(Operations), 0,
                        [](int sum, const auto& operation) { return sum + operation.weight; });
    int lot = dice.below(lots);
    int operation = 0;
    while (lot >= Operations[operation].weight)
        lot -= Operations[operation++].weight;
    return operation;
}

// Where a sheet is looked at.
struct View {
    Selection selection;
    int leftColumn = 0;
    int topRow = 0;
};

View exchangeView(Sheet& each, const View& view)
{
    const View former{each.selection, each.leftColumn, each.topRow};
    each.selection = view.selection;
    each.leftColumn = view.leftColumn;
    each.topRow = view.topRow;
    return former;
}

// The file of the document with nothing selected: a step shows what it changes, but what was
// selected in between is no part of it.
std::string fileBytes()
{
    Sheet* current = workbook->currentSheet;
    std::vector<View> views;
    for (Sheet* each : workbook->sheets)
        views.push_back(exchangeView(*each, {}));
    workbook->setCurrentSheet(workbook->sheetAt(0));
    std::string bytes = savedBytes();
    workbook->setCurrentSheet(current);
    for (Sheet* each : workbook->sheets)
        exchangeView(*each, views[static_cast<std::size_t>(each->index)]);
    return bytes;
}

// Does a formula give a text?
bool anyTextResult()
{
    for (const FormulaCell* cell = calcChain.first(); cell != nullptr; cell = calcChain.next(cell))
        if (cell->result.tag == TagText)
            return true;
    return false;
}

// The first records in which two files differ, by type and bytes.
std::string difference(const std::string& a, const std::string& b)
{
    const std::vector<FiledRecord> before = splitRecords(a);
    const std::vector<FiledRecord> after = splitRecords(b);
    std::string text;
    for (std::size_t index = 0; index < std::max(before.size(), after.size()); ++index) {
        const FiledRecord none{};
        const FiledRecord& old = index < before.size() ? before[index] : none;
        const FiledRecord& now = index < after.size() ? after[index] : none;
        if (old.type == now.type && old.payload == now.payload)
            continue;
        text += std::to_string(old.type) + ' ' + old.payload + "\n" + std::to_string(now.type) +
                ' ' + now.payload + '\n';
    }
    return text;
}

class UndoProperty : public testing::Test {
protected:
    // A step as it was made: the document before and behind it.
    struct Step {
        std::string name, before, after;
        bool sameTables = true; // as when it was made
    };

    static int setting(const char* name, int otherwise)
    {
        const char* value = std::getenv(name);
        return value == nullptr ? otherwise : std::atoi(value);
    }

    void startDocument()
    {
        application->newWorkbook();
        steps.clear();
        log.clear();
    }

    void note(const std::string& line) { log += line + '\n'; }

    void edit()
    {
        const auto& operation = Operations[anyOperation(dice)];
        note(operation.name);
        const std::string before = describeSheets();
        const int formats = workbook->formats.size();
        workbook->modified = false;
        operation.run(dice);
        EXPECT_FALSE(errorStands());
        if (operation.kind == Edits)
            noteEdit(operation.name, before);
        else
            noteChange(before, formats);
        position = undoList.position;
        ASSERT_EQ(undoList.steps.size(), static_cast<int>(steps.size()));
    }

    void noteEdit(const char* name, const std::string& before)
    {
        if (!workbook->modified) {
            EXPECT_EQ(describeSheets(), before) << "changed without a step";
            return;
        }
        steps.resize(std::min<std::size_t>(steps.size(), static_cast<std::size_t>(position)));
        steps.push_back({name, before, describeSheets(), true});
        if (steps.size() > UndoStepMax)
            steps.pop_front();
    }

    // The steps go on to work, but not between the documents that were seen: these may have had a
    // number format that has gone.
    void noteChange(const std::string& before, int formats)
    {
        if (undoList.steps.size() == 0)
            steps.clear();
        if (describeSheets() == before && workbook->formats.size() >= formats)
            return;
        for (Step& step : steps)
            step = {step.name, "", "", false};
    }

    static void expectSheets(const std::string& expected)
    {
        if (!expected.empty()) {
            EXPECT_EQ(describeSheets(), expected);
        }
    }

    void goBack()
    {
        if (undoList.position == 0)
            return;
        onCommand(CommandUndo);
        const Step& step = steps[static_cast<std::size_t>(undoList.position)];
        note("undo " + step.name);
        expectSheets(step.before);
        position = undoList.position;
    }

    void goForward()
    {
        if (undoList.position == undoList.steps.size())
            return;
        onCommand(CommandRedo);
        const Step& step = steps[static_cast<std::size_t>(undoList.position - 1)];
        note("redo " + step.name);
        expectSheets(step.after);
        position = undoList.position;
    }

    // So many steps back and the same ones forward again: not a byte of the file may differ, but
    // for the order of the texts in their table. A formula that gives another text than before may
    // have to take another place for it.
    void goBackAndForward(int count)
    {
        count = std::min(count, undoList.position);
        // Styles that became equal with the loss of a number format count as one from then on.
        while (count > 0 && !steps[static_cast<std::size_t>(undoList.position - count)].sameTables)
            --count;
        const std::string bytes = fileBytes();
        for (int step = 0; step < count; ++step)
            goBack();
        for (int step = 0; step < count; ++step)
            goForward();
        const std::string again = fileBytes();
        EXPECT_TRUE(again == bytes ||
                    (anyTextResult() && spellOutTexts(again) == spellOutTexts(bytes)))
            << "another file behind " << count << " steps:\n"
            << difference(bytes, again);
    }

    TestPlatform machine;
    Application app;
    std::deque<Step> steps;
    int position = 0;
    Dice dice{1};
    std::string log;
};

TEST_F(UndoProperty, holdsForRandomEdits)
{
    const int count = setting("VORN_UNDO_STEPS", 2000);
    const int seed = setting("VORN_UNDO_SEED", 1);
    constexpr int EditsOfADocument = 200;
    for (int made = 0; made < count; ++made) {
        // A document of its own seed, so that a failure can be had again without those before.
        static_assert(EditsOfADocument > 10 * UndoStepMax);
        const int document = made / EditsOfADocument;
        if (made % EditsOfADocument == 0) {
            startDocument();
            dice = Dice(static_cast<unsigned>(seed + document));
        }
        edit();
        switch (dice.below(8)) {
        case 0:
            goBack();
            break;
        case 1:
            goForward();
            break;
        case 2:
            goBackAndForward(1 + dice.below(dice.oneIn(4) ? UndoStepMax : 2));
            break;
        default:
            break;
        }
        EXPECT_EQ(poolFaults(), "");
        ASSERT_FALSE(HasFailure()) << "seed " << seed + document << ":\n" << log;
    }
}

} // namespace
} // namespace vorn
