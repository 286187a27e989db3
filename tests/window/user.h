// Somebody who sits in front of a screen, with Vorn and nothing else on it, not even a window
// manager: so the user has to say which window the keys go to.
//
// Units:  pixels of the display. Whatever a user waits for comes within waitUntil's time, or else
//         the test fails there.
#pragma once

#include "support/program.h"
#include "support/tempfolder.h"
#include "window/process.h"
#include "window/screen.h"

#include <QPoint>
#include <QSize>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorn {

class User {
public:
    // `name` is that of the pictures that are kept.
    User(std::string name, QSize screen);

    // The documents, and everything else that Vorn finds of its user.
    const TempFolder& folder() const { return folder_; }

    // --- The program

    // Starts Vorn in the folder, with a file or without, and turns to its window.
    void start(const std::string& file = "");

    // Starts it once more beside the one that runs, which stays the one that is turned to.
    std::unique_ptr<Process> startSecond(const std::vector<std::string>& arguments);

    Process& program() { return *program_; }

    // What it said on its error stream.
    std::string log() const { return folder_.read("log"); }

    // --- Windows

    // Waits for the main window to have this title.
    void expectTitle(const std::string& title);

    // Waits for a window of this title other than the main one, and turns to it.
    void turnToDialog(const std::string& title);

    // Waits for such a window, and turns to it, or for the program to end. True if it came.
    bool asksOrEnds(const std::string& title);

    // Waits until no window but the main one is there, and turns to it.
    void turnToMainWindow();

    // Where the main window is on the screen.
    QRect mainWindow();

    void resize(QSize size);

    // --- Doing something

    // Keys one after the other, named as xdotool does: "ctrl+s Return".
    void keys(const std::string& names);
    void type(const std::string& text);
    void tap(QPoint place);
    void doubleTap(QPoint place);
    void drag(QPoint from, QPoint to);
    void wheelDown(QPoint place, int steps);

    // --- Seeing

    // The screen once nothing moves on it any more.
    QImage look();

    // The same, once it no longer looks as before.
    QImage lookAfter(const QImage& before);

    // Keeps the screen for a look by a person, in the build's folder "screenshots".
    void keepPicture(const std::string& what);

    // The rectangle of A1 on the screen: found by moving the cursor and looking at what changes.
    // The cursor ends in A1.
    QRect findFirstCell();

    // --- Files

    // Asks vorn-cli again and again until it says this. Answers what it said last.
    std::string answerOnce(const std::string& arguments, const std::string& expected);
    std::string answerOnce(const std::string& arguments,
                           const std::function<bool(const std::string&)>& isExpected);

    // Makes a document of the folder by a script of vorn-cli.
    void makeDocument(const std::string& name, const std::string& script);

private:
    std::string xdotool(const std::string& arguments);
    std::string otherWindow();
    void focus(const std::string& window);
    Variables environment() const;

    std::string name_;
    Screen screen_;
    TempFolder folder_;
    std::unique_ptr<Process> program_;
    std::string mainWindow_;
    int picturesKept_ = 0;
};

} // namespace vorn
