#include "app/InstanceServer.h"

#include "app/InstanceConnection.h"
#include "base/Errors.h"
#include "launcher/InstanceMessage.h"

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

constexpr int waitingCallers = 128;
// Few, so that no crowd of callers uses up the descriptors that the engine needs.
constexpr qsizetype openCallers = 32;
constexpr std::chrono::milliseconds pauseWithoutDescriptors(200);

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
        if (socket >= 0) {
            addCaller(socket);
            continue;
        }
        if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED)
            pauseAccepting();
        return;
    }
}

void InstanceServer::addCaller(int socket)
{
    makeRoom();
    QString caption;
    ignoringErrors([&] { caption = m_caption(); });
    auto* caller = new InstanceConnection(socket, this);
    connect(caller, &InstanceConnection::closed, this, [this, caller] {
        m_callers.removeOne(caller);
        caller->deleteLater();
    });
    connect(caller, &InstanceConnection::received, this,
            [this, caller](const InstanceMessage& message) { handle(caller, message); });
    m_callers.append(caller);
    caller->start(caption, m_patience);
}

// The oldest caller that has not said anything goes; an honest one tries again.
void InstanceServer::makeRoom()
{
    if (m_callers.size() < openCallers)
        return;
    const auto silent = std::find_if(m_callers.cbegin(), m_callers.cend(),
                                     [](const auto* caller) { return !caller->hasSpoken(); });
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

void InstanceServer::handle(InstanceConnection* caller, const InstanceMessage& message) const
{
    const HandOver handOver{
        message.number == InstanceMessage::Number::ToFront, QString::fromStdString(message.text),
        QString::fromStdString(message.activationToken), QString::fromStdString(message.startupId)};
    // Server and caller may be gone when the handler returns.
    const Handler handler = m_handler;
    const QPointer<InstanceConnection> speaker(caller);
    bool taken = true;
    ignoringErrors([&] { taken = handler(handOver); });
    if (!speaker.isNull())
        speaker->answer(taken);
}
