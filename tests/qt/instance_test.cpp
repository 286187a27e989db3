#include "qt/instance.h"

#include "qt/strings.h"
#include "support/dice.h"
#include "support/environment.h"
#include "support/tempfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLocalSocket>
#include <QLockFile>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vorn::qt {
namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values)
        bytes.append(static_cast<char>(value));
    return bytes;
}

TEST(Request, isWrittenAsTold)
{
    EXPECT_EQ(requestBytes({RequestOpen, u"/\u20ac"}),
              bytesOf({0xA0, 0x5B, 0, 0, 4, 0, 0, 0, '/', 0, 0xAC, 0x20}));
    EXPECT_EQ(requestBytes({RequestFront, {}}), bytesOf({0xA1, 0x5B, 0, 0, 0, 0, 0, 0}));
}

TEST(Request, isReadOnlyIfItIsOne)
{
    const QByteArray front = requestBytes({RequestFront, {}});
    const QByteArray open = requestBytes({RequestOpen, u"/a"});
    const struct {
        const char* behaviour;
        QByteArray bytes;
        RequestForm form;
    } cases[] = {
        {"to come to the front",             front,                                               RequestForm::Whole     },
        {"to open a path",                   open,                                                RequestForm::Whole     },
        {"nothing so far",                   {},                                                  RequestForm::Incomplete},
        {"half a head",                      open.left(7),                                        RequestForm::Incomplete},
        {"a head alone",                     open.left(8),                                        RequestForm::Incomplete},
        {"half of a letter",                 open.left(9),                                        RequestForm::Incomplete},
        {"more than was told",               open + 'x',                                          RequestForm::Garbage   },
        {"the front and a path",             bytesOf({0xA1, 0x5B, 0, 0, 2, 0, 0, 0, 'a', 0}),
         RequestForm::Garbage                                                                                            },
        {"no path to open",                  bytesOf({0xA0, 0x5B, 0, 0, 0, 0, 0, 0}),             RequestForm::Garbage   },
        {"a path of half letters",           bytesOf({0xA0, 0x5B, 0, 0, 3, 0, 0, 0}),             RequestForm::Garbage   },
        {"the longest path",                 bytesOf({0xA0, 0x5B, 0, 0, 0xFE, 0xFF, 0, 0}),
         RequestForm::Incomplete                                                                                         },
        {"a longer one",                     bytesOf({0xA0, 0x5B, 0, 0, 0, 0, 1, 0}),             RequestForm::Garbage   },
        {"the longest number, which is odd", bytesOf({0xA0, 0x5B, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}),
         RequestForm::Garbage                                                                                            },
        {"and the longest even one",         bytesOf({0xA0, 0x5B, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}),
         RequestForm::Garbage                                                                                            },
        {"another kind",                     bytesOf({0xA2, 0x5B, 0, 0, 0, 0, 0, 0}),             RequestForm::Garbage   },
        {"a line of another protocol",       "GET / HTTP/1.1\r\n",                                RequestForm::Garbage   },
    };
    for (const auto& c : cases) {
        Request request{RequestFront, u"as it was"};
        EXPECT_EQ(readRequest(c.bytes, request), c.form) << c.behaviour;
        if (c.form != RequestForm::Whole) {
            EXPECT_EQ(request.path, u"as it was") << c.behaviour;
        }
    }
    Request request;
    EXPECT_EQ(readRequest(open, request), RequestForm::Whole);
    EXPECT_EQ(request.kind, RequestOpen);
    EXPECT_EQ(request.path, u"/a");
}

