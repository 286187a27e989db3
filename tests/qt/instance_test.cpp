#include "qt/instance.h"

#include "support/environment.h"
#include "support/tempfolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>

#include <gtest/gtest.h>

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

// A window that listens, and what it was asked for.
struct Listener {
    explicit Listener(const QString& address)
        : server([this](const Request& request) { requests.push_back(request); }),
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

    std::vector<Request> requests;
    InstanceServer server;
    bool listens;
};

// Another start, which waits for its answer while the window goes on.
bool askFromElsewhere(const QString& address, const Request& request)
{
    std::optional<bool> answer;
    std::thread other([&] { answer = askRunningWindow(address, request); });
    Listener::serve([&] { return answer.has_value(); });
    other.join();
    return *answer;
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
    EXPECT_TRUE(askFromElsewhere(socketIn(folder), {RequestOpen, u"/tmp/\u00e9.vn"}));
    EXPECT_TRUE(askFromElsewhere(socketIn(folder), {RequestFront, {}}));
    ASSERT_EQ(window.requests.size(), 2U);
    EXPECT_EQ(window.requests[0].kind, RequestOpen);
    EXPECT_EQ(window.requests[0].path, u"/tmp/\u00e9.vn");
    EXPECT_EQ(window.requests[1].kind, RequestFront);
}

TEST(Instance, takesTheLongestPathAndNoLonger)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    EXPECT_TRUE(
        askFromElsewhere(socketIn(folder), {RequestOpen, std::u16string(RequestPathMax, u'x')}));
    EXPECT_FALSE(askFromElsewhere(socketIn(folder),
                                  {RequestOpen, std::u16string(RequestPathMax + 1, u'x')}));
    ASSERT_EQ(window.requests.size(), 1U);
    EXPECT_EQ(window.requests[0].path.size(), RequestPathMax);
}

TEST(Instance, findsNobodyWhereNobodyListens)
{
    const TempFolder folder;
    EXPECT_FALSE(askRunningWindow(socketIn(folder), {RequestFront, {}}));
    EXPECT_FALSE(askRunningWindow({}, {RequestFront, {}}));
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
    EXPECT_TRUE(window.requests.empty());
    EXPECT_TRUE(askFromElsewhere(socketIn(folder), {RequestFront, {}}));
}

TEST(Instance, takesARequestThatComesInPieces)
{
    const TempFolder folder;
    Listener window(socketIn(folder));
    QLocalSocket slow;
    slow.connectToServer(socketIn(folder));
    const QByteArray bytes = requestBytes({RequestOpen, u"/a"});
    for (const char byte : bytes) {
        EXPECT_TRUE(window.requests.empty());
        slow.write(&byte, 1);
        slow.flush();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    Listener::serve([&] { return !window.requests.empty(); });
    ASSERT_EQ(window.requests.size(), 1U);
    EXPECT_EQ(window.requests[0].path, u"/a");
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
    EXPECT_FALSE(askRunningWindow(socketIn(folder), {RequestFront, {}}));
    Listener window(socketIn(folder));
    EXPECT_TRUE(window.listens);
    EXPECT_TRUE(askFromElsewhere(socketIn(folder), {RequestFront, {}}));
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
