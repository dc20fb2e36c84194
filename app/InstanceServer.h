#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>

class QSocketNotifier;
struct InstanceMessage;

/// What a second start brings.
struct SecondStart {
    /// Started without an address: the frame is to come to the front.
    bool toFront = false;
    QString address;
    /// What the desktop gave the second start to bring a window to the front.
    QString activationToken;
    QString startupId;
};

/// Where the running copy hears of further starts. Greets every caller with the frame's
/// caption, passes what the caller brings to the handler and tells the caller what the
/// handler has said. Callers never block the window: a silent one is cut off, one that
/// sends something else is dropped.
class InstanceServer : public QObject {
    Q_OBJECT
public:
    using Caption = std::function<QString()>;
    /// Whether the running copy has taken what was brought; false when it is about
    /// to end, so that the caller takes its place. An exception counts as taken. It may
    /// run an event loop or delete the server.
    using Handler = std::function<bool(const SecondStart&)>;

    InstanceServer(Caption caption, Handler handler, QObject* parent = nullptr);
    /// Removes the socket, unless the file of its name is another's by now: to be called
    /// while the lock is still held.
    ~InstanceServer() override;

    /// How long a caller may take to send its message; for callers to come.
    void patience(std::chrono::milliseconds value) { m_patience = value; }

    /// Listens at the path, replacing what a killed copy left there; only the
    /// holder of the instance lock may call it. On failure errno says why.
    bool listen(const std::string& socketPath);

private:
    class Caller;

    void acceptCallers();
    void makeRoom();
    void pauseAccepting();
    bool handle(const InstanceMessage& message) const;

    Caption m_caption;
    Handler m_handler;
    std::chrono::milliseconds m_patience = std::chrono::seconds(5);
    std::string m_path;
    /// The socket's file as it was made, by device and number.
    std::pair<dev_t, ino_t> m_file;
    int m_socket = -1;
    QSocketNotifier* m_notifier = nullptr;
    /// Oldest first; children of the server.
    QList<Caller*> m_callers;
};
