// The menu bar and the toolbar, made of the tables in resources/menu.h. How their entries and
// buttons stand is the system's command state; keys are the system's too, and only shown here.
//
// Both stand in rows of their own. A record that says so puts them into one row.
//
// The record of one band, of which the settings keep one for the menu and then one for the toolbar;
// numbers of four bytes, the lowest byte first:
//
//   offset  meaning
//   0       size of the record: 20
//   4       the band: 2 for the menu, 3 for the toolbar
//   8       style: bit 0 is set for a band that begins a row
//   12      width in pixels
//   16      1 for a band that is maximised; it never is
//
// Shape:  entries and buttons are made once and change in place; only those of recent files and of
//         tasks come and go.
#pragma once

#include "shell/commandstate.h"

#include <QBoxLayout>
#include <QMenuBar>
#include <QToolBar>
#include <QWidget>

#include <functional>
#include <unordered_map>
#include <vector>

namespace vorn::qt {

constexpr unsigned BandRecordSize = 20;
constexpr unsigned BandMenu = 2;
constexpr unsigned BandToolbar = 3;
constexpr unsigned BandBreak = 1; // its style begins a row

class CommandBars : public QWidget {
public:
    using Command = std::function<void(int id)>;

    // `command` runs for whatever the user chooses.
    CommandBars(Command command, QWidget* parent);

    void follow(const CommandState& state);

    std::vector<unsigned char> record() const;

    // Takes of the records style and width. One of another size is ignored.
    void restore(const std::vector<unsigned char>& record);

    // Null for an id without an entry, or a button.
    QAction* entry(int id) const;
    QAction* button(int id) const;

    // Of the bar itself, from left to right.
    QMenuBar& menuBar() { return menuBar_; }

private:
    using Actions = std::unordered_map<int, QAction*>;

    // Entries that come and go, and stand before another one.
    struct Changing {
        QMenu* menu = nullptr;
        QAction* before = nullptr;
        std::vector<QAction*> actions;
    };

    void makeMenu();
    void makeToolbar();
    QAction* makeAction(int id);
    void followEntries(const CommandState& state);
    void putChanging(Changing& changing, const std::vector<const EntryState*>& states);
    bool isOneRow() const;

    Command command_;
    QBoxLayout rows_;
    QMenuBar menuBar_;
    QToolBar toolbar_;
    Actions entries_;
    Actions buttons_;
    Changing recentFiles_;
    Changing tasks_;
};

} // namespace vorn::qt
