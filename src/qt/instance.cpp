#include "qt/instance.h"

#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>

#include <cstring>

namespace vorn::qt {

namespace {

constexpr qsizetype HeaderSize = 8;
constexpr char Taken = 1;
constexpr int PatienceMilliseconds = 2000;

void put32(QByteArray& bytes, unsigned value)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.append(static_cast<char>(value >> shift & 0xFF));
}

unsigned byteAt(const QByteArray& bytes, qsizetype offset)
{
    return static_cast<unsigned char>(bytes[offset]);
}

unsigned get32(const QByteArray& bytes, qsizetype offset)
{
    unsigned value = 0;
    for (qsizetype byte = 4; byte-- > 0;)
        value = value << 8 | byteAt(bytes, offset + byte);
    return value;
}

bool isSound(unsigned kind, unsigned length)
{
    if (kind == RequestFront)
        return length == 0;
    return kind == RequestOpen && length != 0 && length % 2 == 0 && length / 2 <= RequestPathMax;
}

} // namespace

QByteArray requestBytes(const Request& request)
{
    QByteArray bytes;
    put32(bytes, request.kind);
    put32(bytes, static_cast<unsigned>(request.path.size()) * 2);
    for (const char16_t unit : request.path) {
        bytes.append(static_cast<char>(unit & 0xFF));
        bytes.append(static_cast<char>(unit >> 8));
    }
    return bytes;
}

RequestForm readRequest(const QByteArray& bytes, Request& out)
{
    if (bytes.size() < HeaderSize)
        return RequestForm::Incomplete;
    const unsigned kind = get32(bytes, 0);
    const unsigned length = get32(bytes, 4);
    if (!isSound(kind, length))
        return RequestForm::Garbage;
    const qsizetype end = HeaderSize + static_cast<qsizetype>(length);
    if (bytes.size() < end)
        return RequestForm::Incomplete;
    if (bytes.size() > end)
        return RequestForm::Garbage;
    Request request;
    request.kind = static_cast<RequestKind>(kind);
    for (qsizetype at = HeaderSize; at < end; at += 2)
        request.path += static_cast<char16_t>(byteAt(bytes, at) | byteAt(bytes, at + 1) << 8);
    out = request;
    return RequestForm::Whole;
}

// A user may have several displays, with a window on each.
QString instanceAddress()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        return {};
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty())
        display = qEnvironmentVariable("DISPLAY");
    for (QChar& letter : display) {
        if (!letter.isLetterOrNumber())
            letter = '-';
    }
    return folder + "/vorn" + display;
}

bool askRunningWindow(const QString& address, const Request& request)
{
    if (address.isEmpty() || request.path.size() > RequestPathMax)
        return false;
    QLocalSocket socket;
    socket.connectToServer(address);
    if (!socket.waitForConnected(PatienceMilliseconds))
        return false;
    socket.write(requestBytes(request));
    if (!socket.waitForBytesWritten(PatienceMilliseconds) ||
        !socket.waitForReadyRead(PatienceMilliseconds))
        return false;
    return socket.read(1) == QByteArray(1, Taken);
}

// --- The window that listens

InstanceServer::InstanceServer(Handler handler) : handler_(std::move(handler))
{
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { accept(); });
}

// Who listens there would have answered when it was asked.
bool InstanceServer::listen(const QString& address)
{
    if (address.isEmpty())
        return false;
    QLocalServer::removeServer(address);
    return server_.listen(address);
}

void InstanceServer::accept()
{
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QLocalSocket::readyRead, &server_,
                         [this, socket] { read(socket); });
        // Who says nothing is not waited for.
        QTimer::singleShot(PatienceMilliseconds, socket, [socket] { socket->abort(); });
        read(socket);
    }
}

// Nothing is taken off the socket before the request is whole, and no more is looked at than one
// can have.
void InstanceServer::read(QLocalSocket* socket)
{
    constexpr qsizetype LengthMax = HeaderSize + 2 * RequestPathMax;
    Request request;
    switch (readRequest(socket->peek(LengthMax + 1), request)) {
    case RequestForm::Incomplete:
        return;
    case RequestForm::Garbage:
        socket->abort();
        return;
    case RequestForm::Whole:
        break;
    }
    socket->disconnect(&server_);
    socket->readAll();
    socket->write(&Taken, 1);
    socket->disconnectFromServer();
    handler_(request);
}

} // namespace vorn::qt