// Whatever comes: only what a start would have written is a request.
TEST(Request, isReadFromNoOtherBytes)
{
    Dice dice(1);
    int whole = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::u16string path(static_cast<std::size_t>(dice.below(5)), u'x');
        QByteArray bytes = requestBytes({path.empty() ? RequestFront : RequestOpen, path});
        for (int change = dice.below(3); change > 0; --change)
            bytes[dice.below(static_cast<int>(bytes.size()))] = static_cast<char>(dice.below(256));
        bytes.truncate(dice.below(static_cast<int>(bytes.size()) + 1));
        if (dice.oneIn(8))
            bytes.append(static_cast<char>(dice.below(256)));
        Request request;
        if (readRequest(bytes, request) != RequestForm::Whole)
            continue;
        ++whole;
        EXPECT_EQ(requestBytes(request), bytes);
    }
    EXPECT_GT(whole, 500);
}

TEST(Argument, isAbsoluteAndWithoutQuotesUnlessItIsNoPath)
{
    const std::string here = QDir::currentPath().toStdString() + "/";
    const std::string tooLong = '"' + std::string(299, 'x');
    const struct {
        const char* behaviour;
        std::string argument, line;
    } cases[] = {
        {"nothing",                            "",              ""            },
        {"an absolute path",                   "/tmp/a b.vn",   "/tmp/a b.vn" },
        {"a relative one",                     "a.vn",          here + "a.vn" },
        {"in quotes",                          "\"/tmp/a.vn\"", "/tmp/a.vn"   },
        {"a relative one in quotes",           "\"a.vn\"",      here + "a.vn" },
        {"after an opening quote alone",       "\"a.vn",        here + "a.vn" },
        {"quotes in quotes, which are a name", "\"\"a\"\"",     here + "\"a\""},
        {"a quote without a path",             "\"",            "\""          },
        {"letters of two bytes",               "/\xc3\xa9.vn",  "/\xc3\xa9.vn"},
        {"a line too long for its quotes",     tooLong,         tooLong       },
    };
    for (const auto& c : cases) {
        std::u16string line;
        EXPECT_TRUE(readArgument(c.argument, line)) << c.behaviour;
        EXPECT_EQ(toQt(line).toStdString(), c.line) << c.behaviour;
    }
    std::u16string line;
    EXPECT_FALSE(readArgument("/tmp/\xe9.vn", line)) << "an old encoding";
    EXPECT_FALSE(readArgument("/tmp/\xc3", line)) << "half a letter";
}

// A window that listens, and what it was asked for.
struct Listener {
    explicit Listener(const QString& address)
        : server({[this] { return readiness; }, [this] { ++fronts; },
                  [this](const std::u16string& path) {
                      paths.push_back(path);
                      if (whileOpening)
                          whileOpening();
                  }}),
          listens(server.listen(address))
    {
    }

    // Until `done`, at most three seconds.
    template <typename Condition>
    static void serve(Condition done)
    {
        QElapsedTimer timer;
        timer.start();
        while (!done() && timer.elapsed() < 3000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    void become(Readiness now)
    {
        readiness = now;
        server.goOn();
    }

    Readiness readiness = Readiness::Ready;
    int fronts = 0;
    std::vector<std::u16string> paths;
    std::function<void()> whileOpening;
    InstanceServer server;
    bool listens;
};

// Another start, which waits for its answer while the window goes on.
class Asker {
public:
    Asker(const QString& address, const Request& request)
        : other_([this, address, request] {
              QLockFile lock(instanceLock(address));
              const StartAnswer heard = askRunningWindow(address, lock, request);
              holdsLock_ = lock.isLocked();
              answer_ = heard;
          })
    {
    }
    ~Asker() { other_.join(); }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    bool hasAnswer() const { return answer_.load() != None; }
    bool heldLock() const { return holdsLock_; }
    std::optional<StartAnswer> answer() const
    {
        Listener::serve([this] { return hasAnswer(); });
        return hasAnswer() ? answer_.load() : std::optional<StartAnswer>();
    }

private:
    static constexpr StartAnswer None = static_cast<StartAnswer>(-1);
    std::atomic<StartAnswer> answer_ = None;
    std::atomic<bool> holdsLock_ = false;
    std::thread other_;
};

std::optional<StartAnswer> askFromElsewhere(const QString& address, const Request& request)
{
    return Asker(address, request).answer();
}

// Nobody has to go on for this answer.
StartAnswer askHere(const QString& address)
{
    QLockFile lock(instanceLock(address));
    return askRunningWindow(address, lock, {RequestFront, {}});
}

QString socketIn(const TempFolder& folder)
{
    return QFile::decodeName(folder.file("socket").c_str());
}

TEST(Instance, asksTheWindowThatListens)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    ASSERT_TRUE(window.listens);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestOpen, u"/tmp/\u00e9.vn"}),
              StartAnswer::Taken);
    EXPECT_EQ(window.paths, std::vector<std::u16string>{u"/tmp/\u00e9.vn"});
    EXPECT_EQ(window.fronts, 1);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestFront, {}}), StartAnswer::Taken);
    EXPECT_EQ(window.paths.size(), 1U);
    EXPECT_EQ(window.fronts, 2);
}

