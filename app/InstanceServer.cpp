#include "app/InstanceServer.h"

#include "base/Errors.h"
#include "launcher/InstanceMessage.h"

#include <QLocalSocket>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using Number = InstanceMessage::Number;

constexpr int waitingCallers = 128;
// Few, so that no crowd of callers uses up the descriptors that the engine needs.
constexpr qsizetype openCallers = 32;
constexpr std::chrono::milliseconds pauseWithoutDescriptors(200);
// Always fits into the socket's buffer.
constexpr qsizetype greetingCharacters = 1024;
// What is kept unread of a caller. The reader decides how much a message may hold.
constexpr qint64 unreadBytes = 16384;

bool bindTo(int socket, const std::string& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size());
    return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

// Zeros where there is none.
std::pair<dev_t, ino_t> fileAt(const std::string& path)
{
    struct stat info = {};
    if (::lstat(path.c_str(), &info) != 0)
        return {};
    return {info.st_dev, info.st_ino};
}

} // namespace

/// One caller: greeted, read until one message is complete, answered after that has been
/// handled, closed.
class InstanceServer::Caller : public QObject {
public:
    /// Takes the connected socket over and greets. The caller then has the server's
    /// patience to send a complete message.
    Caller(InstanceServer& server, int socket, const QString& caption);

    /// No complete message has come yet.
    bool isSilent() const { return m_isSilent; }
    /// Takes the caller out of the server's list; the object goes later.
    void close();

private:
    void read();
    void cutOff();
    void take(const InstanceMessage& message);
    bool send(const InstanceMessage& message);

    InstanceServer& m_server;
    QLocalSocket* m_socket;
    QTimer m_silence;
    InstanceReader m_reader;
    bool m_isSilent = true;
};

InstanceServer::Caller::Caller(InstanceServer& server, int socket, const QString& caption)
    : QObject(&server), m_server(server), m_socket(new QLocalSocket(this))
{
    m_server.m_callers.append(this);
    m_socket->setReadBufferSize(unreadBytes);
    m_silence.setSingleShot(true);
    connect(m_socket, &QLocalSocket::readyRead, this, &Caller::read);
    connect(m_socket, &QLocalSocket::disconnected, this, &Caller::close);
    connect(&m_silence, &QTimer::timeout, this, &Caller::cutOff);
    m_silence.start(m_server.m_patience);
    if (!m_socket->setSocketDescriptor(socket) ||
        !send({Number::Greeting, caption.left(greetingCharacters).toStdString(), {}, {}}))
        close();
}

void InstanceServer::Caller::close()
{
    m_silence.stop();
    m_socket->disconnect(this);
    m_socket->abort();
    m_server.m_callers.removeOne(this);
    deleteLater();
}

void InstanceServer::Caller::read()
{
    while (m_isSilent && m_socket->bytesAvailable() > 0) {
        const QByteArray bytes = m_socket->read(unreadBytes);
        m_reader.feed({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        InstanceMessage message;
        switch (m_reader.next(message)) {
        case InstanceReader::State::Incomplete:
            break;
        case InstanceReader::State::Bad:
            close();
            return;
        case InstanceReader::State::Complete:
            take(message);
            return;
        }
    }
}

// While the window was busy the message may have arrived unread: look once more.
void InstanceServer::Caller::cutOff()
{
    while (m_isSilent && m_socket->waitForReadyRead(0)) { // read() takes what has come
    }
    if (m_isSilent)
        close();
}

void InstanceServer::Caller::take(const InstanceMessage& message)
{
    if (message.number != Number::HandOver && message.number != Number::ToFront) {
        close();
        return;
    }
    m_isSilent = false;
    m_silence.stop();
    m_socket->disconnect(this); // the message counts, whatever becomes of the caller
    // Not within the socket's signal: the handler may delete the server, and with it the socket.
    QTimer::singleShot(0, this, [this, message] {
        const QPointer<Caller> self(this);
        const bool taken = m_server.handle(message);
        if (self.isNull())
            return;
        send({taken ? Number::Acknowledgement : Number::Refusal, {}, {}, {}});
        close();
    });
}

bool InstanceServer::Caller::send(const InstanceMessage& message)
{
    const std::string bytes = encodeMessage(message);
    m_socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
    m_socket->flush();
    return m_socket->bytesToWrite() == 0;
}

InstanceServer::InstanceServer(Caption caption, Handler handler, QObject* parent)
    : QObject(parent), m_caption(std::move(caption)), m_handler(std::move(handler))
{
}

InstanceServer::~InstanceServer()
{
    if (m_socket < 0)
        return;
    delete m_notifier;
    if (fileAt(m_path) == m_file)
        ::unlink(m_path.c_str());
    ::close(m_socket);
}

// By hand, as QLocalServer (6.4) closes for good, without a word, the first time that accept()
// finds no free descriptor, and removes whatever has its socket's name when it ends. Before it
// takes this place, look at both, and at the mode of the file.
bool InstanceServer::listen(const std::string& socketPath)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return false;
    ::unlink(socketPath.c_str());
    // Nobody can connect before listen(), so the mode is right in time. The sticky
    // bit keeps clean-ups of old files in the runtime folder away.
    if (!bindTo(socket, socketPath) ||
        ::chmod(socketPath.c_str(), S_ISVTX | S_IRUSR | S_IWUSR) != 0 ||
        ::listen(socket, waitingCallers) != 0) {
        const int reason = errno;
        ::close(socket);
        errno = reason;
        return false;
    }
    m_path = socketPath;
    m_file = fileAt(socketPath);
    m_socket = socket;
    m_notifier = new QSocketNotifier(socket, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &InstanceServer::acceptCallers);
    return true;
}

void InstanceServer::acceptCallers()
{
    // A round is limited, so that a crowd cannot keep the window from its events.
    for (qsizetype i = 0; i < openCallers; ++i) {
        const int socket = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (socket < 0) {
            if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED)
                pauseAccepting();
            return;
        }
        makeRoom();
        QString caption;
        ignoringErrors([&] { caption = m_caption(); });
        new Caller(*this, socket, caption); // belongs to the server
    }
}

// The oldest caller that has not said anything goes; an honest one tries again.
void InstanceServer::makeRoom()
{
    if (m_callers.size() < openCallers)
        return;
    const auto silent = std::find_if(m_callers.cbegin(), m_callers.cend(),
                                     [](const auto* caller) { return caller->isSilent(); });
    if (silent != m_callers.cend())
        (*silent)->close();
}

// Without free descriptors the caller cannot be taken and would wake us again at once.
void InstanceServer::pauseAccepting()
{
    m_notifier->setEnabled(false);
    QTimer::singleShot(pauseWithoutDescriptors, m_notifier,
                       [this] { m_notifier->setEnabled(true); });
}

bool InstanceServer::handle(const InstanceMessage& message) const
{
    const SecondStart secondStart{
        message.number == Number::ToFront, QString::fromStdString(message.text),
        QString::fromStdString(message.activationToken), QString::fromStdString(message.startupId)};
    const Handler handler = m_handler; // the server may be gone before it returns
    bool taken = true;
    ignoringErrors([&] { taken = handler(secondStart); });
    return taken;
}
