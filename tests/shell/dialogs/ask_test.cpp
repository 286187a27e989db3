#include "shell/dialogs/ask.h"

#include "shell/dialogs/dialogtest.h"

#include "core/heap.h"
#include "functions/table.h"
#include "shell/dialogs/names.h"

#include <algorithm>
#include <set>

namespace vorn {
namespace {

using AskFunction = DialogTest;
using AskName = DialogTest;
using AskQuickEntry = DialogTest;

// --- Insert Function

constexpr int Category = 1051, Functions = 1056, Help = 1110;

// The entries of a category.
Texts entriesOf(DialogModel& dialog, int category)
{
    EXPECT_TRUE(dialog.choose(Category, category));
    return dialog.find(Functions)->entries;
}

bool isSorted(const Texts& entries)
{
    return std::is_sorted(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
        return compareTexts(a.c_str(), b.c_str(), IgnoreCase) < 0;
    });
}

bool has(const Texts& entries, std::u16string_view text)
{
    return std::find(entries.begin(), entries.end(), text) != entries.end();
}

TEST_F(AskFunction, offersTheCategories)
{
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.number(), 129);
        EXPECT_EQ(dialog.title(), u"Insert function");
        EXPECT_EQ(
            dialog.find(Category)->entries,
            (Texts{u"All", u"Most Recently Used", u"Math & Trig", u"Statistical", u"Financial",
                   u"Date & Time", u"Logical", u"Text", u"Information & Lookup", u"Database"}));
        EXPECT_EQ(dialog.find(Category)->selected, 0);
        EXPECT_EQ(dialog.find(Functions)->selected, NoEntry);
        EXPECT_EQ(dialog.find(Help)->text, u"");
    });
    EXPECT_EQ(askFunction(FunctionsOfFormulas), NoFunction);
    EXPECT_EQ(opened.size(), 1U);
}

TEST_F(AskFunction, listsEachFunctionOfFormulasOnceUnderAllAndOnceInItsCategory)
{
    willAnswer([](DialogModel& dialog) {
        const Texts all = dialog.find(Functions)->entries;
        EXPECT_EQ(all.size(), 128U);
        EXPECT_TRUE(isSorted(all));
        EXPECT_TRUE(has(all, u"Abs(number)"));
        EXPECT_TRUE(has(all, u"Pi()"));
        EXPECT_FALSE(has(all, u"()"));
        std::multiset<std::u16string> together;
        for (int category = 2; category <= 9; ++category) {
            const Texts entries = entriesOf(dialog, category);
            EXPECT_FALSE(entries.empty());
            EXPECT_TRUE(isSorted(entries)) << category;
            together.insert(entries.begin(), entries.end());
        }
        EXPECT_TRUE(std::equal(together.begin(), together.end(),
                               std::multiset<std::u16string>(all.begin(), all.end()).begin()));
        EXPECT_EQ(together.size(), all.size());
        EXPECT_TRUE(has(entriesOf(dialog, 2), u"Abs(number)"));
        EXPECT_FALSE(has(entriesOf(dialog, 3), u"Abs(number)"));
        EXPECT_EQ(entriesOf(dialog, 0), all);
    });
    askFunction(FunctionsOfFormulas);
}