TEST(Instance, takesTheLongestPathAndNoLonger)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    const std::u16string longest(RequestPathMax, u'x');
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestOpen, longest}), StartAnswer::Taken);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestOpen, longest + u'x'}),
              StartAnswer::Unheard);
    EXPECT_EQ(window.paths, std::vector<std::u16string>{longest});
}

TEST(Instance, findsNobodyWhereNobodyListens)
{
    const TempFolder folder;
    EXPECT_EQ(askHere(socketIn(folder)), StartAnswer::Nobody);
    EXPECT_EQ(askHere({}), StartAnswer::Nobody);
}

TEST(Instance, leavesTheSocketToAWindowThatDoesNotAnswer)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    {
        Asker other(socketIn(folder), {RequestOpen, u"/a"});
        std::this_thread::sleep_for(std::chrono::milliseconds(2500)); // stopped, or busy
        EXPECT_EQ(other.answer(), StartAnswer::Unheard);
        EXPECT_FALSE(other.heldLock());
    }
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_TRUE(window.paths.empty()) << "the other start has opened it itself";
    EXPECT_EQ(window.fronts, 0);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestOpen, u"/b"}), StartAnswer::Taken)
        << "and whoever comes next finds the first window again";
    EXPECT_EQ(window.paths, std::vector<std::u16string>{u"/b"});
}

TEST(Instance, waitsAsLongAsTheWindowSaysSo)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    window.readiness = Readiness::Busy;
    const Asker other(socketIn(folder), {RequestOpen, u"/a"});
    Listener::serve([&] { return window.fronts == 1; });
    EXPECT_EQ(window.fronts, 1) << "the box that is waited for is shown";
    Listener::serve([] { return false; }); // longer than anybody waits for a first answer
    EXPECT_FALSE(other.hasAnswer());
    EXPECT_TRUE(window.paths.empty());
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestFront, {}}), StartAnswer::Taken)
        << "nor is anybody else kept waiting";
    window.become(Readiness::Ready);
    EXPECT_EQ(other.answer(), StartAnswer::Taken);
    EXPECT_EQ(window.paths, std::vector<std::u16string>{u"/a"});
}

TEST(Instance, findsNobodyWhereTheWindowHasClosedMeanwhile)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    window.readiness = Readiness::Busy;
    const Asker other(socketIn(folder), {RequestOpen, u"/a"});
    Listener::serve([&] { return window.fronts == 1; });
    window.become(Readiness::Leaving);
    EXPECT_EQ(other.answer(), StartAnswer::Nobody);
    EXPECT_TRUE(other.heldLock()) << "until it listens itself";
    EXPECT_TRUE(window.paths.empty());
}

