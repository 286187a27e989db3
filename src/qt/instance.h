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
// One byte, 1, is the answer. Whatever is no request is not answered, and its sender dropped.
//
// Errors: silent. Where there is nobody to ask, or no socket to listen at, a window opens as if it
//         were the first.
#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QString>

#include <functional>
#include <string>

class QLocalSocket;

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

// True if a window took the request.
bool askRunningWindow(const QString& address, const Request& request);

class InstanceServer {
public:
    using Handler = std::function<void(const Request&)>;

    explicit InstanceServer(Handler handler);

    // Takes the place of one that died there. False if that is refused.
    bool listen(const QString& address);

private:
    void accept();
    void read(QLocalSocket* socket);

    QLocalServer server_;
    Handler handler_;
};

} // namespace vorn::qt