TEST_F(AskFunction, listsWhatWasUsedLastWithTheNewestAtTheTop)
{
    app.noteUsedFunction(FunctionRowToday);
    willAnswer([](DialogModel& dialog) {
        const Texts entries = entriesOf(dialog, 1);
        ASSERT_EQ(entries.size(), 4U);
        EXPECT_TRUE(entries[0].starts_with(u"Today("));
        EXPECT_TRUE(entries[1].starts_with(u"Sum("));
        EXPECT_TRUE(entries[2].starts_with(u"If("));
        EXPECT_TRUE(entries[3].starts_with(u"Average("));
        dialog.choose(Functions, 2);
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(askFunction(FunctionsOfFormulas), FunctionRowIf);
    EXPECT_EQ(app.usedFunctions[0], FunctionRowToday) << "noting it is for who inserts it";
}

TEST_F(AskFunction, offersThoseOfTasksToTheEditorOfTasks)
{
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.find(Category)->entries[1], u"Task");
        EXPECT_EQ(dialog.find(Category)->entries.size(), 10U);
        const Texts all = dialog.find(Functions)->entries;
        EXPECT_EQ(all.size(), 160U);
        EXPECT_TRUE(isSorted(all));
        const Texts tasks = entriesOf(dialog, 1);
        EXPECT_EQ(tasks.size(), 32U);
        EXPECT_TRUE(isSorted(tasks));
        for (const std::u16string& entry : tasks)
            EXPECT_TRUE(has(all, entry));
        EXPECT_TRUE(has(tasks, u"Chart([chartType, seriesInRows, legend])"));
        EXPECT_EQ(dialog.helpAnchor(), u"fn_macro");
        dialog.choose(Functions,
                      dialog.find(Functions)->entryOf(u"Chart([chartType, seriesInRows, legend])"));
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(askFunction(FunctionsOfTasks), 157);
}

TEST_F(AskFunction, showsTheHelpOfTheChosenOne)
{
    willAnswer([](DialogModel& dialog) {
        for (int entry = 0; entry < 128; ++entry) {
            EXPECT_TRUE(dialog.choose(Functions, entry));
            const std::u16string& shown =
                dialog.find(Functions)->entries[static_cast<std::size_t>(entry)];
            const int row = findFunction(shown.substr(0, shown.find(u'(')));
            ASSERT_GE(row, 0);
            EXPECT_EQ(dialog.find(Help)->text, FunctionTable[row].help.substr(0, 300));
            EXPECT_FALSE(dialog.find(Help)->text.empty());
        }
        dialog.choose(Category, 3);
        EXPECT_EQ(dialog.find(Help)->text, u"") << "nothing is chosen in the new list";
        EXPECT_EQ(dialog.find(Functions)->selected, NoEntry);
    });
    askFunction(FunctionsOfFormulas);
}

TEST_F(AskFunction, hasTheHelpOfItsCategory)
{
    const std::u16string_view anchors[] = {
        u"functions", u"functions",  u"fn_math_trig", u"fn_statistical", u"fn_financial",
        u"fn_date",   u"fn_logical", u"fn_text",      u"fn_information", u"fn_database",
    };
    willAnswer([&](DialogModel& dialog) {
        EXPECT_EQ(dialog.helpAnchor(), u"functions");
        for (int category = 0; category < 10; ++category) {
            dialog.choose(Category, category);
            EXPECT_EQ(dialog.helpAnchor(), anchors[category]);
        }
    });
    askFunction(FunctionsOfFormulas);
}

TEST_F(AskFunction, takesADoubleTapForOkAndNothingChosenForNone)
{
    willAnswer(
        [](DialogModel& dialog) {
            EXPECT_TRUE(
                dialog.doubleTap(Functions, dialog.find(Functions)->entryOf(u"Abs(number)")));
            EXPECT_FALSE(dialog.isOpen());
        },
        press(ButtonOk),
        [](DialogModel& dialog) {
            dialog.choose(Functions, 0);
            dialog.press(ButtonCancel);
        });
    EXPECT_EQ(askFunction(FunctionsOfFormulas), 0);
    EXPECT_EQ(askFunction(FunctionsOfFormulas), NoFunction);
    EXPECT_EQ(askFunction(FunctionsOfFormulas), NoFunction);
}

// --- Insert Name

void addName(std::u16string_view name)
{
    workbook->names.append({duplicateString(name), nullptr, -1});
}

TEST_F(AskName, listsTheNamesInOrderThoseWithoutADefinitionToo)
{
    for (const char16_t* name : {u"total", u"Alpha", u"beta", u"\x06", u"Alpha2"})
        addName(name);
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.number(), 156);
        EXPECT_EQ(dialog.title(), u"Insert Name");
        EXPECT_EQ(dialog.find(1029)->entries,
                  (Texts{u"Alpha", u"Alpha2", u"beta", u"Print_Area", u"total"}));
        dialog.choose(1029, 2);
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(askName(), u"beta");
}