TEST(Instance, letsOneOfTwoStartsAtOnceListen)
{
    const TempFolder folder;
    QLockFile lock(instanceLock(socketIn(folder)));
    EXPECT_EQ(askRunningWindow(socketIn(folder), lock, {RequestFront, {}}), StartAnswer::Nobody);
    EXPECT_TRUE(lock.isLocked());
    const Asker other(socketIn(folder), {RequestOpen, u"/a"});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(other.hasAnswer()) << "it waits for the first to listen or to give up";
    Listener window(socketIn(folder));
    lock.unlock();
    EXPECT_EQ(other.answer(), StartAnswer::Taken);
    EXPECT_EQ(window.paths, std::vector<std::u16string>{u"/a"});
}

TEST(Instance, dropsWhoSendsGarbageAndGoesOn)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    QLocalSocket stranger;
    stranger.connectToServer(socketIn(folder));
    stranger.write("What is this place? A spreadsheet, maybe.");
    Listener::serve([&] { return stranger.state() == QLocalSocket::UnconnectedState; });
    EXPECT_EQ(stranger.state(), QLocalSocket::UnconnectedState);
    EXPECT_EQ(window.fronts, 0);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestFront, {}}), StartAnswer::Taken);
}

TEST(Instance, takesARequestThatComesInPieces)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    QLocalSocket slow;
    slow.connectToServer(socketIn(folder));
    const QByteArray bytes = requestBytes({RequestOpen, u"/a"});
    for (const char byte : bytes) {
        EXPECT_TRUE(window.paths.empty());
        slow.write(&byte, 1);
        slow.flush();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    Listener::serve([&] { return !window.paths.empty(); });
    EXPECT_EQ(window.paths, std::vector<std::u16string>{u"/a"});
}

// The box about unsaved changes runs a loop of its own, in which the sender is told off and gone.
TEST(Instance, letsASenderGoWhileTheWindowStillAsks)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    int left = 0;
    window.whileOpening = [&] {
        QEventLoop box;
        QTimer::singleShot(200, &box, &QEventLoop::quit);
        box.exec();
        ++left;
    };
    for (int sender = 1; sender <= 3; ++sender) {
        QLocalSocket slow;
        slow.connectToServer(socketIn(folder));
        const QByteArray bytes = requestBytes({RequestOpen, u"/a"});
        slow.write(bytes.left(5));
        slow.flush();
        QCoreApplication::processEvents();
        slow.write(bytes.mid(5));
        slow.flush();
        Listener::serve([&] { return left == sender; });
        EXPECT_EQ(left, sender);
        EXPECT_EQ(slow.state(), QLocalSocket::UnconnectedState);
    }
}

// As a program leaves it that is killed.
void leaveDeadSocket(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

TEST(Instance, replacesTheSocketOfOneThatDied)
{
    const TempFolder folder;
    leaveDeadSocket(folder.file("socket"));
    ASSERT_TRUE(QFile::exists(socketIn(folder)));
    EXPECT_EQ(askHere(socketIn(folder)), StartAnswer::Nobody);
    Listener window(socketIn(folder));
    EXPECT_TRUE(window.listens);
    EXPECT_EQ(askFromElsewhere(socketIn(folder), {RequestFront, {}}), StartAnswer::Taken);
}

TEST(Instance, listensWhereOnlyTheUserCanAsk)
{
    const TempFolder folder;
    const Listener window(socketIn(folder));
    ASSERT_TRUE(window.listens);
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther |
                        QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(socketIn(folder)) & others, QFileDevice::Permissions());
}

TEST(Instance, hasAnAddressForEachDisplay)
{
    const EnvironmentVariable wayland("WAYLAND_DISPLAY", nullptr);
    QString first;
    {
        const EnvironmentVariable display("DISPLAY", ":1");
        first = instanceAddress();
    }
    const EnvironmentVariable display("DISPLAY", "/tmp/../:2");
    EXPECT_NE(instanceAddress(), first);
    EXPECT_EQ(instanceAddress().section('/', 0, -2), first.section('/', 0, -2))
        << "whatever the display is called, the folder stays";
    EXPECT_FALSE(Listener({}).listens);
}

} // namespace
} // namespace vorn::qt
