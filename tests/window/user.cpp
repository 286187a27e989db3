#include "window/user.h"

#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace vorn {
namespace {

// As long as nothing has changed for so long, nothing moves.
constexpr std::chrono::milliseconds Still{20};

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char letter : text)
        result += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return result + "'";
}

std::string repeated(const std::string& text, int times)
{
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

std::string words(QPoint place)
{
    return std::to_string(place.x()) + " " + std::to_string(place.y());
}

std::string moveTo(QPoint place)
{
    return "mousemove " + words(place) + " ";
}

} // namespace

User::User(std::string name, QSize screen)
    : name_(std::move(name)), screen_(screen.width(), screen.height())
{
    if (screen_.name().empty())
        ADD_FAILURE() << screen_.fault();
    // The toolkit wants it for itself alone.
    ::mkdir(folder_.file("runtime").c_str(), 0700);
    ::mkdir(folder_.file("Documents").c_str(), 0700);
}

// --- The program

Variables User::environment() const
{
    return {
        {"DISPLAY",                  screen_.name()                                    },
        {"WAYLAND_DISPLAY",          ""                                                },
        {"HOME",                     folder_.file("")                                  },
        {"XDG_RUNTIME_DIR",          folder_.file("runtime")                           },
        {"XDG_CONFIG_HOME",          ""                                                },
        {"XDG_DATA_HOME",            ""                                                },
        {"XDG_STATE_HOME",           ""                                                },
        {"XDG_CURRENT_DESKTOP",      ""                                                },
        {"DESKTOP_SESSION",          ""                                                },
        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder_.file("nobody")             },
        {"QT_QPA_PLATFORM",          "xcb"                                             },
        {"QT_QPA_PLATFORMTHEME",     ""                                                },
        {"QT_STYLE_OVERRIDE",        ""                                                },
        {"QT_SCALE_FACTOR",          ""                                                },
        {"QT_LOGGING_RULES",         "qt.qpa.*=false"                                  },
        {"LC_ALL",                   "C.UTF-8"                                         },
        {"LSAN_OPTIONS",             "suppressions=" VORN_LEAKS ":print_suppressions=0"},
    };
}

void User::start(const std::string& file)
{
    std::vector<std::string> command = {VORN_PROGRAM, "--locale", "en_US"};
    if (!file.empty())
        command.push_back(file);
    const QImage before = screen_.picture();
    program_ = std::make_unique<Process>(command, environment(), folder_.file(""), "log");
    const std::string search =
        "search --onlyvisible --all --pid " + std::to_string(program_->id()) + " --name .";
    mainWindow_.clear();
    const bool found = waitUntil([&] {
        std::istringstream(xdotool(search)) >> mainWindow_;
        return !mainWindow_.empty() || !program_->isRunning();
    });
    ASSERT_TRUE(found && !mainWindow_.empty()) << "no window comes: " << log();
    lookAfter(before);
    focus(mainWindow_);
}

std::unique_ptr<Process> User::startSecond(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {VORN_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return std::make_unique<Process>(command, environment(), folder_.file(""), "log");
}

// --- Windows

std::string User::xdotool(const std::string& arguments)
{
    const std::string command =
        "DISPLAY=" + screen_.name() + " xdotool " + arguments + " 2>> " + folder_.file("xdotool");
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return {};
    std::string output;
    for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe))
        output += static_cast<char>(letter);
    pclose(pipe);
    return output;
}

// The number of the topmost of Vorn's windows other than the main one; empty if there is none.
std::string User::otherWindow()
{
    std::istringstream all(xdotool("search --onlyvisible --class vorn"));
    std::string other;
    for (std::string window; all >> window;) {
        if (window != mainWindow_)
            other = window;
    }
    return other;
}

void User::focus(const std::string& window)
{
    xdotool("windowfocus " + window);
}

void User::expectTitle(const std::string& title)
{
    std::string now;
    waitUntil([&] {
        now = xdotool("getwindowname " + mainWindow_);
        return now == title + "\n";
    });
    EXPECT_EQ(now, title + "\n");
}

void User::turnToDialog(const std::string& title)
{
    std::string window;
    std::string now;
    const bool found = waitUntil([&] {
        window = otherWindow();
        now = window.empty() ? "nothing" : xdotool("getwindowname " + window);
        return now == title + "\n";
    });
    EXPECT_TRUE(found) << "instead of " << title << " there is " << now;
    if (found)
        focus(window);
}

