#include "qt/commandbars.h"

#include "qt/strings.h"
#include "qt/windowsession.h"
#include "resources/menu.h"
#include "shell/commands.h"

#include <QToolButton>

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

// Bars alone, and what was chosen on them.
struct Bars {
    explicit Bars(int width = 240)
    {
        bars.resize(width, 60);
        bars.follow(CommandState());
    }

    std::vector<int> chosen;
    CommandBars bars{[this](int id) { chosen.push_back(id); }, nullptr};
};

EntryState state(int id, std::u16string text, bool enabled = true, bool checked = false)
{
    return {id, enabled, checked, std::move(text)};
}

// Of a menu, with lines as "-" and hidden entries left out.
QStringList textsOf(const QMenu& menu)
{
    QStringList texts;
    for (const QAction* action : menu.actions()) {
        if (action->isVisible())
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return texts;
}

QMenu& menuOf(CommandBars& bars, std::initializer_list<int> path)
{
    QWidget* widget = &bars.menuBar();
    for (const int index : path)
        widget = widget->actions()[index]->menu();
    return static_cast<QMenu&>(*widget);
}

// The rows of the table are found in the order of the menu, level by level.
void expectRows(const QWidget& bar, int level, std::size_t& row)
{
    for (const QAction* action : bar.actions()) {
        ASSERT_LT(row, MenuBar.size());
        const MenuRow& expected = MenuBar[row++];
        ASSERT_EQ(expected.level, level);
        EXPECT_EQ(action->isSeparator(), expected.kind == MenuItem::Separator) << row;
        EXPECT_EQ(action->menu() != nullptr, expected.kind == MenuItem::PopUp) << row;
        EXPECT_EQ(fromQt(action->text()), expected.text);
        EXPECT_TRUE(action->shortcut().isEmpty()) << "the keys are the system's";
        if (action->menu() != nullptr)
            expectRows(*action->menu(), level + 1, row);
    }
}

TEST(CommandBars, haveTheMenuOfTheTable)
{
    Bars session;
    std::size_t row = 0;
    expectRows(session.bars.menuBar(), 0, row);
    EXPECT_EQ(row, MenuBar.size());
}

TEST(CommandBars, haveTheSlotsOfTheToolbar)
{
    Bars session;
    const QToolBar& toolbar = *session.bars.findChild<QToolBar*>();
    const QList<QAction*> actions = toolbar.actions();
    ASSERT_EQ(actions.size(), 26);
    ASSERT_EQ(Toolbar.size(), 26U);
    for (std::size_t slot = 0; slot < Toolbar.size(); ++slot) {
        const QAction* action = actions[static_cast<qsizetype>(slot)];
        EXPECT_EQ(action->isSeparator(), Toolbar[slot].style == ButtonStyle::Separator) << slot;
        EXPECT_EQ(action->isCheckable(), Toolbar[slot].style == ButtonStyle::Check) << slot;
        if (!action->isSeparator()) {
            EXPECT_EQ(fromQt(action->toolTip()), Toolbar[slot].tip);
        }
    }
}

TEST(CommandBars, tellWhatIsChosen)
{
    Bars session;
    session.bars.entry(CommandZoom70)->trigger();
    session.bars.button(CommandBold)->trigger();
    EXPECT_EQ(session.chosen, (std::vector<int>{CommandZoom70, CommandBold}));
}

TEST(CommandBars, followTheStatesInPlace)
{
    Bars session;
    QAction* undo = session.bars.entry(CommandUndo);
    QAction* zoom = session.bars.entry(CommandZoom100);
    CommandState states;
    states.entries = {state(CommandUndo, u"&Undo Bold", false),
                      state(CommandZoom100, u"&100%", true, true)};
    session.bars.follow(states);
    EXPECT_EQ(session.bars.entry(CommandUndo), undo);
    EXPECT_EQ(undo->text(), "&Undo Bold");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_TRUE(zoom->isChecked());

    states.entries = {state(CommandUndo, u"&Undo "), state(CommandZoom100, u"&100%")};
    session.bars.follow(states);
    EXPECT_EQ(undo->text(), "&Undo ");
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_FALSE(zoom->isChecked());
    EXPECT_FALSE(zoom->isCheckable()) << "there is no empty box before it";
}

TEST(CommandBars, showAButtonAsItStandsAndNotAsItWasPressed)
{
    Bars session;
    QAction* bold = session.bars.button(CommandBold);
    bold->trigger();
    EXPECT_TRUE(bold->isChecked());
    session.bars.follow(CommandState()); // the command did nothing
    EXPECT_FALSE(bold->isChecked());

    CommandState states;
    for (ButtonState& button : states.buttons) {
        button.enabled = button.id != CommandUndo;
        button.checked = button.id == CommandItalic;
    }
    session.bars.follow(states);
    EXPECT_FALSE(session.bars.button(CommandUndo)->isEnabled());
    EXPECT_TRUE(session.bars.button(CommandCut)->isEnabled());
    EXPECT_TRUE(session.bars.button(CommandItalic)->isChecked());
    EXPECT_FALSE(bold->isChecked());
}

TEST(CommandBars, putRecentFilesInThePlaceOfThePlaceholder)
{
    Bars session;
    const QMenu& menu = menuOf(session.bars, {0, 6});
    EXPECT_EQ(textsOf(menu), QStringList{"(empty)"});

    CommandState states;
    states.entries = {state(CommandRecentFile1, u"&1 /a/b&c.vn"),
                      state(CommandRecentFile1 + 2, u"&3 /d")};
    session.bars.follow(states);
    EXPECT_EQ(textsOf(menu), (QStringList{"&1 /a/b&&c.vn", "&3 /d"}))
        << "the path's own sign is shown as it is";
    session.bars.entry(CommandRecentFile1 + 2)->trigger();
    EXPECT_EQ(session.chosen, std::vector<int>{CommandRecentFile1 + 2});

    states.entries.front().text = u"&1 /other";
    session.bars.follow(states);
    EXPECT_EQ(textsOf(menu), (QStringList{"&1 /other", "&3 /d"}));

    session.bars.follow(CommandState());
    EXPECT_EQ(textsOf(menu), QStringList{"(empty)"});
    EXPECT_EQ(session.bars.entry(CommandRecentFile1), nullptr);
}

TEST(CommandBars, putTasksAboveTheTasksEntryInTheirOrder)
{
    Bars session;
    const QMenu& menu = menuOf(session.bars, {5});
    CommandState states;
    states.entries = {state(CommandFirstTask + 4, u"Later"), state(CommandFirstTask + 1, u"First"),
                      state(CommandTasks, u"&Tasks...")};
    session.bars.follow(states);
    EXPECT_EQ(textsOf(menu), (QStringList{"Later", "First", "&Tasks...", "-", "&About..."}));
    session.bars.follow(CommandState());
    EXPECT_EQ(textsOf(menu), (QStringList{"&Tasks...", "-", "&About..."}));
}

TEST(CommandBars, mayLoseTheEntryThatIsChosen)
{
    CommandBars* bars = nullptr;
    int chosen = 0;
    CommandBars standing(
        [&](int id) {
            chosen = id;
            bars->follow(CommandState());
        },
        nullptr);
    bars = &standing;
    CommandState states;
    states.entries = {state(CommandRecentFile1, u"&1 /a")};
    standing.follow(states);
    standing.entry(CommandRecentFile1)->trigger();
    EXPECT_EQ(chosen, CommandRecentFile1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(standing.entry(CommandRecentFile1), nullptr);
}

// The numbers of a record, four bytes each.
std::vector<unsigned> numbersOf(const std::vector<unsigned char>& record)
{
    std::vector<unsigned> numbers;
    for (std::size_t at = 0; at + 3 < record.size(); at += 4)
        numbers.push_back(record[at] | record[at + 1] * 0x100U | record[at + 2] * 0x10000U |
                          record[at + 3] * 0x1000000U);
    return numbers;
}

std::vector<unsigned char> recordOf(const std::vector<unsigned>& numbers)
{
    std::vector<unsigned char> record;
    for (const unsigned number : numbers) {
        for (int shift = 0; shift < 32; shift += 8)
            record.push_back(static_cast<unsigned char>(number >> shift & 0xFF));
    }
    return record;
}

TEST(CommandBars, writeOneRecordForEachBand)
{
    Bars session(500);
    session.bars.show();
    EXPECT_EQ(numbersOf(session.bars.record()),
              (std::vector<unsigned>{20, 2, 1, 500, 0, 20, 3, 1, 500, 0}));
}

TEST(CommandBars, takeWidthAndStyleFromARecord)
{
    Bars session(500);
    const std::vector<unsigned char> oneRow = recordOf({20, 2, 1, 200, 0, 20, 3, 0, 300, 0});
    session.bars.restore(oneRow);
    session.bars.show();
    EXPECT_EQ(session.bars.record(), oneRow);
    EXPECT_EQ(session.bars.menuBar().geometry().right() + 1,
              session.bars.findChild<QToolBar*>()->geometry().left());
}

TEST(CommandBars, standUnharmedWhateverARecordSays)
{
    const struct {
        const char* behaviour;
        std::vector<unsigned> numbers;
        bool oneRow;
    } cases[] = {
        {"nothing",                       {},                                       false},
        {"one record",                    {20, 2, 1, 200, 0},                       false},
        {"three",                         {20, 2, 1, 200, 0, 20, 3, 0, 300, 0, 20}, false},
        {"no width",                      {20, 2, 1, 0, 0, 20, 3, 0, 0, 0},         true },
        {"the greatest width",            {20, 2, 1, ~0U, 0, 20, 3, 0, ~0U, 0},     true },
        {"only width and style are read", {7, 9, 0, 200, 5, 7, 9, ~0U, 300, 5},     false},
    };
    for (const auto& c : cases) {
        Bars session(500);
        session.bars.restore(recordOf(c.numbers));
        session.bars.show();
        const QWidget& toolbar = *session.bars.findChild<QToolBar*>();
        EXPECT_EQ(toolbar.x() > 0, c.oneRow) << c.behaviour;
        EXPECT_GE(session.bars.menuBar().width(), 40) << c.behaviour;
        EXPECT_GE(toolbar.width(), 40) << c.behaviour;
    }
}

TEST(CommandBars, showAButtonForTheRestWhereTheyAreNarrow)
{
    Bars session(120);
    session.bars.show();
    WindowSession::settle();
    const auto* more = session.bars.findChild<QToolButton*>("qt_toolbar_ext_button");
    ASSERT_NE(more, nullptr);
    EXPECT_TRUE(more->isVisible());
    EXPECT_LE(more->geometry().right(), 120);
    session.bars.resize(1280, 60);
    WindowSession::settle();
    EXPECT_FALSE(more->isVisible());
}

TEST(CommandBars, followEachCommandInTheWindow)
{
    WindowSession session;
    CommandBars& bars = session.window.commandBars();
    EXPECT_FALSE(bars.entry(CommandUndo)->isEnabled());
    EXPECT_TRUE(bars.entry(CommandZoom100)->isChecked());
    bars.button(CommandBold)->trigger();
    EXPECT_TRUE(bars.button(CommandBold)->isChecked());
    EXPECT_TRUE(bars.entry(CommandUndo)->isEnabled());
    EXPECT_TRUE(bars.entry(CommandUndo)->text().startsWith("&Undo ")) << "and its label";
    EXPECT_GT(bars.entry(CommandUndo)->text().size(), 6);
    session.press('Z', Qt::ControlModifier);
    EXPECT_FALSE(bars.button(CommandBold)->isChecked());
    EXPECT_EQ(bars.entry(CommandUndo)->text(), "&Undo ");
    session.type(u"x");
    EXPECT_FALSE(bars.entry(CommandNew)->isEnabled());
    EXPECT_FALSE(bars.button(CommandBold)->isEnabled());
    EXPECT_TRUE(bars.entry(CommandCut)->isEnabled());
    EXPECT_TRUE(bars.entry(CommandAbout)->isEnabled());
}

} // namespace
} // namespace vorn::qt
