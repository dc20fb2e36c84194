#pragma once

#include "launcher/InstanceMessage.h"

#include <QObject>

#include <chrono>

class QSocketNotifier;
class QTimer;

/// One caller of the instance server: greeted, read until one message is
/// complete, answered after that has been handled, closed.
class InstanceConnection : public QObject {
    Q_OBJECT
public:
    /// Takes the connected, non-blocking socket over.
    InstanceConnection(int socket, QObject* parent);
    ~InstanceConnection() override;

    /// Greets the caller, who then has `patience` to send a complete message.
    void start(const QString& caption, std::chrono::milliseconds patience);
    /// The message is complete: it is being handled.
    bool hasSpoken() const { return m_spoken; }
    /// Says whether the message was taken, and closes.
    void answer(bool taken);
    void close();

signals:
    /// Once, when a message is complete: the receiver answers it.
    void received(const InstanceMessage& message);
    void closed();

private:
    void readOn();
    void cutOff();
    InstanceReader::State readAvailable(InstanceMessage& message);
    void finish(const InstanceMessage& message);
    bool send(const InstanceMessage& message) const;

    int m_socket;
    QSocketNotifier* m_notifier;
    QTimer* m_silence;
    InstanceReader m_reader;
    bool m_spoken = false;
};