bool User::asksOrEnds(const std::string& title)
{
    waitUntil([this] { return !otherWindow().empty() || !program_->isRunning(); });
    if (!program_->isRunning())
        return false;
    turnToDialog(title);
    return true;
}

void User::turnToMainWindow()
{
    EXPECT_TRUE(waitUntil([this] { return otherWindow().empty(); })) << "a window stays";
    focus(mainWindow_);
}

QRect User::mainWindow()
{
    const std::string answer = xdotool("getwindowgeometry --shell " + mainWindow_);
    const auto number = [&](const std::string& name) {
        const std::size_t at = answer.find(name + "=");
        return at == std::string::npos ? 0 : std::atoi(answer.c_str() + at + name.size() + 1);
    };
    return {number("X"), number("Y"), number("WIDTH"), number("HEIGHT")};
}

void User::resize(QSize size)
{
    xdotool("windowsize " + mainWindow_ + " " + std::to_string(size.width()) + " " +
            std::to_string(size.height()));
    EXPECT_TRUE(waitUntil([&] { return mainWindow().size() == size; }));
}

// --- Doing something

void User::keys(const std::string& names)
{
    xdotool("key --delay 4 " + names);
}

void User::type(const std::string& text)
{
    xdotool("type --delay 4 -- " + quoted(text));
}

void User::tap(QPoint place)
{
    xdotool(moveTo(place) + "click 1");
}

void User::doubleTap(QPoint place)
{
    xdotool(moveTo(place) + "click --repeat 2 --delay 40 1");
}

// By several steps, as a hand does.
void User::drag(QPoint from, QPoint to)
{
    std::string steps = moveTo(from) + "mousedown 1 ";
    constexpr int Steps = 4;
    for (int step = 1; step <= Steps; ++step)
        steps += moveTo(from + (to - from) * step / Steps);
    xdotool(steps + "mouseup 1");
}

void User::wheelDown(QPoint place, int steps)
{
    xdotool(moveTo(place) + "click --repeat " + std::to_string(steps) + " --delay 10 5");
}

// --- Seeing

// Whatever was done before has been answered once neither the program nor the server has anything
// left to do, and goes on having nothing.
QImage User::look()
{
    QImage before;
    QImage now;
    waitUntil([&] {
        const bool idle = screen_.isIdle() && (!program_ || program_->isIdle());
        before = now;
        now = screen_.picture();
        if (idle && now == before)
            return true;
        std::this_thread::sleep_for(Still);
        return false;
    });
    return now;
}

QImage User::lookAfter(const QImage& before)
{
    EXPECT_TRUE(waitUntil([&] { return screen_.picture() != before; })) << "nothing changes";
    return look();
}

void User::keepPicture(const std::string& what)
{
    std::filesystem::create_directories(VORN_SCREENSHOTS);
    const std::string file = std::string(VORN_SCREENSHOTS) + "/" + name_ + "-" +
                             std::to_string(++picturesKept_) + "-" + what + ".png";
    EXPECT_TRUE(look().save(QString::fromStdString(file)));
}

QRect User::findFirstCell()
{
    // Far enough below to be empty, so that the formula bar does not change as well.
    constexpr int RowsAbove = 9;
    QImage before;
    const auto changedBy = [&](const char* key) {
        keys(key);
        const QImage after = lookAfter(before);
        return difference(std::exchange(before, after), after);
    };
    keys("ctrl+Home" + repeated(" Down", RowsAbove));
    before = look();
    const QRect first = changedBy("Down");
    const QRect second = changedBy("Down");
    const QRect beside = changedBy("Right");
    keys("ctrl+Home");
    look();
    // Both cells have changed, and what of the frame stands out of the second one.
    const int height = second.top() - first.top();
    const int outside = first.height() - 2 * height;
    return {beside.left(), first.top() - RowsAbove * height, (beside.width() - outside) / 2,
            height};
}

// --- Files

std::string User::answerOnce(const std::string& arguments, const std::string& expected)
{
    return answerOnce(arguments, [&](const std::string& answer) { return answer == expected; });
}

std::string User::answerOnce(const std::string& arguments,
                             const std::function<bool(const std::string&)>& isExpected)
{
    Outcome outcome;
    waitUntil([&] {
        outcome = runProgram(folder_, arguments + " --locale en_US");
        return isExpected(outcome.output);
    });
    return outcome.output + outcome.errors;
}

void User::makeDocument(const std::string& name, const std::string& script)
{
    folder_.write(name + ".txt", script + "\nsaveas " + name + "\n");
    const Outcome outcome = runProgram(folder_, "script --locale en_US " + name + ".txt");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
}

} // namespace vorn
