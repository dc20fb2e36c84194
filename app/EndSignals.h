#pragma once

#include <QObject>

#include <array>
#include <csignal>

class QSocketNotifier;

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop for as long
/// as it lives; then the former dispositions return. One object at a time. A
/// SIGHUP that was ignored at the start (nohup) stays ignored.
class EndSignals : public QObject {
    Q_OBJECT
public:
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;

signals:
    void endRequested();

private:
    static constexpr std::array signalNumbers = {SIGTERM, SIGINT, SIGHUP};

    void drain();

    std::array<int, 2> m_sockets = {-1, -1};
    std::array<struct sigaction, signalNumbers.size()> m_former = {};
    QSocketNotifier* m_notifier = nullptr;
};
