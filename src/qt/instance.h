// One window for each user and display: a second start of the program asks the window that is open
// already to open a file, or to come to the front, and ends.
//
// A request goes through a socket that only the user can reach; numbers have the lowest byte first:
//
//   offset  size  meaning
//   0       4     what is asked for: 23456 to open a path, 23457 to come to the front
//   4       4     bytes of the path: even, 2 at least to open, and none otherwise
//   8       ...   the path in UTF-16
//
// The answer is one byte: 1, the request is taken, or 2, it waits for its turn, as all do that open
// something: a box or a dialog may be open. A 1 follows when its turn comes. Whatever is no request
// is not answered, and its sender dropped.
//
// A sender waits two seconds for the first byte. Without one it opens a window of its own, which
// does not listen: the other one is stopped or busy, and goes on listening when it is not. After a
// 2 the sender waits for the 1 without a limit. A connection that ends without a 1 means that the
// window closes, so the sender starts over, and opens a window where nobody is left. A request
// counts only while its sender is connected, so none is served twice.
//
// From the question to the moment at which the new window listens a start holds a lock beside the
// socket, or two at once would both find nobody. While it waits for a 1 it does not hold it.
//
// Errors: silent. Where there is nobody to ask, or no socket to listen at, a window opens as if it
//         were the first.
#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QPointer>
#include <QString>

#include <deque>
#include <functional>
#include <string>

class QLocalSocket;
class QLockFile;
class QTimer;

namespace vorn::qt {

enum RequestKind : unsigned { RequestOpen = 23456, RequestFront = 23457 };

struct Request {
    RequestKind kind = RequestFront;
    std::u16string path;
};

// What a path may have; more than the system takes, which says so then.
constexpr unsigned RequestPathMax = 32767;

QByteArray requestBytes(const Request& request);

enum class RequestForm { Incomplete, Whole, Garbage };

// Looks at what has come so far; `out` is the request once it is whole.
RequestForm readRequest(const QByteArray& bytes, Request& out);

// Where the window of this user on this display listens; empty if there is no place for it.
QString instanceAddress();

// The lock that belongs to it.
QString instanceLock(const QString& address);

enum class StartAnswer {
    Taken,  // a window has the request
    Nobody, // no window is there: this one is to listen
    Unheard // one is there, but does not answer in time
};

// `lock` is held afterwards if the answer is Nobody, until the window listens.
StartAnswer askRunningWindow(const QString& address, QLockFile& lock, const Request& request);

// What a start is to open, as a window in another folder understands it too: absolute, and without
// quotes. What is no path in quotes is left to openFromCommandLine as it stands. False for bytes
// that are no UTF-8, which would not lead back to the file.
bool readArgument(const std::string& argument, std::u16string& line);

// What can be done with a request.
enum class Readiness { Ready, Busy, Leaving };

class InstanceServer {
public:
    struct Window {
        std::function<Readiness()> readiness;
        std::function<void()> comeToFront;
        std::function<void(const std::u16string&)> open; // only if Ready
    };

    explicit InstanceServer(Window window);

    // Takes the place of one that died there: whoever calls has asked and found nobody. False if
    // the place is refused.
    bool listen(const QString& address);

    // Is to be called when the window has become ready, or leaves: what waits is served, or else
    // dropped with the socket.
    void goOn();

private:
    struct Waiting {
        QPointer<QLocalSocket> sender; // null once it is gone
        std::u16string path;
    };

    void accept();
    void read(QLocalSocket& sender, QTimer& patience);
    void take(QLocalSocket& sender, const Request& request);
    void serve(QLocalSocket& sender, const std::u16string& path);
    void leave();

    QLocalServer server_;
    Window window_;
    std::deque<Waiting> waiting_;
};

} // namespace vorn::qt
