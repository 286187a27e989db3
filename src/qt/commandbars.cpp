#include "qt/commandbars.h"

#include "files/bytes.h"
#include "qt/icons.h"
#include "qt/strings.h"
#include "resources/menu.h"
#include "shell/application.h"

#include <QStyle>

namespace vorn::qt {

namespace {

constexpr int IconSize = 16;
constexpr int LeastWidth = 40; // of a bar: as much as the button takes that shows the rest

static_assert(CommandBandSize == 2 * BandRecordSize);

bool isRecentFile(int id)
{
    return CommandRecentFile1 <= id && id <= CommandRecentFile4;
}

bool isTask(int id)
{
    return CommandFirstTask <= id && id <= CommandLastTask;
}

// In the path of a recent file '&' is a letter; only the first one marks the key.
QString textOf(const EntryState& state)
{
    QString text = toQt(state.text);
    if (isRecentFile(state.id))
        text.replace(1, text.size() - 1, text.mid(1).replace('&', QLatin1String("&&")));
    return text;
}

void showState(QAction& action, const EntryState& state)
{
    action.setText(textOf(state));
    action.setEnabled(state.enabled);
    // An entry that is not checked has no empty box either.
    action.setCheckable(state.checked);
    action.setChecked(state.checked);
}

QAction* findAction(const std::unordered_map<int, QAction*>& actions, int id)
{
    const auto found = actions.find(id);
    return found == actions.end() ? nullptr : found->second;
}

void putBand(std::vector<unsigned char>& bytes, unsigned band, bool beginsRow, int width)
{
    const std::size_t begin = bytes.size();
    bytes.resize(begin + BandRecordSize);
    unsigned char* field = bytes.data() + begin;
    for (const unsigned value :
         {BandRecordSize, band, beginsRow ? BandBreak : 0U, static_cast<unsigned>(width), 0U}) {
        put32(field, value);
        field += 4;
    }
}

// A bar may be narrower than what it holds: it then shows a button for the rest.
void letShrink(QWidget& bar)
{
    bar.setMinimumWidth(LeastWidth);
    bar.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

} // namespace

CommandBars::CommandBars(Command command, QWidget* parent)
    : QWidget(parent), command_(std::move(command)), rows_(QBoxLayout::TopToBottom, this)
{
    rows_.setContentsMargins(0, 0, 0, 0);
    rows_.setSpacing(0);
    letShrink(menuBar_);
    letShrink(toolbar_);
    menuBar_.setNativeMenuBar(false);
    rows_.addWidget(&menuBar_);
    rows_.addWidget(&toolbar_);
    makeMenu();
    makeToolbar();
}

QAction* CommandBars::makeAction(int id)
{
    auto* action = new QAction(this);
    connect(action, &QAction::triggered, this, [this, id] { command_(id); });
    return action;
}

void CommandBars::makeMenu()
{
    std::vector<QMenu*> open; // by level, from 1 on
    for (const MenuRow& row : MenuBar) {
        const auto level = static_cast<std::size_t>(row.level);
        open.resize(level, nullptr);
        QMenu* menu = level == 0 ? nullptr : open[level - 1];
        if (row.kind == MenuItem::PopUp) {
            open.push_back(menu == nullptr ? menuBar_.addMenu(toQt(row.text))
                                           : menu->addMenu(toQt(row.text)));
            continue;
        }
        if (row.kind == MenuItem::Separator) {
            menu->addSeparator();
            continue;
        }
        QAction* action = makeAction(row.id);
        action->setText(toQt(row.text));
        menu->addAction(action);
        entries_[row.id] = action;
        if (row.id == CommandNoRecentFiles)
            recentFiles_ = {menu, action, {}};
        else if (row.id == CommandTasks)
            tasks_ = {menu, action, {}};
    }
}

void CommandBars::makeToolbar()
{
    toolbar_.setIconSize({IconSize, IconSize});
    toolbar_.setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ToolbarSlot& slot : Toolbar) {
        if (slot.style == ButtonStyle::Separator) {
            toolbar_.addSeparator();
            continue;
        }
        QAction* action = makeAction(slot.id);
        action->setText(toQt(slot.tip)); // where it stands in the list of the rest
        action->setToolTip(toQt(slot.tip));
        action->setIcon(iconOf(slot.image));
        action->setCheckable(slot.style == ButtonStyle::Check);
        toolbar_.addAction(action);
        buttons_[slot.id] = action;
    }
}

QAction* CommandBars::entry(int id) const
{
    return findAction(entries_, id);
}

QAction* CommandBars::button(int id) const
{
    return findAction(buttons_, id);
}

// --- Following the state

void CommandBars::follow(const CommandState& state)
{
    followEntries(state);
    for (const ButtonState& each : state.buttons) {
        QAction* action = button(each.id);
        action->setEnabled(each.enabled);
        action->setChecked(action->isCheckable() && each.checked);
    }
}

void CommandBars::followEntries(const CommandState& state)
{
    std::vector<const EntryState*> recentFiles;
    std::vector<const EntryState*> tasks;
    for (const EntryState& each : state.entries) {
        if (isRecentFile(each.id))
            recentFiles.push_back(&each);
        else if (isTask(each.id))
            tasks.push_back(&each);
        else if (QAction* action = entry(each.id))
            showState(*action, each);
    }
    putChanging(recentFiles_, recentFiles);
    putChanging(tasks_, tasks);
    // The placeholder stands only where nothing takes its place.
    recentFiles_.before->setVisible(recentFiles.empty());
}

// The entries take the numbers of others as these go, so each is made anew when its own changes.
void CommandBars::putChanging(Changing& changing, const std::vector<const EntryState*>& states)
{
    const auto idOf = [](const QAction* action) { return action->data().toInt(); };
    const bool same = std::equal(
        changing.actions.begin(), changing.actions.end(), states.begin(), states.end(),
        [&](const QAction* action, const EntryState* state) { return idOf(action) == state->id; });
    if (!same) {
        for (QAction* action : changing.actions) {
            entries_.erase(idOf(action));
            changing.menu->removeAction(action);
            action->deleteLater(); // it may be the one that was chosen just now
        }
        changing.actions.clear();
        for (const EntryState* state : states) {
            QAction* action = makeAction(state->id);
            action->setData(state->id);
            changing.menu->insertAction(changing.before, action);
            changing.actions.push_back(action);
            entries_[state->id] = action;
        }
    }
    for (std::size_t index = 0; index < states.size(); ++index)
        showState(*changing.actions[index], *states[index]);
}

// --- The sizes of the bands

bool CommandBars::isOneRow() const
{
    return rows_.direction() == QBoxLayout::LeftToRight;
}

std::vector<unsigned char> CommandBars::record() const
{
    std::vector<unsigned char> bytes;
    putBand(bytes, BandMenu, true, menuBar_.width());
    putBand(bytes, BandToolbar, !isOneRow(), toolbar_.width());
    return bytes;
}

void CommandBars::restore(const std::vector<unsigned char>& record)
{
    constexpr std::size_t Style = 8;
    constexpr std::size_t Width = 12;
    if (record.size() != CommandBandSize)
        return;
    const bool oneRow = (get32(record.data() + BandRecordSize + Style) & BandBreak) == 0;
    rows_.setDirection(oneRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    constexpr unsigned WidthMost = 10000;
    const int width = static_cast<int>(qMin(get32(record.data() + Width), WidthMost));
    menuBar_.setMaximumWidth(oneRow ? qMax(width, LeastWidth) : QWIDGETSIZE_MAX);
}

} // namespace vorn::qt
