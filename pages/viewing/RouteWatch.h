#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Says when this computer gets a way into the internet: a default route, as the kernel tells
/// of it. Asks nobody by itself. Where the kernel tells nothing, it says nothing.
class RouteWatch : public QObject {
    Q_OBJECT
public:
    explicit RouteWatch(QObject* parent = nullptr);
    ~RouteWatch() override;
    Q_DISABLE_COPY_MOVE(RouteWatch)

signals:
    void routeAdded();

private:
    void read();

    int m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
