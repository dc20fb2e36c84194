#include "app/InstanceConnection.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

using Number = InstanceMessage::Number;

// Always fits into the socket's buffer.
constexpr qsizetype greetingCharacters = 1024;

} // namespace

InstanceConnection::InstanceConnection(int socket, QObject* parent)
    : QObject(parent), m_socket(socket),
      m_notifier(new QSocketNotifier(socket, QSocketNotifier::Read, this)),
      m_silence(new QTimer(this))
{
    m_silence->setSingleShot(true);
    connect(m_notifier, &QSocketNotifier::activated, this, &InstanceConnection::readOn);
    connect(m_silence, &QTimer::timeout, this, &InstanceConnection::cutOff);
}

InstanceConnection::~InstanceConnection()
{
    delete m_notifier;
    if (m_socket >= 0)
        ::close(m_socket);
}

void InstanceConnection::start(const QString& caption, std::chrono::milliseconds patience)
{
    m_silence->start(patience);
    if (!send({Number::Greeting, caption.left(greetingCharacters).toStdString(), {}, {}}))
        close();
}

void InstanceConnection::close()
{
    if (m_socket < 0)
        return;
    m_silence->stop();
    m_notifier->setEnabled(false);
    ::close(std::exchange(m_socket, -1));
    emit closed();
}

void InstanceConnection::readOn()
{
    InstanceMessage message;
    switch (readAvailable(message)) {
    case InstanceReader::State::Incomplete:
        return;
    case InstanceReader::State::Bad:
        close();
        return;
    case InstanceReader::State::Complete:
        finish(message);
    }
}

// While the window was busy the message may have arrived unread: look once more.
void InstanceConnection::cutOff()
{
    const QPointer<InstanceConnection> self(this);
    readOn();
    if (!self.isNull() && !m_spoken)
        close();
}

InstanceReader::State InstanceConnection::readAvailable(InstanceMessage& message)
{
    std::array<char, 16384> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    for (;;) {
        const ssize_t got = ::recv(m_socket, buffer.data(), buffer.size(), 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got < 0 && errno == EAGAIN ? InstanceReader::State::Incomplete
                                              : InstanceReader::State::Bad;
        m_reader.feed({buffer.data(), static_cast<std::size_t>(got)});
        const InstanceReader::State state = m_reader.next(message);
        if (state != InstanceReader::State::Incomplete)
            return state;
    }
}

void InstanceConnection::finish(const InstanceMessage& message)
{
    if (message.number != Number::HandOver && message.number != Number::ToFront) {
        close();
        return;
    }
    m_spoken = true;
    m_silence->stop();
    m_notifier->setEnabled(false);
    emit received(message);
}

void InstanceConnection::answer(bool taken)
{
    if (m_socket < 0)
        return;
    send({taken ? Number::Acknowledgement : Number::Refusal, {}, {}, {}});
    close();
}

bool InstanceConnection::send(const InstanceMessage& message) const
{
    const std::string bytes = encodeMessage(message);
    return ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
}
