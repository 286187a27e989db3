// vorn: the spreadsheet.
#include "core/workbook.h"
#include "platform/system/machine.h"
#include "qt/clipboard.h"
#include "qt/fonts.h"
#include "qt/instance.h"
#include "qt/mainwindow.h"
#include "qt/picture.h"
#include "qt/windowlook.h"
#include "shell/application.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QFile>
#include <QLockFile>
#include <QStandardPaths>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace vorn::qt {
namespace {

constexpr int StatusFailed = 1;
constexpr int StatusWrongCall = 2;
constexpr int PictureSideMax = 10000;
constexpr double PicturePixelsMax = 64e6;

// What a call asks for.
struct Call {
    MachineOptions machine;
    bool ownSettings = false; // the file was named
    std::string file;
    std::string picture;
    std::vector<int> size;
    double scale = 1;
};

// An option that is given says something.
std::string refuseEmpty(const std::string& value)
{
    return value.empty() ? "a value is missing" : std::string();
}

void addOptions(CLI::App& program, Call& call)
{
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.set_version_flag("--version", "vorn " VORN_VERSION);
    program.add_option("FILE", call.file, "The file to open");
    CLI::Option* picture = program
                               .add_option("--picture", call.picture,
                                           "Write a picture of the window instead of opening it")
                               ->type_name("OUT.png")
                               ->check(refuseEmpty);
    program.add_option("--size", call.size, "Size of the picture, 240 320 if left out")
        ->type_name("W H")
        ->expected(2)
        ->allow_extra_args(false) // the file follows
        ->check(CLI::Range(LeastWindowSide, PictureSideMax))
        ->needs(picture);
    program.add_option("--scale", call.scale, "Scale of the picture, such as 1.5")
        ->type_name("S")
        ->check(CLI::Range(0.5, 8.0))
        ->needs(picture);
    program
        .add_option("--settings", call.machine.settingsFile,
                    "File of the settings; one that cannot be read or written is as if it were new")
        ->type_name("FILE");
    program.add_option("--locale", call.machine.locale, "Locale, such as en_US or de_DE")
        ->type_name("NAME");
    program.add_option("--now", call.machine.now, "The time that the clock shows")
        ->type_name("YYYY-MM-DDThh:mm:ss")
        ->check(refuseEmpty);
}

// A side may be long and the scale high, but not all of it at once.
bool isTooLarge(const Call& call)
{
    return !call.size.empty() &&
           call.size[0] * call.scale * call.size[1] * call.scale > PicturePixelsMax;
}

// --- The display

// The toolkit ends the program where it finds no display.
[[noreturn]] void refuseDisplay()
{
    std::fputs("vorn: no display to open a window on; --picture OUT.png paints one without\n",
               stderr);
    std::_Exit(StatusFailed);
}

void hearWhileStarting(QtMsgType type, const QMessageLogContext&, const QString&)
{
    if (type == QtFatalMsg)
        refuseDisplay();
}

// Its warnings are for whoever works on it.
void hearWhileRunning(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "vorn: %s\n", qUtf8Printable(text));
}

void chooseDisplay(const Call& call)
{
    if (!call.picture.empty()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_SCALE_FACTOR", QByteArray::number(call.scale));
        qunsetenv("QT_SCREEN_SCALE_FACTORS");
    } else if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
               qEnvironmentVariableIsEmpty("DISPLAY") &&
               qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        refuseDisplay();
    }
}

// --- The program

// In the user's configuration folder.
std::string defaultSettingsFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder.isEmpty() ? std::string()
                            : QFile::encodeName(folder + "/vorn/settings").toStdString();
}

int runPicture(const Call& call, const std::u16string& file)
{
    PictureUser user;
    QtClipboard clipboard;
    QtTextMeasure textMeasure;
    SystemMachine machine(user, clipboard, textMeasure);
    std::string reason;
    if (!machine.install(call.machine, reason)) {
        std::fprintf(stderr, "vorn: %s\n", reason.c_str());
        return StatusWrongCall;
    }
    Application app;
    MainWindow window;
    user.setWindow(&window);
    if (!call.size.empty())
        window.resize(call.size[0], call.size[1]);
    window.show();
    window.begin(file);
    const bool written = writePicture(window, QFile::decodeName(call.picture.c_str()));
    user.setWindow(nullptr);
    return written && !user.hasSpoken() ? 0 : StatusFailed;
}

int runWindow(const Call& call, const std::u16string& file)
{
    WindowUser user;
    QtClipboard clipboard;
    QtTextMeasure textMeasure;
    SystemMachine machine(user, clipboard, textMeasure);
    MachineOptions options = call.machine;
    if (!call.ownSettings)
        options.settingsFile = defaultSettingsFile();
    std::string reason;
    if (!machine.install(options, reason)) {
        std::fprintf(stderr, "vorn: %s\n", reason.c_str());
        return StatusWrongCall;
    }
    const QString address = instanceAddress();
    QLockFile lock(instanceLock(address));
    const StartAnswer answer =
        askRunningWindow(address, lock, {file.empty() ? RequestFront : RequestOpen, file});
    if (answer == StartAnswer::Taken)
        return 0;
    Application app;
    MainWindow window;
    if (answer == StartAnswer::Nobody)
        window.listen(address);
    lock.unlock();
    user.setWindow(&window);
    window.show();
    window.begin(file);
    const int status = app.quitRequested ? 0 : QApplication::exec();
    user.setWindow(nullptr);
    return status;
}

int start(int argc, char** argv)
{
    CLI::App program("The Vorn spreadsheet", "vorn");
    Call call;
    addOptions(program, call);
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return program.exit(request); // help or version
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "vorn: %s\n", error.what());
        return StatusWrongCall;
    }
    if (isTooLarge(call)) {
        std::fputs("vorn: --size: the picture would be too large\n", stderr);
        return StatusWrongCall;
    }
    std::u16string file;
    if (!readArgument(call.file, file)) {
        std::fputs("vorn: FILE: the name is no UTF-8\n", stderr);
        return StatusWrongCall;
    }
    call.ownSettings = program.count("--settings") != 0;
    chooseDisplay(call);
    qInstallMessageHandler(hearWhileStarting);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication::setDesktopFileName(QStringLiteral("vorn"));
    int ownArguments = 1; // the others are not the toolkit's
    QApplication toolkit(ownArguments, argv);
    qInstallMessageHandler(hearWhileRunning);
    std::setlocale(LC_NUMERIC, "C"); // the toolkit takes the user's
    QApplication::setQuitOnLastWindowClosed(false);
    useWindowLook();
    return call.picture.empty() ? runWindow(call, file) : runPicture(call, file);
}

} // namespace
} // namespace vorn::qt

int main(int argc, char** argv)
{
    try {
        return vorn::qt::start(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "vorn: %s\n", failure.what());
        return vorn::qt::StatusFailed;
    }
}
