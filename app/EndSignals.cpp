#include "app/EndSignals.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// A signal handler has no other way to its object.
std::atomic<int> handlerSocket = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void wake(int)
{
    const int reason = errno;
    const char byte = 0;
    // A full buffer is as good: the loop wakes anyway.
    [[maybe_unused]] const ssize_t sent =
        ::send(handlerSocket.load(), &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
    errno = reason;
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_sockets.data()) != 0)
        return;
    m_notifier = new QSocketNotifier(m_sockets[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EndSignals::drain);
    handlerSocket = m_sockets[0];
    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < signalNumbers.size(); ++i) {
        ::sigaction(signalNumbers[i], nullptr, &m_former[i]);
        if (signalNumbers[i] != SIGHUP || m_former[i].sa_handler != SIG_IGN)
            ::sigaction(signalNumbers[i], &action, nullptr);
    }
}

EndSignals::~EndSignals()
{
    if (m_notifier == nullptr)
        return;
    for (std::size_t i = 0; i < signalNumbers.size(); ++i)
        ::sigaction(signalNumbers[i], &m_former[i], nullptr);
    handlerSocket = -1;
    delete m_notifier;
    ::close(m_sockets[0]);
    ::close(m_sockets[1]);
}

void EndSignals::drain()
{
    std::array<char, 64> bytes = {};
    while (::recv(m_sockets[1], bytes.data(), bytes.size(), 0) > 0) {
    }
    emit endRequested();
}