TEST_F(AskName, answersNothingWhereNothingWasChosen)
{
    addName(u"total");
    willAnswer(
        press(ButtonOk),
        [](DialogModel& dialog) {
            dialog.choose(1029, 0);
            dialog.press(ButtonCancel);
        },
        [](DialogModel& dialog) { dialog.doubleTap(1029, 0); });
    EXPECT_EQ(askName(), u"");
    EXPECT_EQ(askName(), u"");
    EXPECT_EQ(askName(), u"total");
}

TEST(ShownName, hasWordsForTheNamesOfExcel)
{
    const std::u16string_view words[] = {
        u"Auto_Open", u"Auto_Close",    u"Extract",         u"Database",
        u"Criteria",  u"Print_Area",    u"Print_Titles",    u"Recorder",
        u"Data_Form", u"Auto_Activate", u"Auto_Deactivate", u"Sheet_Title",
    };
    for (char16_t code = 1; code <= 12; ++code)
        EXPECT_EQ(shownName(std::u16string(1, code)), words[code - 1]);
    EXPECT_EQ(shownName(u"\x0d"), u"\x0d");
    EXPECT_EQ(shownName(u"total"), u"total");
    EXPECT_EQ(shownName(u""), u"");
}

// --- Quick Entry

TEST_F(AskQuickEntry, listsWhatTheColumnHolds)
{
    const std::u16string_view column[] = {u"pear", u"Apple", u"",     u"fig",  u"=1+1",
                                          u"12",   u"apple", u"Pear", u"true", u"5%"};
    int row = 0;
    for (std::u16string_view text : column) {
        if (!text.empty())
            storeCellInput(1, row, text);
        ++row;
    }
    put(u"A1", u"elsewhere");
    selectCells(u"B20");
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.number(), 158);
        EXPECT_EQ(dialog.title(), u"Quick Entry");
        EXPECT_EQ(dialog.find(1029)->entries,
                  (Texts{u"0.05", u"12", u"Apple", u"fig", u"pear", u"true"}))
            << "sorted, each once and as it was met first, without formulas";
        dialog.choose(1029, 3);
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(askQuickEntry(), u"fig");
}

TEST_F(AskQuickEntry, cutsTextsAtAHundredCharacters)
{
    storeCellInput(0, 0, std::u16string(100, u'a') + u"1");
    storeCellInput(0, 1, std::u16string(100, u'a') + u"2");
    storeCellInput(0, 2, std::u16string(99, u'a'));
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.find(1029)->entries,
                  (Texts{std::u16string(99, u'a'), std::u16string(100, u'a')}));
        dialog.doubleTap(1029, 1);
    });
    EXPECT_EQ(askQuickEntry(), std::u16string(100, u'a'));
}

TEST_F(AskQuickEntry, stopsBehindFiftyEntries)
{
    for (int row = 0; row < 60; ++row)
        storeCellInput(0, row, std::u16string(1, static_cast<char16_t>(u'z' + 1 + row)) + u"x");
    willAnswer([](DialogModel& dialog) {
        EXPECT_EQ(dialog.find(1029)->entries.size(), 51U);
        EXPECT_EQ(dialog.find(1029)->selected, NoEntry);
        dialog.press(ButtonOk);
    });
    EXPECT_EQ(askQuickEntry(), u"");
    selectCells(u"C1");
    willAnswer([](DialogModel& dialog) { EXPECT_TRUE(dialog.find(1029)->entries.empty()); });
    EXPECT_EQ(askQuickEntry(), u"");
}

} // namespace
} // namespace vorn
