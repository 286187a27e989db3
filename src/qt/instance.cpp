#include "qt/instance.h"

#include "qt/strings.h"
#include "shell/documentflow.h"

#include <QFileInfo>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>

#include <optional>

namespace vorn::qt {

namespace {

constexpr qsizetype HeaderSize = 8;
constexpr char Taken = 1;
constexpr char Wait = 2;
constexpr int PatienceMilliseconds = 2000;

// Longer than another start takes that meets a window which does not answer, and opens its own.
constexpr int LockPatienceMilliseconds = 5000;

// Windows that close while they are asked, one after the other.
constexpr int QuestionsMax = 3;

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

QString instanceLock(const QString& address)
{
    return address + ".lock";
}

// --- The start that asks

namespace {

// Where a window died the socket is left, but refuses.
bool isNobodyThere(const QLocalSocket& socket)
{
    return socket.error() == QLocalSocket::ServerNotFoundError ||
           socket.error() == QLocalSocket::ConnectionRefusedError;
}

// Reads up to the last word. Nothing if the connection ends without one.
std::optional<StartAnswer> hear(QLocalSocket& socket)
{
    do {
        char byte = 0;
        while (socket.getChar(&byte)) {
            if (byte != Wait)
                return byte == Taken ? StartAnswer::Taken : StartAnswer::Unheard;
        }
    } while (socket.waitForReadyRead(-1));
    return {};
}

std::optional<StartAnswer> ask(const QString& address, QLockFile& lock, const Request& request)
{
    QLocalSocket socket;
    socket.connectToServer(address);
    if (!socket.waitForConnected(PatienceMilliseconds))
        return isNobodyThere(socket) ? StartAnswer::Nobody : StartAnswer::Unheard;
    socket.write(requestBytes(request));
    if (!socket.waitForBytesWritten(PatienceMilliseconds) ||
        !socket.waitForReadyRead(PatienceMilliseconds)) {
        if (socket.state() != QLocalSocket::ConnectedState)
            return {};
        socket.abort();
        return StartAnswer::Unheard;
    }
    lock.unlock();
    return hear(socket);
}

} // namespace

StartAnswer askRunningWindow(const QString& address, QLockFile& lock, const Request& request)
{
    if (address.isEmpty())
        return StartAnswer::Nobody;
    if (request.path.size() > RequestPathMax)
        return StartAnswer::Unheard;
    std::optional<StartAnswer> answer;
    for (int question = 0; !answer && question < QuestionsMax; ++question) {
        // Without the lock it may still ask, but not take the place.
        const bool locked = lock.tryLock(LockPatienceMilliseconds);
        answer = ask(address, lock, request);
        if (answer == StartAnswer::Nobody && locked)
            return StartAnswer::Nobody;
        lock.unlock();
    }
    return answer == StartAnswer::Taken ? StartAnswer::Taken : StartAnswer::Unheard;
}

bool readArgument(const std::string& argument, std::u16string& line)
{
    const QString text =
        QString::fromUtf8(argument.data(), static_cast<qsizetype>(argument.size()));
    if (text.toUtf8().toStdString() != argument)
        return false;
    line = fromQt(text);
    const std::u16string path(withoutQuotes(line));
    const bool isLongQuotedLine = path.size() == line.size() && line.starts_with(u'"');
    if (!path.empty() && !isLongQuotedLine)
        line = fromQt(QFileInfo(toQt(path)).absoluteFilePath());
    return true;
}

// --- The window that listens

InstanceServer::InstanceServer(Window window) : window_(std::move(window))
{
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { accept(); });
}

bool InstanceServer::listen(const QString& address)
{
    if (address.isEmpty())
        return false;
    QLocalServer::removeServer(address);
    return server_.listen(address);
}

void InstanceServer::accept()
{
    while (QLocalSocket* sender = server_.nextPendingConnection()) {
        QObject::connect(sender, &QLocalSocket::disconnected, sender, &QObject::deleteLater);
        // Who says nothing is not waited for.
        auto* patience = new QTimer(sender);
        patience->setSingleShot(true);
        patience->start(PatienceMilliseconds);
        QObject::connect(patience, &QTimer::timeout, sender, &QLocalSocket::abort);
        QObject::connect(sender, &QLocalSocket::readyRead, patience,
                         [this, sender, patience] { read(*sender, *patience); });
        read(*sender, *patience);
    }
}

// Nothing is taken off the socket before the request is whole, and no more is looked at than one
// can have.
void InstanceServer::read(QLocalSocket& sender, QTimer& patience)
{
    constexpr qsizetype LengthMax = HeaderSize + 2 * RequestPathMax;
    Request request;
    switch (readRequest(sender.peek(LengthMax + 1), request)) {
    case RequestForm::Incomplete:
        return;
    case RequestForm::Garbage:
        sender.abort();
        return;
    case RequestForm::Whole:
        break;
    }
    patience.stop();
    sender.disconnect(&patience);
    sender.readAll();
    take(sender, request);
}

namespace {

// False if the sender has given up, which nothing but writing to it tells for sure.
bool answerSender(QLocalSocket& sender, char byte)
{
    sender.write(&byte, 1);
    sender.flush();
    return sender.state() == QLocalSocket::ConnectedState && sender.bytesToWrite() == 0;
}

} // namespace

// A window comes to the front at once, so that whoever waits sees what for.
void InstanceServer::take(QLocalSocket& sender, const Request& request)
{
    const Readiness readiness = window_.readiness();
    if (readiness == Readiness::Leaving) {
        leave();
    } else if (request.kind == RequestFront) {
        if (answerSender(sender, Taken)) {
            sender.disconnectFromServer();
            window_.comeToFront();
        }
    } else if (answerSender(sender, Wait)) {
        waiting_.push_back({&sender, request.path});
        window_.comeToFront();
        // To open may ask, and while it asks the sender goes: it must not be on the way here.
        QMetaObject::invokeMethod(
            &server_, [this] { goOn(); }, Qt::QueuedConnection);
    }
}

void InstanceServer::serve(QLocalSocket& sender, const std::u16string& path)
{
    if (!answerSender(sender, Taken))
        return;
    sender.disconnectFromServer();
    window_.open(path);
}

// Opening one is a message, at the end of which this is called again.
void InstanceServer::goOn()
{
    while (!waiting_.empty() && window_.readiness() == Readiness::Ready) {
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        if (next.sender != nullptr)
            serve(*next.sender, next.path);
    }
    if (window_.readiness() == Readiness::Leaving)
        leave();
}

// The place goes first: who is dropped asks again there.
void InstanceServer::leave()
{
    server_.close();
    waiting_.clear();
    for (QLocalSocket* sender : server_.findChildren<QLocalSocket*>())
        sender->abort();
}

} // namespace vorn::qt
